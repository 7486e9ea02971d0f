// Shots, mines, flags and the jeep as the judge and the executor of moves see
// them: the walk to a target, mines that block, carried things that come home.

#include <gtest/gtest.h>

#include "CombatFixtures.h"
#include "board/MinesAndFlags.h"
#include "board/Movement.h"
#include "board/Shooting.h"
#include "board/Victory.h"

namespace vk {
namespace {

using test::CellOf;
using test::PutOnRoad;
using test::StartPosition;

void LayMineAt(BoardState& state, int side, int mine, int field)
{
    state.MinePos(side, mine) = field;
    state.BoardCell(field) = side == 1 ? kMineCell : -kMineCell;
}

// --- Shots judged by IsLegalMove -------------------------------------------

// Edge case: equal companies, legal.
TEST(ShotJudged, EqualCompaniesIsALegalShot)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 0, 20, 3, 0, 1);
    PutOnRoad(state, 2, 3, 22, 3, 0, 3);
    ASSERT_TRUE(IsLegalMove(state, 1, 0, 20, 22, 2, true));
    EXPECT_TRUE(state.Verdict.ShootAllowed);
    EXPECT_EQ(state.Verdict.ShootTarget, -4);
    EXPECT_EQ(state.Verdict.Heading, 1);  // the shooter keeps its heading
    EXPECT_FALSE(state.Verdict.MinePickup);
    EXPECT_FALSE(state.Verdict.FlagLoad);
}

// Edge case: one company less, illegal; unless the target is the jeep.
TEST(ShotJudged, WeakerShooterIsRefusedButForTheJeep)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 1, 20, 2, 0, 1);
    PutOnRoad(state, 2, 0, 22, 3, 0, 3);
    EXPECT_FALSE(IsLegalMove(state, 1, 1, 20, 22, 2, true));
    EXPECT_FALSE(state.Verdict.ShootAllowed);

    PutOnRoad(state, 2, 10, 18, 3, 0, 3);
    PutOnRoad(state, 1, 6, 16, 1, 0, 1);
    ASSERT_TRUE(IsLegalMove(state, 1, 6, 16, 18, 2, true));
    EXPECT_TRUE(state.Verdict.ShootAllowed);
    EXPECT_EQ(state.Verdict.ShootTarget, -11);
}

TEST(ShotJudged, NoShotWhenLeavingTheCampWithBothDice)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 0, 20, 5, 0, 1);
    PutOnRoad(state, 2, 3, 22, 1, 0, 3);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 22, 2, false));
}

TEST(ShotJudged, DistanceMustBeExactlyTheDie)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 0, 20, 5, 0, 1);
    PutOnRoad(state, 2, 3, 22, 1, 0, 3);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 22, 1, true));
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 22, 3, true));
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 20, 22, 2, true));
}

TEST(ShotJudged, ShotPassesOverMinesAndVehiclesOfBothArmies)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 0, 19, 5, 0, 1);
    LayMineAt(state, 2, 0, 20);
    PutOnRoad(state, 2, 1, 21, 4, 0, 3);
    PutOnRoad(state, 1, 3, 22, 1, 0, 1);
    PutOnRoad(state, 2, 4, 23, 2, 0, 3);
    ASSERT_TRUE(IsLegalMove(state, 1, 0, 19, 23, 4, true));
    EXPECT_TRUE(state.Verdict.ShootAllowed);
    EXPECT_EQ(state.Verdict.ShootTarget, -5);
}

TEST(ShotJudged, StrategicLinkDoesNotCarryAShot)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 0, 8, 5, 0, 1);
    PutOnRoad(state, 2, 3, 41, 1, 0, 3);
    for (int steps = 1; steps <= 12; ++steps)
        EXPECT_FALSE(IsLegalMove(state, 1, 0, 8, 41, steps, true)) << steps;
}

TEST(ShotJudged, OwnVehicleOnTheDestinationIsIllegal)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 0, 20, 5, 0, 1);
    PutOnRoad(state, 1, 3, 22, 1, 0, 1);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 22, 2, true));
}

