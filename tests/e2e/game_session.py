"""Helpers for end-to-end tests of a game between two copies of the program:
a copy with scripted dice and the steps a player takes, the position each
copy reports and its comparison from the other side, the click points of the
board's fields from the judge tool, saved games written before a start, the
names that come into the shared folder, the places of the board's marks, and
the run log's lines of a turn.

    with XServer() as xa, XServer() as xb:
        a = GameCopy(PROGRAM, xa.display, root, "anna", ida, [shared], ["bert"], dice=[6, 5, 6, 6])
        ...

Standard library only."""

import os
import re
import subprocess
import time
from collections import OrderedDict

from link_session import LinkCopy

SEPARATOR_48 = "-" * 48
SEPARATOR_56 = "-" * 56
SEPARATOR_62 = "-" * 62

# Fields of the large areas, by army: camp, HQ, prison island.
CAMP = {1: 113, 2: 116}
HQ = {1: 114, 2: 117}
ISLAND = {1: 115, 2: 118}

# Vehicle slots.
TANK, KANON, KANON2, INFANTRY, INFANTRY2, INFANTRY3, COMMANDO, COMMANDO2, GENIE, GENIE2, JEEP = range(11)

# The die double-clicked for an action, by the die code of its record: 3 is both.
DIE_CONTROLS = {1: "Dice_1", 2: "Dice_2", 3: "Dices"}

STOP_TITLE = "Spel stoppen?"
STOP_TEXT = "Bent u zeker dat u het huidig spel wilt stoppen?"
RESUME_TITLE = "Vorig spel verder zetten?"
RESUME_TEXT = "Er is nog een vorig spel opgeslagen, wilt u dit verder spelen?"
FLAG_TITLE = "Vlag beschikbaar"
FLAG_TEXT = "Wilt u een vlag opladen?"
MINE_TITLE = "Mijn afzetten?"
MINE_TEXT = "Wilt u de mijn afzetten op het vakje dat u verlaat?"


# The dealer writes the deck's keys one by one, and the receiver reads them
# as soon as the file is there, each with its own position as the default: a
# receiver that comes too early holds another deck than the dealer, without
# notice. The game keeps that race; three seconds of its waits lie between
# the two, a fraction of a second at the tests' time scales, so that a busy
# machine loses the race now and then. A test that needs one deck on both
# copies starts such a game again.
DEAL_ATTEMPTS = 3


def deck_read_too_early(dealt, received):
    """Whether the received deck differs from the dealt one only by cards
    read as the default of their position, the mark of a deck read before
    it was complete."""
    return dealt != received and all(card == position for position, (want, card) in
                                     enumerate(zip(dealt, received), start=1) if want != card)


def logged_deck(log):
    """The deck as a copy's run log lists it after the toss, or None before."""
    if "order of shuffled cards:" not in log:
        return None
    at = log.index("order of shuffled cards:")
    cards = [re.match(r"^card \d\d: (\d\d)$", line) for line in log[at + 1:at + 33]]
    return [int(card.group(1)) for card in cards] if len(cards) == 32 and all(cards) else None


def deck_read_too_early_by(copies):
    """None until both copies' logs list the deck; then whether the brown
    copy read it too early."""
    logs = [c.log_lines() for c in copies]
    decks = [logged_deck(log) for log in logs]
    if not all(decks):
        return None
    green = 0 if any(" plays with the green army at " in line for line in logs[0]) else 1
    return deck_read_too_early(decks[green], decks[1 - green])


# -- the position as a saved game holds it --------------------------------


def parse_position(text):
    """The sections of a saved game's INI text: {section: {key: value}}, in order."""
    sections = OrderedDict()
    current = None
    for line in (text or "").replace("\r\n", "\n").split("\n"):
        line = line.strip()
        if not line:
            continue
        if line.startswith("[") and line.endswith("]"):
            current = sections.setdefault(line[1:-1], OrderedDict())
        elif current is not None and "=" in line:
            key, value = line.split("=", 1)
            current[key] = value
    return sections


def seen_from_the_other_side(sections):
    """The same position as the opponent's copy holds it: every _LOK section
    exchanged with its _EXT twin, and LOK and EXT of MAIN swapped."""
    turned = OrderedDict()
    for name, keys in sections.items():
        if name.endswith("_LOK"):
            name = name[:-4] + "_EXT"
        elif name.endswith("_EXT"):
            name = name[:-4] + "_LOK"
        turned[name] = OrderedDict(keys)
    main = turned.get("MAIN")
    if main is not None and "LOK" in main and "EXT" in main:
        main["LOK"], main["EXT"] = main["EXT"], main["LOK"]
    return turned


