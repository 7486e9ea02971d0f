#!/usr/bin/env python3
"""End-to-end tests of the compass cards between two copies of the program:
cards earned by crossing a forward post and drawn at the end of the turn
(Radio Yambo shown on both sides, Personnel cards kept, two draws in one
turn), the choice among three Personnel cards, and the Vrijgeleide and the
Contra spionage that answer a shot at the jeep.

    python3 test_cards.py PATH/TO/valkenhorn TestClass[.test_method]

The deck is laid by VALKENHORN_DECK on the copy that deals, or written with
both hands into a saved game that both copies resume. After every draw and
every answer both copies must hold the same deck and hands, and the same
position, each from its own side, but where the game knowingly lets them
part; both run logs must hold the lines of the turn one after the other.

Exit code 0 when all pass, 1 on a failure, 77 when the tests were skipped."""

import os
import sys
import unittest
from collections import OrderedDict

# No byte-code caches in the source tree.
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import test_game  # noqa: E402
from game_session import (HQ, JEEP, TANK, SEPARATOR_56, FolderWatch, GameCopy, army_value,  # noqa: E402
                          new_game_sections, opponent_action_lines, own_action_lines, position_differences,
                          set_army_value, set_vehicle, veh_key)
from test_game import SKIP, TURN_ENDED, YOUR_TURN, Act, GameTest, Turn, Victory  # noqa: E402
from valkenhorn_session import XServer, run_tests  # noqa: E402

KANON = 1

# What the drawing player and his opponent are told.
PERSONNEL_TITLE = "Personnel kaart"
KEPT_TEXT = "U hebt een Personnel kaart getrokken. U kan die bekijken vanaf het begin van uw volgende beurt."
THIRD_TEXT = ("U hebt een 3e Personnel kaart getrokken. U mag er slechts twee houden, dus kan je je kaarten bekijken "
              "en kiezen welke je niet wilt behouden.")
OPPONENT_DREW_TITLE = "Tegenspeler trok Radio Yambo kaart"
OPPONENT_DREW_TEXT = ("Je tegenspeler heeft als kompaskaart het radio yambo bericht ontvangen die u nu te zien krijgt. "
                      "Klik 'OK' om dit bericht en de kaart te sluiten, en de instructies uit te voeren.")
RADIO_YAMBO = {5: "exclusief muiterij", 20: "alarm mijnopruimingsdienst"}
CLICK_TO_CLOSE = " - klik op deze boodschap om de Radio Yambo kaart te sluiten en uit te voeren"
YOUR_TURN_WITH_CARD = ("u bent aan de beurt. je kan voor je beurt een personnel kaart uitspelen. deze kan je eerst "
                       "inkijken door naast de knop 'Gooien' op het miniatuur te klikken, en dan beslissen om deze te "
                       "gebruiken. Zoniet, druk op de knop 'gooien', of op 'einde beurt' om je beurt over te slaan.")
CARD_SHOWN = ("klik op de knop 'gebruik' om deze personnel kaart nu uit te spelen. druk anders op de knop "
              "'sluiten'.")
INFO = {
    21: ("Info: Camouflage",
         "Bij gebruik van deze kaart dient u een voertuig aan te wijzen. Afhankelijk van het aantal beschikbare vrije "
         "plaatsen in het voertuig, en het aantal beschikbare kompagnieën in uw kamp worden er tot maximum twee "
         "kompagnieën aan het voertuig toegevoegd."),
    22: ("Info: Uitwisseling van gevangenen",
         "Aangezien deze kaart een uitwisseling betreft, doe je er best aan om het aantal gevangen kompagnieën van je "
         "tegenstander te bekijken, want er worden niet meer kompagnieën uitgewisseld dan mogelijk is, met een "
         "maximum van 2."),
}

# The conversation of a shot at the jeep.
ASKING_TITLE = "Jeep kan over een vrijgeleide beschikken"
ASKING_TEXT = ("Er wordt geinformeerd of uw tegenstander beschikt over een vrijgeleide omdat zijn jeep wordt "
               "aangevallen...")
ATTACKED_TITLE = "Jeep wordt aangevallen!"
ATTACKED_TEXT = "Uw jeep wordt beschoten door de vijand, u beschikt over een vrijgeleide. Wilt u die gebruiken?"
COVERED_TITLE = "Jeep heeft vrijgeleide!"
COVERED_TEXT = "Uw tegenstander heeft een vrijgeleide voor zijn jeep gebruikt."
CONTRA_ONE_TEXT = ("De jeep beschikt over een vrijgeleide, maar dit kan worden verijdeld mits uw contra spionage. "
                   "Wilt u die gebruiken?")
CONTRA_TWO_TEXT = ("De jeep beschikt over een vrijgeleide, maar dit kan worden verijdeld door uw contra spionage. "
                   "Wilt u die gebruiken?")
ACCEPTED_TITLE = "Vrijgeleide aanvaard!"
ACCEPTED_TEXT = ("De vrijgeleide is aanvaard, de kompagnieën mogen naar het kamp en de jeep terug naar het "
                 "gevangenenkamp.")
BEATEN_TITLE = "Jeep toch vernietigd!"
BEATEN_TEXT = "Uw vrijgeleide werd verijdeld door de contra spionage van de vijand"

USED_29 = "using personnel card number 29 against shooting at my jeep at "
APPROVED_29 = "using card 29 is approved at "
ANNULLED_29 = "external player anulled my card 29 with card number 24 at "


def taking(card, next_card):
    return ["taking compas card number %d at " % card, "next compas card is number %d" % next_card]


def opponent_took(card, next_card):
    return ["opponent took compas card number %d at " % card, "next compas card is number %d" % next_card]


def message(**keys):
    """A message file as the program writes it: section GENERAL, CRLF line ends, keys in order."""
    return ("[GENERAL]\r\n" + "".join("%s=%s\r\n" % kv for kv in keys.items())).encode("ascii")


class DeckModel:
    """The deck and both hands as the game must hold them: stack entries 0 to
    32 (0 the bottom), the number of cards in the stack, and per army two hand
    slots and a count. The moves are the game's own."""

    def __init__(self, cards, hands=((0, 0), (0, 0)), counts=(0, 0)):
        self.stack = list(cards) + [0] * (33 - len(cards))
        self.point = len(cards)
        self.hands = [list(hand) for hand in hands]
        self.counts = list(counts)

    def copy(self):
        other = DeckModel([])
        other.stack, other.point = list(self.stack), self.point
        other.hands, other.counts = [list(h) for h in self.hands], list(self.counts)
        return other

    def top(self):
        return self.stack[self.point - 1]

    def rotate(self):
        """The top card under the deck (a Radio Yambo card drawn)."""
        top = self.top()
        self.stack[1:self.point] = self.stack[0:self.point - 1]
        self.stack[0] = top

    def push(self, card):
        """One card more, under the deck."""
        self.point += 1
        self.stack[1:self.point] = self.stack[0:self.point - 1]
        self.stack[0] = card

    def keep(self, side):
        """The top card into the hand of `side`."""
        card = self.top()
        self.counts[side - 1] += 1
        self.hands[side - 1][self.counts[side - 1] - 1] = card
        self.stack[self.point - 1] = 0
        self.point -= 1
        return card

    def give_up(self, side, which):
        """The choice among three: hand slot `which` (1, 2) or the new card (3) under the deck."""
        new = self.top()
        if which in (1, 2):
            self.stack[self.point - 1] = self.hands[side - 1][which - 1]
            self.hands[side - 1][which - 1] = new
        self.rotate()

    def write_into(self, sections):
        """The deck and hands into a saved game's sections."""
        for side in (1, 2):
            for key, value in (("CNT", self.counts[side - 1]), ("CRD1", self.hands[side - 1][0]),
                               ("CRD2", self.hands[side - 1][1])):
                set_army_value(sections, side, "CARD", key, value)
        sections["STACK"] = OrderedDict(("CARD%02d" % (i + 1), str(card)) for i, card in enumerate(self.stack[:32]))
        sections["STACK"]["POINT"] = str(self.point)


