#include "link/ProfileFile.h"

#include <fstream>
#include <iterator>
#include <optional>
#include <vector>

namespace vk {

namespace {

std::string_view Trim(std::string_view text)
{
    const auto blank = [](char c) { return c == ' ' || c == '\t'; };
    while (!text.empty() && blank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && blank(text.back()))
        text.remove_suffix(1);
    return text;
}

char Lower(char c)
{
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameName(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (Lower(a[i]) != Lower(b[i]))
            return false;
    return true;
}

// The name of a section line "[NAME]", or nothing for any other line.
std::optional<std::string_view> SectionName(std::string_view line)
{
    const std::string_view text = Trim(line);
    if (text.empty() || text.front() != '[')
        return std::nullopt;
    std::string_view name = text.substr(1);
    if (const auto close = name.find(']'); close != std::string_view::npos)
        name = name.substr(0, close);
    return Trim(name);
}

struct KeyLine {
    std::string_view key;
    std::string_view value;
};

// The key and value of a line "KEY=value", or nothing for any other line
// (blank lines, section lines, lines without '=').
std::optional<KeyLine> KeyValue(std::string_view line)
{
    if (SectionName(line))
        return std::nullopt;
    const auto equals = line.find('=');
    if (equals == std::string_view::npos)
        return std::nullopt;
    return KeyLine{Trim(line.substr(0, equals)), Trim(line.substr(equals + 1))};
}

// The lines of the file without their ends; CRLF and LF both end a line.
// A missing file gives no lines and counts as read.
bool ReadLines(const std::filesystem::path& path, std::vector<std::string>& lines)
{
    lines.clear();
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        return !error;
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    const std::string content{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (in.bad())
        return false;
    std::size_t start = 0;
    while (start < content.size()) {
        std::size_t end = content.find('\n', start);
        const std::size_t next = (end == std::string::npos) ? content.size() : end + 1;
        if (end == std::string::npos)
            end = content.size();
        std::size_t stop = end;
        if (stop > start && content[stop - 1] == '\r')
            --stop;
        lines.emplace_back(content, start, stop - start);
        start = next;
    }
    return true;
}

// Writes the whole file. An existing file is overwritten in place and cut to
// the new length afterwards rather than truncated first: a file system that
// flushes a file truncated to nothing on its close (ext4) would otherwise
// make every key of a saved game cost a disk flush.
bool WriteLines(const std::filesystem::path& path, const std::vector<std::string>& lines)
{
    std::string content;
    for (const std::string& line : lines) {
        content += line;
        content += "\r\n";
    }
    std::error_code error;
    const bool existed = std::filesystem::exists(path, error);
    if (error)
        return false;
    const std::uintmax_t oldSize = existed ? std::filesystem::file_size(path, error) : 0;
    if (error)
        return false;
    std::fstream out(path, existed ? (std::ios::in | std::ios::out | std::ios::binary)
                                   : (std::ios::out | std::ios::binary | std::ios::trunc));
    if (!out)
        return false;
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
    out.close();
    if (out.fail())
        return false;
    if (oldSize > content.size())
        std::filesystem::resize_file(path, content.size(), error);
    return !error;
}

// Reads one line (ended by LF, a CR before it dropped) and keeps at most
// ReadLineLimit bytes of it; the rest of a longer line is skipped. A key
// line longer than that can't hold a key of ours with a value the buffer
// could return whole, so nothing that matters is lost.
constexpr std::size_t ReadLineLimit = 4096;

bool ReadCappedLine(std::istream& in, std::string& line)
{
    line.clear();
    bool any = false;
    std::streambuf* buffer = in.rdbuf();
    for (;;) {
        const int c = buffer->sbumpc();
        if (c == std::char_traits<char>::eof())
            break;
        any = true;
        if (c == '\n')
            break;
        if (line.size() < ReadLineLimit)
            line.push_back(static_cast<char>(c));
    }
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return any;
}

std::string CutToBuffer(std::string_view text)
{
    return std::string(text.substr(0, ProfileBufferLength - 1));
}

} // namespace

bool WriteProfileString(std::string_view section, std::string_view key, std::string_view value,
                        const std::filesystem::path& path)
{
    std::vector<std::string> lines;
    if (!ReadLines(path, lines))
        return false;

    std::string keyLine(key);
    keyLine += '=';
    keyLine += value;

    std::size_t i = 0;
    while (i < lines.size()) {
        const auto name = SectionName(lines[i]);
        if (name && SameName(*name, section))
            break;
        ++i;
    }

    if (i == lines.size()) {
        lines.push_back("[" + std::string(section) + "]");
        lines.push_back(std::move(keyLine));
        return WriteLines(path, lines);
    }

    // Inside the section: replace the key where it stands, or add it after
    // the last line of the section that is not blank.
    std::size_t lastFilled = i;
    for (std::size_t j = i + 1; j < lines.size() && !SectionName(lines[j]); ++j) {
        if (const auto entry = KeyValue(lines[j]); entry && SameName(entry->key, key)) {
            std::string replaced(entry->key);
            replaced += '=';
            replaced += value;
            lines[j] = std::move(replaced);
            return WriteLines(path, lines);
        }
        if (!Trim(lines[j]).empty())
            lastFilled = j;
    }
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(lastFilled + 1), std::move(keyLine));
    return WriteLines(path, lines);
}

std::string ReadProfileString(std::string_view section, std::string_view key, std::string_view defaultValue,
                              const std::filesystem::path& path)
{
    // The file is read line by line and each line only up to ReadLineLimit
    // bytes: a file in the shared folder is written by somebody else and may
    // be of any size or hold no line ends at all.
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return CutToBuffer(defaultValue);
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return CutToBuffer(defaultValue);

    bool inSection = false;
    std::string line;
    while (ReadCappedLine(in, line)) {
        if (const auto name = SectionName(line)) {
            if (inSection)
                break;
            inSection = SameName(*name, section);
            continue;
        }
        if (!inSection)
            continue;
        if (const auto entry = KeyValue(line); entry && SameName(entry->key, key))
            return CutToBuffer(entry->value);
    }
    return CutToBuffer(defaultValue);
}

} // namespace vk
