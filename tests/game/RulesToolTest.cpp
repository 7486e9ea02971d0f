#include "RulesTool.h"

#include "TempFolder.h"
#include "board/BoardState.h"
#include "game/SavedGame.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

namespace fs = std::filesystem;

class RulesTool : public vk::test::TempFolderTest {
protected:
    struct Run {
        int code;
        std::string out;
        std::string err;
    };
    Run Tool(const std::vector<std::string>& args) const
    {
        std::ostringstream out;
        std::ostringstream err;
        const int code = vk::RunRulesTool(args, out, err);
        return {code, out.str(), err.str()};
    }
    // A saved starting position, changed by `change` first.
    template <typename Change>
    fs::path Position(const std::string& name, Change change) const
    {
        vk::BoardState state;
        vk::ResetNewGame(state);
        vk::GameProgress progress;
        progress.TurnNumber = 3;
        for (int i = 0; i < 32; ++i)
            progress.Deck.CompassStack[static_cast<std::size_t>(i)] = i + 1;
        progress.Deck.StackPoint = 32;
        change(state);
        const fs::path path = folder / name;
        EXPECT_TRUE(vk::SaveGame(path, state, progress));
        return path;
    }
    fs::path Start() const
    {
        return Position("start.vkh", [](vk::BoardState&) {});
    }
    // Army 1's tank with 2 companies on 23, army 2's kanon with 1 on 32.
    static void Facing(vk::BoardState& state)
    {
        state.VehiclePos(1, 0) = 23;
        state.VehicleCompanies(1, 0) = 2;
        state.VehicleTag(1, 0) = "tank_1_2_o";
        state.CampCompanies(1) = 13;
        state.VehiclePos(2, 1) = 32;
        state.VehicleDir(2, 1) = 0;
        state.VehicleCompanies(2, 1) = 1;
        state.VehicleTag(2, 1) = "kanon_2_1_n";
        state.CampCompanies(2) = 14;
    }
    static bool OneLine(const std::string& text)
    {
        return !text.empty() && text.back() == '\n' && text.find('\n') == text.size() - 1;
    }
};

TEST_F(RulesTool, VerdictIsPrintedLineByLineWithFlagsAsMinusOneAndZero)
{
    const auto run = Tool({"judge", Start().string(), "1", "0", "113", "114", "1", "1"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "Legal=-1\nShootAllowed=0\nShootTarget=0\nMinePickup=0\nFlagLoad=0\nCompassCrossed=0\nHeading=1\n");
    EXPECT_EQ(run.err, "");
}

TEST_F(RulesTool, JudgingChangesNoFile)
{
    const fs::path start = Start();
    const std::string before = Get(start);
    Tool({"judge", start.string(), "1", "0", "113", "114", "1", "1"});
    EXPECT_EQ(Get(start), before);
}

TEST_F(RulesTool, ShotIsJudgedWithItsTarget)
{
    const fs::path path = Position("facing.vkh", Facing);
    const auto run = Tool({"judge", path.string(), "1", "0", "23", "32", "9", "1"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "Legal=-1\nShootAllowed=-1\nShootTarget=-2\nMinePickup=0\nFlagLoad=0\nCompassCrossed=0\nHeading=1\n");
    // Not with MAYSHOOT 0: then the enemy on the destination makes it illegal.
    const auto refused = Tool({"judge", path.string(), "1", "0", "23", "32", "9", "0"});
    EXPECT_EQ(refused.out.substr(0, 24), "Legal=0\nShootAllowed=0\nS");
}

TEST_F(RulesTool, MoveOfAnArmyWithoutFuelIsNotCarriedOut)
{
    const fs::path path = Position("nofuel.vkh", [](vk::BoardState& state) {
        Facing(state);
        state.Brandstof(1) = 1;
    });
    const fs::path out = folder / "after.vkh";
    const auto run = Tool({"judge", path.string(), "1", "0", "23", "24", "1", "1", "--apply", out.string()});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out.substr(0, 9), "Legal=-1\n");
    EXPECT_NE(run.out.find("PendingDraws=0\n"), std::string::npos);
    EXPECT_EQ(Get(out), Get(path));
}

TEST_F(RulesTool, ShotOfAnArmyWithoutFuelIsCarriedOut)
{
    const fs::path path = Position("nofuel.vkh", [](vk::BoardState& state) {
        Facing(state);
        state.Brandstof(1) = 2;
    });
    const fs::path out = folder / "after.vkh";
    const auto run = Tool({"judge", path.string(), "1", "0", "23", "32", "9", "1", "--apply", out.string()});
    EXPECT_EQ(run.code, 0);
    vk::BoardState after;
    vk::ResetNewGame(after);
    vk::GameProgress progress;
    vk::ReadSavedGame(out, after, progress);
    EXPECT_EQ(after.VehiclePos(2, 1), 0);
    EXPECT_EQ(after.VehicleTag(2, 1), "kanon_2_0_o");
    EXPECT_EQ(after.ReserveCompanies(2), 11);
    EXPECT_EQ(after.VehiclePos(1, 0), 23);
    EXPECT_EQ(after.Brandstof(1), 2);
}

TEST_F(RulesTool, CampVehicleToItsHQWithoutTheMoveJudge)
{
    const fs::path out = folder / "after.vkh";
    const auto run = Tool({"judge", Start().string(), "2", "4", "116", "117", "6", "1", "--apply", out.string()});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out.substr(0, 8), "Legal=0\n");
    vk::BoardState after;
    vk::ResetNewGame(after);
    vk::GameProgress progress;
    vk::ReadSavedGame(out, after, progress);
    EXPECT_EQ(after.VehiclePos(2, 4), 117);
    EXPECT_EQ(after.VehicleDir(2, 4), 3);
    EXPECT_EQ(after.VehicleTag(2, 4), "infanterie_2_0_0_o");
    EXPECT_EQ(progress.TurnNumber, 3);
}

