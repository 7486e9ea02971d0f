"""End-to-end tests of a game between two copies of the program, each with its
own homes and X server, meeting in one shared folder (or in two folders kept
in step by a synchronisation program), with dice scripted per copy: the
toss and the deal, turns skipped and played, camp loading, moves and shots,
mines, flags, the jeep's rescue run and the end of a game by victory.

    python3 test_game.py PATH/TO/valkenhorn TestClass[.test_method]

After every turn both copies must hold the same position, each seen from its
own side, and both run logs the lines of the turn, one after the other; the
copy that read the end of the turn warns that the positions differ exactly
when they do (the differences the game keeps on purpose).

Exit code 0 when all pass, 1 on a failure, 77 when the tests were skipped."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from collections import OrderedDict

# No byte-code caches in the source tree.
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from game_session import (ANCHORS, CAMP, CAMP_PLACES, COMMANDO, DEAL_ATTEMPTS, DIE_CONTROLS,  # noqa: E402
                          FLAG_TEXT, FLAG_TITLE, GENIE, HQ, HQ_PLACES, INFANTRY, INFANTRY2, ISLAND,
                          ISLAND_ANCHORS, JEEP, MINE_TEXT, MINE_TITLE, RESUME_TEXT, RESUME_TITLE, SEPARATOR_62,
                          STOP_TEXT, STOP_TITLE, TANK, FolderWatch, GameCopy, army_value, deck_read_too_early_by,
                          expect_lines_from, field_mark, game_lines, in_view, new_game_sections,
                          opponent_action_lines, own_action_lines, position_differences, rect_of,
                          seen_from_the_other_side, set_army_value, set_vehicle, veh_key, vehicle_on_field)
from link_session import local_ids, wait_files  # noqa: E402
from valkenhorn_session import XServer, format_board_text, is_rotation, run_tests  # noqa: E402

PROGRAM = None

SYNC_PAIR = os.environ.get("VALKENHORN_SYNC_PAIR") or os.path.normpath(
    os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "..", "shared", "tools", "sync",
                 "sync-pair"))

CLOSING_TEXT = ("om opnieuw te spelen met dezelfde speler, druk op 'spel starten'. om te spelen tegen een andere "
                "speler druk eerst op 'verbreken' om daarna die andere speler uit te nodigen. druk op 'afsluiten' om "
                "het programma te beeindigen.")
TURN_ENDED = "opponent's turn ended at "
# What the reader of an end of turn logs when the digest the opponent sent
# differs from its own position's.
DESYNC = "position differs from opponent's at "
DESYNC_LINES = [DESYNC, re.compile(r"^opponent's digest [0-9a-f]{16}, own digest [0-9a-f]{16}$")]
DESYNC_WARNING = "let op: uw spel en dat van uw tegenstander lopen uiteen."
YOUR_TURN = ("u bent aan de beurt. gelieve op de knop 'gooien' te drukken, of op 'einde beurt' om je beurt over te "
             "slaan.")
THEIR_TURN = ("het is nu de beurt aan de externe speler. indien er interactie van u nodig is, zal u daarvan melding "
              "krijgen")

# What the board says while a die is chosen.
NO_CAMP = (". duid een eigen voertuig aan om te verplaatsen, of om mee te schieten, door daarop te dubbelklikken. u "
           "kan geen voertuig kiezen die zich in uw kamp bevindt (geen 6, of volzet HQ, of geen kompagnieen).")
WITH_CAMP = (". duid een eigen voertuig aan om te verplaatsen, of om mee te schieten, door daarop te dubbelklikken. "
             "u kan een voertuig kiezen die zich in uw kamp bevindt en naar het HQ verplaatsen maar niet verder.")
BOTH_WITH_SIX = ("u koos voor beide dobbelstenen, de waarde 6 behoort tot de mogelijkheden. duid een eigen voertuig "
                 "aan om te verplaatsen, of om mee te schieten, door daarop te dubbelklikken. u kan een voertuig "
                 "kiezen die zich in uw kamp bevindt en naar het HQ verplaatsen, misschien wel verder.")
CHOOSE_DICE = ("Dubbelklik, afhankelijk van wat je wil doen, op de dobbelstenen apart (links of rechts), of beiden "
               "samen (midden). Dubbelklik dan op het voertuig dat u wenst te verplaatsen, of waarmee u wilt "
               "schieten, om vervolgens de bestemming met een dubbelklik aan te klikken. De bestemming is een vakje "
               "op het spelbord, leeg, of met een mijn om op te pikken, of een vijandelijk voertuig waarop je schiet. "
               "Je kan je beurt vroegtijdig beeindigen door op de knop 'einde beurt' te klikken.")

# The toss: anna throws 11 and bert 4, so anna leads the green army.
TOSS_ANNA, TOSS_BERT = (6, 5), (2, 2)
YES_FLAG = (FLAG_TITLE, "yes")
YES_MINE = (MINE_TITLE, "yes")


class Act:
    """One action of a turn: the die (1, 2, or 3 for both), the own vehicle,
    where it goes (a field, or `target`, the slot of the enemy vehicle shot
    at), slow clicks in the camp, the answers to its questions (title,
    button), and the code of its record."""

    def __init__(self, die, slot, dest=None, loads=0, answers=(), code=1, target=None, mine=None):
        self.die, self.slot, self.dest, self.loads = die, slot, dest, loads
        self.answers, self.code, self.target = list(answers), code, target
        self.mine = mine  # the watcher's mine control a genie picks up
        if target is not None:
            self.code = 2


class Turn:
    """A turn: no roll skips it at phase 0; a roll without actions ends it at
    phase 4; one action with one die ends it with "Einde Beurt" after it."""

    def __init__(self, roll=None, actions=()):
        self.roll, self.actions = roll, list(actions)


SKIP = Turn()


def dice_of(script, toss, side):
    """The values a copy rolls in order: the toss, then its own turns' rolls
    (turn 1 and every odd turn belong to the green army, side 1)."""
    values = list(toss)
    for number, turn in enumerate(script, start=1):
        if (1 if number % 2 else 2) == side and turn.roll:
            values += list(turn.roll)
    return values


class GameTest(unittest.TestCase):
    """anna and bert, each on an X server of its own, meet in a shared folder,
    connect and play. `self.cursor` keeps, per copy, how far its run log has
    been checked."""

    SCALE = None  # the sessions' own, 0.05
    # Where the marks of the opponent's actions are watched: they then stand
    # 0.4 s, time enough for the polls of a busy machine to see them.
    MARKS_SCALE = "0.1"
    PATIENCE = 30

    def setUp(self):
        self.root = tempfile.mkdtemp(prefix="vk-game-")
        self.addCleanup(shutil.rmtree, self.root, True)
        self.cursor = {}

    def folder(self, name):
        path = os.path.join(self.root, name)
        os.makedirs(path, exist_ok=True)
        return path

    def copy(self, name, local_id, folder, peer, dice):
        x = XServer()
        x.__enter__()
        self.addCleanup(x.__exit__, None, None, None)
        kwargs = {"time_scale": self.SCALE} if self.SCALE else {}
        c = GameCopy(PROGRAM, x.display, self.root, name, local_id, [folder], [peer], dice=dice, **kwargs)
        c.patience = self.PATIENCE
        self.addCleanup(c.close)
        return c

    def pair(self, dice_anna, dice_bert, folders=None, before_start=None, timeout=60):
        """anna and bert started, on-line, connected; before_start(a, b) runs
        before the programs start."""
        shared = folders or (self.folder("shared"),) * 2
        ida, idb = local_ids(2)
        a = self.copy("anna", ida, shared[0], "bert", dice_anna)
        b = self.copy("bert", idb, shared[1], "anna", dice_bert)
        if before_start:
            before_start(a, b)
        for c in (a, b):
            c.start()
        for c in (a, b):
            c.wait_started(timeout)
        a.go_online()
        b.go_online()
        a.select_player(1)
        b.select_player(1)
        a.wait_sees("bert", timeout=timeout)
        b.wait_sees("anna", timeout=timeout)
        a.click("cmdRequestToPlay")
        b.wait_dialog(timeout)
        b.answer("yes")
        a.wait_dialog(timeout)
        a.answer("ok")
        for c in (a, b):
            c.wait_state("Check1", lambda v: v == 1, "Check1 1", timeout)
            c.wait_no_dialog()
            c.wait_state("LinkBusy", lambda v: v is False, "LinkBusy clear", timeout)
            self.assertIs(True, c.get("cmdStart")["enabled"])
        return a, b

    # -- the start of a game

    def press_start(self, a, b, resume=False):
        for c in (a, b):
            c.click("cmdStart")
        for c in (a, b):
            if resume:
                dialog = c.wait_dialog_titled(RESUME_TITLE)
                self.assertEqual(RESUME_TEXT, dialog["text"])
                c.answer("yes")

    def start_game(self, a, b):
        """Both press "Spel Starten" and toss once; returns (green, brown)
        once both logs say the game sequence starts."""
        timeout = 2 * self.PATIENCE
        self.press_start(a, b)
        for c in (a, b):
            c.wait_waiting("toss", timeout)
        for c in (a, b):
            c.click("cmdGooi")
        for c in (a, b):
            c.wait_for_log_line("starting game sequence at ", timeout)
        green, brown = (a, b) if a.state()["LocalSide"] == 1 else (b, a)
        for c, side in ((green, 1), (brown, 2)):
            state = c.state()
            self.assertEqual((side, 3 - side, side, 1, True), (state["LocalSide"], state["ExternalSide"],
                                                              state["BoardSide"], state["TurnNumber"],
                                                              state["GameRunning"]), c.label)
        return green, brown

    def deal_lost(self, attempt, green, brown):
        """Whether the brown copy read the deck too early in this attempt of
        DEAL_ATTEMPTS; if so, both copies are closed and the test has new
        homes and a new folder for the next attempt."""
        if attempt == DEAL_ATTEMPTS or not deck_read_too_early_by((green, brown)):
            return False
        print("attempt %d: %s read the deck before %s had written it all; the game starts again"
              % (attempt, brown.label, green.label), file=sys.stderr)
        for c in (green, brown):
            c.close()
        self.setUp()
        return True

    def check_start_lines(self, c, peer, sums, won, resume=False):
        """The lines from "starting game with" to "starting game sequence at";
        sums: (mine, theirs) per toss. Sets the log cursor after them."""
        lines = game_lines(c.log_lines())
        begin = [i for i, l in enumerate(lines) if l.startswith("starting game with %s at " % peer)]
        self.assertTrue(begin, "%s: no line 'starting game with %s at'" % (c.label, peer))
        expected = ["starting game with %s at " % peer, "initiating new game to start at ",
                    "initiating interface for new game at "]
        if resume:
            expected += ["waiting for handshake to proceed previous game at ", "loading previous saved game at ",
                         SEPARATOR_62, "restarting game sequence at "]
            self.cursor[c.name] = expect_lines_from(lines, begin[-1], expected, c.label)
            return
        expected.append("waiting for handshake to proceed with toss at ")
        for number, (mine, theirs) in enumerate(sums, start=1):
            expected += ["result from %s rolling the dices: %d at " % (c.name, mine),
                         "result from %s rolling the dices: %d at " % (peer, theirs)]
            if number < len(sums):
                expected.append("same result from both players, must toss again at ")
        stack = c.state()["CompassStack"]
        if won:
            expected += ["%s plays with the green army at " % c.name, "shuffling cards at "]
        else:
            expected += ["%s plays with the brown army at " % c.name, "recieved shuffled cards at "]
        expected += ["order of shuffled cards:"] + ["card %02d: %02d" % (i + 1, card) for i, card in enumerate(stack)]
        expected += [SEPARATOR_62, "starting game sequence at "]
        self.cursor[c.name] = expect_lines_from(lines, begin[-1], expected, c.label)

    def begin(self, script, folders=None):
        """A new game between anna (green) and bert (brown) with the dice of
        the script; returns (green, brown). A game whose deck bert read too
        early is started again on new homes and folder (see
        deck_read_too_early_by), at most DEAL_ATTEMPTS times in all."""
        for attempt in range(1, DEAL_ATTEMPTS + 1):
            a, b = self.pair(dice_of(script, TOSS_ANNA, 1), dice_of(script, TOSS_BERT, 2), folders,
                             timeout=2 * self.PATIENCE)
            green, brown = self.start_game(a, b)
            if not self.deal_lost(attempt, green, brown):
                break
        self.assertEqual((a, b), (green, brown))
        self.check_start_lines(a, "bert", [(11, 4)], True)
        self.check_start_lines(b, "anna", [(4, 11)], False)
        self.assertEqual(a.state()["CompassStack"], b.state()["CompassStack"])
        self.green, self.brown = a, b
        self.assertSamePosition(a, b)
        return a, b

    # -- positions and logs

    def assertSamePosition(self, a, b, known=()):
        """Both copies hold one position, each from its own side, but for the
        known differences (section, key, value in a, value in b as turned)."""
        differences = position_differences(a.position(), b.position())
        self.assertEqual(sorted(known), sorted(differences),
                         "positions of %s and %s (turned) differ" % (a.label, b.label))

    def assertNoDesyncNext(self, c):
        """The line after the log cursor of c, if any, is no warning that the
        positions differ."""
        lines = game_lines(c.log_lines())
        cursor = self.cursor[c.name]
        if cursor < len(lines):
            self.assertFalse(lines[cursor].startswith(DESYNC), "%s: %r after the end of the turn"
                             % (c.label, lines[cursor]))

    def expect_log(self, c, expected):
        lines = game_lines(c.log_lines())
        self.cursor[c.name] = expect_lines_from(lines, self.cursor[c.name], expected, c.label)

    # -- a turn

    def play(self, mover, watcher, turn, known=(), marks=None, last=False):
        """Plays a turn of `mover` as a player does, while `watcher` follows
        it; then checks both logs and, unless it is the last turn of the game,
        the positions (known: the differences between green and brown). With
        a list `marks`, what the watcher shows of each action is added to it."""
        mover.wait_phase(0)
        watcher.wait_waiting("opponent's turn")
        self.assertEqual(mover.state()["TurnNumber"], watcher.state()["TurnNumber"])
        ended = watcher.count_lines(TURN_ENDED)
        own, theirs = [], []
        if turn.roll is None:
            mover.click("cmdEindeBeurt")
        else:
            own, theirs = self.roll(mover, turn.roll)
            first = None
            for index, act in enumerate(turn.actions):
                first, lines = self.act(mover, watcher, index, act, first, marks)
                own += lines[0]
                theirs += lines[1]
            if not turn.actions or (len(turn.actions) == 1 and turn.actions[0].die != 3):
                mover.click("cmdEindeBeurt")
        self.turn_ended(mover, watcher, ended, own, theirs, known, last)

    def turn_ended(self, mover, watcher, ended, own, theirs, known=(), last=False):
        """Waits until the watcher has seen the end of the turn and is at its
        own turn's start; checks the logs and the positions."""
        watcher.wait_line_count(TURN_ENDED, ended + 1)
        if not last:
            watcher.wait_phase(0)
            mover.wait_waiting("opponent's turn")
        self.expect_log(mover, own + ["ending turn at "])
        self.expect_log(watcher, theirs + [TURN_ENDED])
        if not last:
            # The end of turn carries the digest of the mover's position: the
            # watcher warns exactly when the two positions differ.
            if known:
                self.expect_log(watcher, DESYNC_LINES)
            else:
                self.assertNoDesyncNext(watcher)
            for c in (mover, watcher):
                self.assertEqual(c.count_lines(DESYNC), c.state()["Desyncs"], c.label)
            self.assertSamePosition(self.green, self.brown, known)
            for c in (mover, watcher):
                self.check_pictures(c)
                self.check_company_pictures(c)

    def check_pictures(self, c):
        """Each vehicle's picture is the one of its tag, from the folder of
        the view, where the view draws its field (in the camp, on its island,
        on the road squares whose places the tests know, or destroyed)."""
        p, view = c.position(), c.state()["BoardSide"]
        size = rect_of(c.get("Speelveld"))[2:]
        folder = {1: "groen_leger", 2: "bruin_leger"}[view]
        for side in (1, 2):
            for slot in range(11):
                field = int(army_value(p, side, "VEHPOS", veh_key(slot)))
                heading = int(army_value(p, side, "DIRVEH", veh_key(slot)))
                picture = c.get(c.vehicle(slot, side))
                where = "%s: vehicle %d of army %d on %d" % (c.label, slot, side, field)
                tag = army_value(p, side, "VEHTAG", veh_key(slot))
                self.assertEqual(os.path.join(folder, tag + ".gif"),
                                 os.path.join(*picture["picture"].split(os.sep)[-2:]), where)
                if field in ANCHORS:
                    expected = in_view(vehicle_on_field(field, heading), view, size)
                elif field == CAMP[side]:
                    expected = in_view(CAMP_PLACES[side][slot] + (750, 330), view, size)
                elif field == ISLAND[side]:
                    expected = in_view(ISLAND_ANCHORS[side] + (750, 330), view, size)
                elif field == 0:
                    expected = (120, slot * 480 + (360 if side == view else 1095), 750, 330)
                else:
                    continue
                self.assertEqual(expected, rect_of(picture), where)

    def check_company_pictures(self, c):
        """The camp and prison displays of both armies and the reserve of the
        army of the view show as many companies as the position counts."""
        p, view = c.position(), c.state()["BoardSide"]
        for side in (1, 2):
            for section_key, array, count in (("KMP", "KmpCmp_%d" % side, 25), ("PRS", "GV%d" % side, 20)):
                shown = sum(1 for i in range(count) if c.get("%s(%d)" % (array, i))["visible"])
                self.assertEqual(min(count, int(army_value(p, side, "KOMP", section_key))), shown,
                                 "%s: %s pictures shown" % (c.label, array))
        shown = sum(1 for i in range(25) if c.get("Image2(%d)" % i)["visible"])
        self.assertEqual(int(army_value(p, view, "KOMP", "RES")), shown, "%s: reserve pictures" % c.label)

    def roll(self, mover, values):
        mover.click("cmdGooi")
        mover.wait_phase(4)
        state = mover.state()
        self.assertEqual(tuple(values), (state["Dice1"], state["Dice2"]))
        return (["result of me rolling dices: %d and %d at " % tuple(values)],
                ["result of opponent rolling dices: %d and %d at " % tuple(values)])

    def act(self, mover, watcher, index, act, first, marks):
        """One action: die, vehicle, slow clicks, destination, answers.
        Returns the turn's first record and the lines of both logs."""
        side = mover.state()["LocalSide"]
        before = mover.position()
        src = int(army_value(before, side, "VEHPOS", veh_key(act.slot)))
        from_camp = src == CAMP[side]
        chosen = {(0, 1): 5, (0, 2): 14, (0, 3): 23, (1, 2): 10, (1, 1): 19}[(index, act.die)]
        mover.dblclick(DIE_CONTROLS[act.die])
        mover.wait_phase(chosen)
        mover.dblclick(mover.vehicle(act.slot))
        mover.wait_phase(chosen + (2 if from_camp else 3))
        for _ in range(act.loads):
            mover.slow_click(act.slot)
        seen = self.rects_before(watcher, side, act) if marks is not None else None
        if act.target is not None:
            dst = int(army_value(before, 3 - side, "VEHPOS", veh_key(act.target)))
            mover.dblclick(mover.vehicle(act.target, 3 - side))
        else:
            dst = act.dest
            mover.dblclick_field(dst)
        for title, button in act.answers:
            dialog = mover.wait_dialog_titled(title)
            self.assertEqual({FLAG_TITLE: FLAG_TEXT, MINE_TITLE: MINE_TEXT}[title], dialog["text"])
            mover.answer(button)
        if marks is not None:
            seen.update(self.watch_marks(watcher, act.die), act=act, src=src, dst=dst, side=side)
            marks.append(seen)
        if index == 0 and act.die != 3:
            mover.wait_phase(9 if act.die == 1 else 18)
        travels = act.code
        if index == 0:
            first = (act.slot, act.code, src, dst)
        elif act.code == 5:
            # The flag's code goes to the first record; the second travels as a move.
            first, travels = (first[0], 5, first[2], first[3]), 1
        return first, (own_action_lines(act.die, first, from_camp),
                       opponent_action_lines(act.die, act.slot, travels, src, dst, side))

    # -- the marks of the opponent's action

    def rects_before(self, watcher, side, act):
        seen = {"vehicle": rect_of(watcher.get(watcher.vehicle(act.slot, side)))}
        if act.target is not None:
            seen["target"] = rect_of(watcher.get(watcher.vehicle(act.target, 3 - side)))
        if act.mine:
            seen["mine"] = rect_of(watcher.get(act.mine))
        return seen

    def watch_marks(self, watcher, die):
        """What the watcher shows while the action is marked, then that the
        marks go. Only the replay shows Kader2 (Kader may still stand where
        the watcher's own last pick from the camp left it)."""
        watcher.wait_control("Kader2", "visible", lambda v: v is True, "Kader2 shown", timeout=watcher.patience)
        kader = watcher.get("Kader")
        seen = {"kader": rect_of(kader), "kader2": watcher.get("Kader2"), "dice_kader": watcher.get("DiceKader"),
                "die_left": watcher.get(DIE_CONTROLS[die])["left"], "text": watcher.state()["BoardText"],
                "view": watcher.state()["BoardSide"], "size": rect_of(watcher.get("Speelveld"))[2:]}
        self.assertIs(True, kader["visible"], "Kader shown with Kader2")
        watcher.wait_control("Kader2", "visible", lambda v: v is False, "Kader2 hidden again")
        used = {1: ["Dice_1"], 2: ["Dice_2"], 3: ["Dice_1", "Dice_2"]}[die]
        for name in ["Kader", "DiceKader", "MiniDice_1", "MiniDice_2"] + used:
            self.assertIs(False, watcher.get(name)["visible"], name + " hidden once the action is shown")
        return seen

    def check_marks(self, seen):
        """The red mark on the acting vehicle, the blue one where it goes, the
        frame on the die, and the text, as the watcher's view draws them."""
        act, side, dst, view, size = seen["act"], seen["side"], seen["dst"], seen["view"], seen["size"]
        self.assertEqual(seen["vehicle"], seen["kader"], "Kader on the acting vehicle")
        self.assertIs(True, seen["kader2"]["visible"])
        self.assertIs(True, seen["dice_kader"]["visible"])
        self.assertEqual(seen["die_left"], seen["dice_kader"]["left"], "DiceKader on the chosen die")
        verbs = {1: "en verplaatst het rood gemerkt voertuig naar het blauw gemerkt vakje",
                 2: "en schiet met het rood gemerkt voertuig op jouw blauw gemerkt voertuig"}
        if dst == HQ[side]:
            # The last free place; in these games the HQ never holds three.
            expected, verb = in_view(HQ_PLACES[side][2] + (750, 330), view, size), ""
        elif dst == CAMP[side]:
            expected, verb = in_view(CAMP_PLACES[side][act.slot] + (750, 330), view, size), ""
        elif act.target is not None:
            expected, verb = seen["target"], verbs[2]
        elif act.code == 4:
            expected = seen["mine"]
            verb = ("en verplaatst het rood gemerkt voertuig naar het blauw gemerkt vakje om aldaar de aanwezige "
                    "mijn op te pikken")
        else:
            expected = in_view(field_mark(dst), view, size)
            verb = {3: "en verplaatst het rood gemerkt voertuig, de mijn op dat vakje achterlatend, naar het blauw "
                       "gemerkt vakje",
                    5: "en verplaatst het rood gemerkt voertuig naar het blauw gemerkt vakje en neemt een vlag aan "
                       "boord"}.get(act.code, verbs[1])
        self.assertEqual(expected, rect_of(seen["kader2"]), "Kader2 of an action to %d in view %d" % (dst, view))
        die_words = {1: "dobbelsteen 1, ", 2: "dobbelsteen 2, ", 3: "beide dobbelstenen, "}[act.die]
        text = format_board_text("uw tegenstander gebruikt " + die_words + verb)
        self.assertTrue(is_rotation(seen["text"], text), "board text %r, expected a rotation of %r"
                        % (seen["text"], text))

    def play_script(self, script, start=1, known=None, marks=None):
        """Plays turns of the script from turn `start` on; known maps a turn
        number to the differences the positions keep from then on."""
        differences = ()
        for number, turn in enumerate(script[start - 1:], start=start):
            differences = (known or {}).get(number, differences)
            mover, watcher = (self.green, self.brown) if number % 2 else (self.brown, self.green)
            self.play(mover, watcher, turn, differences, marks)


