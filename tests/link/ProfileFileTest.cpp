#include "link/ProfileFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

namespace fs = std::filesystem;

class ProfileFileTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        folder = fs::temp_directory_path() / ("vk_profile_" + std::string(info->name()));
        fs::remove_all(folder);
        fs::create_directories(folder);
        file = folder / "speler.act";
    }
    void TearDown() override { fs::remove_all(folder); }

    void Put(const std::string& bytes) const
    {
        std::ofstream out(file, std::ios::binary | std::ios::trunc);
        out << bytes;
    }
    std::string Get() const
    {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }

    fs::path folder;
    fs::path file;
};

TEST_F(ProfileFileTest, WriteCreatesFileAndSection)
{
    EXPECT_TRUE(vk::WriteProfileString("GENERAL", "D1", "3", file));
    EXPECT_EQ(Get(), "[GENERAL]\r\nD1=3\r\n");
}

TEST_F(ProfileFileTest, SecondKeyGoesAtTheEndOfItsSection)
{
    vk::WriteProfileString("GENERAL", "D1", "3", file);
    vk::WriteProfileString("GENERAL", "D2", "5", file);
    EXPECT_EQ(Get(), "[GENERAL]\r\nD1=3\r\nD2=5\r\n");
}

TEST_F(ProfileFileTest, ExistingKeyIsReplacedWhereItStands)
{
    Put("[GENERAL]\r\nA=1\r\nB=2\r\nC=3\r\n");
    vk::WriteProfileString("GENERAL", "B", "-1", file);
    EXPECT_EQ(Get(), "[GENERAL]\r\nA=1\r\nB=-1\r\nC=3\r\n");
}

TEST_F(ProfileFileTest, ShorterValueLeavesNothingOfTheOldOneBehind)
{
    Put("[GENERAL]\r\nVEHTAG=infanterie_1_3_1_o\r\nTO=45\r\n");
    vk::WriteProfileString("GENERAL", "VEHTAG", "x", file);
    EXPECT_EQ(Get(), "[GENERAL]\r\nVEHTAG=x\r\nTO=45\r\n");
}

TEST_F(ProfileFileTest, KeyWrittenTwiceKeepsOneLineWithTheLastValue)
{
    vk::WriteProfileString("GENERAL", "TURN", "7", file);
    vk::WriteProfileString("GENERAL", "TURN", "8", file);
    EXPECT_EQ(Get(), "[GENERAL]\r\nTURN=8\r\n");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "TURN", "-1", file), "8");
}

TEST_F(ProfileFileTest, MissingSectionIsAddedAtTheEndOfTheFile)
{
    Put("[MAIN]\r\nLOK=1\r\n");
    vk::WriteProfileString("VLAG_LOK", "RES", "5", file);
    EXPECT_EQ(Get(), "[MAIN]\r\nLOK=1\r\n[VLAG_LOK]\r\nRES=5\r\n");
}

TEST_F(ProfileFileTest, NewKeyOfAnEarlierSectionStaysInThatSection)
{
    Put("[A]\r\nX=1\r\n\r\n[B]\r\nY=2\r\n");
    vk::WriteProfileString("A", "Z", "3", file);
    EXPECT_EQ(Get(), "[A]\r\nX=1\r\nZ=3\r\n\r\n[B]\r\nY=2\r\n");
}

TEST_F(ProfileFileTest, SectionAndKeyMatchWithoutRegardToCase)
{
    Put("[general]\r\nvehtag=tank_1_0_o\r\n");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "VEHTAG", "", file), "tank_1_0_o");
    EXPECT_EQ(vk::ReadProfileString("General", "VehTag", "", file), "tank_1_0_o");
    vk::WriteProfileString("GENERAL", "VEHTAG", "kanon_1_0_o", file);
    // The key keeps the spelling it had in the file; no second line appears.
    EXPECT_EQ(Get(), "[general]\r\nvehtag=kanon_1_0_o\r\n");
}

TEST_F(ProfileFileTest, LfFileIsReadAndRewrittenWithCrlf)
{
    Put("[GENERAL]\nD1=4\nD2=6\n");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "D1", "-1", file), "4");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "D2", "-1", file), "6");
    vk::WriteProfileString("GENERAL", "D1", "1", file);
    EXPECT_EQ(Get(), "[GENERAL]\r\nD1=1\r\nD2=6\r\n");
}

TEST_F(ProfileFileTest, CrlfFileIsReadWithoutTheCarriageReturn)
{
    Put("[GENERAL]\r\nVEHTAG=jeep_1_0_w\r\n");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "VEHTAG", "", file), "jeep_1_0_w");
}

TEST_F(ProfileFileTest, MissingFileGivesTheDefault)
{
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "GOOI", "7", file), "7");
    EXPECT_FALSE(fs::exists(file)); // a read never creates the file
}

TEST_F(ProfileFileTest, MissingSectionGivesTheDefault)
{
    Put("[GENERAL]\r\nD1=3\r\n");
    EXPECT_EQ(vk::ReadProfileString("GAME", "D1", "FAIL", file), "FAIL");
}

TEST_F(ProfileFileTest, MissingKeyGivesTheDefault)
{
    Put("[GENERAL]\r\nD1=3\r\n");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "D2", "-1", file), "-1");
}

TEST_F(ProfileFileTest, KeyOfAnotherSectionIsNotFound)
{
    Put("[A]\r\nK=1\r\n[B]\r\nL=2\r\n");
    EXPECT_EQ(vk::ReadProfileString("B", "K", "-1", file), "-1");
    EXPECT_EQ(vk::ReadProfileString("A", "L", "-1", file), "-1");
}

