#pragma once

// The cards that answer instead of being played: Vrijgeleide (29) against a
// shot or an ambush on the jeep, Contra spionage (24) against a Personnel
// card. Each copy knows both hands, so the asking side decides from its
// mirror whether to ask, and both sides change deck and hands by themselves;
// these functions are those changes, and the questions a hand makes the
// program put to its player.

#include "board/BoardState.h"
#include "cards/Deck.h"

#include <string>

namespace vk {

// The QUESTION numbers of ".ask".
enum QuestionNumber : int {
    kAskSafeConductAgainstShot = 1,   // your jeep is shot at: use Vrijgeleide?
    kSafeConductBeatenInShot = 2,     // your Vrijgeleide is beaten: the jeep is shot after all
    kSafeConductStands = 3,           // your Vrijgeleide stands: jeep back to its island
    kAskSafeConductAgainstAmbush = 4, // your jeep runs into an ambush: use Vrijgeleide?
    kSafeConductBeatenInAmbush = 5,   // your Vrijgeleide is beaten: the jeep is destroyed
    kAskContraAgainstAmbush = 6,      // your jeep runs into an ambush: use Contra spionage?
};

// The ANSWER values of ".ans".
inline constexpr int kAnswerNoReaction = 1;
inline constexpr int kAnswerCardUsed = 2;

// A yes/no question the hand of the answering player makes the program ask,
// or none (the answer is then "no reaction" at once).
struct CardOffer {
    bool Asked = false;
    std::string Title;
    std::string Text;
};

// What the local hand of `side` offers against question 1, 4 or 6; any
// other question offers nothing.
CardOffer OfferAgainst(int question, const CompassDeck& deck, int side);

// The defender uses his Vrijgeleide (a Yes to question 1 or 4): 29 goes under
// the deck; one card held: the count becomes 0; two: a 29 in the first slot
// is overwritten by the second, and the count becomes 1.
void UseSafeConduct(CompassDeck& deck, int side);

// The defender uses Contra spionage against an ambush (a Yes to question 6).
// One card: 24 goes under the deck and the count becomes 0. Two cards (a 24
// among them): 29 goes under the deck, a 29 in the first slot is overwritten
// by the second, and the count becomes 1 - the card the count drops is the
// other one, while the asking copy puts 24 under its deck.
void UseContraAgainstAmbush(CompassDeck& deck, int side);

// Whether a Personnel card received may be answered with Contra spionage:
// a hand slot (among the counted ones) holding 4, the card's value in a
// ".pnu", not 24, the number a hand holds. A dealt hand never holds 4, so
// the offer stays a dormant path.
bool ContraOfferedAgainstPersonnel(const CompassDeck& deck, int side);
// A Yes to that offer: 24 goes under the deck, a first slot holding 24 takes
// the second slot's card, and the count drops by 1.
void UseContraAgainstPersonnel(CompassDeck& deck, int side);

// The asking side's mirror of a card used against it (answer 2): `card` goes
// under the deck, a first slot holding it is overwritten by the second, and
// the count of `side` falls by 1.
void MirrorCardUsedAgainstAsker(CompassDeck& deck, int side, int card);

// The answering side's mirror of a card the asking side played in the
// conversation (question 2: 24, question 4: 25): the card goes under the deck,
// with two cards held a first slot holding it is overwritten by the second,
// and the count of `side` falls by 1.
void MirrorCardPlayedByAsker(CompassDeck& deck, int side, int card);

// Question 5 on the answering side: 24 under the deck, and the asking side's
// count becomes 0, whatever it held.
void MirrorContraBeatingSafeConduct(CompassDeck& deck, int side);

// Whether the shooter of `shooterSide` asks question 1: the jeep's owner
// holds a card and the shooter does not hold the Vrijgeleide himself.
bool AsksSafeConduct(const CompassDeck& deck, int shooterSide);

// The shooter's hand after the defender used his Vrijgeleide.
struct ContraOffer {
    enum class Kind {
        JeepGoesBack, // no cards: the Vrijgeleide stands
        Ask,          // a 24 in hand: the question of Title / Text
        ShotGoesOn,   // cards without a 24: the spent Vrijgeleide bought nothing
    };
    Kind What = Kind::ShotGoesOn;
    std::string Title;
    std::string Text;
};
ContraOffer ContraOfferAgainstSafeConduct(const CompassDeck& deck, int shooterSide);

// The shooter uses his Contra spionage against the Vrijgeleide: 24 under the
// deck; one card: the count becomes 0; two: a 24 in the first slot is
// overwritten by the second and the count becomes 1.
void UseContraAgainstSafeConduct(CompassDeck& deck, int shooterSide);

// The jeep of `side` destroyed in an ambush: its companies to the reserve,
// none aboard, its road square cleared, out of the game (position 0), its
// picture at the place of a destroyed vehicle (in Stock for the local
// player). The tag stays as it was.
void DestroyJeepInAmbush(BoardState& state, int side);

} // namespace vk
