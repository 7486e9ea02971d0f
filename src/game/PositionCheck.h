#pragma once

// The check that two copies of a game still hold the same position: the
// sender's digest travels in its end-of-turn message, the reader compares it
// with its own after the replay of that turn and warns its player when they
// differ.

#include "game/ActionRecords.h"

#include <QString>

#include <string>

namespace vk {

class Hoofdvenster;

// The digest of this copy's position as it stands (PositionDigest); empty
// while the game has no sides yet.
std::string OwnPositionDigest(const Hoofdvenster& w);

// The end of the opponent's turn, all of it replayed: when the message holds
// a digest that differs from OwnPositionDigest, the run log gets "position
// differs from opponent's at " with the time and a line with both digests,
// DesyncWarnings counts one more and the warning waits for the start of the
// own turn that follows. A message without a digest is not checked.
void CheckOpponentsPosition(Hoofdvenster& w, const EndOfTurnMessage& message);

// At the start of the own turn, after the check above found a difference:
// the board runs the warning for nine seconds, or until it is clicked, before
// the turn begins. Nothing when there was none.
void ShowDesyncWarning(Hoofdvenster& w);

// A new game: a warning still waiting for a turn of the last game goes.
void ForgetDesyncWarning();

// How many such warnings this run has given.
int DesyncWarnings();

// For tests (the automation request "tamper"): ChangePositionValue on the
// running game, then the board and the counts shown anew. Empty when done,
// else why it was refused.
QString ChangePositionForTest(Hoofdvenster& w, const QString& section, const QString& key, const QString& value);

} // namespace vk
