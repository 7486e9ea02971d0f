#include "link/ExternalPrefix.h"
#include "link/MessageKinds.h"
#include "link/ProfileFile.h"
#include "link/ServiceFiles.h"
#include "shell/RunTimeFault.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using vk::MessageKindId;

// The table of message kinds, typed from the design: extension, section and
// the keys in the order of writing.
struct Expected {
    MessageKindId id;
    const char* extension;
    const char* section;
    std::vector<std::string> keys;
};

std::vector<Expected> ExpectedKinds()
{
    std::vector<std::string> deck;
    for (int i = 1; i <= 32; ++i)
        deck.push_back(std::string("Kaart") + (i < 10 ? "0" : "") + std::to_string(i));
    return {
        {MessageKindId::Presence, ".xid", "GENERAL", {"USER_ID"}},
        {MessageKindId::Invitation, ".rqs", "GENERAL", {"USER_ID"}},
        {MessageKindId::Acceptance, ".acc", "GENERAL", {"USER_ID"}},
        {MessageKindId::GameStart, ".goo", "GENERAL", {"SPEL"}},
        {MessageKindId::Toss, ".d", "GENERAL", {"GOOI"}},
        {MessageKindId::Deck, ".mkk", "GENERAL", deck},
        {MessageKindId::EndOfTurn, ".eot", "GENERAL", {"HASH", "TURN"}},
        {MessageKindId::DiceResult, ".wrp", "GENERAL", {"D1", "D2"}},
        {MessageKindId::Action, ".act", "GENERAL", {"DIRECT", "DICE", "VEH", "ACT", "FROM", "TO", "VEHTAG"}},
        {MessageKindId::GameStopped, ".stp", "GAME", {"STATUS"}},
        {MessageKindId::CompassCard, ".ryc", "GENERAL", {"CARD"}},
        {MessageKindId::PersonnelKept, ".pna", "GENERAL", {"CARD"}},
        {MessageKindId::PersonnelDealt, ".pnc", "GENERAL", {"CARDOUT", "CARDIN", "CARDIND"}},
        {MessageKindId::PersonnelUsed, ".pnu", "GENERAL", {"CARD", "V1", "V2", "V3"}},
        {MessageKindId::Question, ".ask", "GENERAL", {"QUESTION"}},
        {MessageKindId::Answer, ".ans", "GENERAL", {"ANSWER"}},
        {MessageKindId::RadioYambo, ".ray", "GENERAL", {"CARD", "V1", "V2", "V3"}},
    };
}

TEST(MessageKinds, TableHoldsEveryKindWithItsSectionAndKeysInWritingOrder)
{
    const auto expected = ExpectedKinds();
    ASSERT_EQ(vk::MessageKinds().size(), expected.size());
    for (const Expected& e : expected) {
        const vk::MessageKind& kind = vk::KindOf(e.id);
        EXPECT_EQ(kind.Extension, e.extension);
        EXPECT_EQ(kind.Section, e.section) << e.extension;
        EXPECT_EQ(kind.Keys, e.keys) << e.extension;
    }
}

TEST(MessageKinds, ReaderGuardsFollowTheKind)
{
    using W = vk::ReaderWait;
    EXPECT_EQ(vk::KindOf(MessageKindId::Presence).Wait, W::None);
    EXPECT_EQ(vk::KindOf(MessageKindId::Invitation).Wait, W::None);
    EXPECT_EQ(vk::KindOf(MessageKindId::Acceptance).Wait, W::None);
    EXPECT_EQ(vk::KindOf(MessageKindId::GameStart).Wait, W::None);
    EXPECT_EQ(vk::KindOf(MessageKindId::Toss).Wait, W::ReadOnceOwnDefault);
    EXPECT_EQ(vk::KindOf(MessageKindId::Deck).Wait, W::ReadOncePositionDefault);
    EXPECT_EQ(vk::KindOf(MessageKindId::Action).Wait, W::RepeatCommitUntilNotEmpty);
    EXPECT_EQ(vk::KindOf(MessageKindId::GameStopped).Wait, W::RepeatWhileFail);
    EXPECT_EQ(vk::KindOf(MessageKindId::PersonnelUsed).Wait, W::RepeatAllUntilCommit100);
    EXPECT_EQ(vk::KindOf(MessageKindId::RadioYambo).Wait, W::RepeatCommitUntil100);
    EXPECT_EQ(vk::KindOf(MessageKindId::DiceResult).WaitKeys, (std::vector<std::string>{"D1", "D2"}));
    // The reader of a .eot waits for TURN alone: a file without HASH reads as before.
    EXPECT_EQ(vk::KindOf(MessageKindId::EndOfTurn).Wait, W::RepeatUntilNotMinusOne);
    EXPECT_EQ(vk::KindOf(MessageKindId::EndOfTurn).WaitKeys, (std::vector<std::string>{"TURN"}));
    EXPECT_EQ(vk::KindOf(MessageKindId::PersonnelDealt).WaitKeys, (std::vector<std::string>{"CARDIND", "CARDIN"}));
}

