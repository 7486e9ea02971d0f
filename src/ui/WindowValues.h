#pragma once

// Values of the main window that the game logic reads and writes. The game
// position itself joins them as the rules come in.

#include "board/BoardState.h"
#include "game/DiceTable.h"
#include "game/RandomSource.h"
#include "game/SavedGame.h"
#include "ui/Sound.h"

#include <QString>

namespace vk {

struct WindowValues {
    // Twips; 0 until the splash has been shown, then the minimum window size.
    int MinWidth = 0;
    int MinHeight = 0;
    bool GameRunning = false;
    int GamePhase = 0;
    bool InputLock = false;
    bool BoardBusy = false;
    // The message last sent and not yet seen consumed by the opponent.
    QString LastSentFile;
    // Set when this side stopped a game without saving it.
    bool GameLost = false;
    int SelectedUser = 0;        // index in Combo_ExternUsers, 0 for "Geen Speler"
    int Dice1 = 0;
    int Dice2 = 0;
    SoundState Sound;

    // The position on the board (with BoardSide, the Side drawn at the bottom,
    // and LocalSide) and the progress of the game (TurnNumber, ExternalSide).
    BoardState Board;
    GameProgress Progress;

    // The dice come from a table built at start-up, drawn with the program's generator.
    vk::DiceTable DiceTable{};
    RollDieState RollDie;
    SplitMixRandom Random;
};

} // namespace vk
