#pragma once

#include <string_view>

namespace vk {

// True for a file that a synchronisation service keeps for its own use in a
// shared folder: names that begin with a dot (its markers and the temporary
// files it renames into place) and the copies it makes of a conflict
// ("NAME.sync-conflict-...", "NAME (conflicted copy ...)"). Such a file is
// never taken for a player's file, and the clearings leave it alone.
bool IsServiceFile(std::string_view fileName);

} // namespace vk
