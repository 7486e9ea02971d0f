#include "board/Picking.h"

#include "board/BoardTables.h"
#include "board/MinesAndFlags.h"
#include "board/Movement.h"
#include "board/VehicleTag.h"

namespace vk {

namespace {

// One company more aboard the camp vehicle, back to 1 past the most it takes.
void AddCampCompany(BoardState& state, const CampLoadState& load, int side, int slot)
{
    int& companies = state.VehicleCompanies(side, slot);
    companies += 1;
    if (companies > load.MaxCompanies) {
        companies = 1;
        state.CampCompanies(side) += load.MaxCompanies - 1;
    } else {
        state.CampCompanies(side) -= 1;
    }
}

void StartCampLoad(BoardState& state, CampLoadState& load, int side, int slot)
{
    const int mine = FirstStoredMine(state, side);
    load.MineFree = mine >= 0;
    load.MineIndex = mine >= 0 ? mine : 0;
    load.MineAboard = false;
    load.CanCarryMine = IsCommandoSlot(slot);
    load.MaxCompanies = VehicleCapacity(slot);
    if (state.CampCompanies(side) < load.MaxCompanies)
        load.MaxCompanies = state.CampCompanies(side);
    state.VehicleCompanies(side, slot) = 1;
    state.CampCompanies(side) -= 1;
}

// The die whose 6 lets a camp vehicle out at a phase that picks a vehicle.
bool CampDieAllows(int phase, int dice1, int dice2)
{
    switch (phase) {
    case 5:
    case 19: return dice1 == 6;
    case 10:
    case 14: return dice2 == 6;
    case 23: return dice1 == 6 || dice2 == 6 || dice1 + dice2 == 6;
    default: return false;
    }
}

bool IsCampPickPhase(int phase)
{
    return phase == 7 || phase == 12 || phase == 16 || phase == 21;
}

bool IsFieldPickPhase(int phase)
{
    return phase == 8 || phase == 13 || phase == 17 || phase == 22 || phase == 26;
}

int StepsOfPhase(int phase, int dice1, int dice2)
{
    switch (phase) {
    case 8:
    case 22: return dice1;
    case 13:
    case 17: return dice2;
    default: return dice1 + dice2;
    }
}

// The phase after an action done at a field or camp phase.
int PhaseAfterAction(int phase)
{
    switch (phase) {
    case 7:
    case 8: return 9;
    case 16:
    case 17: return 18;
    default: return 27;
    }
}

int PhaseAfterFuelUndo(int phase)
{
    switch (phase) {
    case 13: return 9;
    case 22: return 18;
    default: return 4;
    }
}

DestinationResult SendToHQ(BoardState& state, ActionWords act, int side, int slot, int index, int nextPhase)
{
    DestinationResult result;
    SendCampVehicleToHQ(state, side, slot);
    act.ActCode[static_cast<std::size_t>(index)] = 1;
    result.What = DestinationResult::Kind::Done;
    result.NextPhase = nextPhase;
    result.Action = BoardAction{side, slot, 1, CampField(side), HQField(side), state.Verdict.Heading, false, -1};
    return result;
}

DestinationResult CampDestination(BoardState& state, ActionWords act, int side, int phase, int field, int dice1,
                                  int dice2)
{
    const int index = ActionIndexOfPhase(phase);
    const int slot = act.ActVeh[static_cast<std::size_t>(index)];
    if (phase != 25) {
        if (field != HQField(side) || state.HQCount(side) >= kHQPlaces)
            return {};
        return SendToHQ(state, act, side, slot, index, phase == 12 || phase == 21 ? 27 : phase + 2);
    }
    if (state.HQCount(side) >= kHQPlaces)
        return {};
    if (dice1 + dice2 == 6)
        return field == HQField(side) ? SendToHQ(state, act, side, slot, index, 27) : DestinationResult{};
    const int other = dice1 == 6 ? dice2 : (dice2 == 6 ? dice1 : -1);
    if (other < 0 || !IsLegalMove(state, side, slot, CampField(side), field, other + 1, false))
        return {};
    DestinationResult result;
    const int code = state.Verdict.MinePickup ? 4 : 1;
    act.ActCode[0] = code;
    result.Action = BoardAction{side, slot, code, CampField(side), field, state.Verdict.Heading, false, -1};
    ApplyAction(state, result.Action);
    result.What = DestinationResult::Kind::Done;
    result.NextPhase = 27;
    return result;
}

DestinationResult FieldDestination(BoardState& state, ActionWords act, int side, int phase, int field, int dice1,
                                   int dice2, const DestinationQuestions& questions, const SafeConductSeam& seam)
{
    const auto index = static_cast<std::size_t>(ActionIndexOfPhase(phase));
    const int slot = act.ActVeh[index];
    const int from = state.VehiclePos(side, slot);
    DestinationResult result;
    if (!IsLegalMove(state, side, slot, from, field, StepsOfPhase(phase, dice1, dice2), true))
        return result;
    MoveVerdict& verdict = state.Verdict;
    if (!verdict.ShootAllowed && state.Brandstof(side) > 0) {
        result.What = DestinationResult::Kind::FuelUndone;
        result.NextPhase = PhaseAfterFuelUndo(phase);
        return result;
    }
    result.Action = BoardAction{side, slot, 1, from, field, verdict.Heading, false, -1};
    if (verdict.ShootAllowed) {
        act.ActCode[index] = 2;
        result.Action.Code = 2;
        result.Action.TargetSlot = (verdict.ShootTarget > 0 ? verdict.ShootTarget : -verdict.ShootTarget) - 1;
    } else {
        act.ActCode[index] = verdict.MinePickup ? 4 : 1;
        if (verdict.FlagLoad) {
            // The answer's code always lands in the first action's word.
            if (questions.LoadFlag && questions.LoadFlag())
                act.ActCode[0] = 5;
            else
                verdict.FlagLoad = false;
        }
        if (MineLayingOffered(state, side, slot, from) && questions.LeaveMine && questions.LeaveMine()) {
            act.ActCode[index] = 3;
            result.Action.LeaveMine = true;
        }
        result.Action.Code = act.ActCode[index];
    }
    result.Shot = ApplyAction(state, result.Action, seam);
    if (result.Shot == ShotResult::SafeConductHeld) {
        // The Vrijgeleide spent the die: the record tells of a shot annulled.
        act.ActCode[index] = 0;
        result.Action.Code = 0;
    }
    result.What = DestinationResult::Kind::Done;
    result.NextPhase = PhaseAfterAction(phase);
    return result;
}

} // namespace

bool IsCampLoadPhase(int phase)
{
    return IsCampPickPhase(phase) || phase == 25;
}

int ActionIndexOfPhase(int phase)
{
    switch (phase) {
    case 10:
    case 12:
    case 13:
    case 19:
    case 21:
    case 22: return 1;
    default: return 0;
    }
}

bool CampLoadClick(BoardState& state, CampLoadState& load, bool& fresh, int side, int slot, int actingSlot)
{
    const int camp = CampField(side);
    if (state.VehiclePos(side, slot) != camp)
        return false;
    if (state.CampCompanies(side) == 0 && state.VehicleCompanies(side, slot) == 0)
        return false;
    // Only the vehicle picked for the action is loaded: a company put on
    // another camp vehicle would be lost to that army on this copy alone,
    // since nothing of the loading travels but the acting vehicle's tag.
    if (slot != actingSlot)
        return false;
    if (fresh) {
        StartCampLoad(state, load, side, slot);
        fresh = false;
    } else if (!load.CanCarryMine || !load.MineFree) {
        AddCampCompany(state, load, side, slot);
    } else if (!load.MineAboard) {
        load.MineAboard = true;
        state.MinePos(side, load.MineIndex) = -slot;
        state.MinePicture(side, load.MineIndex).Visible = false;
    } else {
        load.MineAboard = false;
        state.MinePos(side, load.MineIndex) = camp;
        state.MinePicture(side, load.MineIndex).Visible = true;
        AddCampCompany(state, load, side, slot);
    }
    state.VehicleTag(side, slot) = MakeVehicleTag(slot, side, state.VehicleCompanies(side, slot),
                                                  load.MineAboard ? 1 : 0, side == 1 ? kEast : kWest);
    return true;
}

void CampLoadClicks(BoardState& state, int side, int slot, int clicks)
{
    CampLoadState load;
    bool fresh = true;
    for (int click = 0; click < clicks; ++click)
        CampLoadClick(state, load, fresh, side, slot, slot);
}

VehiclePick PickOwnVehicle(BoardState& state, int side, int slot, int phase, int dice1, int dice2,
                           const std::array<int, 2>& actVeh, const std::array<int, 2>& actCode)
{
    if (phase != 5 && phase != 10 && phase != 14 && phase != 19 && phase != 23)
        return VehiclePick::Refused;
    if ((phase == 10 || phase == 19) && actVeh[0] == slot && actCode[0] == 1)
        return VehiclePick::Refused;
    const int position = state.VehiclePos(side, slot);
    if (position == CampField(side)) {
        const bool open = state.Brandstof(side) == 0 && CampDieAllows(phase, dice1, dice2) &&
                          state.HQCount(side) != kHQPlaces && state.CampCompanies(side) != 0;
        return open ? VehiclePick::FromCamp : VehiclePick::Refused;
    }
    if (position == IslandField(side)) {
        if (state.PrisonCompanies(side) == 0)
            return VehiclePick::Refused;
        LoadJeepOnIsland(state, side);
    }
    return VehiclePick::FromField;
}

void CancelCampPick(BoardState& state, int side, int slot)
{
    // The drive to the HQ and back only undoes the loading: a verdict left
    // standing from an earlier action (a mine picked up, a post crossed, a
    // flag offered) must not act on it. Nothing of a cancel travels, so it
    // must leave the position as the other copy has it.
    state.Verdict.MinePickup = false;
    state.Verdict.CompassCrossed = false;
    state.Verdict.FlagLoad = false;
    ExecuteMove(state, side, slot, CampField(side), HQField(side), false);
    ExecuteMove(state, side, slot, HQField(side), CampField(side), false);
}

int PhaseAfterCancel(int phase)
{
    switch (phase) {
    case 7:
    case 8:
    case 16:
    case 17:
    case 25:
    case 26: return 4;
    case 12:
    case 13: return 9;
    case 21:
    case 22: return 18;
    default: return -1;
    }
}

DestinationResult ClickDestination(BoardState& state, ActionWords act, int side, int phase, int field, int dice1,
                                   int dice2, const DestinationQuestions& questions, const SafeConductSeam& seam)
{
    if (IsCampLoadPhase(phase))
        return CampDestination(state, act, side, phase, field, dice1, dice2);
    if (IsFieldPickPhase(phase))
        return FieldDestination(state, act, side, phase, field, dice1, dice2, questions, seam);
    return {};
}

BoardClickOutcome ApplyBoardClick(BoardState& state, int side, int slot, int from, int to, int steps, bool mayShoot,
                                  bool leaveMine)
{
    BoardClickOutcome outcome;
    const bool legal = IsLegalMove(state, side, slot, from, to, steps, mayShoot);
    const bool fuelBlocked = state.Brandstof(side) > 0;

    if (from == CampField(side) && to == HQField(side)) {
        if (!fuelBlocked && SendCampVehicleToHQ(state, side, slot)) {
            outcome.What = BoardClickOutcome::Kind::SentToHQ;
            outcome.ActCode = 1;
        }
        return outcome;
    }
    if (!legal)
        return outcome;

    const MoveVerdict& verdict = state.Verdict;
    BoardAction action{side, slot, 1, from, to, verdict.Heading, false, -1};
    if (verdict.ShootAllowed) {
        action.Code = 2;
        action.TargetSlot = (verdict.ShootTarget > 0 ? verdict.ShootTarget : -verdict.ShootTarget) - 1;
        ApplyAction(state, action);
        outcome.What = BoardClickOutcome::Kind::Shot;
        outcome.ActCode = 2;
        return outcome;
    }
    if (fuelBlocked)
        return outcome;

    action.Code = verdict.MinePickup ? 4 : 1;
    if (verdict.FlagLoad)
        action.Code = 5;
    if (leaveMine && MineLayingOffered(state, side, slot, from)) {
        action.Code = 3;
        action.LeaveMine = true;
    }
    ApplyAction(state, action);
    outcome.What = BoardClickOutcome::Kind::Moved;
    outcome.ActCode = action.Code;
    return outcome;
}

} // namespace vk
