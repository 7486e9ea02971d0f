"""End-to-end fuzz test of the shared folder as hostile input: one real copy of
the program, present in its folder, while a fixed-seed stream of links,
FIFOs, sockets, devices, huge files and oddly named entries pours into that folder.
The copy must keep answering its automation socket, keep its memory, keep
writing its own presence file and deleting the peer's, touch nothing outside
the folder, and empty the folder (never following a link) at its exit.

    python3 test_hostile_folder.py PATH/TO/valkenhorn [--sanitized] [HostileFolder[.test_method]]

--sanitized says that the program was built with the sanitizers (ctest passes
it when VALKENHORN_SANITIZE is ON); a program that maps libasan counts as such
too. The figures of the run are printed one per line.

Exit code 0 when all pass, 1 on a failure, 77 when the tests were skipped."""

import collections
import hashlib
import os
import random
import shutil
import signal
import socket
import stat
import sys
import tempfile
import threading
import time
import unittest

# No byte-code caches in the source tree.
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from link_session import LinkCopy, local_ids, message_bytes  # noqa: E402
from valkenhorn_session import XServer  # noqa: E402

PROGRAM = None
SANITIZED = False

SEED = 20261124
ATTACK_SECONDS = 60
ANSWER_LIMIT = 2.0          # seconds a state request may wait for its answer
HANG_SECONDS = 10           # a request unanswered this long counts as a hang
RSS_LIMIT_MB = 150          # resident memory of the normal build
RSS_GROWTH_LIMIT_MB = 100   # growth of resident memory under the sanitizers
RUNAWAY_MB = 1024           # beyond this the copy is killed, to spare the machine
MAX_LIVE_ENTRIES = 150
MAX_LIVE_HUGE = 4
SPARSE_BYTES = 100 * 1024 * 1024
EXIT_TITLE = "Programma Afsluiten"
SANITIZER_MARKS = ("ERROR: AddressSanitizer", "runtime error:", "LeakSanitizer")

OWN, PEER = "anna", "bert"
OWN_ID, PEER_ID = local_ids(2)

# Names of the link's messages, drawn most often.
MESSAGE_NAMES = [b"anna.xid", b"bert.xid", b"bert.rqs", b"bert.acc"]
OTHER_NAMES = [b"anna.rqs", b"anna.acc", b"bert.d01", b"zz.xid", b"BERT.XID", b"Anna.xid", b"*.xid", b"?.xid",
               b"[ab].xid", b"notes.txt", b"bert.xid.part", b"bert.mp3"]
ODD_NAMES = [b"bert\n.xid", b"anna.xid\n", b"\nbert.xid", b"back\\slash.xid", b"..\\..\\bert.xid", b"bert..xid",
             b"a..b.rqs", b"x" * 246 + b".xid", b"y" * 246 + b".acc", b"\xff\xfe.xid", b"caf\xe9.xid",
             b"bert\xc3.rqs", b"\xc3\x28anna.xid", b"bert\x7f.xid", b" bert.xid", b"bert.xid ", b"\tanna.xid",
             b"\x1b[31m.xid"]
DOT_NAMES = [b".anna.xid", b".bert.xid", b".bert.rqs", b".syncthing.bert.xid.tmp", b"..anna.xid", b".\xff.tmp"]

LINK_KINDS = ["link_sentinel", "link_dangling", "link_zero", "link_fifo", "link_loop", "link_directory",
              "link_relative", "link_self"]
NODE_KINDS = ["fifo", "socket", "directory", "device"]
FILE_KINDS = ["sparse", "dense", "garbage", "unreadable", "swapped", "own_message"]
HUGE_KINDS = {"sparse", "dense"}


def memory_mb(pid):
    """VmRSS and VmHWM of the process in MB, or {} once it has ended."""
    values = {}
    try:
        with open("/proc/%d/status" % pid) as f:
            for line in f:
                key, _, value = line.partition(":")
                if key in ("VmRSS", "VmHWM"):
                    values[key] = int(value.split()[0]) / 1024.0
    except OSError:
        return {}
    return values


def maps_sanitizer(pid):
    try:
        with open("/proc/%d/maps" % pid) as f:
            maps = f.read()
    except OSError:
        return False
    return "libasan" in maps or "libubsan" in maps


