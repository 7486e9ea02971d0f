// The choices of the computer player: the greedy player shoots, brings flags
// home, keeps its jeep safe and takes prisoners back; both players only ever
// choose what the rules accept, repeat themselves with the same seed, and keep
// Vrijgeleide and Contra spionage in hand.

#include "game/ComputerChoice.h"

#include "BoardFixtures.h"
#include "ComputerGames.h"
#include "board/Movement.h"
#include "board/Picking.h"
#include "cards/DeckMoves.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vk {
namespace {

using testing::LoadCompanies;
using testing::NewGame;
using testing::PutVehicle;
using testing::Turn;

// The first empty road square `slot` of `side` reaches from `from` with
// exactly `steps`.
int Reached(const BoardState& state, int side, int slot, int from, int steps)
{
    for (int field = 1; field <= kLastRoadField; ++field)
        if (state.BoardCell(field) == 0 && JudgeMove(state, side, slot, from, field, steps, true).Legal)
            return field;
    return -1;
}

TEST(ComputerGreedy, PrefersAShot)
{
    for (int side : {1, 2}) {
        const int enemy = OtherSide(side);
        BoardState state = NewGame();
        PutVehicle(state, side, kTankSlot, 20, kEast);
        LoadCompanies(state, side, kTankSlot, 3);
        const int target = Reached(state, side, kTankSlot, 20, 4);
        ASSERT_GT(target, 0);
        PutVehicle(state, enemy, 1, target, kWest);
        LoadCompanies(state, enemy, 1, 1);
        ComputerChoice greedy(ComputerLevel::Greedy, 5);
        const std::optional<PlannedAction> action = greedy.ChooseAction(state, Turn(side, 23, 1, 3));
        ASSERT_TRUE(action.has_value());
        EXPECT_EQ(action->Slot, kTankSlot);
        EXPECT_EQ(action->TargetSlot, 1);
        EXPECT_EQ(action->Field, target);
        // A whole turn with a 4 among the dice ends with the shot made.
        BoardState played = state;
        ASSERT_TRUE(testing::PlayTurn(played, greedy, side, 4, 1));
        EXPECT_EQ(played.VehiclePos(enemy, 1), kOutOfGame);
    }
}

TEST(ComputerGreedy, BringsAFlagHome)
{
    // An infantry of army 1 with a flag on 71, beside the HQ: two steps take
    // it into the camp.
    BoardState state = NewGame();
    PutVehicle(state, 1, 3, 71, kNorth);
    LoadCompanies(state, 1, 3, 2);
    state.VehicleTag(1, 3)[static_cast<std::size_t>(MarkPosition(3) - 1)] = '1';
    state.FlagReserve(1) -= 1;
    state.FlagCarried(1) += 1;
    PutVehicle(state, 1, kTankSlot, 40, kEast);
    LoadCompanies(state, 1, kTankSlot, 2);
    ASSERT_TRUE(JudgeMove(state, 1, 3, 71, kCamp1, 2, true).Legal);
    ComputerChoice greedy(ComputerLevel::Greedy, 9);
    // The second action of a turn, with a 2.
    const std::optional<PlannedAction> action = greedy.ChooseAction(state, Turn(1, 10, 5, 2));
    ASSERT_TRUE(action.has_value());
    EXPECT_EQ(action->Slot, 3);
    EXPECT_EQ(action->Field, kCamp1);
    BoardState applied = state;
    TurnSituation turn = Turn(1, 10, 5, 2);
    ASSERT_TRUE(testing::ApplyPlannedAction(applied, turn, *action));
    EXPECT_EQ(applied.FlagHome(1), 1);

    // A whole turn: whichever die it takes, the flag comes home.
    for (const auto& [dice1, dice2] : {std::pair{5, 2}, std::pair{2, 5}, std::pair{1, 1}, std::pair{6, 6}}) {
        BoardState played = state;
        ASSERT_TRUE(testing::PlayTurn(played, greedy, 1, dice1, dice2));
        EXPECT_EQ(played.FlagHome(1), 1) << dice1 << " " << dice2;
    }
}

TEST(ComputerGreedy, TakesAFlagWhenItCan)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 4, 67, kEast);
    LoadCompanies(state, 1, 4, 2);
    ComputerChoice greedy(ComputerLevel::Greedy, 3);
    const std::optional<PlannedAction> action = greedy.ChooseAction(state, Turn(1, 23, 1, 1));
    ASSERT_TRUE(action.has_value());
    EXPECT_EQ(action->Slot, 4);
    EXPECT_TRUE(action->LoadFlag);
    TurnSituation turn = Turn(1, 23, 1, 1);
    ASSERT_TRUE(testing::ApplyPlannedAction(state, turn, *action));
    EXPECT_EQ(state.FlagCarried(1), 1);
}

