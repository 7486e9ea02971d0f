// The slow clicks that load a picked camp vehicle, and the cancel of a camp
// pick that hands the load back.

#include "board/Picking.h"

#include "BoardFixtures.h"
#include "board/Movement.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace vk {
namespace {

using testing::NewGame;
using testing::PutVehicle;
using testing::SameGame;

// The loading of one action: the set-up and the flag of a die just chosen.
struct Loading {
    CampLoadState load;
    bool fresh = true;
    bool Click(BoardState& state, int side, int slot, int actingSlot)
    {
        return CampLoadClick(state, load, fresh, side, slot, actingSlot);
    }
};

// Companies aboard after each of `clicks` slow clicks on one vehicle.
std::vector<int> CompaniesPerClick(BoardState& state, int side, int slot, int clicks)
{
    Loading loading;
    std::vector<int> seen;
    for (int click = 0; click < clicks; ++click) {
        EXPECT_TRUE(loading.Click(state, side, slot, slot));
        seen.push_back(state.VehicleCompanies(side, slot));
    }
    return seen;
}

TEST(CampLoadClick, FirstClickAfterADieTakesOneCompany)
{
    BoardState state = NewGame();
    Loading loading;
    ASSERT_TRUE(loading.Click(state, 1, 0, 0));
    EXPECT_FALSE(loading.fresh);
    EXPECT_EQ(state.VehicleCompanies(1, 0), 1);
    EXPECT_EQ(state.CampCompanies(1), 14);
    EXPECT_EQ(state.VehicleTag(1, 0), "tank_1_1_o");
    EXPECT_EQ(loading.load.MaxCompanies, 5);
    EXPECT_FALSE(loading.load.CanCarryMine);
    EXPECT_TRUE(loading.load.MineFree);
    EXPECT_EQ(state.CompanySum(1), 25);
}

TEST(CampLoadClick, LaterClicksCountOnlyForTheActingVehicle)
{
    BoardState state = NewGame();
    Loading loading;
    ASSERT_TRUE(loading.Click(state, 1, 2, 2));
    const BoardState before = state;
    EXPECT_FALSE(loading.Click(state, 1, 1, 2));
    EXPECT_EQ(state, before);
    EXPECT_TRUE(loading.Click(state, 1, 2, 2));
    EXPECT_EQ(state.VehicleCompanies(1, 2), 2);
}

// The first slow click after a die was chosen sets the loading up for the
// camp vehicle clicked, whichever it is; only the later clicks look at the
// vehicle of the action.
TEST(CampLoadClick, OnlyTheVehicleOfTheActionIsLoaded)
{
    BoardState state = NewGame();
    Loading loading;
    // A click on another camp vehicle counts for nothing, first click or not.
    EXPECT_FALSE(loading.Click(state, 1, 5, 0));
    EXPECT_EQ(state.VehicleCompanies(1, 5), 0);
    EXPECT_EQ(state.VehicleTag(1, 5), "infanterie_1_0_0_o");
    for (int expected : {1, 2, 3, 4, 5, 1}) {
        EXPECT_TRUE(loading.Click(state, 1, 0, 0));
        EXPECT_EQ(state.VehicleCompanies(1, 0), expected);
    }
    EXPECT_FALSE(loading.Click(state, 1, 5, 0));
    EXPECT_EQ(state.VehicleCompanies(1, 5), 0);
    EXPECT_EQ(state.CampCompanies(1), 14);
    EXPECT_EQ(state.CompanySum(1), 25);
}

TEST(CampLoadClick, EachVehicleTakesUpToItsCapacityThenStartsAgain)
{
    struct Case {
        int slot;
        std::vector<int> companies;
    };
    const std::vector<Case> cases{{0, {1, 2, 3, 4, 5, 1, 2}},
                                  {1, {1, 2, 3, 4, 1}},
                                  {4, {1, 2, 3, 1, 2}},
                                  {9, {1, 2, 1, 2}}};
    for (const Case& c : cases) {
        BoardState state = NewGame();
        const int clicks = static_cast<int>(c.companies.size());
        EXPECT_EQ(CompaniesPerClick(state, 1, c.slot, clicks), c.companies) << "slot " << c.slot;
        EXPECT_EQ(state.CampCompanies(1), 15 - c.companies.back());
        EXPECT_EQ(state.CompanySum(1), 25);
    }
}

TEST(CampLoadClick, CommandoAlternatesMineAndCompanies)
{
    BoardState state = NewGame();
    Loading loading;
    const std::vector<std::string> tags{"commando_1_1_0_o", "commando_1_1_1_o", "commando_1_2_0_o",
                                        "commando_1_2_1_o", "commando_1_1_0_o"};
    const std::vector<int> camp{14, 14, 13, 13, 14};
    for (std::size_t click = 0; click < tags.size(); ++click) {
        ASSERT_TRUE(loading.Click(state, 1, 6, 6));
        EXPECT_EQ(state.VehicleTag(1, 6), tags[click]) << "click " << click + 1;
        EXPECT_EQ(state.CampCompanies(1), camp[click]);
        const bool aboard = click % 2 == 1;
        EXPECT_EQ(loading.load.MineAboard, aboard);
        EXPECT_EQ(state.MinePos(1, 0), aboard ? -6 : 113);
        EXPECT_EQ(state.MinePicture(1, 0).Visible, !aboard);
    }
    EXPECT_EQ(state.MinePos(1, 1), 113);
}

TEST(CampLoadClick, CommandoTakesTheFirstMineLeftInTheStore)
{
    BoardState state = NewGame();
    state.MinePos(2, 0) = 40;
    state.MinePos(2, 1) = -7;
    Loading loading;
    ASSERT_TRUE(loading.Click(state, 2, 6, 6));
    EXPECT_EQ(loading.load.MineIndex, 2);
    ASSERT_TRUE(loading.Click(state, 2, 6, 6));
    EXPECT_EQ(state.MinePos(2, 2), -6);
    EXPECT_EQ(state.VehicleTag(2, 6), "commando_2_1_1_w");
}

TEST(CampLoadClick, CommandoWithoutAStoredMineOnlyCountsCompanies)
{
    BoardState state = NewGame();
    for (int mine = 0; mine < kMinesPerArmy; ++mine)
        state.MinePos(1, mine) = 10 + mine;
    EXPECT_EQ(CompaniesPerClick(state, 1, 7, 4), (std::vector<int>{1, 2, 1, 2}));
    EXPECT_EQ(state.VehicleTag(1, 7), "commando_1_2_0_o");
}

TEST(CampLoadClick, CampOfOneCompanyKeepsTheVehicleAtOne)
{
    BoardState state = NewGame();
    state.CampCompanies(1) = 1;
    state.ReserveCompanies(1) = 24;
    EXPECT_EQ(CompaniesPerClick(state, 1, 0, 4), (std::vector<int>{1, 1, 1, 1}));
    EXPECT_EQ(state.CampCompanies(1), 0);
    EXPECT_EQ(state.CompanySum(1), 25);
}

TEST(CampLoadClick, CampOfTwoCompaniesLimitsTheTank)
{
    BoardState state = NewGame();
    state.CampCompanies(2) = 2;
    state.ReserveCompanies(2) = 23;
    EXPECT_EQ(CompaniesPerClick(state, 2, 0, 4), (std::vector<int>{1, 2, 1, 2}));
    EXPECT_EQ(state.CampCompanies(2), 0);
}

TEST(CampLoadClick, VehicleOutOfItsCampIsRefused)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 3, 20, kEast);
    const BoardState before = state;
    Loading loading;
    EXPECT_FALSE(loading.Click(state, 1, 3, 3));
    EXPECT_TRUE(loading.fresh);
    EXPECT_EQ(state, before);
    // The jeep on its island is no camp vehicle either.
    EXPECT_FALSE(loading.Click(state, 1, 10, 10));
    EXPECT_EQ(state, before);
}

