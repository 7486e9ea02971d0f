#!/usr/bin/env python3
"""End-to-end test of the check that two copies of a game still hold the same
position: every end-of-turn message (.eot) carries HASH, the digest of the
sender's position after its turn, written before the commit key TURN, and the
reader compares it with the digest of its own position once it has replayed
the turn.

    python3 test_desync.py PATH/TO/valkenhorn TestClass[.test_method]

anna (green) and bert (brown) play a turn as usual: no warning on either
side. Then anna's position is changed behind her copy's back through the
test request "tamper" (served because the copies run with
VALKENHORN_TEST_REQUESTS=1), and bert plays a turn: anna's copy logs that the
positions differ, with both digests, runs the warning on the board and counts
it in the state's "Desyncs". The .eot of that turn is read while anna's copy
is paused (SIGSTOP, SIGCONT), before it takes the file. The digests are also
computed here from the positions the copies report, by the documented
function, and must be the ones the copies wrote. A copy started without the
variable refuses the request.

Exit code 0 when all pass, 1 on a failure, 77 when the tests were skipped."""

import contextlib
import os
import re
import signal
import sys
import time

# No byte-code caches in the source tree.
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import test_game  # noqa: E402
from game_session import COMMANDO, HQ, TANK, GameCopy, army_value  # noqa: E402
from link_session import local_ids  # noqa: E402
from test_game import DESYNC, DESYNC_WARNING, TURN_ENDED, Act, GameTest, Turn  # noqa: E402
from valkenhorn_session import XServer, format_board_text, is_rotation, run_tests  # noqa: E402

TEST_REQUESTS = {"VALKENHORN_TEST_REQUESTS": "1"}
DIGEST_LINE = re.compile(r"^opponent's digest ([0-9a-f]{16}), own digest ([0-9a-f]{16})$")


def position_digest(sections, turn):
    """The digest of a position as the program computes it, from the sections
    a copy reports (its `Position`): every key line as SECTION.KEY=VALUE, an
    _LOK section named after the army number of LOK and an _EXT one after
    that of EXT, LOK and EXT of MAIN left out, BEURT set to `turn` (the copies
    have stepped it since), the lines sorted and each ended by a line feed;
    then FNV-1a of 64 bits as 16 lowercase hexadecimal digits."""
    lok, ext = sections["MAIN"]["LOK"], sections["MAIN"]["EXT"]
    lines = []
    for name, keys in sections.items():
        army = name
        if name.endswith("_LOK"):
            army = name[:-4] + "_" + lok
        elif name.endswith("_EXT"):
            army = name[:-4] + "_" + ext
        for key, value in keys.items():
            if name == "MAIN" and key in ("LOK", "EXT"):
                continue
            if name == "MAIN" and key == "BEURT":
                value = str(turn)
            lines.append("%s.%s=%s\n" % (army, key, value))
    digest = 0xcbf29ce484222325
    for byte in "".join(sorted(lines)).encode("latin-1"):
        digest = ((digest ^ byte) * 0x100000001b3) & 0xFFFFFFFFFFFFFFFF
    return "%016x" % digest


class TamperTest(GameTest):
    """Copies started with the environment ENV."""

    # The warning stands 9 s of the design: 0.9 s here, time enough to see it.
    SCALE = GameTest.MARKS_SCALE
    ENV = {}

    def copy(self, name, local_id, folder, peer, dice):
        x = XServer()
        x.__enter__()
        self.addCleanup(x.__exit__, None, None, None)
        c = GameCopy(test_game.PROGRAM, x.display, self.root, name, local_id, [folder], [peer], dice=dice,
                     time_scale=self.SCALE, env=dict(self.ENV))
        c.patience = self.PATIENCE
        self.addCleanup(c.close)
        return c

    @contextlib.contextmanager
    def held(self, c):
        """c's program stopped for the span, so that a file meant for it stays
        in the folder to be read."""
        os.kill(c.process.pid, signal.SIGSTOP)
        try:
            yield
        finally:
            os.kill(c.process.pid, signal.SIGCONT)

    def read_when_committed(self, path, timeout=10):
        """The lines of a message file once its commit key TURN is in it."""
        deadline = time.monotonic() + timeout
        while True:
            try:
                with open(path, "rb") as f:
                    lines = f.read().decode("latin-1").split("\r\n")
                if any(line.startswith("TURN=") for line in lines):
                    return [line for line in lines if line]
            except OSError:
                pass
            if time.monotonic() > deadline:
                raise AssertionError("%s not written whole within %d s" % (path, timeout))
            time.sleep(0.01)

    def desyncs(self, c):
        return c.state()["Desyncs"]