TEST(MessageKinds, PathIsFolderWriterAndExtensionWithNothingEscaped)
{
    EXPECT_EQ(vk::MessageFilePath("/tmp/gedeeld", "anna", ".xid"), "/tmp/gedeeld/anna.xid");
    EXPECT_EQ(vk::MessageFilePath("/tmp/gedeeld", "Jan de Wit", ".rqs"), "/tmp/gedeeld/Jan de Wit.rqs");
    EXPECT_EQ(vk::MessageFilePath("/tmp/gedeeld", "a\"b", ".acc"), "/tmp/gedeeld/a\"b.acc");
    // A slot without a folder points at the root.
    EXPECT_EQ(vk::MessageFilePath("", "anna", ".xid"), "/anna.xid");
}

TEST(MessageKinds, TossExtensionCarriesTheTossNumber)
{
    EXPECT_EQ(vk::TossExtension(1), ".d01");
    EXPECT_EQ(vk::TossExtension(12), ".d12");
    EXPECT_EQ(vk::TossExtension(100), ".d00");
}

TEST(ExternalPrefix, LastTwoCharactersOfNPlus100)
{
    EXPECT_EQ(vk::ExternalPrefix(1), "01");
    EXPECT_EQ(vk::ExternalPrefix(9), "09");
    EXPECT_EQ(vk::ExternalPrefix(12), "12");
    EXPECT_EQ(vk::ExternalPrefix(99), "99");
    EXPECT_EQ(vk::ExternalPrefix(100), "00");
    EXPECT_EQ(vk::ExternalPrefix(101), "01");
    EXPECT_EQ(vk::ExternalPrefix(0), "00");
    EXPECT_EQ(vk::ExternalPrefix(-95), "5");
    EXPECT_EQ(vk::ExternalPrefix(32667), "67");
}

TEST(ExternalPrefix, SumBeyondSixteenBitsIsAnOverflowFault)
{
    EXPECT_THROW(vk::ExternalPrefix(32668), vk::RunTimeFault);
}

TEST(ServiceFiles, NamesOfSynchronisationServicesAreNotPlayersFiles)
{
    EXPECT_TRUE(vk::IsServiceFile(".stfolder"));
    EXPECT_TRUE(vk::IsServiceFile(".syncthing.bert.xid.tmp"));
    EXPECT_TRUE(vk::IsServiceFile(".unison.bert.xid.123.unison.tmp"));
    EXPECT_TRUE(vk::IsServiceFile("bert.sync-conflict-20261121-101010-ABCDEFG.xid"));
    EXPECT_TRUE(vk::IsServiceFile("bert (conflicted copy 2026-11-21).xid"));
    EXPECT_FALSE(vk::IsServiceFile("bert.xid"));
    EXPECT_FALSE(vk::IsServiceFile("Jan de Wit.xid"));
    EXPECT_FALSE(vk::IsServiceFile("sync.xid"));
}

// ReadMessage against files that arrive key by key: the wait callback plays
// the synchronisation service and adds the next key at each call.
class ReadMessageTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        folder = fs::temp_directory_path() / ("vk_readmessage_" + std::string(info->name()));
        fs::remove_all(folder);
        fs::create_directories(folder);
        path = (folder / "bert.msg").string();
    }
    void TearDown() override { fs::remove_all(folder); }

    // Writes the keys one per call of the returned wait.
    std::function<void()> Deliver(const std::string& section, std::vector<std::pair<std::string, std::string>> keys)
    {
        pending = std::move(keys);
        return [this, section] {
            ++waits;
            if (next < pending.size()) {
                vk::WriteProfileString(section, pending[next].first, pending[next].second, path);
                ++next;
            }
        };
    }

    fs::path folder;
    std::string path;
    std::vector<std::pair<std::string, std::string>> pending;
    std::size_t next = 0;
    int waits = 0;
};

