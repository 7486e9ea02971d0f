#include "game/GameFiles.h"
#include "game/GameFlow.h"

#include "board/Picking.h"
#include "game/ActionRecords.h"
#include "game/CompassDraw.h"
#include "game/PhaseTable.h"
#include "link/SharedFolderFiles.h"
#include "shell/Clock.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "ui/BoardDisplay.h"
#include "ui/Hoofdvenster.h"
#include "ui/MessageBoard.h"

namespace vk {

namespace {

PhaseContext ContextOf(const Hoofdvenster& w)
{
    const WindowValues& v = w.V;
    const int side = v.Board.LocalSide;
    PhaseContext context;
    context.CardCount = v.Progress.Deck.CardCount[static_cast<std::size_t>(side - 1)];
    context.Dice1 = v.Dice1;
    context.Dice2 = v.Dice2;
    context.FuelBlocked = v.Board.Brandstof(side) > 0;
    context.HQCount = v.Board.HQCount(side);
    context.CampCompanies = v.Board.CampCompanies(side);
    return context;
}

void ShowPhaseMessage(Hoofdvenster& w, int phase)
{
    ShowOnBoard(QString::fromStdString(PhaseMessage(phase, ContextOf(w))));
}

void SetShownAndEnabled(Control& control, bool on)
{
    control.SetVisible(on);
    control.SetEnabled(on);
}

int CardCount(const Hoofdvenster& w)
{
    return w.V.Progress.Deck.CardCount[static_cast<std::size_t>(w.V.Board.LocalSide - 1)];
}

void PublishRoll(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    WaitForConsumed(v);
    LogAt(QStringLiteral("result of me rolling dices: ") + QString::number(v.Dice1) + QStringLiteral(" and ") +
          QString::number(v.Dice2) + QStringLiteral(" at "));
    const QString roll = OwnFile(w, MessageKindId::DiceResult);
    SendMessage(roll, MessageKindId::DiceResult, QStringList{QString::number(v.Dice1), QString::number(v.Dice2)});
    v.LastSentFile = roll;
}

void TurnStart(Hoofdvenster& w)
{
    ShowPhaseMessage(w, 0);
    ResetTurnControls(w);
    const int cards = CardCount(w);
    if (cards > 0)
        SetShownAndEnabled(*w.KK1, true);
    if (cards == 2)
        SetShownAndEnabled(*w.KK2, true);
    SetShownAndEnabled(*w.cmdEindeBeurt, true);
    WaitPhase(w, 0);
    if (w.V.GamePhase == 4) {
        w.cmdStop->SetEnabled(false);
        PublishRoll(w);
    }
}

void StillYourTurn(Hoofdvenster& w)
{
    ShowPhaseMessage(w, 3);
    ResetTurnControls(w);
    if (CardCount(w) > 0) {
        w.KK1->SetVisible(true);
        w.KK1->SetEnabled(false);
    }
    SetShownAndEnabled(*w.cmdEindeBeurt, true);
    WaitPhase(w, 3);
    if (w.V.GamePhase == 4)
        PublishRoll(w);
}

void ChooseDice(Hoofdvenster& w)
{
    w.DiceKader->SetVisible(false);
    for (Control* c : std::initializer_list<Control*>{w.Dice_1, w.MiniDice_1, w.Dice_2, w.MiniDice_2, w.Dices})
        c->SetVisible(true);
    for (Control* c : std::initializer_list<Control*>{w.Dice_1, w.Dice_2, w.Dices, w.cmdEindeBeurt})
        c->SetEnabled(true);
    w.cmdEindeBeurt->SetVisible(true);
    ClearActionRecord(w.V.Act);
    ShowPhaseMessage(w, 4);
    WaitPhase(w, 4);
}

void SecondDie(Hoofdvenster& w, int phase)
{
    ImageControl* remaining = phase == 9 ? w.Dice_2 : w.Dice_1;
    ImageControl* used = phase == 9 ? w.Dice_1 : w.Dice_2;
    SetShownAndEnabled(*remaining, true);
    SetShownAndEnabled(*w.cmdEindeBeurt, true);
    ClearSecondAction(w.V.Act);
    for (Control* c : std::initializer_list<Control*>{used, w.MiniDice_1, w.MiniDice_2, w.DiceKader})
        c->SetVisible(false);
    ShowPhaseMessage(w, phase);
    WaitPhase(w, phase);
}

void SendAction(Hoofdvenster& w, const ActionPhase& entry)
{
    WindowValues& v = w.V;
    WaitForConsumed(v);
    for (const ActionLogLine& line : LogActionLines(v.Act, entry.DiceCode, entry.FromCamp)) {
        if (line.Timed)
            LogAt(QString::fromStdString(line.Text));
        else
            LogLine(QString::fromStdString(line.Text));
    }
    const int side = v.Board.LocalSide;
    const int slot = v.Act.ActVeh[static_cast<std::size_t>(entry.RecordIndex)];
    const ActionMessage message = MakeActionMessage(v.Act, entry.RecordIndex, entry.DiceCode, v.Board.Verdict.Heading,
                                                    v.Board.VehicleTag(side, slot));
    const QString action = OwnFile(w, MessageKindId::Action);
    SendMessage(action, MessageKindId::Action, ActionRecordKeys(message, entry.Phase));
    v.LastSentFile = action;
}

// The phases with a picked vehicle: the wait, then the record once the action
// is done; a cancelled pick sends nothing.
void VehiclePicked(Hoofdvenster& w, int phase)
{
    ShowPhaseMessage(w, phase);
    WaitPhase(w, phase);
    const std::optional<ActionPhase> entry = FindActionPhase(phase);
    if (entry && w.V.GamePhase == entry->DoneValue)
        SendAction(w, *entry);
}

void RunPhaseBody(Hoofdvenster& w)
{
    const int phase = w.V.GamePhase;
    switch (phase) {
    case 0: TurnStart(w); break;
    case 1: ShowPhaseMessage(w, 1); WaitPhase(w, 1); break;
    case 2: UseHandCard(w); break;
    case 3: StillYourTurn(w); break;
    case 4: ChooseDice(w); break;
    case 5: case 10: case 14: case 19: case 23:
        ShowPhaseMessage(w, phase);
        WaitPhase(w, phase);
        w.V.CampLoadFresh = true;
        break;
    case 7: case 8: case 12: case 13: case 16: case 17: case 21: case 22: case 25: case 26:
        VehiclePicked(w, phase);
        break;
    case 9: case 18: SecondDie(w, phase); break;
    case 27: case 33: ChooseDrawPhase(w, phase); break;
    case 28: case 34: DrawRadioYamboCard(w, phase); break;
    case 29: case 35: DrawPersonnelCard(w, phase); break;
    case 30: case 36: ThirdCardDrawn(w, phase); break;
    case 31: case 37: ThirdCardShown(w, phase); break;
    case 32: case 38: ThirdCardChoice(w, phase); break;
    default:
        // A phase without a body of its own here: it only clears the board
        // and waits to be moved on.
        ClearBoard();
        WaitPhase(w, phase);
        break;
    }
}

void EndTurn(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    // A stopped turn goes straight to its last line.
    if (v.GameRunning) {
        w.frDices->SetEnabled(false);
        const int side = v.Board.LocalSide;
        if (v.Board.Brandstof(side) > 0)
            v.Board.Brandstof(side) -= 1;
        if (v.Board.Tsetse(side) > 0)
            v.Board.Tsetse(side) -= 1;
    }
    LogAt(QStringLiteral("ending turn at "));
}

} // namespace

void WaitPhase(Hoofdvenster& w, int phase)
{
    PumpUntil([&w, phase] { return w.V.GamePhase != phase || !w.V.GameRunning; },
              QStringLiteral("phase ") + QString::number(phase));
}

void ResetTurnControls(Hoofdvenster& w)
{
    w.V.Dice1 = 0;
    w.V.Dice2 = 0;
    SetShownAndEnabled(*w.cmdGooi, true);
    for (Control* c : std::initializer_list<Control*>{w.cmdKompasSluit, w.cmdKompasGebruik, w.cmdEindeBeurt})
        SetShownAndEnabled(*c, false);
    for (Control* c : std::initializer_list<Control*>{w.Dice_1, w.Dice_2, w.Dices})
        c->SetEnabled(false);
    for (Control* c : std::initializer_list<Control*>{w.KK1, w.KK2, w.KK3})
        c->SetVisible(false);
}

void PlayLocalTurn(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    w.cmdStop->SetEnabled(true);
    while (v.GamePhase != 39 && v.GameRunning) {
        PumpInterface();
        RunPhaseBody(w);
        // A message stands on the board only as long as its phase lasts.
        ClearBoard();
    }
    EndTurn(w);
}

} // namespace vk
