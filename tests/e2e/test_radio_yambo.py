#!/usr/bin/env python3
"""End-to-end tests of the Radio Yambo cards between two copies of the
program: each of the twenty cards drawn in a real turn, its effect on the
drawer's copy and on the opponent's, the picks in the Stock or among the
enemy vehicles, the .ray that reports them, and the places where the two
copies knowingly part afterwards.

    python3 test_radio_yambo.py PATH/TO/valkenhorn TestClass[.test_method]

Each scenario resumes a saved game in which the drawer's tank stands on its
HQ and the card lies on top of the deck. With a five the tank drives across
a forward post, to 75 or 96, and the turn is ended: the card is drawn.
The positions of both copies are read before the card acts and
after, and the changes the card makes are asserted on each copy; then both
positions are compared with the kept differences asserted exactly, and the
game goes on for a turn on each side.

Exit code 0 when all pass, 1 on a failure, 77 when the tests were skipped."""

import os
import sys

# No byte-code caches in the source tree.
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import test_game  # noqa: E402
from game_session import (CAMP, COMMANDO, GENIE, HQ, INFANTRY, ISLAND, JEEP, KANON, TANK, FolderWatch,  # noqa: E402
                          army_value, new_game_sections, set_army_value, set_vehicle,
                          side_sections, veh_key)
from test_cards import (OPPONENT_DREW_TEXT, OPPONENT_DREW_TITLE, CardTest, DeckModel,  # noqa: E402
                        deck_without, message, opponent_took, taking)
from test_game import TURN_ENDED, Act, Turn  # noqa: E402
from test_personnel import changes  # noqa: E402
from valkenhorn_session import run_tests  # noqa: E402

INFANTRY3 = INFANTRY + 2

# The messages on the board, by card.
MESSAGES = {
    1: "dringend brandstofdienst", 2: "vertrouwelijk luchtaanval", 3: "mededeling raad voor de dienstplicht",
    4: "speciaal algemene mobilisatie", 5: "exclusief muiterij", 6: "operatie luipaard",
    7: "stop brandinstrukties uitvoeren", 8: "laatste nieuws militaire aanslag", 9: "telex voedselvergiftiging",
    10: "voorrang militaire ambulance", 11: "nieuwsbericht tse tse vlieg", 12: "officieel ministerie van oorlog",
    13: "bericht verloven ingetrokken", 14: "oproep van het rode kruis gele koorts",
    15: "nieuwsbericht nieuwjaarsfeest", 16: "melding weerbericht", 17: "rechtstreekse uitzending carnavalsfeest",
    18: "laatste nieuws hulp van de geallieerden", 19: "zeer geheim spionage", 20: "alarm mijnopruimingsdienst",
}
CLICK_TO_CLOSE = " - klik op deze boodschap om de Radio Yambo kaart te sluiten en uit te voeren"
SHOWN_CARDS = (1, 11, 19)
CHOSEN_CARDS = (4, 6, 12, 18)
SHOWN_TEXT = ("Je tegenspeler heeft als kompaskaart het radio yambo bericht ontvangen die u nu te zien krijgt. "
              "Klik 'OK' om dit bericht en de kaart te sluiten.")

# The picks and the wait for the opponent on the drawer's board.
PICK_ONE_OF_STOCK = ("U mag een voertuig naar je kamp overbrengen vanuit de 'stock'. dubbelklik op het gewenste "
                     "voertuig.")
PICK_YOUR_VEHICLE = "U mag je voertuig naar je kamp overbrengen vanuit de 'Stock'. dubbelklik op het voertuig."
PICK_TWO = ("U mag twee voertuigen naar je kamp overbrengen vanuit de 'Stock'. dubbelklik op de gewenste "
            "voertuigen.")
PICK_ENEMY = "U mag een voertuig van de tegenstander uit het spel nemen. dubbelklik op het gewenste voertuig."
PLEASE_WAIT = ("even geduld aub, wijzigingen door deze radio yambo kaart worden aangebracht bij je tegenspeler")

SPY_TITLE = "Geheime Spionage"
SPY_EMPTY = "Uw tegenstander heeft momenteel geen Personnel kaarten in bezit."

# The opponent's run log.
SHOWING = "showing radio yambo info"
AUTOMATIC = "executing automatic radio yambo procedure"
MIRRORED = ["executing specific radio yambo procedure", "executing radio yambo mirror procedure"]
LOSES_THREE = "opponent looses 3 compagnies due to radio yambo card at "
LEOPARD = "lost one of my vehicles due to operation leopard at "
GOT_BACK = {TANK: "opponent got his tank back at ", KANON: "opponent got a canon back at ",
            INFANTRY: "opponent got an infantry back at ", COMMANDO: "opponent got a commando back at ",
            GENIE: "opponent got a deminer back at ", JEEP: "opponent got his jeep back at "}
GOT_BACK_12 = dict(GOT_BACK)
GOT_BACK_12[INFANTRY] = "opponent got an infantry vehicle back at "

# Where the drawer's tank crosses its forward post and comes back.
FORWARD = {1: 75, 2: 96}


# An effect's value that may be anything.
ANY = object()


def emptied(side, slot):
    """The tag of a vehicle as it stands before the card, with company digit 0."""
    def tag(p):
        old = army_value(p, side, "VEHTAG", veh_key(slot))
        parts = old.split("_")
        parts[2] = "0"
        return "_".join(parts)
    return tag


def got_back(slot, card):
    kind = {0: TANK, 1: KANON, 2: KANON, 3: INFANTRY, 4: INFANTRY, 5: INFANTRY, 6: COMMANDO, 7: COMMANDO,
            8: GENIE, 9: GENIE, 10: JEEP}[slot]
    return (GOT_BACK_12 if card in (12, 18) else GOT_BACK)[kind]


def army(p, side, section, key):
    """The section name of army `side` in c's position p, with the key."""
    return ("%s_%s" % (section, side_sections(p, side)), key)


