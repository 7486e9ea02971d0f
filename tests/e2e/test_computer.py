#!/usr/bin/env python3
"""Computer players against each other: two processes started with
--computer on one shared folder, each with its own homes, play whole games
at a small time scale, from presence and invitation to the victory or the
stop at the turn limit.

    python3 test_computer.py PROGRAM Class[.method] ...

Environment: VALKENHORN_COMPUTER_GAMES (games per test, default 10) and
VALKENHORN_COMPUTER_TIME_SCALE (default 0.01); the soak script
soak_computer.sh plays many more.

Every game must end in a victory (GameWon on one copy, GameLost on the
other) or in the stop at the turn limit (saved on both copies), with no
run-time fault and no sanitizer report; a warning that the copies parted
comes only after an event at which the game makes two faithful copies part,
and the positions at the end differ only where such events leave them
apart.

The deck is dealt in a fixed order that puts the Radio Yambo cards 2, 8 and
17 at the bottom: their loss of companies writes the kept, garbled tag of a
kanon or an infantry vehicle and ends both copies with a fault, which
test_radio_yambo.py covers. A game whose deck the brown copy read before the
green one had written it all is started again (game_session.DEAL_ATTEMPTS).
Standard library only."""

import os
import re
import shutil
import sys
import tempfile
import time
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from game_session import (DEAL_ATTEMPTS, GameCopy, deck_read_too_early_by, parse_position,  # noqa: E402
                          position_differences)
from link_session import local_ids  # noqa: E402
from valkenhorn_session import Session, XServer, run_tests  # noqa: E402

PROGRAM = None
GAMES = int(os.environ.get("VALKENHORN_COMPUTER_GAMES", "10"))
TIME_SCALE = os.environ.get("VALKENHORN_COMPUTER_TIME_SCALE", "0.01")
TURN_LIMIT = int(os.environ.get("VALKENHORN_COMPUTER_TURNS", "400"))
GAME_PATIENCE = float(os.environ.get("VALKENHORN_COMPUTER_PATIENCE", "900"))

# Each copy seeds its dice by the second of its start: two copies started in
# the same (rounded) second mix the same dice table and, tossing in one second
# too, would toss alike forever. The second copy starts this long after the
# first.
START_GAP = 2.2

# From the bottom of the deck to its top: 2, 8 and 17 are drawn last.
DECK = [2, 8, 17] + [card for card in range(1, 33) if card not in (2, 8, 17)]
# Whichever copy deals, computer or not, lays the deck so.
DECK_ENV = {"VALKENHORN_DECK": ",".join(str(c) for c in DECK)}

DESYNC = "position differs from opponent's at "
# Radio Yambo cards whose effect the two copies carry out differently on
# purpose (fuel, ceasefire, mobilisation, leopard, tse-tse, war ministry,
# allied help): after one of them any value may differ.
PARTING_RADIO_YAMBO = {1, 4, 6, 7, 11, 12, 18}
CARD_LINE = re.compile(r"^(?:taking compas card number |opponent took compas card number |"
                       r"before rolling the dices, (?:I|the opponent) uses? personnel card number |"
                       r"opponent dumped card number |returning compas card number )(\d+)")
TURN_END = ("ending turn at ", "opponent's turn ended at ")


def kept_difference(section, key):
    """Whether a difference between the two positions is one of those the
    game keeps between faithful copies: the hands and the deck (a card's
    message read after the end of the turn, the mirror of a played hand),
    the vehicles' tags (the heading letter of a camp vehicle sent to the HQ,
    a flag loaded by the second action, the jeep after a Personnel card), the
    flags of a second action, the other mine list of a cleared mine, the
    fuel and tse-tse counts, and the jeep's own values."""
    if section.startswith(("CARD_", "VEHTAG_", "VLAG_", "MIJN_")) or section == "STACK":
        return True
    if section == "MAIN" and key in ("BRANDSTOF1", "BRANDSTOF2", "TSETSE1", "TSETSE2", "TSETSEVEH"):
        return True
    return key == "VEH10"


def parting_events(log):
    """(turn, what) of the events after which the copies part on purpose, by
    the run log of one copy; turns counted by their ends, as both copies do."""
    turn = 0
    brown = any(re.match(r"^.* plays with the brown army at ", line) for line in log)
    events = []
    from_camp = False
    for line in log:
        if line.startswith(TURN_END):
            turn += 1
        card = CARD_LINE.match(line)
        if card:
            number = int(card.group(1))
            if number >= 21:
                events.append((turn, "personnel card %d" % number))
            elif number in PARTING_RADIO_YAMBO and line.startswith(("taking", "opponent took")):
                events.append((turn, "radio yambo card %d" % number))
        if line.startswith("computer player gives back its pick of vehicle 10 "):
            events.append((turn, "jeep pick given back"))
        if line == "starts escape with jeep":
            events.append((turn, "jeep escape"))
        if line in ("loading flag", "loads flag"):
            events.append((turn, "flag loaded"))
        if line == "from main camp":
            from_camp = True
        elif from_camp and line == "to HQ" and brown:
            events.append((turn, "camp vehicle of the brown army to the HQ"))
            from_camp = False
        elif line.startswith("-----"):
            from_camp = False
    return events


