#!/usr/bin/env python3
"""End-to-end tests of the Personnel cards played before the dice, between
two copies of the program: the card opened from the hand and used, the board
text to click, the picks, the announcement to the opponent (.pnu) and his
answer (.ans), the effect on both copies, and what the game knowingly lets
the two copies disagree on afterwards.

    python3 test_personnel.py PATH/TO/valkenhorn TestClass[.test_method]

Each scenario resumes a saved game that both copies hold, with the hands
and the board it needs. The opponent's copy addresses the vehicle of most
cards through its action record, which holds -1 before the dice: for those
cards it ends with a run-time fault while the player waits for its answer.
The Contra spionage and the Vrijgeleide used before the dice are spent with
nothing sent; so are the Marine luchtvaartdienst and the Verbindingsdienst
called off by a double click outside the road squares. The exchange of
prisoners, the Militaire Politie, the Mijnopruimingsdienst and the
Hinderlaag on the jeep go through, and the game goes on for a turn on each
side. After every card both positions are compared, with the differences
the game keeps asserted exactly.

Exit code 0 when all pass, 1 on a failure, 77 when the tests were skipped."""

import contextlib
import os
import signal
import sys

# No byte-code caches in the source tree.
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import test_game  # noqa: E402
from game_session import (CAMP, COMMANDO, GENIE, HQ, INFANTRY, JEEP, KANON, TANK, FolderWatch,  # noqa: E402
                          army_value, new_game_sections, set_army_value, set_vehicle, veh_key)
from test_cards import (ACCEPTED_TEXT, ACCEPTED_TITLE, ASKING_TITLE, ATTACKED_TITLE, CARD_SHOWN,  # noqa: E402
                        COVERED_TEXT, COVERED_TITLE, YOUR_TURN_WITH_CARD, CardTest, DeckModel, deck_differences,
                        deck_without, message)
from test_game import SKIP, TURN_ENDED, Act, Turn  # noqa: E402
from valkenhorn_session import run_tests  # noqa: E402

# -- what the player is shown -----------------------------------------------------

CLICK_TO_PLAY = " - klik op deze boodschap om uw Personnel kaart uit te voeren"
BOARD_NAMES = {21: "camouflage", 22: "uitwisseling van gevangenen", 23: "landingsvaartuigen", 25: "hinderlaag",
               26: "helikopter", 27: "luchtlandingstroepen", 28: "militaire politie", 30: "mijnopruimingsdienst",
               31: "marine luchtvaartdienst", 32: "verbindingsdienst"}
# The prompts of the picks, first and second.
PROMPTS = {
    21: ["dubbelklik op het voertuig waarin je je kompagnieën wilt plaatsen"],
    23: ["dubbelklik op het voertuig dat je vanaf de haven wilt laten landen op één van de kustwegen",
         "dubbelklik op een vakje waar je voertuig moet komen op één van de kustwegen"],
    25: ["dubbelklik op het vijandelijk voertuig dat in de hinderlaag terecht kwam en moet worden vernietigd"],
    26: ["dubbelklik op het voertuig dat je van of naar het HQ wilt verplaatsen met de vliegende banaan"],
    27: ["dubbelklik op het voertuig dat je vanaf het vliegveld wilt verplaatsen",
         "dubbelklik op een leeg vakje waar de luchtlandingstroepen je voertuig moeten droppen"],
    30: ["dubbelklik op de door het vijandelijk leger geplaatste mijn om deze onschadelijk te maken en in uw kamp te "
         "leggen"],
    31: ["dubbelklik op het voertuig dat je vanaf een haven wilt verplaatsen met de marine luchtvaartdienst",
         "dubbelklik op de andere haven of een vlieghaven waar je voertuig moet komen"],
    32: ["dubbelklik op het voertuig op je HQ welke je wilt verplaatsen naar een strategisch punt",
         "dubbelklik op het strategisch punt waar je voertuig naar gebracht moet worden"],
}
STILL_YOUR_TURN = ("u bent nog steeds aan de beurt. gelieve op de knop 'gooi' te drukken, of op 'einde beurt' om je "
                   "beurt nu te beeindigen.")

# The notices of the player's copy while it waits for an answer.
ANNOUNCED_TITLE = "Tegenstander kan over Contra Spionage beschikken"
ANNOUNCED_TEXT = ("Uw tegenstander wordt op de hoogte gesteld dat u een Pesonnel kaart gebruikt. Deze kan over "
                  "Contra Spionage beschikken die uw kaart kan ontkrachten...")
AMBUSH_ASKED_TEXT = ("Uw tegenstander wordt op de hoogte gesteld dat u zijn jeep belaagt met een hinderlaag. "
                     "Mogelijks beschikt de jeep over een vrijgeleide...")
