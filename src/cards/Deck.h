#pragma once

#include "game/RandomSource.h"

#include <array>
#include <string>

namespace vk {

// The compass deck: 32 card numbers, 1..20 Radio Yambo, 21..32 Personnel.
// Entry 32 of the stack is spare room.
inline constexpr int CompassCardCount = 32;
using CompassStackArray = std::array<int, CompassCardCount + 1>;

// The deck and the hands of both armies, as a game keeps and saves them.
struct CompassDeck {
    CompassStackArray CompassStack{};
    int StackPoint = 0;                           // cards now in the stack; the top is entry StackPoint - 1
    std::array<int, 2> CardCount{};               // [side - 1], 0..2
    std::array<std::array<int, 2>, 2> CardHand{}; // [side - 1][hand slot 0, 1], 0 or 21..32
    bool operator==(const CompassDeck&) const = default;
};

// State of CardPick for the whole run.
struct CardPickState {
    bool seeded = false;
};

// A card position 1..32. The first call of a run seeds the generator with
// the seconds since midnight, rounded, modulo 32000, plus 1. Each call turns
// r = Rnd into Round(r x 32000 + 1) mod 32 + 1.
int CardPick(CardPickState& state, RandomSource& random, double secondsSinceMidnight);

// The deal of the toss winner: the stack takes 1..32 in order, then 1000
// swaps of the positions a - 1 and b - 1 for a = CardPick, b = CardPick (a
// position swapped with itself counts too), and the stack pointer becomes
// 32. The last a and b stay behind in dice1 and dice2, through which the
// picks pass.
void ShuffleCompassStack(CompassStackArray& stack, int& stackPoint, int& dice1, int& dice2, CardPickState& state,
                         RandomSource& random, double secondsSinceMidnight);

// "card NN: VV", the run-log line of position i (1..32) holding card.
std::string DeckLogLine(int position, int card);

// The key of position i (1..32) in the deck message: "Kaart01" .. "Kaart32".
std::string DeckKey(int position);

} // namespace vk
