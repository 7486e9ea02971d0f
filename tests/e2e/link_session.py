"""Helpers for end-to-end tests of two copies of the program that meet in a
shared folder: the settings file a copy starts with, the message files in the
folder, the lines of the link in the run log, and the steps a user takes
(going on-line, selecting a player, inviting, answering).

    with XServer() as x:
        a = LinkCopy(PROGRAM, x.display, root, "anna", "0A1B2C3D4E5F", folders=[shared])
        b = LinkCopy(PROGRAM, x.display, root, "bert", "0B1C2D3E4F50", folders=[shared])
        with a, b:
            ...

Standard library only."""

import os
import re
import time

from valkenhorn_session import SEPARATOR_53, Session, format_board_text, is_rotation

SETTINGS_GROUP = "DropBox"

# Back colours of the link's controls.
RED = 255
GREEN = 65280

# The presence lines of the run log: code -> (middle text, end text).
PRESENCE_TEXTS = {
    "1a": (" - writing local player ID file for ", " at "),
    "1c": (" - writing local player ID file for ", " at "),
    "1b": (" - removing local player ID file for ", " at "),
    "1d": (" - removing local player ID file for ", " at "),
    "2a": (" - removing ID file from ", " at "),
    "2d": (" - removing ID file from ", " at "),
    "2b": (" - labeling ", " as absent at "),
    "2e": (" - labeling ", " as absent at "),
    "2c": (" - labeling ", " as present at "),
    "2f": (" - labeling ", " as present at "),
}

# A time of day as the log writes it: something with a digit in it.
TIME = r"(?P<time>\S*\d.*)"


def presence_pattern(code, name, counter=None):
    """The regular expression of one presence line of the run log."""
    middle, end = PRESENCE_TEXTS[code]
    count = r"(?P<counter>\d+)" if counter is None else str(counter)
    return ("^" + re.escape("timer 1 event " + code + " - action counter = ") + count +
            re.escape(middle + name + end) + TIME + "$")


def rename_pattern(old, new):
    """The line of the name scan (code 3), always at action counter 60."""
    return ("^" + re.escape("timer 1 event 3 - action counter = 60 - name of external player " + old +
                            " changed to " + new + " at ") + TIME + "$")


def line_pattern(text_before_time):
    """A line of the form text + time, such as "sending acceptance to play at "."""
    return "^" + re.escape(text_before_time) + TIME + "$"


def connected_board_text(name):
    return "U bent nu verbonden met " + name + ". druk op 'spel starten' om Valkenhorn te beginnen..."


# -- settings file -------------------------------------------------------


def settings_path(config_home):
    return os.path.join(config_home, "Valkenhorn", "Valkenhorn.conf")


def write_settings(config_home, keys):
    """Writes the group [DropBox] with keys (a list of pairs or a dict), as a
    user may before a start."""
    path = settings_path(config_home)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    items = keys.items() if isinstance(keys, dict) else keys
    with open(path, "w") as f:
        f.write("[%s]\n" % SETTINGS_GROUP)
        for key, value in items:
            f.write("%s=%s\n" % (key, value))


def _ini_value(raw):
    """A value of Qt's INI form: quoted or not, with backslash escapes."""
    raw = raw.strip()
    if len(raw) >= 2 and raw[0] == '"' and raw[-1] == '"':
        raw = raw[1:-1]
    out = ""
    i = 0
    escapes = {"n": "\n", "r": "\r", "t": "\t", "\\": "\\", '"': '"', "0": "\0"}
    while i < len(raw):
        c = raw[i]
        if c == "\\" and i + 1 < len(raw) and raw[i + 1] in escapes:
            out += escapes[raw[i + 1]]
            i += 2
            continue
        out += c
        i += 1
    return out


def read_settings(config_home):
    """The keys of the group [DropBox] as a dict of texts ({} without a file)."""
    try:
        with open(settings_path(config_home), encoding="utf-8", errors="replace") as f:
            text = f.read()
    except OSError:
        return {}
    keys = {}
    group = None
    for line in text.splitlines():
        line = line.strip()
        if not line or line.startswith(";"):
            continue
        if line.startswith("[") and line.endswith("]"):
            group = line[1:-1]
            continue
        if group == SETTINGS_GROUP and "=" in line:
            key, value = line.split("=", 1)
            keys[key.strip()] = _ini_value(value)
    return keys


