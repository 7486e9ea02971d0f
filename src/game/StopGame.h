#pragma once

// "Spel Stoppen": while a game runs it asks whether to stop, saves or gives
// up, and tells the opponent with a .stp; once no game runs it clears the
// board and resets the interface for the next game.

namespace vk {

class Hoofdvenster;

void cmdStop_Click(Hoofdvenster& window);

} // namespace vk
