#include "cards/PersonnelEffects.h"

#include "board/BoardTables.h"
#include "board/BoardView.h"
#include "board/Movement.h"
#include "board/VehicleTag.h"

namespace vk {

namespace {

// The room of a vehicle by slot; the jeep has none listed.
int CamouflageRoom(int slot)
{
    return slot == kJeepSlot ? 0 : VehicleCapacity(slot);
}

// A flag or an own mine that a lost vehicle carried goes back to its army.
// Only the first mine entry found is set back; a genie's enemy mine (mark 2)
// is looked for in the genie's own list as 5 - slot.
void ReturnLoad(BoardState& state, int side, int slot, const std::string& oldTag)
{
    auto returnMine = [&state, side](int entry) {
        for (int mine = 0; mine < kMinesPerArmy; ++mine)
            if (state.MinePos(side, mine) == entry) {
                state.MinePos(side, mine) = CampField(side);
                state.MinePicture(side, mine).Visible = true;
                return;
            }
    };
    if (IsInfantrySlot(slot) && TagCharAt(oldTag, 16) == "1") {
        state.FlagReserve(side) += 1;
        state.FlagCarried(side) -= 1;
    } else if (IsCommandoSlot(slot) && TagCharAt(oldTag, 14) == "1") {
        returnMine(-slot);
    } else if (IsGenieSlot(slot)) {
        const std::string mark = TagCharAt(oldTag, 11);
        if (mark == "1")
            returnMine(-slot);
        else if (mark == "2")
            returnMine(5 - slot);
    }
}

// The loss in an ambush, but for where the picture goes.
void LoseInAmbush(BoardState& state, int side, int slot)
{
    const std::string oldTag = state.VehicleTag(side, slot);
    int& companies = state.VehicleCompanies(side, slot);
    state.ReserveCompanies(side) += companies;
    companies = 0;
    int& pos = state.VehiclePos(side, slot);
    if (IsRoadField(pos))
        state.BoardCell(pos) = 0;
    state.VehicleTag(side, slot) = DestroyedTag(side, slot);
    ReturnLoad(state, side, slot, oldTag);
    pos = kOutOfGame;
}

PlacedBox BesideTheBoard(int slot, int top)
{
    return PlacedBox{120, top + 480 * slot, 750, 330};
}

// The tag that the player's copy gives the enemy's jeep on its island, also
// when it is destroyed: "jeep_1_0_w", "jeep_2_0_o".
std::string JeepTagOnPlayersCopy(int side)
{
    return MakeVehicleTag(kJeepSlot, side, 0, 0, side == 1 ? kWest : kEast);
}

void JeepToPrison(BoardState& state, int side, const std::string& tag)
{
    int& pos = state.VehiclePos(side, kJeepSlot);
    if (IsRoadField(pos))
        state.BoardCell(pos) = 0;
    pos = IslandField(side);
    int& companies = state.VehicleCompanies(side, kJeepSlot);
    state.PrisonCompanies(side) += companies;
    companies = 0;
    state.VehicleTag(side, kJeepSlot) = tag;
    Picture& picture = state.VehiclePicture(side, kJeepSlot);
    PutPicture(picture, IslandBox(ViewOf(state), side));
    picture.Visible = true;
}

// Every mine of `mineSide` on `field` goes to the camp of `campSide`, where
// the captured-mine picture shows; its own picture hides at its store.
bool TakeMine(BoardState& state, int mineSide, int campSide, int field)
{
    bool found = false;
    for (int mine = 0; mine < kMinesPerArmy; ++mine) {
        if (state.MinePos(mineSide, mine) != field)
            continue;
        found = true;
        state.MinePos(mineSide, mine) = CampField(campSide);
        state.BoardCell(field) = 0;
        state.CapturedMinePicture(campSide, mine).Visible = true;
        Picture& picture = state.MinePicture(mineSide, mine);
        picture.Visible = false;
        PutPicture(picture, StoredMineBoxOnReturn(ViewOf(state), mineSide, mine));
        picture.Image = StoredMineImage(mineSide);
    }
    return found;
}

} // namespace

bool Camouflage(BoardState& state, int side, int tagSlot, int slot)
{
    int& camp = state.CampCompanies(side);
    // A camp that an earlier Camouflage left below zero holds no company either.
    if (camp <= 0)
        return false;
    const std::string tag = state.VehicleTag(side, tagSlot);
    int& companies = state.VehicleCompanies(side, slot);
    const int room = CamouflageRoom(slot);
    for (int i = 0; i < 2; ++i)
        if (room > companies) {
            camp -= 1;
            companies += 1;
        }
    state.VehicleTag(side, slot) = SetTagCompanies(tag, slot, companies);
    return true;
}

void ExchangePrisoners(BoardState& state)
{
    for (int i = 0; i < 2; ++i)
        if (state.PrisonCompanies(1) > 0 && state.PrisonCompanies(2) > 0)
            for (int side = 1; side <= 2; ++side) {
                state.PrisonCompanies(side) -= 1;
                state.CampCompanies(side) += 1;
            }
}

void MoveByPersonnel(BoardState& state, int side, int slot, int field)
{
    ExecuteMove(state, side, slot, state.VehiclePos(side, slot), field, false);
}

void AmbushEnemyVehicle(BoardState& state, int enemySide, int slot)
{
    LoseInAmbush(state, enemySide, slot);
    Picture& picture = state.VehiclePicture(enemySide, slot);
    PutPicture(picture, BesideTheBoard(slot, 1095));
    picture.InStock = false;
}

void AmbushOwnVehicle(BoardState& state, int side, int slot)
{
    LoseInAmbush(state, side, slot);
    Picture& picture = state.VehiclePicture(side, slot);
    PutPicture(picture, BesideTheBoard(slot, 360));
    picture.InStock = true;
}

void AmbushEnemyJeep(BoardState& state, int enemySide)
{
    int& companies = state.VehicleCompanies(enemySide, kJeepSlot);
    state.ReserveCompanies(enemySide) += companies;
    companies = 0;
    int& pos = state.VehiclePos(enemySide, kJeepSlot);
    if (IsRoadField(pos))
        state.BoardCell(pos) = 0;
    Picture& picture = state.VehiclePicture(enemySide, kJeepSlot);
    PutPicture(picture, BesideTheBoard(kJeepSlot, 1095));
    picture.InStock = false;
    state.VehicleTag(enemySide, kJeepSlot) = JeepTagOnPlayersCopy(enemySide);
    pos = kOutOfGame;
}

void MilitaryPoliceOnEnemyJeep(BoardState& state, int enemySide)
{
    JeepToPrison(state, enemySide, JeepTagOnPlayersCopy(enemySide));
}

void MilitaryPoliceOnOwnJeep(BoardState& state, int side)
{
    JeepToPrison(state, side, MakeVehicleTag(kJeepSlot, side, 0, 0, side == 1 ? kEast : kWest));
}

bool ClearEnemyMine(BoardState& state, int side, int field)
{
    return TakeMine(state, OtherSide(side), side, field);
}

bool ClearMineOnOwnersCopy(BoardState& state, int side, int field)
{
    const int player = OtherSide(side);
    return TakeMine(state, player, player, field);
}

} // namespace vk
