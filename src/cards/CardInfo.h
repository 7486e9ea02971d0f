#pragma once

// The information box of each Personnel card ("Meer Info...").

#include <optional>
#include <string>

namespace vk {

struct CardInfoText {
    int Card;
    const char* Title; // UTF-8
    const char* Text;  // UTF-8
};

// The box of Personnel card 21..32, nothing for any other number.
std::optional<CardInfoText> PersonnelCardInfo(int card);

} // namespace vk
