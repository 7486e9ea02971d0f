#include "board/BoardState.h"
#include "board/CompanyDisplay.h"
#include "shell/RunTimeFault.h"
#include "BoardFixtures.h"

#include <gtest/gtest.h>

namespace vk {
namespace {

using testing::NewGame;

TEST(StartingPosition, BoardIsEmptyAndHQsFree)
{
    const BoardState state = NewGame();
    for (int field = 1; field <= 112; ++field)
        EXPECT_EQ(state.BoardCell(field), 0);
    for (int side = 1; side <= 2; ++side) {
        EXPECT_EQ(state.HQCount(side), 0);
        for (int place = 0; place < 3; ++place)
            EXPECT_TRUE(state.HQPlaceFree(side, place));
    }
    EXPECT_EQ(state.BoardSide, 1);
    EXPECT_EQ(state.PendingDraws, 0);
}

TEST(StartingPosition, CompaniesMinesAndFlags)
{
    const BoardState state = NewGame();
    for (int side = 1; side <= 2; ++side) {
        EXPECT_EQ(state.ReserveCompanies(side), 10);
        EXPECT_EQ(state.CampCompanies(side), 15);
        EXPECT_EQ(state.PrisonCompanies(side), 0);
        EXPECT_EQ(state.CompanySum(side), 25);
        EXPECT_EQ(state.FlagReserve(side), 5);
        EXPECT_EQ(state.FlagCarried(side), 0);
        EXPECT_EQ(state.FlagHome(side), 0);
        for (int mine = 0; mine < 5; ++mine)
            EXPECT_EQ(state.MinePos(side, mine), side == 1 ? 113 : 116);
    }
}

TEST(StartingPosition, VehiclesPositionsHeadingsAndTags)
{
    const BoardState state = NewGame();
    for (int slot = 0; slot < 10; ++slot) {
        EXPECT_EQ(state.VehiclePos(1, slot), 113);
        EXPECT_EQ(state.VehiclePos(2, slot), 116);
        EXPECT_EQ(state.VehicleDir(1, slot), 1);
        EXPECT_EQ(state.VehicleCompanies(1, slot), 0);
        EXPECT_EQ(state.VehicleCompanies(2, slot), 0);
    }
    EXPECT_EQ(state.VehiclePos(1, 10), 115);
    EXPECT_EQ(state.VehiclePos(2, 10), 118);
    EXPECT_EQ(state.VehicleDir(1, 10), 3);
    EXPECT_EQ(state.VehicleDir(2, 10), 1);
    EXPECT_EQ(state.VehicleDir(2, 0), 3);
    EXPECT_EQ(state.VehicleDir(2, 2), 3);
    EXPECT_EQ(state.VehicleDir(2, 4), 1);
    EXPECT_EQ(state.VehicleDir(2, 6), 3);
    EXPECT_EQ(state.VehicleDir(2, 9), 1);
    EXPECT_EQ(state.VehicleTag(1, 0), "tank_1_0_o");
    EXPECT_EQ(state.VehicleTag(1, 10), "jeep_1_0_w");
    EXPECT_EQ(state.VehicleTag(2, 7), "commando_2_0_0_w");
    EXPECT_EQ(state.VehicleTag(2, 10), "jeep_2_0_o");
}

TEST(StartingPosition, PicturesAtCampPlacesIslandsAndStores)
{
    const BoardState state = NewGame();
    EXPECT_EQ(state.VehiclePicture(1, 0), (Picture{1905, 7630, 750, 330, true, false, ""}));
    EXPECT_EQ(state.VehiclePicture(1, 9), (Picture{1905, 11425, 750, 330, true, false, ""}));
    EXPECT_EQ(state.VehiclePicture(2, 3), (Picture{20470, 3995, 750, 330, true, false, ""}));
    EXPECT_EQ(state.VehiclePicture(1, 10), (Picture{22170, 10840, 750, 330, true, false, ""}));
    EXPECT_EQ(state.VehiclePicture(2, 10), (Picture{2310, 1230, 750, 330, true, false, ""}));
    EXPECT_EQ(state.MinePicture(1, 0), (Picture{2745, 10035, 205, 330, true, false, "mijn_1_top.gif"}));
    EXPECT_EQ(state.MinePicture(2, 4), (Picture{22510, 1935, 205, 330, true, false, "mijn_2_top.gif"}));
    EXPECT_FALSE(state.CapturedMinePicture(1, 0).Visible);
    EXPECT_EQ(state.CapturedMinePicture(1, 0).Left, 4590);
    EXPECT_EQ(state.CapturedMinePicture(2, 4).Left, 21075);
    EXPECT_EQ(state.CapturedMinePicture(2, 4).Top, 1935);
}

TEST(StartingPosition, ResetKeepsLocalSideAndBoardSize)
{
    BoardState state;
    state.LocalSide = 2;
    state.BoardWidth = 25000;
    state.BoardHeight = 12000;
    state.BoardSide = 2;
    state.VehiclePos(1, 3) = 40;
    state.PendingDraws = 3;
    ResetNewGame(state);
    EXPECT_EQ(state.LocalSide, 2);
    EXPECT_EQ(state.BoardWidth, 25000);
    EXPECT_EQ(state.BoardHeight, 12000);
    EXPECT_EQ(state.BoardSide, 1);
    EXPECT_EQ(state.VehiclePos(1, 3), 113);
    EXPECT_EQ(state.PendingDraws, 0);
}

TEST(StartingPosition, ResetArmiesPlacesInTheCurrentView)
{
    BoardState state = NewGame();
    state.BoardSide = 2;
    state.VehiclePos(1, 0) = 30;
    state.FlagHome(2) = 3;
    ResetArmies(state);
    EXPECT_EQ(state.VehiclePos(1, 0), 113);
    EXPECT_EQ(state.FlagHome(2), 0);
    const Picture& tank = state.VehiclePicture(1, 0);
    EXPECT_EQ(tank.Left, state.BoardWidth - (1905 + 750));
    EXPECT_EQ(tank.Top, state.BoardHeight - (7630 + 330));
    EXPECT_EQ(state.MinePicture(2, 0).Left, state.BoardWidth - (20870 + 220));
}

// Edge case: a vehicle may stand in the camp with 0 companies, and then its picture
// (the tag) is the unchanged starting one.
TEST(StartingPosition, VehicleInCampWithNoCompaniesKeepsItsPicture)
{
    const BoardState state = NewGame();
    EXPECT_EQ(state.VehicleCompanies(1, 3), 0);
    EXPECT_EQ(state.VehicleTag(1, 3), "infanterie_1_0_0_o");
    EXPECT_EQ(state.VehiclePos(1, 3), 113);
}

// Edge case: more than 20 prisoners show only 20 pictures.
TEST(CompanyDisplay, PrisonAbove20ShowsOnly20)
{
    BoardState state = NewGame();
    state.PrisonCompanies(1) = 23;
    state.CampCompanies(1) = 2;
    state.ReserveCompanies(1) = 0;
    const CompanyPicturesShown shown = ShowCompanies(state, 1);
    EXPECT_EQ(shown.Prison, 20);
    EXPECT_EQ(shown.Camp, 2);
    EXPECT_EQ(shown.Reserve, 0);
    EXPECT_EQ(ShowCompanies(state, 2).Reserve, -1);
    EXPECT_EQ(ShowCompanies(state, 2).Camp, 15);
    EXPECT_EQ(PicturesShown(25, 25), 25);
    EXPECT_EQ(PicturesShown(-1, 20), 0);
}

TEST(BoardState, CellOwnerAndVehicleAtCell)
{
    BoardState state = NewGame();
    state.BoardCell(10) = 4;
    state.BoardCell(11) = -11;
    state.BoardCell(12) = 12;
    state.BoardCell(13) = -12;
    EXPECT_EQ(state.CellOwner(10), 1);
    EXPECT_EQ(state.CellOwner(11), 2);
    EXPECT_EQ(state.CellOwner(12), 1);
    EXPECT_EQ(state.CellOwner(13), 2);
    EXPECT_EQ(state.CellOwner(14), 0);
    int side = 0;
    int slot = 0;
    EXPECT_TRUE(VehicleAtCell(state, 10, side, slot));
    EXPECT_EQ(side, 1);
    EXPECT_EQ(slot, 3);
    EXPECT_TRUE(VehicleAtCell(state, 11, side, slot));
    EXPECT_EQ(side, 2);
    EXPECT_EQ(slot, 10);
    EXPECT_FALSE(VehicleAtCell(state, 12, side, slot));
    EXPECT_FALSE(VehicleAtCell(state, 13, side, slot));
    EXPECT_FALSE(VehicleAtCell(state, 14, side, slot));
}

TEST(BoardState, IndicesOutsideTheTablesRaiseTheFault)
{
    BoardState state = NewGame();
    EXPECT_THROW(state.BoardCell(0), RunTimeFault);
    EXPECT_THROW(state.BoardCell(113), RunTimeFault);
    EXPECT_THROW(state.HQCount(0), RunTimeFault);
    EXPECT_THROW(state.HQPlaceFree(1, 3), RunTimeFault);
    EXPECT_THROW(state.VehiclePos(3, 0), RunTimeFault);
    EXPECT_THROW(state.VehiclePos(1, 11), RunTimeFault);
    EXPECT_THROW(state.VehicleTag(2, -1), RunTimeFault);
    EXPECT_THROW(state.MinePos(1, 5), RunTimeFault);
    EXPECT_THROW(state.ReserveCompanies(0), RunTimeFault);
    EXPECT_THROW(state.FlagHome(3), RunTimeFault);
    const BoardState& constant = state;
    EXPECT_THROW(constant.BoardCell(119), RunTimeFault);
    EXPECT_THROW(constant.CapturedMinePicture(1, 7), RunTimeFault);
}

} // namespace
} // namespace vk