CONTRA_ASKED_TEXT = ("Er wordt geinformeerd of uw tegenstander beschikt over Contra Spionage om uw Hinderlaag kaart "
                     "te ontkrachten...")

# -- what the opponent is shown -------------------------------------------------------

OPPONENT_PLAYS = "de tegenspeler gebruikt voor zijn beurt eerst de personnel kaart die u nu te zien krijgt"
# Per card: its line in the run log, the title and the text of the box.
RECEIPTS = {
    21: ("opponent uses card 21 for sending up to 2 compagnies to one of his vehicles at ", None, None),
    22: ("opponent uses card 22 for exchanging 2 compagnies in prison at ", "Personnel - Uitwisseling gevangenen",
         "Dank zij een vredesconferentie worden tot 2 gevangen kompagnieën uitgewisseld."),
    23: ("opponent uses card 23 for embarking one of his vehicles somewhere on the coastline at ", None, None),
    25: ("opponent uses card 25 to destroy one of my vehicles in an ambush at ", None, None),
    26: ("opponent uses card 26 for dropping one of his vehicles to or from the HQ to or from any other field at ",
         None, None),
    27: ("opponent uses card 27 for dropping one of his vehicles from an airport to any other field at ", None, None),
    28: ("opponent uses card 28 to stop my escaping compagnies and send them back to prison at ",
         "Personnel - Militaire Politie",
         "Door ingrijpen van de Militaire Politie wordt uw jeep met ontsnapte gevangenen onderschept en terug naar het "
         "gevangenenkamp gestuurd."),
    30: ("opponent uses card 30 to demine on of my planted mines at ", "Personnel - Mijnopruimingsdienst",
         "De door u (rood gemerkte) geplaatste mijn werd door een verzetsgroep onschadelijk gemaakt."),
    31: ("opponent uses card 31 for transferring one of his vehicles from a harbour to another harbour or airport at ",
         None, None),
    32: ("opponent uses card 32 for dropping one of his vehicles at the HQ to a strategic point at ", None, None),
}
AMBUSH_SAFE_CONDUCT_TEXT = ("Uw jeep kwam in een hinderlaag terecht, u beschikt over een vrijgeleide. Wilt u die "
                            "gebruiken?")
AMBUSH_LINES = ["my jeep is heading into an ambush at ", "opponent used personnel card 25"]

# The end of a copy that looks a vehicle up at -1.
FAULT_TITLE = "Fout in Valkenhorn"
FAULT_EXIT_CODE = 3
ANSWER_AWAITED = "opponent's .ans"


def used(card):
    return "before rolling the dices, I use personnel card number %d at " % card


def opponent_used(card):
    return "before rolling the dices, the opponent uses personnel card number %d at " % (card - 20)


def fault(side):
    return "subscript out of range: Voertuig_%d(-1)" % side


def pnu(card, vehicle, field):
    """The announcement of a card as the player's copy writes it: the card less 20, the picks, 100 last."""
    return message(CARD=card - 20, V1=vehicle, V2=field, V3=100)


# -- the deck and hands ------------------------------------------------------------------


def played_from_hand(model, side, which):
    """The player's copy uses hand slot `which`: the hand closes up (slot 2
    empties), the count drops and the card goes under the deck."""
    hand = model.hands[side - 1]
    card = hand[which - 1]
    if which == 1:
        hand[0] = hand[1]
    hand[1] = 0
    model.counts[side - 1] -= 1
    model.push(card)
    return card


def mirror_played(model, side, card):
    """The opponent's mirror of the same: the card under the deck; of a hand of
    two the second slot is copied over the first only if that held the card;
    no slot is cleared; the count drops."""
    model.push(card)
    hand = model.hands[side - 1]
    if model.counts[side - 1] == 2 and hand[0] == card:
        hand[0] = hand[1]
    model.counts[side - 1] -= 1


def mirror_safe_conduct_used(model, side):
    """The Vrijgeleide the owner of the jeep used, as the player's mirror takes it off."""
    model.push(29)
    hand = model.hands[side - 1]
    if hand[0] == 29:
        hand[0] = hand[1]
    model.counts[side - 1] -= 1


def safe_conduct_used(model, side):
    """The owner's copy spends its only card, the Vrijgeleide: its slot keeps the number."""
    model.push(29)
    model.counts[side - 1] = 0


def deck_entries(model, local_side):
    """The deck and hands of a model as the copy of local_side saves them."""
    out = {}
    for side in (1, 2):
        role = "LOK" if side == local_side else "EXT"
        for key, value in (("CNT", model.counts[side - 1]), ("CRD1", model.hands[side - 1][0]),
                           ("CRD2", model.hands[side - 1][1])):
            out[("CARD_" + role, key)] = str(value)
    for i in range(32):
        out[("STACK", "CARD%02d" % (i + 1))] = str(model.stack[i])
    out[("STACK", "POINT")] = str(model.point)
    return out


