#!/usr/bin/env python3
"""Idle cost of a game in progress: two copies on one local shared folder, at
the normal pace (time scale 1), connect, start a game and toss with scripted
dice; then the CPU use of each process is measured over 30 s while the
player at turn has rolled and stands at the choice of a die (phase 4) and the
other copy follows the opponent's turn. The running text is emptied by a click
first, so that the figures are the waits' own.

    python3 bench_game_idle.py PATH/TO/valkenhorn [--seconds 30] [--scale 1]

The start-up, the toss and the deal at the normal pace take about a minute
and a half. Prints figures only; not a test."""

import argparse
import os
import shutil
import sys
import tempfile

# No byte-code caches in the source tree.
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from bench_link_idle import connect, measure  # noqa: E402
from link_session import LinkCopy, local_ids  # noqa: E402
from valkenhorn_session import XServer  # noqa: E402


def start_game(a, b):
    """Both press "Spel Starten"; anna wins the toss and rolls her first turn."""
    for c in (a, b):
        c.click("cmdStart")
    for c in (a, b):
        c.wait_state("Waiting", lambda v: v == "toss", "the toss", timeout=120)
        c.click("cmdGooi")
    a.wait_state("Waiting", lambda v: v == "phase 0", "anna's first turn", timeout=180)
    b.wait_state("Waiting", lambda v: v == "opponent's turn", "bert following", timeout=180)
    a.click("cmdGooi")
    a.wait_state("Waiting", lambda v: v == "phase 4", "the choice of a die", timeout=60)
    b.wait_state("OppDice1", lambda v: v > 0, "the roll shown to bert", timeout=60)
    for c in (a, b):
        c.click("msgBoard")
        c.wait_state("BoardText", lambda t: t == "", "the board to empty")


def main():
    parser = argparse.ArgumentParser(description="Idle CPU and memory of two copies in a game")
    parser.add_argument("program")
    parser.add_argument("--seconds", type=float, default=30.0)
    parser.add_argument("--scale", default="1", help="VALKENHORN_TIME_SCALE of both copies")
    args = parser.parse_args()
    program = os.path.abspath(args.program)

    root = tempfile.mkdtemp(prefix="vk-bench-game-")
    try:
        shared = os.path.join(root, "shared")
        os.makedirs(shared)
        ida, idb = local_ids(2)
        with XServer() as xa, XServer() as xb, \
                LinkCopy(program, xa.display, root, "anna", ida, [shared], ["bert"], time_scale=args.scale,
                         env={"VALKENHORN_DICE": "6,6,4,3"}) as a, \
                LinkCopy(program, xb.display, root, "bert", idb, [shared], ["anna"], time_scale=args.scale,
                         env={"VALKENHORN_DICE": "1,1"}) as b:
            a.wait_started(timeout=300)
            b.wait_started(timeout=300)
            connect(a, b)
            start_game(a, b)
            copies = [("anna at the choice of a die", a.process.pid), ("bert following the turn", b.process.pid)]
            elapsed, used, rss = measure(copies, args.seconds)
            for c in (a, b):
                if not c.running():
                    print("%s ended during the measurement" % c.name)
                    return 1
        print("time scale: %s, a game on one local folder" % args.scale)
        for name, pid in copies:
            print("  %s: CPU %.2f%% of one core over %.1f s, resident memory %.1f MB"
                  % (name, 100.0 * used[pid] / elapsed, elapsed, rss[pid]))
        return 0
    finally:
        shutil.rmtree(root, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
