#include "shell/Exit.h"

#include "shell/Clock.h"
#include "shell/FaultReport.h"
#include "shell/Global.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"

#include <QDir>
#include <QFile>

namespace vk {

void ClearSharedFolder(const QString& folder)
{
    // A slot without a folder would make the pattern point at the root of
    // the file system (or, to Qt, the working folder): that is left alone.
    if (folder.isEmpty())
        return;
    QDir dir(folder);
    const QStringList files = dir.entryList(QDir::Files | QDir::System);
    for (const QString& name : files)
        QFile::remove(dir.filePath(name));
}

void CmdSluitenClick(Hoofdvenster& window)
{
    Speel(*window.ESound1, window.V.Sound, SoundMessage);
    if (MessageBox(QStringLiteral("Bent u zeker dat u 'Valkenhorn!' wilt afsluiten?"), BoxButtons::YesNo,
                   BoxIcon::Question, QStringLiteral("Programma Afsluiten")) != BoxResult::Yes)
        return;
    Global().LinkBusy = true;
    // Lets a poll in progress finish before the folders are emptied.
    WaitMs(200);
    for (int i = 1; i <= Global().ExtUsersCount; ++i)
        ClearSharedFolder(Global().Folder.value(i));
    EndProcess(0);
}

} // namespace vk
