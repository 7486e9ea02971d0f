#pragma once

// Values of the main window: the game's values, and what belongs to the
// window and the link alone.

#include "game/GameValues.h"
#include "ui/Sound.h"

#include <QString>

namespace vk {

struct WindowValues : GameValues {
    // Twips; 0 until the splash has been shown, then the minimum window size.
    int MinWidth = 0;
    int MinHeight = 0;
    int SelectedUser = 0;        // index in Combo_ExternUsers, 0 for "Geen Speler"
    // The message file the game waits for, and the message last sent and not
    // yet seen consumed by the opponent.
    QString CurrentFile;
    QString LastSentFile;
    SoundState Sound;
};

} // namespace vk
