#pragma once

// Shows the game's state on the controls of the main window. Game code
// changes the state, then calls these; nothing else moves a vehicle or mine
// control.

namespace vk {

class Hoofdvenster;

// Every vehicle and mine picture where the state has it: the vehicle's tag +
// ".gif" from the picture folder of the view, on the board or in Stock; the
// mines with their own pictures.
void ShowBoard(Hoofdvenster& w);

// The board picture and the frames that a redraw places for the view, and
// the reserve pictures of the view's army.
void ShowBoardView(Hoofdvenster& w);

// The company pictures of a camp, of a prison, and, for the army of the view,
// of the reserve.
void ShowCompanies(Hoofdvenster& w, int side);

// The panel over the flag picture of a camp, a fifth smaller per flag home.
void ShowFlagCover(Hoofdvenster& w, int side);

// After a card, which may change any mix of them: the pictures, and the
// company counts and flag covers of both armies.
void ShowBoardAndCounts(Hoofdvenster& w);

// Hides every vehicle, mine and captured mine control.
void HideArmies(Hoofdvenster& w);

} // namespace vk