def changes(before, after):
    """(section, key, before, after) for each key that changed in one copy's position."""
    out = []
    for name in sorted(set(before) | set(after)):
        a, b = before.get(name, {}), after.get(name, {})
        for key in sorted(set(a) | set(b)):
            if a.get(key) != b.get(key):
                out.append((name, key, a.get(key), b.get(key)))
    return out


def model_changes(before, after, local_side):
    """The same for the deck and hands, from one model to the other."""
    a, b = deck_entries(before, local_side), deck_entries(after, local_side)
    return sorted((name, key, a[(name, key)], b[(name, key)]) for name, key in a if a[(name, key)] != b[(name, key)])


def stack_pushed(card, held, green_pushed):
    """The differences of the stack of the other cards with `card` pushed under
    it on one copy and not on the other; green's value first."""
    rest = deck_without(*held)
    pairs = list(zip([card] + rest, rest + [0])) + [(len(rest) + 1, len(rest))]
    keys = ["CARD%02d" % (i + 1) for i in range(len(rest) + 1)] + ["POINT"]
    return [("STACK", key) + ((str(a), str(b)) if green_pushed else (str(b), str(a)))
            for key, (a, b) in zip(keys, pairs) if a != b]


def one_vehicle(side, slot, at, tag):
    """A board with one vehicle of army `side` on `at`, with one company of its camp."""
    def place(p):
        set_vehicle(p, side, slot, at, 1, tag)
        set_army_value(p, side, "KOMP", "KMP", 14)
    return place


# -- the picks of a card: double clicks of the player ----------------------------------------


def vehicle(slot, side=None):
    """A vehicle of the player's army, or of `side`."""
    return lambda c: c.dblclick(c.vehicle(slot, side))


def field(number):
    """A field of the board, where the player's view draws it."""
    return lambda c: c.dblclick_field(number)


def control(name):
    """Any other control, such as a mine."""
    return lambda c: c.dblclick(name)