TEST_F(ProfileFileTest, EmptyValueIsAValueNotTheDefault)
{
    Put("[GENERAL]\r\nVEHTAG=\r\n");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "VEHTAG", "-1", file), "");
}

TEST_F(ProfileFileTest, ValueOf1200CharactersIsWrittenWholeAndReadAs999)
{
    std::string value;
    for (int i = 0; i < 1200; ++i)
        value += static_cast<char>('a' + i % 26);
    vk::WriteProfileString("GENERAL", "LONG", value, file);
    EXPECT_EQ(Get(), "[GENERAL]\r\nLONG=" + value + "\r\n");
    const std::string read = vk::ReadProfileString("GENERAL", "LONG", "", file);
    EXPECT_EQ(read.size(), 999u);
    EXPECT_EQ(read, value.substr(0, 999));
}

TEST_F(ProfileFileTest, DefaultIsCutTo999CharactersToo)
{
    const std::string longDefault(1200, 'x');
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "NONE", longDefault, file), std::string(999, 'x'));
}

TEST_F(ProfileFileTest, FileHoldingOnlyItsFirstKeys)
{
    // A message caught while the other side is still writing it: the last
    // line is cut off without its line end and the commit key is missing.
    Put("[GENERAL]\r\nDIRECT=1\r\nDICE=1\r\nVEH=3");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "DIRECT", "-1", file), "1");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "VEH", "-1", file), "3");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "ACT", "-1", file), "-1");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "VEHTAG", "", file), "");
}

TEST_F(ProfileFileTest, ActionRecordIsCompleteOnlyOnceItsLastKeyArrived)
{
    // The writer adds one key per write; a reader polling the commit key
    // VEHTAG sees the empty default after every write but the last, and then
    // every key at once.
    const char* keys[][2] = {{"DIRECT", "1"}, {"DICE", "3"}, {"VEH", "0"}, {"ACT", "1"},
                             {"FROM", "45"},  {"TO", "50"},  {"VEHTAG", "tank_1_2_o"}};
    for (const auto& key : keys) {
        EXPECT_EQ(vk::ReadProfileString("GENERAL", "VEHTAG", "", file), "") << "before " << key[0];
        vk::WriteProfileString("GENERAL", key[0], key[1], file);
    }
    for (const auto& key : keys)
        EXPECT_EQ(vk::ReadProfileString("GENERAL", key[0], "", file), key[1]);
}

TEST_F(ProfileFileTest, TossFileWithoutItsKeyGivesTheReadersOwnResult)
{
    // A .dNN caught before GOOI was written: read with the reader's own sum
    // as the default, it gives a tie.
    Put("");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "GOOI", "8", file), "8");
    Put("[GENERAL]\r\n");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "GOOI", "8", file), "8");
}

TEST_F(ProfileFileTest, NameWithBlanksMakesAFileNameWithBlanks)
{
    const fs::path blanks = folder / "Jan de Vries.xid";
    EXPECT_TRUE(vk::WriteProfileString("GENERAL", "USER_ID", "Jan de Vries", blanks));
    EXPECT_TRUE(fs::exists(blanks));
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "USER_ID", "", blanks), "Jan de Vries");
}

TEST_F(ProfileFileTest, EmptyFileGivesDefaultAndTakesASection)
{
    Put("");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "SPEL", "-1", file), "-1");
    vk::WriteProfileString("GENERAL", "SPEL", "Start", file);
    EXPECT_EQ(Get(), "[GENERAL]\r\nSPEL=Start\r\n");
}

TEST_F(ProfileFileTest, LastLineWithoutLineEndGetsOneOnRewrite)
{
    Put("[A]\r\nX=1");
    vk::WriteProfileString("A", "Y", "2", file);
    EXPECT_EQ(Get(), "[A]\r\nX=1\r\nY=2\r\n");
}

TEST_F(ProfileFileTest, BlanksAroundNamesAndValuesAreNotPartOfThem)
{
    Put("[ GENERAL ]\r\n D1 = 5 \r\n");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "D1", "-1", file), "5");
}

TEST_F(ProfileFileTest, ValueTextIsSingleBytesPassedThrough)
{
    const std::string text = "be\xEBindigen";
    vk::WriteProfileString("GENERAL", "TEXT", text, file);
    EXPECT_EQ(Get(), "[GENERAL]\r\nTEXT=be\xEBindigen\r\n");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "TEXT", "", file), text);
}

TEST_F(ProfileFileTest, OnlyTheFirstEqualsSignSplitsKeyAndValue)
{
    Put("[GENERAL]\r\nQ=a=b\r\n");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "Q", "", file), "a=b");
}

TEST_F(ProfileFileTest, LinesBeforeTheFirstSectionAreKept)
{
    Put("; note\r\n[GENERAL]\r\nA=1\r\n");
    vk::WriteProfileString("GENERAL", "A", "2", file);
    EXPECT_EQ(Get(), "; note\r\n[GENERAL]\r\nA=2\r\n");
}

TEST_F(ProfileFileTest, WriteIntoAMissingFolderFailsQuietly)
{
    const fs::path lost = folder / "gone" / "x.act";
    EXPECT_FALSE(vk::WriteProfileString("GENERAL", "D1", "1", lost));
    EXPECT_FALSE(fs::exists(lost));
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "D1", "-1", lost), "-1");
}

} // namespace
