"""End-to-end tests of the shared-folder link: real copies of the program, each
with its own homes and X server, meeting in one shared folder (or in two
folders kept in step by a synchronisation program), driven through their
automation sockets.

    python3 test_link.py PATH/TO/valkenhorn TestClass[.test_method]

Exit code 0 when all pass, 1 on a failure, 77 when the tests were skipped."""

import os
import random
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

# No byte-code caches in the source tree.
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from link_session import (GREEN, RED, LinkCopy, connected_board_text, files_in, line_pattern,  # noqa: E402
                          local_ids, message_bytes, presence_pattern, read_when_whole, rename_pattern, wait_files,
                          write_settings)
from valkenhorn_session import XServer, format_board_text, is_rotation, run_tests  # noqa: E402

PROGRAM = None

ASK_NAME_TEXT = ("gelieve je naam (maximum 10 tekens) in te vullen in het vak 'lokale speler' waar momenteel "
                 "'je_naam' staat, druk daarna op de enter-toets.")
ENJOY_TEXT = ("veel plezier met valkenhorn! druk op 'Spelregels...' of 'Hoe verbinden?' voor verdere "
              "instructies.")

INVITE_TITLE = "Spelletje 'Valkenhorn!' spelen???"
ACCEPTED_TITLE = "Spelen maar!!!"
NAME_IN_USE_TITLE = "Naam in gebruik"
NAME_IN_USE_TEXT = ("Deze naam is in gebruik door \u00e9\u00e9n van de externe spelers,\n\r"
                    "gelieve een andere naam te gebruiken...")
FOLDER_IN_USE_TITLE = "Map in gebruik"
FOLDER_IN_USE_TEXT = ("De gekozen map is reeds gelinkt aan een andere externe speler!!!\n\r\n\r"
                      "Aangezien je elke map enkel maar met \u00e9\u00e9n externe speler kan delen,\n\r"
                      "is het niet nodig deze map opnieuw toe te voegen.")
REMOVE_LABEL1 = "Selecteer de Map die wenst te verwijderen en klik dan op de knop \"Verwijder\""
REMOVE_LABEL2 = "Geselecteerde Map wordt gedeeld met "

# The lines of the player initiation, in their order, each followed by the time.
INITIATION_LINES = [
    "Initiating players at ",
    "Initiating extern user interface at ",
    "getting identity data of local player at ",
    "asking for name local player at ",
    "getting data of extern players at ",
    "enabling poll timer at ",
    "Invoking randomizer at ",
    "End of Form Load at ",
]

SYNC_PAIR = os.environ.get("VALKENHORN_SYNC_PAIR") or os.path.normpath(
    os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "..", "shared", "tools", "sync",
                 "sync-pair"))


def invite_text(name):
    return "U ontving een uitnodiging van " + name + ". Aanvaardt u deze uitnodiging?"


def expected_local_ids():
    """The identities this machine may give: the MAC address of an interface
    with a default gateway, as twelve upper-case hex digits, or twelve zeros
    when there is none."""
    gateways = []
    try:
        with open("/proc/net/route") as f:
            next(f)
            for line in f:
                fields = line.split()
                if len(fields) > 3 and fields[1] == "00000000" and int(fields[3], 16) & 0x2:
                    gateways.append(fields[0])
    except OSError:
        pass
    macs = set()
    for interface in gateways:
        try:
            with open("/sys/class/net/%s/address" % interface) as f:
                address = f.read().strip()
        except OSError:
            continue
        if len(address) == 17:
            macs.add(address.replace(":", "").upper())
    return macs or {"000000000000"}


class LinkTest(unittest.TestCase):
    """Each copy gets an X server of its own, so that focus and activation of
    one never touch the other."""

    def setUp(self):
        self.root = tempfile.mkdtemp(prefix="vk-link-")
        self.addCleanup(shutil.rmtree, self.root, True)

    def folder(self, name):
        path = os.path.join(self.root, name)
        os.makedirs(path, exist_ok=True)
        return path

    def copy(self, name, local_id, folders=(), external_users=(), start=True, **kwargs):
        x = XServer()
        x.__enter__()
        self.addCleanup(x.__exit__, None, None, None)
        c = LinkCopy(PROGRAM, x.display, self.root, name, local_id, folders, external_users, **kwargs)
        self.addCleanup(c.close)
        if start:
            c.start()
        return c

    def pair(self, folder, known_names=True, **kwargs):
        """anna and bert on one shared folder, both started."""
        ida, idb = local_ids(2)
        a = self.copy("anna", ida, [folder], ["bert"] if known_names else [], **kwargs)
        b = self.copy("bert", idb, [folder], ["anna"] if known_names else [], **kwargs)
        a.wait_started()
        b.wait_started()
        return a, b

    def meet(self, a, b):
        """Both on-line, each selecting the other, until both see each other present."""
        a.go_online()
        b.go_online()
        a.select_player(1)
        b.select_player(1)
        a.wait_sees(b.name)
        b.wait_sees(a.name)

    def connect(self, a, b):
        """a invites b, b accepts, a confirms."""
        a.click("cmdRequestToPlay")
        dialog = b.wait_dialog()
        self.assertEqual((INVITE_TITLE, invite_text(a.name)), (dialog["title"], dialog["text"]))
        b.answer("yes")
        dialog = a.wait_dialog()
        self.assertEqual(ACCEPTED_TITLE, dialog["title"])
        a.answer("ok")
        for c in (a, b):
            c.wait_state("Check1", lambda v: v == 1, "Check1 1")
            c.wait_no_dialog()
            c.wait_state("LinkBusy", lambda v: v is False, "LinkBusy clear")

    def wait_cycles(self, c, cycles, timeout=60):
        """Waits until the presence counter of c has wrapped `cycles` times."""
        wraps = 0
        last = c.state()["ActionCounter"]
        deadline = time.monotonic() + timeout
        while wraps < cycles:
            self.assertTrue(c.running(), "%s ended:\n%s" % (c.label, c.program_output()))
            self.assertLess(time.monotonic(), deadline, "the presence counter of %s did not wrap %d times"
                            % (c.label, cycles))
            now = c.state()["ActionCounter"]
            if now < last:
                wraps += 1
            last = now
            time.sleep(0.01)

    def assertUnreachable(self, c, request):
        reply = c.request(request)
        self.assertIs(False, reply.get("ok"), "%r must be refused: %r" % (request, reply))


