// Picking a vehicle on the board, in both views: a move to a field double
// clicked on the board, a move undone by the fuel block while a shot still
// goes, the vehicle whose crew sleeps under the tse-tse; and the clicks on
// the board picture and on the mines: the press and double click at the
// centre of a field's hit rectangle reach that field, and a double click on a
// mine hands the click to the field under it.

#include "GameplayFixture.h"

#include "board/Movement.h"
#include "board/VehicleTag.h"

namespace vk::test {
namespace {

class FieldPickTest : public GameplayTest, public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override
    {
        GameplayTest::SetUp();
        StartGame(GetParam(), GetParam() == 1 ? 7 : 8);
        autoConsume = true;
    }
};

TEST_P(FieldPickTest, AVehicleOfTheHQMovesToTheFieldDoubleClicked)
{
    const int hq = HQField(Local());
    ToHQ(Local(), 1, 2);
    int steps = 1;
    int target = -1;
    for (; steps <= 6 && target < 0; ++steps)
        target = MoveTarget(Local(), 1, hq, steps);
    --steps;
    ASSERT_GT(target, 0);
    const MoveVerdict verdict = JudgeMove(B(), Local(), 1, hq, target, steps, true);
    NextRoll(steps, steps == 6 ? 5 : 6);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 1", [&] { W().Dice_1->Mouse.DblClick(); });
    AtPhase(5, "pick the canon", [&] {
        DoubleClick(Vehicle(Local(), 1));
        EXPECT_EQ(V().GamePhase, 8);
        EXPECT_EQ(V().Act.ActFrom[0], hq);
        EXPECT_TRUE(W().Kader->Visible());
    });
    AtPhase(8, "double click the field", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kFieldVehicle));
        DoubleClickField(target);
        EXPECT_EQ(V().GamePhase, 9);
        EXPECT_FALSE(W().Kader->Visible());
        EXPECT_EQ(V().Act.ActTo[0], target);
    });
    AtPhase(9, "end the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(B().VehiclePos(Local(), 1), target);
    EXPECT_EQ(B().BoardCell(target), (Local() == 1 ? 1 : -1) * 2);
    EXPECT_EQ(B().HQCount(Local()), 0);
    const TwipPoint anchor = AnchorFor(target, verdict.Heading);
    EXPECT_EQ(BoxOf(*Vehicle(Local(), 1)), Seen(anchor.X, anchor.Y, PictureWidthFor(verdict.Heading),
                                                 PictureHeightFor(verdict.Heading)));
    ASSERT_EQ(consumed.size(), 2u);
    const Keys act = consumed[1].Values;
    EXPECT_EQ(act.value(QStringLiteral("DIRECT")), QString::number(verdict.Heading));
    EXPECT_EQ(act.value(QStringLiteral("DICE")), QStringLiteral("1"));
    EXPECT_EQ(act.value(QStringLiteral("VEH")), QStringLiteral("1"));
    EXPECT_EQ(act.value(QStringLiteral("ACT")), QStringLiteral("1"));
    EXPECT_EQ(act.value(QStringLiteral("FROM")), QString::number(hq));
    EXPECT_EQ(act.value(QStringLiteral("TO")), QString::number(target));
    EXPECT_EQ(act.value(QStringLiteral("VEHTAG")), QString::fromStdString(B().VehicleTag(Local(), 1)));
    // The record of phase 8 has VEH before DICE, and VEHTAG last.
    const QByteArray& raw = consumed[1].Raw;
    EXPECT_LT(raw.indexOf("\nVEH="), raw.indexOf("\nDICE=")) << raw.toStdString();
    EXPECT_LT(raw.indexOf("\nTO="), raw.indexOf("\nVEHTAG=")) << raw.toStdString();
    EXPECT_EQ(V().LastSentFile, OwnPath(".act"));
}

