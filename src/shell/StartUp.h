#pragma once

#include <QString>

namespace vk {

class Hoofdvenster;

// The program's folder with the pictures, sounds and help pages: the
// executable's own folder in a build, the installed share folder after an install.
QString FindProgramFolder();

// The user's data folder ($XDG_DATA_HOME, by default ~/.local/share), ending in "/".
QString FindAppDataFolder();

// The load event of the main window: the start-up sequence from the
// single-instance test to the end of the form load.
void RunStartUp(Hoofdvenster& window);

} // namespace vk
