#pragma once

#include "board/BoardState.h"

namespace vk {

// --- Mines ------------------------------------------------------------------

// The first mine (counting from 0) of `side` that lies in its own camp store,
// or -1 when the store is empty. Only such a mine can be loaded by a commando.
int FirstStoredMine(const BoardState& state, int side);

// A commando (slot 6 or 7) in its camp takes the mine `mine` of its own army:
// MinePos becomes -slot. The store picture hides; the caller rebuilds the tag
// with mark 1. Returns false and changes nothing unless the slot is a commando
// standing in its own camp and that mine lies in the store.
bool LoadMineInCamp(BoardState& state, int side, int slot, int mine);

// The slow click that takes the mine out again before the commando leaves:
// the mine loaded in `slot` goes back to the camp store and shows. Returns
// false when the vehicle holds no mine.
bool UnloadMineInCamp(BoardState& state, int side, int slot);

// Whether the question "Wilt u de mijn afzetten op het vakje dat u verlaat?"
// is put when the vehicle leaves `from`: a commando with mark 1 at position 14
// of its tag, leaving a road square whose MineSide is at least 1. Bends and
// junctions (MineSide 0) have no question; a genie never lays a mine.
bool MineLayingOffered(const BoardState& state, int side, int slot, int from);

// --- Flags ------------------------------------------------------------------

// Flags of an army, wherever they are: reserve + carried + home. Five at the
// start, and no rule makes or loses one.
int FlagCount(const BoardState& state, int side);

// The size of the panel that hides the flag picture of a camp, shrinking by a
// fifth with each flag brought home. Vlagdekking_1 (side 1) is 415 wide and
// (5 - FlagHome) x 2120 / 5 high; Vlagdekking_2 (side 2) is 415 high and
// (5 - FlagHome) x 2115 / 5 wide. A negative size (more than five flags home)
// is an invalid property value: RunTimeFault.
struct FlagCoverSize {
    int Width = 0;
    int Height = 0;
    bool operator==(const FlagCoverSize&) const = default;
};
FlagCoverSize FlagCoverFor(int side, int flagHome);

} // namespace vk
