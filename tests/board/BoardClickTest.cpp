// The command-line judge's click (ApplyBoardClick) goes through the one apply
// path now; it must do what the judge's own click did before: the camp to the
// HQ without the move judge, a legal shot also without fuel, a legal move
// unless the fuel is blocked, a flag whenever offered, a mine when asked for
// and the question would be put.

#include "board/Picking.h"

#include "BoardFixtures.h"
#include "board/MinesAndFlags.h"
#include "board/Movement.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace vk {
namespace {

using testing::NewGame;
using testing::PutVehicle;
using testing::RandomPosition;

// The judge's click as it was written before the apply path was shared.
BoardClickOutcome JudgeClickBefore(BoardState& state, int side, int slot, int from, int to, int steps, bool mayShoot,
                                   bool leaveMine)
{
    BoardClickOutcome outcome;
    const bool legal = IsLegalMove(state, side, slot, from, to, steps, mayShoot);
    const bool fuelBlocked = state.Brandstof(side) > 0;
    if (from == CampField(side) && to == HQField(side)) {
        if (!fuelBlocked && SendCampVehicleToHQ(state, side, slot)) {
            outcome.What = BoardClickOutcome::Kind::SentToHQ;
            outcome.ActCode = 1;
        }
        return outcome;
    }
    if (!legal)
        return outcome;
    if (state.Verdict.ShootAllowed) {
        const int target = state.Verdict.ShootTarget;
        ResolveShot(state, side, (target > 0 ? target : -target) - 1);
        outcome.What = BoardClickOutcome::Kind::Shot;
        outcome.ActCode = 2;
        return outcome;
    }
    if (fuelBlocked)
        return outcome;
    outcome.ActCode = state.Verdict.MinePickup ? 4 : 1;
    if (state.Verdict.FlagLoad)
        outcome.ActCode = 5;
    const bool layMine = leaveMine && MineLayingOffered(state, side, slot, from);
    if (layMine)
        outcome.ActCode = 3;
    ExecuteMove(state, side, slot, from, to, layMine);
    outcome.What = BoardClickOutcome::Kind::Moved;
    return outcome;
}

struct Click {
    int side, slot, from, to, steps;
    bool mayShoot, leaveMine;
};

int Roll(std::mt19937& random, int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

// A click of a random vehicle: mostly on a field the judge accepts, now and then anywhere.
Click RandomClick(const BoardState& state, std::mt19937& random)
{
    Click click{Roll(random, 1, 2), Roll(random, 0, 10), 0, 0, Roll(random, 1, 12), Roll(random, 0, 3) != 0,
                Roll(random, 0, 1) == 1};
    click.from = state.VehiclePos(click.side, click.slot);
    click.to = Roll(random, 1, kLastField);
    if (click.from == CampField(click.side) && Roll(random, 0, 1) == 1)
        click.to = HQField(click.side);
    std::vector<int> legal;
    if (click.from != kOutOfGame)
        for (int to = 1; to <= kLastField; ++to)
            if (JudgeMove(state, click.side, click.slot, click.from, to, click.steps, click.mayShoot).Legal)
                legal.push_back(to);
    if (!legal.empty() && Roll(random, 0, 3) != 0)
        click.to = legal[static_cast<std::size_t>(Roll(random, 0, static_cast<int>(legal.size()) - 1))];
    return click;
}

TEST(ApplyBoardClick, DoesWhatTheJudgesClickDidBefore)
{
    int compared = 0;
    int moved = 0;
    int shots = 0;
    for (unsigned seed = 1; seed <= 12; ++seed) {
        std::mt19937 random(seed);
        BoardState state = RandomPosition(random, 40 + static_cast<int>(seed) * 5);
        for (int n = 0; n < 150; ++n) {
            state.Brandstof(1) = Roll(random, 0, 5) == 0 ? 1 : 0;
            state.Brandstof(2) = Roll(random, 0, 5) == 0 ? 1 : 0;
            const Click c = RandomClick(state, random);
            if (c.from == kOutOfGame)
                continue;
            BoardState before = state;
            const BoardClickOutcome expected =
                JudgeClickBefore(before, c.side, c.slot, c.from, c.to, c.steps, c.mayShoot, c.leaveMine);
            const BoardClickOutcome outcome =
                ApplyBoardClick(state, c.side, c.slot, c.from, c.to, c.steps, c.mayShoot, c.leaveMine);
            ASSERT_EQ(outcome.What, expected.What) << "seed " << seed << " click " << n;
            ASSERT_EQ(outcome.ActCode, expected.ActCode) << "seed " << seed << " click " << n;
            ASSERT_EQ(state, before) << "seed " << seed << " click " << n << ": " << c.side << " " << c.slot << " "
                                     << c.from << " " << c.to << " " << c.steps;
            ++compared;
            moved += outcome.What == BoardClickOutcome::Kind::Moved ? 1 : 0;
            shots += outcome.What == BoardClickOutcome::Kind::Shot ? 1 : 0;
        }
    }
    EXPECT_GT(compared, 1500);
    EXPECT_GT(moved, 300);
    EXPECT_GT(shots, 5);
}

TEST(ApplyBoardClick, CampVehicleToItsHQWithoutTheJudge)
{
    BoardState state = NewGame();
    const BoardClickOutcome outcome = ApplyBoardClick(state, 2, 4, 116, 117, 1, true, false);
    EXPECT_EQ(outcome.What, BoardClickOutcome::Kind::SentToHQ);
    EXPECT_EQ(outcome.ActCode, 1);
    EXPECT_EQ(state.VehiclePos(2, 4), 117);
    // No loading heading: the tag stays as it stood in the camp.
    EXPECT_EQ(state.VehicleTag(2, 4), "infanterie_2_0_0_o");

    state.Brandstof(2) = 1;
    EXPECT_EQ(ApplyBoardClick(state, 2, 5, 116, 117, 1, true, false).What, BoardClickOutcome::Kind::Nothing);
    EXPECT_EQ(state.VehiclePos(2, 5), 116);
}

TEST(ApplyBoardClick, FlagIsLoadedWheneverOffered)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 3, 70, kWest);
    testing::LoadCompanies(state, 1, 3, 1);
    const BoardClickOutcome outcome = ApplyBoardClick(state, 1, 3, 70, 69, 1, true, false);
    EXPECT_EQ(outcome.What, BoardClickOutcome::Kind::Moved);
    EXPECT_EQ(outcome.ActCode, 5);
    EXPECT_EQ(state.FlagCarried(1), 1);
}

} // namespace
} // namespace vk
