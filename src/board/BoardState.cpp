#include "board/BoardState.h"

#include "shell/RunTimeFault.h"

namespace vk {

namespace {

int Army(int side) { return CheckIndex(side, 1, 2, "Side") - 1; }
int Slot(int slot) { return CheckIndex(slot, 0, kVehicleSlots - 1, "VehicleSlot"); }
int Mine(int mine) { return CheckIndex(mine, 0, kMinesPerArmy - 1, "Mine"); }

} // namespace

int& BoardState::BoardCell(int field) { return cells[CheckIndex(field, 1, kLastRoadField, "BoardCell")]; }
int BoardState::BoardCell(int field) const { return cells[CheckIndex(field, 1, kLastRoadField, "BoardCell")]; }

int BoardState::CellOwner(int field) const
{
    const int cell = BoardCell(field);
    return cell > 0 ? 1 : (cell < 0 ? 2 : 0);
}

int& BoardState::HQCount(int side) { return hqCount[Army(side)]; }
int BoardState::HQCount(int side) const { return hqCount[Army(side)]; }

bool& BoardState::HQPlaceFree(int side, int place)
{
    return hqPlaceFree[CheckIndex(place, 0, kHQPlaces - 1, "HQPlaceFree")][Army(side)];
}
bool BoardState::HQPlaceFree(int side, int place) const
{
    return hqPlaceFree[CheckIndex(place, 0, kHQPlaces - 1, "HQPlaceFree")][Army(side)];
}

int& BoardState::VehiclePos(int side, int slot) { return vehiclePos[Slot(slot)][Army(side)]; }
int BoardState::VehiclePos(int side, int slot) const { return vehiclePos[Slot(slot)][Army(side)]; }
int& BoardState::VehicleDir(int side, int slot) { return vehicleDir[Slot(slot)][Army(side)]; }
int BoardState::VehicleDir(int side, int slot) const { return vehicleDir[Slot(slot)][Army(side)]; }
int& BoardState::VehicleCompanies(int side, int slot) { return vehicleCompanies[Slot(slot)][Army(side)]; }
int BoardState::VehicleCompanies(int side, int slot) const { return vehicleCompanies[Slot(slot)][Army(side)]; }
std::string& BoardState::VehicleTag(int side, int slot) { return vehicleTag[Slot(slot)][Army(side)]; }
const std::string& BoardState::VehicleTag(int side, int slot) const { return vehicleTag[Slot(slot)][Army(side)]; }
Picture& BoardState::VehiclePicture(int side, int slot) { return vehiclePicture[Slot(slot)][Army(side)]; }
const Picture& BoardState::VehiclePicture(int side, int slot) const { return vehiclePicture[Slot(slot)][Army(side)]; }

int& BoardState::ReserveCompanies(int side) { return reserveCompanies[Army(side)]; }
int BoardState::ReserveCompanies(int side) const { return reserveCompanies[Army(side)]; }
int& BoardState::CampCompanies(int side) { return campCompanies[Army(side)]; }
int BoardState::CampCompanies(int side) const { return campCompanies[Army(side)]; }
int& BoardState::PrisonCompanies(int side) { return prisonCompanies[Army(side)]; }
int BoardState::PrisonCompanies(int side) const { return prisonCompanies[Army(side)]; }

int& BoardState::MinePos(int side, int mine) { return minePos[Mine(mine)][Army(side)]; }
int BoardState::MinePos(int side, int mine) const { return minePos[Mine(mine)][Army(side)]; }
Picture& BoardState::MinePicture(int side, int mine) { return minePicture[Mine(mine)][Army(side)]; }
const Picture& BoardState::MinePicture(int side, int mine) const { return minePicture[Mine(mine)][Army(side)]; }
Picture& BoardState::CapturedMinePicture(int side, int mine) { return capturedMinePicture[Mine(mine)][Army(side)]; }
const Picture& BoardState::CapturedMinePicture(int side, int mine) const
{
    return capturedMinePicture[Mine(mine)][Army(side)];
}

int& BoardState::FlagReserve(int side) { return flagReserve[Army(side)]; }
int BoardState::FlagReserve(int side) const { return flagReserve[Army(side)]; }
int& BoardState::FlagCarried(int side) { return flagCarried[Army(side)]; }
int BoardState::FlagCarried(int side) const { return flagCarried[Army(side)]; }
int& BoardState::FlagHome(int side) { return flagHome[Army(side)]; }
int BoardState::FlagHome(int side) const { return flagHome[Army(side)]; }

int& BoardState::Brandstof(int side) { return brandstof[Army(side)]; }
int BoardState::Brandstof(int side) const { return brandstof[Army(side)]; }
int& BoardState::Tsetse(int side) { return tsetse[Army(side)]; }
int BoardState::Tsetse(int side) const { return tsetse[Army(side)]; }

int BoardState::CompanySum(int side) const
{
    int sum = ReserveCompanies(side) + CampCompanies(side) + PrisonCompanies(side);
    for (int slot = 0; slot < kVehicleSlots; ++slot)
        sum += VehicleCompanies(side, slot);
    return sum;
}

bool VehicleAtCell(const BoardState& state, int field, int& side, int& slot)
{
    const int cell = state.BoardCell(field);
    if (cell == 0 || cell == kMineCell || cell == -kMineCell)
        return false;
    side = cell > 0 ? 1 : 2;
    slot = (cell > 0 ? cell : -cell) - 1;
    return true;
}

} // namespace vk
