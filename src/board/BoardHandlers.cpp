#include "board/BoardHandlers.h"

#include "board/BoardTables.h"
#include "board/BoardView.h"
#include "board/Picking.h"
#include "game/CardConversation.h"
#include "game/RadioYamboPlay.h"
#include "link/SharedFolderFiles.h"
#include "ui/BoardDisplay.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"

namespace vk {

namespace {

bool IsOwnTurn(const WindowValues& v)
{
    const int turn = v.Progress.TurnNumber;
    return turn != 0 && (v.Board.LocalSide == 1 ? turn % 2 == 1 : turn % 2 == 0);
}

void MarkVehicle(Hoofdvenster& w, int side, int slot)
{
    const Picture& picture = w.V.Board.VehiclePicture(side, slot);
    w.Kader->Move(picture.Left, picture.Top, picture.Width, picture.Height);
    w.Kader->SetVisible(true);
    w.Kader->raise();
}

// The die picture that stays chosen for the action of a picking phase.
ImageControl* ChosenDie(Hoofdvenster& w, int phase)
{
    switch (phase) {
    case 5:
    case 19: return w.Dice_1;
    case 10:
    case 14: return w.Dice_2;
    default: return w.Dices;
    }
}

void PickOwn(Hoofdvenster& w, int side, int slot)
{
    WindowValues& v = w.V;
    const int phase = v.GamePhase;
    const VehiclePick pick =
        PickOwnVehicle(v.Board, side, slot, phase, v.Dice1, v.Dice2, v.Act.ActVeh, v.Act.ActCode);
    if (pick == VehiclePick::Refused)
        return;
    const auto index = static_cast<std::size_t>(ActionIndexOfPhase(phase));
    v.Act.ActVeh[index] = slot;
    v.GamePhase = phase + (pick == VehiclePick::FromCamp ? 2 : 3);
    ChosenDie(w, phase)->SetEnabled(false);
    v.Act.ActFrom[index] = v.Board.VehiclePos(side, slot);
    ShowBoard(w);
    MarkVehicle(w, side, slot);
}

void CancelPick(Hoofdvenster& w, int side)
{
    WindowValues& v = w.V;
    const int phase = v.GamePhase;
    const int back = PhaseAfterCancel(phase);
    if (back < 0)
        return;
    const auto index = static_cast<std::size_t>(ActionIndexOfPhase(phase));
    w.Kader->SetVisible(false);
    if (IsCampLoadPhase(phase)) {
        CancelCampPick(v.Board, side, v.Act.ActVeh[index]);
        ShowBoard(w);
        ShowCompanies(w, side);
    }
    v.GamePhase = back;
    v.Act.ActVeh[index] = -1;
    v.Act.ActCode[index] = -1;
    v.Act.ActFrom[index] = -1;
}

// A double click on an enemy vehicle is a shot at it: the click goes to the
// middle of its field, as if the board under the picture had been hit.
void ShootAt(Hoofdvenster& w, int side, int slot)
{
    WindowValues& v = w.V;
    const int phase = v.GamePhase;
    if (phase == 8 || phase == 17 || phase == 26)
        v.Act.ActCode[0] = 2;
    else if (phase == 13 || phase == 22)
        v.Act.ActCode[1] = 2;
    else
        return;
    const TwipPoint centre = HitCentre(ViewOf(v.Board), v.Board.VehiclePos(side, slot));
    v.MouseX = centre.X;
    v.MouseY = centre.Y;
    BoardDoubleClick(w);
}

void VehicleDoubleClick(Hoofdvenster& w, int side, int slot)
{
    WindowValues& v = w.V;
    if (v.PersonnelRunning) {
        const int card = v.CurrentCard;
        const bool own = card == 21 || card == 23 || card == 26 || card == 27 || card == 31 || card == 32;
        if ((own && side == v.Board.LocalSide) || (card == 25 && side != v.Board.LocalSide))
            v.PickedVehicle = slot;
        return;
    }
    if (ServeRadioYamboPick(w, side, slot))
        return;
    if (side != v.Board.LocalSide) {
        ShootAt(w, side, slot);
        return;
    }
    if (v.Board.Tsetse(side) > 0 && slot == v.Board.TsetseVeh) {
        MessageBox(QStringLiteral("De bemanning van het gekozen voertuig slaapt door toedoen van tse tse vliegen, en "
                                  "kan niets doen."),
                   BoxButtons::Ok, BoxIcon::None, QStringLiteral("Voertuig niet paraat"));
        return;
    }
    if (PhaseAfterCancel(v.GamePhase) >= 0)
        CancelPick(w, side);
    else
        PickOwn(w, side, slot);
}

void VehicleSlowClick(Hoofdvenster& w, int side, int slot)
{
    WindowValues& v = w.V;
    if (side != v.Board.LocalSide || !IsOwnTurn(v) || !IsCampLoadPhase(v.GamePhase))
        return;
    const int acting = v.Act.ActVeh[static_cast<std::size_t>(ActionIndexOfPhase(v.GamePhase))];
    if (!CampLoadClick(v.Board, v.CampLoad, v.CampLoadFresh, side, slot, acting))
        return;
    ShowCompanies(w, side);
    ShowBoard(w);
}

bool IsFieldPickPhase(int phase)
{
    return phase == 8 || phase == 13 || phase == 17 || phase == 22 || phase == 26;
}

void StoreDestination(WindowValues& v, int field)
{
    switch (v.GamePhase) {
    case 7: case 8: case 16: case 17: case 25: case 26: v.Act.ActTo[0] = field; break;
    case 12: case 13: case 21: case 22: v.Act.ActTo[1] = field; break;
    default: break;
    }
}

void Destination(Hoofdvenster& w, int field)
{
    WindowValues& v = w.V;
    const int side = v.Board.LocalSide;
    DestinationQuestions questions;
    questions.LoadFlag = [] {
        return AskYesNo(QStringLiteral("Wilt u een vlag opladen?"), QStringLiteral("Vlag beschikbaar"));
    };
    questions.LeaveMine = [] {
        return AskYesNo(QStringLiteral("Wilt u de mijn afzetten op het vakje dat u verlaat?"),
                        QStringLiteral("Mijn afzetten?"));
    };
    const DestinationResult result = ClickDestination(v.Board, ActionWords{v.Act.ActVeh, v.Act.ActCode, v.Act.ActFrom},
                                                      side, v.GamePhase, field, v.Dice1, v.Dice2, questions,
                                                      ShotAtJeepSeam(w));
    switch (result.What) {
    case DestinationResult::Kind::Ignored:
        return;
    case DestinationResult::Kind::FuelUndone:
        w.Kader->SetVisible(false);
        v.GamePhase = result.NextPhase;
        return;
    case DestinationResult::Kind::Done:
        if (IsFieldPickPhase(v.GamePhase))
            w.Kader->SetVisible(false);
        ShowBoard(w);
        if (result.Action.To == CampField(side)) {
            ShowCompanies(w, side);
            ShowFlagCover(w, side);
        }
        v.GamePhase = result.NextPhase;
        return;
    }
}

} // namespace

void Speelveld_MouseDown(Hoofdvenster& w, int x, int y)
{
    if (w.V.InputLock)
        return;
    w.V.MouseX = x;
    w.V.MouseY = y;
}

void BoardDoubleClick(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    if (v.InputLock || v.BoardBusy)
        return;
    v.BoardBusy = true;
    struct Release {
        bool& busy;
        ~Release() { busy = false; }
    } release{v.BoardBusy};

    const int field = FieldAt(v.MouseX, v.MouseY, ViewOf(v.Board));
    if (field == kNoField)
        return;
    if (v.PersonnelRunning) {
        // The pick of a Personnel card: the card's own loop judges it.
        v.PickedField = field;
        return;
    }
    StoreDestination(v, field);
    if (!IsOwnTurn(v) || v.GamePhase < 7 || v.GamePhase > 26)
        return;
    Destination(w, field);
}

void WaitForSecondClick(Hoofdvenster& w, int side, int slot)
{
    WindowValues& v = w.V;
    if (v.InputLock)
        return;
    v.ClickTimerFired = false;
    v.DoubleClickSeen = false;
    w.VehDblClickTimer->SetEnabled(false);
    w.VehDblClickTimer->SetEnabled(true);
    PumpUntil([&v] { return v.ClickTimerFired || v.DoubleClickSeen; }, QStringLiteral("second click"));
    if (v.DoubleClickSeen)
        VehicleDoubleClick(w, side, slot);
    else
        VehicleSlowClick(w, side, slot);
}

void VehicleDoubleClickSeen(Hoofdvenster& w)
{
    w.V.DoubleClickSeen = true;
}

void VehDblClickTimer_Timer(Hoofdvenster& w)
{
    w.V.ClickTimerFired = true;
    w.VehDblClickTimer->SetEnabled(false);
}

void MineDoubleClick(Hoofdvenster& w, int side, int mine)
{
    WindowValues& v = w.V;
    if (v.InputLock)
        return;
    // A Personnel card's field pick takes the mine's field as well.
    if (v.PersonnelRunning) {
        const TwipPoint centre = HitCentre(ViewOf(v.Board), v.Board.MinePos(side, mine));
        v.MouseX = centre.X;
        v.MouseY = centre.Y;
        BoardDoubleClick(w);
        return;
    }
    switch (v.GamePhase) {
    case 7: case 8: case 16: case 17: case 25: case 26: v.Act.ActCode[0] = 4; break;
    case 12: case 13: case 21: case 22: v.Act.ActCode[1] = 4; break;
    default: return;
    }
    const TwipPoint centre = HitCentre(ViewOf(v.Board), v.Board.MinePos(side, mine));
    v.MouseX = centre.X;
    v.MouseY = centre.Y;
    BoardDoubleClick(w);
}

} // namespace vk
