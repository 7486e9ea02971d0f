#include "board/Movement.h"
#include "board/BoardView.h"
#include "BoardFixtures.h"

#include <gtest/gtest.h>

namespace vk {
namespace {

using testing::LayMine;
using testing::LoadCompanies;
using testing::LoadOwnMine;
using testing::NewGame;
using testing::PutVehicle;

PlacedBox BoxOf(const Picture& picture) { return PlacedBox{picture.Left, picture.Top, picture.Width, picture.Height}; }

void Move(BoardState& state, int side, int slot, int from, int to, int steps, bool leaveMine = false)
{
    ASSERT_TRUE(IsLegalMove(state, side, slot, from, to, steps, true));
    ExecuteMove(state, side, slot, from, to, leaveMine);
}

TEST(ExecuteMove, PlainMoveOnTheRoad)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 1, 20, kEast);
    LoadCompanies(state, 1, 1, 2);
    Move(state, 1, 1, 20, 26, 6);
    EXPECT_EQ(state.VehiclePos(1, 1), 26);
    EXPECT_EQ(state.VehicleDir(1, 1), kNorth);
    EXPECT_EQ(state.VehicleTag(1, 1), "kanon_1_2_n");
    EXPECT_EQ(state.BoardCell(20), 0);
    EXPECT_EQ(state.BoardCell(26), 2);
    EXPECT_EQ(BoxOf(state.VehiclePicture(1, 1)), (PlacedBox{11645, 3210, 330, 750}));
    EXPECT_EQ(state.CompanySum(1), 25);
}

TEST(ExecuteMove, ArmyTwoInView2IsPlacedMirrored)
{
    BoardState state = NewGame();
    state.LocalSide = 2;
    ToggleBoardSide(state);
    PutVehicle(state, 2, 0, 20, kWest);
    Move(state, 2, 0, 20, 19, 1);
    EXPECT_EQ(state.BoardCell(19), -1);
    EXPECT_EQ(state.VehicleTag(2, 0), "tank_2_0_w");
    EXPECT_EQ(BoxOf(state.VehiclePicture(2, 0)),
              (PlacedBox{state.BoardWidth - (6620 + 750), state.BoardHeight - (4475 + 330), 750, 330}));
}

TEST(ExecuteMove, IntoTheHQTakesTheFirstFreePlace)
{
    BoardState state = NewGame();
    ASSERT_TRUE(SendCampVehicleToHQ(state, 1, 5));
    PutVehicle(state, 1, 0, 71, kNorth);
    Move(state, 1, 0, 71, 114, 1);
    EXPECT_EQ(state.VehiclePos(1, 0), 114);
    EXPECT_EQ(state.VehicleDir(1, 0), kEast);
    EXPECT_EQ(state.VehicleTag(1, 0), "tank_1_0_o");
    EXPECT_EQ(state.HQCount(1), 2);
    EXPECT_FALSE(state.HQPlaceFree(1, 1));
    EXPECT_EQ(BoxOf(state.VehiclePicture(1, 0)), (PlacedBox{4630, 6140, 750, 330}));
    EXPECT_EQ(state.BoardCell(71), 0);

    PutVehicle(state, 2, 0, 100, kSouth);
    Move(state, 2, 0, 100, 117, 1);
    EXPECT_EQ(state.VehicleDir(2, 0), kWest);
    EXPECT_EQ(state.VehicleTag(2, 0), "tank_2_0_w");
    EXPECT_EQ(BoxOf(state.VehiclePicture(2, 0)), (PlacedBox{19635, 5680, 750, 330}));
}

TEST(ExecuteMove, LeavingTheHQFreesThePlaceFoundByThePictureTop)
{
    BoardState state = NewGame();
    ASSERT_TRUE(SendCampVehicleToHQ(state, 1, 0));
    ASSERT_TRUE(SendCampVehicleToHQ(state, 1, 1));
    ASSERT_TRUE(SendCampVehicleToHQ(state, 1, 2));
    Move(state, 1, 1, 114, 83, 1);
    EXPECT_EQ(state.HQCount(1), 2);
    EXPECT_FALSE(state.HQPlaceFree(1, 0));
    EXPECT_TRUE(state.HQPlaceFree(1, 1));
    EXPECT_FALSE(state.HQPlaceFree(1, 2));
    EXPECT_EQ(state.VehicleDir(1, 1), kSouth);
    EXPECT_EQ(state.BoardCell(83), 2);

    // The same in the turned view, where the tops are mirrored.
    BoardState turned = NewGame();
    turned.LocalSide = 2;
    ToggleBoardSide(turned);
    ASSERT_TRUE(SendCampVehicleToHQ(turned, 2, 0));
    ASSERT_TRUE(SendCampVehicleToHQ(turned, 2, 1));
    Move(turned, 2, 0, 117, 100, 1);
    EXPECT_TRUE(turned.HQPlaceFree(2, 0));
    EXPECT_FALSE(turned.HQPlaceFree(2, 1));
    EXPECT_EQ(turned.HQCount(2), 1);
}

