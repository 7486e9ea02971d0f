// What a Personnel card that was not annulled does to the board, on the copy
// of the player who plays it and on the copy of his opponent.

#include "board/BoardState.h"
#include "board/BoardTables.h"
#include "board/BoardView.h"
#include "board/VehicleTag.h"
#include "cards/PersonnelEffects.h"

#include "BoardSetup.h"

#include <gtest/gtest.h>

namespace vk {
namespace {

using namespace test;

void LayMine(BoardState& state, int side, int mine, int field)
{
    state.MinePos(side, mine) = field;
    state.BoardCell(field) = (side == 1 ? 1 : -1) * kMineCell;
    PutPicture(state.MinePicture(side, mine), LaidMineBox(ViewOf(state), field));
    state.MinePicture(side, mine).Image = LaidMineImage(side, field);
}

// --- Camouflage ---------------------------------------------------------------

TEST(Camouflage, TwoCompaniesFromTheCampBoard)
{
    for (int side = 1; side <= 2; ++side) {
        BoardState state = NewGame();
        PutOnRoad(state, side, 1, 40, kWest);
        ASSERT_TRUE(Camouflage(state, side, 1, 1));
        EXPECT_EQ(state.CampCompanies(side), 13) << side;
        EXPECT_EQ(state.VehicleCompanies(side, 1), 2) << side;
        EXPECT_EQ(state.VehicleTag(side, 1), "kanon_" + std::to_string(side) + "_2_w");
        EXPECT_EQ(state.CompanySum(side), kCompaniesPerArmy) << side;
    }
}

TEST(Camouflage, OneCompanyInTheCampAndRoomForTwoLeavesMinusOne)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 0, 40, kEast);
    Load(state, 1, 0, 3);
    state.ReserveCompanies(1) += state.CampCompanies(1) - 1;
    state.CampCompanies(1) = 1;
    ASSERT_TRUE(Camouflage(state, 1, 0, 0));
    EXPECT_EQ(state.CampCompanies(1), -1);
    EXPECT_EQ(state.VehicleCompanies(1, 0), 5);
    EXPECT_EQ(state.VehicleTag(1, 0), "tank_1_5_o");
}

TEST(Camouflage, RoomForOneTakesOne)
{
    BoardState state = NewGame();
    PutOnRoad(state, 2, 3, 100, kSouth);
    Load(state, 2, 3, 2);
    ASSERT_TRUE(Camouflage(state, 2, 3, 3));
    EXPECT_EQ(state.VehicleCompanies(2, 3), 3);
    EXPECT_EQ(state.CampCompanies(2), 12);
    EXPECT_EQ(state.VehicleTag(2, 3), "infanterie_2_3_0_z");
}

TEST(Camouflage, AnEmptyCampChangesNothing)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 2, 40, kWest);
    state.ReserveCompanies(1) += state.CampCompanies(1);
    state.CampCompanies(1) = 0;
    const BoardState before = state;
    EXPECT_FALSE(Camouflage(state, 1, 2, 2));
    EXPECT_EQ(state, before);
}

TEST(Camouflage, ACampLeftBelowZeroHoldsNoCompanyEither)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 2, 40, kWest);
    state.ReserveCompanies(1) += state.CampCompanies(1) + 1;
    state.CampCompanies(1) = -1;
    const BoardState before = state;
    EXPECT_FALSE(Camouflage(state, 1, 2, 2));
    EXPECT_EQ(state, before);
}

TEST(Camouflage, AFullVehicleGainsNothing)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 6, 40, kWest);
    Load(state, 1, 6, 2);
    const BoardState before = state;
    EXPECT_TRUE(Camouflage(state, 1, 6, 6)) << "the camp held companies";
    EXPECT_EQ(state, before);
}

