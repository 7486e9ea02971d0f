// Golden games: scripted sequences of actions from the starting position,
// played through the command-line judge, each ending in an expected saved
// game under golden/. Every script says, step by step, why the verdicts and
// the expected file are what they are.
//
// Script lines:
//   start FILE
//       the first line only: the saved game to start from (start.vkh when
//       there is no such line)
//   judge SIDE SLOT FROM TO STEPS MAYSHOOT [--leave-mine]
//       the judge applied to the position so far (--apply to the next file)
//   expect KEY=VALUE ...
//       the lines the judge printed for the step before
//   load SIDE SLOT CLICKS
//       slow clicks on a vehicle in its camp, loading companies (and a mine
//       for a commando) the way the camp handler of the board does

#include "RulesTool.h"
#include "board/BoardState.h"
#include "board/Picking.h"
#include "game/SavedGame.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

namespace {

namespace fs = std::filesystem;

const fs::path kGolden = VK_GOLDEN_DIR;

const char* const kScripts[] = {
    "tank_crosses_forward_post",
    "kanon_crosses_forward_post",
    "mine_laid_and_picked_up",
    "tank_destroys_kanon",
    "infantry_loads_flag",
    "tank_round_trip_home",
    "tank_shoots_twice",
    "kanon_crosses_forward_post_rebels_file",
    "tank_crosses_forward_post_rebels_file",
};

std::string Bytes(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class Golden : public vk::test::TempFolderTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(Golden, ScriptEndsOnTheExpectedPosition)
{
    const std::string name = GetParam();
    std::ifstream script(kGolden / (name + ".script"));
    ASSERT_TRUE(script) << name;

    int step = 0;
    fs::path current = folder / "step0.vkh";
    bool started = false;
    const auto startFrom = [&](const std::string& file) {
        fs::copy_file(kGolden / file, current);
        started = true;
    };
    std::string printed;
    bool printedChecked = true;
    std::string line;
    int lineNumber = 0;
    while (std::getline(script, line)) {
        ++lineNumber;
        std::istringstream words(line);
        std::string command;
        if (!(words >> command) || command[0] == '#')
            continue;
        const std::string where = name + ".script:" + std::to_string(lineNumber);
        if (command == "start") {
            std::string file;
            ASSERT_TRUE(words >> file) << where;
            ASSERT_FALSE(started) << where << ": start must come first";
            startFrom(file);
            continue;
        }
        if (!started)
            startFrom("start.vkh");
        if (command == "judge") {
            ASSERT_TRUE(printedChecked) << where << ": the step before has no expect line";
            const fs::path next = folder / ("step" + std::to_string(++step) + ".vkh");
            std::vector<std::string> args{"judge", current.string()};
            for (std::string word; words >> word;)
                args.push_back(word);
            args.push_back("--apply");
            args.push_back(next.string());
            std::ostringstream out;
            std::ostringstream err;
            ASSERT_EQ(vk::RunRulesTool(args, out, err), 0) << where << ": " << err.str();
            printed = out.str();
            printedChecked = false;
            current = next;
        } else if (command == "expect") {
            std::string want;
            for (std::string word; words >> word;)
                want += word + "\n";
            EXPECT_EQ(printed, want) << where;
            printedChecked = true;
        } else if (command == "load") {
            int side = 0, slot = 0, clicks = 0;
            ASSERT_TRUE(words >> side >> slot >> clicks) << where;
            vk::BoardState state;
            vk::ResetNewGame(state);
            vk::GameProgress progress;
            vk::ReadSavedGame(current, state, progress);
            vk::CampLoadClicks(state, side, slot, clicks);
            const fs::path next = folder / ("step" + std::to_string(++step) + ".vkh");
            ASSERT_TRUE(vk::SaveGame(next, state, progress)) << where;
            current = next;
        } else {
            FAIL() << where << ": unknown command " << command;
        }
    }
    EXPECT_TRUE(printedChecked) << name << ": the last step has no expect line";
    EXPECT_EQ(Bytes(current), Bytes(kGolden / (name + ".vkh"))) << name;
}

INSTANTIATE_TEST_SUITE_P(Scripts, Golden, ::testing::ValuesIn(kScripts),
                         [](const ::testing::TestParamInfo<const char*>& info) { return std::string(info.param); });

TEST(GoldenFolder, EveryScriptIsPlayedAndHasItsExpectedFile)
{
    std::set<std::string> listed(std::begin(kScripts), std::end(kScripts));
    for (const auto& entry : fs::directory_iterator(kGolden))
        if (entry.path().extension() == ".script") {
            const std::string name = entry.path().stem().string();
            EXPECT_TRUE(listed.count(name)) << name << " is not played";
            EXPECT_TRUE(fs::exists(kGolden / (name + ".vkh"))) << name;
        }
}

TEST(GoldenFolder, RebelsStartIsTheSameGameSeenByArmyTwo)
{
    vk::BoardState expected;
    expected.LocalSide = 2;
    vk::ResetNewGame(expected);
    vk::BoardState read;
    vk::ResetNewGame(read);
    vk::GameProgress progress;
    vk::ReadSavedGame(kGolden / "start_rebels.vkh", read, progress);
    EXPECT_EQ(read, expected);
    EXPECT_EQ(progress.ExternalSide, 1);
    vk::GameProgress green;
    vk::BoardState greenState;
    vk::ReadSavedGame(kGolden / "start.vkh", greenState, green);
    green.ExternalSide = 1;
    EXPECT_EQ(progress, green);
}

TEST(GoldenFolder, StartIsTheStartingPosition)
{
    // The start file is the saved starting position of army 1's player in
    // turn 1 with a dealt deck; reading it gives the reset armies.
    vk::BoardState expected;
    vk::ResetNewGame(expected);
    vk::BoardState read = expected;
    vk::GameProgress progress;
    vk::ReadSavedGame(kGolden / "start.vkh", read, progress);
    EXPECT_EQ(read, expected);
    EXPECT_EQ(progress.ExternalSide, 2);
    EXPECT_EQ(progress.TurnNumber, 1);
    EXPECT_EQ(progress.Deck.StackPoint, 32);
    std::set<int> cards(progress.Deck.CompassStack.begin(), progress.Deck.CompassStack.begin() + 32);
    EXPECT_EQ(cards.size(), 32u);
    EXPECT_EQ(*cards.begin(), 1);
    EXPECT_EQ(*cards.rbegin(), 32);
}

} // namespace
