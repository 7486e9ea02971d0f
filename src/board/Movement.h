#pragma once

// The judge and the executor of every move: IsLegalMove fills state.Verdict (the
// MoveVerdict of BoardState.h) and returns its Legal; ExecuteMove carries a move out
// with the verdict fields of that move still standing (Heading, CompassCrossed,
// MinePickup, FlagLoad), including laying and picking up mines, loading a flag, and
// unloading companies, mines and flags in the own camp. The walk search is exposed as
// FindFirstWalk for the rules that need the route itself.

#include "board/BoardState.h"

#include <vector>

namespace vk {

// The first walk found by the search of the movement rules.
struct Walk {
    // Complete: a walk of exactly `steps` ending on `to` was found; P[steps] = from, P[0] = to.
    bool Complete = false;
    // HomeShortCut: the search met the own camp (or a jeep its own island) while `to` was
    // that field, and stopped there: the move is legal without any further test.
    bool HomeShortCut = false;
    std::vector<int> P;
};

// The walk search: from P[steps] = from down to P[0], trying at each index the neighbours
// k = 0, 1, 2 of P[i + 1], refusing -1, the other army's camp, strategic links, the step
// straight back and, at index 0, anything but `to`; backtracking when all are spent.
// steps must be at least 1 (RunTimeFault otherwise).
Walk FindFirstWalk(int side, int slot, int from, int to, int steps);

// The judge without side effects: the verdict of a move (or shot) of the vehicle `slot` of
// `side` from `from` to `to` with exactly `steps` steps. mayShoot is false only for a vehicle
// that leaves its camp with both dice.
MoveVerdict JudgeMove(const BoardState& state, int side, int slot, int from, int to, int steps, bool mayShoot);

// IsLegalMove: state.Verdict = JudgeMove(...); returns state.Verdict.Legal.
bool IsLegalMove(BoardState& state, int side, int slot, int from, int to, int steps, bool mayShoot);

// ExecuteMove: carries the move out on the state (tag, mines, flags, headings of the large
// areas, pictures in the current view, BoardCell, HQ places, camp unloading, the jeep's
// return to its island, PendingDraws), reading state.Verdict.
void ExecuteMove(BoardState& state, int side, int slot, int from, int to, bool leaveMine);

// A camp vehicle sent to its own HQ by a die of 6 (without ExecuteMove): the first free HQ
// place is taken, HQCount + 1, VehiclePos = the HQ, VehicleDir = 1 for army 1 and 3 for army 2;
// the tag stays as the camp loading left it. Returns false and changes nothing when the
// HQ is full.
bool SendCampVehicleToHQ(BoardState& state, int side, int slot);

} // namespace vk
