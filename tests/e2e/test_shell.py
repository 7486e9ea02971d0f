"""End-to-end tests of the shell around the main window: the help pages, the
fault report for a missing picture and an unusable data folder, and the
window's size and places after start-up.

    python3 test_shell.py PROGRAM [unittest selectors...]
"""

import os
import shutil
import stat
import sys
import tempfile
import time
import unittest

from valkenhorn_session import Session, XServer

PROGRAM = None


class EnvironmentPatch:
    """Sets environment variables for the program started inside the block."""

    def __init__(self, **values):
        self.values = values
        self.saved = {}

    def __enter__(self):
        for key, value in self.values.items():
            self.saved[key] = os.environ.get(key)
            if value is None:
                os.environ.pop(key, None)
            else:
                os.environ[key] = value
        return self

    def __exit__(self, *exc):
        for key, value in self.saved.items():
            if value is None:
                os.environ.pop(key, None)
            else:
                os.environ[key] = value


def program_copy(without=None):
    """A copy of the program folder (files linked), less one file."""
    source = os.path.dirname(os.path.abspath(PROGRAM))
    target = tempfile.mkdtemp(prefix="vk-program-")
    for root, dirs, files in os.walk(source):
        relative = os.path.relpath(root, source)
        os.makedirs(os.path.join(target, relative), exist_ok=True)
        for name in files:
            path = os.path.normpath(os.path.join(relative, name))
            if path == without:
                continue
            if name == os.path.basename(PROGRAM) and relative == ".":
                shutil.copy2(os.path.join(root, name), os.path.join(target, path))
            else:
                os.symlink(os.path.join(root, name), os.path.join(target, path))
    return target


class HelpPages(unittest.TestCase):
    def setUp(self):
        self.scratch = tempfile.mkdtemp(prefix="vk-help-")
        self.addCleanup(shutil.rmtree, self.scratch, True)
        # No desktop default for web pages: nothing of the machine may answer.
        self.empty = os.path.join(self.scratch, "empty")
        os.makedirs(self.empty)

    def fake_browser(self, body):
        path = os.path.join(self.scratch, "browser")
        with open(path, "w") as f:
            f.write(body)
        os.chmod(path, stat.S_IRWXU)
        return path

    def test_rules_open_in_the_browser(self):
        record = os.path.join(self.scratch, "args.txt")
        browser = self.fake_browser("#!/bin/sh\nprintf '%%s\\n' \"$@\" > %s.tmp && mv %s.tmp %s\n" % (record, record, record))
        with XServer() as x, EnvironmentPatch(BROWSER=browser), Session(PROGRAM, x.display) as s:
            s.wait_started()
            folder = s.state()["ProgramFolder"]
            s.ok({"cmd": "click", "name": "cmdRules"})
            deadline = time.monotonic() + 20
            while not os.path.exists(record) and time.monotonic() < deadline:
                time.sleep(0.05)
            with open(record) as f:
                self.assertEqual(f.read().splitlines(), [folder.rstrip("/") + "/help/rules.html"])
            self.assertTrue(os.path.isfile(folder + "help/rules.html"))
            # The scratch page is gone once the browser is started.
            s.wait_until(lambda: not os.path.exists(folder + "temphtm.HTM"), "the scratch page to be deleted")
            self.assertIsNone(s.ok({"cmd": "dialog"})["dialog"])

    def test_how_to_connect_opens_its_page(self):
        record = os.path.join(self.scratch, "args.txt")
        browser = self.fake_browser("#!/bin/sh\nprintf '%%s\\n' \"$@\" > %s.tmp && mv %s.tmp %s\n" % (record, record, record))
        with XServer() as x, EnvironmentPatch(BROWSER=browser), Session(PROGRAM, x.display) as s:
            s.wait_started()
            folder = s.state()["ProgramFolder"]
            s.ok({"cmd": "click", "name": "Cmd_HowTo"})
            s.wait_until(lambda: os.path.exists(record), "the browser to be started")
            with open(record) as f:
                self.assertEqual(f.read().splitlines(), [folder.rstrip("/") + "/help/sharebox.html"])

    def test_no_browser_shows_the_warning(self):
        with XServer() as x, EnvironmentPatch(BROWSER=None, XDG_DATA_DIRS=self.empty, PATH=self.empty), \
                Session(PROGRAM, x.display) as s:
            s.wait_started()
            s.ok({"cmd": "click", "name": "cmdRules"})
            dialog = s.wait_dialog()
            self.assertEqual(dialog["kind"], "message")
            self.assertEqual(dialog["title"], "Browser niet gevonden")
            self.assertEqual(dialog["text"], "Kon geen Browser vinden")
            self.assertEqual(dialog["buttons"], ["ok"])
            s.ok({"cmd": "answer", "button": "ok"})
            s.wait_until(lambda: s.ok({"cmd": "dialog"})["dialog"] is None, "the box to close")
            self.assertTrue(s.running())

    def test_browser_that_fails_to_start_shows_the_warning(self):
        # Executable by its mode, but no program the system can run.
        browser = self.fake_browser("this is no program\n")
        with open(browser, "wb") as f:
            f.write(b"\x00\x01\x02 not an executable format")
        with XServer() as x, EnvironmentPatch(BROWSER=browser), Session(PROGRAM, x.display) as s:
            s.wait_started()
            s.ok({"cmd": "click", "name": "Cmd_HowTo"})
            dialog = s.wait_dialog()
            self.assertEqual(dialog["title"], "Openen gefaald")
            self.assertEqual(dialog["text"], "Pagina kon niet geopend worden")
            s.ok({"cmd": "answer", "button": "ok"})
            s.wait_until(lambda: s.ok({"cmd": "dialog"})["dialog"] is None, "the box to close")
            self.assertTrue(s.running())


