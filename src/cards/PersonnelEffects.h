#pragma once

// What each Personnel card does to the board, once it was not annulled. The
// copy of the player who plays the card and the copy of his opponent call the
// same function where both do the same, and a function of their own where the
// two copies part: the jeep's tags of Militaire Politie and of a jeep lost in
// an ambush, where a lost vehicle's picture goes, and the mine list that
// Mijnopruimingsdienst looks in.

#include "board/BoardState.h"

namespace vk {

// Camouflage (21): up to two companies from the camp of `side` board the
// vehicle `slot`, as far as its room allows; the tag is read from the vehicle
// `tagSlot`, given its new count and written to `slot`. The player's copy
// passes the picked vehicle twice. The camp is tested only once, before the
// first company, so one company in the camp and room for two leaves -1 there.
// The tag keeps its mark and heading (SetTagCompanies). The jeep has no room
// listed and gains nothing. Returns false when the camp held no company (none
// or fewer) and nothing changed.
bool Camouflage(BoardState& state, int side, int tagSlot, int slot);

// Uitwisseling van gevangenen (22): twice, if both prisons hold a company,
// each loses one to its own camp.
void ExchangePrisoners(BoardState& state);

// Landingsvaartuigen, Helikopter, Luchtlandingstroepen, Marine
// luchtvaartdienst, Verbindingsdienst (23, 26, 27, 31, 32): the vehicle is
// placed on `field` from where it stands, by the placing routine of a move,
// which takes the heading and the mine pick-up of the verdict standing from
// the last judged move.
void MoveByPersonnel(BoardState& state, int side, int slot, int field);

// Hinderlaag (25) on a vehicle that is not the jeep, on the player's copy: the
// enemy's vehicle leaves the game with its companies (to his reserve), a flag
// or mine it carried goes back, and its picture stands beside the board at
// left 120, top 1095 + 480 x slot, outside Stock.
void AmbushEnemyVehicle(BoardState& state, int enemySide, int slot);
// The same loss on the copy of its owner: the picture goes into Stock at
// left 120, top 360 + 480 x slot; a jeep takes the tag "jeep_<side>_0_o".
void AmbushOwnVehicle(BoardState& state, int side, int slot);
// Hinderlaag on the jeep, destroyed, on the player's copy: companies to the
// enemy's reserve, the picture beside the board as above, and the tag
// "jeep_1_0_w" or "jeep_2_0_o". Its owner's copy leaves the tag as it was
// (DestroyJeepInAmbush).
void AmbushEnemyJeep(BoardState& state, int enemySide);

// Militaire Politie (28): the enemy's jeep goes back to its prison island with
// its companies into his prison, wherever it stood. On the player's copy the
// tag becomes "jeep_1_0_w" / "jeep_2_0_o", on its owner's "jeep_1_0_o" /
// "jeep_2_0_w".
void MilitaryPoliceOnEnemyJeep(BoardState& state, int enemySide);
void MilitaryPoliceOnOwnJeep(BoardState& state, int side);

// Mijnopruimingsdienst (30) on the player's copy: the enemy's mine on `field`
// is taken to the player's camp and the field is cleared. Returns whether a
// mine was found.
bool ClearEnemyMine(BoardState& state, int side, int field);
// On the copy of the mine's owner (`side`): the field is looked for in the
// list of the other army, the player's, and such a mine would go to that
// army's camp. A mine of the owner is never found there, so nothing changes
// on this copy. Returns whether a mine was found.
bool ClearMineOnOwnersCopy(BoardState& state, int side, int field);

} // namespace vk
