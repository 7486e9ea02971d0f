"""Runs the real program under a private X server and talks to it through its
automation socket. Standard library only, so that the tests need nothing but
python3, Xvfb and the program.

    with XServer() as x, Session(program, x.display) as s:
        s.wait_for_log_line("End of Form Load at ")
        s.request({"cmd": "get", "name": "cmdSluiten"})
"""

import json
import os
import shutil
import signal
import socket
import subprocess
import tempfile
import time
import unittest

TIME_SCALE = "0.05"
SEPARATOR_53 = "-" * 53


class XServer:
    """An Xvfb of its own on a free display, with the given screen size."""

    def __init__(self, width=1920, height=1080, depth=24):
        self.screen = "%dx%dx%d" % (width, height, depth)
        self.process = None
        self.display = None

    def __enter__(self):
        read_end, write_end = os.pipe()
        self.process = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", self.screen, "-nolisten", "tcp"],
            pass_fds=(write_end,), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write_end)
        number = b""
        with os.fdopen(read_end, "rb") as pipe:
            while not number.endswith(b"\n"):
                chunk = pipe.read(1)
                if not chunk:
                    raise RuntimeError("Xvfb ended before it named its display")
                number += chunk
        self.display = ":" + number.decode().strip()
        return self

    def __exit__(self, *exc):
        if self.process and self.process.poll() is None:
            self.process.terminate()
            try:
                self.process.wait(10)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()


