// The actions the computer player may choose from are exactly those the
// board's clicks accept: checked against every click the rules could be
// given, in set positions and in positions reached by random play.

#include "game/ComputerChoice.h"

#include "BoardFixtures.h"
#include "ComputerGames.h"
#include "board/MinesAndFlags.h"
#include "board/Movement.h"
#include "board/Picking.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace vk {
namespace {

using testing::LoadCompanies;
using testing::LoadOwnMine;
using testing::NewGame;
using testing::PutVehicle;
using testing::Turn;
using Candidate = ComputerChoice::Candidate;

std::vector<Candidate> CandidatesOf(const BoardState& state, const TurnSituation& turn)
{
    const ComputerChoice choice(ComputerLevel::Random, 1);
    return choice.Candidates(state, turn);
}

// Every outcome the clicks can have at a vehicle-pick phase, tried one by one
// on fresh copies: each vehicle still in the game, 1 to 12 slow clicks on a
// camp vehicle, each field 1 to 118, each answer to the two questions.
std::vector<BoardState> EveryAcceptedOutcome(const BoardState& state, const TurnSituation& turn)
{
    std::vector<BoardState> outcomes;
    const int side = turn.Side;
    const auto index = static_cast<std::size_t>(ActionIndexOfPhase(turn.Phase));
    for (int slot = 0; slot < kVehicleSlots; ++slot) {
        if (state.VehiclePos(side, slot) == kOutOfGame)
            continue;
        BoardState picked = state;
        const VehiclePick pick =
            PickOwnVehicle(picked, side, slot, turn.Phase, turn.Dice1, turn.Dice2, turn.ActVeh, turn.ActCode);
        if (pick == VehiclePick::Refused)
            continue;
        const bool camp = pick == VehiclePick::FromCamp;
        for (int clicks = camp ? 1 : 0; clicks <= (camp ? 12 : 0); ++clicks) {
            for (int field = 1; field <= kLastField; ++field) {
                // The one move the computer leaves out on purpose.
                if (slot == kJeepSlot && field == IslandField(side))
                    continue;
                for (const bool flag : {true, false}) {
                    // Nor does it take a flag with the second action.
                    if (flag && index == 1)
                        continue;
                    for (const bool mine : {true, false}) {
                        BoardState copy = picked;
                        TurnSituation words = turn;
                        words.ActVeh[index] = slot;
                        words.ActFrom[index] = copy.VehiclePos(side, slot);
                        if (camp)
                            CampLoadClicks(copy, side, slot, clicks);
                        const DestinationQuestions questions{[flag] { return flag; }, [mine] { return mine; }};
                        const DestinationResult result = ClickDestination(
                            copy, ActionWords{words.ActVeh, words.ActCode, words.ActFrom}, side,
                            turn.Phase + (camp ? 2 : 3), field, turn.Dice1, turn.Dice2, questions);
                        if (result.What == DestinationResult::Kind::Done &&
                            std::find(outcomes.begin(), outcomes.end(), copy) == outcomes.end())
                            outcomes.push_back(copy);
                    }
                }
            }
        }
    }
    return outcomes;
}

// The candidates are the accepted outcomes, each once, and each candidate's
// clicks, made again on the position, give its outcome.
void ExpectExactlyTheAcceptedOutcomes(const BoardState& state, const TurnSituation& turn)
{
    const std::vector<Candidate> candidates = CandidatesOf(state, turn);
    const std::vector<BoardState> accepted = EveryAcceptedOutcome(state, turn);
    ASSERT_EQ(candidates.size(), accepted.size()) << "phase " << turn.Phase << " dice " << turn.Dice1 << " "
                                                  << turn.Dice2;
    for (const Candidate& candidate : candidates) {
        EXPECT_NE(std::find(accepted.begin(), accepted.end(), candidate.After), accepted.end());
        BoardState replay = state;
        TurnSituation words = turn;
        ASSERT_TRUE(testing::ApplyPlannedAction(replay, words, candidate.Action));
        EXPECT_EQ(replay, candidate.After);
        EXPECT_EQ(words.Phase, candidate.Next.Phase);
        EXPECT_EQ(words.ActVeh, candidate.Next.ActVeh);
        EXPECT_EQ(words.ActCode, candidate.Next.ActCode);
        EXPECT_EQ(words.ActFrom, candidate.Next.ActFrom);
    }
}

TEST(ComputerCandidates, StartWithASixSendsCampVehiclesToTheHQ)
{
    for (int side : {1, 2}) {
        const BoardState state = NewGame();
        const TurnSituation turn = Turn(side, 5, 6, 3);
        const std::vector<Candidate> candidates = CandidatesOf(state, turn);
        ASSERT_FALSE(candidates.empty());
        std::set<int> slots;
        for (const Candidate& candidate : candidates) {
            const int slot = candidate.Action.Slot;
            slots.insert(slot);
            EXPECT_EQ(candidate.Action.Field, HQField(side));
            EXPECT_EQ(candidate.Action.TargetSlot, -1);
            EXPECT_GE(candidate.Action.LoadClicks, 1);
            EXPECT_EQ(candidate.After.VehiclePos(side, slot), HQField(side));
            EXPECT_EQ(candidate.After.HQCount(side), 1);
            EXPECT_EQ(candidate.Next.Phase, 9);
            EXPECT_EQ(candidate.Next.ActVeh[0], slot);
            EXPECT_EQ(candidate.Next.ActCode[0], 1);
            EXPECT_EQ(candidate.Next.ActFrom[0], CampField(side));
        }
        // Every camp vehicle; the jeep stays on its island with an empty prison.
        EXPECT_EQ(slots, (std::set<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
        // Each loading once: the tank takes 1 to 5 companies.
        EXPECT_EQ(std::count_if(candidates.begin(), candidates.end(),
                                [](const Candidate& c) { return c.Action.Slot == kTankSlot; }),
                  5);
        // A commando 1 or 2 companies, each with or without a mine.
        EXPECT_EQ(std::count_if(candidates.begin(), candidates.end(),
                                [](const Candidate& c) { return c.Action.Slot == 6; }),
                  4);
        ExpectExactlyTheAcceptedOutcomes(state, turn);
    }
}

TEST(ComputerCandidates, NoSixAndAllInTheCampLeaveNothingToDo)
{
    const BoardState state = NewGame();
    for (int side : {1, 2})
        for (int phase : {5, 14, 23})
            EXPECT_TRUE(CandidatesOf(state, Turn(side, phase, 2, 5)).empty()) << side << " " << phase;
    // Both dice: a sum of 6 opens the camp.
    EXPECT_FALSE(CandidatesOf(state, Turn(1, 23, 2, 4)).empty());
}

TEST(ComputerCandidates, BothDiceWithASixLeaveTheCampOntoTheRoads)
{
    const BoardState state = NewGame();
    const TurnSituation turn = Turn(1, 23, 6, 2);
    const std::vector<Candidate> candidates = CandidatesOf(state, turn);
    std::set<int> fields;
    for (const Candidate& candidate : candidates)
        fields.insert(candidate.Action.Field);
    // The other die + 1 steps from the camp: 72 and 84, not the HQ; or back
    // into the camp (through the HQ), which only spends the dice.
    EXPECT_EQ(fields, (std::set<int>{72, 84, kCamp1}));
    EXPECT_EQ(std::count_if(candidates.begin(), candidates.end(),
                            [](const Candidate& c) { return c.Action.Field == kCamp1; }),
              1);
    ExpectExactlyTheAcceptedOutcomes(state, turn);
}

TEST(ComputerCandidates, VehicleOnTheBoardWithThree)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, kTankSlot, 20, kEast);
    LoadCompanies(state, 1, kTankSlot, 2);
    const TurnSituation turn = Turn(1, 5, 3, 1);
    const std::vector<Candidate> candidates = CandidatesOf(state, turn);
    ASSERT_FALSE(candidates.empty());
    for (const Candidate& candidate : candidates) {
        EXPECT_EQ(candidate.Action.Slot, kTankSlot);
        EXPECT_TRUE(JudgeMove(state, 1, kTankSlot, 20, candidate.Action.Field, 3, true).Legal)
            << candidate.Action.Field;
        EXPECT_EQ(candidate.After.VehiclePos(1, kTankSlot), candidate.Action.Field);
    }
    // Every road square a walk of 3 reaches is among them.
    for (int field = 1; field <= kLastRoadField; ++field) {
        const bool legal = JudgeMove(state, 1, kTankSlot, 20, field, 3, true).Legal;
        const bool offered = std::any_of(candidates.begin(), candidates.end(),
                                         [field](const Candidate& c) { return c.Action.Field == field; });
        EXPECT_EQ(legal, offered) << field;
    }
    ExpectExactlyTheAcceptedOutcomes(state, turn);
}

TEST(ComputerCandidates, ShotNamesTheEnemyVehicleAndItsField)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, kTankSlot, 20, kEast);
    LoadCompanies(state, 1, kTankSlot, 3);
    int target = -1;
    for (int field = 1; field <= kLastRoadField && target < 0; ++field)
        if (JudgeMove(state, 1, kTankSlot, 20, field, 4, true).Legal)
            target = field;
    ASSERT_GT(target, 0);
    PutVehicle(state, 2, 4, target, kWest);
    LoadCompanies(state, 2, 4, 1);
    const TurnSituation turn = Turn(1, 14, 1, 4);
    const std::vector<Candidate> candidates = CandidatesOf(state, turn);
    const auto shot = std::find_if(candidates.begin(), candidates.end(),
                                   [](const Candidate& c) { return c.Action.TargetSlot >= 0; });
    ASSERT_NE(shot, candidates.end());
    EXPECT_EQ(shot->Action.TargetSlot, 4);
    EXPECT_EQ(shot->Action.Field, target);
    EXPECT_EQ(shot->After.VehiclePos(2, 4), kOutOfGame);
    EXPECT_EQ(shot->Next.ActCode[0], 2);
    ExpectExactlyTheAcceptedOutcomes(state, turn);
}

