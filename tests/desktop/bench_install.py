#!/usr/bin/env python3
"""Size of the Debian package and start-up time of the program it installs:
makes the package with cpack from a build folder, unpacks it with dpkg-deb -x
into a scratch root (no root rights needed) and starts the unpacked
usr/bin/valkenhorn several times under an Xvfb of its own at time scale 1,
each time with fresh homes and a settings file that already holds a name, so
that no question waits for a person.

    python3 bench_install.py BUILD_DIR [--cpack CPACK] [--starts 5]

Each start is timed from just before the process is made to its automation
socket, to the run log's "Showing program window at " and to its "End of Form
Load at " (the log polled every 5 ms); the median, least, greatest and
standard deviation over the starts are printed. Prints figures; not a test."""

import argparse
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))

from link_session import LinkCopy  # noqa: E402
from valkenhorn_session import SEPARATOR_53, XServer  # noqa: E402

POLL = 0.005
LOCAL_ID = "0A1B2C3D4E5F"


def make_package(build, cpack, scratch):
    done = subprocess.run([cpack, "-G", "DEB", "-B", scratch, "--config", os.path.join(build, "CPackConfig.cmake")],
                          capture_output=True)
    if done.returncode != 0:
        raise SystemExit("cpack failed:\n" + done.stdout.decode() + done.stderr.decode())
    debs = [n for n in os.listdir(scratch) if n.endswith(".deb")]
    if len(debs) != 1:
        raise SystemExit("cpack made %r" % debs)
    return os.path.join(scratch, debs[0])


def unpack(deb, root):
    subprocess.run(["dpkg-deb", "-x", deb, root], check=True)
    size = 0
    for folder, _, names in os.walk(root):
        size += sum(os.path.getsize(os.path.join(folder, n)) for n in names)
    return size


# Lines of the run log timed at each start, besides the automation socket:
# the window shown (after the splash screen and the board's loading) and the
# end of the start-up (after the welcome texts on the board).
MILESTONES = [("the window shown", "Showing program window at "),
              ("\"End of Form Load at \"", "End of Form Load at ")]


def time_one_start(program, display, scratch, number):
    """Seconds from just before the process is made to its automation socket
    and to each milestone's log line; returns once the separator after "End
    of Form Load at " closes the start-up."""
    copy = LinkCopy(program, display, os.path.join(scratch, "start-%d" % number), "bench", LOCAL_ID,
                    time_scale="1")
    try:
        start = time.monotonic()
        copy.start()  # returns once the automation socket answers a connection
        times = [time.monotonic() - start] + [None] * len(MILESTONES)
        deadline = start + 120
        while True:
            lines = copy.log_lines()
            now = time.monotonic() - start
            for i, (_, prefix) in enumerate(MILESTONES, start=1):
                if times[i] is None and any(line.startswith(prefix) for line in lines):
                    times[i] = now
            if times[-1] is not None and SEPARATOR_53 in lines:
                return times
            if not copy.running():
                raise SystemExit("the program ended (code %s) during its start-up:\n%s"
                                 % (copy.process.returncode, copy.program_output()))
            if time.monotonic() > deadline:
                raise SystemExit("no end of the start-up after 120 s; log:\n" + "\n".join(lines))
            time.sleep(POLL)
    finally:
        copy.close()


def describe(values):
    ms = [v * 1000.0 for v in values]
    spread = statistics.stdev(ms) if len(ms) > 1 else 0.0
    return ("median %7.0f ms   min %7.0f ms   max %7.0f ms   stdev %5.0f ms"
            % (statistics.median(ms), min(ms), max(ms), spread))


def main():
    parser = argparse.ArgumentParser(description="Size of the .deb and start-up time of the installed program")
    parser.add_argument("build")
    parser.add_argument("--cpack", default=shutil.which("cpack") or "cpack")
    parser.add_argument("--starts", type=int, default=5)
    args = parser.parse_args()
    build = os.path.abspath(args.build)

    scratch = tempfile.mkdtemp(prefix="vk-bench-install-")
    try:
        deb = make_package(build, args.cpack, os.path.join(scratch, "package"))
        root = os.path.join(scratch, "root")
        unpacked = unpack(deb, root)
        program = os.path.join(root, "usr", "bin", "valkenhorn")
        deb_bytes = os.path.getsize(deb)

        times = []
        with XServer() as x:
            for number in range(args.starts):
                times.append(time_one_start(program, x.display, scratch, number))

        print("package: %s" % os.path.basename(deb))
        print("package size: %d bytes (%.2f MiB); unpacked: %d bytes (%.2f MiB)"
              % (deb_bytes, deb_bytes / 1048576.0, unpacked, unpacked / 1048576.0))
        print("start-up of the unpacked usr/bin/valkenhorn at time scale 1, %d starts under Xvfb," % len(times))
        print("from just before the process is made to:")
        names = ["the automation socket"] + [name for name, _ in MILESTONES]
        for i, name in enumerate(names):
            print("  %-24s %s" % (name + ":", describe([t[i] for t in times])))
        print("each start (%s), ms:" % ", ".join(names))
        for t in times:
            print("  " + ", ".join("%.0f" % (v * 1000.0) for v in t))
        print("most of the start-up is the program's own deliberate waits (the splash screen, the welcome")
        print("texts on the board); at time scale 0.05, as the tests run, they shrink twentyfold.")
    finally:
        shutil.rmtree(scratch, ignore_errors=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
