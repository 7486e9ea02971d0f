// The double click on an own vehicle while the phase asks for one: the die of
// the phase, the second action, fuel, the HQ, the camp and the jeep on its
// island; and the phase a cancelled pick returns to.

#include "board/Picking.h"

#include "BoardFixtures.h"
#include "board/Movement.h"

#include <gtest/gtest.h>

namespace vk {
namespace {

using testing::NewGame;
using testing::PutVehicle;

const std::array<int, 2> kNoAction{-1, -1};

VehiclePick Pick(BoardState& state, int side, int slot, int phase, int dice1, int dice2,
                 const std::array<int, 2>& actVeh = kNoAction, const std::array<int, 2>& actCode = kNoAction)
{
    return PickOwnVehicle(state, side, slot, phase, dice1, dice2, actVeh, actCode);
}

TEST(PickOwnVehicle, OnlyThePhasesThatAskForAVehicle)
{
    for (int phase = -1; phase <= 40; ++phase) {
        BoardState state = NewGame();
        PutVehicle(state, 1, 0, 20, kEast);
        const bool asks = phase == 5 || phase == 10 || phase == 14 || phase == 19 || phase == 23;
        EXPECT_EQ(Pick(state, 1, 0, phase, 6, 6), asks ? VehiclePick::FromField : VehiclePick::Refused) << phase;
        EXPECT_EQ(Pick(state, 1, 1, phase, 6, 6), asks ? VehiclePick::FromCamp : VehiclePick::Refused) << phase;
    }
}

TEST(PickOwnVehicle, CampVehicleNeedsASixOnTheDieOfThePhase)
{
    struct Case {
        int phase, dice1, dice2;
        bool open;
    };
    const Case cases[] = {
        {5, 6, 1, true},   {5, 1, 6, false},  {19, 6, 2, true},  {19, 2, 6, false},
        {14, 1, 6, true},  {14, 6, 1, false}, {10, 3, 6, true},  {10, 6, 3, false},
        {23, 6, 4, true},  {23, 4, 6, true},  {23, 6, 6, true},  {23, 1, 5, true},
        {23, 3, 3, true},  {23, 2, 4, true},  {23, 5, 2, false}, {23, 1, 1, false},
    };
    for (const Case& c : cases) {
        for (int side : {1, 2}) {
            BoardState state = NewGame();
            const BoardState before = state;
            const VehiclePick expected = c.open ? VehiclePick::FromCamp : VehiclePick::Refused;
            EXPECT_EQ(Pick(state, side, 4, c.phase, c.dice1, c.dice2), expected)
                << "phase " << c.phase << " dice " << c.dice1 << " " << c.dice2;
            EXPECT_EQ(state, before);
        }
    }
}

TEST(PickOwnVehicle, CampVehicleNeedsFuelAFreeHQPlaceAndACompany)
{
    BoardState state = NewGame();
    state.Brandstof(1) = 1;
    EXPECT_EQ(Pick(state, 1, 0, 5, 6, 6), VehiclePick::Refused);
    state.Brandstof(1) = 0;

    for (int slot : {1, 2, 3})
        ASSERT_TRUE(SendCampVehicleToHQ(state, 1, slot));
    EXPECT_EQ(Pick(state, 1, 0, 5, 6, 6), VehiclePick::Refused);

    BoardState empty = NewGame();
    empty.CampCompanies(2) = 0;
    empty.ReserveCompanies(2) = 25;
    EXPECT_EQ(Pick(empty, 2, 0, 23, 6, 6), VehiclePick::Refused);
    empty.CampCompanies(2) = 1;
    EXPECT_EQ(Pick(empty, 2, 0, 23, 6, 6), VehiclePick::FromCamp);
}

TEST(PickOwnVehicle, FieldVehicleWithoutFuelMayStillBePicked)
{
    BoardState state = NewGame();
    PutVehicle(state, 2, 5, 30, kWest);
    state.Brandstof(2) = 2;
    for (int phase : {5, 10, 14, 19, 23})
        EXPECT_EQ(Pick(state, 2, 5, phase, 1, 2), VehiclePick::FromField) << phase;
}

TEST(PickOwnVehicle, VehicleInTheHQIsAFieldVehicle)
{
    BoardState state = NewGame();
    ASSERT_TRUE(SendCampVehicleToHQ(state, 1, 0));
    EXPECT_EQ(Pick(state, 1, 0, 5, 1, 2), VehiclePick::FromField);
    EXPECT_EQ(Pick(state, 1, 0, 23, 1, 2), VehiclePick::FromField);
}

TEST(PickOwnVehicle, VehicleThatMovedPlainlyFirstCannotActAgain)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 20, kEast);
    for (int phase : {10, 19})
        EXPECT_EQ(Pick(state, 1, 0, phase, 3, 4, {0, -1}, {1, -1}), VehiclePick::Refused) << phase;
    // Another vehicle may.
    PutVehicle(state, 1, 1, 30, kEast);
    EXPECT_EQ(Pick(state, 1, 1, 10, 3, 4, {0, -1}, {1, -1}), VehiclePick::FromField);
}

