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
