#include "board/MinesAndFlags.h"

#include "shell/RunTimeFault.h"

namespace vk {

int FirstStoredMine(const BoardState& state, int side)
{
    CheckIndex(side, 1, 2, "Side");
    for (int mine = 0; mine < kMinesPerArmy; ++mine)
        if (state.MinePos(side, mine) == CampField(side))
            return mine;
    return -1;
}

bool LoadMineInCamp(BoardState& state, int side, int slot, int mine)
{
    CheckIndex(side, 1, 2, "Side");
    CheckIndex(slot, 0, kVehicleSlots - 1, "VehicleSlot");
    CheckIndex(mine, 0, kMinesPerArmy - 1, "MinePos");
    if (!IsCommandoSlot(slot) || state.VehiclePos(side, slot) != CampField(side))
        return false;
    if (state.MinePos(side, mine) != CampField(side))
        return false;
    state.MinePos(side, mine) = -slot;
    state.MinePicture(side, mine).Visible = false;
    return true;
}

bool UnloadMineInCamp(BoardState& state, int side, int slot)
{
    CheckIndex(side, 1, 2, "Side");
    CheckIndex(slot, 0, kVehicleSlots - 1, "VehicleSlot");
    for (int mine = 0; mine < kMinesPerArmy; ++mine) {
        if (state.MinePos(side, mine) == -slot) {
            state.MinePos(side, mine) = CampField(side);
            state.MinePicture(side, mine).Visible = true;
            return true;
        }
    }
    return false;
}

bool MineLayingOffered(const BoardState& state, int side, int slot, int from)
{
    CheckIndex(side, 1, 2, "Side");
    CheckIndex(slot, 0, kVehicleSlots - 1, "VehicleSlot");
    if (!IsCommandoSlot(slot) || !IsRoadField(from))
        return false;
    if (TagCharAt(state.VehicleTag(side, slot), 14) != "1")
        return false;
    return MineSide(from) >= 1;
}

int FlagCount(const BoardState& state, int side)
{
    return state.FlagReserve(side) + state.FlagCarried(side) + state.FlagHome(side);
}

FlagCoverSize FlagCoverFor(int side, int flagHome)
{
    constexpr int fixedSide = 415;
    CheckIndex(side, 1, 2, "Side");
    // (5 - FlagHome) x full / 5 is a whole number for every whole FlagHome.
    const int full = side == 1 ? 2120 : 2115;
    const int shrinking = (kFlagsPerArmy - flagHome) * full / kFlagsPerArmy;
    if (shrinking < 0)
        throw RunTimeFault("invalid property value: Vlagdekking_" + std::to_string(side) + " size " +
                           std::to_string(shrinking));
    return side == 1 ? FlagCoverSize{fixedSide, shrinking} : FlagCoverSize{shrinking, fixedSide};
}

} // namespace vk