class PositionCheck(TamperTest):
    """Two copies that may be told to change their position."""

    ENV = TEST_REQUESTS

    def test_a_changed_position_is_caught_by_the_reader(self):
        script = [
            Turn((6, 6), [Act(1, TANK, HQ[1], loads=3), Act(2, COMMANDO, HQ[1], loads=2)]),
            Turn((3, 4)),
            Turn((5, 1)),
        ]
        green, brown = self.begin(script)
        shared = os.path.join(self.root, "shared")
        for c in (green, brown):
            self.assertEqual(0, self.desyncs(c), c.label)

        # Turn 1 as usual: the same position on both copies, no warning.
        self.play(green, brown, script[0])
        for c in (green, brown):
            self.assertEqual(0, c.count_lines(DESYNC), c.label)
            self.assertEqual(0, self.desyncs(c), c.label)

        # A key the position doesn't hold changes nothing.
        before = green.state()["Position"]
        reply = green.request({"cmd": "tamper", "section": "KOMP_LOK", "key": "GEEN", "value": "7"})
        self.assertIs(False, reply.get("ok"))
        self.assertEqual("the position holds no key GEEN in section KOMP_LOK", reply.get("error"))
        self.assertEqual(before, green.state()["Position"])

        # anna's reserve shrinks behind her copy's back; bert's stays.
        reserve = army_value(green.position(), 1, "KOMP", "RES")
        self.assertEqual("10", reserve)
        self.assertEqual({"ok": True}, green.request({"cmd": "tamper", "section": "KOMP_LOK", "key": "RES",
                                                      "value": "7"}))
        self.assertEqual("7", army_value(green.position(), 1, "KOMP", "RES"))
        self.assertEqual("10", army_value(brown.position(), 1, "KOMP", "RES"))
        known = [("KOMP_LOK", "RES", "7", "10")]
        self.assertSamePosition(green, brown, known)
        self.expect_log(green, ["test request changed KOMP_LOK/RES to 7 at "])

        # Turn 2, bert's: a roll and no action. anna's copy is paused once it
        # has taken the roll, so that bert's .eot stays to be read.
        brown.wait_phase(0)
        green.wait_waiting("opponent's turn")
        ended = green.count_lines(TURN_ENDED)
        own, theirs = self.roll(brown, script[1].roll)
        green.wait_line_count("result of opponent rolling dices: ", 1)
        wrp = os.path.join(shared, "bert.wrp")
        green.wait_until(lambda: not os.path.exists(wrp), "anna to take the roll")
        eot = os.path.join(shared, "bert.eot")
        with self.held(green):
            brown.click("cmdEindeBeurt")
            lines = self.read_when_committed(eot)
        self.assertEqual(3, len(lines), lines)
        self.assertEqual("[GENERAL]", lines[0])
        self.assertRegex(lines[1], r"^HASH=[0-9a-f]{16}$", "HASH comes before TURN")
        self.assertEqual("TURN=2", lines[2], "TURN is the last key")
        sent = lines[1][len("HASH="):]

        # anna's copy reads it, finds another position and says so.
        warning = format_board_text(DESYNC_WARNING)

        def warned():
            state = green.state()
            text = state["BoardText"]
            return isinstance(text, str) and is_rotation(text, warning) and state

        state = green.wait_until(warned, "the warning on anna's board", self.PATIENCE)
        self.assertEqual("desync warning", state["Waiting"])
        self.assertEqual(1, state["Desyncs"])
        self.assertFalse(os.path.exists(eot), "the .eot is taken before the warning")
        self.turn_ended(brown, green, ended, own, theirs, known)
        found = [m for m in (DIGEST_LINE.match(line) for line in green.log_lines()) if m]
        self.assertEqual(1, len(found))
        self.assertEqual(sent, found[0].group(1), "the digest bert sent, as anna logged it")
        self.assertNotEqual(found[0].group(1), found[0].group(2))
        self.assertEqual(1, green.count_lines(DESYNC))
        self.assertTrue(green.log_matches(r"^position differs from opponent's at \S*\d"))
        # The line says so byte for byte, the time after it.
        line = [l for l in green.log_lines() if l.startswith(DESYNC)][0]
        self.assertRegex(line, r"^position differs from opponent's at [^ ]*\d[^ ]*$")
        # The digests are the documented function of the positions, each
        # taken at turn 2; the copies have gone on to turn 3 since.
        self.assertEqual(3, green.state()["TurnNumber"])
        self.assertEqual(sent, position_digest(brown.position(), 2))
        self.assertEqual(found[0].group(2), position_digest(green.position(), 2))
        self.assertEqual(0, self.desyncs(brown))
        self.assertEqual(0, brown.count_lines(DESYNC))

        # Turn 3, anna's: her copy still holds the changed reserve and sends
        # the digest of it; now bert's copy finds the difference.
        self.play(green, brown, script[2], known)
        self.assertEqual(1, self.desyncs(green))
        self.assertEqual(1, self.desyncs(brown))
        brown_lines = [m for m in (DIGEST_LINE.match(line) for line in brown.log_lines()) if m]
        self.assertEqual(1, len(brown_lines))
        self.assertEqual(position_digest(green.position(), 3), brown_lines[0].group(1))
        self.assertEqual(position_digest(brown.position(), 3), brown_lines[0].group(2))

class WithoutTestRequests(TamperTest):
    """A copy started without VALKENHORN_TEST_REQUESTS=1 refuses the request."""

    def test_tamper_is_refused(self):
        ida, = local_ids(1)
        c = self.copy("anna", ida, self.folder("shared"), "bert", [])
        c.start()
        c.wait_started(2 * self.PATIENCE)
        reply = c.request({"cmd": "tamper", "section": "KOMP_LOK", "key": "RES", "value": "7"})
        self.assertIs(False, reply.get("ok"))
        self.assertIn("VALKENHORN_TEST_REQUESTS=1", reply.get("error", ""))
        self.assertEqual(0, self.desyncs(c))


def main():
    if len(sys.argv) < 3:
        sys.stderr.write(__doc__)
        return 2
    test_game.PROGRAM = os.path.abspath(sys.argv[1])
    return run_tests(sys.modules[__name__], sys.argv[2:])


if __name__ == "__main__":
    sys.exit(main())
