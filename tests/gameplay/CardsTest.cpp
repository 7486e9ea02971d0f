// The compass cards in the window: the draws at the end of the own turn, the
// choice among three Personnel cards, the opponent's draws as his files tell
// them, and both sides of the questions about the jeep.

#include "CardsFixture.h"

#include "board/VehicleTag.h"
#include "cards/DeckMoves.h"
#include "game/CardConversation.h"
#include "game/CompassDraw.h"
#include "ui/CardPanels.h"

#include <numeric>

namespace vk::test {
namespace {

const QString kKept = QStringLiteral("Personnel kaart|U hebt een Personnel kaart getrokken. U kan die bekijken vanaf "
                                     "het begin van uw volgende beurt.");
const QString kThird = QStringLiteral("Personnel kaart|U hebt een 3e Personnel kaart getrokken. U mag er slechts "
                                      "twee houden, dus kan je je kaarten bekijken en kiezen welke je niet wilt "
                                      "behouden.");

TEST_F(CardsTest, NothingOwedEndsTheTurnWithoutADraw)
{
    EndOfTurnWithDraws(0);
    PlayTurn();
    EXPECT_EQ(V().GamePhase, 39);
    EXPECT_TRUE(boxes.isEmpty());
    EXPECT_EQ(Deck().StackPoint, 32);
    EXPECT_EQ(SentFile(".ryc"), nullptr);
}

TEST_F(CardsTest, APersonnelCardIsKeptAndTheOpponentTold)
{
    OnTop({26, 3});
    EndOfTurnWithDraws(1);
    PlayTurn();
    ASSERT_EQ(boxes, QStringList{kKept});
    ASSERT_NE(SentFile(".pna"), nullptr);
    EXPECT_EQ(SentFile(".pna")->Values.value(QStringLiteral("CARD")), QStringLiteral("26"));
    EXPECT_EQ(Deck().CardCount[0], 1);
    EXPECT_EQ(Deck().CardHand[0][0], 26);
    EXPECT_EQ(Deck().StackPoint, 31);
    EXPECT_EQ(B().CompassOwed, 0);
    EXPECT_EQ(B().PendingDraws, 0);
    EXPECT_TRUE(Logged(QStringLiteral("taking compas card number 26 at ")));
    EXPECT_TRUE(Logged(QStringLiteral("next compas card is number 3")));
    // Nothing waits for the reader of a kept card.
    EXPECT_NE(V().LastSentFile, OwnPath(".pna"));
}

TEST_F(CardsTest, ARadioYamboCardIsShownUntilTheBoardIsClicked)
{
    OnTop({11, 21});
    EndOfTurnWithDraws(1);
    When("the card is shown", [] { return Waiting() == QStringLiteral("Radio Yambo card read"); }, [&] {
        EXPECT_TRUE(W().RadioYambo->Visible());
        EXPECT_EQ(W().imgRaYaTekst->Picture(), Global().ProgramFolder + QStringLiteral("kompas/raya_11.gif"));
        EXPECT_EQ(Global().BoardText, Board("nieuwsbericht tse tse vlieg - klik op deze boodschap om de Radio Yambo "
                                            "kaart te sluiten en uit te voeren"));
        ASSERT_NE(SentFile(".ryc"), nullptr);
        EXPECT_EQ(SentFile(".ryc")->Values.value(QStringLiteral("CARD")), QStringLiteral("11"));
        EXPECT_EQ(V().LastSentFile, OwnPath(".ryc"));
        Global().BoardText.clear(); // what a click on the board does
    });
    PlayTurn();
    EXPECT_FALSE(W().RadioYambo->Visible());
    EXPECT_EQ(V().GamePhase, 39);
    EXPECT_EQ(Deck().StackPoint, 32);
    EXPECT_EQ(Deck().CompassStack[0], 11);
    EXPECT_TRUE(Logged(QStringLiteral("taking compas card number 11 at ")));
    EXPECT_TRUE(Logged(QStringLiteral("next compas card is number 21")));
}

TEST_F(CardsTest, TwoDrawsInATurnAndTheThirdOwedToTheNext)
{
    OnTop({1, 27, 2});
    ReadBoardMessages();
    EndOfTurnWithDraws(3);
    PlayTurn();
    ASSERT_NE(SentFile(".ryc"), nullptr);
    ASSERT_NE(SentFile(".pna"), nullptr);
    EXPECT_EQ(B().CompassOwed, 1);
    EXPECT_EQ(Deck().CardHand[0][0], 27);
    EXPECT_EQ(TopCard(Deck()), 2);
    EXPECT_EQ(SentFile(".ryc", 1), nullptr);

    // The next own turn: the turn start clears the turn's count, not what is owed.
    B().PendingDraws = 0;
    V().GamePhase = 27;
    ReadBoardMessages();
    PlayTurn();
    ASSERT_NE(SentFile(".ryc", 1), nullptr);
    EXPECT_EQ(SentFile(".ryc", 1)->Values.value(QStringLiteral("CARD")), QStringLiteral("2"));
    EXPECT_EQ(B().CompassOwed, 0);
}

struct GiveUp {
    const char* Tag;
    int Out;
    std::array<int, 2> Hand;
};

class ThirdCardTest : public CardsTest, public ::testing::WithParamInterface<GiveUp> {};

TEST_P(ThirdCardTest, VerwerpGivesTheCardUpUnderTheDeck)
{
    const GiveUp& c = GetParam();
    Hand(1, {21, 22});
    OnTop({23, 4});
    EndOfTurnWithDraws(1);
    AtPhase(31, "the new card shown", [&] {
        EXPECT_TRUE(W().Personnel->Visible());
        EXPECT_EQ(W().Personnel->Tag, QStringLiteral("3"));
        EXPECT_EQ(W().imgPersTekst->Picture(), Global().ProgramFolder + QStringLiteral("kompas/pers_03.gif"));
        EXPECT_EQ(W().cmdKompasGebruik->Caption(), QStringLiteral("Verwerp"));
        EXPECT_TRUE(W().cmdKompasSluit->Visible());
        EXPECT_FALSE(W().cmdEindeBeurt->Enabled());
        EXPECT_EQ(V().CurrentCard, 23);
        EXPECT_TRUE(Logged(QStringLiteral("3rd personnel card, this or another card must be returned")));
        if (QLatin1String(c.Tag) == QLatin1String("3"))
            W().cmdKompasGebruik->click();
        else
            W().cmdKompasSluit->click();
    });
    if (QLatin1String(c.Tag) != QLatin1String("3")) {
        AtPhase(32, "the choice of a miniature", [&] {
            EXPECT_FALSE(W().Personnel->Visible());
            EXPECT_TRUE(W().KK3->Visible());
            EXPECT_TRUE(W().KK1->Visible());
            (QLatin1String(c.Tag) == QLatin1String("1") ? W().KK1 : W().KK2)->Mouse.Click();
        });
        AtPhase(31, "a card of the hand shown", [&] {
            EXPECT_EQ(W().Personnel->Tag, QString::fromLatin1(c.Tag));
            EXPECT_EQ(W().imgPersTekst->Picture(), CardPicture(c.Out));
            W().cmdKompasGebruik->click();
        });
    }
    PlayTurn();
    EXPECT_EQ(boxes, QStringList{kThird});
    const Sent* pnc = SentFile(".pnc");
    ASSERT_NE(pnc, nullptr);
    EXPECT_EQ(pnc->Raw, QByteArray("[GENERAL]\r\nCARDOUT=") + QByteArray::number(c.Out) + "\r\nCARDIN=23\r\nCARDIND=" +
                            c.Tag + "\r\n");
    EXPECT_EQ(Deck().CardHand[0], c.Hand);
    EXPECT_EQ(Deck().CardCount[0], 2);
    EXPECT_EQ(Deck().StackPoint, 30);
    EXPECT_EQ(Deck().CompassStack[0], c.Out);
    EXPECT_EQ(TopCard(Deck()), 4);
    EXPECT_FALSE(W().Personnel->Visible());
    EXPECT_FALSE(W().KK3->Visible());
    EXPECT_TRUE(Logged(QStringLiteral("returning compas card number ") + QString::number(c.Out) +
                       QStringLiteral(" at ")));
    EXPECT_TRUE(Logged(QStringLiteral("next compas card is number 4")));
    EXPECT_NE(V().LastSentFile, OwnPath(".pnc"));
    EXPECT_EQ(V().GamePhase, 39);
}

INSTANTIATE_TEST_SUITE_P(Verwerp, ThirdCardTest,
                         ::testing::Values(GiveUp{"1", 21, {23, 22}}, GiveUp{"2", 22, {21, 23}},
                                           GiveUp{"3", 23, {21, 22}}));

TEST_F(CardsTest, ACardOfTheHandIsShownBeforeTheDiceAndClosedAgain)
{
    // Contra spionage, played before the dice, is spent at once.
    Hand(1, {24, 22});
    V().GamePhase = 0;
    AtPhase(0, "the turn starts with two cards", [&] {
        EXPECT_EQ(Global().BoardText, Board(text::kTurnStartWithCard));
        EXPECT_TRUE(W().KK1->Visible() && W().KK1->Enabled());
        EXPECT_TRUE(W().KK2->Visible() && W().KK2->Enabled());
        W().KK2->Mouse.Click();
    });
    AtPhase(1, "the second card shown", [&] {
        EXPECT_EQ(W().Personnel->Tag, QStringLiteral("2"));
        EXPECT_EQ(W().imgPersTekst->Picture(), CardPicture(22));
        EXPECT_EQ(W().cmdKompasGebruik->Caption(), QStringLiteral("Gebruik"));
        EXPECT_FALSE(W().KK1->Visible());
        EXPECT_FALSE(W().cmdGooi->Visible());
        EXPECT_FALSE(W().cmdEindeBeurt->Enabled());
        W().cmdKompasSluit->click();
    });
    AtPhase(0, "back at the start", [&] {
        EXPECT_FALSE(W().Personnel->Visible());
        EXPECT_TRUE(W().KK1->Visible());
        EXPECT_TRUE(W().KK2->Visible());
        EXPECT_TRUE(W().cmdGooi->Visible());
        W().KK1->Mouse.Click();
    });
    AtPhase(1, "the first card shown", [&] { W().cmdKompasGebruik->click(); });
    AtPhase(3, "still the own turn", [&] {
        EXPECT_FALSE(W().cmdStop->Enabled());
        EXPECT_TRUE(W().KK1->Visible());
        EXPECT_FALSE(W().KK1->Enabled());
        EXPECT_FALSE(W().Personnel->Visible());
        W().cmdEindeBeurt->click();
    });
    PlayTurn();
    EXPECT_EQ(Deck().CardHand[0], (std::array<int, 2>{22, 0}));
    EXPECT_EQ(Deck().CardCount[0], 1);
    EXPECT_EQ(Deck().CompassStack[0], 24) << "a card played goes under the deck first";
    EXPECT_EQ(Deck().StackPoint, 31);
    EXPECT_TRUE(Logged(QStringLiteral("before rolling the dices, I use personnel card number 24 at ")));
}

TEST_F(CardsTest, InformationOfTheCardShown)
{
    Hand(1, {28});
    W().Personnel->Tag = QStringLiteral("1");
    ShowPersonnelPicture(W(), 28);
    Run([this] { W().cmd_Info->click(); });
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0], QStringLiteral("Info: Militaire Politie|Deze kaart is geen aanval op de Jeep maar een "
                                       "aanhouding. De kaart 'Vrijgeleide' kan deze kaart niet verijdelen."));
    W().Personnel->Tag = QStringLiteral("2");
    Run([this] { W().cmd_Info->click(); });
    EXPECT_EQ(boxes.size(), 1) << "an empty slot has no information";
}