class Toss(GameTest):
    def test_tie_then_deal(self):
        """Both throw 7 under .d01, toss again under .d02; anna wins and deals."""
        for attempt in range(1, DEAL_ATTEMPTS + 1):
            a, b, watch = self.tie_then_deal()
            if not self.deal_lost(attempt, a, b):
                break
        self.assertEqual(["anna.goo", "bert.goo"], sorted(n for n in watch.seen if n.endswith(".goo")))
        self.assertEqual(["anna.d01", "bert.d01", "bert.d02", "anna.d02", "anna.mkk"],
                         [n for n in watch.seen if not n.endswith(".goo")], "the files of the toss and the deal")
        self.check_start_lines(a, "bert", [(7, 7), (11, 4)], True)
        self.check_start_lines(b, "anna", [(7, 7), (4, 11)], False)
        self.check_deal(a, b)
        self.assertSamePosition(a, b)

    def tie_then_deal(self):
        a, b = self.pair([3, 4, 6, 5], [5, 2, 2, 2])
        shared = self.folder("shared")
        with FolderWatch(shared) as watch:
            self.press_start(a, b)
            for c in (a, b):
                c.wait_waiting("toss")
            self.assertEqual([1, 1], [a.state()["TossNumber"], b.state()["TossNumber"]])
            self.toss(a, 1, 7, shared)
            self.toss(b, 1, 7)
            for c in (a, b):
                c.wait_log(r"^same result from both players, must toss again at \S*\d")
                c.wait_state("TossNumber", lambda n: n == 2, "toss 2")
                c.wait_waiting("toss")
                c.wait_board_text("er is gelijk gegooid! gooi opnieuw aub...")
            self.toss(b, 2, 4, shared)
            self.toss(a, 2, 11)
            for c in (a, b):
                c.wait_for_log_line("starting game sequence at ")
                self.assertEqual(2, c.state()["TossNumber"])
        return a, b, watch

    def toss(self, c, number, total, shared=None):
        """c tosses; tossing first, its file stands in the shared folder until
        the other has tossed too."""
        c.click("cmdGooi")
        c.wait_log(r"^result from %s rolling the dices: \d+ at \S*\d" % c.name, count=number)
        if shared:
            name = "%s.d%02d" % (c.name, number % 100)
            wait_files(shared, lambda names: name in names, name)
            with open(os.path.join(shared, name), "rb") as f:
                self.assertEqual(b"[GENERAL]\r\nGOOI=%d\r\n" % total, f.read())

    def check_deal(self, green, brown):
        """The deck: 32 different cards, in the same order on both sides and in both logs."""
        stacks = [c.state()["CompassStack"] for c in (green, brown)]
        self.assertEqual(stacks[0], stacks[1])
        self.assertEqual(list(range(1, 33)), sorted(stacks[0]))
        self.assertEqual([32, 32], [c.state()["StackPoint"] for c in (green, brown)])
        blocks = []
        for c in (green, brown):
            lines = game_lines(c.log_lines())
            at = lines.index("order of shuffled cards:")
            blocks.append(lines[at + 1:at + 33])
            self.assertEqual(["card %02d: %02d" % (i + 1, card) for i, card in enumerate(stacks[0])], blocks[-1])
        self.assertEqual(blocks[0], blocks[1])
        self.assertEqual(2, brown.state()["BoardSide"])
        self.assertTrue(brown.get("Speelveld")["picture"].endswith("yambo_2.bmp"))
        self.assertTrue(green.get("Speelveld")["picture"].endswith("yambo_1.bmp"))
        files = [n for n in os.listdir(self.folder("shared")) if not n.endswith(".xid")]
        self.assertEqual([], [n for n in files if n.endswith((".mkk", ".goo")) or re.search(r"\.d\d\d$", n)])


