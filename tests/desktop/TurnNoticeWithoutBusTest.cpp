// The turn notice without a session bus: argument "dead" (an address where
// nothing listens) or "unset" (no address, no X display to start a bus for,
// an empty runtime folder).

#include "NoticeFixture.h"

#include <QApplication>
#include <QDBusConnection>
#include <QTest>

using vk::test::BusMessages;
using vk::test::kPromptMs;
using vk::test::MessageCapture;
using vk::test::MsToTell;
using vk::test::NoticeTest;

TEST_F(NoticeTest, WithoutSessionBusNothingBlocksAndNothingIsSaid)
{
    MessageCapture capture;
    for (const vk::Notice notice : {vk::Notice::YourTurn, vk::Notice::Invitation, vk::Notice::Question})
        EXPECT_LT(MsToTell(*window_, notice), kPromptMs);
    QTest::qWait(500);
    EXPECT_FALSE(QDBusConnection::sessionBus().isConnected());
    EXPECT_TRUE(BusMessages().isEmpty()) << BusMessages().join(QLatin1Char('\n')).toStdString();
}

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QByteArray mode = argc > 1 ? QByteArray(argv[1]) : QByteArray("dead");
    QTemporaryDir runtime;
    qunsetenv("DISPLAY");
    qputenv("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
    if (mode == "unset")
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    else
        qputenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + runtime.path() + QStringLiteral("/no-bus")).toLocal8Bit());
    int result = 0;
    {
        QApplication app(argc, argv);
        result = RUN_ALL_TESTS();
    }
    return result;
}

