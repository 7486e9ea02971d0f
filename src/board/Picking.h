#pragma once

// The rules of the player's clicks on the board: the slow clicks that load a
// camp vehicle, the double click that picks an own vehicle for the die of the
// phase, its cancel, and the double click on a destination. The window turns
// clicks into these calls; the command-line judge and the tests call them too.

#include "board/BoardAction.h"
#include "board/BoardState.h"
#include "board/Shooting.h"

#include <array>
#include <functional>

namespace vk {

// The loading of a camp vehicle, set up at the first slow click after a die
// was chosen.
struct CampLoadState {
    int MaxCompanies = 0;
    bool MineFree = false;   // a mine of the army lies in its camp store
    bool MineAboard = false;
    int MineIndex = 0;       // the first such mine
    bool CanCarryMine = false;
    bool operator==(const CampLoadState&) const = default;
};

// The phases in which slow clicks load the picked camp vehicle: 7, 12, 16, 21, 25.
bool IsCampLoadPhase(int phase);
// The record index of the action of a phase 5 to 26: 1 at 10, 12, 13, 19, 21, 22, else 0.
int ActionIndexOfPhase(int phase);

// A slow click on the own vehicle `slot` of `side` while a camp vehicle is
// picked. Counts only for a vehicle in its camp, and not when both the camp's
// companies and the vehicle's are 0, and only for `actingSlot`, the vehicle
// picked for the action. The first click after a die was chosen (`fresh`)
// sets the loading up and puts 1 company aboard; each later one adds a
// company (back to 1 past the most it can take), and a commando with a free
// mine alternates between loading that mine and adding a company: 1, 1 +
// mine, 2, 2 + mine, 1. The tag is rebuilt with the loading heading (o for
// army 1, w for army 2). Returns whether the click counted.
bool CampLoadClick(BoardState& state, CampLoadState& load, bool& fresh, int side, int slot, int actingSlot);

// The same clicks as a count, from an empty vehicle in its camp: what the
// player does before a vehicle leaves the camp with `clicks` slow clicks.
void CampLoadClicks(BoardState& state, int side, int slot, int clicks);

// What a double click on an own vehicle does while the phase asks for one.
enum class VehiclePick {
    Refused,   // the die, the fuel, the HQ, the camp or the prison say no
    FromCamp,  // a camp vehicle: the phase rises by 2
    FromField, // a vehicle on the board, the HQ or the island: the phase rises by 3
};
// Phases 5 and 14 pick the first action with die 1 or 2, 10 and 19 the
// second with die 2 or 1, 23 the one action of both dice. A vehicle that
// moved plainly in the first action can't act again. A camp vehicle needs
// fuel, a 6 on the die (for both dice: either die or the sum), a free HQ
// place and a company in the camp. The jeep on its island needs a prisoner
// to carry and is loaded with them here.
VehiclePick PickOwnVehicle(BoardState& state, int side, int slot, int phase, int dice1, int dice2,
                           const std::array<int, 2>& actVeh, const std::array<int, 2>& actCode);

// A second double click on the picked camp vehicle: it drives to its HQ and
// back, which hands its companies and a loaded mine back to the camp. The
// verdict of an earlier action is cleared first, so that the drive picks up
// no mine and loads no flag.
void CancelCampPick(BoardState& state, int side, int slot);

// The phase a cancelled pick returns to: 4 from 7, 8, 16, 17, 25, 26; 9 from
// 12, 13; 18 from 21, 22; -1 for other phases.
int PhaseAfterCancel(int phase);

// The questions a destination may put to the player.
struct DestinationQuestions {
    std::function<bool()> LoadFlag;   // "Wilt u een vlag opladen?"
    std::function<bool()> LeaveMine;  // "Wilt u de mijn afzetten op het vakje dat u verlaat?"
};

// The outcome of a double click on a destination field.
struct DestinationResult {
    enum class Kind {
        Ignored,    // no rule takes the click: nothing has changed
        FuelUndone, // a move without fuel: the pick is undone, the die stays
        Done,       // the action was carried out
    };
    Kind What = Kind::Ignored;
    int NextPhase = -1;
    BoardAction Action;
    ShotResult Shot = ShotResult::Captured;
};

// The values of the turn a destination click reads and writes.
struct ActionWords {
    std::array<int, 2>& ActVeh;
    std::array<int, 2>& ActCode;
    std::array<int, 2>& ActFrom;
};

// The click on `field` at a phase 7 to 26 of the own turn, for the vehicle of
// the action. A camp vehicle with a 6 (7, 12, 16, 21) goes to a free HQ place
// when the field is the own HQ; with both dice (25) it goes there with a sum
// of 6, or leaves the camp with the other die + 1 steps when one die is 6.
// A vehicle on the board (8, 13, 17, 22, 26) is judged with the steps of the
// phase's die: a shot is resolved through `seam`; a move without fuel undoes
// the pick; a move asks for a flag and for a mine to leave, and is carried
// out. The codes land in ActCode as the game keeps them: a flag loaded always
// in index 0, so that on the second action the record travels with code 1.
DestinationResult ClickDestination(BoardState& state, ActionWords act, int side, int phase, int field, int dice1,
                                   int dice2, const DestinationQuestions& questions, const SafeConductSeam& seam = {});

// One destination click of the local player of `side` with no phase: the
// command-line judge's move. From the own camp to the own HQ the vehicle is
// sent there while it holds fewer than 3 and the army has fuel; a legal shot
// is resolved, also without fuel; a legal move is carried out unless the
// army's fuel is blocked. A flag is loaded whenever the verdict offers one, a
// mine left when `leaveMine` asks for it and the question would be put.
struct BoardClickOutcome {
    enum class Kind {
        Nothing,  // illegal, or a move of an army without fuel: the position stands
        SentToHQ, // a camp vehicle put on the first free place of its own HQ
        Moved,    // ExecuteMove
        Shot,     // ResolveShot
    };
    Kind What = Kind::Nothing;
    int ActCode = -1;
};
BoardClickOutcome ApplyBoardClick(BoardState& state, int side, int slot, int from, int to, int steps, bool mayShoot,
                                  bool leaveMine);

} // namespace vk
