"""End-to-end tests: the real program under its own Xvfb, driven through the
automation socket with a small time scale.

    python3 test_program.py PATH/TO/valkenhorn TestClass[.test_method]

Exit code 0 when all pass, 1 on a failure, 77 when the tests were skipped
(ctest shows those as skipped)."""

import os
import re
import shutil
import stat
import sys
import tempfile
import time
import unittest

# No byte-code caches in the source tree.
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from valkenhorn_session import (SEPARATOR_53, Session, XServer, format_board_text, is_rotation,  # noqa: E402
                                listening_unix_sockets, png_size, run_tests)
from link_session import write_settings  # noqa: E402
from xwindow import XDisplay  # noqa: E402

PROGRAM = None

# The run log's start-up lines, in the order of the start-up, each followed by the time.
STARTUP_LINES = [
    "Showing splash screen at ",
    "Hiding splash screen at ",
    "Loading playboard at ",
    "Testing requirements of computer screen at ",
    "Positioning program window at ",
    "Initiating program data at ",
    "Showing program window at ",
    "Enabling scroll timer at ",
    "Initiating players at ",
    "Invoking randomizer at ",
    "End of Form Load at ",
]

STATE_KEYS = ["GamePhase", "TurnNumber", "LocalSide", "ExternalSide", "BoardSide", "GameRunning", "LinkBusy",
              "InputLock", "SelectedUser", "BoardText", "Dice1", "Dice2"]

GET_FIELDS = ["name", "kind", "visible", "enabled", "caption", "text", "tag", "toolTip", "backColor", "left", "top",
              "width", "height", "value", "listIndex", "items", "picture"]

# Texts the board shows during the player initiation ("tester" is the name the session types).
BOARD_TEXTS = [
    "gelieve je naam (maximum 10 tekens) in te vullen in het vak 'lokale speler' waar momenteel 'je_naam' staat, "
    "druk daarna op de enter-toets.",
    "welkom tester. de gegevens van je externe spelers worden opgehaald. even geduld aub...",
    "veel plezier met valkenhorn! druk op 'Spelregels...' of 'Hoe verbinden?' voor verdere instructies.",
]


def has_time(rest):
    return bool(rest.strip()) and any(c.isdigit() for c in rest)


def control_names():
    """Every control of the main window, array members as Name(i)."""
    names = ["Hoofdvenster", "Speelveld", "frmGameControl", "frLokaal", "frExtern", "frDices", "Stock", "Homers",
             "msgBoard", "Personnel", "RadioYambo", "Gevang_1", "Gevang_2", "Vlagdekking_1", "Vlagdekking_2",
             "Kader", "Kader2", "Action_Timer", "Scroll_Timer", "VehDblClickTimer",
             "cmdStart", "cmdStop", "cmdRules", "Cmd_HowTo", "cmdSluiten",
             "User_Name", "ShareStatus", "cmdDisconnect",
             "Combo_ExternUsers", "Check1", "cmdRequestToPlay", "Cmd_AddFolder", "Cmd_RemoveFolder",
             "cmdGooi", "cmdEindeBeurt", "cmdKompasGebruik", "cmdKompasSluit", "Dice_1", "Dice_2", "Dices",
             "MiniDice_1", "MiniDice_2", "DiceKader", "KK1", "KK2", "KK3",
             "cmd_Info", "imgPersonnel", "imgPersTekst", "imgRadioYambo", "imgRaYaTekst"]
    arrays = [("KampComp", 2), ("Voertuig_1", 11), ("Voertuig_2", 11), ("Mijn_1", 5), ("Mijn_1_2", 5),
              ("Mijn_2", 5), ("Mijn_2_1", 5), ("GV1", 20), ("GV2", 20), ("KmpCmp_1", 25), ("KmpCmp_2", 25),
              ("Image2", 25)]
    for array, size in arrays:
        names += ["%s(%d)" % (array, i) for i in range(size)]
    return names