TEST(ComputerCandidates, FlagAndMineQuestionsAreAnsweredBothWays)
{
    // An infantry of army 1 one step from its flag field 69, with 68 or 70
    // beside it, and a commando with a mine on a square that takes one.
    BoardState state = NewGame();
    PutVehicle(state, 1, 3, 68, kEast);
    LoadCompanies(state, 1, 3, 1);
    int mineField = -1;
    for (int field = 20; field <= 40 && mineField < 0; ++field)
        if (MineSide(field) >= 1 && state.BoardCell(field) == 0)
            mineField = field;
    ASSERT_GT(mineField, 0);
    PutVehicle(state, 1, 6, mineField, kEast);
    LoadCompanies(state, 1, 6, 1);
    LoadOwnMine(state, 1, 6);
    ASSERT_TRUE(MineLayingOffered(state, 1, 6, mineField));
    const TurnSituation turn = Turn(1, 5, 1, 2);
    const std::vector<Candidate> candidates = CandidatesOf(state, turn);

    const auto count = [&candidates](auto&& which) {
        return std::count_if(candidates.begin(), candidates.end(), which);
    };
    const auto ontoTheFlags = [](const Candidate& c) { return c.Action.Slot == 3 && c.Action.Field == 69; };
    EXPECT_EQ(count([&](const Candidate& c) { return ontoTheFlags(c) && c.Action.LoadFlag; }), 1);
    EXPECT_EQ(count([&](const Candidate& c) { return ontoTheFlags(c) && !c.Action.LoadFlag; }), 1);
    EXPECT_GT(count([](const Candidate& c) { return c.Action.Slot == 6 && c.Action.LeaveMine; }), 0);
    EXPECT_EQ(count([](const Candidate& c) { return c.Action.Slot == 6 && c.Action.LeaveMine; }),
              count([](const Candidate& c) { return c.Action.Slot == 6 && !c.Action.LeaveMine; }));
    ExpectExactlyTheAcceptedOutcomes(state, turn);
}

