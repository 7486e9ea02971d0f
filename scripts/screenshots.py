#!/usr/bin/env python3
"""Screenshots of the real program for the README: runs the built program
under Xvfb servers of its own, drives it through its automation interface
and has it grab its main window into PNG files.

    python3 scripts/screenshots.py [--program build/program/valkenhorn] [FOLDER]

FOLDER defaults to docs/screenshots/ of the source tree. The scenes are taken
in the order of SCENES, along one run: one copy after its start-up, then two
copies ("anna" and "bert", each on an Xvfb of its own, with one shared
folder) connected to each other, then a game between them with scripted dice
(VALKENHORN_DICE): each army moves vehicles from its camp to its HQ, and the
green army has rolled again, seen from each side; last, green's tank crosses
its forward post and the turn's end draws a Radio Yambo card (the deck laid
by VALKENHORN_DECK).

Prints one line per picture: its name, its size in pixels, the size of the
program's window on the X server and its size in bytes. Needs python3, Xvfb
and libX11 only; the click points of the board's fields come from the judge
valkenhorn-rules beside the program (or $VALKENHORN_RULES)."""

import argparse
import contextlib
import os
import shutil
import sys
import tempfile

sys.dont_write_bytecode = True
TOP = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))
sys.path.insert(0, os.path.join(TOP, "tests", "e2e"))

from game_session import COMMANDO, DIE_CONTROLS, GENIE, HQ, INFANTRY, TANK, GameCopy  # noqa: E402
from link_session import connected_board_text, local_ids  # noqa: E402
from valkenhorn_session import XServer, format_board_text  # noqa: E402
from xwindow import XDisplay  # noqa: E402

# The screen of each Xvfb: room for the whole window (1703 x 920 at least).
SCREEN = (1920, 1080)

# VALKENHORN_TIME_SCALE of the copies. The running text moves a letter every
# 40 ms at the normal pace, every 8 ms at this scale: quick enough for the
# start-ups and the game's waits, slow enough to catch the text at a chosen
# word. A scene with a text is taken once its words stand at most TEXT_SLACK
# letters from the start of the board's label, which shows some sixteen
# letters; by the grab they have moved on a letter or two.
TIME_SCALE = "0.2"
TEXT_SLACK = 4

# The toss gives anna 11 and bert 4: anna leads the green army.
TOSS_ANNA, TOSS_BERT = (6, 5), (2, 2)
# The rolls of the game, turn by turn (odd turns green, even turns brown),
# and what each turn does with them: (die, vehicle slot, slow clicks that
# load it in the camp, destination field). Both dice of a turn used end it.
TURNS = [
    ((6, 6), [(1, TANK, 3, HQ[1]), (2, COMMANDO, 2, HQ[1])]),
    ((6, 6), [(1, INFANTRY, 2, HQ[2]), (2, GENIE, 2, HQ[2])]),
]
# The roll of the green army's next turn, left standing for the pictures.
LAST_ROLL = (5, 3)
# The deck anna deals (from its bottom to its top): the top card is the
# Radio Yambo card "melding weerbericht", drawn when green's tank leaves its
# HQ with the 5 across the forward post 74-75.
DRAWN_CARD = 16
DECK = [card for card in range(1, 33) if card != DRAWN_CARD] + [DRAWN_CARD]
CARD_MOVE = (1, TANK, 75)

# The phase a die's double click leads to, by (action of the turn, die); the
# pick of a camp vehicle then adds 2, and the first action's end leads to
# phase 9 (die 1 used) or 18 (die 2 used).
DIE_PHASES = {(0, 1): 5, (0, 2): 14, (1, 2): 10, (1, 1): 19}