class FirstRun(LinkTest):
    def test_name_asked_then_initiation_goes_on(self):
        c = self.copy(None, None, label="first", settings=[])
        c.wait_for_log_line("asking for name local player at ", answer_name=None)
        c.wait_board_text(ASK_NAME_TEXT)
        self.assertIs(True, c.get("frLokaal")["enabled"])
        share = c.get("ShareStatus")
        self.assertEqual((False, 0), (share["enabled"], share["value"]))
        self.assertEqual("je_naam", c.get("User_Name")["text"])

        # The identity is built and saved before the name is asked.
        local_id = c.settings().get("LocalID", "")
        self.assertRegex(local_id, r"^[0-9A-Fa-f]{12}$")
        self.assertIn(local_id.upper(), expected_local_ids())

        # The program waits as long as it takes: at this time scale the rest
        # of the initiation would take about a second.
        time.sleep(2.0)
        lines = c.log_lines()
        for text in ("getting data of extern players at ", "enabling poll timer at ", "Invoking randomizer at "):
            self.assertFalse(any(l.startswith(text) for l in lines), "%r before a name was given" % text)
        self.assertIs(False, c.get("Action_Timer")["enabled"])

        # Leaving the box empty puts "je_naam" back and the wait goes on.
        c.ok({"cmd": "focus", "name": "User_Name"})
        c.wait_control("User_Name", "text", lambda t: t == "", "got focus to empty je_naam")
        c.ok({"cmd": "key", "name": "User_Name", "code": 13})
        c.wait_control("User_Name", "text", lambda t: t == "je_naam", "je_naam back in the box")
        time.sleep(0.5)
        self.assertFalse(any(l.startswith("getting data of extern players at ") for l in c.log_lines()))
        self.assertEqual("", c.settings().get("LocalUser", ""))

        # Digits are refused by the box; the name goes in with Enter.
        c.ok({"cmd": "focus", "name": "User_Name"})
        c.wait_control("User_Name", "text", lambda t: t == "", "got focus to empty je_naam")
        c.ok({"cmd": "type", "name": "User_Name", "text": "an2na"})
        c.ok({"cmd": "key", "name": "User_Name", "code": 13})

        # The board texts of the rest of the initiation, in their order.
        welcome = "welkom anna. de gegevens van je externe spelers worden opgehaald. even geduld aub..."
        expected = [format_board_text(welcome), format_board_text(ENJOY_TEXT)]
        seen = []
        deadline = time.monotonic() + 60
        while not any(l.startswith("End of Form Load at ") for l in c.log_lines()):
            self.assertLess(time.monotonic(), deadline, "the start-up did not end:\n" + "\n".join(c.log_lines()))
            text = c.state()["BoardText"]
            for i, formatted in enumerate(expected):
                if text and is_rotation(text, formatted) and (not seen or seen[-1] != i):
                    seen.append(i)
            time.sleep(0.01)
        self.assertEqual([0, 1], seen, "the welcome text, then the text of enjoyment")
        c.wait_started()

        lines = c.log_lines()
        position = 0
        for text in INITIATION_LINES:
            found = [i for i in range(position, len(lines)) if lines[i].startswith(text)]
            self.assertTrue(found, "%r missing after line %d:\n%s" % (text, position, "\n".join(lines)))
            position = found[0]
            self.assertRegex(lines[position][len(text):], r"\d", "time on %r" % lines[position])
            self.assertEqual(1, sum(1 for l in lines if l.startswith(text)), "%r written once" % text)

        settings = c.settings()
        self.assertEqual("anna", settings.get("LocalUser"))
        self.assertEqual(local_id, settings.get("LocalID"))
        self.assertEqual("", settings.get("OldLocalUser", ""))
        state = c.state()
        self.assertEqual(("anna", local_id, "", 0), (state["LocalUser"], state["LocalID"], state["OldLocalUser"],
                                                     state["ExtUsersCount"]))
        self.assertEqual("anna", c.get("User_Name")["text"])
        share = c.get("ShareStatus")
        self.assertEqual((True, 0), (share["enabled"], share["value"]))
        self.assertEqual(0, state["ShareStatus"])
        for name in ("frLokaal", "frExtern", "Action_Timer", "Cmd_AddFolder"):
            self.assertIs(True, c.get(name)["enabled"], name)
        for name in ("cmdStart", "cmdDisconnect", "Cmd_RemoveFolder"):
            self.assertIs(False, c.get(name)["enabled"], name)
        combo = c.get("Combo_ExternUsers")
        self.assertEqual((["Geen Speler"], 0), (combo["items"], combo["listIndex"]))
        self.assertEqual(0, state["SelectedUser"])

        # Without external players the poll ticks, but the presence counter stands.
        ticks = set()
        for _ in range(40):
            state = c.state()
            ticks.add(state["PollTick"])
            self.assertEqual(0, state["ActionCounter"])
            time.sleep(0.01)
        self.assertGreater(len(ticks), 1, "PollTick moves")

    def test_second_run_keeps_identity_and_name(self):
        c = self.copy(None, None, label="again", settings=[])
        c.wait_started()
        first = c.settings()
        self.assertEqual("tester", first.get("LocalUser"))
        self.assertEqual(0, c.exit())
        c.restart()
        c.wait_started()
        self.assertFalse(any(l.startswith("asking for name local player at ") for l in c.log_lines()))
        self.assertEqual(first["LocalID"], c.settings()["LocalID"])
        self.assertEqual(first["LocalID"], c.state()["LocalID"])
        self.assertEqual("tester", c.get("User_Name")["text"])

    def test_written_identity_is_kept_and_old_name_stands_in(self):
        c = self.copy(None, None, label="old", settings=[("LocalID", "0A1B2C3D4E5F"), ("LocalUser", ""),
                                                         ("OldLocalUser", "olga")])
        c.wait_started()
        self.assertFalse(any(l.startswith("asking for name local player at ") for l in c.log_lines()))
        settings = c.settings()
        self.assertEqual(("0A1B2C3D4E5F", "olga"), (settings["LocalID"], settings["LocalUser"]))
        state = c.state()
        self.assertEqual(("0A1B2C3D4E5F", "olga"), (state["LocalID"], state["LocalUser"]))
        self.assertEqual("olga", c.get("User_Name")["text"])


