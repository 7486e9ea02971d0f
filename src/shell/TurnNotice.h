#pragma once

// Tells the player that the game waits for him while the window is not the
// active one: his turn has come, an invitation or a question of the opponent
// has arrived.
//
// The notice is a desktop notification through the freedesktop notification
// service on the session bus (org.freedesktop.Notifications, Notify; the
// call does not wait for its answer) and the window asking for attention (a
// blinking task bar entry). Without a session bus (none named by
// DBUS_SESSION_BUS_ADDRESS or $XDG_RUNTIME_DIR/bus) or without a notification
// service on it, the window asks for attention alone, silently. The setting
// "TurnNotice" = "False" (group [DropBox]) turns the notice off; a missing key
// means on.

#include <QString>

namespace vk {

class Hoofdvenster;

enum class Notice {
    YourTurn,    // the opponent's turn has ended
    Invitation,  // an invitation to play has arrived
    Question,    // the opponent asks something that a card of the player may answer
};

void TellPlayer(Hoofdvenster& w, Notice notice);

// The notification's summary line: "Valkenhorn: u bent aan de beurt."
QString NoticeSummary(Notice notice);

// The notification's body: what the player may do now.
QString NoticeBody(Notice notice);

// False when the setting "TurnNotice" says "False".
bool TurnNoticeOn();

// The name of the desktop entry and of the icon in the icon theme.
inline constexpr const char* kDesktopId = "nl.valkenhorn.Valkenhorn";

} // namespace vk
