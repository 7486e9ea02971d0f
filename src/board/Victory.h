#pragma once

#include "board/BoardState.h"

namespace vk {

// The end of a game by play, tested only after a whole turn, never during it.
enum class TurnVerdict {
    GoesOn,
    GameWon,   // GameWon of the local player
    GameLost,  // GameLost of the local player
};

// After the local player's turn: won when the opponent's ReserveCompanies is
// 25 (every company of that army in the reserve) or the local FlagHome is 5.
// Only GameWon can come from this test, even if the local reserve is 25 too.
TurnVerdict VerdictAfterLocalTurn(const BoardState& state, int localSide);

// After the opponent's turn: lost when the local ReserveCompanies is 25 or the
// opponent's FlagHome is 5. Only GameLost can come from this test.
TurnVerdict VerdictAfterOpponentTurn(const BoardState& state, int localSide);

} // namespace vk