def position_differences(mine, theirs):
    """(section, key, value here, value there) for each key in which the two
    copies' positions differ, after turning the second to the first's side."""
    turned = seen_from_the_other_side(theirs)
    out = []
    for name in sorted(set(mine) | set(turned)):
        a, b = mine.get(name, {}), turned.get(name, {})
        for key in sorted(set(a) | set(b)):
            if a.get(key) != b.get(key):
                out.append((name, key, a.get(key), b.get(key)))
    return out


def side_sections(sections, side):
    """The role word (LOK or EXT) under which the army `side` stands in a position."""
    return "LOK" if int(sections["MAIN"]["LOK"]) == side else "EXT"


def army_value(sections, side, section, key):
    """A value of the army `side`, such as army_value(p, 1, "VEHPOS", "VEH00")."""
    return sections["%s_%s" % (section, side_sections(sections, side))][key]


def veh_key(slot):
    return "VEH%02d" % slot


def position_text(sections):
    """INI text of sections, as a saved game file."""
    out = []
    for name, keys in sections.items():
        out.append("[%s]" % name)
        out.extend("%s=%s" % kv for kv in keys.items())
    return "\r\n".join(out) + "\r\n"


# -- the judge ---------------------------------------------------------------


class Rules:
    """The command-line judge: $VALKENHORN_RULES, or the one beside the program."""

    def __init__(self, program):
        self.tool = os.environ.get("VALKENHORN_RULES") or os.path.join(os.path.dirname(os.path.abspath(program)),
                                                                       "valkenhorn-rules")
        self.centres = {}

    def run(self, *arguments):
        # A build may be replacing the tool for a moment.
        for attempt in range(50):
            try:
                done = subprocess.run([self.tool] + [str(a) for a in arguments], stdout=subprocess.PIPE,
                                      stderr=subprocess.STDOUT, timeout=30)
                return done.returncode, done.stdout.decode("utf-8", "replace")
            except OSError:
                if attempt == 49:
                    raise
                time.sleep(0.2)

    def centre(self, field, board_side):
        """The twips point of Speelveld where a click hits the field in the view of board_side."""
        key = (field, board_side)
        if key not in self.centres:
            code, out = self.run("centre", field, board_side)
            if code != 0:
                raise AssertionError("valkenhorn-rules centre %d %d: %s" % (field, board_side, out))
            x, y = out.split()
            self.centres[key] = (int(x), int(y))
        return self.centres[key]


# -- one copy in a game --------------------------------------------------------


class GameCopy(LinkCopy):
    """A copy of the program whose dice come from a list."""

    def __init__(self, program, display, root, name, local_id, folders=(), external_users=(), dice=(), **kwargs):
        env = dict(kwargs.pop("env", None) or {})
        if dice:
            env["VALKENHORN_DICE"] = ",".join(str(d) for d in dice)
        super().__init__(program, display, root, name, local_id, folders, external_users, env=env, **kwargs)
        self.rules = Rules(program)
        self.patience = 30  # seconds a step of the game may take; more across a synchronisation program

    # -- what the copy reports

    def position(self):
        return parse_position(self.state()["Position"])

    def side(self):
        return self.state()["LocalSide"]

    def vehicle(self, slot, side=None):
        return "Voertuig_%d(%d)" % (side or self.side(), slot)

    def wait_phase(self, phase, timeout=None):
        """Waits until the turn stands at the phase and waits in it for the player."""
        timeout = timeout or self.patience
        self.wait_state("Waiting", lambda w: w == "phase %d" % phase, "waiting in phase %d" % phase, timeout)
        return self.wait_state("GamePhase", lambda p: p == phase, "GamePhase %d" % phase, timeout)

    def wait_waiting(self, what, timeout=None):
        return self.wait_state("Waiting", lambda w: w == what, "waiting for %r" % what, timeout or self.patience)

    def count_lines(self, prefix):
        return sum(1 for line in self.log_lines() if line.startswith(prefix))

    def wait_line_count(self, prefix, count, timeout=None):
        self.wait_until(lambda: self.count_lines(prefix) >= count, "%d lines %r in the log of %s"
                        % (count, prefix, self.label), timeout or self.patience)

    # -- what a player does

    def dblclick(self, name, **point):
        request = {"cmd": "dblclick", "name": name}
        request.update(point)
        return self.ok(request)

    def dblclick_field(self, field):
        x, y = self.rules.centre(field, self.state()["BoardSide"])
        return self.dblclick("Speelveld", x=x, y=y)

    def slow_click(self, slot):
        """A single click on an own vehicle, which waits out the double-click interval."""
        self.ok({"cmd": "click", "name": self.vehicle(slot)})
        self.wait_until(lambda: self.state()["Waiting"] != "second click", "the slow click to be taken")

    def ok(self, obj):
        # A generous answer time: a request may come while the copy is busy.
        reply = self.request(obj, timeout=60)
        if reply.get("ok") is not True:
            raise AssertionError("%s: request %r refused: %r" % (self.label, obj, reply))
        return reply

    def wait_dialog_titled(self, title, timeout=None):
        timeout = timeout or self.patience
        dialog = self.wait_dialog(timeout)
        if dialog.get("title") != title:
            raise AssertionError("%s: dialog %r open, not %r" % (self.label, dialog, title))
        return dialog

    def saved_game_path(self, opponent):
        return os.path.join(self.data_home, "Valkenhorn", opponent + ".vkh")

    def write_saved_game(self, opponent, sections):
        path = self.saved_game_path(opponent)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", newline="") as f:
            f.write(position_text(sections))
        return path


