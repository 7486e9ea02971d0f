#include "BoardFixtures.h"

#include "board/BoardView.h"
#include "board/Movement.h"

#include <vector>

namespace vk::testing {

BoardState NewGame()
{
    BoardState state;
    ResetNewGame(state);
    return state;
}

void PutVehicle(BoardState& state, int side, int slot, int field, int heading)
{
    const int old = state.VehiclePos(side, slot);
    if (IsRoadField(old))
        state.BoardCell(old) = 0;
    std::string& tag = state.VehicleTag(side, slot);
    tag = tag.substr(0, tag.size() - 1) + HeadingLetter(heading);
    state.VehicleDir(side, slot) = heading;
    state.VehiclePos(side, slot) = field;
    const BoardView view = ViewOf(state);
    Picture& picture = state.VehiclePicture(side, slot);
    PlacedBox box{picture.Left, picture.Top, picture.Width, picture.Height};
    if (IsRoadField(field)) {
        state.BoardCell(field) = (side == 1 ? 1 : -1) * (slot + 1);
        box = VehicleOnFieldBox(view, field, heading);
    } else if (field == HQField(side)) {
        state.VehiclePos(side, slot) = CampField(side);
        SendCampVehicleToHQ(state, side, slot);
        state.VehicleDir(side, slot) = heading;
        return;
    } else if (field == IslandField(side)) {
        box = IslandBox(view, side);
    } else if (field == CampField(side)) {
        box = CampPlaceBox(view, side, slot);
    }
    picture.Left = box.Left;
    picture.Top = box.Top;
    picture.Width = box.Width;
    picture.Height = box.Height;
}

void LoadCompanies(BoardState& state, int side, int slot, int companies)
{
    state.CampCompanies(side) -= companies - state.VehicleCompanies(side, slot);
    state.VehicleCompanies(side, slot) = companies;
    state.VehicleTag(side, slot) = SetTagCompanies(state.VehicleTag(side, slot), slot, companies);
}

void LoadOwnMine(BoardState& state, int side, int slot)
{
    for (int mine = 0; mine < kMinesPerArmy; ++mine)
        if (state.MinePos(side, mine) == CampField(side)) {
            state.MinePos(side, mine) = -slot;
            state.MinePicture(side, mine).Visible = false;
            std::string& tag = state.VehicleTag(side, slot);
            tag[static_cast<std::size_t>(MarkPosition(slot) - 1)] = '1';
            return;
        }
}

void LayMine(BoardState& state, int side, int mine, int field)
{
    state.MinePos(side, mine) = field;
    state.BoardCell(field) = (side == 1 ? 1 : -1) * kMineCell;
}

bool SameGame(const BoardState& a, const BoardState& b)
{
    return a.cells == b.cells && a.hqCount == b.hqCount &&
           a.vehiclePos == b.vehiclePos && a.vehicleDir == b.vehicleDir &&
           a.vehicleCompanies == b.vehicleCompanies && a.vehicleTag == b.vehicleTag &&
           a.reserveCompanies == b.reserveCompanies && a.campCompanies == b.campCompanies &&
           a.prisonCompanies == b.prisonCompanies && a.minePos == b.minePos && a.flagReserve == b.flagReserve &&
           a.flagCarried == b.flagCarried && a.flagHome == b.flagHome;
}

namespace {

int Roll(std::mt19937& random, int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

} // namespace

bool PickRandomMove(BoardState& state, std::mt19937& random, RandomMove& move)
{
    move = RandomMove{};
    move.Side = Roll(random, 1, 2);
    move.Slot = Roll(random, 0, kVehicleSlots - 1);
    const int side = move.Side;
    const int slot = move.Slot;
    int pos = state.VehiclePos(side, slot);
    if (pos == kOutOfGame)
        return false;

    if (pos == CampField(side)) {
        // Camp loading, then the die of 6 to the HQ.
        if (state.CampCompanies(side) == 0 || state.HQCount(side) == kHQPlaces)
            return false;
        const int load = std::min(Roll(random, 0, VehicleCapacity(slot)), state.CampCompanies(side));
        LoadCompanies(state, side, slot, load);
        if (IsCommandoSlot(slot) && Roll(random, 0, 1) == 1 && TagMarkText(state.VehicleTag(side, slot), slot) == "0")
            LoadOwnMine(state, side, slot);
        SendCampVehicleToHQ(state, side, slot);
        return false;
    }
    if (pos == IslandField(side)) {
        if (state.PrisonCompanies(side) == 0)
            return false;
        const int load = std::min(3, state.PrisonCompanies(side));
        state.PrisonCompanies(side) -= load;
        state.VehicleCompanies(side, slot) = load;
        state.VehicleTag(side, slot) = MakeVehicleTag(kJeepSlot, side, load, 0, side == 1 ? kWest : kEast);
    }

    move.From = pos;
    move.Steps = Roll(random, 1, 12);
    std::vector<int> targets;
    for (int to = 1; to <= kLastField; ++to) {
        const MoveVerdict verdict = JudgeMove(state, side, slot, pos, to, move.Steps, true);
        if (verdict.Legal && !verdict.ShootAllowed)
            targets.push_back(to);
    }
    if (targets.empty())
        return false;
    move.To = targets[static_cast<std::size_t>(Roll(random, 0, static_cast<int>(targets.size()) - 1))];
    move.LeaveMine = IsCommandoSlot(slot) && IsRoadField(pos) && MineSide(pos) >= 1 &&
                     TagMarkText(state.VehicleTag(side, slot), slot) == "1" && Roll(random, 0, 1) == 1;
    move.TakeFlag = Roll(random, 0, 3) != 0;
    return true;
}

BoardState RandomPosition(std::mt19937& random, int moves)
{
    BoardState state = NewGame();
    for (int done = 0; done < moves;) {
        RandomMove move;
        if (!PickRandomMove(state, random, move))
            continue;
        IsLegalMove(state, move.Side, move.Slot, move.From, move.To, move.Steps, true);
        if (!move.TakeFlag)
            state.Verdict.FlagLoad = false;
        ExecuteMove(state, move.Side, move.Slot, move.From, move.To, move.LeaveMine);
        ++done;
    }
    return state;
}

} // namespace vk::testing
