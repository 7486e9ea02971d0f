#include "board/Shooting.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "board/BoardView.h"
#include "shell/RunTimeFault.h"

namespace vk {

namespace {

// The jeep's tag on its island: heading w for army 1, o for army 2.
std::string IslandJeepTag(int side, int prisoners)
{
    return MakeVehicleTag(kJeepSlot, side, prisoners, 0, side == 1 ? kWest : kEast);
}

// A carried mine goes back when its carrier is destroyed: an own mine (mark 1)
// to its own store, an enemy mine (mark 2, a genie) to the enemy's store.
void ReturnCarriedMine(BoardState& state, int side, int slot, int mark)
{
    if (mark == 1) {
        for (int mine = 0; mine < kMinesPerArmy; ++mine)
            if (state.MinePos(side, mine) == -slot) {
                state.MinePos(side, mine) = CampField(side);
                state.MinePicture(side, mine).Visible = true;
            }
    } else if (mark == 2) {
        // The enemy's entry holds 5 - slot (-3 or -4); it is found by its
        // absolute value + 5.
        const int enemy = OtherSide(side);
        for (int mine = 0; mine < kMinesPerArmy; ++mine)
            if (std::abs(state.MinePos(enemy, mine)) + 5 == slot) {
                state.MinePos(enemy, mine) = CampField(enemy);
                state.MinePicture(enemy, mine).Visible = true;
            }
    }
}

} // namespace

bool ShotPermitted(const BoardState& state, int shooterSide, int shooterSlot, int targetCell, bool mayShoot)
{
    CheckIndex(shooterSide, 1, 2, "Side");
    CheckIndex(shooterSlot, 0, kVehicleSlots - 1, "VehicleSlot");
    if (!mayShoot)
        return false;
    const int shooterCompanies = state.VehicleCompanies(shooterSide, shooterSlot);
    if (shooterCompanies < 1 || shooterSlot == kJeepSlot)
        return false;
    const int magnitude = std::abs(targetCell);
    if (magnitude < 1 || magnitude > kVehicleSlots)
        return false;
    const int targetSide = targetCell > 0 ? 1 : 2;
    if (targetSide == shooterSide)
        return false;
    const int targetSlot = magnitude - 1;
    if (targetSlot == kJeepSlot)
        return true;
    return shooterCompanies >= state.VehicleCompanies(targetSide, targetSlot);
}

ShotResult ResolveShot(BoardState& state, int shooterSide, int targetSlot, const SafeConductSeam& seam)
{
    CheckIndex(shooterSide, 1, 2, "Side");
    CheckIndex(targetSlot, 0, kVehicleSlots - 1, "VehicleSlot");
    const int side = OtherSide(shooterSide);

    if (targetSlot == kJeepSlot && seam.ask && shooterSide == seam.localSide) {
        if (seam.ask(shooterSide) == SafeConductAnswer::JeepSentBack) {
            SendJeepBackBySafeConduct(state, side);
            return ShotResult::SafeConductHeld;
        }
    }

    std::string& tag = state.VehicleTag(side, targetSlot);
    const int mark = TagMarkValue(tag, targetSlot);
    int& companies = state.VehicleCompanies(side, targetSlot);

    // Not final: the test is on exactly 1 company, so a vehicle that left its
    // camp empty goes to -1 and still adds a prisoner.
    if (companies != 1 && mark <= 0 && targetSlot != kJeepSlot) {
        companies -= 1;
        state.PrisonCompanies(side) += 1;
        tag = SetTagCompanies(tag, targetSlot, companies);
        return ShotResult::Captured;
    }

    // Only a vehicle on a road square has a cell to be shot on.
    const int field = state.VehiclePos(side, targetSlot);
    CheckIndex(field, kFirstRoadField, kLastRoadField, "BoardCell");

    // The last man of a vehicle is not captured: all aboard go to the reserve.
    state.ReserveCompanies(side) += companies;
    companies = 0;
    tag = DestroyedTag(side, targetSlot);
    if (IsInfantrySlot(targetSlot) && mark > 0) {
        state.FlagCarried(side) -= 1;
        state.FlagReserve(side) += 1;
    }
    if (IsCommandoSlot(targetSlot) || IsGenieSlot(targetSlot))
        ReturnCarriedMine(state, side, targetSlot, mark);
    // The local player's own losses go to Stock; the opponent's stay on the board.
    Picture& picture = state.VehiclePicture(side, targetSlot);
    picture.InStock = side == state.LocalSide;
    PutPicture(picture, DestroyedVehicleBox(state.BoardSide, side, targetSlot));
    state.BoardCell(field) = 0;
    state.VehiclePos(side, targetSlot) = kOutOfGame;
    return ShotResult::Destroyed;
}

void SendJeepBackBySafeConduct(BoardState& state, int jeepSide)
{
    CheckIndex(jeepSide, 1, 2, "Side");
    int& companies = state.VehicleCompanies(jeepSide, kJeepSlot);
    state.CampCompanies(jeepSide) += companies;
    companies = 0;
    state.BoardCell(state.VehiclePos(jeepSide, kJeepSlot)) = 0;
    state.VehiclePos(jeepSide, kJeepSlot) = IslandField(jeepSide);
    state.VehicleTag(jeepSide, kJeepSlot) = IslandJeepTag(jeepSide, 0);
    PutPicture(state.VehiclePicture(jeepSide, kJeepSlot), IslandBox(ViewOf(state), jeepSide));
}

bool LoadJeepOnIsland(BoardState& state, int side)
{
    CheckIndex(side, 1, 2, "Side");
    if (state.VehiclePos(side, kJeepSlot) != IslandField(side))
        return false;
    int& prison = state.PrisonCompanies(side);
    if (prison <= 0)
        return false;
    const int load = prison >= 3 ? 3 : prison;
    state.VehicleCompanies(side, kJeepSlot) = load;
    prison -= load;
    state.VehicleTag(side, kJeepSlot) = IslandJeepTag(side, load);
    return true;
}

} // namespace vk