TEST(CampLoadClick, EmptyCampAndEmptyVehicleAreRefused)
{
    BoardState state = NewGame();
    state.CampCompanies(1) = 0;
    state.ReserveCompanies(1) = 25;
    const BoardState before = state;
    Loading loading;
    EXPECT_FALSE(loading.Click(state, 1, 0, 0));
    EXPECT_TRUE(loading.fresh);
    EXPECT_EQ(state, before);
}

TEST(CampLoadClick, LoadingHeadingIsEastForArmyOneAndWestForArmyTwo)
{
    BoardState state = NewGame();
    Loading one;
    Loading two;
    ASSERT_TRUE(one.Click(state, 1, 3, 3));
    ASSERT_TRUE(two.Click(state, 2, 3, 3));
    EXPECT_EQ(state.VehicleTag(1, 3), "infanterie_1_1_0_o");
    // Infantry of army 2 stands in its camp facing o, and is loaded facing w.
    EXPECT_EQ(state.VehicleTag(2, 3), "infanterie_2_1_0_w");
    ASSERT_TRUE(two.Click(state, 2, 3, 3));
    EXPECT_EQ(state.VehicleTag(2, 3), "infanterie_2_2_0_w");
}

TEST(CampLoadClicks, IsThatManySlowClicksOfADieJustChosen)
{
    for (int clicks = 0; clicks <= 7; ++clicks) {
        for (int slot : {0, 2, 5, 6, 8}) {
            BoardState counted = NewGame();
            BoardState clicked = NewGame();
            CampLoadClicks(counted, 2, slot, clicks);
            Loading loading;
            for (int click = 0; click < clicks; ++click)
                loading.Click(clicked, 2, slot, slot);
            EXPECT_EQ(counted, clicked) << "slot " << slot << ", " << clicks << " clicks";
        }
    }
    // No click leaves the vehicle as it stood.
    BoardState state = NewGame();
    CampLoadClicks(state, 1, 0, 0);
    EXPECT_EQ(state, NewGame());
}

