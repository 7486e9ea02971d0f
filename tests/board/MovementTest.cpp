#include "board/Movement.h"
#include "shell/RunTimeFault.h"
#include "BoardFixtures.h"

#include <gtest/gtest.h>

namespace vk {
namespace {

using testing::LayMine;
using testing::LoadCompanies;
using testing::LoadOwnMine;
using testing::NewGame;
using testing::PutVehicle;

TEST(IsLegalMove, ForbiddenDestinationsOfArmy1)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 1, kEast);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 1, 2, 1, true)); // the flag field of army 2
    PutVehicle(state, 1, 1, 100, kSouth);
    EXPECT_FALSE(IsLegalMove(state, 1, 1, 100, 117, 1, true));
    PutVehicle(state, 1, 2, 112, kNorth);
    EXPECT_FALSE(IsLegalMove(state, 1, 2, 112, 118, 1, true));
    EXPECT_FALSE(IsLegalMove(state, 1, 2, 112, 116, 3, true));
}

TEST(IsLegalMove, ForbiddenDestinationsOfArmy2)
{
    BoardState state = NewGame();
    PutVehicle(state, 2, 0, 68, kSouth);
    EXPECT_FALSE(IsLegalMove(state, 2, 0, 68, 69, 1, true)); // the flag field of army 1
    PutVehicle(state, 2, 1, 71, kNorth);
    EXPECT_FALSE(IsLegalMove(state, 2, 1, 71, 114, 1, true));
    PutVehicle(state, 2, 2, 80, kNorth);
    EXPECT_FALSE(IsLegalMove(state, 2, 2, 80, 115, 1, true));
    // Army 2 may enter field 2, army 1 field 69.
    PutVehicle(state, 2, 3, 1, kEast);
    EXPECT_TRUE(IsLegalMove(state, 2, 3, 1, 2, 1, true));
    PutVehicle(state, 1, 3, 68, kSouth);
    EXPECT_TRUE(IsLegalMove(state, 1, 3, 68, 69, 1, true));
}

TEST(IsLegalMove, VerdictIsResetAtTheStart)
{
    BoardState state = NewGame();
    state.Verdict = MoveVerdict{true, true, 5, true, true, true, 2};
    PutVehicle(state, 1, 0, 20, kEast);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 2, 1, true));
    EXPECT_EQ(state.Verdict, MoveVerdict{});
}

// Edge case: with a die of 5 a vehicle reaches the far end of a strategic link as with a 1.
TEST(IsLegalMove, StrategicLinkWhateverTheSteps)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 8, kEast);
    for (int steps = 1; steps <= 6; ++steps) {
        EXPECT_TRUE(IsLegalMove(state, 1, 0, 8, 41, steps, true)) << steps;
        EXPECT_EQ(state.Verdict.Heading, kEast);
        EXPECT_FALSE(state.Verdict.ShootAllowed);
    }
    PutVehicle(state, 2, 0, 58, kWest);
    EXPECT_TRUE(IsLegalMove(state, 2, 0, 58, 11, 5, true));
    EXPECT_EQ(state.Verdict.Heading, kWest);
}

// Edge case: leaving 63 by its link faces w; arriving there from 28 faces n.
TEST(IsLegalMove, Field63TurnsTheHeading)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 63, kSouth);
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 63, 28, 4, true));
    EXPECT_EQ(state.Verdict.Heading, kWest);
    PutVehicle(state, 1, 1, 28, kEast);
    state.BoardCell(63) = 0;
    state.VehiclePos(1, 0) = 113;
    EXPECT_TRUE(IsLegalMove(state, 1, 1, 28, 63, 2, true));
    EXPECT_EQ(state.Verdict.Heading, kNorth);
}

TEST(IsLegalMove, StrategicLinkOnlyFromTheFirstSeventyFields)
{
    // The rule looks at 1 <= from <= 70; every link end lies there, so the link works
    // both ways; a link to an occupied far end is no short cut.
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 8, kEast);
    PutVehicle(state, 1, 1, 41, kEast);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 8, 41, 3, true));
    // With the far end held by a mine the link is no short cut either, and a walk of
    // 1 can't reach 41 by road.
    state.BoardCell(41) = 0;
    state.VehiclePos(1, 1) = 113;
    LayMine(state, 2, 0, 41);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 8, 41, 1, true));
}

// A strategic link doesn't carry a shot: the walk search never takes it.
TEST(IsLegalMove, NoShotAlongAStrategicLink)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 8, kEast);
    LoadCompanies(state, 1, 0, 5);
    PutVehicle(state, 2, 0, 41, kWest);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 8, 41, 1, true));
}