TEST_P(FieldPickTest, WithoutFuelAMoveIsUndoneButAShotGoes)
{
    const int hq = HQField(Local());
    ToHQ(Local(), 0, 2);
    B().Brandstof(Local()) = 1;
    // A die that brings the tank to two free fields: one to move to, one for
    // an enemy infantry with one company to shoot at.
    int steps = 0, target = -1, enemyField = -1;
    for (int s = 1; s <= 6 && enemyField < 0; ++s) {
        target = MoveTarget(Local(), 0, hq, s);
        enemyField = target < 0 ? -1 : MoveTarget(Local(), 0, hq, s, target);
        steps = s;
    }
    ASSERT_GT(enemyField, 0);
    PutOnField(External(), 3, enemyField, 1);
    ASSERT_TRUE(JudgeMove(B(), Local(), 0, hq, enemyField, steps, true).ShootAllowed);
    NextRoll(steps, steps);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 1", [&] { W().Dice_1->Mouse.DblClick(); });
    AtPhase(5, "pick the tank", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kNoFuel));
        DoubleClick(Vehicle(Local(), 0));
        EXPECT_EQ(V().GamePhase, 8);
    });
    AtPhase(8, "try to move", [&] {
        DoubleClickField(target);
        EXPECT_EQ(V().GamePhase, 4);
        EXPECT_FALSE(W().Kader->Visible());
        EXPECT_EQ(B().VehiclePos(Local(), 0), hq);
        EXPECT_EQ(B().BoardCell(target), 0);
        EXPECT_EQ(B().HQCount(Local()), 1);
    });
    AtPhase(4, "the die is still there", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kChooseDice));
        EXPECT_TRUE(W().Dice_1->Visible() && W().Dice_1->Enabled());
        EXPECT_FALSE(FileExists(OwnPath(".act")));
        W().Dice_1->Mouse.DblClick();
    });
    AtPhase(5, "pick the tank again", [&] { DoubleClick(Vehicle(Local(), 0)); });
    AtPhase(8, "shoot at the infantry", [&] {
        DoubleClick(Vehicle(External(), 3));
        EXPECT_EQ(V().GamePhase, 9);
        EXPECT_FALSE(W().Kader->Visible());
        EXPECT_EQ(V().Act.ActCode[0], 2);
        EXPECT_EQ(V().Act.ActTo[0], enemyField);
    });
    AtPhase(9, "choose die 2", [&] { W().Dice_2->Mouse.DblClick(); });
    AtPhase(10, "the tank shot and may act again", [&] {
        DoubleClick(Vehicle(Local(), 0));
        EXPECT_EQ(V().GamePhase, 13);
    });
    AtPhase(13, "try to move with die 2", [&] {
        DoubleClickField(target);
        EXPECT_EQ(V().GamePhase, 9);
        EXPECT_FALSE(W().Kader->Visible());
        EXPECT_EQ(B().VehiclePos(Local(), 0), hq);
        EXPECT_EQ(B().BoardCell(target), 0);
    });
    AtPhase(9, "die 2 is still there; end the turn", [&] {
        EXPECT_TRUE(W().Dice_2->Visible() && W().Dice_2->Enabled());
        EXPECT_EQ(V().Act.ActVeh[1], -1);
        W().cmdEindeBeurt->Click();
    });
    PlayTurn();
    // One company: the infantry is destroyed, the tank stays.
    EXPECT_EQ(B().VehiclePos(External(), 3), 0);
    EXPECT_EQ(B().BoardCell(enemyField), 0);
    EXPECT_EQ(B().VehiclePos(Local(), 0), hq);
    EXPECT_EQ(B().Brandstof(Local()), 0);
    ASSERT_EQ(consumed.size(), 2u);
    const Keys act = consumed[1].Values;
    EXPECT_EQ(act.value(QStringLiteral("ACT")), QStringLiteral("2"));
    EXPECT_EQ(act.value(QStringLiteral("VEH")), QStringLiteral("0"));
    EXPECT_EQ(act.value(QStringLiteral("FROM")), QString::number(hq));
    EXPECT_EQ(act.value(QStringLiteral("TO")), QString::number(enemyField));
    EXPECT_TRUE(Logged(QStringLiteral("shooting with tank")));
}

