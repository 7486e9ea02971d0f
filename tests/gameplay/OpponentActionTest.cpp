// The opponent's roll and actions replayed from the files he writes into the
// shared folder, in both views: the dice he rolled, the red mark on his
// vehicle and the blue one on where it goes (a place of the camp or the HQ, a
// field, a vehicle shot at, a mine picked up), shown for four seconds with the
// file already taken, then the position as on his board.

#include "GameplayFixture.h"

#include "board/BoardAction.h"
#include "board/Movement.h"
#include "board/Picking.h"
#include "board/Shooting.h"
#include "board/VehicleTag.h"

namespace vk::test {
namespace {

class OpponentActionTest : public GameplayTest, public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override
    {
        GameplayTest::SetUp();
        // The opponent's turn: turn 2 belongs to army 2, turn 3 to army 1.
        StartGame(GetParam(), GetParam() == 1 ? 2 : 3);
    }

    int Turn() { return V().Progress.TurnNumber; }

    // The blue mark of a field whatever the heading: the horizontal anchor,
    // or the vertical one where the field has none.
    PlacedBox FieldMark(int field) const
    {
        if (FieldAnchorX(field, 0) != -1)
            return Seen(FieldAnchorX(field, 0), FieldAnchorY(field, 0), 750, 330);
        return Seen(FieldAnchorX(field, 1), FieldAnchorY(field, 1), 330, 750);
    }
    PlacedBox OnField(int field, int heading) const
    {
        const TwipPoint anchor = AnchorFor(field, heading);
        return Seen(anchor.X, anchor.Y, PictureWidthFor(heading), PictureHeightFor(heading));
    }

