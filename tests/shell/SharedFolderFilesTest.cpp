#include "link/SharedFolderFiles.h"

#include "shell/Global.h"
#include "shell/RunLog.h"
#include "ui/WindowValues.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <cstdio>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>

namespace {

struct App {
    App()
    {
        static int argc = 1;
        static char name[] = "shell_tests";
        static char* argv[] = {name, nullptr};
        if (!QCoreApplication::instance())
            new QCoreApplication(argc, argv);
    }
};

class SharedFolderFilesTest : public ::testing::Test {
protected:
    void Touch(const QString& name, const QByteArray& text = "[GENERAL]\r\nUSER_ID=0A0A0A0A0A0A\r\n") const
    {
        QFile file(folder.path() + QLatin1Char('/') + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text);
    }
    bool Exists(const QString& name) const { return QFile::exists(folder.path() + QLatin1Char('/') + name); }
    QString Path(const QString& name) const { return folder.path() + QLatin1Char('/') + name; }
    std::string Bytes(const char* name) const { return QFile::encodeName(folder.path()).toStdString() + "/" + name; }
    // An entry whose name or type Qt can't make: a FIFO, or a file with a raw byte name.
    void Fifo(const QString& name) const { ASSERT_EQ(::mkfifo(QFile::encodeName(Path(name)).constData(), 0666), 0); }
    void RawFile(const char* name) const
    {
        FILE* file = std::fopen(Bytes(name).c_str(), "wb");
        ASSERT_NE(file, nullptr);
        std::fputs("[GENERAL]\r\nUSER_ID=0B0B0B0B0B0B\r\n", file);
        std::fclose(file);
    }
    bool RawExists(const char* name) const
    {
        struct stat info {};
        return ::lstat(Bytes(name).c_str(), &info) == 0;
    }

    App app;
    QTemporaryDir folder;
};

TEST_F(SharedFolderFilesTest, MessagePathIsFolderWriterExtension)
{
    EXPECT_EQ(vk::MessagePath(QStringLiteral("/tmp/m"), QStringLiteral("Jan de Wit"), QStringLiteral(".xid")),
              QStringLiteral("/tmp/m/Jan de Wit.xid"));
}

TEST_F(SharedFolderFilesTest, KeysAreWrittenInTheOrderOfTheKindWithCrlf)
{
    const QString path = vk::MessagePath(folder.path(), QStringLiteral("anna"), QStringLiteral(".wrp"));
    vk::SendMessage(path, vk::MessageKindId::DiceResult, {QStringLiteral("3"), QStringLiteral("5")});
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("[GENERAL]\r\nD1=3\r\nD2=5\r\n"));
}

TEST_F(SharedFolderFilesTest, ListingSkipsServiceFilesAndDirectories)
{
    Touch(QStringLiteral("bert.xid"));
    Touch(QStringLiteral(".syncthing.carla.xid.tmp"));
    Touch(QStringLiteral("bert.sync-conflict-20261121-101010-ABCDEFG.xid"));
    Touch(QStringLiteral("bert (conflicted copy 2026-11-21).xid"));
    Touch(QStringLiteral("anna.rqs"));
    QDir(folder.path()).mkdir(QStringLiteral("dirk.xid"));
    EXPECT_EQ(vk::ListMatching(folder.path(), QStringLiteral("*.xid")), QStringList{QStringLiteral("bert.xid")});
}

TEST_F(SharedFolderFilesTest, FolderThatCannotBeReadLooksEmpty)
{
    EXPECT_TRUE(vk::ListMatching(folder.path() + QStringLiteral("/weg"), QStringLiteral("*.xid")).isEmpty());
    EXPECT_TRUE(vk::ListMatching(QString(), QStringLiteral("*.xid")).isEmpty());
    EXPECT_FALSE(vk::FileExists(folder.path() + QStringLiteral("/weg/anna.xid")));
}

TEST_F(SharedFolderFilesTest, DirectoryNamedLikeAMessageIsNoMessage)
{
    QDir(folder.path()).mkdir(QStringLiteral("anna.xid"));
    EXPECT_FALSE(vk::FileExists(folder.path() + QStringLiteral("/anna.xid")));
}