class RadioYamboTest(CardTest):
    """anna (green) and bert (brown) resume a game at a turn of the drawer's
    army, the card on top of the deck, the drawer's tank on its HQ with one
    company. The tank crosses the forward post with a five and stays there
    (75, 96); the turn is ended and the card drawn."""

    # The turns after the card: the opponent's, then the drawer's. A move
    # out of the camp with a company, or a roll alone where none can move.
    MOVE = Turn((6, 2), [Act(1, INFANTRY3, None, loads=1)])
    ROLL = Turn((1, 1))

    def arrange(self, drawer_side, card, place=None, hands=None, going_on=(MOVE, MOVE), mover=None):
        held = [c for side in (1, 2) for c in (hands or {}).get(side, ())]
        padded = {side: (list((hands or {}).get(side, ())) + [0, 0])[:2] for side in (1, 2)}
        self.model = DeckModel(deck_without(card, *held) + [card], hands=(padded[1], padded[2]),
                               counts=tuple(len((hands or {}).get(side, ())) for side in (1, 2)))
        p = new_game_sections(1, 9 if drawer_side == 1 else 10)
        set_vehicle(p, drawer_side, TANK, HQ[drawer_side], 1, "tank_%d_1_%s" % (drawer_side, "ow"[drawer_side - 1]))
        set_army_value(p, drawer_side, "KOMP", "KMP", 14)
        if place:
            place(p)
        self.model.write_into(p)
        self.going_on_turns = going_on
        self.mover = mover or (TANK, FORWARD[drawer_side], (5, 1))
        dice = {drawer_side: list(self.mover[2]), 3 - drawer_side: []}
        for turn, side in zip(going_on, (3 - drawer_side, drawer_side)):
            dice[side] += list(turn.roll or ())
        green, brown = self.resume(p, dice[1], dice[2])
        self.drawer_side = drawer_side
        drawer, other = (green, brown) if drawer_side == 1 else (brown, green)
        drawer.wait_phase(0)
        other.wait_waiting("opponent's turn")
        self.card = card
        return drawer, other

    # -- the draw

    def drive(self, drawer, other):
        """The mover across the forward post with the first die, then the end
        of the turn; returns the count of ended turns on the other copy and
        the lines of both logs."""
        slot, dest, roll = self.mover
        ended = other.count_lines(TURN_ENDED)
        own, theirs = self.roll(drawer, roll)
        first, lines = self.act(drawer, other, 0, Act(1, slot, dest), None, None)
        drawer.click("cmdEindeBeurt")
        return ended, own + lines[0], theirs + lines[1]

    def draw(self, drawer, other, drawer_effect, other_effect, picks=None, ray=None, their_lines=(),
             spied=None):
        """The card drawn and carried out. `drawer_effect` and `other_effect`
        map (side, section, key) to the value the card leaves (section MAIN
        and the mine lists with side None); `picks(drawer)` makes the picks;
        `ray` is the .ray expected for the cards chosen by the drawer.
        Returns the lines of both logs for the turn."""
        card = self.card
        with FolderWatch(self.shared) as watch:
            ended, own, theirs = self.drive(drawer, other)
            self.model.rotate()
            drawer.wait_waiting("Radio Yambo card read")
            drawer.wait_board_text(MESSAGES[card] + CLICK_TO_CLOSE)
            self.assertShown(drawer, "RadioYambo", "imgRaYaTekst", card)
            self.assertDeck(drawer, self.model, "after the draw")
            before_drawer = drawer.position()
            other.wait_line_count("next compas card is number ", 1)
            before_other = other.position()
            self.assertSamePosition(self.green, self.brown)
            if card not in CHOSEN_CARDS:
                self.box_waiting_for(other, OPPONENT_DREW_TITLE)
                self.assertShown(other, "RadioYambo", "imgRaYaTekst", card)
                before_other = other.position()
                self.box(other, OPPONENT_DREW_TITLE, SHOWN_TEXT if card in SHOWN_CARDS else OPPONENT_DREW_TEXT, "ok")
                other.wait_control("RadioYambo", "visible", lambda v: v is False, "the card closed on " + other.label)
                self.wait_effect(other, before_other, other_effect)
            else:
                self.assertNoBox(other)
            self.assertDeck(other, self.model, "after the draw")
            drawer.wait_control("msgBoard", "visible", lambda v: v is True, "the board shown")
            drawer.click("msgBoard")
            drawer.wait_until(lambda: drawer.state()["Waiting"] != "Radio Yambo card read", "the card read")
            drawer.wait_control("RadioYambo", "visible", lambda v: v is False, "the card closed on " + drawer.label)
            if picks:
                picks(drawer)
            if spied is not None:
                spied(drawer)
            if card in CHOSEN_CARDS:
                drawer.wait_board_text(PLEASE_WAIT)
                self.box_waiting_for(other, OPPONENT_DREW_TITLE)
                # Checked at the end, so that the rest of the card is seen through first.
                got = self.file_bytes(drawer.name + ".ray")
                self.later(lambda: self.assertEqual(ray, got, "the .ray as written"))
                before_other = other.position()
                self.box(other, OPPONENT_DREW_TITLE, OPPONENT_DREW_TEXT, "ok")
                self.wait_effect(other, before_other, other_effect)
            self.wait_effect(drawer, before_drawer, drawer_effect)
            for c in (drawer, other):
                faults = [line for line in c.log_lines() if line.startswith("run-time fault")]
                self.assertEqual([], faults, "the card carried out without a fault on " + c.label)
            next_card = self.model.top()
            own += taking(card, next_card)
            theirs += opponent_took(card, next_card)
            if card in SHOWN_CARDS:
                theirs += [SHOWING]
            elif card in CHOSEN_CARDS:
                theirs += MIRRORED
            else:
                theirs += [AUTOMATIC]
            theirs += list(their_lines)
            self.ended, self.own, self.theirs = ended, own, theirs
        files = [drawer.name + ".wrp", drawer.name + ".act", drawer.name + ".ryc"]
        if card in CHOSEN_CARDS:
            files.append(drawer.name + ".ray")
        self.files = files + [drawer.name + ".eot"]
        self.watch = watch
        return own, theirs

    def later(self, check):
        """A check made at the end of the test, after the game went on."""
        self.deferred = getattr(self, "deferred", []) + [check]

    def expected(self, p, effect):
        out = {}
        for (side, section, key), value in effect.items():
            name = (section, key) if side is None else army(p, side, section, key)
            out[name] = value if value is ANY else str(value(p) if callable(value) else value)
        return out

    def wait_effect(self, c, before, effect):
        """Waits until c's position differs from `before` exactly by `effect`
        (ANY: that key may change to anything)."""
        want = self.expected(before, effect)
        loose = [name for name, value in want.items() if value is ANY]

        def found():
            # The turn's end may come before the position is read: the turn number is not the card's.
            got = {(name, key): b for name, key, a, b in changes(before, c.position()) if key != "BEURT"}
            return {k: v for k, v in got.items() if k not in loose}

        fixed = {k: v for k, v in want.items() if k not in loose}
        try:
            c.wait_until(lambda: found() == fixed, "the card's effect on " + c.label, 10)
        except AssertionError:
            pass
        self.assertEqual(sorted(fixed.items()), sorted(found().items()), "the card's changes on " + c.label)

    def finish(self, drawer, other, known=(), later=None):
        """The turn's end on both copies, then a turn on each side; `later`
        gives the known differences after each of those turns."""
        self.turn_ended(drawer, other, self.ended, self.own, self.theirs, known)
        self.assertEqual(self.files, self.watch.seen)
        for c in (drawer, other):
            self.assertDeck(c, self.model, "after the turn")
        later = later or [known, known]
        theirs_turn, next_turn = self.going_on_turns
        self.play(other, drawer, self.resolved(other, theirs_turn), later[0])
        self.play(drawer, other, self.resolved(drawer, next_turn), later[1])
        for check in getattr(self, "deferred", []):
            check()

    def resolved(self, c, turn):
        """A move out of the camp goes to the HQ of the mover."""
        return Turn(turn.roll, [Act(a.die, a.slot, a.dest or HQ[c.side()], a.loads) for a in turn.actions])

    def check_pictures(self, c):
        """A jeep back in its camp (the mirror of cards 12 and 18) has no
        place the tests know: on that copy the jeep's picture is checked by
        name only."""
        p = c.position()
        jeeps = [side for side in (1, 2) if army_value(p, side, "VEHPOS", veh_key(JEEP)) == str(CAMP[side])]
        if not jeeps:
            return super().check_pictures(c)
        for side in jeeps:
            tag = army_value(p, side, "VEHTAG", veh_key(JEEP))
            self.assertTrue(c.get(c.vehicle(JEEP, side))["picture"].endswith(tag + ".gif"), c.label)