class Presence(LinkTest):
    def test_both_see_each_other(self):
        shared = self.folder("shared")
        ida, idb = local_ids(2)
        a = self.copy("anna", ida)  # adds the folder through the picker
        b = self.copy("bert", idb, [shared])
        a.wait_started()
        b.wait_started()

        self.assertEqual(0, a.state()["ExtUsersCount"])
        a.add_folder(shared)
        a.wait_state("Folders", lambda f: f == [shared], "the new folder in slot 1")
        a.wait_no_dialog()
        state = a.state()
        self.assertEqual((1, ["01ExtSpeler"], [False]), (state["ExtUsersCount"], state["ExternalUsers"],
                                                          state["Active"]))
        self.assertEqual(["Geen Speler", "01ExtSpeler"], a.get("Combo_ExternUsers")["items"])
        settings = a.settings()
        self.assertEqual(("1", shared, "01ExtSpeler", "False"),
                         (settings.get("ExtUsersCount"), settings.get("01Folder"), settings.get("01External_User"),
                          settings.get("01Active")))
        # Started without folders: the remove button waits for the next start.
        self.assertIs(False, a.get("Cmd_RemoveFolder")["enabled"])
        self.assertEqual(["01ExtSpeler"], b.state()["ExternalUsers"])
        self.assertIs(True, b.get("Cmd_RemoveFolder")["enabled"])

        # Ticking "Aanwezig": the log line says "off", the name turns green.
        for c in (a, b):
            c.go_online()
            c.wait_log(line_pattern("switch on-line status off at "))
            self.assertFalse(c.log_matches(line_pattern("switch on-line status on at ")))
            c.wait_control("User_Name", "backColor", lambda v: v == GREEN, "User_Name green")
        for c, local_id in ((a, ida), (b, idb)):
            path = os.path.join(shared, c.name + ".xid")
            self.assertEqual(message_bytes(local_id), read_when_whole(path, lambda d: d.endswith(b"\r\n")))
            # The lines of the own file name the player of the folder it goes to.
            c.wait_log(presence_pattern("1c", "01ExtSpeler"))

        # The name scan puts the peer's name in place of the placeholder.
        a.wait_log(rename_pattern("01ExtSpeler", "bert"))
        b.wait_log(rename_pattern("01ExtSpeler", "anna"))
        for c, peer in ((a, "bert"), (b, "anna")):
            c.wait_state("ExternalUsers", lambda u: u == [peer])
            self.assertEqual(["Geen Speler", peer], c.get("Combo_ExternUsers")["items"])
            c.wait_until(lambda: c.settings().get("01External_User") == peer, "the new name saved")
            # The peer's file goes at counter 1, as the heartbeat.
            c.wait_log(presence_pattern("2d", peer, 1))
            # Nobody selected: nobody labelled, no invitation possible.
            self.assertFalse(c.log_matches(presence_pattern("2f", peer)))
            self.assertEqual([False], c.state()["Active"])
            self.assertIs(False, c.get("cmdRequestToPlay")["enabled"])

        for c, peer in ((a, "bert"), (b, "anna")):
            c.select_player(1)
            c.wait_log(line_pattern("selecting extern user at "))
            found = c.wait_log(presence_pattern("2f", peer))
            self.assertNotIn(int(found[0].group("counter")), (0, 1))
            c.wait_control("Combo_ExternUsers", "backColor", lambda v: v == GREEN, "the combo box green")
            c.wait_sees(peer)
            self.assertEqual(1, c.get("Combo_ExternUsers")["listIndex"])
            # The label lives in memory only.
            self.assertIn(c.settings().get("01Active"), (None, "False"))
        lines = a.log_lines()
        selecting = [i for i, l in enumerate(lines) if l.startswith("selecting extern user at ")]
        present = [i for i, l in enumerate(lines) if re.match(presence_pattern("2f", "bert"), l)]
        self.assertLess(selecting[0], present[0])

        # Selecting again a player already labelled present paints the combo
        # box red, and it stays red while the invite button is enabled.
        a.select_player(0)
        a.wait_control("cmdRequestToPlay", "enabled", lambda v: v is False, "no invitation without a player")
        a.select_player(1)
        a.wait_control("Combo_ExternUsers", "backColor", lambda v: v == RED, "the combo box red")
        self.wait_cycles(a, 1)
        self.assertEqual(RED, a.get("Combo_ExternUsers")["backColor"])
        self.assertEqual([True], a.state()["Active"])
        self.assertIs(True, a.get("cmdRequestToPlay")["enabled"])

    def test_captions_of_the_link_controls(self):
        a = self.copy("anna", local_ids(1)[0], [self.folder("shared")], ["bert"])
        a.wait_started()
        captions = {"ShareStatus": "Aanwezig", "Check1": "Verbonden", "cmdRequestToPlay": "Uitnodigen",
                    "cmdDisconnect": "Verbreken", "Cmd_AddFolder": "Map toevoegen...",
                    "Cmd_RemoveFolder": "Map verwijderen..."}
        for name, caption in captions.items():
            self.assertEqual(caption, a.get(name)["caption"], name)
        # Only the program sets "Verbonden".
        self.assertIs(False, a.get("Check1")["enabled"])
        self.assertUnreachable(a, {"cmd": "click", "name": "Check1"})
        self.assertEqual(RED, a.get("User_Name")["backColor"])

    def test_going_offline_removes_own_file_and_peer_sees_absent(self):
        shared = self.folder("shared")
        a, b = self.pair(shared)
        self.meet(a, b)
        a.click("ShareStatus")
        a.wait_state("ShareStatus", lambda v: v == 0)
        a.wait_log(line_pattern("switch on-line status on at "))
        a.wait_control("User_Name", "backColor", lambda v: v == RED, "User_Name red")
        a.wait_log(presence_pattern("1d", "bert"))
        wait_files(shared, lambda names: "anna.xid" not in names, "anna.xid to go")
        b.wait_log(presence_pattern("2e", "anna", 0))
        b.wait_state("Active", lambda v: v == [False])
        b.wait_control("Combo_ExternUsers", "backColor", lambda v: v == RED, "the combo box red")
        b.wait_control("cmdRequestToPlay", "enabled", lambda v: v is False, "no invitation to an absent player")
        a.wait_control("cmdRequestToPlay", "enabled", lambda v: v is False, "no invitation while off-line")
        # It stays gone.
        self.wait_cycles(a, 1)
        self.assertNotIn("anna.xid", files_in(shared))


