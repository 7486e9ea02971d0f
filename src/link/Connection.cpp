#include "link/Connection.h"

#include "link/SharedFolderFiles.h"
#include "shell/Clock.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "ui/Hoofdvenster.h"

namespace vk {

void Combo_ExternUsers_Click(Hoofdvenster& w)
{
    const int index = w.Combo_ExternUsers->ListIndex();
    if (index == w.V.SelectedUser)
        return;
    LogAt(QStringLiteral("selecting extern user at "));
    w.V.SelectedUser = index;
    w.Combo_ExternUsers->SetBackColor(Red);
}

void SelectExternUser(Hoofdvenster& w, int index)
{
    w.Combo_ExternUsers->SetListIndex(index);
    Combo_ExternUsers_Click(w);
}

void cmdRequestToPlay_Click(Hoofdvenster& w)
{
    const GlobalValues& g = Global();
    const int i = w.V.SelectedUser;
    LogAt(QStringLiteral("sending ") + ExternalUserAt(i) + QStringLiteral(" a request to play at "));
    SendMessage(MessagePath(FolderAt(i), g.LocalUser, MessageKindId::Invitation), MessageKindId::Invitation,
                {g.LocalID});
}

void cmdDisconnect_Click(Hoofdvenster& w)
{
    GlobalValues& g = Global();
    g.BoardText.clear();
    g.LinkBusy = true;
    WaitMs(100);

    const QString folder = FolderAt(w.V.SelectedUser);
    DeleteMatching(folder, QStringLiteral("*.xid"));
    DeleteMatching(folder, QStringLiteral("*.rqs"));
    DeleteMatching(folder, QStringLiteral("*.acc"));

    w.Check1->SetValue(0);
    SelectExternUser(w, 0);
    w.V.SelectedUser = 0;

    w.frExtern->SetEnabled(true);
    w.ShareStatus->SetEnabled(true);
    w.ShareStatus->SetValue(0);

    w.cmdStart->SetEnabled(false);
    w.cmdStop->SetEnabled(false);
    g.LinkBusy = false;
}

} // namespace vk