# -- a new game's position, as a saved game to resume --------------------------

# Starting tags and headings of the two armies, slots 0 to 10.
START_TAGS = {
    1: ["tank_1_0_o", "kanon_1_0_o", "kanon_1_0_o"] + ["infanterie_1_0_0_o"] * 3 + ["commando_1_0_0_o"] * 2 +
       ["genie_1_0_0_o"] * 2 + ["jeep_1_0_w"],
    2: ["tank_2_0_w", "kanon_2_0_w", "kanon_2_0_w"] + ["infanterie_2_0_0_o"] * 3 + ["commando_2_0_0_w"] * 2 +
       ["genie_2_0_0_o"] * 2 + ["jeep_2_0_o"],
}
HEADING_NUMBERS = {"n": 0, "o": 1, "z": 2, "w": 3}


def new_game_sections(local_side, turn, deck=range(1, 33)):
    """The position of a new game as the copy of local_side would save it at
    the given turn: every vehicle in its camp (the jeeps on their islands),
    10 companies in reserve and 15 in camp, mines in store, flags 5, 0, 0."""
    other = 3 - local_side
    s = OrderedDict()
    s["MAIN"] = OrderedDict([("LOK", str(local_side)), ("EXT", str(other)), ("BEURT", str(turn)),
                             ("BRANDSTOF1", "0"), ("BRANDSTOF2", "0"), ("TSETSE1", "0"), ("TSETSE2", "0"),
                             ("TSETSEVEH", "0")])
    role = {local_side: "LOK", other: "EXT"}

    def army(section, values):
        for side in (local_side, other):
            s["%s_%s" % (section, role[side])] = OrderedDict((veh_key(n), str(v)) for n, v in enumerate(values(side)))

    army("VEHPOS", lambda side: [CAMP[side]] * 10 + [ISLAND[side]])
    army("CMPVEH", lambda side: [0] * 11)
    army("DIRVEH", lambda side: [HEADING_NUMBERS[tag[-1]] for tag in START_TAGS[side]])
    army("VEHTAG", lambda side: START_TAGS[side])
    for side in (local_side, other):
        s["VLAG_" + role[side]] = OrderedDict([("RES", "5"), ("VEH", "0"), ("KMP", "0")])
    s["MIJN_GER"] = OrderedDict(("POS%02d" % n, "113") for n in range(5))
    s["MIJN_REB"] = OrderedDict(("POS%02d" % n, "116") for n in range(5))
    for side in (local_side, other):
        s["KOMP_" + role[side]] = OrderedDict([("RES", "10"), ("KMP", "15"), ("PRS", "0")])
    for side in (local_side, other):
        s["CARD_" + role[side]] = OrderedDict([("CNT", "0"), ("CRD1", "0"), ("CRD2", "0")])
    s["STACK"] = OrderedDict(("CARD%02d" % (i + 1), str(card)) for i, card in enumerate(deck))
    s["STACK"]["POINT"] = "32"
    return s


def set_army_value(sections, side, section, key, value):
    """Sets a value of the army `side` in a position held by either copy."""
    sections["%s_%s" % (section, side_sections(sections, side))][key] = str(value)