class Invitation(LinkTest):
    def test_accept_connects_and_locks_both(self):
        shared = self.folder("shared")
        other = self.folder("other")
        ida, idb = local_ids(2)
        a = self.copy("anna", ida, [shared, other], ["bert", "cara"])
        b = self.copy("bert", idb, [shared], ["anna"])
        a.wait_started()
        b.wait_started()
        self.meet(a, b)
        wait_files(other, lambda names: "anna.xid" in names, "anna.xid in the second folder")

        a.click("cmdRequestToPlay")
        a.wait_log(line_pattern("sending bert a request to play at "))
        rqs = os.path.join(shared, "anna.rqs")
        # The invited side deletes it once answered; until then it stands whole.
        self.assertEqual(message_bytes(ida), read_when_whole(rqs, lambda d: d.endswith(b"\r\n")))

        dialog = b.wait_dialog()
        self.assertEqual(("message", INVITE_TITLE, invite_text("anna")),
                         (dialog["kind"], dialog["title"], dialog["text"]))
        self.assertEqual(["no", "yes"], sorted(dialog["buttons"]))
        b.wait_log(line_pattern("recieved a request to play from anna at "))
        self.assertIs(True, b.state()["LinkBusy"])
        # The whole poll stands while the question is open.
        counter = b.state()["ActionCounter"]
        time.sleep(0.5)
        self.assertEqual(counter, b.state()["ActionCounter"])
        self.assertTrue(os.path.exists(rqs))
        self.assertIs(True, a.get("cmdRequestToPlay")["enabled"], "the inviter gets no feedback")

        b.answer("yes")
        b.wait_state("Check1", lambda v: v == 1)
        b.wait_log(line_pattern("sending acceptance to play at "))
        b.wait_log(line_pattern("connected and locked with anna at "))
        b.wait_board_text(connected_board_text("anna"))
        b.wait_state("LinkBusy", lambda v: v is False)
        self.assertEqual(1, b.state()["SelectedUser"])
        self.assertEqual(1, b.get("Combo_ExternUsers")["listIndex"])
        for name, enabled in (("frExtern", False), ("frLokaal", False), ("cmdStart", True)):
            self.assertIs(enabled, b.get(name)["enabled"], name)

        dialog = a.wait_dialog()
        self.assertEqual(("message", ACCEPTED_TITLE, "bert heeft jouw uitnodiging aanvaard.", ["ok"]),
                         (dialog["kind"], dialog["title"], dialog["text"], dialog["buttons"]))
        a.wait_log(line_pattern("recieved acceptance to play at "))
        self.assertIs(True, a.state()["LinkBusy"])
        self.assertIn("bert.acc", files_in(shared))
        a.answer("ok")
        a.wait_state("Check1", lambda v: v == 1)
        a.wait_log(line_pattern("connected and locked with bert at "))
        a.wait_board_text(connected_board_text("bert"))
        a.wait_state("LinkBusy", lambda v: v is False)
        self.assertEqual(1, a.state()["SelectedUser"])
        for name, enabled in (("frExtern", False), ("frLokaal", False), ("cmdStart", True)):
            self.assertIs(enabled, a.get(name)["enabled"], name)

        # Nothing of the invitation stays; only the presence files.
        wait_files(shared, lambda names: set(names) <= {"anna.xid", "bert.xid"}, "the .rqs and .acc to go")
        # Connected: only in the partner's folder, and the presence goes on there.
        a.wait_log(presence_pattern("1b", "cara"))
        wait_files(other, lambda names: "anna.xid" not in names, "anna.xid out of the second folder")
        a.wait_log(presence_pattern("2a", "bert", 1))
        b.wait_log(presence_pattern("2a", "anna", 1))
        a.wait_log(presence_pattern("1a", "bert"))
        b.wait_log(presence_pattern("1a", "anna"))
        self.wait_cycles(a, 1)
        self.assertNotIn("anna.xid", files_in(other))

        # Locked: name, status, selection, invitation and disconnect are out of reach.
        for c in (a, b):
            for request in ({"cmd": "click", "name": "cmdDisconnect"}, {"cmd": "click", "name": "ShareStatus"},
                            {"cmd": "focus", "name": "User_Name"}, {"cmd": "click", "name": "cmdRequestToPlay"},
                            {"cmd": "select", "name": "Combo_ExternUsers", "index": 0},
                            {"cmd": "click", "name": "Cmd_AddFolder"}):
                self.assertUnreachable(c, request)
            self.assertIs(True, c.get("cmdStart")["enabled"])
            self.assertIs(True, c.get("cmdSluiten")["enabled"])
            self.assertEqual(1, c.state()["Check1"])

    def test_invitation_from_an_unselected_player_switches_the_selection(self):
        shared = self.folder("shared")
        other = self.folder("other")
        ida, idb = local_ids(2)
        a = self.copy("anna", ida, [shared], ["bert"])
        b = self.copy("bert", idb, [other, shared], ["cara", "anna"])
        a.wait_started()
        b.wait_started()
        a.go_online()
        b.go_online()
        a.select_player(1)
        a.wait_sees("bert")
        b.select_player(1)
        a.click("cmdRequestToPlay")
        dialog = b.wait_dialog()
        self.assertEqual((INVITE_TITLE, invite_text("anna")), (dialog["title"], dialog["text"]))
        b.answer("yes")
        b.wait_state("Check1", lambda v: v == 1)
        b.wait_state("SelectedUser", lambda v: v == 2, "the selection to follow the inviter")
        self.assertEqual(2, b.get("Combo_ExternUsers")["listIndex"])
        b.wait_log(line_pattern("connected and locked with anna at "))
        dialog = a.wait_dialog()
        self.assertEqual((ACCEPTED_TITLE, "bert heeft jouw uitnodiging aanvaard."), (dialog["title"], dialog["text"]))
        a.answer("ok")
        a.wait_state("Check1", lambda v: v == 1)

    def test_acceptance_by_a_second_player_goes_unnoticed(self):
        shared = self.folder("shared")
        other = self.folder("other")
        ida, idb = local_ids(2)
        # bert is anna's second player: the acceptance is looked for under the
        # name of the first one, in every folder, and never found.
        a = self.copy("anna", ida, [other, shared], ["cara", "bert"])
        b = self.copy("bert", idb, [shared], ["anna"])
        a.wait_started()
        b.wait_started()
        a.go_online()
        b.go_online()
        a.select_player(2)
        b.select_player(1)
        a.wait_sees("bert", slot=2)
        a.click("cmdRequestToPlay")
        a.wait_log(line_pattern("sending bert a request to play at "))
        b.wait_dialog()
        b.answer("yes")
        b.wait_log(line_pattern("connected and locked with anna at "))
        self.assertEqual(message_bytes(idb), read_when_whole(os.path.join(shared, "bert.acc"),
                                                             lambda d: d.endswith(b"\r\n")))
        self.wait_cycles(a, 2)
        self.assertIsNone(a.ok({"cmd": "dialog"})["dialog"])
        self.assertEqual(0, a.state()["Check1"])
        self.assertFalse(a.log_matches(line_pattern("recieved acceptance to play at ")))
        self.assertIn("bert.acc", files_in(shared))
        self.assertIs(False, a.get("cmdStart")["enabled"])
        self.assertEqual(1, b.state()["Check1"])

    def test_declined_invitation_leaves_nothing(self):
        shared = self.folder("shared")
        a, b = self.pair(shared)
        self.meet(a, b)
        for round_ in (1, 2):
            a.click("cmdRequestToPlay")
            dialog = b.wait_dialog()
            self.assertEqual((INVITE_TITLE, invite_text("anna")), (dialog["title"], dialog["text"]))
            b.answer("no")
            b.wait_no_dialog()
            wait_files(shared, lambda names: "anna.rqs" not in names, "the declined .rqs to go")
            b.wait_state("LinkBusy", lambda v: v is False)
            self.assertEqual(round_, len(b.log_matches(line_pattern("recieved a request to play from anna at "))))
            self.assertEqual(round_, len(a.log_matches(line_pattern("sending bert a request to play at "))))
        self.wait_cycles(b, 1)
        names = files_in(shared)
        self.assertTrue(set(names) <= {"anna.xid", "bert.xid"}, names)
        for c in (a, b):
            self.assertIsNone(c.ok({"cmd": "dialog"})["dialog"])
            self.assertEqual(0, c.state()["Check1"])
            self.assertIs(False, c.get("cmdStart")["enabled"])
            self.assertIs(True, c.get("frExtern")["enabled"])
            self.assertFalse(c.log_matches(line_pattern("sending acceptance to play at ")))
            self.assertFalse(c.log_matches(r"^connected and locked with "))
        self.assertIs(True, a.get("cmdRequestToPlay")["enabled"], "the inviter can invite again")


class NameChange(LinkTest):
    def test_new_name_reaches_the_peer(self):
        shared = self.folder("shared")
        a, b = self.pair(shared)
        self.meet(a, b)

        def type_name(text):
            a.ok({"cmd": "focus", "name": "User_Name"})
            for _ in range(12):
                a.ok({"cmd": "key", "name": "User_Name", "code": 8})
            a.wait_control("User_Name", "text", lambda t: t == "", "an empty box")
            a.ok({"cmd": "type", "name": "User_Name", "text": text})
            a.ok({"cmd": "key", "name": "User_Name", "code": 13})

        # A peer's name in other letters is refused with a box; nothing is saved.
        type_name("BeRt")
        dialog = a.wait_dialog()
        self.assertEqual(("message", NAME_IN_USE_TITLE, NAME_IN_USE_TEXT),
                         (dialog["kind"], dialog["title"], dialog["text"]))
        a.answer("ok")
        a.wait_no_dialog()
        a.wait_control("User_Name", "text", lambda t: t == "anna", "the old name back")
        self.assertEqual("anna", a.settings().get("LocalUser"))
        self.assertEqual(1, a.state()["ShareStatus"])

        # Digits are refused by the box.
        type_name("car1la")
        a.wait_until(lambda: a.settings().get("LocalUser") == "carla", "the new name saved")
        self.assertEqual("anna", a.settings().get("OldLocalUser"))
        state = a.state()
        self.assertEqual(("carla", "anna", 0), (state["LocalUser"], state["OldLocalUser"], state["ShareStatus"]))
        self.assertEqual("carla", a.get("User_Name")["text"])
        self.assertIs(True, a.get("ShareStatus")["enabled"])
        a.wait_control("User_Name", "backColor", lambda v: v == RED, "off-line after a new name")

        # The old file goes by the peer's deletion; the new one comes once on-line again.
        b.wait_log(presence_pattern("2d", "anna", 1))
        wait_files(shared, lambda names: "anna.xid" not in names, "the old presence file to go")
        self.assertNotIn("carla.xid", files_in(shared))
        a.go_online()
        read_when_whole(os.path.join(shared, "carla.xid"), lambda d: d == message_bytes(local_ids(1)[0]))
        b.wait_log(rename_pattern("anna", "carla"))
        b.wait_state("ExternalUsers", lambda u: u == ["carla"])
        self.assertEqual(["Geen Speler", "carla"], b.get("Combo_ExternUsers")["items"])
        b.wait_until(lambda: b.settings().get("01External_User") == "carla", "the peer's new name saved")
        b.wait_sees("carla")


    def test_ten_characters_at_most(self):
        a = self.copy("anna", local_ids(1)[0], [self.folder("shared")], ["bert"])
        a.wait_started()
        a.ok({"cmd": "focus", "name": "User_Name"})
        for _ in range(6):
            a.ok({"cmd": "key", "name": "User_Name", "code": 8})
        a.wait_control("User_Name", "text", lambda t: t == "", "an empty box")
        a.ok({"cmd": "type", "name": "User_Name", "text": "Abc-de.fghIJ"})
        a.ok({"cmd": "key", "name": "User_Name", "code": 13})
        a.wait_until(lambda: a.settings().get("LocalUser") == "Abc-de.fgh", "the name of ten characters saved")
        self.assertEqual("Abc-de.fgh", a.get("User_Name")["text"])
        self.assertEqual(("Abc-de.fgh", "anna"), (a.state()["LocalUser"], a.settings().get("OldLocalUser")))


