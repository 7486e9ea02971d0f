#include "shell/AutomationServer.h"

#include "ui/ControlRegistry.h"
#include "ui/Controls.h"
#include "ui/Dialogs.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonParseError>
#include <QJsonValue>
#include <QLocalServer>
#include <QLocalSocket>
#include <QPixmap>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <cmath>
#include <cstdio>
#include <utility>

namespace vk {

namespace {

QJsonObject Refuse(const QString& error)
{
    return QJsonObject{{"ok", false}, {"error", error}};
}

QJsonObject Ok()
{
    return QJsonObject{{"ok", true}};
}

// A whole number field of a request; false when it is missing or not whole.
bool IntField(const QJsonObject& request, const char* key, int& value)
{
    const QJsonValue field = request.value(QLatin1String(key));
    if (!field.isDouble())
        return false;
    const double number = field.toDouble();
    if (number != std::floor(number) || number < -2147483648.0 || number > 2147483647.0)
        return false;
    value = static_cast<int>(number);
    return true;
}

bool HasField(const QJsonObject& request, const char* key)
{
    return request.contains(QLatin1String(key));
}

// The key codes a user can type, as in the key tables of the game.
bool IsKeyCode(int code)
{
    return code == 8 || code == 9 || code == 13 || code == 27 || (code >= 32 && code <= 255);
}

MouseHandlers* MouseOf(Control* control)
{
    switch (control->Kind()) {
    case ControlKind::Image:
        return &static_cast<ImageControl*>(control)->Mouse;
    case ControlKind::Label:
        return &static_cast<LabelControl*>(control)->Mouse;
    default:
        return nullptr;
    }
}

// Runs a handler if there is one.
void Run(const std::function<void()>& handler)
{
    if (handler)
        handler();
}

// Brings the main window to the front as a click on it would; without a window
// manager nobody else does, and an inactive window hands no focus events to
// its widgets.
void Activate(QWidget* window)
{
    if (window && !window->isActiveWindow())
        window->activateWindow();
}

// A mouse press moves the focus to a control that takes focus by clicking, so
// that the control that had it sees its lost-focus event before the click.
void TakeClickFocus(Control* control)
{
    QWidget* widget = control->Widget();
    if (widget && (widget->focusPolicy() & Qt::ClickFocus) == Qt::ClickFocus)
        widget->setFocus(Qt::MouseFocusReason);
}

// A point of the request in twips, or the middle of the control.
bool PointOf(const QJsonObject& request, Control* control, int& x, int& y, QString& error)
{
    const bool hasX = HasField(request, "x");
    const bool hasY = HasField(request, "y");
    if (!hasX && !hasY) {
        x = control->Width() / 2;
        y = control->Height() / 2;
        return true;
    }
    if (!IntField(request, "x", x) || !IntField(request, "y", y)) {
        error = QStringLiteral("x and y must both be whole numbers of twips");
        return false;
    }
    return true;
}

QJsonValue NullUnless(bool applies, const QJsonValue& value)
{
    return applies ? value : QJsonValue(QJsonValue::Null);
}

} // namespace

AutomationServer* AutomationServer::Start(const QString& path, QObject* parent)
{
    // A socket file left by an earlier run that ended without closing it.
    QLocalServer::removeServer(path);
    auto* server = new QLocalServer();
    server->setSocketOptions(QLocalServer::UserAccessOption);
    if (!server->listen(path)) {
        std::fprintf(stderr, "automation: cannot listen on %s: %s\n", qPrintable(path),
                     qPrintable(server->errorString()));
        delete server;
        return nullptr;
    }
    // Qt makes the socket owner-only with execute bits; read and write are all it needs.
    QFile::setPermissions(server->fullServerName(), QFile::ReadOwner | QFile::WriteOwner);
    return new AutomationServer(server, parent);
}

AutomationServer::AutomationServer(QLocalServer* server, QObject* parent)
    : QObject(parent), server_(server), testRequests_(qgetenv("VALKENHORN_TEST_REQUESTS") == "1")
{
    server_->setParent(this);
    connect(server_, &QLocalServer::newConnection, this, [this] { Accept(); });
}

void AutomationServer::SetControls(ControlRegistry* controls, QWidget* mainWindow)
{
    controls_ = controls;
    mainWindow_ = mainWindow;
}

void AutomationServer::SetStateProvider(std::function<QVariantMap()> provider)
{
    state_ = std::move(provider);
}

void AutomationServer::SetPositionChanger(PositionChanger changer)
{
    positionChanger_ = std::move(changer);
}

void AutomationServer::Accept()
{
    while (QLocalSocket* socket = server_->nextPendingConnection()) {
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { ReadLines(socket); });
        connect(socket, &QLocalSocket::disconnected, this, [this, socket] {
            waiting_.remove(socket);
            socket->deleteLater();
        });
        ReadLines(socket);
    }
}