// A flag loaded by the second action would count on this copy alone: the
// code of that action goes into the first action's place and the opponent
// replays a plain move. The second action drives onto the flags without
// taking one.
TEST(ComputerCandidates, SecondActionTakesNoFlag)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, kTankSlot, 20, kEast);
    PutVehicle(state, 1, 3, 68, kEast);
    LoadCompanies(state, 1, 3, 1);
    const TurnSituation turn = Turn(1, 5, 3, 1);
    const std::vector<Candidate> first = CandidatesOf(state, turn);
    const auto move = std::find_if(first.begin(), first.end(), [](const Candidate& c) {
        return c.Action.Slot == kTankSlot && c.Action.TargetSlot < 0;
    });
    ASSERT_NE(move, first.end());
    TurnSituation second = move->Next;
    second.Phase = 10;
    const std::vector<Candidate> after = CandidatesOf(move->After, second);
    const auto ontoTheFlags = std::find_if(after.begin(), after.end(), [](const Candidate& c) {
        return c.Action.Slot == 3 && c.Action.Field == 69;
    });
    ASSERT_NE(ontoTheFlags, after.end());
    for (const Candidate& candidate : after) {
        EXPECT_FALSE(candidate.Action.LoadFlag);
        EXPECT_EQ(candidate.Next.ActCode[0], 1);
    }
    // The rules would let it take one.
    BoardState taken = move->After;
    TurnSituation words = second;
    PlannedAction withFlag = ontoTheFlags->Action;
    withFlag.LoadFlag = true;
    ASSERT_TRUE(testing::ApplyPlannedAction(taken, words, withFlag));
    EXPECT_EQ(words.ActCode[0], 5);
    ExpectExactlyTheAcceptedOutcomes(move->After, second);
}

