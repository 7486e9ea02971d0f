"""valkenhorn --demo end to end, under an Xvfb of its own:

    python3 test_demo.py PATH/TO/valkenhorn [Class[.method] ...]

The demo starts two copies of the same executable with their own temporary
homes and settings ("Speler A", "Speler B", distinct LocalIDs, one shared
folder); the test reaches them through VALKENHORN_DEMO_AUTOMATION, takes both
on-line and sees them find each other through the shared folder. The demo
itself shows no window, waits for both copies and leaves nothing behind: not
when the players close their copies, not when the copies are killed, not when
the demo is interrupted. TMPDIR points into the test's own folder, so that the
demo's temporary folder can be found and seen to go. Standard library only."""

import json
import os
import re
import signal
import socket
import subprocess
import sys
import tempfile
import time
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))

from link_session import GREEN, presence_pattern, read_settings  # noqa: E402
from valkenhorn_session import XServer, run_tests  # noqa: E402
from xwindow import XDisplay  # noqa: E402

PROGRAM = None
NAMES = ("Speler A", "Speler B")


def wait_until(test, what, timeout=60, step=0.05):
    deadline = time.monotonic() + timeout
    while True:
        value = test()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError("timed out waiting for %s" % what)
        time.sleep(step)


def children_of(pid):
    """The living (not yet reaped) child processes of pid."""
    found = []
    for entry in os.listdir("/proc"):
        if not entry.isdigit():
            continue
        try:
            with open("/proc/%s/stat" % entry) as f:
                stat = f.read()
        except OSError:
            continue
        fields = stat[stat.rindex(")") + 2:].split()
        if int(fields[1]) == pid and fields[0] != "Z":
            found.append(int(entry))
    return sorted(found)


def environment_of(pid):
    with open("/proc/%d/environ" % pid, "rb") as f:
        pairs = [item.split(b"=", 1) for item in f.read().split(b"\0") if b"=" in item]
    return {k.decode(): v.decode("utf-8", "replace") for k, v in pairs}


class Copy:
    """One copy of the demo, reached through its automation socket."""

    def __init__(self, pid, socket_path):
        self.pid = pid
        env = environment_of(pid)
        self.data_home = env["XDG_DATA_HOME"]
        self.config_home = env["XDG_CONFIG_HOME"]
        self.settings = read_settings(self.config_home)
        self.name = self.settings.get("LocalUser")
        wait_until(lambda: os.path.exists(socket_path), "the socket %s" % socket_path)
        self.connection = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self.connection.connect(socket_path)
        self.connection.settimeout(20)
        self.reader = self.connection.makefile("rb")

    def close(self):
        self.reader.close()
        self.connection.close()

    def ok(self, request):
        self.connection.sendall(json.dumps(request).encode("utf-8") + b"\n")
        line = self.reader.readline()
        if not line:
            raise AssertionError("%s closed its socket on %r" % (self.name, request))
        reply = json.loads(line.decode("utf-8"))
        if reply.get("ok") is not True:
            raise AssertionError("%s refused %r: %r" % (self.name, request, reply))
        return reply

    def state(self):
        return self.ok({"cmd": "state"})["state"]

    def log_lines(self):
        try:
            with open(os.path.join(self.data_home, "Valkenhorn", "Valkenhorn.log"), "rb") as f:
                return f.read().decode("utf-8", "replace").split("\n")
        except OSError:
            return []

    def wait_log(self, pattern, timeout=60):
        return wait_until(lambda: any(re.match(pattern, line) for line in self.log_lines()),
                          "%s to log %s" % (self.name, pattern), timeout)

    def wait_state(self, key, test, timeout=60):
        return wait_until(lambda: test(self.state().get(key)), "%s: state %s" % (self.name, key), timeout)


