#pragma once

// The test-automation interface: with `valkenhorn --automation PATH` the program
// listens on a Unix-domain socket at PATH (mode 0600). One JSON object per line
// in, one per line out, served from the event loop, also inside nested pumps
// and open dialogs. Inputs act exactly as a user's would: a hidden or disabled
// control refuses.

#include <QJsonObject>
#include <QObject>
#include <QSet>
#include <QString>
#include <QVariantMap>

#include <functional>

class QLocalServer;
class QLocalSocket;
class QWidget;

namespace vk {

class Control;
class ControlRegistry;

class AutomationServer : public QObject {
public:
    // Starts listening; returns nullptr (and prints why on stderr) when the socket can't be made.
    static AutomationServer* Start(const QString& path, QObject* parent);

    // Filled once the main window exists; before that only the dialog requests work.
    void SetControls(ControlRegistry* controls, QWidget* mainWindow);
    // The program's named values for {"cmd":"state"}.
    void SetStateProvider(std::function<QVariantMap()> provider);
    // For {"cmd":"tamper","section":S,"key":K,"value":V}, a test request that
    // changes one value of the running game's position behind the game's
    // back: returns an empty text when done, else why not. Served only when
    // the program was started with VALKENHORN_TEST_REQUESTS=1.
    using PositionChanger = std::function<QString(const QString& section, const QString& key, const QString& value)>;
    void SetPositionChanger(PositionChanger changer);

private:
    AutomationServer(QLocalServer* server, QObject* parent);
    void Accept();
    void ReadLines(QLocalSocket* socket);
    QByteArray Handle(const QByteArray& line, std::function<void()>& deliverAfterReply);

    // One request each; an input fills `deliver` with what runs after the reply.
    QJsonObject List() const;
    QJsonObject Get(const QJsonObject& request) const;
    QJsonObject Click(const QJsonObject& request, std::function<void()>& deliver) const;
    QJsonObject DblClick(const QJsonObject& request, std::function<void()>& deliver) const;
    QJsonObject MouseDown(const QJsonObject& request, std::function<void()>& deliver) const;
    QJsonObject Type(const QJsonObject& request, std::function<void()>& deliver) const;
    QJsonObject Key(const QJsonObject& request, std::function<void()>& deliver) const;
    QJsonObject Focus(const QJsonObject& request, std::function<void()>& deliver) const;
    QJsonObject Select(const QJsonObject& request, std::function<void()>& deliver) const;
    QJsonObject Dialog() const;
    QJsonObject Answer(const QJsonObject& request, std::function<void()>& deliver) const;
    QJsonObject State() const;
    QJsonObject Screenshot(const QJsonObject& request) const;
    QJsonObject Tamper(const QJsonObject& request) const;

    // The control an input is meant for: known and reachable by a user, or an
    // error text in `error`.
    Control* InputTarget(const QJsonObject& request, QString& error) const;

    QLocalServer* server_;
    ControlRegistry* controls_ = nullptr;
    QWidget* mainWindow_ = nullptr;
    std::function<QVariantMap()> state_;
    PositionChanger positionChanger_;
    // VALKENHORN_TEST_REQUESTS was 1 at the start: requests that change the
    // game behind its back are served.
    bool testRequests_ = false;
    // Clients whose last input has been answered but not yet delivered; their
    // further requests wait, so that they see the input's effect.
    QSet<QLocalSocket*> waiting_;
};

} // namespace vk