class StartUpLog(unittest.TestCase):
    def test_startup_lines_in_order(self):
        with XServer() as x, Session(PROGRAM, x.display) as s:
            s.wait_started()
            lines = s.log_lines()
            raw = s.log_bytes()

        self.assertNotIn(b"\r", raw, "lines end in the platform's line end alone")
        first = re.fullmatch(r"Program Start at (.+) on (.+)", lines[0])
        self.assertIsNotNone(first, "first line: %r" % lines[0])
        self.assertTrue(has_time(first.group(1)), "time of the first line: %r" % first.group(1))
        self.assertTrue(has_time(first.group(2)), "date of the first line: %r" % first.group(2))

        # The time scale of the test is noted on a line after the first.
        scale_lines = [i for i, l in enumerate(lines) if "0.05" in l and "scale" in l.lower()]
        self.assertTrue(scale_lines, "no line notes the time scale 0.05:\n%s" % "\n".join(lines))
        self.assertGreater(scale_lines[0], 0)

        position = 0
        for text in STARTUP_LINES:
            found = [i for i in range(position + 1, len(lines)) if lines[i].startswith(text)]
            self.assertTrue(found, "%r missing after line %d:\n%s" % (text, position, "\n".join(lines)))
            position = found[0]
            self.assertTrue(has_time(lines[position][len(text):]), "no time on %r" % lines[position])
            self.assertEqual(1, sum(1 for l in lines if l.startswith(text)), "%r written once" % text)
        self.assertEqual(SEPARATOR_53, lines[position + 1], "the separator follows End of Form Load")
        self.assertEqual(53, len(lines[position + 1]))

    def test_new_run_rewrites_log(self):
        with XServer() as x, tempfile.TemporaryDirectory(prefix="vk-e2e-data-") as data:
            log = os.path.join(data, "Valkenhorn", "Valkenhorn.log")
            os.makedirs(os.path.dirname(log))
            with open(log, "w") as f:
                f.write("a line of an earlier run\n")
            with Session(PROGRAM, x.display, data_home=data) as s:
                s.wait_started()
                lines = s.log_lines()
            self.assertNotIn("a line of an earlier run", lines)
            self.assertTrue(lines[0].startswith("Program Start at "))


class CloseRequest(unittest.TestCase):
    def test_close_request_leaves_window_up(self):
        with XServer() as x, Session(PROGRAM, x.display) as s, XDisplay(x.display) as xd:
            # Close requests all through the start-up, splash included.
            sent_during_startup = 0
            name_given = False
            deadline = time.monotonic() + 60
            while not any(l.startswith("End of Form Load at ") for l in s.log_lines()):
                self.assertTrue(s.running(), "the program ended during the start-up:\n" + s.program_output())
                self.assertLess(time.monotonic(), deadline, "start-up did not end")
                # A first run waits for the player's name.
                if not name_given and any(l.startswith("asking for name local player at ") for l in s.log_lines()):
                    name_given = s.give_name("tester")
                window = xd.find_window(s.process.pid, "Valkenhorn!")
                if window and xd.viewable(window):
                    self.assertTrue(xd.supports_delete_window(window), "the window takes WM_DELETE_WINDOW")
                    xd.send_delete_window(window)
                    sent_during_startup += 1
                # The socket is served all through the start-up, inside its waits too.
                self.assertIsInstance(s.state()["BoardSide"], int)
                time.sleep(0.03)
            self.assertGreater(sent_during_startup, 0, "the window never showed during the start-up")
            s.wait_started()

            window = xd.find_window(s.process.pid, "Valkenhorn!")
            self.assertIsNotNone(window, "the main window is on the screen")
            for _ in range(3):
                xd.send_delete_window(window)
                time.sleep(0.2)
            time.sleep(1.0)
            self.assertTrue(s.running(), "the process still runs")
            self.assertTrue(xd.viewable(window), "the window is still shown")
            self.assertTrue(s.get("Hoofdvenster")["visible"])
            self.assertIsNone(s.ok({"cmd": "dialog"})["dialog"], "a close request asks nothing")
            self.assertIn("End of Form Load at ", "\n".join(s.log_lines()))


