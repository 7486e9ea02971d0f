// Real mouse input against the window layer: xdotool clicks and double clicks
// a picture in a window on an Xvfb of this test's own, and the automation
// interface then does the same to the same picture. Both must run the
// picture's handlers in the same order: MouseDown, Click for a click;
// MouseDown, Click, MouseDown, DblClick for a double click, also when the
// Click handler waits in an event loop of its own for the second click.
//
// Exit code 77 (skipped) when xdotool or Xvfb is not installed.

#include "shell/AutomationServer.h"
#include "ui/ControlRegistry.h"
#include "ui/Controls.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QStyleHints>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <thread>

// Failures show the handlers that ran.
void PrintTo(const QStringList& list, std::ostream* out)
{
    *out << '[' << list.join(QStringLiteral(", ")).toStdString() << ']';
}

namespace {

const QStringList DoubleClick{"down 1 450 300", "click", "down 1 450 300", "dbl"};
const QStringList SingleClick{"down 1 450 300", "click"};

bool PumpUntil(const std::function<bool()>& done, int ms = 10000)
{
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > ms)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

void PumpFor(int ms)
{
    PumpUntil([] { return false; }, ms);
}

int DoubleClickInterval()
{
    return QGuiApplication::styleHints()->mouseDoubleClickInterval();
}

// A blocking client of the automation socket.
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

    void Send(const QByteArray& lines)
    {
        for (qsizetype sent = 0; connected_ && sent < lines.size();) {
            const ssize_t n = ::send(fd_, lines.constData() + sent, lines.size() - sent, MSG_NOSIGNAL);
            if (n <= 0)
                return;
            sent += n;
        }
    }

    QJsonObject Reply()
    {
        while (connected_ && !buffer_.contains('\n')) {
            char chunk[4096];
            const ssize_t n = ::recv(fd_, chunk, sizeof chunk, 0);
            if (n <= 0)
                return QJsonObject{{"timeout", true}};
            buffer_.append(chunk, n);
        }
        if (!connected_)
            return QJsonObject{{"connected", false}};
        const qsizetype end = buffer_.indexOf('\n');
        const QJsonObject reply = QJsonDocument::fromJson(buffer_.left(end)).object();
        buffer_.remove(0, end + 1);
        return reply;
    }

    QJsonObject Ask(const QJsonObject& request)
    {
        Send(QJsonDocument(request).toJson(QJsonDocument::Compact) + "\n");
        return Reply();
    }

private:
    int fd_ = -1;
    bool connected_ = false;
    QByteArray buffer_;
};

class ControlsRealInputTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        window = std::make_unique<QWidget>();
        window->setObjectName(QStringLiteral("TestWindow"));
        window->move(40, 40);
        window->resize(300, 200);
        // 60 x 40 pixels, its centre pixel at 30, 20: 450, 300 in twips.
        image = new vk::ImageControl(window.get(), QStringLiteral("imgTest"), true);
        image->Move(1500, 1500, 900, 600);
        image->SetBackColor(vk::Red);
        label = new vk::LabelControl(window.get(), QStringLiteral("lblTest"), QStringLiteral("bord"));
        label->Move(1500, 1500 + 900, 900, 600);
        label->SetBackColor(vk::Green);
        controls.Add(image);
        controls.Add(label);
        Record(image->Mouse);
        Record(label->Mouse);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        PumpFor(100);

        server = vk::AutomationServer::Start(dir.filePath(QStringLiteral("automation.sock")), nullptr);
        ASSERT_NE(server, nullptr);
        server->SetControls(&controls, window.get());
    }

    void TearDown() override
    {
        delete server;
        window.reset();
    }

    void Record(vk::MouseHandlers& mouse)
    {
        mouse.MouseDown = [this](int button, int x, int y) {
            seen << QStringLiteral("down %1 %2 %3").arg(button).arg(x).arg(y);
        };
        mouse.Click = [this] { seen << QStringLiteral("click"); };
        mouse.DblClick = [this] {
            seen << QStringLiteral("dbl");
            secondClickSeen = true;
            if (waitingForSecondClick)
                ++secondClicksInsideWait;
        };
    }

    // A Click that waits for the second click as the board does: it pumps
    // events until the DblClick has run or the double-click time and a fifth
    // more have passed.
    void ClickWaitsForSecondClick(vk::MouseHandlers& mouse)
    {
        mouse.Click = [this] {
            seen << QStringLiteral("click");
            secondClickSeen = false;
            QEventLoop loop;
            QTimer timeout;
            timeout.setSingleShot(true);
            QObject::connect(&timeout, &QTimer::timeout, &loop, &QEventLoop::quit);
            QTimer check;
            QObject::connect(&check, &QTimer::timeout, &loop, [&] {
                if (secondClickSeen)
                    loop.quit();
            });
            timeout.start(DoubleClickInterval() * 12 / 10);
            check.start(1);
            waitingForSecondClick = true;
            loop.exec();
            waitingForSecondClick = false;
        };
    }

    // Runs xdotool at the centre pixel of a control with the given click
    // arguments, and gives what the handlers saw.
    QStringList ByXdotool(QWidget* control, const QStringList& clickArguments, qsizetype expected)
    {
        // Far enough from any earlier click that Qt counts no double click across them.
        PumpFor(DoubleClickInterval() + 200);
        seen.clear();
        secondClicksInsideWait = 0;
        const QPoint centre = control->mapToGlobal(QPoint(control->width() / 2, control->height() / 2));
        QProcess xdotool;
        xdotool.setProcessChannelMode(QProcess::ForwardedChannels);
        // The pointer first goes to the corner: a synchronous move to where
        // the pointer already is would wait for ever.
        xdotool.start(QStringLiteral("xdotool"), QStringList{"mousemove", "0", "0", "mousemove", "--sync",
                                                             QString::number(centre.x()), QString::number(centre.y())} +
                                                     clickArguments);
        EXPECT_TRUE(xdotool.waitForStarted(5000));
        EXPECT_TRUE(PumpUntil([&] { return xdotool.state() == QProcess::NotRunning; }, 15000));
        EXPECT_EQ(xdotool.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(xdotool.exitCode(), 0);
        EXPECT_TRUE(PumpUntil([&] { return seen.size() >= expected; }, 5000)) << seen.join(", ").toStdString();
        // Anything a late release would still run.
        PumpFor(DoubleClickInterval() + 200);
        return seen;
    }

    // Sends one request through the automation socket from a client thread
    // while this thread runs the program's events, and gives what the
    // handlers saw.
    QStringList ByAutomation(const QJsonObject& request, qsizetype expected)
    {
        PumpFor(50);
        seen.clear();
        secondClicksInsideWait = 0;
        QJsonObject reply;
        Script([&](Client& c) { reply = c.Ask(request); });
        EXPECT_TRUE(reply.value("ok").toBool()) << QJsonDocument(reply).toJson().toStdString();
        EXPECT_TRUE(PumpUntil([&] { return seen.size() >= expected; }, 5000)) << seen.join(", ").toStdString();
        PumpFor(DoubleClickInterval() + 200);
        return seen;
    }

    static QJsonObject Request(const char* cmd, const char* name) { return QJsonObject{{"cmd", cmd}, {"name", name}}; }

    // Runs the client's part on its own thread while this thread serves.
    void Script(const std::function<void(Client&)>& steps)
    {
        std::atomic<bool> done{false};
        std::thread client([&] {
            Client c(dir.filePath(QStringLiteral("automation.sock")));
            steps(c);
            done = true;
        });
        const bool finished = PumpUntil([&] { return done.load(); }, 30000);
        if (!finished)
            std::abort();
        client.join();
    }

    QTemporaryDir dir;
    std::unique_ptr<QWidget> window;
    vk::ControlRegistry controls;
    vk::ImageControl* image = nullptr;
    vk::LabelControl* label = nullptr;
    vk::AutomationServer* server = nullptr;
    QStringList seen;
    bool secondClickSeen = false;
    bool waitingForSecondClick = false;
    int secondClicksInsideWait = 0;
};