TEST(IsLegalMove, HeadingIsThatOfTheRoadAhead)
{
    BoardState state = NewGame();
    // Entering field 2 from field 1 faces z at once, though the move went east.
    PutVehicle(state, 2, 0, 1, kEast);
    EXPECT_TRUE(IsLegalMove(state, 2, 0, 1, 2, 1, true));
    EXPECT_EQ(state.Verdict.Heading, kSouth);
    PutVehicle(state, 1, 0, 20, kEast);
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 20, 24, 4, true));
    EXPECT_EQ(state.Verdict.Heading, kEast); // 24 entered from 23
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 20, 19, 1, true));
    EXPECT_EQ(state.Verdict.Heading, kWest); // 19 entered from 20
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 20, 26, 6, true));
    EXPECT_EQ(state.Verdict.Heading, kNorth); // 26 entered from 25
}

// Edge case: next to its own HQ a vehicle enters it only with exactly 1; the camp beyond
// takes any steps of 2 or more.
TEST(IsLegalMove, HQByExactCountCampWithAnyTwoOrMore)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 71, kNorth);
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 71, 114, 1, true));
    EXPECT_EQ(state.Verdict.Heading, kEast);
    for (int steps = 2; steps <= 12; ++steps)
        EXPECT_FALSE(IsLegalMove(state, 1, 0, 71, 114, steps, true)) << steps;
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 71, 113, 1, true));
    for (int steps = 2; steps <= 12; ++steps)
        EXPECT_TRUE(IsLegalMove(state, 1, 0, 71, 113, steps, true)) << steps;

    PutVehicle(state, 2, 0, 100, kSouth);
    EXPECT_TRUE(IsLegalMove(state, 2, 0, 100, 117, 1, true));
    EXPECT_EQ(state.Verdict.Heading, kWest);
    EXPECT_FALSE(IsLegalMove(state, 2, 0, 100, 117, 2, true));
    EXPECT_TRUE(IsLegalMove(state, 2, 0, 100, 116, 7, true));
}

TEST(IsLegalMove, FullHQIsNoDestination)
{
    BoardState state = NewGame();
    for (int slot = 1; slot <= 3; ++slot)
        ASSERT_TRUE(SendCampVehicleToHQ(state, 1, slot));
    PutVehicle(state, 1, 0, 71, kNorth);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 71, 114, 1, true));
    EXPECT_FALSE(SendCampVehicleToHQ(state, 1, 4));
}

TEST(IsLegalMove, HQEntryBlockedByAMineOrAnEnemyOnTheWay)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 73, kNorth);
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 73, 114, 3, true));
    LayMine(state, 1, 0, 72);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 73, 114, 3, true));
    state.BoardCell(72) = 0;
    state.MinePos(1, 0) = 113;
    PutVehicle(state, 2, 4, 71, kNorth);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 73, 114, 3, true));
    // An own vehicle on the way doesn't block.
    PutVehicle(state, 1, 4, 71, kNorth);
    state.VehiclePos(2, 4) = 116;
    state.BoardCell(71) = 5;
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 73, 114, 3, true));
}

// Edge case: a full HQ can't be passed on the road; an enemy can never pass an HQ.
TEST(IsLegalMove, FullHQCannotBePassedAndEnemyNeverPassesAnHQ)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 71, kNorth);
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 71, 84, 3, true)); // 71, 114, 83, 84
    EXPECT_EQ(state.Verdict.Heading, kSouth);
    for (int slot = 1; slot <= 3; ++slot)
        ASSERT_TRUE(SendCampVehicleToHQ(state, 1, slot));
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 71, 84, 3, true));

    BoardState other = NewGame();
    PutVehicle(other, 2, 0, 71, kNorth);
    EXPECT_FALSE(IsLegalMove(other, 2, 0, 71, 84, 3, true));
    PutVehicle(other, 1, 0, 100, kSouth);
    EXPECT_FALSE(IsLegalMove(other, 1, 0, 100, 108, 3, true)); // 100, 117, 109, 108
    PutVehicle(other, 2, 1, 100, kSouth);
    other.BoardCell(100) = -2;
    EXPECT_TRUE(IsLegalMove(other, 2, 1, 100, 108, 3, true));
}

// Edge case: the step straight back is refused, so an odd count can't be made up.
TEST(IsLegalMove, NoStepStraightBack)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 20, kEast);
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 20, 21, 1, true));
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 21, 3, true));
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 20, 2, true));
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 19, 3, true));
}