TEST(Camouflage, TheJeepHasNoRoomToFill)
{
    BoardState state = NewGame();
    PutOnRoad(state, 2, kJeepSlot, 100, kNorth);
    state.VehicleCompanies(2, kJeepSlot) = 1;
    state.VehicleTag(2, kJeepSlot) = "jeep_2_1_n";
    const BoardState before = state;
    EXPECT_TRUE(Camouflage(state, 2, kJeepSlot, kJeepSlot));
    EXPECT_EQ(state, before);
}

TEST(Camouflage, TheMarkOfTheTagStays)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 7, 40, kEast);
    state.VehicleTag(1, 7) = "commando_1_0_1_o"; // carrying a mine
    ASSERT_TRUE(Camouflage(state, 1, 7, 7));
    EXPECT_EQ(state.VehicleTag(1, 7), "commando_1_2_1_o");
}

TEST(Camouflage, TheTagIsReadFromTheTagSlot)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 1, 40, kWest); // "kanon_1_0_w"
    PutOnRoad(state, 1, 2, 50, kEast);  // "kanon_1_0_o"
    Load(state, 1, 2, 1);
    ASSERT_TRUE(Camouflage(state, 1, 1, 2));
    EXPECT_EQ(state.VehicleCompanies(1, 2), 3);
    EXPECT_EQ(state.VehicleTag(1, 2), "kanon_1_3_w") << "the tag of slot 1 with the count of slot 2";
    EXPECT_EQ(state.VehicleCompanies(1, 1), 0);
    EXPECT_EQ(state.VehicleTag(1, 1), "kanon_1_0_w");
}

// --- Uitwisseling van gevangenen -------------------------------------------------

struct Prisons {
    int Prison1;
    int Prison2;
};

BoardState AfterExchange(Prisons prisons)
{
    BoardState state = NewGame();
    state.PrisonCompanies(1) = prisons.Prison1;
    state.PrisonCompanies(2) = prisons.Prison2;
    ExchangePrisoners(state);
    return state;
}

TEST(Exchange, OneAgainstThreeExchangesOnce)
{
    for (const Prisons prisons : {Prisons{1, 3}, Prisons{3, 1}}) {
        const BoardState state = AfterExchange(prisons);
        EXPECT_EQ(state.PrisonCompanies(1), prisons.Prison1 - 1);
        EXPECT_EQ(state.PrisonCompanies(2), prisons.Prison2 - 1);
        EXPECT_EQ(state.CampCompanies(1), 16);
        EXPECT_EQ(state.CampCompanies(2), 16);
    }
}

TEST(Exchange, AnEmptyPrisonChangesNothing)
{
    for (const Prisons prisons : {Prisons{0, 4}, Prisons{2, 0}, Prisons{0, 0}}) {
        BoardState state = NewGame();
        state.PrisonCompanies(1) = prisons.Prison1;
        state.PrisonCompanies(2) = prisons.Prison2;
        const BoardState before = state;
        ExchangePrisoners(state);
        EXPECT_EQ(state, before) << prisons.Prison1 << " " << prisons.Prison2;
    }
}

TEST(Exchange, NeverMoreThanTwo)
{
    const BoardState state = AfterExchange({2, 5});
    EXPECT_EQ(state.PrisonCompanies(1), 0);
    EXPECT_EQ(state.PrisonCompanies(2), 3);
    EXPECT_EQ(state.CampCompanies(1), 17);
    EXPECT_EQ(state.CampCompanies(2), 17);

    const BoardState many = AfterExchange({6, 4});
    EXPECT_EQ(many.PrisonCompanies(1), 4);
    EXPECT_EQ(many.PrisonCompanies(2), 2);
}

// --- Hinderlaag on the player's copy ---------------------------------------------

