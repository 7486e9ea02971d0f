#include "link/PollCycle.h"

#include "link/Connection.h"
#include "link/SharedFolderFiles.h"
#include "shell/Clock.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "shell/TurnNotice.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"
#include "ui/MessageBoard.h"

namespace vk {

namespace {

QString ConnectedText(const QString& name)
{
    return QStringLiteral("U bent nu verbonden met ") + name +
           QStringLiteral(". druk op 'spel starten' om Valkenhorn te beginnen...");
}

void UpdateInviteButton(Hoofdvenster& w)
{
    const int selected = w.V.SelectedUser;
    if (selected < 1)
        w.cmdRequestToPlay->SetEnabled(false);
    else
        w.cmdRequestToPlay->SetEnabled(w.ShareStatus->Value() == 1 && ActiveAt(selected));
}

// Steps 4 and 5: an invitation of player i came in. Returns true when the
// user accepted it and the pair is now connected.
bool AnswerInvitation(Hoofdvenster& w, int i, const QString& request)
{
    GlobalValues& g = Global();
    const QString name = ExternalUserAt(i);
    LogAt(QStringLiteral("recieved a request to play from ") + name + QStringLiteral(" at "));
    g.LinkBusy = true;
    TellPlayer(w, Notice::Invitation);
    Speel(*w.ESound1, w.V.Sound, SoundMessage);
    const BoxResult answer =
        MessageBox(QStringLiteral("U ontving een uitnodiging van ") + name +
                       QStringLiteral(". Aanvaardt u deze uitnodiging?"),
                   BoxButtons::YesNo, BoxIcon::Question, QStringLiteral("Spelletje 'Valkenhorn!' spelen???"));
    if (answer != BoxResult::Yes) {
        DeleteUntilGone(request);
        g.LinkBusy = false;
        return false;
    }

    w.frExtern->SetEnabled(false);
    w.Check1->SetValue(1);
    SelectExternUser(w, i);
    w.frLokaal->SetEnabled(false);

    LogAt(QStringLiteral("sending acceptance to play at "));
    DeleteUntilGone(request);
    SendMessage(MessagePath(FolderAt(i), g.LocalUser, MessageKindId::Acceptance), MessageKindId::Acceptance,
                {g.LocalID});

    w.cmdStart->SetEnabled(true);
    ShowOnBoard(ConnectedText(name));
    LogAt(QStringLiteral("connected and locked with ") + name + QStringLiteral(" at "));
    g.LinkBusy = false;
    return true;
}

// Steps 7 to 11: the own invitation was accepted. The file looked for bears
// the name of player 1 in every folder; with several players an acceptance
// by another one goes unnoticed unless the names match.
void NoticeAcceptance(Hoofdvenster& w)
{
    GlobalValues& g = Global();
    int i = 1;
    QString acceptance;
    for (; i <= g.ExtUsersCount; ++i) {
        acceptance = MessagePath(FolderAt(i), ExternalUserAt(1), MessageKindId::Acceptance);
        if (FileExists(acceptance))
            break;
    }
    if (i > g.ExtUsersCount)
        return;

    g.LinkBusy = true;
    LogAt(QStringLiteral("recieved acceptance to play at "));
    Speel(*w.ESound1, w.V.Sound, SoundMessage);
    MessageBox(ExternalUserAt(1) + QStringLiteral(" heeft jouw uitnodiging aanvaard."), BoxButtons::Ok,
               BoxIcon::None, QStringLiteral("Spelen maar!!!"));

    w.frExtern->SetEnabled(false);
    w.Check1->SetValue(1);
    SelectExternUser(w, i);
    w.frLokaal->SetEnabled(false);
    w.cmdStart->SetEnabled(true);

    ShowOnBoard(ConnectedText(ExternalUserAt(i)));
    LogAt(QStringLiteral("connected and locked with ") + ExternalUserAt(i) + QStringLiteral(" at "));

    DeleteOnce(acceptance);
    g.LinkBusy = false;
}

} // namespace

void InvitationPoll(Hoofdvenster& w)
{
    PumpInterface();
    GlobalValues& g = Global();
    if (g.ExtUsersCount == 0 || g.LinkBusy)
        return;

    UpdateInviteButton(w);

    if (w.Check1->Value() <= 0) {
        for (int i = 1; i <= g.ExtUsersCount; ++i) {
            const QString request = MessagePath(FolderAt(i), ExternalUserAt(i), MessageKindId::Invitation);
            if (FileExists(request) && AnswerInvitation(w, i, request))
                break;
        }
    }

    if (w.Check1->Value() > 0)
        return;
    NoticeAcceptance(w);
}

} // namespace vk
