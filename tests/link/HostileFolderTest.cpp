// The shared folder is written by strangers: links, pipes, sockets, devices,
// directories, huge files and odd names under the names of messages. None of
// them may make a read block, grow without bound or reach outside the folder,
// and a write replaces whatever stands under its name.

#include "link/FolderEntries.h"
#include "link/PlainFiles.h"
#include "link/ProfileFile.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;

const std::string kOutsideText = "[GENERAL]\r\nUSER_ID=OUTSIDE\r\n";

class HostileFolderTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        root = fs::temp_directory_path() / ("vk_hostile_" + std::string(info->name()) + "_" +
                                            std::to_string(::getpid()));
        fs::remove_all(root);
        shared = root / "shared";
        outside = root / "outside";
        fs::create_directories(shared);
        fs::create_directories(outside);
        Put(outside / "target.txt", kOutsideText);
        vk::SetRefusedEntryHandler([this](const std::string& path, const std::string& reason) {
            refused.push_back(path + ": " + reason);
        });
    }
    void TearDown() override
    {
        vk::SetRefusedEntryHandler(nullptr);
        fs::remove_all(root);
    }

    static void Put(const fs::path& path, const std::string& bytes)
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out << bytes;
    }
    static std::string Get(const fs::path& path)
    {
        std::ifstream in(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    std::string Message(const char* name) const { return (shared / name).string(); }
    std::string ReadId(const char* name) const
    {
        return vk::ReadProfileString("GENERAL", "USER_ID", "-1", Message(name));
    }
    bool WriteId(const char* name, const char* value) const
    {
        return vk::WriteProfileString("GENERAL", "USER_ID", value, Message(name));
    }
    void ExpectWrittenFile(const char* name) const
    {
        EXPECT_EQ(vk::TypeOfEntry(Message(name)), vk::EntryType::RegularFile);
        EXPECT_EQ(Get(Message(name)), "[GENERAL]\r\nUSER_ID=0A1B2C3D4E5F\r\n");
    }
    void ExpectOutsideUntouched() const
    {
        EXPECT_EQ(Get(outside / "target.txt"), kOutsideText);
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(outside))
            names.push_back(entry.path().filename().string());
        EXPECT_EQ(names, std::vector<std::string>{"target.txt"});
    }
    std::vector<std::string> SharedNames() const
    {
        std::vector<std::string> names;
        for (const vk::FolderEntry& entry : vk::ListFolder(shared.string()))
            names.push_back(entry.Name);
        std::sort(names.begin(), names.end());
        return names;
    }

    fs::path root;
    fs::path shared;
    fs::path outside;
    std::vector<std::string> refused;
};

TEST_F(HostileFolderTest, LinkToAFileOutsideReadsAsMissingAndIsReported)
{
    fs::create_symlink(outside / "target.txt", shared / "bert.xid");
    EXPECT_EQ(vk::TypeOfEntry(Message("bert.xid")), vk::EntryType::SymbolicLink);
    EXPECT_EQ(ReadId("bert.xid"), "-1");
    EXPECT_EQ(vk::ReadPlainFile(Message("bert.xid")).Outcome, vk::ReadOutcome::Refused);
    ASSERT_FALSE(refused.empty());
    EXPECT_EQ(refused.front(), Message("bert.xid") + ": symbolic link");
}

TEST_F(HostileFolderTest, WriteReplacesALinkAndLeavesItsTargetAlone)
{
    fs::create_symlink(outside / "target.txt", shared / "anna.xid");
    const auto before = fs::last_write_time(outside / "target.txt");
    ASSERT_TRUE(WriteId("anna.xid", "0A1B2C3D4E5F"));
    ExpectWrittenFile("anna.xid");
    ExpectOutsideUntouched();
    EXPECT_EQ(fs::last_write_time(outside / "target.txt"), before);
}

TEST_F(HostileFolderTest, DanglingLinkOutOfTheFolderCreatesNothingOutside)
{
    fs::create_symlink(outside / "created.txt", shared / "anna.xid");
    EXPECT_EQ(ReadId("anna.xid"), "-1");
    ASSERT_TRUE(WriteId("anna.xid", "0A1B2C3D4E5F"));
    ExpectWrittenFile("anna.xid");
    EXPECT_FALSE(fs::exists(outside / "created.txt"));
    ExpectOutsideUntouched();
}

