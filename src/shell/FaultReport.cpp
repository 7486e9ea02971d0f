#include "shell/FaultReport.h"

#include "shell/RunLog.h"
#include "shell/SingleInstance.h"
#include "ui/Dialogs.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

namespace vk {

void EndProcess(int exitCode)
{
    CloseRunLog();
    ReleaseSingleInstance();
    std::fflush(stdout);
    std::fflush(stderr);
    // The game may be deep inside nested event loops; the process ends here
    // and now, as the design's End statement does.
    std::_Exit(exitCode);
}

void ReportFaultAndExit(const QString& what)
{
    static bool reporting = false;
    if (reporting)
        EndProcess(FaultExitCode);
    reporting = true;

    if (RunLogOpen())
        LogLine(QStringLiteral("run-time fault: ") + what);
    std::fprintf(stderr, "run-time fault: %s\n", what.toLocal8Bit().constData());
    if (qApp)
        MessageBox(QStringLiteral("Er is een onverwachte fout opgetreden en het programma wordt afgesloten.\n\n") + what,
                   BoxButtons::Ok, BoxIcon::Stop, QStringLiteral("Fout in Valkenhorn"));
    EndProcess(FaultExitCode);
}

} // namespace vk
