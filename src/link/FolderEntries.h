#pragma once

// Entries of a folder that somebody else writes to (the shared folders):
// what an entry is, found without following a link, the listing of a folder
// and the removal of an entry. A symbolic link, a pipe, a socket, a device
// or a directory under any name is never taken for a file.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vk {

enum class EntryType { Missing, RegularFile, SymbolicLink, Directory, NamedPipe, Socket, Device, Other };

// The type of the entry itself (lstat): a link is a link, whatever it points at.
EntryType TypeOfEntry(const std::string& path);

// English words for the run log: "symbolic link", "named pipe", ...
const char* DescribeEntryType(EntryType type);

struct FolderEntry {
    std::string Name;
    EntryType Type = EntryType::Other;
};

// The entries of a folder in the order the directory gives them, "." and
// ".." left out; no subfolder is entered and no link followed. A folder that
// can't be read gives none.
std::vector<FolderEntry> ListFolder(const std::string& folder);

// Why a name found in a folder must not become part of a path or a player's
// name: it holds a path separator, "..", a control character or bytes that
// are not UTF-8. Empty for a name that is safe.
std::string UnsafeNameReason(std::string_view name);

// Removes the entry itself (a link, never what it points at); a directory is
// left alone. Errors are ignored; true when the entry is gone.
bool RemoveEntry(const std::string& path);

// Case-insensitive wildcard match of a file name with '*' and '?'.
bool NameMatches(std::string_view name, std::string_view pattern);

// The layer tells whoever listens about every entry it refused to treat as a
// file, with the reason in English; the program logs them.
using RefusedEntryHandler = std::function<void(const std::string& path, const std::string& reason)>;
void SetRefusedEntryHandler(RefusedEntryHandler handler);
void ReportRefusedEntry(const std::string& path, const std::string& reason);

} // namespace vk
