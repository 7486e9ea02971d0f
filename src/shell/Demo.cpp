#include "shell/Demo.h"

#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>

#include <array>
#include <csignal>
#include <cstdio>
#include <memory>
#include <vector>

#include <signal.h>

namespace vk {

namespace {

volatile std::sig_atomic_t interruptedBy = 0;

extern "C" void OnInterrupt(int signalNumber)
{
    interruptedBy = signalNumber;
}

// Catches the signals that end a program started from a terminal or a
// session while the demo runs, and restores the old handlers at its end.
class InterruptGuard {
public:
    InterruptGuard()
    {
        interruptedBy = 0;
        struct sigaction action {};
        action.sa_handler = OnInterrupt;
        sigemptyset(&action.sa_mask);
        for (std::size_t i = 0; i < kSignals.size(); ++i)
            sigaction(kSignals[i], &action, &old_[i]);
    }
    ~InterruptGuard()
    {
        for (std::size_t i = 0; i < kSignals.size(); ++i)
            sigaction(kSignals[i], &old_[i], nullptr);
    }
    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;

private:
    static constexpr std::array<int, 3> kSignals{SIGINT, SIGTERM, SIGHUP};
    std::array<struct sigaction, 3> old_{};
};

void Say(const QString& text, std::FILE* stream = stderr)
{
    const QByteArray bytes = (text + QLatin1Char('\n')).toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
}

QString RandomId(quint64 bits)
{
    return QStringLiteral("%1").arg(bits & 0xFFFFFFFFFFFFull, 12, 16, QLatin1Char('0')).toUpper();
}

// Ends the copies that still run: first politely, then for good.
void EndCopies(const std::vector<std::unique_ptr<QProcess>>& copies)
{
    for (const auto& copy : copies)
        if (copy->state() != QProcess::NotRunning)
            copy->terminate();
    for (const auto& copy : copies)
        if (copy->state() != QProcess::NotRunning && !copy->waitForFinished(10000)) {
            copy->kill();
            copy->waitForFinished(5000);
        }
}

} // namespace

QList<DemoPlayer> DemoPlayers()
{
    // Locally administered addresses (second digit 2, 6, A or E), so that no
    // network card of this PC has the same identity.
    quint64 a = QRandomGenerator::global()->generate64();
    quint64 b = QRandomGenerator::global()->generate64();
    a = (a & ~0xFF0000000000ull) | 0x020000000000ull;
    b = (b & ~0xFF0000000000ull) | 0x060000000000ull;
    return {DemoPlayer{QStringLiteral("Speler A"), RandomId(a), QStringLiteral("A")},
            DemoPlayer{QStringLiteral("Speler B"), RandomId(b), QStringLiteral("B")}};
}

bool WriteDemoSettings(const QString& configHome, const DemoPlayer& player, const QString& sharedFolder,
                       const QString& otherName)
{
    if (!QDir().mkpath(configHome + QStringLiteral("/Valkenhorn")))
        return false;
    QSettings settings(configHome + QStringLiteral("/Valkenhorn/Valkenhorn.conf"), QSettings::IniFormat);
    settings.beginGroup(QStringLiteral("DropBox"));
    settings.setValue(QStringLiteral("LocalUser"), player.Name);
    settings.setValue(QStringLiteral("LocalID"), player.LocalID);
    settings.setValue(QStringLiteral("ExtUsersCount"), QStringLiteral("1"));
    settings.setValue(QStringLiteral("01Folder"), sharedFolder);
    settings.setValue(QStringLiteral("01External_User"), otherName);
    settings.endGroup();
    settings.sync();
    return settings.status() == QSettings::NoError;
}

int RunDemo(const QString& program, const QStringList& qtOptions)
{
    QTemporaryDir root(QDir::tempPath() + QStringLiteral("/valkenhorn-demo-XXXXXX"));
    if (!root.isValid()) {
        Say(QStringLiteral("valkenhorn --demo: kan geen tijdelijke map maken / cannot make a temporary folder (") +
            root.errorString() + QLatin1Char(')'));
        return 1;
    }
    const QString shared = root.filePath(QStringLiteral("gedeeld"));
    const QList<DemoPlayer> players = DemoPlayers();
    const QString automation = qEnvironmentVariable("VALKENHORN_DEMO_AUTOMATION");

    InterruptGuard guard;
    QDir().mkpath(shared);
    std::vector<std::unique_ptr<QProcess>> copies;
    for (qsizetype i = 0; i < players.size(); ++i) {
        const DemoPlayer& player = players[i];
        const QString home = root.filePath(player.Label);
        const QString dataHome = home + QStringLiteral("/data");
        const QString configHome = home + QStringLiteral("/config");
        if (!QDir().mkpath(dataHome) ||
            !WriteDemoSettings(configHome, player, shared, players[(i + 1) % players.size()].Name)) {
            Say(QStringLiteral("valkenhorn --demo: kan de map van ") + player.Name +
                QStringLiteral(" niet inrichten / cannot set up the home of ") + player.Name);
            EndCopies(copies);
            return 1;
        }
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("VALKENHORN_DEMO_AUTOMATION"));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), dataHome);
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), configHome);
        QStringList arguments = qtOptions;
        if (!automation.isEmpty())
            arguments << QStringLiteral("--automation")
                      << QDir(automation).filePath(player.Label + QStringLiteral(".sock"));
        auto copy = std::make_unique<QProcess>();
        copy->setProcessEnvironment(environment);
        copy->setProcessChannelMode(QProcess::ForwardedChannels);
        copies.push_back(std::move(copy));
        copies.back()->start(program, arguments);
    }

    for (std::size_t i = 0; i < copies.size(); ++i) {
        if (!copies[i]->waitForStarted(30000)) {
            Say(QStringLiteral("valkenhorn --demo: ") + players[static_cast<qsizetype>(i)].Name +
                QStringLiteral(" start niet / does not start: ") + copies[i]->errorString());
            EndCopies(copies);
            return 1;
        }
    }
    Say(QStringLiteral("valkenhorn --demo: \"Speler A\" en \"Speler B\" delen de map / share the folder ") + shared,
        stdout);

    // Both copies run until their players close them.
    for (;;) {
        bool running = false;
        for (const auto& copy : copies)
            if (copy->state() != QProcess::NotRunning) {
                running = true;
                copy->waitForFinished(100);
            }
        if (!running)
            break;
        if (interruptedBy != 0) {
            EndCopies(copies);
            return 128 + interruptedBy;
        }
    }

    int code = 0;
    for (const auto& copy : copies)
        if (code == 0 && (copy->exitStatus() != QProcess::NormalExit || copy->exitCode() != 0))
            code = copy->exitStatus() == QProcess::NormalExit ? copy->exitCode() : 1;
    return code;
}

} // namespace vk