TEST_F(SharedFolderFilesTest, LinkIsNoMessageEvenWhenItPointsAtOne)
{
    QTemporaryDir elsewhere;
    QFile target(elsewhere.path() + QStringLiteral("/bert.xid"));
    ASSERT_TRUE(target.open(QIODevice::WriteOnly));
    target.write("[GENERAL]\r\nUSER_ID=0B0B0B0B0B0B\r\n");
    target.close();
    ASSERT_TRUE(QFile::link(target.fileName(), Path(QStringLiteral("bert.xid"))));
    EXPECT_FALSE(vk::FileExists(Path(QStringLiteral("bert.xid"))));
    EXPECT_EQ(vk::ReadMessageKey(Path(QStringLiteral("bert.xid")), vk::MessageKindId::Presence, 0, QStringLiteral("-1")),
              QStringLiteral("-1"));
    EXPECT_TRUE(vk::ListMatching(folder.path(), QStringLiteral("*.xid")).isEmpty());
}

TEST_F(SharedFolderFilesTest, ScanSkipsPipesLinksAndNamesThatAreNoPlayersName)
{
    Fifo(QStringLiteral("pipe.xid"));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), Path(QStringLiteral("zero.xid"))));
    RawFile("new\nline.xid");
    RawFile("back\\slash.xid");
    RawFile("dots..xid");
    RawFile("\xff\xfe.xid");
    const std::string longName = std::string(246, 'n') + ".xid";
    RawFile(longName.c_str());
    Touch(QStringLiteral("bert.xid"));
    QStringList found = vk::ListMatching(folder.path(), QStringLiteral("*.xid"));
    found.sort();
    EXPECT_EQ(found, (QStringList{QStringLiteral("bert.xid"), QString::fromStdString(longName)}));
    // Names that Qt can't decode are removed byte for byte, so the folder can go.
    vk::DeleteMatching(folder.path(), QStringLiteral("*"));
}

TEST_F(SharedFolderFilesTest, ClearingRemovesLinksAndJunkButNeverALinksTarget)
{
    QTemporaryDir elsewhere;
    const QString target = elsewhere.path() + QStringLiteral("/keep.txt");
    QFile file(target);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("keep");
    file.close();
    ASSERT_TRUE(QFile::link(target, Path(QStringLiteral("bert.xid"))));
    ASSERT_TRUE(QFile::link(elsewhere.path(), Path(QStringLiteral("dir.act"))));
    ASSERT_TRUE(QFile::link(elsewhere.path() + QStringLiteral("/new.txt"), Path(QStringLiteral("dangling.goo"))));
    Fifo(QStringLiteral("pipe.rqs"));
    RawFile("new\nline.xid");
    RawFile("\xff.xid");
    Touch(QStringLiteral("anna.xid"));
    Touch(QStringLiteral(".stfolder"));
    QDir(folder.path()).mkdir(QStringLiteral("sub.xid"));
    vk::DeleteMatching(folder.path(), QStringLiteral("*"));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
              (QStringList{QStringLiteral(".stfolder"), QStringLiteral("sub.xid")}));
    EXPECT_FALSE(RawExists("new\nline.xid"));
    EXPECT_FALSE(RawExists("\xff.xid"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("keep"));
    EXPECT_EQ(QDir(elsewhere.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{QStringLiteral("keep.txt")});
}

TEST_F(SharedFolderFilesTest, OwnTemporariesAreRemovedOthersStay)
{
    Touch(QStringLiteral(".anna.xid.vk0a1b2c3d.tmp"));
    Touch(QStringLiteral(".bert.xid.vk0a1b2c3d.tmp"));
    Touch(QStringLiteral(".anna.xid.partial"));
    vk::RemoveOwnTemporaries(folder.path(), QStringLiteral("anna"));
    EXPECT_FALSE(Exists(QStringLiteral(".anna.xid.vk0a1b2c3d.tmp")));
    EXPECT_TRUE(Exists(QStringLiteral(".bert.xid.vk0a1b2c3d.tmp")));
    EXPECT_TRUE(Exists(QStringLiteral(".anna.xid.partial")));
}

TEST_F(SharedFolderFilesTest, DeleteUntilGoneEndsForALinkAndForADirectory)
{
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), Path(QStringLiteral("bert.xid"))));
    vk::DeleteUntilGone(Path(QStringLiteral("bert.xid")));
    EXPECT_FALSE(QFileInfo(Path(QStringLiteral("bert.xid"))).isSymLink());
    QDir(folder.path()).mkdir(QStringLiteral("bert.rqs"));
    vk::DeleteUntilGone(Path(QStringLiteral("bert.rqs")));
    EXPECT_TRUE(QFileInfo(Path(QStringLiteral("bert.rqs"))).isDir());
}

