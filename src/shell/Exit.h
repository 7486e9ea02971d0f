#pragma once

#include <QString>

namespace vk {

class Hoofdvenster;

// cmdSluiten ("Afsluiten"): asks, empties every shared folder and ends the process.
void CmdSluitenClick(Hoofdvenster& window);

// Deletes every file of a shared folder, ignoring errors. The files of a
// synchronisation service (names that begin with a dot, conflict copies)
// are left alone.
void ClearSharedFolder(const QString& folder);

} // namespace vk