def stuck_in(pid, root):
    """Where the copy's main thread stands: its scheduler state, the kernel
    function it waits in, and the files it holds open under root or at /dev/zero."""
    try:
        with open("/proc/%d/stat" % pid) as f:
            state = f.read().rsplit(")", 1)[1].split()[0]
        with open("/proc/%d/wchan" % pid) as f:
            wchan = f.read().strip() or "-"
        held = []
        for fd in os.listdir("/proc/%d/fd" % pid):
            try:
                target = os.readlink("/proc/%d/fd/%s" % (pid, fd))
            except OSError:
                continue
            if target.startswith(root) or target.startswith("/dev/zero"):
                held.append(target)
    except OSError:
        return "ended"
    return "state %s, waiting in %s, holding %s" % (state, wchan, sorted(held) or "no file of the test")


def remove_entry(path):
    """Removes whatever stands at path (a link itself, never what it points at)."""
    try:
        st = os.lstat(path)
    except FileNotFoundError:
        return
    try:
        if stat.S_ISDIR(st.st_mode):
            shutil.rmtree(path)
        else:
            os.unlink(path)
    except FileNotFoundError:
        pass


def entry_type(st):
    for test, name in ((stat.S_ISLNK, "link"), (stat.S_ISREG, "file"), (stat.S_ISDIR, "directory"),
                       (stat.S_ISFIFO, "fifo"), (stat.S_ISSOCK, "socket"), (stat.S_ISCHR, "device"),
                       (stat.S_ISBLK, "device")):
        if test(st.st_mode):
            return name
    return "other"


def describe(name):
    return repr(name)[1:] if isinstance(name, bytes) else repr(name)


class Outside:
    """What the folder's links point at, beside the folder: sentinel files, a
    FIFO, a loop of links and a directory; and an empty directory under which
    the dangling links point, which must stay empty."""

    def __init__(self, root):
        self.dir = os.path.join(root, "outside")
        self.void = os.path.join(root, "void")
        os.makedirs(os.path.join(self.dir, "directory"))
        os.makedirs(self.void)
        self.sentinels = []
        for i in range(3):
            path = os.path.join(self.dir, "sentinel-%d" % i)
            with open(path, "wb") as f:
                f.write(("sentinel %d: nobody writes here\n" % i).encode() * (i * 100 + 1))
            self.sentinels.append(path)
        with open(os.path.join(self.dir, "directory", "inside.txt"), "wb") as f:
            f.write(b"a file in a directory the folder links to\n")
        self.fifo = os.path.join(self.dir, "pipe")
        os.mkfifo(self.fifo)
        self.loop = os.path.join(self.dir, "loop-a")
        os.symlink(os.path.join(self.dir, "loop-b"), self.loop)
        os.symlink(self.loop, os.path.join(self.dir, "loop-b"))
        self.directory = os.path.join(self.dir, "directory")
        self.dangling = []

    def dangling_target(self, rng):
        """A fresh path under the empty directory: a file, or a file in a folder that isn't there."""
        n = len(self.dangling)
        target = os.path.join(self.void, "missing-%d" % n)
        if rng.random() < 0.3:
            target = os.path.join(self.void, "gone-%d" % n, "missing")
        self.dangling.append(target)
        return target

    def snapshot(self):
        """Type, mode, size, modification time and content digest of every
        entry under the outside directory, links not followed."""
        seen = {}
        for folder, dirs, files in os.walk(self.dir):
            for name in [""] + dirs + files:
                path = os.path.join(folder, name) if name else folder
                st = os.lstat(path)
                digest = None
                if stat.S_ISREG(st.st_mode):
                    with open(path, "rb") as f:
                        digest = hashlib.sha256(f.read()).hexdigest()
                elif stat.S_ISLNK(st.st_mode):
                    digest = os.readlink(path)
                seen[os.path.relpath(path, self.dir)] = (entry_type(st), stat.S_IMODE(st.st_mode), st.st_size,
                                                         st.st_mtime_ns, digest)
        return seen


