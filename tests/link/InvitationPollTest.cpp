#include "LinkWindowFixture.h"

#include "link/Connection.h"
#include "shell/Global.h"
#include "ui/MessageBoard.h"

namespace {

using vk::test::LinkWindowTest;

class InvitationPollTest : public LinkWindowTest {};

TEST_F(InvitationPollTest, InviteButtonFollowsSelectionPresenceAndLabel)
{
    AddPlayer(QStringLiteral("bert"), true);
    window->cmdRequestToPlay->SetEnabled(true);
    vk::InvitationPoll(*window);
    EXPECT_FALSE(window->cmdRequestToPlay->Enabled()) << "no player selected";

    window->V.SelectedUser = 1;
    window->ShareStatus->SetValue(0);
    vk::InvitationPoll(*window);
    EXPECT_FALSE(window->cmdRequestToPlay->Enabled()) << "off-line";

    window->ShareStatus->SetValue(1);
    vk::InvitationPoll(*window);
    EXPECT_TRUE(window->cmdRequestToPlay->Enabled());

    vk::SetActiveAt(1, false);
    vk::InvitationPoll(*window);
    EXPECT_FALSE(window->cmdRequestToPlay->Enabled()) << "absent";
}

TEST_F(InvitationPollTest, RequestWritesTheOwnInvitation)
{
    const QString folder = AddPlayer(QStringLiteral("bert"), true);
    window->V.SelectedUser = 1;
    vk::cmdRequestToPlay_Click(*window);
    EXPECT_EQ(Text(folder + QStringLiteral("/anna.rqs")), Presence("0A0A0A0A0A0A"));
    EXPECT_TRUE(Logged(QStringLiteral("sending bert a request to play at ")));
}

TEST_F(InvitationPollTest, AcceptedInvitationConnectsAndLocks)
{
    AddPlayer(QStringLiteral("bert"));
    const QString folder = AddPlayer(QStringLiteral("carla"));
    Put(folder + QStringLiteral("/carla.rqs"), Presence("0C0C0C0C0C0C"));
    window->V.SelectedUser = 1;
    window->Combo_ExternUsers->SetListIndex(1);
    AnswerBoxesWith(QStringLiteral("yes"));
    vk::InvitationPoll(*window);

    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0], QStringLiteral("Spelletje 'Valkenhorn!' spelen???|U ontving een uitnodiging van carla. "
                                       "Aanvaardt u deze uitnodiging?"));
    EXPECT_FALSE(QFile::exists(folder + QStringLiteral("/carla.rqs")));
    EXPECT_EQ(Text(folder + QStringLiteral("/anna.acc")), Presence("0A0A0A0A0A0A"));
    EXPECT_EQ(window->Check1->Value(), 1);
    EXPECT_EQ(window->V.SelectedUser, 2) << "accepting switches the selection to the inviter";
    EXPECT_EQ(window->Combo_ExternUsers->ListIndex(), 2);
    EXPECT_FALSE(window->frExtern->Enabled());
    EXPECT_FALSE(window->frLokaal->Enabled());
    EXPECT_TRUE(window->cmdStart->Enabled());
    EXPECT_FALSE(vk::Global().LinkBusy);
    EXPECT_EQ(vk::Global().BoardText,
              vk::FormatBoardText(QStringLiteral(
                  "U bent nu verbonden met carla. druk op 'spel starten' om Valkenhorn te beginnen...")));
    const QStringList lines = LogLines();
    const int received = lines.indexOf(QStringLiteral("recieved a request to play from carla at "));
    const int sending = lines.indexOf(QStringLiteral("sending acceptance to play at "));
    const int locked = lines.indexOf(QStringLiteral("connected and locked with carla at "));
    EXPECT_TRUE(received >= 0 && received < sending && sending < locked) << lines.join(QLatin1Char('\n')).toStdString();
}

TEST_F(InvitationPollTest, DeclinedInvitationIsDeletedAndTheInviterNotTold)
{
    const QString folder = AddPlayer(QStringLiteral("bert"));
    Put(folder + QStringLiteral("/bert.rqs"), Presence("0B0B0B0B0B0B"));
    AnswerBoxesWith(QStringLiteral("no"));
    vk::InvitationPoll(*window);
    EXPECT_EQ(boxes.size(), 1);
    EXPECT_FALSE(QFile::exists(folder + QStringLiteral("/bert.rqs")));
    EXPECT_TRUE(QDir(folder).entryList(QDir::Files).isEmpty());
    EXPECT_EQ(window->Check1->Value(), 0);
    EXPECT_FALSE(vk::Global().LinkBusy);
}

TEST_F(InvitationPollTest, OfflinePlayerIsStillAsked)
{
    const QString folder = AddPlayer(QStringLiteral("bert"));
    window->ShareStatus->SetValue(0);
    Put(folder + QStringLiteral("/bert.rqs"), Presence("0B0B0B0B0B0B"));
    AnswerBoxesWith(QStringLiteral("no"));
    vk::InvitationPoll(*window);
    EXPECT_EQ(boxes.size(), 1);
}

TEST_F(InvitationPollTest, ConnectedSideSeesNoFurtherInvitations)
{
    const QString folder = AddPlayer(QStringLiteral("bert"));
    window->Check1->SetValue(1);
    window->V.SelectedUser = 1;
    Put(folder + QStringLiteral("/bert.rqs"), Presence("0B0B0B0B0B0B"));
    Put(folder + QStringLiteral("/bert.acc"), Presence("0B0B0B0B0B0B"));
    AnswerBoxesWith(QStringLiteral("yes"));
    vk::InvitationPoll(*window);
    EXPECT_TRUE(boxes.isEmpty());
    EXPECT_TRUE(QFile::exists(folder + QStringLiteral("/bert.rqs")));
    EXPECT_TRUE(QFile::exists(folder + QStringLiteral("/bert.acc")));
}

