#!/usr/bin/env python3
"""Wall time of whole games between two computer players, two processes on
one shared folder: from the start of the two programs to the end of the game
(a victory, or the stop at the turn limit), at time scale 0.01.

    python3 bench_computer_game.py PATH/TO/valkenhorn [--games 3] [--scale 0.01]
                                   [--levels greedy random] [--turns 400]

Prints figures only; not a test."""

import argparse
import os
import shutil
import statistics
import sys
import tempfile
import time
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))


def main():
    parser = argparse.ArgumentParser(description="Whole computer-against-computer games, timed")
    parser.add_argument("program")
    parser.add_argument("--games", type=int, default=3)
    parser.add_argument("--scale", default="0.01")
    parser.add_argument("--levels", nargs=2, default=["greedy", "random"])
    parser.add_argument("--turns", type=int, default=400)
    args = parser.parse_args()
    os.environ["VALKENHORN_COMPUTER_TIME_SCALE"] = args.scale
    os.environ["VALKENHORN_COMPUTER_TURNS"] = str(args.turns)
    import test_computer  # noqa: E402
    test_computer.PROGRAM = os.path.abspath(args.program)
    case = test_computer.ComputerGames()
    case.maxDiff = None
    walls = []
    for number in range(args.games):
        root = tempfile.mkdtemp(prefix="vk-bench-computer-")
        started = time.monotonic()
        try:
            outcome = case.one_game(root, args.levels[0], args.levels[1], number)
        except unittest.case.TestCase.failureException as e:
            print("game %d failed: %s" % (number, e))
            continue
        finally:
            shutil.rmtree(root, ignore_errors=True)
        wall = time.monotonic() - started
        walls.append(wall)
        turns = max(s["TurnNumber"] for s in outcome.states)
        result = ("won by %s" % args.levels[0] if outcome.states[0]["GameWon"] else
                  "won by %s" % args.levels[1] if outcome.states[1]["GameWon"] else "stopped at the turn limit")
        print("game %d: %d turns, %s, %.1f s (%.0f ms per turn)" % (number, turns, result, wall,
                                                                    1000 * wall / max(turns, 1)))
    if walls:
        print("%s against %s at time scale %s: %d games, median %.1f s, worst %.1f s"
              % (args.levels[0], args.levels[1], args.scale, len(walls), statistics.median(walls), max(walls)))
    return 0


if __name__ == "__main__":
    sys.exit(main())
