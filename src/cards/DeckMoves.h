#pragma once

// The moves of the compass deck and the hands that both copies make: the
// drawing side's draws and choices, and the mirror of them that the other
// copy makes from the message files. Every subscript is checked: a deck out
// of order raises the program's fault rather than reading past the stack.

#include "cards/Deck.h"

namespace vk {

inline constexpr int kFirstPersonnelCard = 21;
inline constexpr int kContraSpionage = 24;
inline constexpr int kHinderlaag = 25;
inline constexpr int kVrijgeleide = 29;

inline bool IsRadioYamboCard(int card) { return card >= 1 && card <= 20; }
inline bool IsPersonnelCard(int card) { return card >= 21 && card <= 32; }

// Entry `index` (0..32) of the stack.
int& StackEntry(CompassDeck& deck, int index);
int StackEntry(const CompassDeck& deck, int index);
// The top card, entry StackPoint - 1.
int TopCard(const CompassDeck& deck);
// Hand slot `slot` (1 or 2) and the card count of `side` (1 or 2).
int& HandSlot(CompassDeck& deck, int side, int slot);
int HandSlot(const CompassDeck& deck, int side, int slot);
int& CardCountOf(CompassDeck& deck, int side);
int CardCountOf(const CompassDeck& deck, int side);
// Whether `card` is among the first CardCount slots of the hand of `side`.
bool HandHolds(const CompassDeck& deck, int side, int card);

// Keeps the top card, moves entries 0 .. StackPoint - 2 one place up and
// puts the kept card in entry 0. StackPoint stays.
void RotateTopToBottom(CompassDeck& deck);
// One more card in the stack: every card moves one place up, from the top
// down, and `card` takes entry 0.
void PushToBottom(CompassDeck& deck, int card);

// The choice of a draw phase (27 for the first draw of a turn, 33 for the
// second) from the owed draws and the top card.
struct DrawChoice {
    int NextPhase = 39;
};
// With nothing owed: 39 after either phase. Otherwise one owed draw is used
// up and the top card decides: a Radio Yambo card gives 28 (34), a
// Personnel card 29 (35), a top outside 1..32 leaves the phase as it is, so
// that it runs again with one draw less. `pending` falls with `owed` while
// above 0.
DrawChoice ChooseDraw(const CompassDeck& deck, int phase, int& owed, int& pending);

// A Radio Yambo card drawn (phase 28, 34): the top card goes under the deck.
// Returns the card.
int DrawRadioYambo(CompassDeck& deck);

// A Personnel card kept (phase 29, 35, and the mirror of a ".pna"): the count
// of `side` rises, the card fills the new hand slot, its stack entry is
// cleared and the stack holds one card less. Returns the card.
int KeepPersonnel(CompassDeck& deck, int side);
// The mirror of a ".pna": as KeepPersonnel, with the card of the message.
void MirrorKeptPersonnel(CompassDeck& deck, int side, int card);

// A Personnel card of the hand of `side` played before the dice: `which`
// (1 or 2) is the hand slot; the hand closes up (slot 1 takes slot 2, slot 2
// becomes 0), the count falls by 1, and the card goes under the deck before
// it has had any effect. Returns the card, or `current` unchanged (nothing
// moved) for any other `which`.
int PlayFromHand(CompassDeck& deck, int side, int which, int current);

// The third Personnel card: `which` ("1", "2", "3" as 1..3) is the card given
// up. For 1 and 2 the top entry takes that hand slot's card and the slot
// takes `newCard`; for 3 nothing changes. The caller then turns the top card
// under the deck.
void GiveUpOneOfThree(CompassDeck& deck, int side, int which, int newCard);

// A Radio Yambo draw of the opponent (".ryc"): every entry below the top
// moves one place up and `card` takes entry 0. The top is overwritten, not
// compared with the card.
void MirrorRadioYamboDraw(CompassDeck& deck, int card);

} // namespace vk
