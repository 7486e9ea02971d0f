#include "cards/PersonnelPicks.h"

#include "board/BoardTables.h"
#include "board/VehicleTag.h"

#include <cstdlib>

namespace vk {

namespace {

bool FreeRoad(const BoardState& state, int field)
{
    return IsRoadField(field) && state.BoardCell(field) == 0;
}

// A genie that carries no mine may land on a mine and take it up.
bool GenieMayTakeMine(const BoardState& state, int side, int slot, int field)
{
    return std::abs(state.BoardCell(field)) == kMineCell && IsGenieSlot(slot) &&
           TagCharAt(state.VehicleTag(side, slot), 11) == "0";
}

// The general test of a landing: free, or a mine for a genie without one.
bool FreeOrMineForGenie(const BoardState& state, int side, int slot, int field)
{
    return FreeRoad(state, field) || (IsRoadField(field) && GenieMayTakeMine(state, side, slot, field));
}

} // namespace

bool CamouflageVehicleAllowed(const BoardState& state, int side, int slot)
{
    const int pos = state.VehiclePos(side, slot);
    return pos != kCamp1 && pos != kCamp2 && pos != kIsland1 && pos != kIsland2;
}

bool VehicleInHarbour(const BoardState& state, int side, int slot)
{
    return IsHarbour(state.VehiclePos(side, slot));
}

bool LandingFieldAllowed(const BoardState& state, int side, int slot, int field)
{
    if (field == 2)
        return side == 2 && FreeRoad(state, field);
    if (field == 69)
        return side == 1 && FreeRoad(state, field);
    return IsCoastRoad(field) && FreeOrMineForGenie(state, side, slot, field);
}

bool AmbushTargetAllowed(const BoardState& state, int side, int enemySlot)
{
    const int enemy = OtherSide(side);
    return IsBehindForwardPosts(enemy, state.VehiclePos(enemy, enemySlot));
}

bool HelicopterVehicleAllowed(const BoardState& state, int side, int slot)
{
    const int pos = state.VehiclePos(side, slot);
    return pos != kCamp1 && pos != kCamp2;
}

bool HelicopterNeedsField(const BoardState& state, int side, int slot)
{
    const int pos = state.VehiclePos(side, slot);
    return pos == kHQ1 || pos == kHQ2;
}

bool VehicleOnAirport(const BoardState& state, int side, int slot)
{
    return IsAirport(state.VehiclePos(side, slot));
}

bool AirdropFieldAllowed(const BoardState& state, int side, int slot, int field)
{
    switch (field) {
    case 2:
        return side == 2 && FreeRoad(state, field);
    case 69:
        return side == 1 && FreeRoad(state, field);
    case kCamp1:
        return side == 1;
    case kCamp2:
        return side == 2;
    case kHQ1:
        return side == 1 && state.HQCount(1) < kHQPlaces;
    case kHQ2:
        return side == 2 && state.HQCount(2) < kHQPlaces;
    case kIsland1:
        return side == 1 && slot == kJeepSlot;
    case kIsland2:
        return side == 2 && slot == kJeepSlot;
    default:
        return FreeOrMineForGenie(state, side, slot, field);
    }
}

bool EnemyMineField(const BoardState& state, int side, int field)
{
    return IsRoadField(field) && state.BoardCell(field) == (side == 1 ? -kMineCell : kMineCell);
}

bool NavalAirFieldAllowed(const BoardState& state, int field)
{
    return (IsHarbour(field) || IsAirport(field)) && FreeRoad(state, field);
}

bool VehicleInOwnCamp(const BoardState& state, int side, int slot)
{
    const int pos = state.VehiclePos(side, slot);
    return pos == kCamp1 || pos == kCamp2;
}

bool StrategicPointAllowed(const BoardState& state, int field)
{
    return IsStrategicPoint(field) && FreeRoad(state, field);
}

} // namespace vk