// Edge case: two shots in one turn at the same vehicle, each with its own die.
TEST(ShotJudged, TwoShotsInOneTurnAtTheSameVehicle)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 0, 20, 5, 0, 1);
    PutOnRoad(state, 1, 1, 25, 4, 0, 0);
    PutOnRoad(state, 2, 0, 22, 3, 0, 3);

    // First die 2: the tank on 20 shoots at 22.
    ASSERT_TRUE(IsLegalMove(state, 1, 0, 20, 22, 2, true));
    ASSERT_TRUE(state.Verdict.ShootAllowed);
    ResolveShot(state, 1, std::abs(state.Verdict.ShootTarget) - 1);
    EXPECT_EQ(state.VehicleCompanies(2, 0), 2);

    // Second die 3: the kanon on 25 shoots at the same tank (25, 24, 23, 22).
    ASSERT_TRUE(IsLegalMove(state, 1, 1, 25, 22, 3, true));
    ASSERT_TRUE(state.Verdict.ShootAllowed);
    ResolveShot(state, 1, std::abs(state.Verdict.ShootTarget) - 1);
    EXPECT_EQ(state.VehicleCompanies(2, 0), 1);
    EXPECT_EQ(state.PrisonCompanies(2), 2);
    // Neither shooter moved.
    EXPECT_EQ(state.VehiclePos(1, 0), 20);
    EXPECT_EQ(state.VehiclePos(1, 1), 25);
    EXPECT_EQ(state.BoardCell(22), CellOf(2, 0));
}

TEST(ShotJudged, VehicleOffTheRoadIsNoTarget)
{
    // A vehicle on its island, its HQ or in its camp has no cell to be shot on.
    BoardState state = StartPosition(2);
    PutOnRoad(state, 2, 0, 81, 5, 0, 1);
    EXPECT_FALSE(IsLegalMove(state, 2, 0, 81, 115, 2, true));
    PutOnRoad(state, 1, 0, 71, 5, 0, 1);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 71, 117, 1, true));
}

// --- The jeep ---------------------------------------------------------------

TEST(JeepRun, LeavesItsIslandByWayOfField80)
{
    BoardState state = StartPosition(1);
    state.CampCompanies(1) -= 2;
    state.PrisonCompanies(1) = 2;
    ASSERT_TRUE(LoadJeepOnIsland(state, 1));
    ASSERT_TRUE(IsLegalMove(state, 1, 10, 115, 81, 2, true));
    ExecuteMove(state, 1, 10, 115, 81, false);
    EXPECT_EQ(state.VehiclePos(1, 10), 81);
    EXPECT_EQ(state.VehicleCompanies(1, 10), 2);
    EXPECT_EQ(state.BoardCell(81), 11);
}

TEST(JeepRun, ArmyTwoLeavesByWayOfField112)
{
    BoardState state = StartPosition(2);
    state.CampCompanies(2) -= 1;
    state.PrisonCompanies(2) = 1;
    ASSERT_TRUE(LoadJeepOnIsland(state, 2));
    ASSERT_TRUE(IsLegalMove(state, 2, 10, 118, 111, 2, true));
    ExecuteMove(state, 2, 10, 118, 111, false);
    EXPECT_EQ(state.VehiclePos(2, 10), 111);
    EXPECT_EQ(state.BoardCell(111), -11);
}

TEST(JeepRun, PrisonersReachingTheCampAreFreeAndTheJeepIsBackOnItsIsland)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 10, 71, 3, 0, 0);
    state.CampCompanies(1) += 3;  // they came out of the prison, not the camp
    state.PrisonCompanies(1) = 0;
    state.ReserveCompanies(1) -= 3;
    ASSERT_EQ(state.CompanySum(1), 25);

    ASSERT_TRUE(IsLegalMove(state, 1, 10, 71, 113, 2, true));
    ExecuteMove(state, 1, 10, 71, 113, false);

    EXPECT_EQ(state.CampCompanies(1), 15 + 3);
    EXPECT_EQ(state.VehicleCompanies(1, 10), 0);
    EXPECT_EQ(state.VehiclePos(1, 10), 115);
    EXPECT_EQ(state.BoardCell(71), 0);
    EXPECT_EQ(state.CompanySum(1), 25);
}

