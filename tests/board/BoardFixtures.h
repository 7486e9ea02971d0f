#pragma once

// Helpers that set up positions for the board tests: a new game with vehicles put
// straight onto road squares, companies loaded, mines laid or loaded.

#include "board/BoardState.h"

#include <random>

namespace vk::testing {

// A new game in view 1, local side 1.
BoardState NewGame();

// Puts a vehicle on a road square (or HQ / island / camp) with a heading, keeping
// BoardCell, HQ places, the tag's heading letter and the picture in step.
void PutVehicle(BoardState& state, int side, int slot, int field, int heading);

// Loads companies from the camp onto a vehicle (the tag's companies digit follows).
void LoadCompanies(BoardState& state, int side, int slot, int companies);

// A commando or genie takes the first stored mine of its army (mark 1).
void LoadOwnMine(BoardState& state, int side, int slot);

// Lays mine `mine` of `side` on a road square.
void LayMine(BoardState& state, int side, int mine, int field);

// The game part of two states, without pictures, view, verdict and draws, and without
// HQPlaceFree: which HQ place a vehicle takes is a matter of drawing (a redraw hands
// them out anew in slot order).
bool SameGame(const BoardState& a, const BoardState& b);

// Plays `moves` random legal moves (and camp exits, mine layings, flag loads) from a new
// game, for property tests and benchmarks.
BoardState RandomPosition(std::mt19937& random, int moves);

} // namespace vk::testing

namespace vk::testing {

// One move of a vehicle, as the board click would choose it.
struct RandomMove {
    int Side = 1;
    int Slot = 0;
    int From = 0;
    int To = 0;
    int Steps = 1;
    bool LeaveMine = false;
    bool TakeFlag = true;
};

// Prepares a random vehicle of a random side on `state` (camp loading, a camp vehicle to
// the HQ, prisoners into the jeep) and picks a random legal plain move for it. Returns
// false when the chosen vehicle has no legal move this time.
bool PickRandomMove(BoardState& state, std::mt19937& random, RandomMove& move);

} // namespace vk::testing
