// The Personnel cards a computer player plays before its roll: only those the
// opponent's copy can carry out, each judged by its effect on a copy of the
// board.

#include "game/ComputerChoice.h"

#include "BoardFixtures.h"
#include "board/BoardTables.h"
#include "board/VehicleTag.h"
#include "cards/DeckMoves.h"
#include "cards/PersonnelPicks.h"

#include <gtest/gtest.h>

namespace vk {
namespace {

using testing::LayMine;
using testing::NewGame;
using testing::PutVehicle;

TEST(ComputerCards, GreedyClearsAnEnemyMine)
{
    for (int side : {1, 2}) {
        BoardState state = NewGame();
        LayMine(state, OtherSide(side), 0, 40);
        ComputerChoice greedy(ComputerLevel::Greedy, 1);
        const auto play = greedy.ChooseCardToPlay(state, side, {kVrijgeleide, kMijnopruimingsdienst}, 2);
        ASSERT_TRUE(play.has_value());
        EXPECT_EQ(2, play->HandSlot);
        EXPECT_EQ(kMijnopruimingsdienst, play->Card);
        EXPECT_EQ(40, play->Field);
        EXPECT_TRUE(EnemyMineField(state, side, play->Field));
    }
}

TEST(ComputerCards, NothingToGainKeepsTheCard)
{
    BoardState state = NewGame();
    ComputerChoice greedy(ComputerLevel::Greedy, 1);
    // No enemy mine out, the enemy jeep at home, nobody in prison.
    EXPECT_FALSE(greedy.ChooseCardToPlay(state, 1, {kMijnopruimingsdienst, kMilitairePolitie}, 2).has_value());
    EXPECT_FALSE(greedy.ChooseCardToPlay(state, 1, {kUitwisseling, 0}, 1).has_value());
}

TEST(ComputerCards, CardsThatEndTheOpponentsCopyAreNeverPlayed)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, kTankSlot, 20, kEast);
    PutVehicle(state, 2, kTankSlot, 30, kWest);
    for (ComputerLevel level : {ComputerLevel::Greedy, ComputerLevel::Random}) {
        ComputerChoice choice(level, 7);
        for (int card : {21, 23, 26, 27, 31, 32, kContraSpionage, kVrijgeleide})
            for (int round = 0; round < 20; ++round)
                EXPECT_FALSE(choice.ChooseCardToPlay(state, 1, {card, 0}, 1).has_value()) << card;
    }
}

TEST(ComputerCards, GreedyAmbushesTheEnemyJeepOnTheRoad)
{
    BoardState state = NewGame();
    int field = kFirstRoadField;
    while (field <= kLastRoadField && !IsBehindForwardPosts(2, field))
        ++field;
    ASSERT_LE(field, kLastRoadField);
    PutVehicle(state, 2, kJeepSlot, field, kWest);
    ASSERT_TRUE(AmbushTargetAllowed(state, 1, kJeepSlot));
    ComputerChoice greedy(ComputerLevel::Greedy, 1);
    const auto play = greedy.ChooseCardToPlay(state, 1, {kHinderlaag, 0}, 1);
    ASSERT_TRUE(play.has_value());
    EXPECT_EQ(kHinderlaag, play->Card);
    EXPECT_EQ(kJeepSlot, play->VehicleSlot);
}

TEST(ComputerCards, RandomRepeatsWithTheSameSeed)
{
    BoardState state = NewGame();
    LayMine(state, 2, 0, 40);
    ComputerChoice a(ComputerLevel::Random, 11);
    ComputerChoice b(ComputerLevel::Random, 11);
    for (int round = 0; round < 30; ++round)
        EXPECT_EQ(a.ChooseCardToPlay(state, 1, {kMijnopruimingsdienst, 0}, 1),
                  b.ChooseCardToPlay(state, 1, {kMijnopruimingsdienst, 0}, 1));
}

} // namespace
} // namespace vk
