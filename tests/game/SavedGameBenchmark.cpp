// The time to save a game to disk and to load it again. Prints figures; not
// a test.

#include "game/SavedGame.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <unistd.h>

namespace {

std::filesystem::path Scratch()
{
    const auto folder = std::filesystem::temp_directory_path() / ("vk_bench_save_" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    return folder;
}

void SaveAGame(benchmark::State& run)
{
    const auto folder = Scratch();
    vk::BoardState state;
    vk::ResetNewGame(state);
    vk::GameProgress progress;
    progress.TurnNumber = 12;
    for (auto _ : run)
        benchmark::DoNotOptimize(vk::SaveGame(folder / "bert.vkh", state, progress));
    std::filesystem::remove_all(folder);
}
BENCHMARK(SaveAGame)->Unit(benchmark::kMillisecond);

void LoadAGame(benchmark::State& run)
{
    const auto folder = Scratch();
    vk::BoardState state;
    vk::ResetNewGame(state);
    vk::GameProgress progress;
    progress.TurnNumber = 12;
    const auto path = folder / "bert.vkh";
    vk::SaveGame(path, state, progress);
    for (auto _ : run) {
        vk::BoardState loaded;
        vk::GameProgress read;
        vk::ReadSavedGame(path, loaded, read);
        benchmark::DoNotOptimize(loaded);
    }
    std::filesystem::remove_all(folder);
}
BENCHMARK(LoadAGame)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
