#pragma once

// The game as the window plays it: from the click on "Spel Starten" through
// the handshake, the toss and the deal to the turns of both players.

namespace vk {

class Hoofdvenster;

// "Spel Starten": asks about a saved game, clears the board and runs the
// whole game inside the click.
void cmdStart_Click(Hoofdvenster& w);

// The start of a new game: flags, counters and the board of view 1.
void ResetNewGame(Hoofdvenster& w);

// The handshake, the toss or the resumption, the deal, and the turn loop
// until the game is won, lost or stopped.
void RunGameSequence(Hoofdvenster& w);

// One turn of the local player, phase by phase, until phase 39 or a stop.
void PlayLocalTurn(Hoofdvenster& w);

// Pumps until a handler has moved the phase on from `phase`, or the game
// has stopped.
void WaitPhase(Hoofdvenster& w, int phase);

// The dice panel at the start of a turn or a toss.
void ResetTurnControls(Hoofdvenster& w);

// The opponent's turn: his messages read and replayed until his turn ends.
void FollowOpponentTurn(Hoofdvenster& w);

// Connects the handlers of the game's controls; called once at start-up.
void ConnectGameControls(Hoofdvenster& w);

} // namespace vk