TEST(JeepRun, WayBackToTheIslandIsOpenToTheJeepAlone)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 10, 82, 1, 0, 1);
    PutOnRoad(state, 1, 0, 108, 5, 0, 1);
    EXPECT_TRUE(IsLegalMove(state, 1, 10, 82, 115, 4, true));
    // The tank finds the exact walk 108, 82, 81, 80, 115, but the island is no place for it.
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 108, 115, 4, true));
}

// --- Mines --------------------------------------------------------------

TEST(MinesOnTheRoad, CommandoLaysItsMineOnTheFieldItLeaves)
{
    BoardState state = StartPosition(1);
    ASSERT_TRUE(LoadMineInCamp(state, 1, 6, FirstStoredMine(state, 1)));
    PutOnRoad(state, 1, 6, 5, 1, 1, 1);  // "commando_1_1_1_o" on field 5
    ASSERT_TRUE(MineLayingOffered(state, 1, 6, 5));
    ASSERT_TRUE(IsLegalMove(state, 1, 6, 5, 6, 1, true));
    ExecuteMove(state, 1, 6, 5, 6, true);

    EXPECT_EQ(state.MinePos(1, 0), 5);
    EXPECT_EQ(state.BoardCell(5), 12);
    EXPECT_EQ(state.BoardCell(6), 7);
    EXPECT_EQ(TagMarkValue(state.VehicleTag(1, 6), 6), 0);
    EXPECT_FALSE(MineLayingOffered(state, 1, 6, 6));
}

// Edge case: on the bend no question comes, and the commando keeps its mine.
TEST(MinesOnTheRoad, CommandoOnABendKeepsItsMine)
{
    BoardState state = StartPosition(2);
    ASSERT_TRUE(LoadMineInCamp(state, 2, 7, 0));
    PutOnRoad(state, 2, 7, 7, 2, 1, 0);  // field 7 (MineSide 1), next to junction 8
    EXPECT_TRUE(MineLayingOffered(state, 2, 7, 7));
    // The question is answered no: the commando drives on to 8 with its mine.
    ASSERT_TRUE(IsLegalMove(state, 2, 7, 7, 8, 1, true));
    ExecuteMove(state, 2, 7, 7, 8, false);
    EXPECT_FALSE(MineLayingOffered(state, 2, 7, 8));
    ASSERT_TRUE(IsLegalMove(state, 2, 7, 8, 9, 1, true));
    ExecuteMove(state, 2, 7, 8, 9, false);

    EXPECT_EQ(state.MinePos(2, 0), -7);
    EXPECT_EQ(TagMarkValue(state.VehicleTag(2, 7), 7), 1);
    EXPECT_EQ(state.BoardCell(7), 0);
    EXPECT_EQ(state.BoardCell(8), 0);
    EXPECT_EQ(state.BoardCell(9), -8);
}

// Edge case: a commando driving into its own camp with a mine unloads it.
TEST(MinesOnTheRoad, CommandoIntoItsCampUnloadsItsMine)
{
    BoardState state = StartPosition(1);
    ASSERT_TRUE(LoadMineInCamp(state, 1, 7, 2));
    PutOnRoad(state, 1, 7, 71, 2, 1, 0);
    ASSERT_TRUE(IsLegalMove(state, 1, 7, 71, 113, 2, true));
    ExecuteMove(state, 1, 7, 71, 113, false);

    EXPECT_EQ(state.MinePos(1, 2), 113);
    EXPECT_TRUE(state.MinePicture(1, 2).Visible);
    EXPECT_EQ(state.VehicleTag(1, 7), "commando_1_0_0_o");
    EXPECT_EQ(state.CampCompanies(1), 15);
    for (int mine = 0; mine < 5; ++mine)
        EXPECT_EQ(state.MinePos(1, mine), 113);
    EXPECT_EQ(FirstStoredMine(state, 1), 0);
}