// The state of a new game after a camp pick of `slot` was cancelled.
void ExpectCancelledToStart(const BoardState& state, int side, int slot)
{
    const BoardState start = NewGame();
    EXPECT_TRUE(SameGame(state, start));
    EXPECT_EQ(state.hqPlaceFree, start.hqPlaceFree);
    EXPECT_EQ(state.VehiclePicture(side, slot), start.VehiclePicture(side, slot));
    EXPECT_EQ(state.PendingDraws, 0);
}

TEST(CancelCampPick, CompaniesGoBackToTheCamp)
{
    BoardState state = NewGame();
    CampLoadClicks(state, 1, 0, 4);
    ASSERT_EQ(state.CampCompanies(1), 11);
    CancelCampPick(state, 1, 0);
    EXPECT_EQ(state.VehicleCompanies(1, 0), 0);
    EXPECT_EQ(state.VehicleTag(1, 0), "tank_1_0_o");
    ExpectCancelledToStart(state, 1, 0);
}

TEST(CancelCampPick, LoadedMineGoesBackToTheStore)
{
    for (int side : {1, 2}) {
        BoardState state = NewGame();
        CampLoadClicks(state, side, 7, 4);
        ASSERT_EQ(state.MinePos(side, 0), -7);
        CancelCampPick(state, side, 7);
        EXPECT_EQ(state.MinePos(side, 0), CampField(side));
        EXPECT_TRUE(state.MinePicture(side, 0).Visible);
        EXPECT_EQ(state.VehicleTag(side, 7), side == 1 ? "commando_1_0_0_o" : "commando_2_0_0_w");
        ExpectCancelledToStart(state, side, 7);
    }
}

TEST(CancelCampPick, HQKeepsItsVehiclesAndPlaces)
{
    BoardState state = NewGame();
    ASSERT_TRUE(SendCampVehicleToHQ(state, 2, 0));
    ASSERT_TRUE(SendCampVehicleToHQ(state, 2, 1));
    CampLoadClicks(state, 2, 4, 2);
    const auto places = state.hqPlaceFree;
    CancelCampPick(state, 2, 4);
    EXPECT_EQ(state.HQCount(2), 2);
    EXPECT_EQ(state.hqPlaceFree, places);
    EXPECT_EQ(state.VehiclePos(2, 4), 116);
    EXPECT_EQ(state.VehicleTag(2, 4), "infanterie_2_0_0_o");
    EXPECT_EQ(state.CampCompanies(2), 15);
}

TEST(CancelCampPick, LoadingStartsOverAfterANewPick)
{
    BoardState state = NewGame();
    CampLoadClicks(state, 1, 1, 3);
    CancelCampPick(state, 1, 1);
    CampLoadClicks(state, 1, 1, 2);
    EXPECT_EQ(state.VehicleCompanies(1, 1), 2);
    EXPECT_EQ(state.CampCompanies(1), 13);
}

// A genie's mine taken up by the first action leaves MinePickup standing in
// the verdict; a camp pick of the second action that is then cancelled must
// still only hand its own load back, and leave the mine store alone: the
// opponent never hears of the cancel.
TEST(CancelCampPick, MineTakenUpEarlierInTheTurnLeavesTheStoreAlone)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 8, 20, kEast);
    testing::LoadCompanies(state, 1, 8, 1);
    testing::LayMine(state, 2, 0, 21);
    std::array<int, 2> veh{8, -1};
    std::array<int, 2> code{-1, -1};
    std::array<int, 2> from{20, -1};
    const DestinationResult first = ClickDestination(state, ActionWords{veh, code, from}, 1, 8, 21, 1, 6, {});
    ASSERT_EQ(first.What, DestinationResult::Kind::Done);
    ASSERT_EQ(code[0], 4);

    ASSERT_EQ(PickOwnVehicle(state, 1, 0, 10, 1, 6, veh, code), VehiclePick::FromCamp);
    CampLoadClicks(state, 1, 0, 2);
    CancelCampPick(state, 1, 0);
    for (int mine = 0; mine < kMinesPerArmy; ++mine)
        EXPECT_EQ(state.MinePos(1, mine), 113) << "mine " << mine;
    EXPECT_EQ(state.VehicleTag(1, 0), "tank_1_0_o");
    EXPECT_EQ(state.CampCompanies(1), 14);
}

} // namespace
} // namespace vk