TEST(AmbushEnemy, TheVehicleLeavesTheGameWithItsCompanies)
{
    BoardState state = NewGame();
    PutOnRoad(state, 2, 0, 96, kSouth);
    Load(state, 2, 0, 4);
    AmbushEnemyVehicle(state, 2, 0);
    EXPECT_EQ(state.ReserveCompanies(2), 14);
    EXPECT_EQ(state.VehicleCompanies(2, 0), 0);
    EXPECT_EQ(state.BoardCell(96), 0);
    EXPECT_EQ(state.VehiclePos(2, 0), kOutOfGame);
    EXPECT_EQ(state.VehicleTag(2, 0), "tank_2_0_o");
    EXPECT_EQ(BoxOf(state.VehiclePicture(2, 0)), (PlacedBox{120, 1095, 750, 330}));
    EXPECT_FALSE(state.VehiclePicture(2, 0).InStock);
    EXPECT_EQ(state.CompanySum(2), kCompaniesPerArmy);
}

TEST(AmbushEnemy, TagAndPlaceBySlotForEitherEnemy)
{
    const char* const words[10] = {"tank_",       "kanon_",      "kanon_",      "infanterie_", "infanterie_",
                                   "infanterie_", "commando_",   "commando_",   "genie_",      "genie_"};
    for (int enemy = 1; enemy <= 2; ++enemy)
        for (int slot = 0; slot < kJeepSlot; ++slot) {
            BoardState state = NewGame();
            PutOnRoad(state, enemy, slot, 40, kWest);
            Load(state, enemy, slot, 1);
            AmbushEnemyVehicle(state, enemy, slot);
            const std::string rest = SlotHasMark(slot) ? "_0_0_o" : "_0_o";
            EXPECT_EQ(state.VehicleTag(enemy, slot), words[slot] + std::to_string(enemy) + rest);
            EXPECT_EQ(BoxOf(state.VehiclePicture(enemy, slot)), (PlacedBox{120, 1095 + 480 * slot, 750, 330}));
            EXPECT_FALSE(state.VehiclePicture(enemy, slot).InStock);
            EXPECT_EQ(state.BoardCell(40), 0);
            EXPECT_EQ(state.ReserveCompanies(enemy), 11);
        }
}

TEST(AmbushEnemy, AFlagCarriedGoesBack)
{
    BoardState state = NewGame();
    PutOnRoad(state, 2, 4, 97, kEast);
    state.VehicleTag(2, 4) = "infanterie_2_0_1_o";
    state.FlagReserve(2) = 4;
    state.FlagCarried(2) = 1;
    AmbushEnemyVehicle(state, 2, 4);
    EXPECT_EQ(state.FlagReserve(2), 5);
    EXPECT_EQ(state.FlagCarried(2), 0);
    EXPECT_EQ(state.FlagReserve(1), kFlagsPerArmy);
    EXPECT_EQ(state.VehicleTag(2, 4), "infanterie_2_0_0_o");
}

TEST(AmbushEnemy, WithoutAFlagTheFlagsStay)
{
    BoardState state = NewGame();
    PutOnRoad(state, 2, 3, 97, kEast);
    state.FlagCarried(2) = 1; // carried by another infantry
    state.FlagReserve(2) = 4;
    AmbushEnemyVehicle(state, 2, 3);
    EXPECT_EQ(state.FlagReserve(2), 4);
    EXPECT_EQ(state.FlagCarried(2), 1);
}

TEST(AmbushEnemy, ACommandosMineGoesBackFirstEntryOnly)
{
    BoardState state = NewGame();
    PutOnRoad(state, 2, 6, 98, kNorth);
    state.VehicleTag(2, 6) = "commando_2_0_1_n";
    for (int mine : {1, 3}) {
        state.MinePos(2, mine) = -6;
        state.MinePicture(2, mine).Visible = false;
    }
    AmbushEnemyVehicle(state, 2, 6);
    EXPECT_EQ(state.MinePos(2, 1), kCamp2);
    EXPECT_TRUE(state.MinePicture(2, 1).Visible);
    EXPECT_EQ(state.MinePos(2, 3), -6) << "only the first entry goes back";
    EXPECT_FALSE(state.MinePicture(2, 3).Visible);
    EXPECT_EQ(state.VehicleTag(2, 6), "commando_2_0_0_o");
}