TEST(ComputerCandidates, VehicleThatMovedPlainlyFirstIsNotOfferedAgain)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, kTankSlot, 20, kEast);
    PutVehicle(state, 1, 1, 30, kEast);
    TurnSituation turn = Turn(1, 5, 3, 4);
    const std::vector<Candidate> first = CandidatesOf(state, turn);
    const auto move = std::find_if(first.begin(), first.end(), [](const Candidate& c) {
        return c.Action.Slot == kTankSlot && c.Action.TargetSlot < 0;
    });
    ASSERT_NE(move, first.end());
    TurnSituation second = move->Next;
    ASSERT_EQ(second.Phase, 9);
    second.Phase = 10;
    const std::vector<Candidate> after = CandidatesOf(move->After, second);
    ASSERT_FALSE(after.empty());
    for (const Candidate& candidate : after)
        EXPECT_NE(candidate.Action.Slot, kTankSlot);
    ExpectExactlyTheAcceptedOutcomes(move->After, second);
}

TEST(ComputerCandidates, DestroyedAndSleepingVehiclesAreLeftAlone)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, kTankSlot, 20, kEast);
    LoadCompanies(state, 1, kTankSlot, 1);
    PutVehicle(state, 1, 1, 40, kEast);
    ResolveShot(state, 2, kTankSlot);
    ASSERT_EQ(state.VehiclePos(1, kTankSlot), kOutOfGame);
    state.Tsetse(1) = 2;
    state.TsetseVeh = 1;
    for (const Candidate& candidate : CandidatesOf(state, Turn(1, 5, 3, 4)))
        EXPECT_TRUE(candidate.Action.Slot != kTankSlot && candidate.Action.Slot != 1) << candidate.Action.Slot;
}

TEST(ComputerCandidates, JeepOnItsIslandTakesThePrisoners)
{
    BoardState state = NewGame();
    state.CampCompanies(1) -= 4;
    state.PrisonCompanies(1) = 4;
    const TurnSituation turn = Turn(1, 14, 2, 3);
    const std::vector<Candidate> candidates = CandidatesOf(state, turn);
    ASSERT_FALSE(candidates.empty());
    for (const Candidate& candidate : candidates) {
        EXPECT_EQ(candidate.Action.Slot, kJeepSlot);
        EXPECT_EQ(candidate.After.PrisonCompanies(1), 1);
        EXPECT_EQ(candidate.Next.ActFrom[0], kIsland1);
    }
    ExpectExactlyTheAcceptedOutcomes(state, turn);
}

// The rules let a jeep drive back to its island with its men aboard; its
// next escape would then load more than three on the opponent's copy, a
// jeep with no picture that ends that copy with a fault. The computer never
// drives it there.
TEST(ComputerCandidates, JeepIsNeverDrivenBackToItsIsland)
{
    BoardState state = NewGame();
    state.CampCompanies(1) -= 2;
    PutVehicle(state, 1, kJeepSlot, 80, kEast);
    LoadCompanies(state, 1, kJeepSlot, 2);
    const TurnSituation turn = Turn(1, 5, 1, 4);
    ASSERT_TRUE(JudgeMove(state, 1, kJeepSlot, 80, kIsland1, 1, true).Legal);
    const std::vector<Candidate> candidates = CandidatesOf(state, turn);
    ASSERT_FALSE(candidates.empty());
    for (const Candidate& candidate : candidates)
        EXPECT_NE(candidate.After.VehiclePos(1, kJeepSlot), kIsland1) << candidate.Action.Field;
}

// Positions reached by random play, every phase that picks a vehicle, random
// dice, and the second action after a random first one.
TEST(ComputerCandidates, ExactlyWhatTheRulesAcceptInPlayedPositions)
{
    std::mt19937 random(20240611);
    std::uniform_int_distribution<int> die(1, 6);
    for (int round = 0; round < 24; ++round) {
        const BoardState state = testing::RandomPosition(random, 20 + 10 * round);
        const int side = round % 2 + 1;
        const int dice1 = round % 5 == 0 ? 6 : die(random);
        const int dice2 = die(random);
        for (int phase : {5, 14, 23}) {
            const TurnSituation turn = Turn(side, phase, dice1, dice2);
            ExpectExactlyTheAcceptedOutcomes(state, turn);
            if (phase == 23)
                continue;
            const std::vector<Candidate> first = CandidatesOf(state, turn);
            if (first.empty())
                continue;
            const Candidate& chosen =
                first[std::uniform_int_distribution<std::size_t>(0, first.size() - 1)(random)];
            TurnSituation second = chosen.Next;
            second.Phase = second.Phase == 9 ? 10 : 19;
            ExpectExactlyTheAcceptedOutcomes(chosen.After, second);
        }
    }
}

TEST(ComputerCandidates, OtherPhasesHaveNone)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, kTankSlot, 20, kEast);
    for (int phase : {0, 4, 7, 8, 9, 18, 25, 26, 27})
        EXPECT_TRUE(CandidatesOf(state, Turn(1, phase, 6, 6)).empty()) << phase;
}

} // namespace
} // namespace vk
