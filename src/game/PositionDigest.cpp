#include "game/PositionDigest.h"

#include <algorithm>
#include <vector>

namespace vk {

namespace {

bool EndsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

} // namespace

std::string CanonicalPositionText(const BoardState& state, const GameProgress& progress)
{
    const std::string text = SavedGameText(state, progress);
    const std::string localArmy = "_" + std::to_string(state.LocalSide);
    const std::string externalArmy = "_" + std::to_string(progress.ExternalSide);

    // SavedGameText writes "[SECTION]" and "KEY=VALUE" lines ended by CRLF,
    // without blanks around names or values.
    std::vector<std::string> lines;
    std::string section;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = text.find("\r\n", at);
        if (end == std::string::npos)
            end = text.size();
        const std::string_view line(text.data() + at, end - at);
        at = end + 2;
        if (line.empty())
            continue;
        if (line.front() == '[') {
            section = std::string(line.substr(1, line.size() - 2));
            if (EndsWith(section, "_LOK"))
                section = section.substr(0, section.size() - 4) + localArmy;
            else if (EndsWith(section, "_EXT"))
                section = section.substr(0, section.size() - 4) + externalArmy;
            continue;
        }
        // Which army is whose differs between the copies; the game doesn't.
        if (section == "MAIN" && (line.rfind("LOK=", 0) == 0 || line.rfind("EXT=", 0) == 0))
            continue;
        lines.push_back(section + "." + std::string(line) + "\n");
    }
    // The saved game writes the local army's sections first; sorted, the
    // lines no longer depend on which army that is.
    std::sort(lines.begin(), lines.end());
    std::string canonical;
    for (const std::string& line : lines)
        canonical += line;
    return canonical;
}

std::uint64_t Fnv1a64(std::string_view bytes)
{
    std::uint64_t hash = 14695981039346656037ULL;
    for (const char c : bytes) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 1099511628211ULL;
    }
    return hash;
}

std::string PositionDigest(const BoardState& state, const GameProgress& progress)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    std::uint64_t hash = Fnv1a64(CanonicalPositionText(state, progress));
    std::string digest(16, '0');
    for (int i = 15; i >= 0; --i) {
        digest[static_cast<std::size_t>(i)] = kDigits[hash & 0xF];
        hash >>= 4;
    }
    return digest;
}

bool IsPositionDigest(std::string_view text)
{
    const auto hexDigit = [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); };
    return text.size() == 16 && std::all_of(text.begin(), text.end(), hexDigit);
}

} // namespace vk