class PersonnelTest(CardTest):
    """anna (green) and bert (brown) resume a game at a turn of the player's
    army, with the hands and the board the card needs. After each card the
    positions of both copies are compared, the known differences asserted;
    where the game goes on, the player's turn goes on from phase 3, the
    opponent plays a turn and the player one more."""

    # The turns that follow a card that went through: the rest of the
    # player's turn, the opponent's turn, the player's next turn.
    GOING_ON = {
        1: [Turn((6, 2), [Act(1, INFANTRY, HQ[1], loads=1)]), Turn((6, 3), [Act(1, TANK, HQ[2], loads=1)]), SKIP],
        2: [Turn((6, 3), [Act(1, TANK, HQ[2], loads=1)]), Turn((6, 2), [Act(1, INFANTRY, HQ[1], loads=1)]), SKIP],
    }

    def arrange(self, player_side, hands, place=None, going_on=True):
        """The saved game at turn 9 (green plays) or 10 (brown plays): the hands
        {side: cards}, the other cards in the deck, `place(p)` sets the board.
        Returns the player's copy, the opponent's and the deck."""
        held = [card for side in (1, 2) for card in hands.get(side, ())]
        padded = {side: (list(hands.get(side, ())) + [0, 0])[:2] for side in (1, 2)}
        model = DeckModel(deck_without(*held), hands=(padded[1], padded[2]),
                          counts=(len(hands.get(1, ())), len(hands.get(2, ()))))
        p = new_game_sections(1, 9 if player_side == 1 else 10)
        if place:
            place(p)
        model.write_into(p)
        dice = {1: [], 2: []}
        if going_on:
            for turn, side in zip(self.GOING_ON[player_side], (player_side, 3 - player_side, player_side)):
                dice[side] += list(turn.roll or ())
        green, brown = self.resume(p, dice[1], dice[2])
        player, other = (green, brown) if player_side == 1 else (brown, green)
        self.player_side = player_side
        player.wait_phase(0)
        other.wait_waiting("opponent's turn")
        self.ended = other.count_lines(TURN_ENDED)
        self.resumed = player.position()
        return player, other, model

    @contextlib.contextmanager
    def held(self, c):
        """c's program stopped for the span, so that a file meant for it stays in
        the folder to be read. The span is short: c's presence outlasts it."""
        os.kill(c.process.pid, signal.SIGSTOP)
        try:
            yield
        finally:
            os.kill(c.process.pid, signal.SIGCONT)

    # -- the player

    def use(self, player, kk, card):
        """The card of miniature kk opened at phase 0 and used."""
        player.wait_board_text(YOUR_TURN_WITH_CARD)
        player.click(kk)
        player.wait_phase(1)
        player.wait_board_text(CARD_SHOWN)
        self.assertShown(player, "Personnel", "imgPersTekst", card)
        self.assertEqual(kk[-1], player.get("Personnel")["tag"])
        player.click("cmdKompasGebruik")

    def board_names(self, player, card):
        """The board names the card, in phase 2, the card panel closed."""
        player.wait_board_text("personnel - " + BOARD_NAMES[card] + CLICK_TO_PLAY)
        self.assertEqual(2, player.state()["GamePhase"])
        self.assertIs(False, player.get("Personnel")["visible"], "the card panel closed on " + player.label)
        player.wait_control("msgBoard", "visible", lambda v: v is True, "the board shown")

    def steps(self, player, card, picks):
        """The click on the board, then each pick (a callable on the player's
        copy) after its prompt, as callables."""
        out = [lambda: player.click("msgBoard")]
        for number, pick in enumerate(picks):
            out.append(lambda number=number, pick=pick: (player.wait_board_text(PROMPTS[card][number]), pick(player)))
        return out

    def play_card(self, player, other, card, picks, name=None, contents=None, title=ANNOUNCED_TITLE,
                  text=ANNOUNCED_TEXT):
        """The board clicked and the picks made; the last step, which sends the
        message `name` (the .pnu by default), is made while the opponent is held."""
        self.board_names(player, card)
        steps = self.steps(player, card, picks)
        for step in steps[:-1]:
            step()
        with self.held(other):
            steps[-1]()
            self.box_waiting_for(player, title)
            self.assertEqual(contents, self.file_bytes(name or player.name + ".pnu"))
        self.box(player, title, text, "ok")

    # -- the opponent

    def received(self, other, card, player):
        """The opponent's box of the card, with the card shown and the board's
        text; the player's copy is held until the answer (1: no reaction) is
        read here. Returns the opponent's lines in the run log."""
        line, title, text = RECEIPTS[card]
        self.box_waiting_for(other, title)
        other.wait_board_text(OPPONENT_PLAYS)
        self.assertShown(other, "Personnel", "imgPersTekst", card)
        with self.held(player):
            self.box(other, title, text, "ok")
            self.assertAnswer(other, 1)
        return [opponent_used(card), line]

    def assertAnswer(self, c, answer):
        """c's .ans, once it stands in the folder."""
        name = c.name + ".ans"
        self.wait_file(name)
        self.assertEqual(message(ANSWER=answer), self.file_bytes(name), name)

    # -- the game going on

    def rest_of_turn(self, player, other, turn, own, theirs, known):
        """From phase 3: the roll and the actions of `turn`, or the end at once."""
        player.wait_phase(3)
        player.wait_board_text(STILL_YOUR_TURN)
        if turn.roll:
            lines = self.roll(player, turn.roll)
            own, theirs = own + lines[0], theirs + lines[1]
            first = None
            for index, act in enumerate(turn.actions):
                first, lines = self.act(player, other, index, act, first, None)
                own, theirs = own + lines[0], theirs + lines[1]
        if not turn.roll or not turn.actions or (len(turn.actions) == 1 and turn.actions[0].die != 3):
            player.click("cmdEindeBeurt")
        self.turn_ended(player, other, self.ended, own, theirs, known)

    def going_on(self, player, other, own, theirs, known):
        """The player's turn ends after a roll and a move, the opponent plays a
        turn and the player one more; the positions keep `known` throughout."""
        rest, theirs_turn, next_turn = self.GOING_ON[self.player_side]
        self.rest_of_turn(player, other, rest, own, theirs, known)
        self.play(other, player, theirs_turn, known)
        self.play(player, other, next_turn, known)

    def known(self, green_model, brown_model, *board):
        """The differences of the decks and the further ones of the board,
        green's value first."""
        return sorted(deck_differences(green_model, brown_model) + list(board))

    def models(self, player_model, other_model):
        """(green's, brown's) of the player's and the opponent's deck."""
        return (player_model, other_model) if self.player_side == 1 else (other_model, player_model)

    def jeep(self, p, side):
        """Field, companies and tag of the jeep of `side`, and that army's companies in reserve, camp and prison."""
        return ([army_value(p, side, section, veh_key(JEEP)) for section in ("VEHPOS", "CMPVEH", "VEHTAG")] +
                [army_value(p, side, "KOMP", key) for key in ("RES", "KMP", "PRS")])


# -- cards whose vehicle the opponent's copy looks up at -1 ------------------------------------


