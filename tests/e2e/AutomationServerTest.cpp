// The automation server in-process: a small window of real controls, a client
// socket in the same event loop, and the order in which replies and inputs
// arrive.

#include "shell/AutomationServer.h"
#include "ui/ControlRegistry.h"
#include "ui/Controls.h"
#include "ui/Dialogs.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <memory>
#include <mutex>
#include <thread>

namespace {

using vk::AutomationServer;

bool PumpUntil(const std::function<bool()>& done, int ms = 10000)
{
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > ms)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

// Waits from the client's thread while the main thread runs the event loop.
bool WaitFor(const std::function<bool()>& done, int ms = 5000)
{
    for (int waited = 0; !done(); waited += 5) {
        if (waited > ms)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

// What the handlers saw, written on the main thread and read on the client's.
class Record {
public:
    void Add(const QString& event)
    {
        std::lock_guard<std::mutex> lock(mutex_);
        events_ << event;
    }
    QStringList Events() const
    {
        std::lock_guard<std::mutex> lock(mutex_);
        return events_;
    }
    qsizetype Size() const { return Events().size(); }

private:
    mutable std::mutex mutex_;
    QStringList events_;
};

// A blocking client on its own thread, as an outside test tool would be: the
// program's event loop (here the main thread) goes on while it waits, also
// inside open dialogs.
class Client {
public:
    explicit Client(const QString& path)
    {
        fd_ = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray name = QFile::encodeName(path);
        std::memcpy(address.sun_path, name.constData(), std::min<size_t>(name.size(), sizeof address.sun_path - 1));
        connected_ = ::connect(fd_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
        timeval timeout{10, 0};
        ::setsockopt(fd_, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof timeout);
    }
    ~Client() { ::close(fd_); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    bool Connected() const { return connected_; }

    void Send(const QByteArray& lines)
    {
        for (qsizetype sent = 0; sent < lines.size();) {
            const ssize_t n = ::send(fd_, lines.constData() + sent, lines.size() - sent, MSG_NOSIGNAL);
            if (n <= 0)
                return;
            sent += n;
        }
    }

    QJsonObject Reply()
    {
        while (!buffer_.contains('\n')) {
            char chunk[4096];
            const ssize_t n = ::recv(fd_, chunk, sizeof chunk, 0);
            if (n <= 0)
                return QJsonObject{{"timeout", true}};
            buffer_.append(chunk, n);
        }
        const qsizetype end = buffer_.indexOf('\n');
        const QByteArray line = buffer_.left(end);
        buffer_.remove(0, end + 1);
        ++replies;
        return QJsonDocument::fromJson(line).object();
    }

    QJsonObject Ask(const QJsonObject& request)
    {
        Send(QJsonDocument(request).toJson(QJsonDocument::Compact) + "\n");
        return Reply();
    }

    std::atomic<int> replies{0};

private:
    int fd_ = -1;
    bool connected_ = false;
    QByteArray buffer_;
};

// A window with one control of each kind that takes input, inside a frame.
class AutomationServerTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        path = dir.filePath(QStringLiteral("automation.sock"));
        window = std::make_unique<QWidget>();
        window->setObjectName(QStringLiteral("TestWindow"));
        window->resize(600, 400);
        frame = new vk::FrameControl(window.get(), QStringLiteral("frTest"), QStringLiteral("Test"));
        frame->Move(0, 0, 6000, 4500);
        button = new vk::ButtonControl(frame, QStringLiteral("cmdTest"), QStringLiteral("Druk"));
        button->Move(120, 240, 1455, 300);
        check = new vk::CheckBoxControl(frame, QStringLiteral("chkTest"), QStringLiteral("Vinkje"));
        check->Move(120, 720, 1455, 300);
        combo = new vk::ComboBoxControl(frame, QStringLiteral("cboTest"));
        combo->Move(120, 1200, 1455, 315);
        combo->addItems({QStringLiteral("Geen Speler"), QStringLiteral("Anna"), QStringLiteral("Bert")});
        text = new vk::TextBoxControl(frame, QStringLiteral("txtTest"), QString());
        text->Move(120, 1680, 1575, 325);
        label = new vk::LabelControl(frame, QStringLiteral("lblTest"), QStringLiteral("bord"));
        label->Move(120, 2160, 1455, 300);
        image = new vk::ImageControl(frame, QStringLiteral("imgTest"), true);
        image->Move(2400, 240, 600, 900);
        timer = new vk::TimerControl(window.get(), QStringLiteral("tmrTest"), 1000);
        for (vk::Control* c : std::initializer_list<vk::Control*>{frame, button, check, combo, text, label, image, timer})
            controls.Add(c);
        window->show();
        ASSERT_TRUE(PumpUntil([this] { return window->isVisible(); }));

        server = AutomationServer::Start(path, nullptr);
        ASSERT_NE(server, nullptr);
        server->SetControls(&controls, window.get());
    }

    void TearDown() override
    {
        delete server;
        window.reset();
    }

    // Runs the client's part on its own thread while this thread serves.
    void Script(const std::function<void(Client&)>& steps, const QString& socketPath = QString())
    {
        std::atomic<bool> done{false};
        std::thread client([&] {
            Client c(socketPath.isEmpty() ? path : socketPath);
            EXPECT_TRUE(c.Connected());
            if (c.Connected())
                steps(c);
            done = true;
        });
        const bool finished = PumpUntil([&] { return done.load(); }, 30000);
        EXPECT_TRUE(finished) << "the client's steps did not end";
        if (!finished)
            std::abort();
        client.join();
    }

    static bool Ok(const QJsonObject& reply) { return reply.value("ok").toBool(false) && !reply.contains("error"); }

    static bool Refused(const QJsonObject& reply)
    {
        return reply.value("ok") == QJsonValue(false) && !reply.value("error").toString().isEmpty();
    }

    static QJsonObject Get(Client& c, const char* name)
    {
        return c.Ask(QJsonObject{{"cmd", "get"}, {"name", name}}).value("control").toObject();
    }

    QTemporaryDir dir;
    QString path;
    std::unique_ptr<QWidget> window;
    vk::ControlRegistry controls;
    vk::FrameControl* frame = nullptr;
    vk::ButtonControl* button = nullptr;
    vk::CheckBoxControl* check = nullptr;
    vk::ComboBoxControl* combo = nullptr;
    vk::TextBoxControl* text = nullptr;
    vk::LabelControl* label = nullptr;
    vk::ImageControl* image = nullptr;
    vk::TimerControl* timer = nullptr;
    AutomationServer* server = nullptr;
};

TEST_F(AutomationServerTest, SocketIsOwnerOnlyAndReplacesAStaleFile)
{
    struct stat info {};
    ASSERT_EQ(::stat(QFile::encodeName(path).constData(), &info), 0);
    EXPECT_TRUE(S_ISSOCK(info.st_mode));
    EXPECT_EQ(info.st_mode & 0777, 0600u);

    // A file left at the path (as after a crash) is replaced.
    const QString stale = dir.filePath(QStringLiteral("stale.sock"));
    {
        QFile file(stale);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    AutomationServer* second = AutomationServer::Start(stale, nullptr);
    ASSERT_NE(second, nullptr);
    second->SetControls(&controls, window.get());
    Script([](Client& c) { EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "list"}}))); }, stale);
    delete second;
}

