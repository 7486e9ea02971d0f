#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace vk {

// Key-by-key access to an INI-format text file: a section line "[NAME]"
// followed by lines "KEY=value". Both copies of the program exchange such
// files, so the text format and the rules below are part of the wire format.
//
// Sections and keys are matched without regard to (ASCII) case; blanks and
// tabs around a section name, a key or a value are not part of it. Lines are
// read with CRLF or LF ends alike and always written with CRLF. Text is
// treated as single bytes and passed through unchanged.

// Length of the buffer every read goes through, its terminator included:
// a value read back never has more than ProfileBufferLength - 1 characters.
inline constexpr std::size_t ProfileBufferLength = 1000;

// The lines of an INI text in memory, written key by key by the same rules as
// a file: a whole saved game is built here and published at once, and its
// text is what two copies compare.
// Whether two section or key names are the same, as the profile functions
// compare them: ASCII letters in either case.
bool SameProfileName(std::string_view a, std::string_view b);

class ProfileText {
public:
    ProfileText() = default;
    explicit ProfileText(std::vector<std::string> lines) : lines_(std::move(lines)) {}
    // The lines of a whole text, CRLF or LF ended.
    static ProfileText FromText(std::string_view text);
    void Write(std::string_view section, std::string_view key, std::string_view value);
    // The lines, each ended by CRLF.
    std::string Text() const;

private:
    std::vector<std::string> lines_;
};

// Writes one key. Creates the file and the section when they are missing,
// replaces the value of an existing key where it stands, and adds a missing
// key at the end of its section. The whole new file is published at once
// for each call, replacing whatever stood under the name (a link is replaced,
// never followed). Returns false when the file could not be written; callers
// of the game ignore that, as a failed write simply leaves the other side
// waiting.
bool WriteProfileString(std::string_view section, std::string_view key, std::string_view value,
                        const std::filesystem::path& path);

// Reads one key: its value, or defaultValue when the file, the section or
// the key is missing. Either way cut to ProfileBufferLength - 1 characters.
// At most PlainFileReadBound bytes of the file are read and only the first
// 4096 bytes of each line looked at; a link, a pipe, a device or a directory
// under the name counts as missing.
std::string ReadProfileString(std::string_view section, std::string_view key, std::string_view defaultValue,
                              const std::filesystem::path& path);

// The same read on a text in memory (a saved game's text before it is
// written, or after one value of it was changed): the same rules of matching,
// line length and buffer.
std::string ReadProfileStringInText(std::string_view text, std::string_view section, std::string_view key,
                                    std::string_view defaultValue);

} // namespace vk
