#pragma once

// Positions for the combat tests: the starting position with vehicles put on
// road squares, their companies taken from the camp so that each army keeps its
// 25 companies.

#include "board/BoardState.h"

namespace vk::test {

// The starting position of a new game, seen from `localSide`.
BoardState StartPosition(int localSide = 1);

// Puts the vehicle on a road square with its companies, mark and heading, and
// the tag that goes with them; the companies come out of the camp.
void PutOnRoad(BoardState& state, int side, int slot, int field, int companies, int mark = 0, int heading = 1);

// BoardCell value of a vehicle: slot + 1 for army 1, -(slot + 1) for army 2.
int CellOf(int side, int slot);

} // namespace vk::test
