#include "link/ProfileFile.h"

#include "link/PlainFiles.h"

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

// The lines of a text without their ends; CRLF and LF both end a line.
std::vector<std::string> SplitLines(std::string_view content)
{
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < content.size()) {
        std::size_t end = content.find('\n', start);
        const std::size_t next = (end == std::string::npos) ? content.size() : end + 1;
        if (end == std::string::npos)
            end = content.size();
        std::size_t stop = end;
        if (stop > start && content[stop - 1] == '\r')
            --stop;
        lines.emplace_back(content.substr(start, stop - start));
        start = next;
    }
    return lines;
}

// The lines of the file. A missing file gives no lines, and so does anything
// that is not a regular file or can't be read: a write then replaces it with
// a file of its own.
std::vector<std::string> ReadLines(const std::filesystem::path& path)
{
    return SplitLines(ReadPlainFile(path.string()).Bytes);
}

// Takes the next line (ended by LF, a CR before it dropped) of text from
// `at` and keeps at most ReadLineLimit bytes of it. A key line longer than
// that can't hold a key of ours with a value the buffer could return whole,
// so nothing that matters is lost.
constexpr std::size_t ReadLineLimit = 4096;

bool NextCappedLine(std::string_view text, std::size_t& at, std::string_view& line)
{
    if (at >= text.size())
        return false;
    std::size_t end = text.find('\n', at);
    const std::size_t next = end == std::string_view::npos ? text.size() : end + 1;
    if (end == std::string_view::npos)
        end = text.size();
    line = text.substr(at, end - at);
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    if (line.size() > ReadLineLimit)
        line = line.substr(0, ReadLineLimit);
    at = next;
    return true;
}

std::string CutToBuffer(std::string_view text)
{
    return std::string(text.substr(0, ProfileBufferLength - 1));
}

} // namespace

ProfileText ProfileText::FromText(std::string_view text)
{
    return ProfileText(SplitLines(text));
}

bool SameProfileName(std::string_view a, std::string_view b)
{
    return SameName(a, b);
}

void ProfileText::Write(std::string_view section, std::string_view key, std::string_view value)
{
    std::string keyLine(key);
    keyLine += '=';
    keyLine += value;

    std::size_t i = 0;
    while (i < lines_.size()) {
        const auto name = SectionName(lines_[i]);
        if (name && SameName(*name, section))
            break;
        ++i;
    }

    if (i == lines_.size()) {
        lines_.push_back("[" + std::string(section) + "]");
        lines_.push_back(std::move(keyLine));
        return;
    }

    // Inside the section: replace the key where it stands, or add it after
    // the last line of the section that is not blank.
    std::size_t lastFilled = i;
    for (std::size_t j = i + 1; j < lines_.size() && !SectionName(lines_[j]); ++j) {
        if (const auto entry = KeyValue(lines_[j]); entry && SameName(entry->key, key)) {
            std::string replaced(entry->key);
            replaced += '=';
            replaced += value;
            lines_[j] = std::move(replaced);
            return;
        }
        if (!Trim(lines_[j]).empty())
            lastFilled = j;
    }
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(lastFilled + 1), std::move(keyLine));
}

std::string ProfileText::Text() const
{
    std::string content;
    for (const std::string& line : lines_) {
        content += line;
        content += "\r\n";
    }
    return content;
}

bool WriteProfileString(std::string_view section, std::string_view key, std::string_view value,
                        const std::filesystem::path& path)
{
    ProfileText text(ReadLines(path));
    text.Write(section, key, value);
    return PublishPlainFile(path.string(), text.Text());
}

std::string ReadProfileString(std::string_view section, std::string_view key, std::string_view defaultValue,
                              const std::filesystem::path& path)
{
    // The file is somebody else's: at most PlainFileReadBound bytes of it are
    // read, and each line is looked at only up to ReadLineLimit bytes.
    const PlainFileContent file = ReadPlainFile(path.string());
    return ReadProfileStringInText(file.Bytes, section, key, defaultValue);
}

std::string ReadProfileStringInText(std::string_view text, std::string_view section, std::string_view key,
                                    std::string_view defaultValue)
{
    bool inSection = false;
    std::size_t at = 0;
    std::string_view line;
    while (NextCappedLine(text, at, line)) {
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