TEST(ComputerGreedy, ScoresFlagsHomeAboveFlagsAboardAndNearerAboveFarther)
{
    BoardState aboard = NewGame();
    PutVehicle(aboard, 1, 3, 71, kNorth);
    LoadCompanies(aboard, 1, 3, 2);
    aboard.VehicleTag(1, 3)[static_cast<std::size_t>(MarkPosition(3) - 1)] = '1';
    aboard.FlagReserve(1) -= 1;
    aboard.FlagCarried(1) += 1;

    BoardState farther = aboard;
    PutVehicle(farther, 1, 3, 60, kEast);

    BoardState home = NewGame();
    home.FlagReserve(1) -= 1;
    home.FlagHome(1) += 1;

    const double base = ComputerChoice::Score(NewGame(), 1);
    EXPECT_GT(ComputerChoice::Score(home, 1), ComputerChoice::Score(aboard, 1));
    EXPECT_GT(ComputerChoice::Score(aboard, 1), ComputerChoice::Score(farther, 1));
    EXPECT_GT(ComputerChoice::Score(farther, 1), base);
    // The other army sees it the other way round.
    EXPECT_LT(ComputerChoice::Score(home, 2), ComputerChoice::Score(NewGame(), 2));

    BoardState won = NewGame();
    won.FlagReserve(1) = 0;
    won.FlagHome(1) = kFlagsPerArmy;
    EXPECT_GT(ComputerChoice::Score(won, 1), ComputerChoice::Score(home, 1) + 100000.0);
    EXPECT_LT(ComputerChoice::Score(won, 2), -100000.0);
}

TEST(ComputerGreedy, ScoresEnemyLossesAndOwnPrisoners)
{
    const BoardState start = NewGame();
    BoardState enemyLost = start;
    enemyLost.CampCompanies(2) -= 1;
    enemyLost.ReserveCompanies(2) += 1;
    EXPECT_GT(ComputerChoice::Score(enemyLost, 1), ComputerChoice::Score(start, 1));

    BoardState taken = start;
    taken.CampCompanies(1) -= 2;
    taken.PrisonCompanies(1) += 2;
    EXPECT_LT(ComputerChoice::Score(taken, 1), ComputerChoice::Score(start, 1));
}

TEST(ComputerGreedy, KeepsTheJeepAwayFromEnemyVehicles)
{
    BoardState state = NewGame();
    PutVehicle(state, 2, kTankSlot, 40, kWest);
    LoadCompanies(state, 2, kTankSlot, 2);
    BoardState near = state;
    BoardState far = state;
    PutVehicle(near, 1, kJeepSlot, 43, kEast);
    PutVehicle(far, 1, kJeepSlot, 80, kNorth);
    EXPECT_LT(ComputerChoice::Score(near, 1), ComputerChoice::Score(far, 1));
}

TEST(ComputerGreedy, RescuesPrisoners)
{
    BoardState state = NewGame();
    state.CampCompanies(1) -= 3;
    state.PrisonCompanies(1) = 3;
    // Only the jeep can act: no 6, everything else in the camp.
    ComputerChoice greedy(ComputerLevel::Greedy, 11);
    EXPECT_EQ(greedy.ChooseDie(state, Turn(1, 4, 2, 3)) != 0, true);
    const std::optional<PlannedAction> action = greedy.ChooseAction(state, Turn(1, 23, 2, 3));
    ASSERT_TRUE(action.has_value());
    EXPECT_EQ(action->Slot, kJeepSlot);
    TurnSituation turn = Turn(1, 23, 2, 3);
    const double before = ComputerChoice::Score(state, 1);
    ASSERT_TRUE(testing::ApplyPlannedAction(state, turn, *action));
    EXPECT_EQ(state.PrisonCompanies(1), 0);
    EXPECT_GT(ComputerChoice::Score(state, 1), before);
}

TEST(ComputerDie, NothingToDoEndsTheTurn)
{
    const BoardState state = NewGame();
    for (ComputerLevel level : {ComputerLevel::Greedy, ComputerLevel::Random}) {
        ComputerChoice choice(level, 2);
        EXPECT_EQ(choice.ChooseDie(state, Turn(1, 4, 1, 2)), 0);
        EXPECT_EQ(choice.ChooseDie(state, Turn(2, 9, 6, 2)), 0);
        EXPECT_EQ(choice.ChooseDie(state, Turn(2, 18, 1, 6)), 0);
        EXPECT_FALSE(choice.ChooseAction(state, Turn(1, 5, 1, 2)).has_value());
        // A 6 on the remaining die opens the camp.
        EXPECT_EQ(choice.ChooseDie(state, Turn(1, 9, 1, 6)), 2);
        EXPECT_EQ(choice.ChooseDie(state, Turn(1, 18, 6, 1)), 1);
        EXPECT_NE(choice.ChooseDie(state, Turn(1, 4, 6, 1)), 0);
        // Phases that choose no die.
        EXPECT_EQ(choice.ChooseDie(state, Turn(1, 5, 6, 6)), 0);
    }
}

