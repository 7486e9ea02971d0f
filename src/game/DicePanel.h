#pragma once

// The handlers of the dice panel "Actie Commando": the roll, the choice of a
// die or both, the end of the turn and the buttons of a shown card.

namespace vk {

class Hoofdvenster;

// Rolls both dice two seconds apart with the dice sound; at a turn it opens
// the choice of dice (phase 4), at the toss it only stores the values.
void cmdGooi_Click(Hoofdvenster& w);
// The pictures of two dice values on Dice_1, MiniDice_1 and Dice_2,
// MiniDice_2: the own roll and the opponent's.
void ShowDicePictures(Hoofdvenster& w, int left, int right);
// Choose a die or both, and unchoose them again, by the phase table.
void Dice_1_DblClick(Hoofdvenster& w);
void Dice_2_DblClick(Hoofdvenster& w);
void Dices_DblClick(Hoofdvenster& w);
void cmdEindeBeurt_Click(Hoofdvenster& w);
void cmdKompasGebruik_Click(Hoofdvenster& w);
void cmdKompasSluit_Click(Hoofdvenster& w);

} // namespace vk
