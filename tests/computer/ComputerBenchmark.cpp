// Figures of the computer player, printed, never asserted:
//  - the time the greedy player takes to decide a turn (ChooseDie and
//    ChooseAction together), over every turn it plays in the games below;
//  - greedy against random: whole games played with the rules library
//    alone, half of them with the greedy player as army 1 (which moves
//    first), half as army 2;
//  - greedy against greedy, a fifth as many games: how long a game between
//    two players that both play to win lasts;
//  - the greedy player's decision time over positions of random play (the
//    board tests' RandomPosition, both armies spread over the board), as
//    many as the games.
// Usage: bench_computer [games] [turn limit]

#include "BoardFixtures.h"
#include "ComputerGames.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <string>

namespace {

using namespace vk;

double Percentile(std::vector<double> values, double fraction)
{
    if (values.empty())
        return 0.0;
    std::sort(values.begin(), values.end());
    const auto at = static_cast<std::size_t>(fraction * static_cast<double>(values.size() - 1) + 0.5);
    return values[std::min(at, values.size() - 1)];
}

int Argument(int argc, char** argv, int index, int fallback)
{
    if (argc <= index)
        return fallback;
    const int value = std::atoi(argv[index]);
    return value > 0 ? value : fallback;
}

} // namespace

int main(int argc, char** argv)
{
    const int games = Argument(argc, argv, 1, 100);
    const int turnLimit = Argument(argc, argv, 2, 400);

    std::printf("greedy against random: %d games of at most %d turns, rules library alone\n", games, turnLimit);
    std::printf("(two dice per turn from a seeded generator; no cards are dealt or played, and the fuel and\n"
                " tse-tse countdowns are left out, as nothing without cards sets them)\n\n");

    int won = 0;
    int lost = 0;
    int undecided = 0;
    int refused = 0;
    int wonAsFirst = 0;
    int wonAsSecond = 0;
    int byFlags = 0;
    int byReserve = 0;
    long turnsTotal = 0;
    long turnsOfWins = 0;
    std::vector<double> turnMs;
    std::vector<double> callMs;
    std::vector<double> turnCpuMs;
    std::vector<double> callCpuMs;
    for (int game = 0; game < games; ++game) {
        const auto seed = static_cast<std::uint32_t>(1000 + game);
        const int greedySide = game % 2 == 0 ? 1 : 2;
        ComputerChoice greedy(ComputerLevel::Greedy, seed);
        ComputerChoice random(ComputerLevel::Random, seed + 7919);
        std::mt19937 dice(seed * 31 + 5);
        const testing::GameResult result = greedySide == 1
                                               ? testing::PlayGame(greedy, random, dice, turnLimit, 1)
                                               : testing::PlayGame(random, greedy, dice, turnLimit, 2);
        turnMs.insert(turnMs.end(), result.TurnMs.begin(), result.TurnMs.end());
        callMs.insert(callMs.end(), result.CallMs.begin(), result.CallMs.end());
        turnCpuMs.insert(turnCpuMs.end(), result.TurnCpuMs.begin(), result.TurnCpuMs.end());
        callCpuMs.insert(callCpuMs.end(), result.CallCpuMs.begin(), result.CallCpuMs.end());
        turnsTotal += result.Turns;
        const auto g = static_cast<std::size_t>(greedySide - 1);
        if (result.Refused) {
            ++refused;
        } else if (result.Winner == greedySide) {
            ++won;
            turnsOfWins += result.Turns;
            (greedySide == 1 ? wonAsFirst : wonAsSecond) += 1;
            (result.FlagsHome[g] == kFlagsPerArmy ? byFlags : byReserve) += 1;
        } else if (result.Winner != 0) {
            ++lost;
        } else {
            ++undecided;
        }
        std::printf("game %3d: greedy army %d, %-9s after %3d turns; flags home %d-%d, reserve %d-%d, prison %d-%d, "
                    "destroyed %d-%d\n",
                    game + 1, greedySide,
                    result.Refused ? "REFUSED"
                    : result.Winner == greedySide ? "won"
                    : result.Winner != 0         ? "lost"
                                                 : "undecided",
                    result.Turns, result.FlagsHome[0], result.FlagsHome[1], result.Reserve[0], result.Reserve[1],
                    result.Prison[0], result.Prison[1], result.Destroyed[0], result.Destroyed[1]);
        std::fflush(stdout);
    }

    std::printf("\ngames won out of %d: %d (as army 1: %d, as army 2: %d; by flags %d, by the enemy reserve %d)\n",
                games, won, wonAsFirst, wonAsSecond, byFlags, byReserve);
    std::printf("lost: %d, undecided at the turn limit: %d, stopped by a refused action: %d\n", lost, undecided,
                refused);
    std::printf("turns per game: mean %.1f; of the games won: mean %.1f\n",
                games > 0 ? static_cast<double>(turnsTotal) / games : 0.0,
                won > 0 ? static_cast<double>(turnsOfWins) / won : 0.0);
    const auto times = [](const char* what, const std::vector<double>& ms) {
        std::printf("  %-34s median %6.2f ms, 90%% %6.2f ms, 99%% %6.2f ms, worst %6.2f ms\n", what,
                    Percentile(ms, 0.5), Percentile(ms, 0.9), Percentile(ms, 0.99), Percentile(ms, 1.0));
    };
    std::printf("\ngreedy decision time, %zu turns (the clock includes time other programs took the processor):\n",
                turnMs.size());
    times("per turn, ChooseDie + ChooseAction", turnMs);
    times("  the same, processor time", turnCpuMs);
    times("longest single call of a turn", callMs);
    times("  the same, processor time", callCpuMs);

    const int mirrorGames = std::max(1, games / 5);
    int firstWon = 0;
    int secondWon = 0;
    int mirrorUndecided = 0;
    int mirrorRefused = 0;
    long mirrorTurns = 0;
    std::vector<double> mirrorMs;
    for (int game = 0; game < mirrorGames; ++game) {
        const auto seed = static_cast<std::uint32_t>(5000 + game);
        ComputerChoice army1(ComputerLevel::Greedy, seed);
        ComputerChoice army2(ComputerLevel::Greedy, seed + 7919);
        std::mt19937 dice(seed * 31 + 5);
        const testing::GameResult result = testing::PlayGame(army1, army2, dice, turnLimit, 1);
        mirrorMs.insert(mirrorMs.end(), result.TurnMs.begin(), result.TurnMs.end());
        mirrorTurns += result.Turns;
        if (result.Refused)
            ++mirrorRefused;
        else if (result.Winner == 1)
            ++firstWon;
        else if (result.Winner == 2)
            ++secondWon;
        else
            ++mirrorUndecided;
        std::printf("greedy game %3d: %-9s after %3d turns; flags home %d-%d, reserve %d-%d, prison %d-%d, "
                    "destroyed %d-%d\n",
                    game + 1,
                    result.Refused ? "REFUSED"
                    : result.Winner == 1 ? "army 1"
                    : result.Winner == 2 ? "army 2"
                                         : "undecided",
                    result.Turns, result.FlagsHome[0], result.FlagsHome[1], result.Reserve[0], result.Reserve[1],
                    result.Prison[0], result.Prison[1], result.Destroyed[0], result.Destroyed[1]);
        std::fflush(stdout);
    }
    std::printf("\ngreedy against greedy, %d games: army 1 won %d, army 2 won %d, undecided %d, refused %d; "
                "turns per game: mean %.1f\n",
                mirrorGames, firstWon, secondWon, mirrorUndecided, mirrorRefused,
                static_cast<double>(mirrorTurns) / mirrorGames);
    times("decision time per turn there", mirrorMs);

    // A whole turn on each position, on a copy: the die, the actions, the
    // dice between them.
    std::mt19937 positions(99);
    std::uniform_int_distribution<int> die(1, 6);
    std::vector<double> spreadMs;
    std::vector<double> spreadCpuMs;
    for (int i = 0; i < games; ++i) {
        BoardState state = testing::RandomPosition(positions, 20 + (i * 7) % 300);
        const int side = i % 2 + 1;
        ComputerChoice greedy(ComputerLevel::Greedy, static_cast<std::uint32_t>(i));
        testing::DecisionTimes spent;
        testing::PlayTurn(state, greedy, side, die(positions), die(positions), &spent);
        spreadMs.push_back(std::chrono::duration<double, std::milli>(spent.Turn).count());
        spreadCpuMs.push_back(std::chrono::duration<double, std::milli>(spent.TurnCpu).count());
    }
    std::printf("\ngreedy decision time on %d positions of random play:\n", games);
    times("per turn, ChooseDie + ChooseAction", spreadMs);
    times("  the same, processor time", spreadCpuMs);
    return 0;
}