class Stage:
    """The copies the scenes are taken from. Each step brings the run
    forward to where a scene needs it, once; a later scene builds on an
    earlier one's steps."""

    def __init__(self, program, scratch):
        self.program = program
        self.scratch = scratch
        self.shared = os.path.join(scratch, "shared")
        os.makedirs(self.shared)
        self.stack = contextlib.ExitStack()
        self.copies = {}
        self.displays = {}
        self.is_connected = False
        self.game = None

    def close(self):
        self.stack.close()

    def copy(self, name):
        """anna or bert, started on an Xvfb of its own, at the end of its start-up."""
        if name not in self.copies:
            peer, toss = {"anna": ("bert", TOSS_ANNA), "bert": ("anna", TOSS_BERT)}[name]
            side = 1 if name == "anna" else 2
            dice = list(toss)
            for number, (roll, _) in enumerate(TURNS, start=1):
                if (1 if number % 2 else 2) == side:
                    dice += roll
            if side == 1:
                dice += LAST_ROLL
            x = self.stack.enter_context(XServer(*SCREEN))
            local_id = local_ids(2)[0 if side == 1 else 1]
            c = GameCopy(self.program, x.display, self.scratch, name, local_id, [self.shared], [peer], dice=dice,
                         time_scale=TIME_SCALE, env={"VALKENHORN_DECK": ",".join(str(card) for card in DECK)})
            self.stack.callback(c.close)
            c.start()
            c.wait_started(120)
            self.copies[name] = c
            self.displays[name] = x.display
        return self.copies[name]

    def started(self):
        return self.copy("anna")

    def connected(self):
        """anna and bert on-line, anna's invitation accepted, both boards
        telling whom they are connected with."""
        a, b = self.copy("anna"), self.copy("bert")
        if not self.is_connected:
            a.go_online()
            b.go_online()
            a.select_player(1)
            b.select_player(1)
            a.wait_sees("bert", timeout=60)
            b.wait_sees("anna", timeout=60)
            a.click("cmdRequestToPlay")
            b.wait_dialog(60)
            b.answer("yes")
            a.wait_dialog(60)
            a.answer("ok")
            for c, peer in ((a, "bert"), (b, "anna")):
                c.wait_state("Check1", lambda v: v == 1, "connected", 60)
                c.wait_no_dialog(60)
                c.wait_board_text(connected_board_text(peer), 60)
            self.is_connected = True
        return a, b

    def game_in_progress(self):
        """The toss, two turns of vehicles sent from the camp to the HQ, and
        the green army's next roll: (green, brown)."""
        if self.game is None:
            a, b = self.connected()
            for c in (a, b):
                c.click("cmdStart")
            for c in (a, b):
                c.wait_waiting("toss", 60)
            for c in (a, b):
                c.click("cmdGooi")
            for c in (a, b):
                c.wait_for_log_line("starting game sequence at ", 60)
            green, brown = (a, b) if a.side() == 1 else (b, a)
            for number, (roll, actions) in enumerate(TURNS, start=1):
                mover, watcher = (green, brown) if number % 2 else (brown, green)
                self.play_turn(mover, watcher, roll, actions)
            green.wait_phase(0)
            green.click("cmdGooi")
            green.wait_phase(4)
            brown.wait_log(r"^result of opponent rolling dices: %d and %d at " % LAST_ROLL)
            self.game = (green, brown)
        return self.game

    def card_drawn(self):
        """Green's tank crosses its forward post with the 5 and the turn
        ends: the Radio Yambo card on top of the deck is drawn and shown."""
        green, _ = self.game_in_progress()
        die, slot, field = CARD_MOVE
        green.dblclick(DIE_CONTROLS[die])
        green.wait_phase(5)
        green.dblclick(green.vehicle(slot))
        green.wait_phase(8)
        green.dblclick_field(field)
        green.wait_phase(9)
        green.click("cmdEindeBeurt")
        green.wait_waiting("Radio Yambo card read", 60)
        return green

    @staticmethod
    def play_turn(mover, watcher, roll, actions):
        mover.wait_phase(0)
        watcher.wait_waiting("opponent's turn")
        mover.click("cmdGooi")
        mover.wait_phase(4)
        if (mover.state()["Dice1"], mover.state()["Dice2"]) != roll:
            raise AssertionError("%s rolled %r, not the scripted %r" % (mover.label, (mover.state()["Dice1"],
                                                                                     mover.state()["Dice2"]), roll))
        for index, (die, slot, loads, field) in enumerate(actions):
            phase = DIE_PHASES[(index, die)]
            mover.dblclick(DIE_CONTROLS[die])
            mover.wait_phase(phase)
            mover.dblclick(mover.vehicle(slot))
            mover.wait_phase(phase + 2)
            for _ in range(loads):
                mover.slow_click(slot)
            mover.dblclick_field(field)
            if index == 0:
                mover.wait_phase(9 if die == 1 else 18)
        watcher.wait_phase(0)
        mover.wait_waiting("opponent's turn")

    @staticmethod
    def show_text(copy, words, timeout=60):
        """Waits until the running text on the board begins (give or take a
        few letters) with the given words, so that the picture shows them
        rather than a row of stars."""
        target = format_board_text(words).strip(" *")
        copy.wait_state("BoardText", lambda text: isinstance(text, str) and 0 <= text.find(target) <= TEXT_SLACK,
                        "the running text at %r" % words, timeout)
        return copy

    def window_size(self, copy):
        """The size of the copy's main window on its X server."""
        with XDisplay(self.displays[copy.name]) as display:
            window = display.find_window(copy.process.pid, "Valkenhorn!")
            return display.size(window) if window else None


