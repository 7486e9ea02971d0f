#pragma once

// Tells the player that the game waits for him while the window is not the
// active one: his turn has come, an invitation or a question of the opponent
// has arrived.

namespace vk {

class Hoofdvenster;

enum class Notice {
    YourTurn,    // the opponent's turn has ended
    Invitation,  // an invitation to play has arrived
    Question,    // the opponent asks something that a card of the player may answer
};

void TellPlayer(Hoofdvenster& w, Notice notice);

} // namespace vk
