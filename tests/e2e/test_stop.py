#!/usr/bin/env python3
"""Stopping a game between two copies: saved and resumed in the same run or
after both programs were closed and started again, given up, or the stop
question answered with no.

    python3 test_stop.py PROGRAM Class[.method]

anna (green) plays turn 1 (her tank from the camp to the HQ), bert skips
turn 2, and anna stops at the start of turn 3. Standard library only."""

import os
import sys
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import test_game  # noqa: E402
from game_session import HQ, TANK, parse_position, position_differences  # noqa: E402
from test_game import CLOSING_TEXT, SKIP, Act, GameTest, Turn  # noqa: E402
from valkenhorn_session import run_tests  # noqa: E402

STOP_TITLE = "Spel stoppen?"
STOP_TEXT = "Bent u zeker dat u het huidig spel wilt stoppen?"
SAVE_TITLE = "Spel Bewaren?"
SAVE_TEXT = "Wilt u het spel bewaren om op een andere keer verder te spelen?"
LOST_TITLE = "U heeft verloren!"
LOST_TEXT = "U heeft het spel beëindigd zonder te bewaren, hiermee gaf je je nederlaag toe."
SAVED_TITLE = "Spel wordt later verder gespeeld!"
SAVED_TEXT = ("Je tegenstander heeft het spel gestopt om op een andere keer verder te spelen. Het spel is "
              "opgeslagen.")
WON_TITLE = "U heeft gewonnen!!!"
WON_TEXT = "Je tegenstander heeft het spel gestopt en verklaart zichzelf als verliezer en jou als winnaar."

SCRIPT = [Turn((6, 6), [Act(1, TANK, HQ[1], loads=2)]), SKIP, SKIP]


class StopTest(GameTest):
    def two_turns(self):
        """The game up to the start of anna's third turn."""
        green, brown = self.begin(SCRIPT)
        self.play_script(SCRIPT[:2])
        green.wait_phase(0)
        brown.wait_waiting("opponent's turn")
        self.assertEqual(3, green.state()["TurnNumber"])
        self.assertIs(True, green.get("cmdStop")["enabled"])
        return green, brown

    def answer(self, c, title, text, button):
        """Waits for the box of that title (the one answered before may still
        be closing), checks its text and presses the button."""
        found = {}

        def open_box():
            dialog = c.ok({"cmd": "dialog"}).get("dialog")
            if dialog and dialog.get("title") == title:
                found.update(dialog)
                return True
            return False

        c.wait_until(open_box, "the box %r on %s" % (title, c.label), self.PATIENCE)
        self.assertEqual(text, found["text"], c.label)
        c.answer(button)

    def stop(self, green, save):
        green.click("cmdStop")
        self.answer(green, STOP_TITLE, STOP_TEXT, "yes")
        self.answer(green, SAVE_TITLE, SAVE_TEXT, "yes" if save else "no")

    def wait_closed(self, *copies):
        for c in copies:
            c.wait_state("GameRunning", lambda v: v is False, "the game stopped", self.PATIENCE)
            c.wait_board_text(CLOSING_TEXT, self.PATIENCE)
            c.wait_control("cmdStart", "enabled", lambda e: e is True, "cmdStart enabled", self.PATIENCE)
            self.assertIs(False, c.get("Voertuig_1(0)")["visible"], c.label)

    def saved(self, c, opponent):
        with open(c.saved_game_path(opponent), "rb") as f:
            return parse_position(f.read().decode("latin-1"))

    def stop_and_save(self):
        green, brown = self.two_turns()
        before = (green.position(), brown.position())
        self.stop(green, save=True)
        self.answer(brown, SAVED_TITLE, SAVED_TEXT, "ok")
        self.wait_closed(green, brown)
        # Both keep the game, named after the other player, in the same turn.
        mine, theirs = self.saved(green, "bert"), self.saved(brown, "anna")
        self.assertEqual([], position_differences(mine, theirs))
        self.assertEqual(before[0], mine)
        self.assertEqual(before[1], theirs)
        self.assertEqual("3", mine["MAIN"]["BEURT"])
        return green, brown, before

    def resume(self, green, brown):
        self.press_start(green, brown, resume=True)
        for c, peer in ((green, "bert"), (brown, "anna")):
            c.wait_for_log_line("restarting game sequence at ", self.PATIENCE)
            self.assertFalse(os.path.exists(c.saved_game_path(peer)), "a saved game is good for one start")


