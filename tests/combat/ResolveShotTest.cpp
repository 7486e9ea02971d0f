// What a hit does: a prisoner, or the destruction with everything aboard going
// back (companies to the reserve, a flag to the flag reserve, a mine to its store).

#include <gtest/gtest.h>

#include "CombatFixtures.h"
#include "board/CompanyDisplay.h"
#include "board/Shooting.h"
#include "shell/RunTimeFault.h"

namespace vk {
namespace {

using test::CellOf;
using test::PutOnRoad;
using test::StartPosition;

TEST(ResolveShot, HitTakesOneCompanyPrisoner)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 0, 30, 3, 0, 3);  // tank of army 2, 3 companies, heading w

    EXPECT_EQ(ResolveShot(state, 1, 0), ShotResult::Captured);

    EXPECT_EQ(state.VehicleCompanies(2, 0), 2);
    EXPECT_EQ(state.PrisonCompanies(2), 1);
    EXPECT_EQ(state.ReserveCompanies(2), 10);
    EXPECT_EQ(state.VehicleTag(2, 0), "tank_2_2_w");
    EXPECT_EQ(state.VehiclePos(2, 0), 30);
    EXPECT_EQ(state.BoardCell(30), -1);
    EXPECT_EQ(state.CompanySum(2), 25);
}

TEST(ResolveShot, HitRewritesTheCompaniesDigitOfEachType)
{
    BoardState state = StartPosition(2);
    PutOnRoad(state, 1, 1, 40, 4, 0, 1);
    PutOnRoad(state, 1, 4, 44, 3, 0, 3);
    PutOnRoad(state, 1, 7, 60, 2, 0, 0);
    PutOnRoad(state, 1, 9, 64, 2, 0, 2);

    ResolveShot(state, 2, 1);
    ResolveShot(state, 2, 4);
    ResolveShot(state, 2, 7);
    ResolveShot(state, 2, 9);

    EXPECT_EQ(state.VehicleTag(1, 1), "kanon_1_3_o");
    EXPECT_EQ(state.VehicleTag(1, 4), "infanterie_1_2_0_w");
    EXPECT_EQ(state.VehicleTag(1, 7), "commando_1_1_0_n");
    EXPECT_EQ(state.VehicleTag(1, 9), "genie_1_1_0_z");
    EXPECT_EQ(state.PrisonCompanies(1), 4);
    EXPECT_EQ(state.CompanySum(1), 25);
}

TEST(ResolveShot, LastCompanyDestroysAndGoesToTheReserveNotThePrison)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 3, 45, 1, 0, 1);

    EXPECT_EQ(ResolveShot(state, 1, 3), ShotResult::Destroyed);

    EXPECT_EQ(state.VehicleCompanies(2, 3), 0);
    EXPECT_EQ(state.ReserveCompanies(2), 11);
    EXPECT_EQ(state.PrisonCompanies(2), 0);
    EXPECT_EQ(state.VehiclePos(2, 3), 0);
    EXPECT_EQ(state.BoardCell(45), 0);
    EXPECT_EQ(state.VehicleTag(2, 3), "infanterie_2_0_0_o");
    EXPECT_EQ(state.CompanySum(2), 25);
}

TEST(ResolveShot, DestroyedTagsAllEndInO)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 0, 20, 1, 0, 3);
    PutOnRoad(state, 2, 2, 21, 1, 0, 3);
    PutOnRoad(state, 2, 6, 22, 1, 0, 3);
    PutOnRoad(state, 2, 10, 24, 0, 0, 3);
    for (int slot : {0, 2, 6, 10})
        EXPECT_EQ(ResolveShot(state, 1, slot), ShotResult::Destroyed);
    EXPECT_EQ(state.VehicleTag(2, 0), "tank_2_0_o");
    EXPECT_EQ(state.VehicleTag(2, 2), "kanon_2_0_o");
    EXPECT_EQ(state.VehicleTag(2, 6), "commando_2_0_0_o");
    EXPECT_EQ(state.VehicleTag(2, 10), "jeep_2_0_o");

    BoardState other = StartPosition(2);
    PutOnRoad(other, 1, 10, 81, 2, 0, 3);
    EXPECT_EQ(ResolveShot(other, 2, 10), ShotResult::Destroyed);
    EXPECT_EQ(other.VehicleTag(1, 10), "jeep_1_0_o");
}

