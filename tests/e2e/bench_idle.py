#!/usr/bin/env python3
"""Idle cost of the program: starts it under its own Xvfb (time scale 0.05, so
that the start-up passes quickly), waits for the end of the start-up, then
measures its CPU use over 10 s of idle and its resident memory.

    python3 bench_idle.py PATH/TO/valkenhorn [--seconds 10] [--scale 0.05]

The time scale also shortens the timers' intervals (the poll and the scroller
run 20 times as often at 0.05), so the figure at 0.05 is an upper bound of the
idle cost at the normal pace; --scale 1 measures that pace itself, after a
start-up of normal length.

Goals: under 1% of one core, under 80 MB. Prints the figures; not a test."""

import argparse
import os
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from valkenhorn_session import Session, XServer  # noqa: E402

CPU_GOAL_PERCENT = 1.0
MEMORY_GOAL_MB = 80.0


def cpu_ticks(pid):
    """utime + stime of the process, in clock ticks."""
    with open("/proc/%d/stat" % pid) as f:
        text = f.read()
    # The command name in parentheses may hold blanks; the fields follow its closing parenthesis.
    fields = text[text.rindex(")") + 2:].split()
    return int(fields[11]) + int(fields[12])


def resident_kb(pid):
    with open("/proc/%d/status" % pid) as f:
        for line in f:
            if line.startswith("VmRSS:"):
                return int(line.split()[1])
    raise RuntimeError("no VmRSS for process %d" % pid)


def main():
    parser = argparse.ArgumentParser(description="Idle CPU and memory of the program")
    parser.add_argument("program")
    parser.add_argument("--seconds", type=float, default=10.0)
    parser.add_argument("--scale", default="0.05", help="VALKENHORN_TIME_SCALE of the run")
    args = parser.parse_args()
    program = os.path.abspath(args.program)
    seconds = args.seconds
    ticks_per_second = os.sysconf("SC_CLK_TCK")

    with XServer() as x, Session(program, x.display, time_scale=args.scale) as s:
        s.wait_started(timeout=120)
        # Drop the connection, so that the socket adds nothing to the idle cost.
        s.reader.close()
        s.connection.close()
        s.reader = s.connection = None
        time.sleep(1.0)

        pid = s.process.pid
        start_ticks = cpu_ticks(pid)
        start = time.monotonic()
        time.sleep(seconds)
        used = (cpu_ticks(pid) - start_ticks) / ticks_per_second
        elapsed = time.monotonic() - start
        rss_mb = resident_kb(pid) / 1024.0
        if not s.running():
            print("the program ended during the measurement")
            return 1

    cpu_percent = 100.0 * used / elapsed
    print("time scale: %s" % args.scale)
    print("idle CPU: %.2f%% of one core over %.1f s (goal: under %.0f%%)" % (cpu_percent, elapsed, CPU_GOAL_PERCENT))
    print("resident memory: %.1f MB (goal: under %.0f MB)" % (rss_mb, MEMORY_GOAL_MB))
    return 0


if __name__ == "__main__":
    sys.exit(main())
