#include "LinkWindowFixture.h"

#include "link/RemoveFolderDialog.h"
#include "link/SharedFolders.h"
#include "shell/RunTimeFault.h"
#include "shell/Settings.h"
#include "shell/UserNameBox.h"

namespace {

using vk::test::LinkWindowTest;

class FolderListTest : public LinkWindowTest {
protected:
    // Three slots as a start-up would have read them from the settings.
    void ThreeSlots()
    {
        for (const char* name : {"bert", "carla", "dirk"}) {
            const QString folder = AddPlayer(QLatin1String(name));
            const int n = vk::Global().ExtUsersCount;
            const QString nn = QStringLiteral("0%1").arg(n);
            vk::SaveSetting(nn + QStringLiteral("Folder"), folder);
            vk::SaveSetting(nn + QStringLiteral("External_User"), QLatin1String(name));
            vk::SaveSetting(nn + QStringLiteral("Active"), QStringLiteral("False"));
        }
        vk::SaveSetting(QStringLiteral("ExtUsersCount"), QStringLiteral("3"));
    }

    void Select(int index)
    {
        window->Combo_ExternUsers->SetListIndex(index);
        window->V.SelectedUser = index;
    }

    // Removes slot s through the dialog's button.
    void Remove(int s)
    {
        vk::Remove_Folder dialog(*window);
        dialog.Combo_Folders->addItem(QStringLiteral("Geen Map"));
        for (int i = 1; i <= vk::Global().ExtUsersCount; ++i)
            dialog.Combo_Folders->addItem(vk::FolderAt(i));
        dialog.Combo_Folders->SetListIndex(s);
        vk::Cmd_Remove_Click(*window, dialog);
    }
};

TEST_F(FolderListTest, RemovingTheSelectedSlotSelectsGeenSpeler)
{
    ThreeSlots();
    const QString third = vk::FolderAt(3);
    Select(2);
    Remove(2);
    EXPECT_EQ(vk::Global().ExtUsersCount, 2);
    EXPECT_EQ(vk::ExternalUserAt(2), QStringLiteral("dirk"));
    EXPECT_EQ(vk::FolderAt(2), third);
    EXPECT_EQ(window->Combo_ExternUsers->Items(),
              (QStringList{QStringLiteral("Geen Speler"), QStringLiteral("bert"), QStringLiteral("dirk")}));
    EXPECT_EQ(window->Combo_ExternUsers->ListIndex(), 0);
    EXPECT_EQ(window->V.SelectedUser, 0);
    // Slot 2 took slot 3's keys; slot 3's were emptied, not deleted.
    EXPECT_EQ(vk::GetSetting(QStringLiteral("02External_User")), QStringLiteral("dirk"));
    EXPECT_EQ(vk::GetSetting(QStringLiteral("02Folder")), third);
    EXPECT_EQ(vk::GetSetting(QStringLiteral("03External_User"), QStringLiteral("03ExtSpeler")),
              QStringLiteral("03ExtSpeler"));
    const QString settings = QString::fromUtf8(Text(vk::SettingsFilePath()));
    EXPECT_TRUE(settings.contains(QStringLiteral("03Folder=\n"))) << settings.toStdString();
    EXPECT_TRUE(settings.contains(QStringLiteral("03Old_Ext_User=\n")));
    // The count went to "Users"; the key the start-up reads stays as it was.
    EXPECT_EQ(vk::GetSetting(QStringLiteral("Users")), QStringLiteral("2"));
    EXPECT_EQ(vk::GetSetting(QStringLiteral("ExtUsersCount")), QStringLiteral("3"));
    EXPECT_FALSE(vk::Global().LinkBusy);
}

TEST_F(FolderListTest, RemovingASlotBelowTheSelectionMovesTheIndexAlong)
{
    ThreeSlots();
    Select(3);
    Remove(1);
    EXPECT_EQ(window->Combo_ExternUsers->ListIndex(), 2);
    EXPECT_EQ(window->V.SelectedUser, 2);
    EXPECT_EQ(window->Combo_ExternUsers->currentText(), QStringLiteral("dirk"));
}

TEST_F(FolderListTest, RemovingASlotAboveTheSelectionKeepsIt)
{
    ThreeSlots();
    Select(1);
    Remove(3);
    EXPECT_EQ(window->V.SelectedUser, 1);
    EXPECT_EQ(window->Combo_ExternUsers->currentText(), QStringLiteral("bert"));
    EXPECT_EQ(vk::Global().ExtUsersCount, 2);
}

TEST_F(FolderListTest, RemovingTheOnlySlotWhileSelectedLeavesNoPlayers)
{
    AddPlayer(QStringLiteral("bert"));
    Select(1);
    Remove(1);
    EXPECT_EQ(vk::Global().ExtUsersCount, 0);
    EXPECT_EQ(window->V.SelectedUser, 0);
    // The polls stop acting.
    vk::Polls().ActionCounter = 12;
    vk::PresencePoll(*window);
    EXPECT_EQ(vk::Polls().ActionCounter, 12);
}

TEST_F(FolderListTest, RemovingTheOnlySlotUnselectedIsASubscriptFault)
{
    AddPlayer(QStringLiteral("bert"));
    vk::SaveSetting(QStringLiteral("01External_User"), QStringLiteral("bert"));
    Select(0);
    EXPECT_THROW(Remove(1), vk::RunTimeFault);
    // The keys of the last slot were emptied before the fault.
    EXPECT_EQ(vk::GetSetting(QStringLiteral("01External_User"), QStringLiteral("01ExtSpeler")),
              QStringLiteral("01ExtSpeler"));
}

TEST_F(FolderListTest, RemovalDeletesNumberedFilesNotThePlayersMessages)
{
    const QString folder = AddPlayer(QStringLiteral("bert"));
    AddPlayer(QStringLiteral("carla"));
    Select(2);
    for (const char* name : {"2.tri", "2.rqs", "2.xid", "lied.mp3", "bert.xid", "anna.rqs"})
        Put(folder + QLatin1Char('/') + QLatin1String(name), "x");
    Remove(1);
    EXPECT_EQ(QDir(folder).entryList(QDir::Files, QDir::Name),
              (QStringList{QStringLiteral("anna.rqs"), QStringLiteral("bert.xid")}));
}

TEST_F(FolderListTest, DialogShowsThePlayerOfTheChosenFolder)
{
    ThreeSlots();
    vk::Remove_Folder dialog(*window);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Verwijder Map"));
    EXPECT_EQ(dialog.Label1->Caption(),
              QStringLiteral("Selecteer de Map die wenst te verwijderen en klik dan op de knop \"Verwijder\""));
    EXPECT_EQ(dialog.Cmd_Remove->Caption(), QStringLiteral("Verwijder"));
    EXPECT_EQ(dialog.Cmd_Close->Caption(), QStringLiteral("Sluiten"));
    EXPECT_TRUE(window->Controls().Find(QStringLiteral("Cmd_Remove")) != nullptr);
    dialog.Combo_Folders->addItem(QStringLiteral("Geen Map"));
    for (int i = 1; i <= 3; ++i)
        dialog.Combo_Folders->addItem(vk::FolderAt(i));
    dialog.Combo_Folders->SetListIndex(2);
    vk::Combo_Folders_Click(dialog);
    EXPECT_TRUE(dialog.Cmd_Remove->Enabled());
    EXPECT_EQ(dialog.Label2->Caption(), QStringLiteral("Geselecteerde Map wordt gedeeld met carla"));
    dialog.Combo_Folders->SetListIndex(0);
    vk::Combo_Folders_Click(dialog);
    EXPECT_FALSE(dialog.Cmd_Remove->Enabled());
    EXPECT_TRUE(dialog.Label2->Caption().isEmpty());
}

TEST_F(FolderListTest, DialogControlsAreForgottenWhenItCloses)
{
    {
        vk::Remove_Folder dialog(*window);
        EXPECT_TRUE(window->Controls().Find(QStringLiteral("Combo_Folders")) != nullptr);
    }
    EXPECT_EQ(window->Controls().Find(QStringLiteral("Combo_Folders")), nullptr);
}

// The name box, which shares this window.

TEST_F(FolderListTest, NameOfAnExternalPlayerInOtherCaseIsRefused)
{
    AddPlayer(QStringLiteral("bert"));
    AnswerBoxesWith(QStringLiteral("ok"));
    window->User_Name->SetCaption(QStringLiteral("BERT"));
    vk::User_Name_LostFocus(*window);
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0], QStringLiteral("Naam in gebruik|Deze naam is in gebruik door \u00e9\u00e9n van de externe "
                                       "spelers,\n\rgelieve een andere naam te gebruiken..."));
    EXPECT_EQ(window->User_Name->Caption(), QStringLiteral("anna"));
    EXPECT_EQ(vk::Global().LocalUser, QStringLiteral("anna"));
    EXPECT_EQ(vk::GetSetting(QStringLiteral("LocalUser")), QString());
}