def deck_without(*cards):
    return [card for card in range(1, 33) if card not in cards]


def deck_differences(green, brown):
    """The differences position_differences finds between anna (green, LOK 1)
    and bert when their decks and hands are those of the two models."""
    out = []
    for side, role in ((1, "LOK"), (2, "EXT")):
        for key, a, b in (("CNT", green.counts[side - 1], brown.counts[side - 1]),
                          ("CRD1", green.hands[side - 1][0], brown.hands[side - 1][0]),
                          ("CRD2", green.hands[side - 1][1], brown.hands[side - 1][1])):
            if a != b:
                out.append(("CARD_" + role, key, str(a), str(b)))
    for i in range(32):
        if green.stack[i] != brown.stack[i]:
            out.append(("STACK", "CARD%02d" % (i + 1), str(green.stack[i]), str(brown.stack[i])))
    if green.point != brown.point:
        out.append(("STACK", "POINT", str(green.point), str(brown.point)))
    return sorted(out)


class CardTest(GameTest):
    """A game of anna (green) and bert (brown) in which the compass cards
    matter. With DECK set, anna, who wins the toss and deals, lays the deck
    in that order (bottom first)."""

    DECK = None

    def copy(self, name, local_id, folder, peer, dice):
        x = XServer()
        x.__enter__()
        self.addCleanup(x.__exit__, None, None, None)
        kwargs = {"time_scale": self.SCALE} if self.SCALE else {}
        env = {"VALKENHORN_DECK": ",".join(str(card) for card in self.DECK)} if self.DECK and name == "anna" else {}
        c = GameCopy(test_game.PROGRAM, x.display, self.root, name, local_id, [folder], [peer], dice=dice, env=env,
                     **kwargs)
        c.patience = self.PATIENCE
        self.addCleanup(c.close)
        return c

    def resume(self, sections, dice_green, dice_brown):
        return Victory.resume(self, sections, dice_green, dice_brown)

    @property
    def shared(self):
        return self.folder("shared")

    # -- what the copies show and hold

    def assertDeck(self, c, model, what=""):
        state = c.state()
        self.assertEqual({"CompassStack": model.stack[:32], "StackPoint": model.point, "CardHand": model.hands,
                          "CardCount": model.counts},
                         {key: state[key] for key in ("CompassStack", "StackPoint", "CardHand", "CardCount")},
                         "the deck and hands of %s %s" % (c.label, what))

    def assertDraws(self, c, owed, pending):
        state = c.state()
        self.assertEqual((owed, pending), (state["CompassOwed"], state["PendingDraws"]),
                         "CompassOwed and PendingDraws of %s" % c.label)

    def box(self, c, title, text, button, buttons=("ok",)):
        """Waits for the box of that title, checks its text and buttons, presses
        the button and waits until the box has gone."""
        found = {}

        def open_box():
            dialog = c.ok({"cmd": "dialog"}).get("dialog")
            if dialog and dialog.get("title") == title:
                found.update(dialog)
                return True
            return False

        c.wait_until(open_box, "the box %r on %s" % (title, c.label), self.PATIENCE)
        self.assertEqual((text, list(buttons)), (found["text"], found["buttons"]), "the box %r on %s"
                         % (title, c.label))
        c.answer(button)

        def gone():
            dialog = c.ok({"cmd": "dialog"}).get("dialog")
            return not dialog or (dialog.get("title"), dialog.get("text")) != (title, text)

        c.wait_until(gone, "the box %r on %s to close" % (title, c.label), self.PATIENCE)

    def assertNoBox(self, c):
        self.assertIsNone(c.ok({"cmd": "dialog"})["dialog"], "no box open on %s" % c.label)

    def assertShown(self, c, frame, image, card, shown=True):
        self.assertIs(shown, c.get(frame)["visible"], "%s on %s" % (frame, c.label))
        if shown:
            picture = c.get(image)["picture"].replace(os.sep, "/")
            name = "kompas/raya_%02d.gif" % card if card <= 20 else "kompas/pers_%02d.gif" % (card - 20)
            self.assertTrue(picture.endswith("/" + name), "%s shows %r, not %s" % (image, picture, name))

    def file_bytes(self, name):
        with open(os.path.join(self.shared, name), "rb") as f:
            return f.read()

    def wait_file(self, name):
        path = os.path.join(self.shared, name)
        self.green.wait_until(lambda: os.path.exists(path), "%s in the shared folder" % name, self.PATIENCE)

    # -- a Radio Yambo card

    def drawer_reads(self, drawer, card):
        """The drawer sees the card and its message on the board, and clicks the board to go on."""
        drawer.wait_waiting("Radio Yambo card read")
        drawer.wait_board_text(RADIO_YAMBO[card] + CLICK_TO_CLOSE)
        self.assertShown(drawer, "RadioYambo", "imgRaYaTekst", card)
        drawer.wait_control("msgBoard", "visible", lambda v: v is True, "the board shown")
        drawer.click("msgBoard")
        drawer.wait_until(lambda: drawer.state()["Waiting"] != "Radio Yambo card read", "the card read")
        self.assertIs(False, drawer.get("RadioYambo")["visible"], "the card closed on " + drawer.label)

    def watcher_sees(self, watcher, card):
        """The other copy shows the card drawn, with its box, until the box is answered."""
        self.box_waiting_for(watcher, OPPONENT_DREW_TITLE)
        self.assertShown(watcher, "RadioYambo", "imgRaYaTekst", card)
        self.box(watcher, OPPONENT_DREW_TITLE, OPPONENT_DREW_TEXT, "ok")
        watcher.wait_control("RadioYambo", "visible", lambda v: v is False, "the card closed on " + watcher.label)

    def box_waiting_for(self, c, title):
        c.wait_until(lambda: (c.ok({"cmd": "dialog"})["dialog"] or {}).get("title") == title,
                     "the box %r on %s" % (title, c.label), self.PATIENCE)


# -- drawing -------------------------------------------------------------------