# -- cards shown to the opponent only ---------------------------------------------


class ShownCards(RadioYamboTest):
    """The fuel, the tse-tse and the spying: the opponent's copy only shows
    the card and changes nothing."""

    def test_fuel_drawn_by_brown(self):
        """Card 1: BRANDSTOF2 takes 4 on bert's copy only, 3 after his turn,
        2 after the next, in which he only rolls."""
        drawer, other = self.arrange(2, 1, going_on=(self.MOVE, self.ROLL))
        # The turn's end lowers it from 4 to 3 as soon as the card is done.
        self.draw(drawer, other, {(None, "MAIN", "BRANDSTOF2"): ANY}, {})
        self.finish(drawer, other, [("MAIN", "BRANDSTOF2", "0", "3")],
                    [[("MAIN", "BRANDSTOF2", "0", "3")], [("MAIN", "BRANDSTOF2", "0", "2")]])

    def test_tsetse_stings_the_first_vehicle(self):
        """Card 11 drawn by anna, her first infantry (slot 3) on 40, the first
        of her vehicles in the order of the fields: TSETSE1 4 (3 after her
        turn) and TSETSEVEH 3 on her copy only."""
        def place(p):
            set_vehicle(p, 1, INFANTRY, 40, 1, "infanterie_1_1_0_o")
            set_army_value(p, 1, "KOMP", "KMP", 13)

        drawer, other = self.arrange(1, 11, place)
        self.draw(drawer, other, {(None, "MAIN", "TSETSE1"): ANY, (None, "MAIN", "TSETSEVEH"): 3}, {})
        known = [("MAIN", "TSETSE1", "3", "0"), ("MAIN", "TSETSEVEH", "3", "0")]
        self.finish(drawer, other, known, [known, [("MAIN", "TSETSE1", "2", "0"), ("MAIN", "TSETSEVEH", "3", "0")]])

    def test_tsetse_spares_the_jeep(self):
        """Card 11 drawn by anna whose jeep, with one escaped company, is the
        only vehicle on the roads: it crosses 74-75 from 71 with a four and is
        not stung."""
        def place(p):
            set_vehicle(p, 1, JEEP, 71, 1, "jeep_1_1_w")
            set_army_value(p, 1, "KOMP", "KMP", 13)

        drawer, other = self.arrange(1, 11, place, mover=(JEEP, 75, (4, 1)))
        self.draw(drawer, other, {}, {})
        self.finish(drawer, other)

    def test_spying_on_an_empty_hand(self):
        """Card 19 drawn by bert; anna holds no card: the box alone."""
        def spied(drawer):
            self.box(drawer, SPY_TITLE, SPY_EMPTY, "ok")

        drawer, other = self.arrange(2, 19)
        self.draw(drawer, other, {}, {}, spied=spied)
        self.finish(drawer, other)

    def test_spying_on_two_cards(self):
        """Card 19 drawn by anna; bert holds 23 and 27: each is shown in
        turn and closed by a double click on the card's panel."""
        def spied(drawer):
            # Either picture of the panel closes it: the first card by the one, the second by the other.
            for card, image in ((23, "imgPersonnel"), (27, "imgPersTekst")):
                drawer.wait_waiting("Radio Yambo spied card")
                drawer.wait_until(lambda card=card: drawer.get("Personnel")["visible"] and drawer.get(
                    "imgPersTekst")["picture"].endswith("pers_%02d.gif" % (card - 20)), "card %d shown" % card)
                for name in ("imgPersTekst", "imgPersonnel"):
                    self.assertEqual(("DK", "Dubbelklik op deze kaart om te sluiten."),
                                     (drawer.get(name)["tag"], drawer.get(name)["toolTip"]), name)
                drawer.dblclick(image)
            drawer.wait_until(lambda: drawer.state()["Waiting"] != "Radio Yambo spied card", "the spying done")
            self.assertIs(False, drawer.get("Personnel")["visible"], "the last card closed")
            for name in ("imgPersTekst", "imgPersonnel"):
                self.assertEqual(("", ""), (drawer.get(name)["tag"], drawer.get(name)["toolTip"]), name)

        drawer, other = self.arrange(1, 19, hands={2: [23, 27]})
        self.draw(drawer, other, {}, {}, spied=spied)
        self.finish(drawer, other)