class WindowSize(unittest.TestCase):
    def test_smaller_window_snaps_back(self):
        with XServer() as x, Session(PROGRAM, x.display) as s, XDisplay(x.display) as xd:
            s.wait_started()
            window = xd.find_window(s.process.pid, "Valkenhorn!")
            self.assertIsNotNone(window)
            xd.resize(window, 800, 600)
            # The window comes back to at least 25545 x 13800 twips.
            s.wait_until(lambda: xd.size(window)[0] >= 25545 // 15 and xd.size(window)[1] >= 13800 // 15,
                         "the window to snap back, now %r" % (xd.size(window),), timeout=10)
            form = s.get("Hoofdvenster")
            self.assertGreaterEqual(form["width"], 25545)
            self.assertGreaterEqual(form["height"], 13800)
            self.assertTrue(s.running())


class SecondInstance(unittest.TestCase):
    def test_second_start_shows_box_and_first_runs(self):
        with XServer() as x, Session(PROGRAM, x.display) as first:
            first.wait_started()
            log_before = first.log_bytes()
            with Session(PROGRAM, x.display, data_home=first.data_home, config_home=first.config_home) as second:
                dialog = second.wait_dialog()
                self.assertEqual("message", dialog["kind"])
                self.assertEqual("Valkenhorn is al gestart!", dialog["text"])
                self.assertEqual(["ok"], dialog["buttons"])
                self.assertTrue(first.log_bytes().startswith(log_before), "the first log is left alone")
                self.assertEqual(log_before.split(b"\n")[0], first.log_bytes().split(b"\n")[0])
                self.assertTrue(second.ok({"cmd": "answer", "button": "ok"}))
                second.wait_exit()
            time.sleep(0.5)
            self.assertTrue(first.running(), "the first instance still runs")
            self.assertIsNone(first.ok({"cmd": "dialog"})["dialog"])
            self.assertTrue(first.get("Hoofdvenster")["visible"])
            self.assertTrue(first.log_bytes().startswith(log_before), "the first log is left alone")


class ExitQuestion(unittest.TestCase):
    def ask(self, s):
        s.ok({"cmd": "click", "name": "cmdSluiten"})
        dialog = s.wait_dialog()
        self.assertEqual("message", dialog["kind"])
        self.assertEqual("Programma Afsluiten", dialog["title"])
        self.assertEqual("Bent u zeker dat u 'Valkenhorn!' wilt afsluiten?", dialog["text"])
        self.assertEqual(["yes", "no"], sorted(dialog["buttons"], reverse=True))

    def test_no_keeps_running(self):
        with XServer() as x, Session(PROGRAM, x.display) as s:
            s.wait_started()
            self.ask(s)
            s.ok({"cmd": "answer", "button": "no"})
            s.wait_until(lambda: s.ok({"cmd": "dialog"})["dialog"] is None, "the question to close")
            time.sleep(1.0)
            self.assertTrue(s.running())
            self.assertTrue(s.get("cmdSluiten")["enabled"])
            self.assertFalse(s.state()["LinkBusy"], "No leaves the link alone")
            # And it asks again.
            self.ask(s)
            s.ok({"cmd": "answer", "button": "no"})

    def test_yes_ends_with_code_0(self):
        with XServer() as x, Session(PROGRAM, x.display) as s:
            s.wait_started()
            self.ask(s)
            s.ok({"cmd": "answer", "button": "yes"})
            self.assertEqual(0, s.wait_exit())
            lines = s.log_lines()
            self.assertEqual(SEPARATOR_53, [l for l in lines if l][-1], "no closing line is written")


