// Mines and flags: the store, the commando's loading, the question of laying a
// mine, the flag count and the flag covers.

#include <gtest/gtest.h>

#include "CombatFixtures.h"
#include "board/MinesAndFlags.h"
#include "board/Shooting.h"
#include "shell/RunTimeFault.h"

namespace vk {
namespace {

using test::PutOnRoad;
using test::StartPosition;

TEST(Mines, FirstStoredMineCountsFromZero)
{
    BoardState state = StartPosition(1);
    EXPECT_EQ(FirstStoredMine(state, 1), 0);
    EXPECT_EQ(FirstStoredMine(state, 2), 0);
    state.MinePos(1, 0) = -6;
    state.MinePos(1, 1) = 40;
    EXPECT_EQ(FirstStoredMine(state, 1), 2);
}

// A mine captured by the enemy lies for good in the other camp: in its owner's
// array it holds the other army's camp field, and it is never in the store again.
TEST(Mines, CapturedMineIsNotInTheStore)
{
    BoardState state = StartPosition(1);
    for (int mine = 0; mine < 4; ++mine)
        state.MinePos(2, mine) = 40 + mine;
    state.MinePos(2, 4) = 113;
    EXPECT_EQ(FirstStoredMine(state, 2), -1);
}

TEST(Mines, CommandoInItsCampLoadsAMine)
{
    BoardState state = StartPosition(1);
    ASSERT_TRUE(LoadMineInCamp(state, 1, 6, 0));
    EXPECT_EQ(state.MinePos(1, 0), -6);
    EXPECT_FALSE(state.MinePicture(1, 0).Visible);
    EXPECT_EQ(FirstStoredMine(state, 1), 1);

    // Taken out again before the commando leaves.
    ASSERT_TRUE(UnloadMineInCamp(state, 1, 6));
    EXPECT_EQ(state.MinePos(1, 0), 113);
    EXPECT_TRUE(state.MinePicture(1, 0).Visible);
    EXPECT_FALSE(UnloadMineInCamp(state, 1, 6));
}

TEST(Mines, OnlyACommandoInItsOwnCampLoads)
{
    BoardState state = StartPosition(2);
    const BoardState before = state;
    EXPECT_FALSE(LoadMineInCamp(state, 2, 8, 0));  // a genie takes mines only from the road
    EXPECT_FALSE(LoadMineInCamp(state, 2, 0, 0));
    EXPECT_EQ(state, before);

    PutOnRoad(state, 2, 7, 97, 1);
    const BoardState onRoad = state;
    EXPECT_FALSE(LoadMineInCamp(state, 2, 7, 0));
    EXPECT_EQ(state, onRoad);

    EXPECT_TRUE(LoadMineInCamp(state, 2, 6, 3));
    EXPECT_EQ(state.MinePos(2, 3), -6);
    // That mine is no longer in the store.
    EXPECT_FALSE(LoadMineInCamp(state, 2, 6, 3));
    EXPECT_THROW(LoadMineInCamp(state, 2, 6, 5), RunTimeFault);
}

TEST(Mines, LayingIsOfferedToACommandoWithAMineOnAStraightRoad)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 6, 7, 1, 1, 0);  // "commando_1_1_1_n" on field 7, MineSide 1
    EXPECT_TRUE(MineLayingOffered(state, 1, 6, 7));
    PutOnRoad(state, 1, 7, 5, 2, 1, 1);  // field 5, MineSide 2
    EXPECT_TRUE(MineLayingOffered(state, 1, 7, 5));
    PutOnRoad(state, 2, 6, 3, 1, 1, 0);  // field 3, MineSide 3
    EXPECT_TRUE(MineLayingOffered(state, 2, 6, 3));
}

TEST(Mines, NoQuestionOnABendOrJunction)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 6, 8, 1, 1, 1);  // field 8: a junction, MineSide 0
    EXPECT_FALSE(MineLayingOffered(state, 1, 6, 8));
    PutOnRoad(state, 1, 7, 12, 1, 1, 0);
    EXPECT_TRUE(MineLayingOffered(state, 1, 7, 12));  // field 12, MineSide 3
    PutOnRoad(state, 2, 7, 77, 1, 1, 0);  // field 77: a bend
    EXPECT_FALSE(MineLayingOffered(state, 2, 7, 77));
}

