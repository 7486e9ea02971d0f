#pragma once

// The question-and-answer conversation of the reaction cards. The asking copy
// stops in the middle of its turn, writes its question, and waits for the
// answer of the other player, who decides with the cards of his hand; both
// copies then change deck and hands by themselves.

#include "board/Shooting.h"
#include "link/MessageKinds.h"

#include <QString>
#include <QStringList>

namespace vk {

class Hoofdvenster;

// Writes one message of `kind` with `values` in its key order (after the
// wait for the last file sent when `waitForConsumed`), shows the warning box
// `title` / `text` and waits, with the picking locked, for the opponent's
// ".ans"; returns its ANSWER (1 no reaction, 2 the card was used).
int AskOpponent(Hoofdvenster& w, MessageKindId kind, const QStringList& values, const QString& title,
                const QString& text, bool waitForConsumed);

// Tells the opponent question 2, 3 or 5, which has no answer, and waits until
// he has taken it.
void TellOpponent(Hoofdvenster& w, int question);

// A Personnel card of index `cardIndex` (the card less 20) is played, with
// PickedVehicle and PickedField: the ".pnu" and the wait for the answer.
// Returns -1 when the opponent annulled it with Contra spionage (CardAnnulled
// set; the mirror of his hand loses the 24), else 0.
int AnnouncePersonnel(Hoofdvenster& w, int cardIndex);
// Question 4, the ambush on the jeep: -1 when the opponent used his
// Vrijgeleide (VrijgeleideHeld set; the mirror loses the 29), else 0.
int AskVrijgeleide(Hoofdvenster& w);
// Question 6, right after question 4: -1 when the opponent used Contra
// spionage against the ambush (CardAnnulled set; the mirror loses a 24).
int AskContraSpionage(Hoofdvenster& w);

// The seam through which a shot of the local player at the enemy's jeep asks
// about the Vrijgeleide (question 1) and settles it: Contra spionage offered
// to the shooter, question 2 or 3 told.
SafeConductSeam ShotAtJeepSeam(Hoofdvenster& w);

// The opponent's ".ask" at `file`: read, deleted, and answered as its number
// asks, with the boxes, log lines and deck changes of each question.
void AnswerQuestion(Hoofdvenster& w, const QString& file);

} // namespace vk
