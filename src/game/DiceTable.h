#pragma once

#include "game/RandomSource.h"

#include <array>
#include <cstdint>
#include <functional>

namespace vk {

// The dice are not fresh random numbers: a roll draws from a table of 24000
// values, 4000 of each of 1..6, mixed at program start until its first 3200
// entries look balanced.
inline constexpr int DiceTableSize = 24000;
inline constexpr int DiceTableTested = 3200;
using DiceTable = std::array<std::int16_t, DiceTableSize>;

// Runs the user interface's pending events; the window layer fills it in,
// the rules library only calls it where the build lets the interface breathe.
using EventPump = std::function<void()>;

// Steps 2 and 3 of the build: 4000 each of 1..5 in random free places, one
// pump per value placed, and 6 in every place left. The table must be all 0.
void PlaceDiceValues(DiceTable& table, RandomSource& random, const EventPump& pump);

// One mixing pass: ten times 24000 exchanges of a random place a with its
// mirror place 23999 - a, one pump per exchange.
void MixDiceTable(DiceTable& table, RandomSource& random, const EventPump& pump);

// The acceptance test over the first 3200 entries.
struct DiceTableCheck {
    int count[7] = {};   // occurrences of each value; index 0 unused
    int triple[7] = {};  // places where a run of the value has reached 3 or more
    int spread = 0;      // largest difference of two counts
    int top = 0;         // largest triple count
    bool accepted = false;
};
DiceTableCheck CheckDiceTable(const DiceTable& table);

// The pass counter of the build is a signed 16-bit value: raising it past
// 32767 is an overflow fault.
void RaisePassCount(std::int16_t& passes);

// Fills the table: seeds the generator with clockSeed, places the values and
// mixes until the acceptance test holds. Returns the number of passes made.
std::int16_t BuildDiceTable(DiceTable& table, RandomSource& random, std::int32_t clockSeed, const EventPump& pump);

// Seconds since midnight, rounded to a whole number (halves to even, as the
// conversion to an integer does), modulo `modulus`, plus 1.
std::int32_t ClockSeed(double secondsSinceMidnight, std::int32_t modulus);

// State of RollDie for the whole run.
struct RollDieState {
    bool seeded = false;
    std::int32_t seed = 0;
};

// One die, 1..6. The first call of a run seeds the generator with
// ClockSeed(seconds, 24000). The index is Rnd x 24000 rounded, so it reaches
// 24000 once in 48000 rolls: that is a subscript fault, kept on purpose.
int RollDie(const DiceTable& table, RollDieState& state, RandomSource& random, double secondsSinceMidnight);

} // namespace vk
