#include "link/ExternalPrefix.h"

#include "shell/RunTimeFault.h"

namespace vk {

std::string RightText(const std::string& text, std::size_t count)
{
    return text.size() <= count ? text : text.substr(text.size() - count);
}

std::string ExternalPrefix(int n)
{
    const long sum = static_cast<long>(n) + 100;
    if (sum > 32767 || sum < -32768)
        throw RunTimeFault("Overflow");
    return RightText(std::to_string(sum), 2);
}

} // namespace vk
