"""The program's command line, run as a user would from a terminal:

    python3 test_command_line.py PATH/TO/valkenhorn VERSION

--help, --version and a wrong command line answer without a screen (no
DISPLAY); --automation SOCKET still starts the game with its automation
socket, also behind a Qt option such as -platform. Standard library only."""

import json
import os
import socket
import subprocess
import sys
import tempfile
import time
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))

from valkenhorn_session import Session, XServer, run_tests  # noqa: E402

PROGRAM = None
VERSION = None


def run(*arguments, timeout=30):
    """Runs the program without a screen; returns (code, stdout, stderr)."""
    env = dict(os.environ)
    for name in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"):
        env.pop(name, None)
    done = subprocess.run([PROGRAM] + list(arguments), env=env, capture_output=True, timeout=timeout)
    return done.returncode, done.stdout.decode("utf-8"), done.stderr.decode("utf-8")


class Version(unittest.TestCase):
    def test_prints_name_and_project_version(self):
        code, out, err = run("--version")
        self.assertEqual((0, "valkenhorn %s\n" % VERSION, ""), (code, out, err))

    def test_wins_over_qt_options_before_it(self):
        self.assertEqual((0, "valkenhorn %s\n" % VERSION, ""), run("-platform", "offscreen", "--version"))


class Help(unittest.TestCase):
    def test_usage_in_dutch_and_english(self):
        code, out, err = run("--help")
        self.assertEqual((0, ""), (code, err))
        self.assertIn("Gebruik: valkenhorn", out)
        self.assertIn("Usage:", out)
        for option in ("--automation SOCKET", "--demo", "--help", "--version", "--computer NAAM --folder MAP",
                       "--level greedy|random", "--invite SPELER", "--games N", "--turns N"):
            self.assertIn(option, out)
        # Each option is told in both languages.
        self.assertIn("toont de versie / shows the version", out)
        self.assertIn("listens for commands on the Unix-domain socket", out)
        self.assertIn("luistert op de Unix-socket", out)

    def test_short_form(self):
        self.assertEqual(run("--help"), run("-h"))

    def test_help_after_other_options(self):
        code, out, _ = run("--demo", "--help")
        self.assertEqual(0, code)
        self.assertIn("Usage:", out)


class WrongCommandLine(unittest.TestCase):
    def check(self, arguments, dutch, english):
        started = time.monotonic()
        code, out, err = run(*arguments)
        self.assertLess(time.monotonic() - started, 20, "a wrong command line ends at once")
        self.assertEqual(2, code, err)
        self.assertEqual("", out)
        first = err.splitlines()[0]
        self.assertEqual("valkenhorn: %s / %s" % (dutch, english), first)
        self.assertIn("valkenhorn --help", err)

    def test_unknown_option(self):
        self.check(["--bogus"], "onbekende optie '--bogus'", "unknown option '--bogus'")

    def test_unknown_single_dash_option(self):
        self.check(["-x"], "onbekende optie '-x'", "unknown option '-x'")

    def test_unknown_option_after_a_good_one(self):
        self.check(["--automation", "/tmp/vk-none.sock", "--fast"], "onbekende optie '--fast'",
                   "unknown option '--fast'")

    def test_automation_without_path(self):
        self.check(["--automation"], "optie --automation vraagt een pad (SOCKET)",
                   "option --automation needs a path (SOCKET)")

    def test_stray_argument(self):
        self.check(["spel"], "onverwacht argument 'spel'", "unexpected argument 'spel'")

    def test_demo_with_automation(self):
        self.check(["--demo", "--automation", "/tmp/vk-none.sock"], "--demo en --automation gaan niet samen",
                   "--demo and --automation do not go together")

    def test_computer_without_folder(self):
        self.check(["--computer", "Robot"], "--computer NAAM en --folder PAD horen samen",
                   "--computer NAME and --folder PATH go together")

    def test_computer_without_name(self):
        self.check(["--computer"], "optie --computer vraagt een waarde", "option --computer needs a value")

    def test_computer_level_unknown(self):
        self.check(["--computer", "Robot", "--folder", "/tmp", "--level", "slim"],
                   "optie --level is greedy of random", "option --level is greedy or random")

    def test_computer_games_not_a_number(self):
        self.check(["--computer", "Robot", "--folder", "/tmp", "--games", "veel"], "optie --games vraagt een getal",
                   "option --games needs a number")

    def test_computer_turns_zero(self):
        self.check(["--computer", "Robot", "--folder", "/tmp", "--turns", "0"], "optie --turns vraagt een getal",
                   "option --turns needs a number")

    def test_demo_with_computer(self):
        self.check(["--demo", "--computer", "Robot", "--folder", "/tmp"], "--demo en --computer gaan niet samen",
                   "--demo and --computer do not go together")

    def test_qt_option_without_its_value(self):
        self.check(["-platform"], "optie -platform vraagt een waarde", "option -platform needs a value")


class Automation(unittest.TestCase):
    """--automation SOCKET starts the game and answers on the socket."""

    def check_state(self, session):
        state = session.state()
        self.assertIn("GamePhase", state)
        self.assertIn("SettingsPath", state)

    def test_automation_socket_answers(self):
        with XServer() as x, Session(PROGRAM, x.display) as s:
            self.check_state(s)
            self.assertTrue(s.running())

    def test_automation_behind_a_qt_option(self):
        # -platform offscreen reaches Qt; the socket comes up before any window.
        with tempfile.TemporaryDirectory(prefix="vk-cl-") as scratch:
            sock = os.path.join(scratch, "a.sock")
            env = dict(os.environ, XDG_DATA_HOME=os.path.join(scratch, "data"),
                       XDG_CONFIG_HOME=os.path.join(scratch, "config"), VALKENHORN_TIME_SCALE="0.05")
            env.pop("DISPLAY", None)
            process = subprocess.Popen([PROGRAM, "-platform", "offscreen", "--automation", sock], env=env,
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            try:
                deadline = time.monotonic() + 30
                while not os.path.exists(sock):
                    self.assertIsNone(process.poll(), "the program ended before its socket came up")
                    self.assertLess(time.monotonic(), deadline, "no automation socket")
                    time.sleep(0.05)
                with socket.socket(socket.AF_UNIX) as conn:
                    conn.settimeout(20)
                    conn.connect(sock)
                    conn.sendall(b'{"cmd":"state"}\n')
                    reply = conn.makefile("rb").readline()
                self.assertIs(True, json.loads(reply.decode("utf-8")).get("ok"), reply)
            finally:
                process.terminate()
                try:
                    process.wait(10)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()


def main():
    global PROGRAM, VERSION
    if len(sys.argv) < 3:
        sys.stderr.write(__doc__)
        return 2
    PROGRAM = os.path.abspath(sys.argv[1])
    VERSION = sys.argv[2]
    names = sys.argv[3:]
    return run_tests(sys.modules[__name__], names)


if __name__ == "__main__":
    sys.exit(main())