void AutomationServer::ReadLines(QLocalSocket* socket)
{
    while (!waiting_.contains(socket) && socket->canReadLine()) {
        const QByteArray line = socket->readLine().trimmed();
        if (line.isEmpty())
            continue;
        std::function<void()> deliver;
        QByteArray reply = Handle(line, deliver);
        reply.append('\n');
        socket->write(reply);
        socket->flush();
        if (!deliver)
            continue;
        // The reply is out before the input runs: a click may start a whole game
        // inside its handler. The client's next requests wait until the input is
        // under way, and are then served from inside its pumps or after it.
        waiting_.insert(socket);
        QPointer<QLocalSocket> client(socket);
        QTimer::singleShot(0, this, [this, client, deliver] {
            QTimer::singleShot(0, this, [this, client] {
                if (!client)
                    return;
                waiting_.remove(client.data());
                ReadLines(client.data());
            });
            Guarded(deliver);
        });
    }
}

QByteArray AutomationServer::Handle(const QByteArray& line, std::function<void()>& deliverAfterReply)
{
    QJsonParseError parseError{};
    const QJsonDocument parsed = QJsonDocument::fromJson(line, &parseError);
    QJsonObject reply;
    if (parseError.error != QJsonParseError::NoError) {
        reply = Refuse(QStringLiteral("bad request: ") + parseError.errorString());
    } else if (!parsed.isObject()) {
        reply = Refuse(QStringLiteral("bad request: not a JSON object"));
    } else {
        const QJsonObject request = parsed.object();
        const QString cmd = request.value(QLatin1String("cmd")).toString();
        static const QStringList windowCommands{"list",  "get", "click", "dblclick", "mousedown",
                                                "type",  "key", "focus", "select",   "screenshot"};
        if (!request.value(QLatin1String("cmd")).isString())
            reply = Refuse(QStringLiteral("bad request: no \"cmd\""));
        else if (windowCommands.contains(cmd) && (!controls_ || !mainWindow_))
            reply = Refuse(QStringLiteral("the main window is not up yet"));
        else if (cmd == QLatin1String("list"))
            reply = List();
        else if (cmd == QLatin1String("get"))
            reply = Get(request);
        else if (cmd == QLatin1String("click"))
            reply = Click(request, deliverAfterReply);
        else if (cmd == QLatin1String("dblclick"))
            reply = DblClick(request, deliverAfterReply);
        else if (cmd == QLatin1String("mousedown"))
            reply = MouseDown(request, deliverAfterReply);
        else if (cmd == QLatin1String("type"))
            reply = Type(request, deliverAfterReply);
        else if (cmd == QLatin1String("key"))
            reply = Key(request, deliverAfterReply);
        else if (cmd == QLatin1String("focus"))
            reply = Focus(request, deliverAfterReply);
        else if (cmd == QLatin1String("select"))
            reply = Select(request, deliverAfterReply);
        else if (cmd == QLatin1String("dialog"))
            reply = Dialog();
        else if (cmd == QLatin1String("answer"))
            reply = Answer(request, deliverAfterReply);
        else if (cmd == QLatin1String("state"))
            reply = State();
        else if (cmd == QLatin1String("screenshot"))
            reply = Screenshot(request);
        else if (cmd == QLatin1String("tamper"))
            reply = Tamper(request);
        else
            reply = Refuse(QStringLiteral("unknown command: ") + cmd);
    }
    if (!reply.value(QLatin1String("ok")).toBool())
        deliverAfterReply = nullptr;
    return QJsonDocument(reply).toJson(QJsonDocument::Compact);
}

Control* AutomationServer::InputTarget(const QJsonObject& request, QString& error) const
{
    const QJsonValue name = request.value(QLatin1String("name"));
    if (!name.isString()) {
        error = QStringLiteral("bad request: no \"name\"");
        return nullptr;
    }
    Control* control = controls_->Find(name.toString());
    if (!control) {
        error = QStringLiteral("no control named ") + name.toString();
        return nullptr;
    }
    if (!control->Reachable()) {
        error = name.toString() + QStringLiteral(" is hidden or disabled");
        return nullptr;
    }
    return control;
}

