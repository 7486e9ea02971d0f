// How the opponent's files are taken during his turn: an action read only
// once its last key has come, the order of the kinds in one pass, the end of
// the turn of this turn and a leftover of another, a shot annulled by a card,
// the stop of the game (saved or given up), and the jeep driven into its camp.

#include "GameplayFixture.h"

#include "board/Movement.h"
#include "board/VehicleTag.h"
#include "game/SavedGame.h"
#include "shell/RunTimeFault.h"

namespace vk::test {
namespace {

class OpponentFilesTest : public GameplayTest {
protected:
    void SetUp() override
    {
        GameplayTest::SetUp();
        StartGame(1, 4);
    }
    int Turn() { return V().Progress.TurnNumber; }
};

// The keys of an action record as INI text, VEHTAG left out when empty.
QByteArray ActionText(int dice, int slot, int act, int from, int to, const std::string& tag)
{
    QByteArray text = "[GENERAL]\r\nDIRECT=3\r\nDICE=" + QByteArray::number(dice) + "\r\nVEH=" +
                      QByteArray::number(slot) + "\r\nACT=" + QByteArray::number(act) + "\r\nFROM=" +
                      QByteArray::number(from) + "\r\nTO=" + QByteArray::number(to) + "\r\n";
    if (!tag.empty())
        text += "VEHTAG=" + QByteArray::fromStdString(tag) + "\r\n";
    return text;
}

TEST_F(OpponentFilesTest, AnActionIsReadOnlyOnceItsTagHasCome)
{
    const std::string tag = MakeVehicleTag(0, 2, 2, 0, kWest);
    Put(TheirPath(".act"), ActionText(kDiceLeft, 0, kActMove, kCamp2, kHQ2, std::string()));
    When("the reader waits for the tag", [] { return Waiting() == QStringLiteral("opponent's .act"); }, [&] {
        EXPECT_TRUE(FileExists(TheirPath(".act")));
        EXPECT_FALSE(W().Kader->Visible());
        EXPECT_EQ(B().VehiclePos(2, 0), kCamp2);
        EXPECT_EQ(B().CampCompanies(2), 15);
        EXPECT_FALSE(Logged(QStringLiteral("opponent takes action with following details at ")));
        Publish(TheirPath(".act"), ActionText(kDiceLeft, 0, kActMove, kCamp2, kHQ2, tag));
    });
    When("the marks are on show", [this] { return MarksShown(); }, [&] {
        EXPECT_FALSE(FileExists(TheirPath(".act")));
        EXPECT_EQ(B().VehicleCompanies(2, 0), 2);
    });
    When("the replay is done", [] { return Idle(); }, [&] {
        EXPECT_EQ(B().VehiclePos(2, 0), kHQ2);
        EXPECT_EQ(B().VehicleTag(2, 0), tag);
        // The record lands in the first words, the die in CurrentCard.
        EXPECT_EQ(V().CurrentCard, kDiceLeft);
        EXPECT_EQ(V().Act.ActVeh[0], 0);
        EXPECT_EQ(V().Act.ActCode[0], kActMove);
        EXPECT_EQ(V().Act.ActFrom[0], kCamp2);
        EXPECT_EQ(V().Act.ActTo[0], kHQ2);
        EXPECT_EQ(B().CampCompanies(2), 13);
        SendTheirEndOfTurn(Turn());
    });
    FollowTurn();
}

TEST_F(OpponentFilesTest, ASkippedTurnShowsNothingButTheWaitingText)
{
    ShowOnBoard(QStringLiteral("het is nu de beurt aan de externe speler."));
    const QString waiting = Global().BoardText;
    const BoardState before = B();
    SendTheirEndOfTurn(Turn());
    FollowTurn();
    EXPECT_EQ(Global().BoardText, waiting);
    EXPECT_EQ(GameDifference(B(), before), "");
    EXPECT_TRUE(V().GameRunning);
    EXPECT_FALSE(FileExists(TheirPath(".eot")));
}

TEST_F(OpponentFilesTest, TheEndOfTheTurnIsLookedAtBeforeTheRoll)
{
    SendTheirRoll(3, 4);
    SendTheirEndOfTurn(Turn());
    FollowTurn();
    EXPECT_FALSE(FileExists(TheirPath(".eot")));
    EXPECT_TRUE(FileExists(TheirPath(".wrp")));
    EXPECT_EQ(V().OppDice1, 0);
    EXPECT_NE(W().Dice_1->Picture(), Global().ProgramFolder + QStringLiteral("dice3.gif"));
    EXPECT_TRUE(Logged(QStringLiteral("opponent's turn ended at ")));
}

TEST_F(OpponentFilesTest, AnEndOfTurnOfAnotherTurnStaysAndThePassGoesOn)
{
    SendTheirEndOfTurn(Turn() - 2);
    SendTheirRoll(4, 1);
    When("the roll is read past the leftover", [this] { return Idle() && V().OppDice1 == 4; }, [&] {
        EXPECT_TRUE(FileExists(TheirPath(".eot")));
        EXPECT_FALSE(FileExists(TheirPath(".wrp")));
        EXPECT_FALSE(Logged(QStringLiteral("opponent's turn ended at ")));
        Publish(TheirPath(".eot"), "[GENERAL]\r\nTURN=" + QByteArray::number(Turn()) + "\r\n");
    });
    FollowTurn();
    EXPECT_FALSE(FileExists(TheirPath(".eot")));
    EXPECT_TRUE(Logged(QStringLiteral("opponent's turn ended at ")));
}

TEST_F(OpponentFilesTest, AnAnnulledShotHidesItsDieAndShowsNoMarks)
{
    const BoardState before = B();
    bool marked = false;
    everyTick = [&] { marked = marked || W().Kader->Visible() || W().Kader2->Visible() || W().DiceKader->Visible(); };
    SendTheirRoll(2, 5);
    Put(TheirPath(".act"), ActionText(kDiceLeft, 0, kActInterceptedShot, 30, 31, "tank_2_1_w"));
    When("the notice is read", [] { return Idle(); }, [&] {
        EXPECT_FALSE(FileExists(TheirPath(".act")));
        for (const Control* c : ControlList{W().Dice_1, W().MiniDice_1, W().MiniDice_2})
            EXPECT_FALSE(c->Visible()) << c->Name().toStdString();
        EXPECT_TRUE(W().Dice_2->Visible());
        EXPECT_TRUE(Global().BoardText.isEmpty());
        EXPECT_EQ(GameDifference(B(), before), "");
        SendTheirEndOfTurn(Turn());
    });
    FollowTurn();
    EXPECT_FALSE(marked);
    EXPECT_TRUE(LoggedExactly(QStringLiteral("uses dice 1 to shoot at your jeep, but was annuled with your card")));
}

TEST_F(OpponentFilesTest, AGameSavedByTheOpponentIsSavedHereAndStops)
{
    SendTheirRoll(1, 1);
    Put(TheirPath(".stp"), "[GAME]\r\nSTATUS=SAVE\r\n");
    FollowTurn();
    EXPECT_FALSE(V().GameRunning);
    EXPECT_FALSE(V().GameWon);
    EXPECT_FALSE(FileExists(TheirPath(".stp")));
    // The stop is looked at first: the roll stays unread.
    EXPECT_TRUE(FileExists(TheirPath(".wrp")));
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0], QStringLiteral("Spel wordt later verder gespeeld!|Je tegenstander heeft het spel gestopt om op "
                                       "een andere keer verder te spelen. Het spel is opgeslagen."));
    const QString saved = Global().DataFolder + QStringLiteral("bert.vkh");
    ASSERT_TRUE(FileExists(saved));
    EXPECT_EQ(Text(saved).toStdString(), SavedGameText(B(), V().Progress));
}