TEST_F(CardsTest, TheRadioYamboCardMovesBetweenTheRightEdgeAndTheMiddle)
{
    PanelControl& frame = *W().RadioYambo;
    const int right = W().Width() - frame.Width();
    frame.SetLeft(right);
    W().imgRaYaTekst->Mouse.DblClick();
    EXPECT_EQ(frame.Left(), right / 2);
    EXPECT_EQ(W().imgRadioYambo->ToolTip(), QStringLiteral("Dubbelklik om deze kaart naar rechts te verplaatsen"));
    W().imgRadioYambo->Mouse.DblClick();
    EXPECT_EQ(frame.Left(), right);
    EXPECT_EQ(W().imgRaYaTekst->ToolTip(), QStringLiteral("Dubbelklik om deze kaart naar het midden te verplaatsen"));
    EXPECT_TRUE(frame.Visible());
}

TEST_F(CardsTest, APersonnelCardClosesByDoubleClickOnlyWhenShownFromTheOtherHand)
{
    W().Personnel->Tag = QStringLiteral("1");
    ShowPersonnelPicture(W(), 22);
    W().imgPersTekst->Mouse.DblClick();
    EXPECT_TRUE(W().Personnel->Visible());
    W().imgPersTekst->Tag = QStringLiteral("DK");
    W().imgPersTekst->Mouse.DblClick();
    EXPECT_FALSE(W().Personnel->Visible());
}

