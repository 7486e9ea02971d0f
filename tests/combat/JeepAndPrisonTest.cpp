// The prison, the jeep that rescues prisoners, and the Vrijgeleide seam of a
// shot at the jeep.

#include <gtest/gtest.h>

#include "CombatFixtures.h"
#include "board/BoardView.h"
#include "board/Shooting.h"
#include "shell/RunTimeFault.h"

namespace vk {
namespace {

using test::CellOf;
using test::PutOnRoad;
using test::StartPosition;

// Moves `count` companies of an army from its camp into the prison.
void Imprison(BoardState& state, int side, int count)
{
    state.CampCompanies(side) -= count;
    state.PrisonCompanies(side) += count;
}

TEST(LoadJeepOnIsland, OnePrisoner)
{
    BoardState state = StartPosition(1);
    Imprison(state, 1, 1);
    ASSERT_TRUE(LoadJeepOnIsland(state, 1));
    EXPECT_EQ(state.VehicleCompanies(1, 10), 1);
    EXPECT_EQ(state.PrisonCompanies(1), 0);
    EXPECT_EQ(state.VehicleTag(1, 10), "jeep_1_1_w");
    EXPECT_EQ(state.VehiclePos(1, 10), 115);
}

TEST(LoadJeepOnIsland, TwoPrisoners)
{
    BoardState state = StartPosition(1);
    Imprison(state, 1, 2);
    ASSERT_TRUE(LoadJeepOnIsland(state, 1));
    EXPECT_EQ(state.VehicleCompanies(1, 10), 2);
    EXPECT_EQ(state.PrisonCompanies(1), 0);
    EXPECT_EQ(state.VehicleTag(1, 10), "jeep_1_2_w");
}

TEST(LoadJeepOnIsland, AtMostThreePrisoners)
{
    BoardState state = StartPosition(1);
    Imprison(state, 1, 7);
    ASSERT_TRUE(LoadJeepOnIsland(state, 1));
    EXPECT_EQ(state.VehicleCompanies(1, 10), 3);
    EXPECT_EQ(state.PrisonCompanies(1), 4);
    EXPECT_EQ(state.VehicleTag(1, 10), "jeep_1_3_w");
    EXPECT_EQ(state.CompanySum(1), 25);
}

TEST(LoadJeepOnIsland, ArmyTwoTagsFaceEast)
{
    for (int prisoners : {1, 2, 3}) {
        BoardState state = StartPosition(2);
        Imprison(state, 2, prisoners);
        ASSERT_TRUE(LoadJeepOnIsland(state, 2));
        const char* expected[] = {"", "jeep_2_1_o", "jeep_2_2_o", "jeep_2_3_o"};
        EXPECT_EQ(state.VehicleTag(2, 10), expected[prisoners]);
        EXPECT_EQ(state.VehiclePos(2, 10), 118);
    }
}

TEST(LoadJeepOnIsland, RefusedWithAnEmptyPrison)
{
    BoardState state = StartPosition(1);
    const BoardState before = state;
    EXPECT_FALSE(LoadJeepOnIsland(state, 1));
    EXPECT_EQ(state, before);
}

TEST(LoadJeepOnIsland, RefusedOffTheIsland)
{
    BoardState state = StartPosition(1);
    Imprison(state, 1, 3);
    PutOnRoad(state, 1, 10, 80, 0, 0, 3);
    const BoardState before = state;
    EXPECT_FALSE(LoadJeepOnIsland(state, 1));
    EXPECT_EQ(state, before);
}

// A withdrawn choice keeps the prisoners aboard; choosing again with an empty
// prison is refused.
TEST(LoadJeepOnIsland, WithdrawnChoiceKeepsPrisonersAboard)
{
    BoardState state = StartPosition(1);
    Imprison(state, 1, 2);
    ASSERT_TRUE(LoadJeepOnIsland(state, 1));
    // The choice is withdrawn: nothing is undone.
    EXPECT_FALSE(LoadJeepOnIsland(state, 1));
    EXPECT_EQ(state.VehicleCompanies(1, 10), 2);
    EXPECT_EQ(state.PrisonCompanies(1), 0);
    EXPECT_EQ(state.CompanySum(1), 25);
}

// With prisoners left the jeep loads again and its companies are overwritten:
// the prisoners of the first loading are lost, and the army counts fewer than 25.
TEST(LoadJeepOnIsland, ReloadAfterWithdrawnChoiceLosesPrisoners)
{
    BoardState state = StartPosition(2);
    Imprison(state, 2, 5);
    ASSERT_TRUE(LoadJeepOnIsland(state, 2));
    EXPECT_EQ(state.VehicleCompanies(2, 10), 3);
    EXPECT_EQ(state.PrisonCompanies(2), 2);

    ASSERT_TRUE(LoadJeepOnIsland(state, 2));
    EXPECT_EQ(state.VehicleCompanies(2, 10), 2);
    EXPECT_EQ(state.PrisonCompanies(2), 0);
    EXPECT_EQ(state.VehicleTag(2, 10), "jeep_2_2_o");
    EXPECT_EQ(state.CompanySum(2), 22);
}

TEST(LoadJeepOnIsland, SideOutsideTheTableIsAFault)
{
    BoardState state = StartPosition(1);
    EXPECT_THROW(LoadJeepOnIsland(state, 0), RunTimeFault);
    EXPECT_THROW(LoadJeepOnIsland(state, 3), RunTimeFault);
}

// --- The Vrijgeleide seam ---------------------------------------------------

TEST(SafeConduct, CardThatStandsSendsTheJeepBackToItsIsland)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 10, 50, 2, 0, 1);  // two companies aboard, out of the camp's 15
    ASSERT_EQ(state.CampCompanies(2), 13);