def jeep_loaded_on_one_copy(mine, differences):
    """The role words (LOK, EXT) of the armies whose jeep stands on its
    island with men aboard on one copy only: a jeep pick given back keeps the
    prisoners it took aboard on the picker's copy (the game keeps that loss),
    while the opponent's copy, never told of the pick, still counts them in
    the prison."""
    out = set()
    for role in ("LOK", "EXT"):
        on_island = mine.get("VEHPOS_" + role, {}).get("VEH10") in ("115", "118")
        aboard = any(d[0] == "CMPVEH_" + role and d[1] == "VEH10" for d in differences)
        if on_island and aboard:
            out.add(role)
    return out


def explained(difference, escaped, jeep_roles):
    section, key = difference[0], difference[1]
    if kept_difference(section, key):
        return True
    if escaped and section.startswith("KOMP_"):
        return True
    return section.startswith("KOMP_") and key == "PRS" and section[len("KOMP_"):] in jeep_roles


def desync_turns(log):
    turn = 0
    out = []
    for line in log:
        if line.startswith(TURN_END):
            turn += 1
        if line.startswith(DESYNC):
            out.append(turn)
    return out


SANITIZER = re.compile(r"ERROR: (?:Address|Leak|Undefined)Sanitizer|runtime error:")


class ComputerCopy(Session):
    """A copy of the program played by a computer player, with the automation
    socket open so that the test can read its state."""

    def __init__(self, root, name, folder, level, invite=None, turns=TURN_LIMIT, time_scale=TIME_SCALE):
        home = os.path.join(root, name)
        arguments = ["--computer", name, "--folder", folder, "--level", level, "--games", "1",
                     "--turns", str(turns)]
        if invite:
            arguments += ["--invite", invite]
        super().__init__(PROGRAM, os.environ.get("DISPLAY", ""), data_home=os.path.join(home, "data"),
                         config_home=os.path.join(home, "config"), time_scale=time_scale,
                         env=DECK_ENV, arguments=arguments)
        self.name = name


class GameOutcome:
    def __init__(self, states, logs, outputs):
        self.states = states
        self.logs = logs
        self.outputs = outputs


class DealLost(Exception):
    """The brown copy read the deck before the green one had written it all."""


