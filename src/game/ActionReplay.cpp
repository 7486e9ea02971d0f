#include "game/ActionReplay.h"

#include "board/BoardTables.h"
#include "board/VehicleTag.h"

namespace vk {

void PrepareReplayedVehicle(BoardState& state, const ActionMessage& message, int side)
{
    if (message.Act == kActInterceptedShot)
        return;
    if (message.From == CampField(side))
        TakeOutOfCampAsRecorded(state, side, message.Veh, message.VehTag);
    else if (message.From == IslandField(side))
        JeepEscapeAsRecorded(state, side);
}

BoardAction ReplayedAction(const BoardState& state, const ActionMessage& message, int side)
{
    BoardAction action{side, message.Veh, message.Act, message.From, message.To, message.Direct,
                       message.Act == kActMoveLeaveMine, -1};
    if (message.Act == kActShot) {
        const int cell = state.BoardCell(message.To);
        action.TargetSlot = (cell < 0 ? -cell : cell) - 1;
    }
    return action;
}

BoardAction ReplayAction(BoardState& state, const ActionMessage& message, int side)
{
    state.Verdict.MinePickup = false;
    // A flag is loaded on this copy only when the record says so: a FlagLoad
    // left from this copy's own turn (a move undone for want of fuel) must
    // not load one on the opponent's plain move.
    state.Verdict.FlagLoad = false;
    const BoardAction action = ReplayedAction(state, message, side);
    ApplyAction(state, action);
    return action;
}

} // namespace vk
