// What the Radio Yambo cards do to the board and the armies, on the copy of
// the player who drew the card and on his opponent's copy.

#include "board/BoardState.h"
#include "board/BoardTables.h"
#include "board/BoardView.h"
#include "board/Movement.h"
#include "board/VehicleTag.h"
#include "cards/DeckMoves.h"
#include "cards/RadioYamboEffects.h"
#include "shell/RunTimeFault.h"

#include "BoardSetup.h"

#include <gtest/gtest.h>

namespace vk {
namespace {

using namespace test;

// The camp emptied into the reserve, the sum kept.
void EmptyCamp(BoardState& state, int side)
{
    state.ReserveCompanies(side) += state.CampCompanies(side);
    state.CampCompanies(side) = 0;
}

// A vehicle lost as a shot leaves it.
void MakeLost(BoardState& state, int side, int slot)
{
    const int pos = state.VehiclePos(side, slot);
    if (IsRoadField(pos))
        state.BoardCell(pos) = 0;
    state.VehiclePos(side, slot) = kOutOfGame;
    state.VehicleTag(side, slot) = DestroyedTag(side, slot);
    Picture& picture = state.VehiclePicture(side, slot);
    PutPicture(picture, DestroyedVehicleBox(state.BoardSide, side, slot));
    picture.InStock = side == state.LocalSide;
}

void SetMark(BoardState& state, int side, int slot, char mark)
{
    std::string& tag = state.VehicleTag(side, slot);
    tag[static_cast<std::size_t>(MarkPosition(slot) - 1)] = mark;
}

PlacedBox Beside(int slot, int top) { return PlacedBox{120, top + 480 * slot, 750, 330}; }

// --- LoseCompanies (cards 2, 8, 17) ------------------------------------------------

TEST(LoseCompanies, TheCampGoesFirst)
{
    for (int side = 1; side <= 2; ++side) {
        BoardState state = NewGame();
        PutOnRoad(state, side, 0, 40, kEast);
        Load(state, side, 0, 3);
        EXPECT_EQ(LoseCompanies(state, side, 2), 2);
        EXPECT_EQ(state.CampCompanies(side), 10);
        EXPECT_EQ(state.ReserveCompanies(side), 12);
        EXPECT_EQ(state.VehicleCompanies(side, 0), 3);
        EXPECT_EQ(state.CompanySum(side), kCompaniesPerArmy);
        EXPECT_EQ(state.CampCompanies(OtherSide(side)), 15);
    }
}

TEST(LoseCompanies, TheLastOfTheCampThenTheVehicles)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 0, 40, kEast);
    Load(state, 1, 0, 3);
    EmptyCamp(state, 1);
    state.CampCompanies(1) = 1;
    state.ReserveCompanies(1) -= 1;
    EXPECT_EQ(LoseCompanies(state, 1, 3), 3);
    EXPECT_EQ(state.CampCompanies(1), 0);
    EXPECT_EQ(state.VehicleCompanies(1, 0), 1);
    EXPECT_EQ(state.CompanySum(1), kCompaniesPerArmy);
}

// Cards 8 and 17 with an empty camp: a vehicle on the HQ gives first, then the
// road squares in field order.
TEST(LoseCompanies, EmptyCampTakesFromTheHQFirstThenTheBoard)
{
    for (int side = 1; side <= 2; ++side) {
        BoardState state = NewGame();
        const std::string n = std::to_string(side);
        Load(state, side, 0, 2);
        ASSERT_TRUE(SendCampVehicleToHQ(state, side, 0));
        PutOnRoad(state, side, 1, 40, kWest);
        Load(state, side, 1, 3);
        PutOnRoad(state, side, 8, 30, kEast);
        Load(state, side, 8, 2);
        EmptyCamp(state, side);
        const int reserve = state.ReserveCompanies(side);

        EXPECT_EQ(MilitaryAttack(state, side), 3) << side;
        EXPECT_EQ(state.VehicleCompanies(side, 0), 1) << side;
        EXPECT_EQ(state.VehicleCompanies(side, 8), 1) << side;  // field 30 comes before 40
        EXPECT_EQ(state.VehicleCompanies(side, 1), 2) << side;
        EXPECT_EQ(state.ReserveCompanies(side), reserve + 3);
        EXPECT_EQ(state.CompanySum(side), kCompaniesPerArmy);
        EXPECT_EQ(state.VehicleTag(side, 0), "tank_" + n + "_1_" + (side == 1 ? "o" : "w"));
        EXPECT_EQ(state.VehicleTag(side, 8), "genie_" + n + "_1_0_o");
    }
}

TEST(LoseCompanies, EachRoundStartsAtTheHQAgain)
{
    BoardState state = NewGame();
    Load(state, 1, 0, 1);
    ASSERT_TRUE(SendCampVehicleToHQ(state, 1, 0));
    Load(state, 1, 2, 2);
    ASSERT_TRUE(SendCampVehicleToHQ(state, 1, 2));
    PutOnRoad(state, 1, 6, 60, kEast);
    Load(state, 1, 6, 2);
    EmptyCamp(state, 1);
    // Round 1: tank, kanon 2 (HQ), commando (road); round 2: kanon 2 again.
    EXPECT_EQ(LoseCompanies(state, 1, 4), 4);
    EXPECT_EQ(state.VehicleCompanies(1, 0), 0);
    EXPECT_EQ(state.VehicleCompanies(1, 2), 0);
    EXPECT_EQ(state.VehicleCompanies(1, 6), 1);
}

TEST(LoseCompanies, RoundsGoOnUntilTheCountIsReached)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 0, 40, kEast);
    Load(state, 1, 0, 5);
    EmptyCamp(state, 1);
    EXPECT_EQ(LoseCompanies(state, 1, 3), 3);
    EXPECT_EQ(state.VehicleCompanies(1, 0), 2);
    EXPECT_EQ(state.VehicleTag(1, 0), "tank_1_2_o");
}

// The digit is written at 8 for slots 0..2 and at 9 for 3..5, 8, 9, with the
// rest of the old tag after it: a kanon's and an infantry tag come out garbled.
TEST(LoseCompanies, TheDigitPositionGarblesKanonAndInfantryTags)
{
    BoardState state = NewGame();
    PutOnRoad(state, 2, 1, 40, kWest);
    Load(state, 2, 1, 3);
    PutOnRoad(state, 2, 3, 50, kEast);
    Load(state, 2, 3, 3);
    PutOnRoad(state, 2, 6, 60, kWest);
    Load(state, 2, 6, 2);
    ASSERT_EQ(state.VehicleTag(2, 1), "kanon_2_3_w");
    ASSERT_EQ(state.VehicleTag(2, 3), "infanterie_2_3_0_o");
    ASSERT_EQ(state.VehicleTag(2, 6), "commando_2_2_0_w");
    EmptyCamp(state, 2);

    EXPECT_EQ(LoseCompanies(state, 2, 3), 3);
    EXPECT_EQ(state.VehicleCompanies(2, 1), 2);
    EXPECT_EQ(state.VehicleTag(2, 1), "kanon_223_w");
    EXPECT_EQ(state.VehicleCompanies(2, 3), 2);
    EXPECT_EQ(state.VehicleTag(2, 3), "infanter2e_2_3_0_o");
    EXPECT_EQ(state.VehicleCompanies(2, 6), 1);
    EXPECT_EQ(state.VehicleTag(2, 6), "commando_2_1_0_w");
}

