// Message files are written by somebody else: whatever lies in the shared
// folder, a read gives a value of at most 999 characters or the default.

#include "link/ProfileFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;

class BadInputTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        folder = fs::temp_directory_path() / ("vk_badinput_" + std::string(info->name()));
        fs::remove_all(folder);
        fs::create_directories(folder);
        file = folder / "bert.xid";
    }
    void TearDown() override { fs::remove_all(folder); }

    void Put(const std::string& bytes) const
    {
        std::ofstream out(file, std::ios::binary | std::ios::trunc);
        out << bytes;
    }
    std::string Read(const char* key, const char* def = "-1") const
    {
        return vk::ReadProfileString("GENERAL", key, def, file);
    }

    fs::path folder;
    fs::path file;
};

TEST_F(BadInputTest, KeyWithoutEqualsSignIsNoKey)
{
    Put("[GENERAL]\r\nUSER_ID\r\nOTHER=5\r\n");
    EXPECT_EQ(Read("USER_ID"), "-1");
    EXPECT_EQ(Read("OTHER"), "5");
}

TEST_F(BadInputTest, BinaryGarbageGivesTheDefault)
{
    std::string garbage;
    for (int i = 0; i < 70000; ++i)
        garbage.push_back(static_cast<char>((i * 131 + 7) % 256));
    Put(garbage);
    EXPECT_EQ(Read("USER_ID"), "-1");
}

TEST_F(BadInputTest, NulBytesInAValueArePassedThroughUpTo999)
{
    Put(std::string("[GENERAL]\r\nUSER_ID=ab\0cd\r\n", 26));
    EXPECT_EQ(Read("USER_ID"), std::string("ab\0cd", 5));
}

TEST_F(BadInputTest, SeveralMegabytesOnOneLineGiveAtMost999Characters)
{
    Put("[GENERAL]\r\nUSER_ID=" + std::string(6 * 1024 * 1024, 'x'));
    const std::string value = Read("USER_ID");
    // The line is too long to be read whole; what comes back is never more than the buffer holds.
    EXPECT_LE(value.size(), 999u);
}

TEST_F(BadInputTest, KeyAfterALongLineWithinTheReadBoundIsStillFound)
{
    Put("[GENERAL]\r\nJUNK=" + std::string(60 * 1024, 'y') + "\r\nUSER_ID=0A1B2C3D4E5F\r\n");
    EXPECT_EQ(Read("USER_ID"), "0A1B2C3D4E5F");
}

TEST_F(BadInputTest, KeyBeyondTheReadBoundIsNotLookedAt)
{
    // Only the first 64 KiB of a file are read; no message comes near that.
    Put("[GENERAL]\r\nJUNK=" + std::string(3 * 1024 * 1024, 'y') + "\r\nUSER_ID=0A1B2C3D4E5F\r\n");
    EXPECT_EQ(Read("USER_ID"), "-1");
}

TEST_F(BadInputTest, LongValueIsCutTo999Characters)
{
    Put("[GENERAL]\r\nUSER_ID=" + std::string(2000, 'z') + "\r\n");
    EXPECT_EQ(Read("USER_ID"), std::string(999, 'z'));
}

TEST_F(BadInputTest, DirectoryNamedLikeAMessageGivesTheDefault)
{
    fs::create_directories(folder / "anna.xid");
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "USER_ID", "-1", folder / "anna.xid"), "-1");
}

TEST_F(BadInputTest, LoneCarriageReturnsDoNotEndLines)
{
    // Only LF ends a line; CR alone is part of the line.
    Put("[GENERAL]\rUSER_ID=1\r\n");
    EXPECT_EQ(Read("USER_ID"), "-1");
}

TEST_F(BadInputTest, FileThatVanishedGivesTheDefault)
{
    EXPECT_EQ(vk::ReadProfileString("GENERAL", "USER_ID", "-1", folder / "gone" / "bert.xid"), "-1");
}

} // namespace