class Attacker:
    """Writes a fixed-seed stream of hostile entries into the folder, removes
    and replaces them so that the folder churns, and keeps the count."""

    def __init__(self, folder, stage, outside, rng, devices):
        self.folder = os.fsencode(folder)
        self.stage = os.fsencode(stage)
        self.outside = outside
        self.rng = rng
        self.kinds = LINK_KINDS + [k for k in NODE_KINDS if devices or k != "device"] + FILE_KINDS
        self.live = {}
        self.written = 0
        self.removed = 0
        self.by_kind = collections.Counter()
        block = rng.randbytes(4 * 1024 * 1024)
        self.dense = block.translate(bytes.maketrans(b"\n\r=", b"xyz"))

    # -- the stream

    def step(self):
        rng = self.rng
        if len(self.live) >= MAX_LIVE_ENTRIES or (self.live and rng.random() < 0.2):
            self.remove(rng.choice(sorted(self.live)))
            return
        name = self.pick_name()
        kind = rng.choice(self.kinds)
        if kind in HUGE_KINDS and sum(k in HUGE_KINDS for k in self.live.values()) >= MAX_LIVE_HUGE:
            kind = "garbage"
        self.put(name, kind)

    def pick_name(self):
        rng = self.rng
        roll = rng.random()
        if roll < 0.45:
            return rng.choice(MESSAGE_NAMES)
        if roll < 0.6:
            return rng.choice(OTHER_NAMES)
        if roll < 0.8:
            return rng.choice(ODD_NAMES)
        if roll < 0.9:
            # Like the program's own temporaries: "." + name + suffix + ".tmp".
            suffix = "".join(rng.choice("abcdefghijklmnopqrstuvwxyzABCDEFGHIJ0123456789") for _ in range(6))
            return b"." + rng.choice(MESSAGE_NAMES) + b"." + suffix.encode() + b".tmp"
        if roll < 0.95:
            return rng.choice(DOT_NAMES)
        return b"r%03d%s" % (rng.randrange(1000), rng.choice([b".xid", b".rqs", b".acc", b""]))

    def put(self, name, kind):
        path = os.path.join(self.folder, name)
        for _ in range(5):
            remove_entry(path)
            try:
                getattr(self, "make_" + kind)(path)
                break
            except (FileExistsError, IsADirectoryError):
                continue  # the copy wrote its own file there meanwhile
        else:
            return
        self.live[name] = kind
        self.written += 1
        self.by_kind[kind] += 1

    def remove(self, name):
        remove_entry(os.path.join(self.folder, name))
        del self.live[name]
        self.removed += 1

    # -- links

    def link(self, target, path):
        os.symlink(os.fsencode(target), path)

    def make_link_sentinel(self, path):
        self.link(self.rng.choice(self.outside.sentinels), path)

    def make_link_dangling(self, path):
        self.link(self.outside.dangling_target(self.rng), path)

    def make_link_zero(self, path):
        self.link("/dev/zero", path)

    def make_link_fifo(self, path):
        self.link(self.outside.fifo, path)

    def make_link_loop(self, path):
        self.link(self.outside.loop, path)

    def make_link_directory(self, path):
        self.link(self.outside.directory, path)

    def make_link_relative(self, path):
        self.link(os.path.join("..", "outside", os.path.basename(self.rng.choice(self.outside.sentinels))), path)

    def make_link_self(self, path):
        self.link(self.rng.choice([".", ".."]), path)

    # -- FIFOs, sockets, directories, devices

    def make_fifo(self, path):
        os.mkfifo(path)

    def make_socket(self, path):
        # A socket's path is short; it is bound beside the folder and moved in.
        staged = os.path.join(self.stage, b"s")
        remove_entry(staged)
        with socket.socket(socket.AF_UNIX, socket.SOCK_STREAM) as s:
            s.bind(staged)
        os.rename(staged, path)

    def make_directory(self, path):
        os.mkdir(path)
        if self.rng.random() < 0.5:
            with open(os.path.join(path, b"inner.xid"), "wb") as f:
                f.write(self.garbage())

    def make_device(self, path):
        minor = self.rng.choice([3, 5])  # like /dev/null, /dev/zero
        os.mknod(path, stat.S_IFCHR | 0o600, os.makedev(1, minor))

    # -- regular files

    def write_new(self, path, data, size=None):
        fd = os.open(path, os.O_WRONLY | os.O_CREAT | os.O_EXCL | os.O_NOFOLLOW, 0o644)
        try:
            os.write(fd, data)
            if size is not None:
                os.ftruncate(fd, size)
        finally:
            os.close(fd)

    def garbage(self):
        # No '=' in it, so that no line of it reads as a key of a message.
        data = self.rng.randbytes(self.rng.randrange(8192)).replace(b"=", b"-")
        return (b"[GENERAL]\r\n" if self.rng.random() < 0.5 else b"") + data

    def make_sparse(self, path):
        self.write_new(path, b"", SPARSE_BYTES)

    def make_dense(self, path):
        size = self.rng.randrange(1, 5) * 1024 * 1024
        tail = message_bytes(OWN_ID) if self.rng.random() < 0.5 else b""
        self.write_new(path, b"[GENERAL]\r\n" + self.dense[:size] + tail)

    def make_garbage(self, path):
        self.write_new(path, self.garbage())

    def make_own_message(self, path):
        self.write_new(path, message_bytes(OWN_ID))

    def make_unreadable(self, path):
        self.write_new(path, message_bytes(OWN_ID))
        os.chmod(path, 0)

    def make_swapped(self, path):
        """A file that becomes a link while the copy may be reading it."""
        self.write_new(path, message_bytes(OWN_ID) + self.garbage())
        staged = os.path.join(self.stage, b"swap")
        remove_entry(staged)
        target = self.rng.choice([self.outside.sentinels[0], "/dev/zero", self.outside.fifo,
                                  self.outside.dangling_target(self.rng)])
        self.link(target, staged)
        os.rename(staged, path)