// --- the opponent's draws ---

TEST_F(CardsTest, TheOpponentsDrawsAreMirrored)
{
    OnTop({25, 30, 31, 19});
    Put(TheirPath(".pna"), "[GENERAL]\r\nCARD=25\r\n");
    When("the kept card is read", [this] { return Idle() && !FileExists(TheirPath(".pna")); }, [&] {
        EXPECT_EQ(Deck().CardHand[1][0], 25);
        EXPECT_EQ(Deck().CardCount[1], 1);
        EXPECT_EQ(Deck().StackPoint, 31);
        Put(TheirPath(".pna"), "[GENERAL]\r\nCARD=30\r\n");
    });
    When("the second is read", [this] { return Idle() && !FileExists(TheirPath(".pna")); }, [&] {
        Put(TheirPath(".pnc"), "[GENERAL]\r\nCARDOUT=25\r\nCARDIN=31\r\nCARDIND=1\r\n");
    });
    When("the third card is read", [this] { return Idle() && !FileExists(TheirPath(".pnc")); }, [&] {
        EXPECT_EQ(Deck().CardHand[1], (std::array<int, 2>{31, 30}));
        EXPECT_EQ(Deck().CompassStack[0], 25);
        EXPECT_EQ(TopCard(Deck()), 19);
        Put(TheirPath(".ryc"), "[GENERAL]\r\nCARD=19\r\n");
    });
    When("the Radio Yambo card is read", [this] { return Idle() && !FileExists(TheirPath(".ryc")); }, [&] {
        EXPECT_EQ(Deck().CompassStack[0], 19);
        EXPECT_FALSE(W().RadioYambo->Visible());
        SendTheirEndOfTurn(V().Progress.TurnNumber);
    });
    FollowTurn();
    EXPECT_TRUE(Logged(QStringLiteral("opponent took compas card number 25 at ")));
    EXPECT_TRUE(Logged(QStringLiteral("opponent dumped card number 31 at ")));
    EXPECT_TRUE(Logged(QStringLiteral("opponent took compas card number 19 at ")));
    EXPECT_TRUE(Logged(QStringLiteral("showing radio yambo info")));
    EXPECT_EQ(boxes, QStringList{QStringLiteral("Tegenspeler trok Radio Yambo kaart|Je tegenspeler heeft als "
                                                "kompaskaart het radio yambo bericht ontvangen die u nu te zien "
                                                "krijgt. Klik 'OK' om dit bericht en de kaart te sluiten.")});
}

