// Many random games played twice: once on a position kept in memory through
// the library, once through the command-line judge from saved game to saved
// game. After every action the judge's file must be the memory position
// saved, so that reading, judging, carrying out and writing lose nothing.

#include "board/Picking.h"
#include "RulesTool.h"
#include "TempFolder.h"
#include "board/Movement.h"
#include "game/SavedGame.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

namespace {

namespace fs = std::filesystem;

class RulesToolReplay : public vk::test::TempFolderTest {};

struct Action {
    int side, slot, from, to, steps;
    bool leaveMine;
};

bool AnyVehicleWithMinusOne(const vk::BoardState& state, int side)
{
    for (int slot = 0; slot < vk::kVehicleSlots; ++slot)
        if (state.VehicleCompanies(side, slot) < 0)
            return true;
    return false;
}

TEST_F(RulesToolReplay, JudgeFilesFollowTheLibraryGameActionByAction)
{
    int actions = 0;
    int shots = 0;
    for (int seed = 1; seed <= 6; ++seed) {
        std::mt19937 random(static_cast<unsigned>(seed));
        const auto pick = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
        vk::BoardState state;
        state.LocalSide = pick(1, 2);
        vk::ResetNewGame(state);
        vk::GameProgress progress;
        progress.ExternalSide = 3 - state.LocalSide;
        progress.TurnNumber = 1;

        for (int turn = 0; turn < 90; ++turn) {
            const int side = 1 + turn % 2;
            // Now and then a camp vehicle is loaded first, as slow clicks do.
            const int loadSlot = pick(0, 9);
            if (pick(0, 2) == 0 && state.VehiclePos(side, loadSlot) == vk::CampField(side) &&
                state.VehicleCompanies(side, loadSlot) == 0 && state.CampCompanies(side) > 0)
                vk::CampLoadClicks(state, side, loadSlot, pick(1, 4));

            // A random legal action of a random vehicle: the HQ from the camp,
            // or any destination the judge accepts for a random die.
            Action action{};
            bool found = false;
            // A shot whenever one is on: the games should fight, not only drive.
            for (int slot = 0; slot < vk::kVehicleSlots && !found; ++slot) {
                const int from = state.VehiclePos(side, slot);
                if (!vk::IsRoadField(from) || state.VehicleCompanies(side, slot) < 1)
                    continue;
                for (int target = 0; target < vk::kVehicleSlots && !found; ++target) {
                    const int to = state.VehiclePos(3 - side, target);
                    if (!vk::IsRoadField(to))
                        continue;
                    for (int steps = 1; steps <= 12 && !found; ++steps) {
                        const vk::MoveVerdict verdict = vk::JudgeMove(state, side, slot, from, to, steps, true);
                        if (verdict.Legal && verdict.ShootAllowed) {
                            action = {side, slot, from, to, steps, false};
                            found = true;
                        }
                    }
                }
            }
            for (int attempt = 0; attempt < 30 && !found; ++attempt) {
                const int slot = pick(0, 10);
                const int from = state.VehiclePos(side, slot);
                if (from == 0)
                    continue;
                if (from == vk::CampField(side)) {
                    if (state.HQCount(side) < 3) {
                        action = {side, slot, from, vk::HQField(side), 6, false};
                        found = true;
                    }
                    continue;
                }
                const int steps = pick(1, 12);
                const int first = pick(1, 118);
                for (int n = 0; n < 118 && !found; ++n) {
                    const int to = (first + n - 1) % 118 + 1;
                    if (vk::JudgeMove(state, side, slot, from, to, steps, true).Legal) {
                        action = {side, slot, from, to, steps, pick(0, 1) == 1};
                        found = true;
                    }
                }
            }
            if (!found)
                continue;

            const fs::path before = folder / "before.vkh";
            const fs::path after = folder / "after.vkh";
            ASSERT_TRUE(vk::SaveGame(before, state, progress));
            std::vector<std::string> args{"judge",
                                          before.string(),
                                          std::to_string(action.side),
                                          std::to_string(action.slot),
                                          std::to_string(action.from),
                                          std::to_string(action.to),
                                          std::to_string(action.steps),
                                          "1",
                                          "--apply",
                                          after.string()};
            if (action.leaveMine)
                args.push_back("--leave-mine");
            std::ostringstream out;
            std::ostringstream err;
            const int code = vk::RunRulesTool(args, out, err);
            ASSERT_EQ(code, 0) << "seed " << seed << " turn " << turn << ": " << err.str();

            const int localSide = state.LocalSide;
            state.LocalSide = action.side;
            const auto outcome = vk::ApplyBoardClick(state, action.side, action.slot, action.from, action.to,
                                                     action.steps, true, action.leaveMine);
            state.LocalSide = localSide;
            ++actions;
            if (outcome.What == vk::BoardClickOutcome::Kind::Shot)
                ++shots;

            const fs::path expected = folder / "expected.vkh";
            ASSERT_TRUE(vk::SaveGame(expected, state, progress));
            ASSERT_EQ(Get(after), Get(expected)) << "seed " << seed << " turn " << turn;
            for (int army = 1; army <= 2; ++army) {
                if (!AnyVehicleWithMinusOne(state, army)) {
                    ASSERT_EQ(state.CompanySum(army), 25) << "seed " << seed << " turn " << turn << " army " << army
                                                          << ": " << args[2] << " " << args[3] << " " << args[4] << " "
                                                          << args[5] << " " << args[6] << "\n" << Get(before) << "\n" << out.str();
                }
            }
        }
    }
    EXPECT_GT(actions, 300);
    EXPECT_GT(shots, 0);
    RecordProperty("shots", shots);
}

} // namespace
