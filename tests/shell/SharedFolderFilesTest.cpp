#include "link/SharedFolderFiles.h"

#include "shell/Global.h"
#include "ui/WindowValues.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
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
