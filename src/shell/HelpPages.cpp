#include "shell/HelpPages.h"

#include "shell/Global.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

namespace vk {

namespace {

// The executable named by the first word of a command line, if it can be found.
QString ExecutableOf(const QString& command)
{
    const QStringList words = QProcess::splitCommand(command);
    if (words.isEmpty())
        return QString();
    return QStandardPaths::findExecutable(words.first());
}

// The Exec line of a desktop entry such as "firefox-esr.desktop".
QString ExecOfDesktopEntry(const QString& desktopId)
{
    const QString path = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, desktopId);
    if (path.isEmpty())
        return QString();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QString();
    bool inEntry = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(QLatin1Char('[')))
            inEntry = line == QLatin1String("[Desktop Entry]");
        else if (inEntry && line.startsWith(QLatin1String("Exec=")))
            return line.mid(5);
    }
    return QString();
}

} // namespace

QString FindBrowser()
{
    const QString fromEnvironment = qEnvironmentVariable("BROWSER");
    for (const QString& command : fromEnvironment.split(QLatin1Char(':'), Qt::SkipEmptyParts)) {
        const QString found = ExecutableOf(command);
        if (!found.isEmpty())
            return found;
    }
    const QString xdgMime = QStandardPaths::findExecutable(QStringLiteral("xdg-mime"));
    if (xdgMime.isEmpty())
        return QString();
    QProcess query;
    query.start(xdgMime, {QStringLiteral("query"), QStringLiteral("default"), QStringLiteral("text/html")});
    if (!query.waitForFinished(5000))
        return QString();
    const QString desktopId = QString::fromLocal8Bit(query.readAllStandardOutput()).trimmed();
    if (desktopId.isEmpty())
        return QString();
    return ExecutableOf(ExecOfDesktopEntry(desktopId));
}

void ShowHelpPage(Hoofdvenster& window, const QString& page)
{
    QString programPath = Global().ProgramFolder;
    if (programPath.endsWith(QLatin1Char('/')))
        programPath.chop(1);

    // A scratch page, as the browser is looked up through what opens web pages.
    const QString scratch = programPath + QStringLiteral("/temphtm.HTM");
    {
        QFile file(scratch);
        if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            file.write("<HTML> <\\HTML>");
    }

    const QString browser = FindBrowser();
    if (browser.isEmpty()) {
        MessageBox(QStringLiteral("Kon geen Browser vinden"), BoxButtons::Ok, BoxIcon::Warning,
                   QStringLiteral("Browser niet gevonden"));
    } else if (!QProcess::startDetached(browser, {programPath + page})) {
        Speel(*window.ESound1, window.V.Sound, SoundMessage);
        MessageBox(QStringLiteral("Pagina kon niet geopend worden"), BoxButtons::Ok, BoxIcon::Warning,
                   QStringLiteral("Openen gefaald"));
    }
    QFile::remove(scratch);
}

} // namespace vk