class Draws(CardTest):
    """anna deals a deck with the Radio Yambo card 5 on top and the Personnel
    card 22 under it. Her tank leaves the camp with both dice, by way of the
    HQ, to 75 across the post 74-75: she draws the 5, which both copies show
    and put under the deck. bert's tank crosses 97-96 likewise and he keeps
    the 22, which he sees from his next turn on."""

    DECK = deck_without(5, 22) + [22, 5]
    SCRIPT = [
        Turn((6, 5), [Act(3, TANK, 75, loads=1)]),
        Turn((6, 5), [Act(3, TANK, 96, loads=1)]),
        SKIP,
        SKIP,
    ]

    def test_radio_yambo_then_personnel_kept(self):
        green, brown = self.begin(self.SCRIPT)
        model = DeckModel(self.DECK)
        for c in (green, brown):
            self.assertDeck(c, model, "after the deal")

        with FolderWatch(self.shared) as watch:
            ended, own, theirs = self.actions(green, brown, self.SCRIPT[0])
            model.rotate()
            green.wait_waiting("Radio Yambo card read")
            self.assertEqual(28, green.state()["GamePhase"])
            self.assertDraws(green, 0, 0)
            self.assertDeck(green, model, "after drawing the 5")
            self.box_waiting_for(brown, OPPONENT_DREW_TITLE)
            self.assertDeck(brown, model, "after the opponent drew the 5")
            self.assertSamePosition(green, brown)
            self.watcher_sees(brown, 5)
            self.drawer_reads(green, 5)
            own += taking(5, 22)
            theirs += opponent_took(5, 22) + ["executing automatic radio yambo procedure"]
            self.turn_ended(green, brown, ended, own, theirs)
        self.assertEqual(["anna.wrp", "anna.act", "anna.ryc", "anna.eot"], watch.seen)
        for c in (green, brown):
            self.assertDeck(c, model, "after turn 1")
            self.assertEqual(0, c.state()["CompassOwed"], c.label)

        with FolderWatch(self.shared) as watch:
            ended, own, theirs = self.actions(brown, green, self.SCRIPT[1])
            card = model.keep(2)
            self.assertEqual(22, card)
            self.box_waiting_for(brown, PERSONNEL_TITLE)
            self.assertEqual(29, brown.state()["GamePhase"])
            self.assertDeck(brown, model, "after keeping the 22")
            green.wait_line_count("next compas card is number 32", 1)
            self.assertDeck(green, model, "after the opponent kept the 22")
            self.assertSamePosition(green, brown)
            self.assertIs(False, brown.get("KK1")["visible"], "the card kept is not shown in the turn it was drawn")
            self.box(brown, PERSONNEL_TITLE, KEPT_TEXT, "ok")
            own += taking(22, 32)
            theirs += opponent_took(22, 32)
            self.turn_ended(brown, green, ended, own, theirs)
        self.assertEqual(["bert.wrp", "bert.act", "bert.pna", "bert.eot"], watch.seen)
        p = green.position()
        self.assertEqual(["1", "22", "0"], [army_value(p, 2, "CARD", key) for key in ("CNT", "CRD1", "CRD2")])
        self.assertEqual(("0", "31"), (p["STACK"]["CARD32"], p["STACK"]["POINT"]))

        # anna holds nothing: the short text, no miniature.
        green.wait_phase(0)
        green.wait_board_text(YOUR_TURN)
        for name in ("KK1", "KK2", "KK3"):
            self.assertIs(False, green.get(name)["visible"], name + " of anna")
        self.play(green, brown, SKIP)

        # bert sees his card from his next turn on.
        brown.wait_phase(0)
        brown.wait_board_text(YOUR_TURN_WITH_CARD)
        kk1 = brown.get("KK1")
        self.assertEqual((True, True), (kk1["visible"], kk1["enabled"]), "KK1 of bert")
        self.assertIs(False, brown.get("KK2")["visible"], "one card, no KK2")
        brown.click("KK1")
        brown.wait_phase(1)
        brown.wait_board_text(CARD_SHOWN)
        self.assertShown(brown, "Personnel", "imgPersTekst", 22)
        self.assertEqual("1", brown.get("Personnel")["tag"])
        gebruik, sluit = brown.get("cmdKompasGebruik"), brown.get("cmdKompasSluit")
        self.assertEqual(("Gebruik", True, True), (gebruik["caption"], gebruik["visible"], gebruik["enabled"]))
        self.assertEqual(("Sluit", True, True), (sluit["caption"], sluit["visible"], sluit["enabled"]))
        self.assertIs(False, brown.get("cmdEindeBeurt")["enabled"])
        for name in ("KK1", "cmdGooi"):
            self.assertIs(False, brown.get(name)["visible"], name + " while the card is shown")
        brown.click("cmd_Info")
        self.box(brown, INFO[22][0], INFO[22][1], "ok")
        brown.click("cmdKompasSluit")
        brown.wait_phase(0)
        self.assertIs(False, brown.get("Personnel")["visible"])
        for name in ("KK1", "cmdGooi", "cmdEindeBeurt"):
            control = brown.get(name)
            self.assertEqual((True, True), (control["visible"], control["enabled"]), name + " after Sluit")
        self.play(brown, green, SKIP)
        for c in (green, brown):
            self.assertDeck(c, model, "after the card was looked at")

    def actions(self, mover, watcher, turn):
        """The roll and the actions of a turn that draws; returns the lines so far."""
        mover.wait_phase(0)
        watcher.wait_waiting("opponent's turn")
        ended = watcher.count_lines(TURN_ENDED)
        own, theirs = self.roll(mover, turn.roll)
        first = None
        for index, act in enumerate(turn.actions):
            first, lines = self.act(mover, watcher, index, act, first, None)
            own += lines[0]
            theirs += lines[1]
        return ended, own, theirs


# -- two draws in one turn ---------------------------------------------------------


def hq_pair_sections(turn, model):
    """Green's tank and cannon on the HQ, one company each; the deck and hands of the model."""
    p = new_game_sections(1, turn)
    set_vehicle(p, 1, TANK, HQ[1], 1, "tank_1_1_o")
    set_vehicle(p, 1, KANON, HQ[1], 1, "kanon_1_1_o")
    set_army_value(p, 1, "KOMP", "KMP", 13)
    model.write_into(p)
    return p