TEST_F(CardsTest, AnAutomaticRadioYamboCardOfTheOpponentAsksToCarryItOut)
{
    Put(TheirPath(".ryc"), "[GENERAL]\r\nCARD=2\r\n");
    When("read", [this] { return Idle() && !FileExists(TheirPath(".ryc")); },
         [&] { SendTheirEndOfTurn(V().Progress.TurnNumber); });
    FollowTurn();
    EXPECT_EQ(boxes, QStringList{QStringLiteral("Tegenspeler trok Radio Yambo kaart|Je tegenspeler heeft als "
                                                "kompaskaart het radio yambo bericht ontvangen die u nu te zien "
                                                "krijgt. Klik 'OK' om dit bericht en de kaart te sluiten, en de "
                                                "instructies uit te voeren.")});
    EXPECT_TRUE(Logged(QStringLiteral("executing automatic radio yambo procedure")));
}

// --- the questions, on the side of the jeep's owner ---

class QuestionTest : public CardsTest {
protected:
    // The opponent asks `question`; returns the ANSWER sent, or "" for none.
    QString Asked(int question)
    {
        Put(TheirPath(".ask"), "[GENERAL]\r\nQUESTION=" + QByteArray::number(question) + "\r\n");
        When("answered", [this] { return Idle() && !FileExists(TheirPath(".ask")); },
             [&] { SendTheirEndOfTurn(V().Progress.TurnNumber); });
        FollowTurn();
        const Sent* answer = SentFile(".ans");
        return answer ? answer->Values.value(QStringLiteral("ANSWER")) : QString();
    }
    void JeepOnField(int field, int companies)
    {
        B().VehiclePos(1, kJeepSlot) = field;
        B().BoardCell(field) = kJeepSlot + 1;
        B().VehicleCompanies(1, kJeepSlot) = companies;
        B().VehicleTag(1, kJeepSlot) = MakeVehicleTag(kJeepSlot, 1, companies, 0, kEast);
    }
};