    // After the marks: they are gone, the position is the sender's, and the
    // turn ends.
    void ThenTheTurnEnds(const BoardState& sender, int usedDice)
    {
        When("the replay is done", [] { return Idle(); }, [this, sender, usedDice] {
            for (const Control* c : ControlList{W().Kader, W().Kader2, W().DiceKader, W().MiniDice_1, W().MiniDice_2})
                EXPECT_FALSE(c->Visible()) << c->Name().toStdString();
            EXPECT_EQ(W().Dice_1->Visible(), usedDice == 2);
            EXPECT_EQ(W().Dice_2->Visible(), usedDice == 1);
            EXPECT_EQ(GameDifference(B(), sender), "");
            EXPECT_TRUE(Logged(QStringLiteral("opponent takes action with following details at ")));
            SendTheirEndOfTurn(Turn());
        });
    }
};

TEST_P(OpponentActionTest, TheRollShowsTheOpponentsDice)
{
    W().Personnel->SetVisible(true);
    SendTheirRoll(2, 5);
    When("the roll is read", [] { return Idle(); }, [&] {
        EXPECT_EQ(V().OppDice1, 2);
        EXPECT_EQ(V().OppDice2, 5);
        const QString program = Global().ProgramFolder;
        EXPECT_EQ(W().Dice_1->Picture(), program + QStringLiteral("dice2.gif"));
        EXPECT_EQ(W().MiniDice_1->Picture(), program + QStringLiteral("dice2.gif"));
        EXPECT_EQ(W().Dice_2->Picture(), program + QStringLiteral("dice5.gif"));
        EXPECT_EQ(W().MiniDice_2->Picture(), program + QStringLiteral("dice5.gif"));
        for (const Control* c : ControlList{W().Dice_1, W().MiniDice_1, W().Dice_2, W().MiniDice_2})
            EXPECT_TRUE(c->Visible()) << c->Name().toStdString();
        EXPECT_FALSE(FileExists(TheirPath(".wrp")));
        EXPECT_FALSE(W().Personnel->Visible());
        EXPECT_TRUE(Logged(QStringLiteral("result of opponent rolling dices: 2 and 5 at ")));
        // The own roll is untouched.
        EXPECT_EQ(V().Dice1, 0);
        SendTheirEndOfTurn(Turn());
    });
    FollowTurn();
    EXPECT_FALSE(FileExists(TheirPath(".eot")));
    EXPECT_TRUE(Logged(QStringLiteral("opponent's turn ended at ")));
}

TEST_P(OpponentActionTest, AVehicleLeavesTheCampForTheHQWithTheCompaniesOfItsTag)
{
    const int ext = External();
    BoardState sender = B();
    CampLoadClicks(sender, ext, 0, 3);
    ASSERT_TRUE(SendCampVehicleToHQ(sender, ext, 0));
    SendTheirRoll(6, 4);
    SendTheirAction(ActionMessage{sender.Verdict.Heading, kDiceLeft, 0, kActMove, CampField(ext), HQField(ext),
                                  sender.VehicleTag(ext, 0)});
    const TwipPoint camp = CampPlace(ext, 0);
    const TwipPoint lastHQPlace = HQPlace(ext, 2);
    const TwipPoint firstHQPlace = HQPlace(ext, 0);
    QElapsedTimer shown;
    qint64 shownFor = -1;
    everyTick = [&] {
        if (MarksShown() && !shown.isValid())
            shown.start();
        if (!MarksShown() && shown.isValid() && shownFor < 0)
            shownFor = shown.elapsed();
    };
    When("the marks are on show", [this] { return MarksShown(); }, [&] {
        // The roll before it was read in the same pass, and the file is taken.
        EXPECT_EQ(V().OppDice1, 6);
        EXPECT_FALSE(FileExists(TheirPath(".wrp")));
        EXPECT_FALSE(FileExists(TheirPath(".act")));
        EXPECT_EQ(BoxOf(*W().Kader), Seen(camp.X, camp.Y, 750, 330));
        EXPECT_EQ(BoxOf(*W().Kader2), Seen(lastHQPlace.X, lastHQPlace.Y, 750, 330));
        EXPECT_TRUE(W().DiceKader->Visible());
        EXPECT_EQ(W().DiceKader->Left(), W().Dice_1->Left());
        // The companies of the tag are aboard before the move.
        EXPECT_EQ(B().VehicleCompanies(ext, 0), 3);
        EXPECT_EQ(B().CampCompanies(ext), 12);
        EXPECT_EQ(B().VehiclePos(ext, 0), CampField(ext));
        EXPECT_EQ(Global().BoardText, Board("uw tegenstander gebruikt dobbelsteen 1, "));
    });
    ThenTheTurnEnds(sender, 1);
    FollowTurn();
    // Four seconds at the time scale of the tests (0.05).
    EXPECT_GE(shownFor, 190);
    EXPECT_LT(shownFor, 2000);
    // The mark stood on the last free place; the tank took the first.
    EXPECT_EQ(BoxOf(*Vehicle(ext, 0)), Seen(firstHQPlace.X, firstHQPlace.Y, 750, 330));
    EXPECT_EQ(B().HQCount(ext), 1);
    EXPECT_TRUE(Logged(QStringLiteral("moves tank")));
    EXPECT_TRUE(Logged(QStringLiteral("from main camp")));
    EXPECT_TRUE(Logged(QStringLiteral("to HQ")));
    EXPECT_TRUE(Logged(QStringLiteral("uses dice 1")));
}

TEST_P(OpponentActionTest, AMoveOnTheRoadsIsMarkedFromFieldToField)
{
    const int ext = External();
    ToHQ(ext, 1, 2);
    int from = -1;
    for (int steps = 1; steps <= 6 && from < 0; ++steps)
        if ((from = MoveTarget(ext, 1, HQField(ext), steps)) > 0) {
            ASSERT_TRUE(IsLegalMove(B(), ext, 1, HQField(ext), from, steps, true));
            ApplyAction(B(), BoardAction{ext, 1, kActMove, HQField(ext), from, B().Verdict.Heading, false, -1});
        }
    ASSERT_GT(from, 0);
    Redraw();
    int to = -1;
    int steps = 1;
    for (; steps <= 6 && to < 0; ++steps)
        to = MoveTarget(ext, 1, from, steps);
    --steps;
    ASSERT_GT(to, 0);
    BoardState sender = B();
    ASSERT_TRUE(IsLegalMove(sender, ext, 1, from, to, steps, true));
    ApplyAction(sender, BoardAction{ext, 1, kActMove, from, to, sender.Verdict.Heading, false, -1});
    SendTheirAction(ActionMessage{sender.Verdict.Heading, kDiceRight, 1, kActMove, from, to, sender.VehicleTag(ext, 1)},
                    17);
    const PlacedBox vehicleBox = OnField(from, B().VehicleDir(ext, 1));
    When("the marks are on show", [this] { return MarksShown(); }, [&] {
        EXPECT_FALSE(FileExists(TheirPath(".act")));
        EXPECT_EQ(BoxOf(*W().Kader), vehicleBox);
        EXPECT_EQ(BoxOf(*W().Kader2), FieldMark(to));
        EXPECT_EQ(W().DiceKader->Left(), W().Dice_2->Left());
        EXPECT_EQ(Global().BoardText, Board("uw tegenstander gebruikt dobbelsteen 2, en verplaatst het rood gemerkt "
                                            "voertuig naar het blauw gemerkt vakje"));
        EXPECT_EQ(B().VehiclePos(ext, 1), from);
    });
    ThenTheTurnEnds(sender, 2);
    FollowTurn();
    EXPECT_EQ(BoxOf(*Vehicle(ext, 1)), OnField(to, sender.VehicleDir(ext, 1)));
    EXPECT_TRUE(Logged(QStringLiteral("from ") + QString::number(from)));
    EXPECT_TRUE(Logged(QStringLiteral("to ") + QString::number(to)));
}

TEST_P(OpponentActionTest, AShotIsMarkedOnTheVehicleHit)
{
    const int ext = External();
    const int hq = HQField(ext);
    ToHQ(ext, 0, 2);
    int target = -1;
    int steps = 1;
    for (; steps <= 6 && target < 0; ++steps)
        target = MoveTarget(ext, 0, hq, steps);
    --steps;
    ASSERT_GT(target, 0);
    PutOnField(Local(), 3, target, 1);
    BoardState sender = B();
    ASSERT_TRUE(IsLegalMove(sender, ext, 0, hq, target, steps, true));
    ASSERT_TRUE(sender.Verdict.ShootAllowed);
    ApplyAction(sender, BoardAction{ext, 0, kActShot, hq, target, sender.Verdict.Heading, false, 3});
    SendTheirAction(ActionMessage{sender.Verdict.Heading, kDiceBoth, 0, kActShot, hq, target, sender.VehicleTag(ext, 0)},
                    26);
    const PlacedBox shooter = BoxOf(*Vehicle(ext, 0));
    const PlacedBox victim = OnField(target, B().VehicleDir(Local(), 3));
    When("the marks are on show", [this] { return MarksShown(); }, [&] {
        EXPECT_EQ(BoxOf(*W().Kader), shooter);
        EXPECT_EQ(BoxOf(*W().Kader2), victim);
        EXPECT_EQ(W().DiceKader->Left(), W().Dices->Left());
        EXPECT_EQ(V().Act.ActVeh[1], 3);
        EXPECT_EQ(Global().BoardText, Board("uw tegenstander gebruikt beide dobbelstenen, en schiet met het rood "
                                            "gemerkt voertuig op jouw blauw gemerkt voertuig"));
    });
    ThenTheTurnEnds(sender, 3);
    FollowTurn();
    EXPECT_EQ(B().VehiclePos(Local(), 3), 0);
    EXPECT_TRUE(LoggedExactly(QStringLiteral("to vehicle at ") + QString::number(target)));
    EXPECT_TRUE(Logged(QStringLiteral("shoots with vehicle")));
}

TEST_P(OpponentActionTest, AMinePickedUpIsMarkedOnTheMine)
{
    const int ext = External();
    const int hq = HQField(ext);
    ToHQ(ext, 8, 1);
    int steps = 0, owner = 0;
    const int field = LayMineInReach(ext, 8, hq, steps, owner);
    ASSERT_GT(field, 0) << "no mine for the genie to pick up";
    BoardState sender = B();
    ASSERT_TRUE(IsLegalMove(sender, ext, 8, hq, field, steps, true));
    ApplyAction(sender, BoardAction{ext, 8, kActMovePickUpMine, hq, field, sender.Verdict.Heading, false, -1});
    SendTheirAction(ActionMessage{sender.Verdict.Heading, kDiceRight, 8, kActMovePickUpMine, hq, field,
                                  sender.VehicleTag(ext, 8)},
                    17);
    const PlacedBox mine = MineSide(field) == 2 ? Seen(FieldAnchorX(field, 0), FieldAnchorY(field, 0), 750, 330)
                                                : Seen(FieldAnchorX(field, 1), FieldAnchorY(field, 1), 330, 750);
    const ImageControl* mineControl = (owner == 1 ? W().Mijn_1 : W().Mijn_2)[0];
    When("the marks are on show", [this] { return MarksShown(); }, [&] {
        EXPECT_EQ(BoxOf(*W().Kader2), mine);
        EXPECT_EQ(BoxOf(*W().Kader2), BoxOf(*mineControl));
        EXPECT_EQ(Global().BoardText, Board("uw tegenstander gebruikt dobbelsteen 2, en verplaatst het rood gemerkt "
                                            "voertuig naar het blauw gemerkt vakje om aldaar de aanwezige mijn op "
                                            "te pikken"));
    });
    ThenTheTurnEnds(sender, 2);
    FollowTurn();
    EXPECT_TRUE(Logged(QStringLiteral("to pick up mine")));
    EXPECT_EQ(B().BoardCell(field), (ext == 1 ? 1 : -1) * 9);
}

TEST_P(OpponentActionTest, AVehicleBackInItsCampIsMarkedOnItsCampPlace)
{
    const int ext = External();
    const int camp = CampField(ext);
    // The canon of the opponent on a road square from which its camp is in reach.
    int from = -1, steps = 0;
    for (int field = kFirstRoadField; field <= kLastRoadField && from < 0; ++field) {
        if (B().BoardCell(field) != 0 || field == FlagField(1) || field == FlagField(2))
            continue;
        for (int s = 1; s <= 6 && from < 0; ++s)
            if (JudgeMove(B(), ext, 1, field, camp, s, true).Legal) {
                from = field;
                steps = s;
            }
    }
    ASSERT_GT(from, 0);
    PutOnField(ext, 1, from, 2);
    BoardState sender = B();
    ASSERT_TRUE(IsLegalMove(sender, ext, 1, from, camp, steps, true));
    ApplyAction(sender, BoardAction{ext, 1, kActMove, from, camp, sender.Verdict.Heading, false, -1});
    SendTheirAction(ActionMessage{sender.Verdict.Heading, kDiceLeft, 1, kActMove, from, camp, sender.VehicleTag(ext, 1)},
                    8);
    const TwipPoint place = CampPlace(ext, 1);
    When("the marks are on show", [this] { return MarksShown(); }, [&] {
        EXPECT_EQ(BoxOf(*W().Kader), OnField(from, B().VehicleDir(ext, 1)));
        EXPECT_EQ(BoxOf(*W().Kader2), Seen(place.X, place.Y, 750, 330));
        EXPECT_EQ(Global().BoardText, Board("uw tegenstander gebruikt dobbelsteen 1, "));
    });
    ThenTheTurnEnds(sender, 1);
    FollowTurn();
    EXPECT_EQ(BoxOf(*Vehicle(ext, 1)), Seen(place.X, place.Y, 750, 330));
    EXPECT_EQ(B().CampCompanies(ext), 15);
    EXPECT_TRUE(Logged(QStringLiteral("to main camp")));
}

TEST_P(OpponentActionTest, TheJeepEscapesFromItsIslandWithThePrisoners)
{
    const int ext = External();
    const int island = IslandField(ext);
    B().CampCompanies(ext) -= 2;
    B().PrisonCompanies(ext) = 2;
    int to = -1;
    int steps = 1;
    for (; steps <= 6 && to < 0; ++steps)
        to = MoveTarget(ext, kJeepSlot, island, steps);
    --steps;
    ASSERT_GT(to, 0);
    BoardState sender = B();
    ASSERT_TRUE(LoadJeepOnIsland(sender, ext));
    ASSERT_TRUE(IsLegalMove(sender, ext, kJeepSlot, island, to, steps, true));
    ApplyAction(sender, BoardAction{ext, kJeepSlot, kActMove, island, to, sender.Verdict.Heading, false, -1});
    SendTheirAction(ActionMessage{sender.Verdict.Heading, kDiceRight, kJeepSlot, kActMove, island, to,
                                  sender.VehicleTag(ext, kJeepSlot)},
                    17);
    const TwipPoint anchor = FieldAnchor(island, 0);
    When("the marks are on show", [this] { return MarksShown(); }, [&] {
        EXPECT_EQ(BoxOf(*W().Kader), Seen(anchor.X, anchor.Y, 750, 330));
        EXPECT_EQ(BoxOf(*W().Kader2), FieldMark(to));
        // The prisoners are aboard before the move.
        EXPECT_EQ(B().VehicleCompanies(ext, kJeepSlot), 2);
        EXPECT_EQ(B().PrisonCompanies(ext), 0);
    });
    ThenTheTurnEnds(sender, 2);
    FollowTurn();
    EXPECT_TRUE(Logged(QStringLiteral("starts escape with jeep")));
}

INSTANTIATE_TEST_SUITE_P(BothViews, OpponentActionTest, ::testing::Values(1, 2));

} // namespace
} // namespace vk::test