def slot_settings(name, local_id, folders=(), external_users=()):
    """The keys of a copy that knows itself and its shared folders; the names
    of the external players are left to their defaults unless given."""
    keys = []
    if local_id is not None:
        keys.append(("LocalID", local_id))
    if name is not None:
        keys.append(("LocalUser", name))
    if folders:
        keys.append(("ExtUsersCount", str(len(folders))))
    for i, folder in enumerate(folders, start=1):
        keys.append(("%02dFolder" % i, folder))
        if i <= len(external_users) and external_users[i - 1] is not None:
            keys.append(("%02dExternal_User" % i, external_users[i - 1]))
    return keys


# -- shared folder -------------------------------------------------------


def message_bytes(local_id, section="GENERAL", key="USER_ID"):
    """A message of one key as the program writes it: CRLF line ends."""
    return ("[%s]\r\n%s=%s\r\n" % (section, key, local_id)).encode("ascii")


def files_in(folder):
    """Names of the plain files in the folder (not its sub-folders)."""
    try:
        return sorted(n for n in os.listdir(folder) if os.path.isfile(os.path.join(folder, n)))
    except OSError:
        return []


def read_when_whole(path, whole, timeout=20):
    """The bytes of a message file once they are whole by the test `whole`;
    the peer may delete the file and its writer write it again meanwhile."""
    deadline = time.monotonic() + timeout
    last = None
    while time.monotonic() < deadline:
        try:
            with open(path, "rb") as f:
                last = f.read()
            if whole(last):
                return last
        except OSError:
            pass
        time.sleep(0.01)
    raise AssertionError("no whole file %s after %d s; last read %r" % (path, timeout, last))


def wait_files(folder, test, what, timeout=30):
    deadline = time.monotonic() + timeout
    while True:
        names = files_in(folder)
        if test(names):
            return names
        if time.monotonic() > deadline:
            raise AssertionError("timed out waiting for %s; folder holds %r" % (what, names))
        time.sleep(0.02)


# -- one copy ------------------------------------------------------------