TEST(ExecuteMove, IntoTheOwnCampUnloadsCompanies)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 72, kNorth);
    LoadCompanies(state, 1, 0, 4);
    EXPECT_EQ(state.CampCompanies(1), 11);
    Move(state, 1, 0, 72, 113, 5);
    EXPECT_EQ(state.VehiclePos(1, 0), 113);
    EXPECT_EQ(state.VehicleCompanies(1, 0), 0);
    EXPECT_EQ(state.CampCompanies(1), 15);
    EXPECT_EQ(state.VehicleTag(1, 0), "tank_1_0_o");
    EXPECT_EQ(state.VehicleDir(1, 0), kEast);
    EXPECT_EQ(BoxOf(state.VehiclePicture(1, 0)), (PlacedBox{1905, 7630, 750, 330}));
    EXPECT_EQ(state.BoardCell(72), 0);
}

TEST(ExecuteMove, HeadingsOfTheCampOfArmy2BySlot)
{
    const int expected[11] = {3, 3, 3, 1, 1, 1, 3, 3, 1, 1, 1};
    for (int slot = 0; slot < 11; ++slot) {
        BoardState state = NewGame();
        PutVehicle(state, 2, slot, 100, kSouth);
        Move(state, 2, slot, 100, 116, 2);
        EXPECT_EQ(state.VehicleDir(2, slot), expected[slot]) << slot;
        EXPECT_EQ(TagHeading(state.VehicleTag(2, slot)), expected[slot]) << slot;
    }
}

TEST(ExecuteMove, JeepReachingItsCampGoesBackToItsIsland)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 10, 72, kNorth);
    state.VehicleCompanies(1, 10) = 3;
    state.PrisonCompanies(1) = 0;
    state.ReserveCompanies(1) = 7;
    state.VehicleTag(1, 10) = "jeep_1_3_n";
    Move(state, 1, 10, 72, 113, 3);
    EXPECT_EQ(state.VehiclePos(1, 10), 115);
    EXPECT_EQ(state.VehicleCompanies(1, 10), 0);
    EXPECT_EQ(state.CampCompanies(1), 18);
    EXPECT_EQ(state.VehicleTag(1, 10), "jeep_1_0_w");
    EXPECT_EQ(state.VehicleDir(1, 10), kWest);
    EXPECT_EQ(BoxOf(state.VehiclePicture(1, 10)), (PlacedBox{22170, 10840, 750, 330}));
    EXPECT_EQ(state.CompanySum(1), 25);

    PutVehicle(state, 2, 10, 100, kSouth);
    Move(state, 2, 10, 100, 116, 2);
    EXPECT_EQ(state.VehiclePos(2, 10), 118);
    EXPECT_EQ(state.VehicleTag(2, 10), "jeep_2_0_o");
    EXPECT_EQ(BoxOf(state.VehiclePicture(2, 10)), (PlacedBox{2310, 1230, 750, 330}));
}

TEST(ExecuteMove, JeepBackToItsIsland)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 10, 81, kWest);
    state.VehicleCompanies(1, 10) = 2;
    state.PrisonCompanies(1) = 0;
    state.ReserveCompanies(1) = 8;
    state.VehicleTag(1, 10) = "jeep_1_2_w";
    Move(state, 1, 10, 81, 115, 4);
    EXPECT_EQ(state.VehiclePos(1, 10), 115);
    EXPECT_EQ(state.VehicleCompanies(1, 10), 2); // an island is no camp
    EXPECT_EQ(state.VehicleDir(1, 10), kWest);
    EXPECT_EQ(state.VehicleTag(1, 10), "jeep_1_2_w");
    EXPECT_EQ(BoxOf(state.VehiclePicture(1, 10)), (PlacedBox{22170, 10840, 750, 330}));
    EXPECT_EQ(state.BoardCell(81), 0);
}

TEST(ExecuteMove, CrossingAForwardPostEarnsADraw)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 74, kWest);
    Move(state, 1, 0, 74, 75, 1);
    EXPECT_EQ(state.PendingDraws, 1);
    EXPECT_FALSE(state.Verdict.CompassCrossed);
    Move(state, 1, 0, 75, 76, 1);
    EXPECT_EQ(state.PendingDraws, 1);
}