QJsonObject AutomationServer::List() const
{
    QJsonArray names;
    for (Control* control : controls_->All())
        names.append(control->Name());
    QJsonObject reply = Ok();
    reply.insert(QStringLiteral("names"), names);
    return reply;
}

QJsonObject AutomationServer::Get(const QJsonObject& request) const
{
    const QJsonValue name = request.value(QLatin1String("name"));
    if (!name.isString())
        return Refuse(QStringLiteral("bad request: no \"name\""));
    Control* control = controls_->Find(name.toString());
    if (!control)
        return Refuse(QStringLiteral("no control named ") + name.toString());

    const ControlKind kind = control->Kind();
    const bool isTimer = kind == ControlKind::Timer;
    const bool hasCaption = kind == ControlKind::Form || kind == ControlKind::Frame || kind == ControlKind::Button ||
                            kind == ControlKind::CheckBox || kind == ControlKind::Label;
    const bool hasText = kind == ControlKind::TextBox || kind == ControlKind::ComboBox;

    QString caption = control->Caption();
    if (kind == ControlKind::Form && caption.isEmpty() && control->Widget())
        caption = control->Widget()->windowTitle();

    QJsonValue value = QJsonValue::Null;
    if (kind == ControlKind::CheckBox)
        value = static_cast<CheckBoxControl*>(control)->Value();
    QJsonValue listIndex = QJsonValue::Null;
    QJsonValue items = QJsonValue::Null;
    if (kind == ControlKind::ComboBox) {
        auto* combo = static_cast<ComboBoxControl*>(control);
        listIndex = combo->ListIndex();
        items = QJsonArray::fromStringList(combo->Items());
    }
    QJsonValue picture = QJsonValue::Null;
    if (kind == ControlKind::Image)
        picture = static_cast<ImageControl*>(control)->Picture();
    else if (kind == ControlKind::Panel)
        picture = static_cast<PanelControl*>(control)->Picture();

    QJsonObject fields{
        {"name", control->Name()},
        {"kind", QString::fromLatin1(KindName(kind))},
        {"visible", NullUnless(!isTimer, control->Visible())},
        {"enabled", control->Enabled()},
        {"caption", NullUnless(hasCaption, caption)},
        {"text", NullUnless(hasText, control->Caption())},
        {"tag", control->Tag},
        {"toolTip", NullUnless(!isTimer, control->ToolTip())},
        {"backColor", NullUnless(!isTimer && control->BackColor() >= 0, control->BackColor())},
        {"left", NullUnless(!isTimer, control->Left())},
        {"top", NullUnless(!isTimer, control->Top())},
        {"width", NullUnless(!isTimer, control->Width())},
        {"height", NullUnless(!isTimer, control->Height())},
        {"value", value},
        {"listIndex", listIndex},
        {"items", items},
        {"picture", picture},
    };
    QJsonObject reply = Ok();
    reply.insert(QStringLiteral("control"), fields);
    return reply;
}

QJsonObject AutomationServer::Click(const QJsonObject& request, std::function<void()>& deliver) const
{
    QString error;
    Control* control = InputTarget(request, error);
    if (!control)
        return Refuse(error);
    QWidget* window = mainWindow_;
    switch (control->Kind()) {
    case ControlKind::Button: {
        auto* button = static_cast<ButtonControl*>(control);
        deliver = [button, window] {
            if (!button->Reachable())
                return;
            Activate(window);
            TakeClickFocus(button);
            if (button->Reachable())
                Run(button->Click);
        };
        return Ok();
    }
    case ControlKind::CheckBox: {
        auto* box = static_cast<CheckBoxControl*>(control);
        deliver = [box, window] {
            if (!box->Reachable())
                return;
            Activate(window);
            TakeClickFocus(box);
            if (!box->Reachable())
                return;
            box->SetValue(box->Value() ? 0 : 1);
            Run(box->Click);
        };
        return Ok();
    }
    case ControlKind::Image:
    case ControlKind::Label: {
        int x = 0, y = 0;
        if (!PointOf(request, control, x, y, error))
            return Refuse(error);
        // Press and release through the control's own mouse events: MouseDown, then Click.
        deliver = [control, x, y] {
            if (control->Reachable())
                PostMouseGesture(control, MouseGesture::Click, 1, x, y);
        };
        return Ok();
    }
    default:
        return Refuse(control->Name() + QStringLiteral(" takes no clicks"));
    }
}