// Edge case: infantry with a flag and three companies, hit once.
TEST(ResolveShot, InfantryWithFlagAndThreeCompaniesIsDestroyedByOneHit)
{
    BoardState state = StartPosition(2);
    PutOnRoad(state, 1, 4, 60, 3, 1, 1);  // "infanterie_1_3_1_o"
    state.FlagReserve(1) = 4;
    state.FlagCarried(1) = 1;

    EXPECT_EQ(ResolveShot(state, 2, 4), ShotResult::Destroyed);

    EXPECT_EQ(state.ReserveCompanies(1), 13);
    EXPECT_EQ(state.PrisonCompanies(1), 0);
    EXPECT_EQ(state.VehicleCompanies(1, 4), 0);
    EXPECT_EQ(state.FlagCarried(1), 0);
    EXPECT_EQ(state.FlagReserve(1), 5);
    EXPECT_EQ(state.FlagHome(1), 0);
    EXPECT_EQ(state.VehicleTag(1, 4), "infanterie_1_0_0_o");
    EXPECT_EQ(state.VehiclePos(1, 4), 0);
    EXPECT_EQ(state.BoardCell(60), 0);
}

// Edge case: a vehicle that left its camp with 0 companies goes to -1.
TEST(ResolveShot, EmptyVehicleGoesToMinusOneAndAddsAPrisoner)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 1, 33, 0, 0, 3);

    EXPECT_EQ(ResolveShot(state, 1, 1), ShotResult::Captured);

    EXPECT_EQ(state.VehicleCompanies(2, 1), -1);
    EXPECT_EQ(state.PrisonCompanies(2), 1);
    EXPECT_EQ(state.VehicleTag(2, 1), "kanon_2_-1_w");
    EXPECT_EQ(state.VehiclePos(2, 1), 33);
    // The signed sum still counts 25: the -1 aboard makes up for the prisoner.
    EXPECT_EQ(state.CompanySum(2), 25);

    // Never at exactly 1 again: every further hit takes another prisoner.
    EXPECT_EQ(ResolveShot(state, 1, 1), ShotResult::Captured);
    EXPECT_EQ(state.VehicleCompanies(2, 1), -2);
    EXPECT_EQ(state.PrisonCompanies(2), 2);
    EXPECT_EQ(state.VehicleTag(2, 1), "kanon_2_-2_w");
}

// Below zero the number takes two characters; the heading and the mark keep
// their places at the end of the tag, so such a vehicle never reads as a carrier.
TEST(ResolveShot, EmptyInfantryBelowZeroNeverReadsAsAFlagCarrier)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 4, 33, 0, 0, 0);
    for (int hit = 1; hit <= 4; ++hit)
        EXPECT_EQ(ResolveShot(state, 1, 4), ShotResult::Captured) << hit;
    EXPECT_EQ(state.VehicleCompanies(2, 4), -4);
    EXPECT_EQ(state.VehicleTag(2, 4), "infanterie_2_-4_0_n");
    EXPECT_EQ(state.FlagCarried(2), 0);
    EXPECT_EQ(state.FlagReserve(2), 5);
    EXPECT_EQ(state.PrisonCompanies(2), 4);
}