TEST_F(AutomationServerTest, ListNamesEveryControlInOrder)
{
    Script([](Client& c) {
        const QJsonObject reply = c.Ask(QJsonObject{{"cmd", "list"}});
        ASSERT_TRUE(Ok(reply));
        QStringList names;
        for (const QJsonValue& v : reply.value("names").toArray())
            names << v.toString();
        EXPECT_EQ(names, (QStringList{"frTest", "cmdTest", "chkTest", "cboTest", "txtTest", "lblTest", "imgTest",
                                      "tmrTest"}));
    });
}

TEST_F(AutomationServerTest, GetGivesEveryFieldWithNullWhereItDoesNotApply)
{
    Script([](Client& c) {
        const QJsonObject b = Get(c, "cmdTest");
        EXPECT_EQ(b.keys().size(), 17);
        EXPECT_EQ(b.value("kind").toString(), "button");
        EXPECT_EQ(b.value("caption").toString(), "Druk");
        EXPECT_EQ(b.value("left").toInt(), 120);
        EXPECT_EQ(b.value("top").toInt(), 240);
        EXPECT_EQ(b.value("width").toInt(), 1455);
        EXPECT_EQ(b.value("height").toInt(), 300);
        EXPECT_EQ(b.value("visible"), QJsonValue(true));
        EXPECT_EQ(b.value("enabled"), QJsonValue(true));
        for (const char* field : {"text", "value", "listIndex", "items", "picture"})
            EXPECT_TRUE(b.value(field).isNull()) << field;

        const QJsonObject box = Get(c, "chkTest");
        EXPECT_EQ(box.value("kind").toString(), "checkbox");
        EXPECT_EQ(box.value("value"), QJsonValue(0));
        EXPECT_EQ(box.value("caption").toString(), "Vinkje");

        const QJsonObject list = Get(c, "cboTest");
        EXPECT_EQ(list.value("kind").toString(), "combobox");
        EXPECT_EQ(list.value("items").toArray(), (QJsonArray{"Geen Speler", "Anna", "Bert"}));
        EXPECT_EQ(list.value("listIndex"), QJsonValue(0));
        EXPECT_EQ(list.value("text").toString(), "Geen Speler");
        EXPECT_TRUE(list.value("caption").isNull());

        const QJsonObject edit = Get(c, "txtTest");
        EXPECT_EQ(edit.value("kind").toString(), "textbox");
        EXPECT_EQ(edit.value("text"), QJsonValue(QString()));
        EXPECT_TRUE(edit.value("caption").isNull());

        const QJsonObject clock = Get(c, "tmrTest");
        EXPECT_EQ(clock.value("kind").toString(), "timer");
        EXPECT_EQ(clock.value("enabled"), QJsonValue(false));
        for (const char* field : {"visible", "left", "top", "width", "height", "caption", "text", "toolTip", "backColor"})
            EXPECT_TRUE(clock.value(field).isNull()) << field;

        EXPECT_EQ(Get(c, "imgTest").value("kind").toString(), "image");
        EXPECT_EQ(Get(c, "imgTest").value("picture"), QJsonValue(QString()));
        EXPECT_EQ(Get(c, "lblTest").value("kind").toString(), "label");
        EXPECT_EQ(Get(c, "frTest").value("kind").toString(), "frame");
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "get"}, {"name", "nietsTest"}})));
    });
}