TEST_F(HostileFolderTest, LinkLoopReadsAsMissingAndIsReplacedByAWrite)
{
    fs::create_symlink(shared / "b.xid", shared / "anna.xid");
    fs::create_symlink(shared / "anna.xid", shared / "b.xid");
    EXPECT_EQ(ReadId("anna.xid"), "-1");
    ASSERT_TRUE(WriteId("anna.xid", "0A1B2C3D4E5F"));
    ExpectWrittenFile("anna.xid");
    EXPECT_EQ(vk::TypeOfEntry(Message("b.xid")), vk::EntryType::SymbolicLink);
}

TEST_F(HostileFolderTest, LinksToZeroDeviceAndToAPipeNeitherBlockNorGrow)
{
    ASSERT_EQ(::mkfifo((outside / "pipe").c_str(), 0666), 0);
    fs::create_symlink("/dev/zero", shared / "bert.xid");
    fs::create_symlink(outside / "pipe", shared / "bert.rqs");
    EXPECT_EQ(ReadId("bert.xid"), "-1");
    EXPECT_EQ(ReadId("bert.rqs"), "-1");
    EXPECT_TRUE(vk::ReadPlainFile(Message("bert.xid")).Bytes.empty());
    ASSERT_TRUE(WriteId("bert.xid", "0A1B2C3D4E5F"));
    ExpectWrittenFile("bert.xid");
}

TEST_F(HostileFolderTest, PipeUnderAMessageNameIsNotReadAndIsReplacedByAWrite)
{
    ASSERT_EQ(::mkfifo(Message("anna.xid").c_str(), 0666), 0);
    EXPECT_EQ(vk::TypeOfEntry(Message("anna.xid")), vk::EntryType::NamedPipe);
    EXPECT_EQ(ReadId("anna.xid"), "-1");
    ASSERT_TRUE(WriteId("anna.xid", "0A1B2C3D4E5F"));
    ExpectWrittenFile("anna.xid");
}