QJsonObject AutomationServer::DblClick(const QJsonObject& request, std::function<void()>& deliver) const
{
    QString error;
    Control* control = InputTarget(request, error);
    if (!control)
        return Refuse(error);
    if (!MouseOf(control))
        return Refuse(control->Name() + QStringLiteral(" takes no double clicks"));
    int x = 0, y = 0;
    if (!PointOf(request, control, x, y, error))
        return Refuse(error);
    // The events a person's double click gives the control, each posted in
    // turn: MouseDown and Click of the first press, then MouseDown and
    // DblClick of the second. A Click handler that waits for the second click
    // pumps events and receives the second press inside its wait.
    deliver = [control, x, y] {
        if (control->Reachable())
            PostMouseGesture(control, MouseGesture::DoubleClick, 1, x, y);
    };
    return Ok();
}

QJsonObject AutomationServer::MouseDown(const QJsonObject& request, std::function<void()>& deliver) const
{
    QString error;
    Control* control = InputTarget(request, error);
    if (!control)
        return Refuse(error);
    if (!MouseOf(control))
        return Refuse(control->Name() + QStringLiteral(" takes no mouse-down"));
    int x = 0, y = 0;
    if (!IntField(request, "x", x) || !IntField(request, "y", y))
        return Refuse(QStringLiteral("bad request: mousedown needs whole numbers x and y in twips"));
    int button = 1;
    const bool oneButton = IntField(request, "button", button) && (button == 1 || button == 2 || button == 4);
    if (HasField(request, "button") && !oneButton)
        return Refuse(QStringLiteral("bad request: button is 1 (left), 2 (right) or 4 (middle)"));
    // A press without its release, through the control's own mouse events.
    deliver = [control, button, x, y] {
        if (control->Reachable())
            PostMouseGesture(control, MouseGesture::Press, button, x, y);
    };
    return Ok();
}

QJsonObject AutomationServer::Type(const QJsonObject& request, std::function<void()>& deliver) const
{
    QString error;
    Control* control = InputTarget(request, error);
    if (!control)
        return Refuse(error);
    if (control->Kind() != ControlKind::TextBox)
        return Refuse(control->Name() + QStringLiteral(" is not a text box"));
    const QJsonValue text = request.value(QLatin1String("text"));
    if (!text.isString())
        return Refuse(QStringLiteral("bad request: no \"text\""));
    QList<int> codes;
    for (QChar c : text.toString()) {
        const int code = c.unicode();
        if (!IsKeyCode(code))
            return Refuse(QStringLiteral("character code %1 cannot be typed").arg(code));
        codes.append(code);
    }
    auto* box = static_cast<TextBoxControl*>(control);
    deliver = [box, codes] {
        // One key press at a time; a key handler may hide or disable the box.
        for (int code : codes) {
            if (!box->Reachable())
                return;
            box->DeliverKey(code);
        }
    };
    return Ok();
}

QJsonObject AutomationServer::Key(const QJsonObject& request, std::function<void()>& deliver) const
{
    QString error;
    Control* control = InputTarget(request, error);
    if (!control)
        return Refuse(error);
    if (control->Kind() != ControlKind::TextBox)
        return Refuse(control->Name() + QStringLiteral(" takes no keys"));
    int code = 0;
    if (!IntField(request, "code", code) || !IsKeyCode(code))
        return Refuse(QStringLiteral("bad request: code must be 8, 9, 13, 27 or 32 to 255"));
    auto* box = static_cast<TextBoxControl*>(control);
    deliver = [box, code] {
        if (box->Reachable())
            box->DeliverKey(code);
    };
    return Ok();
}

QJsonObject AutomationServer::Focus(const QJsonObject& request, std::function<void()>& deliver) const
{
    QString error;
    Control* control = InputTarget(request, error);
    if (!control)
        return Refuse(error);
    QWidget* widget = control->Widget();
    if (!widget || widget->focusPolicy() == Qt::NoFocus)
        return Refuse(control->Name() + QStringLiteral(" cannot take the focus"));
    QWidget* window = mainWindow_;
    deliver = [control, widget, window] {
        if (!control->Reachable())
            return;
        Activate(window);
        widget->setFocus(Qt::OtherFocusReason);
    };
    return Ok();
}

QJsonObject AutomationServer::Select(const QJsonObject& request, std::function<void()>& deliver) const
{
    QString error;
    Control* control = InputTarget(request, error);
    if (!control)
        return Refuse(error);
    if (control->Kind() != ControlKind::ComboBox)
        return Refuse(control->Name() + QStringLiteral(" is not a combo box"));
    auto* combo = static_cast<ComboBoxControl*>(control);
    int index = 0;
    if (!IntField(request, "index", index))
        return Refuse(QStringLiteral("bad request: no whole number \"index\""));
    if (index < 0 || index >= combo->count())
        return Refuse(QStringLiteral("index %1 is outside the list of %2 entries").arg(index).arg(combo->count()));
    QWidget* window = mainWindow_;
    deliver = [combo, index, window] {
        if (!combo->Reachable())
            return;
        Activate(window);
        TakeClickFocus(combo);
        if (!combo->Reachable())
            return;
        combo->SetListIndex(index);
        Run(combo->Click);
    };
    return Ok();
}

