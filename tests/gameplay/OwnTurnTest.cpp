// The own turn from its start to its end: the start of the turn with and
// without Personnel cards in the hand, the roll and its record, the turn
// skipped or ended after the roll, and what the end of a turn counts down.

#include "GameplayFixture.h"

namespace vk::test {
namespace {

bool Shown(const Control* c) { return c->Visible(); }
bool ShownAndEnabled(const Control* c) { return c->Visible() && c->Enabled(); }

// The local army and the number of Personnel cards in its hand.
class TurnStartTest : public GameplayTest, public ::testing::WithParamInterface<std::tuple<int, int>> {};

TEST_P(TurnStartTest, ShowsTheTextAndTheCardsOfTheHand)
{
    const auto [side, cards] = GetParam();
    StartGame(side, side == 1 ? 1 : 2);
    V().Progress.Deck.CardCount[static_cast<std::size_t>(side - 1)] = cards;
    // The opponent's hand doesn't count.
    V().Progress.Deck.CardCount[static_cast<std::size_t>(2 - side)] = 2 - cards;
    AtPhase(0, "the turn's start", [&, cards = cards] {
        EXPECT_EQ(Global().BoardText, Board(cards > 0 ? text::kTurnStartWithCard : text::kTurnStartNoCard));
        EXPECT_EQ(ShownAndEnabled(W().KK1), cards > 0);
        EXPECT_EQ(Shown(W().KK1), cards > 0);
        EXPECT_EQ(ShownAndEnabled(W().KK2), cards == 2);
        EXPECT_EQ(Shown(W().KK2), cards == 2);
        EXPECT_FALSE(Shown(W().KK3));
        EXPECT_TRUE(ShownAndEnabled(W().cmdGooi));
        EXPECT_TRUE(ShownAndEnabled(W().cmdEindeBeurt));
        for (const Control* c : ControlList{W().cmdKompasSluit, W().cmdKompasGebruik}) {
            EXPECT_FALSE(c->Visible()) << c->Name().toStdString();
            EXPECT_FALSE(c->Enabled()) << c->Name().toStdString();
        }
        for (const Control* c : ControlList{W().Dice_1, W().Dice_2, W().Dices})
            EXPECT_FALSE(c->Enabled()) << c->Name().toStdString();
        EXPECT_TRUE(W().cmdStop->Enabled());
        EXPECT_EQ(V().Dice1, 0);
        EXPECT_EQ(V().Dice2, 0);
        W().cmdEindeBeurt->Click();
    });
    PlayTurn();
    EXPECT_EQ(V().GamePhase, 39);
}

INSTANTIATE_TEST_SUITE_P(SidesAndHands, TurnStartTest,
                         ::testing::Combine(::testing::Values(1, 2), ::testing::Values(0, 1, 2)));

class OwnTurnTest : public GameplayTest, public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override
    {
        GameplayTest::SetUp();
        StartGame(GetParam(), GetParam() == 1 ? 3 : 4);
    }
};

TEST_P(OwnTurnTest, TurnSkippedAtTheStartSendsNoRoll)
{
    AtPhase(0, "skip the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(V().GamePhase, 39);
    EXPECT_FALSE(FileExists(OwnPath(".wrp")));
    EXPECT_FALSE(FileExists(OwnPath(".act")));
    EXPECT_TRUE(V().LastSentFile.isEmpty());
    EXPECT_EQ(V().Dice1, 0);
    EXPECT_FALSE(W().frDices->Enabled());
    // A skipped turn leaves the stop open through the opponent's turn.
    EXPECT_TRUE(W().cmdStop->Enabled());
    EXPECT_TRUE(Global().BoardText.isEmpty());
    EXPECT_TRUE(Logged(QStringLiteral("ending turn at ")));
    EXPECT_FALSE(Logged(QStringLiteral("result of me rolling dices: 0 and 0 at ")));
}

TEST_P(OwnTurnTest, RollOpensTheChoiceOfDiceAndPublishesTheRoll)
{
    NextRoll(2, 5);
    AtPhase(0, "roll", [&] {
        W().cmdGooi->Click();
        // The handler itself moves the phase and shows the dice.
        EXPECT_EQ(V().GamePhase, 4);
        EXPECT_FALSE(W().cmdGooi->Enabled());
    });
    AtPhase(4, "the dice are on show", [&] {
        const QString roll = OwnPath(".wrp");
        ASSERT_TRUE(FileExists(roll));
        EXPECT_EQ(V().LastSentFile, roll);
        const Keys keys = ReadKeys(roll);
        EXPECT_EQ(keys.value(QStringLiteral("D1")), QStringLiteral("2"));
        EXPECT_EQ(keys.value(QStringLiteral("D2")), QStringLiteral("5"));
        EXPECT_TRUE(Text(roll).startsWith("[GENERAL]\r\n")) << Text(roll).toStdString();
        EXPECT_EQ(V().Dice1, 2);
        EXPECT_EQ(V().Dice2, 5);
        const QString program = Global().ProgramFolder;
        EXPECT_EQ(W().Dice_1->Picture(), program + QStringLiteral("dice2.gif"));
        EXPECT_EQ(W().MiniDice_1->Picture(), program + QStringLiteral("dice2.gif"));
        EXPECT_EQ(W().Dice_2->Picture(), program + QStringLiteral("dice5.gif"));
        EXPECT_EQ(W().MiniDice_2->Picture(), program + QStringLiteral("dice5.gif"));
        for (const Control* c : ControlList{W().Dice_1, W().Dice_2, W().Dices, W().MiniDice_1, W().MiniDice_2})
            EXPECT_TRUE(c->Visible()) << c->Name().toStdString();
        for (const Control* c : ControlList{W().Dice_1, W().Dice_2, W().Dices})
            EXPECT_TRUE(c->Enabled()) << c->Name().toStdString();
        EXPECT_TRUE(ShownAndEnabled(W().cmdEindeBeurt));
        EXPECT_FALSE(W().DiceKader->Visible());
        EXPECT_FALSE(W().cmdGooi->Enabled());
        EXPECT_FALSE(W().KK1->Enabled());
        EXPECT_FALSE(W().KK2->Enabled());
        // Once rolled, the game can't be stopped in this turn.
        EXPECT_FALSE(W().cmdStop->Enabled());
        EXPECT_EQ(Global().BoardText, Board(text::kChooseDice));
        EXPECT_EQ(V().Act, (ActionRecord{{-1, -1}, {-1, -1}, {-1, -1}, {-1, -1}}));
        EXPECT_TRUE(Logged(QStringLiteral("result of me rolling dices: 2 and 5 at ")));
        Consume(roll);
    });
    AtPhase(4, "end the turn after the roll", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(V().GamePhase, 39);
    // Phase 27 put the dice away on its way to 39.
    for (const Control* c : ControlList{W().Dice_1, W().Dice_2, W().MiniDice_1, W().MiniDice_2, W().DiceKader})
        EXPECT_FALSE(c->Visible()) << c->Name().toStdString();
    EXPECT_FALSE(FileExists(OwnPath(".act")));
    EXPECT_FALSE(W().frDices->Enabled());
}

TEST_P(OwnTurnTest, TheEndOfTheTurnCountsDownFuelAndTsetseOfTheLocalArmy)
{
    B().Brandstof(Local()) = 2;
    B().Tsetse(Local()) = 1;
    B().Brandstof(External()) = 3;
    B().Tsetse(External()) = 3;
    AtPhase(0, "skip the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(B().Brandstof(Local()), 1);
    EXPECT_EQ(B().Tsetse(Local()), 0);
    EXPECT_EQ(B().Brandstof(External()), 3);
    EXPECT_EQ(B().Tsetse(External()), 3);
}

TEST_P(OwnTurnTest, CountersAtZeroStayAtZero)
{
    AtPhase(0, "skip the turn", [&] { W().cmdEindeBeurt->Click(); });
    PlayTurn();
    EXPECT_EQ(B().Brandstof(Local()), 0);
    EXPECT_EQ(B().Tsetse(Local()), 0);
}

TEST_P(OwnTurnTest, AStoppedTurnLeavesFuelAndTsetse)
{
    B().Brandstof(Local()) = 2;
    B().Tsetse(Local()) = 2;
    AtPhase(0, "the game stops", [&] { V().GameRunning = false; });
    PlayTurn();
    EXPECT_NE(V().GamePhase, 39);
    EXPECT_EQ(B().Brandstof(Local()), 2);
    EXPECT_EQ(B().Tsetse(Local()), 2);
    EXPECT_TRUE(Logged(QStringLiteral("ending turn at ")));
    EXPECT_FALSE(FileExists(OwnPath(".wrp")));
}

TEST_P(OwnTurnTest, AStopAfterTheRollLeavesTheFuelAndSendsNoAction)
{
    B().Brandstof(Local()) = 1;
    autoConsume = true;
    AtPhase(0, "roll", [&] { W().cmdGooi->Click(); });
    AtPhase(4, "the game stops", [&] { V().GameRunning = false; });
    PlayTurn();
    EXPECT_EQ(B().Brandstof(Local()), 1);
    ASSERT_EQ(consumed.size(), 1u);
    EXPECT_EQ(consumed[0].Extension, QStringLiteral(".wrp"));
}

// After a Personnel card was played (phase 3) the turn goes on with the roll,
// or ends through phase 27; the card left in the hand can't be played.
TEST_P(OwnTurnTest, AfterACardTheRollIsStillOpen)
{
    V().Progress.Deck.CardCount[static_cast<std::size_t>(Local() - 1)] = 1;
    V().GamePhase = 3;
    NextRoll(4, 4);
    AtPhase(3, "still the own turn", [&] {
        EXPECT_EQ(Global().BoardText, Board("u bent nog steeds aan de beurt. gelieve op de knop 'gooi' te drukken, of "
                                            "op 'einde beurt' om je beurt nu te beeindigen."));
        EXPECT_TRUE(W().KK1->Visible());
        EXPECT_FALSE(W().KK1->Enabled());
        EXPECT_FALSE(W().KK2->Visible());
        EXPECT_TRUE(ShownAndEnabled(W().cmdGooi));
        EXPECT_TRUE(ShownAndEnabled(W().cmdEindeBeurt));
        W().cmdGooi->Click();
    });
    AtPhase(4, "the roll is published", [&] {
        EXPECT_EQ(V().LastSentFile, OwnPath(".wrp"));
        EXPECT_EQ(ReadKeys(OwnPath(".wrp")).value(QStringLiteral("D1")), QStringLiteral("4"));
        Consume(OwnPath(".wrp"));
        W().cmdEindeBeurt->Click();
    });
    PlayTurn();
    EXPECT_EQ(V().GamePhase, 39);
}

TEST_P(OwnTurnTest, AfterACardTheTurnEndsWithoutARoll)
{
    V().GamePhase = 3;
    AtPhase(3, "end the turn", [&] {
        EXPECT_FALSE(W().KK1->Visible());
        W().cmdEindeBeurt->Click();
        EXPECT_EQ(V().GamePhase, 27);
    });
    PlayTurn();
    EXPECT_EQ(V().GamePhase, 39);
    EXPECT_FALSE(FileExists(OwnPath(".wrp")));
    EXPECT_TRUE(V().LastSentFile.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(BothArmies, OwnTurnTest, ::testing::Values(1, 2));

} // namespace
} // namespace vk::test