TEST(LoseCompanies, StopsWhenPrisonAndReserveHoldAll)
{
    BoardState state = NewGame();
    EmptyCamp(state, 1);
    state.ReserveCompanies(1) = 20;
    state.PrisonCompanies(1) = 5;
    const BoardState before = state;
    EXPECT_EQ(LoseCompanies(state, 1, 3), 0);
    EXPECT_EQ(state, before);
}

TEST(LoseCompanies, StopsWhenAllThatIsLeftStandsOnTheJeep)
{
    BoardState state = NewGame();
    EmptyCamp(state, 1);
    state.ReserveCompanies(1) = 20;
    state.PrisonCompanies(1) = 2;
    PutOnRoad(state, 1, kJeepSlot, 80, kNorth);
    state.VehicleCompanies(1, kJeepSlot) = 3;
    state.VehicleTag(1, kJeepSlot) = "jeep_1_3_n";
    const BoardState before = state;
    EXPECT_EQ(LoseCompanies(state, 1, 2), 0);
    EXPECT_EQ(state, before);
}

TEST(LoseCompanies, TheJeepNeverGivesACompany)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, kJeepSlot, 80, kNorth);
    state.VehicleCompanies(1, kJeepSlot) = 2;
    state.PrisonCompanies(1) = 0;
    PutOnRoad(state, 1, 0, 40, kEast);
    Load(state, 1, 0, 1);
    EmptyCamp(state, 1);
    EXPECT_EQ(LoseCompanies(state, 1, 3), 1);
    EXPECT_EQ(state.VehicleCompanies(1, kJeepSlot), 2);
    EXPECT_EQ(state.VehicleCompanies(1, 0), 0);
}

// Companies aboard a vehicle in the camp are out of reach of every round.
TEST(LoseCompanies, CompaniesOutOfReachEndTheLoss)
{
    BoardState state = NewGame();
    Load(state, 1, 0, 3);
    EmptyCamp(state, 1);
    EXPECT_EQ(LoseCompanies(state, 1, 2), 0);
    EXPECT_EQ(state.VehicleCompanies(1, 0), 3);
}

TEST(LoseCompanies, AirRaidTakesTwo)
{
    BoardState state = NewGame();
    EXPECT_EQ(AirRaid(state, 2), 2);
    EXPECT_EQ(state.CampCompanies(2), 13);
    EXPECT_EQ(state.CampCompanies(1), 15);
}

TEST(LoseCompanies, RaisesForABadSide)
{
    BoardState state = NewGame();
    EXPECT_THROW(LoseCompanies(state, 0, 1), RunTimeFault);
    EXPECT_THROW(LoseCompanies(state, 3, 1), RunTimeFault);
}

// --- Reserve to camp, prisoners back -------------------------------------------------

TEST(ReserveToCamp, CardThreeMovesThreeOfFiveAndTwoOfTwo)
{
    for (int side = 1; side <= 2; ++side) {
        BoardState state = NewGame();
        state.ReserveCompanies(side) = 5;
        state.CampCompanies(side) = 20;
        EXPECT_EQ(ReserveToCampUpToThree(state, side), 3);
        EXPECT_EQ(state.ReserveCompanies(side), 2);
        EXPECT_EQ(state.CampCompanies(side), 23);
        EXPECT_EQ(ReserveToCampUpToThree(state, side), 2);
        EXPECT_EQ(state.ReserveCompanies(side), 0);
        EXPECT_EQ(state.CampCompanies(side), 25);
        EXPECT_EQ(ReserveToCampUpToThree(state, side), 0);
        EXPECT_EQ(state.CampCompanies(side), 25);
        EXPECT_EQ(state.ReserveCompanies(OtherSide(side)), 10);
    }
}

TEST(ReserveToCamp, CardThreeWithOneMovesOne)
{
    BoardState state = NewGame();
    state.ReserveCompanies(1) = 1;
    EXPECT_EQ(ReserveToCampUpToThree(state, 1), 1);
    EXPECT_EQ(state.ReserveCompanies(1), 0);
    EXPECT_EQ(state.CampCompanies(1), 16);
}

TEST(ReserveToCamp, CardsTenAndThirteenMoveTwoAtMost)
{
    BoardState state = NewGame();
    EXPECT_EQ(ReserveToCampUpToTwo(state, 2), 2);
    EXPECT_EQ(state.ReserveCompanies(2), 8);
    EXPECT_EQ(state.CampCompanies(2), 17);
    state.ReserveCompanies(2) = 1;
    EXPECT_EQ(ReserveToCampUpToTwo(state, 2), 1);
    EXPECT_EQ(state.ReserveCompanies(2), 0);
}

TEST(ReserveToCamp, AReserveBelowOneMovesNothing)
{
    BoardState state = NewGame();
    state.ReserveCompanies(1) = -1;
    EXPECT_EQ(ReserveToCampUpToThree(state, 1), 0);
    EXPECT_EQ(ReserveToCampUpToTwo(state, 1), 0);
    EXPECT_EQ(ReserveToCampOne(state, 1), 0);
    EXPECT_EQ(state.ReserveCompanies(1), -1);
    EXPECT_EQ(state.CampCompanies(1), 15);
}

TEST(ReserveToCamp, CardsTwelveAndEighteenMoveOne)
{
    BoardState state = NewGame();
    EXPECT_EQ(ReserveToCampOne(state, 1), 1);
    EXPECT_EQ(state.ReserveCompanies(1), 9);
    EXPECT_EQ(state.CampCompanies(1), 16);
    state.ReserveCompanies(1) = 0;
    EXPECT_EQ(ReserveToCampOne(state, 1), 0);
    EXPECT_EQ(state.CampCompanies(1), 16);
}

TEST(Mutiny, UpToTwoPrisonersComeBack)
{
    BoardState state = NewGame();
    EXPECT_EQ(PrisonersBackToCamp(state, 1), 0);
    EXPECT_EQ(state.CampCompanies(1), 15);
    state.PrisonCompanies(1) = 1;
    EXPECT_EQ(PrisonersBackToCamp(state, 1), 1);
    EXPECT_EQ(state.PrisonCompanies(1), 0);
    EXPECT_EQ(state.CampCompanies(1), 16);
    state.PrisonCompanies(2) = 5;
    EXPECT_EQ(PrisonersBackToCamp(state, 2), 2);
    EXPECT_EQ(state.PrisonCompanies(2), 3);
    EXPECT_EQ(state.CampCompanies(2), 17);
}

