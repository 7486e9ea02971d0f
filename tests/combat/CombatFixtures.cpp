#include "CombatFixtures.h"

namespace vk::test {

BoardState StartPosition(int localSide)
{
    BoardState state;
    state.LocalSide = localSide;
    ResetNewGame(state);
    return state;
}

void PutOnRoad(BoardState& state, int side, int slot, int field, int companies, int mark, int heading)
{
    state.CampCompanies(side) -= companies;
    state.VehicleCompanies(side, slot) = companies;
    state.VehiclePos(side, slot) = field;
    state.VehicleDir(side, slot) = heading;
    state.VehicleTag(side, slot) = MakeVehicleTag(slot, side, companies, mark, heading);
    state.BoardCell(field) = CellOf(side, slot);
}

int CellOf(int side, int slot) { return side == 1 ? slot + 1 : -(slot + 1); }

} // namespace vk::test