TEST(AmbushEnemy, ACommandoWithoutTheMarkReturnsNoMine)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 7, 80, kNorth);
    state.MinePos(1, 0) = -7;
    state.MinePicture(1, 0).Visible = false;
    AmbushEnemyVehicle(state, 1, 7);
    EXPECT_EQ(state.MinePos(1, 0), -7);
    EXPECT_FALSE(state.MinePicture(1, 0).Visible);
}

TEST(AmbushEnemy, AGeniesOwnMineGoesBackToItsCamp)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 9, 72, kNorth);
    state.VehicleTag(1, 9) = "genie_1_0_1_n";
    state.MinePos(1, 2) = -9;
    state.MinePicture(1, 2).Visible = false;
    AmbushEnemyVehicle(state, 1, 9);
    EXPECT_EQ(state.MinePos(1, 2), kCamp1);
    EXPECT_TRUE(state.MinePicture(1, 2).Visible);
}

TEST(AmbushEnemy, AGeniesEnemyMineIsLookedForInTheGeniesOwnList)
{
    // A genie of army 2 took up a mine of army 1: army 1's list holds 5 - 8.
    BoardState state = NewGame();
    PutOnRoad(state, 2, 8, 99, kSouth);
    state.VehicleTag(2, 8) = "genie_2_0_2_z";
    state.MinePos(1, 4) = 5 - 8;
    state.MinePicture(1, 4).Visible = false;
    BoardState expected = state;
    AmbushEnemyVehicle(state, 2, 8);
    EXPECT_EQ(state.MinePos(1, 4), -3) << "the carried mine of the other army is not returned";
    EXPECT_FALSE(state.MinePicture(1, 4).Visible);
    EXPECT_EQ(state.minePos, expected.minePos);
    EXPECT_EQ(state.minePicture, expected.minePicture);

    // An entry of 5 - slot in the genie's own list is the one that goes back.
    BoardState own = NewGame();
    PutOnRoad(own, 2, 8, 99, kSouth);
    own.VehicleTag(2, 8) = "genie_2_0_2_z";
    own.MinePos(2, 0) = 5 - 8;
    own.MinePicture(2, 0).Visible = false;
    AmbushEnemyVehicle(own, 2, 8);
    EXPECT_EQ(own.MinePos(2, 0), kCamp2);
    EXPECT_TRUE(own.MinePicture(2, 0).Visible);
}

// --- Hinderlaag on the copy of the vehicle's owner --------------------------------

TEST(AmbushOwn, ThePictureGoesIntoStock)
{
    for (int side = 1; side <= 2; ++side)
        for (int slot = 0; slot < kJeepSlot; ++slot) {
            BoardState state = NewGame();
            PutOnRoad(state, side, slot, 75, kEast);
            Load(state, side, slot, 2);
            AmbushOwnVehicle(state, side, slot);
            EXPECT_EQ(BoxOf(state.VehiclePicture(side, slot)), (PlacedBox{120, 360 + 480 * slot, 750, 330}));
            EXPECT_TRUE(state.VehiclePicture(side, slot).InStock);
            EXPECT_EQ(state.VehicleTag(side, slot), DestroyedTag(side, slot));
            EXPECT_EQ(state.ReserveCompanies(side), 12);
            EXPECT_EQ(state.VehicleCompanies(side, slot), 0);
            EXPECT_EQ(state.VehiclePos(side, slot), kOutOfGame);
            EXPECT_EQ(state.BoardCell(75), 0);
        }
}

TEST(AmbushOwn, TagsWithTheOwnSide)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 3, 75, kNorth);
    AmbushOwnVehicle(state, 1, 3);
    EXPECT_EQ(state.VehicleTag(1, 3), "infanterie_1_0_0_o");
    PutOnRoad(state, 2, 1, 96, kNorth);
    AmbushOwnVehicle(state, 2, 1);
    EXPECT_EQ(state.VehicleTag(2, 1), "kanon_2_0_o");
}

