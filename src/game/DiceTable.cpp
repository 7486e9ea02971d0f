#include "game/DiceTable.h"

#include "shell/RunTimeFault.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace vk {

namespace {

void Pump(const EventPump& pump)
{
    if (pump)
        pump();
}

// Int(Rnd x 24000): truncated, so always 0..23999.
int TruncatedPlace(RandomSource& random)
{
    return static_cast<int>(random.Next() * DiceTableSize); // a cast of a value >= 0 truncates
}

} // namespace

void PlaceDiceValues(DiceTable& table, RandomSource& random, const EventPump& pump)
{
    for (std::int16_t v = 1; v <= 5; ++v) {
        for (int n = 0; n < 4000; ++n) {
            Pump(pump);
            int p = TruncatedPlace(random);
            while (table[static_cast<std::size_t>(CheckIndex(p, 0, DiceTableSize - 1, "DiceTable"))] != 0)
                p = TruncatedPlace(random);
            table[static_cast<std::size_t>(p)] = v;
        }
    }
    for (auto& entry : table)
        if (entry == 0)
            entry = 6;
}

void MixDiceTable(DiceTable& table, RandomSource& random, const EventPump& pump)
{
    for (int n = 0; n < 10 * DiceTableSize; ++n) {
        Pump(pump);
        const int a = CheckIndex(TruncatedPlace(random), 0, DiceTableSize - 1, "DiceTable");
        const int b = DiceTableSize - 1 - a;
        std::swap(table[static_cast<std::size_t>(a)], table[static_cast<std::size_t>(b)]);
    }
}

DiceTableCheck CheckDiceTable(const DiceTable& table)
{
    DiceTableCheck check;
    int run[7] = {};
    for (int i = 0; i < DiceTableTested; ++i) {
        const int v = CheckIndex(table[static_cast<std::size_t>(i)], 0, 6, "count");
        ++check.count[v];
        for (int w = 1; w <= 6; ++w)
            run[w] = (w == v) ? run[w] + 1 : 0;
        if (run[v] > 2)
            ++check.triple[v];
    }
    for (int i = 1; i <= 6; ++i) {
        for (int j = 1; j <= 6; ++j)
            check.spread = std::max(check.spread, std::abs(check.count[i] - check.count[j]));
        check.top = std::max(check.top, check.triple[i]);
    }
    check.accepted = check.spread < 40 && check.top < 21;
    return check;
}

void RaisePassCount(std::int16_t& passes)
{
    if (passes == 32767)
        throw RunTimeFault("overflow: dice table pass counter");
    ++passes;
}

std::int16_t BuildDiceTable(DiceTable& table, RandomSource& random, std::int32_t clockSeed, const EventPump& pump)
{
    random.Seed(clockSeed);
    table.fill(0);
    PlaceDiceValues(table, random, pump);
    std::int16_t passes = 0;
    do {
        RaisePassCount(passes);
        MixDiceTable(table, random, pump);
    } while (!CheckDiceTable(table).accepted);
    return passes;
}

std::int32_t ClockSeed(double secondsSinceMidnight, std::int32_t modulus)
{
    const auto whole = static_cast<std::int64_t>(std::nearbyint(secondsSinceMidnight));
    return static_cast<std::int32_t>(whole % modulus) + 1;
}

int RollDie(const DiceTable& table, RollDieState& state, RandomSource& random, double secondsSinceMidnight)
{
    if (!state.seeded) {
        state.seed = ClockSeed(secondsSinceMidnight, DiceTableSize);
        random.Seed(state.seed);
        state.seeded = true;
    }
    const int index = static_cast<int>(std::nearbyint(random.Next() * DiceTableSize));
    return table[static_cast<std::size_t>(CheckIndex(index, 0, DiceTableSize - 1, "DiceTable"))];
}

} // namespace vk