TEST(IsLegalMove, WalkBlockedByMinesOfEitherArmyAndEnemies)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 20, kEast);
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 20, 23, 3, true));
    LayMine(state, 1, 0, 21); // its own army's mine blocks too
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 23, 3, true));
    state.BoardCell(21) = 0;
    state.MinePos(1, 0) = 113;
    LayMine(state, 2, 0, 22);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 23, 3, true));
    state.BoardCell(22) = 0;
    state.MinePos(2, 0) = 116;
    PutVehicle(state, 2, 5, 22, kWest);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 23, 3, true));
    state.BoardCell(22) = 0;
    state.VehiclePos(2, 5) = 116;
    PutVehicle(state, 1, 5, 22, kEast);
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 20, 23, 3, true)); // own vehicles never block
}

// Edge case: of two walks of equal length the first found decides, and a mine on it makes
// the move illegal though the other is free. The shortest such pair on this board is 22
// steps long: from 1 by 77, 76, 75, 78, 79, 19 ... 34 to 94, or by 2 ... 18, 92, 93, 96, 95.
TEST(IsLegalMove, OnlyTheFirstWalkIsJudged)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 1, kEast);
    const Walk walk = FindFirstWalk(1, 0, 1, 94, 22);
    ASSERT_TRUE(walk.Complete);
    EXPECT_EQ(walk.P[21], 77);
    EXPECT_EQ(walk.P[17], 79);
    EXPECT_EQ(walk.P[16], 19);
    EXPECT_EQ(walk.P[1], 34);
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 1, 94, 22, true));
    LayMine(state, 2, 0, 5); // on the second walk only
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 1, 94, 22, true));
    LayMine(state, 2, 1, 25); // on the first walk
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 1, 94, 22, true));
}

// The home short cut ends the search and skips every blocking test.
TEST(IsLegalMove, HomeShortCutIgnoresMinesAndEnemies)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 73, kNorth);
    LayMine(state, 2, 0, 72);
    PutVehicle(state, 2, 3, 71, kNorth);
    for (int steps = 4; steps <= 12; ++steps)
        EXPECT_TRUE(IsLegalMove(state, 1, 0, 73, 113, steps, true)) << steps;
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 73, 113, 3, true));
    // A full HQ on the way doesn't stop it either.
    for (int slot = 1; slot <= 3; ++slot)
        ASSERT_TRUE(SendCampVehicleToHQ(state, 1, slot));
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 73, 113, 4, true));
    const Walk walk = FindFirstWalk(1, 0, 73, 113, 9);
    EXPECT_TRUE(walk.HomeShortCut);
    EXPECT_FALSE(walk.Complete);
}

TEST(IsLegalMove, JeepGoesBackToItsIslandLeniently)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 10, 82, kWest);
    LayMine(state, 2, 0, 81);
    EXPECT_TRUE(IsLegalMove(state, 1, 10, 82, 115, 5, true));
    EXPECT_FALSE(IsLegalMove(state, 1, 10, 82, 115, 2, true));
    // Any other vehicle that reaches the island by an exact walk is refused.
    PutVehicle(state, 1, 0, 81, kWest);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 81, 115, 2, true));
    PutVehicle(state, 2, 10, 110, kEast);
    EXPECT_FALSE(IsLegalMove(state, 2, 10, 110, 118, 2, true));
    EXPECT_TRUE(IsLegalMove(state, 2, 10, 110, 118, 3, true));
    EXPECT_TRUE(IsLegalMove(state, 2, 10, 110, 118, 7, true));
}

TEST(IsLegalMove, TheOtherArmysCampIsNeverOnTheWay)
{
    // The walk may cross an HQ (judged afterwards), never the other army's camp.
    const Walk walk = FindFirstWalk(1, 0, 100, 109, 2);
    ASSERT_TRUE(walk.Complete);
    EXPECT_EQ(walk.P, (std::vector<int>{109, 117, 100}));
    const Walk through = FindFirstWalk(1, 0, 100, 116, 2);
    EXPECT_FALSE(through.Complete);
    EXPECT_FALSE(through.HomeShortCut);
    const Walk home = FindFirstWalk(2, 0, 100, 116, 2);
    EXPECT_TRUE(home.HomeShortCut);
    const Walk other = FindFirstWalk(2, 0, 71, 113, 2);
    EXPECT_FALSE(other.Complete);
    EXPECT_FALSE(other.HomeShortCut);
}