TEST(AmbushOwn, TheJeepTakesItsDestroyedTag)
{
    for (int side = 1; side <= 2; ++side) {
        BoardState state = NewGame();
        PutOnRoad(state, side, kJeepSlot, 72, kNorth);
        state.VehicleCompanies(side, kJeepSlot) = 2;
        state.VehicleTag(side, kJeepSlot) = MakeVehicleTag(kJeepSlot, side, 2, 0, kNorth);
        AmbushOwnVehicle(state, side, kJeepSlot);
        EXPECT_EQ(state.VehicleTag(side, kJeepSlot), "jeep_" + std::to_string(side) + "_0_o");
        EXPECT_EQ(BoxOf(state.VehiclePicture(side, kJeepSlot)), (PlacedBox{120, 360 + 4800, 750, 330}));
        EXPECT_TRUE(state.VehiclePicture(side, kJeepSlot).InStock);
        EXPECT_EQ(state.ReserveCompanies(side), 12);
        EXPECT_EQ(state.VehiclePos(side, kJeepSlot), kOutOfGame);
    }
}

TEST(AmbushOwn, AFlagCarriedGoesBackHereToo)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 5, 74, kEast);
    state.VehicleTag(1, 5) = "infanterie_1_3_1_o";
    state.VehicleCompanies(1, 5) = 3;
    state.CampCompanies(1) = 12;
    state.FlagReserve(1) = 3;
    state.FlagCarried(1) = 2;
    AmbushOwnVehicle(state, 1, 5);
    EXPECT_EQ(state.FlagReserve(1), 4);
    EXPECT_EQ(state.FlagCarried(1), 1);
    EXPECT_EQ(state.ReserveCompanies(1), 13);
}

// --- Hinderlaag on the jeep, destroyed on the player's copy -----------------------

TEST(AmbushJeep, DestroyedWithTheTagOfThePlayersCopy)
{
    const char* const tags[2] = {"jeep_1_0_w", "jeep_2_0_o"};
    for (int enemy = 1; enemy <= 2; ++enemy) {
        BoardState state = NewGame();
        PutOnRoad(state, enemy, kJeepSlot, 86, kEast);
        state.VehicleCompanies(enemy, kJeepSlot) = 3;
        state.VehicleTag(enemy, kJeepSlot) = MakeVehicleTag(kJeepSlot, enemy, 3, 0, kEast);
        AmbushEnemyJeep(state, enemy);
        EXPECT_EQ(state.VehicleTag(enemy, kJeepSlot), tags[enemy - 1]);
        EXPECT_EQ(BoxOf(state.VehiclePicture(enemy, kJeepSlot)), (PlacedBox{120, 1095 + 4800, 750, 330}));
        EXPECT_FALSE(state.VehiclePicture(enemy, kJeepSlot).InStock);
        EXPECT_EQ(state.ReserveCompanies(enemy), 13);
        EXPECT_EQ(state.VehicleCompanies(enemy, kJeepSlot), 0);
        EXPECT_EQ(state.BoardCell(86), 0);
        EXPECT_EQ(state.VehiclePos(enemy, kJeepSlot), kOutOfGame);
    }
}

// --- Militaire Politie -----------------------------------------------------------

// A jeep with three escaped prisoners on the road.
BoardState JeepOnTheRoad(int side, int field)
{
    BoardState state = NewGame();
    PutOnRoad(state, side, kJeepSlot, field, kNorth);
    state.VehicleCompanies(side, kJeepSlot) = 3;
    state.VehicleTag(side, kJeepSlot) = MakeVehicleTag(kJeepSlot, side, 3, 0, kNorth);
    return state;
}