class Scene:
    def __init__(self, file_name, caption, take):
        self.file_name = file_name
        self.caption = caption
        self.take = take  # stage -> the copy whose window is grabbed


# The pictures, in the order they are taken along one run.
SCENES = [
    Scene("startup.png", "The window after start-up", lambda stage: stage.started()),
    Scene("connected.png", "Two copies connected to each other through a shared folder",
          lambda stage: stage.show_text(stage.connected()[0], "verbonden met bert")),
    Scene("game-green.png", "A game in progress, seen from the green army's side",
          lambda stage: stage.show_text(stage.game_in_progress()[0], "dubbelklik, afhankelijk")),
    Scene("game-brown.png", "The same game seen from the brown army's side: the board turned",
          lambda stage: stage.show_text(stage.game_in_progress()[1], "het is nu de beurt")),
    Scene("card.png", "A Radio Yambo card drawn at the end of a turn, its message running on the board",
          lambda stage: stage.show_text(stage.card_drawn(), "melding weerbericht")),
]


def png_size(path):
    with open(path, "rb") as f:
        head = f.read(24)
    if len(head) < 24 or head[:8] != b"\x89PNG\r\n\x1a\n" or head[12:16] != b"IHDR":
        return None
    return int.from_bytes(head[16:20], "big"), int.from_bytes(head[20:24], "big")


def main():
    parser = argparse.ArgumentParser(description="Screenshots of the program for the README")
    parser.add_argument("--program", default=os.path.join(TOP, "build", "program", "valkenhorn"))
    parser.add_argument("folder", nargs="?", default=os.path.join(TOP, "docs", "screenshots"))
    args = parser.parse_args()
    program = os.path.abspath(args.program)
    folder = os.path.abspath(args.folder)
    if not os.access(program, os.X_OK):
        sys.stderr.write("no program at %s (build it first)\n" % program)
        return 2
    os.makedirs(folder, exist_ok=True)

    scratch = tempfile.mkdtemp(prefix="vk-screenshots-")
    stage = Stage(program, scratch)
    try:
        for scene in SCENES:
            copy = scene.take(stage)
            path = os.path.join(folder, scene.file_name)
            # Written beside the picture and renamed, so that a failed grab
            # leaves no half picture under the scene's name.
            partial = os.path.join(folder, "." + scene.file_name + ".part")
            copy.ok({"cmd": "screenshot", "path": partial})
            os.replace(partial, path)
            size = png_size(path)
            if size is None:
                raise SystemExit("%s is no PNG file" % path)
            width, height = size
            window = stage.window_size(copy)
            print("%s: %d x %d pixels, window %s, %d bytes - %s"
                  % (scene.file_name, width, height, "%d x %d" % window if window else "not found",
                     os.path.getsize(path), scene.caption), flush=True)
    finally:
        stage.close()
        shutil.rmtree(scratch, ignore_errors=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
