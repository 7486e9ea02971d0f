#include "board/Victory.h"

#include "shell/RunTimeFault.h"

namespace vk {

TurnVerdict VerdictAfterLocalTurn(const BoardState& state, int localSide)
{
    CheckIndex(localSide, 1, 2, "Side");
    if (state.ReserveCompanies(OtherSide(localSide)) == kCompaniesPerArmy ||
        state.FlagHome(localSide) == kFlagsPerArmy)
        return TurnVerdict::GameWon;
    return TurnVerdict::GoesOn;
}

TurnVerdict VerdictAfterOpponentTurn(const BoardState& state, int localSide)
{
    CheckIndex(localSide, 1, 2, "Side");
    if (state.ReserveCompanies(localSide) == kCompaniesPerArmy ||
        state.FlagHome(OtherSide(localSide)) == kFlagsPerArmy)
        return TurnVerdict::GameLost;
    return TurnVerdict::GoesOn;
}

} // namespace vk