TEST(MilitaryPolice, TheTwoCopiesPartOnlyInTheJeepsTag)
{
    const char* const playersTag[2] = {"jeep_1_0_w", "jeep_2_0_o"};
    const char* const ownersTag[2] = {"jeep_1_0_o", "jeep_2_0_w"};
    for (int side = 1; side <= 2; ++side) {
        BoardState player = JeepOnTheRoad(side, 80);
        BoardState owner = player;
        MilitaryPoliceOnEnemyJeep(player, side);
        MilitaryPoliceOnOwnJeep(owner, side);
        EXPECT_EQ(player.VehicleTag(side, kJeepSlot), playersTag[side - 1]);
        EXPECT_EQ(owner.VehicleTag(side, kJeepSlot), ownersTag[side - 1]);
        owner.VehicleTag(side, kJeepSlot) = player.VehicleTag(side, kJeepSlot);
        EXPECT_EQ(owner, player) << "all else is the same on both copies";
    }
}

TEST(MilitaryPolice, TheJeepOnTheRoadGoesBackToPrison)
{
    for (int side = 1; side <= 2; ++side) {
        BoardState state = JeepOnTheRoad(side, 80);
        MilitaryPoliceOnEnemyJeep(state, side);
        EXPECT_EQ(state.BoardCell(80), 0);
        EXPECT_EQ(state.VehiclePos(side, kJeepSlot), IslandField(side));
        EXPECT_EQ(state.PrisonCompanies(side), 3);
        EXPECT_EQ(state.VehicleCompanies(side, kJeepSlot), 0);
        EXPECT_EQ(BoxOf(state.VehiclePicture(side, kJeepSlot)), IslandBox(ViewOf(state), side));
        EXPECT_TRUE(state.VehiclePicture(side, kJeepSlot).Visible);
    }
}

TEST(MilitaryPolice, OnTheOwnersCopyInTheTurnedView)
{
    BoardState state = JeepOnTheRoad(2, 100);
    state.LocalSide = 2;
    ToggleBoardSide(state);
    MilitaryPoliceOnOwnJeep(state, 2);
    EXPECT_EQ(state.VehiclePos(2, kJeepSlot), kIsland2);
    EXPECT_EQ(BoxOf(state.VehiclePicture(2, kJeepSlot)), IslandBox(ViewOf(state), 2));
    EXPECT_NE(IslandBox(ViewOf(state), 2), IslandBox(BoardView{1, state.BoardWidth, state.BoardHeight}, 2));
}

TEST(MilitaryPolice, AJeepOnItsIslandIsSetThereAgainEmpty)
{
    BoardState state = NewGame();
    state.PrisonCompanies(1) = 1;
    state.VehicleCompanies(1, kJeepSlot) = 2; // prisoners aboard, not yet out
    state.VehicleTag(1, kJeepSlot) = "jeep_1_2_w";
    state.VehiclePicture(1, kJeepSlot).Visible = false;
    MilitaryPoliceOnOwnJeep(state, 1);
    EXPECT_EQ(state.VehiclePos(1, kJeepSlot), kIsland1);
    EXPECT_EQ(state.VehicleCompanies(1, kJeepSlot), 0);
    EXPECT_EQ(state.PrisonCompanies(1), 3);
    EXPECT_EQ(state.VehicleTag(1, kJeepSlot), "jeep_1_0_o");
    EXPECT_EQ(BoxOf(state.VehiclePicture(1, kJeepSlot)), IslandBox(ViewOf(state), 1));
    EXPECT_TRUE(state.VehiclePicture(1, kJeepSlot).Visible);
}

TEST(MilitaryPolice, ADestroyedJeepIsBroughtBackToo)
{
    BoardState state = JeepOnTheRoad(2, 90);
    AmbushEnemyJeep(state, 2);
    ASSERT_EQ(state.VehiclePos(2, kJeepSlot), kOutOfGame);
    MilitaryPoliceOnEnemyJeep(state, 2);
    EXPECT_EQ(state.VehiclePos(2, kJeepSlot), kIsland2);
    EXPECT_EQ(state.VehicleTag(2, kJeepSlot), "jeep_2_0_o");
    EXPECT_EQ(BoxOf(state.VehiclePicture(2, kJeepSlot)), IslandBox(ViewOf(state), 2));
    EXPECT_EQ(state.PrisonCompanies(2), 0) << "the companies went to the reserve when it was destroyed";
}

