#pragma once

// Only one copy of the program runs on one data folder. The mark is a lock
// file in the copy's own data folder, so that two copies with different data
// folders can run side by side on one machine.

#include <QString>

namespace vk {

// True when another running copy holds the lock of this data folder. Touches nothing.
bool PreviousInstanceRunning(const QString& dataFolder);

// Marks this copy as the running one (creates the folder if needed).
void MarkRunningInstance(const QString& dataFolder);

// Removes the mark; called at the end of the process.
void ReleaseSingleInstance();

} // namespace vk