TEST_F(HostileFolderTest, SocketUnderAMessageNameIsNotRead)
{
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(fd, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = Message("bert.xid");
    ASSERT_LT(path.size(), sizeof(address.sun_path));
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    ASSERT_EQ(::bind(fd, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    EXPECT_EQ(vk::TypeOfEntry(path), vk::EntryType::Socket);
    EXPECT_EQ(ReadId("bert.xid"), "-1");
    ::close(fd);
}

TEST_F(HostileFolderTest, DeviceUnderAMessageNameIsNotRead)
{
    if (::mknod(Message("bert.xid").c_str(), S_IFCHR | 0666, makedev(1, 5)) != 0)
        GTEST_SKIP() << "no device nodes can be made here: " << std::strerror(errno);
    EXPECT_EQ(vk::TypeOfEntry(Message("bert.xid")), vk::EntryType::Device);
    EXPECT_EQ(ReadId("bert.xid"), "-1");
    EXPECT_EQ(vk::ReadPlainFile(Message("bert.xid")).Outcome, vk::ReadOutcome::Refused);
}

TEST_F(HostileFolderTest, DirectoryUnderAMessageNameIsNeitherReadNorReplaced)
{
    fs::create_directories(shared / "anna.xid");
    Put(shared / "anna.xid" / "inner", "keep");
    EXPECT_EQ(ReadId("anna.xid"), "-1");
    EXPECT_FALSE(WriteId("anna.xid", "0A1B2C3D4E5F"));
    EXPECT_EQ(Get(shared / "anna.xid" / "inner"), "keep");
    EXPECT_EQ(SharedNames(), std::vector<std::string>{"anna.xid"}) << "no temporary is left behind";
}

TEST_F(HostileFolderTest, HundredMegabyteFileIsReadOnlyUpToTheBound)
{
    const fs::path big = shared / "bert.xid";
    Put(big, "[GENERAL]\r\nUSER_ID=0A1B2C3D4E5F\r\n");
    fs::resize_file(big, 100u * 1024 * 1024);
    const vk::PlainFileContent content = vk::ReadPlainFile(big.string());
    EXPECT_EQ(content.Outcome, vk::ReadOutcome::Read);
    EXPECT_TRUE(content.Cut);
    EXPECT_EQ(content.Bytes.size(), vk::PlainFileReadBound);
    EXPECT_LE(content.Bytes.capacity(), vk::PlainFileReadBound + 64) << "memory in proportion to the bound";
    EXPECT_EQ(ReadId("bert.xid"), "0A1B2C3D4E5F");
}

TEST_F(HostileFolderTest, FileWithoutReadPermissionReadsAsMissingAndIsReplaced)
{
    // As root every permission is overridden, so the check runs in a child
    // that has become an ordinary user without capabilities.
    fs::permissions(root, fs::perms::all);
    fs::permissions(shared, fs::perms::all);
    Put(shared / "anna.xid", "[GENERAL]\r\nUSER_ID=SECRET\r\n");
    fs::permissions(shared / "anna.xid", fs::perms::none);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        if (::getuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
            ::_exit(10);
        if (vk::ReadPlainFile(Message("anna.xid")).Outcome != vk::ReadOutcome::Unreadable)
            ::_exit(11);
        if (ReadId("anna.xid") != "-1")
            ::_exit(12);
        if (!WriteId("anna.xid", "0A1B2C3D4E5F"))
            ::_exit(13);
        ::_exit(ReadId("anna.xid") == "0A1B2C3D4E5F" ? 0 : 14);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << "10 no user switch, 11 opened, 12 read, 13 not written, 14 not read back";
}

TEST_F(HostileFolderTest, FileSwappedForALinkWhileBeingReadNeverShowsTheTarget)
{
    // A second thread keeps swapping the message for a link to a file outside;
    // every read sees the message or nothing, never what the link points at.
    Put(shared / "file.tmp", "[GENERAL]\r\nUSER_ID=INSIDE\r\n");
    std::atomic<bool> stop{false};
    std::thread swapper([&] {
        const std::string name = Message("bert.xid");
        const std::string link = Message("link.tmp");
        const std::string file = Message("copy.tmp");
        const std::string target = (outside / "target.txt").string();
        while (!stop) {
            ::symlink(target.c_str(), link.c_str());
            ::rename(link.c_str(), name.c_str());
            ::link(Message("file.tmp").c_str(), file.c_str());
            ::rename(file.c_str(), name.c_str());
        }
    });
    int inside = 0;
    int missing = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::string id = ReadId("bert.xid");
        ASSERT_NE(id, "OUTSIDE");
        (id == "INSIDE" ? inside : missing) += 1;
    }
    stop = true;
    swapper.join();
    EXPECT_GT(inside, 0);
    EXPECT_GT(missing, 0);
    ExpectOutsideUntouched();
}

TEST_F(HostileFolderTest, ListingTellsEntriesApartWithoutFollowingLinks)
{
    Put(shared / "a.xid", "x");
    fs::create_directories(shared / "b.xid");
    fs::create_symlink(shared / "a.xid", shared / "c.xid");
    fs::create_symlink(outside, shared / "d.xid");
    ASSERT_EQ(::mkfifo(Message("e.xid").c_str(), 0666), 0);
    std::vector<std::pair<std::string, vk::EntryType>> seen;
    for (const vk::FolderEntry& entry : vk::ListFolder(shared.string()))
        seen.emplace_back(entry.Name, entry.Type);
    std::sort(seen.begin(), seen.end());
    const std::vector<std::pair<std::string, vk::EntryType>> expected{
        {"a.xid", vk::EntryType::RegularFile}, {"b.xid", vk::EntryType::Directory},
        {"c.xid", vk::EntryType::SymbolicLink}, {"d.xid", vk::EntryType::SymbolicLink},
        {"e.xid", vk::EntryType::NamedPipe}};
    EXPECT_EQ(seen, expected);
    EXPECT_TRUE(vk::ListFolder((shared / "missing").string()).empty());
}

TEST_F(HostileFolderTest, NamesThatCouldLeaveTheFolderOrTheLineAreUnsafe)
{
    EXPECT_EQ(vk::UnsafeNameReason("bert.xid"), "");
    EXPECT_EQ(vk::UnsafeNameReason("Jan de Wit.xid"), "");
    EXPECT_EQ(vk::UnsafeNameReason(std::string(246, 'n') + ".xid"), "") << "a long name is still a name";
    EXPECT_EQ(vk::UnsafeNameReason("Jos\xc3\xa9.xid"), "");
    EXPECT_EQ(vk::UnsafeNameReason("a\nb.xid"), "name with a control character");
    EXPECT_EQ(vk::UnsafeNameReason("a\\b.xid"), "name with a path separator");
    EXPECT_EQ(vk::UnsafeNameReason("../x.xid"), "name with a path separator");
    EXPECT_EQ(vk::UnsafeNameReason("...xid"), "name with \"..\"");
    EXPECT_EQ(vk::UnsafeNameReason("\xff.xid"), "name that is not UTF-8");
    EXPECT_EQ(vk::UnsafeNameReason("\xc0\xaf.xid"), "name that is not UTF-8") << "an overlong slash";
    EXPECT_EQ(vk::UnsafeNameReason("\xed\xa0\x80.xid"), "name that is not UTF-8") << "a surrogate";
    EXPECT_EQ(vk::UnsafeNameReason("Jos\xc3"), "name that is not UTF-8") << "cut in the middle";
}

TEST_F(HostileFolderTest, WritesLeaveNoTemporaryBehind)
{
    for (int i = 0; i < 20; ++i)
        ASSERT_TRUE(vk::WriteProfileString("GENERAL", "K" + std::to_string(i), "v", Message("anna.act")));
    EXPECT_EQ(SharedNames(), std::vector<std::string>{"anna.act"});
    EXPECT_FALSE(vk::WriteProfileString("GENERAL", "K", "v", (shared / "missing" / "anna.act").string()));
    EXPECT_EQ(SharedNames(), std::vector<std::string>{"anna.act"});
}

TEST_F(HostileFolderTest, TemporariesAreKnownByWriterAndForm)
{
    EXPECT_TRUE(vk::IsTemporaryOf(".anna.xid.vk0a1b2c3d.tmp", "anna"));
    EXPECT_TRUE(vk::IsTemporaryOf(".anna.act.vkffffffff.tmp", "anna"));
    EXPECT_FALSE(vk::IsTemporaryOf(".bert.xid.vk0a1b2c3d.tmp", "anna"));
    EXPECT_FALSE(vk::IsTemporaryOf(".anna.xid.vk0A1B2C3D.tmp", "anna"));
    EXPECT_FALSE(vk::IsTemporaryOf(".anna.xid.vk0a1b2c.tmp", "anna"));
    EXPECT_FALSE(vk::IsTemporaryOf("anna.xid.vk0a1b2c3d.tmp", "anna"));
    EXPECT_FALSE(vk::IsTemporaryOf(".syncthing.anna.xid.tmp", "anna"));
    EXPECT_FALSE(vk::IsTemporaryOf(".anna.xid.vk0a1b2c3d.tmp", ""));
}

TEST_F(HostileFolderTest, RemovingAnEntryRemovesALinkNotItsTarget)
{
    fs::create_symlink(outside / "target.txt", shared / "bert.xid");
    fs::create_directories(shared / "dir.xid");
    EXPECT_TRUE(vk::RemoveEntry(Message("bert.xid")));
    EXPECT_FALSE(vk::RemoveEntry(Message("dir.xid")));
    EXPECT_TRUE(vk::RemoveEntry(Message("gone.xid"))) << "a missing entry is gone";
    EXPECT_EQ(SharedNames(), std::vector<std::string>{"dir.xid"});
    ExpectOutsideUntouched();
}

TEST_F(HostileFolderTest, WildcardsMatchWithoutRegardToCase)
{
    EXPECT_TRUE(vk::NameMatches("bert.xid", "*.xid"));
    EXPECT_TRUE(vk::NameMatches("BERT.XID", "*.xid"));
    EXPECT_TRUE(vk::NameMatches("anna.d07", "*.d??"));
    EXPECT_FALSE(vk::NameMatches("anna.d7", "*.d??"));
    EXPECT_TRUE(vk::NameMatches("a", "*"));
    EXPECT_FALSE(vk::NameMatches("bert.xid.part", "*.xid"));
}

} // namespace
