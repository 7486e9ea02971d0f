// The choice of dice after the roll: a die or both chosen and unchosen by
// double clicks with the frame and the controls that follow, the texts of the
// phases that pick a vehicle (camp open or closed, fuel blocked), and the
// phases of the second die once the first is used.

#include "GameplayFixture.h"

namespace vk::test {
namespace {

class DiceChoiceTest : public GameplayTest, public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override
    {
        GameplayTest::SetUp();
        StartGame(GetParam(), GetParam() == 1 ? 1 : 2);
        autoConsume = true;
    }

    // DiceKader stands on `die`, shown, and the end of the turn is closed.
    void ExpectChosen(const ImageControl* die)
    {
        EXPECT_TRUE(W().DiceKader->Visible());
        EXPECT_EQ(W().DiceKader->Left(), die->Left()) << die->Name().toStdString();
        EXPECT_FALSE(W().cmdEindeBeurt->Enabled());
    }
    void ExpectUnchosen()
    {
        EXPECT_FALSE(W().DiceKader->Visible());
        EXPECT_TRUE(W().cmdEindeBeurt->Enabled());
    }
};

TEST_P(DiceChoiceTest, EachChoiceIsMadeAndUndoneByItsOwnPicture)
{
    NextRoll(6, 3);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 1", [&] {
        W().Dice_1->Mouse.DblClick();
        EXPECT_EQ(V().GamePhase, 5);
        ExpectChosen(W().Dice_1);
        EXPECT_FALSE(W().Dice_2->Enabled());
        EXPECT_FALSE(W().Dices->Enabled());
        EXPECT_TRUE(W().Dice_1->Enabled());
    });
    AtPhase(5, "unchoose die 1", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::OneDie(1, 6, true).c_str()));
        W().Dice_1->Mouse.DblClick();
        EXPECT_EQ(V().GamePhase, 4);
        ExpectUnchosen();
        EXPECT_TRUE(W().Dice_2->Enabled());
        EXPECT_TRUE(W().Dices->Enabled());
    });
    AtPhase(4, "choose die 2", [&] {
        // The text of phase 4 is written again.
        EXPECT_EQ(Global().BoardText, Board(text::kChooseDice));
        EXPECT_TRUE(V().CampLoadFresh);
        W().Dice_2->Mouse.DblClick();
        EXPECT_EQ(V().GamePhase, 14);
        ExpectChosen(W().Dice_2);
        EXPECT_FALSE(W().Dice_1->Enabled());
        EXPECT_FALSE(W().Dices->Enabled());
    });
    AtPhase(14, "other controls do nothing, then unchoose die 2", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::OneDie(2, 3, false).c_str()));
        W().cmdEindeBeurt->Click();
        W().Dice_1->Mouse.DblClick();
        W().Dices->Mouse.DblClick();
        W().cmdGooi->Click();
        EXPECT_EQ(V().GamePhase, 14);
        EXPECT_EQ(V().Dice1, 6);
        ExpectChosen(W().Dice_2);
        W().Dice_2->Mouse.DblClick();
        EXPECT_EQ(V().GamePhase, 4);
        ExpectUnchosen();
        EXPECT_TRUE(W().Dice_1->Enabled());
        EXPECT_TRUE(W().Dices->Enabled());
    });
    AtPhase(4, "choose both", [&] {
        W().Dices->Mouse.DblClick();
        EXPECT_EQ(V().GamePhase, 23);
        ExpectChosen(W().Dices);
        EXPECT_FALSE(W().Dice_1->Enabled());
        EXPECT_FALSE(W().Dice_2->Enabled());
    });
    AtPhase(23, "unchoose both", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kBothCamp));
        W().Dices->Mouse.DblClick();
        EXPECT_EQ(V().GamePhase, 4);
        ExpectUnchosen();
        EXPECT_TRUE(W().Dice_1->Enabled());
        EXPECT_TRUE(W().Dice_2->Enabled());
    });
    AtPhase(4, "end the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(V().GamePhase, 39);
    ASSERT_EQ(consumed.size(), 1u) << "only the roll is sent";
    EXPECT_EQ(consumed[0].Extension, QStringLiteral(".wrp"));
}

