#pragma once

// For tests only: VALKENHORN_DICE, a list of die values such as "6,6,3,4",
// makes the rolls of this copy come from the list in order, so that a test
// can play a game it has written down. Once the list is used up, or without
// it, the dice come from the dice table.

#include <optional>

namespace vk {

// The next scripted value, or nothing.
std::optional<int> NextScriptedDie();

// Whether this run rolls scripted dice (the run log says so at the start).
bool DiceScripted();

} // namespace vk