// Edge case: two shots in one turn at the same vehicle.
TEST(ResolveShot, TwoShotsAtTheSameVehicleEachTakeAPrisoner)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 0, 50, 3, 0, 3);

    EXPECT_EQ(ResolveShot(state, 1, 0), ShotResult::Captured);
    EXPECT_EQ(ResolveShot(state, 1, 0), ShotResult::Captured);
    EXPECT_EQ(state.VehicleCompanies(2, 0), 1);
    EXPECT_EQ(state.PrisonCompanies(2), 2);
    EXPECT_EQ(ResolveShot(state, 1, 0), ShotResult::Destroyed);
    EXPECT_EQ(state.ReserveCompanies(2), 11);
}

// Edge case: the prison has no upper bound.
TEST(ResolveShot, PrisonCanExceedTwenty)
{
    BoardState state = StartPosition(1);
    state.PrisonCompanies(2) = 20;
    state.CampCompanies(2) -= 20;
    PutOnRoad(state, 2, 0, 50, 5, 0, 3);

    ResolveShot(state, 1, 0);
    EXPECT_EQ(state.PrisonCompanies(2), 21);
    ResolveShot(state, 1, 0);
    EXPECT_EQ(state.PrisonCompanies(2), 22);
    EXPECT_EQ(state.CompanySum(2), 25);
    // Only 20 prisoner pictures exist.
    EXPECT_EQ(ShowCompanies(state, 2).Prison, 20);
}

TEST(ResolveShot, JeepIsAlwaysDestroyedAndItsPrisonersGoToTheReserve)
{
    BoardState state = StartPosition(1);
    state.PrisonCompanies(2) = 0;
    PutOnRoad(state, 2, 10, 111, 3, 0, 1);

    EXPECT_EQ(ResolveShot(state, 1, 10), ShotResult::Destroyed);

    EXPECT_EQ(state.ReserveCompanies(2), 13);
    EXPECT_EQ(state.VehicleCompanies(2, 10), 0);
    EXPECT_EQ(state.VehiclePos(2, 10), 0);
    EXPECT_EQ(state.BoardCell(111), 0);
    EXPECT_EQ(state.VehicleTag(2, 10), "jeep_2_0_o");
}

TEST(ResolveShot, EmptyJeepIsDestroyedToo)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 10, 112, 0, 0, 2);
    EXPECT_EQ(ResolveShot(state, 1, 10), ShotResult::Destroyed);
    EXPECT_EQ(state.ReserveCompanies(2), 10);
    EXPECT_EQ(state.PrisonCompanies(2), 0);
    EXPECT_EQ(state.VehiclePos(2, 10), 0);
}

TEST(ResolveShot, CommandoWithItsMineReturnsTheMineToItsOwnStore)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 6, 97, 2, 1, 3);  // "commando_2_2_1_w"
    state.MinePos(2, 0) = -6;
    state.MinePicture(2, 0).Visible = false;

    EXPECT_EQ(ResolveShot(state, 1, 6), ShotResult::Destroyed);

    EXPECT_EQ(state.MinePos(2, 0), 116);
    EXPECT_TRUE(state.MinePicture(2, 0).Visible);
    EXPECT_EQ(state.ReserveCompanies(2), 12);
    EXPECT_EQ(state.VehicleTag(2, 6), "commando_2_0_0_o");
    for (int mine = 1; mine < 5; ++mine)
        EXPECT_EQ(state.MinePos(2, mine), 116);
}

TEST(ResolveShot, GenieWithItsOwnMineReturnsItToItsOwnStore)
{
    BoardState state = StartPosition(2);
    PutOnRoad(state, 1, 8, 20, 2, 1, 1);  // "genie_1_2_1_o"
    state.MinePos(1, 3) = -8;
    state.MinePicture(1, 3).Visible = false;

    EXPECT_EQ(ResolveShot(state, 2, 8), ShotResult::Destroyed);

    EXPECT_EQ(state.MinePos(1, 3), 113);
    EXPECT_TRUE(state.MinePicture(1, 3).Visible);
    EXPECT_EQ(state.VehicleTag(1, 8), "genie_1_0_0_o");
}