class Session:
    """One run of the program with its own data and config folders and socket."""

    def __init__(self, program, display, data_home=None, config_home=None, time_scale=TIME_SCALE, automation=True,
                 env=None, arguments=()):
        self.program = program
        self.display = display
        self.scratch = tempfile.mkdtemp(prefix="vk-e2e-")
        self.data_home = data_home or os.path.join(self.scratch, "data")
        self.config_home = config_home or os.path.join(self.scratch, "config")
        for folder in (self.data_home, self.config_home):
            try:
                os.makedirs(folder, exist_ok=True)
            except OSError:
                pass  # a test of a folder that can't be made
        self.socket_path = os.path.join(self.scratch, "automation.sock")
        self.time_scale = time_scale
        self.automation = automation
        self.extra_env = env or {}
        self.extra_arguments = list(arguments)
        self.process = None
        self.connection = None
        self.reader = None
        self.output_path = os.path.join(self.scratch, "output.txt")

    # -- process ---------------------------------------------------------

    def __enter__(self):
        try:
            self.start()
        except BaseException:
            self.close()
            raise
        return self

    def __exit__(self, *exc):
        self.close()

    def start(self):
        env = dict(os.environ)
        env.update({
            "DISPLAY": self.display,
            "QT_QPA_PLATFORM": "xcb",
            "XDG_DATA_HOME": self.data_home,
            "XDG_CONFIG_HOME": self.config_home,
            "VALKENHORN_TIME_SCALE": self.time_scale,
        })
        env.pop("WAYLAND_DISPLAY", None)
        env.update(self.extra_env)
        self.output = open(self.output_path, "wb")
        arguments = [self.program] + (["--automation", self.socket_path] if self.automation else []) + \
            self.extra_arguments
        self.process = subprocess.Popen(arguments, env=env, stdout=self.output, stderr=subprocess.STDOUT)
        if self.automation:
            self.connect()

    def connect(self, timeout=30):
        deadline = time.monotonic() + timeout
        while True:
            if self.process.poll() is not None:
                raise AssertionError("the program ended (code %s) before its automation socket came up:\n%s"
                                     % (self.process.returncode, self.program_output()))
            if os.path.exists(self.socket_path):
                try:
                    conn = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
                    conn.connect(self.socket_path)
                    self.connection = conn
                    self.reader = conn.makefile("rb")
                    return
                except OSError:
                    conn.close()
            if time.monotonic() > deadline:
                raise AssertionError("no automation socket at %s after %d s" % (self.socket_path, timeout))
            time.sleep(0.05)

    def running(self):
        return self.process.poll() is None

    def wait_exit(self, timeout=30):
        """The exit code, or an assertion error when the program still runs."""
        try:
            return self.process.wait(timeout)
        except subprocess.TimeoutExpired:
            raise AssertionError("the program still runs after %d s" % timeout)

    def program_output(self):
        try:
            with open(self.output_path, "rb") as f:
                return f.read().decode("utf-8", "replace")
        except OSError:
            return ""

    def close(self):
        if self.reader:
            self.reader.close()
        if self.connection:
            self.connection.close()
        self.reader = self.connection = None
        if self.process and self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
            try:
                self.process.wait(10)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
        if getattr(self, "output", None):
            self.output.close()
        shutil.rmtree(self.scratch, ignore_errors=True)

    # -- automation ------------------------------------------------------

    def request(self, obj, timeout=20):
        """Sends one request and returns the reply as a dict."""
        if self.connection is None:
            raise AssertionError("not connected")
        self.connection.settimeout(timeout)
        self.connection.sendall(json.dumps(obj).encode("utf-8") + b"\n")
        line = self.reader.readline()
        if not line:
            raise AssertionError("the program closed the automation socket on %r:\n%s"
                                 % (obj, self.program_output()))
        if not line.endswith(b"\n"):
            raise AssertionError("reply without a line end: %r" % line)
        return json.loads(line.decode("utf-8"))

    def raw(self, line, timeout=20):
        """Sends a line as it is and returns the reply as a dict."""
        self.connection.settimeout(timeout)
        self.connection.sendall(line)
        reply = self.reader.readline()
        if not reply.endswith(b"\n"):
            raise AssertionError("reply without a line end: %r" % reply)
        return json.loads(reply.decode("utf-8"))

    def ok(self, obj):
        """A request that must succeed; returns the reply."""
        reply = self.request(obj)
        if reply.get("ok") is not True:
            raise AssertionError("request %r refused: %r" % (obj, reply))
        return reply

    def get(self, name):
        return self.ok({"cmd": "get", "name": name})["control"]

    def state(self):
        return self.ok({"cmd": "state"})["state"]

    def wait_dialog(self, timeout=30):
        """The innermost open dialog, once there is one."""
        deadline = time.monotonic() + timeout
        while True:
            dialog = self.ok({"cmd": "dialog"})["dialog"]
            if dialog is not None:
                return dialog
            if not self.running():
                raise AssertionError("the program ended (code %s) without a dialog" % self.process.returncode)
            if time.monotonic() > deadline:
                raise AssertionError("no dialog after %d s" % timeout)
            time.sleep(0.05)

    def wait_until(self, test, what, timeout=30):
        deadline = time.monotonic() + timeout
        while True:
            value = test()
            if value:
                return value
            if not self.running():
                raise AssertionError("the program ended (code %s) while waiting for %s:\n%s"
                                     % (self.process.returncode, what, self.program_output()))
            if time.monotonic() > deadline:
                raise AssertionError("timed out waiting for %s" % what)
            time.sleep(0.05)

    # -- run log ---------------------------------------------------------

    @property
    def log_path(self):
        return os.path.join(self.data_home, "Valkenhorn", "Valkenhorn.log")

    def log_bytes(self):
        try:
            with open(self.log_path, "rb") as f:
                return f.read()
        except OSError:
            return b""

    def log_lines(self):
        return self.log_bytes().decode("utf-8", "replace").split("\n")

    def wait_for_log_line(self, prefix, timeout=60, answer_name="tester"):
        """Waits until a line of the run log starts with prefix. A first run
        asks for the player's name and waits for it; the name is typed into
        User_Name as a user would, so that the start-up goes on, and typed
        again when the start-up has not gone on a few seconds later."""
        deadline = time.monotonic() + timeout
        given_at = None
        while True:
            lines = self.log_lines()
            for line in lines:
                if line.startswith(prefix):
                    return line
                if line.startswith("run-time fault: "):
                    raise AssertionError("the program reported a fault before the log line %r:\n%s"
                                         % (prefix, "\n".join(lines)))
            waiting = (any(l.startswith("asking for name local player at ") for l in lines)
                       and not any(l.startswith("getting data of extern players at ") for l in lines))
            if (answer_name and waiting and self.connection is not None
                    and (given_at is None or time.monotonic() - given_at > 5)):
                if self.give_name(answer_name):
                    given_at = time.monotonic()
            if not self.running():
                raise AssertionError("the program ended (code %s) before the log line %r:\n%s"
                                     % (self.process.returncode, prefix, self.program_output()))
            if time.monotonic() > deadline:
                raise AssertionError("no log line %r after %d s; log:\n%s"
                                     % (prefix, timeout, "\n".join(lines)))
            time.sleep(0.05)

    def give_name(self, name):
        if not self.request({"cmd": "focus", "name": "User_Name"}).get("ok"):
            return False
        # The focus comes once the window is active; getting it empties "je_naam".
        # Keys typed before that would leave the box without ever losing the focus.
        deadline = time.monotonic() + 5
        while self.get("User_Name")["text"] == "je_naam" and time.monotonic() < deadline:
            time.sleep(0.02)
        self.ok({"cmd": "type", "name": "User_Name", "text": name})
        self.ok({"cmd": "key", "name": "User_Name", "code": 13})
        return True

    def wait_started(self, timeout=60):
        """Waits for the end of the start-up: the separator after "End of Form Load at "."""
        self.wait_for_log_line("End of Form Load at ", timeout)
        self.wait_until(lambda: SEPARATOR_53 in self.log_lines(), "the separator after End of Form Load")


