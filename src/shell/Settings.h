#pragma once

// The per-user settings store: text values by key in the section "DropBox" of
// the application "Valkenhorn". It is Qt's INI settings file
// $XDG_CONFIG_HOME/Valkenhorn/Valkenhorn.conf with the group [DropBox], so
// that a user or a test may set a key there by hand before a start.

#include <QString>

namespace vk {

// The settings file of this user.
QString SettingsFilePath();

// The value of the key, or defaultValue when the key is missing or was saved
// empty (an emptied slot reads like a missing one).
QString GetSetting(const QString& key, const QString& defaultValue = QString());

// The key of slot i of the external players: "01Folder", "12External_User".
QString SlotKey(int slot, const QString& key);

// A flag as the settings keep it: "True" or "False".
QString FlagText(bool value);

// Saves the key and writes the file at once: the program ends without
// unwinding, and a second copy or a test may read the file any moment.
void SaveSetting(const QString& key, const QString& value);

} // namespace vk
