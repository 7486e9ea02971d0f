#pragma once

// The opponent's action record carried out on this copy's board with the
// same rules as on the sender's: numbers travel unchanged, so nothing is
// mapped; only what the sender did by clicks before the action (loading a
// camp vehicle, the jeep taking prisoners aboard) is taken from the record.

#include "board/BoardAction.h"
#include "board/BoardState.h"
#include "game/ActionRecords.h"

namespace vk {

// What happens before the marks are shown: a vehicle leaving the sender's
// camp takes its companies and a commando's mine as its tag tells; the jeep
// leaving its island takes up to three prisoners aboard, added to what it
// carries. Anything else is left as it stands.
void PrepareReplayedVehicle(BoardState& state, const ActionMessage& message, int side);

// The action of the record for the army `side`. A shot's target is the
// vehicle of the other army standing on TO: the absolute value of its
// BoardCell less 1 (-1 when the cell is empty, which ends the run as a
// subscript fault once the shot is resolved).
BoardAction ReplayedAction(const BoardState& state, const ActionMessage& message, int side);

// The whole replay after the marks: MinePickup and FlagLoad cleared (code 5
// sets the flag again), then the action applied. Returns the action.
BoardAction ReplayAction(BoardState& state, const ActionMessage& message, int side);

} // namespace vk