class TwoDraws(CardTest):
    """Green's tank and cannon stand on the HQ. With two fives the tank
    crosses 74-75 and the cannon 86-87: two cards are owed and drawn at the
    end of the turn, the Radio Yambo card 20 and the Personnel card 26. While
    bert has not yet closed the box of the 20, the .pna of the 26 is already
    written and anna's copy holds the card, bert's not yet."""

    def test_two_crossings_two_draws(self):
        model = DeckModel(deck_without(20, 26) + [26, 20])
        green, brown = self.resume(hq_pair_sections(9, model), [5, 5], [])
        ended = brown.count_lines(TURN_ENDED)
        with FolderWatch(self.shared) as watch:
            green.wait_phase(0)
            own, theirs = self.roll(green, (5, 5))
            first, lines = self.act(green, brown, 0, Act(1, TANK, 75), None, None)
            self.assertDraws(green, 1, 1)
            own += lines[0]
            theirs += lines[1]
            first, lines = self.act(green, brown, 1, Act(2, KANON, 87), first, None)
            own += lines[0]
            theirs += lines[1]

            model.rotate()
            green.wait_waiting("Radio Yambo card read")
            self.assertDraws(green, 1, 1)
            self.box_waiting_for(brown, OPPONENT_DREW_TITLE)
            for c in (green, brown):
                self.assertDeck(c, model, "after the first draw")
            self.assertSamePosition(green, brown)
            self.drawer_reads(green, 20)

            before = model.copy()
            self.assertEqual(26, model.keep(1))
            self.box_waiting_for(green, PERSONNEL_TITLE)
            self.assertEqual(35, green.state()["GamePhase"])
            self.assertDraws(green, 0, 0)
            self.assertDeck(green, model, "after the second draw")
            self.assertDeck(brown, before, "while the box of the 20 is open")
            self.box(green, PERSONNEL_TITLE, KEPT_TEXT, "ok")
            green.wait_line_count("ending turn at ", 1)
            green.wait_waiting("consumed")
            self.assertEqual(message(CARD=20), self.file_bytes("anna.ryc"))
            self.assertEqual(message(CARD=26), self.file_bytes("anna.pna"))
            # The .pna is not waited for: the two copies part until bert reads it.
            self.assertEqual(sorted([("CARD_LOK", "CNT", "1", "0"), ("CARD_LOK", "CRD1", "26", "0"),
                                     ("STACK", "CARD32", "0", "26"), ("STACK", "POINT", "31", "32")]),
                             sorted(position_differences(green.position(), brown.position())))

            self.watcher_sees(brown, 20)
            next_card = deck_without(20, 26)[-1]
            own += taking(20, 26) + taking(26, next_card)
            theirs += opponent_took(20, 26) + ["executing automatic radio yambo procedure"]
            theirs += opponent_took(26, next_card)
            self.turn_ended(green, brown, ended, own, theirs)
        self.assertEqual(["anna.wrp", "anna.act", "anna.act", "anna.ryc", "anna.pna", "anna.eot"], watch.seen)
        for c in (green, brown):
            self.assertDeck(c, model, "after the turn")
            self.assertEqual(0, c.state()["CompassOwed"], "nothing more owed, " + c.label)


# -- the third Personnel card --------------------------------------------------------


class ThirdCard(CardTest):
    """anna holds the Personnel cards 21 and 27 and draws the 23: she looks at
    the three and gives one up with "Verwerp"; it goes under the deck, on
    bert's copy too. As the first draw of a turn the choice runs through the
    phases 30 to 32; as the second, after the Radio Yambo card 5, through 36
    to 38, while bert's box of the 5 holds the .pnc in the folder."""

    HAND = (21, 27)
    NEW = 23
    THIRD_LINES = ["taking compas card number 23 at ", "3rd personnel card, this or another card must be returned"]

    def arrange(self, with_radio_yambo):
        """The saved game: the 23 on top, with the Radio Yambo card 5 above it
        when the choice is the second draw."""
        top = [self.NEW, 5] if with_radio_yambo else [self.NEW]
        model = DeckModel(deck_without(*top, *self.HAND) + top, hands=(self.HAND, (0, 0)), counts=(2, 0))
        green, brown = self.resume(hq_pair_sections(9, model), [5, 5] if with_radio_yambo else [5, 1], [])
        self.ended = brown.count_lines(TURN_ENDED)
        self.separators = brown.count_lines(SEPARATOR_56)
        return green, brown, model

    def start(self, green, brown, model, with_radio_yambo):
        """The turn up to the draw of the 23: one crossing, or two with the 5 drawn first."""
        green.wait_phase(0)
        self.assertEqual((True, True), (green.get("KK1")["visible"], green.get("KK2")["visible"]))
        own, theirs = self.roll(green, (5, 5) if with_radio_yambo else (5, 1))
        first, lines = self.act(green, brown, 0, Act(1, TANK, 75), None, None)
        own += lines[0]
        theirs += lines[1]
        if with_radio_yambo:
            first, lines = self.act(green, brown, 1, Act(2, KANON, 87), first, None)
            own += lines[0]
            theirs += lines[1]
            model.rotate()
            self.drawer_reads(green, 5)
            own += taking(5, self.NEW)
            theirs += opponent_took(5, self.NEW) + ["executing automatic radio yambo procedure"]
        else:
            # The .pnc is not waited for, and a pass of bert's copy looks at
            # the end of the turn before it: bert must be done with the move
            # when the choice is made, as the time a player takes over the
            # boxes leaves him.
            brown.wait_line_count(SEPARATOR_56, self.separators + 2)
            brown.wait_waiting("opponent's turn")
            green.click("cmdEindeBeurt")
        return own, theirs

    def third_card(self, green, phase):
        """The box, then the new card shown at once in the panel with "Verwerp"."""
        self.box(green, PERSONNEL_TITLE, THIRD_TEXT, "ok")
        green.wait_phase(phase)
        self.assertPanel(green, "3", self.NEW)

    def assertPanel(self, c, tag, card):
        self.assertEqual(tag, c.get("Personnel")["tag"])
        self.assertShown(c, "Personnel", "imgPersTekst", card)
        gebruik, sluit = c.get("cmdKompasGebruik"), c.get("cmdKompasSluit")
        self.assertEqual(("Verwerp", True, True), (gebruik["caption"], gebruik["visible"], gebruik["enabled"]))
        self.assertEqual(("Sluit", True, True), (sluit["caption"], sluit["visible"], sluit["enabled"]))
        self.assertIs(False, c.get("cmdEindeBeurt")["enabled"])
        for name in ("KK1", "KK2", "cmdGooi"):
            self.assertIs(False, c.get(name)["visible"], name + " while a card is shown")

    def close_and_open(self, c, phase, kk, tag, card):
        """Sluit back to the three miniatures, then a click on one of them."""
        c.click("cmdKompasSluit")
        c.wait_phase(phase + 1)
        self.assertIs(False, c.get("Personnel")["visible"])
        for name in ("KK1", "KK2", "KK3"):
            control = c.get(name)
            self.assertEqual((True, True), (control["visible"], control["enabled"]), name + " after Sluit")
        self.assertIs(False, c.get("cmdEindeBeurt")["enabled"])
        self.assertIs(False, c.get("cmdGooi")["visible"])
        c.click(kk)
        c.wait_phase(phase)
        self.assertPanel(c, tag, card)

    def given_up(self, green, which):
        """Verwerp pressed: the panel and KK3 go, the hand's two miniatures stay."""
        green.click("cmdKompasGebruik")
        green.wait_line_count("ending turn at ", 1)
        for name, visible in (("Personnel", False), ("KK3", False), ("KK1", True), ("KK2", True),
                              ("cmdKompasGebruik", False), ("cmdKompasSluit", False)):
            self.assertIs(visible, green.get(name)["visible"], name + " after Verwerp")

    def finish(self, green, brown, model, own, theirs, given_up):
        next_card = model.top()
        own += ["returning compas card number %d at " % given_up, "next compas card is number %d" % next_card]
        theirs += ["opponent dumped card number %d at " % self.NEW, "next compas card is number %d" % next_card]
        self.turn_ended(green, brown, self.ended, own, theirs)
        for c in (green, brown):
            self.assertDeck(c, model, "after the choice")
        p = brown.position()
        self.assertEqual(["2"] + [str(card) for card in model.hands[0]],
                         [army_value(p, 1, "CARD", key) for key in ("CNT", "CRD1", "CRD2")])
        self.assertEqual((str(given_up), "30"), (p["STACK"]["CARD01"], p["STACK"]["POINT"]))

    def test_first_hand_card_given_up(self):
        """The first draw: the new card shown, Sluit, KK1 opened (with its
        information), Verwerp: the 21 goes under the deck, the 23 takes its slot."""
        green, brown, model = self.arrange(False)
        with FolderWatch(self.shared) as watch:
            own, theirs = self.start(green, brown, model, False)
            self.box_waiting_for(green, PERSONNEL_TITLE)
            self.assertEqual(29, green.state()["GamePhase"])
            self.third_card(green, 31)
            self.close_and_open(green, 31, "KK1", "1", 21)
            green.click("cmd_Info")
            self.box(green, INFO[21][0], INFO[21][1], "ok")
            green.wait_phase(31)
            self.given_up(green, 1)
            model.give_up(1, 1)
            own += self.THIRD_LINES
            self.finish(green, brown, model, own, theirs, 21)
        self.assertEqual(["anna.wrp", "anna.act", "anna.pnc", "anna.eot"], watch.seen)
        self.assertEqual([[23, 27], [0, 0]], green.state()["CardHand"])

    def given_up_second(self, kk, which, given_up, pnc):
        """The second draw, after the Radio Yambo card 5 that bert has not yet
        closed: the .pnc waits in the folder with its three keys."""
        green, brown, model = self.arrange(True)
        with FolderWatch(self.shared) as watch:
            own, theirs = self.start(green, brown, model, True)
            self.box_waiting_for(brown, OPPONENT_DREW_TITLE)
            self.box_waiting_for(green, PERSONNEL_TITLE)
            self.assertEqual(35, green.state()["GamePhase"])
            self.third_card(green, 37)
            if kk:
                self.close_and_open(green, 37, "KK1", "1", self.HAND[0])
                self.close_and_open(green, 37, kk, str(which), self.NEW if which == 3 else self.HAND[which - 1])
            after_radio_yambo = model.copy()
            self.given_up(green, which)
            model.give_up(1, which)
            green.wait_waiting("consumed")
            self.assertEqual(pnc, self.file_bytes("anna.pnc"))
            self.assertDeck(green, model, "after Verwerp")
            self.assertDeck(brown, after_radio_yambo, "before it reads the .pnc")
            self.assertEqual(deck_differences(model, after_radio_yambo),
                             sorted(position_differences(green.position(), brown.position())))
            self.watcher_sees(brown, 5)
            own += self.THIRD_LINES
            self.finish(green, brown, model, own, theirs, given_up)
        self.assertEqual(["anna.wrp", "anna.act", "anna.act", "anna.ryc", "anna.pnc", "anna.eot"], watch.seen)
        return green

    def test_second_hand_card_given_up(self):
        """KK2 on the second draw: the 27 goes under the deck, the 23 takes the second slot."""
        green = self.given_up_second("KK2", 2, 27, message(CARDOUT=27, CARDIN=23, CARDIND=2))
        self.assertEqual([[21, 23], [0, 0]], green.state()["CardHand"])

    def test_new_card_given_up(self):
        """KK3 on the second draw, at once and after looking at KK1 and KK3
        again: the hand stays, the 23 goes under the deck."""
        green = self.given_up_second("KK3", 3, 23, message(CARDOUT=23, CARDIN=23, CARDIND=3))
        self.assertEqual([[21, 27], [0, 0]], green.state()["CardHand"])