TEST_F(OpponentFilesTest, AGameGivenUpByTheOpponentIsWon)
{
    Put(TheirPath(".stp"), "[GAME]\r\nSTATUS=LOSE\r\n");
    FollowTurn();
    EXPECT_FALSE(V().GameRunning);
    EXPECT_TRUE(V().GameWon);
    EXPECT_FALSE(FileExists(TheirPath(".stp")));
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0], QStringLiteral("U heeft gewonnen!!!|Je tegenstander heeft het spel gestopt en verklaart "
                                       "zichzelf als verliezer en jou als winnaar."));
    EXPECT_FALSE(FileExists(Global().DataFolder + QStringLiteral("bert.vkh")));
}

TEST_F(OpponentFilesTest, AStopDuringAnActionEndsTheTurnAfterTheAction)
{
    const std::string tag = MakeVehicleTag(0, 2, 1, 0, kWest);
    Put(TheirPath(".act"), ActionText(kDiceLeft, 0, kActMove, kCamp2, kHQ2, tag));
    When("the marks are on show", [this] { return MarksShown(); }, [&] { V().GameRunning = false; });
    FollowTurn();
    EXPECT_EQ(B().VehiclePos(2, 0), kHQ2);
    EXPECT_FALSE(W().Kader->Visible());
}