class ComputerGames(unittest.TestCase):
    def play(self, level_a, level_b):
        outcomes = []
        for game in range(GAMES):
            for attempt in range(1, DEAL_ATTEMPTS + 1):
                root = tempfile.mkdtemp(prefix="vk-computer-")
                try:
                    outcomes.append(self.one_game(root, level_a, level_b, game, attempt < DEAL_ATTEMPTS))
                except DealLost:
                    print("game %d, attempt %d: the deck was read too early; the game starts again" % (game, attempt),
                          file=sys.stderr)
                    shutil.rmtree(root, ignore_errors=True)
                    continue
                except BaseException:
                    # The homes and logs of a failed game stay for a look.
                    print("game %d failed: its homes are kept in %s" % (game, root), file=sys.stderr)
                    raise
                shutil.rmtree(root, ignore_errors=True)
                break
        wins = sum(1 for o in outcomes if o.states[0]["GameWon"])
        losses = sum(1 for o in outcomes if o.states[1]["GameWon"])
        turns = [max(s["TurnNumber"] for s in o.states) for o in outcomes]
        print("%s against %s: %d games, %d won, %d lost, %d stopped; turns per game %s"
              % (level_a, level_b, len(outcomes), wins, losses, len(outcomes) - wins - losses, turns))

    def one_game(self, root, level_a, level_b, number, deal_again=False):
        """One game; with deal_again, a deck that the brown copy read too
        early raises DealLost instead of playing on."""
        shared = os.path.join(root, "shared")
        os.makedirs(shared)
        a = ComputerCopy(root, "Alfa", shared, level_a, invite="Bravo")
        b = ComputerCopy(root, "Bravo", shared, level_b)
        copies = (a, b)
        try:
            a.start()
            time.sleep(START_GAP)
            b.start()
            started = False
            dealt = False
            one_sided = None
            deadline = time.monotonic() + GAME_PATIENCE
            while True:
                if not dealt:
                    too_early = deck_read_too_early_by(copies)
                    dealt = too_early is not None
                    if too_early and deal_again:
                        raise DealLost()
                for c in copies:
                    if not c.running():
                        self.fail("game %d: %s ended (code %s):\n%s\n%s"
                                  % (number, c.name, c.process.returncode, "\n".join(c.log_lines()[-40:]),
                                     c.program_output()[-3000:]))
                states = [c.state() for c in copies]
                if all(s["GameRunning"] for s in states):
                    started = True
                # Over: stopped, or won and lost (a finished game is not
                # stopped as well, so it stays "running" with nothing to wait for).
                if started and all(s["Waiting"] == "" and (not s["GameRunning"] or s["GameWon"] or s["GameLost"])
                                   for s in states):
                    break
                # The end of a game is seen on both copies, or the two
                # have parted in a way the players can't mend.
                finished = [s["GameWon"] or s["GameLost"] for s in states]
                if finished[0] != finished[1]:
                    one_sided = one_sided or time.monotonic()
                    if time.monotonic() - one_sided > 60:
                        self.fail("game %d: only %s sees the end of the game; the other waits %r at turn %s"
                                  % (number, copies[finished.index(True)].name,
                                     states[finished.index(False)]["Waiting"],
                                     states[finished.index(False)]["TurnNumber"]))
                else:
                    one_sided = None
                if time.monotonic() > deadline:
                    self.fail("game %d did not end in %d s: turn %s, waiting %r / %r"
                              % (number, GAME_PATIENCE, states[0]["TurnNumber"], states[0]["Waiting"],
                                 states[1]["Waiting"]))
                time.sleep(0.25)
            # The boxes at the end of the game are answered by the players.
            time.sleep(1)
            states = [c.state() for c in copies]
            logs = [c.log_lines() for c in copies]
            outputs = [c.program_output() for c in copies]
            self.check_game(number, states, logs, outputs)
            return GameOutcome(states, logs, outputs)
        finally:
            for c in copies:
                c.close()

    def check_game(self, number, states, logs, outputs):
        a, b = states
        label = "game %d" % number
        for log, output in zip(logs, outputs):
            faults = [line for line in log if line.startswith("run-time fault: ")]
            self.assertEqual([], faults, label)
            self.assertIsNone(SANITIZER.search(output), "%s: sanitizer report:\n%s" % (label, output[-3000:]))
        victory = (a["GameWon"] and b["GameLost"] and not a["GameLost"] and not b["GameWon"]) or \
            (b["GameWon"] and a["GameLost"] and not b["GameLost"] and not a["GameWon"])
        stopped = (not any(s["GameWon"] or s["GameLost"] for s in states) and
                   max(s["TurnNumber"] for s in states) >= TURN_LIMIT)
        self.assertTrue(victory or stopped, "%s ended in neither a victory nor the stop at the turn limit: %r"
                        % (label, [(s["GameWon"], s["GameLost"], s["TurnNumber"]) for s in states]))
        if stopped:
            for s, opponent in zip(states, ("Bravo", "Alfa")):
                self.assertTrue(os.path.exists(os.path.join(s["DataFolder"], opponent + ".vkh")),
                                "%s: the stopped game is saved on both copies" % label)
        self.check_desyncs(label, states, logs)

    def check_desyncs(self, label, states, logs):
        """Desync warnings come only where two faithful copies part: the
        first one of the game follows a parting event (by either copy's log,
        a turn of slack for the two counts), and the positions at the end
        differ only in the values such events touch, unless a Radio Yambo
        card that parts the copies was drawn."""
        events = sorted(parting_events(logs[0]) + parting_events(logs[1]))
        desyncs = sorted(desync_turns(logs[0]) + desync_turns(logs[1]))
        if desyncs:
            self.assertTrue(events and events[0][0] <= desyncs[0] + 1,
                            "%s: a desync warning at turn %d before any event that parts the copies (%r)"
                            % (label, desyncs[0], events[:3]))
        if any(what.startswith("radio yambo") for _, what in events):
            return
        mine = parse_position(states[0]["Position"])
        differences = position_differences(mine, parse_position(states[1]["Position"]))
        # A jeep that leaves its island with prisoners still aboard is loaded
        # anew on the player's copy but loaded on top on the other: the
        # companies of that army then part too.
        escaped = any(what == "jeep escape" for _, what in events)
        jeep_roles = jeep_loaded_on_one_copy(mine, differences)
        unexplained = [d for d in differences if not explained(d, escaped, jeep_roles)]
        self.assertEqual([], unexplained, "%s: the positions at the end differ beyond the kept differences" % label)

    def test_greedy_against_random(self):
        self.play("greedy", "random")

    def test_greedy_against_greedy(self):
        self.play("greedy", "greedy")


