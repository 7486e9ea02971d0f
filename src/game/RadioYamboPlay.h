#pragma once

// What a Radio Yambo card does once it is read: on the copy of the player
// who drew it (with his picks of lost vehicles and of the enemy's vehicle),
// and on the opponent's copy, which works the card out alone or follows the
// drawer's choice sent in ".ray".

#include <QString>

namespace vk {

class Hoofdvenster;

// The drawer's side of card `card`, after he clicked the board.
void CarryOutRadioYambo(Hoofdvenster& w, int card);

// The opponent's copy, for the cards whose outcome it works out alone.
void ApplyRadioYambo(Hoofdvenster& w, int card);

// The opponent's ".ray" at `file`: the drawer's choice for cards 4, 6, 12
// and 18, shown and followed, then deleted.
void OpponentChoseRadioYambo(Hoofdvenster& w, const QString& file);

// A double click on vehicle `slot` of `side` while a Radio Yambo pick runs
// serves it; false when none runs, and the click goes on as usual.
bool ServeRadioYamboPick(Hoofdvenster& w, int side, int slot);

} // namespace vk
