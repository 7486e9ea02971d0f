#pragma once

namespace vk {

class Hoofdvenster;

// Connects the handlers of the link's controls (the poll timer, the list of
// players, invitations, the folder buttons); called once at
// start-up.
void ConnectLinkControls(Hoofdvenster& w);

} // namespace vk
