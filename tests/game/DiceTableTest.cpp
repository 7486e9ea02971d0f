#include "game/DiceTable.h"

#include "ScriptedRandom.h"
#include "shell/RunTimeFault.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>

namespace {

using vk::DiceTable;
using vk::test::RecordingRandom;
using vk::test::ScriptedRandom;

std::array<int, 7> Counts(const DiceTable& table, int first, int last)
{
    std::array<int, 7> counts{};
    for (int i = first; i <= last; ++i)
        ++counts.at(static_cast<std::size_t>(table[static_cast<std::size_t>(i)]));
    return counts;
}

std::unique_ptr<DiceTable> EmptyTable()
{
    auto table = std::make_unique<DiceTable>();
    table->fill(0);
    return table;
}

TEST(DiceTable, FullTableHoldsEachValueExactly4000TimesWhateverTheShuffle)
{
    for (std::int32_t seed : {1, 2, 77, 24000, 31999}) {
        vk::SplitMixRandom random;
        auto table = EmptyTable();
        vk::BuildDiceTable(*table, random, seed, {});
        auto counts = Counts(*table, 0, 23999);
        EXPECT_EQ(counts[0], 0) << "seed " << seed;
        for (int v = 1; v <= 6; ++v)
            EXPECT_EQ(counts[static_cast<std::size_t>(v)], 4000) << "seed " << seed << " value " << v;
        // More mixing passes never change the counts: an exchange moves values, it never makes them.
        vk::MixDiceTable(*table, random, {});
        vk::MixDiceTable(*table, random, {});
        counts = Counts(*table, 0, 23999);
        for (int v = 1; v <= 6; ++v)
            EXPECT_EQ(counts[static_cast<std::size_t>(v)], 4000) << "seed " << seed << " value " << v;
    }
}

TEST(DiceTable, BuildEndsOnAnAcceptedTableAndCountsItsPasses)
{
    vk::SplitMixRandom random;
    auto table = EmptyTable();
    long long pumps = 0;
    const std::int16_t passes = vk::BuildDiceTable(*table, random, 4242, [&] { ++pumps; });
    EXPECT_GE(passes, 1);
    const auto check = vk::CheckDiceTable(*table);
    EXPECT_TRUE(check.accepted);
    EXPECT_LT(check.spread, 40);
    EXPECT_LT(check.top, 21);
    // One pump per value placed (5 x 4000), one per exchange (240000 a pass).
    EXPECT_EQ(pumps, 20000LL + 240000LL * passes);
}

TEST(DiceTable, BuildIsRepeatableForOneSeed)
{
    vk::SplitMixRandom first;
    vk::SplitMixRandom second;
    auto a = EmptyTable();
    auto b = EmptyTable();
    const auto passesA = vk::BuildDiceTable(*a, first, 555, {});
    const auto passesB = vk::BuildDiceTable(*b, second, 555, {});
    EXPECT_EQ(passesA, passesB);
    EXPECT_EQ(*a, *b);
}

TEST(DiceTable, BuildSeedsTheGeneratorWithTheClockSeedFirst)
{
    RecordingRandom random;
    auto table = EmptyTable();
    vk::BuildDiceTable(*table, random, 9876, {});
    ASSERT_EQ(random.seeds.size(), 1u);
    EXPECT_EQ(random.seeds[0], 9876);
}

TEST(DiceTable, PlacingTruncatesTheDrawAndPutsValuesOneToFiveInOrder)
{
    // Draw d gives the place d plus a fraction that truncation drops.
    ScriptedRandom random([](long long d) { return (static_cast<double>(d % 24000) + 0.75) / 24000.0; });
    auto table = EmptyTable();
    long long pumps = 0;
    vk::PlaceDiceValues(*table, random, [&] { ++pumps; });
    EXPECT_EQ(pumps, 20000);
    EXPECT_EQ(random.draws, 20000);
    EXPECT_EQ((*table)[0], 1);
    EXPECT_EQ((*table)[3999], 1);
    EXPECT_EQ((*table)[4000], 2);
    EXPECT_EQ((*table)[15999], 4);
    EXPECT_EQ((*table)[16000], 5);
    EXPECT_EQ((*table)[19999], 5);
    EXPECT_EQ((*table)[20000], 6); // every place left over becomes 6
    EXPECT_EQ((*table)[23999], 6);
}

TEST(DiceTable, PlacingDrawsAgainUntilThePlaceIsFree)
{
    // Places 0, 0, 1, 1, 2, 2, ...: every second draw hits a taken place.
    ScriptedRandom random([](long long d) { return (static_cast<double>(d / 2) + 0.5) / 24000.0; });
    auto table = EmptyTable();
    vk::PlaceDiceValues(*table, random, {});
    EXPECT_EQ(random.draws, 1 + 2 * 19999);
    EXPECT_EQ((*table)[3999], 1);
    EXPECT_EQ((*table)[4000], 2);
    EXPECT_EQ((*table)[20000], 6);
}

TEST(DiceTable, MixingExchangesAPlaceWithItsMirror)
{
    auto table = EmptyTable();
    for (int i = 0; i < 24000; ++i)
        (*table)[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(i % 6 + 1);
    const DiceTable before = *table;
    // First draw place 3, then place 100 for the other 239999 draws: an odd
    // number of exchanges of 100 with 23899 and one of 3 with 23996.
    ScriptedRandom random([](long long d) { return ((d == 0 ? 3.0 : 100.0) + 0.5) / 24000.0; });
    long long pumps = 0;
    vk::MixDiceTable(*table, random, [&] { ++pumps; });
    EXPECT_EQ(random.draws, 240000);
    EXPECT_EQ(pumps, 240000);
    EXPECT_EQ((*table)[3], before[23996]);
    EXPECT_EQ((*table)[23996], before[3]);
    EXPECT_EQ((*table)[100], before[23899]);
    EXPECT_EQ((*table)[23899], before[100]);
    int changed = 0;
    for (std::size_t i = 0; i < table->size(); ++i)
        changed += ((*table)[i] != before[i]) ? 1 : 0;
    EXPECT_EQ(changed, 4);
}

// First 3200 entries: `run` twos, then the cycle 3, 4, 5, 6, 1, 2; the rest
// of the table is 1, which the test must never look at.
std::unique_ptr<DiceTable> RunThenCycle(int run)
{
    auto table = std::make_unique<DiceTable>();
    table->fill(1);
    const std::int16_t cycle[6] = {3, 4, 5, 6, 1, 2};
    for (int i = 0; i < 3200; ++i)
        (*table)[static_cast<std::size_t>(i)] = (i < run) ? std::int16_t{2} : cycle[(i - run) % 6];
    return table;
}

TEST(DiceTable, RunOfFourOfAKindAddsTwoTriples)
{
    auto table = RunThenCycle(4);
    const auto check = vk::CheckDiceTable(*table);
    EXPECT_EQ(check.triple[2], 2);
    EXPECT_EQ(check.triple[1], 0);
    EXPECT_EQ(check.top, 2);
}

TEST(DiceTable, TwentyTriplesAreAcceptedTwentyOneAreNot)
{
    // 22 twos: triples 20; then 3178 = 529 cycles + 3, 4, 5, 6.
    auto table = RunThenCycle(22);
    auto check = vk::CheckDiceTable(*table);
    EXPECT_EQ(check.count[1], 529);
    EXPECT_EQ(check.count[2], 551);
    EXPECT_EQ(check.count[3], 530);
    EXPECT_EQ(check.count[6], 530);
    EXPECT_EQ(check.spread, 22);
    EXPECT_EQ(check.top, 20);
    EXPECT_TRUE(check.accepted);

    // 23 twos: triples 21; then 3177 = 529 cycles + 3, 4, 5.
    table = RunThenCycle(23);
    check = vk::CheckDiceTable(*table);
    EXPECT_EQ(check.count[2], 552);
    EXPECT_EQ(check.count[6], 529);
    EXPECT_EQ(check.spread, 23);
    EXPECT_EQ(check.top, 21);
    EXPECT_FALSE(check.accepted);
}

// 500 cycles of 1..6, 39 or 40 cycles of 1..5, and a filler up to 3200.
std::unique_ptr<DiceTable> Spread(int shortCycles, std::initializer_list<std::int16_t> filler)
{
    auto table = std::make_unique<DiceTable>();
    table->fill(6); // never looked at
    std::size_t i = 0;
    for (int c = 0; c < 500; ++c)
        for (std::int16_t v = 1; v <= 6; ++v)
            (*table)[i++] = v;
    for (int c = 0; c < shortCycles; ++c)
        for (std::int16_t v = 1; v <= 5; ++v)
            (*table)[i++] = v;
    for (std::int16_t v : filler)
        (*table)[i++] = v;
    EXPECT_EQ(i, 3200u);
    return table;
}

TEST(DiceTable, SpreadOf39IsAcceptedSpreadOf40IsNot)
{
    auto table = Spread(39, {6, 1, 2, 3, 4});
    auto check = vk::CheckDiceTable(*table);
    EXPECT_EQ(check.count[1], 540);
    EXPECT_EQ(check.count[5], 539);
    EXPECT_EQ(check.count[6], 501);
    EXPECT_EQ(check.spread, 39);
    EXPECT_EQ(check.top, 0);
    EXPECT_TRUE(check.accepted);

    table = Spread(40, {});
    check = vk::CheckDiceTable(*table);
    EXPECT_EQ(check.count[1], 540);
    EXPECT_EQ(check.count[6], 500);
    EXPECT_EQ(check.spread, 40);
    EXPECT_FALSE(check.accepted);
}

TEST(DiceTable, OnlyTheFirst3200EntriesAreTested)
{
    // Entries from 3200 on are one long run of ones and all the rest.
    auto table = RunThenCycle(0);
    for (std::size_t i = 3200; i < table->size(); ++i)
        (*table)[i] = 1;
    EXPECT_TRUE(vk::CheckDiceTable(*table).accepted);
}

TEST(DiceTable, PassCounterIsSigned16BitAndOverflowIsAFault)
{
    std::int16_t passes = 32766;
    vk::RaisePassCount(passes);
    EXPECT_EQ(passes, 32767);
    EXPECT_THROW(vk::RaisePassCount(passes), vk::RunTimeFault);
    EXPECT_EQ(passes, 32767);
}

TEST(DiceTable, ClockSeedRoundsTakesTheModulusAndAddsOne)
{
    EXPECT_EQ(vk::ClockSeed(30000.4, 24000), 6001);
    EXPECT_EQ(vk::ClockSeed(86399.6, 24000), 14401); // 86400 mod 24000 = 14400
    EXPECT_EQ(vk::ClockSeed(0.0, 24000), 1);
    EXPECT_EQ(vk::ClockSeed(23999.5, 24000), 1);     // half to even: 24000
    EXPECT_EQ(vk::ClockSeed(22.5, 24000), 23);       // half to even: 22
    EXPECT_EQ(vk::ClockSeed(86399.6, 32000), 22401); // the cards' modulus
}

DiceTable Numbered()
{
    DiceTable table{};
    for (int i = 0; i < 24000; ++i)
        table[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(i % 6 + 1);
    return table;
}

TEST(RollDie, IndexIsRoundedNotTruncated)
{
    const DiceTable table = Numbered();
    vk::RollDieState state;
    // 0.4 rounds to place 0 (value 1), 0.6 to place 1 (value 2), 5.7 to place 6 (value 1).
    ScriptedRandom random([](long long d) { return (d == 0 ? 0.4 : d == 1 ? 0.6 : 5.7) / 24000.0; });
    EXPECT_EQ(vk::RollDie(table, state, random, 100.0), 1);
    EXPECT_EQ(vk::RollDie(table, state, random, 100.0), 2);
    EXPECT_EQ(vk::RollDie(table, state, random, 100.0), 1);
}

TEST(RollDie, LastPlaceIsReachedBelowTheUpperHalf)
{
    const DiceTable table = Numbered();
    vk::RollDieState state;
    ScriptedRandom random([](long long) { return 0.99997; }); // 23999.28
    EXPECT_EQ(vk::RollDie(table, state, random, 100.0), 23999 % 6 + 1);
}

TEST(RollDie, IndexOf24000IsASubscriptFault)
{
    // Rnd at or above 23999.5 / 24000, one chance in 48000: the place 24000 is past the table.
    const DiceTable table = Numbered();
    vk::RollDieState state;
    ScriptedRandom random([](long long) { return 0.99998; }); // 23999.52
    EXPECT_THROW(vk::RollDie(table, state, random, 100.0), vk::RunTimeFault);
}

TEST(RollDie, SeedsItselfOnceAndReplacesTheSeedOfTheBuild)
{
    RecordingRandom random;
    auto table = EmptyTable();
    vk::BuildDiceTable(*table, random, 777, {});
    vk::RollDieState state;
    EXPECT_FALSE(state.seeded);
    const int first = vk::RollDie(*table, state, random, 30000.4);
    EXPECT_TRUE(state.seeded);
    EXPECT_EQ(state.seed, 6001);
    vk::RollDie(*table, state, random, 50000.0);
    vk::RollDie(*table, state, random, 70000.0);
    ASSERT_EQ(random.seeds.size(), 2u);
    EXPECT_EQ(random.seeds[0], 777);
    EXPECT_EQ(random.seeds[1], 6001);
    EXPECT_EQ(state.seed, 6001);

    // The first roll is the first draw of a generator seeded with 6001.
    vk::SplitMixRandom fresh(6001);
    const auto place = static_cast<std::size_t>(std::nearbyint(fresh.Next() * 24000.0));
    EXPECT_EQ(first, (*table)[place]);
}

TEST(RollDie, ValuesLieBetweenOneAndSixAndTheFaultIsRare)
{
    vk::SplitMixRandom random;
    auto table = EmptyTable();
    vk::BuildDiceTable(*table, random, 31, {});
    vk::RollDieState state;
    int faults = 0;
    std::array<int, 7> seen{};
    for (int n = 0; n < 96000; ++n) {
        try {
            const int value = vk::RollDie(*table, state, random, 1234.0);
            ASSERT_GE(value, 1);
            ASSERT_LE(value, 6);
            ++seen[static_cast<std::size_t>(value)];
        } catch (const vk::RunTimeFault&) {
            ++faults; // the place 24000: about 2 in 96000 rolls
        }
    }
    EXPECT_LE(faults, 10);
    for (int v = 1; v <= 6; ++v)
        EXPECT_GT(seen[static_cast<std::size_t>(v)], 15000);
}

} // namespace