TEST(ExecuteMove, CommandoLaysItsMineOnTheFieldItLeaves)
{
    BoardState state = NewGame();
    LoadOwnMine(state, 1, 6);
    PutVehicle(state, 1, 6, 20, kEast);
    LoadCompanies(state, 1, 6, 2);
    EXPECT_EQ(state.VehicleTag(1, 6), "commando_1_2_1_o");
    Move(state, 1, 6, 20, 21, 1, true);
    EXPECT_EQ(state.VehicleTag(1, 6), "commando_1_2_0_o");
    EXPECT_EQ(state.MinePos(1, 0), 20);
    EXPECT_EQ(state.BoardCell(20), 12);
    EXPECT_EQ(state.BoardCell(21), 7);
    EXPECT_EQ(state.MinePicture(1, 0), (Picture{7430, 4475, 750, 330, true, false, "mijn_1_u.gif"}));

    BoardState other = NewGame();
    LoadOwnMine(other, 2, 7);
    PutVehicle(other, 2, 7, 7, kNorth);
    Move(other, 2, 7, 7, 8, 1, true);
    EXPECT_EQ(other.BoardCell(7), -12);
    EXPECT_EQ(other.MinePicture(2, 0), (Picture{10340, 1525, 330, 750, true, false, "mijn_2_l.gif"}));
}

TEST(ExecuteMove, GeniePicksUpOwnAndEnemyMines)
{
    BoardState state = NewGame();
    LayMine(state, 1, 2, 19);
    PutVehicle(state, 1, 8, 20, kEast);
    Move(state, 1, 8, 20, 19, 1);
    EXPECT_EQ(state.MinePos(1, 2), -8);
    EXPECT_EQ(state.VehicleTag(1, 8), "genie_1_0_1_w");
    EXPECT_EQ(state.BoardCell(19), 9);
    EXPECT_FALSE(state.MinePicture(1, 2).Visible);
    EXPECT_EQ(BoxOf(state.MinePicture(1, 2)), (PlacedBox{3565, 10035, 205, 330}));

    LayMine(state, 2, 4, 22);
    PutVehicle(state, 1, 9, 23, kWest);
    Move(state, 1, 9, 23, 22, 1);
    EXPECT_EQ(state.MinePos(2, 4), 5 - 9);
    EXPECT_EQ(state.VehicleTag(1, 9), "genie_1_0_2_w");
    EXPECT_FALSE(state.MinePicture(2, 4).Visible);
    EXPECT_EQ(BoxOf(state.MinePicture(2, 4)), (PlacedBox{22510, 1935, 205, 330}));
}

TEST(ExecuteMove, InfantryLoadsAFlag)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 4, 68, kSouth);
    LoadCompanies(state, 1, 4, 3);
    Move(state, 1, 4, 68, 69, 1);
    EXPECT_EQ(state.VehicleTag(1, 4), "infanterie_1_3_1_o");
    EXPECT_EQ(state.FlagReserve(1), 4);
    EXPECT_EQ(state.FlagCarried(1), 1);
    EXPECT_FALSE(state.Verdict.FlagLoad);
    // A second move off the field loads nothing: the mark is 1.
    Move(state, 1, 4, 69, 70, 1);
    EXPECT_EQ(state.FlagReserve(1), 4);
    EXPECT_EQ(state.VehicleTag(1, 4), "infanterie_1_3_1_o");

    // A refused flag (FlagLoad cleared by the question) loads nothing.
    BoardState refused = NewGame();
    PutVehicle(refused, 2, 3, 3, kNorth);
    ASSERT_TRUE(IsLegalMove(refused, 2, 3, 3, 2, 1, true));
    refused.Verdict.FlagLoad = false;
    ExecuteMove(refused, 2, 3, 3, 2, false);
    EXPECT_EQ(refused.FlagReserve(2), 5);
    EXPECT_EQ(refused.VehicleTag(2, 3), "infanterie_2_0_0_w");
}