def set_vehicle(sections, side, slot, field, companies, tag):
    """Places a vehicle of army `side`: field, companies, tag; the heading follows the tag."""
    key = veh_key(slot)
    set_army_value(sections, side, "VEHPOS", key, field)
    set_army_value(sections, side, "CMPVEH", key, companies)
    set_army_value(sections, side, "DIRVEH", key, HEADING_NUMBERS[tag[-1]])
    set_army_value(sections, side, "VEHTAG", key, tag)


# -- the shared folder as the game uses it ----------------------------------------


class FolderWatch:
    """Notes, in order, every name that comes into a folder (made there or
    renamed into it), through inotify, so that files which live for a
    millisecond are seen too. Presence files and hidden names are left out."""

    IN_MOVED_FROM, IN_MOVED_TO, IN_CREATE, IN_DELETE = 0x40, 0x80, 0x100, 0x200

    def __init__(self, folder):
        import ctypes
        import ctypes.util
        import threading
        self.libc = ctypes.CDLL(ctypes.util.find_library("c") or "libc.so.6", use_errno=True)
        self.folder = folder
        self.seen = []
        self.present = set(os.listdir(folder))
        self.fd = self.libc.inotify_init1(os.O_NONBLOCK)
        events = self.IN_MOVED_FROM | self.IN_MOVED_TO | self.IN_CREATE | self.IN_DELETE
        if self.fd < 0 or self.libc.inotify_add_watch(self.fd, os.fsencode(folder), events) < 0:
            raise OSError(ctypes.get_errno(), "inotify on " + folder)
        self.stopping = threading.Event()
        self.thread = threading.Thread(target=self.run, daemon=True)

    def run(self):
        import select
        import struct
        while True:
            stopping = self.stopping.is_set()
            ready, _, _ = select.select([self.fd], [], [], 0.02)
            if ready:
                data = os.read(self.fd, 65536)
                at = 0
                while at + 16 <= len(data):
                    _, mask, _, length = struct.unpack_from("iIII", data, at)
                    name = data[at + 16:at + 16 + length].split(b"\0", 1)[0].decode("utf-8", "replace")
                    at += 16 + length
                    self.note(name, mask)
            elif stopping:
                return

    def note(self, name, mask):
        """A name counts once from its arrival to its removal: a message is
        rewritten in place by a rename for each key."""
        if mask & (self.IN_MOVED_FROM | self.IN_DELETE):
            self.present.discard(name)
        elif name not in self.present:
            self.present.add(name)
            if name and not name.startswith(".") and not name.endswith(".xid"):
                self.seen.append(name)

    def __enter__(self):
        self.thread.start()
        return self

    def __exit__(self, *exc):
        time.sleep(0.1)
        self.stopping.set()
        self.thread.join(5)
        os.close(self.fd)


# -- the board's geometry as the marks use it ----------------------------------------

# Anchors (k = 0: horizontal 750 x 330, k = 1: vertical 330 x 750) of the road
# squares the tests use; None where the field has no such place.
ANCHORS = {
    47: ((15830, 6155), (16250, 6155)),
    48: (None, (16250, 6980)),
    49: ((16250, 7865), None),
    50: ((17075, 7865), None),
    52: ((7385, 11680), None),
    53: ((8210, 11665), (8630, 11260)),
    69: ((17075, 11230), (17075, 10795)),
    70: ((17900, 11230), None),
    101: ((18755, 7850), (18965, 7640)),
    102: (None, (18980, 8525)),
    17: ((16235, 1110), None),
    21: ((8270, 4475), None),
    23: ((9980, 4475), None),
    86: ((5460, 9755), None),
}
ISLAND_ANCHORS = {1: (22170, 10840), 2: (2310, 1230)}
CAMP_PLACES = {
    1: [(1905, y) for y in (7630, 8050, 8470, 8890, 9315, 9735, 10155, 10580, 11005, 11425)],
    2: list(zip((22585, 22585, 22585, 20470, 20470, 20470, 22585, 22585, 20470, 20470),
                (4000, 3605, 3165, 3995, 3605, 3165, 2730, 2325, 2755, 2350))),
}
HQ_PLACES = {1: [(4630, y) for y in (5660, 6140, 6620)], 2: [(19635, y) for y in (5680, 6160, 6640)]}
LONG, SHORT = 750, 330


def in_view(rect, board_side, board_size):
    """A rectangle (left, top, width, height) of the view of army 1 as the view board_side draws it."""
    x, y, w, h = rect
    if board_side == 2:
        return (board_size[0] - (x + w), board_size[1] - (y + h), w, h)
    return rect