const QString kShotAtJeep = QStringLiteral("Jeep wordt aangevallen!|Uw jeep wordt beschoten door de vijand, u "
                                           "beschikt over een vrijgeleide. Wilt u die gebruiken?");

TEST_F(QuestionTest, AnEmptyHandAnswersAtOnce)
{
    EXPECT_EQ(Asked(1), QStringLiteral("1"));
    EXPECT_TRUE(boxes.isEmpty());
    EXPECT_EQ(V().LastSentFile, OwnPath(".ans"));
    EXPECT_EQ(V().Act.ActVeh[0], -1);
    EXPECT_EQ(V().CurrentCard, -1);
}

TEST_F(QuestionTest, AVrijgeleideRefusedIsKept)
{
    Hand(1, {29});
    EXPECT_EQ(Asked(1), QStringLiteral("1"));
    EXPECT_EQ(boxes, QStringList{kShotAtJeep});
    EXPECT_EQ(Deck().CardCount[0], 1);
}

TEST_F(QuestionTest, AVrijgeleideUsedGoesUnderTheDeck)
{
    Hand(1, {22, 29});
    yesTo << QStringLiteral("Jeep wordt aangevallen!");
    EXPECT_EQ(Asked(1), QStringLiteral("2"));
    EXPECT_EQ(Deck().CardCount[0], 1);
    EXPECT_EQ(Deck().CardHand[0][0], 22);
    EXPECT_EQ(Deck().CompassStack[0], 29);
    EXPECT_EQ(Deck().StackPoint, 31);
    EXPECT_TRUE(Logged(QStringLiteral("using personnel card number 29 against shooting at my jeep at ")));
}

TEST_F(QuestionTest, ContraSpionageBeatsTheVrijgeleide)
{
    Hand(2, {24, 31});
    EXPECT_EQ(Asked(2), QString());
    EXPECT_EQ(boxes, QStringList{QStringLiteral("Jeep toch vernietigd!|Uw vrijgeleide werd verijdeld door de contra "
                                                "spionage van de vijand")});
    EXPECT_EQ(Deck().CardHand[1], (std::array<int, 2>{31, 31}));
    EXPECT_EQ(Deck().CardCount[1], 1);
    EXPECT_EQ(Deck().CompassStack[0], 24);
    EXPECT_TRUE(Logged(QStringLiteral("external player anulled my card 29 with card number 24 at ")));
}

TEST_F(QuestionTest, TheVrijgeleideStandsAndTheJeepGoesBack)
{
    JeepOnField(40, 2);
    const int camp = B().CampCompanies(1);
    EXPECT_EQ(Asked(3), QString());
    EXPECT_EQ(boxes, QStringList{QStringLiteral("Vrijgeleide aanvaard!|De vrijgeleide is aanvaard, de kompagnie\u00ebn "
                                                "mogen naar het kamp en de jeep terug naar het gevangenenkamp.")});
    EXPECT_EQ(B().VehiclePos(1, kJeepSlot), 115);
    EXPECT_EQ(B().BoardCell(40), 0);
    EXPECT_EQ(B().CampCompanies(1), camp + 2);
    EXPECT_EQ(B().VehicleTag(1, kJeepSlot), "jeep_1_0_w");
    EXPECT_TRUE(Logged(QStringLiteral("using card 29 is approved at ")));
}

