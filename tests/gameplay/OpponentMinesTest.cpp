// The opponent's actions with mines and flags, in both views: a commando that
// leaves the camp with a mine aboard as its tag tells, a mine left on the
// field the vehicle leaves, a flag taken aboard on the flag field.

#include "GameplayFixture.h"

#include "board/BoardAction.h"
#include "board/MinesAndFlags.h"
#include "board/Movement.h"
#include "board/Picking.h"

namespace vk::test {
namespace {

class OpponentMinesTest : public GameplayTest, public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override
    {
        GameplayTest::SetUp();
        StartGame(GetParam(), GetParam() == 1 ? 12 : 11);
    }
    int Turn() { return V().Progress.TurnNumber; }
    PlacedBox FieldMark(int field) const
    {
        if (FieldAnchorX(field, 0) != -1)
            return Seen(FieldAnchorX(field, 0), FieldAnchorY(field, 0), 750, 330);
        return Seen(FieldAnchorX(field, 1), FieldAnchorY(field, 1), 330, 750);
    }
    ImageControl* Mine(int side, int mine)
    {
        return (side == 1 ? W().Mijn_1 : W().Mijn_2)[static_cast<std::size_t>(mine)];
    }
    void ThenTheTurnEnds(const BoardState& sender)
    {
        When("the replay is done", [] { return Idle(); }, [this, sender] {
            EXPECT_FALSE(W().Kader->Visible());
            EXPECT_FALSE(W().Kader2->Visible());
            EXPECT_EQ(GameDifference(B(), sender), "");
            SendTheirEndOfTurn(Turn());
        });
    }
};

TEST_P(OpponentMinesTest, ACommandoLeavesTheCampWithTheMineItsTagTells)
{
    const int ext = External();
    BoardState sender = B();
    CampLoadClicks(sender, ext, 6, 2);
    ASSERT_EQ(sender.MinePos(ext, 0), -6);
    ASSERT_TRUE(SendCampVehicleToHQ(sender, ext, 6));
    SendTheirAction(ActionMessage{0, kDiceLeft, 6, kActMove, CampField(ext), HQField(ext), sender.VehicleTag(ext, 6)});
    When("the marks are on show", [this] { return MarksShown(); }, [&] {
        EXPECT_EQ(B().MinePos(ext, 0), -6);
        EXPECT_FALSE(Mine(ext, 0)->Visible());
        EXPECT_TRUE(Mine(ext, 1)->Visible());
        EXPECT_EQ(B().VehicleCompanies(ext, 6), 1);
    });
    ThenTheTurnEnds(sender);
    FollowTurn();
    EXPECT_TRUE(Logged(QStringLiteral("moves commando")));
}

TEST_P(OpponentMinesTest, AMineIsLeftOnTheFieldTheVehicleLeaves)
{
    const int ext = External();
    const int hq = HQField(ext);
    CampLoadClicks(B(), ext, 6, 2);
    ASSERT_TRUE(SendCampVehicleToHQ(B(), ext, 6));
    // A field where a mine can lie, and a field further on.
    int from = -1, to = -1, steps = 0;
    for (int s = 1; s <= 6 && to < 0; ++s) {
        for (int f = kFirstRoadField; f <= kLastRoadField && to < 0; ++f) {
            if (MineSide(f) == 0 || B().BoardCell(f) != 0)
                continue;
            const MoveVerdict there = JudgeMove(B(), ext, 6, hq, f, s, true);
            if (!there.Legal || there.ShootAllowed || there.CompassCrossed)
                continue;
            BoardState tryIt = B();
            IsLegalMove(tryIt, ext, 6, hq, f, s, true);
            ApplyAction(tryIt, BoardAction{ext, 6, kActMove, hq, f, tryIt.Verdict.Heading, false, -1});
            for (int t = 1; t <= 6 && to < 0; ++t)
                for (int g = kFirstRoadField; g <= kLastRoadField && to < 0; ++g) {
                    const MoveVerdict on = JudgeMove(tryIt, ext, 6, f, g, t, true);
                    if (g != f && on.Legal && !on.ShootAllowed && !on.CompassCrossed && tryIt.BoardCell(g) == 0) {
                        from = f;
                        to = g;
                        steps = t;
                        B() = tryIt;
                    }
                }
        }
    }
    ASSERT_GT(to, 0);
    Redraw();
    ASSERT_TRUE(MineLayingOffered(B(), ext, 6, from));
    BoardState sender = B();
    ASSERT_TRUE(IsLegalMove(sender, ext, 6, from, to, steps, true));
    ApplyAction(sender, BoardAction{ext, 6, kActMoveLeaveMine, from, to, sender.Verdict.Heading, true, -1});
    SendTheirAction(ActionMessage{sender.Verdict.Heading, kDiceRight, 6, kActMoveLeaveMine, from, to,
                                  sender.VehicleTag(ext, 6)},
                    17);
    When("the marks are on show", [this] { return MarksShown(); }, [&] {
        EXPECT_EQ(BoxOf(*W().Kader2), FieldMark(to));
        EXPECT_EQ(Global().BoardText, Board("uw tegenstander gebruikt dobbelsteen 2, en verplaatst het rood gemerkt "
                                            "voertuig, de mijn op dat vakje achterlatend, naar het blauw gemerkt "
                                            "vakje"));
    });
    ThenTheTurnEnds(sender);
    FollowTurn();
    EXPECT_TRUE(LoggedExactly(QStringLiteral("leaves mine at ") + QString::number(from)));
    EXPECT_EQ(B().MinePos(ext, 0), from);
    EXPECT_EQ(B().BoardCell(from), (ext == 1 ? 1 : -1) * kMineCell);
    const PlacedBox laid = MineSide(from) == 2 ? Seen(FieldAnchorX(from, 0), FieldAnchorY(from, 0), 750, 330)
                                               : Seen(FieldAnchorX(from, 1), FieldAnchorY(from, 1), 330, 750);
    EXPECT_TRUE(Mine(ext, 0)->Visible());
    EXPECT_EQ(BoxOf(*Mine(ext, 0)), laid);
}

TEST_P(OpponentMinesTest, AFlagIsTakenAboardOnTheFlagField)
{
    const int ext = External();
    const int flag = FlagField(ext);
    int from = -1, steps = 0;
    for (int f = kFirstRoadField; f <= kLastRoadField && from < 0; ++f) {
        if (B().BoardCell(f) != 0 || f == flag)
            continue;
        for (int s = 1; s <= 6 && from < 0; ++s) {
            const MoveVerdict verdict = JudgeMove(B(), ext, 3, f, flag, s, true);
            if (verdict.Legal && verdict.FlagLoad && !verdict.CompassCrossed) {
                from = f;
                steps = s;
            }
        }
    }
    ASSERT_GT(from, 0);
    PutOnField(ext, 3, from, 1);
    BoardState sender = B();
    ASSERT_TRUE(IsLegalMove(sender, ext, 3, from, flag, steps, true));
    ASSERT_TRUE(sender.Verdict.FlagLoad);
    ApplyAction(sender, BoardAction{ext, 3, kActMoveLoadFlag, from, flag, sender.Verdict.Heading, false, -1});
    ASSERT_EQ(sender.FlagCarried(ext), 1);
    SendTheirAction(ActionMessage{sender.Verdict.Heading, kDiceLeft, 3, kActMoveLoadFlag, from, flag,
                                  sender.VehicleTag(ext, 3)},
                    8);
    When("the marks are on show", [this] { return MarksShown(); }, [&] {
        EXPECT_EQ(BoxOf(*W().Kader2), FieldMark(flag));
        EXPECT_EQ(Global().BoardText, Board("uw tegenstander gebruikt dobbelsteen 1, en verplaatst het rood gemerkt "
                                            "voertuig naar het blauw gemerkt vakje en neemt een vlag aan boord"));
    });
    ThenTheTurnEnds(sender);
    FollowTurn();
    EXPECT_TRUE(Logged(QStringLiteral("loads flag")));
    EXPECT_EQ(B().FlagCarried(ext), 1);
}

INSTANTIATE_TEST_SUITE_P(BothViews, OpponentMinesTest, ::testing::Values(1, 2));

} // namespace
} // namespace vk::test
