#pragma once

// The local player's name box User_Name and the check box "Aanwezig"
// (ShareStatus) beside it.

namespace vk {

class Hoofdvenster;

void User_Name_GotFocus(Hoofdvenster& window);
void User_Name_KeyPress(Hoofdvenster& window, int& keyAscii);
void User_Name_LostFocus(Hoofdvenster& window);
void ShareStatus_Click(Hoofdvenster& window);

} // namespace vk
