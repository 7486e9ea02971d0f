// Picking a vehicle of the camp with the mouse, in both views: a double click
// picks it, slow single clicks load it, a double click on the HQ sends it
// there, and a second double click on it cancels the pick, also for the
// second die.

#include "GameplayFixture.h"

#include "board/CompanyDisplay.h"
#include "board/VehicleTag.h"

namespace vk::test {
namespace {

class CampPickTest : public GameplayTest, public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override
    {
        GameplayTest::SetUp();
        StartGame(GetParam(), GetParam() == 1 ? 1 : 2);
        autoConsume = true;
    }

    // The loading tag of a camp vehicle of the local army.
    std::string LoadingTag(int slot, int companies, int mark = 0) const
    {
        return MakeVehicleTag(slot, Local(), companies, mark, Local() == 1 ? kEast : kWest);
    }
    QString PictureOf(const std::string& tag) const
    {
        return Global().ArmyImageFolder[View().BoardSide - 1] + QString::fromStdString(tag) + QStringLiteral(".gif");
    }
    int CampPicturesShown()
    {
        const auto& pictures = Local() == 1 ? W().KmpCmp_1 : W().KmpCmp_2;
        int shown = 0;
        for (const ImageControl* picture : pictures)
            shown += picture->Visible() ? 1 : 0;
        return shown;
    }
    PlacedBox CampBox(int slot) const
    {
        const TwipPoint at = CampPlace(Local(), slot);
        return Seen(at.X, at.Y, 750, 330);
    }
    PlacedBox HQBox(int place) const
    {
        const TwipPoint at = HQPlace(Local(), place);
        return Seen(at.X, at.Y, 750, 330);
    }
};

TEST_P(CampPickTest, SlowClicksLoadThePickedVehicleAndTheHQTakesIt)
{
    NextRoll(6, 3);
    const int camp = CampField(Local());
    const int hq = HQField(Local());
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 1", [&] { W().Dice_1->Mouse.DblClick(); });
    AtPhase(5, "a slow click before the pick loads nothing, then pick the tank", [&] {
        SlowClick(Vehicle(Local(), 0));
        EXPECT_EQ(B().VehicleCompanies(Local(), 0), 0);
        EXPECT_EQ(B().CampCompanies(Local()), 15);
        EXPECT_EQ(V().GamePhase, 5);
        DoubleClick(Vehicle(Local(), 0));
        EXPECT_EQ(V().GamePhase, 7);
        EXPECT_EQ(V().Act.ActVeh[0], 0);
        EXPECT_EQ(V().Act.ActFrom[0], camp);
        EXPECT_FALSE(W().Dice_1->Enabled());
        EXPECT_TRUE(W().Kader->Visible());
        EXPECT_EQ(BoxOf(*W().Kader), CampBox(0));
    });
    AtPhase(7, "load three companies", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kCampVehicle));
        for (int companies = 1; companies <= 3; ++companies) {
            SlowClick(Vehicle(Local(), 0));
            EXPECT_EQ(B().VehicleCompanies(Local(), 0), companies);
            EXPECT_EQ(B().CampCompanies(Local()), 15 - companies);
        }
        EXPECT_EQ(B().VehicleTag(Local(), 0), LoadingTag(0, 3));
        EXPECT_EQ(Vehicle(Local(), 0)->Picture(), PictureOf(LoadingTag(0, 3)));
        EXPECT_EQ(CampPicturesShown(), ShowCompanies(B(), Local()).Camp);
        EXPECT_EQ(CampPicturesShown(), 12);
        // Another vehicle of the camp doesn't load while the tank is picked.
        SlowClick(Vehicle(Local(), 1));
        EXPECT_EQ(B().VehicleCompanies(Local(), 1), 0);
        EXPECT_EQ(B().CampCompanies(Local()), 12);
        // Past the most a tank takes, the count goes back to 1.
        for (int expected : {4, 5, 1}) {
            SlowClick(Vehicle(Local(), 0));
            EXPECT_EQ(B().VehicleCompanies(Local(), 0), expected);
        }
        EXPECT_EQ(B().CampCompanies(Local()), 14);
        SlowClick(Vehicle(Local(), 0));
        EXPECT_EQ(B().VehicleCompanies(Local(), 0), 2);
        EXPECT_EQ(B().CampCompanies(Local()), 13);
        EXPECT_EQ(V().GamePhase, 7);
        // A field that is not the HQ is no destination for it.
        DoubleClickField(Local() == 1 ? 73 : 40);
        EXPECT_EQ(V().GamePhase, 7);
        DoubleClickField(hq);
        EXPECT_EQ(V().GamePhase, 9);
    });
    AtPhase(9, "the tank stands in the HQ", [&] {
        EXPECT_EQ(B().VehiclePos(Local(), 0), hq);
        EXPECT_EQ(B().HQCount(Local()), 1);
        EXPECT_EQ(BoxOf(*Vehicle(Local(), 0)), HQBox(0));
        W().cmdEindeBeurt->Click();
    });
    PlayTurn();
    ASSERT_EQ(consumed.size(), 2u);
    const Keys act = consumed[1].Values;
    EXPECT_EQ(act.value(QStringLiteral("VEHTAG")), QString::fromStdString(LoadingTag(0, 2)));
    EXPECT_EQ(act.value(QStringLiteral("FROM")), QString::number(camp));
    EXPECT_EQ(act.value(QStringLiteral("TO")), QString::number(hq));
    EXPECT_EQ(act.value(QStringLiteral("ACT")), QStringLiteral("1"));
    // Outside phase 8 the keys stand in the order of the kind, VEHTAG last.
    const QByteArray& raw = consumed[1].Raw;
    EXPECT_LT(raw.indexOf("\nDIRECT="), raw.indexOf("\nDICE=")) << raw.toStdString();
    EXPECT_LT(raw.indexOf("\nDICE="), raw.indexOf("\nVEH=")) << raw.toStdString();
    EXPECT_TRUE(raw.endsWith("VEHTAG=" + act.value(QStringLiteral("VEHTAG")).toLatin1() + "\r\n")) << raw.toStdString();
    EXPECT_TRUE(Logged(QStringLiteral("I take action with following details at ")));
    EXPECT_TRUE(Logged(QStringLiteral("from main camp")));
}

