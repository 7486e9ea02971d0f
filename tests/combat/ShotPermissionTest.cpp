// Who may shoot what: the conditions on shooter and target.

#include <gtest/gtest.h>

#include "CombatFixtures.h"
#include "board/Shooting.h"
#include "shell/RunTimeFault.h"

namespace vk {
namespace {

using test::CellOf;
using test::PutOnRoad;
using test::StartPosition;

// Edge case: equal companies may shoot.
TEST(ShotPermitted, EqualCompaniesMayShoot)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 0, 20, 3);
    PutOnRoad(state, 2, 3, 22, 3);
    EXPECT_TRUE(ShotPermitted(state, 1, 0, CellOf(2, 3), true));
}

// Edge case: one company less in the shooter is not enough.
TEST(ShotPermitted, OneCompanyLessMayNotShoot)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 1, 20, 2);
    PutOnRoad(state, 2, 0, 22, 3);
    EXPECT_FALSE(ShotPermitted(state, 1, 1, CellOf(2, 0), true));
}

// Edge case: ... unless the target is the jeep.
TEST(ShotPermitted, WeakerVehicleMayShootTheJeep)
{
    BoardState state = StartPosition(2);
    PutOnRoad(state, 2, 6, 81, 1);
    PutOnRoad(state, 1, 10, 82, 3);
    EXPECT_TRUE(ShotPermitted(state, 2, 6, CellOf(1, 10), true));
}

TEST(ShotPermitted, JeepMayBeShotAtAnyNumberOfPrisoners)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 3, 30, 1);
    for (int prisoners : {0, 1, 2, 3}) {
        PutOnRoad(state, 2, 10, 32, prisoners);
        EXPECT_TRUE(ShotPermitted(state, 1, 3, CellOf(2, 10), true)) << prisoners;
    }
}

TEST(ShotPermitted, StrongerVehicleMayShoot)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 0, 20, 5);
    PutOnRoad(state, 2, 0, 22, 4);
    EXPECT_TRUE(ShotPermitted(state, 1, 0, CellOf(2, 0), true));
}

TEST(ShotPermitted, NotWhenLeavingTheCampWithBothDice)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 0, 20, 5);
    PutOnRoad(state, 2, 3, 22, 1);
    EXPECT_FALSE(ShotPermitted(state, 1, 0, CellOf(2, 3), false));
}

TEST(ShotPermitted, VehicleWithoutCompaniesCannotShoot)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 0, 20, 0);
    PutOnRoad(state, 2, 3, 22, 0);
    EXPECT_FALSE(ShotPermitted(state, 1, 0, CellOf(2, 3), true));
    // Nor one that went below zero by a hit on an empty vehicle.
    state.VehicleCompanies(1, 0) = -1;
    EXPECT_FALSE(ShotPermitted(state, 1, 0, CellOf(2, 3), true));
}

TEST(ShotPermitted, JeepHasNoWeapon)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 10, 20, 3);
    PutOnRoad(state, 2, 3, 22, 1);
    EXPECT_FALSE(ShotPermitted(state, 1, 10, CellOf(2, 3), true));
}

TEST(ShotPermitted, OwnVehicleIsNoTarget)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 0, 20, 5);
    PutOnRoad(state, 1, 3, 22, 1);
    EXPECT_FALSE(ShotPermitted(state, 1, 0, CellOf(1, 3), true));
    PutOnRoad(state, 2, 0, 40, 5);
    PutOnRoad(state, 2, 3, 42, 1);
    EXPECT_FALSE(ShotPermitted(state, 2, 0, CellOf(2, 3), true));
}

TEST(ShotPermitted, MineOrEmptyFieldIsNoTarget)
{
    BoardState state = StartPosition(1);
    PutOnRoad(state, 1, 0, 20, 5);
    EXPECT_FALSE(ShotPermitted(state, 1, 0, 0, true));
    EXPECT_FALSE(ShotPermitted(state, 1, 0, 12, true));
    EXPECT_FALSE(ShotPermitted(state, 1, 0, -12, true));
}

TEST(ShotPermitted, IndicesOutsideTheTablesAreFaults)
{
    BoardState state = StartPosition(1);
    EXPECT_THROW(ShotPermitted(state, 0, 0, -1, true), RunTimeFault);
    EXPECT_THROW(ShotPermitted(state, 3, 0, -1, true), RunTimeFault);
    EXPECT_THROW(ShotPermitted(state, 1, -1, -1, true), RunTimeFault);
    EXPECT_THROW(ShotPermitted(state, 1, 11, -1, true), RunTimeFault);
}

} // namespace
} // namespace vk
