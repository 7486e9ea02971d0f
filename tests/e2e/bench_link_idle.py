#!/usr/bin/env python3
"""Idle cost of a connected pair: two copies of the program on one local shared
folder, at the normal pace (time scale 1), meet, invite and accept; then the
CPU use of each process is measured over 30 s, with its resident memory:
once with the connected text running on the board, and once more after a
click on the board has emptied it. The automation connections stay open and
silent.

    python3 bench_link_idle.py PATH/TO/valkenhorn [--seconds 30] [--scale 1]

The start-up at the normal pace takes about half a minute. Prints figures
only; not a test."""

import argparse
import os
import shutil
import sys
import tempfile
import time

# No byte-code caches in the source tree.
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from bench_idle import cpu_ticks, resident_kb  # noqa: E402
from link_session import LinkCopy, local_ids  # noqa: E402
from valkenhorn_session import XServer  # noqa: E402


def connect(a, b):
    for c in (a, b):
        c.go_online()
        c.select_player(1)
    a.wait_sees(b.name, timeout=180)
    b.wait_sees(a.name, timeout=180)
    a.click("cmdRequestToPlay")
    b.wait_dialog(120)
    b.answer("yes")
    a.wait_dialog(120)
    a.answer("ok")
    for c in (a, b):
        c.wait_state("Check1", lambda v: v == 1, "the connection", timeout=120)
        c.wait_no_dialog()


def measure(copies, seconds):
    """CPU seconds of each process over `seconds` of idle, and its resident MB."""
    ticks_per_second = os.sysconf("SC_CLK_TCK")
    time.sleep(1.0)
    start_ticks = {pid: cpu_ticks(pid) for _, pid in copies}
    start = time.monotonic()
    time.sleep(seconds)
    used = {pid: (cpu_ticks(pid) - start_ticks[pid]) / ticks_per_second for _, pid in copies}
    elapsed = time.monotonic() - start
    rss = {pid: resident_kb(pid) / 1024.0 for _, pid in copies}
    return elapsed, used, rss


def main():
    parser = argparse.ArgumentParser(description="Idle CPU and memory of two connected copies")
    parser.add_argument("program")
    parser.add_argument("--seconds", type=float, default=30.0)
    parser.add_argument("--scale", default="1", help="VALKENHORN_TIME_SCALE of both copies")
    args = parser.parse_args()
    program = os.path.abspath(args.program)

    root = tempfile.mkdtemp(prefix="vk-bench-link-")
    try:
        shared = os.path.join(root, "shared")
        os.makedirs(shared)
        ida, idb = local_ids(2)
        with XServer() as xa, XServer() as xb, \
                LinkCopy(program, xa.display, root, "anna", ida, [shared], ["bert"], time_scale=args.scale) as a, \
                LinkCopy(program, xb.display, root, "bert", idb, [shared], ["anna"], time_scale=args.scale) as b:
            a.wait_started(timeout=300)
            b.wait_started(timeout=300)
            connect(a, b)
            copies = [(c.name, c.process.pid) for c in (a, b)]
            # The connected board text runs on the board; a click on the board
            # empties it, which separates the running text's cost from the poll's.
            figures = [("connected, board text running", measure(copies, args.seconds))]
            for c in (a, b):
                c.click("msgBoard")
                c.wait_state("BoardText", lambda t: t == "", "the board to empty")
            figures.append(("connected, board emptied by a click", measure(copies, args.seconds)))
            for c in (a, b):
                if not c.running():
                    print("%s ended during the measurement" % c.name)
                    return 1

        print("time scale: %s, connected pair on one local folder" % args.scale)
        for what, (elapsed, used, rss) in figures:
            print(what + ":")
            for name, pid in copies:
                print("  %s: idle CPU %.2f%% of one core over %.1f s, resident memory %.1f MB"
                      % (name, 100.0 * used[pid] / elapsed, elapsed, rss[pid]))
        return 0
    finally:
        shutil.rmtree(root, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