class SkippedTurn(GameTest):
    def test_skip_at_phase_0(self):
        """A turn ended before the roll sends only its end; the opponent shows
        nothing of it but the end of the turn."""
        script = [SKIP, SKIP, Turn((6, 6), [Act(1, TANK, HQ[1], loads=1)])]
        green, brown = self.begin(script)
        green.wait_phase(0)
        green.wait_board_text(YOUR_TURN)
        brown.wait_board_text(THEIR_TURN)
        self.assertEqual([12624992, 8421504], [c.get("frDices")["backColor"] for c in (green, brown)])
        with FolderWatch(self.folder("shared")) as watch:
            self.play(green, brown, SKIP)
        self.assertEqual(["anna.eot"], watch.seen, "files that travelled for a skipped turn")
        self.assertTrue(green.state()["LastSentFile"].endswith("anna.eot"))
        state = brown.state()
        self.assertEqual((0, 0, 2), (state["OppDice1"], state["OppDice2"], state["TurnNumber"]))
        # The skip sends no roll; the skipping side's stop stays possible.
        self.assertEqual(0, green.count_lines("result of me rolling dices: "))
        self.assertEqual(0, brown.count_lines("result of opponent rolling dices: "))
        self.assertIs(True, green.get("cmdStop")["enabled"])
        self.assertIs(False, green.get("frDices")["enabled"], "the dice panel closed at the end of the turn")
        with FolderWatch(self.folder("shared")) as watch:
            self.play(brown, green, SKIP)
        self.assertEqual(["bert.eot"], watch.seen)
        self.play_script(script, start=3)



