#include "link/PollCycle.h"

#include "link/SharedFolderFiles.h"
#include "shell/Clock.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "shell/Settings.h"
#include "ui/Hoofdvenster.h"

namespace vk {

namespace {

constexpr MessageKindId Presence = MessageKindId::Presence;

// USER_ID of a presence file, or the own LocalID when it has none.
QString UserIdIn(const QString& path)
{
    return ReadMessageKey(path, Presence, 0, Global().LocalID);
}

void LogPresence(const char* code, const QString& middle, const QString& name, const QString& end)
{
    LogAt(QStringLiteral("timer 1 event ") + QLatin1String(code) + QStringLiteral(" - action counter = ") +
          QString::number(Polls().ActionCounter) + middle + name + end);
}

QString OwnFile(int i)
{
    return MessagePath(FolderAt(i), Global().LocalUser, Presence);
}

QString PeerFile(int i)
{
    return MessagePath(FolderAt(i), ExternalUserAt(i), Presence);
}

// Phase 1: the own file is in every folder while on-line and not connected,
// only in the partner's folder while connected, and nowhere while off-line.
void KeepOwnFiles(Hoofdvenster& w)
{
    const GlobalValues& g = Global();
    const QString removing = QStringLiteral(" - removing local player ID file for ");
    const QString writing = QStringLiteral(" - writing local player ID file for ");
    const QString at = QStringLiteral(" at ");
    for (int i = 1; i <= g.ExtUsersCount; ++i) {
        const QString own = OwnFile(i);
        const bool connected = w.Check1->Value() == 1;
        if (w.ShareStatus->Value() != 1 || (connected && i != w.V.SelectedUser)) {
            if (FileExists(own)) {
                LogPresence(w.ShareStatus->Value() != 1 ? "1d" : "1b", removing, ExternalUserAt(i), at);
                DeleteUntilGone(own);
            }
        } else if (!FileExists(own)) {
            LogPresence(connected ? "1a" : "1c", writing, ExternalUserAt(i), at);
            SendMessage(own, Presence, {g.LocalID});
        }
    }
}

// Phase 2: the opponent's file, by the value of ActionCounter.
void CheckPeerFile(Hoofdvenster& w, int i, bool connected)
{
    const QString peer = PeerFile(i);
    const bool labelled = connected || i == w.V.SelectedUser;
    switch (Polls().ActionCounter) {
    case 0:
        if (!FileExists(peer) && labelled) {
            LogPresence(connected ? "2b" : "2e", QStringLiteral(" - labeling "), ExternalUserAt(i),
                        QStringLiteral(" as absent at "));
            w.Combo_ExternUsers->SetBackColor(Red);
            SetActiveAt(i, false);
        }
        break;
    case 1:
        if (FileExists(peer)) {
            LogPresence(connected ? "2a" : "2d", QStringLiteral(" - removing ID file from "), ExternalUserAt(i),
                        QStringLiteral(" at "));
            DeleteUntilGone(peer);
        }
        break;
    default:
        if (FileExists(peer) && !ActiveAt(i) && labelled) {
            LogPresence(connected ? "2c" : "2f", QStringLiteral(" - labeling "), ExternalUserAt(i),
                        QStringLiteral(" as present at "));
            w.Combo_ExternUsers->SetBackColor(Green);
            SetActiveAt(i, true);
        }
        break;
    }
}

// Phase 3: a slot whose name has no .xid of another PC takes the name of the
// first .xid in its folder that another PC wrote.
void ScanNames(Hoofdvenster& w)
{
    GlobalValues& g = Global();
    for (int i = 1; i <= g.ExtUsersCount; ++i) {
        const QString peer = PeerFile(i);
        if (FileExists(peer) && UserIdIn(peer) != g.LocalID)
            continue;
        const QString folder = FolderAt(i);
        for (const QString& name : ListMatching(folder, QStringLiteral("*.xid"))) {
            if (UserIdIn(folder + QLatin1Char('/') + name) == g.LocalID)
                continue;
            const QString newName = name.left(name.size() - 4);
            LogPresence("3", QStringLiteral(" - name of external player "), ExternalUserAt(i),
                        QStringLiteral(" changed to ") + newName + QStringLiteral(" at "));
            ExternalUserAt(i) = newName;
            SaveSetting(SlotKey(i, QStringLiteral("External_User")), newName);
            w.Combo_ExternUsers->setItemText(i, newName);
            break;
        }
    }
}

} // namespace

void PresencePoll(Hoofdvenster& w)
{
    PumpInterface();
    GlobalValues& g = Global();
    if (g.ExtUsersCount == 0 || g.LinkBusy)
        return;
    PollCounters& p = Polls();
    p.ActionCounter = (p.ActionCounter + 1) % 80;

    KeepOwnFiles(w);

    if (w.Check1->Value() == 1) {
        CheckPeerFile(w, w.V.SelectedUser, true);
    } else {
        for (int i = 1; i <= g.ExtUsersCount; ++i)
            CheckPeerFile(w, i, false);
    }

    if (p.ActionCounter == 60)
        ScanNames(w);
}

} // namespace vk
