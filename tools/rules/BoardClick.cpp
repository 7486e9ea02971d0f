#include "BoardClick.h"

#include "board/BoardTables.h"
#include "board/MinesAndFlags.h"
#include "board/Movement.h"
#include "board/Shooting.h"
#include "board/VehicleTag.h"

namespace vk {

BoardClickOutcome ApplyBoardClick(BoardState& state, int side, int slot, int from, int to, int steps, bool mayShoot,
                                  bool leaveMine)
{
    BoardClickOutcome outcome;
    const bool legal = IsLegalMove(state, side, slot, from, to, steps, mayShoot);
    const bool fuelBlocked = state.Brandstof(side) > 0;

    if (from == CampField(side) && to == HQField(side)) {
        if (!fuelBlocked && SendCampVehicleToHQ(state, side, slot)) {
            outcome.What = BoardClickOutcome::Kind::SentToHQ;
            outcome.ActCode = 1;
        }
        return outcome;
    }
    if (!legal)
        return outcome;

    if (state.Verdict.ShootAllowed) {
        const int target = state.Verdict.ShootTarget;
        ResolveShot(state, side, (target > 0 ? target : -target) - 1);
        outcome.What = BoardClickOutcome::Kind::Shot;
        outcome.ActCode = 2;
        return outcome;
    }
    if (fuelBlocked)
        return outcome;

    outcome.ActCode = state.Verdict.MinePickup ? 4 : 1;
    if (state.Verdict.FlagLoad)
        outcome.ActCode = 5;
    const bool layMine = leaveMine && MineLayingOffered(state, side, slot, from);
    if (layMine)
        outcome.ActCode = 3;
    ExecuteMove(state, side, slot, from, to, layMine);
    outcome.What = BoardClickOutcome::Kind::Moved;
    return outcome;
}

} // namespace vk
