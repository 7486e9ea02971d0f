#include "game/PersonnelPlay.h"

#include "board/BoardTables.h"
#include "board/Shooting.h"
#include "cards/DeckMoves.h"
#include "cards/PersonnelEffects.h"
#include "cards/PersonnelPicks.h"
#include "cards/PersonnelTexts.h"
#include "cards/Reactions.h"
#include "game/CardConversation.h"
#include "link/SharedFolderFiles.h"
#include "shell/Global.h"
#include "ui/BoardDisplay.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"
#include "ui/MessageBoard.h"

#include <functional>

namespace vk {

namespace {

constexpr int kNoPick = -1;

// Waits until the player has double-clicked a vehicle that `allowed`
// accepts; any other is refused in silence. The prompt stays on the board.
// Returns the slot, or kNoPick when the game stopped meanwhile.
int PickVehicle(Hoofdvenster& w, const char* prompt, const std::function<bool(int)>& allowed)
{
    WindowValues& v = w.V;
    v.PickedVehicle = kNoPick;
    ShowOnBoard(QString::fromUtf8(prompt));
    for (;;) {
        PumpUntil([&v] { return v.PickedVehicle != kNoPick || !v.GameRunning; },
                  QStringLiteral("Personnel card vehicle"));
        if (!v.GameRunning)
            return kNoPick;
        if (allowed(v.PickedVehicle))
            return v.PickedVehicle;
        v.PickedVehicle = kNoPick;
    }
}

// The same for a field of the board (1 to 118). `endsCard` lets a field end
// the card instead (kNoPick back, PickedField left on that field).
int PickField(Hoofdvenster& w, const char* prompt, const std::function<bool(int)>& allowed,
              const std::function<bool(int)>& endsCard = {})
{
    WindowValues& v = w.V;
    v.PickedField = kNoPick;
    ShowOnBoard(QString::fromUtf8(prompt));
    for (;;) {
        PumpUntil([&v] { return v.PickedField != kNoPick || !v.GameRunning; },
                  QStringLiteral("Personnel card field"));
        if (!v.GameRunning)
            return kNoPick;
        if (endsCard && endsCard(v.PickedField))
            return kNoPick;
        if (allowed(v.PickedField))
            return v.PickedField;
        v.PickedField = kNoPick;
    }
}

bool Announced(Hoofdvenster& w, int card)
{
    return AnnouncePersonnel(w, PersonnelValue(card)) != -1;
}

// The cards that place an own vehicle: announced, then moved.
void MoveIfNotAnnulled(Hoofdvenster& w, int card)
{
    WindowValues& v = w.V;
    if (!Announced(w, card))
        return;
    MoveByPersonnel(v.Board, v.Board.LocalSide, v.PickedVehicle, v.PickedField);
    ShowBoardAndCounts(w);
}

void PlayCamouflage(Hoofdvenster& w, const PersonnelPrompts& prompts)
{
    WindowValues& v = w.V;
    const int side = v.Board.LocalSide;
    const int slot = PickVehicle(w, prompts.FirstPick,
                                 [&v, side](int s) { return CamouflageVehicleAllowed(v.Board, side, s); });
    if (slot == kNoPick || !Announced(w, kCamouflage))
        return;
    if (Camouflage(v.Board, side, slot, slot))
        ShowBoardAndCounts(w);
}

void PlayExchange(Hoofdvenster& w)
{
    if (!Announced(w, kUitwisseling))
        return;
    ExchangePrisoners(w.V.Board);
    ShowBoardAndCounts(w);
}

void PlayLanding(Hoofdvenster& w, const PersonnelPrompts& prompts)
{
    WindowValues& v = w.V;
    const int side = v.Board.LocalSide;
    const int slot =
        PickVehicle(w, prompts.FirstPick, [&v, side](int s) { return VehicleInHarbour(v.Board, side, s); });
    if (slot == kNoPick)
        return;
    ClearBoard();
    if (PickField(w, prompts.SecondPick,
                  [&v, side, slot](int f) { return LandingFieldAllowed(v.Board, side, slot, f); }) == kNoPick)
        return;
    MoveIfNotAnnulled(w, kLandingsvaartuigen);
}

// The jeep in an ambush asks first about the Vrijgeleide; one that holds can
// still be beaten by a single Contra spionage in the player's hand.
void AmbushJeep(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    CompassDeck& deck = v.Progress.Deck;
    const int side = v.Board.LocalSide;
    const int enemy = OtherSide(side);
    AskVrijgeleide(w);
    if (!v.VrijgeleideHeld) {
        if (AskContraSpionage(w) == -1)
            return;
        AmbushEnemyJeep(v.Board, enemy);
        ShowBoardAndCounts(w);
        return;
    }
    const QString title = QStringLiteral("Jeep heeft vrijgeleide!");
    // A hand of two with a 24 in it gets no offer.
    if (CardCountOf(deck, side) == 1 && HandSlot(deck, side, 1) == kContraSpionage) {
        if (AskYesNo(QStringLiteral("De jeep beschikt over een vrijgeleide, maar dit kan worden verijdeld mits uw "
                                    "contra spionage. Wilt u die gebruiken?"),
                     title)) {
            v.VrijgeleideHeld = false;
            PushToBottom(deck, kContraSpionage);
            CardCountOf(deck, side) = 0;
        }
    } else {
        MessageBox(QStringLiteral("Uw tegenstander heeft een vrijgeleide voor zijn jeep gebruikt."), BoxButtons::Ok,
                   BoxIcon::Warning, title);
    }
    if (!v.VrijgeleideHeld) {
        TellOpponent(w, kSafeConductBeatenInAmbush);
        AmbushEnemyJeep(v.Board, enemy);
    } else {
        TellOpponent(w, kSafeConductStands);
        SendJeepBackBySafeConduct(v.Board, enemy);
    }
    ShowBoardAndCounts(w);
}

void PlayAmbush(Hoofdvenster& w, const PersonnelPrompts& prompts)
{
    WindowValues& v = w.V;
    const int side = v.Board.LocalSide;
    const int slot =
        PickVehicle(w, prompts.FirstPick, [&v, side](int s) { return AmbushTargetAllowed(v.Board, side, s); });
    if (slot == kNoPick)
        return;
    if (slot == kJeepSlot) {
        AmbushJeep(w);
        return;
    }
    if (!Announced(w, kHinderlaag))
        return;
    AmbushEnemyVehicle(v.Board, OtherSide(side), slot);
    ShowBoardAndCounts(w);
}

void PlayHelicopter(Hoofdvenster& w, const PersonnelPrompts& prompts)
{
    WindowValues& v = w.V;
    const int side = v.Board.LocalSide;
    const int slot =
        PickVehicle(w, prompts.FirstPick, [&v, side](int s) { return HelicopterVehicleAllowed(v.Board, side, s); });
    if (slot == kNoPick)
        return;
    if (HelicopterNeedsField(v.Board, side, slot)) {
        // The first field reported is taken as it is.
        if (PickField(w, kHelicopterFromHQ, [](int) { return true; }) == kNoPick)
            return;
    } else {
        v.PickedField = HQField(side);
    }
    MoveIfNotAnnulled(w, kHelikopter);
}

void PlayAirdrop(Hoofdvenster& w, const PersonnelPrompts& prompts)
{
    WindowValues& v = w.V;
    const int side = v.Board.LocalSide;
    const int slot =
        PickVehicle(w, prompts.FirstPick, [&v, side](int s) { return VehicleOnAirport(v.Board, side, s); });
    if (slot == kNoPick)
        return;
    if (PickField(w, prompts.SecondPick,
                  [&v, side, slot](int f) { return AirdropFieldAllowed(v.Board, side, slot, f); }) == kNoPick)
        return;
    MoveIfNotAnnulled(w, kLuchtlandingstroepen);
}

// Militaire Politie has no pick and no test that the jeep is out at all, and
// the Vrijgeleide cannot stop it.
void PlayMilitaryPolice(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    if (!Announced(w, kMilitairePolitie))
        return;
    MilitaryPoliceOnEnemyJeep(v.Board, OtherSide(v.Board.LocalSide));
    ShowBoardAndCounts(w);
}

void PlayMineClearance(Hoofdvenster& w, const PersonnelPrompts& prompts)
{
    WindowValues& v = w.V;
    const int side = v.Board.LocalSide;
    const int field =
        PickField(w, prompts.FirstPick, [&v, side](int f) { return EnemyMineField(v.Board, side, f); });
    if (field == kNoPick || !Announced(w, kMijnopruimingsdienst))
        return;
    ClearEnemyMine(v.Board, side, field);
    ShowBoardAndCounts(w);
}

// Marine luchtvaartdienst and Verbindingsdienst: a vehicle, then a field; a
// click outside the road squares ends the card with nothing sent.
using VehicleRule = bool (*)(const BoardState&, int side, int slot);
using FieldRule = bool (*)(const BoardState&, int field);

void PlayFlight(Hoofdvenster& w, int card, const PersonnelPrompts& prompts, VehicleRule vehicleAllowed,
                FieldRule fieldAllowed)
{
    WindowValues& v = w.V;
    const int side = v.Board.LocalSide;
    const int slot = PickVehicle(w, prompts.FirstPick,
                                 [&v, side, vehicleAllowed](int s) { return vehicleAllowed(v.Board, side, s); });
    if (slot == kNoPick)
        return;
    if (PickField(w, prompts.SecondPick, [&v, fieldAllowed](int f) { return fieldAllowed(v.Board, f); },
                  [](int f) { return EndsPersonnelPick(f); }) == kNoPick)
        return;
    MoveIfNotAnnulled(w, card);
}

void RunCard(Hoofdvenster& w, int card, const PersonnelPrompts& prompts)
{
    switch (card) {
    case kCamouflage: PlayCamouflage(w, prompts); break;
    case kUitwisseling: PlayExchange(w); break;
    case kLandingsvaartuigen: PlayLanding(w, prompts); break;
    case kHinderlaag: PlayAmbush(w, prompts); break;
    case kHelikopter: PlayHelicopter(w, prompts); break;
    case kLuchtlandingstroepen: PlayAirdrop(w, prompts); break;
    case kMilitairePolitie: PlayMilitaryPolice(w); break;
    case kMijnopruimingsdienst: PlayMineClearance(w, prompts); break;
    case kMarineLuchtvaartdienst: PlayFlight(w, card, prompts, VehicleInHarbour, NavalAirFieldAllowed); break;
    case kVerbindingsdienst: PlayFlight(w, card, prompts, VehicleInOwnCamp, StrategicPointAllowed); break;
    default: break;
    }
}

} // namespace

void PlayPersonnel(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    v.PersonnelRunning = true;
    const int card = v.CurrentCard;
    // Contra spionage and Vrijgeleide have no use here: they are spent with
    // nothing shown and nothing sent.
    const PersonnelPrompts* prompts = PromptsOf(card);
    if (prompts) {
        ShowOnBoard(QStringLiteral("personnel - ") + QString::fromUtf8(prompts->BoardName) + QString::fromUtf8(kPersonnelClickToPlay));
        PumpUntil([&v] { return Global().BoardText.isEmpty() || !v.GameRunning; },
                  QStringLiteral("Personnel card read"));
    }
    w.Personnel->SetVisible(false);
    if (prompts && v.GameRunning)
        RunCard(w, card, *prompts);
    v.PersonnelRunning = false;
}

} // namespace vk
