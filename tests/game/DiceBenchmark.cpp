#include "game/DiceTable.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

// The whole start-up build with an empty pump, seed by seed, and the
// passes it needed.
void BM_BuildDiceTable(benchmark::State& state)
{
    auto table = std::make_unique<vk::DiceTable>();
    std::int32_t seed = 1;
    long long passes = 0;
    long long builds = 0;
    for (auto _ : state) {
        vk::SplitMixRandom random;
        passes += vk::BuildDiceTable(*table, random, seed++, [] {});
        ++builds;
        benchmark::DoNotOptimize(table->data());
    }
    state.counters["passes_per_build"] = static_cast<double>(passes) / static_cast<double>(builds);
}
BENCHMARK(BM_BuildDiceTable)->Unit(benchmark::kMillisecond);

// One mixing pass of 240000 exchanges.
void BM_MixDiceTable(benchmark::State& state)
{
    auto table = std::make_unique<vk::DiceTable>();
    vk::SplitMixRandom random;
    vk::BuildDiceTable(*table, random, 7, {});
    for (auto _ : state) {
        vk::MixDiceTable(*table, random, [] {});
        benchmark::DoNotOptimize(table->data());
    }
}
BENCHMARK(BM_MixDiceTable)->Unit(benchmark::kMillisecond);

// The same pass without an event pump.
void BM_MixDiceTableNoPump(benchmark::State& state)
{
    auto table = std::make_unique<vk::DiceTable>();
    vk::SplitMixRandom random;
    vk::BuildDiceTable(*table, random, 7, {});
    for (auto _ : state) {
        vk::MixDiceTable(*table, random, {});
        benchmark::DoNotOptimize(table->data());
    }
}
BENCHMARK(BM_MixDiceTableNoPump)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