TEST_F(AutomationServerTest, ReplyIsOutBeforeTheClickRuns)
{
    std::atomic<Client*> client{nullptr};
    std::atomic<int> repliesWhenClicked{-1};
    button->Click = [&] {
        // The handler waits (without pumping) for the client to hold the reply.
        WaitFor([&] { return client.load() && client.load()->replies.load() > 0; }, 2000);
        repliesWhenClicked = client.load() ? client.load()->replies.load() : 0;
    };
    Script([&](Client& c) {
        client = &c;
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "cmdTest"}})));
        EXPECT_TRUE(WaitFor([&] { return repliesWhenClicked.load() >= 0; }));
    });
    EXPECT_EQ(repliesWhenClicked.load(), 1);
}

TEST_F(AutomationServerTest, LaterRequestsSeeTheInputDelivered)
{
    button->Click = [&] { label->SetCaption(QStringLiteral("geklikt")); };
    Script([](Client& c) {
        c.Send("{\"cmd\":\"click\",\"name\":\"cmdTest\"}\n{\"cmd\":\"get\",\"name\":\"lblTest\"}\n");
        EXPECT_TRUE(Ok(c.Reply()));
        EXPECT_EQ(c.Reply().value("control").toObject().value("caption").toString(), "geklikt");
    });
}

