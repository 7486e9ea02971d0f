#pragma once

// Turns and whole games of two computer players with the rules library alone,
// for the tests and the benchmark: every action is carried out with the same
// clicks a player makes (PickOwnVehicle, the slow loading clicks,
// ClickDestination with the answers of the plan). Cards are left out, and so
// are the fuel and tse-tse countdowns at the end of a turn.

#include "game/ComputerChoice.h"

#include <chrono>
#include <random>
#include <vector>

namespace vk::testing {

// Carries `action` out at the vehicle-pick phase of `turn` on `state`, as the
// clicks would: the pick, the slow clicks of a camp vehicle, the destination
// (the field of an enemy vehicle for a shot). `turn` takes the words and the
// phase the clicks leave (9, 18 or 27). Returns false, with `state` and `turn`
// as far as they got, when a click is refused or not carried out.
// The turn's values at `phase` after a roll of `dice1` and `dice2`.
TurnSituation Turn(int side, int phase, int dice1, int dice2);

bool ApplyPlannedAction(BoardState& state, TurnSituation& turn, const PlannedAction& action);

// The time a player spent deciding in one turn: all its ChooseDie and
// ChooseAction calls together, and the longest single call; on the clock, and
// as the processor time of the thread (which leaves out the time other
// programs on the machine took the processor away).
struct DecisionTimes {
    std::chrono::nanoseconds Turn{0};
    std::chrono::nanoseconds LongestCall{0};
    std::chrono::nanoseconds TurnCpu{0};
    std::chrono::nanoseconds LongestCallCpu{0};
};

// One whole turn of `side` with dice `dice1`, `dice2`: the die, up to two
// actions and the dice between them, as the player decides. Returns false
// when the rules refused an action that was chosen. `times` (when given)
// receives the time spent in ChooseDie and ChooseAction.
bool PlayTurn(BoardState& state, ComputerChoice& player, int side, int dice1, int dice2,
              DecisionTimes* times = nullptr);

struct GameResult {
    int Winner = 0;            // 1 or 2, 0 when the turn limit came first
    int Turns = 0;             // turns played
    bool Refused = false;      // a chosen action was refused: a fault of the choice
    int FlagsHome[2]{};        // per army at the end
    int Reserve[2]{};
    int Prison[2]{};
    int Destroyed[2]{};        // vehicles out of the game
    std::vector<double> TurnMs;    // the decision time of each turn of the side `timed`
    std::vector<double> CallMs;    // its longest single decision in each of those turns
    std::vector<double> TurnCpuMs; // the same as processor time
    std::vector<double> CallCpuMs;
};

// A game from the starting position: army 1 moves first, the dice come from
// `dice` (two throws of 1..6 per turn). A side wins at the end of its own turn
// when the other army has all its companies in the reserve or it has all its
// flags home. `timed` (1, 2, or 0 for neither) names the side whose decision
// times are kept.
GameResult PlayGame(ComputerChoice& army1, ComputerChoice& army2, std::mt19937& dice, int turnLimit, int timed = 0);

} // namespace vk::testing
