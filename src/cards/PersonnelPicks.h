#pragma once

// Which vehicles and fields a Personnel card played before the dice accepts
// as its picks. A pick that fails is refused in silence and the player picks
// again; `side` is always the side of the player who plays the card.

#include "board/BoardState.h"

namespace vk {

inline constexpr int kCamouflage = 21;
inline constexpr int kUitwisseling = 22;
inline constexpr int kLandingsvaartuigen = 23;
inline constexpr int kHelikopter = 26;
inline constexpr int kLuchtlandingstroepen = 27;
inline constexpr int kMilitairePolitie = 28;
inline constexpr int kMijnopruimingsdienst = 30;
inline constexpr int kMarineLuchtvaartdienst = 31;
inline constexpr int kVerbindingsdienst = 32;

// The value a ".pnu" carries for a card (1 to 12), and back.
constexpr int PersonnelValue(int card) { return card - 20; }
constexpr int PersonnelCardOf(int value) { return value + 20; }

// Camouflage: any own vehicle but one in a camp or on a prison island (the
// HQs are accepted, and so is the jeep, which has no room to fill).
bool CamouflageVehicleAllowed(const BoardState& state, int side, int slot);

// Landingsvaartuigen and Marine luchtvaartdienst start from a harbour.
bool VehicleInHarbour(const BoardState& state, int side, int slot);

// Landingsvaartuigen: a free coast road (2 only for side 2, 69 only for side
// 1), or a mine that the picked genie may take up.
bool LandingFieldAllowed(const BoardState& state, int side, int slot, int field);

// Hinderlaag: an enemy vehicle behind the enemy's forward posts.
bool AmbushTargetAllowed(const BoardState& state, int side, int enemySlot);

// Helikopter: any own vehicle but one in its camp.
bool HelicopterVehicleAllowed(const BoardState& state, int side, int slot);
// A vehicle on its HQ flies to a field that the player picks (no test made on
// it); any other flies to the HQ without a second pick.
bool HelicopterNeedsField(const BoardState& state, int side, int slot);

// Luchtlandingstroepen: an own vehicle on one of the four airports, and the
// field it is dropped on.
bool VehicleOnAirport(const BoardState& state, int side, int slot);
bool AirdropFieldAllowed(const BoardState& state, int side, int slot, int field);

// Mijnopruimingsdienst: a field holding a mine of the enemy.
bool EnemyMineField(const BoardState& state, int side, int field);

// Marine luchtvaartdienst: a free harbour or airport.
bool NavalAirFieldAllowed(const BoardState& state, int field);

// Verbindingsdienst: an own vehicle in its camp, to a free strategic point.
bool VehicleInOwnCamp(const BoardState& state, int side, int slot);
bool StrategicPointAllowed(const BoardState& state, int field);

// Cards 31 and 32 end, with nothing sent, by a click on a field outside the
// road squares: the one way out of a pick.
constexpr bool EndsPersonnelPick(int field) { return !IsRoadField(field); }

} // namespace vk
