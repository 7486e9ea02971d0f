#pragma once

// One action on the board, as the player's clicks make it and as the
// opponent's record replays it: both copies carry it out through ApplyAction,
// so that the same numbers give the same position.

#include "board/BoardState.h"
#include "board/Shooting.h"

#include <string>

namespace vk {

struct BoardAction {
    int Side = 1;          // the army that acts
    int Slot = -1;         // its vehicle
    int Code = -1;         // ACT: 0 intercepted shot, 1 move, 2 shot, 3 mine left, 4 mine picked up, 5 flag loaded
    int From = -1;
    int To = -1;
    int Heading = 0;       // the heading after the move, as judged (DIRECT of the record)
    bool LeaveMine = false;
    int TargetSlot = -1;   // the shot's target, a slot of the other army
    bool operator==(const BoardAction&) const = default;
};

// Carries the action out. The verdict fields this path sets come first, in
// one place: Heading, MinePickup for code 4 only, and FlagLoad set for code 5
// (otherwise left as it stands: a flag loaded by the second action of a turn
// travels with code 1, and the player's copy has FlagLoad from the judge and
// the answer). Then code 1, 3, 4, 5: ExecuteMove, with a mine left for code 3;
// code 2: ResolveShot on the target through `seam`; code 0: nothing.
// Returns the outcome of a shot (Captured for the other codes).
ShotResult ApplyAction(BoardState& state, const BoardAction& action, const SafeConductSeam& seam = {});

// What the receiver takes from VEHTAG when the vehicle leaves the sender's
// camp: the companies digit (position 8 tank, 9 kanon and genie, 14
// infanterie, 12 commando) and, for a commando, a "1" at position 14 for a
// mine on board. A character that is no digit counts 0.
struct CampVehicleLoad {
    int Companies = 0;
    bool MineAboard = false;
};
CampVehicleLoad ReadCampVehicleTag(int slot, const std::string& vehicleTag);

// The replay of the opponent's vehicle leaving its camp: its companies and,
// for a commando with "1" at position 14 of the tag, the first mine of the
// camp store, are taken as the record's tag tells; the camp's companies fall
// by as many, and the vehicle takes the tag.
void TakeOutOfCampAsRecorded(BoardState& state, int side, int slot, const std::string& vehicleTag);

// The replay of the jeep escaping from its island: three times, a prisoner of
// its army (if any is left) boards the jeep, added to what it carries; the
// tag becomes "jeep_1_N_w" or "jeep_2_N_o".
void JeepEscapeAsRecorded(BoardState& state, int side);

} // namespace vk