class DemoRun:
    """valkenhorn --demo with TMPDIR and the automation sockets in scratch."""

    def __init__(self, display, scratch, automation=True):
        self.tmp = os.path.join(scratch, "tmp")
        self.sockets = os.path.join(scratch, "sockets")
        os.makedirs(self.tmp)
        os.makedirs(self.sockets)
        env = dict(os.environ, DISPLAY=display, QT_QPA_PLATFORM="xcb", TMPDIR=self.tmp,
                   VALKENHORN_TIME_SCALE="0.05")
        env.pop("WAYLAND_DISPLAY", None)
        if automation:
            env["VALKENHORN_DEMO_AUTOMATION"] = self.sockets
        self.output_path = os.path.join(scratch, "demo-output.txt")
        self.output = open(self.output_path, "wb")
        self.process = subprocess.Popen([PROGRAM, "--demo"], env=env, stdout=self.output, stderr=subprocess.STDOUT)

    def output_text(self):
        with open(self.output_path, "rb") as f:
            return f.read().decode("utf-8", "replace")

    def roots(self):
        """The demo's temporary folders under TMPDIR."""
        return sorted(n for n in os.listdir(self.tmp) if n.startswith("valkenhorn-demo-"))

    def wait_children(self, count=2, timeout=60):
        """The demo's copies, once each has started with its own homes: a
        child that has been forked but not yet started the program still
        shows the demo's own environment."""
        def started(pid):
            try:
                home = environment_of(pid).get("XDG_DATA_HOME", "")
            except OSError:
                return False
            return home.startswith(self.tmp + "/")

        def found():
            if self.process.poll() is not None:
                raise AssertionError("the demo ended (code %s):\n%s" % (self.process.returncode, self.output_text()))
            kids = children_of(self.process.pid)
            return kids if len(kids) == count and all(started(pid) for pid in kids) else None
        return wait_until(found, "%d copies of the demo" % count, timeout)

    def wait_exit(self, timeout=60):
        try:
            return self.process.wait(timeout)
        except subprocess.TimeoutExpired:
            raise AssertionError("the demo still runs after %d s:\n%s" % (timeout, self.output_text()))

    def close(self):
        if self.process.poll() is None:
            for pid in children_of(self.process.pid):
                try:
                    os.kill(pid, signal.SIGKILL)
                except OSError:
                    pass
            self.process.kill()
            self.process.wait()
        self.output.close()