const QStringList XdotoolDoubleClick{"click", "--repeat", "2", "--delay", "80", "1"};
const QStringList XdotoolClick{"click", "1"};

TEST_F(ControlsRealInputTest, DoubleClickOnAPicture)
{
    const QStringList real = ByXdotool(image, XdotoolDoubleClick, 4);
    const QStringList automated = ByAutomation(Request("dblclick", "imgTest"), 4);
    std::printf("xdotool:    %s\nautomation: %s\n", qPrintable(real.join(", ")), qPrintable(automated.join(", ")));
    EXPECT_EQ(real, DoubleClick);
    EXPECT_EQ(automated, real);
}

TEST_F(ControlsRealInputTest, DoubleClickOnALabel)
{
    const QStringList real = ByXdotool(label, XdotoolDoubleClick, 4);
    const QStringList automated = ByAutomation(Request("dblclick", "lblTest"), 4);
    EXPECT_EQ(real, DoubleClick);
    EXPECT_EQ(automated, real);
}

TEST_F(ControlsRealInputTest, DoubleClickOnAPictureWhoseClickWaitsForTheSecondClick)
{
    ClickWaitsForSecondClick(image->Mouse);
    const QStringList real = ByXdotool(image, XdotoolDoubleClick, 4);
    const int realInsideWait = secondClicksInsideWait;
    const QStringList automated = ByAutomation(Request("dblclick", "imgTest"), 4);
    const int automatedInsideWait = secondClicksInsideWait;
    std::printf("xdotool:    %s (second click inside the wait: %d)\n", qPrintable(real.join(", ")), realInsideWait);
    std::printf("automation: %s (second click inside the wait: %d)\n", qPrintable(automated.join(", ")),
                automatedInsideWait);
    EXPECT_EQ(real, DoubleClick);
    EXPECT_EQ(automated, real);
    EXPECT_EQ(realInsideWait, 1);
    EXPECT_EQ(automatedInsideWait, 1);
}

TEST_F(ControlsRealInputTest, SingleClickOnAPicture)
{
    const QStringList real = ByXdotool(image, XdotoolClick, 2);
    const QStringList automated = ByAutomation(Request("click", "imgTest"), 2);
    EXPECT_EQ(real, SingleClick);
    EXPECT_EQ(automated, real);
}

TEST_F(ControlsRealInputTest, LaterRequestsSeeTheWholeDoubleClick)
{
    // The request after a double click is served once its last handler has
    // run, also when the Click waits for the second click meanwhile.
    QStringList atState;
    server->SetStateProvider([&] {
        atState = seen;
        return QVariantMap{{"seen", seen.join(QStringLiteral(", "))}};
    });
    for (const bool waits : {false, true}) {
        if (waits)
            ClickWaitsForSecondClick(image->Mouse);
        seen.clear();
        Script([](Client& c) {
            c.Send("{\"cmd\":\"dblclick\",\"name\":\"imgTest\"}\n{\"cmd\":\"state\"}\n");
            EXPECT_TRUE(c.Reply().value("ok").toBool());
            EXPECT_TRUE(c.Reply().value("ok").toBool());
        });
        EXPECT_EQ(atState, DoubleClick) << (waits ? "Click waits" : "Click returns");
        PumpFor(DoubleClickInterval() + 200);
        EXPECT_EQ(seen, DoubleClick) << (waits ? "Click waits" : "Click returns");
    }
}