TEST_F(QuestionTest, TheAmbushWithAVrijgeleideAndContraSpionageInHand)
{
    Hand(1, {24, 29});
    Hand(2, {25, 21});
    yesTo << QStringLiteral("Jeep wordt aangevallen!");
    EXPECT_EQ(Asked(4), QStringLiteral("2"));
    EXPECT_EQ(boxes, QStringList{QStringLiteral(
                         "Jeep wordt aangevallen!|Uw jeep kwam in een hinderlaag terecht, u beschikt over een "
                         "vrijgeleide, maar ook over contra spionage. Als u liever contra spionage, of geen van beide "
                         "wilt gebruiken, antwoord dan neen op de volgende vraag: Wilt u de vrijgeleide gebruiken?")});
    EXPECT_EQ(W().imgPersTekst->Picture(), CardPicture(25));
    EXPECT_EQ(Deck().CardHand[1][0], 21) << "the mirror of the attacker's hand loses the 25";
    EXPECT_EQ(Deck().CardCount[1], 1);
    EXPECT_EQ(Deck().CardHand[0][0], 24);
    EXPECT_EQ(Deck().CardCount[0], 1);
    EXPECT_EQ(Deck().CompassStack[0], 29);
    EXPECT_EQ(Deck().CompassStack[1], 25);
    EXPECT_TRUE(Logged(QStringLiteral("my jeep is heading into an ambush at ")));
    EXPECT_TRUE(Logged(QStringLiteral("opponent used personnel card 25")));
    EXPECT_TRUE(Logged(QStringLiteral("using personnel card number 29 against the ambush at ")));
}

TEST_F(QuestionTest, TheAmbushBeatenByContraSpionageDestroysTheJeep)
{
    JeepOnField(52, 3);
    Hand(2, {24, 30});
    const int reserve = B().ReserveCompanies(1);
    EXPECT_EQ(Asked(5), QString());
    EXPECT_EQ(boxes, QStringList{QStringLiteral("Jeep wordt toch vernietigd|Uw tegenstander heeft uw Vrijgeleide "
                                                "geblokkeerd met zijn Contra Spionage.")});
    EXPECT_EQ(Deck().CardCount[1], 0) << "also with two cards held";
    EXPECT_EQ(B().VehiclePos(1, kJeepSlot), 0);
    EXPECT_EQ(B().BoardCell(52), 0);
    EXPECT_EQ(B().ReserveCompanies(1), reserve + 3);
    EXPECT_TRUE(B().VehiclePicture(1, kJeepSlot).InStock);
    EXPECT_EQ(W().imgPersTekst->Picture(), CardPicture(24));
}

TEST_F(QuestionTest, ContraSpionageAgainstTheAmbushWithTwoCardsDropsTheOther)
{
    JeepOnField(52, 1);
    Hand(1, {24, 22});
    yesTo << QStringLiteral("Jeep wordt aangevallen!");
    EXPECT_EQ(Asked(6), QStringLiteral("2"));
    EXPECT_EQ(Deck().CardHand[0][0], 24);
    EXPECT_EQ(Deck().CardCount[0], 1);
    EXPECT_EQ(Deck().CompassStack[0], 29);
    EXPECT_EQ(B().VehiclePos(1, kJeepSlot), 52) << "the jeep escaped the ambush";
    EXPECT_TRUE(Logged(QStringLiteral("using personnel card number 24 against the ambush at ")));
}

TEST_F(QuestionTest, NoContraSpionageAgainstTheAmbushLosesTheJeepWithoutABox)
{
    JeepOnField(52, 1);
    Hand(1, {24});
    EXPECT_EQ(Asked(6), QStringLiteral("1"));
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_TRUE(boxes[0].startsWith(QStringLiteral("Jeep wordt aangevallen!|Uw jeep kwam in een hinderlaag terecht, "
                                                   "u beschikt over Contra Spionage.")));
    EXPECT_EQ(Deck().CardCount[0], 1);
    EXPECT_EQ(B().VehiclePos(1, kJeepSlot), 0);
}

TEST_F(QuestionTest, AnUnknownQuestionIsOnlyDeleted)
{
    EXPECT_EQ(Asked(9), QString());
    EXPECT_TRUE(boxes.isEmpty());
}

