#include "board/BoardAction.h"

#include "board/BoardTables.h"
#include "board/MinesAndFlags.h"
#include "board/Movement.h"
#include "board/VehicleTag.h"
#include "shell/RunTimeFault.h"

namespace vk {

namespace {

// The value of one character of the tag, counted from 1: 0 past the end or for
// a character that is no digit.
int DigitAt(const std::string& tag, std::size_t position)
{
    if (position > tag.size())
        return 0;
    const char c = tag[position - 1];
    return (c >= '0' && c <= '9') ? c - '0' : 0;
}

} // namespace

CampVehicleLoad ReadCampVehicleTag(int slot, const std::string& vehicleTag)
{
    CampVehicleLoad load;
    switch (CheckIndex(slot, 0, 10, "VehicleSlot")) {
    case 0:
    case 10:
        load.Companies = DigitAt(vehicleTag, 8);
        break;
    case 1:
    case 2:
    case 8:
    case 9:
        load.Companies = DigitAt(vehicleTag, 9);
        break;
    case 3:
    case 4:
    case 5:
        load.Companies = DigitAt(vehicleTag, 14);
        break;
    default: // 6, 7
        load.Companies = DigitAt(vehicleTag, 12);
        load.MineAboard = vehicleTag.size() >= 14 && vehicleTag[13] == '1';
        break;
    }
    return load;
}


ShotResult ApplyAction(BoardState& state, const BoardAction& action, const SafeConductSeam& seam)
{
    MoveVerdict& verdict = state.Verdict;
    verdict.Heading = action.Heading;
    verdict.MinePickup = action.Code == 4;
    if (action.Code == 5)
        verdict.FlagLoad = true;

    switch (action.Code) {
    case 1:
    case 3:
    case 4:
    case 5:
        ExecuteMove(state, action.Side, action.Slot, action.From, action.To, action.Code == 3);
        break;
    case 2:
        return ResolveShot(state, action.Side, action.TargetSlot, seam);
    default:
        break;
    }
    return ShotResult::Captured;
}

void TakeOutOfCampAsRecorded(BoardState& state, int side, int slot, const std::string& vehicleTag)
{
    const int camp = CampField(side);
    const CampVehicleLoad load = ReadCampVehicleTag(slot, vehicleTag);
    const int companies = load.Companies;
    if (load.MineAboard) {
        for (int mine = 0; mine < kMinesPerArmy; ++mine) {
            if (state.MinePos(side, mine) == camp) {
                state.MinePos(side, mine) = -slot;
                state.MinePicture(side, mine).Visible = false;
                break;
            }
        }
    }
    state.VehicleCompanies(side, slot) = companies;
    state.CampCompanies(side) -= companies;
    state.VehicleTag(side, slot) = vehicleTag;
}

void JeepEscapeAsRecorded(BoardState& state, int side)
{
    for (int i = 0; i < 3; ++i) {
        if (state.PrisonCompanies(side) > 0) {
            state.PrisonCompanies(side) -= 1;
            state.VehicleCompanies(side, kJeepSlot) += 1;
        }
    }
    state.VehicleTag(side, kJeepSlot) =
        MakeVehicleTag(kJeepSlot, side, state.VehicleCompanies(side, kJeepSlot), 0, side == 1 ? kWest : kEast);
}

} // namespace vk