// --- Cards 1, 11, 19 -------------------------------------------------------------

TEST(FuelService, OnlyTheGivenArmyRunsDry)
{
    BoardState state = NewGame();
    UrgentFuelService(state, 2);
    EXPECT_EQ(state.Brandstof(2), 4);
    EXPECT_EQ(state.Brandstof(1), 0);
}

TEST(Tsetse, TheFirstVehicleInFieldOrderIsStung)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 2, 40, kEast);
    PutOnRoad(state, 1, 5, 20, kEast);
    PutOnRoad(state, 2, 0, 10, kWest);
    state.BoardCell(5) = kMineCell;
    EXPECT_EQ(TsetseSting(state, 1), 5);
    EXPECT_EQ(state.Tsetse(1), 4);
    EXPECT_EQ(state.TsetseVeh, 5);
    EXPECT_EQ(state.Tsetse(2), 0);

    EXPECT_EQ(TsetseSting(state, 2), 0);
    EXPECT_EQ(state.Tsetse(2), 4);
    EXPECT_EQ(state.TsetseVeh, 0);
}

TEST(Tsetse, OnlyTheJeepOutStingsNothing)
{
    for (int side = 1; side <= 2; ++side) {
        BoardState state = NewGame();
        PutOnRoad(state, side, kJeepSlot, 30, kEast);
        PutOnRoad(state, OtherSide(side), 1, 40, kWest);
        state.BoardCell(5) = -kMineCell;
        state.TsetseVeh = 7;
        EXPECT_EQ(TsetseSting(state, side), -1);
        EXPECT_EQ(state.Tsetse(side), 0);
        EXPECT_EQ(state.TsetseVeh, 7);
    }
}

TEST(Spionage, TheCardsOfTheHandInTurn)
{
    CompassDeck deck;
    EXPECT_TRUE(SpiedCards(deck, 2).empty());
    deck.CardCount = {1, 2};
    deck.CardHand = {{{25, 0}, {29, 31}}};
    EXPECT_EQ(SpiedCards(deck, 2), (std::vector<int>{29, 31}));
    EXPECT_EQ(SpiedCards(deck, 1), (std::vector<int>{25}));
}

// --- Card 6 ------------------------------------------------------------------------

// A genie of army 2 on field 40 with the mine of army 1 aboard and two
// companies; army 1 drew the card.
BoardState GenieWithEnemyMine(int localSide)
{
    BoardState state = NewGame(localSide);
    PutOnRoad(state, 2, 8, 40, kWest);
    Load(state, 2, 8, 2);
    SetMark(state, 2, 8, '2');
    state.MinePos(1, 0) = 5 - 8;
    state.MinePicture(1, 0).Visible = false;
    return state;
}

TEST(Leopard, TheDrawersCopyOnlyClearsTheMarkAndPutsThePictureAside)
{
    BoardState state = GenieWithEnemyMine(1);
    LeopardPickServed(state, 2, 8);
    EXPECT_EQ(state.VehiclePos(2, 8), kOutOfGame);
    EXPECT_EQ(BoxOf(state.VehiclePicture(2, 8)), Beside(8, 1095));
    EXPECT_FALSE(state.VehiclePicture(2, 8).InStock);
    EXPECT_EQ(state.VehicleTag(2, 8), "genie_2_2_0_w");
    // No move: cell and companies stay, and the mine of army 1 stays aboard.
    EXPECT_EQ(state.BoardCell(40), Cell(2, 8));
    EXPECT_EQ(state.VehicleCompanies(2, 8), 2);
    EXPECT_EQ(state.CampCompanies(2), 13);
    EXPECT_EQ(state.MinePos(1, 0), -3);
}

TEST(Leopard, TheVictimsCopyMovesTheVehicleIntoItsCampFirst)
{
    BoardState state = GenieWithEnemyMine(2);
    LeopardLossOnOwnCopy(state, 2, 8);
    EXPECT_EQ(state.VehiclePos(2, 8), kOutOfGame);
    EXPECT_EQ(BoxOf(state.VehiclePicture(2, 8)), Beside(8, 360));
    EXPECT_TRUE(state.VehiclePicture(2, 8).InStock);
    EXPECT_EQ(state.BoardCell(40), 0);
    EXPECT_EQ(state.VehicleCompanies(2, 8), 0);
    EXPECT_EQ(state.CampCompanies(2), 15);
    EXPECT_EQ(state.VehicleTag(2, 8), "genie_2_0_0_o");
    EXPECT_EQ(state.MinePos(1, 0), -3);
}

TEST(Leopard, TheTwoCopiesPart)
{
    BoardState drawer = GenieWithEnemyMine(1);
    BoardState victim = GenieWithEnemyMine(2);
    LeopardPickServed(drawer, 2, 8);
    LeopardLossOnOwnCopy(victim, 2, 8);
    EXPECT_EQ(drawer.VehiclePos(2, 8), victim.VehiclePos(2, 8));
    EXPECT_NE(drawer.BoardCell(40), victim.BoardCell(40));
    EXPECT_NE(drawer.CampCompanies(2), victim.CampCompanies(2));
    EXPECT_NE(drawer.VehiclePicture(2, 8), victim.VehiclePicture(2, 8));
}

TEST(Leopard, TheDrawersCopyLeavesAFlagAboard)
{
    BoardState state = NewGame(1);
    PutOnRoad(state, 2, 4, 50, kEast);
    Load(state, 2, 4, 1);
    SetMark(state, 2, 4, '1');
    state.FlagReserve(2) = 4;
    state.FlagCarried(2) = 1;
    LeopardPickServed(state, 2, 4);
    EXPECT_EQ(state.FlagCarried(2), 1);
    EXPECT_EQ(state.FlagReserve(2), 4);
    EXPECT_EQ(state.VehicleTag(2, 4), "infanterie_2_1_1_o");
    EXPECT_EQ(state.VehiclePos(2, 4), kOutOfGame);
}

TEST(Leopard, TheVictimsInfantryReturnsItsFlag)
{
    BoardState state = NewGame(2);
    PutOnRoad(state, 2, 4, 50, kEast);
    Load(state, 2, 4, 1);
    SetMark(state, 2, 4, '1');
    state.FlagReserve(2) = 4;
    state.FlagCarried(2) = 1;
    LeopardLossOnOwnCopy(state, 2, 4);
    EXPECT_EQ(state.FlagCarried(2), 0);
    EXPECT_EQ(state.FlagReserve(2), 5);
    EXPECT_EQ(state.FlagHome(2), 0);
    EXPECT_EQ(state.VehiclePos(2, 4), kOutOfGame);
    EXPECT_EQ(state.CampCompanies(2), 15);
}