// --- the shooter's side of the shot at the jeep ---

TEST_F(CardsTest, TheShooterWithoutCardsLetsTheJeepGoBack)
{
    Hand(2, {29});
    SafeConductAnswer outcome = SafeConductAnswer::ShotGoesOn;
    When("question 1 is asked", [this] { return FileExists(OwnPath(".ask")) || SentFile(".ask"); }, [&] {
        Publish(TheirPath(".ans"), "[GENERAL]\r\nANSWER=2\r\n");
    });
    Run([&] { outcome = ShotAtJeepSeam(W()).ask(1); });
    EXPECT_EQ(outcome, SafeConductAnswer::JeepSentBack);
    ASSERT_NE(SentFile(".ask", 1), nullptr);
    EXPECT_EQ(SentFile(".ask", 0)->Raw, QByteArray("[GENERAL]\r\nQUESTION=1\r\n"));
    EXPECT_EQ(SentFile(".ask", 1)->Raw, QByteArray("[GENERAL]\r\nQUESTION=3\r\n"));
    EXPECT_EQ(boxes, (QStringList{QStringLiteral("Jeep kan over een vrijgeleide beschikken|Er wordt geinformeerd of uw "
                                                 "tegenstander beschikt over een vrijgeleide omdat zijn jeep wordt "
                                                 "aangevallen..."),
                                  QStringLiteral("Jeep heeft vrijgeleide!|Uw tegenstander heeft een vrijgeleide voor "
                                                 "zijn jeep gebruikt.")}));
    EXPECT_FALSE(FileExists(TheirPath(".ans")));
    EXPECT_EQ(Deck().CardCount[1], 0);
    EXPECT_EQ(Deck().CompassStack[0], 29);
    EXPECT_FALSE(V().InputLock);
}

TEST_F(CardsTest, TheShootersContraSpionageLetsTheShotGoOn)
{
    Hand(2, {29});
    Hand(1, {24});
    yesTo << QStringLiteral("Jeep heeft vrijgeleide!");
    SafeConductAnswer outcome = SafeConductAnswer::JeepSentBack;
    When("question 1 is asked", [this] { return SentFile(".ask") != nullptr; },
         [&] { Publish(TheirPath(".ans"), "[GENERAL]\r\nANSWER=2\r\n"); });
    Run([&] { outcome = ShotAtJeepSeam(W()).ask(1); });
    EXPECT_EQ(outcome, SafeConductAnswer::ShotGoesOn);
    ASSERT_NE(SentFile(".ask", 1), nullptr);
    EXPECT_EQ(SentFile(".ask", 1)->Raw, QByteArray("[GENERAL]\r\nQUESTION=2\r\n"));
    EXPECT_EQ(Deck().CardCount, (std::array<int, 2>{0, 0}));
    EXPECT_EQ(Deck().CompassStack[0], 24);
    EXPECT_EQ(Deck().CompassStack[1], 29);
    EXPECT_EQ(boxes.size(), 2);
}

TEST_F(CardsTest, TheShooterWhoKeepsHisContraSpionageLetsTheJeepGoBack)
{
    Hand(2, {29});
    Hand(1, {24, 31});
    SafeConductAnswer outcome = SafeConductAnswer::ShotGoesOn;
    When("question 1 is asked", [this] { return SentFile(".ask") != nullptr; },
         [&] { Publish(TheirPath(".ans"), "[GENERAL]\r\nANSWER=2\r\n"); });
    Run([&] { outcome = ShotAtJeepSeam(W()).ask(1); });
    EXPECT_EQ(outcome, SafeConductAnswer::JeepSentBack);
    ASSERT_EQ(boxes.size(), 3);
    EXPECT_EQ(boxes[1], QStringLiteral("Jeep heeft vrijgeleide!|De jeep beschikt over een vrijgeleide, maar dit kan "
                                       "worden verijdeld door uw contra spionage. Wilt u die gebruiken?"));
    EXPECT_EQ(boxes[2], QStringLiteral("Jeep heeft vrijgeleide!|Uw tegenstander heeft een vrijgeleide voor zijn jeep "
                                       "gebruikt."));
    ASSERT_NE(SentFile(".ask", 1), nullptr);
    EXPECT_EQ(SentFile(".ask", 1)->Raw, QByteArray("[GENERAL]\r\nQUESTION=3\r\n"));
    EXPECT_EQ(Deck().CardHand[0], (std::array<int, 2>{24, 31})) << "the 24 is kept";
    EXPECT_EQ(Deck().CardCount[0], 2);
}