TEST_F(AutomationServerTest, CheckBoxTogglesThenClicks)
{
    Record seen;
    check->Click = [&] { seen.Add(QString::number(check->Value())); };
    Script([&](Client& c) {
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "chkTest"}})));
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "chkTest"}})));
        EXPECT_TRUE(WaitFor([&] { return seen.Size() == 2; }));
    });
    EXPECT_EQ(seen.Events(), (QStringList{"1", "0"}));
}

TEST_F(AutomationServerTest, PictureClickIsMouseDownThenClick)
{
    Record seen;
    image->Mouse.MouseDown = [&](int b, int x, int y) { seen.Add(QStringLiteral("down %1 %2 %3").arg(b).arg(x).arg(y)); };
    image->Mouse.Click = [&] { seen.Add(QStringLiteral("click")); };
    image->Mouse.DblClick = [&] { seen.Add(QStringLiteral("dbl")); };
    Script([&](Client& c) {
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "imgTest"}})));
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "imgTest"}, {"x", 30}, {"y", 45}})));
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "dblclick"}, {"name", "imgTest"}, {"x", 300}, {"y", 450}})));
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "dblclick"}, {"name", "imgTest"}})));
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "mousedown"}, {"name", "imgTest"}, {"x", 15}, {"y", 0}})));
        EXPECT_TRUE(
            Ok(c.Ask(QJsonObject{{"cmd", "mousedown"}, {"name", "imgTest"}, {"x", 15}, {"y", 0}, {"button", 2}})));
        EXPECT_TRUE(WaitFor([&] { return seen.Size() == 14; }));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "mousedown"}, {"name", "imgTest"}, {"x", 1.5}, {"y", 0}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "mousedown"}, {"name", "imgTest"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "imgTest"}, {"x", 3}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "dblclick"}, {"name", "cmdTest"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "mousedown"}, {"name", "cmdTest"}, {"x", 1}, {"y", 1}})));
    });
    // Without a point a click or double click falls in the middle of the
    // picture (600 x 900 twips); a double click is the first press's
    // mouse-down and click, then the second press's mouse-down and double click.
    EXPECT_EQ(seen.Events(), (QStringList{"down 1 300 450", "click", "down 1 30 45", "click",
                                          "down 1 300 450", "click", "down 1 300 450", "dbl",
                                          "down 1 300 450", "click", "down 1 300 450", "dbl",
                                          "down 1 15 0", "down 2 15 0"}));
}

TEST_F(AutomationServerTest, LabelClickRunsItsMouseHandlers)
{
    Record seen;
    label->Mouse.MouseDown = [&](int b, int, int) { seen.Add(QStringLiteral("down %1").arg(b)); };
    label->Mouse.Click = [&] { seen.Add(QStringLiteral("click")); };
    Script([&](Client& c) {
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "lblTest"}})));
        EXPECT_TRUE(WaitFor([&] { return seen.Size() == 2; }));
    });
    EXPECT_EQ(seen.Events(), (QStringList{"down 1", "click"}));
}

TEST_F(AutomationServerTest, TypeSendsEachKeyThroughKeyPress)
{
    Record codes;
    text->KeyPress = [&](int& key) {
        codes.Add(QString::number(key));
        if (key >= '0' && key <= '9')
            key = 0;
    };
    Script([&](Client& c) {
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "type"}, {"name", "txtTest"}, {"text", "a1b c"}})));
        EXPECT_EQ(Get(c, "txtTest").value("text").toString(), "ab c");
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "key"}, {"name", "txtTest"}, {"code", 8}})));
        EXPECT_EQ(Get(c, "txtTest").value("text").toString(), "ab ");
        for (int code : {9, 13, 27, 32, 255})
            EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "key"}, {"name", "txtTest"}, {"code", code}}))) << code;
        EXPECT_TRUE(WaitFor([&] { return codes.Size() == 11; }));
        for (int code : {0, 7, 10, 31, 256})
            EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "key"}, {"name", "txtTest"}, {"code", code}}))) << code;
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "key"}, {"name", "txtTest"}, {"code", 65.5}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "type"}, {"name", "txtTest"}, {"text", QStringLiteral("\u20ac")}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "type"}, {"name", "cmdTest"}, {"text", "a"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "key"}, {"name", "cmdTest"}, {"code", 13}})));
    });
    EXPECT_EQ(codes.Events(), (QStringList{"97", "49", "98", "32", "99", "8", "9", "13", "27", "32", "255"}));
}

