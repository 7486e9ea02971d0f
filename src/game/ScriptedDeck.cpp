#include "game/ScriptedDeck.h"

#include <cstdlib>
#include <sstream>
#include <string>

namespace vk {

std::optional<CompassStackArray> ScriptedDeck()
{
    static const std::optional<CompassStackArray> deck = []() -> std::optional<CompassStackArray> {
        const char* text = std::getenv("VALKENHORN_DECK");
        if (!text)
            return std::nullopt;
        std::stringstream list(text);
        std::string item;
        CompassStackArray stack{};
        std::array<bool, CompassCardCount + 1> seen{};
        int count = 0;
        while (std::getline(list, item, ',')) {
            const int card = std::atoi(item.c_str());
            if (count >= CompassCardCount || card < 1 || card > CompassCardCount || seen[static_cast<std::size_t>(card)])
                return std::nullopt;
            seen[static_cast<std::size_t>(card)] = true;
            stack[static_cast<std::size_t>(count++)] = card;
        }
        if (count != CompassCardCount)
            return std::nullopt;
        return stack;
    }();
    return deck;
}

} // namespace vk
