#include "cards/Deck.h"

#include "ScriptedRandom.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using vk::test::RecordingRandom;
using vk::test::ScriptedRandom;

// The draw r that makes CardPick give position p: Round(r x 32000 + 1) = p + 31.
double DrawFor(int p)
{
    return (p + 30) / 32000.0;
}

TEST(CardPick, SeedsOnceWithSecondsModulo32000PlusOne)
{
    RecordingRandom random;
    vk::CardPickState state;
    vk::CardPick(state, random, 86399.6);
    vk::CardPick(state, random, 10.0);
    ASSERT_EQ(random.seeds.size(), 1u);
    EXPECT_EQ(random.seeds[0], 22401); // 86400 mod 32000 + 1
    EXPECT_TRUE(state.seeded);
}

TEST(CardPick, RoundsTimes32000PlusOneThenModulo32PlusOne)
{
    vk::CardPickState state;
    ScriptedRandom random([](long long d) {
        switch (d) {
        case 0: return 0.0;             // Round(1) = 1 -> 2
        case 1: return 31.0 / 32000.0;  // Round(32) = 32 -> 1
        case 2: return 30.4 / 32000.0;  // Round(31.4) = 31 -> 32
        case 3: return 30.6 / 32000.0;  // Round(31.6) = 32 -> 1
        default: return 0.99999;        // Round(32000.68) = 32001 -> 2
        }
    });
    EXPECT_EQ(vk::CardPick(state, random, 0.0), 2);
    EXPECT_EQ(vk::CardPick(state, random, 0.0), 1);
    EXPECT_EQ(vk::CardPick(state, random, 0.0), 32);
    EXPECT_EQ(vk::CardPick(state, random, 0.0), 1);
    EXPECT_EQ(vk::CardPick(state, random, 0.0), 2);
}

TEST(CardPick, AlwaysOneToThirtyTwo)
{
    vk::SplitMixRandom random;
    vk::CardPickState state;
    for (int n = 0; n < 20000; ++n) {
        const int p = vk::CardPick(state, random, 1.0);
        ASSERT_GE(p, 1);
        ASSERT_LE(p, 32);
    }
}

TEST(Shuffle, SwapsPositionsAMinusOneAndBMinusOneAThousandTimes)
{
    // First pair (1, 3), then (2, 2) 999 times: a swap of a place with itself counts.
    ScriptedRandom random([](long long d) {
        if (d == 0)
            return DrawFor(1);
        if (d == 1)
            return DrawFor(3);
        return DrawFor(2);
    });
    vk::CompassStackArray stack{};
    stack[32] = 99; // spare room, not part of the deal
    int point = 0;
    int dice1 = 0;
    int dice2 = 0;
    vk::CardPickState state;
    vk::ShuffleCompassStack(stack, point, dice1, dice2, state, random, 5.0);
    EXPECT_EQ(random.draws, 2000);
    EXPECT_EQ(stack[0], 3);
    EXPECT_EQ(stack[1], 2);
    EXPECT_EQ(stack[2], 1);
    for (int i = 4; i <= 32; ++i)
        EXPECT_EQ(stack[static_cast<std::size_t>(i - 1)], i);
    EXPECT_EQ(stack[32], 99);
    EXPECT_EQ(point, 32);
    // The picks went through the dice: the last pair stays there.
    EXPECT_EQ(dice1, 2);
    EXPECT_EQ(dice2, 2);
    ASSERT_EQ(random.seeds.size(), 1u);
    EXPECT_EQ(random.seeds[0], 6);
}

TEST(Shuffle, GivesEachCardOnce)
{
    vk::SplitMixRandom random;
    vk::CardPickState state;
    vk::CompassStackArray stack{};
    int point = 0;
    int dice1 = 0;
    int dice2 = 0;
    vk::ShuffleCompassStack(stack, point, dice1, dice2, state, random, 43210.0);
    std::vector<int> cards(stack.begin(), stack.begin() + 32);
    std::sort(cards.begin(), cards.end());
    for (int i = 1; i <= 32; ++i)
        EXPECT_EQ(cards[static_cast<std::size_t>(i - 1)], i);
    EXPECT_EQ(point, 32);
    EXPECT_GE(dice1, 1);
    EXPECT_LE(dice2, 32);
}

TEST(Deck, LogLineAndKeyUseTwoDigits)
{
    EXPECT_EQ(vk::DeckLogLine(1, 5), "card 01: 05");
    EXPECT_EQ(vk::DeckLogLine(32, 21), "card 32: 21");
    EXPECT_EQ(vk::DeckKey(1), "Kaart01");
    EXPECT_EQ(vk::DeckKey(32), "Kaart32");
}

} // namespace