# -- cards both copies carry out alone ------------------------------------------------------


class CompanyCards(RadioYamboTest):
    """The cards that move companies between reserve, camp, prison and the
    vehicles: the same on both copies."""

    def test_air_raid(self):
        """Card 2 drawn by anna: bert's camp loses two companies to his reserve."""
        drawer, other = self.arrange(1, 2)
        self.draw(drawer, other, {(2, "KOMP", "RES"): 12, (2, "KOMP", "KMP"): 13},
                  {(2, "KOMP", "RES"): 12, (2, "KOMP", "KMP"): 13})
        self.finish(drawer, other)

    def test_conscription_with_five_in_reserve(self):
        """Card 3 drawn by bert with 5 in reserve: 3 go to his camp."""
        def place(p):
            set_army_value(p, 2, "KOMP", "RES", 5)
            set_army_value(p, 2, "KOMP", "KMP", 19)

        drawer, other = self.arrange(2, 3, place)
        effect = {(2, "KOMP", "RES"): 2, (2, "KOMP", "KMP"): 22}
        self.draw(drawer, other, effect, effect)
        self.finish(drawer, other)

    def test_conscription_with_two_in_reserve(self):
        """Card 3 drawn by anna with 2 in reserve: both go to her camp."""
        def place(p):
            set_army_value(p, 1, "KOMP", "RES", 2)
            set_army_value(p, 1, "KOMP", "KMP", 22)

        drawer, other = self.arrange(1, 3, place)
        effect = {(1, "KOMP", "RES"): 0, (1, "KOMP", "KMP"): 24}
        self.draw(drawer, other, effect, effect)
        self.finish(drawer, other)

    def test_mutiny(self):
        """Card 5 drawn by bert with 3 prisoners: two come back to his camp."""
        def place(p):
            set_army_value(p, 2, "KOMP", "RES", 7)
            set_army_value(p, 2, "KOMP", "PRS", 3)

        drawer, other = self.arrange(2, 5, place)
        effect = {(2, "KOMP", "PRS"): 1, (2, "KOMP", "KMP"): 16}
        self.draw(drawer, other, effect, effect)
        self.finish(drawer, other)

    def test_ambulance(self):
        """Card 10 drawn by bert: two from his reserve to his camp."""
        drawer, other = self.arrange(2, 10)
        effect = {(2, "KOMP", "RES"): 8, (2, "KOMP", "KMP"): 16}
        self.draw(drawer, other, effect, effect)
        self.finish(drawer, other)

    def test_leave_cancelled_with_one_in_reserve(self):
        """Card 13 drawn by anna with one in reserve: it goes to her camp."""
        def place(p):
            set_army_value(p, 1, "KOMP", "RES", 1)
            set_army_value(p, 1, "KOMP", "KMP", 23)

        drawer, other = self.arrange(1, 13, place)
        effect = {(1, "KOMP", "RES"): 0, (1, "KOMP", "KMP"): 24}
        self.draw(drawer, other, effect, effect)
        self.finish(drawer, other)

    def test_attack_with_empty_camp(self):
        """Card 8 drawn by bert with an empty camp: his deminer on the HQ gives
        the first company, then the walk over the fields takes one from his
        commando on 60 and one from his tank on 96. The new digit goes where
        the card writes it, which is the right place for these three."""
        def place(p):
            set_army_value(p, 2, "KOMP", "KMP", 0)
            set_army_value(p, 2, "KOMP", "PRS", 11)
            set_vehicle(p, 2, GENIE, HQ[2], 1, "genie_2_1_0_w")
            set_vehicle(p, 2, COMMANDO, 60, 2, "commando_2_2_0_w")

        drawer, other = self.arrange(2, 8, place, going_on=(self.MOVE, self.ROLL))
        effect = {(2, "KOMP", "RES"): 13, (2, "CMPVEH", veh_key(TANK)): 0, (2, "CMPVEH", veh_key(GENIE)): 0,
                  (2, "VEHTAG", veh_key(GENIE)): "genie_2_0_0_w", (2, "CMPVEH", veh_key(COMMANDO)): 1,
                  (2, "VEHTAG", veh_key(COMMANDO)): "commando_2_1_0_w"}
        self.tank_emptied(drawer, other, 2, effect, [LOSES_THREE])

    def test_carnival_with_empty_camp_garbles_a_cannons_tag(self):
        """Card 17 drawn by anna with an empty camp and her cannon on the HQ:
        the company taken from the cannon is written over the eighth
        character of its tag, where the card has always written it for slots
        0 to 2. "kanon_1_1_o" becomes "kanon_101_o", which names no picture:
        both copies end with a run-time fault as they show it, the other copy
        once its box is closed, the drawer once he has read the card."""
        def place(p):
            set_army_value(p, 1, "KOMP", "KMP", 0)
            set_army_value(p, 1, "KOMP", "PRS", 12)
            set_vehicle(p, 1, KANON, HQ[1], 1, "kanon_1_1_o")

        drawer, other = self.arrange(1, 17, place)
        self.drive(drawer, other)
        drawer.wait_waiting("Radio Yambo card read")
        self.box_waiting_for(other, OPPONENT_DREW_TITLE)
        self.box(other, OPPONENT_DREW_TITLE, OPPONENT_DREW_TEXT, "ok")
        self.ends_on_the_garbled_tag(other)
        drawer.wait_control("msgBoard", "visible", lambda v: v is True, "the board shown")
        drawer.click("msgBoard")
        self.ends_on_the_garbled_tag(drawer)

    def ends_on_the_garbled_tag(self, c):
        def faulted():
            return any(l.startswith("run-time fault: file not found: ") and l.endswith("/kanon_101_o.gif")
                       for l in c.log_lines())
        c.wait_until(faulted, "the fault of " + c.label)
        dialog = c.wait_dialog_titled("Fout in Valkenhorn")
        self.assertIn("kanon_101_o.gif", dialog["text"])
        c.answer("ok")
        self.assertEqual(3, c.wait_exit(), c.label)

    def tank_emptied(self, drawer, other, side, effect, lines):
        """The tank, which crossed the post with its company, gives it."""
        effect[(side, "VEHTAG", veh_key(TANK))] = emptied(side, TANK)
        self.draw(drawer, other, effect, effect, their_lines=lines)
        self.finish(drawer, other)

    def test_food_poisoning(self):
        """Card 9 drawn by anna: her infantry on 40 with 3 and her cannon on
        50 with 2 keep one each, the rest to her camp; the tank keeps its one."""
        def place(p):
            set_vehicle(p, 1, INFANTRY, 40, 3, "infanterie_1_3_0_o")
            set_vehicle(p, 1, KANON, 50, 2, "kanon_1_2_w")
            set_army_value(p, 1, "KOMP", "KMP", 9)

        drawer, other = self.arrange(1, 9, place)
        effect = {(1, "KOMP", "KMP"): 12, (1, "CMPVEH", veh_key(INFANTRY)): 1, (1, "CMPVEH", veh_key(KANON)): 1,
                  (1, "VEHTAG", veh_key(INFANTRY)): "infanterie_1_1_0_o", (1, "VEHTAG", veh_key(KANON)): "kanon_1_1_w"}
        self.draw(drawer, other, effect, effect)
        self.finish(drawer, other)

    def test_red_cross(self):
        """Card 14 drawn by bert: his tank on 96 and his infantry on 60
        each give one company to his reserve; the jeep on its island none."""
        def place(p):
            set_vehicle(p, 2, INFANTRY, 60, 2, "infanterie_2_2_0_w")
            set_army_value(p, 2, "KOMP", "KMP", 12)

        drawer, other = self.arrange(2, 14, place)
        effect = {(2, "KOMP", "RES"): 12, (2, "CMPVEH", veh_key(TANK)): 0, (2, "CMPVEH", veh_key(INFANTRY)): 1,
                  (2, "VEHTAG", veh_key(INFANTRY)): "infanterie_2_1_0_w"}
        self.tank_emptied(drawer, other, 2, effect, [])