class DiceChoice(GameTest):
    def test_choose_and_unchoose(self):
        """Each choice of the dice, taken back by a second double click, leaves
        the turn at phase 4 as it was; the turn ended there sends its roll and
        its end."""
        green, brown = self.begin([Turn((3, 6)), SKIP])
        green.wait_phase(0)
        ended = brown.count_lines(TURN_ENDED)
        with FolderWatch(self.folder("shared")) as watch:
            self.assertIs(True, green.get("cmdStop")["enabled"], "a stop is possible before the roll")
            own, theirs = self.roll(green, (3, 6))
            self.assertIs(False, green.get("cmdStop")["enabled"], "no stop once the dice are rolled")
            brown.wait_log(r"^result of opponent rolling dices: 3 and 6 at ")
            for name, value in (("Dice_1", 3), ("MiniDice_1", 3), ("Dice_2", 6), ("MiniDice_2", 6)):
                die = brown.get(name)
                self.assertEqual((True, "dice%d.gif" % value), (die["visible"], os.path.basename(die["picture"])),
                                 "the opponent's roll on " + name)
            self.assertEqual([3, 6], [brown.state()["OppDice1"], brown.state()["OppDice2"]])
            green.wait_board_text(CHOOSE_DICE)
            for name, phase, others, text in (
                    ("Dice_1", 5, ("Dice_2", "Dices"), "u koos voor dobbelsteen 1, deze heeft de waarde 3" + NO_CAMP),
                    ("Dice_2", 14, ("Dice_1", "Dices"),
                     "u koos voor dobbelsteen 2, deze heeft de waarde 6" + WITH_CAMP),
                    ("Dices", 23, ("Dice_1", "Dice_2"), BOTH_WITH_SIX)):
                self.choose_and_unchoose(green, name, phase, others, text)
            green.click("cmdEindeBeurt")
            self.turn_ended(green, brown, ended, own, theirs)
        self.assertEqual(["anna.wrp", "anna.eot"], watch.seen)
        self.play(brown, green, SKIP)

    def choose_and_unchoose(self, c, name, phase, others, text):
        c.dblclick(name)
        c.wait_phase(phase)
        c.wait_board_text(text)
        kader = c.get("DiceKader")
        self.assertEqual((True, c.get(name)["left"]), (kader["visible"], kader["left"]), "DiceKader on " + name)
        for other in others:
            self.assertIs(False, c.get(other)["enabled"], other + " while " + name + " is chosen")
        self.assertIs(False, c.get("cmdEindeBeurt")["enabled"])
        c.dblclick(name)
        c.wait_phase(4)
        c.wait_board_text(CHOOSE_DICE)
        self.assertIs(False, c.get("DiceKader")["visible"])
        for control in ("Dice_1", "Dice_2", "Dices", "cmdEindeBeurt"):
            self.assertIs(True, c.get(control)["enabled"], control + " after " + name + " was taken back")
        self.assertEqual([-1] * 2, c.state()["ActVeh"])