TEST_P(DiceChoiceTest, AfterTheFirstDieOnlyTheSecondIsLeft)
{
    NextRoll(6, 6);
    const int camp = CampField(Local());
    const int hq = HQField(Local());
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 1", [&] { W().Dice_1->Mouse.DblClick(); });
    AtPhase(5, "pick the tank in the camp", [&] { DoubleClick(Vehicle(Local(), 0)); });
    AtPhase(7, "send it to the HQ", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kCampVehicle));
        DoubleClickField(hq);
    });
    AtPhase(9, "die 2 is left", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kRightDieLeft));
        EXPECT_TRUE(W().Dice_2->Visible() && W().Dice_2->Enabled());
        EXPECT_TRUE(W().cmdEindeBeurt->Visible() && W().cmdEindeBeurt->Enabled());
        for (const Control* c : ControlList{W().Dice_1, W().MiniDice_1, W().MiniDice_2, W().DiceKader})
            EXPECT_FALSE(c->Visible()) << c->Name().toStdString();
        // Both dice together are only the first and only action.
        EXPECT_FALSE(W().Dices->Enabled());
        EXPECT_EQ(V().Act.ActVeh[1], -1);
        EXPECT_EQ(V().Act.ActCode[1], -1);
        W().Dice_1->Mouse.DblClick();
        W().Dices->Mouse.DblClick();
        EXPECT_EQ(V().GamePhase, 9);
        W().Dice_2->Mouse.DblClick();
        EXPECT_EQ(V().GamePhase, 10);
        ExpectChosen(W().Dice_2);
    });
    AtPhase(10, "unchoose die 2", [&] {
        // The tank took an HQ place: two are left, and the camp still holds 15.
        EXPECT_EQ(Global().BoardText, Board(text::OneDie(2, 6, true).c_str()));
        W().Dice_2->Mouse.DblClick();
        EXPECT_EQ(V().GamePhase, 9);
        ExpectUnchosen();
    });
    AtPhase(9, "end the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(V().GamePhase, 39);
    ASSERT_EQ(consumed.size(), 2u);
    EXPECT_EQ(consumed[1].Extension, QStringLiteral(".act"));
    const Keys act = consumed[1].Values;
    EXPECT_EQ(act.value(QStringLiteral("DICE")), QStringLiteral("1"));
    EXPECT_EQ(act.value(QStringLiteral("VEH")), QStringLiteral("0"));
    EXPECT_EQ(act.value(QStringLiteral("ACT")), QStringLiteral("1"));
    EXPECT_EQ(act.value(QStringLiteral("FROM")), QString::number(camp));
    EXPECT_EQ(act.value(QStringLiteral("TO")), QString::number(hq));
    EXPECT_EQ(act.value(QStringLiteral("VEHTAG")), QString::fromStdString(B().VehicleTag(Local(), 0)));
    EXPECT_EQ(B().VehiclePos(Local(), 0), hq);
}

TEST_P(DiceChoiceTest, AfterTheSecondDieOnlyTheFirstIsLeft)
{
    NextRoll(6, 6);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 2", [&] { W().Dice_2->Mouse.DblClick(); });
    AtPhase(14, "pick the tank in the camp", [&] { DoubleClick(Vehicle(Local(), 0)); });
    AtPhase(16, "send it to the HQ", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kCampVehicle));
        DoubleClickField(HQField(Local()));
    });
    AtPhase(18, "die 1 is left", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kLeftDieLeft));
        EXPECT_TRUE(W().Dice_1->Visible() && W().Dice_1->Enabled());
        EXPECT_TRUE(W().cmdEindeBeurt->Visible() && W().cmdEindeBeurt->Enabled());
        for (const Control* c : ControlList{W().Dice_2, W().MiniDice_1, W().MiniDice_2, W().DiceKader})
            EXPECT_FALSE(c->Visible()) << c->Name().toStdString();
        EXPECT_FALSE(W().Dices->Enabled());
        W().Dice_1->Mouse.DblClick();
        EXPECT_EQ(V().GamePhase, 19);
        ExpectChosen(W().Dice_1);
    });
    AtPhase(19, "unchoose die 1", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::OneDie(1, 6, true).c_str()));
        W().Dice_1->Mouse.DblClick();
        EXPECT_EQ(V().GamePhase, 18);
        ExpectUnchosen();
    });
    AtPhase(18, "end the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(V().GamePhase, 39);
    ASSERT_EQ(consumed.size(), 2u);
    EXPECT_EQ(consumed[1].Values.value(QStringLiteral("DICE")), QStringLiteral("2"));
}