class DisconnectAndExit(LinkTest):
    def test_disconnect_is_out_of_reach(self):
        shared = self.folder("shared")
        a, b = self.pair(shared)
        for c in (a, b):
            self.assertIs(False, c.get("cmdDisconnect")["enabled"], "disabled at the end of the start-up")
            self.assertUnreachable(c, {"cmd": "click", "name": "cmdDisconnect"})
        self.meet(a, b)
        self.connect(a, b)
        for c in (a, b):
            self.assertIs(False, c.get("frLokaal")["enabled"])
            self.assertUnreachable(c, {"cmd": "click", "name": "cmdDisconnect"})

    def test_exit_empties_the_folder(self):
        shared = self.folder("shared")
        a, b = self.pair(shared)
        self.meet(a, b)
        self.connect(a, b)
        os.makedirs(os.path.join(shared, ".stfolder"))
        os.makedirs(os.path.join(shared, "sub"))
        with open(os.path.join(shared, "sub", "kept.txt"), "w") as f:
            f.write("in a sub-folder\n")
        for name in ("notes.txt", "bert.goo", "anna.rqs", "x y.acc"):
            with open(os.path.join(shared, name), "wb") as f:
                f.write(b"[GENERAL]\r\nX=1\r\n")
        for name in (".syncthing.bert.xid.tmp", ".dropbox"):
            with open(os.path.join(shared, name), "wb") as f:
                f.write(b"service\n")
        wait_files(shared, lambda names: "anna.xid" in names and "bert.xid" in names, "both presence files")
        rewrites = len(b.log_matches(presence_pattern("1a", "anna")))

        self.assertEqual(0, a.exit())
        names = files_in(shared)
        self.assertTrue(set(names) <= {"bert.xid", ".syncthing.bert.xid.tmp", ".dropbox"},
                        "the exit leaves %r" % names)
        for name in (".syncthing.bert.xid.tmp", ".dropbox"):
            self.assertIn(name, names, "a file of the synchronisation service stays")
        self.assertTrue(os.path.isdir(os.path.join(shared, ".stfolder")))
        self.assertTrue(os.path.isfile(os.path.join(shared, "sub", "kept.txt")))
        # The partner's file went too: it writes it again, and labels the leaver absent.
        b.wait_log(presence_pattern("1a", "anna"), count=rewrites + 1)
        b.wait_log(presence_pattern("2b", "anna", 0))
        b.wait_state("Active", lambda v: v == [False])
        b.wait_control("Combo_ExternUsers", "backColor", lambda v: v == RED, "the combo box red")
        self.assertEqual(1, b.state()["Check1"], "the partner keeps its connection")

        self.assertEqual(0, b.exit())
        names = files_in(shared)
        self.assertEqual([".dropbox", ".syncthing.bert.xid.tmp"], names)

    def test_start_empties_the_folder(self):
        shared = self.folder("shared")
        for name in ("bert.xid", "bert.rqs", "left.over", "bert.d01"):
            with open(os.path.join(shared, name), "wb") as f:
                f.write(b"[GENERAL]\r\nUSER_ID=0B1C2D3E4F50\r\n")
        with open(os.path.join(shared, ".unison.tmp"), "wb") as f:
            f.write(b"service\n")
        a = self.copy("anna", local_ids(1)[0], [shared], ["bert"])
        a.wait_started()
        self.assertEqual([".unison.tmp"], files_in(shared))
        # The invitation that was left behind is gone, so nothing is asked.
        self.assertIsNone(a.ok({"cmd": "dialog"})["dialog"])