TEST_F(RulesTool, FullHQTakesNoFourthVehicle)
{
    const fs::path path = Position("fullhq.vkh", [](vk::BoardState& state) {
        for (int slot : {0, 1, 2})
            state.VehiclePos(1, slot) = 114;
    });
    const fs::path out = folder / "after.vkh";
    EXPECT_EQ(Tool({"judge", path.string(), "1", "3", "113", "114", "6", "1", "--apply", out.string()}).code, 0);
    EXPECT_EQ(Get(out), Get(path));
}

TEST_F(RulesTool, LeaveMineOnlyWhereTheQuestionWouldCome)
{
    // A commando with its mine on 72, a junction (MineSide 0): no question, it keeps the mine.
    const fs::path path = Position("junction.vkh", [](vk::BoardState& state) {
        state.VehiclePos(1, 6) = 72;
        state.VehicleDir(1, 6) = 0;
        state.VehicleCompanies(1, 6) = 1;
        state.CampCompanies(1) = 14;
        state.VehicleTag(1, 6) = "commando_1_1_1_n";
        state.MinePos(1, 0) = -6;
    });
    const fs::path out = folder / "after.vkh";
    EXPECT_EQ(Tool({"judge", path.string(), "1", "6", "72", "73", "1", "1", "--apply", out.string(), "--leave-mine"})
                  .code,
              0);
    vk::BoardState after;
    vk::ResetNewGame(after);
    vk::GameProgress progress;
    vk::ReadSavedGame(out, after, progress);
    EXPECT_EQ(after.VehiclePos(1, 6), 73);
    EXPECT_EQ(after.MinePos(1, 0), -6);
    EXPECT_EQ(after.VehicleTag(1, 6), "commando_1_1_1_n");
}

TEST_F(RulesTool, BadArgumentsExitWithTwoAndOneLine)
{
    const std::string start = Start().string();
    const std::vector<std::vector<std::string>> bad = {
        {},
        {"verdict", start, "1", "0", "113", "114", "1", "1"},
        {"judge", start, "1", "0", "113", "114", "1"},
        {"judge", start, "1", "0", "113", "114", "1", "1", "9"},
        {"judge", start, "3", "0", "113", "114", "1", "1"},
        {"judge", start, "1", "11", "113", "114", "1", "1"},
        {"judge", start, "1", "0", "113", "120", "1", "1"},
        {"judge", start, "1", "0", "113", "114", "x", "1"},
        {"judge", start, "1", "0", "113", "114", "1", "2"},
        {"judge", start, "1", "0", "113", "114", "1", "1", "--fast"},
        {"judge", start, "1", "0", "113", "114", "1", "1", "--leave-mine"},
        {"judge", start, "1", "0", "113", "114", "1", "1", "--apply"},
        {"judge", start, "1", "0", "114", "73", "3", "1", "--apply", (folder / "o.vkh").string()},
        {"judge", start, "1", "0", "113", "114", "1", "1", "--apply", (folder / "no" / "o.vkh").string()},
    };
    for (const auto& args : bad) {
        const auto run = Tool(args);
        std::string joined;
        for (const auto& a : args)
            joined += a + " ";
        EXPECT_EQ(run.code, 2) << joined;
        EXPECT_TRUE(OneLine(run.err)) << joined << ": " << run.err;
        EXPECT_EQ(run.out, "") << joined;
    }
}

TEST_F(RulesTool, BadFileExitsWithTwo)
{
    const fs::path broken = folder / "broken.vkh";
    for (const std::string text : {"", "[MAIN]\r\nLOK=3\r\nEXT=2\r\n", "[MAIN]\r\nLOK=1\r\nEXT=2\r\n[VEHPOS_LOK]\r\nVEH00=far\r\n"}) {
        Put(broken, text);
        const auto run = Tool({"judge", broken.string(), "1", "0", "113", "114", "1", "1"});
        EXPECT_EQ(run.code, 2) << text;
        EXPECT_TRUE(OneLine(run.err)) << run.err;
    }
    const auto missing = Tool({"judge", (folder / "none.vkh").string(), "1", "0", "113", "114", "1", "1"});
    EXPECT_EQ(missing.code, 2);
    EXPECT_TRUE(OneLine(missing.err));
    const auto folderAsFile = Tool({"judge", folder.string(), "1", "0", "113", "114", "1", "1"});
    EXPECT_EQ(folderAsFile.code, 2);
}

TEST_F(RulesTool, FaultOfTheRulesExitsWithThree)
{
    // A walk of no steps is outside the walk's table.
    const auto run = Tool({"judge", Start().string(), "1", "0", "114", "73", "0", "1"});
    EXPECT_EQ(run.code, 3);
    EXPECT_TRUE(OneLine(run.err)) << run.err;
    EXPECT_EQ(run.out, "");
}

} // namespace