class CampLoading(GameTest):
    """Camp vehicles loaded by slow clicks, with companies and with a mine,
    go to the HQ with a 6, for both armies."""

    SCALE = GameTest.MARKS_SCALE
    SCRIPT = [
        Turn((6, 6), [Act(1, TANK, HQ[1], loads=3), Act(2, COMMANDO, HQ[1], loads=2)]),
        Turn((6, 6), [Act(1, INFANTRY, HQ[2]), Act(2, GENIE, HQ[2], loads=2)]),
        Turn((6, 2), [Act(1, COMMANDO + 1, HQ[1], loads=3)]),
    ]
    # An infantry of army 2 sent to the HQ without a slow click keeps the
    # heading letter "o" of the camp in its tag on the sender; the receiver's
    # move into the HQ gives it "w".
    KNOWN = {2: [("VEHTAG_EXT", "VEH03", "infanterie_2_0_0_w", "infanterie_2_0_0_o")]}

    def test_companies_and_mine_to_the_hq(self):
        green, brown = self.begin(self.SCRIPT)
        marks = []
        with FolderWatch(self.folder("shared")) as watch:
            self.play(green, brown, self.SCRIPT[0], marks=marks)
        self.assertEqual(["anna.wrp", "anna.act", "anna.act", "anna.eot"], watch.seen, "the files of a turn")
        p = brown.position()
        self.assertEqual(("114", "3", "tank_1_3_o"), self.vehicle_in(p, 1, TANK))
        self.assertEqual(("114", "1", "commando_1_1_1_o"), self.vehicle_in(p, 1, COMMANDO))
        self.assertEqual(["-6", "113", "113", "113", "113"], list(p["MIJN_GER"].values()))
        self.assertEqual("11", army_value(p, 1, "KOMP", "KMP"))
        self.assertIs(False, brown.get("Mijn_1(0)")["visible"], "the loaded mine leaves the store")
        self.play(brown, green, self.SCRIPT[1], self.KNOWN[2], marks=marks)
        p = green.position()
        self.assertEqual(("117", "0", "infanterie_2_0_0_w"), self.vehicle_in(p, 2, INFANTRY))
        self.assertEqual(("117", "2", "genie_2_2_0_w"), self.vehicle_in(p, 2, GENIE))
        self.assertEqual("13", army_value(p, 2, "KOMP", "KMP"))
        self.assertEqual("infanterie_2_0_0_o", army_value(brown.position(), 2, "VEHTAG", veh_key(INFANTRY)))
        self.play(green, brown, self.SCRIPT[2], self.KNOWN[2], marks=marks)
        self.assertEqual(("114", "2", "commando_1_2_0_o"), self.vehicle_in(brown.position(), 1, COMMANDO + 1))
        self.assertEqual(5, len(marks))
        for seen in marks:
            self.check_marks(seen)

    def vehicle_in(self, p, side, slot):
        return tuple(army_value(p, side, section, veh_key(slot)) for section in ("VEHPOS", "CMPVEH", "VEHTAG"))


