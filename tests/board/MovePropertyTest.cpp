#include "board/Movement.h"
#include "board/BoardView.h"
#include "BoardFixtures.h"

#include <gtest/gtest.h>

#include <random>

namespace vk {
namespace {

using testing::PickRandomMove;
using testing::RandomMove;
using testing::SameGame;

// The replay of the opponent's copy: it knows the action code and the heading of the
// record, not the rest of the verdict; it sees the board in the other view.
void Replay(BoardState& copy, const RandomMove& move, const MoveVerdict& sent)
{
    copy.Verdict = MoveVerdict{};
    copy.Verdict.Heading = sent.Heading;
    copy.Verdict.MinePickup = sent.MinePickup;
    copy.Verdict.FlagLoad = sent.FlagLoad;
    ExecuteMove(copy, move.Side, move.Slot, move.From, move.To, move.LeaveMine);
}

TEST(MoveProperties, AMoveAndItsReplayGiveEqualStates)
{
    std::mt19937 random(20261121);
    int moves = 0;
    for (int game = 0; game < 40; ++game) {
        BoardState local = testing::NewGame();
        BoardState remote = local;
        remote.LocalSide = 2;
        ToggleBoardSide(remote);
        BoardState sameView = local;
        for (int attempt = 0; attempt < 400; ++attempt) {
            RandomMove move;
            const bool picked = PickRandomMove(local, random, move);
            // The preparations of the pick (loading, HQ) are replayed by their own records;
            // here the copies simply take them over.
            for (BoardState* copy : {&remote, &sameView}) {
                copy->cells = local.cells;
                copy->hqCount = local.hqCount;
                copy->vehiclePos = local.vehiclePos;
                copy->vehicleDir = local.vehicleDir;
                copy->vehicleCompanies = local.vehicleCompanies;
                copy->vehicleTag = local.vehicleTag;
                copy->campCompanies = local.campCompanies;
                copy->prisonCompanies = local.prisonCompanies;
                copy->minePos = local.minePos;
            }
            if (!picked)
                continue;
            DrawBoardSide(remote, 2);
            DrawBoardSide(sameView, 1);
            DrawBoardSide(local, 1);
            ASSERT_TRUE(IsLegalMove(local, move.Side, move.Slot, move.From, move.To, move.Steps, true));
            if (!move.TakeFlag)
                local.Verdict.FlagLoad = false;
            const MoveVerdict sent = local.Verdict;
            ExecuteMove(local, move.Side, move.Slot, move.From, move.To, move.LeaveMine);
            Replay(remote, move, sent);
            Replay(sameView, move, sent);
            ++moves;
            ASSERT_TRUE(SameGame(local, remote)) << "game " << game << " attempt " << attempt;
            // In the same view the pictures agree as well.
            ASSERT_EQ(local.vehiclePicture, sameView.vehiclePicture);
            ASSERT_EQ(local.minePicture, sameView.minePicture);
            ASSERT_EQ(local.capturedMinePicture, sameView.capturedMinePicture);
            ASSERT_EQ(local.hqPlaceFree, remote.hqPlaceFree);
        }
    }
    EXPECT_GT(moves, 2000);
}

TEST(MoveProperties, CompanySumOf25HoldsAfterEveryMove)
{
    std::mt19937 random(5);
    for (int game = 0; game < 40; ++game) {
        BoardState state = testing::NewGame();
        for (int attempt = 0; attempt < 400; ++attempt) {
            RandomMove move;
            if (!PickRandomMove(state, random, move))
                continue;
            ASSERT_TRUE(IsLegalMove(state, move.Side, move.Slot, move.From, move.To, move.Steps, true));
            ExecuteMove(state, move.Side, move.Slot, move.From, move.To, move.LeaveMine);
            ASSERT_EQ(state.CompanySum(1), 25);
            ASSERT_EQ(state.CompanySum(2), 25);
        }
    }
}

TEST(MoveProperties, BoardCellsAgreeWithThePositionsAfterEveryMove)
{
    std::mt19937 random(99);
    for (int game = 0; game < 30; ++game) {
        BoardState state = testing::NewGame();
        for (int attempt = 0; attempt < 300; ++attempt) {
            RandomMove move;
            if (!PickRandomMove(state, random, move))
                continue;
            ASSERT_TRUE(IsLegalMove(state, move.Side, move.Slot, move.From, move.To, move.Steps, true));
            ExecuteMove(state, move.Side, move.Slot, move.From, move.To, move.LeaveMine);
            BoardState rebuilt = state;
            RebuildBoardCells(rebuilt);
            ASSERT_EQ(rebuilt.cells, state.cells);
            ASSERT_EQ(rebuilt.hqCount, state.hqCount);
            for (int side = 1; side <= 2; ++side) {
                ASSERT_EQ(state.FlagReserve(side) + state.FlagCarried(side) + state.FlagHome(side), 5);
                int freePlaces = 0;
                for (int place = 0; place < 3; ++place)
                    freePlaces += state.HQPlaceFree(side, place) ? 1 : 0;
                ASSERT_EQ(freePlaces, 3 - state.HQCount(side));
            }
        }
    }
}

// Judging never changes the game: only the verdict.
TEST(MoveProperties, JudgingHasNoSideEffects)
{
    std::mt19937 random(3);
    const BoardState position = testing::RandomPosition(random, 150);
    BoardState state = position;
    for (int side = 1; side <= 2; ++side)
        for (int slot = 0; slot < 11; ++slot)
            for (int to = 0; to <= 119; ++to)
                for (int steps = 1; steps <= 12; ++steps) {
                    const int from = state.VehiclePos(side, slot);
                    if (from == 0)
                        continue;
                    IsLegalMove(state, side, slot, from, to, steps, steps % 2 == 0);
                }
    state.Verdict = position.Verdict;
    EXPECT_EQ(state, position);
}

} // namespace
} // namespace vk