class ReceivedFault(PersonnelTest):
    """The card goes out with its picks; the opponent's copy logs the card and
    its line, then looks up the vehicle's control through its action record,
    which holds -1 before the dice: the run ends with a run-time fault and
    exit code 3. The player's copy stays waiting for the answer, the card
    spent, its effect not applied (it comes only with the answer)."""

    def fault_after(self, player_side, card, place, picks, picked_vehicle, picked_field):
        """The card, the only one in the hand, with the picks (callables on the
        player's copy); the .pnu must name the vehicle and the field picked."""
        player, other, model = self.arrange(player_side, {player_side: [card]}, place, going_on=False)
        before = model.copy()
        with FolderWatch(self.shared) as watch:
            self.use(player, "KK1", card)
            self.assertEqual(card, played_from_hand(model, player_side, 1))
            self.play_card(player, other, card, picks, contents=pnu(card, picked_vehicle, picked_field))
            fault_line = "run-time fault: " + fault(player_side)
            other.wait_until(lambda: fault_line in other.log_lines(), "the fault of " + other.label)
            dialog = other.wait_dialog_titled(FAULT_TITLE)
            self.assertIn(fault(player_side), dialog["text"])
            self.assertShown(other, "Personnel", "imgPersTekst", card)
            other.wait_board_text(OPPONENT_PLAYS)
            self.expect_log(other, [opponent_used(card), RECEIPTS[card][0], fault_line])
            other.answer("ok")
            self.assertEqual(FAULT_EXIT_CODE, other.wait_exit())
            player.wait_waiting(ANSWER_AWAITED)
        self.assertEqual([player.name + ".pnu"], watch.seen)
        self.assertFalse(os.path.exists(os.path.join(self.shared, player.name + ".pnu")), "the .pnu taken")
        state = player.state()
        self.assertEqual((2, True), (state["GamePhase"], state["InputLock"]), "the player waits in phase 2")
        self.assertDeck(player, model, "with the card spent")
        self.assertEqual(model_changes(before, model, player_side), changes(self.resumed, player.position()),
                         "only the deck and the hand changed on the player's copy")
        self.expect_log(player, [used(card)])
        self.assertNoBox(player)

    def test_camouflage(self):
        """Green's tank on its HQ with one company gets the Camouflage."""
        self.fault_after(1, 21, one_vehicle(1, TANK, HQ[1], "tank_1_1_o"), [vehicle(TANK)], TANK, -1)

    def test_landing_craft(self):
        """Brown's infantry in the harbour 58 lands on the coast road 60."""
        self.fault_after(2, 23, one_vehicle(2, INFANTRY, 58, "infanterie_2_1_0_w"), [vehicle(INFANTRY), field(60)],
                         INFANTRY, 60)

    def test_ambush(self):
        """Green's ambush on a brown infantry on 97, behind green's forward posts."""
        self.fault_after(1, 25, one_vehicle(2, INFANTRY, 97, "infanterie_2_1_0_w"), [vehicle(INFANTRY, 2)],
                         INFANTRY, -1)

    def test_helicopter(self):
        """Green's cannon on 47 flies to the HQ: no second pick, the HQ travels as the field."""
        self.fault_after(1, 26, one_vehicle(1, KANON, 47, "kanon_1_1_o"), [vehicle(KANON)], KANON, HQ[1])

    def test_airborne_troops(self):
        """Brown's commando on the airport 53 is dropped on 50."""
        self.fault_after(2, 27, one_vehicle(2, COMMANDO, 53, "commando_2_1_0_w"), [vehicle(COMMANDO), field(50)],
                         COMMANDO, 50)

    def test_naval_air_service(self):
        """Green's genie in the harbour 11 flies to the airport 17."""
        self.fault_after(1, 31, one_vehicle(1, GENIE, 11, "genie_1_1_0_o"), [vehicle(GENIE), field(17)], GENIE, 17)

    def test_signals_service(self):
        """Brown's tank in its camp goes to the strategic point 63."""
        self.fault_after(2, 32, None, [vehicle(TANK), field(63)], TANK, 63)


# -- cards spent with nothing sent ------------------------------------------------------------------


