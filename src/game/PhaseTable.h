#pragma once

// The phases of the own turn as data: which control moves which phase where,
// the die each phase plays with, and the text each phase puts on the board.

#include <string>

namespace vk {

// The controls whose events move the phase.
enum class PhaseEvent {
    Gooi,           // cmdGooi
    EindeBeurt,     // cmdEindeBeurt
    HandCard,       // KK1, KK2
    NewCard,        // KK3
    KompasGebruik,  // cmdKompasGebruik
    KompasSluit,    // cmdKompasSluit
    Dice1,          // Dice_1, double click
    Dice2,          // Dice_2, double click
    BothDice,       // Dices, double click
};

// The phase the event leads to from `phase`, or -1 when the event does
// nothing there.
int NextPhase(PhaseEvent event, int phase);

// The die a phase plays with: 1 the left die, 2 the right, 3 both, 0 none.
int PhaseDie(int phase);

// Phases in which the player picks a vehicle for a die (5, 10, 14, 19, 23),
// and the two kinds of picked vehicle that follow them.
bool IsVehiclePickPhase(int phase);
bool IsCampVehiclePhase(int phase);   // 7, 12, 16, 21, 25
bool IsFieldVehiclePhase(int phase);  // 8, 13, 17, 22, 26

// What the board text of a phase depends on.
struct PhaseContext {
    int CardCount = 0;      // Personnel cards in the own hand
    int Dice1 = 0;
    int Dice2 = 0;
    bool FuelBlocked = false;
    int HQCount = 0;
    int CampCompanies = 0;
};

// Whether a camp vehicle may leave at a phase that picks a vehicle: a 6 on
// the phase's die (with both dice: either die or the sum), fewer than 3 in
// the HQ and a company in the camp.
bool CampOpen(int phase, const PhaseContext& context);

// The text a phase puts on the board, or empty for a phase without one.
std::string PhaseMessage(int phase, const PhaseContext& context);

} // namespace vk