TEST_F(FolderListTest, NewNameIsSavedAndTakesThePlayerOffline)
{
    AddPlayer(QStringLiteral("bert"));
    window->ShareStatus->SetValue(1);
    window->User_Name->SetBackColor(65280);
    window->User_Name->SetCaption(QStringLiteral("annie"));
    vk::User_Name_LostFocus(*window);
    EXPECT_EQ(vk::Global().LocalUser, QStringLiteral("annie"));
    EXPECT_EQ(vk::Global().OldLocalUser, QStringLiteral("anna"));
    EXPECT_EQ(vk::GetSetting(QStringLiteral("LocalUser")), QStringLiteral("annie"));
    EXPECT_EQ(vk::GetSetting(QStringLiteral("OldLocalUser")), QStringLiteral("anna"));
    EXPECT_EQ(window->ShareStatus->Value(), 0);
    EXPECT_TRUE(window->ShareStatus->Enabled());
    EXPECT_EQ(window->User_Name->BackColor(), 255);
}

TEST_F(FolderListTest, EmptyOrPlaceholderTextPutsTheNameBack)
{
    window->User_Name->SetCaption(QString());
    vk::User_Name_LostFocus(*window);
    EXPECT_EQ(window->User_Name->Caption(), QStringLiteral("anna"));
    window->User_Name->SetCaption(QStringLiteral("je_naam"));
    vk::User_Name_LostFocus(*window);
    EXPECT_EQ(window->User_Name->Caption(), QStringLiteral("anna"));

    vk::Global().LocalUser.clear();
    window->User_Name->SetCaption(QString());
    vk::User_Name_LostFocus(*window);
    EXPECT_EQ(window->User_Name->Caption(), QStringLiteral("je_naam"));
    vk::User_Name_LostFocus(*window);
    EXPECT_EQ(window->User_Name->Caption(), QStringLiteral("je_naam"));
    EXPECT_TRUE(vk::Global().LocalUser.isEmpty());
}