class Demo(unittest.TestCase):
    def setUp(self):
        self.scratch = tempfile.TemporaryDirectory(prefix="vk-demo-test-")
        self.x = XServer()
        self.x.__enter__()
        self.addCleanup(self.scratch.cleanup)
        self.addCleanup(self.x.__exit__, None, None, None)

    def start(self, automation=True):
        run = DemoRun(self.x.display, self.scratch.name, automation)
        self.addCleanup(run.close)
        return run

    def check_homes(self, run, pids):
        """Two copies of the same executable, each with its own homes under the
        demo's one temporary folder, and settings that know the other."""
        self.assertEqual(1, len(run.roots()), run.roots())
        root = os.path.join(run.tmp, run.roots()[0])
        program = os.path.realpath(PROGRAM)
        envs = [environment_of(pid) for pid in pids]
        for pid in pids:
            self.assertEqual(program, os.path.realpath("/proc/%d/exe" % pid))
        for key in ("XDG_DATA_HOME", "XDG_CONFIG_HOME"):
            homes = [env[key] for env in envs]
            self.assertNotEqual(homes[0], homes[1], key)
            for home in homes:
                self.assertTrue(home.startswith(root + "/"), (home, root))
                self.assertTrue(os.path.isdir(home), home)
        settings = [read_settings(env["XDG_CONFIG_HOME"]) for env in envs]
        self.assertEqual(set(NAMES), {s.get("LocalUser") for s in settings})
        ids = [s.get("LocalID", "") for s in settings]
        self.assertNotEqual(ids[0], ids[1])
        for local_id in ids:
            self.assertRegex(local_id, r"^[0-9A-F]{12}$")
        shared = settings[0].get("01Folder")
        self.assertTrue(shared and os.path.isdir(shared) and shared.startswith(root + "/"), shared)
        for own, other in ((settings[0], settings[1]), (settings[1], settings[0])):
            self.assertEqual(("1", shared, other["LocalUser"]),
                             (own.get("ExtUsersCount"), own.get("01Folder"), own.get("01External_User")))
        return root, shared

    def test_two_copies_meet_in_the_shared_folder_and_nothing_is_left(self):
        run = self.start()
        pids = run.wait_children()
        root, shared = self.check_homes(run, pids)
        copies = [Copy(pid, os.path.join(run.sockets, label + ".sock")) for pid, label in zip(pids, "AB")]
        for c in copies:
            self.addCleanup(c.close)
        self.assertEqual(set(NAMES), {c.name for c in copies})
        for c in copies:
            c.wait_log(r"^End of Form Load at ")
            self.assertEqual(1, c.state()["ExtUsersCount"])
            c.wait_state("ExternalUsers", lambda users, c=c: users == [n for n in NAMES if n != c.name])

        # The demo process shows no window; each copy shows its own.
        with XDisplay(self.x.display) as display:
            def owners():
                return [display.pid(w) for w in display.top_level_windows() if display.viewable(w)]
            wait_until(lambda: all(pid in owners() for pid in pids), "a window of each copy")
            self.assertNotIn(run.process.pid, owners())

        # Both go on-line: each writes its presence file into the shared folder.
        seen = set()
        for c in copies:
            c.ok({"cmd": "click", "name": "ShareStatus"})
        for c in copies:
            c.wait_state("ShareStatus", lambda v: v == 1)

        def presence_files():
            for n in os.listdir(shared):
                if n.endswith(".xid"):
                    seen.add(n)
            return {n + ".xid" for n in NAMES} <= seen
        wait_until(presence_files, "both presence files in the shared folder", step=0.01)
        for c in copies:
            other = [n for n in NAMES if n != c.name][0]
            c.wait_log(presence_pattern("1c", other))
            # The other's presence file found (and taken away, as the heartbeat).
            c.wait_log(presence_pattern("2d", other))

        # Picked in the list, each sees the other present: the invitation can go.
        for c in copies:
            c.ok({"cmd": "select", "name": "Combo_ExternUsers", "index": 1})
        for c in copies:
            c.wait_state("Active", lambda a: a == [True])
            wait_until(lambda c=c: c.ok({"cmd": "get", "name": "Combo_ExternUsers"})["control"]["backColor"] == GREEN,
                       "the list green in %s" % c.name)

        # Both players close their copies; the demo ends and cleans up.
        self.assertIsNone(run.process.poll())
        for c in copies:
            c.ok({"cmd": "click", "name": "cmdSluiten"})
            wait_until(lambda c=c: (c.ok({"cmd": "dialog"})["dialog"] or {}).get("title") == "Programma Afsluiten",
                       "the exit question of %s" % c.name)
            c.ok({"cmd": "answer", "button": "yes"})
        self.assertEqual(0, run.wait_exit(), run.output_text())
        self.assertFalse(os.path.exists(root), root)
        self.assertEqual([], run.roots())
        self.assertIn("delen de map / share the folder " + shared, run.output_text())

    def test_copies_ended_from_outside(self):
        run = self.start(automation=False)
        pids = run.wait_children()
        root, _ = self.check_homes(run, pids)
        # One copy ends; the demo waits for the other.
        os.kill(pids[0], signal.SIGTERM)
        wait_until(lambda: pids[0] not in children_of(run.process.pid), "the first copy to end")
        time.sleep(1)
        self.assertIsNone(run.process.poll(), "the demo waits for both copies")
        self.assertTrue(os.path.isdir(root))
        os.kill(pids[1], signal.SIGTERM)
        self.assertNotEqual(0, run.wait_exit())
        self.assertFalse(os.path.exists(root), root)
        self.assertEqual([], run.roots())

    def test_interrupted_demo_ends_both_copies(self):
        run = self.start(automation=False)
        pids = run.wait_children()
        root, _ = self.check_homes(run, pids)
        run.process.send_signal(signal.SIGINT)
        self.assertEqual(128 + signal.SIGINT, run.wait_exit())
        for pid in pids:
            self.assertFalse(os.path.exists("/proc/%d" % pid) and pid in children_of(run.process.pid))
        self.assertFalse(os.path.exists(root), root)
        self.assertEqual([], run.roots())


def main():
    global PROGRAM
    if len(sys.argv) < 2:
        sys.stderr.write(__doc__)
        return 2
    PROGRAM = os.path.abspath(sys.argv[1])
    names = sys.argv[2:]
    return run_tests(sys.modules[__name__], names)


if __name__ == "__main__":
    sys.exit(main())
