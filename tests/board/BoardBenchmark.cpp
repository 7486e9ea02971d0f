// Times of the movement rules: one judgement, one move carried out, and judging every
// destination of every vehicle of one army for one roll.

#include "board/Movement.h"
#include "BoardFixtures.h"

#include <benchmark/benchmark.h>

#include <random>

namespace {

using namespace vk;

BoardState Position()
{
    std::mt19937 random(42);
    return testing::RandomPosition(random, 200);
}

void BM_IsLegalMove(benchmark::State& run)
{
    BoardState state = testing::NewGame();
    testing::PutVehicle(state, 1, 0, 73, kNorth);
    for (auto _ : run)
        benchmark::DoNotOptimize(IsLegalMove(state, 1, 0, 73, 87, 8, true));
}
BENCHMARK(BM_IsLegalMove);

void BM_IsLegalMoveFailingSearch(benchmark::State& run)
{
    BoardState state = testing::NewGame();
    testing::PutVehicle(state, 1, 0, 1, kEast);
    for (auto _ : run)
        benchmark::DoNotOptimize(IsLegalMove(state, 1, 0, 1, 60, 12, true));
}
BENCHMARK(BM_IsLegalMoveFailingSearch);

// Two moves per iteration, there and back, so that no copy of the state is timed.
void BM_ExecuteMove(benchmark::State& run)
{
    BoardState state = testing::NewGame();
    testing::PutVehicle(state, 1, 0, 20, kEast);
    IsLegalMove(state, 1, 0, 20, 24, 4, true);
    const MoveVerdict there = state.Verdict;
    testing::PutVehicle(state, 1, 0, 24, kEast);
    IsLegalMove(state, 1, 0, 24, 20, 4, true);
    const MoveVerdict back = state.Verdict;
    testing::PutVehicle(state, 1, 0, 20, kEast);
    for (auto _ : run) {
        state.Verdict = there;
        ExecuteMove(state, 1, 0, 20, 24, false);
        state.Verdict = back;
        ExecuteMove(state, 1, 0, 24, 20, false);
        benchmark::DoNotOptimize(state.cells);
    }
    run.SetItemsProcessed(run.iterations() * 2);
}
BENCHMARK(BM_ExecuteMove);

void BM_CopyState(benchmark::State& run)
{
    const BoardState start = testing::NewGame();
    for (auto _ : run) {
        BoardState state = start;
        benchmark::DoNotOptimize(state.cells);
    }
}
BENCHMARK(BM_CopyState);

// Every destination 1..118 of every vehicle of army 1 for one roll: both dice and their sum.
void BM_JudgeOneArmyForOneRoll(benchmark::State& run)
{
    BoardState state = Position();
    const int dice1 = 3;
    const int dice2 = 5;
    for (auto _ : run) {
        int legal = 0;
        for (int slot = 0; slot < kVehicleSlots; ++slot) {
            const int from = state.VehiclePos(1, slot);
            if (from == kOutOfGame)
                continue;
            for (int steps : {dice1, dice2, dice1 + dice2})
                for (int to = 1; to <= kLastField; ++to)
                    legal += IsLegalMove(state, 1, slot, from, to, steps, true) ? 1 : 0;
        }
        benchmark::DoNotOptimize(legal);
    }
}
BENCHMARK(BM_JudgeOneArmyForOneRoll);

} // namespace

BENCHMARK_MAIN();