class SpentWithNothingSent(PersonnelTest):
    """The Contra spionage and the Vrijgeleide have nothing to do before the
    dice, and the Marine luchtvaartdienst and the Verbindingsdienst are called
    off by a double click outside the road squares after the vehicle's pick:
    the player's copy spends the card (under its deck, the hand closed up),
    nothing goes out, and the opponent's mirror keeps the card in the hand and
    the deck as it was. The positions keep that difference while the game
    goes on."""

    def spent(self, player_side, hand, kk, place=None, picks=()):
        player, other, model = self.arrange(player_side, {player_side: hand}, place)
        mirror = model.copy()
        which = int(kk[-1])
        card = hand[which - 1]
        with FolderWatch(self.shared) as watch:
            self.use(player, kk, card)
            self.assertEqual(card, played_from_hand(model, player_side, which))
            if picks:
                self.board_names(player, card)
                for step in self.steps(player, card, picks):
                    step()
            player.wait_phase(3)
            player.wait_board_text(STILL_YOUR_TURN)
            self.assertNoBox(player)
            self.assertNoBox(other)
        self.assertEqual([], watch.seen, "nothing sent for the card")
        kk1 = player.get("KK1")
        self.assertEqual((len(hand) > 1, False), (kk1["visible"], kk1["enabled"]),
                         "KK1 in view with a card left, but closed for this turn")
        self.assertDeck(player, model, "with the card spent")
        self.assertDeck(other, mirror, "as it was")
        known = self.known(*self.models(model, mirror))
        self.assertSamePosition(self.green, self.brown, known)
        self.assertEqual(0, other.count_lines("before rolling the dices, the opponent uses personnel card number "))
        self.going_on(player, other, [used(card)], [], known)
        return known

    def test_contra_spionage(self):
        """Green uses the 24 of the hand 24, 31: its 31 closes up into slot 1."""
        known = self.spent(1, [24, 31], "KK1")
        self.assertEqual(sorted([("CARD_LOK", "CNT", "1", "2"), ("CARD_LOK", "CRD1", "31", "24"),
                                 ("CARD_LOK", "CRD2", "0", "31")] + stack_pushed(24, (24, 31), True)), known)

    def test_safe_conduct(self):
        """Brown uses the 29 of the hand 22, 29: its slot 2 empties."""
        known = self.spent(2, [22, 29], "KK2")
        self.assertEqual(sorted([("CARD_EXT", "CNT", "2", "1"), ("CARD_EXT", "CRD2", "29", "0")] +
                                stack_pushed(29, (22, 29), False)), known)

    def test_naval_air_service_called_off(self):
        """Green's genie in the harbour 11 is picked; a double click on the
        green HQ ends the Marine luchtvaartdienst."""
        self.spent(1, [31], "KK1", one_vehicle(1, GENIE, 11, "genie_1_1_0_o"), [vehicle(GENIE), field(HQ[1])])
        for c in (self.green, self.brown):
            self.assertEqual("11", army_value(c.position(), 1, "VEHPOS", veh_key(GENIE)), c.label)

    def test_signals_service_called_off(self):
        """Brown's infantry in its camp is picked; a double click on the brown
        camp ends the Verbindingsdienst."""
        self.spent(2, [32], "KK1", None, [vehicle(INFANTRY), field(CAMP[2])])
        for c in (self.green, self.brown):
            self.assertEqual(str(CAMP[2]), army_value(c.position(), 2, "VEHPOS", veh_key(INFANTRY)), c.label)


# -- cards that go through ------------------------------------------------------------------------------


