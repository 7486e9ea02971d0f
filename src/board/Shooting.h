#pragma once

#include <functional>

#include "board/BoardState.h"

namespace vk {

// Who may shoot what. A shot is judged like a move (the walk of exactly the
// die's value to the target's field is the caller's business, and it is never
// tested for blocking); these are the conditions on the two vehicles.
//   mayShoot        False for a vehicle that leaves its camp with both dice.
//   shooterSide     1 or 2; shooterSlot 0 to 10.
//   targetCell      the BoardCell value on the destination (a vehicle: +-1..+-11).
// True when: mayShoot; the shooter carries at least one company; it is not the
// jeep; the target is an enemy vehicle; and the target is the jeep (whatever it
// carries) or the shooter's companies are at least the target's.
bool ShotPermitted(const BoardState& state, int shooterSide, int shooterSlot, int targetCell, bool mayShoot);

// How a shot ended.
enum class ShotResult {
    Captured,         // one company of the target taken prisoner, the vehicle stays
    Destroyed,        // the target left the game (VehiclePos 0)
    SafeConductHeld,  // a Vrijgeleide covered the jeep: it went back to its island, the die is spent
};

// The answer to a shot at the jeep, as the card conversation (Vrijgeleide and
// Contra Spionage) settled it.
enum class SafeConductAnswer {
    ShotGoesOn,    // nothing asked, no card used, or the card beaten by Contra Spionage
    JeepSentBack,  // the Vrijgeleide stands
};

// The seam through which ResolveShot hands a shot at the jeep to the card
// conversation. ResolveShot calls `ask` only when the target is slot 10, the
// shooter is `localSide` and `ask` is set; the callback itself decides whether
// a question is sent at all (the opponent's hand not empty, no Vrijgeleide in
// the shooter's own hand), sends QUESTION 1, waits for the answer, offers
// Contra Spionage and sends QUESTION 2 or 3, and returns the outcome.
// ResolveShot then applies that outcome to the board: for JeepSentBack it
// calls SendJeepBackBySafeConduct and ends; the caller sets the action code 0.
// The default seam (localSide 0, no callback) never asks: that is the replay of
// the opponent's shot and the command-line judge.
struct SafeConductSeam {
    int localSide = 0;
    std::function<SafeConductAnswer(int shooterSide)> ask;
};

// Applies a hit by an army of `shooterSide` on the vehicle of `targetSlot` of
// the other army. A legal shot always hits: one company is taken prisoner, or
// the vehicle is destroyed when it has exactly 1 company, carries a flag or a
// mine, or is the jeep. A vehicle that left its camp empty (0 companies) goes
// to -1 companies and adds a prisoner: the test is on exactly 1.
// A destruction sends everything aboard back: the companies to the reserve (the
// last man is not captured), a flag to the flag reserve, a loaded mine to its
// owner's store. The destroyed vehicle takes the tag of its slot with heading
// "o", position 0, and its picture the place of a destroyed vehicle, in Stock
// when it belongs to LocalSide. The company displays are not refreshed here.
// Throws RunTimeFault for a side outside 1..2, a slot outside 0..10, and for a
// destruction of a vehicle that does not stand on a road square 1..112 (it has
// no cell), before anything is changed.
ShotResult ResolveShot(BoardState& state, int shooterSide, int targetSlot, const SafeConductSeam& seam = {});

// The jeep of `jeepSide` is covered by a Vrijgeleide: its companies go to its
// camp, its road square is cleared, it stands on its island (115 or 118) with
// the tag "jeep_1_0_w" or "jeep_2_0_o". Used by ResolveShot on the shooter's
// copy and by the owner's copy when it is told that the card stands.
void SendJeepBackBySafeConduct(BoardState& state, int jeepSide);

// Choosing the jeep on its island loads it with prisoners: 1, 2 or at most 3
// of PrisonCompanies. Refused (False, nothing changed) when the jeep is not on
// its island or the prison is empty. The jeep's companies are overwritten, not
// added to: prisoners loaded by an earlier choice that was withdrawn are lost.
bool LoadJeepOnIsland(BoardState& state, int side);

} // namespace vk