TEST_F(CardsTest, APersonnelCardAnnouncedAndAnnulledByContraSpionage)
{
    Hand(2, {24, 26});
    V().PickedVehicle = 4;
    V().PickedField = 61;
    int result = 0;
    When("the card is announced", [this] { return SentFile(".pnu") != nullptr; },
         [&] { Publish(TheirPath(".ans"), "[GENERAL]\r\nANSWER=2\r\n"); });
    Run([&] { result = AnnouncePersonnel(W(), 1); });
    EXPECT_EQ(result, -1);
    EXPECT_TRUE(V().CardAnnulled);
    EXPECT_EQ(SentFile(".pnu")->Raw, QByteArray("[GENERAL]\r\nCARD=1\r\nV1=4\r\nV2=61\r\nV3=100\r\n"));
    EXPECT_EQ(boxes, QStringList{QStringLiteral("Tegenstander kan over Contra Spionage beschikken|Uw tegenstander "
                                                "wordt op de hoogte gesteld dat u een Pesonnel kaart gebruikt. Deze "
                                                "kan over Contra Spionage beschikken die uw kaart kan "
                                                "ontkrachten...")});
    EXPECT_EQ(Deck().CardHand[1][0], 26);
    EXPECT_EQ(Deck().CardCount[1], 1);
    EXPECT_EQ(Deck().CompassStack[0], 24);
    EXPECT_FALSE(FileExists(TheirPath(".ans")));
}

TEST_F(CardsTest, TheAmbushAskedTwiceWithoutAnAnswerOfCards)
{
    Hand(2, {21});
    int vrijgeleide = 0, contra = 0;
    When("question 4", [this] { return SentFile(".ask") != nullptr; },
         [&] { Publish(TheirPath(".ans"), "[GENERAL]\r\nANSWER=1\r\n"); });
    Run([&] { vrijgeleide = AskVrijgeleide(W()); });
    When("question 6", [this] { return SentFile(".ask", 1) != nullptr; },
         [&] { Publish(TheirPath(".ans"), "[GENERAL]\r\nANSWER=1\r\n"); });
    Run([&] { contra = AskContraSpionage(W()); });
    EXPECT_EQ(vrijgeleide, 0);
    EXPECT_EQ(contra, 0);
    EXPECT_FALSE(V().VrijgeleideHeld);
    EXPECT_FALSE(V().CardAnnulled);
    EXPECT_EQ(SentFile(".ask", 0)->Raw, QByteArray("[GENERAL]\r\nQUESTION=4\r\n"));
    EXPECT_EQ(SentFile(".ask", 1)->Raw, QByteArray("[GENERAL]\r\nQUESTION=6\r\n"));
    EXPECT_EQ(Deck().CardCount[1], 1);
    ASSERT_EQ(boxes.size(), 2);
    EXPECT_TRUE(boxes[0].startsWith(QStringLiteral("Jeep kan over een vrijgeleide beschikken|")));
    EXPECT_TRUE(boxes[1].startsWith(QStringLiteral("Tegenstander kan over Contra Spionage beschikken|Er wordt "
                                                   "geinformeerd")));
}

TEST_F(CardsTest, NoQuestionWhenTheShooterHoldsTheVrijgeleideOrTheOwnerNoCard)
{
    EXPECT_EQ(ShotAtJeepSeam(W()).ask(1), SafeConductAnswer::ShotGoesOn) << "the owner holds no card";
    Hand(1, {29});
    Hand(2, {22});
    EXPECT_EQ(ShotAtJeepSeam(W()).ask(1), SafeConductAnswer::ShotGoesOn) << "the shooter holds the 29";
    EXPECT_FALSE(FileExists(OwnPath(".ask")));
    EXPECT_TRUE(boxes.isEmpty());
}

} // namespace
} // namespace vk::test