class CardsThatGoThrough(PersonnelTest):
    """The card is announced, the opponent's copy shows it, applies it and
    answers 1; the player's copy applies it on the answer and stands at
    phase 3. The positions part only in the hand's mirror and what the card
    knowingly does differently on the two copies."""

    def through(self, player_side, hand, kk, place, picks, contents):
        """Plays the card; returns the player's copy, the opponent's, their
        decks and the opponent's lines so far."""
        player, other, model = self.arrange(player_side, {player_side: hand}, place)
        mirror = model.copy()
        which = int(kk[-1])
        card = hand[which - 1]
        with FolderWatch(self.shared) as watch:
            self.use(player, kk, card)
            self.assertEqual(card, played_from_hand(model, player_side, which))
            mirror_played(mirror, player_side, card)
            self.play_card(player, other, card, picks, contents=contents)
            theirs = self.received(other, card, player)
            player.wait_phase(3)
        self.assertEqual([player.name + ".pnu", other.name + ".ans"], watch.seen)
        other.wait_control("Personnel", "visible", lambda v: v is False, "the card closed on " + other.label)
        self.assertDeck(player, model, "after the card")
        self.assertDeck(other, mirror, "after the card")
        self.assertEqual(model.counts, mirror.counts, "the counts agree")
        return player, other, model, mirror, theirs

    def test_exchange_of_prisoners(self):
        """Green holds one brown company prisoner, brown three green ones: one
        exchange on both copies."""
        def place(p):
            for side, camp, prison in ((1, 14, 1), (2, 12, 3)):
                set_army_value(p, side, "KOMP", "KMP", camp)
                set_army_value(p, side, "KOMP", "PRS", prison)

        player, other, model, mirror, theirs = self.through(1, [22], "KK1", place, [], pnu(22, -1, -1))
        for c in (player, other):
            p = c.position()
            self.assertEqual([["10", "15", "0"], ["10", "13", "2"]],
                             [[army_value(p, side, "KOMP", key) for key in ("RES", "KMP", "PRS")] for side in (1, 2)],
                             c.label)
        known = self.known(*self.models(model, mirror))
        self.assertEqual([("CARD_LOK", "CRD1", "0", "22")], known)
        self.assertSamePosition(self.green, self.brown, known)
        self.going_on(player, other, [used(22)], theirs, known)

    def test_military_police(self):
        """Brown plays the 28 from the hand 21, 28 against the green jeep on
        86 with two escaped companies: back on its island, the companies in
        prison. The tags differ: "jeep_1_0_w" on brown's copy, "jeep_1_0_o"
        on green's."""
        def place(p):
            set_vehicle(p, 1, JEEP, 86, 2, "jeep_1_2_w")
            set_army_value(p, 1, "KOMP", "KMP", 13)

        player, other, model, mirror, theirs = self.through(2, [21, 28], "KK2", place, [], pnu(28, -1, -1))
        for c, tag in ((player, "jeep_1_0_w"), (other, "jeep_1_0_o")):
            p = c.position()
            self.assertEqual(["115", "0", tag, "10", "13", "2"], self.jeep(p, 1), c.label)
            self.assertEqual(0, c.state()["BoardCell"][86 - 1], c.label)
            self.assertTrue(c.get(c.vehicle(JEEP, 1))["picture"].endswith(tag + ".gif"), c.label)
        known = self.known(*self.models(model, mirror), ("VEHTAG_LOK", "VEH10", "jeep_1_0_o", "jeep_1_0_w"))
        self.assertEqual([("CARD_EXT", "CRD2", "28", "0"), ("VEHTAG_LOK", "VEH10", "jeep_1_0_o", "jeep_1_0_w")], known)
        self.assertSamePosition(self.green, self.brown, known)
        self.going_on(player, other, [used(28)], theirs, known)

    def test_mine_clearance(self):
        """Green plays the 30 from the hand 30, 22 on the brown mine laid on 48
        (a double click on the mine): green's copy takes it to the green camp
        and clears the field; brown's copy looks for it among the green mines
        and removes nothing."""
        def place(p):
            p["MIJN_REB"]["POS00"] = "48"

        player, other, model, mirror, theirs = self.through(1, [30, 22], "KK1", place,
                                                            [control("Mijn_2(0)")], pnu(30, -1, 48))
        self.assertEqual((0, "113"), (player.state()["BoardCell"][48 - 1], player.position()["MIJN_REB"]["POS00"]))
        self.assertEqual((False, True), (player.get("Mijn_2(0)")["visible"], player.get("Mijn_1_2(0)")["visible"]),
                         "the mine taken to the green camp on " + player.label)
        self.assertEqual((-12, "48"), (other.state()["BoardCell"][48 - 1], other.position()["MIJN_REB"]["POS00"]))
        self.assertEqual((True, False), (other.get("Mijn_2(0)")["visible"], other.get("Mijn_1_2(0)")["visible"]),
                         "the mine still on 48 on " + other.label)
        self.assertEqual(["113"] * 5, list(other.position()["MIJN_GER"].values()))
        known = self.known(*self.models(model, mirror), ("MIJN_REB", "POS00", "113", "48"))
        self.assertEqual([("CARD_LOK", "CRD2", "0", "22"), ("MIJN_REB", "POS00", "113", "48")], known)
        self.assertSamePosition(self.green, self.brown, known)
        self.going_on(player, other, [used(30)], theirs, known)


# -- the ambush on the jeep -----------------------------------------------------------------------------