TEST_F(ReadMessageTest, ActionWaitsForVehtagAndThenReadsAllKeys)
{
    const auto& kind = vk::KindOf(MessageKindId::Action);
    auto wait = Deliver("GENERAL", {{"DIRECT", "1"}, {"VEH", "3"}, {"DICE", "1"}, {"ACT", "1"}, {"FROM", "113"},
                                    {"TO", "5"}, {"VEHTAG", "infanterie_1_5_n"}});
    const auto values = vk::ReadMessage(kind, path, wait);
    EXPECT_EQ(waits, 7);
    EXPECT_EQ(values.at("VEHTAG"), "infanterie_1_5_n");
    EXPECT_EQ(values.at("FROM"), "113");
    EXPECT_EQ(values.at("TO"), "5");
}

TEST_F(ReadMessageTest, DiceResultWaitsForD1ThenD2)
{
    const auto& kind = vk::KindOf(MessageKindId::DiceResult);
    auto wait = Deliver("GENERAL", {{"D1", "4"}, {"D2", "6"}});
    const auto values = vk::ReadMessage(kind, path, wait);
    EXPECT_EQ(waits, 2);
    EXPECT_EQ(values.at("D1"), "4");
    EXPECT_EQ(values.at("D2"), "6");
}

TEST_F(ReadMessageTest, PersonnelUsedRepeatsUntilV3Is100)
{
    const auto& kind = vk::KindOf(MessageKindId::PersonnelUsed);
    auto wait = Deliver("GENERAL", {{"CARD", "25"}, {"V1", "3"}, {"V2", "-1"}, {"V3", "100"}});
    const auto values = vk::ReadMessage(kind, path, wait);
    EXPECT_EQ(waits, 4);
    EXPECT_EQ(values.at("CARD"), "25");
    EXPECT_EQ(values.at("V1"), "3");
    EXPECT_EQ(values.at("V3"), "100");
}

TEST_F(ReadMessageTest, StopWaitsWhileStatusReadsFail)
{
    const auto& kind = vk::KindOf(MessageKindId::GameStopped);
    auto wait = Deliver("GAME", {{"STATUS", "SAVE"}});
    EXPECT_EQ(vk::ReadMessage(kind, path, wait).at("STATUS"), "SAVE");
    EXPECT_EQ(waits, 1);
}

TEST_F(ReadMessageTest, QuestionAlsoAsksForV1ToV3)
{
    const auto& kind = vk::KindOf(MessageKindId::Question);
    auto wait = Deliver("GENERAL", {{"QUESTION", "4"}});
    const auto values = vk::ReadMessage(kind, path, wait);
    EXPECT_EQ(values.at("QUESTION"), "4");
    EXPECT_EQ(values.at("V1"), "-1");
    EXPECT_EQ(values.at("V3"), "-1");
}

TEST_F(ReadMessageTest, TossWithoutItsKeyGivesTheReadersOwnResult)
{
    vk::WriteProfileString("GENERAL", "OTHER", "1", path);
    const auto values = vk::ReadMessage(vk::KindOf(MessageKindId::Toss), path, [] { FAIL(); }, "7");
    EXPECT_EQ(values.at("GOOI"), "7");
}

TEST_F(ReadMessageTest, DeckCutShortGivesPositionsForTheMissingCards)
{
    vk::WriteProfileString("GENERAL", "Kaart01", "17", path);
    vk::WriteProfileString("GENERAL", "Kaart02", "3", path);
    const auto values = vk::ReadMessage(vk::KindOf(MessageKindId::Deck), path, [] { FAIL(); });
    EXPECT_EQ(values.at("Kaart01"), "17");
    EXPECT_EQ(values.at("Kaart02"), "3");
    EXPECT_EQ(values.at("Kaart03"), "3");
    EXPECT_EQ(values.at("Kaart32"), "32");
}

TEST_F(ReadMessageTest, PresenceIsReadOnceWithoutWaiting)
{
    vk::WriteProfileString("GENERAL", "USER_ID", "0A1B2C3D4E5F", path);
    EXPECT_EQ(vk::ReadMessage(vk::KindOf(MessageKindId::Presence), path, [] { FAIL(); }).at("USER_ID"),
              "0A1B2C3D4E5F");
}

} // namespace