class Faults(unittest.TestCase):
    def test_missing_board_picture_ends_with_the_fault_report(self):
        folder = program_copy(without=os.path.join("groen_leger", "yambo_1.bmp"))
        self.addCleanup(shutil.rmtree, folder, True)
        program = os.path.join(folder, os.path.basename(PROGRAM))
        with XServer() as x, Session(program, x.display) as s:
            dialog = s.wait_dialog(timeout=60)
            self.assertEqual(dialog["kind"], "message")
            self.assertIn("yambo_1.bmp", dialog["text"])
            lines = s.log_lines()
            faults = [l for l in lines if l.startswith("run-time fault: ")]
            self.assertEqual(len(faults), 1, lines)
            self.assertIn(os.path.join(folder, "groen_leger", "yambo_1.bmp"), faults[0])
            self.assertIn("Loading playboard at ", "\n".join(lines))
            s.ok({"cmd": "answer", "button": "ok"})
            self.assertNotEqual(s.wait_exit(), 0)

    def test_unusable_data_folder_ends_with_the_fault_report(self):
        scratch = tempfile.mkdtemp(prefix="vk-data-")
        self.addCleanup(shutil.rmtree, scratch, True)
        # A plain file where the program's data folder should be made: the log can't be opened.
        data_home = os.path.join(scratch, "data")
        os.makedirs(data_home)
        with open(os.path.join(data_home, "Valkenhorn"), "w") as f:
            f.write("not a folder")
        with XServer() as x, Session(PROGRAM, x.display, data_home=data_home) as s:
            dialog = s.wait_dialog(timeout=60)
            self.assertEqual(dialog["kind"], "message")
            self.assertIn("Valkenhorn.log", dialog["text"])
            s.ok({"cmd": "answer", "button": "ok"})
            self.assertNotEqual(s.wait_exit(), 0)
            self.assertIn("run-time fault: ", s.program_output())


class WindowAfterStartUp(unittest.TestCase):
    def test_board_and_window_sizes(self):
        with XServer() as x, Session(PROGRAM, x.display) as s:
            s.wait_started()
            board = s.get("Speelveld")
            self.assertEqual((board["width"], board["height"]), (25300, 13210))
            self.assertTrue(board["picture"].endswith("groen_leger/yambo_1.bmp"))
            form = s.get("Hoofdvenster")
            self.assertEqual(form["caption"], "Valkenhorn!")
            self.assertGreaterEqual(form["width"], 25545)
            self.assertGreaterEqual(form["height"], 13800)
            state = s.state()
            self.assertEqual(state["MinWidth"], 25545)
            self.assertEqual(state["MinHeight"], 13800)
            self.assertEqual(state["BoardSide"], 1)
            self.assertFalse(state["GameRunning"])
            for name in ("cmdStart", "cmdDisconnect"):
                self.assertFalse(s.get(name)["enabled"], name)
            self.assertTrue(s.get("Scroll_Timer")["enabled"])


if __name__ == "__main__":
    PROGRAM = os.path.abspath(sys.argv[1])
    unittest.main(argv=[sys.argv[0]] + sys.argv[2:], verbosity=2)