QJsonObject AutomationServer::Dialog() const
{
    const OpenDialog* open = CurrentDialog();
    QJsonObject reply = Ok();
    if (!open) {
        reply.insert(QStringLiteral("dialog"), QJsonValue::Null);
        return reply;
    }
    reply.insert(QStringLiteral("dialog"), QJsonObject{
                                               {"kind", open->kind},
                                               {"title", open->title},
                                               {"text", open->text},
                                               {"buttons", QJsonArray::fromStringList(open->buttons)},
                                           });
    return reply;
}

QJsonObject AutomationServer::Answer(const QJsonObject& request, std::function<void()>& deliver) const
{
    const OpenDialog* open = CurrentDialog();
    if (!open)
        return Refuse(QStringLiteral("no dialog is open"));
    const QJsonValue button = request.value(QLatin1String("button"));
    const QJsonValue folder = request.value(QLatin1String("folder"));
    if (button.isString() == folder.isString())
        return Refuse(QStringLiteral("bad request: answer needs either \"button\" or \"folder\""));
    if (button.isString()) {
        const QString pressed = button.toString();
        if (open->kind != QLatin1String("message"))
            return Refuse(QStringLiteral("the open dialog is a ") + open->kind +
                          QStringLiteral(", not a message box; a folder picker takes \"folder\""));
        if (!open->buttons.contains(pressed))
            return Refuse(QStringLiteral("the dialog has no button ") + pressed);
        deliver = [pressed] {
            const QString failed = AnswerDialog(pressed);
            if (!failed.isEmpty())
                std::fprintf(stderr, "automation: answer %s: %s\n", qPrintable(pressed), qPrintable(failed));
        };
        return Ok();
    }
    if (open->kind != QLatin1String("folder"))
        return Refuse(QStringLiteral("the open dialog is not the folder picker"));
    const QString path = folder.toString();
    deliver = [path] {
        const QString failed = AnswerFolderDialog(path);
        if (!failed.isEmpty())
            std::fprintf(stderr, "automation: answer folder %s: %s\n", qPrintable(path), qPrintable(failed));
    };
    return Ok();
}

QJsonObject AutomationServer::State() const
{
    if (!state_)
        return Refuse(QStringLiteral("the main window is not up yet"));
    QJsonObject reply = Ok();
    reply.insert(QStringLiteral("state"), QJsonObject::fromVariantMap(state_()));
    return reply;
}

QJsonObject AutomationServer::Screenshot(const QJsonObject& request) const
{
    const QJsonValue path = request.value(QLatin1String("path"));
    if (!path.isString() || path.toString().isEmpty())
        return Refuse(QStringLiteral("bad request: no \"path\""));
    const QPixmap picture = mainWindow_->grab();
    if (picture.isNull() || !picture.save(path.toString(), "PNG"))
        return Refuse(QStringLiteral("cannot write ") + path.toString());
    return Ok();
}

QJsonObject AutomationServer::Tamper(const QJsonObject& request) const
{
    if (!testRequests_)
        return Refuse(QStringLiteral("tamper is a test request: start the program with VALKENHORN_TEST_REQUESTS=1"));
    if (!positionChanger_)
        return Refuse(QStringLiteral("the main window is not up yet"));
    const QJsonValue section = request.value(QLatin1String("section"));
    const QJsonValue key = request.value(QLatin1String("key"));
    if (!section.isString() || section.toString().isEmpty())
        return Refuse(QStringLiteral("bad request: no \"section\""));
    if (!key.isString() || key.toString().isEmpty())
        return Refuse(QStringLiteral("bad request: no \"key\""));
    // The value as the saved game writes it: a text, or a whole number.
    QString value;
    int number = 0;
    if (request.value(QLatin1String("value")).isString())
        value = request.value(QLatin1String("value")).toString();
    else if (IntField(request, "value", number))
        value = QString::number(number);
    else
        return Refuse(QStringLiteral("bad request: \"value\" must be a text or a whole number"));
    const QString why = positionChanger_(section.toString(), key.toString(), value);
    if (!why.isEmpty())
        return Refuse(why);
    return Ok();
}

} // namespace vk
