#pragma once

// What the twenty Radio Yambo cards do to the board and the armies, without a
// window. `side` is always the army the function acts on; the caller passes
// the drawer's army or the other one as the card says. The copy of the player
// who drew the card and the opponent's copy call the same function where both
// do the same, and a function of their own where the two copies part: the
// taking of a vehicle by operation luipaard, the second stage of card 7 (only
// the opponent's copy moves its own vehicles), the return of a lost vehicle
// from Stock, and the cards that only the drawer's copy applies (1, 11).
//
// Where a card moves a vehicle it uses ExecuteMove, which reads state.Verdict
// as the last judged move left it; the cards do not reset it.

#include "board/BoardState.h"
#include "cards/Deck.h"

#include <array>
#include <string>
#include <vector>

namespace vk {

// --- Companies ----------------------------------------------------------------

// Cards 2, 8, 17. Takes `count` companies of `side` to its reserve: from the
// camp first, one at a time; with the camp empty, one from each vehicle of
// slots 0..9 on the HQ that has companies aboard, then, if still short, one
// from each such vehicle on the road squares 1..112 in field order; then
// again from the camp, until the count is reached. It stops when prison and
// reserve hold 25, when all companies left stand on the jeep, or when a round
// finds nothing to take. A vehicle that loses a company gets the new digit
// written over its tag at position 8 (slots 0..2), 9 (slots 3..5, 8, 9) or 12
// (commando), the rest of the old tag after it: kept so, though it garbles a
// kanon's and an infantry tag. Returns the companies taken.
int LoseCompanies(BoardState& state, int side, int count);
// Card 2 on the other army, cards 8 and 17 on the drawer's.
int AirRaid(BoardState& state, int side);        // LoseCompanies(side, 2)
int MilitaryAttack(BoardState& state, int side); // LoseCompanies(side, 3)

// Card 3 (and the first step of card 4): up to three companies from the
// reserve to the camp. Cards 10 and 13: up to two. Cards 12 and 18: one, if
// the reserve has any. A reserve below 1 moves nothing. Each returns the
// number moved.
int ReserveToCampUpToThree(BoardState& state, int side);
int ReserveToCampUpToTwo(BoardState& state, int side);
int ReserveToCampOne(BoardState& state, int side);

// Card 5: up to two prisoners back to the camp of their own army.
int PrisonersBackToCamp(BoardState& state, int side);

// --- Cards that only the drawer's copy applies ----------------------------------

// Card 1: BRANDSTOF of `side` becomes 4.
void UrgentFuelService(BoardState& state, int side);

// Card 11: the first road square (1..112, in order) holding a vehicle of
// `side` with occupant 1..10 in absolute value: TSETSE of `side` becomes 4 and
// TsetseVeh its slot. The jeep (occupant 11) is never stung. Returns the slot,
// or -1 when no vehicle was found and nothing changed.
int TsetseSting(BoardState& state, int side);

// Card 19: the cards of `side`'s hand to be shown in turn, the first
// CardCount hand slots; empty when the hand is.
std::vector<int> SpiedCards(const CompassDeck& deck, int side);

// --- Card 6: operatie luipaard ----------------------------------------------------

// The drawer's pick of the enemy's vehicle `slot` of `enemySide`: only a
// genie's carried mine is returned (the card 16 way), its picture stands
// beside the board at left 120, top 1095 + 480 x slot, outside Stock, and its
// position becomes 0. Nothing else: no move, so its road square, companies
// and a flag stay as they were on this copy.
void LeopardPickServed(BoardState& state, int enemySide, int slot);
// The victim's copy, for its own vehicle: a carried flag (infantry) or a
// genie's carried mine goes back the card 16 way, the vehicle is moved into
// its camp (unloading its companies there; a jeep goes by way of its island),
// its picture goes into Stock at left 120, top 360 + 480 x slot, and its
// position becomes 0.
void LeopardLossOnOwnCopy(BoardState& state, int side, int slot);

// --- Card 7: stop brandinstrukties uitvoeren ---------------------------------------

// The working values of card 7, by slot. Field, Steps and Group are filled by
// the second stage; Note is the cell the walk of the second stage last met
// on an empty square.
struct RetreatWork {
    std::array<bool, kVehicleSlots> Done{};
    int Left = kVehicleSlots;
    std::array<int, kVehicleSlots> Field{};
    std::array<int, kVehicleSlots> Steps{};
    std::array<int, kVehicleSlots> Group{};
    int Note = 0;
    bool operator==(const RetreatWork&) const = default;
};

// Where the second stage sends a vehicle of `side` whose position, five
// squares back towards its camp, is d (position + 5 for side 2, - 5 for side
// 1): the group (1..21, 13 for any d no other group holds), the field and the
// steps (5, 4 for group 7).
struct RetreatTarget {
    int Group = 13;
    int Field = 0;
    int Steps = 5;
    bool operator==(const RetreatTarget&) const = default;
};
RetreatTarget RetreatTargetFor(int side, int d);

// Stage 1, on both copies, for the drawer's army `side`: every vehicle in its
// camp or on its island is done; one on its HQ or on the road square next to
// it (71, 83 for side 1; 100, 109 for side 2) is moved into the camp and done;
// the others stay open. Returns the flags and the count of open slots.
RetreatWork RetreatStageOne(BoardState& state, int side);
// Stage 2, on the opponent's copy only, for its own army `side`, with the
// flags stage 1 left for the drawer's vehicles, read by slot number: that
// crossing is kept. Every open vehicle is sent five squares back (table of
// RetreatTargetFor), group by group: a legal move is carried out. Then each
// slot still open walks the first walk to its field without the blocking
// tests, from its own end: the first square holding anything but an own
// vehicle stops it, and it is moved onto that square itself, unless that is
// its first step. A walk without a block (or one the search cannot complete)
// moves nothing: Note takes the cell of the empty square, 0, and not its
// number, as the card has always done. Every slot looked at is then done.
// The drawer's copy does not run this, so the copies part; nothing tells.
void RetreatStageTwo(BoardState& state, int side, RetreatWork& work);

// --- Cards on one army ------------------------------------------------------------

// Card 9: every vehicle of slots 0..9 of `side` outside its camp and not lost
// keeps one company; the excess goes to the camp. The tag becomes
// "<type>_<side>_1_" with the last character of the old tag (tank, kanon) or
// the last three (infanterie, commando, genie).
void FoodPoisoning(BoardState& state, int side);

// Card 14: every vehicle of slots 0..10 of `side` not lost, not in its camp
// and not on its island, with companies aboard, loses one to the reserve; the
// tag is rebuilt from "<type>_<side>_", the new count and the tail of the old
// tag after its digit.
void YellowFever(BoardState& state, int side);

// Card 15: every vehicle of slots 0..9 of `side` that is not in its camp, not
// on its island and not lost is moved into its camp.
void NewYearParty(BoardState& state, int side);

// Card 16: the vehicles of both armies on the coast roads (1, 3..18, 52..68,
// 70, walked in that order) are lost. Before the move, infantry returns a
// carried flag (tag position 16 "1": FlagCarried - 1, FlagReserve + 1, the
// mark 0) and a genie with mark 2 at position 11 sets back the entry equal to
// minus its slot in its own army's mine list to the camp, the mark 0. Then the
// vehicle is moved into its camp, its picture goes beside the board (into
// Stock at top 360 + 480 x slot for LocalSide, else at 1095 + 480 x slot),
// and its position becomes 0.
void WeatherReport(BoardState& state);

// Card 20: every vehicle of slots 6..9 of `side` outside its camp that
// carries a mine (tag position 14 for a commando, 11 for a genie): at mark
// "1" the entry of `side`'s mine list equal to minus the slot, at "2" the
// entry equal to 5 minus the slot goes back to the camp and its store picture
// shows; the vehicle is moved into the camp, the companies it carried go from
// the camp to the reserve, its picture goes beside the board as in card 16
// and its position becomes 0. Vehicles without a mine stay.
void MineAlarm(BoardState& state, int side);

// --- Lost vehicles back (cards 4, 12, 18) -------------------------------------------

// The drawer's double click on his lost vehicle in Stock while picks are
// left: it stands in its camp again (the jeep on its island), its picture at
// its place there. The tag stays. Returns false and changes nothing when the
// vehicle is not lost. The pick count and ActVeh are the caller's.
bool StockPickServed(BoardState& state, int side, int slot);

// The mirror on the opponent's copy: the lost vehicle `slot` of `side` (the
// drawer's army) comes back with the tag it started the game with ("jeep_1_0_o"
// for the jeep of army 1 after card 12 or 18), in its camp - the jeep too,
// whose picture stands on its island, while the drawer's copy has the jeep on
// its island: the copies part there. The message carries -1 (nothing
// picked), 100 (no second pick) or a vehicle that is not lost when nothing was
// returned: then nothing changes, and no fault is raised.
struct StockReturn {
    bool Returned = false;
    std::string LogText; // the log line without the time, empty when nothing came back
    bool operator==(const StockReturn&) const = default;
};
StockReturn ReturnFromStock(BoardState& state, int side, int slot, bool cardIsTwelveOrEighteen);

// --- Log lines (the caller adds the time) -----------------------------------------

inline constexpr const char* kLeopardLossLog = "lost one of my vehicles due to operation leopard at ";
inline constexpr const char* kMilitaryAttackLog = "opponent looses 3 compagnies due to radio yambo card at ";

} // namespace vk
