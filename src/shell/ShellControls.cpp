#include "shell/ShellControls.h"

#include "shell/Exit.h"
#include "shell/Global.h"
#include "shell/HelpPages.h"
#include "shell/UserNameBox.h"
#include "ui/Hoofdvenster.h"

namespace vk {

void ConnectShellControls(Hoofdvenster& w)
{
    // A click on the running text takes it away.
    w.msgBoard->Mouse.Click = [] { Global().BoardText.clear(); };
    w.User_Name->GotFocus = [&w] { User_Name_GotFocus(w); };
    w.User_Name->KeyPress = [&w](int& keyAscii) { User_Name_KeyPress(w, keyAscii); };
    w.User_Name->LostFocus = [&w] { User_Name_LostFocus(w); };
    w.ShareStatus->Click = [&w] { ShareStatus_Click(w); };
    w.cmdSluiten->Click = [&w] { CmdSluitenClick(w); };
    w.cmdRules->Click = [&w] { ShowHelpPage(w, QStringLiteral("/help/rules.html")); };
    w.Cmd_HowTo->Click = [&w] { ShowHelpPage(w, QStringLiteral("/help/sharebox.html")); };
}

} // namespace vk