TEST(ResolveShot, GenieWithAnEnemyMineGivesItBackToTheEnemy)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 9, 66, 1, 2, 1);  // "genie_2_1_2_o" carries a mine of army 1
    state.MinePos(1, 2) = 5 - 9;          // -4: carried by the enemy's genie of slot 9
    state.MinePicture(1, 2).Visible = false;

    EXPECT_EQ(ResolveShot(state, 1, 9), ShotResult::Destroyed);

    EXPECT_EQ(state.MinePos(1, 2), 113);
    EXPECT_TRUE(state.MinePicture(1, 2).Visible);
    for (int mine = 0; mine < 5; ++mine)
        EXPECT_EQ(state.MinePos(2, mine), 116);
    EXPECT_EQ(state.ReserveCompanies(2), 11);
}

TEST(ResolveShot, GenieOfSlotEightWithAnEnemyMine)
{
    BoardState state = StartPosition(2);
    PutOnRoad(state, 1, 8, 25, 2, 2, 0);
    state.MinePos(2, 4) = 5 - 8;  // -3
    ResolveShot(state, 2, 8);
    EXPECT_EQ(state.MinePos(2, 4), 116);
    EXPECT_EQ(state.ReserveCompanies(1), 12);
}

TEST(ResolveShot, DestroyedVehicleOfTheLocalPlayerGoesToStock)
{
    BoardState state = StartPosition(2);  // the local player has army 2 ...
    state.BoardSide = 2;                  // ... and sees the board turned
    PutOnRoad(state, 2, 3, 45, 1, 0, 1);
    ResolveShot(state, 1, 3);
    const Picture& picture = state.VehiclePicture(2, 3);
    EXPECT_TRUE(picture.InStock);
    EXPECT_EQ(picture.Left, 120);
    EXPECT_EQ(picture.Top, 3 * 480 + 360);
    EXPECT_EQ(picture.Width, 750);
    EXPECT_EQ(picture.Height, 330);
}

TEST(ResolveShot, DestroyedVehicleOfTheOpponentStaysOnTheMainWindow)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 5, 45, 1, 0, 1);
    ResolveShot(state, 1, 5);
    const Picture& picture = state.VehiclePicture(2, 5);
    EXPECT_FALSE(picture.InStock);
    EXPECT_EQ(picture.Left, 120);
    EXPECT_EQ(picture.Top, 5 * 480 + 1095);
    EXPECT_EQ(picture.Width, 750);
    EXPECT_EQ(picture.Height, 330);
}

TEST(ResolveShot, SlotOutsideTheTableIsAFault)
{
    BoardState state = StartPosition(1);
    EXPECT_THROW(ResolveShot(state, 1, -1), RunTimeFault);
    EXPECT_THROW(ResolveShot(state, 1, 11), RunTimeFault);
    EXPECT_THROW(ResolveShot(state, 0, 3), RunTimeFault);
    EXPECT_THROW(ResolveShot(state, 3, 3), RunTimeFault);
}

TEST(ResolveShot, DestroyingAVehicleOffTheRoadIsAFault)
{
    // A vehicle in its camp has no cell: only a road square can be shot on.
    BoardState state = StartPosition(1);
    state.VehicleCompanies(2, 0) = 1;
    state.CampCompanies(2) -= 1;
    EXPECT_THROW(ResolveShot(state, 1, 0), RunTimeFault);

    // A destroyed jeep (position 0) shot at again: a jeep is always destroyed.
    BoardState gone = StartPosition(1);
    PutOnRoad(gone, 2, 10, 45, 1, 0, 1);
    ResolveShot(gone, 1, 10);
    EXPECT_THROW(ResolveShot(gone, 1, 10), RunTimeFault);
}

TEST(ResolveShot, CellIsClearedWhateverItHeld)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 2, 0, 18, 1, 0, 3);
    EXPECT_EQ(state.BoardCell(18), CellOf(2, 0));
    ResolveShot(state, 1, 0);
    EXPECT_EQ(state.BoardCell(18), 0);
}

} // namespace
} // namespace vk