class Shots(GameTest):
    """The tank of the green army drives out and shoots twice from field 47:
    at an infantry with 2 companies (one is taken prisoner) and at a
    commando with 1 company (destroyed, its company to the reserve)."""

    SCALE = GameTest.MARKS_SCALE
    SCRIPT = [
        Turn((6, 6), [Act(1, TANK, HQ[1], loads=3)]),
        Turn((6, 6), [Act(1, INFANTRY, HQ[2], loads=2), Act(2, COMMANDO, HQ[2], loads=1)]),
        Turn((5, 4), [Act(3, TANK, 53)]),
        Turn((6, 4), [Act(3, INFANTRY, 49)]),
        Turn((1, 2), [Act(1, TANK, 47)]),  # the strategic link from 53
        Turn((5, 4), [Act(3, COMMANDO, 50)]),
        Turn((2, 3), [Act(1, TANK, target=INFANTRY), Act(2, TANK, target=COMMANDO)]),
    ]

    def test_moves_and_shots(self):
        green, brown = self.begin(self.SCRIPT)
        marks = []
        self.play_script(self.SCRIPT, marks=marks)
        self.assertEqual(9, len(marks))
        for seen in marks:
            self.check_marks(seen)
        self.check_after_shots(green, brown)

    def check_after_shots(self, green, brown):
        p = brown.position()
        self.assertEqual(["49", "1", "infanterie_2_1_0_w"], [army_value(p, 2, section, veh_key(INFANTRY))
                                                             for section in ("VEHPOS", "CMPVEH", "VEHTAG")])
        self.assertEqual(["0", "0", "commando_2_0_0_o"], [army_value(p, 2, section, veh_key(COMMANDO))
                                                          for section in ("VEHPOS", "CMPVEH", "VEHTAG")])
        self.assertEqual(["11", "12", "1"], [army_value(p, 2, "KOMP", key) for key in ("RES", "KMP", "PRS")])
        # The link keeps the heading the tank had on 53.
        self.assertEqual(["47", "3", "tank_1_3_n"], [army_value(p, 1, section, veh_key(TANK))
                                                     for section in ("VEHPOS", "CMPVEH", "VEHTAG")])
        for c in (green, brown):
            cells = c.state()["BoardCell"]
            self.assertEqual([1, -4, 0], [cells[47 - 1], cells[49 - 1], cells[50 - 1]], c.label)
        # The destroyed commando: on the brown side in its Stock, on the green
        # side at the left edge of the board, below the local army's column.
        commando = brown.get(brown.vehicle(COMMANDO, 2))
        self.assertEqual((120, COMMANDO * 480 + 360), (commando["left"], commando["top"]))
        commando = green.get(green.vehicle(COMMANDO, 2))
        self.assertEqual((120, COMMANDO * 480 + 1095), (commando["left"], commando["top"]))


class JeepRescue(GameTest):
    """After the shots the brown army has one company in prison: its jeep
    loads it on its island and drives it home, by way of the link 23-17."""

    SCRIPT = Shots.SCRIPT + [
        Turn((6, 6), [Act(3, JEEP, 21)]),
        SKIP,
        Turn((2, 1), [Act(1, JEEP, 23)]),
        SKIP,
        Turn((3, 1), [Act(1, JEEP, 17)]),
        SKIP,
        Turn((6, 5), [Act(3, JEEP, CAMP[2])]),
    ]

    def test_prisoner_driven_home(self):
        green, brown = self.begin(self.SCRIPT)
        self.play_script(self.SCRIPT[:8])
        for c in (green, brown):
            p = c.position()
            self.assertEqual(["21", "1", "jeep_2_1_o"], [army_value(p, 2, section, veh_key(JEEP))
                                                         for section in ("VEHPOS", "CMPVEH", "VEHTAG")], c.label)
            self.assertEqual("0", army_value(p, 2, "KOMP", "PRS"))
        self.assertTrue(any(l == "starts escape with jeep" for l in green.log_lines()))
        self.play_script(self.SCRIPT[:13], start=9)
        self.drive_home(brown, green)

    def drive_home(self, brown, green):
        """The jeep reaches its camp: its prisoner joins the camp and the jeep
        stands on its island again. The copy that watches marks the camp
        place of slot 10, which the camp doesn't have: that copy stops there
        with a run-time fault."""
        brown.wait_phase(0)
        self.roll(brown, (6, 5))
        self.act(brown, green, 0, self.SCRIPT[13].actions[0], None, None)
        brown.wait_until(lambda: army_value(brown.position(), 2, "VEHPOS", veh_key(JEEP)) == "118",
                         "the jeep back on its island")
        p = brown.position()
        self.assertEqual(["118", "0", "jeep_2_0_o"], [army_value(p, 2, section, veh_key(JEEP))
                                                      for section in ("VEHPOS", "CMPVEH", "VEHTAG")])
        self.assertEqual(["11", "13", "0"], [army_value(p, 2, "KOMP", key) for key in ("RES", "KMP", "PRS")])
        green.wait_until(lambda: any(l.startswith("run-time fault: ") for l in green.log_lines()),
                         "the fault of the watching copy")
        self.expect_log(green, ["result of opponent rolling dices: 6 and 5 at ", "-" * 56,
                                "opponent takes action with following details at ", "uses both dices",
                                "moves vehicle", "from 17", "to main camp", re.compile("^run-time fault: ")])
        dialog = green.wait_dialog()
        self.assertEqual("message", dialog["kind"])
        green.answer("ok")
        self.assertNotEqual(0, green.wait_exit())
        # The record stays unread: the sender waits for it.
        self.assertTrue(os.path.exists(os.path.join(self.folder("shared"), "bert.act")))
        self.assertEqual("consumed", brown.state()["Waiting"])