TEST_F(AutomationServerTest, SelectSetsTheIndexThenClicks)
{
    Record seen;
    combo->Click = [&] { seen.Add(QString::number(combo->ListIndex())); };
    Script([&](Client& c) {
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "select"}, {"name", "cboTest"}, {"index", 2}})));
        EXPECT_EQ(Get(c, "cboTest").value("listIndex"), QJsonValue(2));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "select"}, {"name", "cboTest"}, {"index", 3}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "select"}, {"name", "cboTest"}, {"index", -1}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "select"}, {"name", "cboTest"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "select"}, {"name", "txtTest"}, {"index", 0}})));
    });
    EXPECT_EQ(seen.Events(), QStringList{"2"});
}

TEST_F(AutomationServerTest, FocusMovesToTheControl)
{
    Script([](Client& c) {
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "focus"}, {"name", "txtTest"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "focus"}, {"name", "imgTest"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "focus"}, {"name", "tmrTest"}})));
    });
    EXPECT_EQ(window->focusWidget(), text);
}

TEST_F(AutomationServerTest, ClickMovesTheFocusFirst)
{
    QWidget* focusAtClick = nullptr;
    button->Click = [&] { focusAtClick = window->focusWidget(); };
    text->setFocus();
    Script([](Client& c) { EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "cmdTest"}}))); });
    PumpUntil([&] { return focusAtClick != nullptr; });
    EXPECT_EQ(focusAtClick, button);
}

TEST_F(AutomationServerTest, HiddenOrDisabledContainerRefusesInputs)
{
    std::atomic<int> clicks{0};
    button->Click = [&] { ++clicks; };
    frame->SetEnabled(false);
    Script([](Client& c) {
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "cmdTest"}})));
        // The button keeps its own flag.
        EXPECT_EQ(Get(c, "cmdTest").value("enabled"), QJsonValue(true));
    });
    frame->SetEnabled(true);
    frame->SetVisible(false);
    Script([](Client& c) {
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "cmdTest"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "type"}, {"name", "txtTest"}, {"text", "a"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "select"}, {"name", "cboTest"}, {"index", 1}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "imgTest"}})));
        EXPECT_EQ(Get(c, "cmdTest").value("visible"), QJsonValue(true));
        EXPECT_EQ(Get(c, "frTest").value("visible"), QJsonValue(false));
    });
    frame->SetVisible(true);
    button->SetEnabled(false);
    Script([](Client& c) {
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "cmdTest"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "tmrTest"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "frTest"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "nietsTest"}})));
    });
    button->SetEnabled(true);
    Script([&](Client& c) {
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "cmdTest"}})));
        EXPECT_TRUE(WaitFor([&] { return clicks.load() == 1; }));
    });
    EXPECT_EQ(clicks.load(), 1);
}

TEST_F(AutomationServerTest, BadRequestsAreRefusedAndTheLineGoesOn)
{
    Script([](Client& c) {
        c.Send("niet json\n[1]\n{\"name\":\"cmdTest\"}\n{\"cmd\":\"vlieg\"}\n{\"cmd\":\"click\"}\n{\"cmd\":7}\n");
        for (int i = 0; i < 6; ++i)
            EXPECT_TRUE(Refused(c.Reply())) << i;
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "list"}})));
    });
}