TEST_F(FolderListTest, GotFocusEmptiesThePlaceholder)
{
    window->User_Name->SetCaption(QStringLiteral("je_naam"));
    vk::User_Name_GotFocus(*window);
    EXPECT_TRUE(window->User_Name->Caption().isEmpty());
}

TEST_F(FolderListTest, TickingAanwezigPaintsGreenAndLogsOff)
{
    window->ShareStatus->SetValue(1);
    vk::ShareStatus_Click(*window);
    EXPECT_EQ(window->User_Name->BackColor(), 65280);
    EXPECT_TRUE(Logged(QStringLiteral("switch on-line status off at ")));
    window->ShareStatus->SetValue(0);
    vk::ShareStatus_Click(*window);
    EXPECT_EQ(window->User_Name->BackColor(), 255);
    EXPECT_TRUE(Logged(QStringLiteral("switch on-line status on at ")));
}

TEST_F(FolderListTest, KeysThroughTheBoxFollowTheFilter)
{
    window->User_Name->SetCaption(QString());
    for (int code : {int('a'), int('B'), int('1'), int('_'), int('"'), int(' '), int('-'), int('.'), int('/'), 0xE9})
        window->User_Name->DeliverKey(code);
    EXPECT_EQ(window->User_Name->Caption(), QStringLiteral("aB\" -."));
    window->User_Name->SetCaption(QStringLiteral("abcdefghij"));
    window->User_Name->setCursorPosition(10);
    window->User_Name->DeliverKey('k');
    EXPECT_EQ(window->User_Name->Caption(), QStringLiteral("abcdefghij"));
}

} // namespace