// --- Mijnopruimingsdienst ----------------------------------------------------------

TEST(MineClearance, APlayerOfArmy1TakesTheMineOfArmy2)
{
    BoardState state = NewGame();
    LayMine(state, 2, 3, 90);
    const BoardState before = state;
    ASSERT_TRUE(ClearEnemyMine(state, 1, 90));
    EXPECT_EQ(state.MinePos(2, 3), kCamp1);
    EXPECT_EQ(state.BoardCell(90), 0);
    EXPECT_TRUE(state.CapturedMinePicture(1, 3).Visible);
    const Picture& mine = state.MinePicture(2, 3);
    EXPECT_FALSE(mine.Visible);
    EXPECT_EQ(mine.Image, "mijn_2_top.gif");
    EXPECT_EQ(BoxOf(mine), StoredMineBoxOnReturn(ViewOf(state), 2, 3));
    EXPECT_EQ(mine.Width, 205);
    EXPECT_EQ(mine.Height, 330);
    for (int other : {0, 1, 2, 4})
        EXPECT_EQ(state.MinePos(2, other), before.MinePos(2, other)) << other;
    EXPECT_EQ(state.minePos[3][0], before.minePos[3][0]) << "army 1's own mines stay";
}

TEST(MineClearance, APlayerOfArmy2TakesTheMineOfArmy1)
{
    BoardState state = NewGame();
    LayMine(state, 1, 0, 30);
    ASSERT_TRUE(ClearEnemyMine(state, 2, 30));
    EXPECT_EQ(state.MinePos(1, 0), kCamp2);
    EXPECT_EQ(state.BoardCell(30), 0);
    EXPECT_TRUE(state.CapturedMinePicture(2, 0).Visible);
    EXPECT_FALSE(state.MinePicture(1, 0).Visible);
    EXPECT_EQ(state.MinePicture(1, 0).Image, "mijn_1_top.gif");
    EXPECT_EQ(BoxOf(state.MinePicture(1, 0)), StoredMineBoxOnReturn(ViewOf(state), 1, 0));
}

TEST(MineClearance, TheOwnersCopyLooksInTheOtherListAndFindsNothing)
{
    // The same board on the copy of army 2, whose mine the player took.
    BoardState state = NewGame();
    state.LocalSide = 2;
    ToggleBoardSide(state);
    LayMine(state, 2, 3, 90);
    const BoardState before = state;
    EXPECT_FALSE(ClearMineOnOwnersCopy(state, 2, 90));
    EXPECT_EQ(state, before);
    EXPECT_EQ(state.BoardCell(90), -kMineCell) << "the mine stays on this copy";
}

TEST(MineClearance, TheOwnersCopyWouldTakeAMineOfThePlayersList)
{
    // Should army 1's list name the field, that mine goes to army 1's camp.
    BoardState state = NewGame();
    state.MinePos(1, 2) = 90;
    state.BoardCell(90) = kMineCell;
    ASSERT_TRUE(ClearMineOnOwnersCopy(state, 2, 90));
    EXPECT_EQ(state.MinePos(1, 2), kCamp1);
    EXPECT_EQ(state.BoardCell(90), 0);
    EXPECT_TRUE(state.CapturedMinePicture(1, 2).Visible);
    EXPECT_FALSE(state.MinePicture(1, 2).Visible);
    EXPECT_EQ(state.MinePicture(1, 2).Image, "mijn_1_top.gif");
}