TEST(PickOwnVehicle, VehicleThatShotLaidTookAMineOrAFlagMayActAgain)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 20, kEast);
    for (int code : {2, 3, 4, 5})
        for (int phase : {10, 19})
            EXPECT_EQ(Pick(state, 1, 0, phase, 3, 4, {0, -1}, {code, -1}), VehiclePick::FromField)
                << "code " << code << " phase " << phase;
}

TEST(PickOwnVehicle, FirstActionPhasesDoNotLookAtTheRecord)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 20, kEast);
    for (int phase : {5, 14, 23})
        EXPECT_EQ(Pick(state, 1, 0, phase, 3, 4, {0, -1}, {1, -1}), VehiclePick::FromField) << phase;
}

TEST(PickOwnVehicle, CampVehicleAfterAPlainMoveOfAnotherVehicle)
{
    BoardState state = NewGame();
    EXPECT_EQ(Pick(state, 1, 0, 19, 6, 2, {1, -1}, {1, -1}), VehiclePick::FromCamp);
    EXPECT_EQ(Pick(state, 1, 1, 19, 6, 2, {1, -1}, {1, -1}), VehiclePick::Refused);
}

TEST(PickOwnVehicle, JeepOnItsIslandIsLoadedWithPrisoners)
{
    for (int side : {1, 2}) {
        BoardState state = NewGame();
        state.CampCompanies(side) -= 5;
        state.PrisonCompanies(side) = 5;
        EXPECT_EQ(Pick(state, side, kJeepSlot, 14, 1, 2), VehiclePick::FromField);
        EXPECT_EQ(state.VehicleCompanies(side, kJeepSlot), 3);
        EXPECT_EQ(state.PrisonCompanies(side), 2);
        EXPECT_EQ(state.VehicleTag(side, kJeepSlot), side == 1 ? "jeep_1_3_w" : "jeep_2_3_o");
        EXPECT_EQ(state.VehiclePos(side, kJeepSlot), IslandField(side));
    }
}

TEST(PickOwnVehicle, JeepWithAnEmptyPrisonIsRefused)
{
    BoardState state = NewGame();
    const BoardState before = state;
    for (int phase : {5, 10, 14, 19, 23})
        EXPECT_EQ(Pick(state, 2, kJeepSlot, phase, 6, 6), VehiclePick::Refused) << phase;
    EXPECT_EQ(state, before);
}

TEST(PickOwnVehicle, JeepChosenAgainIsOverwrittenNotAddedTo)
{
    BoardState state = NewGame();
    state.CampCompanies(1) -= 5;
    state.PrisonCompanies(1) = 5;
    ASSERT_EQ(Pick(state, 1, kJeepSlot, 5, 1, 2), VehiclePick::FromField);
    // The choice is withdrawn (the prisoners stay aboard) and made again.
    ASSERT_EQ(Pick(state, 1, kJeepSlot, 5, 1, 2), VehiclePick::FromField);
    EXPECT_EQ(state.VehicleCompanies(1, kJeepSlot), 2);
    EXPECT_EQ(state.PrisonCompanies(1), 0);
    EXPECT_EQ(state.VehicleTag(1, kJeepSlot), "jeep_1_2_w");
    EXPECT_EQ(state.CompanySum(1), 22);
    // Now the prison is empty: the jeep can't be chosen, though it carries two.
    EXPECT_EQ(Pick(state, 1, kJeepSlot, 5, 1, 2), VehiclePick::Refused);
}

TEST(PickOwnVehicle, JeepOnTheRoadNeedsNoPrisoners)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, kJeepSlot, 80, kNorth);
    EXPECT_EQ(Pick(state, 1, kJeepSlot, 5, 1, 2), VehiclePick::FromField);
}

TEST(PhaseAfterCancel, BackToTheChoiceOfTheDie)
{
    for (int phase = -1; phase <= 40; ++phase) {
        int expected = -1;
        if (phase == 7 || phase == 8 || phase == 16 || phase == 17 || phase == 25 || phase == 26)
            expected = 4;
        else if (phase == 12 || phase == 13)
            expected = 9;
        else if (phase == 21 || phase == 22)
            expected = 18;
        EXPECT_EQ(PhaseAfterCancel(phase), expected) << "phase " << phase;
    }
}

TEST(ActionIndexOfPhase, SecondActionPhasesUseIndexOne)
{
    for (int phase = 5; phase <= 26; ++phase) {
        const bool second = phase == 10 || phase == 12 || phase == 13 || phase == 19 || phase == 21 || phase == 22;
        EXPECT_EQ(ActionIndexOfPhase(phase), second ? 1 : 0) << phase;
    }
    for (int phase = 5; phase <= 26; ++phase) {
        const bool camp = phase == 7 || phase == 12 || phase == 16 || phase == 21 || phase == 25;
        EXPECT_EQ(IsCampLoadPhase(phase), camp) << phase;
    }
}

} // namespace
} // namespace vk
