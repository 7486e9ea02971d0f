// A saved game is a player's only record of a long game: a save that fails
// half-way must leave the old file as it was, and no temporary behind.

#include "game/SavedGame.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace {

class SaveSafety : public vk::test::TempFolderTest {};

vk::BoardState NewPosition()
{
    vk::BoardState state;
    vk::ResetNewGame(state);
    return state;
}

TEST_F(SaveSafety, SaveThatCannotBeWrittenWholeLeavesTheOldFile)
{
    const auto path = folder / "bert.vkh";
    Put(path, "[MAIN]\r\nLOK=1\r\nEXT=2\r\nBEURT=7\r\n");
    const std::string before = Get(path);
    // In a child whose files may not grow past 200 bytes every write of a
    // whole game fails part-way, as a full disk would make it fail.
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{200, 200};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0)
            ::_exit(10);
        vk::GameProgress progress;
        progress.TurnNumber = 8;
        ::_exit(vk::SaveGame(path, NewPosition(), progress) ? 11 : 0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << "10: no limit set, 11: the save said it succeeded";
    EXPECT_EQ(Get(path), before);
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    EXPECT_EQ(names, std::vector<std::string>{"bert.vkh"}) << "no temporary left behind";
}

TEST_F(SaveSafety, SaveReplacesTheOldFileWhole)
{
    const auto path = folder / "bert.vkh";
    Put(path, std::string(5000, 'x'));
    vk::GameProgress progress;
    progress.TurnNumber = 8;
    const vk::BoardState state = NewPosition();
    ASSERT_TRUE(vk::SaveGame(path, state, progress));
    EXPECT_EQ(Get(path), vk::SavedGameText(state, progress));
}

} // namespace

namespace {

// A saved game of a new position at turn 3, as text, to be damaged.
std::string GoodGame()
{
    vk::BoardState state;
    vk::ResetNewGame(state);
    vk::GameProgress progress;
    progress.TurnNumber = 3;
    for (int i = 0; i < vk::CompassCardCount; ++i)
        progress.Deck.CompassStack[static_cast<std::size_t>(i)] = i + 1;
    progress.Deck.StackPoint = 32;
    return vk::SavedGameText(state, progress);
}

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos)
        text.replace(at, from.size(), to);
    return text;
}

class DamagedGame : public vk::test::TempFolderTest {
protected:
    // The problem found in the text, or the fault its reading raised.
    std::string ProblemOf(const std::string& text)
    {
        const auto path = folder / "bert.vkh";
        Put(path, text);
        vk::BoardState state;
        vk::GameProgress progress;
        try {
            vk::ReadSavedGame(path, state, progress);
        } catch (const vk::RunTimeFault& fault) {
            return std::string("fault: ") + fault.what();
        }
        return vk::SavedGameProblem(state, progress);
    }
};

TEST_F(DamagedGame, WholeGameHasNoProblem)
{
    EXPECT_EQ(ProblemOf(GoodGame()), "");
}

// Camouflage with one company in the camp and room for two leaves -1 there:
// a game that goes on, and is saved and resumed like any other.
TEST_F(DamagedGame, ACampLeftAtMinusOneIsNoDamage)
{
    EXPECT_EQ(ProblemOf(Replaced(GoodGame(), "[KOMP_LOK]\r\nRES=10\r\nKMP=15", "[KOMP_LOK]\r\nRES=10\r\nKMP=-1")),
              "");
}

TEST_F(DamagedGame, CutOffHalfWayIsFound)
{
    const std::string text = GoodGame();
    EXPECT_NE(ProblemOf(text.substr(0, text.size() / 2)), "");
    EXPECT_NE(ProblemOf(text.substr(0, 40)), "");
    EXPECT_NE(ProblemOf(""), "");
}

TEST_F(DamagedGame, GarbageIsFound)
{
    EXPECT_NE(ProblemOf(std::string(3000, '\x7f')), "");
    EXPECT_EQ(ProblemOf(Replaced(GoodGame(), "BEURT=3", "BEURT=drie")).rfind("fault: ", 0), 0u);
    EXPECT_EQ(ProblemOf(Replaced(GoodGame(), "LOK=1", "LOK=3")).rfind("fault: ", 0), 0u);
}

TEST_F(DamagedGame, MissingKeyIsFound)
{
    EXPECT_EQ(ProblemOf(Replaced(GoodGame(), "BEURT=3\r\n", "")), "the turn number is -1");
    EXPECT_EQ(ProblemOf(Replaced(GoodGame(), "[DIRVEH_LOK]\r\nVEH00=1\r\n", "[DIRVEH_LOK]\r\n")),
              "vehicle 0 of army 1 has heading -1");
}

TEST_F(DamagedGame, ValueOutOfRangeIsFound)
{
    EXPECT_EQ(ProblemOf(Replaced(GoodGame(), "[VEHPOS_EXT]\r\nVEH00=116", "[VEHPOS_EXT]\r\nVEH00=200")),
              "vehicle 0 of army 2 stands on field 200");
    EXPECT_EQ(ProblemOf(Replaced(GoodGame(), "[KOMP_LOK]\r\nRES=10", "[KOMP_LOK]\r\nRES=26")),
              "a company count of army 1 is 26");
    EXPECT_EQ(ProblemOf(Replaced(GoodGame(), "POINT=32", "POINT=40")), "the stack pointer is 40");
    EXPECT_EQ(ProblemOf(Replaced(GoodGame(), "[KOMP_LOK]\r\nRES=10\r\nKMP=15", "[KOMP_LOK]\r\nRES=10\r\nKMP=-2")),
              "the camp of army 1 holds -2 companies");
    EXPECT_EQ(ProblemOf(Replaced(GoodGame(), "[VEHTAG_LOK]\r\nVEH00=tank_1_0_o", "[VEHTAG_LOK]\r\nVEH00=x")),
              "vehicle 0 of army 1 has the tag \"x\"");
}

} // namespace
