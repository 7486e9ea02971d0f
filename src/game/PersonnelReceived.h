#pragma once

// A Personnel card that the opponent plays before his dice, on this copy:
// shown, its target marked, its effect applied to the local mirror of the
// game, and always answered with one ".ans", for which the player waits.

#include <QString>

namespace vk {

class Hoofdvenster;

// The opponent's ".pnu" at `file`: read, shown, deleted and received.
void OpponentPlayedPersonnel(Hoofdvenster& w, const QString& file);

// Receives the card of value CurrentCard (1 to 12) with PickedVehicle and
// PickedField as the ".pnu" gave them.
void ReceivePersonnel(Hoofdvenster& w);

} // namespace vk
