#pragma once

// "Tegen de computer": a player without an opponent plays against a computer
// player. The button starts a copy of this program with --computer on a
// private shared folder in the data folder, with homes of its own there; that
// copy comes present and invites the player, who accepts as from any player.
// The computer copy ends with this program, however it ends.

#include <QString>

namespace vk {

class Hoofdvenster;

void cmdComputer_Click(Hoofdvenster& window);

// The computer player's name: "Computer", or "Robot" when the local player
// is called so himself.
QString ComputerOpponentName(const QString& localUser);

} // namespace vk