def listening_unix_sockets(pid):
    """Paths of the Unix-domain sockets on which the process listens."""
    inodes = set()
    for fd in os.listdir("/proc/%d/fd" % pid):
        try:
            target = os.readlink("/proc/%d/fd/%s" % (pid, fd))
        except OSError:
            continue
        if target.startswith("socket:["):
            inodes.add(target[len("socket:["):-1])
    listening = []
    with open("/proc/net/unix") as f:
        next(f)
        for line in f:
            fields = line.split()
            # Flags 00010000: the socket accepts connections.
            if len(fields) >= 7 and fields[6] in inodes and int(fields[3], 16) & 0x10000:
                listening.append(fields[7] if len(fields) > 7 else "")
    return listening


def format_board_text(text):
    """How a message is laid out for the running text: each character spaced,
    a blank widened to three, between two rows of stars, in upper case."""
    out = " * * * * * * * * * * "
    for c in text:
        out += "   " if c == " " else c + " "
    out += "* * * * * * * * * *"
    return out.upper()


def is_rotation(text, of):
    return len(text) == len(of) and text in of + of


def png_size(path):
    """Width and height of a PNG file, or None when it is no PNG."""
    with open(path, "rb") as f:
        head = f.read(24)
    if len(head) < 24 or head[:8] != b"\x89PNG\r\n\x1a\n" or head[12:16] != b"IHDR":
        return None
    return int.from_bytes(head[16:20], "big"), int.from_bytes(head[20:24], "big")


def run_tests(module, names):
    """Runs the tests `names` (Class or Class.method) of `module`, all of them
    when none are named: exit code 0 when all pass, 1 on a failure, 77 when
    every test ran was skipped (ctest's "Skipped")."""
    loader = unittest.defaultTestLoader
    suite = loader.loadTestsFromNames(names, module) if names else loader.loadTestsFromModule(module)
    result = unittest.TextTestRunner(verbosity=2).run(suite)
    if not result.wasSuccessful():
        return 1
    if result.skipped and len(result.skipped) == result.testsRun:
        return 77
    return 0