class Mines(GameTest):
    """A green commando loads a mine in its camp, lays it on field 48; a brown
    genie picks it up and brings it to its own camp, where it stays captured."""

    SCALE = GameTest.MARKS_SCALE
    SCRIPT = [
        Turn((6, 6), [Act(1, COMMANDO, HQ[1], loads=2)]),
        Turn((6, 6), [Act(1, GENIE, HQ[2], loads=1)]),
        Turn((5, 4), [Act(3, COMMANDO, 53)]),
        SKIP,
        Turn((1, 2), [Act(1, COMMANDO, 47)]),
        SKIP,
        Turn((1, 2), [Act(1, COMMANDO, 48)]),
        SKIP,
        Turn((1, 2), [Act(1, COMMANDO, 47, answers=[YES_MINE], code=3)]),
        Turn((6, 5), [Act(3, GENIE, 48, code=4, mine="Mijn_1(0)")]),
        SKIP,
        Turn((6, 6), [Act(3, GENIE, CAMP[2])]),
    ]

    def test_laid_lifted_captured(self):
        green, brown = self.begin(self.SCRIPT)
        marks = []
        self.play_script(self.SCRIPT[:8])
        self.play(green, brown, self.SCRIPT[8], marks=marks)
        for c in (green, brown):
            p = c.position()
            self.assertEqual("48", p["MIJN_GER"]["POS00"], c.label)
            self.assertEqual(12, c.state()["BoardCell"][48 - 1], c.label)
            self.assertEqual("commando_1_1_0_w", army_value(p, 1, "VEHTAG", veh_key(COMMANDO)), c.label)
            mine = c.get("Mijn_1(0)")
            self.assertIs(True, mine["visible"], c.label)
            self.assertTrue(mine["picture"].endswith("mijn_1_r.gif"), mine["picture"])
            self.assertEqual(in_view((16250, 6980, 330, 750), c.state()["BoardSide"], (25300, 13210)),
                             rect_of(mine), "the laid mine on 48 as %s sees it" % c.label)
        self.play_script(self.SCRIPT[:10], start=10, marks=marks)
        for c in (green, brown):
            p = c.position()
            self.assertEqual("-3", p["MIJN_GER"]["POS00"], c.label)
            self.assertEqual(-9, c.state()["BoardCell"][48 - 1], c.label)
            self.assertEqual("genie_2_1_2_n", army_value(p, 2, "VEHTAG", veh_key(GENIE)), c.label)
            self.assertIs(False, c.get("Mijn_1(0)")["visible"], c.label)
        self.play_script(self.SCRIPT, start=11, marks=marks)
        for c in (green, brown):
            p = c.position()
            self.assertEqual(["116", "113", "113", "113", "113"], list(p["MIJN_GER"].values()), c.label)
            self.assertEqual(["116", "0", "genie_2_0_0_o"], [army_value(p, 2, section, veh_key(GENIE))
                                                             for section in ("VEHPOS", "CMPVEH", "VEHTAG")])
            self.assertEqual("15", army_value(p, 2, "KOMP", "KMP"))
            self.assertIs(True, c.get("Mijn_2_1(0)")["visible"], "the captured mine in the brown camp, " + c.label)
            self.assertIs(False, c.get("Mijn_1(0)")["visible"], c.label)
        self.assertEqual((22715, 1935), (green.get("Mijn_2_1(0)")["left"], green.get("Mijn_2_1(0)")["top"]))
        self.assertEqual(3, len(marks))
        for seen in marks:
            self.check_marks(seen)

    def test_carrier_shot_returns_the_mine(self):
        """The genie that carries the green mine is shot by the commando that
        laid it: destroyed for carrying, whatever its companies, and the mine
        goes back to the green store."""
        script = self.SCRIPT[:10] + [Turn((1, 2), [Act(1, COMMANDO, target=GENIE)])]
        green, brown = self.begin(script)
        marks = []
        self.play_script(script[:10])
        self.play(green, brown, script[10], marks=marks)
        self.check_marks(marks[0])
        for c in (green, brown):
            p = c.position()
            self.assertEqual(["113"] * 5, list(p["MIJN_GER"].values()), c.label)
            self.assertEqual(["0", "0", "genie_2_0_0_o"], [army_value(p, 2, section, veh_key(GENIE))
                                                           for section in ("VEHPOS", "CMPVEH", "VEHTAG")])
            self.assertEqual(["11", "14", "0"], [army_value(p, 2, "KOMP", key) for key in ("RES", "KMP", "PRS")])
            self.assertEqual(0, c.state()["BoardCell"][48 - 1], c.label)
            self.assertIs(True, c.get("Mijn_1(0)")["visible"], "the mine back in the green store, " + c.label)