TEST(IsLegalMove, MineOnTheDestinationOnlyForAnEmptyGenie)
{
    BoardState state = NewGame();
    LayMine(state, 2, 0, 21);
    PutVehicle(state, 1, 8, 20, kEast);
    EXPECT_TRUE(IsLegalMove(state, 1, 8, 20, 21, 1, true));
    EXPECT_TRUE(state.Verdict.MinePickup);
    EXPECT_EQ(state.Verdict.Heading, kEast);
    PutVehicle(state, 1, 6, 22, kWest);
    LoadCompanies(state, 1, 6, 2);
    EXPECT_FALSE(IsLegalMove(state, 1, 6, 22, 21, 1, true));
    EXPECT_FALSE(state.Verdict.MinePickup);
    // Its own army's mine is taken the same way.
    LayMine(state, 1, 0, 19);
    EXPECT_TRUE(IsLegalMove(state, 1, 8, 20, 19, 1, true));
    EXPECT_TRUE(state.Verdict.MinePickup);
}

// Edge case: a genie that carries a mine is refused a second mine.
TEST(IsLegalMove, GenieWithAMineIsRefusedASecond)
{
    BoardState state = NewGame();
    LoadOwnMine(state, 1, 9);
    PutVehicle(state, 1, 9, 20, kEast);
    LayMine(state, 2, 0, 21);
    EXPECT_FALSE(IsLegalMove(state, 1, 9, 20, 21, 1, true));
    EXPECT_FALSE(state.Verdict.MinePickup);
}

TEST(IsLegalMove, FlagLoadFromOrToTheFlagField)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 3, 68, kSouth);
    EXPECT_TRUE(IsLegalMove(state, 1, 3, 68, 69, 1, true));
    EXPECT_TRUE(state.Verdict.FlagLoad);
    state.BoardCell(68) = 0;
    PutVehicle(state, 1, 3, 69, kEast);
    EXPECT_TRUE(IsLegalMove(state, 1, 3, 69, 70, 1, true));
    EXPECT_TRUE(state.Verdict.FlagLoad);
    EXPECT_TRUE(IsLegalMove(state, 1, 3, 69, 67, 2, true));
    EXPECT_TRUE(state.Verdict.FlagLoad);
    // Not without flags in the reserve, not with a flag aboard, not for another type.
    state.FlagReserve(1) = 0;
    EXPECT_TRUE(IsLegalMove(state, 1, 3, 69, 70, 1, true));
    EXPECT_FALSE(state.Verdict.FlagLoad);
    state.FlagReserve(1) = 5;
    state.VehicleTag(1, 3) = "infanterie_1_0_1_o";
    EXPECT_TRUE(IsLegalMove(state, 1, 3, 69, 70, 1, true));
    EXPECT_FALSE(state.Verdict.FlagLoad);
    PutVehicle(state, 1, 0, 68, kSouth);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 68, 69, 1, true)); // infantry stands there
    state.BoardCell(69) = 0;
    state.VehiclePos(1, 3) = 113;
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 68, 69, 1, true));
    EXPECT_FALSE(state.Verdict.FlagLoad);
    // Army 2 takes its flags on field 2.
    PutVehicle(state, 2, 4, 3, kNorth);
    EXPECT_TRUE(IsLegalMove(state, 2, 4, 3, 2, 1, true));
    EXPECT_TRUE(state.Verdict.FlagLoad);
}

TEST(IsLegalMove, CompassCrossedOnTheLastStepOverAForwardPost)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 74, kWest);
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 74, 75, 1, true));
    EXPECT_TRUE(state.Verdict.CompassCrossed);
    PutVehicle(state, 1, 1, 73, kSouth);
    EXPECT_TRUE(IsLegalMove(state, 1, 1, 73, 75, 2, true));
    EXPECT_TRUE(state.Verdict.CompassCrossed);
    EXPECT_TRUE(IsLegalMove(state, 1, 1, 73, 76, 3, true));
    EXPECT_FALSE(state.Verdict.CompassCrossed); // the post is not the last step
    PutVehicle(state, 1, 2, 86, kWest);
    EXPECT_TRUE(IsLegalMove(state, 1, 2, 86, 87, 1, true));
    EXPECT_TRUE(state.Verdict.CompassCrossed);
    // The posts of army 2 earn nothing for army 1, and the other way round.
    PutVehicle(state, 1, 3, 97, kWest);
    EXPECT_TRUE(IsLegalMove(state, 1, 3, 97, 96, 1, true));
    EXPECT_FALSE(state.Verdict.CompassCrossed);
    PutVehicle(state, 2, 0, 97, kWest);
    state.BoardCell(97) = -1;
    state.VehiclePos(1, 3) = 113;
    EXPECT_TRUE(IsLegalMove(state, 2, 0, 97, 96, 1, true));
    EXPECT_TRUE(state.Verdict.CompassCrossed);
    PutVehicle(state, 2, 1, 106, kWest);
    EXPECT_TRUE(IsLegalMove(state, 2, 1, 106, 105, 1, true));
    EXPECT_TRUE(state.Verdict.CompassCrossed);
    PutVehicle(state, 2, 2, 74, kWest);
    EXPECT_TRUE(IsLegalMove(state, 2, 2, 74, 75, 1, true));
    EXPECT_FALSE(state.Verdict.CompassCrossed);
}