TEST_F(InvitationPollTest, AcceptanceOfTheOwnInvitationConnects)
{
    const QString folder = AddPlayer(QStringLiteral("bert"), true);
    window->V.SelectedUser = 1;
    Put(folder + QStringLiteral("/bert.acc"), Presence("0B0B0B0B0B0B"));
    AnswerBoxesWith(QStringLiteral("ok"));
    vk::InvitationPoll(*window);
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0], QStringLiteral("Spelen maar!!!|bert heeft jouw uitnodiging aanvaard."));
    EXPECT_FALSE(QFile::exists(folder + QStringLiteral("/bert.acc")));
    EXPECT_EQ(window->Check1->Value(), 1);
    EXPECT_TRUE(window->cmdStart->Enabled());
    EXPECT_FALSE(window->frExtern->Enabled());
    EXPECT_FALSE(window->frLokaal->Enabled());
    EXPECT_TRUE(Logged(QStringLiteral("recieved acceptance to play at ")));
    EXPECT_TRUE(Logged(QStringLiteral("connected and locked with bert at ")));
}

TEST_F(InvitationPollTest, AcceptanceIsLookedForUnderTheNameOfPlayerOneInEveryFolder)
{
    AddPlayer(QStringLiteral("bert"));
    const QString second = AddPlayer(QStringLiteral("carla"));
    // Carla's acceptance goes unnoticed ...
    Put(second + QStringLiteral("/carla.acc"), Presence("0C0C0C0C0C0C"));
    AnswerBoxesWith(QStringLiteral("ok"));
    vk::InvitationPoll(*window);
    EXPECT_TRUE(boxes.isEmpty());
    EXPECT_EQ(window->Check1->Value(), 0);

    // ... but a file named after player 1 in her folder connects with her,
    // while the box names player 1.
    Put(second + QStringLiteral("/bert.acc"), Presence("0C0C0C0C0C0C"));
    vk::InvitationPoll(*window);
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0], QStringLiteral("Spelen maar!!!|bert heeft jouw uitnodiging aanvaard."));
    EXPECT_EQ(window->V.SelectedUser, 2);
    EXPECT_TRUE(Logged(QStringLiteral("connected and locked with carla at ")));
    EXPECT_TRUE(QFile::exists(second + QStringLiteral("/carla.acc")));
    EXPECT_FALSE(QFile::exists(second + QStringLiteral("/bert.acc")));
}

TEST_F(InvitationPollTest, DisconnectClearsTheSelectedFolderAndGoesOffline)
{
    const QString folder = AddPlayer(QStringLiteral("bert"), true);
    const QString other = AddPlayer(QStringLiteral("carla"));
    for (const char* name : {"anna.xid", "bert.xid", "anna.acc", "bert.rqs", "bert.act", ".stfolder"})
        Put(folder + QLatin1Char('/') + QLatin1String(name), Presence("0B0B0B0B0B0B"));
    Put(other + QStringLiteral("/anna.xid"), Presence("0A0A0A0A0A0A"));
    window->Check1->SetValue(1);
    window->ShareStatus->SetValue(1);
    window->ShareStatus->SetEnabled(false);
    window->frExtern->SetEnabled(false);
    window->Combo_ExternUsers->SetListIndex(1);
    window->V.SelectedUser = 1;
    window->cmdStart->SetEnabled(true);
    vk::Global().BoardText = QStringLiteral("tekst");

    vk::cmdDisconnect_Click(*window);

    EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name),
              (QStringList{QStringLiteral(".stfolder"), QStringLiteral("bert.act")}));
    EXPECT_TRUE(QFile::exists(other + QStringLiteral("/anna.xid")));
    EXPECT_EQ(window->Check1->Value(), 0);
    EXPECT_EQ(window->V.SelectedUser, 0);
    EXPECT_EQ(window->Combo_ExternUsers->ListIndex(), 0);
    EXPECT_TRUE(window->frExtern->Enabled());
    EXPECT_TRUE(window->ShareStatus->Enabled());
    EXPECT_EQ(window->ShareStatus->Value(), 0);
    EXPECT_FALSE(window->cmdStart->Enabled());
    EXPECT_FALSE(window->cmdStop->Enabled());
    EXPECT_FALSE(vk::Global().LinkBusy);
    EXPECT_TRUE(vk::Global().BoardText.isEmpty());
}

TEST_F(InvitationPollTest, SelectingAPlayerPaintsTheBoxRedAndLogs)
{
    AddPlayer(QStringLiteral("bert"), true);
    window->Combo_ExternUsers->SetBackColor(65280);
    window->Combo_ExternUsers->SetListIndex(1);
    vk::Combo_ExternUsers_Click(*window);
    EXPECT_EQ(window->V.SelectedUser, 1);
    EXPECT_EQ(window->Combo_ExternUsers->BackColor(), 255);
    EXPECT_TRUE(Logged(QStringLiteral("selecting extern user at ")));
    // Clicking the same entry again changes nothing.
    const int lines = LogLines().size();
    vk::Combo_ExternUsers_Click(*window);
    EXPECT_EQ(LogLines().size(), lines);
}

} // namespace