class AutomationContract(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        # Class cleanups run also when the start-up fails here.
        cls.xserver = XServer().__enter__()
        cls.addClassCleanup(cls.xserver.__exit__, None, None, None)
        cls.s = Session(PROGRAM, cls.xserver.display)
        cls.addClassCleanup(cls.s.close)
        cls.s.start()
        cls.s.wait_started()

    def refused(self, request):
        reply = self.s.request(request)
        self.assertIs(False, reply.get("ok"), "%r must be refused: %r" % (request, reply))
        self.assertIsInstance(reply.get("error"), str)
        self.assertTrue(reply["error"])
        return reply

    def test_socket_is_owner_only(self):
        mode = os.stat(self.s.socket_path).st_mode
        self.assertTrue(stat.S_ISSOCK(mode))
        self.assertEqual(0o600, stat.S_IMODE(mode))

    def test_socket_listens_only_when_asked(self):
        # Qt binds in a private folder and moves the socket into place, so the
        # kernel still names the first path: count, don't compare.
        self.assertEqual(1, len(listening_unix_sockets(self.s.process.pid)))
        plain = Session(PROGRAM, self.xserver.display, automation=False)
        # Without the socket nobody can type a name: the player is known already.
        write_settings(plain.config_home, [("LocalUser", "tester")])
        with plain:
            plain.wait_started()
            self.assertEqual([], listening_unix_sockets(plain.process.pid))

    def test_list(self):
        names = self.s.ok({"cmd": "list"})["names"]
        self.assertEqual(len(names), len(set(names)), "names are unique")
        for name in control_names():
            self.assertIn(name, names)

    def test_get_every_control_has_all_fields(self):
        kinds = {"form", "frame", "panel", "button", "checkbox", "combobox", "textbox", "label", "image", "shape",
                 "timer"}
        for name in self.s.ok({"cmd": "list"})["names"]:
            control = self.s.get(name)
            self.assertEqual(sorted(GET_FIELDS), sorted(control), name)
            self.assertEqual(name, control["name"])
            self.assertIn(control["kind"], kinds, name)

    def test_get_button(self):
        c = self.s.get("cmdSluiten")
        self.assertEqual("button", c["kind"])
        self.assertEqual("Afsluiten", c["caption"])
        self.assertEqual((6960, 240, 1455, 300), (c["left"], c["top"], c["width"], c["height"]))
        self.assertIs(True, c["visible"])
        self.assertIs(True, c["enabled"])
        for field in ("text", "value", "listIndex", "items", "picture"):
            self.assertIsNone(c[field], field)
        start = self.s.get("cmdStart")
        self.assertEqual(("Spel Starten", 240, False), (start["caption"], start["left"], start["enabled"]))

    def test_get_kinds(self):
        expected = {"Hoofdvenster": "form", "frmGameControl": "frame", "Personnel": "panel", "cmdGooi": "button",
                    "ShareStatus": "checkbox", "Combo_ExternUsers": "combobox", "User_Name": "textbox",
                    "msgBoard": "label", "Speelveld": "image", "Voertuig_1(3)": "image", "GV1(19)": "image",
                    "Kader": "shape", "Scroll_Timer": "timer"}
        for name, kind in expected.items():
            self.assertEqual(kind, self.s.get(name)["kind"], name)

    def test_get_values(self):
        form = self.s.get("Hoofdvenster")
        self.assertEqual("Valkenhorn!", form["caption"])
        self.assertIs(True, form["visible"])
        self.assertGreaterEqual(form["width"], 25545)
        self.assertGreaterEqual(form["height"], 13800)

        board = self.s.get("msgBoard")
        self.assertEqual((4920, 120, 2895, 375), (board["left"], board["top"], board["width"], board["height"]))
        self.assertEqual(8454143, board["backColor"])
        self.assertIsInstance(board["caption"], str)

        field = self.s.get("Speelveld")
        self.assertEqual((25300, 13210), (field["width"], field["height"]))
        self.assertTrue(field["picture"].endswith("groen_leger/yambo_1.bmp"), field["picture"])

        share = self.s.get("ShareStatus")
        self.assertEqual("Aanwezig", share["caption"])
        self.assertEqual(0, share["value"])
        self.assertEqual(12624992, share["backColor"])

        combo = self.s.get("Combo_ExternUsers")
        self.assertIsInstance(combo["items"], list)
        self.assertIsInstance(combo["listIndex"], int)
        self.assertIsInstance(combo["text"], str)
        self.assertIsNone(combo["caption"])
        self.assertEqual(255, combo["backColor"])

        name = self.s.get("User_Name")
        self.assertIsInstance(name["text"], str)
        self.assertIsNone(name["caption"])
        self.assertEqual((240, 240, 1575, 325), (name["left"], name["top"], name["width"], name["height"]))

        gv = self.s.get("GV1(19)")
        self.assertEqual((120, 120), (gv["width"], gv["height"]))
        self.assertEqual("Dubbelklik hier om deze dobbelsteen apart te gebruiken", self.s.get("Dice_1")["toolTip"])
        self.assertEqual("Dubbelklik hier om de dobbelstenen samen te gebruiken", self.s.get("Dices")["toolTip"])
        self.assertIs(False, self.s.get("Kader")["visible"])

        timer = self.s.get("Scroll_Timer")
        self.assertIs(True, timer["enabled"])
        for f in ("visible", "left", "top", "width", "height", "caption", "text", "value", "picture"):
            self.assertIsNone(timer[f], f)
        self.assertEqual(12624992, self.s.get("frDices")["backColor"])
        self.assertEqual("Spel Controle", self.s.get("frmGameControl")["caption"])

    def test_unknown_and_bad_requests_refuse(self):
        self.refused({"cmd": "get", "name": "NoSuchControl"})
        self.refused({"cmd": "click", "name": "NoSuchControl"})
        self.refused({"cmd": "get"})
        self.refused({"cmd": "no_such_command"})
        self.refused({"name": "cmdSluiten"})
        for line in (b"this is no json\n", b"[1,2]\n"):
            reply = self.s.raw(line)
            self.assertIs(False, reply["ok"], line)
        # The connection still serves after bad lines.
        self.assertTrue(self.s.ok({"cmd": "list"})["names"])

    def test_inputs_to_unreachable_controls_refuse(self):
        self.assertIs(False, self.s.get("cmdStart")["enabled"])
        self.refused({"cmd": "click", "name": "cmdStart"})
        self.refused({"cmd": "click", "name": "Kader"})
        self.refused({"cmd": "click", "name": "Scroll_Timer"})
        # Controls inside a disabled frame can't be reached, whatever their own flags say.
        for frame, child, request in (("frLokaal", "User_Name", {"cmd": "type", "text": "x"}),
                                      ("frLokaal", "User_Name", {"cmd": "key", "code": 13}),
                                      ("frLokaal", "User_Name", {"cmd": "focus"}),
                                      ("frExtern", "Combo_ExternUsers", {"cmd": "select", "index": 0})):
            if not self.s.get(frame)["enabled"]:
                self.assertIs(True, self.s.get(child)["enabled"], child + " keeps its own flag")
                self.refused(dict(request, name=child))

    def test_inputs_that_do_not_apply_refuse(self):
        self.refused({"cmd": "type", "name": "cmdSluiten", "text": "x"})
        self.refused({"cmd": "key", "name": "cmdSluiten", "code": 13})
        self.refused({"cmd": "select", "name": "cmdSluiten", "index": 0})
        self.refused({"cmd": "mousedown", "name": "cmdSluiten", "x": 1, "y": 1})
        self.refused({"cmd": "mousedown", "name": "Speelveld"})
        self.refused({"cmd": "dblclick", "name": "cmdSluiten"})

    def test_board_mouse_inputs(self):
        self.s.ok({"cmd": "mousedown", "name": "Speelveld", "x": 3000, "y": 2000})
        self.s.ok({"cmd": "dblclick", "name": "Speelveld", "x": 3000, "y": 2000})
        self.s.ok({"cmd": "dblclick", "name": "Speelveld"})
        self.assertTrue(self.s.running())
        self.assertIsNone(self.s.ok({"cmd": "dialog"})["dialog"])

    def test_focus(self):
        self.s.ok({"cmd": "focus", "name": "cmdSluiten"})
        self.assertTrue(self.s.running())

    def test_text_box_and_combo_box_when_reachable(self):
        if self.s.get("frLokaal")["enabled"] and self.s.get("User_Name")["enabled"]:
            before = self.s.get("User_Name")["text"]
            self.s.ok({"cmd": "focus", "name": "User_Name"})
            self.s.ok({"cmd": "type", "name": "User_Name", "text": "ab"})
            self.s.wait_until(lambda: self.s.get("User_Name")["text"] != before, "the typed keys")
            self.s.ok({"cmd": "key", "name": "User_Name", "code": 8})
            self.refused({"cmd": "key", "name": "User_Name", "code": 7})
            self.refused({"cmd": "key", "name": "User_Name", "code": 256})
        if self.s.get("frExtern")["enabled"] and self.s.get("Combo_ExternUsers")["enabled"]:
            items = self.s.get("Combo_ExternUsers")["items"]
            self.s.ok({"cmd": "select", "name": "Combo_ExternUsers", "index": 0})
            self.s.wait_until(lambda: self.s.get("Combo_ExternUsers")["listIndex"] == 0, "the selection")
            self.refused({"cmd": "select", "name": "Combo_ExternUsers", "index": len(items)})

    def test_state(self):
        state = self.s.state()
        for key in STATE_KEYS:
            self.assertIn(key, state)
        self.assertEqual(1, state["BoardSide"])
        self.assertIn(state["GameRunning"], (False, 0))
        self.assertIsInstance(state["BoardText"], str)

    def test_screenshot(self):
        path = os.path.join(self.s.scratch, "shot.png")
        self.s.ok({"cmd": "screenshot", "path": path})
        size = png_size(path)
        self.assertIsNotNone(size, "a PNG file")
        self.assertGreaterEqual(size[0], 25545 // 15)
        self.assertGreaterEqual(size[1], 13800 // 15)
        self.refused({"cmd": "screenshot", "path": "/no/such/folder/shot.png"})

    def test_dialog_and_answer(self):
        self.assertEqual({"ok": True, "dialog": None}, self.s.request({"cmd": "dialog"}))
        self.refused({"cmd": "answer", "button": "ok"})
        self.s.ok({"cmd": "click", "name": "cmdSluiten"})
        dialog = self.s.wait_dialog()
        self.assertEqual(sorted(["kind", "title", "text", "buttons"]), sorted(dialog))
        # The program goes on while the box is open, and so does the interface.
        self.assertTrue(self.s.get("cmdSluiten")["visible"])
        self.refused({"cmd": "answer", "button": "ok"})
        self.refused({"cmd": "answer", "folder": "/tmp"})
        self.refused({"cmd": "answer"})
        self.s.ok({"cmd": "answer", "button": "no"})
        self.s.wait_until(lambda: self.s.ok({"cmd": "dialog"})["dialog"] is None, "the box to close")
        self.assertTrue(self.s.running())


class MessageBoard(unittest.TestCase):
    def test_click_on_running_text_empties_board_text(self):
        with XServer() as x, Session(PROGRAM, x.display) as s:
            def running_text():
                text = s.state()["BoardText"]
                if text:
                    return text
                # The player initiation runs its texts before the end of the start-up.
                self.assertFalse(any(l.startswith("End of Form Load at ") for l in s.log_lines()),
                                 "no text ran on the board during the start-up")
                return None

            first = s.wait_until(running_text, "a text on the board")
            self.assertTrue(any(is_rotation(first, format_board_text(t)) for t in BOARD_TEXTS),
                            "the board runs a formatted message: %r" % first)
            s.wait_until(lambda: s.get("msgBoard")["visible"], "the board to show")
            s.wait_until(lambda: s.state()["BoardText"] not in ("", first), "the text to rotate")
            s.ok({"cmd": "click", "name": "msgBoard"})
            s.wait_until(lambda: s.state()["BoardText"] == "", "the board text to empty", timeout=5)
            s.wait_until(lambda: s.get("msgBoard")["visible"] is False, "the board to hide", timeout=5)
            # A hidden board takes no clicks.
            self.assertIs(False, s.request({"cmd": "click", "name": "msgBoard"})["ok"])


class HelpPages(unittest.TestCase):
    """The help buttons start the browser with the page's path, or show one of two boxes."""

    def browser_script(self, folder, body):
        path = os.path.join(folder, "browser")
        with open(path, "w") as f:
            f.write(body)
        os.chmod(path, 0o755)
        return path

    def test_browser_gets_the_page(self):
        with tempfile.TemporaryDirectory(prefix="vk-e2e-browser-") as folder:
            calls = os.path.join(folder, "calls")
            browser = self.browser_script(folder, '#!/bin/sh\nprintf "%%s\\n" "$@" >> "%s"\n' % calls)
            with XServer() as x, Session(PROGRAM, x.display, env={"BROWSER": browser}) as s:
                s.wait_started()
                program_folder = os.path.dirname(os.path.realpath(PROGRAM))
                for button, page in (("cmdRules", "/help/rules.html"), ("Cmd_HowTo", "/help/sharebox.html")):
                    s.ok({"cmd": "click", "name": button})
                    s.wait_until(lambda: os.path.exists(calls) and page in open(calls).read(), "the browser for " + page)
                    self.assertIsNone(s.ok({"cmd": "dialog"})["dialog"])
                with open(calls) as f:
                    pages = f.read().split("\n")
                self.assertEqual([program_folder + "/help/rules.html", program_folder + "/help/sharebox.html", ""],
                                 [os.path.realpath(p) if p else p for p in pages])
                for p in pages[:2]:
                    self.assertTrue(os.path.isfile(p), p)
                self.assertFalse(os.path.exists(os.path.join(program_folder, "temphtm.HTM")), "the scratch file is gone")

    def test_no_browser_box(self):
        with XServer() as x, Session(PROGRAM, x.display, env={"BROWSER": "", "PATH": "/nonexistent"}) as s:
            s.wait_started()
            s.ok({"cmd": "click", "name": "cmdRules"})
            dialog = s.wait_dialog()
            self.assertEqual(("message", "Browser niet gevonden", "Kon geen Browser vinden", ["ok"]),
                             (dialog["kind"], dialog["title"], dialog["text"], dialog["buttons"]))
            s.ok({"cmd": "answer", "button": "ok"})
            s.wait_until(lambda: s.ok({"cmd": "dialog"})["dialog"] is None, "the box to close")
            self.assertTrue(s.running())

    def test_browser_that_fails_box(self):
        with tempfile.TemporaryDirectory(prefix="vk-e2e-browser-") as folder:
            # Executable but no program: starting it fails.
            browser = self.browser_script(folder, "this is not a program\n")
            with XServer() as x, Session(PROGRAM, x.display, env={"BROWSER": browser}) as s:
                s.wait_started()
                s.ok({"cmd": "click", "name": "Cmd_HowTo"})
                dialog = s.wait_dialog()
                self.assertEqual(("message", "Openen gefaald", "Pagina kon niet geopend worden", ["ok"]),
                                 (dialog["kind"], dialog["title"], dialog["text"], dialog["buttons"]))
                s.ok({"cmd": "answer", "button": "ok"})
                s.wait_until(lambda: s.ok({"cmd": "dialog"})["dialog"] is None, "the box to close")
                self.assertTrue(s.running())


class InstallationFaults(unittest.TestCase):
    """Faults of the installation end the program through the fault report."""

    def test_missing_picture_ends_with_fault_report(self):
        real = os.path.dirname(os.path.realpath(PROGRAM))
        with tempfile.TemporaryDirectory(prefix="vk-e2e-install-") as folder:
            # A copy of the program folder without the board picture of the green army.
            for entry in os.listdir(real):
                if entry == "groen_leger":
                    os.mkdir(os.path.join(folder, entry))
                    for picture in os.listdir(os.path.join(real, entry)):
                        if picture != "yambo_1.bmp":
                            os.symlink(os.path.join(real, entry, picture), os.path.join(folder, entry, picture))
                elif entry == os.path.basename(PROGRAM):
                    shutil.copy2(os.path.join(real, entry), os.path.join(folder, entry))
                else:
                    os.symlink(os.path.join(real, entry), os.path.join(folder, entry))
            missing = os.path.join(folder, "groen_leger", "yambo_1.bmp")
            with XServer() as x, Session(os.path.join(folder, os.path.basename(PROGRAM)), x.display) as s:
                dialog = s.wait_dialog()
                self.assertEqual("message", dialog["kind"])
                self.assertIn(missing, dialog["text"])
                s.ok({"cmd": "answer", "button": "ok"})
                self.assertNotEqual(0, s.wait_exit())
                lines = s.log_lines()
                faults = [l for l in lines if l.startswith("run-time fault: ")]
                self.assertEqual(1, len(faults), "\n".join(lines))
                self.assertIn(missing, faults[0])
                self.assertTrue(any(l.startswith("Loading playboard at ") for l in lines))
                self.assertFalse(any(l.startswith("Testing requirements of computer screen at ") for l in lines))

    def test_unusable_data_folder_ends_with_fault_report(self):
        with tempfile.TemporaryDirectory(prefix="vk-e2e-data-") as folder:
            blocker = os.path.join(folder, "a-file")
            with open(blocker, "w") as f:
                f.write("not a folder\n")
            with XServer() as x, Session(PROGRAM, x.display, data_home=os.path.join(blocker, "data")) as s:
                dialog = s.wait_dialog()
                self.assertEqual("message", dialog["kind"])
                # Opening the run log is what fails.
                self.assertIn(os.path.join(blocker, "data", "Valkenhorn", "Valkenhorn.log"), dialog["text"])
                s.ok({"cmd": "answer", "button": "ok"})
                self.assertNotEqual(0, s.wait_exit())


class SmallScreen(unittest.TestCase):
    def test_small_screen_ends_with_stop_box(self):
        with XServer(1600, 900) as x, Session(PROGRAM, x.display) as s:
            dialog = s.wait_dialog(60)
            self.assertEqual("message", dialog["kind"])
            self.assertEqual("Scherm voldoet niet!", dialog["title"])
            self.assertEqual("Spijtig, maar je scherm is niet groot genoeg om dit spel te spelen. "
                             "Het programma wordt afgesloten.", dialog["text"])
            self.assertEqual(["ok"], dialog["buttons"])
            s.ok({"cmd": "answer", "button": "ok"})
            s.wait_exit()
            lines = s.log_lines()
            self.assertTrue(any(l.startswith("Testing requirements of computer screen at ") for l in lines))
            self.assertFalse(any(l.startswith("Positioning program window at ") for l in lines),
                             "the start-up ends at the screen test:\n" + "\n".join(lines))


def main():
    global PROGRAM
    if len(sys.argv) < 3:
        sys.stderr.write(__doc__)
        return 2
    PROGRAM = os.path.abspath(sys.argv[1])
    return run_tests(sys.modules[__name__], sys.argv[2:])


if __name__ == "__main__":
    sys.exit(main())
