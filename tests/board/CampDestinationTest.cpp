// The double click on a destination for a vehicle picked in its camp: with a
// single 6 only its own HQ counts; with both dice (phase 25) the HQ for a sum
// of 6, or a walk of the other die + 1 steps when one die is 6.

#include "board/Picking.h"

#include "BoardFixtures.h"
#include "TurnWords.h"
#include "board/Movement.h"

#include <gtest/gtest.h>

namespace vk {
namespace {

using testing::Answers;
using testing::LayMine;
using testing::NewGame;
using testing::PutVehicle;
using testing::TurnWords;

// A camp vehicle of `side` loaded with `clicks` slow clicks and picked for `phase`.
BoardState PickedInCamp(TurnWords& turn, int side, int slot, int phase, int clicks = 2)
{
    BoardState state = NewGame();
    CampLoadClicks(state, side, slot, clicks);
    const auto index = static_cast<std::size_t>(ActionIndexOfPhase(phase));
    turn.veh[index] = slot;
    turn.from[index] = CampField(side);
    return state;
}

DestinationResult Click(BoardState& state, TurnWords& turn, int side, int phase, int field, int dice1, int dice2)
{
    Answers answers;
    const DestinationResult result =
        ClickDestination(state, turn.Words(), side, phase, field, dice1, dice2, answers.Questions());
    EXPECT_EQ(answers.flagAsked + answers.mineAsked, 0);
    return result;
}

TEST(CampDestination, SixTakesTheVehicleToItsHQ)
{
    const std::pair<int, int> phases[] = {{7, 9}, {12, 27}, {16, 18}, {21, 27}};
    for (int side : {1, 2}) {
        for (const auto& [phase, next] : phases) {
            TurnWords turn;
            BoardState state = PickedInCamp(turn, side, 1, phase);
            const std::string tag = state.VehicleTag(side, 1);
            const DestinationResult result = Click(state, turn, side, phase, HQField(side), 6, 6);
            ASSERT_EQ(result.What, DestinationResult::Kind::Done) << phase;
            EXPECT_EQ(result.NextPhase, next);
            const auto index = static_cast<std::size_t>(ActionIndexOfPhase(phase));
            EXPECT_EQ(turn.code[index], 1);
            EXPECT_EQ(turn.code[1 - index], -1);
            EXPECT_EQ(result.Action.Code, 1);
            EXPECT_EQ(result.Action.From, CampField(side));
            EXPECT_EQ(result.Action.To, HQField(side));
            EXPECT_EQ(state.VehiclePos(side, 1), HQField(side));
            EXPECT_EQ(state.VehicleDir(side, 1), side == 1 ? kEast : kWest);
            EXPECT_EQ(state.HQCount(side), 1);
            EXPECT_FALSE(state.HQPlaceFree(side, 0));
            // The tag stays as the loading left it.
            EXPECT_EQ(state.VehicleTag(side, 1), tag);
            EXPECT_EQ(state.VehicleCompanies(side, 1), 2);
        }
    }
}

TEST(CampDestination, OnlyTheOwnHQCounts)
{
    TurnWords turn;
    BoardState state = PickedInCamp(turn, 1, 0, 7);
    const BoardState before = state;
    for (int field : {71, 83, 113, 115, 116, 117, 118, 1})
        EXPECT_EQ(Click(state, turn, 1, 7, field, 6, 6).What, DestinationResult::Kind::Ignored) << field;
    EXPECT_EQ(state, before);
    EXPECT_EQ(turn.code, (std::array<int, 2>{-1, -1}));
}

TEST(CampDestination, FullHQRefuses)
{
    TurnWords turn;
    BoardState state = PickedInCamp(turn, 2, 0, 16);
    for (int slot : {1, 2, 3})
        ASSERT_TRUE(SendCampVehicleToHQ(state, 2, slot));
    const BoardState before = state;
    EXPECT_EQ(Click(state, turn, 2, 16, 117, 1, 6).What, DestinationResult::Kind::Ignored);
    EXPECT_EQ(Click(state, turn, 2, 25, 117, 3, 3).What, DestinationResult::Kind::Ignored);
    EXPECT_EQ(state, before);
}

TEST(CampDestination, BothDiceWithASumOfSixGoToTheHQ)
{
    for (const auto& [dice1, dice2] : {std::pair{1, 5}, std::pair{2, 4}, std::pair{3, 3}}) {
        TurnWords turn;
        BoardState state = PickedInCamp(turn, 1, 5, 25);
        // Not a step further.
        EXPECT_EQ(Click(state, turn, 1, 25, 71, dice1, dice2).What, DestinationResult::Kind::Ignored);
        const DestinationResult result = Click(state, turn, 1, 25, 114, dice1, dice2);
        ASSERT_EQ(result.What, DestinationResult::Kind::Done);
        EXPECT_EQ(result.NextPhase, 27);
        EXPECT_EQ(turn.code[0], 1);
        EXPECT_EQ(state.VehiclePos(1, 5), 114);
    }
}

TEST(CampDestination, BothDiceWithOneSixWalkTheOtherDiePlusOne)
{
    struct Case {
        int side, dice1, dice2, to;
    };
    const Case cases[] = {{1, 6, 1, 71}, {1, 1, 6, 83}, {1, 6, 4, 74}, {1, 6, 6, 76},
                          {2, 6, 1, 100}, {2, 2, 6, 108}, {2, 6, 6, 93}};
    for (const Case& c : cases) {
        TurnWords turn;
        BoardState state = PickedInCamp(turn, c.side, 0, 25);
        const DestinationResult result = Click(state, turn, c.side, 25, c.to, c.dice1, c.dice2);
        ASSERT_EQ(result.What, DestinationResult::Kind::Done) << c.dice1 << " " << c.dice2 << " " << c.to;
        EXPECT_EQ(result.NextPhase, 27);
        EXPECT_EQ(turn.code[0], 1);
        EXPECT_EQ(result.Action, (BoardAction{c.side, 0, 1, CampField(c.side), c.to, state.VehicleDir(c.side, 0),
                                              false, -1}));
        EXPECT_EQ(state.VehiclePos(c.side, 0), c.to);
        EXPECT_EQ(state.BoardCell(c.to), c.side == 1 ? 1 : -1);
        EXPECT_EQ(state.HQCount(c.side), 0);
    }
}

TEST(CampDestination, BothDiceWithOneSixRefuseOtherCounts)
{
    TurnWords turn;
    BoardState state = PickedInCamp(turn, 1, 0, 25);
    const BoardState before = state;
    // 6 and 2 give three steps: 72 and 84, not 71, 73 or the HQ.
    for (int field : {71, 73, 83, 85, 114})
        EXPECT_EQ(Click(state, turn, 1, 25, field, 6, 2).What, DestinationResult::Kind::Ignored) << field;
    EXPECT_EQ(state.VehiclePos(1, 0), 113);
    EXPECT_EQ(state.VehicleTag(1, 0), before.VehicleTag(1, 0));
    EXPECT_EQ(Click(state, turn, 1, 25, 72, 6, 2).What, DestinationResult::Kind::Done);
}

TEST(CampDestination, BothDiceWithoutASixLeaveTheCampClosed)
{
    TurnWords turn;
    BoardState state = PickedInCamp(turn, 2, 0, 25);
    const BoardState before = state;
    for (int field = 1; field <= kLastField; ++field)
        EXPECT_EQ(Click(state, turn, 2, 25, field, 5, 2).What, DestinationResult::Kind::Ignored) << field;
    EXPECT_EQ(state.VehiclePos(2, 0), 116);
    EXPECT_EQ(state.VehicleTag(2, 0), before.VehicleTag(2, 0));
}

TEST(CampDestination, LeavingTheCampWithBothDiceNeverShoots)
{
    TurnWords turn;
    BoardState state = PickedInCamp(turn, 1, 0, 25, 5);
    PutVehicle(state, 2, 10, 71, kNorth);
    EXPECT_EQ(Click(state, turn, 1, 25, 71, 6, 1).What, DestinationResult::Kind::Ignored);
    EXPECT_EQ(state.VehiclePos(2, 10), 71);
}

TEST(CampDestination, GenieLeavingTheCampTakesAMine)
{
    TurnWords turn;
    BoardState state = PickedInCamp(turn, 1, 8, 25, 1);
    LayMine(state, 2, 1, 71);
    const DestinationResult result = Click(state, turn, 1, 25, 71, 1, 6);
    ASSERT_EQ(result.What, DestinationResult::Kind::Done);
    EXPECT_EQ(turn.code[0], 4);
    EXPECT_EQ(result.Action.Code, 4);
    EXPECT_EQ(state.MinePos(2, 1), 5 - 8);
    EXPECT_EQ(TagMarkText(state.VehicleTag(1, 8), 8), "2");
    EXPECT_EQ(state.BoardCell(71), 9);
}

TEST(CampDestination, HQCountOfTheOtherArmyDoesNotMatter)
{
    TurnWords turn;
    BoardState state = PickedInCamp(turn, 1, 2, 7);
    for (int slot : {1, 2, 3})
        ASSERT_TRUE(SendCampVehicleToHQ(state, 2, slot));
    EXPECT_EQ(Click(state, turn, 1, 7, 114, 6, 1).What, DestinationResult::Kind::Done);
}

} // namespace
} // namespace vk