# -- a shot at the jeep -----------------------------------------------------------------


class JeepShot(CardTest):
    """A tank with three companies on 47 shoots with a 2 at the enemy jeep,
    which carries two companies on 49. The hands in the saved game decide
    whether the jeep's owner is asked for his Vrijgeleide, and what comes of
    it."""

    def begin_shot(self, shooter_side, hands):
        """Resumes the game at a turn of the shooter's army with the hands
        {side: cards}, the deck holding the other cards; returns the shooter,
        the defender and the deck."""
        turn = 9 if shooter_side == 1 else 10
        target = 3 - shooter_side
        held = [card for side in (1, 2) for card in hands.get(side, ())]
        padded = {side: (list(hands.get(side, ())) + [0, 0])[:2] for side in (1, 2)}
        model = DeckModel(deck_without(*held), hands=(padded[1], padded[2]),
                          counts=(len(hands.get(1, ())), len(hands.get(2, ()))))
        p = new_game_sections(1, turn)
        set_vehicle(p, shooter_side, TANK, 47, 3, "tank_%d_3_%s" % (shooter_side, "o" if shooter_side == 1 else "w"))
        set_vehicle(p, target, JEEP, 49, 2, "jeep_%d_2_w" % target)
        set_army_value(p, shooter_side, "KOMP", "KMP", 12)
        set_army_value(p, target, "KOMP", "KMP", 13)
        model.write_into(p)
        dice = [2, 1]
        green, brown = self.resume(p, dice if shooter_side == 1 else [], dice if shooter_side == 2 else [])
        self.shooter_side, self.target_side = shooter_side, target
        shooter, defender = (green, brown) if shooter_side == 1 else (brown, green)
        self.ended = defender.count_lines(TURN_ENDED)
        shooter.wait_phase(0)
        defender.wait_waiting("opponent's turn")
        return shooter, defender, model

    def aim(self, shooter):
        """The roll, die 1 and the tank, and a double click on the jeep."""
        self.own, self.theirs = self.roll(shooter, (2, 1))
        shooter.dblclick("Dice_1")
        shooter.wait_phase(5)
        shooter.dblclick(shooter.vehicle(TANK))
        shooter.wait_phase(8)
        shooter.dblclick(shooter.vehicle(JEEP, self.target_side))

    def names(self, shooter):
        return {"ask": shooter.name + ".ask", "ans": ("bert" if shooter.name == "anna" else "anna") + ".ans"}

    def jeep(self, c):
        p = c.position()
        return ([army_value(p, self.target_side, section, veh_key(JEEP)) for section in ("VEHPOS", "CMPVEH", "VEHTAG")]
                + [army_value(p, self.target_side, "KOMP", key) for key in ("RES", "KMP", "PRS")])

    def asked(self, shooter, defender, answer, model, box=True):
        """Question 1: the shooter's notice stands while the defender answers;
        the answer waits in the folder until the notice is closed. With a Yes
        the defender's 29 goes under his deck at once, the shooter's mirror
        follows when it reads the answer: `model` becomes the defender's deck,
        and the shooter's is returned."""
        self.box_waiting_for(shooter, ASKING_TITLE)
        if box:
            self.box(defender, ATTACKED_TITLE, ATTACKED_TEXT, "yes" if answer == 2 else "no", ("yes", "no"))
        ans = self.names(shooter)["ans"]
        self.wait_file(ans)
        self.assertEqual(message(ANSWER=answer), self.file_bytes(ans))
        self.assertEqual("phase 8", shooter.state()["Waiting"])
        before = model.copy()
        mirrored = self.safe_conduct_used(model) if answer == 2 else model.copy()
        self.assertDeck(defender, model, "after answering %d" % answer)
        self.assertDeck(shooter, before, "before reading the answer")
        decks = {defender.name: model, shooter.name: before}
        self.assertEqual(deck_differences(decks["anna"], decks["bert"]),
                         sorted(position_differences(self.green.position(), self.brown.position())),
                         "the positions part only by the defender's card")
        self.box(shooter, ASKING_TITLE, ASKING_TEXT, "ok")
        return mirrored

    def shot_done(self, shooter, defender, code, known=()):
        """The shooter ends his turn after the shot; both logs and positions."""
        shooter.wait_phase(9)
        self.assertNoBox(shooter)
        self.assertEqual(code, shooter.state()["ActCode"][0])
        first = (TANK, code, 47, 49)
        self.own += own_action_lines(1, first, False)
        if code == 0:
            self.theirs += [SEPARATOR_56, "opponent takes action with following details at ",
                            "uses dice 1 to shoot at your jeep, but was annuled with your card", SEPARATOR_56]
        else:
            self.theirs += opponent_action_lines(1, TANK, 2, 47, 49, self.shooter_side)
        shooter.click("cmdEindeBeurt")
        self.turn_ended(shooter, defender, self.ended, self.own, self.theirs, known)

    def record(self, shooter, code):
        """The .act of the shot: phase 8 writes VEH before DICE; the tank keeps its heading."""
        heading = "o" if self.shooter_side == 1 else "w"
        return message(DIRECT={"o": 1, "w": 3}[heading], VEH=TANK, DICE=1, ACT=code, FROM=47, TO=49,
                       VEHTAG="tank_%d_3_%s" % (self.shooter_side, heading))

    def destroyed(self):
        """The jeep out of the game, with the tag of a destroyed vehicle
        (heading o for both armies), its companies in the reserve."""
        return ["0", "0", "jeep_%d_0_o" % self.target_side, "12", "13", "0"]

    def known_slot(self):
        """The defender keeps his spent Vrijgeleide in its slot, the shooter's
        mirror closes the hand up over it: the saved position says so."""
        if self.target_side == 2:
            return [("CARD_EXT", "CRD1", "0", "29")]
        return [("CARD_LOK", "CRD1", "29", "0")]

    def safe_conduct_used(self, model):
        """The defender's 29, his only card, under the deck: `model` becomes his
        own deck; the shooter's mirror of it is returned."""
        d = self.target_side - 1
        model.push(29)
        model.counts[d] = 0
        mirrored = model.copy()
        mirrored.hands[d][0] = mirrored.hands[d][1]
        return mirrored

    def test_safe_conduct_sends_the_jeep_home(self):
        """bert holds the 29 and uses it; anna holds nothing: the jeep goes
        back to its island and its two companies to the camp, on both copies;
        the shot travels as action 0."""
        green, brown, model = self.begin_shot(1, {2: [29]})
        with FolderWatch(self.shared) as watch:
            self.aim(green)
            mirrored = self.asked(green, brown, 2, model)
            self.box_waiting_for(green, COVERED_TITLE)
            self.assertDeck(green, mirrored, "after the answer")
            self.assertDeck(brown, model, "after using the 29")
            self.assertEqual(self.known_slot(), position_differences(green.position(), brown.position()))
            self.box(green, COVERED_TITLE, COVERED_TEXT, "ok")
            self.box_waiting_for(brown, ACCEPTED_TITLE)
            green.wait_phase(9)
            home = ["118", "0", "jeep_2_0_o", "10", "15", "0"]
            self.assertEqual(home, self.jeep(green))
            self.assertEqual(["49", "2", "jeep_2_2_w", "10", "13", "0"], self.jeep(brown),
                             "the defender's jeep stays until its box is closed")
            # The record of the die spent waits for bert: action 0.
            self.assertEqual(self.record(green, 0), self.file_bytes("anna.act"))
            self.box(brown, ACCEPTED_TITLE, ACCEPTED_TEXT, "ok")
            brown.wait_until(lambda: self.jeep(brown) == home, "the jeep home on bert's copy")
            self.theirs += [USED_29, APPROVED_29]
            self.shot_done(green, brown, 0, self.known_slot())
        self.assertEqual(["anna.wrp", "anna.ask", "bert.ans", "anna.ask", "anna.act", "anna.eot"], watch.seen)
        for c, held in ((green, mirrored), (brown, model)):
            self.assertEqual(home, self.jeep(c), c.label)
            self.assertDeck(c, held, "after the turn")
            self.assertEqual(0, c.state()["BoardCell"][49 - 1], c.label)

    def test_safe_conduct_declined(self):
        """bert holds the 29 and answers no: the jeep is destroyed as by any
        shot, its companies to the reserve, and bert keeps the card."""
        green, brown, model = self.begin_shot(1, {2: [29]})
        with FolderWatch(self.shared) as watch:
            self.aim(green)
            self.asked(green, brown, 1, model)
            self.shot_done(green, brown, 2)
        self.assertEqual(["anna.wrp", "anna.ask", "bert.ans", "anna.act", "anna.eot"], watch.seen)
        for c in (green, brown):
            self.assertEqual(self.destroyed(), self.jeep(c), c.label)
            self.assertDeck(c, model, "after the turn")

    def contra(self, shooter_side, shooter_hand, text):
        """The defender uses his 29, the shooter his 24 against it: the jeep is
        destroyed after all, and both cards lie under both decks."""
        shooter, defender, model = self.begin_shot(shooter_side, {shooter_side: shooter_hand, 3 - shooter_side: [29]})
        s = shooter_side - 1
        with FolderWatch(self.shared) as watch:
            self.aim(shooter)
            mirrored = self.asked(shooter, defender, 2, model)
            self.box_waiting_for(shooter, COVERED_TITLE)
            self.assertDeck(shooter, mirrored, "after the answer")
            self.assertDeck(defender, model, "after using the 29")
            self.box(shooter, COVERED_TITLE, text, "yes", ("yes", "no"))
            self.box_waiting_for(defender, BEATEN_TITLE)
            shooter.wait_phase(9)
            before = model.copy()
            for held in (model, mirrored):
                held.push(24)
                if held.counts[s] == 2 and held.hands[s][0] == 24:
                    held.hands[s][0] = held.hands[s][1]
                held.counts[s] -= 1
            self.assertDeck(shooter, mirrored, "after using the 24")
            self.assertDeck(defender, before, "while its box is open")
            self.assertEqual(["49", "2"], self.jeep(defender)[:2], "the jeep stands until the box is closed")
            self.assertEqual(self.record(shooter, 2), self.file_bytes(shooter.name + ".act"))
            self.box(defender, BEATEN_TITLE, BEATEN_TEXT, "ok")
            self.theirs += [USED_29, ANNULLED_29]
            self.shot_done(shooter, defender, 2, self.known_slot())
        names = self.names(shooter)
        self.assertEqual([shooter.name + ".wrp", names["ask"], names["ans"], names["ask"], shooter.name + ".act",
                          shooter.name + ".eot"], watch.seen)
        for c, held in ((shooter, mirrored), (defender, model)):
            self.assertEqual(self.destroyed(), self.jeep(c), c.label)
            self.assertDeck(c, held, "after the turn")
            self.assertEqual([24, 29], c.state()["CompassStack"][:2], "both cards under the deck, " + c.label)
        return shooter, defender

    def test_contra_spionage_beats_safe_conduct(self):
        """anna holds the 24 alone and uses it against bert's 29: the jeep is
        destroyed on both copies, and 24 and 29 are under both decks."""
        self.contra(1, [24], CONTRA_ONE_TEXT)

    def test_contra_spionage_from_two_cards(self):
        """bert shoots at anna's jeep holding the 24 and the 31: the text of
        two cards, and the 31 closes up into the first slot."""
        shooter, defender = self.contra(2, [24, 31], CONTRA_TWO_TEXT)
        for c in (shooter, defender):
            self.assertEqual(([31, 31], 1), (c.state()["CardHand"][1], c.state()["CardCount"][1]), c.label)

    def test_other_card_buys_nothing(self):
        """bert holds the 31 but no 24: anna's Vrijgeleide is spent, the shot
        goes on and the jeep is destroyed; anna is told nothing more."""
        brown, green, model = self.begin_shot(2, {2: [31], 1: [29]})
        with FolderWatch(self.shared) as watch:
            self.aim(brown)
            mirrored = self.asked(brown, green, 2, model)
            brown.wait_phase(9)
            self.assertDeck(brown, mirrored, "after the answer")
            self.assertDeck(green, model, "after using the 29")
            self.assertNoBox(green)
            self.theirs += [USED_29]
            self.shot_done(brown, green, 2, self.known_slot())
        self.assertEqual(["bert.wrp", "bert.ask", "anna.ans", "bert.act", "bert.eot"], watch.seen)
        for c, held in ((brown, mirrored), (green, model)):
            self.assertEqual(self.destroyed(), self.jeep(c), c.label)
            self.assertDeck(c, held, "after the turn")

    def unasked(self, shooter_side, hands):
        """No question: the shot goes on at once. A box on either copy would
        hold its turn for good, so the turn's end shows that none came."""
        shooter, defender, model = self.begin_shot(shooter_side, hands)
        with FolderWatch(self.shared) as watch:
            self.aim(shooter)
            self.shot_done(shooter, defender, 2)
        self.assertEqual([shooter.name + ".wrp", shooter.name + ".act", shooter.name + ".eot"], watch.seen,
                         "no .ask, no .ans")
        for c in (shooter, defender):
            self.assertEqual(self.destroyed(), self.jeep(c), c.label)
            self.assertDeck(c, model, "after the turn")
            self.assertFalse(any(line.startswith(USED_29) for line in c.log_lines()), c.label)

    def test_shooter_holding_the_safe_conduct_asks_nothing(self):
        """anna holds the 29 herself, bert the 24: bert is not asked."""
        self.unasked(1, {1: [29], 2: [24]})

    def test_empty_hand_is_not_asked(self):
        """bert shoots at anna's jeep; anna holds no card: she is not asked."""
        self.unasked(2, {2: [21]})

    def test_hand_without_safe_conduct_answers_no_at_once(self):
        """bert holds 21 and 24 but no 29: he is asked, and answers no without a box."""
        green, brown, model = self.begin_shot(1, {2: [21, 24]})
        with FolderWatch(self.shared) as watch:
            self.aim(green)
            self.asked(green, brown, 1, model, box=False)
            self.assertNoBox(brown)
            self.shot_done(green, brown, 2)
        self.assertEqual(["anna.wrp", "anna.ask", "bert.ans", "anna.act", "anna.eot"], watch.seen)
        for c in (green, brown):
            self.assertEqual(self.destroyed(), self.jeep(c), c.label)
            self.assertDeck(c, model, "after the turn")