class RealAgainstComputer(unittest.TestCase):
    """anna, a copy with a window driven through the automation interface,
    plays a whole game against the greedy computer player Computer: she
    accepts its invitation, starts, tosses, and in each of her turns rolls
    and ends the turn. At the start of each of her turns the two positions
    are the same (seen from either side) but for the differences the game
    keeps between faithful copies (kept_difference)."""

    TURNS = int(os.environ.get("VALKENHORN_COMPUTER_REAL_TURNS", "40"))

    def test_whole_game(self):
        for attempt in range(1, DEAL_ATTEMPTS + 1):
            try:
                self.whole_game(attempt < DEAL_ATTEMPTS)
                return
            except DealLost:
                print("attempt %d: the deck was read too early; the game starts again" % attempt, file=sys.stderr)

    def whole_game(self, deal_again):
        root = tempfile.mkdtemp(prefix="vk-computer-real-")
        self.addCleanup(shutil.rmtree, root, True)
        shared = os.path.join(root, "shared")
        os.makedirs(shared)
        x = XServer()
        x.__enter__()
        self.addCleanup(x.__exit__, None, None, None)
        anna = GameCopy(PROGRAM, x.display, root, "anna", local_ids(1)[0], [shared], [None], time_scale="0.05",
                        env=DECK_ENV)
        anna.patience = 120
        self.addCleanup(anna.close)
        computer = ComputerCopy(root, "Computer", shared, "greedy", invite="anna", turns=self.TURNS,
                                time_scale="0.05")
        self.addCleanup(computer.close)
        started_at = time.monotonic()
        anna.start()
        anna.wait_started(60)
        time.sleep(max(0.0, started_at + START_GAP - time.monotonic()))
        computer.start()
        anna.go_online()

        # The computer invites anna once it sees her.
        dialog = anna.wait_dialog(120)
        self.assertEqual("U ontving een uitnodiging van Computer. Aanvaardt u deze uitnodiging?", dialog["text"])
        anna.answer("yes")
        anna.wait_state("Check1", lambda v: v == 1, "connected", 60)
        anna.wait_no_dialog()
        anna.wait_state("LinkBusy", lambda v: v is False, "LinkBusy clear", 60)
        anna.click("cmdStart")

        compared = 0
        started = False
        dealt = False
        deadline = time.monotonic() + GAME_PATIENCE
        while True:
            if not dealt:
                too_early = deck_read_too_early_by((anna, computer))
                dealt = too_early is not None
                if too_early and deal_again:
                    anna.close()
                    computer.close()
                    raise DealLost()
            self.assertTrue(computer.running(), "the computer copy ended:\n%s" % computer.program_output()[-3000:])
            self.assertTrue(anna.running(), "anna's copy ended:\n%s" % anna.program_output()[-3000:])
            self.assertLess(time.monotonic(), deadline, "the game did not end")
            dialog = anna.ok({"cmd": "dialog"}).get("dialog")
            if dialog:
                # The end of the game: the stop or the victory is told, and
                # anna does not keep a game that is over.
                anna.answer("no" if dialog["title"] == "Spel Bewaren?" else
                            "yes" if "yes" in dialog["buttons"] else "ok")
                time.sleep(0.1)
                continue
            state = anna.state()
            if state["GameRunning"]:
                started = True
            elif started and state["Waiting"] == "":
                break
            waiting = state["Waiting"]
            if waiting == "toss":
                anna.click("cmdGooi")
                anna.wait_until(lambda: anna.state()["Waiting"] != "toss" or anna.state()["TossNumber"] !=
                                state["TossNumber"], "the toss", 60)
            elif waiting == "phase 0":
                if computer.state()["Waiting"] == "opponent's turn":
                    mine = anna.position()
                    differences = position_differences(mine, parse_position(computer.state()["Position"]))
                    events = parting_events(computer.log_lines()) + parting_events(anna.log_lines())
                    parted = any(what.startswith("radio yambo") for _, what in events)
                    escaped = any(what == "jeep escape" for _, what in events)
                    jeep_roles = jeep_loaded_on_one_copy(mine, differences)
                    unexplained = [d for d in differences if not explained(d, escaped, jeep_roles)]
                    if unexplained and not parted:
                        self.fail("turn %d: positions differ: %r" % (state["TurnNumber"], unexplained))
                    compared += 1
                anna.click("cmdGooi")
                anna.wait_phase(4)
                anna.click("cmdEindeBeurt")
                anna.wait_until(lambda: anna.state()["Waiting"] != "phase 4", "the end of anna's turn", 60)
            time.sleep(0.05)

        final = [anna.state(), computer.state()]
        # Compared at each of her turns but those the computer's own card
        # boxes or the toss left no moment for.
        self.assertGreaterEqual(compared, self.TURNS // 2 - 4, "positions compared at too few turns")
        over = final[1]["GameWon"] or max(s["TurnNumber"] for s in final) >= self.TURNS
        self.assertTrue(over, "the game ended in neither a victory nor the stop: %r"
                        % [(s["GameWon"], s["GameLost"], s["TurnNumber"]) for s in final])
        for c in (anna, computer):
            self.assertEqual([], [line for line in c.log_lines() if line.startswith("run-time fault: ")])
            self.assertTrue(any(line.startswith("dealing a scripted deck (for tests) at ") for line in c.log_lines()),
                            "whichever copy deals lays the deck with 2, 8 and 17 at the bottom")
        print("anna against the computer: %d turns, positions compared at %d, computer won: %s"
              % (max(s["TurnNumber"] for s in final), compared, final[1]["GameWon"]))


class ComputerButton(unittest.TestCase):
    """"Tegen de computer" in a copy with a window: the computer player is
    started on a private folder of the data folder, comes present and invites
    the player; the two stand connected, and closing the program ends the
    computer player too."""

    def test_button_starts_and_exit_ends_the_computer(self):
        root = tempfile.mkdtemp(prefix="vk-computer-button-")
        self.addCleanup(shutil.rmtree, root, True)
        x = XServer()
        x.__enter__()
        self.addCleanup(x.__exit__, None, None, None)
        anna = GameCopy(PROGRAM, x.display, root, "anna", local_ids(1)[0], time_scale="0.05")
        self.addCleanup(anna.close)
        anna.start()
        anna.wait_started(60)
        button = anna.get("cmdComputer")
        self.assertEqual("Tegen de computer", button["caption"])
        frame = anna.get("frExtern")
        self.assertLessEqual(button["top"] + button["height"], frame["height"], "the button stands inside its frame")
        anna.click("cmdComputer")

        data = os.path.join(anna.data_home, "Valkenhorn")
        shared = os.path.join(data, "computer", "shared")
        anna.wait_state("Folders", lambda folders: isinstance(folders, list) and
                        [os.path.normpath(f) for f in folders] == [shared], "the private folder in the list", 30)
        self.assertEqual(1, anna.state()["ShareStatus"], "the player is made present")
        children = computer_processes(shared)
        self.assertEqual(1, len(children), "one computer player runs on the private folder")

        dialog = anna.wait_dialog(120)
        self.assertEqual("U ontving een uitnodiging van Computer. Aanvaardt u deze uitnodiging?", dialog["text"])
        anna.answer("yes")
        anna.wait_state("Check1", lambda v: v == 1, "connected", 60)
        anna.wait_no_dialog()
        self.assertEqual(["Computer"], anna.state()["ExternalUsers"])
        computer_log = os.path.join(data, "computer", "home", "data", "Valkenhorn", "Valkenhorn.log")

        def computer_connected():
            with open(computer_log, encoding="utf-8", errors="replace") as f:
                return "connected and locked with anna at " in f.read()
        anna.wait_until(computer_connected, "the computer's side of the connection", 60)

        self.assertEqual(0, anna.exit())
        deadline = time.monotonic() + 30
        while computer_processes(shared) and time.monotonic() < deadline:
            time.sleep(0.1)
        self.assertEqual([], computer_processes(shared), "the computer player ends with the program")


def computer_processes(folder):
    """The pids of running programs whose command line names the folder."""
    found = []
    for pid in os.listdir("/proc"):
        if not pid.isdigit():
            continue
        try:
            with open("/proc/%s/cmdline" % pid, "rb") as f:
                arguments = f.read().split(b"\0")
            with open("/proc/%s/stat" % pid) as f:
                zombie = f.read().rsplit(")", 1)[1].split()[0] == "Z"
        except OSError:
            continue
        if b"--computer" in arguments and os.fsencode(folder) in arguments and not zombie:
            found.append(int(pid))
    return found


def main():
    global PROGRAM
    if len(sys.argv) < 3:
        print("usage: test_computer.py PROGRAM Class[.method] ...", file=sys.stderr)
        return 2
    PROGRAM = os.path.abspath(sys.argv[1])
    return run_tests(sys.modules[__name__], sys.argv[2:])


if __name__ == "__main__":
    sys.exit(main())
