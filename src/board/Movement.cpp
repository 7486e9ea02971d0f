#include "board/Movement.h"

#include "board/BoardView.h"
#include "board/Shooting.h"
#include "shell/RunTimeFault.h"

#include <algorithm>

namespace vk {

namespace {

bool IsForbiddenDestination(int side, int to)
{
    if (side == 1)
        return to == kCamp2 || to == kHQ2 || to == kIsland2 || to == EnemyFlagField(1);
    return to == kCamp1 || to == kHQ1 || to == kIsland1 || to == EnemyFlagField(2);
}

bool IsMineCell(int cell) { return cell == kMineCell || cell == -kMineCell; }

bool IsEnemyVehicleCell(int side, int cell)
{
    return side == 1 ? (cell <= -1 && cell >= -11) : (cell >= 1 && cell <= 11);
}

// A road square with a mine of either army or an enemy vehicle stops the walk;
// the large areas have no cell and stop nothing here.
bool BlocksWalk(const BoardState& state, int side, int field)
{
    if (!IsRoadField(field))
        return false;
    const int cell = state.BoardCell(field);
    return IsMineCell(cell) || IsEnemyVehicleCell(side, cell);
}

// The heading taken on entering `to` from `previous`; `current` when no road matches.
int HeadingEntering(int to, int previous, int current)
{
    for (int k = 0; k < 3; ++k)
        if (FieldRoads(to, k) == previous)
            return FieldHeading(to, k);
    return current;
}

std::string DropLast(const std::string& text, std::size_t count)
{
    return text.size() > count ? text.substr(0, text.size() - count) : std::string();
}

void PlaceVehicle(BoardState& state, int side, int slot, const PlacedBox& box)
{
    Picture& picture = state.VehiclePicture(side, slot);
    PutPicture(picture, box);
    picture.Visible = true;
    picture.InStock = false;
}

// The heading a move into a large area gives; the table of the roads has none there.
int LargeAreaHeading(int side, int slot, int to, int current)
{
    if (side == 1) {
        if (to == kCamp1)
            return slot == kJeepSlot ? kWest : kEast;
        if (to == kHQ1)
            return kEast;
        if (to == kIsland1)
            return kWest;
        return current;
    }
    if (to == kCamp2) {
        switch (slot) {
        case 0: case 1: case 2: case 6: case 7: return kWest;
        default: return kEast;
        }
    }
    if (to == kHQ2)
        return kWest;
    if (to == kIsland2)
        return kEast;
    return current;
}

// What a vehicle carries comes off in its own camp: a mine goes back to the store (an
// enemy mine into this camp for good), a flag comes home.
void UnloadInCamp(BoardState& state, int side, int slot)
{
    const std::string& tag = state.VehicleTag(side, slot);
    const BoardView view = ViewOf(state);
    const int mark = TagMarkValue(tag, slot);
    if ((IsCommandoSlot(slot) || IsGenieSlot(slot)) && TagMarkText(tag, slot) == "1") {
        for (int mine = 0; mine < kMinesPerArmy; ++mine)
            if (state.MinePos(side, mine) == -slot) {
                state.MinePos(side, mine) = CampField(side);
                const PlacedBox box = StoredMineBoxOnReturn(view, side, mine);
                state.MinePicture(side, mine) =
                    Picture{box.Left, box.Top, box.Width, box.Height, true, false, StoredMineImage(side)};
                break;
            }
    } else if (IsGenieSlot(slot) && mark == 2) {
        const int enemy = OtherSide(side);
        for (int mine = 0; mine < kMinesPerArmy; ++mine)
            if (state.MinePos(enemy, mine) == 5 - slot) {
                state.MinePos(enemy, mine) = CampField(side);
                const PlacedBox box = CapturedMineBoxOnReturn(view, side, mine);
                Picture& captured = state.CapturedMinePicture(side, mine);
                PutPicture(captured, box);
                captured.Visible = true;
                break;
            }
    } else if (IsInfantrySlot(slot) && TagMarkText(tag, slot) == "1") {
        state.FlagCarried(side) -= 1;
        state.FlagHome(side) += 1;
    }
}

} // namespace

Walk FindFirstWalk(int side, int slot, int from, int to, int steps)
{
    if (steps < 1)
        throw RunTimeFault("subscript out of range: walk of " + std::to_string(steps) + " steps");
    Walk walk;
    walk.P.assign(static_cast<std::size_t>(steps) + 1, -1);
    std::vector<int> tried(static_cast<std::size_t>(steps), 0);
    walk.P[steps] = from;
    const int ownCamp = CampField(side);
    const int otherCamp = CampField(OtherSide(side));
    const int ownIsland = IslandField(side);

    int i = steps - 1;
    while (i >= 0 && i < steps) {
        bool advanced = false;
        while (tried[i] < 3) {
            const int k = tried[i]++;
            const int here = walk.P[i + 1];
            const int c = FieldRoads(here, k);
            if ((c == ownCamp && to == ownCamp) || (c == ownIsland && to == ownIsland && slot == kJeepSlot)) {
                walk.P[i] = c;
                walk.HomeShortCut = true;
                return walk;
            }
            if (c == -1 || c == otherCamp)
                continue;
            if (FieldHeading(here, k) == kStrategicLinkHeading)
                continue;
            if (i < steps - 1 && c == walk.P[i + 2])
                continue;
            if (i == 0 && c != to)
                continue;
            walk.P[i] = c;
            advanced = true;
            break;
        }
        if (advanced) {
            --i;
        } else {
            tried[i] = 0;
            walk.P[i] = -1;
            ++i;
        }
    }
    walk.Complete = i < 0;
    return walk;
}

MoveVerdict JudgeMove(const BoardState& state, int side, int slot, int from, int to, int steps, bool mayShoot)
{
    CheckIndex(side, 1, 2, "Side");
    CheckIndex(slot, 0, kVehicleSlots - 1, "VehicleSlot");
    MoveVerdict verdict;
    if (IsForbiddenDestination(side, to))
        return verdict;

    const std::string& tag = state.VehicleTag(side, slot);
    verdict.Heading = TagHeading(tag);

    // A strategic link to an empty far end is legal whatever the dice say.
    if (from >= 1 && from <= 70 && to != -1 && FieldRoads(from, 2) == to && state.BoardCell(to) == 0) {
        verdict.Legal = true;
        if (to == 63)
            verdict.Heading = kNorth;
        else if (from == 63)
            verdict.Heading = kWest;
        return verdict;
    }

    const Walk walk = FindFirstWalk(side, slot, from, to, steps);
    if (walk.HomeShortCut) {
        verdict.Legal = true;
        return verdict;
    }
    if (!walk.Complete)
        return verdict;
    const std::vector<int>& P = walk.P;

    if (to == kHQ1 || to == kHQ2) {
        if (state.HQCount(to == kHQ1 ? 1 : 2) == kHQPlaces)
            return verdict;
        for (int index = steps; index >= 1; --index) {
            const int field = P[index];
            if (field != to && field != from && BlocksWalk(state, side, field))
                return verdict;
        }
        verdict.Legal = true;
        verdict.Heading = HeadingEntering(to, P[1], verdict.Heading);
        return verdict;
    }

    if (!IsRoadField(to))
        return verdict;

    const int target = state.BoardCell(to);
    if (target == 0 || IsMineCell(target)) {
        for (int index = steps; index >= 0; --index) {
            const int field = P[index];
            if (field == to || field == from)
                continue;
            if (field == kHQ1 || field == kHQ2) {
                if (field != HQField(side) || state.HQCount(side) >= kHQPlaces)
                    return verdict;
            } else if (BlocksWalk(state, side, field)) {
                return verdict;
            }
        }
        if (IsMineCell(target)) {
            if (!IsGenieSlot(slot) || TagCharAt(tag, MarkPosition(slot)) != "0")
                return verdict;
            verdict.MinePickup = true;
        } else if (IsInfantrySlot(slot) && TagCharAt(tag, MarkPosition(slot)) == "0" &&
                   state.FlagReserve(side) >= 1 && (from == FlagField(side) || to == FlagField(side))) {
            verdict.FlagLoad = true;
        }
        verdict.Legal = true;
        verdict.CompassCrossed = CrossesForwardPost(side, P[1], to);
        verdict.Heading = HeadingEntering(to, P[1], verdict.Heading);
        return verdict;
    }

    // A vehicle on the destination: a shot, judged without blocking (who may shoot what is
    // ShotPermitted); the heading stays.
    if (ShotPermitted(state, side, slot, target, mayShoot)) {
        verdict.ShootAllowed = true;
        verdict.ShootTarget = target;
        verdict.Legal = true;
    }
    return verdict;
}

bool IsLegalMove(BoardState& state, int side, int slot, int from, int to, int steps, bool mayShoot)
{
    state.Verdict = JudgeMove(state, side, slot, from, to, steps, mayShoot);
    return state.Verdict.Legal;
}

void ExecuteMove(BoardState& state, int side, int slot, int from, int to, bool leaveMine)
{
    CheckIndex(side, 1, 2, "Side");
    CheckIndex(slot, 0, kVehicleSlots - 1, "VehicleSlot");
    const BoardView view = ViewOf(state);
    MoveVerdict& verdict = state.Verdict;
    std::string& tag = state.VehicleTag(side, slot);
    const int sign = side == 1 ? 1 : -1;

    // 1. The HQ place the vehicle leaves, found by the top of its picture.
    int leftPlace = -1;
    if (from == kHQ1 || from == kHQ2) {
        const int hqSide = from == kHQ1 ? 1 : 2;
        for (int place = 0; place < kHQPlaces; ++place)
            if (HQPlaceBox(view, hqSide, place).Top == state.VehiclePicture(side, slot).Top) {
                leftPlace = place;
                break;
            }
    }

    // 2. A forward post crossed earns a compass card: counted for this turn,
    // and, for the local player's own army, owed until drawn, also beyond the
    // two draws of one turn. A crossing left standing by this copy's judge
    // must not owe it a card for the opponent's replayed move.
    if (verdict.CompassCrossed) {
        state.PendingDraws += 1;
        if (side == state.LocalSide)
            state.CompassOwed += 1;
        verdict.CompassCrossed = false;
    }

    // 3. The tag without its heading letter, and the mines.
    if (leaveMine) {
        tag = DropLast(tag, 3) + "0_";
        for (int mine = 0; mine < kMinesPerArmy; ++mine)
            if (state.MinePos(side, mine) == -slot) {
                state.MinePos(side, mine) = from;
                if (MineSide(from) >= 1) {
                    const PlacedBox box = LaidMineBox(view, from);
                    state.MinePicture(side, mine) =
                        Picture{box.Left, box.Top, box.Width, box.Height, true, false, LaidMineImage(side, from)};
                } else {
                    state.MinePicture(side, mine).Visible = true;
                }
                break;
            }
        state.BoardCell(from) = sign * kMineCell;
    } else if (verdict.MinePickup) {
        tag = DropLast(tag, 3);
        const int enemy = OtherSide(side);
        for (int mine = 0; mine < kMinesPerArmy; ++mine) {
            int owner = 0;
            if (state.MinePos(side, mine) == to) {
                owner = side;
                state.MinePos(side, mine) = -slot;
                tag += "1_";
            } else if (state.MinePos(enemy, mine) == to) {
                owner = enemy;
                state.MinePos(enemy, mine) = 5 - slot;
                tag += "2_";
            }
            if (owner != 0) {
                const PlacedBox box = StoredMineBoxOnReturn(view, owner, mine);
                state.MinePicture(owner, mine) =
                    Picture{box.Left, box.Top, box.Width, box.Height, false, false, StoredMineImage(owner)};
                break;
            }
        }
    } else {
        tag = DropLast(tag, 1);
    }

    // 4. The large areas have no usable heading in the road table.
    if (!IsRoadField(to))
        verdict.Heading = LargeAreaHeading(side, slot, to, verdict.Heading);

    // 5. A flag taken on or off the flag field.
    if ((to == 2 || from == 2 || to == 69 || from == 69) && IsInfantrySlot(slot) &&
        TagCharAt(tag, MarkPosition(slot)) == "0" && verdict.FlagLoad) {
        tag = tag.substr(0, std::min<std::size_t>(15, tag.size())) + "1_";
        const int owner = (to == 69 || from == 69) ? 1 : 2;
        state.FlagReserve(owner) -= 1;
        state.FlagCarried(owner) += 1;
        verdict.FlagLoad = false;
    }

    // 6. The heading letter back on the tag.
    tag += HeadingLetter(verdict.Heading);

    // 7. The picture on a road square, and the cell.
    if (IsRoadField(to)) {
        PlaceVehicle(state, side, slot, VehicleOnFieldBox(view, to, verdict.Heading));
        state.BoardCell(to) = sign * (slot + 1);
    }

    // 8. The large areas.
    int finalPos = to;
    if (to == CampField(side)) {
        state.CampCompanies(side) += state.VehicleCompanies(side, slot);
        state.VehicleCompanies(side, slot) = 0;
        UnloadInCamp(state, side, slot);
        tag = MakeVehicleTag(slot, side, 0, 0, verdict.Heading);
        if (slot == kJeepSlot) {
            PlaceVehicle(state, side, slot, IslandBox(view, side));
            finalPos = IslandField(side);
        } else {
            PlaceVehicle(state, side, slot, CampPlaceBox(view, side, slot));
        }
    } else if (to == kHQ1 || to == kHQ2) {
        const int hqSide = to == kHQ1 ? 1 : 2;
        for (int place = 0; place < kHQPlaces; ++place)
            if (state.HQPlaceFree(hqSide, place)) {
                state.HQPlaceFree(hqSide, place) = false;
                state.HQCount(hqSide) += 1;
                PlaceVehicle(state, side, slot, HQPlaceBox(view, hqSide, place));
                break;
            }
    } else if (to == kIsland1 || to == kIsland2) {
        PlaceVehicle(state, side, slot, IslandBox(view, to == kIsland1 ? 1 : 2));
    }

    // 9. Bookkeeping.
    state.VehiclePos(side, slot) = finalPos;
    state.VehicleDir(side, slot) = verdict.Heading;
    if (IsRoadField(from) && !leaveMine)
        state.BoardCell(from) = 0;
    if (from == kHQ1 || from == kHQ2) {
        const int hqSide = from == kHQ1 ? 1 : 2;
        state.HQCount(hqSide) -= 1;
        if (leftPlace >= 0)
            state.HQPlaceFree(hqSide, leftPlace) = true;
    }
}

bool SendCampVehicleToHQ(BoardState& state, int side, int slot)
{
    CheckIndex(side, 1, 2, "Side");
    if (state.HQCount(side) >= kHQPlaces)
        return false;
    for (int place = 0; place < kHQPlaces; ++place)
        if (state.HQPlaceFree(side, place)) {
            state.HQPlaceFree(side, place) = false;
            state.HQCount(side) += 1;
            state.VehiclePos(side, slot) = HQField(side);
            state.VehicleDir(side, slot) = side == 1 ? kEast : kWest;
            PlaceVehicle(state, side, slot, HQPlaceBox(ViewOf(state), side, place));
            return true;
        }
    return false;
}

} // namespace vk
