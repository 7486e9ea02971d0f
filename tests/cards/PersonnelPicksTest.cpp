// Which vehicles and fields the Personnel cards accept as their picks: the
// camps, islands and HQs, the coast roads with the two flag fields, the
// ground behind the forward posts, the airports, harbours and strategic
// points, and the mines a genie may land on.

#include "board/BoardState.h"
#include "board/BoardTables.h"
#include "board/VehicleTag.h"
#include "cards/PersonnelPicks.h"

#include "BoardSetup.h"

#include <gtest/gtest.h>

#include <set>

namespace vk {
namespace {

using namespace test;

// Puts a vehicle on a field; on a road square its cell follows.
void Place(BoardState& state, int side, int slot, int field)
{
    int& pos = state.VehiclePos(side, slot);
    if (IsRoadField(pos))
        state.BoardCell(pos) = 0;
    pos = field;
    if (IsRoadField(field))
        state.BoardCell(field) = (side == 1 ? 1 : -1) * (slot + 1);
}

void LayMine(BoardState& state, int side, int mine, int field)
{
    state.MinePos(side, mine) = field;
    state.BoardCell(field) = (side == 1 ? 1 : -1) * kMineCell;
}

bool IsCoast(int field)
{
    return field == 1 || (field >= 3 && field <= 18) || (field >= 52 && field <= 68) || field == 70;
}

// --- Camouflage ---------------------------------------------------------------

TEST(CamouflagePick, RefusesBothCampsAndBothPrisonIslands)
{
    for (int side = 1; side <= 2; ++side)
        for (int field : {kCamp1, kIsland1, kCamp2, kIsland2}) {
            BoardState state = NewGame();
            Place(state, side, 0, field);
            EXPECT_FALSE(CamouflageVehicleAllowed(state, side, 0)) << side << " at " << field;
        }
}

TEST(CamouflagePick, AcceptsTheHQsAndEveryRoadSquare)
{
    for (int side = 1; side <= 2; ++side) {
        for (int field : {kHQ1, kHQ2}) {
            BoardState state = NewGame();
            Place(state, side, 3, field);
            EXPECT_TRUE(CamouflageVehicleAllowed(state, side, 3)) << side << " at " << field;
        }
        for (int field = kFirstRoadField; field <= kLastRoadField; ++field) {
            BoardState state = NewGame();
            Place(state, side, 3, field);
            EXPECT_TRUE(CamouflageVehicleAllowed(state, side, 3)) << side << " at " << field;
        }
    }
}

TEST(CamouflagePick, TheJeepOnTheRoadIsAcceptedButNotOnItsIsland)
{
    BoardState state = NewGame();
    EXPECT_FALSE(CamouflageVehicleAllowed(state, 1, kJeepSlot)) << "the jeep starts on its island";
    EXPECT_FALSE(CamouflageVehicleAllowed(state, 2, kJeepSlot));
    Place(state, 1, kJeepSlot, 72);
    Place(state, 2, kJeepSlot, 100);
    EXPECT_TRUE(CamouflageVehicleAllowed(state, 1, kJeepSlot));
    EXPECT_TRUE(CamouflageVehicleAllowed(state, 2, kJeepSlot));
}

// --- Harbours -----------------------------------------------------------------

TEST(HarbourPick, OnlyFields11And58)
{
    for (int field = 1; field <= kLastField; ++field) {
        BoardState state = NewGame();
        Place(state, 2, 1, field);
        EXPECT_EQ(VehicleInHarbour(state, 2, 1), field == 11 || field == 58) << field;
    }
}

// --- Landingsvaartuigen ---------------------------------------------------------

TEST(LandingPick, FreeCoastRoadsWithEachFlagFieldForOneSideOnly)
{
    const BoardState state = NewGame();
    for (int side = 1; side <= 2; ++side)
        for (int field = kFirstRoadField; field <= kLastRoadField; ++field) {
            const bool expected = IsCoast(field) || (field == 2 && side == 2) || (field == 69 && side == 1);
            EXPECT_EQ(LandingFieldAllowed(state, side, 0, field), expected) << side << " on " << field;
        }
}

TEST(LandingPick, AnOccupiedCoastRoadIsRefused)
{
    BoardState state = NewGame();
    Place(state, 1, 4, 5);
    Place(state, 2, 4, 60);
    Place(state, 1, 5, 69);
    Place(state, 2, 5, 2);
    for (int field : {5, 60})
        for (int side = 1; side <= 2; ++side)
            EXPECT_FALSE(LandingFieldAllowed(state, side, 0, field)) << side << " on " << field;
    EXPECT_FALSE(LandingFieldAllowed(state, 1, 0, 69));
    EXPECT_FALSE(LandingFieldAllowed(state, 2, 0, 2));
}

TEST(LandingPick, OnlyAGenieWithoutAMineMayLandOnOne)
{
    BoardState state = NewGame();
    LayMine(state, 2, 0, 7);  // the enemy's
    LayMine(state, 1, 0, 57); // an own one
    for (int field : {7, 57}) {
        EXPECT_TRUE(LandingFieldAllowed(state, 1, 8, field)) << field;
        EXPECT_TRUE(LandingFieldAllowed(state, 1, 9, field)) << field;
        EXPECT_FALSE(LandingFieldAllowed(state, 1, 0, field)) << "a tank, " << field;
        EXPECT_FALSE(LandingFieldAllowed(state, 1, 6, field)) << "a commando, " << field;
        EXPECT_FALSE(LandingFieldAllowed(state, 1, kJeepSlot, field)) << "the jeep, " << field;
    }
    state.VehicleTag(1, 8) = "genie_1_0_1_o";
    state.VehicleTag(1, 9) = "genie_1_0_2_o";
    EXPECT_FALSE(LandingFieldAllowed(state, 1, 8, 7)) << "a genie carrying its own mine";
    EXPECT_FALSE(LandingFieldAllowed(state, 1, 9, 7)) << "a genie carrying an enemy mine";
}

TEST(LandingPick, AMineOffTheCoastOrOnAFlagFieldIsRefusedEvenForAGenie)
{
    BoardState state = NewGame();
    LayMine(state, 1, 0, 19);
    LayMine(state, 2, 0, 2);
    LayMine(state, 1, 1, 69);
    EXPECT_FALSE(LandingFieldAllowed(state, 1, 8, 19));
    EXPECT_FALSE(LandingFieldAllowed(state, 2, 8, 2)) << "field 2 must be free";
    EXPECT_FALSE(LandingFieldAllowed(state, 1, 8, 69)) << "field 69 must be free";
}

TEST(LandingPick, TheGeniesTagDecidesAndNotTheSideOfTheMine)
{
    BoardState state = NewGame();
    LayMine(state, 1, 0, 64);
    EXPECT_TRUE(LandingFieldAllowed(state, 2, 9, 64));
    state.VehicleTag(2, 9) = "genie_2_1_1_o";
    EXPECT_FALSE(LandingFieldAllowed(state, 2, 9, 64));
}

// --- Hinderlaag -----------------------------------------------------------------

// The squares behind the enemy's forward posts, by the side of the player.
std::set<int> AmbushFields(int playerSide)
{
    if (playerSide == 1)
        return {80, 81, 82, 93, 95, 96, 97, 98, 99, 100, 102, 104, 105, 106, 107, 108, 109};
    return {71, 72, 73, 74, 75, 76, 78, 83, 84, 85, 86, 87, 88, 90, 110, 111, 112};
}

TEST(AmbushPick, AnEnemyVehicleBehindHisForwardPostsOnly)
{
    for (int side = 1; side <= 2; ++side) {
        const int enemy = OtherSide(side);
        const std::set<int> behind = AmbushFields(side);
        for (int field = 0; field <= kLastField; ++field) {
            BoardState state = NewGame();
            Place(state, enemy, 2, field);
            EXPECT_EQ(AmbushTargetAllowed(state, side, 2), behind.count(field) == 1) << side << ": " << field;
        }
    }
}

TEST(AmbushPick, TheEnemysJeepBehindThePostsIsATarget)
{
    BoardState state = NewGame();
    EXPECT_FALSE(AmbushTargetAllowed(state, 2, kJeepSlot)) << "on its island";
    Place(state, 1, kJeepSlot, 84);
    EXPECT_TRUE(AmbushTargetAllowed(state, 2, kJeepSlot));
}

TEST(AmbushPick, ThePlayersOwnVehicleThereIsNoTarget)
{
    BoardState state = NewGame();
    Place(state, 1, 0, 96); // the player's own tank among the enemy's squares
    EXPECT_FALSE(AmbushTargetAllowed(state, 1, 0)) << "the enemy's tank is still in camp";
    Place(state, 2, 0, 97);
    EXPECT_TRUE(AmbushTargetAllowed(state, 1, 0));
}

// --- Helikopter -----------------------------------------------------------------

TEST(HelicopterPick, AnyOwnVehicleButOneInItsCamp)
{
    for (int side = 1; side <= 2; ++side) {
        BoardState state = NewGame();
        EXPECT_FALSE(HelicopterVehicleAllowed(state, side, 0)) << side;
        EXPECT_TRUE(HelicopterVehicleAllowed(state, side, kJeepSlot)) << "the jeep on its island, " << side;
        Place(state, side, 0, HQField(side));
        EXPECT_TRUE(HelicopterVehicleAllowed(state, side, 0)) << side;
        Place(state, side, 0, 40);
        EXPECT_TRUE(HelicopterVehicleAllowed(state, side, 0)) << side;
    }
}

TEST(HelicopterPick, OnlyAVehicleOnItsHQWaitsForAField)
{
    for (int side = 1; side <= 2; ++side) {
        BoardState state = NewGame();
        Place(state, side, 1, HQField(side));
        EXPECT_TRUE(HelicopterNeedsField(state, side, 1)) << side;
        Place(state, side, 1, 40);
        EXPECT_FALSE(HelicopterNeedsField(state, side, 1)) << side;
        EXPECT_FALSE(HelicopterNeedsField(state, side, kJeepSlot)) << "the jeep on its island, " << side;
    }
}

// --- Luchtlandingstroepen ---------------------------------------------------------

TEST(AirportPick, OnlyTheFourAirports)
{
    for (int field = 1; field <= kLastField; ++field) {
        BoardState state = NewGame();
        Place(state, 1, 4, field);
        const bool airport = field == 17 || field == 23 || field == 47 || field == 53;
        EXPECT_EQ(VehicleOnAirport(state, 1, 4), airport) << field;
    }
}

TEST(AirdropPick, EveryFreeRoadSquareButTheOtherSidesFlagField)
{
    const BoardState state = NewGame();
    for (int side = 1; side <= 2; ++side)
        for (int field = kFirstRoadField; field <= kLastRoadField; ++field) {
            const bool expected = field != EnemyFlagField(side);
            EXPECT_EQ(AirdropFieldAllowed(state, side, 0, field), expected) << side << " on " << field;
        }
}

TEST(AirdropPick, OccupiedSquaresAndFlagFieldsAreRefused)
{
    BoardState state = NewGame();
    Place(state, 2, 0, 40);
    Place(state, 1, 1, 41);
    Place(state, 1, 2, 69);
    Place(state, 2, 2, 2);
    EXPECT_FALSE(AirdropFieldAllowed(state, 1, 0, 40));
    EXPECT_FALSE(AirdropFieldAllowed(state, 1, 0, 41));
    EXPECT_FALSE(AirdropFieldAllowed(state, 1, 0, 69));
    EXPECT_FALSE(AirdropFieldAllowed(state, 2, 0, 2));
}

TEST(AirdropPick, EachCampOnlyForItsOwnSide)
{
    const BoardState state = NewGame();
    EXPECT_TRUE(AirdropFieldAllowed(state, 1, 0, kCamp1));
    EXPECT_FALSE(AirdropFieldAllowed(state, 2, 0, kCamp1));
    EXPECT_TRUE(AirdropFieldAllowed(state, 2, 0, kCamp2));
    EXPECT_FALSE(AirdropFieldAllowed(state, 1, 0, kCamp2));
}

TEST(AirdropPick, EachHQForItsOwnSideWhileItHasRoom)
{
    BoardState state = NewGame();
    for (int side = 1; side <= 2; ++side) {
        const int other = HQField(OtherSide(side));
        EXPECT_TRUE(AirdropFieldAllowed(state, side, 0, HQField(side))) << side;
        EXPECT_FALSE(AirdropFieldAllowed(state, side, 0, other)) << side;
        state.HQCount(side) = 2;
        EXPECT_TRUE(AirdropFieldAllowed(state, side, 0, HQField(side))) << side;
        state.HQCount(side) = kHQPlaces;
        EXPECT_FALSE(AirdropFieldAllowed(state, side, 0, HQField(side))) << "a full HQ, " << side;
    }
}

TEST(AirdropPick, EachPrisonIslandOnlyForItsOwnJeep)
{
    const BoardState state = NewGame();
    for (int side = 1; side <= 2; ++side) {
        EXPECT_TRUE(AirdropFieldAllowed(state, side, kJeepSlot, IslandField(side))) << side;
        EXPECT_FALSE(AirdropFieldAllowed(state, OtherSide(side), kJeepSlot, IslandField(side))) << side;
        for (int slot = 0; slot < kJeepSlot; ++slot)
            EXPECT_FALSE(AirdropFieldAllowed(state, side, slot, IslandField(side))) << side << " slot " << slot;
    }
}

TEST(AirdropPick, AGenieWithoutAMineMayBeDroppedOnOne)
{
    BoardState state = NewGame();
    LayMine(state, 2, 0, 40);
    EXPECT_TRUE(AirdropFieldAllowed(state, 1, 8, 40));
    EXPECT_TRUE(AirdropFieldAllowed(state, 1, 9, 40));
    EXPECT_FALSE(AirdropFieldAllowed(state, 1, 3, 40)) << "infantry";
    EXPECT_FALSE(AirdropFieldAllowed(state, 1, 7, 40)) << "a commando";
    state.VehicleTag(1, 8) = "genie_1_0_2_o";
    EXPECT_FALSE(AirdropFieldAllowed(state, 1, 8, 40)) << "a genie already carrying a mine";
}

// --- Mijnopruimingsdienst ---------------------------------------------------------

TEST(MineClearancePick, OnlyAMineOfTheEnemy)
{
    BoardState state = NewGame();
    LayMine(state, 1, 0, 30);
    LayMine(state, 2, 0, 90);
    Place(state, 2, 0, 91);
    EXPECT_TRUE(EnemyMineField(state, 1, 90));
    EXPECT_FALSE(EnemyMineField(state, 1, 30)) << "the own mine";
    EXPECT_TRUE(EnemyMineField(state, 2, 30));
    EXPECT_FALSE(EnemyMineField(state, 2, 90)) << "the own mine";
    for (int side = 1; side <= 2; ++side) {
        EXPECT_FALSE(EnemyMineField(state, side, 91)) << "a vehicle";
        EXPECT_FALSE(EnemyMineField(state, side, 50)) << "an empty square";
    }
}

TEST(MineClearancePick, AClickOffTheRoadsIsRefused)
{
    const BoardState state = NewGame();
    for (int field : {0, kCamp1, kHQ2, kIsland2, kNoField})
        EXPECT_FALSE(EnemyMineField(state, 1, field)) << field;
}

// --- Marine luchtvaartdienst and Verbindingsdienst -------------------------------

TEST(NavalAirPick, AFreeHarbourOrAirport)
{
    const std::set<int> targets{11, 17, 23, 47, 53, 58};
    BoardState state = NewGame();
    for (int field = kFirstRoadField; field <= kLastRoadField; ++field)
        EXPECT_EQ(NavalAirFieldAllowed(state, field), targets.count(field) == 1) << field;
    Place(state, 1, 0, 23);
    LayMine(state, 2, 0, 58);
    EXPECT_FALSE(NavalAirFieldAllowed(state, 23)) << "a vehicle on it";
    EXPECT_FALSE(NavalAirFieldAllowed(state, 58)) << "a mine on it";
    EXPECT_TRUE(NavalAirFieldAllowed(state, 17));
}

TEST(SignalsPick, AVehicleInItsOwnCamp)
{
    BoardState state = NewGame();
    EXPECT_TRUE(VehicleInOwnCamp(state, 1, 0));
    EXPECT_TRUE(VehicleInOwnCamp(state, 2, 0));
    EXPECT_FALSE(VehicleInOwnCamp(state, 1, kJeepSlot)) << "on its island";
    Place(state, 1, 0, kHQ1);
    Place(state, 2, 0, 40);
    EXPECT_FALSE(VehicleInOwnCamp(state, 1, 0)) << "the HQ, whatever the prompt says";
    EXPECT_FALSE(VehicleInOwnCamp(state, 2, 0));
}

TEST(SignalsPick, AFreeStrategicPoint)
{
    const std::set<int> points{8, 11, 17, 23, 28, 32, 37, 41, 47, 53, 58, 63};
    BoardState state = NewGame();
    for (int field = kFirstRoadField; field <= kLastRoadField; ++field)
        EXPECT_EQ(StrategicPointAllowed(state, field), points.count(field) == 1) << field;
    Place(state, 2, 3, 37);
    LayMine(state, 1, 0, 8);
    EXPECT_FALSE(StrategicPointAllowed(state, 37));
    EXPECT_FALSE(StrategicPointAllowed(state, 8));
}

TEST(PickWayOut, AClickOffTheRoadSquaresEndsThePick)
{
    for (int field = kFirstRoadField; field <= kLastRoadField; ++field)
        EXPECT_FALSE(EndsPersonnelPick(field)) << field;
    for (int field = kCamp1; field <= kNoField; ++field)
        EXPECT_TRUE(EndsPersonnelPick(field)) << field;
}

TEST(PersonnelValues, CardAndMessageValue)
{
    EXPECT_EQ(PersonnelValue(kCamouflage), 1);
    EXPECT_EQ(PersonnelValue(kVerbindingsdienst), 12);
    EXPECT_EQ(PersonnelCardOf(10), kMijnopruimingsdienst);
    EXPECT_EQ(PersonnelCardOf(PersonnelValue(kHelikopter)), kHelikopter);
}

} // namespace
} // namespace vk
