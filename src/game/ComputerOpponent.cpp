#include "game/ComputerOpponent.h"

#include "link/SharedFolders.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "ui/Controls.h"
#include "ui/Hoofdvenster.h"
#include "ui/MessageBoard.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>

#include <signal.h>
#include <sys/prctl.h>

namespace vk {

namespace {

QProcess*& RunningComputer()
{
    static QProcess* process = nullptr;
    return process;
}

// The private folders in the data folder: the shared folder of the two
// copies, and the computer copy's own homes beside it (never inside the
// shared folder, which each copy empties).
QString ComputerFolder(const QString& leaf)
{
    return QDir(Global().DataFolder).filePath(QStringLiteral("computer/") + leaf);
}

int SlotOfFolder(const QString& folder)
{
    const GlobalValues& g = Global();
    for (int i = 1; i <= g.ExtUsersCount && i < g.Folder.size(); ++i)
        if (QDir::cleanPath(g.Folder[i]) == QDir::cleanPath(folder))
            return i;
    return 0;
}

} // namespace

QString ComputerOpponentName(const QString& localUser)
{
    return localUser.compare(QStringLiteral("Computer"), Qt::CaseInsensitive) == 0 ? QStringLiteral("Robot")
                                                                                   : QStringLiteral("Computer");
}

void cmdComputer_Click(Hoofdvenster& w)
{
    const QString shared = ComputerFolder(QStringLiteral("shared"));
    const QString config = ComputerFolder(QStringLiteral("home/config"));
    const QString data = ComputerFolder(QStringLiteral("home/data"));
    for (const QString& folder : {shared, config, data})
        QDir().mkpath(folder);
    if (SlotOfFolder(shared) == 0)
        AddSharedFolder(w, shared);

    // The player must be present to be seen and invited.
    if (w.ShareStatus->Value() == 0) {
        w.ShareStatus->SetValue(1);
        if (w.ShareStatus->Click)
            w.ShareStatus->Click();
    }

    QProcess*& process = RunningComputer();
    if (process && process->state() != QProcess::NotRunning)
        return;
    delete process;
    process = new QProcess(qApp);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), config);
    environment.insert(QStringLiteral("XDG_DATA_HOME"), data);
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    process->setProcessEnvironment(environment);
    process->setStandardOutputFile(QDir(data).filePath(QStringLiteral("output.txt")));
    process->setStandardErrorFile(QDir(data).filePath(QStringLiteral("output.txt")), QIODevice::Append);
    // The computer copy ends when this process ends, by the exit button, a
    // fault or a signal alike.
    process->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    const QString name = ComputerOpponentName(Global().LocalUser);
    process->start(QCoreApplication::applicationFilePath(),
                   {QStringLiteral("--computer"), name, QStringLiteral("--folder"), shared, QStringLiteral("--level"),
                    QStringLiteral("greedy"), QStringLiteral("--invite"), Global().LocalUser});
    LogAt(QStringLiteral("starting computer player ") + name + QStringLiteral(" at "));
    ShowOnBoard(QStringLiteral("de computerspeler ") + name +
                QStringLiteral(" wordt gestart. zodra hij aanwezig is, nodigt hij u uit om te spelen."));
}

} // namespace vk