TEST_F(AutomationServerTest, StateComesFromTheProvider)
{
    Script([](Client& c) { EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "state"}}))); });
    server->SetStateProvider([] { return QVariantMap{{"GamePhase", 4}, {"BoardText", QStringLiteral(" * ")}}; });
    Script([](Client& c) {
        const QJsonObject state = c.Ask(QJsonObject{{"cmd", "state"}}).value("state").toObject();
        EXPECT_EQ(state.value("GamePhase"), QJsonValue(4));
        EXPECT_EQ(state.value("BoardText"), QJsonValue(" * "));
    });
}

// The test request that changes the game behind its back: served by a server
// started with VALKENHORN_TEST_REQUESTS=1 only, its fields checked before the
// program's changer sees them, the changer's refusal passed on.
TEST_F(AutomationServerTest, TamperIsServedOnlyWhenTestRequestsAreOn)
{
    QStringList calls;
    const auto changer = [&calls](const QString& section, const QString& key, const QString& value) {
        calls << section + QLatin1Char('/') + key + QLatin1Char('=') + value;
        return key == QLatin1String("GEEN") ? QStringLiteral("the position holds no key GEEN") : QString();
    };
    const QJsonObject request{{"cmd", "tamper"}, {"section", "KOMP_LOK"}, {"key", "RES"}, {"value", "7"}};

    // The fixture's server was started without the variable.
    const QByteArray saved = qgetenv("VALKENHORN_TEST_REQUESTS");
    ASSERT_TRUE(saved.isEmpty()) << "the test runs without VALKENHORN_TEST_REQUESTS";
    server->SetPositionChanger(changer);
    Script([&](Client& c) {
        const QJsonObject reply = c.Ask(request);
        EXPECT_TRUE(Refused(reply));
        EXPECT_TRUE(reply.value("error").toString().contains(QStringLiteral("VALKENHORN_TEST_REQUESTS=1")));
    });

    for (const char* value : {"0", "yes", "1"}) {
        qputenv("VALKENHORN_TEST_REQUESTS", value);
        const QString otherPath = dir.filePath(QStringLiteral("tamper-") + QLatin1String(value) + ".sock");
        std::unique_ptr<AutomationServer> other(AutomationServer::Start(otherPath, nullptr));
        qunsetenv("VALKENHORN_TEST_REQUESTS");
        ASSERT_NE(other, nullptr);
        const bool on = std::strcmp(value, "1") == 0;
        Script(
            [&](Client& c) {
                // No changer yet: the window is not up.
                EXPECT_TRUE(Refused(c.Ask(request))) << value;
            },
            otherPath);
        other->SetPositionChanger(changer);
        Script(
            [&](Client& c) {
                EXPECT_EQ(Ok(c.Ask(request)), on) << value;
                if (!on)
                    return;
                // A whole number does as well as its text.
                EXPECT_TRUE(
                    Ok(c.Ask(QJsonObject{{"cmd", "tamper"}, {"section", "STACK"}, {"key", "POINT"}, {"value", 28}})));
                const QJsonObject refused =
                    c.Ask(QJsonObject{{"cmd", "tamper"}, {"section", "KOMP_LOK"}, {"key", "GEEN"}, {"value", "1"}});
                EXPECT_TRUE(Refused(refused));
                EXPECT_EQ(refused.value("error").toString(), QStringLiteral("the position holds no key GEEN"));
                for (const QJsonObject& bad : {QJsonObject{{"cmd", "tamper"}, {"key", "RES"}, {"value", "7"}},
                                               QJsonObject{{"cmd", "tamper"}, {"section", "KOMP_LOK"}, {"value", "7"}},
                                               QJsonObject{{"cmd", "tamper"}, {"section", "KOMP_LOK"}, {"key", "RES"}},
                                               QJsonObject{{"cmd", "tamper"}, {"section", "KOMP_LOK"}, {"key", "RES"},
                                                           {"value", 1.5}}})
                    EXPECT_TRUE(Refused(c.Ask(bad)));
            },
            otherPath);
    }
    EXPECT_EQ(calls, (QStringList{QStringLiteral("KOMP_LOK/RES=7"), QStringLiteral("STACK/POINT=28"),
                                  QStringLiteral("KOMP_LOK/GEEN=1")}));
}