class StatePoller(threading.Thread):
    """Asks for the state every 100 to 200 ms and times the answers; answers
    the dialogs that files in the folder may raise (an invitation is declined,
    a notice acknowledged). The only user of the automation socket while it runs."""

    def __init__(self, session, seed, root):
        super().__init__(daemon=True)
        self.session = session
        self.root = root
        self.stuck = None
        self.rng = random.Random(seed)
        self.stopping = threading.Event()
        self.requests = 0
        self.longest = 0.0
        self.slow = []
        self.failure = None
        self.last_state = None
        self.dialogs = collections.Counter()

    def run(self):
        try:
            while not self.stopping.is_set():
                self.last_state = self.timed({"cmd": "state"})["state"]
                self.answer_dialog()
                self.stopping.wait(self.rng.uniform(0.1, 0.2))
        except Exception as e:  # noqa: BLE001 - reported by the test
            self.failure = "%s: %s" % (type(e).__name__, e)
            self.stuck = stuck_in(self.session.process.pid, self.root)

    def timed(self, request):
        start = time.monotonic()
        try:
            reply = self.session.request(request, timeout=HANG_SECONDS)
        finally:
            took = time.monotonic() - start
            if request["cmd"] == "state":
                self.requests += 1
                self.longest = max(self.longest, took)
                if took > ANSWER_LIMIT:
                    self.slow.append((round(took, 3), time.strftime("%H:%M:%S")))
        return reply

    def answer_dialog(self):
        dialog = self.timed({"cmd": "dialog"}).get("dialog")
        if not dialog:
            return
        buttons = dialog.get("buttons") or []
        button = "no" if "no" in buttons else ("ok" if "ok" in buttons else (buttons or ["ok"])[0])
        self.dialogs["%s -> %s" % (dialog.get("title"), button)] += 1
        self.timed({"cmd": "answer", "button": button})

    def stop(self):
        self.stopping.set()
        self.join(HANG_SECONDS + 5)
        return not self.is_alive()


class MemoryWatch(threading.Thread):
    """Samples the copy's resident memory every 50 ms and kills it when it runs
    away, so that a copy reading an endless file can't take the machine down."""

    def __init__(self, pid, limit_mb):
        super().__init__(daemon=True)
        self.pid = pid
        self.limit_mb = limit_mb
        self.stopping = threading.Event()
        self.peak = 0.0
        self.killed_at = None

    def run(self):
        while not self.stopping.wait(0.05):
            rss = memory_mb(self.pid).get("VmRSS")
            if rss is None:
                return
            self.peak = max(self.peak, rss)
            if rss > self.limit_mb:
                self.killed_at = rss
                os.kill(self.pid, signal.SIGKILL)
                return


def wait_for(test, timeout):
    """Seconds until test() held, or None when it did not within timeout."""
    start = time.monotonic()
    while time.monotonic() - start < timeout:
        if test():
            return time.monotonic() - start
        time.sleep(0.02)
    return None