# -- card files read a turn late ---------------------------------------------------------

OPPONENT_ACTS = "opponent takes action with following details at "


def mirror_dealt(model, side, which, card_in):
    """The other copy's part of a .pnc: hand slot `which` (1, 2) of `side`
    goes onto the top entry of its own deck and the card the file names
    takes the slot; then the top goes under the deck. With 3 only the latter."""
    if which in (1, 2):
        model.stack[model.point - 1] = model.hands[side - 1][which - 1]
        model.hands[side - 1][which - 1] = card_in
    model.rotate()


def mirror_kept(model, side, card):
    """The other copy's part of a .pna: the card the file names into the hand
    of `side`, and the top entry of its own deck taken off."""
    model.counts[side - 1] += 1
    model.hands[side - 1][model.counts[side - 1] - 1] = card
    model.stack[model.point - 1] = 0
    model.point -= 1


class LateCardFiles(CardTest):
    """Neither a kept Personnel card (.pna) nor the choice among three (.pnc)
    waits for the other copy, and nothing waits for them to be taken. bert
    takes anna's .act off the folder before the four seconds in which he
    shows its marks, so that anna's end of turn is written while he still
    shows them; his next pass finds the .eot before the card file, which
    stays in the folder until he follows anna's next turn.

    bert runs at the time scale of a real game, so that the marks stand
    four seconds; anna runs at the tests' pace. anna's tank stands on her
    HQ; with a 5 it crosses 74-75, and she ends the turn at once."""

    SCALES = {"bert": "1"}

    def copy(self, name, local_id, folder, peer, dice):
        x = XServer()
        x.__enter__()
        self.addCleanup(x.__exit__, None, None, None)
        scale = self.SCALES.get(name, self.SCALE)
        kwargs = {"time_scale": scale} if scale else {}
        c = GameCopy(test_game.PROGRAM, x.display, self.root, name, local_id, [folder], [peer], dice=dice, **kwargs)
        c.patience = self.PATIENCE
        self.addCleanup(c.close)
        return c

    def arrange(self, hand, new):
        """Turn 9 of a saved game: anna holds `hand`, `new` lies on top of the deck."""
        model = DeckModel(deck_without(new, *hand) + [new], hands=((list(hand) + [0, 0])[:2], (0, 0)),
                          counts=(len(hand), 0))
        green, brown = self.resume(hq_pair_sections(9, model), [5, 1], [])
        self.ended = brown.count_lines(TURN_ENDED)
        return green, brown, model

    def crossing(self, green, brown):
        """The roll and the tank across 74-75; returns, with the lines of both
        logs, once bert has taken the .act off the folder to show its marks."""
        green.wait_phase(0)
        brown.wait_waiting("opponent's turn")
        own, theirs = self.roll(green, (5, 1))
        shown = brown.count_lines(OPPONENT_ACTS)
        # The replay opens and closes with a separator, the closing one after the marks.
        self.separators = brown.count_lines(SEPARATOR_56) + 1
        _, lines = self.act(green, brown, 0, Act(1, TANK, 75), None, None)
        act = os.path.join(self.shared, "anna.act")
        brown.wait_until(lambda: brown.count_lines(OPPONENT_ACTS) > shown and not os.path.exists(act),
                         "bert taking anna.act to show its marks")
        return own + lines[0], theirs + lines[1]

    def ended_while_marked(self, green, brown, card_file, contents):
        """anna's .eot is written while bert still shows the marks, the card
        file before it; both stand in the folder."""
        green.wait_until(lambda: green.state()["LastSentFile"].endswith("/anna.eot"), "anna's .eot written")
        held = {}
        for name in (card_file, "anna.eot"):
            try:
                held[name] = self.file_bytes(name)
            except FileNotFoundError:
                held[name] = None
        # Until the replay's closing separator bert has made no pass since
        # taking the .act: the files were read before he could take them.
        self.assertEqual(self.separators, brown.count_lines(SEPARATOR_56),
                         "bert still shows the marks when anna's turn ends")
        # The end of the turn: the digest of anna's position, then TURN.
        eot = held.pop("anna.eot")
        self.assertEqual({card_file: contents}, held)
        self.assertRegex(eot, rb"^\[GENERAL\]\r\nHASH=[0-9a-f]{16}\r\nTURN=9\r\n$")

    def turn_skipped_then_read(self, green, brown, late_lines, anna_deck, bert_deck, card_file):
        """bert skips turn 10 with the card file still in the folder; the first
        pass of his following of turn 11 reads it, before anna does anything."""
        brown.wait_phase(0)
        self.assertTrue(os.path.exists(os.path.join(self.shared, card_file)),
                        "%s in the folder during bert's turn" % card_file)
        ended = green.count_lines(TURN_ENDED)
        with FolderWatch(self.shared) as watch:
            brown.click("cmdEindeBeurt")
            green.wait_line_count(TURN_ENDED, ended + 1)
            green.wait_phase(0)
            brown.wait_line_count(late_lines[0], 1)
            brown.wait_waiting("opponent's turn")
        self.assertEqual(["bert.eot"], watch.seen)
        self.assertFalse(os.path.exists(os.path.join(self.shared, card_file)), card_file + " taken at last")
        self.expect_log(brown, ["ending turn at "] + late_lines)
        self.expect_log(green, [TURN_ENDED])
        self.assertEqual(11, green.state()["TurnNumber"])
        self.assertDeck(green, anna_deck, "at the start of turn 11")
        self.assertDeck(brown, bert_deck, "after reading %s a turn late" % card_file)
        self.assertSamePosition(green, brown, deck_differences(anna_deck, bert_deck))

    def test_choice_among_three_read_a_turn_late(self):
        """anna holds 21 and 27 and draws the 23; she opens KK2 and gives up
        the 27 before bert has shown her move. bert ends her turn without the
        .pnc: the positions part in the 23 and 27 of her second slot and in
        all 30 entries of the stack, which moved up one as the 27 went under
        the deck. In turn 10 bert skips, the deck stays as it was, and the
        .pnc read at the start of turn 11 brings both copies together again."""
        green, brown, model = self.arrange((21, 27), 23)
        with FolderWatch(self.shared) as watch:
            own, theirs = self.crossing(green, brown)
            green.click("cmdEindeBeurt")
            self.box(green, PERSONNEL_TITLE, THIRD_TEXT, "ok")
            green.wait_phase(31)
            green.click("cmdKompasSluit")
            green.wait_phase(32)
            green.click("KK2")
            green.wait_phase(31)
            self.assertEqual("2", green.get("Personnel")["tag"])
            green.click("cmdKompasGebruik")
            before = model.copy()
            model.give_up(1, 2)
            self.ended_while_marked(green, brown, "anna.pnc", message(CARDOUT=27, CARDIN=23, CARDIND=2))
            own += ThirdCard.THIRD_LINES + ["returning compas card number 27 at ",
                                            "next compas card is number %d" % model.top()]
            known = deck_differences(model, before)
            self.turn_ended(green, brown, self.ended, own, theirs, known)
        self.assertEqual(["anna.wrp", "anna.act", "anna.pnc", "anna.eot"], watch.seen)
        self.assertEqual(sorted([("CARD_LOK", "CRD2", "23", "27")] +
                                [("STACK", "CARD%02d" % (i + 1), str(model.stack[i]), str(before.stack[i]))
                                 for i in range(30)]), known)
        self.assertFalse(any(line.startswith("opponent dumped card number ") for line in brown.log_lines()))
        self.assertDeck(green, model, "after giving up the 27")
        self.assertDeck(brown, before, "without the .pnc")
        self.assertEqual([[21, 23], [0, 0]], green.state()["CardHand"])

        mirror_dealt(before, 1, 2, 23)
        self.turn_skipped_then_read(green, brown, ["opponent dumped card number 23 at ",
                                                   "next compas card is number %d" % before.top()],
                                    model, before, "anna.pnc")
        self.assertEqual([], deck_differences(model, before), "the deck stood still between")

    def test_kept_card_read_a_turn_late(self):
        """anna holds the 21 and keeps the 26 she draws; bert ends her turn
        without the .pna: the positions part in her count, her second slot,
        the top entry and the stack's count. In turn 10 bert skips, and the
        .pna read at the start of turn 11 brings both copies together again."""
        green, brown, model = self.arrange((21,), 26)
        with FolderWatch(self.shared) as watch:
            own, theirs = self.crossing(green, brown)
            green.click("cmdEindeBeurt")
            before = model.copy()
            self.assertEqual(26, model.keep(1))
            self.box(green, PERSONNEL_TITLE, KEPT_TEXT, "ok")
            self.ended_while_marked(green, brown, "anna.pna", message(CARD=26))
            own += taking(26, model.top())
            known = deck_differences(model, before)
            self.turn_ended(green, brown, self.ended, own, theirs, known)
        self.assertEqual(["anna.wrp", "anna.act", "anna.pna", "anna.eot"], watch.seen)
        self.assertEqual(sorted([("CARD_LOK", "CNT", "2", "1"), ("CARD_LOK", "CRD2", "26", "0"),
                                 ("STACK", "CARD31", "0", "26"), ("STACK", "POINT", "30", "31")]), known)
        self.assertFalse(any(line.startswith("opponent took compas card number ") for line in brown.log_lines()))
        self.assertDeck(green, model, "after keeping the 26")
        self.assertDeck(brown, before, "without the .pna")

        mirror_kept(before, 1, 26)
        self.turn_skipped_then_read(green, brown, opponent_took(26, before.top()), model, before, "anna.pna")
        self.assertEqual([], deck_differences(model, before), "the deck stood still between")


def main():
    if len(sys.argv) < 3:
        sys.stderr.write(__doc__)
        return 2
    test_game.PROGRAM = os.path.abspath(sys.argv[1])
    return run_tests(sys.modules[__name__], sys.argv[2:])


if __name__ == "__main__":
    sys.exit(main())
