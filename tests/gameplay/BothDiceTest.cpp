// One action with both dice: a vehicle of the camp that leaves with one 6
// (the other die + 1 steps) or goes to the HQ with a sum of 6, a vehicle on
// the board that goes the sum, the cancels that return to the choice of
// dice; and clicks kept out while the last file sent is not yet taken.

#include "GameplayFixture.h"

#include "board/Movement.h"

namespace vk::test {
namespace {

class BothDiceTest : public GameplayTest, public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override
    {
        GameplayTest::SetUp();
        StartGame(GetParam(), GetParam() == 1 ? 9 : 10);
        autoConsume = true;
    }

    // A free road square that a vehicle leaving the camp reaches in `steps`.
    int CampExit(int slot, int steps)
    {
        for (int field = kFirstRoadField; field <= kLastRoadField; ++field) {
            if (B().BoardCell(field) != 0)
                continue;
            const MoveVerdict verdict = JudgeMove(B(), Local(), slot, CampField(Local()), field, steps, false);
            if (verdict.Legal && !verdict.MinePickup && !verdict.FlagLoad && !verdict.CompassCrossed)
                return field;
        }
        return -1;
    }
};

TEST_P(BothDiceTest, WithOneSixACampVehicleLeavesTheCampByTheOtherDie)
{
    const int target = CampExit(0, 3);
    ASSERT_GT(target, 0);
    NextRoll(6, 2);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose both", [&] { W().Dices->Mouse.DblClick(); });
    AtPhase(23, "pick the tank", [&] {
        DoubleClick(Vehicle(Local(), 0));
        EXPECT_EQ(V().GamePhase, 25);
        EXPECT_FALSE(W().Dices->Enabled());
    });
    AtPhase(25, "load it, then cancel", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kCampVehicle));
        SlowClick(Vehicle(Local(), 0));
        EXPECT_EQ(B().CampCompanies(Local()), 14);
        DoubleClick(Vehicle(Local(), 0));
        EXPECT_EQ(V().GamePhase, 4);
        EXPECT_EQ(B().CampCompanies(Local()), 15);
    });
    AtPhase(4, "choose both again", [&] { W().Dices->Mouse.DblClick(); });
    AtPhase(23, "pick the tank again", [&] { DoubleClick(Vehicle(Local(), 0)); });
    AtPhase(25, "load two and drive out", [&] {
        SlowClick(Vehicle(Local(), 0));
        SlowClick(Vehicle(Local(), 0));
        DoubleClickField(target);
        EXPECT_EQ(V().GamePhase, 27);
    });
    PlayTurn();
    EXPECT_EQ(V().GamePhase, 39);
    EXPECT_EQ(B().VehiclePos(Local(), 0), target);
    EXPECT_EQ(B().VehicleCompanies(Local(), 0), 2);
    ASSERT_EQ(consumed.size(), 2u);
    const Keys act = consumed[1].Values;
    EXPECT_EQ(act.value(QStringLiteral("DICE")), QStringLiteral("3"));
    EXPECT_EQ(act.value(QStringLiteral("FROM")), QString::number(CampField(Local())));
    EXPECT_EQ(act.value(QStringLiteral("TO")), QString::number(target));
    EXPECT_EQ(act.value(QStringLiteral("ACT")), QStringLiteral("1"));
    EXPECT_EQ(act.value(QStringLiteral("VEHTAG")), QString::fromStdString(B().VehicleTag(Local(), 0)));
}

TEST_P(BothDiceTest, WithASumOfSixACampVehicleGoesOnlyToTheHQ)
{
    const int road = CampExit(1, 5);
    ASSERT_GT(road, 0);
    NextRoll(2, 4);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose both", [&] { W().Dices->Mouse.DblClick(); });
    AtPhase(23, "pick the canon", [&] { DoubleClick(Vehicle(Local(), 1)); });
    AtPhase(25, "the road is refused, the HQ taken", [&] {
        DoubleClickField(road);
        EXPECT_EQ(V().GamePhase, 25);
        DoubleClickField(HQField(Local()));
        EXPECT_EQ(V().GamePhase, 27);
    });
    PlayTurn();
    EXPECT_EQ(B().VehiclePos(Local(), 1), HQField(Local()));
    ASSERT_EQ(consumed.size(), 2u);
    EXPECT_EQ(consumed[1].Values.value(QStringLiteral("TO")), QString::number(HQField(Local())));
}

TEST_P(BothDiceTest, AVehicleOnTheBoardGoesTheSum)
{
    const int hq = HQField(Local());
    ToHQ(Local(), 1, 1);
    int sum = 2, target = -1;
    for (; sum <= 11 && target < 0; ++sum)
        target = MoveTarget(Local(), 1, hq, sum);
    --sum;
    ASSERT_GT(target, 0);
    const int first = sum > 5 ? 5 : sum - 1;
    NextRoll(first, sum - first);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose both", [&] { W().Dices->Mouse.DblClick(); });
    AtPhase(23, "pick the canon", [&] { DoubleClick(Vehicle(Local(), 1)); });
    AtPhase(26, "cancel", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kFieldVehicle));
        DoubleClick(Vehicle(Local(), 1));
        EXPECT_EQ(V().GamePhase, 4);
        EXPECT_FALSE(W().Kader->Visible());
    });
    AtPhase(4, "choose both again", [&] { W().Dices->Mouse.DblClick(); });
    AtPhase(23, "pick the canon again", [&] { DoubleClick(Vehicle(Local(), 1)); });
    AtPhase(26, "drive", [&] {
        DoubleClickField(target);
        EXPECT_EQ(V().GamePhase, 27);
        EXPECT_FALSE(W().Kader->Visible());
    });
    PlayTurn();
    EXPECT_EQ(B().VehiclePos(Local(), 1), target);
    ASSERT_EQ(consumed.size(), 2u);
    EXPECT_EQ(consumed[1].Values.value(QStringLiteral("DICE")), QStringLiteral("3"));
}

TEST_P(BothDiceTest, ClicksAreKeptOutUntilTheRollIsTaken)
{
    autoConsume = false;
    NextRoll(6, 1);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 1", [&] { W().Dice_1->Mouse.DblClick(); });
    AtPhase(5, "pick the tank", [&] { DoubleClick(Vehicle(Local(), 0)); });
    AtPhase(7, "send it to the HQ", [&] { DoubleClickField(HQField(Local())); });
    When("the action waits for the roll to be taken", [] { return Waiting() == QStringLiteral("consumed"); }, [&] {
        EXPECT_TRUE(V().InputLock);
        EXPECT_TRUE(FileExists(OwnPath(".wrp")));
        EXPECT_FALSE(FileExists(OwnPath(".act")));
        const int x = V().MouseX;
        const int y = V().MouseY;
        W().Speelveld->Mouse.MouseDown(1, x + 300, y + 300);
        EXPECT_EQ(V().MouseX, x);
        EXPECT_EQ(V().MouseY, y);
        Consume(OwnPath(".wrp"));
        autoConsume = true;
    });
    AtPhase(9, "the lock is off again", [&] {
        EXPECT_FALSE(V().InputLock);
        W().cmdEindeBeurt->Click();
    });
    PlayTurn();
    ASSERT_EQ(consumed.size(), 1u);
    EXPECT_EQ(consumed[0].Extension, QStringLiteral(".act"));
}

INSTANTIATE_TEST_SUITE_P(BothViews, BothDiceTest, ::testing::Values(1, 2));

} // namespace
} // namespace vk::test
