#pragma once

// Reading and writing a whole small file in a folder that somebody else
// writes to. A read opens only a regular file, never through a link and never
// waiting on a pipe or a device, and takes at most a fixed number of bytes. A
// write builds the new file under a temporary name in the same folder and
// renames it into place, so that a link under the name is replaced rather
// than followed, and a reader sees the old or the new file, never half of it.

#include <cstddef>
#include <string>
#include <string_view>

namespace vk {

// No message comes near this: the largest is under 1 KiB and values are cut
// at 999 characters. A longer file is read up to here and no further.
inline constexpr std::size_t PlainFileReadBound = 64 * 1024;

enum class ReadOutcome {
    Read,       // a regular file, read whole or up to the bound
    Missing,    // nothing under the name
    Refused,    // a link, a pipe, a socket, a device or a directory
    Unreadable, // a regular file that could not be opened or read
};

struct PlainFileContent {
    ReadOutcome Outcome = ReadOutcome::Missing;
    std::string Bytes;
    bool Cut = false; // the file was longer than the bound
};

PlainFileContent ReadPlainFile(const std::string& path, std::size_t bound = PlainFileReadBound);

// How far a published file must have gone before the call returns: a
// message only has to be complete for its reader, a saved game must survive
// a crash of the machine.
enum class Durability { Complete, OnDisk };

// Publishes content under path by a rename from "." + name + ".vk" + eight
// hex digits + ".tmp" in the same folder; OnDisk flushes the file before the
// rename and the folder after it. False when it could not be done; the
// temporary is then removed again and an old file under the name stands.
bool PublishPlainFile(const std::string& path, std::string_view content,
                      Durability durability = Durability::Complete);

// True for a name that PublishPlainFile used as the temporary of a file whose
// name begins with `prefix`, such as ".anna.xid.vk0a1b2c3d.tmp" for "anna".
bool IsTemporaryOf(std::string_view name, std::string_view prefix);

} // namespace vk
