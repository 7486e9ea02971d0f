#pragma once

namespace vk {

class Hoofdvenster;

// Connects the handlers of the shell's controls (the name box, "Aanwezig",
// the help buttons, "Afsluiten", a click on the running text); called once at
// start-up.
void ConnectShellControls(Hoofdvenster& w);

} // namespace vk
