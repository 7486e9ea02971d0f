#include "shell/Exit.h"

#include "link/SharedFolderFiles.h"
#include "shell/Clock.h"
#include "shell/FaultReport.h"
#include "shell/Global.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"

namespace vk {

void ClearSharedFolder(const QString& folder)
{
    // A slot without a folder would make the pattern point at the root of
    // the file system: no files are listed for it, so nothing goes there.
    DeleteMatching(folder, QStringLiteral("*"));
    RemoveOwnTemporaries(folder, Global().LocalUser);
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
