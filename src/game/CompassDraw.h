#pragma once

// The compass cards of a turn: the draws at its end (phases 27 to 38) with
// the choice among three Personnel cards, the miniatures that open a card of
// the hand, and the other copy's mirror of every draw.

#include <QString>

namespace vk {

class Hoofdvenster;

// Phase bodies of the own turn.
void UseHandCard(Hoofdvenster& w);                  // 2
void ChooseDrawPhase(Hoofdvenster& w, int phase);   // 27, 33
void DrawRadioYamboCard(Hoofdvenster& w, int phase); // 28, 34
void DrawPersonnelCard(Hoofdvenster& w, int phase);  // 29, 35
void ThirdCardDrawn(Hoofdvenster& w, int phase);     // 30, 36
void ThirdCardShown(Hoofdvenster& w, int phase);     // 31, 37
void ThirdCardChoice(Hoofdvenster& w, int phase);    // 32, 38

// The drawer's side of a Radio Yambo card: shown until the player clicks the
// board, then carried out.
void PlayRadioYambo(Hoofdvenster& w);

// The miniatures: KK1 and KK2 open a card of the hand, KK3 the third card.
void KK1_Click(Hoofdvenster& w);
void KK2_Click(Hoofdvenster& w);
void KK3_Click(Hoofdvenster& w);

// The opponent's draws, read from his files.
void OpponentDrewRadioYambo(Hoofdvenster& w, const QString& file); // .ryc
void OpponentKeptPersonnel(Hoofdvenster& w, const QString& file);  // .pna
void OpponentDealtThirdCard(Hoofdvenster& w, const QString& file); // .pnc

} // namespace vk