class Flags(GameTest):
    """Two green infantries drive to the flag field 69. The first loads a flag
    with its first action and brings it home; the second loads one with the
    second action of a turn, whose record travels as a plain move."""

    SCALE = GameTest.MARKS_SCALE
    SCRIPT = [
        Turn((6, 6), [Act(1, INFANTRY, HQ[1], loads=1), Act(2, INFANTRY2, HQ[1], loads=1)]), SKIP,
        Turn((5, 4), [Act(3, INFANTRY, 53)]), SKIP,
        Turn((1, 4), [Act(1, INFANTRY, 47), Act(2, INFANTRY2, 86)]), SKIP,
        Turn((6, 5), [Act(1, INFANTRY, 102), Act(2, INFANTRY2, 53)]), SKIP,
        Turn((5, 6), [Act(1, INFANTRY, 69, answers=[YES_FLAG], code=5), Act(2, INFANTRY, 101)]), SKIP,
        Turn((1, 4), [Act(1, INFANTRY2, 47), Act(2, INFANTRY, 48)]), SKIP,
        Turn((6, 1), [Act(1, INFANTRY2, 102), Act(2, INFANTRY, 47)]), SKIP,
        Turn((1, 4), [Act(1, INFANTRY, 53), Act(2, INFANTRY2, 70)]), SKIP,
        Turn((6, 5), [Act(3, INFANTRY, CAMP[1])]), SKIP,
        Turn((6, 1), [Act(1, TANK, HQ[1], loads=1), Act(2, INFANTRY2, 69, answers=[YES_FLAG], code=5)]),
    ]
    # The second flag is known to the green side only.
    SECOND_FLAG = [("VEHTAG_LOK", "VEH04", "infanterie_1_1_1_n", "infanterie_1_1_0_n"),
                   ("VLAG_LOK", "RES", "3", "4"), ("VLAG_LOK", "VEH", "1", "0")]

    def test_flag_home_and_flag_of_a_second_action(self):
        green, brown = self.begin(self.SCRIPT)
        marks = []
        self.play_script(self.SCRIPT[:8])
        self.play(green, brown, self.SCRIPT[8], marks=marks)
        self.check_marks(marks[0])
        for c in (green, brown):
            p = c.position()
            self.assertEqual(["4", "1", "0"], [army_value(p, 1, "VLAG", key) for key in ("RES", "VEH", "KMP")])
            self.assertEqual("infanterie_1_1_1_w", army_value(p, 1, "VEHTAG", veh_key(INFANTRY)), c.label)
        self.play_script(self.SCRIPT[:17], start=10)
        for c in (green, brown):
            p = c.position()
            self.assertEqual(["4", "0", "1"], [army_value(p, 1, "VLAG", key) for key in ("RES", "VEH", "KMP")])
            self.assertEqual(["113", "0", "infanterie_1_0_0_o"], [army_value(p, 1, section, veh_key(INFANTRY))
                                                                  for section in ("VEHPOS", "CMPVEH", "VEHTAG")])
            cover = c.get("Vlagdekking_1")
            self.assertEqual(4 * 2120 // 5, cover["height"], "the flag cover of army 1 after one flag, " + c.label)
        self.assertEqual((21955, 3340), (brown.get("Vlagdekking_1")["left"], brown.get("Vlagdekking_1")["top"]))
        self.play_script(self.SCRIPT, start=18, known={19: self.SECOND_FLAG})
        self.assertTrue(any(l.startswith("to 69") for l in brown.log_lines()))


class Victory(GameTest):
    """Both copies resume a saved game one action before its end; the winner's
    copy sets GameWon after its turn, the other's GameLost after following
    it, and both ask whether to stop the game."""

    def resume(self, sections, dice_green, dice_brown):
        """anna (green, holding `sections` from her side) and bert resume."""
        turned = OrderedDict((name, OrderedDict(keys)) for name, keys in
                             seen_from_the_other_side(sections).items())

        def write(a, b):
            a.write_saved_game("bert", sections)
            b.write_saved_game("anna", turned)

        a, b = self.pair(dice_green, dice_brown, before_start=write)
        self.press_start(a, b, resume=True)
        for c in (a, b):
            c.wait_for_log_line("restarting game sequence at ")
        self.check_start_lines(a, "bert", None, None, resume=True)
        self.check_start_lines(b, "anna", None, None, resume=True)
        self.green, self.brown = a, b
        turn = int(sections["MAIN"]["BEURT"])
        for c, side, held in ((a, 1, sections), (b, 2, turned)):
            state = c.state()
            self.assertEqual((turn, side, 3 - side, side, True), (state["TurnNumber"], state["LocalSide"],
                                                                 state["ExternalSide"], state["BoardSide"],
                                                                 state["GameRunning"]), c.label)
            self.assertEqual({name: dict(keys) for name, keys in held.items()},
                             {name: dict(keys) for name, keys in c.position().items()},
                             "%s resumed the saved position" % c.label)
            self.assertFalse(os.path.exists(c.saved_game_path(c.name == "anna" and "bert" or "anna")),
                             "the saved game is gone once loaded")
        for c in (a, b):
            self.assertIs(True, c.get("frDices")["visible"],
                          "%s: the dice panel after resuming, the roll of the side at turn is in it" % c.label)
        return a, b

    def check_end(self, winner, loser):
        for c, won in ((winner, True), (loser, False)):
            dialog = c.wait_dialog_titled(STOP_TITLE)
            self.assertEqual(STOP_TEXT, dialog["text"])
            state = c.state()
            self.assertEqual((won, not won), (state["GameWon"], state["GameLost"]), c.label)
        self.assertSamePosition(self.green, self.brown)
        for c in (winner, loser):
            c.answer("no")
            c.wait_no_dialog()
            c.wait_board_text(CLOSING_TEXT)
            self.assertIs(True, c.state()["GameRunning"], "a No leaves the finished game standing")
            self.assertIs(True, c.get("Voertuig_1(0)")["visible"], "the board stands, " + c.label)
            # Only the clearing of a stopped game enables the start button
            # again; its question about a running game is a safety net.
            self.assertIs(False, c.get("cmdStart")["enabled"], c.label)

    def test_fifth_flag_home(self):
        """Brown has four flags home and an infantry with the fifth on its HQ."""
        p = new_game_sections(1, 8)
        set_vehicle(p, 2, INFANTRY, HQ[2], 1, "infanterie_2_1_1_w")
        for key, value in (("RES", 0), ("VEH", 1), ("KMP", 4)):
            set_army_value(p, 2, "VLAG", key, value)
        set_army_value(p, 2, "KOMP", "KMP", 14)
        green, brown = self.resume(p, [], [1, 2])
        self.play(brown, green, Turn((1, 2), [Act(1, INFANTRY, CAMP[2])]), last=True)
        self.check_end(brown, green)
        self.assertEqual("5", army_value(green.position(), 2, "VLAG", "KMP"))

    def test_last_company_shot(self):
        """Brown has 24 companies in reserve and its last on an infantry at 49,
        two steps from the green tank."""
        p = new_game_sections(1, 9)
        set_vehicle(p, 1, TANK, 47, 3, "tank_1_3_o")
        set_vehicle(p, 2, INFANTRY, 49, 1, "infanterie_2_1_0_w")
        set_army_value(p, 1, "KOMP", "KMP", 12)
        for key, value in (("RES", 24), ("KMP", 0), ("PRS", 0)):
            set_army_value(p, 2, "KOMP", key, value)
        green, brown = self.resume(p, [2, 1], [])
        for c in (green, brown):
            cells = c.state()["BoardCell"]
            self.assertEqual([1, -4], [cells[47 - 1], cells[49 - 1]], "cells rebuilt from the positions")
        self.play(green, brown, Turn((2, 1), [Act(1, TANK, target=INFANTRY)]), last=True)
        self.check_end(green, brown)
        self.assertEqual("25", army_value(brown.position(), 2, "KOMP", "RES"))


class SyncPairGame(GameTest):
    """The game of CampLoading on two folders kept in step by unison, at a
    time scale that leaves room for its passes."""

    SCALE = "0.5"
    PATIENCE = 120

    def test_camp_loading_across_the_sync(self):
        if not os.access(SYNC_PAIR, os.X_OK):
            self.skipTest("no sync-pair at %s" % SYNC_PAIR)
        folders = (self.folder("a"), self.folder("b"))
        state = self.folder("sync-state")
        started = subprocess.run([SYNC_PAIR, "start", "unison", folders[0], folders[1], state],
                                 stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=300)
        try:
            self.assertEqual(0, started.returncode, started.stdout.decode(errors="replace"))
            self.assertTrue(started.stdout.decode().strip().splitlines()[-1].startswith("ready unison"))
            green, brown = self.begin(CampLoading.SCRIPT, folders)
            marks = []
            self.play_script(CampLoading.SCRIPT, known=CampLoading.KNOWN, marks=marks)
            self.assertEqual(5, len(marks))
            for seen in marks:
                self.check_marks(seen)
        finally:
            subprocess.run([SYNC_PAIR, "stop", state], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                           timeout=120)


def main():
    global PROGRAM
    if len(sys.argv) < 3:
        sys.stderr.write(__doc__)
        return 2
    PROGRAM = os.path.abspath(sys.argv[1])
    return run_tests(sys.modules[__name__], sys.argv[2:])


if __name__ == "__main__":
    sys.exit(main())
