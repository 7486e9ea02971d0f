// The double click on a destination for a vehicle on the board (phases 8, 13,
// 17, 22, 26): the steps of the phase's die, refusals, the move without
// fuel, shots, and the questions of the flag and of the mine.

#include "board/Picking.h"

#include "BoardFixtures.h"
#include "TurnWords.h"
#include "board/Movement.h"

#include <gtest/gtest.h>

namespace vk {
namespace {

using testing::Answers;
using testing::LayMine;
using testing::LoadCompanies;
using testing::LoadOwnMine;
using testing::NewGame;
using testing::PutVehicle;
using testing::TurnWords;
using testing::WithVerdictOf;

// A vehicle of `side` on `field`, picked for the action of `phase`.
BoardState Picked(TurnWords& turn, int side, int slot, int field, int phase, int companies = 1)
{
    BoardState state = NewGame();
    PutVehicle(state, side, slot, field, side == 1 ? kEast : kWest);
    LoadCompanies(state, side, slot, companies);
    turn.veh[static_cast<std::size_t>(ActionIndexOfPhase(phase))] = slot;
    return state;
}

DestinationResult Click(BoardState& state, TurnWords& turn, Answers& answers, int side, int phase, int field,
                        int dice1, int dice2)
{
    return ClickDestination(state, turn.Words(), side, phase, field, dice1, dice2, answers.Questions());
}

// The first road square the vehicle may move to (not shoot at) with `steps`.
int AnyMove(const BoardState& state, int side, int slot, int steps)
{
    const int from = state.VehiclePos(side, slot);
    for (int to = 1; to <= kLastRoadField; ++to) {
        const MoveVerdict verdict = JudgeMove(state, side, slot, from, to, steps, true);
        if (verdict.Legal && !verdict.ShootAllowed)
            return to;
    }
    return -1;
}

// A road square that the vehicle reaches with exactly 3 steps and not with 2, 4 or 5.
int OnlyByThree(const BoardState& state, int side, int slot)
{
    const int from = state.VehiclePos(side, slot);
    for (int to = 1; to <= kLastRoadField; ++to) {
        const auto legal = [&](int steps) { return JudgeMove(state, side, slot, from, to, steps, true).Legal; };
        if (legal(3) && !legal(2) && !legal(4) && !legal(5))
            return to;
    }
    return -1;
}

TEST(FieldDestination, StepsAreTheDieOfThePhase)
{
    struct Case {
        int phase, dice1, dice2, next;
        int refused1, refused2; // dice whose steps don't reach
    };
    const Case cases[] = {
        {8, 3, 5, 9, 5, 3},   {13, 5, 3, 27, 3, 5}, {17, 5, 3, 18, 3, 5},
        {22, 3, 5, 27, 5, 3}, {26, 1, 2, 27, 2, 2},
    };
    for (const Case& c : cases) {
        TurnWords turn;
        Answers answers;
        BoardState state = Picked(turn, 1, 0, 20, c.phase);
        const int to = OnlyByThree(state, 1, 0);
        ASSERT_GT(to, 0);
        const BoardState before = state;
        const DestinationResult refused = Click(state, turn, answers, 1, c.phase, to, c.refused1, c.refused2);
        EXPECT_EQ(refused.What, DestinationResult::Kind::Ignored) << c.phase;
        EXPECT_EQ(WithVerdictOf(before, state), state);

        const DestinationResult result = Click(state, turn, answers, 1, c.phase, to, c.dice1, c.dice2);
        EXPECT_EQ(result.What, DestinationResult::Kind::Done) << c.phase;
        EXPECT_EQ(result.NextPhase, c.next);
        EXPECT_EQ(state.VehiclePos(1, 0), to);
        EXPECT_EQ(turn.code[static_cast<std::size_t>(ActionIndexOfPhase(c.phase))], 1);
        EXPECT_EQ(result.Action, (BoardAction{1, 0, 1, 20, to, state.VehicleDir(1, 0), false, -1}));
    }
}

TEST(FieldDestination, IllegalClickChangesNothing)
{
    TurnWords turn;
    Answers answers;
    BoardState state = Picked(turn, 2, 3, 30, 8);
    const BoardState before = state;
    for (int field : {30, 69, 113, 114, 115, 116, 117, 118, 2}) {
        const DestinationResult result = Click(state, turn, answers, 2, 8, field, 1, 1);
        EXPECT_EQ(result.What, DestinationResult::Kind::Ignored) << field;
        EXPECT_EQ(result.NextPhase, -1);
    }
    EXPECT_EQ(WithVerdictOf(before, state), state);
    EXPECT_EQ(turn.code, (std::array<int, 2>{-1, -1}));
}

TEST(FieldDestination, OtherPhasesIgnoreTheClick)
{
    TurnWords turn;
    Answers answers;
    BoardState state = Picked(turn, 1, 0, 20, 8);
    const BoardState before = state;
    for (int phase : {-1, 0, 4, 5, 6, 9, 10, 11, 14, 18, 19, 23, 24, 27, 39})
        EXPECT_EQ(Click(state, turn, answers, 1, phase, 21, 1, 1).What, DestinationResult::Kind::Ignored) << phase;
    EXPECT_EQ(state, before);
}

TEST(FieldDestination, MoveWithoutFuelUndoesThePick)
{
    const std::pair<int, int> phases[] = {{8, 4}, {17, 4}, {26, 4}, {13, 9}, {22, 18}};
    for (const auto& [phase, back] : phases) {
        TurnWords turn;
        Answers answers;
        BoardState state = Picked(turn, 1, 0, 20, phase);
        state.Brandstof(1) = 1;
        // Dice of 1 and 1: one step for a single die, two for both.
        const int to = AnyMove(state, 1, 0, phase == 26 ? 2 : 1);
        ASSERT_GT(to, 0);
        const BoardState before = state;
        const DestinationResult result = Click(state, turn, answers, 1, phase, to, 1, 1);
        EXPECT_EQ(result.What, DestinationResult::Kind::FuelUndone) << phase;
        EXPECT_EQ(result.NextPhase, back) << phase;
        EXPECT_EQ(WithVerdictOf(before, state), state);
        EXPECT_EQ(turn.code, (std::array<int, 2>{-1, -1}));
        EXPECT_EQ(answers.flagAsked + answers.mineAsked, 0);
    }
}

TEST(FieldDestination, AMoveAcrossAForwardPostRefusedForWantOfFuelEarnsNoCard)
{
    TurnWords turn;
    Answers answers;
    BoardState state = Picked(turn, 1, 0, 74, 8);
    state.Brandstof(1) = 1;
    const DestinationResult result = Click(state, turn, answers, 1, 8, 75, 1, 1);
    ASSERT_EQ(result.What, DestinationResult::Kind::FuelUndone);
    EXPECT_EQ(state.PendingDraws, 0);
    EXPECT_EQ(state.CompassOwed, 0);
}

TEST(FieldDestination, ShotWithoutFuelIsStillResolved)
{
    for (int phase : {8, 13}) {
        TurnWords turn;
        Answers answers;
        BoardState state = Picked(turn, 1, 0, 20, phase, 2);
        PutVehicle(state, 2, 1, 21, kWest);
        LoadCompanies(state, 2, 1, 2);
        state.Brandstof(1) = 1;
        const DestinationResult result = Click(state, turn, answers, 1, phase, 21, 1, 1);
        ASSERT_EQ(result.What, DestinationResult::Kind::Done) << phase;
        EXPECT_EQ(result.Shot, ShotResult::Captured);
        EXPECT_EQ(result.Action, (BoardAction{1, 0, 2, 20, 21, kEast, false, 1}));
        EXPECT_EQ(turn.code[static_cast<std::size_t>(ActionIndexOfPhase(phase))], 2);
        EXPECT_EQ(state.VehicleCompanies(2, 1), 1);
        EXPECT_EQ(state.PrisonCompanies(2), 1);
        EXPECT_EQ(state.VehiclePos(1, 0), 20);
        EXPECT_EQ(answers.flagAsked + answers.mineAsked, 0);
    }
}

TEST(FieldDestination, ShotAtTheJeepGoesThroughTheSeam)
{
    TurnWords turn;
    Answers answers;
    BoardState state = Picked(turn, 2, 0, 21, 17, 1);
    PutVehicle(state, 1, kJeepSlot, 20, kEast);
    SafeConductSeam seam{2, [](int) { return SafeConductAnswer::JeepSentBack; }};
    const DestinationResult result =
        ClickDestination(state, turn.Words(), 2, 17, 20, 0, 1, answers.Questions(), seam);
    EXPECT_EQ(result.What, DestinationResult::Kind::Done);
    EXPECT_EQ(result.Shot, ShotResult::SafeConductHeld);
    EXPECT_EQ(result.NextPhase, 18);
    EXPECT_EQ(state.VehiclePos(1, kJeepSlot), 115);
}

// Infantry of army 1 next to its flag field 69.
BoardState NextToTheFlag(TurnWords& turn, int phase)
{
    return Picked(turn, 1, 4, 68, phase, 2);
}

TEST(FieldDestination, FlagLoadedByTheFirstActionTravelsAsCodeFive)
{
    TurnWords turn;
    Answers answers;
    BoardState state = NextToTheFlag(turn, 8);
    const DestinationResult result = Click(state, turn, answers, 1, 8, 69, 1, 4);
    ASSERT_EQ(result.What, DestinationResult::Kind::Done);
    EXPECT_EQ(answers.flagAsked, 1);
    EXPECT_EQ(answers.mineAsked, 0);
    EXPECT_EQ(turn.code[0], 5);
    EXPECT_EQ(result.Action.Code, 5);
    EXPECT_EQ(TagMarkText(state.VehicleTag(1, 4), 4), "1");
    EXPECT_EQ(state.FlagReserve(1), 4);
    EXPECT_EQ(state.FlagCarried(1), 1);
    EXPECT_FALSE(state.Verdict.FlagLoad);
}

TEST(FieldDestination, FlagLoadedByTheSecondActionLeavesItsRecordAPlainMove)
{
    for (int phase : {13, 22}) {
        TurnWords turn;
        Answers answers;
        BoardState state = NextToTheFlag(turn, phase);
        turn.veh[0] = 0;
        turn.code[0] = 2;
        const DestinationResult result = Click(state, turn, answers, 1, phase, 69, 1, 1);
        ASSERT_EQ(result.What, DestinationResult::Kind::Done) << phase;
        EXPECT_EQ(result.NextPhase, 27);
        EXPECT_EQ(turn.code[0], 5) << phase;
        EXPECT_EQ(turn.code[1], 1) << phase;
        EXPECT_EQ(result.Action.Code, 1);
        // The own board loads the flag all the same.
        EXPECT_EQ(TagMarkText(state.VehicleTag(1, 4), 4), "1");
        EXPECT_EQ(state.FlagCarried(1), 1);
    }
}

TEST(FieldDestination, FlagRefusedIsNotLoaded)
{
    TurnWords turn;
    Answers answers;
    answers.loadFlag = false;
    BoardState state = NextToTheFlag(turn, 17);
    const DestinationResult result = Click(state, turn, answers, 1, 17, 69, 4, 1);
    ASSERT_EQ(result.What, DestinationResult::Kind::Done);
    EXPECT_EQ(answers.flagAsked, 1);
    EXPECT_FALSE(state.Verdict.FlagLoad);
    EXPECT_EQ(turn.code[0], 1);
    EXPECT_EQ(result.Action.Code, 1);
    EXPECT_EQ(TagMarkText(state.VehicleTag(1, 4), 4), "0");
    EXPECT_EQ(state.FlagReserve(1), 5);
}

TEST(FieldDestination, FlagOfArmyTwoAndNoQuestionOffTheFlagField)
{
    TurnWords turn;
    Answers answers;
    BoardState state = Picked(turn, 2, 5, 3, 8, 1);
    ASSERT_EQ(Click(state, turn, answers, 2, 8, 2, 1, 1).What, DestinationResult::Kind::Done);
    EXPECT_EQ(answers.flagAsked, 1);
    EXPECT_EQ(state.FlagCarried(2), 1);

    TurnWords other;
    Answers none;
    BoardState road = Picked(other, 2, 5, 20, 8, 1);
    ASSERT_EQ(Click(road, other, none, 2, 8, 21, 1, 1).What, DestinationResult::Kind::Done);
    EXPECT_EQ(none.flagAsked, 0);
}

// A commando of army 1 with a mine aboard on `field`.
BoardState CommandoWithMine(TurnWords& turn, int field, int phase)
{
    BoardState state = Picked(turn, 1, 6, field, phase, 1);
    LoadOwnMine(state, 1, 6);
    return state;
}

TEST(FieldDestination, MineLeftOnTheFieldLeft)
{
    for (int phase : {8, 13}) {
        TurnWords turn;
        Answers answers;
        BoardState state = CommandoWithMine(turn, 7, phase);
        turn.code[0] = phase == 13 ? 2 : -1;
        const DestinationResult result = Click(state, turn, answers, 1, phase, 6, 1, 1);
        ASSERT_EQ(result.What, DestinationResult::Kind::Done);
        EXPECT_EQ(answers.mineAsked, 1);
        const std::size_t index = static_cast<std::size_t>(ActionIndexOfPhase(phase));
        EXPECT_EQ(turn.code[index], 3);
        EXPECT_EQ(turn.code[0], phase == 13 ? 2 : 3);
        EXPECT_EQ(result.Action, (BoardAction{1, 6, 3, 7, 6, state.VehicleDir(1, 6), true, -1}));
        EXPECT_EQ(state.MinePos(1, 0), 7);
        EXPECT_EQ(state.BoardCell(7), 12);
        EXPECT_EQ(TagMarkText(state.VehicleTag(1, 6), 6), "0");
    }
}

TEST(FieldDestination, MineKeptWhenThePlayerSaysNo)
{
    TurnWords turn;
    Answers answers;
    answers.leaveMine = false;
    BoardState state = CommandoWithMine(turn, 7, 8);
    ASSERT_EQ(Click(state, turn, answers, 1, 8, 6, 1, 1).What, DestinationResult::Kind::Done);
    EXPECT_EQ(answers.mineAsked, 1);
    EXPECT_EQ(turn.code[0], 1);
    EXPECT_EQ(state.MinePos(1, 0), -6);
    EXPECT_EQ(state.BoardCell(7), 0);
}

TEST(FieldDestination, NoMineQuestionOnAJunction)
{
    TurnWords turn;
    Answers answers;
    BoardState state = CommandoWithMine(turn, 8, 8);
    ASSERT_EQ(Click(state, turn, answers, 1, 8, 7, 1, 1).What, DestinationResult::Kind::Done);
    EXPECT_EQ(answers.mineAsked, 0);
    EXPECT_EQ(turn.code[0], 1);
    EXPECT_EQ(state.MinePos(1, 0), -6);
    EXPECT_EQ(TagMarkText(state.VehicleTag(1, 6), 6), "1");
}

TEST(FieldDestination, NoMineQuestionWithoutAMineOrForAGenie)
{
    TurnWords turn;
    Answers answers;
    BoardState empty = Picked(turn, 1, 7, 7, 8, 1);
    ASSERT_EQ(Click(empty, turn, answers, 1, 8, 6, 1, 1).What, DestinationResult::Kind::Done);
    TurnWords genieTurn;
    BoardState genie = Picked(genieTurn, 1, 8, 7, 8, 1);
    LoadOwnMine(genie, 1, 8);
    ASSERT_EQ(Click(genie, genieTurn, answers, 1, 8, 6, 1, 1).What, DestinationResult::Kind::Done);
    EXPECT_EQ(answers.mineAsked, 0);
    EXPECT_EQ(genie.MinePos(1, 0), -8);
}

TEST(FieldDestination, NoMineQuestionLeavingTheHQ)
{
    BoardState state = NewGame();
    CampLoadClicks(state, 1, 6, 2);
    ASSERT_EQ(TagMarkText(state.VehicleTag(1, 6), 6), "1");
    ASSERT_TRUE(SendCampVehicleToHQ(state, 1, 6));
    TurnWords turn;
    turn.veh[0] = 6;
    Answers answers;
    ASSERT_EQ(Click(state, turn, answers, 1, 8, 71, 1, 1).What, DestinationResult::Kind::Done);
    EXPECT_EQ(answers.mineAsked, 0);
    EXPECT_EQ(state.MinePos(1, 0), -6);
    EXPECT_EQ(state.HQCount(1), 0);
}

TEST(FieldDestination, GenieTakesTheMineOnItsDestination)
{
    TurnWords turn;
    Answers answers;
    BoardState state = Picked(turn, 1, 9, 20, 13, 1);
    LayMine(state, 2, 3, 21);
    turn.code[0] = 1;
    const DestinationResult result = Click(state, turn, answers, 1, 13, 21, 4, 1);
    ASSERT_EQ(result.What, DestinationResult::Kind::Done);
    EXPECT_EQ(turn.code, (std::array<int, 2>{1, 4}));
    EXPECT_EQ(result.Action.Code, 4);
    EXPECT_EQ(state.MinePos(2, 3), 5 - 9);
    EXPECT_EQ(TagMarkText(state.VehicleTag(1, 9), 9), "2");
    EXPECT_EQ(answers.flagAsked + answers.mineAsked, 0);
}

} // namespace
} // namespace vk
