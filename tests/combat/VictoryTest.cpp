// The two ends of a game by play, tested after each turn.

#include <gtest/gtest.h>

#include "CombatFixtures.h"
#include "board/Victory.h"
#include "shell/RunTimeFault.h"

namespace vk {
namespace {

using test::StartPosition;

// Puts every company of an army into the reserve.
void WipeOut(BoardState& state, int side)
{
    state.ReserveCompanies(side) = 25;
    state.CampCompanies(side) = 0;
    state.PrisonCompanies(side) = 0;
}

TEST(Victory, StartingPositionGoesOn)
{
    const BoardState state = StartPosition(1);
    EXPECT_EQ(VerdictAfterLocalTurn(state, 1), TurnVerdict::GoesOn);
    EXPECT_EQ(VerdictAfterOpponentTurn(state, 1), TurnVerdict::GoesOn);
    EXPECT_EQ(VerdictAfterLocalTurn(state, 2), TurnVerdict::GoesOn);
    EXPECT_EQ(VerdictAfterOpponentTurn(state, 2), TurnVerdict::GoesOn);
}

TEST(Victory, OpponentsReserveOfTwentyFiveWinsAfterTheOwnTurn)
{
    BoardState state = StartPosition(1);
    WipeOut(state, 2);
    EXPECT_EQ(VerdictAfterLocalTurn(state, 1), TurnVerdict::GameWon);
    // The other copy, for which army 2 is local, finds it after its opponent's turn.
    EXPECT_EQ(VerdictAfterOpponentTurn(state, 2), TurnVerdict::GameLost);
}

TEST(Victory, OwnReserveOfTwentyFiveLosesAfterTheOpponentsTurn)
{
    BoardState state = StartPosition(2);
    WipeOut(state, 2);
    EXPECT_EQ(VerdictAfterOpponentTurn(state, 2), TurnVerdict::GameLost);
    EXPECT_EQ(VerdictAfterLocalTurn(state, 2), TurnVerdict::GoesOn);
}

TEST(Victory, TwentyFourInTheReserveIsNotEnough)
{
    BoardState state = StartPosition(1);
    state.ReserveCompanies(2) = 24;
    state.CampCompanies(2) = 0;
    state.PrisonCompanies(2) = 1;  // one company still in the hands of the enemy
    EXPECT_EQ(VerdictAfterLocalTurn(state, 1), TurnVerdict::GoesOn);
}

TEST(Victory, FiveFlagsHomeWin)
{
    BoardState state = StartPosition(1);
    state.FlagReserve(1) = 0;
    state.FlagHome(1) = 5;
    EXPECT_EQ(VerdictAfterLocalTurn(state, 1), TurnVerdict::GameWon);
    EXPECT_EQ(VerdictAfterOpponentTurn(state, 2), TurnVerdict::GameLost);
    state.FlagHome(1) = 4;
    state.FlagCarried(1) = 1;
    EXPECT_EQ(VerdictAfterLocalTurn(state, 1), TurnVerdict::GoesOn);
}

TEST(Victory, OpponentsFiveFlagsLose)
{
    BoardState state = StartPosition(1);
    state.FlagReserve(2) = 0;
    state.FlagHome(2) = 5;
    EXPECT_EQ(VerdictAfterOpponentTurn(state, 1), TurnVerdict::GameLost);
    EXPECT_EQ(VerdictAfterLocalTurn(state, 1), TurnVerdict::GoesOn);
}

// Edge case: both reserves at 25 in one turn; the test of that turn decides,
// and it looks at the opponent first: after the own turn the game is won,
// after the opponent's turn it is lost.
TEST(Victory, BothReservesFullInOneTurnGoToWhoseTurnItWas)
{
    BoardState state = StartPosition(1);
    WipeOut(state, 1);
    WipeOut(state, 2);
    EXPECT_EQ(VerdictAfterLocalTurn(state, 1), TurnVerdict::GameWon);
    EXPECT_EQ(VerdictAfterOpponentTurn(state, 1), TurnVerdict::GameLost);
    EXPECT_EQ(VerdictAfterLocalTurn(state, 2), TurnVerdict::GameWon);
    EXPECT_EQ(VerdictAfterOpponentTurn(state, 2), TurnVerdict::GameLost);
}

TEST(Victory, SideOutsideTheTableIsAFault)
{
    const BoardState state = StartPosition(1);
    EXPECT_THROW(VerdictAfterLocalTurn(state, 0), RunTimeFault);
    EXPECT_THROW(VerdictAfterOpponentTurn(state, 3), RunTimeFault);
}

} // namespace
} // namespace vk