// Edge case: an enemy mine on the way blocks a genie that carries a mine; it
// can't take that mine either, and must go home first.
TEST(MinesOnTheRoad, EnemyMineBlocksAGenieCarryingAMine)
{
    BoardState state = StartPosition(1);
    state.MinePos(1, 0) = -8;
    PutOnRoad(state, 1, 8, 111, 2, 1, 1);  // "genie_1_2_1_o"
    LayMineAt(state, 2, 0, 110);

    EXPECT_FALSE(IsLegalMove(state, 1, 8, 111, 72, 2, true));  // the mine stands on the walk
    EXPECT_FALSE(IsLegalMove(state, 1, 8, 111, 110, 1, true)); // a second mine is refused
    ASSERT_TRUE(IsLegalMove(state, 1, 8, 111, 113, 5, true));  // home passes it

    ExecuteMove(state, 1, 8, 111, 113, false);
    EXPECT_EQ(state.MinePos(1, 0), 113);
    EXPECT_EQ(state.VehicleTag(1, 8), "genie_1_0_0_o");
}

TEST(MinesOnTheRoad, GenieWithoutAMinePicksUpEitherArmysMine)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 8, 111, 2, 0, 1);
    PutOnRoad(state, 1, 9, 73, 2, 0, 0);
    LayMineAt(state, 2, 3, 110);
    LayMineAt(state, 1, 1, 74);

    ASSERT_TRUE(IsLegalMove(state, 1, 8, 111, 110, 1, true));
    EXPECT_TRUE(state.Verdict.MinePickup);
    ExecuteMove(state, 1, 8, 111, 110, false);
    EXPECT_EQ(state.MinePos(2, 3), 5 - 8);
    EXPECT_EQ(TagMarkValue(state.VehicleTag(1, 8), 8), 2);
    EXPECT_EQ(state.BoardCell(110), 9);

    ASSERT_TRUE(IsLegalMove(state, 1, 9, 73, 74, 1, true));
    EXPECT_TRUE(state.Verdict.MinePickup);
    ExecuteMove(state, 1, 9, 73, 74, false);
    EXPECT_EQ(state.MinePos(1, 1), -9);
    EXPECT_EQ(TagMarkValue(state.VehicleTag(1, 9), 9), 1);
}

TEST(MinesOnTheRoad, OnlyAGenieMayEndOnAMine)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 0, 111, 5, 0, 1);
    PutOnRoad(state, 1, 6, 73, 2, 0, 0);
    LayMineAt(state, 2, 3, 110);
    LayMineAt(state, 1, 1, 74);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 111, 110, 1, true));
    EXPECT_FALSE(IsLegalMove(state, 1, 6, 73, 74, 1, true));
}

// A captured mine is lost to its owner for good: it lies in the other camp and
// no commando of its army can load it again.
TEST(MinesOnTheRoad, EnemyMineBroughtHomeIsLostToItsOwner)
{
    BoardState state = StartPosition(1);
    state.MinePos(2, 0) = 5 - 9;
    PutOnRoad(state, 1, 9, 71, 1, 2, 0);
    ASSERT_TRUE(IsLegalMove(state, 1, 9, 71, 113, 2, true));
    ExecuteMove(state, 1, 9, 71, 113, false);

    EXPECT_EQ(state.MinePos(2, 0), 113);
    EXPECT_TRUE(state.CapturedMinePicture(1, 0).Visible);
    EXPECT_EQ(FirstStoredMine(state, 2), 1);
    EXPECT_FALSE(LoadMineInCamp(state, 2, 6, 0));
}

// --- Flags --------------------------------------------------------------

TEST(FlagsOnTheRoad, InfantryLoadsAFlagOnItsFlagField)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 3, 67, 3, 0, 1);
    ASSERT_TRUE(IsLegalMove(state, 1, 3, 67, 69, 2, true));
    ASSERT_TRUE(state.Verdict.FlagLoad);
    ExecuteMove(state, 1, 3, 67, 69, false);

    EXPECT_EQ(TagMarkValue(state.VehicleTag(1, 3), 3), 1);
    EXPECT_EQ(state.FlagReserve(1), 4);
    EXPECT_EQ(state.FlagCarried(1), 1);
    EXPECT_EQ(FlagCount(state, 1), 5);
}