TEST(MineClearance, AFieldWithoutAMineOrMinusOneChangesNothing)
{
    BoardState state = NewGame();
    LayMine(state, 2, 0, 90);
    LayMine(state, 1, 0, 30);
    const BoardState before = state;
    for (int field : {-1, 50}) {
        EXPECT_NO_THROW(EXPECT_FALSE(ClearEnemyMine(state, 1, field))) << field;
        EXPECT_NO_THROW(EXPECT_FALSE(ClearMineOnOwnersCopy(state, 1, field))) << field;
        EXPECT_NO_THROW(EXPECT_FALSE(ClearMineOnOwnersCopy(state, 2, field))) << field;
        EXPECT_EQ(state, before) << field;
    }
}

// --- The moving cards ---------------------------------------------------------------

// A tank of army 1 in the harbour 11, with two companies aboard.
BoardState TankInHarbour()
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 0, 11, kEast);
    Load(state, 1, 0, 2);
    return state;
}

TEST(MoveByPersonnel, ToAFreeCoastRoadWithTheStandingHeading)
{
    for (const int heading : {kNorth, kSouth}) {
        BoardState state = TankInHarbour();
        state.Verdict.Heading = heading; // left from the last judged move
        MoveByPersonnel(state, 1, 0, 12);
        EXPECT_EQ(state.VehiclePos(1, 0), 12);
        EXPECT_EQ(state.BoardCell(11), 0);
        EXPECT_EQ(state.BoardCell(12), 1);
        EXPECT_EQ(state.VehicleDir(1, 0), heading);
        EXPECT_EQ(state.VehicleTag(1, 0), "tank_1_2_" + HeadingLetter(heading));
        EXPECT_EQ(BoxOf(state.VehiclePicture(1, 0)), VehicleOnFieldBox(ViewOf(state), 12, heading));
        EXPECT_EQ(state.VehicleCompanies(1, 0), 2);
    }
}

TEST(MoveByPersonnel, ToTheHQ)
{
    BoardState state = TankInHarbour();
    state.Verdict.Heading = kSouth;
    MoveByPersonnel(state, 1, 0, kHQ1);
    EXPECT_EQ(state.VehiclePos(1, 0), kHQ1);
    EXPECT_EQ(state.BoardCell(11), 0);
    EXPECT_EQ(state.HQCount(1), 1);
    EXPECT_FALSE(state.HQPlaceFree(1, 0));
    EXPECT_EQ(state.VehicleDir(1, 0), kEast);
    EXPECT_EQ(state.VehicleTag(1, 0), "tank_1_2_o");
    EXPECT_EQ(BoxOf(state.VehiclePicture(1, 0)), HQPlaceBox(ViewOf(state), 1, 0));
}

TEST(MoveByPersonnel, ArmyTwoFromHarbour58ToItsHQ)
{
    BoardState state = NewGame();
    PutOnRoad(state, 2, 4, 58, kEast);
    state.Verdict.Heading = kNorth;
    MoveByPersonnel(state, 2, 4, kHQ2);
    EXPECT_EQ(state.VehiclePos(2, 4), kHQ2);
    EXPECT_EQ(state.BoardCell(58), 0);
    EXPECT_EQ(state.HQCount(2), 1);
    EXPECT_EQ(state.VehicleDir(2, 4), kWest);
    EXPECT_EQ(state.VehicleTag(2, 4), "infanterie_2_0_0_w");
}

TEST(MoveByPersonnel, AStandingMinePickupIsCarriedOut)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 8, 11, kEast);
    LayMine(state, 2, 1, 10);
    state.Verdict.Heading = kWest;
    state.Verdict.MinePickup = true;
    MoveByPersonnel(state, 1, 8, 10);
    EXPECT_EQ(state.MinePos(2, 1), 5 - 8);
    EXPECT_EQ(state.VehicleTag(1, 8), "genie_1_0_2_w");
    EXPECT_EQ(state.BoardCell(10), 9);
}

} // namespace
} // namespace vk