class FolderManagement(LinkTest):
    def test_add_twice_and_cancel(self):
        x_folder = self.folder("x")
        y_folder = self.folder("y")
        a = self.copy("anna", local_ids(1)[0])
        a.wait_started()
        a.add_folder(x_folder)
        a.wait_state("ExtUsersCount", lambda v: v == 1)
        a.wait_no_dialog()

        a.add_folder(x_folder)
        dialog = a.wait_dialog()
        self.assertEqual(("message", FOLDER_IN_USE_TITLE, FOLDER_IN_USE_TEXT, ["ok"]),
                         (dialog["kind"], dialog["title"], dialog["text"], dialog["buttons"]))
        a.answer("ok")
        a.wait_no_dialog()
        # Cancelling the picker changes nothing either.
        a.add_folder("")
        a.wait_no_dialog()
        state = a.state()
        self.assertEqual((1, [x_folder]), (state["ExtUsersCount"], state["Folders"]))
        self.assertEqual("1", a.settings().get("ExtUsersCount"))

        # The comparison is exact: a path in other letters is another folder.
        a.add_folder(y_folder)
        a.wait_state("ExtUsersCount", lambda v: v == 2)
        a.wait_no_dialog()
        a.add_folder(self.folder("X"))
        a.wait_state("ExtUsersCount", lambda v: v == 3)
        a.wait_no_dialog()
        state = a.state()
        self.assertEqual(["01ExtSpeler", "02ExtSpeler", "03ExtSpeler"], state["ExternalUsers"])
        self.assertEqual([False, False, False], state["Active"])
        self.assertEqual(["Geen Speler", "01ExtSpeler", "02ExtSpeler", "03ExtSpeler"],
                         a.get("Combo_ExternUsers")["items"])
        settings = a.settings()
        self.assertEqual(("3", y_folder, "02ExtSpeler", "False"),
                         (settings.get("ExtUsersCount"), settings.get("02Folder"), settings.get("02External_User"),
                          settings.get("02Active")))

    def three_slots(self):
        folders = [self.folder(n) for n in ("x", "y", "z")]
        a = self.copy("anna", local_ids(1)[0], folders, ["xavier", "yara", "zeno"])
        a.wait_started()
        self.assertIs(True, a.get("Cmd_RemoveFolder")["enabled"])
        return a, folders

    def open_remove_dialog(self, a, folders):
        a.click("Cmd_RemoveFolder")
        dialog = a.wait_dialog()
        self.assertEqual(("form", "Verwijder Map"), (dialog["kind"], dialog["title"]))
        combo = a.get("Combo_Folders")
        self.assertEqual((["Geen Map"] + folders, 0), (combo["items"], combo["listIndex"]))
        self.assertIs(False, a.get("Cmd_Remove")["enabled"])
        self.assertEqual(REMOVE_LABEL1, a.get("Label1")["caption"])
        self.assertEqual("", a.get("Label2")["caption"])
        self.assertEqual("Verwijder", a.get("Cmd_Remove")["caption"])
        self.assertEqual("Sluiten", a.get("Cmd_Close")["caption"])

    def test_remove_selected_slot(self):
        a, folders = self.three_slots()
        a.select_player(2)
        # Files of the removed folder: the three named by the selection's number and
        # every .mp3 go, the link's own files stay.
        for name in ("2.tri", "2.rqs", "2.xid", "song.mp3", "1.xid", "yara.goo", "keep.txt"):
            with open(os.path.join(folders[1], name), "w") as f:
                f.write("x\n")

        # Closing without a choice changes nothing.
        self.open_remove_dialog(a, folders)
        a.click("Cmd_Close")
        a.wait_no_dialog()
        self.assertEqual(3, a.state()["ExtUsersCount"])
        self.assertEqual(2, a.state()["SelectedUser"])

        self.open_remove_dialog(a, folders)
        a.select("Combo_Folders", 2)
        a.wait_control("Cmd_Remove", "enabled", lambda v: v is True, "Cmd_Remove enabled")
        self.assertEqual(REMOVE_LABEL2 + "yara", a.get("Label2")["caption"])
        a.select("Combo_Folders", 0)
        a.wait_control("Cmd_Remove", "enabled", lambda v: v is False, "Cmd_Remove disabled")
        self.assertEqual("", a.get("Label2")["caption"])
        a.select("Combo_Folders", 2)
        a.wait_control("Cmd_Remove", "enabled", lambda v: v is True, "Cmd_Remove enabled")
        a.click("Cmd_Remove")
        a.wait_no_dialog()

        a.wait_state("ExtUsersCount", lambda v: v == 2)
        state = a.state()
        self.assertEqual(([folders[0], folders[2]], ["xavier", "zeno"], 0),
                         (state["Folders"], state["ExternalUsers"], state["SelectedUser"]))
        combo = a.get("Combo_ExternUsers")
        self.assertEqual((["Geen Speler", "xavier", "zeno"], 0), (combo["items"], combo["listIndex"]))
        self.assertEqual(["1.xid", "keep.txt", "yara.goo"], files_in(folders[1]))

        settings = a.settings()
        self.assertEqual((folders[0], "xavier"), (settings.get("01Folder"), settings.get("01External_User")))
        self.assertEqual((folders[2], "zeno"), (settings.get("02Folder"), settings.get("02External_User")))
        for key in ("03Folder", "03External_User", "03Old_Ext_User", "03Active"):
            self.assertEqual("", settings.get(key), key)
        self.assertEqual("2", settings.get("Users"))
        self.assertEqual("3", settings.get("ExtUsersCount"), "the count that the start reads stays")
        self.assertIs(False, a.state()["LinkBusy"])

        # After a restart one slot too many shows, with the defaults of an empty slot.
        self.assertEqual(0, a.exit())
        # An empty folder path makes the start-up clear the root of the file
        # system, which this machine's own files must not undergo: the stale
        # slot gets a folder of the test; its name stays as the removal left it.
        stand_in = self.folder("stand-in")
        with open(os.path.join(a.config_home, "Valkenhorn", "Valkenhorn.conf")) as f:
            text = f.read()
        self.assertEqual(1, len(re.findall(r"(?m)^03Folder=$", text)), text)
        with open(os.path.join(a.config_home, "Valkenhorn", "Valkenhorn.conf"), "w") as f:
            f.write(re.sub(r"(?m)^03Folder=$", "03Folder=" + stand_in, text))
        a.restart()
        a.wait_started()
        state = a.state()
        self.assertEqual(3, state["ExtUsersCount"])
        self.assertEqual(["xavier", "zeno", "03ExtSpeler"], state["ExternalUsers"])
        self.assertEqual([folders[0], folders[2], stand_in], state["Folders"])
        self.assertEqual(["Geen Speler", "xavier", "zeno", "03ExtSpeler"], a.get("Combo_ExternUsers")["items"])

    def test_remove_below_and_above_the_selection(self):
        a, folders = self.three_slots()
        a.select_player(2)
        # Below the selection: the index moves along with the player.
        self.open_remove_dialog(a, folders)
        a.select("Combo_Folders", 1)
        a.wait_control("Cmd_Remove", "enabled", lambda v: v is True, "Cmd_Remove enabled")
        self.assertEqual(REMOVE_LABEL2 + "xavier", a.get("Label2")["caption"])
        a.click("Cmd_Remove")
        a.wait_no_dialog()
        a.wait_state("ExtUsersCount", lambda v: v == 2)
        state = a.state()
        self.assertEqual((["yara", "zeno"], 1), (state["ExternalUsers"], state["SelectedUser"]))
        self.assertEqual(1, a.get("Combo_ExternUsers")["listIndex"])
        settings = a.settings()
        self.assertEqual((folders[1], "yara", folders[2], "zeno"),
                         (settings.get("01Folder"), settings.get("01External_User"), settings.get("02Folder"),
                          settings.get("02External_User")))
        # Above the selection: the selection stays.
        self.open_remove_dialog(a, folders[1:])
        a.select("Combo_Folders", 2)
        a.wait_control("Cmd_Remove", "enabled", lambda v: v is True, "Cmd_Remove enabled")
        a.click("Cmd_Remove")
        a.wait_no_dialog()
        a.wait_state("ExtUsersCount", lambda v: v == 1)
        state = a.state()
        self.assertEqual((["yara"], 1), (state["ExternalUsers"], state["SelectedUser"]))
        self.assertEqual(["Geen Speler", "yara"], a.get("Combo_ExternUsers")["items"])
        self.assertEqual("1", a.settings().get("Users"))

    def test_removing_the_only_slot_unselected_ends_the_program(self):
        only = self.folder("only")
        a = self.copy("anna", local_ids(1)[0], [only], ["bert"])
        a.wait_started()
        self.assertEqual(0, a.state()["SelectedUser"])
        self.open_remove_dialog(a, [only])
        a.select("Combo_Folders", 1)
        a.wait_control("Cmd_Remove", "enabled", lambda v: v is True, "Cmd_Remove enabled")
        a.click("Cmd_Remove")
        dialog = a.wait_dialog()
        self.assertEqual("message", dialog["kind"])
        a.answer("ok")
        self.assertNotEqual(0, a.wait_exit())
        self.assertTrue(any(l.startswith("run-time fault: ") for l in a.log_lines()), "\n".join(a.log_lines()))
        settings = a.settings()
        for key in ("01Folder", "01External_User", "01Old_Ext_User", "01Active"):
            self.assertEqual("", settings.get(key), key)
        self.assertNotIn("Users", settings, "the count is not saved after the fault")

    def test_removing_the_only_slot_selected_stops_the_polls(self):
        only = self.folder("only")
        a = self.copy("anna", local_ids(1)[0], [only], ["bert"])
        a.wait_started()
        a.go_online()
        a.select_player(1)
        wait_files(only, lambda names: "anna.xid" in names, "anna.xid")
        self.open_remove_dialog(a, [only])
        a.select("Combo_Folders", 1)
        a.wait_control("Cmd_Remove", "enabled", lambda v: v is True, "Cmd_Remove enabled")
        a.click("Cmd_Remove")
        a.wait_no_dialog()
        a.wait_state("ExtUsersCount", lambda v: v == 0)
        self.assertEqual(0, a.state()["SelectedUser"])
        self.assertEqual(["Geen Speler"], a.get("Combo_ExternUsers")["items"])
        counter = a.state()["ActionCounter"]
        lines = len(a.log_lines())
        time.sleep(1.0)
        self.assertEqual(counter, a.state()["ActionCounter"], "the presence counter stands")
        self.assertEqual(lines, len(a.log_lines()))
        self.assertTrue(a.running())