// Edge case: a commando driving into its own camp with a mine unloads it; nothing is lost.
TEST(ExecuteMove, CampUnloadsMinesAndFlags)
{
    BoardState state = NewGame();
    LoadOwnMine(state, 1, 7);
    PutVehicle(state, 1, 7, 73, kNorth);
    Move(state, 1, 7, 73, 113, 6);
    EXPECT_EQ(state.MinePos(1, 0), 113);
    EXPECT_EQ(state.MinePicture(1, 0), (Picture{2745, 10035, 205, 330, true, false, "mijn_1_top.gif"}));
    EXPECT_EQ(state.VehicleTag(1, 7), "commando_1_0_0_o");

    // A genie with an enemy mine brings it into this camp for good.
    state.MinePos(2, 3) = 5 - 8;
    PutVehicle(state, 1, 8, 73, kNorth);
    state.VehicleTag(1, 8) = "genie_1_0_2_n";
    Move(state, 1, 8, 73, 113, 4);
    EXPECT_EQ(state.MinePos(2, 3), 113);
    EXPECT_TRUE(state.CapturedMinePicture(1, 3).Visible);
    EXPECT_EQ(BoxOf(state.CapturedMinePicture(1, 3)), (PlacedBox{3360, 10035, 205, 330}));
    EXPECT_EQ(state.VehicleTag(1, 8), "genie_1_0_0_o");

    // Infantry with a flag brings it home.
    state.FlagReserve(1) = 4;
    state.FlagCarried(1) = 1;
    PutVehicle(state, 1, 5, 73, kNorth);
    state.VehicleTag(1, 5) = "infanterie_1_0_1_n";
    Move(state, 1, 5, 73, 113, 4);
    EXPECT_EQ(state.FlagCarried(1), 0);
    EXPECT_EQ(state.FlagHome(1), 1);
    EXPECT_EQ(state.VehicleTag(1, 5), "infanterie_1_0_0_o");
}

TEST(ExecuteMove, MineBroughtHomeInView2IsMirroredWith205)
{
    BoardState state = NewGame();
    state.LocalSide = 2;
    ToggleBoardSide(state);
    LoadOwnMine(state, 2, 6);
    PutVehicle(state, 2, 6, 100, kSouth);
    Move(state, 2, 6, 100, 116, 2);
    const Picture& mine = state.MinePicture(2, 0);
    EXPECT_EQ(mine.Left, state.BoardWidth - (20870 + 205));
    EXPECT_EQ(mine.Top, state.BoardHeight - (1935 + 330));
    EXPECT_TRUE(mine.Visible);
    // A redraw places the same mine with 220.
    DrawBoardSide(state, 2);
    EXPECT_EQ(state.MinePicture(2, 0).Left, state.BoardWidth - (20870 + 220));
}

// Cancelling a pick from the camp: to the HQ and back gives companies and mine back.
TEST(ExecuteMove, CancelledCampPickGivesEverythingBack)
{
    BoardState state = NewGame();
    LoadCompanies(state, 1, 6, 2);
    LoadOwnMine(state, 1, 6);
    state.VehicleTag(1, 6) = MakeVehicleTag(6, 1, 2, 1, kEast);
    ExecuteMove(state, 1, 6, 113, 114, false);
    ExecuteMove(state, 1, 6, 114, 113, false);
    EXPECT_EQ(state.VehiclePos(1, 6), 113);
    EXPECT_EQ(state.CampCompanies(1), 15);
    EXPECT_EQ(state.VehicleCompanies(1, 6), 0);
    EXPECT_EQ(state.MinePos(1, 0), 113);
    EXPECT_EQ(state.HQCount(1), 0);
    EXPECT_TRUE(state.HQPlaceFree(1, 0));
    EXPECT_EQ(state.VehicleTag(1, 6), "commando_1_0_0_o");
    EXPECT_EQ(BoxOf(state.VehiclePicture(1, 6)), (PlacedBox{1905, 10155, 750, 330}));
}

TEST(ExecuteMove, CampVehicleWithBothDiceGoesByTheHQ)
{
    BoardState state = NewGame();
    LoadCompanies(state, 1, 3, 3);
    ASSERT_TRUE(IsLegalMove(state, 1, 3, 113, 73, 4, false));
    ExecuteMove(state, 1, 3, 113, 73, false);
    EXPECT_EQ(state.VehiclePos(1, 3), 73);
    EXPECT_EQ(state.VehicleDir(1, 3), kNorth);
    EXPECT_EQ(state.HQCount(1), 0);
    EXPECT_EQ(state.BoardCell(73), 4);
}

TEST(SendCampVehicleToHQ, TakesThePlaceWithoutChangingTheTag)
{
    BoardState state = NewGame();
    LoadCompanies(state, 2, 1, 3);
    state.VehicleTag(2, 1) = "kanon_2_3_w";
    ASSERT_TRUE(SendCampVehicleToHQ(state, 2, 1));
    EXPECT_EQ(state.VehiclePos(2, 1), 117);
    EXPECT_EQ(state.VehicleDir(2, 1), kWest);
    EXPECT_EQ(state.VehicleTag(2, 1), "kanon_2_3_w");
    EXPECT_EQ(state.HQCount(2), 1);
    EXPECT_FALSE(state.HQPlaceFree(2, 0));
    EXPECT_EQ(BoxOf(state.VehiclePicture(2, 1)), (PlacedBox{19635, 5680, 750, 330}));
}

} // namespace
} // namespace vk
