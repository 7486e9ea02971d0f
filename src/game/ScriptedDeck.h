#pragma once

// For tests only: VALKENHORN_DECK, the 32 card numbers 1..32 each once, comma
// separated, from the bottom of the stack (entry 0) to its top (entry 31),
// makes the deal of this copy lay the deck in that order after the shuffle,
// so that a test can arrange which cards are drawn. A list that is not such a
// permutation is ignored. The deck still travels in the ".mkk" message, so
// the other copy receives it as always.

#include "cards/Deck.h"

#include <optional>

namespace vk {

std::optional<CompassStackArray> ScriptedDeck();

} // namespace vk