TEST(ComputerDie, RandomPicksOnlyDiceThatCanBePlayed)
{
    // A 1 and a 6, all in the camp: die 1 alone opens nothing; die 2 sends a
    // vehicle to the HQ, both dice take it out two steps.
    const BoardState state = NewGame();
    ComputerChoice random(ComputerLevel::Random, 77);
    int second = 0;
    int both = 0;
    for (int i = 0; i < 60; ++i) {
        const int die = random.ChooseDie(state, Turn(1, 4, 1, 6));
        EXPECT_TRUE(die == 2 || die == 3) << die;
        second += die == 2 ? 1 : 0;
        both += die == 3 ? 1 : 0;
    }
    EXPECT_GT(second, 0);
    EXPECT_GT(both, 0);
}

TEST(ComputerPlay, NeverPicksWhatTheRulesRefuse)
{
    for (std::uint32_t seed = 1; seed <= 6; ++seed) {
        ComputerChoice first(seed % 2 == 0 ? ComputerLevel::Greedy : ComputerLevel::Random, seed);
        ComputerChoice second(seed % 3 == 0 ? ComputerLevel::Greedy : ComputerLevel::Random, seed + 100);
        std::mt19937 dice(seed);
        const testing::GameResult result = testing::PlayGame(first, second, dice, 150);
        EXPECT_FALSE(result.Refused) << "seed " << seed << " turn " << result.Turns;
    }
}

TEST(ComputerPlay, SameSeedRepeats)
{
    for (ComputerLevel level : {ComputerLevel::Random, ComputerLevel::Greedy}) {
        std::vector<testing::GameResult> results;
        for (int run = 0; run < 2; ++run) {
            ComputerChoice first(level, 42);
            ComputerChoice second(ComputerLevel::Random, 43);
            std::mt19937 dice(44);
            results.push_back(testing::PlayGame(first, second, dice, 120));
        }
        EXPECT_EQ(results[0].Winner, results[1].Winner);
        EXPECT_EQ(results[0].Turns, results[1].Turns);
        for (int army = 0; army < 2; ++army) {
            EXPECT_EQ(results[0].FlagsHome[army], results[1].FlagsHome[army]);
            EXPECT_EQ(results[0].Reserve[army], results[1].Reserve[army]);
            EXPECT_EQ(results[0].Prison[army], results[1].Prison[army]);
            EXPECT_EQ(results[0].Destroyed[army], results[1].Destroyed[army]);
        }
    }

    // The same choices, one by one, from the same position.
    std::mt19937 positions(8);
    const BoardState state = testing::RandomPosition(positions, 60);
    ComputerChoice a(ComputerLevel::Random, 1234);
    ComputerChoice b(ComputerLevel::Random, 1234);
    for (int dice1 = 1; dice1 <= 6; ++dice1)
        for (int phase : {5, 14, 23}) {
            const TurnSituation turn = Turn(1, phase, dice1, 7 - dice1);
            const TurnSituation roll = Turn(1, 4, dice1, 7 - dice1);
            EXPECT_EQ(a.ChooseAction(state, turn), b.ChooseAction(state, turn));
            EXPECT_EQ(a.ChooseDie(state, roll), b.ChooseDie(state, roll));
        }
}

TEST(ComputerPlay, RandomSpreadsOverTheCandidates)
{
    // All in the camp and a 6: ten vehicles may go; a random player picks
    // more than one of them.
    const BoardState state = NewGame();
    ComputerChoice random(ComputerLevel::Random, 99);
    std::vector<int> slots;
    for (int i = 0; i < 40; ++i) {
        const std::optional<PlannedAction> action = random.ChooseAction(state, Turn(2, 5, 6, 2));
        ASSERT_TRUE(action.has_value());
        if (std::find(slots.begin(), slots.end(), action->Slot) == slots.end())
            slots.push_back(action->Slot);
    }
    EXPECT_GT(slots.size(), 3u);
}

TEST(ComputerCards, KeepsVrijgeleideAndContraSpionage)
{
    for (ComputerLevel level : {ComputerLevel::Greedy, ComputerLevel::Random}) {
        ComputerChoice choice(level, 17);
        for (int other = kFirstPersonnelCard; other <= 32; ++other) {
            if (other == kVrijgeleide || other == kContraSpionage)
                continue;
            std::array<int, 3> hand{kVrijgeleide, kContraSpionage, other};
            std::sort(hand.begin(), hand.end());
            do {
                for (int i = 0; i < 10; ++i) {
                    const int away = choice.CardToThrowAway(hand);
                    ASSERT_GE(away, 1);
                    ASSERT_LE(away, 3);
                    EXPECT_EQ(hand[static_cast<std::size_t>(away - 1)], other);
                }
            } while (std::next_permutation(hand.begin(), hand.end()));
            // One of them and two others: one of the others goes.
            for (int keep : {kVrijgeleide, kContraSpionage}) {
                const int third = other == 21 ? 22 : 21;
                const std::array<int, 3> mixed{other, keep, third};
                for (int i = 0; i < 10; ++i)
                    EXPECT_NE(mixed[static_cast<std::size_t>(choice.CardToThrowAway(mixed) - 1)], keep);
            }
        }
    }
}

} // namespace
} // namespace vk