INSTANTIATE_TEST_SUITE_P(BothArmies, DiceChoiceTest, ::testing::Values(1, 2));

// The text of a phase that picks a vehicle, by the roll and the position.
enum class Setup { Plain, FuelBlocked, HQFull, CampEmpty };
struct PickText {
    int Dice1;
    int Dice2;
    int Choice; // 1, 2 or 3 for both
    Setup Position;
    std::string Expected;
};

class PickTextTest : public GameplayTest, public ::testing::WithParamInterface<std::tuple<PickText, int>> {};

TEST_P(PickTextTest, SaysWhetherTheCampIsOpen)
{
    const auto& [c, side] = GetParam();
    StartGame(side, side == 1 ? 5 : 6);
    autoConsume = true;
    switch (c.Position) {
    case Setup::Plain: break;
    case Setup::FuelBlocked: B().Brandstof(side) = 1; break;
    case Setup::HQFull:
        for (int slot = 1; slot <= 3; ++slot)
            ToHQ(side, slot, 1);
        break;
    case Setup::CampEmpty: B().CampCompanies(side) = 0; break;
    }
    NextRoll(c.Dice1, c.Dice2);
    ImageControl* choice = c.Choice == 1 ? W().Dice_1 : c.Choice == 2 ? W().Dice_2 : W().Dices;
    const int phase = c.Choice == 1 ? 5 : c.Choice == 2 ? 14 : 23;
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose", [&, choice] { choice->Mouse.DblClick(); });
    AtPhase(phase, "read the text", [&, choice] {
        EXPECT_EQ(Global().BoardText, FormatBoardText(QString::fromStdString(c.Expected)));
        choice->Mouse.DblClick();
    });
    AtPhase(4, "end the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
}

std::string Both(int sum) { return "u koos voor beide dobbelstenen, deze hebben de waarde " + std::to_string(sum) + text::kNoCamp; }

// "Roll62Die1PlainArmy1" and the like.
std::string PickTextName(const ::testing::TestParamInfo<std::tuple<PickText, int>>& info)
{
    const PickText& c = std::get<0>(info.param);
    static const char* const setups[] = {"Plain", "FuelBlocked", "HQFull", "CampEmpty"};
    static const char* const choices[] = {"", "Die1", "Die2", "Both"};
    return std::string("Roll") + std::to_string(c.Dice1) + std::to_string(c.Dice2) + choices[c.Choice] +
           setups[static_cast<int>(c.Position)] + "Army" + std::to_string(std::get<1>(info.param));
}

INSTANTIATE_TEST_SUITE_P(
    RollsAndPositions, PickTextTest,
    ::testing::Combine(
        ::testing::Values(PickText{6, 2, 1, Setup::Plain, text::OneDie(1, 6, true)},
                          PickText{6, 2, 2, Setup::Plain, text::OneDie(2, 2, false)},
                          PickText{2, 6, 2, Setup::Plain, text::OneDie(2, 6, true)},
                          PickText{2, 6, 1, Setup::Plain, text::OneDie(1, 2, false)},
                          PickText{2, 4, 3, Setup::Plain, text::kBothCamp},
                          PickText{5, 6, 3, Setup::Plain, text::kBothCamp},
                          PickText{1, 2, 3, Setup::Plain, Both(3)},
                          PickText{6, 6, 1, Setup::FuelBlocked, text::kNoFuel},
                          PickText{6, 6, 2, Setup::FuelBlocked, text::kNoFuel},
                          PickText{6, 6, 3, Setup::FuelBlocked, text::kNoFuel},
                          PickText{6, 1, 1, Setup::HQFull, text::OneDie(1, 6, false)},
                          PickText{3, 3, 3, Setup::HQFull, Both(6)},
                          PickText{6, 1, 1, Setup::CampEmpty, text::OneDie(1, 6, false)},
                          PickText{1, 6, 2, Setup::CampEmpty, text::OneDie(2, 6, false)}),
        ::testing::Values(1, 2)),
    PickTextName);

} // namespace
} // namespace vk::test