TEST_F(ControlsRealInputTest, MouseRequestsAtAPointAndRefusals)
{
    Script([](Client& c) {
        auto ok = [&c](const QJsonObject& request) { return c.Ask(request).value("ok").toBool(); };
        EXPECT_TRUE(ok(QJsonObject{{"cmd", "dblclick"}, {"name", "imgTest"}, {"x", 30}, {"y", 45}}));
        EXPECT_TRUE(ok(QJsonObject{{"cmd", "click"}, {"name", "lblTest"}, {"x", 899}, {"y", 599}}));
        EXPECT_TRUE(ok(QJsonObject{{"cmd", "mousedown"}, {"name", "imgTest"}, {"x", 7}, {"y", 8}, {"button", 4}}));
        // Button numbers are those of one button each; a point needs both x and y.
        EXPECT_FALSE(ok(QJsonObject{{"cmd", "mousedown"}, {"name", "imgTest"}, {"x", 7}, {"y", 8}, {"button", 3}}));
        EXPECT_FALSE(ok(QJsonObject{{"cmd", "dblclick"}, {"name", "imgTest"}, {"y", 8}}));
    });
    PumpFor(200);
    EXPECT_EQ(seen, (QStringList{"down 1 30 45", "click", "down 1 30 45", "dbl", "down 1 899 599", "click",
                                 "down 4 7 8"}));

    // Hidden or disabled, refused.
    seen.clear();
    image->SetVisible(false);
    label->SetEnabled(false);
    Script([](Client& c) {
        EXPECT_FALSE(c.Ask(Request("dblclick", "imgTest")).value("ok").toBool());
        EXPECT_FALSE(c.Ask(Request("dblclick", "lblTest")).value("ok").toBool());
        EXPECT_FALSE(c.Ask(Request("click", "imgTest")).value("ok").toBool());
    });
    PumpFor(100);
    EXPECT_TRUE(seen.isEmpty()) << seen.join(", ").toStdString();
}

// The Xvfb of this run, started on a free display that it names itself.
pid_t StartXvfb(std::string& display)
{
    int pipeEnds[2];
    if (::pipe(pipeEnds) != 0)
        return -1;
    const pid_t pid = ::fork();
    if (pid == 0) {
        // The server ends with this test, however the test ends.
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        ::close(pipeEnds[0]);
        const std::string fd = std::to_string(pipeEnds[1]);
        const int devNull = ::open("/dev/null", O_WRONLY);
        if (devNull >= 0) {
            ::dup2(devNull, STDOUT_FILENO);
            ::dup2(devNull, STDERR_FILENO);
        }
        ::execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "640x480x24", "-nolisten", "tcp",
                 static_cast<char*>(nullptr));
        ::_exit(127);
    }
    ::close(pipeEnds[1]);
    if (pid < 0) {
        ::close(pipeEnds[0]);
        return -1;
    }
    std::string number;
    char c = 0;
    while (::read(pipeEnds[0], &c, 1) == 1 && c != '\n')
        number += c;
    ::close(pipeEnds[0]);
    if (number.empty()) {
        ::kill(pid, SIGTERM);
        ::waitpid(pid, nullptr, 0);
        return -1;
    }
    display = ":" + number;
    return pid;
}

} // namespace

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    if (::testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();

    for (const char* tool : {"xdotool", "Xvfb"}) {
        if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty()) {
            std::printf("%s is not installed (scripts/setup-debian.sh installs it): skipped\n", tool);
            return 77;
        }
    }
    std::string display;
    const pid_t xvfb = StartXvfb(display);
    if (xvfb < 0) {
        std::fprintf(stderr, "Xvfb did not start\n");
        return 1;
    }
    ::setenv("DISPLAY", display.c_str(), 1);
    ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    ::unsetenv("WAYLAND_DISPLAY");
    int result = 1;
    {
        QApplication app(argc, argv);
        result = RUN_ALL_TESTS();
    }
    ::kill(xvfb, SIGTERM);
    ::waitpid(xvfb, nullptr, 0);
    return result;
}