    int asked = 0;
    SafeConductSeam seam{1, [&](int shooterSide) {
                             ++asked;
                             EXPECT_EQ(shooterSide, 1);
                             return SafeConductAnswer::JeepSentBack;
                         }};
    EXPECT_EQ(ResolveShot(state, 1, 10, seam), ShotResult::SafeConductHeld);

    EXPECT_EQ(asked, 1);
    EXPECT_EQ(state.CampCompanies(2), 15);
    EXPECT_EQ(state.VehicleCompanies(2, 10), 0);
    EXPECT_EQ(state.BoardCell(50), 0);
    EXPECT_EQ(state.VehiclePos(2, 10), 118);
    EXPECT_EQ(state.VehicleTag(2, 10), "jeep_2_0_o");
    EXPECT_EQ(state.ReserveCompanies(2), 10);
    EXPECT_EQ(state.PrisonCompanies(2), 0);
    EXPECT_EQ(state.CompanySum(2), 25);
    const Picture& picture = state.VehiclePicture(2, 10);
    EXPECT_EQ(picture.Left, 2310);
    EXPECT_EQ(picture.Top, 1230);
    EXPECT_EQ(picture.Width, 750);
    EXPECT_EQ(picture.Height, 330);
}

TEST(SafeConduct, ArmyOneJeepGoesBackFacingWest)
{
    BoardState state = StartPosition(2);
    PutOnRoad(state, 1, 10, 81, 1, 0, 3);
    SendJeepBackBySafeConduct(state, 1);
    EXPECT_EQ(state.VehiclePos(1, 10), 115);
    EXPECT_EQ(state.VehicleTag(1, 10), "jeep_1_0_w");
    EXPECT_EQ(state.CampCompanies(1), 15);
    EXPECT_EQ(state.BoardCell(81), 0);
}

TEST(SafeConduct, IslandPictureIsMirroredInTheTurnedView)
{
    BoardState state = StartPosition(2);
    state.BoardSide = 2;
    PutOnRoad(state, 1, 10, 81, 1, 0, 3);
    SendJeepBackBySafeConduct(state, 1);
    const Picture& picture = state.VehiclePicture(1, 10);
    EXPECT_EQ(picture.Left, state.BoardWidth - (22170 + 750));
    EXPECT_EQ(picture.Top, state.BoardHeight - (10840 + 330));
}

TEST(SafeConduct, ShotGoesOnWhenTheCardIsNotUsed)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 10, 50, 1, 0, 1);
    SafeConductSeam seam{1, [](int) { return SafeConductAnswer::ShotGoesOn; }};
    EXPECT_EQ(ResolveShot(state, 1, 10, seam), ShotResult::Destroyed);
    EXPECT_EQ(state.VehiclePos(2, 10), 0);
    EXPECT_EQ(state.ReserveCompanies(2), 11);
}

TEST(SafeConduct, AskedOnlyForTheJeep)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 0, 50, 2, 0, 1);
    bool asked = false;
    SafeConductSeam seam{1, [&](int) {
                             asked = true;
                             return SafeConductAnswer::JeepSentBack;
                         }};
    EXPECT_EQ(ResolveShot(state, 1, 0, seam), ShotResult::Captured);
    EXPECT_FALSE(asked);
}

// Edge case: on the opponent's copy the shooter is not the local player, and no
// question is asked there.
TEST(SafeConduct, NeverAskedOnTheCopyThatReplaysTheShot)
{
    BoardState state = StartPosition(2);
    PutOnRoad(state, 2, 10, 50, 1, 0, 1);
    bool asked = false;
    SafeConductSeam seam{2, [&](int) {
                             asked = true;
                             return SafeConductAnswer::JeepSentBack;
                         }};
    EXPECT_EQ(ResolveShot(state, 1, 10, seam), ShotResult::Destroyed);
    EXPECT_FALSE(asked);
}

TEST(SafeConduct, DefaultSeamNeverAsks)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 10, 50, 1, 0, 1);
    EXPECT_EQ(ResolveShot(state, 1, 10), ShotResult::Destroyed);
}

} // namespace
} // namespace vk
