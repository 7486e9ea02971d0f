#include "game/GameFiles.h"

#include "game/ProfileValues.h"
#include "game/SavedGame.h"
#include "link/SharedFolderFiles.h"
#include "shell/Clock.h"
#include "shell/Global.h"
#include "ui/Hoofdvenster.h"

#include <QFile>

namespace vk {

QString GameFolder(const Hoofdvenster& w)
{
    return FolderAt(w.V.SelectedUser);
}

QString OpponentName(const Hoofdvenster& w)
{
    return ExternalUserAt(w.V.SelectedUser);
}

QString SavedGameFile(const Hoofdvenster& w)
{
    const std::filesystem::path path =
        SavedGamePath(QFile::encodeName(Global().DataFolder).toStdString(), OpponentName(w).toLatin1().toStdString());
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

QString OwnFile(const Hoofdvenster& w, MessageKindId kind)
{
    return MessagePath(GameFolder(w), Global().LocalUser, kind);
}

QString OpponentFile(const Hoofdvenster& w, MessageKindId kind)
{
    return MessagePath(GameFolder(w), OpponentName(w), kind);
}

QString OwnTossFile(const Hoofdvenster& w, int tossNumber)
{
    return MessagePath(GameFolder(w), Global().LocalUser, QString::fromStdString(TossExtension(tossNumber)));
}

QString OpponentTossFile(const Hoofdvenster& w, int tossNumber)
{
    return MessagePath(GameFolder(w), OpponentName(w), QString::fromStdString(TossExtension(tossNumber)));
}

void WaitForRestOfMessage()
{
    PumpInterfaceWaiting(ScaledMs(50));
}

MessageValues ReadWholeMessage(MessageKindId kind, const QString& path, const QString& ownDefault)
{
    const WaitingFor waiting(QStringLiteral("opponent's ") + QString::fromStdString(KindOf(kind).Extension));
    return ReadMessage(KindOf(kind), QFile::encodeName(path).toStdString(), &WaitForRestOfMessage,
                       ownDefault.toStdString());
}

int NumberIn(const MessageValues& values, const char* key)
{
    const auto found = values.find(key);
    return ProfileInt(found == values.end() ? std::string("-1") : found->second, key);
}

} // namespace vk
