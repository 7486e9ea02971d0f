#include "cards/Deck.h"

#include "game/DiceTable.h"
#include "shell/RunTimeFault.h"

#include <cmath>
#include <utility>

namespace vk {

namespace {

// The last two digits of n + 100: "01" for 1, "32" for 32.
std::string TwoDigits(int n)
{
    return std::to_string(n + 100).substr(1);
}

} // namespace

int CardPick(CardPickState& state, RandomSource& random, double secondsSinceMidnight)
{
    if (!state.seeded) {
        random.Seed(ClockSeed(secondsSinceMidnight, 32000));
        state.seeded = true;
    }
    const auto drawn = static_cast<int>(std::nearbyint(random.Next() * 32000.0 + 1.0));
    return drawn % CompassCardCount + 1;
}

void ShuffleCompassStack(CompassStackArray& stack, int& stackPoint, int& dice1, int& dice2, CardPickState& state,
                         RandomSource& random, double secondsSinceMidnight)
{
    for (int i = 1; i <= CompassCardCount; ++i)
        stack[static_cast<std::size_t>(i - 1)] = i;
    for (int n = 0; n < 1000; ++n) {
        dice1 = CardPick(state, random, secondsSinceMidnight);
        dice2 = CardPick(state, random, secondsSinceMidnight);
        const int a = CheckIndex(dice1 - 1, 0, CompassCardCount, "CompassStack");
        const int b = CheckIndex(dice2 - 1, 0, CompassCardCount, "CompassStack");
        std::swap(stack[static_cast<std::size_t>(a)], stack[static_cast<std::size_t>(b)]);
    }
    stackPoint = CompassCardCount;
}

std::string DeckLogLine(int position, int card)
{
    return "card " + TwoDigits(position) + ": " + TwoDigits(card);
}

std::string DeckKey(int position)
{
    return "Kaart" + TwoDigits(position);
}

} // namespace vk