def what_stands_at(path):
    try:
        st = os.lstat(path)
    except OSError:
        return "nothing"
    kind = entry_type(st)
    if kind == "link":
        return "a link to %r" % os.readlink(path)
    if kind == "file":
        with open(path, "rb") as f:
            return "a file of %d bytes starting %r" % (st.st_size, f.read(64))
    return "a " + kind


def kind_type(kind):
    """What an entry of the stream is on disk."""
    if kind.startswith("link_") or kind == "swapped":
        return "link"
    return kind if kind in NODE_KINDS else "file"


class HostileFolder(unittest.TestCase):
    def setUp(self):
        self.root = tempfile.mkdtemp(prefix="vk-hostile-")
        self.addCleanup(shutil.rmtree, self.root, True)
        self.shared = os.path.join(self.root, "shared")
        self.stage = os.path.join(self.root, "stage")
        os.makedirs(self.shared)
        os.makedirs(self.stage)
        self.outside = Outside(self.root)
        self.figures = []
        self.addCleanup(self.print_figures)

    def figure(self, text, value):
        self.figures.append("%s: %s" % (text, value))

    def print_figures(self):
        sys.stdout.write("".join(line + "\n" for line in self.figures))
        sys.stdout.flush()

    def devices_allowed(self):
        probe = os.path.join(self.stage, "probe")
        try:
            os.mknod(probe, stat.S_IFCHR | 0o600, os.makedev(1, 3))
        except OSError:
            return False
        os.unlink(probe)
        return True

    def own_presence_ok(self):
        path = os.path.join(self.shared, OWN + ".xid")
        try:
            if not stat.S_ISREG(os.lstat(path).st_mode):
                return False
            with open(path, "rb") as f:
                return b"USER_ID=" + OWN_ID.encode() in f.read(4096)
        except OSError:
            return False

    def start_copy(self):
        """anna, on-line in the folder with bert's slot selected, her presence file written."""
        x = XServer()
        x.__enter__()
        self.addCleanup(x.__exit__, None, None, None)
        # AddressSanitizer holds freed memory back in a quarantine of 256 MB
        # by default, which a stream of bounded reads fills up; a small one
        # keeps its checks and lets the growth of the copy's own memory show.
        env = {}
        if os.environ.get("ASAN_OPTIONS") is not None or SANITIZED:
            env["ASAN_OPTIONS"] = (os.environ.get("ASAN_OPTIONS", "") + ":quarantine_size_mb=8").lstrip(":")
        a = LinkCopy(PROGRAM, x.display, self.root, OWN, OWN_ID, [self.shared], [PEER], env=env)
        self.addCleanup(a.close)
        a.start()
        a.wait_started()
        a.go_online()
        a.select_player(1)
        self.assertIsNotNone(wait_for(self.own_presence_ok, 30), "no presence file of anna before the attack")
        return a

    def test_folder_under_attack(self):
        a = self.start_copy()
        pid = a.process.pid
        sanitized = SANITIZED or maps_sanitizer(pid)
        self.figure("program", "%s, modified %s" % (PROGRAM, time.strftime(
            "%Y-%m-%d %H:%M:%S", time.localtime(os.stat(PROGRAM).st_mtime))))
        self.figure("sanitizer build", "yes" if sanitized else "no")
        top = sorted(os.listdir(self.root))
        before = self.outside.snapshot()
        time.sleep(1.0)
        rss_before = memory_mb(pid)["VmRSS"]
        watch = MemoryWatch(pid, rss_before + RUNAWAY_MB if sanitized else RUNAWAY_MB)
        watch.start()
        self.addCleanup(watch.stopping.set)
        poller = StatePoller(a, SEED + 1, self.root)
        poller.start()
        self.addCleanup(poller.stopping.set)
        attacker = Attacker(self.shared, self.stage, self.outside, random.Random(SEED), self.devices_allowed())

        elapsed = self.attack(a, attacker, poller)
        self.check_attack(a, attacker, poller, watch, elapsed)
        responsive = a.running() and poller.failure is None
        if responsive:
            self.check_recovery(poller)
        self.check_memory(sanitized, rss_before, memory_mb(pid), watch)
        stopped = poller.stop()
        if responsive and stopped and poller.failure is None:
            self.check_exit(a, attacker)
        else:
            self.figure("checks left out", "presence, peer file, exit: the copy no longer answers")
        self.check_outside(before, top)
        self.check_reports(a)

    def attack(self, a, attacker, poller):
        start = time.monotonic()
        while time.monotonic() - start < ATTACK_SECONDS:
            if not a.running() or poller.failure:
                break
            attacker.step()
            time.sleep(attacker.rng.uniform(0, 0.01))
        return time.monotonic() - start

    def check_attack(self, a, attacker, poller, watch, elapsed):
        self.figure("attack lasted", "%.1f s" % elapsed)
        self.figure("hostile entries written", attacker.written)
        self.figure("hostile entries removed", attacker.removed)
        self.figure("entries by kind", ", ".join("%s %d" % kv for kv in sorted(attacker.by_kind.items())))
        self.figure("state requests answered", poller.requests)
        self.figure("longest unanswered state request", "%d ms" % round(poller.longest * 1000))
        self.figure("dialogs answered", dict(poller.dialogs) or "none")
        if poller.failure:
            self.figure("the copy at the failure", poller.stuck or "-")
        with self.subTest(check="the copy stays alive"):
            self.assertIsNone(watch.killed_at, "the copy's memory ran away; killed at %s MB" % watch.killed_at)
            self.assertTrue(a.running(), "the copy ended (code %s) after %.1f s of the attack:\n%s"
                            % (a.process.returncode, elapsed, a.program_output()[-4000:]))
        with self.subTest(check="every state request answered within %g s" % ANSWER_LIMIT):
            self.assertIsNone(poller.failure, "the automation socket failed after %.1f s of the attack: %s"
                              % (elapsed, poller.failure))
            self.assertFalse(poller.slow, "slow answers (seconds, time): %r" % poller.slow)

    def check_recovery(self, poller):
        own = os.path.join(self.shared, OWN + ".xid")
        with self.subTest(check="the copy writes its presence file again"):
            remove_entry(own)
            took = wait_for(self.own_presence_ok, 30)
            self.figure("own presence file back after", "%d ms" % (took * 1000) if took is not None else "never")
            self.assertIsNotNone(took, "no regular %s.xid with USER_ID=%s within 30 s; there stands %s"
                                 % (OWN, OWN_ID, what_stands_at(own)))
        peer = os.path.join(self.shared, PEER + ".xid")
        with self.subTest(check="the copy deletes the peer's presence file"):
            remove_entry(peer)
            fd = os.open(peer, os.O_WRONLY | os.O_CREAT | os.O_EXCL, 0o644)
            os.write(fd, message_bytes(PEER_ID))
            os.close(fd)
            took = wait_for(lambda: not os.path.lexists(peer), 30)
            self.figure("peer presence file deleted after", "%d ms" % (took * 1000) if took is not None else "never")
            self.assertIsNotNone(took, "%s.xid still there after 30 s: %s" % (PEER, what_stands_at(peer)))
        with self.subTest(check="the slot keeps its player"):
            self.assertEqual([PEER], (poller.last_state or {}).get("ExternalUsers"))

    def check_memory(self, sanitized, rss_before, after, watch):
        rss, hwm = after.get("VmRSS"), after.get("VmHWM")
        self.figure("resident memory before the attack", "%.1f MB" % rss_before)
        self.figure("resident memory after the attack", "%.1f MB" % rss if rss is not None else "gone")
        self.figure("peak resident memory", "%.1f MB" % max(hwm or 0.0, watch.peak))
        if rss is not None:
            self.figure("resident memory growth", "%.1f MB" % (rss - rss_before))
        with self.subTest(check="resident memory"):
            self.assertIsNotNone(rss, "the copy ended")
            if sanitized:
                self.assertLess(rss - rss_before, RSS_GROWTH_LIMIT_MB, "resident memory grew from %.1f to %.1f MB"
                                % (rss_before, rss))
            else:
                self.assertLess(rss, RSS_LIMIT_MB, "VmRSS %.1f MB" % rss)
                self.assertLess(hwm, RSS_LIMIT_MB, "VmHWM %.1f MB" % hwm)

    def exit_through_button(self, a):
        """cmdSluiten answered with Ja; a dialog a file in the folder raised is answered first."""
        for _ in range(10):
            dialog = a.ok({"cmd": "dialog"})["dialog"]
            if dialog is None:
                a.click("cmdSluiten")
                dialog = a.wait_dialog()
            if dialog.get("title") == EXIT_TITLE:
                a.answer("yes")
                return a.wait_exit(60)
            a.answer("no" if "no" in (dialog.get("buttons") or []) else "ok")
            a.wait_no_dialog()
        self.fail("the exit question never came")

    def kept_entries(self, attacker):
        """The dot entries and directories of the stream that still stand as made."""
        kept = {}
        for name, kind in attacker.live.items():
            if name.startswith(b".") or kind == "directory":
                try:
                    now = entry_type(os.lstat(os.path.join(os.fsencode(self.shared), name)))
                except OSError:
                    continue
                if now == kind_type(kind):
                    kept[name] = now
        return kept

    def check_exit(self, a, attacker):
        kept = self.kept_entries(attacker)
        self.figure("entries in the folder at the exit", len(os.listdir(self.shared)))
        self.figure("dot entries and directories that must stay", len(kept))
        with self.subTest(check="the exit ends with code 0"):
            code = self.exit_through_button(a)
            self.figure("exit code", code)
            self.assertEqual(0, code, a.program_output()[-4000:])
        left, nodes = [], []
        folder = os.fsencode(self.shared)
        for name in sorted(os.listdir(folder)):
            kind = entry_type(os.lstat(os.path.join(folder, name)))
            if name.startswith(b".") or kind == "directory":
                continue
            (left if kind in ("file", "link") else nodes).append("%s (%s)" % (describe(name), kind))
        self.figure("FIFOs, sockets and devices left by the exit", ", ".join(nodes) or "none")
        with self.subTest(check="the exit empties the folder of files and links"):
            self.assertFalse(left, "left in the folder: %s" % ", ".join(left))
        with self.subTest(check="dot entries and directories stay"):
            lost = []
            for name, kind in sorted(kept.items()):
                try:
                    now = entry_type(os.lstat(os.path.join(folder, name)))
                except OSError:
                    now = "nothing"
                if now != kind:
                    lost.append("%s: %s, now %s" % (describe(name), kind, now))
            self.assertFalse(lost, "changed by the copy: %s" % "; ".join(lost))

    def check_outside(self, before, top):
        with self.subTest(check="nothing outside the folder changes"):
            after = self.outside.snapshot()
            changed = ["%s: %r -> %r" % (k, before.get(k), after.get(k)) for k in sorted(set(before) | set(after))
                       if before.get(k) != after.get(k)]
            self.assertFalse(changed, "changed beside the folder:\n" + "\n".join(changed))
            made = [t for t in self.outside.dangling if os.path.lexists(t)]
            self.assertFalse(made, "targets of dangling links made: %s" % made)
            self.assertEqual([], os.listdir(self.outside.void))
            self.assertEqual(top, sorted(os.listdir(self.root)))
        self.figure("dangling link targets", "%d, none made" % len(self.outside.dangling)
                    if not os.listdir(self.outside.void) else "%d, some made" % len(self.outside.dangling))

    def check_reports(self, a):
        output = a.program_output()
        with self.subTest(check="no sanitizer report"):
            found = [mark for mark in SANITIZER_MARKS if mark in output]
            self.assertFalse(found, "%s in the program's output:\n%s" % (found, output[-6000:]))
        with self.subTest(check="no run-time fault"):
            faults = [line for line in a.log_lines() if line.startswith("run-time fault: ")]
            self.assertFalse(faults)


def main():
    global PROGRAM, SANITIZED
    arguments = sys.argv[1:]
    if not arguments:
        sys.stderr.write(__doc__)
        return 2
    PROGRAM = os.path.abspath(arguments.pop(0))
    if "--sanitized" in arguments:
        SANITIZED = True
        arguments.remove("--sanitized")
    suite = unittest.defaultTestLoader.loadTestsFromNames(arguments or ["HostileFolder"], sys.modules[__name__])
    result = unittest.TextTestRunner(verbosity=2).run(suite)
    if not result.wasSuccessful():
        return 1
    if result.skipped and len(result.skipped) == result.testsRun:
        return 77
    return 0


if __name__ == "__main__":
    sys.exit(main())
