#include "LinkWindowFixture.h"

#include "link/SharedFolderFiles.h"
#include "shell/Settings.h"

namespace {

using vk::test::LinkWindowTest;

class PresencePollTest : public LinkWindowTest {};

constexpr int Red = 255;
constexpr int Green = 65280;

TEST_F(PresencePollTest, OfflineRemovesTheOwnFile)
{
    const QString folder = AddPlayer(QStringLiteral("bert"));
    Put(folder + QStringLiteral("/anna.xid"), Presence("0A0A0A0A0A0A"));
    window->ShareStatus->SetValue(0);
    PresenceAt(5);
    EXPECT_FALSE(QFile::exists(folder + QStringLiteral("/anna.xid")));
    EXPECT_TRUE(Logged(QStringLiteral(
        "timer 1 event 1d - action counter = 5 - removing local player ID file for bert at ")));
}

TEST_F(PresencePollTest, OnlineAndUnconnectedWritesTheOwnFileInEveryFolder)
{
    const QString first = AddPlayer(QStringLiteral("bert"));
    const QString second = AddPlayer(QStringLiteral("carla"));
    window->ShareStatus->SetValue(1);
    PresenceAt(5);
    EXPECT_EQ(Text(first + QStringLiteral("/anna.xid")), Presence("0A0A0A0A0A0A"));
    EXPECT_EQ(Text(second + QStringLiteral("/anna.xid")), Presence("0A0A0A0A0A0A"));
    EXPECT_TRUE(Logged(QStringLiteral(
        "timer 1 event 1c - action counter = 5 - writing local player ID file for bert at ")));
    EXPECT_TRUE(Logged(QStringLiteral(
        "timer 1 event 1c - action counter = 5 - writing local player ID file for carla at ")));

    // Nothing changes at the next poll, and nothing is logged.
    const int lines = LogLines().size();
    PresenceAt(6);
    EXPECT_EQ(LogLines().size(), lines);
}

TEST_F(PresencePollTest, ConnectedKeepsTheOwnFileOnlyInThePartnersFolder)
{
    const QString first = AddPlayer(QStringLiteral("bert"));
    const QString second = AddPlayer(QStringLiteral("carla"));
    Put(second + QStringLiteral("/anna.xid"), Presence("0A0A0A0A0A0A"));
    window->ShareStatus->SetValue(1);
    window->Check1->SetValue(1);
    window->V.SelectedUser = 1;
    PresenceAt(7);
    EXPECT_TRUE(QFile::exists(first + QStringLiteral("/anna.xid")));
    EXPECT_FALSE(QFile::exists(second + QStringLiteral("/anna.xid")));
    EXPECT_TRUE(Logged(QStringLiteral(
        "timer 1 event 1a - action counter = 7 - writing local player ID file for bert at ")));
    EXPECT_TRUE(Logged(QStringLiteral(
        "timer 1 event 1b - action counter = 7 - removing local player ID file for carla at ")));
}

TEST_F(PresencePollTest, CounterOneDeletesEveryOpponentsFileAsAHeartbeat)
{
    const QString first = AddPlayer(QStringLiteral("bert"));
    const QString second = AddPlayer(QStringLiteral("carla"));
    Put(first + QStringLiteral("/bert.xid"), Presence("0B0B0B0B0B0B"));
    Put(second + QStringLiteral("/carla.xid"), Presence("0C0C0C0C0C0C"));
    PresenceAt(1);
    EXPECT_FALSE(QFile::exists(first + QStringLiteral("/bert.xid")));
    EXPECT_FALSE(QFile::exists(second + QStringLiteral("/carla.xid")));
    EXPECT_TRUE(Logged(QStringLiteral("timer 1 event 2d - action counter = 1 - removing ID file from bert at ")));
    EXPECT_TRUE(Logged(QStringLiteral("timer 1 event 2d - action counter = 1 - removing ID file from carla at ")));
}

TEST_F(PresencePollTest, OnlyTheSelectedPlayerIsLabelled)
{
    const QString first = AddPlayer(QStringLiteral("bert"));
    const QString second = AddPlayer(QStringLiteral("carla"));
    Put(first + QStringLiteral("/bert.xid"), Presence("0B0B0B0B0B0B"));
    Put(second + QStringLiteral("/carla.xid"), Presence("0C0C0C0C0C0C"));
    window->V.SelectedUser = 2;
    PresenceAt(10);
    EXPECT_FALSE(vk::ActiveAt(1));
    EXPECT_TRUE(vk::ActiveAt(2));
    EXPECT_EQ(window->Combo_ExternUsers->BackColor(), Green);
    EXPECT_TRUE(Logged(QStringLiteral("timer 1 event 2f - action counter = 10 - labeling carla as present at ")));

    // The settings key Active isn't touched by the labelling.
    EXPECT_EQ(vk::GetSetting(QStringLiteral("02Active"), QStringLiteral("none")), QStringLiteral("none"));

    QFile::remove(second + QStringLiteral("/carla.xid"));
    PresenceAt(0);
    EXPECT_FALSE(vk::ActiveAt(2));
    EXPECT_EQ(window->Combo_ExternUsers->BackColor(), Red);
    EXPECT_TRUE(Logged(QStringLiteral("timer 1 event 2e - action counter = 0 - labeling carla as absent at ")));
}

TEST_F(PresencePollTest, WithoutASelectionNoLabelChanges)
{
    const QString first = AddPlayer(QStringLiteral("bert"));
    Put(first + QStringLiteral("/bert.xid"), Presence("0B0B0B0B0B0B"));
    window->Combo_ExternUsers->SetBackColor(Red);
    PresenceAt(10);
    EXPECT_FALSE(vk::ActiveAt(1));
    EXPECT_EQ(window->Combo_ExternUsers->BackColor(), Red);
}

TEST_F(PresencePollTest, ConnectedCodesSpeakOfThePartner)
{
    const QString first = AddPlayer(QStringLiteral("bert"));
    window->Check1->SetValue(1);
    window->V.SelectedUser = 1;
    Put(first + QStringLiteral("/bert.xid"), Presence("0B0B0B0B0B0B"));
    PresenceAt(2);
    EXPECT_TRUE(Logged(QStringLiteral("timer 1 event 2c - action counter = 2 - labeling bert as present at ")));
    PresenceAt(1);
    EXPECT_TRUE(Logged(QStringLiteral("timer 1 event 2a - action counter = 1 - removing ID file from bert at ")));
    PresenceAt(0);
    EXPECT_TRUE(Logged(QStringLiteral("timer 1 event 2b - action counter = 0 - labeling bert as absent at ")));
}

TEST_F(PresencePollTest, NoPlayersOrLinkBusyLeaveTheCounterStanding)
{
    vk::Polls().ActionCounter = 33;
    vk::PresencePoll(*window);
    EXPECT_EQ(vk::Polls().ActionCounter, 33);
    AddPlayer(QStringLiteral("bert"));
    vk::Global().LinkBusy = true;
    vk::PresencePoll(*window);
    EXPECT_EQ(vk::Polls().ActionCounter, 33);
    vk::Global().LinkBusy = false;
    vk::PresencePoll(*window);
    EXPECT_EQ(vk::Polls().ActionCounter, 34);
}

TEST_F(PresencePollTest, CounterWrapsAfter79)
{
    AddPlayer(QStringLiteral("bert"));
    vk::Polls().ActionCounter = 79;
    vk::PresencePoll(*window);
    EXPECT_EQ(vk::Polls().ActionCounter, 0);
}

TEST_F(PresencePollTest, TimerRunsInvitationAtFourAndPresenceAtNine)
{
    AddPlayer(QStringLiteral("bert"));
    for (int tick = 1; tick <= 8; ++tick) {
        vk::Action_Timer_Timer(*window);
        EXPECT_EQ(vk::Polls().PollTick, tick);
        EXPECT_EQ(vk::Polls().ActionCounter, 0);
    }
    vk::Action_Timer_Timer(*window);
    EXPECT_EQ(vk::Polls().PollTick, 9);
    EXPECT_EQ(vk::Polls().ActionCounter, 1);
    vk::Action_Timer_Timer(*window);
    EXPECT_EQ(vk::Polls().PollTick, 0);
}

TEST_F(PresencePollTest, NameScanTakesTheFirstForeignPresenceFile)
{
    const QString folder = AddPlayer(QStringLiteral("01ExtSpeler"));
    Put(folder + QStringLiteral("/anna.xid"), Presence("0A0A0A0A0A0A"));
    Put(folder + QStringLiteral("/.syncthing.zoe.xid.tmp"), Presence("0C0C0C0C0C0C"));
    Put(folder + QStringLiteral("/zoe.sync-conflict-20261121-101010-ABCDEFG.xid"), Presence("0C0C0C0C0C0C"));
    Put(folder + QStringLiteral("/zoe (conflicted copy 2026-11-21).xid"), Presence("0C0C0C0C0C0C"));
    Put(folder + QStringLiteral("/leeg.xid"), "");
    QDir(folder).mkdir(QStringLiteral("map.xid"));
    Put(folder + QStringLiteral("/bert.xid"), Presence("0B0B0B0B0B0B"));
    PresenceAt(60);
    EXPECT_EQ(vk::ExternalUserAt(1), QStringLiteral("bert"));
    EXPECT_EQ(window->Combo_ExternUsers->itemText(1), QStringLiteral("bert"));
    EXPECT_EQ(vk::GetSetting(QStringLiteral("01External_User")), QStringLiteral("bert"));
    EXPECT_TRUE(Logged(QStringLiteral(
        "timer 1 event 3 - action counter = 60 - name of external player 01ExtSpeler changed to bert at ")));
}

TEST_F(PresencePollTest, NameScanLeavesAKnownPlayerAlone)
{
    const QString folder = AddPlayer(QStringLiteral("bert"));
    Put(folder + QStringLiteral("/bert.xid"), Presence("0B0B0B0B0B0B"));
    Put(folder + QStringLiteral("/carla.xid"), Presence("0C0C0C0C0C0C"));
    PresenceAt(60);
    EXPECT_EQ(vk::ExternalUserAt(1), QStringLiteral("bert"));
}

TEST_F(PresencePollTest, NameScanRunsOnlyAtSixty)
{
    const QString folder = AddPlayer(QStringLiteral("01ExtSpeler"));
    Put(folder + QStringLiteral("/bert.xid"), Presence("0B0B0B0B0B0B"));
    PresenceAt(59);
    EXPECT_EQ(vk::ExternalUserAt(1), QStringLiteral("01ExtSpeler"));
    PresenceAt(61);
    EXPECT_EQ(vk::ExternalUserAt(1), QStringLiteral("01ExtSpeler"));
}

TEST_F(PresencePollTest, PeerWithTheSameLocalIdIsNeverRecognised)
{
    const QString folder = AddPlayer(QStringLiteral("01ExtSpeler"));
    Put(folder + QStringLiteral("/bert.xid"), Presence("0A0A0A0A0A0A"));
    PresenceAt(60);
    EXPECT_EQ(vk::ExternalUserAt(1), QStringLiteral("01ExtSpeler"));
}

TEST_F(PresencePollTest, HugeAndGarbledPresenceFilesDoNoHarm)
{
    const QString folder = AddPlayer(QStringLiteral("01ExtSpeler"));
    QByteArray garbage(4 * 1024 * 1024, '\0');
    for (int i = 0; i < garbage.size(); ++i)
        garbage[i] = static_cast<char>((i * 131 + 7) % 256);
    Put(folder + QStringLiteral("/rommel.xid"), garbage);
    Put(folder + QStringLiteral("/geenis.xid"), "[GENERAL]\r\nUSER_ID\r\n");
    PresenceAt(60);
    // Garbage has no USER_ID: it reads as the own ID and is skipped.
    EXPECT_EQ(vk::ExternalUserAt(1), QStringLiteral("01ExtSpeler"));
}

} // namespace
