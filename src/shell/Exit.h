#pragma once

#include <QString>

namespace vk {

class Hoofdvenster;

// cmdSluiten ("Afsluiten"): asks, empties every shared folder and ends the process.
void CmdSluitenClick(Hoofdvenster& window);

// Deletes every file of a shared folder, ignoring errors. Names that begin
// with a dot belong to the synchronisation service and are left alone.
void ClearSharedFolder(const QString& folder);

} // namespace vk