def field_mark(field):
    """The mark of a field in the view of army 1: its horizontal place, or the
    vertical one where the field has none."""
    horizontal, vertical = ANCHORS[field]
    if horizontal is not None:
        return (horizontal[0], horizontal[1], LONG, SHORT)
    return (vertical[0], vertical[1], SHORT, LONG)


def vehicle_on_field(field, heading):
    """Where a vehicle's picture stands on a road square, view of army 1."""
    horizontal, vertical = ANCHORS[field]
    if heading in (1, 3):
        return (horizontal[0], horizontal[1], LONG, SHORT)
    return (vertical[0], vertical[1], SHORT, LONG)


def rect_of(control):
    return (control["left"], control["top"], control["width"], control["height"])


# -- the run log ----------------------------------------------------------------


def line_regex(text_before_time):
    return re.compile("^" + re.escape(text_before_time) + r"\S*\d.*$")


# -- the lines of a turn ------------------------------------------------------------

SLOT_WORDS = ["tank", "canon", "canon", "infantry", "infantry", "infantry", "commando", "commando", "deminer",
              "deminer", "jeep"]
DIE_LINES = {1: "using dice 1", 2: "using dice 2", 3: "using both dices"}
OPPONENT_DIE_LINES = {1: "uses dice 1", 2: "uses dice 2", 3: "uses both dices"}


def own_action_lines(die, first, from_camp):
    """The lines the player's copy writes for an action: the die of this
    action, and the vehicle, code, start and destination of the turn's first
    record (veh, code, from, to), which the second action repeats."""
    veh, code, src, dst = first
    lines = [SEPARATOR_48, "I take action with following details at ", DIE_LINES[die]]
    if code == 0:
        lines.append("attacking jeep, but was intercepted by opponent")
    else:
        lines.append(("shooting with " if code == 2 and veh != JEEP else "moving ") + SLOT_WORDS[veh])
    lines.append("from main camp" if from_camp else "from %d" % src)
    if dst in (2, 69):
        lines.append("to RESERVE")
    elif dst in (113, 116):
        lines.append("to main camp")
    elif dst in (114, 117):
        lines.append("to HQ")
    elif dst in (115, 118):
        lines.append("to prison island")
    else:
        lines.append(("to vehicle at %d" if code == 2 else "to %d") % dst)
    lines += {3: ["leaves mine at %d" % src], 4: ["to pick up mine"], 5: ["loading flag"]}.get(code, [])
    return lines + [SEPARATOR_48]


def opponent_action_lines(die, veh, code, src, dst, sender):
    """The lines the watching copy writes for an action record of the army `sender`."""
    lines = [SEPARATOR_56, "opponent takes action with following details at ", OPPONENT_DIE_LINES[die]]
    if src == CAMP[sender]:
        lines += ["moves " + SLOT_WORDS[veh], "from main camp"]
    elif src == ISLAND[sender]:
        lines.append("starts escape with jeep")
    else:
        lines += ["shoots with vehicle" if code == 2 else "moves vehicle", "from %d" % src]
    if dst == CAMP[sender]:
        lines.append("to main camp")
    elif dst == HQ[sender]:
        lines.append("to HQ")
    else:
        if dst == ISLAND[sender]:
            lines.append("to prison")
        else:
            lines.append(("to vehicle at %d" if code == 2 else "to %d") % dst)
        lines += {3: ["leaves mine at %d" % src], 4: ["to pick up mine"], 5: ["loads flag"]}.get(code, [])
    return lines + [SEPARATOR_56]


def game_lines(lines):
    """The run log without the presence lines, which come at any time, and empty lines."""
    return [line for line in lines if line and not line.startswith("timer 1 event ")]


def line_matches(line, expected):
    if hasattr(expected, "match"):
        return bool(expected.match(line))
    if expected.endswith(" at "):
        return bool(line_regex(expected).match(line))
    return line == expected


def expect_lines_from(lines, cursor, expected, label):
    """The expected lines must stand one after the other from `cursor` on;
    returns the position after them."""
    for offset, item in enumerate(expected):
        i = cursor + offset
        line = lines[i] if i < len(lines) else None
        if line is None or not line_matches(line, item):
            context = "\n".join("%s %s" % (">>" if j == i else "  ", lines[j])
                                for j in range(max(0, cursor - 3), min(len(lines), i + 8)))
            raise AssertionError("%s: line %d is %r, expected %r (block of %d lines from line %d):\n%s"
                                 % (label, i, line, getattr(item, "pattern", item), len(expected), cursor, context))
    return cursor + len(expected)