class AmbushOnJeep(PersonnelTest):
    """Green's Hinderlaag on the brown jeep with two companies on 97, behind
    green's forward posts: no .pnu, but question 4 (a Vrijgeleide?) and, when
    none is used, question 6 (a Contra spionage?). Each answer and question
    is read here while the copy it is meant for is held."""

    def arrange_ambush(self, brown_hand):
        def place(p):
            set_vehicle(p, 2, JEEP, 97, 2, "jeep_2_2_w")
            set_army_value(p, 2, "KOMP", "KMP", 13)

        return self.arrange(1, {1: [25], 2: brown_hand}, place)

    def ambush(self, green, brown, model):
        """The card used, the board clicked, the jeep picked: question 4 goes
        out. `model` becomes green's deck; brown's is returned."""
        mirror = model.copy()
        self.use(green, "KK1", 25)
        self.assertEqual(25, played_from_hand(model, 1, 1))
        mirror_played(mirror, 1, 25)
        self.board_names(green, 25)
        green.click("msgBoard")
        green.wait_board_text(PROMPTS[25][0])
        with self.held(brown):
            green.dblclick(green.vehicle(JEEP, 2))
            self.box_waiting_for(green, ASKING_TITLE)
            self.assertEqual(message(QUESTION=4), self.file_bytes("anna.ask"))
        return mirror

    def test_jeep_destroyed(self):
        """Brown holds the 21 only: both questions answered 1 without a box;
        the jeep is destroyed on both copies, its companies to the reserve.
        Green's copy gives it the tag "jeep_2_0_o", brown's keeps its own."""
        green, brown, model = self.arrange_ambush([21])
        with FolderWatch(self.shared) as watch:
            mirror = self.ambush(green, brown, model)
            self.assertAnswer(brown, 1)
            with self.held(brown):
                self.box(green, ASKING_TITLE, AMBUSH_ASKED_TEXT, "ok")
                self.box_waiting_for(green, ANNOUNCED_TITLE)
                self.assertEqual(message(QUESTION=6), self.file_bytes("anna.ask"))
            self.assertAnswer(brown, 1)
            self.box(green, ANNOUNCED_TITLE, CONTRA_ASKED_TEXT, "ok")
            green.wait_phase(3)
            brown.wait_until(lambda: self.jeep(brown.position(), 2)[0] == "0", "the jeep destroyed on bert's copy")
            self.assertNoBox(brown)
        self.assertEqual(["anna.ask", "bert.ans", "anna.ask", "bert.ans"], watch.seen)
        for c, tag in ((green, "jeep_2_0_o"), (brown, "jeep_2_2_w")):
            self.assertEqual(["0", "0", tag, "12", "13", "0"], self.jeep(c.position(), 2), c.label)
            self.assertEqual(0, c.state()["BoardCell"][97 - 1], c.label)
        self.assertDeck(green, model, "after the ambush")
        self.assertDeck(brown, mirror, "after the ambush")
        known = self.known(model, mirror, ("VEHTAG_EXT", "VEH10", "jeep_2_0_o", "jeep_2_2_w"))
        self.assertEqual([("CARD_LOK", "CRD1", "0", "25"), ("VEHTAG_EXT", "VEH10", "jeep_2_0_o", "jeep_2_2_w")], known)
        self.assertSamePosition(green, brown, known)
        self.going_on(green, brown, [used(25)], AMBUSH_LINES * 2, known)

    def test_safe_conduct_sends_the_jeep_home(self):
        """Brown holds the 29 and uses it against question 4; green, with no
        24 left, is told so and sends question 3: the jeep goes back to its
        island and its companies to the camp, on both copies."""
        green, brown, model = self.arrange_ambush([29])
        with FolderWatch(self.shared) as watch:
            mirror = self.ambush(green, brown, model)
            self.box(green, ASKING_TITLE, AMBUSH_ASKED_TEXT, "ok")
            with self.held(green):
                self.box(brown, ATTACKED_TITLE, AMBUSH_SAFE_CONDUCT_TEXT, "yes", ("yes", "no"))
                self.assertAnswer(brown, 2)
            safe_conduct_used(mirror, 2)
            mirror_safe_conduct_used(model, 2)
            self.box_waiting_for(green, COVERED_TITLE)
            self.assertDeck(green, model, "after the answer")
            self.assertDeck(brown, mirror, "after using the 29")
            with self.held(brown):
                self.box(green, COVERED_TITLE, COVERED_TEXT, "ok")
                self.wait_file("anna.ask")
                self.assertEqual(message(QUESTION=3), self.file_bytes("anna.ask"))
            self.box_waiting_for(brown, ACCEPTED_TITLE)
            green.wait_phase(3)
            home = ["118", "0", "jeep_2_0_o", "10", "15", "0"]
            self.assertEqual(home, self.jeep(green.position(), 2))
            self.assertEqual(["97", "2", "jeep_2_2_w", "10", "13", "0"], self.jeep(brown.position(), 2),
                             "the jeep stays until brown's box is closed")
            self.box(brown, ACCEPTED_TITLE, ACCEPTED_TEXT, "ok")
            brown.wait_until(lambda: self.jeep(brown.position(), 2) == home, "the jeep home on bert's copy")
        self.assertEqual(["anna.ask", "bert.ans", "anna.ask"], watch.seen)
        for c in (green, brown):
            self.assertEqual(home, self.jeep(c.position(), 2), c.label)
            self.assertEqual(0, c.state()["BoardCell"][97 - 1], c.label)
        known = self.known(model, mirror)
        self.assertEqual([("CARD_EXT", "CRD1", "0", "29"), ("CARD_LOK", "CRD1", "0", "25")], known)
        self.assertSamePosition(green, brown, known)
        theirs = AMBUSH_LINES + ["using personnel card number 29 against the ambush at ",
                                 "using card 29 is approved at "]
        self.going_on(green, brown, [used(25)], theirs, known)


def main():
    if len(sys.argv) < 3:
        sys.stderr.write(__doc__)
        return 2
    test_game.PROGRAM = os.path.abspath(sys.argv[1])
    return run_tests(sys.modules[__name__], sys.argv[2:])


if __name__ == "__main__":
    sys.exit(main())
