#include "shell/TurnNotice.h"

#include "shell/Settings.h"
#include "ui/Hoofdvenster.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <QVariantMap>

namespace vk {

namespace {

const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");

// The number the service gave the last notice, so that a new notice replaces
// the one before instead of piling up.
uint lastNoticeId = 0;

// Sends Notify and returns at once; the answer (the notice's number, or an
// error when nobody owns the service name) arrives later in the event loop and
// an error is dropped.
void SendDesktopNotice(Notice notice, const QDBusConnection& bus)
{
    if (!bus.isConnected())
        return;
    QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kService, QStringLiteral("Notify"));
    QVariantMap hints;
    hints.insert(QStringLiteral("desktop-entry"), QString::fromLatin1(kDesktopId));
    hints.insert(QStringLiteral("urgency"), QVariant::fromValue(uchar(1)));
    call << QStringLiteral("Valkenhorn") << lastNoticeId << QString::fromLatin1(kDesktopId) << NoticeSummary(notice)
         << NoticeBody(notice) << QStringList() << hints << -1;
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [](QDBusPendingCallWatcher* answer) {
        const QDBusPendingReply<uint> reply = *answer;
        if (reply.isValid())
            lastNoticeId = reply.value();
        answer->deleteLater();
    });
}

// A session bus that the environment names (the address, or the user bus in
// the runtime folder). Without one no connection is tried: libdbus would
// otherwise try to start a bus of its own for the X display.
bool SessionBusNamed()
{
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFileInfo::exists(runtime + QStringLiteral("/bus"));
}

} // namespace

QString NoticeSummary(Notice notice)
{
    switch (notice) {
    case Notice::YourTurn:
        return QStringLiteral("Valkenhorn: u bent aan de beurt.");
    case Notice::Invitation:
        return QStringLiteral("Valkenhorn: u ontving een uitnodiging.");
    case Notice::Question:
        return QStringLiteral("Valkenhorn: uw tegenspeler vraagt iets.");
    }
    return QString();
}

QString NoticeBody(Notice notice)
{
    switch (notice) {
    case Notice::YourTurn:
        return QStringLiteral("Uw tegenspeler heeft zijn beurt beëindigd.");
    case Notice::Invitation:
        return QStringLiteral("Open het venster om de uitnodiging te aanvaarden of te weigeren.");
    case Notice::Question:
        return QStringLiteral("Open het venster om te antwoorden.");
    }
    return QString();
}

bool TurnNoticeOn()
{
    return GetSetting(QStringLiteral("TurnNotice")).compare(FlagText(false), Qt::CaseInsensitive) != 0;
}

void TellPlayer(Hoofdvenster& w, Notice notice)
{
    if (w.isActiveWindow() || !TurnNoticeOn())
        return;
    if (SessionBusNamed())
        SendDesktopNotice(notice, QDBusConnection::sessionBus());
    // The window asks for attention (a blinking task bar entry).
    QApplication::alert(&w);
}

} // namespace vk
