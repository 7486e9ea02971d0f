#include "link/SharedFolders.h"

#include "link/Connection.h"
#include "link/RemoveFolderDialog.h"
#include "link/SharedFolderFiles.h"
#include "shell/Global.h"
#include "shell/RunTimeFault.h"
#include "shell/Settings.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"

namespace vk {

namespace {

// The shell's folder dialog: a path, or an empty text on cancel.
QString BrowseForFolder()
{
    return AskFolder(QString());
}

} // namespace

void Cmd_AddFolder_Click(Hoofdvenster& w)
{
    const QString path = BrowseForFolder();
    if (path.isEmpty())
        return;

    GlobalValues& g = Global();
    for (int i = 1; i <= g.ExtUsersCount; ++i) {
        if (FolderAt(i) == path) {
            Speel(*w.ESound1, w.V.Sound, SoundMessage);
            MessageBox(QStringLiteral("De gekozen map is reeds gelinkt aan een andere externe speler!!!\n\r\n\r"
                                      "Aangezien je elke map enkel maar met \u00e9\u00e9n externe speler kan "
                                      "delen,\n\ris het niet nodig deze map opnieuw toe te voegen."),
                       BoxButtons::Ok, BoxIcon::Warning, QStringLiteral("Map in gebruik"));
            return;
        }
    }

    AddSharedFolder(w, path);
}

int AddSharedFolder(Hoofdvenster& w, const QString& path)
{
    GlobalValues& g = Global();
    g.LinkBusy = true;
    const int n = g.ExtUsersCount + 1;
    SaveSetting(QStringLiteral("ExtUsersCount"), QString::number(n));

    ResizeExternalUsers(n);
    FolderAt(n) = path;
    SaveSetting(SlotKey(n, QStringLiteral("Folder")), path);

    const QString placeholder = SlotKey(n, QStringLiteral("ExtSpeler"));
    w.Combo_ExternUsers->addItem(placeholder);
    ExternalUserAt(n) = placeholder;
    SaveSetting(SlotKey(n, QStringLiteral("External_User")), placeholder);

    SetActiveAt(n, false);
    SaveSetting(SlotKey(n, QStringLiteral("Active")), FlagText(false));

    g.ExtUsersCount = n;
    WatchSharedFolders();
    g.LinkBusy = false;
    return n;
}

void Cmd_RemoveFolder_Click(Hoofdvenster& w)
{
    Remove_Folder dialog(w);
    dialog.Combo_Folders->clear();
    dialog.Combo_Folders->addItem(QStringLiteral("Geen Map"));
    for (int i = 1; i <= Global().ExtUsersCount; ++i)
        dialog.Combo_Folders->addItem(FolderAt(i));
    dialog.Combo_Folders->SetListIndex(0);
    dialog.Cmd_Remove->SetEnabled(false);

    RunModalForm(&dialog);

    Combo_ExternUsers_Click(w);
}

void Combo_Folders_Click(Remove_Folder& dialog)
{
    const int index = dialog.Combo_Folders->ListIndex();
    if (index != 0) {
        dialog.Cmd_Remove->SetEnabled(true);
        dialog.Label2->SetCaption(QStringLiteral("Geselecteerde Map wordt gedeeld met ") + ExternalUserAt(index));
    } else {
        dialog.Cmd_Remove->SetEnabled(false);
        dialog.Label2->SetCaption(QString());
    }
}

void Cmd_Remove_Click(Hoofdvenster& w, Remove_Folder& dialog)
{
    GlobalValues& g = Global();
    const int s = dialog.Combo_Folders->ListIndex();
    const int selected = w.Combo_ExternUsers->ListIndex();
    int c = selected;

    g.LinkBusy = true;
    g.RemovingFolder = true;

    // The names here carry the window's selection instead of a player's
    // name, so as a rule none of them is found.
    const QString folder = FolderAt(s);
    const QString k = QString::number(w.V.SelectedUser);
    DeleteOnce(folder + QLatin1Char('/') + k + QStringLiteral(".tri"));
    DeleteMatching(folder, QStringLiteral("*.mp3"));
    DeleteOnce(folder + QLatin1Char('/') + k + QStringLiteral(".rqs"));
    DeleteOnce(folder + QLatin1Char('/') + k + QStringLiteral(".xid"));

    if (s < c)
        c -= 1;
    else if (s == c)
        c = 0;

    w.Combo_ExternUsers->removeItem(s);

    for (int j = s; j <= g.ExtUsersCount - 1; ++j) {
        FolderAt(j) = FolderAt(j + 1);
        ExternalUserAt(j) = ExternalUserAt(j + 1);
        SetActiveAt(j, ActiveAt(j + 1));
        SaveSetting(SlotKey(j, QStringLiteral("Folder")), FolderAt(j));
        SaveSetting(SlotKey(j, QStringLiteral("External_User")), ExternalUserAt(j));
        SaveSetting(SlotKey(j, QStringLiteral("Active")), FlagText(ActiveAt(j)));
    }

    const int last = g.ExtUsersCount;
    SaveSetting(SlotKey(last, QStringLiteral("Folder")), QString());
    SaveSetting(SlotKey(last, QStringLiteral("External_User")), QString());
    SaveSetting(SlotKey(last, QStringLiteral("Old_Ext_User")), QString());
    SaveSetting(SlotKey(last, QStringLiteral("Active")), QString());

    g.ExtUsersCount -= 1;
    // Only the removal of the selected slot looks at the count before the
    // lists are resized; removing the only slot with "Geen Speler" selected
    // asks for lists of bounds 1 to 0, a subscript fault.
    if (s != selected || g.ExtUsersCount > 0)
        ResizeExternalUsers(g.ExtUsersCount);

    // The count goes to a key that the start-up doesn't read; after a
    // restart the emptied last slot shows again, and can be removed again.
    SaveSetting(QStringLiteral("Users"), QString::number(g.ExtUsersCount));

    SelectExternUser(w, c);
    WatchSharedFolders();

    g.LinkBusy = false;
    g.RemovingFolder = false;
    dialog.accept();
}

} // namespace vk