class BadInput(LinkTest):
    def junk(self, folder, own_id, foreign_id):
        """Files that are no player's presence file, whatever their names say."""
        rng = random.Random(20261121)
        garbage = bytes(rng.randrange(256) for _ in range(4096)).replace(b"USER_ID", b"user_id")
        files = {
            ".bert.xid": message_bytes(foreign_id),
            ".syncthing.bert.xid.tmp": message_bytes(foreign_id),
            "bert.sync-conflict-20261121-101010-ABCDEFG.xid": message_bytes(foreign_id),
            "bert (conflicted copy 2026-11-21).xid": message_bytes(foreign_id),
            "notes.txt": message_bytes(foreign_id),
            "bert.xid.part": message_bytes(foreign_id),
            "garbage.xid": garbage,
            "noequals.xid": b"[GENERAL]\r\nUSER_ID\r\nUSER_ID " + foreign_id.encode() + b"\r\n",
            "huge.xid": (b"[GENERAL]\r\n" + b"X" * (5 * 1024 * 1024) + b"\r\nUSER_ID=" + own_id.encode() + b"\r\n"),
            "own.xid": message_bytes(own_id),
        }
        for name, data in files.items():
            with open(os.path.join(folder, name), "wb") as f:
                f.write(data)
        os.makedirs(os.path.join(folder, "zorro.xid"))
        with open(os.path.join(folder, "zorro.xid", "inner.xid"), "wb") as f:
            f.write(message_bytes(foreign_id))
        return sorted(files)

    def test_junk_is_never_a_player(self):
        shared = self.folder("shared")
        ida, idb = local_ids(2)
        a = self.copy("anna", ida, [shared])
        a.wait_started()
        a.go_online()
        a.select_player(1)
        names = self.junk(shared, ida, idb)
        self.wait_cycles(a, 3)
        self.assertEqual(["01ExtSpeler"], a.state()["ExternalUsers"])
        self.assertFalse(a.log_matches(r"^timer 1 event 3 "), "\n".join(a.log_lines()))
        self.assertEqual([False], a.state()["Active"])
        self.assertIsNone(a.ok({"cmd": "dialog"})["dialog"])
        for name in names:
            self.assertTrue(os.path.isfile(os.path.join(shared, name)), name)
        self.assertTrue(os.path.isdir(os.path.join(shared, "zorro.xid")))
        self.assertEqual("01ExtSpeler", a.settings().get("01External_User", "01ExtSpeler"))

        # A proper presence file among them is found.
        with open(os.path.join(shared, "bert.xid"), "wb") as f:
            f.write(message_bytes(idb))
        a.wait_log(rename_pattern("01ExtSpeler", "bert"))
        self.assertEqual(["bert"], a.state()["ExternalUsers"])
        self.assertTrue(a.running())

    def test_folders_named_like_messages(self):
        shared = self.folder("shared")
        a = self.copy("anna", local_ids(1)[0], [shared], ["bert"])
        a.wait_started()
        a.go_online()
        a.select_player(1)
        for name in ("bert.xid", "bert.rqs", "bert.acc"):
            os.makedirs(os.path.join(shared, name))
        lines = len(a.log_lines())
        self.wait_cycles(a, 2)
        self.assertIsNone(a.ok({"cmd": "dialog"})["dialog"], "a folder is no invitation")
        self.assertEqual([False], a.state()["Active"])
        later = a.log_lines()[lines:]
        for code in ("2f", "2d"):
            self.assertFalse([l for l in later if re.match(presence_pattern(code, "bert"), l)], code)
        self.assertFalse([l for l in later if l.startswith("recieved ")])
        for name in ("bert.xid", "bert.rqs", "bert.acc"):
            self.assertTrue(os.path.isdir(os.path.join(shared, name)), name)
        self.assertIs(False, a.get("cmdRequestToPlay")["enabled"])

    def test_missing_and_vanishing_folders_look_empty(self):
        shared = self.folder("shared")
        missing = os.path.join(self.root, "never-made")
        vanishing = self.folder("vanishing")
        a = self.copy("anna", local_ids(1)[0], [shared, missing, vanishing], ["bert", "cara", "dirk"])
        a.wait_started()
        a.go_online()
        wait_files(vanishing, lambda names: "anna.xid" in names, "anna.xid in the third folder")
        shutil.rmtree(vanishing)
        self.wait_cycles(a, 2)
        self.assertTrue(a.running())
        self.assertIsNone(a.ok({"cmd": "dialog"})["dialog"])
        self.assertIn("anna.xid", files_in(shared))
        self.assertFalse(os.path.exists(missing), "no folder is made")
        # Writes to a folder that isn't there fail unseen, and are tried at each poll.
        self.assertGreaterEqual(len(a.log_matches(presence_pattern("1c", "cara"))), 4)
        self.assertEqual(["bert", "cara", "dirk"], a.state()["ExternalUsers"])

    def test_name_with_blank_and_quote(self):
        shared = self.folder("shared")
        ida, idb = local_ids(2)
        a = self.copy("anna", ida, [shared])
        b = self.copy(None, None, label="quoted", settings=[("LocalID", idb), ("ExtUsersCount", "1"),
                                                           ("01Folder", shared)])
        b.wait_for_log_line("End of Form Load at ", answer_name='b"e rt')
        a.wait_started()
        b.wait_started()
        self.assertEqual('b"e rt', b.state()["LocalUser"])
        self.assertEqual('b"e rt', b.settings().get("LocalUser"))
        a.go_online()
        b.go_online()
        self.assertEqual(message_bytes(idb), read_when_whole(os.path.join(shared, 'b"e rt.xid'),
                                                             lambda d: d.endswith(b"\r\n")))
        a.wait_log(rename_pattern("01ExtSpeler", 'b"e rt'))
        a.select_player(1)
        a.wait_sees('b"e rt')


