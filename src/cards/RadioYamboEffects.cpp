#include "cards/RadioYamboEffects.h"

#include "board/BoardTables.h"
#include "board/BoardView.h"
#include "board/Movement.h"
#include "board/VehicleTag.h"
#include "cards/DeckMoves.h"
#include "shell/RunTimeFault.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>

namespace vk {

namespace {

int CheckSide(int side) { return CheckIndex(side, 1, 2, "Side"); }

bool IsSlot(int slot) { return slot >= 0 && slot < kVehicleSlots; }

// The vehicle slot of `side` standing on a road square, or -1.
int SlotOnCell(const BoardState& state, int side, int field)
{
    const int cell = state.BoardCell(field);
    const int own = side == 1 ? cell : -cell;
    return own >= 1 && own <= kVehicleSlots ? own - 1 : -1;
}

// Companies moved from one count to another, as many as `most` and `from` allow.
int MoveUpTo(int& from, int& to, int most)
{
    const int moved = std::clamp(from, 0, most);
    from -= moved;
    to += moved;
    return moved;
}

// The one character at a position (from 1) of a tag replaced; nothing past its end.
void SetTagChar(std::string& tag, int position, char value)
{
    if (position >= 1 && position <= static_cast<int>(tag.size()))
        tag[static_cast<std::size_t>(position - 1)] = value;
}

// The last `count` characters of a text, or all of it.
std::string LastChars(const std::string& text, std::size_t count)
{
    return text.size() > count ? text.substr(text.size() - count) : text;
}

// The text after a position (from 1); empty past the end.
std::string After(const std::string& text, int position)
{
    return position < static_cast<int>(text.size()) ? text.substr(static_cast<std::size_t>(position)) : std::string();
}

// The position LoseCompanies writes the new digit at: 8 for tank and kanon,
// 9 for infantry and genie, the tag's own place for a commando.
int LossDigitPosition(int slot)
{
    if (slot <= 2)
        return 8;
    if (IsInfantrySlot(slot) || IsGenieSlot(slot))
        return 9;
    return CompaniesDigitPosition(slot);
}

// One company of a vehicle to the reserve; the digit written over the tag.
void TakeOneCompany(BoardState& state, int side, int slot)
{
    int& companies = state.VehicleCompanies(side, slot);
    companies -= 1;
    state.ReserveCompanies(side) += 1;
    const int position = LossDigitPosition(slot);
    std::string& tag = state.VehicleTag(side, slot);
    tag = tag.substr(0, std::min(static_cast<std::size_t>(position - 1), tag.size())) + std::to_string(companies) +
          After(tag, position);
}

// Card 16: infantry returns a carried flag, the mark cleared.
void ReturnFlagOnTheCoast(BoardState& state, int side, int slot)
{
    std::string& tag = state.VehicleTag(side, slot);
    if (!IsInfantrySlot(slot) || TagCharAt(tag, 16) != "1")
        return;
    state.FlagCarried(side) -= 1;
    state.FlagReserve(side) += 1;
    SetTagChar(tag, 16, '0');
}

// Card 16: a genie with the enemy's mine (mark 2) sets back the entry equal
// to minus its slot in its own army's list, the one an own mine would hold;
// the enemy's mine itself stays where it is. The mark is cleared. Kept so.
void ReturnMineOnTheCoast(BoardState& state, int side, int slot)
{
    std::string& tag = state.VehicleTag(side, slot);
    if (!IsGenieSlot(slot) || TagCharAt(tag, 11) != "2")
        return;
    for (int mine = 0; mine < kMinesPerArmy; ++mine)
        if (state.MinePos(side, mine) == -slot) {
            state.MinePos(side, mine) = CampField(side);
            break;
        }
    SetTagChar(tag, 11, '0');
}

void MoveToCamp(BoardState& state, int side, int slot)
{
    ExecuteMove(state, side, slot, state.VehiclePos(side, slot), CampField(side), false);
}

// A lost vehicle's picture: into Stock for the local army, beside the board
// for the other; left 120, 750 x 330.
void PutBesideTheBoard(BoardState& state, int side, int slot, bool inStock)
{
    Picture& picture = state.VehiclePicture(side, slot);
    PutPicture(picture, PlacedBox{120, (inStock ? 360 : 1095) + 480 * slot, kPictureLong, kPictureShort});
    picture.InStock = inStock;
}

// The place a vehicle back from Stock stands on: its camp place, the jeep its island.
void PutBackInCamp(BoardState& state, int side, int slot)
{
    Picture& picture = state.VehiclePicture(side, slot);
    const BoardView view = ViewOf(state);
    PutPicture(picture, slot == kJeepSlot ? IslandBox(view, side) : CampPlaceBox(view, side, slot));
    picture.InStock = false;
    picture.Visible = true;
}

int HomeField(int side, int slot) { return slot == kJeepSlot ? IslandField(side) : CampField(side); }

bool In(int d, int low, int high) { return d >= low && d <= high; }

bool AnyOf(int d, std::initializer_list<int> values)
{
    return std::find(values.begin(), values.end(), d) != values.end();
}

// The group of the second stage of card 7 for d, side 2 and side 1: the rows
// are tested by group number, with 13, every d no other row holds, last.
int RetreatGroup2(int d)
{
    if (In(d, 111, 114) || In(d, 102, 105) || AnyOf(d, {86, 87})) return 1;
    if (AnyOf(d, {110, 101, 85})) return 2;
    if (AnyOf(d, {99, 100, 108, 109})) return 3;
    if (AnyOf(d, {97, 98, 106, 107})) return 4;
    if (In(d, 71, 75)) return 5;
    if (d == 70) return 6;
    if (d == 69) return 7;
    if (In(d, 54, 56)) return 8;
    if (AnyOf(d, {52, 53})) return 9;
    if (In(d, 35, 39)) return 10;
    if (In(d, 21, 23)) return 11;
    if (AnyOf(d, {19, 20})) return 12;
    if (In(d, 78, 82)) return 14;
    if (AnyOf(d, {83, 84})) return 15;
    if (In(d, 90, 94)) return 16;
    if (AnyOf(d, {95, 96})) return 17;
    if (AnyOf(d, {76, 77, 88, 89})) return 18;
    if (d == 115) return 19;
    if (d == 116) return 20;
    if (d == 117) return 21;
    return 13;
}

int RetreatGroup1(int d)
{
    if (In(d, 66, 69) || In(d, 78, 81) || AnyOf(d, {105, 106})) return 1;
    if (AnyOf(d, {70, 82, 107})) return 2;
    if (AnyOf(d, {71, 72, 83, 84})) return 3;
    if (AnyOf(d, {73, 74, 85, 86})) return 4;
    if (In(d, -4, 0)) return 5;
    if (d == 1) return 6;
    if (d == 2) return 7;
    if (In(d, 14, 16)) return 8;
    if (AnyOf(d, {17, 18})) return 9;
    if (In(d, 30, 32)) return 10;
    if (AnyOf(d, {33, 34})) return 11;
    if (In(d, 47, 51)) return 12;
    if (In(d, 89, 93)) return 14;
    if (AnyOf(d, {87, 88})) return 15;
    if (In(d, 98, 102)) return 16;
    if (AnyOf(d, {96, 97})) return 17;
    if (AnyOf(d, {103, 104, 94, 95})) return 18;
    if (d == 77) return 19;
    if (d == 76) return 20;
    if (d == 75) return 21;
    return 13;
}

// The field of group g for side 2 at d.
int RetreatField2(int g, int d)
{
    switch (g) {
    case 1: return 116;
    case 2: return 117;
    case 4: return d + 2;
    case 5: return d + 32;
    case 7: return 68;
    case 8: return d + 54;
    case 9: return d + 48;
    case 10: return d + 59;
    case 11: return d + 75;
    case 12: return d + 73;
    case 14: return d - 72;
    case 15: return d - 61;
    case 16: return d - 38;
    case 17: return d - 57;
    case 19: return 76;
    case 20: return 75;
    case 21: return 74;
    default: return d; // 3, 6, 13, 18
    }
}

// The field of group g for side 1 at d.
int RetreatField1(int g, int d)
{
    switch (g) {
    case 1: return 113;
    case 2: return 114;
    case 4: return d - 2;
    case 5: return d + 77;
    case 7: return 3;
    case 8: return d + 59;
    case 9: return d + 61;
    case 10: return d + 55;
    case 11: return d + 57;
    case 12: return d + 38;
    case 14: return d - 59;
    case 15: return d - 70;
    case 16: return d - 32;
    case 17: return d - 49;
    case 19: return 104;
    case 20: return 105;
    case 21: return 106;
    default: return d;
    }
}

// A square that stops the walk of the second stage: anything but an own
// vehicle or an empty square. A field outside 1..112 has no cell: empty.
bool BlocksRetreat(int side, int cell)
{
    return side == 2 ? (cell > 0 || cell == -kMineCell) : (cell < 0 || cell == kMineCell);
}

} // namespace

// --- Companies ------------------------------------------------------------------

int LoseCompanies(BoardState& state, int side, int count)
{
    CheckSide(side);
    int lost = 0;
    while (lost < count) {
        int& camp = state.CampCompanies(side);
        if (camp > 0) {
            camp -= 1;
            state.ReserveCompanies(side) += 1;
            ++lost;
            continue;
        }
        const int held = state.PrisonCompanies(side) + state.ReserveCompanies(side);
        if (held == kCompaniesPerArmy || held + state.VehicleCompanies(side, kJeepSlot) == kCompaniesPerArmy)
            break;
        const int before = lost;
        for (int slot = 0; slot <= 9 && lost < count; ++slot)
            if (state.VehiclePos(side, slot) == HQField(side) && state.VehicleCompanies(side, slot) > 0) {
                TakeOneCompany(state, side, slot);
                ++lost;
            }
        for (int field = kFirstRoadField; field <= kLastRoadField && lost < count; ++field) {
            const int slot = SlotOnCell(state, side, field);
            if (slot >= 0 && slot <= 9 && state.VehicleCompanies(side, slot) > 0) {
                TakeOneCompany(state, side, slot);
                ++lost;
            }
        }
        // Companies where no round reaches them (aboard a vehicle in the
        // camp) would keep the loop going for ever.
        if (lost == before)
            break;
    }
    return lost;
}

int AirRaid(BoardState& state, int side) { return LoseCompanies(state, side, 2); }

int MilitaryAttack(BoardState& state, int side) { return LoseCompanies(state, side, 3); }

int ReserveToCampUpToThree(BoardState& state, int side)
{
    CheckSide(side);
    return MoveUpTo(state.ReserveCompanies(side), state.CampCompanies(side), 3);
}

int ReserveToCampUpToTwo(BoardState& state, int side)
{
    CheckSide(side);
    return MoveUpTo(state.ReserveCompanies(side), state.CampCompanies(side), 2);
}

int ReserveToCampOne(BoardState& state, int side)
{
    CheckSide(side);
    return MoveUpTo(state.ReserveCompanies(side), state.CampCompanies(side), 1);
}

int PrisonersBackToCamp(BoardState& state, int side)
{
    CheckSide(side);
    return MoveUpTo(state.PrisonCompanies(side), state.CampCompanies(side), 2);
}

// --- Cards that only the drawer's copy applies ------------------------------------

void UrgentFuelService(BoardState& state, int side)
{
    state.Brandstof(CheckSide(side)) = 4;
}

int TsetseSting(BoardState& state, int side)
{
    CheckSide(side);
    for (int field = kFirstRoadField; field <= kLastRoadField; ++field) {
        const int cell = state.BoardCell(field);
        const bool stung = side == 1 ? (cell > 0 && cell < 11) : (cell < 0 && cell > -11);
        if (stung) {
            state.Tsetse(side) = 4;
            state.TsetseVeh = std::abs(cell) - 1;
            return state.TsetseVeh;
        }
    }
    return -1;
}

std::vector<int> SpiedCards(const CompassDeck& deck, int side)
{
    std::vector<int> cards;
    const int count = CardCountOf(deck, side);
    for (int slot = 1; slot <= count; ++slot)
        cards.push_back(HandSlot(deck, side, slot));
    return cards;
}

// --- Card 6 --------------------------------------------------------------------------

void LeopardPickServed(BoardState& state, int enemySide, int slot)
{
    CheckSide(enemySide);
    ReturnMineOnTheCoast(state, enemySide, slot);
    PutBesideTheBoard(state, enemySide, slot, false);
    state.VehiclePos(enemySide, slot) = kOutOfGame;
}

void LeopardLossOnOwnCopy(BoardState& state, int side, int slot)
{
    CheckSide(side);
    ReturnFlagOnTheCoast(state, side, slot);
    ReturnMineOnTheCoast(state, side, slot);
    MoveToCamp(state, side, slot);
    PutBesideTheBoard(state, side, slot, true);
    state.VehiclePos(side, slot) = kOutOfGame;
}

// --- Card 7 --------------------------------------------------------------------------

RetreatTarget RetreatTargetFor(int side, int d)
{
    CheckSide(side);
    RetreatTarget target;
    target.Group = side == 2 ? RetreatGroup2(d) : RetreatGroup1(d);
    target.Field = side == 2 ? RetreatField2(target.Group, d) : RetreatField1(target.Group, d);
    target.Steps = target.Group == 7 ? 4 : 5;
    return target;
}

RetreatWork RetreatStageOne(BoardState& state, int side)
{
    CheckSide(side);
    RetreatWork work;
    const int camp = CampField(side);
    const int hq = HQField(side);
    const int nearHQ1 = side == 1 ? 71 : 100;
    const int nearHQ2 = side == 1 ? 83 : 109;
    for (int slot = 0; slot < kVehicleSlots; ++slot) {
        const int pos = state.VehiclePos(side, slot);
        if (pos == camp || pos == IslandField(side)) {
            // Already home: nothing to move.
        } else if (pos == hq || pos == nearHQ1 || pos == nearHQ2) {
            ExecuteMove(state, side, slot, pos, camp, false);
        } else {
            continue;
        }
        work.Done[static_cast<std::size_t>(slot)] = true;
        work.Left -= 1;
    }
    return work;
}

void RetreatStageTwo(BoardState& state, int side, RetreatWork& work)
{
    CheckSide(side);
    for (int slot = 0; slot < kVehicleSlots; ++slot) {
        const auto s = static_cast<std::size_t>(slot);
        if (work.Done[s])
            continue;
        const int pos = state.VehiclePos(side, slot);
        const RetreatTarget target = RetreatTargetFor(side, side == 2 ? pos + 5 : pos - 5);
        work.Field[s] = target.Field;
        work.Steps[s] = target.Steps;
        work.Group[s] = target.Group;
    }

    // Pass 1: the nearest to the camp go first and clear the road.
    for (int group = 1; group <= 21; ++group)
        for (int slot = 0; slot < kVehicleSlots; ++slot) {
            const auto s = static_cast<std::size_t>(slot);
            if (work.Done[s] || work.Group[s] != group)
                continue;
            const int pos = state.VehiclePos(side, slot);
            if (!IsLegalMove(state, side, slot, pos, work.Field[s], work.Steps[s], false))
                continue;
            ExecuteMove(state, side, slot, pos, work.Field[s], false);
            work.Done[s] = true;
            work.Left -= 1;
        }

    if (work.Left <= 0)
        return;

    // Pass 2: the first walk, looked at from the vehicle's end.
    for (int slot = 0; slot < kVehicleSlots; ++slot) {
        const auto s = static_cast<std::size_t>(slot);
        if (work.Done[s])
            continue;
        const int pos = state.VehiclePos(side, slot);
        const int steps = work.Steps[s];
        const Walk walk = FindFirstWalk(side, slot, pos, work.Field[s], steps);
        for (int i = steps - 1; i >= 0; --i) {
            const int field = walk.P[static_cast<std::size_t>(i)];
            const int cell = IsRoadField(field) ? state.BoardCell(field) : 0;
            if (BlocksRetreat(side, cell)) {
                // Onto the blocking square itself, not the one before it.
                if (walk.P[static_cast<std::size_t>(i) + 1] != pos)
                    ExecuteMove(state, side, slot, pos, field, false);
                break;
            }
            if (cell == 0)
                work.Note = cell;
        }
        // Note holds a cell, never a field number above 0: no move follows.
        work.Done[s] = true;
        work.Left -= 1;
    }
}

// --- Cards on one army ------------------------------------------------------------

void FoodPoisoning(BoardState& state, int side)
{
    CheckSide(side);
    for (int slot = 0; slot <= 9; ++slot) {
        const int pos = state.VehiclePos(side, slot);
        int& companies = state.VehicleCompanies(side, slot);
        if (pos == CampField(side) || pos == kOutOfGame || companies <= 1)
            continue;
        state.CampCompanies(side) += companies - 1;
        companies = 1;
        std::string& tag = state.VehicleTag(side, slot);
        const std::size_t tail = SlotHasMark(slot) ? 3 : 1;
        tag = std::string(VehicleTypeWord(slot)) + "_" + std::to_string(side) + "_1_" + LastChars(tag, tail);
    }
}

void YellowFever(BoardState& state, int side)
{
    CheckSide(side);
    for (int slot = 0; slot < kVehicleSlots; ++slot) {
        const int pos = state.VehiclePos(side, slot);
        int& companies = state.VehicleCompanies(side, slot);
        if (pos == kOutOfGame || pos == CampField(side) || pos == IslandField(side) || companies <= 0)
            continue;
        companies -= 1;
        state.ReserveCompanies(side) += 1;
        std::string& tag = state.VehicleTag(side, slot);
        tag = std::string(VehicleTypeWord(slot)) + "_" + std::to_string(side) + "_" + std::to_string(companies) +
              After(tag, CompaniesDigitPosition(slot));
    }
}

void NewYearParty(BoardState& state, int side)
{
    CheckSide(side);
    for (int slot = 0; slot <= 9; ++slot) {
        const int pos = state.VehiclePos(side, slot);
        if (pos != IslandField(side) && pos != CampField(side) && pos != kOutOfGame)
            MoveToCamp(state, side, slot);
    }
}

void WeatherReport(BoardState& state)
{
    for (int field = kFirstRoadField; field <= kLastRoadField; ++field) {
        if (!IsCoastRoad(field))
            continue;
        const int cell = state.BoardCell(field);
        if (cell == 0 || std::abs(cell) > kVehicleSlots)
            continue;
        const int side = cell > 0 ? 1 : 2;
        const int slot = std::abs(cell) - 1;
        ReturnFlagOnTheCoast(state, side, slot);
        ReturnMineOnTheCoast(state, side, slot);
        ExecuteMove(state, side, slot, field, CampField(side), false);
        PutBesideTheBoard(state, side, slot, side == state.LocalSide);
        state.VehiclePos(side, slot) = kOutOfGame;
    }
}

void MineAlarm(BoardState& state, int side)
{
    CheckSide(side);
    for (int slot = 6; slot <= 9; ++slot) {
        if (state.VehiclePos(side, slot) == CampField(side))
            continue;
        const std::string mark = TagCharAt(state.VehicleTag(side, slot), IsCommandoSlot(slot) ? 14 : 11);
        int entry = 0;
        if (mark == "1")
            entry = -slot;
        else if (mark == "2")
            entry = 5 - slot;
        else
            continue;
        for (int mine = 0; mine < kMinesPerArmy; ++mine)
            if (state.MinePos(side, mine) == entry) {
                state.MinePos(side, mine) = CampField(side);
                state.MinePicture(side, mine).Visible = true;
                break;
            }
        const int aboard = state.VehicleCompanies(side, slot);
        MoveToCamp(state, side, slot);
        state.ReserveCompanies(side) += aboard;
        state.CampCompanies(side) -= aboard;
        PutBesideTheBoard(state, side, slot, side == state.LocalSide);
        state.VehiclePos(side, slot) = kOutOfGame;
    }
}

// --- Lost vehicles back ----------------------------------------------------------------

bool StockPickServed(BoardState& state, int side, int slot)
{
    CheckSide(side);
    if (state.VehiclePos(side, slot) != kOutOfGame)
        return false;
    state.VehiclePos(side, slot) = HomeField(side, slot);
    PutBackInCamp(state, side, slot);
    return true;
}

StockReturn ReturnFromStock(BoardState& state, int side, int slot, bool cardIsTwelveOrEighteen)
{
    CheckSide(side);
    if (!IsSlot(slot) || state.VehiclePos(side, slot) != kOutOfGame)
        return {};
    std::string tag = StartingTag(side, slot);
    if (slot == kJeepSlot && side == 1 && cardIsTwelveOrEighteen)
        tag = "jeep_1_0_o";
    state.VehicleTag(side, slot) = tag;
    state.VehicleDir(side, slot) = TagHeading(tag);
    // Every vehicle comes back to the camp here, the jeep too, where the
    // drawer's own pick put it on its island: the copies part on the jeep.
    // Its picture stands on the island, the one place a jeep has at home.
    state.VehiclePos(side, slot) = CampField(side);
    PutBackInCamp(state, side, slot);

    StockReturn result;
    result.Returned = true;
    switch (slot) {
    case 0: result.LogText = "opponent got his tank back at "; break;
    case 1: case 2: result.LogText = "opponent got a canon back at "; break;
    case 3: case 4: case 5:
        result.LogText = cardIsTwelveOrEighteen ? "opponent got an infantry vehicle back at "
                                                : "opponent got an infantry back at ";
        break;
    case 6: case 7: result.LogText = "opponent got a commando back at "; break;
    case 8: case 9: result.LogText = "opponent got a deminer back at "; break;
    default: result.LogText = "opponent got his jeep back at "; break;
    }
    return result;
}

} // namespace vk
