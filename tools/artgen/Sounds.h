#pragma once

#include <cstdint>
#include <vector>

namespace vk::art {

constexpr int kSoundRate = 22050;

// A short military fanfare over a drum roll, about six seconds: the splash
// lasts as long.
std::vector<std::int16_t> IntroSound();
// Dice rattling in a cup and falling on the table, under two seconds.
std::vector<std::int16_t> DiceSound();
// A two-tone signal that asks for attention, well under a second.
std::vector<std::int16_t> MessageSound();

}  // namespace vk::art
