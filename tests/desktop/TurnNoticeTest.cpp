// The turn notice in-process on a private session bus: a dbus-daemon of the
// test's own, with a small fake notification service on it that this process
// registers on a connection of its own, receives the Notify calls of
// TellPlayer.

#include "NoticeFixture.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <cstdio>

using vk::test::BusMessages;
using vk::test::kPromptMs;
using vk::test::MessageCapture;
using vk::test::MsToTell;
using vk::test::NoticeTest;

TEST(TurnNoticeTexts, DutchSummaryOfEveryNotice)
{
    EXPECT_EQ(vk::NoticeSummary(vk::Notice::YourTurn), QStringLiteral("Valkenhorn: u bent aan de beurt."));
    EXPECT_EQ(vk::NoticeSummary(vk::Notice::Invitation), QStringLiteral("Valkenhorn: u ontving een uitnodiging."));
    EXPECT_EQ(vk::NoticeSummary(vk::Notice::Question), QStringLiteral("Valkenhorn: uw tegenspeler vraagt iets."));
    for (const vk::Notice notice : {vk::Notice::YourTurn, vk::Notice::Invitation, vk::Notice::Question})
        EXPECT_FALSE(vk::NoticeBody(notice).isEmpty());
}

// One Notify call as the service received it.
struct NotifyCall {
    QString AppName;
    uint ReplacesId = 0;
    QString AppIcon;
    QString Summary;
    QString Body;
    QStringList Actions;
    QVariantMap Hints;
    int ExpireTimeout = 0;
};

// The fake notification service.
class FakeNotifications : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QList<NotifyCall> Calls;
    QList<uint> Given;

public slots:
    uint Notify(const QString& app_name, uint replaces_id, const QString& app_icon, const QString& summary,
                const QString& body, const QStringList& actions, const QVariantMap& hints, int expire_timeout)
    {
        Calls << NotifyCall{app_name, replaces_id, app_icon, summary, body, actions, hints, expire_timeout};
        const uint id = replaces_id != 0 ? replaces_id : next_++;
        Given << id;
        return id;
    }
    QStringList GetCapabilities() { return {QStringLiteral("body")}; }
    void CloseNotification(uint) {}

private:
    uint next_ = 41;
};

namespace {

QString busAddress;

// A dbus-daemon of the test's own, with no service files: nothing on it is
// started on demand.
class PrivateBus {
public:
    bool Start()
    {
        if (!folder_.isValid())
            return false;
        const QString config = folder_.filePath(QStringLiteral("session.conf"));
        QFile file(config);
        if (!file.open(QIODevice::WriteOnly))
            return false;
        file.write(QStringLiteral(
                       "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
                       " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
                       "<busconfig>\n"
                       "  <type>session</type>\n"
                       "  <listen>unix:path=%1</listen>\n"
                       "  <policy context=\"default\">\n"
                       "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
                       "    <allow eavesdrop=\"true\"/>\n"
                       "    <allow own=\"*\"/>\n"
                       "  </policy>\n"
                       "</busconfig>\n")
                       .arg(folder_.filePath(QStringLiteral("bus")))
                       .toUtf8());
        file.close();
        daemon_.setStandardErrorFile(QProcess::nullDevice());
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--config-file=") + config, QStringLiteral("--nofork"),
                       QStringLiteral("--print-address")});
        if (!daemon_.waitForStarted(10000))
            return false;
        while (!daemon_.canReadLine())
            if (!daemon_.waitForReadyRead(10000))
                return false;
        Address = QString::fromUtf8(daemon_.readLine()).trimmed();
        return !Address.isEmpty();
    }
    ~PrivateBus()
    {
        if (daemon_.state() != QProcess::NotRunning) {
            daemon_.terminate();
            if (!daemon_.waitForFinished(5000)) {
                daemon_.kill();
                daemon_.waitForFinished(5000);
            }
        }
    }
    QString Address;

private:
    QTemporaryDir folder_;
    QProcess daemon_;
};

class NoticeOnBusTest : public NoticeTest {
protected:
    void SetUp() override
    {
        NoticeTest::SetUp();
        service_ = std::make_unique<FakeNotifications>();
        ASSERT_TRUE(ServiceBus().isConnected()) << busAddress.toStdString();
        ASSERT_TRUE(ServiceBus().registerObject(QStringLiteral("/org/freedesktop/Notifications"), service_.get(),
                                                QDBusConnection::ExportAllSlots));
        ASSERT_TRUE(ServiceBus().registerService(QStringLiteral("org.freedesktop.Notifications")));
    }
    void TearDown() override
    {
        ServiceBus().unregisterService(QStringLiteral("org.freedesktop.Notifications"));
        ServiceBus().unregisterObject(QStringLiteral("/org/freedesktop/Notifications"));
        service_.reset();
        NoticeTest::TearDown();
    }

    static QDBusConnection ServiceBus()
    {
        return QDBusConnection::connectToBus(busAddress, QStringLiteral("fake-notification-service"));
    }

    bool WaitForCalls(int count, int ms = 10000)
    {
        return QTest::qWaitFor([&] { return service_->Calls.size() >= count; }, ms);
    }

    std::unique_ptr<FakeNotifications> service_;
};

} // namespace