class VehicleCards(RadioYamboTest):
    """The cards that send vehicles to the camp or out of the game, the
    same on both copies."""

    def test_new_year_party(self):
        """Card 15 drawn by anna: the tank on 75 and the infantry on 40
        with 2 companies go to her camp, their companies with them."""
        def place(p):
            set_vehicle(p, 1, INFANTRY, 40, 2, "infanterie_1_2_0_o")
            set_army_value(p, 1, "KOMP", "KMP", 12)

        drawer, other = self.arrange(1, 15, place)
        effect = {(1, "KOMP", "KMP"): 15, (1, "VEHPOS", veh_key(TANK)): 113, (1, "CMPVEH", veh_key(TANK)): 0,
                  (1, "VEHPOS", veh_key(INFANTRY)): 113, (1, "CMPVEH", veh_key(INFANTRY)): 0}
        self.to_camp(drawer, other, effect, 1, (TANK, INFANTRY))

    def to_camp(self, drawer, other, effect, side, slots):
        """Vehicles sent to the camp leave their companies there: company
        digit 0 in the tag, the heading as the move leaves it."""
        for slot in slots:
            effect[(side, "VEHTAG", veh_key(slot))] = ANY
            effect[(side, "DIRVEH", veh_key(slot))] = ANY
        self.draw(drawer, other, effect, effect)
        for c in (drawer, other):
            p = c.position()
            for slot in slots:
                self.assertEqual("0", army_value(p, side, "VEHTAG", veh_key(slot)).split("_")[2], c.label)
        self.assertSamePosition(self.green, self.brown)
        self.finish(drawer, other)

    def test_weather_report_on_both_armies(self):
        """Card 16 drawn by anna: her infantry on the coast road 60 and bert's
        cannon on 10 are lost on both copies, their companies to the camps."""
        def place(p):
            set_vehicle(p, 1, INFANTRY, 60, 1, "infanterie_1_1_0_o")
            set_army_value(p, 1, "KOMP", "KMP", 13)
            set_vehicle(p, 2, KANON, 10, 2, "kanon_2_2_o")
            set_army_value(p, 2, "KOMP", "KMP", 13)

        drawer, other = self.arrange(1, 16, place)
        effect = {(1, "KOMP", "KMP"): 14, (1, "VEHPOS", veh_key(INFANTRY)): 0, (1, "CMPVEH", veh_key(INFANTRY)): 0,
                  (1, "VEHTAG", veh_key(INFANTRY)): ANY, (1, "DIRVEH", veh_key(INFANTRY)): ANY,
                  (2, "KOMP", "KMP"): 15, (2, "VEHPOS", veh_key(KANON)): 0, (2, "CMPVEH", veh_key(KANON)): 0,
                  (2, "VEHTAG", veh_key(KANON)): ANY, (2, "DIRVEH", veh_key(KANON)): ANY}
        self.draw(drawer, other, effect, effect)
        # The move into the camp on the way out leaves the camp's form of the tag.
        for c in (drawer, other):
            p = c.position()
            self.assertEqual(["infanterie", "1", "0", "0"],
                             army_value(p, 1, "VEHTAG", veh_key(INFANTRY)).split("_")[:4])
            self.assertEqual(["kanon", "2", "0"], army_value(p, 2, "VEHTAG", veh_key(KANON)).split("_")[:3])
        self.assertSamePosition(self.green, self.brown)
        self.finish(drawer, other)

    def test_mine_alarm(self):
        """Card 20 drawn by bert: his commando on 60 carrying a mine is lost,
        the mine back in his store, the company to his reserve."""
        def place(p):
            set_vehicle(p, 2, COMMANDO, 60, 1, "commando_2_1_1_w")
            set_army_value(p, 2, "KOMP", "KMP", 13)
            p["MIJN_REB"]["POS00"] = "-6"

        drawer, other = self.arrange(2, 20, place)
        effect = {(2, "KOMP", "RES"): 11, (2, "VEHPOS", veh_key(COMMANDO)): 0, (2, "CMPVEH", veh_key(COMMANDO)): 0,
                  (2, "VEHTAG", veh_key(COMMANDO)): "commando_2_0_0_w", (None, "MIJN_REB", "POS00"): 116}
        self.draw(drawer, other, effect, effect)
        self.finish(drawer, other)

    def test_ceasefire_sends_back(self):
        """Card 7 drawn by anna: her cannon on the HQ goes into her camp on
        both copies; her tank on 75 stays, and bert's tank of the same slot,
        on 94, goes five squares back to 99 on his copy only."""
        def place(p):
            set_vehicle(p, 1, KANON, HQ[1], 1, "kanon_1_1_o")
            set_army_value(p, 1, "KOMP", "KMP", 13)
            set_vehicle(p, 2, TANK, 94, 1, "tank_2_1_w")
            set_army_value(p, 2, "KOMP", "KMP", 14)

        drawer, other = self.arrange(1, 7, place)
        self.ceasefire(drawer, other, 1, 99)

    def test_ceasefire_drawn_by_brown(self):
        """Card 7 drawn by bert: his cannon on the HQ into his camp on both
        copies; his tank on 96 stays, and anna's tank on 50 goes five squares
        back to 45 on her copy only."""
        def place(p):
            set_vehicle(p, 2, KANON, HQ[2], 1, "kanon_2_1_w")
            set_army_value(p, 2, "KOMP", "KMP", 13)
            set_vehicle(p, 1, TANK, 50, 1, "tank_1_1_w")
            set_army_value(p, 1, "KOMP", "KMP", 14)

        drawer, other = self.arrange(2, 7, place)
        self.ceasefire(drawer, other, 2, 45)

    def ceasefire(self, drawer, other, side, to):
        """The cannon of `side` from the HQ into the camp on both copies; the
        opponent's tank to `to` on the opponent's copy only."""
        both = {(side, "KOMP", "KMP"): 14, (side, "VEHPOS", veh_key(KANON)): CAMP[side],
                (side, "CMPVEH", veh_key(KANON)): 0, (side, "VEHTAG", veh_key(KANON)): ANY,
                (side, "DIRVEH", veh_key(KANON)): ANY}
        # The opponent's copy moves its own tank: its field, and its heading as the move leaves it.
        victim = dict(both)
        victim.update({(3 - side, "VEHPOS", veh_key(TANK)): to, (3 - side, "VEHTAG", veh_key(TANK)): ANY,
                       (3 - side, "DIRVEH", veh_key(TANK)): ANY})
        self.draw(drawer, other, both, victim)
        mine, theirs = drawer.position(), other.position()
        for p in (mine, theirs):
            self.assertEqual("0", army_value(p, side, "VEHTAG", veh_key(KANON)).split("_")[2])
            self.assertEqual(str(FORWARD[side]), army_value(p, side, "VEHPOS", veh_key(TANK)))
        role = "EXT" if side == 1 else "LOK"
        known = []
        for section in ("VEHPOS", "DIRVEH", "VEHTAG"):
            at_drawer = army_value(mine, 3 - side, section, veh_key(TANK))
            at_other = army_value(theirs, 3 - side, section, veh_key(TANK))
            if at_drawer != at_other:
                known.append(("%s_%s" % (section, role), veh_key(TANK)) +
                             ((at_drawer, at_other) if side == 1 else (at_other, at_drawer)))
        start = {1: "94", 2: "50"}[side]
        self.assertIn(("VEHPOS_" + role, veh_key(TANK)) + ((start, str(to)) if side == 1 else (str(to), start)), known)
        self.assertSamePosition(self.green, self.brown, known)
        self.finish(drawer, other, known)