// A vehicle that refused a flag on arrival can take one when it drives off.
TEST(FlagsOnTheRoad, RefusedFlagCanBeTakenWhenDrivingOff)
{
    BoardState state = StartPosition(2);
    PutOnRoad(state, 2, 4, 2, 2, 0, 2);  // infantry of army 2 on its flag field 2
    ASSERT_TRUE(IsLegalMove(state, 2, 4, 2, 3, 1, true));
    EXPECT_TRUE(state.Verdict.FlagLoad);
    ExecuteMove(state, 2, 4, 2, 3, false);
    EXPECT_EQ(state.FlagReserve(2), 4);
    EXPECT_EQ(state.FlagCarried(2), 1);
}

TEST(FlagsOnTheRoad, NoFlagForAnInfantryThatCarriesOneOrWhenTheReserveIsEmpty)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 3, 67, 3, 1, 1);
    state.FlagReserve(1) = 4;
    state.FlagCarried(1) = 1;
    ASSERT_TRUE(IsLegalMove(state, 1, 3, 67, 69, 2, true));
    EXPECT_FALSE(state.Verdict.FlagLoad);

    BoardState empty = StartPosition(1);
    PutOnRoad(empty, 1, 4, 67, 3, 0, 1);
    empty.FlagReserve(1) = 0;
    empty.FlagHome(1) = 5;
    ASSERT_TRUE(IsLegalMove(empty, 1, 4, 67, 69, 2, true));
    EXPECT_FALSE(empty.Verdict.FlagLoad);
}

// Edge case: the fifth flag ends the game at the end of the turn, not at once.
TEST(FlagsOnTheRoad, FifthFlagHomeWinsOnlyAfterTheTurn)
{
    BoardState state = StartPosition(1);
    state.FlagReserve(1) = 0;
    state.FlagCarried(1) = 1;
    state.FlagHome(1) = 4;
    PutOnRoad(state, 1, 5, 71, 2, 1, 0);
    PutOnRoad(state, 1, 0, 20, 5, 0, 1);

    // First action: the carrier drives home.
    ASSERT_TRUE(IsLegalMove(state, 1, 5, 71, 113, 2, true));
    ExecuteMove(state, 1, 5, 71, 113, false);
    EXPECT_EQ(state.FlagHome(1), 5);
    EXPECT_EQ(state.FlagCarried(1), 0);
    EXPECT_EQ(FlagCoverFor(1, state.FlagHome(1)).Height, 0);

    // The turn goes on: the second action is still judged and carried out.
    ASSERT_TRUE(IsLegalMove(state, 1, 0, 20, 22, 2, true));
    ExecuteMove(state, 1, 0, 20, 22, false);
    EXPECT_EQ(state.VehiclePos(1, 0), 22);

    // Only the test after the turn ends the game.
    EXPECT_EQ(VerdictAfterLocalTurn(state, 1), TurnVerdict::GameWon);
}

// Edge case: a flag that lies in the reserve must be taken again; FlagHome of 5
// needs every flag of the army.
TEST(FlagsOnTheRoad, FiveHomeNeedsEveryFlag)
{
    BoardState state = StartPosition(2);
    state.FlagReserve(1) = 0;
    state.FlagCarried(1) = 1;
    state.FlagHome(1) = 4;
    PutOnRoad(state, 1, 3, 60, 3, 1, 1);
    PutOnRoad(state, 2, 0, 62, 5, 0, 3);

    ASSERT_TRUE(IsLegalMove(state, 2, 0, 62, 60, 2, true));
    ASSERT_TRUE(state.Verdict.ShootAllowed);
    ResolveShot(state, 2, 3);

    EXPECT_EQ(state.FlagReserve(1), 1);
    EXPECT_EQ(state.FlagHome(1), 4);
    EXPECT_EQ(VerdictAfterOpponentTurn(state, 2), TurnVerdict::GoesOn);
}

