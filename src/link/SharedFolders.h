#pragma once

// The list of shared folders: one slot per external player, numbered 1 to
// ExtUsersCount without gaps, mirrored in the settings. Adding a folder
// makes a slot with a placeholder name; removing one shifts the later slots
// down in memory, in the settings and in the combo box.

#include <QString>

namespace vk {

class Hoofdvenster;
class Remove_Folder;

// "Map toevoegen...": lets the user pick a folder and makes a slot for it.
void Cmd_AddFolder_Click(Hoofdvenster& window);

// Adds a folder to the list of shared folders as the last slot, with the
// placeholder name of its external player, and watches it. Returns the slot.
int AddSharedFolder(Hoofdvenster& window, const QString& path);

// "Map verwijderen...": the dialog Remove_Folder.
void Cmd_RemoveFolder_Click(Hoofdvenster& window);

// Events of the dialog.
void Combo_Folders_Click(Remove_Folder& dialog);
void Cmd_Remove_Click(Hoofdvenster& window, Remove_Folder& dialog);

} // namespace vk