TEST_F(SharedFolderFilesTest, RefusedEntryIsLoggedOncePerNameAndRun)
{
    vk::GlobalValues& g = vk::Global();
    g.ExtUsersCount = 1;
    g.Folder = QStringList{QString(), folder.path()};
    QTemporaryDir logFolder;
    const QString log = logFolder.path() + QStringLiteral("/run.log");
    vk::OpenRunLog(log);
    vk::LogRefusedEntries();
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), Path(QStringLiteral("bert.xid"))));
    RawFile("odd\nname.xid");
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(vk::FileExists(Path(QStringLiteral("bert.xid"))));
        vk::ListMatching(folder.path(), QStringLiteral("*.xid"));
    }
    vk::CloseRunLog();
    g.ExtUsersCount = 0;
    g.Folder = QStringList{QString()};
    QFile file(log);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n')).filter(QStringLiteral("ignoring"));
    EXPECT_EQ(lines, (QStringList{QStringLiteral("ignoring bert.xid in shared folder: symbolic link"),
                                  QStringLiteral("ignoring odd\\x0aname.xid in shared folder: name with a control character")}));
}

TEST_F(SharedFolderFilesTest, DeleteMatchingLeavesOtherKindsAndServiceFiles)
{
    Touch(QStringLiteral("anna.xid"));
    Touch(QStringLiteral("bert.xid"));
    Touch(QStringLiteral("anna.goo"));
    Touch(QStringLiteral(".stfolder"));
    vk::DeleteMatching(folder.path(), QStringLiteral("*.xid"));
    EXPECT_FALSE(Exists(QStringLiteral("anna.xid")));
    EXPECT_FALSE(Exists(QStringLiteral("bert.xid")));
    EXPECT_TRUE(Exists(QStringLiteral("anna.goo")));
    EXPECT_TRUE(Exists(QStringLiteral(".stfolder")));
}

TEST_F(SharedFolderFilesTest, DeleteUntilGoneRemovesTheFile)
{
    Touch(QStringLiteral("bert.rqs"));
    vk::DeleteUntilGone(folder.path() + QStringLiteral("/bert.rqs"));
    EXPECT_FALSE(Exists(QStringLiteral("bert.rqs")));
    // A file that isn't there ends the loop at once.
    vk::DeleteUntilGone(folder.path() + QStringLiteral("/bert.rqs"));
}

TEST_F(SharedFolderFilesTest, WaitForConsumedHoldsInputLockUntilTheFileIsGone)
{
    Touch(QStringLiteral("anna.act"));
    vk::WindowValues values;
    values.LastSentFile = folder.path() + QStringLiteral("/anna.act");
    bool lockedWhileWaiting = false;
    std::thread reader([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
        lockedWhileWaiting = values.InputLock;
        QFile::remove(values.LastSentFile);
    });
    vk::WaitForConsumed(values);
    reader.join();
    EXPECT_TRUE(lockedWhileWaiting);
    EXPECT_FALSE(values.InputLock);
}

TEST_F(SharedFolderFilesTest, PumpUntilSleepsBetweenTestsInsteadOfSpinning)
{
    vk::GlobalValues& g = vk::Global();
    g.ExtUsersCount = 1;
    g.Folder = QStringList{QString(), folder.path()};
    vk::WatchSharedFolders();

    const QString path = folder.path() + QStringLiteral("/bert.goo");
    std::thread writer([this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        Touch(QStringLiteral("bert.goo"), "[GENERAL]\r\nSPEL=Start\r\n");
    });
    int tests = 0;
    vk::PumpUntil([&] {
        ++tests;
        return vk::FileExists(path);
    });
    writer.join();
    // A spinning loop would test many thousands of times in 300 ms; the
    // watcher and the slow poll wake it a handful of times.
    EXPECT_LT(tests, 30);
    g.ExtUsersCount = 0;
    g.Folder = QStringList{QString()};
    vk::WatchSharedFolders();
}

} // namespace