TEST_F(AutomationServerTest, ScreenshotWritesAPngOfTheWindow)
{
    const QString file = dir.filePath(QStringLiteral("shot.png"));
    const QString nowhere = dir.filePath(QStringLiteral("geen/map/shot.png"));
    Script([&](Client& c) {
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "screenshot"}, {"path", file}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "screenshot"}, {"path", nowhere}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "screenshot"}})));
    });
    QImage shot(file, "PNG");
    ASSERT_FALSE(shot.isNull());
    EXPECT_EQ(shot.size(), window->size() * window->devicePixelRatio());
}

TEST_F(AutomationServerTest, MessageBoxIsReadAndAnsweredAfterTheReply)
{
    std::atomic<int> result{-1};
    button->Click = [&] {
        result = static_cast<int>(
            vk::MessageBox(QStringLiteral("Zeker?"), vk::BoxButtons::YesNo, vk::BoxIcon::Question, QStringLiteral("Vraag")));
    };
    Script([&](Client& c) {
        EXPECT_EQ(c.Ask(QJsonObject{{"cmd", "dialog"}}).value("dialog"), QJsonValue(QJsonValue::Null));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "answer"}, {"button", "yes"}})));
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "cmdTest"}})));

        // Served from inside the box's own event loop.
        const QJsonObject dialog = c.Ask(QJsonObject{{"cmd", "dialog"}}).value("dialog").toObject();
        EXPECT_EQ(dialog.value("kind").toString(), "message");
        EXPECT_EQ(dialog.value("title").toString(), "Vraag");
        EXPECT_EQ(dialog.value("text").toString(), "Zeker?");
        EXPECT_EQ(dialog.value("buttons").toArray(), (QJsonArray{"yes", "no"}));
        EXPECT_EQ(result.load(), -1);
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "list"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "answer"}, {"button", "ok"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "answer"}, {"folder", "/tmp"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "answer"}})));
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "answer"}, {"button", "no"}, {"folder", "/tmp"}})));
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "answer"}, {"button", "no"}})));
        EXPECT_TRUE(WaitFor([&] { return result.load() != -1; }));
        EXPECT_EQ(c.Ask(QJsonObject{{"cmd", "dialog"}}).value("dialog"), QJsonValue(QJsonValue::Null));
    });
    EXPECT_EQ(result.load(), static_cast<int>(vk::BoxResult::No));
}

TEST_F(AutomationServerTest, FolderPickerIsAnsweredWithAPath)
{
    Record chosen;
    button->Click = [&] { chosen.Add(vk::AskFolder(QStringLiteral("Kies een map"))); };
    const QString folder = dir.path();
    Script([&](Client& c) {
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "cmdTest"}})));
        const QJsonObject dialog = c.Ask(QJsonObject{{"cmd", "dialog"}}).value("dialog").toObject();
        EXPECT_EQ(dialog.value("kind").toString(), "folder");
        EXPECT_EQ(dialog.value("title").toString(), "Kies een map");
        EXPECT_TRUE(Refused(c.Ask(QJsonObject{{"cmd", "answer"}, {"button", "ok"}})));
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "answer"}, {"folder", folder}})));
        EXPECT_TRUE(WaitFor([&] { return chosen.Size() == 1; }));

        // An empty path cancels.
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "click"}, {"name", "cmdTest"}})));
        EXPECT_EQ(c.Ask(QJsonObject{{"cmd", "dialog"}}).value("dialog").toObject().value("kind").toString(), "folder");
        EXPECT_TRUE(Ok(c.Ask(QJsonObject{{"cmd", "answer"}, {"folder", ""}})));
        EXPECT_TRUE(WaitFor([&] { return chosen.Size() == 2; }));
    });
    ASSERT_EQ(chosen.Size(), 2);
    EXPECT_EQ(QDir::cleanPath(chosen.Events()[0]), QDir::cleanPath(folder));
    EXPECT_TRUE(chosen.Events()[1].isEmpty());
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