TEST(Leopard, TheVictimsVehicleOnItsHQFreesThePlace)
{
    BoardState state = NewGame(1);
    Load(state, 1, 0, 3);
    ASSERT_TRUE(SendCampVehicleToHQ(state, 1, 0));
    LeopardLossOnOwnCopy(state, 1, 0);
    EXPECT_EQ(state.HQCount(1), 0);
    EXPECT_TRUE(state.HQPlaceFree(1, 0));
    EXPECT_EQ(state.CampCompanies(1), 15);
    EXPECT_EQ(state.VehiclePos(1, 0), kOutOfGame);
    EXPECT_EQ(BoxOf(state.VehiclePicture(1, 0)), Beside(0, 360));
}

TEST(Leopard, TheVictimsJeepLeavesItsPrisonersInTheCamp)
{
    BoardState state = NewGame(1);
    PutOnRoad(state, 1, kJeepSlot, 80, kNorth);
    state.VehicleCompanies(1, kJeepSlot) = 2;
    state.VehicleTag(1, kJeepSlot) = "jeep_1_2_n";
    LeopardLossOnOwnCopy(state, 1, kJeepSlot);
    EXPECT_EQ(state.VehiclePos(1, kJeepSlot), kOutOfGame);
    EXPECT_EQ(state.CampCompanies(1), 17);
    EXPECT_EQ(state.BoardCell(80), 0);
    EXPECT_EQ(BoxOf(state.VehiclePicture(1, kJeepSlot)), Beside(kJeepSlot, 360));
}

// --- Card 7 ------------------------------------------------------------------------