TEST_P(CampPickTest, ACommandoAlternatesBetweenAMineAndACompany)
{
    NextRoll(6, 2);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 1", [&] { W().Dice_1->Mouse.DblClick(); });
    AtPhase(5, "pick the commando", [&] { DoubleClick(Vehicle(Local(), 6)); });
    AtPhase(7, "load it", [&] {
        const struct {
            int Companies;
            int Mine;
        } cycle[] = {{1, 0}, {1, 1}, {2, 0}, {2, 1}, {1, 0}};
        for (const auto& expected : cycle) {
            SlowClick(Vehicle(Local(), 6));
            EXPECT_EQ(B().VehicleCompanies(Local(), 6), expected.Companies);
            EXPECT_EQ(B().VehicleTag(Local(), 6), LoadingTag(6, expected.Companies, expected.Mine));
            const ImageControl* mine = (Local() == 1 ? W().Mijn_1 : W().Mijn_2)[0];
            EXPECT_EQ(mine->Visible(), expected.Mine == 0);
        }
        // The cancel gives everything back.
        DoubleClick(Vehicle(Local(), 6));
        EXPECT_EQ(V().GamePhase, 4);
    });
    AtPhase(4, "end the turn", [&] {
        EXPECT_EQ(B().CampCompanies(Local()), 15);
        EXPECT_EQ(B().MinePos(Local(), 0), CampField(Local()));
        W().cmdEindeBeurt->Click();
    });
    PlayTurn();
}

TEST_P(CampPickTest, ASecondDoubleClickCancelsThePickAndGivesTheCompaniesBack)
{
    NextRoll(6, 1);
    const int camp = CampField(Local());
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 1", [&] { W().Dice_1->Mouse.DblClick(); });
    AtPhase(5, "pick the tank", [&] { DoubleClick(Vehicle(Local(), 0)); });
    AtPhase(7, "load two companies and cancel", [&] {
        SlowClick(Vehicle(Local(), 0));
        SlowClick(Vehicle(Local(), 0));
        EXPECT_EQ(B().CampCompanies(Local()), 13);
        DoubleClick(Vehicle(Local(), 0));
        EXPECT_EQ(V().GamePhase, 4);
        EXPECT_FALSE(W().Kader->Visible());
        EXPECT_EQ(B().CampCompanies(Local()), 15);
        EXPECT_EQ(B().VehicleCompanies(Local(), 0), 0);
        EXPECT_EQ(B().VehiclePos(Local(), 0), camp);
        EXPECT_EQ(B().HQCount(Local()), 0);
        EXPECT_EQ(BoxOf(*Vehicle(Local(), 0)), CampBox(0));
        EXPECT_EQ(V().Act.ActVeh[0], -1);
        EXPECT_EQ(V().Act.ActCode[0], -1);
        EXPECT_EQ(V().Act.ActFrom[0], -1);
        EXPECT_EQ(CampPicturesShown(), 15);
    });
    AtPhase(4, "choose die 1 again", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kChooseDice));
        EXPECT_TRUE(W().Dice_1->Enabled());
        W().Dice_1->Mouse.DblClick();
    });
    AtPhase(5, "pick the tank again", [&] { DoubleClick(Vehicle(Local(), 0)); });
    AtPhase(7, "the loading starts over", [&] {
        SlowClick(Vehicle(Local(), 0));
        EXPECT_EQ(B().VehicleCompanies(Local(), 0), 1);
        EXPECT_EQ(B().CampCompanies(Local()), 14);
        DoubleClick(Vehicle(Local(), 0));
        EXPECT_EQ(V().GamePhase, 4);
    });
    AtPhase(4, "end the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(B().CampCompanies(Local()), 15);
    ASSERT_EQ(consumed.size(), 1u) << "a cancelled pick sends nothing";
}

