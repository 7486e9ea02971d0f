#pragma once

// The values of a game as the turn controller, the opponent processor, the
// dice panel and the board handlers share them. Plain data: the window holds
// one set, the rules and the tests fill their own.

#include "board/BoardState.h"
#include "board/Picking.h"
#include "cards/RadioYamboEffects.h"
#include "game/ActionRecords.h"
#include "game/DiceTable.h"
#include "game/RandomSource.h"
#include "game/SavedGame.h"

namespace vk {

struct GameValues {
    // The course of a game.
    bool GameRunning = false;
    bool GameWon = false;
    bool GameLost = false;
    bool ResumeGame = false;   // this start continues the saved game
    int GamePhase = 0;         // the state of the own turn, 0..39
    int TossNumber = 0;

    // Kept apart while a wait pumps the interface.
    bool InputLock = false;    // clicks on vehicles and the board are ignored
    bool BoardBusy = false;    // a double click on the board is being handled

    // The dice: the own roll and the opponent's, shown only.
    int Dice1 = 0;
    int Dice2 = 0;
    int OppDice1 = 0;
    int OppDice2 = 0;

    // The last card number read; it also carries the DICE value of an action.
    int CurrentCard = 0;

    // The actions of the turn.
    ActionRecord Act;

    // Picking on the board.
    bool CampLoadFresh = false;
    CampLoadState CampLoad;
    int MouseX = 0;
    int MouseY = 0;
    bool ClickTimerFired = false;
    bool DoubleClickSeen = false;
    // The outcome of the last card conversation: the opponent annulled the
    // card with Contra spionage, or covered his jeep with a Vrijgeleide.
    bool CardAnnulled = false;
    bool VrijgeleideHeld = false;

    // The picks of a Personnel card being played.
    bool PersonnelRunning = false;
    int PickedVehicle = -1;
    int PickedField = -1;

    // The picks of a Radio Yambo card: lost own vehicles still to be taken
    // back from Stock, and the enemy's vehicle of operatie luipaard.
    int StockPicksLeft = 0;
    bool LeopardPick = false;
    // The working values of card 7.
    RetreatWork Retreat;

    // The position (with BoardSide, LocalSide and PendingDraws) and the
    // progress of the game (TurnNumber, ExternalSide, the deck and hands).
    BoardState Board;
    GameProgress Progress;

    // The dice come from a table built at start-up, drawn with the program's
    // generator; the deck's shuffle draws from the same generator.
    vk::DiceTable DiceTable{};
    RollDieState RollDie;
    CardPickState CardPickSeed;
    SplitMixRandom Random;
};

} // namespace vk