TEST(IsLegalMove, ShotAtAnEnemyOnTheDestination)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 20, kEast);
    LoadCompanies(state, 1, 0, 3);
    PutVehicle(state, 2, 1, 23, kWest);
    LoadCompanies(state, 2, 1, 3);
    LayMine(state, 2, 0, 21); // a shot passes over mines
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 20, 23, 3, true));
    EXPECT_TRUE(state.Verdict.ShootAllowed);
    EXPECT_EQ(state.Verdict.ShootTarget, -2);
    EXPECT_EQ(state.Verdict.Heading, kEast); // the shooter's heading stays
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 23, 2, true)); // exactly the steps
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 23, 3, false)); // leaving the camp with both dice
    LoadCompanies(state, 2, 1, 4);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 23, 3, true)); // weaker shooter
}

TEST(IsLegalMove, WhoMayShoot)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 20, kEast);
    PutVehicle(state, 2, 10, 21, kWest);
    state.VehicleCompanies(2, 10) = 3;
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 21, 1, true)); // no company aboard
    LoadCompanies(state, 1, 0, 1);
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 20, 21, 1, true)); // the jeep at any strength
    EXPECT_EQ(state.Verdict.ShootTarget, -11);
    PutVehicle(state, 1, 10, 22, kWest);
    state.VehicleCompanies(1, 10) = 3;
    EXPECT_FALSE(IsLegalMove(state, 1, 10, 22, 21, 1, true)); // the jeep has no weapon
    PutVehicle(state, 1, 1, 19, kEast);
    LoadCompanies(state, 1, 1, 4);
    EXPECT_FALSE(IsLegalMove(state, 1, 1, 19, 20, 1, true)); // an own vehicle
}

TEST(IsLegalMove, OtherLargeAreasAreIllegal)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 20, kEast);
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 119, 1, true));
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 20, 0, 1, true));
}

TEST(IsLegalMove, AWalkOfLessThanOneStepIsAFault)
{
    BoardState state = NewGame();
    PutVehicle(state, 1, 0, 20, kEast);
    EXPECT_THROW(IsLegalMove(state, 1, 0, 20, 21, 0, true), RunTimeFault);
    EXPECT_THROW(IsLegalMove(state, 1, 11, 20, 21, 1, true), RunTimeFault);
    EXPECT_THROW(IsLegalMove(state, 3, 0, 20, 21, 1, true), RunTimeFault);
}

// Edge case: rows 0 and 119 are never reached by a walk.
TEST(FindFirstWalk, NeverReachesRows0And119)
{
    for (int side = 1; side <= 2; ++side)
        for (int from = 1; from <= 118; ++from)
            for (int steps = 1; steps <= 12; ++steps)
                for (int to : {1, 40, 75, 105, 113, 116}) {
                    const Walk walk = FindFirstWalk(side, 0, from, to, steps);
                    for (int field : walk.P) {
                        EXPECT_NE(field, 0);
                        EXPECT_NE(field, 119);
                    }
                }
}

TEST(FindFirstWalk, CampVehicleGoesByTheHQ)
{
    const Walk walk = FindFirstWalk(1, 0, 113, 72, 3);
    ASSERT_TRUE(walk.Complete);
    EXPECT_EQ(walk.P, (std::vector<int>{72, 71, 114, 113}));
    BoardState state = NewGame();
    EXPECT_TRUE(IsLegalMove(state, 1, 0, 113, 72, 3, false));
    EXPECT_EQ(state.Verdict.Heading, kNorth);
    for (int slot = 1; slot <= 3; ++slot)
        ASSERT_TRUE(SendCampVehicleToHQ(state, 1, slot));
    EXPECT_FALSE(IsLegalMove(state, 1, 0, 113, 72, 3, false));
}

} // namespace
} // namespace vk