class LinkCopy(Session):
    """One copy of the program with its own homes under root/<label>, started
    with the given settings (written before the start)."""

    def __init__(self, program, display, root, name, local_id, folders=(), external_users=(), label=None,
                 settings=None, time_scale=None, env=None):
        label = label or name or "copy"
        home = os.path.join(root, label)
        kwargs = {"env": env}
        if time_scale is not None:
            kwargs["time_scale"] = time_scale
        super().__init__(program, display, data_home=os.path.join(home, "data"),
                         config_home=os.path.join(home, "config"), **kwargs)
        self.name = name
        self.label = label
        keys = settings if settings is not None else slot_settings(name, local_id, folders, external_users)
        if keys:
            write_settings(self.config_home, keys)

    def restart(self):
        """A new run on the same homes, after this run ended."""
        if self.process and self.process.poll() is None:
            raise AssertionError("restart of a copy that still runs")
        if self.reader:
            self.reader.close()
        if self.connection:
            self.connection.close()
        self.reader = self.connection = None
        if getattr(self, "output", None):
            self.output.close()
        if os.path.exists(self.socket_path):
            os.unlink(self.socket_path)
        # The last run's log is kept aside, so that no wait mistakes its lines
        # for those of the new run.
        if os.path.exists(self.log_path):
            os.replace(self.log_path, self.log_path + ".previous")
        self.start()

    # -- settings and state

    def settings(self):
        return read_settings(self.config_home)

    def wait_state(self, key, test, what=None, timeout=30):
        """Waits until test(state[key]) holds; returns the value."""
        holder = {}

        def check():
            holder["value"] = self.state().get(key)
            return test(holder["value"])

        try:
            self.wait_until(check, what or "state %s" % key, timeout)
        except AssertionError as e:
            raise AssertionError("%s (%s is %r)\nlog of %s:\n%s" % (e, key, holder.get("value"), self.label,
                                                                      "\n".join(self.log_lines()[-40:])))
        return holder["value"]

    def wait_control(self, name, field, test, what=None, timeout=30):
        holder = {}

        def check():
            holder["value"] = self.get(name)[field]
            return test(holder["value"])

        try:
            self.wait_until(check, what or "%s.%s" % (name, field), timeout)
        except AssertionError as e:
            raise AssertionError("%s (%s.%s is %r)" % (e, name, field, holder.get("value")))
        return holder["value"]

    def wait_board_text(self, text, timeout=30):
        """Waits until the running text on the board is the given message."""
        formatted = format_board_text(text)
        return self.wait_state("BoardText", lambda t: isinstance(t, str) and is_rotation(t, formatted),
                               "the board text %r" % text, timeout)

    # -- run log

    def log_matches(self, pattern):
        regex = re.compile(pattern)
        return [m for m in (regex.match(line) for line in self.log_lines()) if m]

    def wait_log(self, pattern, timeout=30, count=1):
        """Waits until `count` lines of the run log match the pattern; returns
        the matches."""
        deadline = time.monotonic() + timeout
        while True:
            found = self.log_matches(pattern)
            if len(found) >= count:
                return found
            lines = self.log_lines()
            faults = [line for line in lines if line.startswith("run-time fault: ")]
            if faults:
                raise AssertionError("%s reported a fault while waiting for %r: %s" % (self.label, pattern, faults))
            if not self.running():
                raise AssertionError("%s ended (code %s) while waiting for %r:\n%s"
                                     % (self.label, self.process.returncode, pattern, self.program_output()))
            if time.monotonic() > deadline:
                raise AssertionError("no %d log line(s) %r in %s after %d s; log ends:\n%s"
                                     % (count, pattern, self.label, timeout, "\n".join(lines[-60:])))
            time.sleep(0.03)

    def log_after_startup(self):
        """The lines after the separator that ends the start-up."""
        lines = self.log_lines()
        if SEPARATOR_53 in lines:
            return lines[lines.index(SEPARATOR_53) + 1:]
        return []

    # -- what a user does

    def click(self, name):
        self.ok({"cmd": "click", "name": name})

    def select(self, name, index):
        self.ok({"cmd": "select", "name": name, "index": index})

    def answer(self, button):
        self.ok({"cmd": "answer", "button": button})

    def no_dialog(self):
        return self.ok({"cmd": "dialog"})["dialog"] is None

    def wait_no_dialog(self, timeout=30):
        self.wait_until(self.no_dialog, "the dialog of %s to close" % self.label, timeout)

    def go_online(self):
        """Ticks "Aanwezig"."""
        if self.get("ShareStatus")["value"] != 0:
            raise AssertionError("%s is already on-line" % self.label)
        self.click("ShareStatus")
        self.wait_state("ShareStatus", lambda v: v == 1, "ShareStatus 1")

    def add_folder(self, path):
        """Cmd_AddFolder and the folder picker, answered with path."""
        self.click("Cmd_AddFolder")
        dialog = self.wait_dialog()
        if dialog["kind"] != "folder":
            raise AssertionError("Cmd_AddFolder opened %r, not the folder picker" % dialog)
        self.ok({"cmd": "answer", "folder": path})
        self.wait_until(lambda: (self.ok({"cmd": "dialog"})["dialog"] or {}).get("kind") != "folder",
                        "the folder picker to close")

    def select_player(self, slot):
        self.select("Combo_ExternUsers", slot)
        self.wait_state("SelectedUser", lambda v: v == slot, "SelectedUser %d" % slot)

    def wait_sees(self, peer, slot=1, timeout=30):
        """Waits until the selected slot is labelled present and the invite
        button is enabled."""
        self.wait_state("ExternalUsers", lambda users: isinstance(users, list) and len(users) >= slot
                        and users[slot - 1] == peer, "slot %d to be called %s" % (slot, peer), timeout)
        self.wait_state("Active", lambda active: isinstance(active, list) and len(active) >= slot
                        and active[slot - 1] is True, "%s labelled present" % peer, timeout)
        self.wait_control("cmdRequestToPlay", "enabled", lambda e: e is True, "cmdRequestToPlay enabled", timeout)

    def exit(self):
        """cmdSluiten, answered with Yes; returns the exit code."""
        self.click("cmdSluiten")
        dialog = self.wait_dialog()
        if dialog.get("title") != "Programma Afsluiten":
            raise AssertionError("cmdSluiten asked %r" % dialog)
        self.answer("yes")
        return self.wait_exit()


def local_ids(count):
    """Distinct identities for copies on one machine, as separate PCs would have."""
    base = ["0A1B2C3D4E5F", "0B1C2D3E4F50", "0C1D2E3F5061", "0D1E2F506172"]
    return base[:count]