TEST(Retreat, TheTableOfGroups)
{
    EXPECT_EQ(RetreatTargetFor(2, 113), (RetreatTarget{1, 116, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 86), (RetreatTarget{1, 116, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 101), (RetreatTarget{2, 117, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 108), (RetreatTarget{3, 108, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 98), (RetreatTarget{4, 100, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 73), (RetreatTarget{5, 105, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 70), (RetreatTarget{6, 70, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 69), (RetreatTarget{7, 68, 4}));
    EXPECT_EQ(RetreatTargetFor(2, 55), (RetreatTarget{8, 109, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 52), (RetreatTarget{9, 100, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 35), (RetreatTarget{10, 94, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 22), (RetreatTarget{11, 97, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 19), (RetreatTarget{12, 92, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 80), (RetreatTarget{14, 8, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 84), (RetreatTarget{15, 23, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 90), (RetreatTarget{16, 52, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 96), (RetreatTarget{17, 39, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 88), (RetreatTarget{18, 88, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 115), (RetreatTarget{19, 76, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 116), (RetreatTarget{20, 75, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 117), (RetreatTarget{21, 74, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 45), (RetreatTarget{13, 45, 5}));
    EXPECT_EQ(RetreatTargetFor(2, 5), (RetreatTarget{13, 5, 5}));

    EXPECT_EQ(RetreatTargetFor(1, 66), (RetreatTarget{1, 113, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 106), (RetreatTarget{1, 113, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 82), (RetreatTarget{2, 114, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 84), (RetreatTarget{3, 84, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 74), (RetreatTarget{4, 72, 5}));
    EXPECT_EQ(RetreatTargetFor(1, -4), (RetreatTarget{5, 73, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 1), (RetreatTarget{6, 1, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 2), (RetreatTarget{7, 3, 4}));
    EXPECT_EQ(RetreatTargetFor(1, 15), (RetreatTarget{8, 74, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 18), (RetreatTarget{9, 79, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 31), (RetreatTarget{10, 86, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 34), (RetreatTarget{11, 91, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 50), (RetreatTarget{12, 88, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 90), (RetreatTarget{14, 31, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 87), (RetreatTarget{15, 17, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 100), (RetreatTarget{16, 68, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 97), (RetreatTarget{17, 48, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 94), (RetreatTarget{18, 94, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 77), (RetreatTarget{19, 104, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 76), (RetreatTarget{20, 105, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 75), (RetreatTarget{21, 106, 5}));
    EXPECT_EQ(RetreatTargetFor(1, 60), (RetreatTarget{13, 60, 5}));
    EXPECT_EQ(RetreatTargetFor(1, -5), (RetreatTarget{13, -5, 5}));
}

// Army 1 drew the card: its tank on the HQ, a kanon on 71, a kanon on 83, the
// jeep on its island, infantry 3 on the road, the rest in the camp.
BoardState StageOnePosition(int localSide)
{
    BoardState state = NewGame(localSide);
    Load(state, 1, 0, 3);
    EXPECT_TRUE(SendCampVehicleToHQ(state, 1, 0));
    PutOnRoad(state, 1, 1, 71, kSouth);
    Load(state, 1, 1, 2);
    PutOnRoad(state, 1, 2, 83, kNorth);
    PutOnRoad(state, 1, 3, 40, kEast);
    Load(state, 1, 3, 1);
    return state;
}

TEST(Retreat, StageOneSendsTheHQAndItsNeighboursHome)
{
    for (int localSide = 1; localSide <= 2; ++localSide) {
        BoardState state = StageOnePosition(localSide);
        const RetreatWork work = RetreatStageOne(state, 1);
        for (int slot = 0; slot < kVehicleSlots; ++slot)
            EXPECT_EQ(work.Done[static_cast<std::size_t>(slot)], slot != 3) << slot;
        EXPECT_EQ(work.Left, 1);
        EXPECT_EQ(state.VehiclePos(1, 0), kCamp1);
        EXPECT_EQ(state.VehiclePos(1, 1), kCamp1);
        EXPECT_EQ(state.VehiclePos(1, 2), kCamp1);
        EXPECT_EQ(state.VehiclePos(1, 3), 40);
        EXPECT_EQ(state.VehiclePos(1, kJeepSlot), kIsland1);
        EXPECT_EQ(state.HQCount(1), 0);
        EXPECT_EQ(state.BoardCell(71), 0);
        EXPECT_EQ(state.BoardCell(83), 0);
        EXPECT_EQ(state.CampCompanies(1), 14);  // the tank's 3 and the kanon's 2 are back
    }
}

TEST(Retreat, StageOneForArmyTwo)
{
    BoardState state = NewGame(2);
    PutOnRoad(state, 2, 5, 100, kNorth);
    PutOnRoad(state, 2, 6, 109, kNorth);
    PutOnRoad(state, 2, 7, 60, kWest);
    MakeLost(state, 2, 9);
    const RetreatWork work = RetreatStageOne(state, 2);
    EXPECT_EQ(state.VehiclePos(2, 5), kCamp2);
    EXPECT_EQ(state.VehiclePos(2, 6), kCamp2);
    EXPECT_FALSE(work.Done[7]);
    EXPECT_FALSE(work.Done[9]);  // a lost vehicle stays open
    EXPECT_EQ(work.Left, 2);
}

// Card 7 with a vehicle of A on its HQ and one of B on a road: the HQ vehicle
// goes home on both copies; B's vehicle moves five back on B's copy only.
TEST(Retreat, BsVehicleMovesOnBsCopyOnly)
{
    BoardState drawer = StageOnePosition(1);
    BoardState other = StageOnePosition(2);
    for (BoardState* state : {&drawer, &other}) {
        PutOnRoad(*state, 2, 3, 30, kWest);
        Load(*state, 2, 3, 2);
        PutOnRoad(*state, 2, 0, 50, kWest);  // A's tank slot is done: B's tank stays
    }

    RetreatStageOne(drawer, 1);  // the drawer's copy ends here

    RetreatWork work = RetreatStageOne(other, 1);
    RetreatStageTwo(other, 2, work);

    EXPECT_EQ(drawer.VehiclePos(1, 0), kCamp1);
    EXPECT_EQ(other.VehiclePos(1, 0), kCamp1);
    EXPECT_EQ(drawer.VehiclePos(2, 3), 30);
    EXPECT_EQ(other.VehiclePos(2, 3), 94);
    EXPECT_EQ(other.BoardCell(30), 0);
    EXPECT_EQ(other.BoardCell(94), Cell(2, 3));
    EXPECT_EQ(other.VehicleCompanies(2, 3), 2);
    EXPECT_EQ(other.VehiclePos(2, 0), 50);
    EXPECT_EQ(work.Group[3], 10);
    EXPECT_EQ(work.Field[3], 94);
    EXPECT_EQ(work.Steps[3], 5);
    EXPECT_TRUE(work.Done[3]);
    EXPECT_EQ(work.Left, 0);
}

RetreatWork AllOpen()
{
    RetreatWork work;
    work.Left = kVehicleSlots;
    return work;
}

TEST(Retreat, TheNearestGoFirstAndClearTheRoad)
{
    BoardState state = NewGame(2);
    PutOnRoad(state, 2, 3, 30, kWest);  // group 10, to 94
    PutOnRoad(state, 2, 5, 94, kNorth); // group 3, to 99
    RetreatWork work = AllOpen();
    RetreatStageTwo(state, 2, work);
    EXPECT_EQ(state.VehiclePos(2, 5), 99);
    EXPECT_EQ(state.VehiclePos(2, 3), 94);
    EXPECT_EQ(state.BoardCell(94), Cell(2, 3));
    EXPECT_EQ(state.BoardCell(99), Cell(2, 5));
}

TEST(Retreat, NearTheHQTheCampIsReachedByTheShortCut)
{
    BoardState state = NewGame(2);
    PutOnRoad(state, 2, 4, 107, kNorth);  // d 112: group 1, to the camp
    Load(state, 2, 4, 3);
    RetreatWork work = AllOpen();
    RetreatStageTwo(state, 2, work);
    EXPECT_EQ(state.VehiclePos(2, 4), kCamp2);
    EXPECT_EQ(state.VehicleCompanies(2, 4), 0);
    EXPECT_EQ(state.CampCompanies(2), 15);
    EXPECT_EQ(state.BoardCell(107), 0);
}

// Pass 2: the first square that blocks is taken itself.
TEST(Retreat, ABlockedWalkEndsOnTheBlockingSquare)
{
    BoardState state = NewGame(2);
    PutOnRoad(state, 1, 3, 33, kEast);
    PutOnRoad(state, 2, 3, 30, kWest);
    RetreatWork work = AllOpen();
    RetreatStageTwo(state, 2, work);
    EXPECT_EQ(state.VehiclePos(2, 3), 33);
    EXPECT_EQ(state.BoardCell(33), Cell(2, 3));
    EXPECT_EQ(state.BoardCell(30), 0);
    EXPECT_EQ(state.VehiclePos(1, 3), 33);  // the enemy there is not told
    EXPECT_TRUE(work.Done[3]);
    EXPECT_EQ(work.Left, 0);
}

TEST(Retreat, AnOwnMineBlocksToo)
{
    BoardState state = NewGame(2);
    state.MinePos(2, 0) = 32;
    state.BoardCell(32) = -kMineCell;
    PutOnRoad(state, 2, 3, 30, kWest);
    RetreatWork work = AllOpen();
    RetreatStageTwo(state, 2, work);
    EXPECT_EQ(state.VehiclePos(2, 3), 32);
    EXPECT_EQ(state.BoardCell(32), Cell(2, 3));
}

TEST(Retreat, ABlockOnTheFirstStepMovesNothing)
{
    BoardState state = NewGame(2);
    PutOnRoad(state, 1, 4, 31, kNorth);
    PutOnRoad(state, 2, 3, 30, kWest);
    RetreatWork work = AllOpen();
    RetreatStageTwo(state, 2, work);
    EXPECT_EQ(state.VehiclePos(2, 3), 30);
    EXPECT_EQ(state.BoardCell(30), Cell(2, 3));
    EXPECT_EQ(state.BoardCell(31), Cell(1, 4));
    EXPECT_TRUE(work.Done[3]);
}

// The destination holds an own vehicle: the move is refused in pass 1, and
// the walk meets no block, so Note takes a cell of 0 and nothing moves.
TEST(Retreat, AWalkWithoutABlockMovesNothing)
{
    BoardState state = NewGame(2);
    PutOnRoad(state, 2, 3, 30, kWest);
    PutOnRoad(state, 2, 6, 94, kWest);
    RetreatWork work;
    work.Done.fill(true);
    work.Done[3] = false;
    work.Left = 1;
    work.Note = 7;
    RetreatStageTwo(state, 2, work);
    EXPECT_EQ(state.VehiclePos(2, 3), 30);
    EXPECT_EQ(state.VehiclePos(2, 6), 94);
    EXPECT_EQ(work.Note, 0);
    EXPECT_TRUE(work.Done[3]);
    EXPECT_EQ(work.Left, 0);
}

TEST(Retreat, AWalkTheSearchCannotCompleteLeavesTheVehicle)
{
    BoardState state = NewGame(2);
    Load(state, 2, 1, 2);
    ASSERT_TRUE(SendCampVehicleToHQ(state, 2, 1));  // d 122: group 13, no walk
    MakeLost(state, 2, 2);
    RetreatWork work = AllOpen();
    const BoardState before = state;
    RetreatStageTwo(state, 2, work);
    EXPECT_EQ(state.VehiclePos(2, 1), kHQ2);
    EXPECT_EQ(state.HQCount(2), 1);
    EXPECT_EQ(state.VehiclePos(2, 2), kOutOfGame);
    EXPECT_EQ(state.VehiclePicture(2, 2), before.VehiclePicture(2, 2));
    // All in the camp or on the island as well: nothing moved at all.
    EXPECT_EQ(state.cells, before.cells);
    EXPECT_EQ(state.vehiclePos, before.vehiclePos);
    EXPECT_EQ(work.Left, 0);
    for (bool done : work.Done)
        EXPECT_TRUE(done);
}

// --- Card 9 ------------------------------------------------------------------------

TEST(FoodPoisoning, EveryVehicleOutsideTheCampKeepsOne)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 0, 40, kWest);
    Load(state, 1, 0, 4);
    PutOnRoad(state, 1, 1, 20, kEast);
    Load(state, 1, 1, 3);
    Load(state, 1, 3, 3);
    SetMark(state, 1, 3, '1');
    ASSERT_TRUE(SendCampVehicleToHQ(state, 1, 3));
    PutOnRoad(state, 1, 8, 30, kEast);
    Load(state, 1, 8, 1);
    Load(state, 1, 6, 2);  // in the camp: stays
    PutOnRoad(state, 1, kJeepSlot, 80, kNorth);
    state.VehicleCompanies(1, kJeepSlot) = 3;
    ASSERT_EQ(state.CampCompanies(1), 15 - 4 - 3 - 3 - 1 - 2);

    FoodPoisoning(state, 1);
    EXPECT_EQ(state.VehicleCompanies(1, 0), 1);
    EXPECT_EQ(state.VehicleTag(1, 0), "tank_1_1_w");
    EXPECT_EQ(state.VehicleCompanies(1, 1), 1);
    EXPECT_EQ(state.VehicleTag(1, 1), "kanon_1_1_o");
    EXPECT_EQ(state.VehicleCompanies(1, 3), 1);
    EXPECT_EQ(state.VehicleTag(1, 3), "infanterie_1_1_1_o");
    EXPECT_EQ(state.VehicleCompanies(1, 8), 1);
    EXPECT_EQ(state.VehicleTag(1, 8), "genie_1_1_0_o");
    EXPECT_EQ(state.VehicleCompanies(1, 6), 2);
    EXPECT_EQ(state.VehicleCompanies(1, kJeepSlot), 3);
    EXPECT_EQ(state.CampCompanies(1), 2 + 3 + 2 + 2);
}

TEST(FoodPoisoning, ArmyTwoWithTheLastThreeCharacters)
{
    BoardState state = NewGame(2);
    PutOnRoad(state, 2, 7, 40, kWest);
    Load(state, 2, 7, 2);
    SetMark(state, 2, 7, '1');
    MakeLost(state, 2, 2);
    state.VehicleCompanies(2, 2) = 3;  // a lost vehicle is left alone
    FoodPoisoning(state, 2);
    EXPECT_EQ(state.VehicleTag(2, 7), "commando_2_1_1_w");
    EXPECT_EQ(state.VehicleCompanies(2, 2), 3);
    EXPECT_EQ(state.CampCompanies(2), 14);
}

// --- Card 14 -----------------------------------------------------------------------

TEST(YellowFever, OneCompanyOfEachVehicleToTheReserve)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 0, 40, kWest);
    Load(state, 1, 0, 3);
    Load(state, 1, 4, 1);
    SetMark(state, 1, 4, '1');
    ASSERT_TRUE(SendCampVehicleToHQ(state, 1, 4));
    PutOnRoad(state, 1, kJeepSlot, 80, kNorth);
    state.VehicleCompanies(1, kJeepSlot) = 2;
    state.VehicleTag(1, kJeepSlot) = "jeep_1_2_n";
    PutOnRoad(state, 1, 6, 60, kEast);  // no companies
    Load(state, 1, 1, 2);                // in the camp

    YellowFever(state, 1);
    EXPECT_EQ(state.VehicleCompanies(1, 0), 2);
    EXPECT_EQ(state.VehicleTag(1, 0), "tank_1_2_w");
    EXPECT_EQ(state.VehicleCompanies(1, 4), 0);
    EXPECT_EQ(state.VehicleTag(1, 4), "infanterie_1_0_1_o");
    EXPECT_EQ(state.VehicleCompanies(1, kJeepSlot), 1);
    EXPECT_EQ(state.VehicleTag(1, kJeepSlot), "jeep_1_1_n");
    EXPECT_EQ(state.VehicleCompanies(1, 6), 0);
    EXPECT_EQ(state.VehicleTag(1, 6), "commando_1_0_0_o");
    EXPECT_EQ(state.VehicleCompanies(1, 1), 2);
    EXPECT_EQ(state.ReserveCompanies(1), 13);
}

TEST(YellowFever, TheJeepOnItsIslandAndLostVehiclesAreSpared)
{
    BoardState state = NewGame(2);
    state.VehicleCompanies(2, kJeepSlot) = 2;
    MakeLost(state, 2, 0);
    state.VehicleCompanies(2, 0) = 2;
    YellowFever(state, 2);
    EXPECT_EQ(state.VehicleCompanies(2, kJeepSlot), 2);
    EXPECT_EQ(state.VehicleCompanies(2, 0), 2);
    EXPECT_EQ(state.ReserveCompanies(2), 10);
}

// --- Card 15 -----------------------------------------------------------------------

TEST(NewYearParty, EveryVehicleGoesHome)
{
    for (int side = 1; side <= 2; ++side) {
        BoardState state = NewGame(side);
        PutOnRoad(state, side, 0, 40, kWest);
        Load(state, side, 0, 2);
        Load(state, side, 1, 3);
        ASSERT_TRUE(SendCampVehicleToHQ(state, side, 1));
        PutOnRoad(state, side, kJeepSlot, 60, kEast);
        MakeLost(state, side, 5);
        NewYearParty(state, side);
        EXPECT_EQ(state.VehiclePos(side, 0), CampField(side));
        EXPECT_EQ(state.VehiclePos(side, 1), CampField(side));
        EXPECT_EQ(state.BoardCell(40), 0);
        EXPECT_EQ(state.HQCount(side), 0);
        EXPECT_EQ(state.CampCompanies(side), 15);
        EXPECT_EQ(state.VehiclePos(side, kJeepSlot), 60);
        EXPECT_EQ(state.VehiclePos(side, 5), kOutOfGame);
        EXPECT_EQ(state.VehicleTag(side, 0), StartingTag(side, 0));
    }
}

// --- Card 16 -----------------------------------------------------------------------

// Both armies on the coast: army 1's tank on 5, genie 9 with army 2's mine on
// 15 and jeep on 62; army 2's infantry 4 with a flag on 60 and kanon 1 on 70;
// off the coast army 1's kanon on 20 and army 2's tank on 2; a mine on 4.
BoardState CoastPosition(int localSide)
{
    BoardState state = NewGame(localSide);
    PutOnRoad(state, 1, 0, 5, kWest);
    Load(state, 1, 0, 2);
    PutOnRoad(state, 1, 9, 15, kEast);
    Load(state, 1, 9, 1);
    SetMark(state, 1, 9, '2');
    state.MinePos(2, 3) = 5 - 9;
    PutOnRoad(state, 1, kJeepSlot, 62, kNorth);
    state.VehicleCompanies(1, kJeepSlot) = 1;
    PutOnRoad(state, 2, 4, 60, kEast);
    Load(state, 2, 4, 3);
    SetMark(state, 2, 4, '1');
    state.FlagReserve(2) = 4;
    state.FlagCarried(2) = 1;
    PutOnRoad(state, 2, 1, 70, kWest);
    PutOnRoad(state, 1, 1, 20, kEast);
    PutOnRoad(state, 2, 0, 2, kSouth);
    state.MinePos(1, 0) = 4;
    state.BoardCell(4) = kMineCell;
    return state;
}

TEST(WeatherReport, BothArmiesLoseWhatStandsOnTheCoast)
{
    for (int localSide = 1; localSide <= 2; ++localSide) {
        BoardState state = CoastPosition(localSide);
        WeatherReport(state);
        for (int field : {5, 15, 60, 62, 70})
            EXPECT_EQ(state.BoardCell(field), 0) << field;
        EXPECT_EQ(state.VehiclePos(1, 0), kOutOfGame);
        EXPECT_EQ(state.VehiclePos(1, 9), kOutOfGame);
        EXPECT_EQ(state.VehiclePos(1, kJeepSlot), kOutOfGame);
        EXPECT_EQ(state.VehiclePos(2, 4), kOutOfGame);
        EXPECT_EQ(state.VehiclePos(2, 1), kOutOfGame);
        // Off the coast, and a mine on the coast, stay.
        EXPECT_EQ(state.VehiclePos(1, 1), 20);
        EXPECT_EQ(state.VehiclePos(2, 0), 2);
        EXPECT_EQ(state.BoardCell(4), kMineCell);
        // The companies went into the camps with the move.
        EXPECT_EQ(state.CampCompanies(1), 15 + 1);
        EXPECT_EQ(state.CampCompanies(2), 15);
        // The flag is free again, not home.
        EXPECT_EQ(state.FlagCarried(2), 0);
        EXPECT_EQ(state.FlagReserve(2), 5);
        EXPECT_EQ(state.FlagHome(2), 0);
        // The genie's mark is cleared; army 2's mine it carried stays aboard.
        EXPECT_EQ(state.MinePos(2, 3), -4);
        for (int side = 1; side <= 2; ++side)
            for (int slot : {side == 1 ? 0 : 4, side == 1 ? 9 : 1}) {
                const bool local = side == localSide;
                EXPECT_EQ(BoxOf(state.VehiclePicture(side, slot)), Beside(slot, local ? 360 : 1095))
                    << side << " " << slot;
                EXPECT_EQ(state.VehiclePicture(side, slot).InStock, local);
            }
    }
}

TEST(WeatherReport, TheCopiesAgreeOnTheArmies)
{
    BoardState first = CoastPosition(1);
    BoardState second = CoastPosition(2);
    WeatherReport(first);
    WeatherReport(second);
    EXPECT_EQ(first.vehiclePos, second.vehiclePos);
    EXPECT_EQ(first.vehicleTag, second.vehicleTag);
    EXPECT_EQ(first.cells, second.cells);
    EXPECT_EQ(first.minePos, second.minePos);
    EXPECT_EQ(first.campCompanies, second.campCompanies);
}

TEST(WeatherReport, AGeniesOwnMineComesHomeWithTheMove)
{
    BoardState state = NewGame();
    PutOnRoad(state, 1, 8, 55, kEast);
    SetMark(state, 1, 8, '1');
    state.MinePos(1, 2) = -8;
    WeatherReport(state);
    EXPECT_EQ(state.MinePos(1, 2), kCamp1);
    EXPECT_TRUE(state.MinePicture(1, 2).Visible);
    EXPECT_EQ(state.VehiclePos(1, 8), kOutOfGame);
}

// --- Card 20 -----------------------------------------------------------------------

TEST(MineAlarm, ACommandoWithAMineIsLostAndItsCompaniesGoToTheReserve)
{
    for (int localSide = 1; localSide <= 2; ++localSide) {
        BoardState state = NewGame(localSide);
        PutOnRoad(state, 1, 6, 40, kEast);
        Load(state, 1, 6, 2);
        SetMark(state, 1, 6, '1');
        state.MinePos(1, 0) = -6;
        state.MinePicture(1, 0).Visible = false;
        PutOnRoad(state, 1, 7, 50, kEast);  // no mine: stays
        Load(state, 1, 7, 1);

        MineAlarm(state, 1);
        EXPECT_EQ(state.MinePos(1, 0), kCamp1);
        EXPECT_TRUE(state.MinePicture(1, 0).Visible);
        EXPECT_EQ(state.VehiclePos(1, 6), kOutOfGame);
        EXPECT_EQ(state.BoardCell(40), 0);
        EXPECT_EQ(state.VehicleCompanies(1, 6), 0);
        EXPECT_EQ(state.ReserveCompanies(1), 12);
        EXPECT_EQ(state.CampCompanies(1), 12);
        EXPECT_EQ(state.CompanySum(1), kCompaniesPerArmy);
        EXPECT_EQ(BoxOf(state.VehiclePicture(1, 6)), Beside(6, localSide == 1 ? 360 : 1095));
        EXPECT_EQ(state.VehiclePicture(1, 6).InStock, localSide == 1);
        EXPECT_EQ(state.VehiclePos(1, 7), 50);
    }
}

// Mark 2: the entry 5 - slot of the genie's own army's list goes home; the
// enemy's mine aboard is brought into the camp by the move.
TEST(MineAlarm, AGenieWithTheEnemysMine)
{
    BoardState state = NewGame(2);
    PutOnRoad(state, 2, 8, 60, kWest);
    SetMark(state, 2, 8, '2');
    state.MinePos(1, 1) = -3;  // army 1's mine aboard army 2's genie 8
    state.MinePos(2, 4) = -3;  // army 2's mine aboard army 1's genie 8
    state.MinePicture(2, 4).Visible = false;
    MineAlarm(state, 2);
    EXPECT_EQ(state.MinePos(2, 4), kCamp2);
    EXPECT_TRUE(state.MinePicture(2, 4).Visible);
    EXPECT_EQ(state.MinePos(1, 1), kCamp2);
    EXPECT_TRUE(state.CapturedMinePicture(2, 1).Visible);
    EXPECT_EQ(state.VehiclePos(2, 8), kOutOfGame);
}

TEST(MineAlarm, AVehicleInTheCampIsLeftAlone)
{
    BoardState state = NewGame();
    SetMark(state, 1, 9, '1');
    state.MinePos(1, 0) = -9;
    const BoardState before = state;
    MineAlarm(state, 1);
    EXPECT_EQ(state, before);
}

// --- Lost vehicles back -----------------------------------------------------------

TEST(ReturnFromStock, TheTankComesBackInItsCamp)
{
    BoardState state = NewGame(2);
    PutOnRoad(state, 1, 0, 40, kEast);
    MakeLost(state, 1, 0);
    const StockReturn result = ReturnFromStock(state, 1, 0, false);
    EXPECT_TRUE(result.Returned);
    EXPECT_EQ(result.LogText, "opponent got his tank back at ");
    EXPECT_EQ(state.VehiclePos(1, 0), kCamp1);
    EXPECT_EQ(state.VehicleTag(1, 0), "tank_1_0_o");
    EXPECT_EQ(BoxOf(state.VehiclePicture(1, 0)), CampPlaceBox(ViewOf(state), 1, 0));
    EXPECT_FALSE(state.VehiclePicture(1, 0).InStock);
}

TEST(ReturnFromStock, TheFixedTagsAndLogLines)
{
    const char* const logs[kVehicleSlots] = {"opponent got his tank back at ", "opponent got a canon back at ",
        "opponent got a canon back at ", "opponent got an infantry back at ", "opponent got an infantry back at ",
        "opponent got an infantry back at ", "opponent got a commando back at ", "opponent got a commando back at ",
        "opponent got a deminer back at ", "opponent got a deminer back at ", "opponent got his jeep back at "};
    const char* const tags1[] = {"tank_1_0_o", "kanon_1_0_o", "kanon_1_0_o", "infanterie_1_0_0_o",
        "infanterie_1_0_0_o", "infanterie_1_0_0_o", "commando_1_0_0_o", "commando_1_0_0_o", "genie_1_0_0_o",
        "genie_1_0_0_o", "jeep_1_0_w"};
    const char* const tags2[] = {"tank_2_0_w", "kanon_2_0_w", "kanon_2_0_w", "infanterie_2_0_0_o",
        "infanterie_2_0_0_o", "infanterie_2_0_0_o", "commando_2_0_0_w", "commando_2_0_0_w", "genie_2_0_0_o",
        "genie_2_0_0_o", "jeep_2_0_o"};
    for (int side = 1; side <= 2; ++side)
        for (int slot = 0; slot < kVehicleSlots; ++slot) {
            BoardState state = NewGame(OtherSide(side));
            MakeLost(state, side, slot);
            const StockReturn result = ReturnFromStock(state, side, slot, false);
            EXPECT_TRUE(result.Returned);
            EXPECT_EQ(result.LogText, logs[slot]) << side << " " << slot;
            EXPECT_EQ(state.VehicleTag(side, slot), side == 1 ? tags1[slot] : tags2[slot]);
            EXPECT_EQ(state.VehiclePos(side, slot), CampField(side)) << side << " " << slot;
        }
}

TEST(ReturnFromStock, CardsTwelveAndEighteenGiveTheirOwnJeepTagAndInfantryLine)
{
    BoardState state = NewGame(2);
    MakeLost(state, 1, kJeepSlot);
    MakeLost(state, 1, 4);
    EXPECT_EQ(ReturnFromStock(state, 1, kJeepSlot, true).LogText, "opponent got his jeep back at ");
    EXPECT_EQ(state.VehicleTag(1, kJeepSlot), "jeep_1_0_o");
    EXPECT_EQ(state.VehiclePos(1, kJeepSlot), kCamp1);
    EXPECT_EQ(BoxOf(state.VehiclePicture(1, kJeepSlot)), IslandBox(ViewOf(state), 1));
    EXPECT_EQ(ReturnFromStock(state, 1, 4, true).LogText, "opponent got an infantry vehicle back at ");

    BoardState other = NewGame(1);
    MakeLost(other, 2, kJeepSlot);
    ReturnFromStock(other, 2, kJeepSlot, true);
    EXPECT_EQ(other.VehicleTag(2, kJeepSlot), "jeep_2_0_o");
}

// Card 4 with no lost vehicle: the message names no valid slot (-1), or a
// vehicle that stands on the board; nothing comes back and nothing fails.
TEST(ReturnFromStock, NoValidSlotChangesNothing)
{
    BoardState state = NewGame(2);
    PutOnRoad(state, 1, 3, 40, kEast);
    const BoardState before = state;
    for (int slot : {-1, 100, 3, 0, kJeepSlot}) {
        StockReturn result;
        EXPECT_NO_THROW(result = ReturnFromStock(state, 1, slot, false)) << slot;
        EXPECT_EQ(result, StockReturn{}) << slot;
    }
    EXPECT_EQ(state, before);
}

// Card 12 with one lost vehicle: only the first entry means anything; the
// second is 100.
TEST(ReturnFromStock, CardTwelveWithOneLostVehicle)
{
    BoardState state = NewGame(2);
    MakeLost(state, 1, 2);
    EXPECT_TRUE(ReturnFromStock(state, 1, 2, true).Returned);
    EXPECT_FALSE(ReturnFromStock(state, 1, 100, true).Returned);
    EXPECT_EQ(state.VehiclePos(1, 2), kCamp1);
}

TEST(ReturnFromStock, RaisesForABadSide)
{
    BoardState state = NewGame();
    EXPECT_THROW(ReturnFromStock(state, 0, 1, false), RunTimeFault);
}

TEST(StockPick, TheVehicleStandsInItsCampAgain)
{
    BoardState state = NewGame(2);
    PutOnRoad(state, 2, 1, 40, kWest);
    MakeLost(state, 2, 1);
    const std::string tag = state.VehicleTag(2, 1);
    EXPECT_TRUE(StockPickServed(state, 2, 1));
    EXPECT_EQ(state.VehiclePos(2, 1), kCamp2);
    EXPECT_EQ(BoxOf(state.VehiclePicture(2, 1)), CampPlaceBox(ViewOf(state), 2, 1));
    EXPECT_FALSE(state.VehiclePicture(2, 1).InStock);
    EXPECT_EQ(state.VehicleTag(2, 1), tag);
}

TEST(StockPick, TheJeepStandsOnItsIsland)
{
    BoardState state = NewGame(1);
    MakeLost(state, 1, kJeepSlot);
    EXPECT_TRUE(StockPickServed(state, 1, kJeepSlot));
    EXPECT_EQ(state.VehiclePos(1, kJeepSlot), kIsland1);
    EXPECT_EQ(BoxOf(state.VehiclePicture(1, kJeepSlot)), IslandBox(ViewOf(state), 1));
}

TEST(StockPick, AVehicleThatIsNotLostIsRefused)
{
    BoardState state = NewGame(1);
    const BoardState before = state;
    EXPECT_FALSE(StockPickServed(state, 1, 3));
    EXPECT_EQ(state, before);
    EXPECT_THROW(StockPickServed(state, 1, -1), RunTimeFault);
}

// The drawer's pick and the opponent's mirror agree on where a vehicle is,
// but for the jeep: on its island on the drawer's copy, in the camp on the
// other.
TEST(StockPick, BothCopiesAgreeOnThePositionButForTheJeep)
{
    for (int slot : {4, kJeepSlot}) {
        BoardState drawer = NewGame(1);
        BoardState mirror = NewGame(2);
        MakeLost(drawer, 1, slot);
        MakeLost(mirror, 1, slot);
        ASSERT_TRUE(StockPickServed(drawer, 1, slot));
        ASSERT_TRUE(ReturnFromStock(mirror, 1, slot, false).Returned);
        EXPECT_EQ(drawer.VehiclePos(1, slot), slot == kJeepSlot ? kIsland1 : kCamp1) << slot;
        EXPECT_EQ(mirror.VehiclePos(1, slot), kCamp1) << slot;
    }
}

} // namespace
} // namespace vk
