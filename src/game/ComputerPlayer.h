#pragma once

// A computer player in the place of the mouse. The game flow waits for its
// player at named waits (the phases of the turn, the toss, a card's picks) and
// in message boxes; a person answers them with clicks, the computer player
// with the same clicks on the same controls, decided by ComputerChoice. It
// owns no rule and writes no message: everything it does goes through the
// handlers a person's input reaches, at a person's pace (one gesture per
// think time, scaled by the time scale like every other wait).

#include "game/ComputerChoice.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <optional>

namespace vk {

class Control;
class Hoofdvenster;

struct ComputerSettings {
    QString Name;
    QString Folder;
    ComputerLevel Level = ComputerLevel::Greedy;
    QString Invite;       // a player to invite once seen; empty: wait to be invited
    int TurnLimit = 400;  // a game still running at this turn is stopped and saved
    int Games = 0;        // games it starts before it stays idle; 0: no end
};

// The settings a computer player's home needs before the start-up reads them:
// its name, an identity of its own (so that it can share a PC with a person's
// copy) and the shared folder in the list.
void PrepareComputerSettings(const ComputerSettings& settings);

class ComputerPlayer : public QObject {
public:
    ComputerPlayer(Hoofdvenster& window, const ComputerSettings& settings);

    // The time between two gestures, like a person's: 400 ms at time scale 1.
    static int ThinkMs();

private:
    void Tick();
    bool AnswerOpenDialog();
    void LinkStep();
    void GameStep(const QString& waiting);
    void OwnPhase(int phase);
    void PickAction(int phase);
    void CampVehiclePicked(int phase);
    void FieldVehiclePicked(int phase);
    void ThirdCard(int phase);
    bool PlayCard();
    void StockPick();
    void LeopardPick();

    // Gestures, each posted so that a handler that waits runs outside Tick.
    void Press(Control* button);
    void ClickImage(Control* control);
    void DoubleClick(Control* control, int x, int y);
    void DoubleClickCentre(Control* control);
    void Post(std::function<void()> gesture);

    // What the game shows now; a gesture is repeated only when it changed
    // nothing for a while (a gesture dropped on a hidden control).
    QString Situation() const;
    bool Repeating();

    TurnSituation Turn(int phase) const;

    Hoofdvenster& w_;
    ComputerSettings settings_;
    ComputerChoice choice_;
    QTimer timer_;
    QString lastSituation_;
    int sameTicks_ = 0;
    std::int32_t sameSince_ = 0;
    bool acted_ = false;
    bool invited_ = false;
    int gamesStarted_ = 0;
    bool gameRunning_ = false;
    int inviteWaitTicks_ = 0;

    // The action under way in the turn, and how far it has come.
    PlannedAction plan_;
    bool planned_ = false;
    int loadClicksDone_ = 0;
    QString loadBefore_;
    bool endTurn_ = false;
    int destinationTries_ = 0;
    // The Personnel card played this turn, if any.
    std::optional<ComputerChoice::CardPlay> cardPlay_;
    int cardTurn_ = -1;
    QString destinationAt_;
};

} // namespace vk