// --- A scripted fight ----------------------------------------------------

// Every action judged, carried out, and replayed on the opponent's copy of the
// same game; the numbers at the end are counted by hand.
TEST(ScriptedFight, PrisonersTakenRescuedAndLost)
{
    BoardState state = StartPosition(2);
    PutOnRoad(state, 2, 0, 64, 5, 0, 3);  // tank of army 2
    PutOnRoad(state, 2, 1, 108, 1, 0, 3); // kanon of army 2, one company
    PutOnRoad(state, 1, 3, 62, 3, 0, 0);  // infantry of army 1
    BoardState replay = state;
    replay.LocalSide = 1;

    auto shoot = [&](int side, int slot, int from, int to, int steps) {
        ASSERT_TRUE(IsLegalMove(state, side, slot, from, to, steps, true));
        ASSERT_TRUE(state.Verdict.ShootAllowed);
        const int target = std::abs(state.Verdict.ShootTarget) - 1;
        replay.Verdict = state.Verdict;
        ResolveShot(state, side, target);
        ResolveShot(replay, side, target);
    };

    // Army 2: two shots with two dice of 2 at the infantry on 62.
    shoot(2, 0, 64, 62, 2);
    shoot(2, 0, 64, 62, 2);
    EXPECT_EQ(state.VehicleCompanies(1, 3), 1);
    EXPECT_EQ(state.VehicleTag(1, 3), "infanterie_1_1_0_n");
    EXPECT_EQ(state.PrisonCompanies(1), 2);

    // Army 1: the jeep loads both prisoners and drives 115, 80, 81.
    ASSERT_TRUE(LoadJeepOnIsland(state, 1));
    ASSERT_TRUE(LoadJeepOnIsland(replay, 1));
    EXPECT_EQ(state.VehicleTag(1, 10), "jeep_1_2_w");
    ASSERT_TRUE(IsLegalMove(state, 1, 10, 115, 81, 2, true));
    replay.Verdict = state.Verdict;
    ExecuteMove(state, 1, 10, 115, 81, false);
    ExecuteMove(replay, 1, 10, 115, 81, false);
    EXPECT_EQ(state.VehicleTag(1, 10), "jeep_1_2_w");
    EXPECT_EQ(state.BoardCell(81), 11);

    // Army 2: the weak kanon may shoot the jeep (108, 82, 81); the last shot
    // destroys the infantry.
    shoot(2, 1, 108, 81, 2);
    shoot(2, 0, 64, 62, 2);

    EXPECT_EQ(state.ReserveCompanies(1), 13);
    EXPECT_EQ(state.CampCompanies(1), 12);
    EXPECT_EQ(state.PrisonCompanies(1), 0);
    EXPECT_EQ(state.VehiclePos(1, 10), 0);
    EXPECT_EQ(state.VehiclePos(1, 3), 0);
    EXPECT_EQ(state.VehicleTag(1, 10), "jeep_1_0_o");
    EXPECT_EQ(state.VehicleTag(1, 3), "infanterie_1_0_0_o");
    EXPECT_EQ(state.BoardCell(81), 0);
    EXPECT_EQ(state.BoardCell(62), 0);
    EXPECT_EQ(state.CompanySum(1), 25);
    EXPECT_EQ(state.ReserveCompanies(2), 10);
    EXPECT_EQ(state.CampCompanies(2), 9);
    EXPECT_EQ(state.CompanySum(2), 25);
    EXPECT_EQ(VerdictAfterLocalTurn(state, 2), TurnVerdict::GoesOn);

    // The opponent's copy agrees on everything but its own losses, which it
    // keeps in its Stock.
    EXPECT_TRUE(replay.VehiclePicture(1, 10).InStock);
    EXPECT_FALSE(state.VehiclePicture(1, 10).InStock);
    replay.LocalSide = 2;
    replay.VehiclePicture(1, 10).InStock = false;
    replay.VehiclePicture(1, 3).InStock = false;
    EXPECT_EQ(state, replay);
}

} // namespace
} // namespace vk