class StopAndSave(StopTest):
    def test_resumed_in_the_same_run(self):
        green, brown, before = self.stop_and_save()
        self.assertTrue(os.path.exists(os.path.join(self.root, "shared", "anna.eot")),
                        "the .eot of the stopped turn stays in the folder")
        self.resume(green, brown)
        # The stopped turn's .eot is still there: bert takes it for the end of
        # anna's resumed turn 3 and starts his turn 4 while anna is at hers.
        green.wait_phase(0)
        brown.wait_phase(0)
        self.assertEqual((3, 4), (green.state()["TurnNumber"], brown.state()["TurnNumber"]))
        self.assertEqual(before[0], green.position())

    def test_resumed_after_both_programs_restart(self):
        green, brown, before = self.stop_and_save()
        for c in (green, brown):
            self.assertEqual(0, c.exit())
        for c in (green, brown):
            c.restart()
        for c in (green, brown):
            c.wait_started(2 * self.PATIENCE)
        self.reconnect(green, brown)
        self.resume(green, brown)
        green.wait_phase(0)
        brown.wait_waiting("opponent's turn")
        for c, position in zip((green, brown), before):
            self.assertEqual(3, c.state()["TurnNumber"])
            self.assertEqual(position, c.position())
        green.click("cmdEindeBeurt")
        brown.wait_phase(0)
        self.assertEqual(4, brown.state()["TurnNumber"])

    def reconnect(self, a, b):
        for c in (a, b):
            c.go_online()
            c.select_player(1)
        a.wait_sees("bert", timeout=2 * self.PATIENCE)
        b.wait_sees("anna", timeout=2 * self.PATIENCE)
        a.click("cmdRequestToPlay")
        b.wait_dialog(self.PATIENCE)
        b.answer("yes")
        a.wait_dialog(self.PATIENCE)
        a.answer("ok")
        for c in (a, b):
            c.wait_state("Check1", lambda v: v == 1, "Check1 1", self.PATIENCE)
            c.wait_no_dialog()


class GiveUp(StopTest):
    def test_given_up_is_won_by_the_other(self):
        green, brown = self.two_turns()
        # An older saved game against bert, written while this game runs:
        # giving up leaves it as it was.
        older = b"[MAIN]\r\nLOK=2\r\nEXT=1\r\nBEURT=17\r\n"
        os.makedirs(os.path.dirname(green.saved_game_path("bert")), exist_ok=True)
        with open(green.saved_game_path("bert"), "wb") as f:
            f.write(older)
        self.stop(green, save=False)
        self.answer(green, LOST_TITLE, LOST_TEXT, "ok")
        self.answer(brown, WON_TITLE, WON_TEXT, "ok")
        self.wait_closed(green, brown)
        self.assertIs(True, green.state()["GameLost"])
        self.assertIs(True, brown.state()["GameWon"])
        with open(green.saved_game_path("bert"), "rb") as f:
            self.assertEqual(older, f.read(), "the older saved game is left in place")
        self.assertFalse(os.path.exists(brown.saved_game_path("anna")), "nothing saved by giving up")


class StopDeclined(StopTest):
    def test_no_leaves_the_game_as_it_was(self):
        green, brown = self.two_turns()
        before = green.state()
        green.click("cmdStop")
        self.answer(green, STOP_TITLE, STOP_TEXT, "no")
        green.wait_no_dialog()
        after = green.state()
        for key in ("GameRunning", "GamePhase", "TurnNumber", "Position"):
            self.assertEqual(before[key], after[key], key)
        green.click("cmdEindeBeurt")
        brown.wait_phase(0)


DAMAGED_TITLE = "Opgeslagen spel beschadigd"


class DamagedSavedGame(StopTest):
    """anna holds a damaged saved game against bert, bert none: anna is told,
    the file is set aside, and both play a new game after the toss."""

    def damaged_start(self, damage):
        for attempt in range(1, test_game.DEAL_ATTEMPTS + 1):
            a, b = self.damaged_start_once(damage)
            if not self.deal_lost(attempt, a, b):
                break
        self.assertEqual([], position_differences(a.position(), b.position()))

    def damaged_start_once(self, damage):
        def before_start(a, b):
            path = a.saved_game_path("bert")
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "wb") as f:
                f.write(damage)
        a, b = self.pair(test_game.dice_of(SCRIPT, test_game.TOSS_ANNA, 1),
                         test_game.dice_of(SCRIPT, test_game.TOSS_BERT, 2), before_start=before_start,
                         timeout=2 * self.PATIENCE)
        path = a.saved_game_path("bert")
        a.click("cmdStart")
        b.click("cmdStart")
        self.answer(a, test_game.RESUME_TITLE, test_game.RESUME_TEXT, "yes")
        found = {}

        def box():
            dialog = a.ok({"cmd": "dialog"}).get("dialog")
            found.update(dialog or {})
            return bool(dialog) and dialog.get("title") == DAMAGED_TITLE
        a.wait_until(box, "the box about the damaged saved game", self.PATIENCE)
        self.assertIn(path, found["text"])
        a.answer("ok")
        self.assertFalse(os.path.exists(path))
        with open(path + ".bad", "rb") as f:
            self.assertEqual(damage, f.read(), "the damaged file is kept as it was")
        self.assertTrue(any(line.startswith("saved game %s cannot be loaded (" % path) for line in a.log_lines()))
        for c in (a, b):
            c.wait_waiting("toss", self.PATIENCE)
            c.click("cmdGooi")
        a.wait_phase(0)
        b.wait_waiting("opponent's turn")
        return a, b

    def test_garbage(self):
        self.damaged_start(b"[MAIN]\r\nLOK=1\r\nEXT=2\r\nBEURT=drie\r\n" + bytes(range(256)))

    def test_cut_off(self):
        self.damaged_start(b"[MAIN]\r\nLOK=1\r\nEXT=2\r\nBEURT=3\r\n[VEHPOS_LOK]\r\nVEH00=11")


def main():
    if len(sys.argv) < 3:
        print("usage: test_stop.py PROGRAM Class[.method] ...", file=sys.stderr)
        return 2
    test_game.PROGRAM = os.path.abspath(sys.argv[1])
    return run_tests(sys.modules[__name__], sys.argv[2:])


if __name__ == "__main__":
    sys.exit(main())
