#pragma once

#include <QString>

namespace vk {

class Hoofdvenster;

// The program that opens web pages on this desktop: $BROWSER, or the desktop's
// default application for HTML pages. Empty when there is none.
QString FindBrowser();

// cmdRules and Cmd_HowTo: opens ProgramFolder + page (such as "/help/rules.html")
// in the browser, or tells the player why it can't.
void ShowHelpPage(Hoofdvenster& window, const QString& page);

} // namespace vk