TEST_P(FieldPickTest, WithoutFuelNoVehicleLeavesTheCamp)
{
    B().Brandstof(Local()) = 2;
    NextRoll(6, 6);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 1", [&] { W().Dice_1->Mouse.DblClick(); });
    AtPhase(5, "the camp vehicle refuses", [&] {
        DoubleClick(Vehicle(Local(), 0));
        EXPECT_EQ(V().GamePhase, 5);
        EXPECT_EQ(V().Act.ActVeh[0], -1);
        EXPECT_FALSE(W().Kader->Visible());
        W().Dice_1->Mouse.DblClick();
    });
    AtPhase(4, "end the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(B().Brandstof(Local()), 1);
}

TEST_P(FieldPickTest, TheJeepLeavesItsIslandOnlyWithPrisonersAboard)
{
    const int island = IslandField(Local());
    int steps = 1, target = -1;
    for (; steps <= 6 && target < 0; ++steps)
        target = MoveTarget(Local(), kJeepSlot, island, steps);
    --steps;
    ASSERT_GT(target, 0);
    NextRoll(steps, steps == 1 ? 2 : 1);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 1", [&] { W().Dice_1->Mouse.DblClick(); });
    AtPhase(5, "without prisoners the jeep refuses; with two it takes them aboard", [&] {
        DoubleClick(Vehicle(Local(), kJeepSlot));
        EXPECT_EQ(V().GamePhase, 5);
        B().CampCompanies(Local()) -= 2;
        B().PrisonCompanies(Local()) = 2;
        DoubleClick(Vehicle(Local(), kJeepSlot));
        EXPECT_EQ(V().GamePhase, 8);
        EXPECT_EQ(B().VehicleCompanies(Local(), kJeepSlot), 2);
        EXPECT_EQ(V().Act.ActFrom[0], island);
        EXPECT_EQ(Vehicle(Local(), kJeepSlot)->Picture(),
                  Global().ArmyImageFolder[View().BoardSide - 1] +
                      QString::fromStdString(B().VehicleTag(Local(), kJeepSlot)) + QStringLiteral(".gif"));
    });
    AtPhase(8, "drive off the island", [&] {
        DoubleClickField(target);
        EXPECT_EQ(V().GamePhase, 9);
    });
    AtPhase(9, "end the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(B().VehiclePos(Local(), kJeepSlot), target);
    ASSERT_EQ(consumed.size(), 2u);
    EXPECT_EQ(consumed[1].Values.value(QStringLiteral("FROM")), QString::number(island));
    EXPECT_EQ(consumed[1].Values.value(QStringLiteral("VEH")), QStringLiteral("10"));
}

TEST_P(FieldPickTest, TheCrewUnderTheTsetseDoesNothing)
{
    B().Tsetse(Local()) = 1;
    B().TsetseVeh = 0;
    NextRoll(6, 2);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 1", [&] { W().Dice_1->Mouse.DblClick(); });
    AtPhase(5, "the tank sleeps, the canon doesn't", [&] {
        DoubleClick(Vehicle(Local(), 0));
        EXPECT_EQ(V().GamePhase, 5);
        EXPECT_EQ(V().Act.ActVeh[0], -1);
        EXPECT_FALSE(W().Kader->Visible());
        ASSERT_EQ(boxes.size(), 1);
        EXPECT_EQ(boxes[0], QStringLiteral("Voertuig niet paraat|De bemanning van het gekozen voertuig slaapt door "
                                           "toedoen van tse tse vliegen, en kan niets doen."));
        DoubleClick(Vehicle(Local(), 1));
        EXPECT_EQ(V().GamePhase, 7);
        EXPECT_EQ(V().Act.ActVeh[0], 1);
    });
    AtPhase(7, "cancel", [&] { DoubleClick(Vehicle(Local(), 1)); });
    AtPhase(4, "end the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(boxes.size(), 1);
    EXPECT_EQ(B().Tsetse(Local()), 0);
}

TEST_P(FieldPickTest, TheTsetseOfTheOtherArmyDoesNotHoldTheSameSlot)
{
    B().Tsetse(External()) = 1;
    B().TsetseVeh = 0;
    NextRoll(6, 2);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 1", [&] { W().Dice_1->Mouse.DblClick(); });
    AtPhase(5, "pick the tank", [&] {
        DoubleClick(Vehicle(Local(), 0));
        EXPECT_EQ(V().GamePhase, 7);
        EXPECT_TRUE(boxes.isEmpty());
        DoubleClick(Vehicle(Local(), 0));
    });
    AtPhase(4, "end the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(B().Tsetse(External()), 1);
}

INSTANTIATE_TEST_SUITE_P(BothViews, FieldPickTest, ::testing::Values(1, 2));

class BoardClickTest : public GameplayTest, public ::testing::WithParamInterface<int> {};

TEST_P(BoardClickTest, TheCentreOfEveryFieldReachesThatField)
{
    // The opponent's turn: the click only records its field.
    StartGame(GetParam(), GetParam() == 1 ? 2 : 1);
    V().GamePhase = 8;
    for (int field = 1; field <= kLastField; ++field) {
        const TwipPoint at = HitCentre(View(), field);
        W().Speelveld->Mouse.MouseDown(1, at.X, at.Y);
        W().Speelveld->Mouse.DblClick();
        EXPECT_EQ(V().Act.ActTo[0], field) << "the centre " << at.X << ", " << at.Y << " in view " << GetParam();
    }
    EXPECT_EQ(V().GamePhase, 8);
}

TEST_P(BoardClickTest, APressOutsideEveryFieldIsNoDestination)
{
    StartGame(GetParam(), GetParam() == 1 ? 2 : 1);
    V().GamePhase = 8;
    V().Act.ActTo[0] = -1;
    W().Speelveld->Mouse.MouseDown(1, 1, 1);
    W().Speelveld->Mouse.DblClick();
    EXPECT_EQ(V().Act.ActTo[0], -1);
}

TEST_P(BoardClickTest, ADoubleClickOnAMineIsAClickOnItsField)
{
    StartGame(GetParam(), GetParam() == 1 ? 13 : 14);
    autoConsume = true;
    const int hq = HQField(Local());
    ToHQ(Local(), 8, 1);
    int steps = 0, owner = 0;
    const int field = LayMineInReach(Local(), 8, hq, steps, owner);
    ASSERT_GT(field, 0);
    ImageControl* mine = (owner == 1 ? W().Mijn_1 : W().Mijn_2)[0];
    NextRoll(steps, steps == 1 ? 2 : 1);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 1", [&] { W().Dice_1->Mouse.DblClick(); });
    AtPhase(5, "a mine before a vehicle is picked does nothing; pick the genie", [&] {
        mine->Mouse.DblClick();
        EXPECT_EQ(V().GamePhase, 5);
        EXPECT_EQ(B().MinePos(owner, 0), field);
        DoubleClick(Vehicle(Local(), 8));
    });
    AtPhase(8, "double click the mine", [&] {
        mine->Mouse.DblClick();
        EXPECT_EQ(V().GamePhase, 9);
        EXPECT_EQ(V().Act.ActTo[0], field);
        EXPECT_EQ(V().Act.ActCode[0], 4);
    });
    AtPhase(9, "end the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(B().VehiclePos(Local(), 8), field);
    EXPECT_LT(B().MinePos(owner, 0), 0);
    EXPECT_FALSE(mine->Visible());
    ASSERT_EQ(consumed.size(), 2u);
    EXPECT_EQ(consumed[1].Values.value(QStringLiteral("ACT")), QStringLiteral("4"));
    EXPECT_EQ(consumed[1].Values.value(QStringLiteral("TO")), QString::number(field));
}

INSTANTIATE_TEST_SUITE_P(BothViews, BoardClickTest, ::testing::Values(1, 2));


} // namespace
} // namespace vk::test