TEST_F(OpponentFilesTest, ARollIsReadOnlyOnceBothDiceHaveCome)
{
    Put(TheirPath(".wrp"), "[GENERAL]\r\nD1=5\r\n");
    When("the reader waits for the second die", [] { return Waiting() == QStringLiteral("opponent's .wrp"); }, [&] {
        EXPECT_TRUE(FileExists(TheirPath(".wrp")));
        EXPECT_EQ(V().OppDice2, 0);
        Publish(TheirPath(".wrp"), "[GENERAL]\r\nD1=5\r\nD2=2\r\n");
    });
    When("the roll is read", [] { return Idle(); }, [&] {
        EXPECT_EQ(V().OppDice1, 5);
        EXPECT_EQ(V().OppDice2, 2);
        EXPECT_EQ(W().Dice_2->Picture(), Global().ProgramFolder + QStringLiteral("dice2.gif"));
        SendTheirEndOfTurn(Turn());
    });
    FollowTurn();
}

TEST_F(OpponentFilesTest, AStopOfAnotherKindOnlyStops)
{
    Put(TheirPath(".stp"), "[GAME]\r\nSTATUS=PAUZE\r\n");
    FollowTurn();
    EXPECT_FALSE(V().GameRunning);
    EXPECT_FALSE(V().GameWon);
    EXPECT_TRUE(boxes.isEmpty());
    EXPECT_FALSE(FileExists(TheirPath(".stp")));
    EXPECT_FALSE(FileExists(Global().DataFolder + QStringLiteral("bert.vkh")));
}

TEST_F(OpponentFilesTest, NothingIsReadBeforeTheOpponentHasTakenTheLastFileSent)
{
    SendTheirRoll(6, 6);
    // The own end of the last turn, not yet taken.
    Put(OwnPath(".eot"), "[GENERAL]\r\nTURN=" + QByteArray::number(Turn() - 1) + "\r\n");
    V().LastSentFile = OwnPath(".eot");
    When("the pass waits for the own file", [] { return Waiting() == QStringLiteral("consumed"); }, [&] {
        EXPECT_TRUE(V().InputLock);
        EXPECT_TRUE(FileExists(TheirPath(".wrp")));
        EXPECT_EQ(V().OppDice1, 0);
        Consume(OwnPath(".eot"));
    });
    When("the roll is read", [this] { return Idle() && V().OppDice1 == 6; }, [&] {
        EXPECT_FALSE(V().InputLock);
        SendTheirEndOfTurn(Turn());
    });
    FollowTurn();
}

TEST_F(OpponentFilesTest, TheJeepDrivenIntoItsCampIsAFaultOfTheProgram)
{
    // The jeep of army 2 on a road square from which its camp is in reach.
    int from = -1, steps = 0;
    for (int field = kFirstRoadField; field <= kLastRoadField && from < 0; ++field) {
        if (B().BoardCell(field) != 0)
            continue;
        for (int s = 1; s <= 6 && from < 0; ++s)
            if (JudgeMove(B(), 2, kJeepSlot, field, kCamp2, s, true).Legal) {
                from = field;
                steps = s;
            }
    }
    ASSERT_GT(from, 0);
    PutOnField(2, kJeepSlot, from, 0);
    ASSERT_TRUE(IsLegalMove(B(), 2, kJeepSlot, from, kCamp2, steps, true));
    SendTheirAction(ActionMessage{B().Verdict.Heading, kDiceLeft, kJeepSlot, kActMove, from, kCamp2,
                                  B().VehicleTag(2, kJeepSlot)},
                    8);
    EXPECT_THROW(FollowOpponentTurn(W()), RunTimeFault);
    EXPECT_FALSE(W().Kader->Visible() && W().Kader2->Visible());
}

} // namespace
} // namespace vk::test