class SyncPair(LinkTest):
    """Two folders kept in step by a real synchronisation program: presence and
    an invitation cross it, at a time scale that leaves room for its hops."""

    SCALE = "0.5"

    def test_presence_and_invitation_cross_the_sync(self):
        if not os.access(SYNC_PAIR, os.X_OK):
            self.skipTest("no sync-pair at %s" % SYNC_PAIR)
        folder_a = self.folder("a")
        folder_b = self.folder("b")
        state = self.folder("sync-state")
        started = subprocess.run([SYNC_PAIR, "start", "unison", folder_a, folder_b, state],
                                 stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=300)
        try:
            self.assertEqual(0, started.returncode, started.stdout.decode(errors="replace"))
            self.assertTrue(started.stdout.decode().strip().splitlines()[-1].startswith("ready unison"))
            self.run_pair(folder_a, folder_b, state)
        finally:
            subprocess.run([SYNC_PAIR, "stop", state], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                           timeout=120)

    def run_pair(self, folder_a, folder_b, state):
        ida, idb = local_ids(2)
        a = self.copy("anna", ida, [folder_a], time_scale=self.SCALE)
        b = self.copy("bert", idb, [folder_b], time_scale=self.SCALE)
        a.wait_started(timeout=180)
        b.wait_started(timeout=180)
        a.go_online()
        b.go_online()
        # Each side's presence file reaches the other folder, whole.
        for local_id, name, far in ((ida, "anna", folder_b), (idb, "bert", folder_a)):
            self.assertEqual(message_bytes(local_id), read_when_whole(os.path.join(far, name + ".xid"),
                                                                      lambda d: d.endswith(b"\r\n"), 60))
        a.wait_log(rename_pattern("01ExtSpeler", "bert"), timeout=120)
        b.wait_log(rename_pattern("01ExtSpeler", "anna"), timeout=120)
        a.select_player(1)
        b.select_player(1)
        a.wait_sees("bert", timeout=120)
        b.wait_sees("anna", timeout=120)

        a.click("cmdRequestToPlay")
        dialog = b.wait_dialog(120)
        self.assertEqual((INVITE_TITLE, invite_text("anna")), (dialog["title"], dialog["text"]))
        b.answer("yes")
        b.wait_log(line_pattern("connected and locked with anna at "), timeout=60)
        dialog = a.wait_dialog(120)
        self.assertEqual((ACCEPTED_TITLE, "bert heeft jouw uitnodiging aanvaard."), (dialog["title"], dialog["text"]))
        a.answer("ok")
        a.wait_log(line_pattern("connected and locked with bert at "), timeout=60)
        for c in (a, b):
            c.wait_state("Check1", lambda v: v == 1)
            self.assertIs(True, c.get("cmdStart")["enabled"])
        # The invitation's files are gone from both folders once the sync settles.
        for folder in (folder_a, folder_b):
            wait_files(folder, lambda names: not [n for n in names if n.endswith((".rqs", ".acc"))],
                       "the invitation's files to go from %s" % folder, timeout=60)
        # The presence goes on through the sync while connected.
        a.wait_log(presence_pattern("2a", "bert", 1), timeout=120)
        b.wait_log(presence_pattern("2a", "anna", 1), timeout=120)
        self.assertEqual([True], a.state()["Active"])
        self.assertEqual([True], b.state()["Active"])


class RunLogs(LinkTest):
    """Both logs, after meeting, an invitation, a connection and the exit of
    one side, hold only lines of the known families, with their counters."""

    FAMILIES = [
        r"^timer 1 event (?P<code>1a|1b|1c|1d) - action counter = (?P<counter>\d+) - "
        r"(?:writing|removing) local player ID file for (?P<name>.+) at \S*\d.*$",
        r"^timer 1 event (?P<code>2a|2d) - action counter = (?P<counter>\d+) - removing ID file from (?P<name>.+)"
        r" at \S*\d.*$",
        r"^timer 1 event (?P<code>2b|2c|2e|2f) - action counter = (?P<counter>\d+) - labeling (?P<name>.+) as "
        r"(?:absent|present) at \S*\d.*$",
        r"^timer 1 event (?P<code>3) - action counter = (?P<counter>\d+) - name of external player (?P<name>.+) "
        r"changed to .+ at \S*\d.*$",
        r"^switch on-line status (?:on|off) at \S*\d.*$",
        r"^selecting extern user at \S*\d.*$",
        r"^sending .+ a request to play at \S*\d.*$",
        r"^recieved a request to play from .+ at \S*\d.*$",
        r"^sending acceptance to play at \S*\d.*$",
        r"^recieved acceptance to play at \S*\d.*$",
        r"^connected and locked with .+ at \S*\d.*$",
    ]

    # Which code may write or remove which file, by the side of the line.
    CODE_TEXTS = {"1a": "writing", "1c": "writing", "1b": "removing", "1d": "removing",
                  "2b": "absent", "2e": "absent", "2c": "present", "2f": "present"}

    def check_log(self, c, peer):
        for line in c.log_after_startup():
            if not line:
                continue
            match = None
            for family in self.FAMILIES:
                match = re.match(family, line)
                if match:
                    break
            self.assertIsNotNone(match, "%s: a line of no known family: %r" % (c.label, line))
            code = match.groupdict().get("code")
            if code is None:
                continue
            counter = int(match.group("counter"))
            self.assertLessEqual(counter, 79, line)
            if code in ("2a", "2d"):
                self.assertEqual(1, counter, line)
            if code in ("2b", "2e"):
                self.assertEqual(0, counter, line)
            if code == "3":
                self.assertEqual(60, counter, line)
            if code in self.CODE_TEXTS:
                self.assertIn(self.CODE_TEXTS[code], line)
            # Every presence line names the external player of the folder;
            # the placeholder until the name scan has found the real one.
            if code == "3" or code in ("1c", "1d"):
                self.assertIn(match.group("name"), ("01ExtSpeler", peer), line)
            else:
                self.assertEqual(peer, match.group("name"), line)

    def test_lines_of_both_logs(self):
        shared = self.folder("shared")
        a, b = self.pair(shared, known_names=False)
        a.go_online()
        b.go_online()
        a.wait_log(rename_pattern("01ExtSpeler", "bert"))
        b.wait_log(rename_pattern("01ExtSpeler", "anna"))
        a.select_player(1)
        b.select_player(1)
        a.wait_sees("bert")
        b.wait_sees("anna")

        # Idle and on-line, the presence writes only what changes: between two
        # deletions of the peer's file, at most the own file written again.
        a.wait_log(presence_pattern("2d", "bert", 1), count=len(a.log_matches(presence_pattern("2d", "bert", 1))) + 3)
        lines = a.log_after_startup()
        marks = [i for i, l in enumerate(lines) if re.match(presence_pattern("2d", "bert", 1), l)]
        for first, second in zip(marks[-3:], marks[-2:]):
            between = [l for l in lines[first + 1:second] if l]
            self.assertLessEqual(len(between), 2, between)
            for line in between:
                self.assertRegex(line, presence_pattern("1c", "bert"))

        self.connect(a, b)
        a.wait_log(presence_pattern("2a", "bert", 1))
        b.wait_log(presence_pattern("2a", "anna", 1))
        self.assertEqual(0, a.exit())
        b.wait_log(presence_pattern("2b", "anna", 0))

        self.check_log(a, "bert")
        self.check_log(b, "anna")
        for c, peer in ((a, "bert"), (b, "anna")):
            for pattern in (line_pattern("switch on-line status off at "), line_pattern("selecting extern user at "),
                            presence_pattern("1c", peer), presence_pattern("2d", peer, 1),
                            presence_pattern("2f", peer), rename_pattern("01ExtSpeler", peer),
                            line_pattern("connected and locked with %s at " % peer), presence_pattern("1a", peer),
                            presence_pattern("2a", peer, 1)):
                self.assertTrue(c.log_matches(pattern), "%s: no line %r" % (c.label, pattern))
        for pattern in (line_pattern("sending bert a request to play at "),
                        line_pattern("recieved acceptance to play at ")):
            self.assertTrue(a.log_matches(pattern), pattern)
        for pattern in (line_pattern("recieved a request to play from anna at "),
                        line_pattern("sending acceptance to play at "), presence_pattern("2b", "anna", 0)):
            self.assertTrue(b.log_matches(pattern), pattern)
        # Lines of the invitation come in the order of the conversation.
        order_b = [l for l in b.log_after_startup() if l and not l.startswith("timer 1 event ")]
        self.assertRegex(order_b[-3], line_pattern("recieved a request to play from anna at "))
        self.assertRegex(order_b[-2], line_pattern("sending acceptance to play at "))
        self.assertRegex(order_b[-1], line_pattern("connected and locked with anna at "))
        self.assertNotIn(b"\r", a.log_bytes())


def main():
    global PROGRAM
    if len(sys.argv) < 3:
        sys.stderr.write(__doc__)
        return 2
    PROGRAM = os.path.abspath(sys.argv[1])
    return run_tests(sys.modules[__name__], sys.argv[2:])


if __name__ == "__main__":
    sys.exit(main())
