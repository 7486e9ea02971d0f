#pragma once

// A Personnel card played before the dice, on the copy of its player: the
// board leads him through the picks of the card, the opponent is told and
// may annul it, and the card's effect is carried out.

namespace vk {

class Hoofdvenster;

// Plays CurrentCard, which has already left the hand and lies under the
// deck. Returns when the card is done, annulled or ended without a target.
void PlayPersonnel(Hoofdvenster& w);

} // namespace vk