TEST_F(NoticeOnBusTest, YourTurnGoesOutAsADesktopNotification)
{
    EXPECT_LT(MsToTell(*window_, vk::Notice::YourTurn), kPromptMs);
    ASSERT_TRUE(WaitForCalls(1));
    const NotifyCall& call = service_->Calls.first();
    EXPECT_EQ(call.AppName, QStringLiteral("Valkenhorn"));
    EXPECT_EQ(call.Summary, QStringLiteral("Valkenhorn: u bent aan de beurt."));
    EXPECT_EQ(call.Body, vk::NoticeBody(vk::Notice::YourTurn));
    EXPECT_EQ(call.AppIcon, QStringLiteral("nl.valkenhorn.Valkenhorn"));
    EXPECT_EQ(call.Hints.value(QStringLiteral("desktop-entry")).toString(), QStringLiteral("nl.valkenhorn.Valkenhorn"));
    EXPECT_TRUE(call.Actions.isEmpty());
    EXPECT_EQ(call.ExpireTimeout, -1);
}

TEST_F(NoticeOnBusTest, InvitationAndQuestionHaveTheirOwnText)
{
    vk::TellPlayer(*window_, vk::Notice::Invitation);
    ASSERT_TRUE(WaitForCalls(1));
    vk::TellPlayer(*window_, vk::Notice::Question);
    ASSERT_TRUE(WaitForCalls(2));
    EXPECT_EQ(service_->Calls[0].Summary, QStringLiteral("Valkenhorn: u ontving een uitnodiging."));
    EXPECT_EQ(service_->Calls[0].Body, vk::NoticeBody(vk::Notice::Invitation));
    EXPECT_EQ(service_->Calls[1].Summary, QStringLiteral("Valkenhorn: uw tegenspeler vraagt iets."));
    EXPECT_EQ(service_->Calls[1].Body, vk::NoticeBody(vk::Notice::Question));
}

TEST_F(NoticeOnBusTest, ANewNoticeReplacesTheLastOne)
{
    vk::TellPlayer(*window_, vk::Notice::YourTurn);
    ASSERT_TRUE(WaitForCalls(1));
    // The service's answer reaches the sender in its event loop.
    QTest::qWait(300);
    vk::TellPlayer(*window_, vk::Notice::YourTurn);
    ASSERT_TRUE(WaitForCalls(2));
    EXPECT_NE(service_->Given[0], 0u);
    EXPECT_EQ(service_->Calls[1].ReplacesId, service_->Given[0]);
}

TEST_F(NoticeOnBusTest, SettingFalseSendsNothing)
{
    vk::SaveSetting(QStringLiteral("TurnNotice"), QStringLiteral("False"));
    EXPECT_FALSE(vk::TurnNoticeOn());
    vk::TellPlayer(*window_, vk::Notice::YourTurn);
    vk::TellPlayer(*window_, vk::Notice::Invitation);
    QTest::qWait(1000);
    EXPECT_TRUE(service_->Calls.isEmpty());

    // The same notice goes out once the setting says otherwise.
    vk::SaveSetting(QStringLiteral("TurnNotice"), QStringLiteral("True"));
    EXPECT_TRUE(vk::TurnNoticeOn());
    vk::TellPlayer(*window_, vk::Notice::YourTurn);
    EXPECT_TRUE(WaitForCalls(1));
}

TEST_F(NoticeOnBusTest, MissingSettingMeansOn)
{
    EXPECT_TRUE(vk::GetSetting(QStringLiteral("TurnNotice")).isEmpty());
    EXPECT_TRUE(vk::TurnNoticeOn());
}

TEST_F(NoticeOnBusTest, TheActiveWindowGetsNoNotice)
{
    window_->show();
    window_->activateWindow();
    if (!QTest::qWaitForWindowActive(window_.get(), 5000))
        GTEST_SKIP() << "this platform does not activate windows";
    vk::TellPlayer(*window_, vk::Notice::YourTurn);
    QTest::qWait(1000);
    EXPECT_TRUE(service_->Calls.isEmpty());
}

TEST_F(NoticeOnBusTest, WithoutServiceOnTheBusNothingBlocksAndNothingIsSaid)
{
    ServiceBus().unregisterService(QStringLiteral("org.freedesktop.Notifications"));
    ASSERT_TRUE(QTest::qWaitFor(
        [] {
            return !QDBusConnection::sessionBus().interface()->isServiceRegistered(
                QStringLiteral("org.freedesktop.Notifications"));
        },
        5000));
    MessageCapture capture;
    EXPECT_LT(MsToTell(*window_, vk::Notice::YourTurn), kPromptMs);
    EXPECT_LT(MsToTell(*window_, vk::Notice::Invitation), kPromptMs);
    // The error answers arrive and are dropped.
    QTest::qWait(1000);
    EXPECT_TRUE(service_->Calls.isEmpty());
    EXPECT_TRUE(BusMessages().isEmpty()) << BusMessages().join(QLatin1Char('\n')).toStdString();
}

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    PrivateBus bus;
    if (!bus.Start()) {
        std::fprintf(stderr, "turn_notice_tests: no private session bus (is dbus-daemon installed?)\n");
        return 1;
    }
    busAddress = bus.Address;
    qputenv("DBUS_SESSION_BUS_ADDRESS", busAddress.toLocal8Bit());
    int result = 0;
    {
        QApplication app(argc, argv);
        result = RUN_ALL_TESTS();
    }
    return result;
}

#include "TurnNoticeTest.moc"
