#pragma once

// The mouse on the board: presses and double clicks on the board picture,
// clicks on the vehicles (a slow click loads a camp vehicle, a double click
// picks one or shoots at the enemy's), double clicks on the mines.

namespace vk {

class Hoofdvenster;

void Speelveld_MouseDown(Hoofdvenster& w, int x, int y);
void BoardDoubleClick(Hoofdvenster& w);
// A click on a vehicle of army `side`: waits for a second click, then runs
// the double click or the slow click.
void WaitForSecondClick(Hoofdvenster& w, int side, int slot);
void VehicleDoubleClickSeen(Hoofdvenster& w);
void VehDblClickTimer_Timer(Hoofdvenster& w);
void MineDoubleClick(Hoofdvenster& w, int side, int mine);

} // namespace vk