TEST(Mines, NoQuestionWithoutAMineOrForAGenie)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 6, 7, 1, 0, 0);  // no mine aboard
    EXPECT_FALSE(MineLayingOffered(state, 1, 6, 7));
    PutOnRoad(state, 1, 8, 5, 1, 1, 1);  // a genie with its own mine never lays it
    EXPECT_FALSE(MineLayingOffered(state, 1, 8, 5));
}

TEST(Mines, NoQuestionOffTheRoad)
{
    BoardState state = StartPosition(1);
    state.VehicleTag(1, 6) = "commando_1_1_1_o";
    EXPECT_FALSE(MineLayingOffered(state, 1, 6, 113));
    EXPECT_FALSE(MineLayingOffered(state, 1, 6, 114));
    EXPECT_FALSE(MineLayingOffered(state, 1, 6, 0));
}

TEST(Mines, IndicesOutsideTheTablesAreFaults)
{
    BoardState state = StartPosition(1);
    EXPECT_THROW(FirstStoredMine(state, 0), RunTimeFault);
    EXPECT_THROW(FirstStoredMine(state, 3), RunTimeFault);
    EXPECT_THROW(LoadMineInCamp(state, 3, 6, 0), RunTimeFault);
    EXPECT_THROW(LoadMineInCamp(state, 1, 11, 0), RunTimeFault);
    EXPECT_THROW(LoadMineInCamp(state, 1, 6, -1), RunTimeFault);
    EXPECT_THROW(UnloadMineInCamp(state, 0, 6), RunTimeFault);
    EXPECT_THROW(UnloadMineInCamp(state, 1, -1), RunTimeFault);
    EXPECT_THROW(MineLayingOffered(state, 3, 6, 7), RunTimeFault);
    EXPECT_THROW(MineLayingOffered(state, 1, 11, 7), RunTimeFault);
    EXPECT_THROW(FlagCount(state, 0), RunTimeFault);
}

TEST(Flags, FiveFlagsPerArmyAtTheStart)
{
    const BoardState state = StartPosition(1);
    EXPECT_EQ(FlagCount(state, 1), 5);
    EXPECT_EQ(FlagCount(state, 2), 5);
    EXPECT_EQ(state.FlagReserve(1), 5);
    EXPECT_EQ(state.FlagCarried(1), 0);
    EXPECT_EQ(state.FlagHome(1), 0);
}

// Edge case: five flags need every flag of the reserve; a shot-down carrier
// gives its flag back to the reserve, where it can be taken again.
TEST(Flags, ShotDownCarrierReturnsItsFlagToTheReserve)
{
    BoardState state = StartPosition(2);
    state.FlagReserve(1) = 0;
    state.FlagCarried(1) = 1;
    state.FlagHome(1) = 4;
    PutOnRoad(state, 1, 5, 66, 2, 1, 1);

    ResolveShot(state, 2, 5);

    EXPECT_EQ(state.FlagReserve(1), 1);
    EXPECT_EQ(state.FlagCarried(1), 0);
    EXPECT_EQ(state.FlagHome(1), 4);
    EXPECT_EQ(FlagCount(state, 1), 5);
}

TEST(Flags, CoverOfArmyOneShrinksInHeight)
{
    const int heights[] = {2120, 1696, 1272, 848, 424, 0};
    for (int home = 0; home <= 5; ++home) {
        EXPECT_EQ(FlagCoverFor(1, home).Width, 415) << home;
        EXPECT_EQ(FlagCoverFor(1, home).Height, heights[home]) << home;
    }
}

TEST(Flags, CoverOfArmyTwoShrinksInWidth)
{
    const int widths[] = {2115, 1692, 1269, 846, 423, 0};
    for (int home = 0; home <= 5; ++home) {
        EXPECT_EQ(FlagCoverFor(2, home).Width, widths[home]) << home;
        EXPECT_EQ(FlagCoverFor(2, home).Height, 415) << home;
    }
}

TEST(Flags, CoverOfANegativeSizeIsAFault)
{
    EXPECT_THROW(FlagCoverFor(1, 6), RunTimeFault);
    EXPECT_THROW(FlagCoverFor(2, 6), RunTimeFault);
    EXPECT_THROW(FlagCoverFor(0, 1), RunTimeFault);
    EXPECT_THROW(FlagCoverFor(3, 1), RunTimeFault);
}

} // namespace
} // namespace vk