# -- cards chosen by the drawer, reported by .ray ------------------------------------------------


class ChosenCards(RadioYamboTest):
    """The general mobilisation, the operation leopard and the two cards of
    the war ministry: the drawer picks in his Stock or among the enemy
    vehicles, the .ray reports the picks, and the opponent's copy mirrors
    them once its box is closed."""

    def stock_pick(self, prompt, *slots):
        def picks(drawer):
            drawer.wait_board_text(prompt)
            for left, slot in zip(range(len(slots), 0, -1), slots):
                drawer.wait_waiting("Radio Yambo stock pick")
                self.assertEqual(left, drawer.state()["StockPicksLeft"])
                drawer.dblclick(drawer.vehicle(slot))
            drawer.wait_until(lambda: drawer.state()["StockPicksLeft"] == 0, "the picks served")
        return picks

    def test_mobilisation_without_lost_vehicle(self):
        """Card 4 drawn by anna, nothing lost: three from her reserve to her
        camp, the .ray goes out all the same and nothing comes back. With no
        pick its V1 is the first vehicle of the action record as the turn left
        it, the tank that crossed the post; bert's copy finds it not lost and
        returns nothing."""
        drawer, other = self.arrange(1, 4)
        effect = {(1, "KOMP", "RES"): 7, (1, "KOMP", "KMP"): 17}
        self.draw(drawer, other, effect, effect, ray=message(CARD=4, V1=TANK, V2=100, V3=100))
        self.finish(drawer, other)

    def test_mobilisation_brings_back_a_cannon(self):
        """Card 4 drawn by bert, his cannon lost by a shot ("kanon_2_0_o"):
        three to his camp and the cannon picked in the Stock. anna's copy
        gives it the tag "kanon_2_0_w" of the mirror."""
        def place(p):
            set_vehicle(p, 2, KANON, 0, 0, "kanon_2_0_o")

        drawer, other = self.arrange(2, 4, place)
        both = {(2, "KOMP", "RES"): 7, (2, "KOMP", "KMP"): 17, (2, "VEHPOS", veh_key(KANON)): 116}
        mirror = dict(both)
        mirror.update({(2, "VEHTAG", veh_key(KANON)): "kanon_2_0_w", (2, "DIRVEH", veh_key(KANON)): ANY})
        self.draw(drawer, other, both, mirror, picks=self.stock_pick(PICK_ONE_OF_STOCK, KANON),
                  ray=message(CARD=4, V1=KANON, V2=100, V3=100), their_lines=[got_back(KANON, 4)])
        known = self.kept(KANON, 2)
        self.finish(drawer, other, known)

    def kept(self, slot, side):
        """The differences of the tag (and heading) of a returned vehicle, green's value first."""
        g, b = self.green.position(), self.brown.position()
        role = "LOK" if side == 1 else "EXT"
        out = []
        for section in ("VEHPOS", "DIRVEH", "VEHTAG"):
            a, c = army_value(g, side, section, veh_key(slot)), army_value(b, side, section, veh_key(slot))
            if a != c:
                out.append(("%s_%s" % (section, role), veh_key(slot), a, c))
        return out

    def test_operation_leopard(self):
        """Card 6 drawn by anna: she picks bert's infantry on 60 with two
        companies. Her copy only sets its field to 0; bert's moves it into
        his camp first (companies to the camp, the camp's tag) and then out."""
        def place(p):
            set_vehicle(p, 2, INFANTRY, 60, 2, "infanterie_2_2_0_w")
            set_army_value(p, 2, "KOMP", "KMP", 13)

        def picks(drawer):
            drawer.wait_board_text(PICK_ENEMY)
            drawer.wait_waiting("Radio Yambo leopard pick")
            self.assertIs(True, drawer.state()["LeopardPick"])
            drawer.dblclick(drawer.vehicle(INFANTRY, 2))
            drawer.wait_until(lambda: drawer.state()["LeopardPick"] is False, "the pick served")

        drawer, other = self.arrange(1, 6, place)
        victim = {(2, "KOMP", "KMP"): 15, (2, "VEHPOS", veh_key(INFANTRY)): 0, (2, "CMPVEH", veh_key(INFANTRY)): 0,
                  (2, "VEHTAG", veh_key(INFANTRY)): ANY, (2, "DIRVEH", veh_key(INFANTRY)): ANY}
        self.draw(drawer, other, {(2, "VEHPOS", veh_key(INFANTRY)): 0}, victim, picks=picks,
                  ray=message(CARD=6, V1=INFANTRY, V2=100, V3=100), their_lines=[LEOPARD])
        tag = army_value(other.position(), 2, "VEHTAG", veh_key(INFANTRY))
        self.assertEqual("0", tag.split("_")[2])
        known = [("KOMP_EXT", "KMP", "13", "15"), ("CMPVEH_EXT", veh_key(INFANTRY), "2", "0")]
        known += [k for k in self.kept(INFANTRY, 2) if k[0] != "VEHPOS_EXT"]
        self.assertIn(("VEHTAG_EXT", veh_key(INFANTRY), "infanterie_2_2_0_w", tag), known)
        self.assertSamePosition(self.green, self.brown, known)
        # bert's infantry leaves his camp with a company in his turn.
        later = sorted([k for k in known if k[0] != "KOMP_EXT"] + [("KOMP_EXT", "KMP", "12", "14")])
        self.finish(drawer, other, sorted(known), [later, later])

    def test_operation_leopard_drawn_by_brown(self):
        """Card 6 drawn by bert: he picks anna's deminer on 40, one company
        aboard, carrying her own mine (mark 1). bert's copy sets the field to
        0 and no more: only an enemy's mine (mark 2) would go back there.
        anna's copy moves the deminer into her camp first, which unloads the
        mine into her store (113) and empties the tag."""
        def place(p):
            set_vehicle(p, 1, GENIE, 40, 1, "genie_1_1_1_o")
            set_army_value(p, 1, "KOMP", "KMP", 14)
            p["MIJN_GER"]["POS00"] = "-8"

        def picks(drawer):
            drawer.wait_board_text(PICK_ENEMY)
            drawer.wait_waiting("Radio Yambo leopard pick")
            self.assertIs(True, drawer.state()["LeopardPick"])
            drawer.dblclick(drawer.vehicle(GENIE, 1))
            drawer.wait_until(lambda: drawer.state()["LeopardPick"] is False, "the pick served")

        drawer, other = self.arrange(2, 6, place)
        picked = {(1, "VEHPOS", veh_key(GENIE)): 0}
        victim = {(1, "KOMP", "KMP"): 15, (1, "VEHPOS", veh_key(GENIE)): 0, (1, "CMPVEH", veh_key(GENIE)): 0,
                  (1, "VEHTAG", veh_key(GENIE)): ANY, (1, "DIRVEH", veh_key(GENIE)): ANY,
                  (None, "MIJN_GER", "POS00"): 113}
        self.draw(drawer, other, picked, victim, picks=picks, ray=message(CARD=6, V1=GENIE, V2=100, V3=100),
                  their_lines=[LEOPARD])
        tag = army_value(other.position(), 1, "VEHTAG", veh_key(GENIE))
        self.assertEqual(["genie", "1", "0", "0"], tag.split("_")[:4])
        self.assertEqual("-8", drawer.position()["MIJN_GER"]["POS00"], "the mine still aboard on bert's copy")
        known = [("KOMP_LOK", "KMP", "15", "14"), ("CMPVEH_LOK", veh_key(GENIE), "0", "1"),
                 ("MIJN_GER", "POS00", "113", "-8")]
        known += [k for k in self.kept(GENIE, 1) if k[0] != "VEHPOS_LOK"]
        self.assertIn(("VEHTAG_LOK", veh_key(GENIE), tag, "genie_1_1_1_o"), known)
        self.assertSamePosition(self.green, self.brown, known)
        # anna's infantry leaves her camp with a company in her turn.
        later = sorted([k for k in known if k[0] != "KOMP_LOK"] + [("KOMP_LOK", "KMP", "14", "13")])
        self.finish(drawer, other, sorted(known), [later, later])

    def test_war_ministry_with_one_lost_vehicle(self):
        """Card 12 drawn by bert with only his commando lost ("_o" of a shot):
        one company to his camp, the commando picked; anna's mirror gives it
        "commando_2_0_0_w"."""
        def place(p):
            set_vehicle(p, 2, COMMANDO, 0, 0, "commando_2_0_0_o")

        drawer, other = self.arrange(2, 12, place)
        both = {(2, "KOMP", "RES"): 9, (2, "KOMP", "KMP"): 15, (2, "VEHPOS", veh_key(COMMANDO)): 116}
        mirror = dict(both)
        mirror.update({(2, "VEHTAG", veh_key(COMMANDO)): "commando_2_0_0_w", (2, "DIRVEH", veh_key(COMMANDO)): ANY})
        self.draw(drawer, other, both, mirror, picks=self.stock_pick(PICK_YOUR_VEHICLE, COMMANDO),
                  ray=message(CARD=12, V1=COMMANDO, V2=-1, V3=100), their_lines=[got_back(COMMANDO, 12)])
        self.finish(drawer, other, self.kept(COMMANDO, 2))

    def test_war_ministry_brings_back_the_jeep(self):
        """Card 12 drawn by anna with only her jeep lost: one company to her
        camp and the jeep picked. Her copy puts it on its island with its own
        tag "jeep_1_0_w", bert's mirror in her camp with "jeep_1_0_o"."""
        def place(p):
            set_vehicle(p, 1, JEEP, 0, 0, "jeep_1_0_w")

        drawer, other = self.arrange(1, 12, place)
        both = {(1, "KOMP", "RES"): 9, (1, "KOMP", "KMP"): 15}
        own = dict(both)
        own[(1, "VEHPOS", veh_key(JEEP))] = ISLAND[1]
        mirror = dict(both)
        mirror.update({(1, "VEHPOS", veh_key(JEEP)): CAMP[1], (1, "VEHTAG", veh_key(JEEP)): "jeep_1_0_o",
                       (1, "DIRVEH", veh_key(JEEP)): ANY})
        self.draw(drawer, other, own, mirror, picks=self.stock_pick(PICK_YOUR_VEHICLE, JEEP),
                  ray=message(CARD=12, V1=JEEP, V2=-1, V3=100), their_lines=[got_back(JEEP, 12)])
        known = self.kept(JEEP, 1)
        self.assertIn(("VEHPOS_LOK", veh_key(JEEP), "115", "113"), known)
        self.assertIn(("VEHTAG_LOK", veh_key(JEEP), "jeep_1_0_w", "jeep_1_0_o"), known)
        self.finish(drawer, other, sorted(known))

    def test_allied_help_drawn_by_brown(self):
        """Card 18 drawn by bert with an infantry and a commando lost by shots
        ("_o"): both picked. anna's mirror gives the infantry the same tag and
        the commando "commando_2_0_0_w"; her log names the infantry vehicle."""
        def place(p):
            set_vehicle(p, 2, INFANTRY + 1, 0, 0, "infanterie_2_0_0_o")
            set_vehicle(p, 2, COMMANDO + 1, 0, 0, "commando_2_0_0_o")

        drawer, other = self.arrange(2, 18, place)
        both = {(2, "KOMP", "RES"): 9, (2, "KOMP", "KMP"): 15, (2, "VEHPOS", veh_key(INFANTRY + 1)): CAMP[2],
                (2, "VEHPOS", veh_key(COMMANDO + 1)): CAMP[2]}
        mirror = dict(both)
        mirror.update({(2, "VEHTAG", veh_key(COMMANDO + 1)): "commando_2_0_0_w",
                       (2, "DIRVEH", veh_key(COMMANDO + 1)): ANY, (2, "DIRVEH", veh_key(INFANTRY + 1)): ANY})
        self.draw(drawer, other, both, mirror, picks=self.stock_pick(PICK_TWO, INFANTRY + 1, COMMANDO + 1),
                  ray=message(CARD=18, V1=INFANTRY + 1, V2=COMMANDO + 1, V3=100),
                  their_lines=[got_back(INFANTRY + 1, 18), got_back(COMMANDO + 1, 18)])
        known = self.kept(INFANTRY + 1, 2) + self.kept(COMMANDO + 1, 2)
        self.assertEqual([], [k for k in known if k[1] == veh_key(INFANTRY + 1)], "the infantry's tag agrees")
        self.assertIn(("VEHTAG_EXT", veh_key(COMMANDO + 1), "commando_2_0_0_w", "commando_2_0_0_o"), known)
        self.finish(drawer, other, sorted(known))

    def test_allied_help_brings_back_two(self):
        """Card 18 drawn by anna with her jeep and a deminer lost: she picks
        both. Her copy puts the jeep on its island with its own tag, bert's
        mirror in the camp with "jeep_1_0_o"."""
        def place(p):
            set_vehicle(p, 1, JEEP, 0, 0, "jeep_1_0_w")
            set_vehicle(p, 1, GENIE, 0, 0, "genie_1_0_0_o")

        drawer, other = self.arrange(1, 18, place)
        both = {(1, "KOMP", "RES"): 9, (1, "KOMP", "KMP"): 15, (1, "VEHPOS", veh_key(GENIE)): 113}
        own = dict(both)
        own[(1, "VEHPOS", veh_key(JEEP))] = ISLAND[1]
        mirror = dict(both)
        mirror.update({(1, "VEHPOS", veh_key(JEEP)): CAMP[1], (1, "VEHTAG", veh_key(JEEP)): "jeep_1_0_o",
                       (1, "DIRVEH", veh_key(JEEP)): ANY, (1, "VEHTAG", veh_key(GENIE)): ANY,
                       (1, "DIRVEH", veh_key(GENIE)): ANY})
        self.draw(drawer, other, own, mirror, picks=self.stock_pick(PICK_TWO, JEEP, GENIE),
                  ray=message(CARD=18, V1=JEEP, V2=GENIE, V3=100),
                  their_lines=[got_back(JEEP, 18), got_back(GENIE, 18)])
        known = self.kept(JEEP, 1) + self.kept(GENIE, 1)
        self.assertIn(("VEHPOS_LOK", veh_key(JEEP), "115", "113"), known)
        self.assertIn(("VEHTAG_LOK", veh_key(JEEP), "jeep_1_0_w", "jeep_1_0_o"), known)
        self.finish(drawer, other, sorted(known))


def main():
    if len(sys.argv) < 3:
        sys.stderr.write(__doc__)
        return 2
    test_game.PROGRAM = os.path.abspath(sys.argv[1])
    return run_tests(sys.modules[__name__], sys.argv[2:])


if __name__ == "__main__":
    sys.exit(main())
