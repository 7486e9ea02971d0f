#pragma once

// A random player that makes its actions through the clicks of the board, as
// the window does: the vehicle pick for the die of the phase, slow clicks on
// a camp vehicle, now and then a cancel, a wrong click, and the destination
// with random answers to the questions of the flag and the mine.

#include "board/BoardState.h"
#include "game/ActionRecords.h"

#include <random>
#include <string>

namespace vk::test {

// Random whole numbers low..high from a fixed seed.
struct Dice {
    std::mt19937 generator;
    explicit Dice(unsigned seed) : generator(seed) {}
    int operator()(int low, int high) { return std::uniform_int_distribution<int>(low, high)(generator); }
};

// What the sender did: the record it sends, and what the record leaves out.
struct Sent {
    bool Done = false;
    int Phase = -1;          // the phase the action was done in
    ActionMessage Message;
    int JeepAboard = 0;      // the jeep's companies when it left its island
    bool FlagUntold = false; // a flag loaded by the second action of the turn
};

// One action of `side` at a phase that picks a vehicle (5, 10, 14, 19, 23),
// carried out on `board`. Sent.Done stays false when no vehicle could act.
void PlayAction(BoardState& board, ActionRecord& record, int side, int pickPhase, int dice1, int dice2, Dice& rng,
                Sent& sent);

// The record in one line, for the messages of a failed test.
std::string Describe(const ActionMessage& message);

} // namespace vk::test
