#pragma once

// Choosing, inviting and leaving an external player.

namespace vk {

class Hoofdvenster;

// Click of Combo_ExternUsers: follows the list index into SelectedUser and
// paints the box red until the presence poll labels the player.
void Combo_ExternUsers_Click(Hoofdvenster& window);

// Selects entry `index` of Combo_ExternUsers and runs its click, as setting
// the list index does.
void SelectExternUser(Hoofdvenster& window, int index);

// "Uitnodigen": writes the invitation into the selected player's folder.
void cmdRequestToPlay_Click(Hoofdvenster& window);

// "Verbreken": clears the selected folder of presence and invitation files,
// leaves the connection and goes off-line. The partner isn't told.
void cmdDisconnect_Click(Hoofdvenster& window);

} // namespace vk
