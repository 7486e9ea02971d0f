#include "link/LinkControls.h"

#include "link/Connection.h"
#include "link/PollCycle.h"
#include "link/SharedFolders.h"
#include "ui/Hoofdvenster.h"

namespace vk {

void ConnectLinkControls(Hoofdvenster& w)
{
    w.Action_Timer->Timer = [&w] { Action_Timer_Timer(w); };
    w.cmdDisconnect->Click = [&w] { cmdDisconnect_Click(w); };
    w.Combo_ExternUsers->Click = [&w] { Combo_ExternUsers_Click(w); };
    w.cmdRequestToPlay->Click = [&w] { cmdRequestToPlay_Click(w); };
    w.Cmd_AddFolder->Click = [&w] { Cmd_AddFolder_Click(w); };
    w.Cmd_RemoveFolder->Click = [&w] { Cmd_RemoveFolder_Click(w); };
}

} // namespace vk