TEST_P(CampPickTest, CancelsOfTheSecondDieReturnToIt)
{
    ToHQ(Local(), 1, 1);
    NextRoll(6, 6);
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "choose die 1", [&] { W().Dice_1->Mouse.DblClick(); });
    AtPhase(5, "pick the tank", [&] { DoubleClick(Vehicle(Local(), 0)); });
    AtPhase(7, "send it to the HQ", [&] { DoubleClickField(HQField(Local())); });
    AtPhase(9, "choose die 2", [&] { W().Dice_2->Mouse.DblClick(); });
    AtPhase(10, "the tank moved plainly and can't act again; pick a canon in the camp", [&] {
        DoubleClick(Vehicle(Local(), 0));
        EXPECT_EQ(V().GamePhase, 10);
        DoubleClick(Vehicle(Local(), 2));
        EXPECT_EQ(V().GamePhase, 12);
        EXPECT_EQ(V().Act.ActVeh[1], 2);
        EXPECT_EQ(V().Act.ActVeh[0], 0);
    });
    AtPhase(12, "cancel the camp pick", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kCampVehicle));
        SlowClick(Vehicle(Local(), 2));
        EXPECT_EQ(B().VehicleCompanies(Local(), 2), 1);
        DoubleClick(Vehicle(Local(), 2));
        EXPECT_EQ(V().GamePhase, 9);
        EXPECT_EQ(V().Act.ActVeh[1], -1);
        EXPECT_EQ(V().Act.ActVeh[0], 0);
        EXPECT_EQ(B().VehicleCompanies(Local(), 2), 0);
        EXPECT_EQ(B().CampCompanies(Local()), 14);
    });
    AtPhase(9, "choose die 2 again", [&] { W().Dice_2->Mouse.DblClick(); });
    AtPhase(10, "pick the canon in the HQ", [&] {
        DoubleClick(Vehicle(Local(), 1));
        EXPECT_EQ(V().GamePhase, 13);
        EXPECT_TRUE(W().Kader->Visible());
        EXPECT_EQ(BoxOf(*W().Kader), BoxOf(*Vehicle(Local(), 1)));
    });
    AtPhase(13, "cancel the field pick", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kFieldVehicle));
        DoubleClick(Vehicle(Local(), 1));
        EXPECT_EQ(V().GamePhase, 9);
        EXPECT_FALSE(W().Kader->Visible());
        EXPECT_EQ(V().Act.ActVeh[1], -1);
        EXPECT_EQ(B().VehiclePos(Local(), 1), HQField(Local()));
    });
    AtPhase(9, "end the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(V().GamePhase, 39);
    ASSERT_EQ(consumed.size(), 2u) << "the roll and the first action only";
    EXPECT_EQ(consumed[1].Values.value(QStringLiteral("VEH")), QStringLiteral("0"));
}

TEST_P(CampPickTest, ASlowClickInTheOpponentsTurnDoesNothing)
{
    V().Progress.TurnNumber += 1;
    V().GamePhase = 7;
    V().CampLoadFresh = true;
    V().Act.ActVeh[0] = 0;
    SlowClick(Vehicle(Local(), 0));
    EXPECT_EQ(B().VehicleCompanies(Local(), 0), 0);
    EXPECT_EQ(B().CampCompanies(Local()), 15);
    EXPECT_TRUE(V().CampLoadFresh);
}

INSTANTIATE_TEST_SUITE_P(BothViews, CampPickTest, ::testing::Values(1, 2));

} // namespace
} // namespace vk::test
