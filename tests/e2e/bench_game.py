#!/usr/bin/env python3
"""Wall time and cost of a scripted game between two copies: the game of the
flags test (nineteen turns of moves, a flag brought home and one loaded by a
second action) played at time scale 0.02, from the connection to its last
turn; then each copy's CPU time and peak resident memory.

    python3 bench_game.py PATH/TO/valkenhorn [--scale 0.02]

Prints figures only; not a test."""

import argparse
import os
import sys
import time
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))


def peak_kb(pid):
    with open("/proc/%d/status" % pid) as f:
        for line in f:
            if line.startswith("VmHWM:"):
                return int(line.split()[1])
    return 0


def cpu_seconds(pid):
    with open("/proc/%d/stat" % pid) as f:
        fields = f.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def main():
    parser = argparse.ArgumentParser(description="A scripted two-copy game, timed")
    parser.add_argument("program")
    parser.add_argument("--scale", default="0.02")
    args = parser.parse_args()
    import test_game  # noqa: E402
    test_game.PROGRAM = os.path.abspath(args.program)

    figures = {}

    class TimedFlags(test_game.Flags):
        SCALE = args.scale

        def begin(self, script):
            green, brown = super().begin(script)
            self.timed = (green, brown)
            figures["start"] = time.monotonic()
            return green, brown

        def test_flag_home_and_flag_of_a_second_action(self):
            super().test_flag_home_and_flag_of_a_second_action()
            figures["wall"] = time.monotonic() - figures["start"]
            for c in self.timed:
                pid = c.process.pid
                figures[c.label] = (cpu_seconds(pid), peak_kb(pid) / 1024.0)

    suite = unittest.TestSuite([TimedFlags("test_flag_home_and_flag_of_a_second_action")])
    result = unittest.TextTestRunner(verbosity=1).run(suite)
    print("time scale %s, the flags game (19 turns), from the start of the game to its last turn:" % args.scale)
    print("  wall time %.1f s%s" % (figures.get("wall", 0.0), "" if result.wasSuccessful() else " (the game failed)"))
    for label, value in figures.items():
        if isinstance(value, tuple):
            print("  %s: CPU %.1f s, peak resident memory %.1f MB" % (label, value[0], value[1]))
    return 0 if result.wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())
