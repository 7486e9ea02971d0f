#include "game/ProfileValues.h"

namespace vk {

int ProfileInt(std::string_view text, std::string_view key)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    bool negative = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    if (text.empty())
        throw ProfileValueError("type mismatch: " + std::string(key) + " holds no number");
    long value = 0;
    for (char c : text) {
        if (c < '0' || c > '9')
            throw ProfileValueError("type mismatch: " + std::string(key) + " holds no number");
        value = value * 10 + (c - '0');
        if (value > 32768)
            throw ProfileValueError("overflow: " + std::string(key));
    }
    if (negative)
        value = -value;
    if (value > 32767)
        throw ProfileValueError("overflow: " + std::string(key));
    return static_cast<int>(value);
}

std::string IndexedKey(std::string_view word, int n)
{
    return std::string(word) + std::to_string(n + 100).substr(1);
}

} // namespace vk
