// Shots over many random positions: the bookkeeping of companies, flags and
// mines stays whole, and both copies of a game make the same changes.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "CombatFixtures.h"
#include "board/MinesAndFlags.h"
#include "board/Movement.h"
#include "board/Shooting.h"

namespace vk {
namespace {

using test::CellOf;
using test::StartPosition;

int Draw(std::mt19937& random, int low, int high)
{
    return std::uniform_int_distribution<int>(low, high)(random);
}

int TakeFreeRoadSquare(BoardState& state, std::mt19937& random)
{
    for (;;) {
        const int field = Draw(random, 1, 112);
        if (state.BoardCell(field) == 0)
            return field;
    }
}

// A random position that keeps every army's 25 companies and 5 flags: vehicles
// on the road (some empty, some at -1 after a hit on an empty vehicle), in the
// camp, on the HQ, destroyed; flags carried; mines stored, laid, loaded and
// carried by either genie.
BoardState RandomPosition(std::mt19937& random, int localSide)
{
    BoardState state = StartPosition(localSide);
    state.BoardSide = localSide;
    for (int side = 1; side <= 2; ++side) {
        int aboard = 0;
        for (int slot = 0; slot < kVehicleSlots; ++slot) {
            const int where = Draw(random, 0, 9);
            if (where >= 4) {  // on a road square
                const int field = TakeFreeRoadSquare(state, random);
                int companies = Draw(random, 0, VehicleCapacity(slot));
                if (Draw(random, 0, 9) == 0)
                    companies = -1;
                int mark = 0;
                if (companies >= 1 && IsInfantrySlot(slot) && state.FlagReserve(side) > 0 && Draw(random, 0, 1)) {
                    mark = 1;
                    state.FlagReserve(side) -= 1;
                    state.FlagCarried(side) += 1;
                }
                if (companies >= 1 && IsCommandoSlot(slot) && Draw(random, 0, 1)) {
                    const int mine = FirstStoredMine(state, side);
                    if (mine >= 0) {
                        state.MinePos(side, mine) = -slot;
                        mark = 1;
                    }
                }
                if (companies >= 1 && IsGenieSlot(slot) && Draw(random, 0, 2) > 0) {
                    const int owner = Draw(random, 0, 1) ? side : OtherSide(side);
                    const int mine = FirstStoredMine(state, owner);
                    if (mine >= 0) {
                        state.MinePos(owner, mine) = owner == side ? -slot : 5 - slot;
                        mark = owner == side ? 1 : 2;
                    }
                }
                const int heading = Draw(random, 0, 3);
                state.VehiclePos(side, slot) = field;
                state.VehicleDir(side, slot) = heading;
                state.VehicleCompanies(side, slot) = companies;
                state.VehicleTag(side, slot) = MakeVehicleTag(slot, side, companies, mark, heading);
                state.BoardCell(field) = CellOf(side, slot);
                aboard += companies;
            } else if (where == 0 && slot != kJeepSlot) {  // destroyed earlier
                state.VehiclePos(side, slot) = 0;
                state.VehicleTag(side, slot) = DestroyedTag(side, slot);
            }
        }
        // Some mines of this army laid on the road.
        for (int mine = 0; mine < kMinesPerArmy; ++mine) {
            if (state.MinePos(side, mine) == CampField(side) && Draw(random, 0, 2) == 0) {
                const int field = TakeFreeRoadSquare(state, random);
                state.MinePos(side, mine) = field;
                state.BoardCell(field) = side == 1 ? kMineCell : -kMineCell;
            }
        }
        const int rest = kCompaniesPerArmy - aboard;
        const int prison = Draw(random, 0, rest / 2);
        const int reserve = Draw(random, 0, rest - prison);
        state.PrisonCompanies(side) = prison;
        state.ReserveCompanies(side) = reserve;
        state.CampCompanies(side) = rest - prison - reserve;
    }
    return state;
}

// Men really there: a vehicle below zero holds nobody, so its army counts more
// than 25 by as many as it is below zero.
int MenPresent(const BoardState& state, int side)
{
    int men = state.ReserveCompanies(side) + state.CampCompanies(side) + state.PrisonCompanies(side);
    for (int slot = 0; slot < kVehicleSlots; ++slot)
        men += std::max(0, state.VehicleCompanies(side, slot));
    return men;
}

int BelowZero(const BoardState& state, int side)
{
    int deficit = 0;
    for (int slot = 0; slot < kVehicleSlots; ++slot)
        deficit += std::max(0, -state.VehicleCompanies(side, slot));
    return deficit;
}

// Every mine is in exactly one of the places of its coding, and a laid mine
// has its cell.
void ExpectMinesWhole(const BoardState& state)
{
    for (int side = 1; side <= 2; ++side) {
        for (int mine = 0; mine < kMinesPerArmy; ++mine) {
            const int pos = state.MinePos(side, mine);
            if (pos >= 1 && pos <= 112) {
                EXPECT_EQ(state.BoardCell(pos), side == 1 ? kMineCell : -kMineCell);
            } else if (pos < 0) {
                // Loaded in an own commando or genie, or carried by an enemy genie.
                const bool own = pos >= -9 && pos <= -6;
                const bool enemy = pos == -3 || pos == -4;
                ASSERT_TRUE(own || enemy) << pos;
                const int carrierSide = own ? side : OtherSide(side);
                const int carrier = own ? -pos : 5 - pos;
                EXPECT_NE(state.VehiclePos(carrierSide, carrier), 0);
                EXPECT_EQ(TagMarkValue(state.VehicleTag(carrierSide, carrier), carrier), own ? 1 : 2);
            } else {
                EXPECT_TRUE(pos == 113 || pos == 116) << pos;
            }
        }
    }
}

// The rules' part of two copies: what both copies must agree on, whatever view
// each of them draws.
void ExpectSameGame(const BoardState& a, const BoardState& b)
{
    EXPECT_EQ(a.cells, b.cells);
    EXPECT_EQ(a.vehiclePos, b.vehiclePos);
    EXPECT_EQ(a.vehicleDir, b.vehicleDir);
    EXPECT_EQ(a.vehicleCompanies, b.vehicleCompanies);
    EXPECT_EQ(a.vehicleTag, b.vehicleTag);
    EXPECT_EQ(a.reserveCompanies, b.reserveCompanies);
    EXPECT_EQ(a.campCompanies, b.campCompanies);
    EXPECT_EQ(a.prisonCompanies, b.prisonCompanies);
    EXPECT_EQ(a.minePos, b.minePos);
    EXPECT_EQ(a.flagReserve, b.flagReserve);
    EXPECT_EQ(a.flagCarried, b.flagCarried);
    EXPECT_EQ(a.flagHome, b.flagHome);
}

struct Shot {
    int Side;
    int TargetSlot;
};

// The shots that the conditions on the two vehicles allow in this position.
std::vector<Shot> PermittedShots(const BoardState& state)
{
    std::vector<Shot> shots;
    for (int side = 1; side <= 2; ++side)
        for (int slot = 0; slot < kVehicleSlots; ++slot)
            if (IsRoadField(state.VehiclePos(side, slot)))
                for (int target = 0; target < kVehicleSlots; ++target) {
                    const int field = state.VehiclePos(OtherSide(side), target);
                    if (IsRoadField(field) && ShotPermitted(state, side, slot, state.BoardCell(field), true))
                        shots.push_back({side, target});
                }
    return shots;
}

TEST(CombatProperty, CompaniesFlagsAndMinesStayWholeAfterEveryShot)
{
    std::mt19937 random(20261121);
    int shotsFired = 0;
    int belowZeroSeen = 0;
    for (int round = 0; round < 400; ++round) {
        BoardState state = RandomPosition(random, Draw(random, 1, 2));
        ASSERT_EQ(state.CompanySum(1), 25);
        ASSERT_EQ(state.CompanySum(2), 25);
        for (int turn = 0; turn < 12; ++turn) {
            const std::vector<Shot> shots = PermittedShots(state);
            if (shots.empty())
                break;
            const Shot shot = shots[static_cast<std::size_t>(Draw(random, 0, static_cast<int>(shots.size()) - 1))];
            ResolveShot(state, shot.Side, shot.TargetSlot);
            ++shotsFired;
            for (int side = 1; side <= 2; ++side) {
                ASSERT_EQ(state.CompanySum(side), 25) << "round " << round << " side " << side;
                EXPECT_EQ(MenPresent(state, side), 25 + BelowZero(state, side));
                EXPECT_EQ(FlagCount(state, side), 5);
                EXPECT_EQ(state.FlagCarried(side) >= 0, true);
                if (BelowZero(state, side) > 0)
                    ++belowZeroSeen;
            }
            ExpectMinesWhole(state);
        }
    }
    EXPECT_GT(shotsFired, 1000);
    EXPECT_GT(belowZeroSeen, 0);
}

TEST(CombatProperty, ShotAndItsReplayGiveEqualStates)
{
    std::mt19937 random(4242);
    for (int round = 0; round < 400; ++round) {
        const int shooterSide = Draw(random, 1, 2);
        BoardState local = RandomPosition(random, shooterSide);
        BoardState copy = local;
        const std::vector<Shot> shots = PermittedShots(local);
        for (const Shot& shot : shots) {
            if (shot.Side != shooterSide)
                continue;
            // The shooter's copy asks about a Vrijgeleide, nobody used one; the
            // replay runs without a question.
            SafeConductSeam asking{shooterSide, [](int) { return SafeConductAnswer::ShotGoesOn; }};
            const ShotResult a = ResolveShot(local, shot.Side, shot.TargetSlot, asking);
            const ShotResult b = ResolveShot(copy, shot.Side, shot.TargetSlot);
            EXPECT_EQ(a, b);
            ASSERT_EQ(local, copy) << "round " << round;
            break;
        }
    }
}

TEST(CombatProperty, OpponentsCopyMakesTheSameChangesInItsOwnView)
{
    std::mt19937 random(777);
    for (int round = 0; round < 400; ++round) {
        BoardState shooterCopy = RandomPosition(random, 1);
        // The other player's copy: the same game, army 2 local, board turned.
        BoardState targetCopy = shooterCopy;
        targetCopy.LocalSide = 2;
        targetCopy.BoardSide = 2;
        bool asked = false;
        SafeConductSeam never{2, [&](int) {
                                  asked = true;
                                  return SafeConductAnswer::JeepSentBack;
                              }};
        for (int turn = 0; turn < 6; ++turn) {
            std::vector<Shot> shots;
            for (const Shot& shot : PermittedShots(shooterCopy))
                if (shot.Side == 1)
                    shots.push_back(shot);
            if (shots.empty())
                break;
            const Shot shot = shots[static_cast<std::size_t>(Draw(random, 0, static_cast<int>(shots.size()) - 1))];
            SafeConductSeam asking{1, [](int) { return SafeConductAnswer::ShotGoesOn; }};
            ResolveShot(shooterCopy, 1, shot.TargetSlot, asking);
            ResolveShot(targetCopy, 1, shot.TargetSlot, never);
            ExpectSameGame(shooterCopy, targetCopy);
            // The target's own loss lands in its Stock only on its owner's copy.
            if (shooterCopy.VehiclePos(2, shot.TargetSlot) == 0) {
                EXPECT_FALSE(shooterCopy.VehiclePicture(2, shot.TargetSlot).InStock);
                EXPECT_TRUE(targetCopy.VehiclePicture(2, shot.TargetSlot).InStock);
            }
        }
        EXPECT_FALSE(asked);
    }
}

// Shots found by the judge (the walk of exactly the die's value) mixed with the
// moves of the same vehicles: carriers move, lay and take mines, load flags and
// are shot down; each action is carried out on a second copy as its replay.
TEST(CombatProperty, JudgedShotsAndMovesKeepTheBooksAndReplayEqually)
{
    std::mt19937 random(5150);
    int shots = 0;
    int moves = 0;
    for (int round = 0; round < 300; ++round) {
        BoardState state = RandomPosition(random, Draw(random, 1, 2));
        BoardState replay = state;
        for (int action = 0; action < 30; ++action) {
            const int side = Draw(random, 1, 2);
            const int slot = Draw(random, 0, kVehicleSlots - 1);
            const int from = state.VehiclePos(side, slot);
            if (!IsRoadField(from))
                continue;
            const int steps = Draw(random, 1, 12);
            std::vector<int> destinations;
            for (int to = 1; to <= 118; ++to)
                if (JudgeMove(state, side, slot, from, to, steps, true).Legal)
                    destinations.push_back(to);
            if (destinations.empty())
                continue;
            const int to = destinations[static_cast<std::size_t>(Draw(random, 0, static_cast<int>(destinations.size()) - 1))];
            ASSERT_TRUE(IsLegalMove(state, side, slot, from, to, steps, true));
            replay.Verdict = state.Verdict;
            if (state.Verdict.ShootAllowed) {
                const int target = std::abs(state.Verdict.ShootTarget) - 1;
                ASSERT_EQ(state.VehiclePos(OtherSide(side), target), to);
                ResolveShot(state, side, target);
                ResolveShot(replay, side, target);
                ++shots;
            } else {
                const bool leaveMine = MineLayingOffered(state, side, slot, from) && Draw(random, 0, 1) == 1;
                ExecuteMove(state, side, slot, from, to, leaveMine);
                ExecuteMove(replay, side, slot, from, to, leaveMine);
                ++moves;
            }
            ASSERT_EQ(state, replay) << "round " << round << " action " << action;
            for (int army = 1; army <= 2; ++army) {
                ASSERT_EQ(state.CompanySum(army), 25) << "round " << round << " action " << action;
                EXPECT_EQ(FlagCount(state, army), 5);
            }
            ExpectMinesWhole(state);
        }
    }
    EXPECT_GT(shots, 100);
    EXPECT_GT(moves, 1000);
}

} // namespace
} // namespace vk
