// A Personnel card played before the dice, in the window: the board leads
// the player through the card's picks, refuses what the card does not take,
// announces the card and carries it out once the opponent let it stand; and
// the opponent's card received from his ".pnu": shown, applied and answered.

#include "CardsFixture.h"

#include "board/VehicleTag.h"
#include "cards/PersonnelPicks.h"
#include "game/PersonnelReceived.h"
#include "shell/RunTimeFault.h"

namespace vk::test {
namespace {

const QString kAnnounced = QStringLiteral("Tegenstander kan over Contra Spionage beschikken|Uw tegenstander wordt op "
                                          "de hoogte gesteld dat u een Pesonnel kaart gebruikt. Deze kan over Contra "
                                          "Spionage beschikken die uw kaart kan ontkrachten...");

class PersonnelTest : public CardsTest {
protected:
    // The card of hand slot `slot` is opened at the turn start and used.
    void UseAtTurnStart(int slot)
    {
        AtPhase(0, "open the card", [this, slot] { (slot == 1 ? W().KK1 : W().KK2)->Mouse.Click(); });
        AtPhase(1, "use it", [this] { W().cmdKompasGebruik->click(); });
    }
    // The card's board text, read and clicked away.
    void ReadCard(const char* name)
    {
        When("the card's board text", [] { return Waiting() == QStringLiteral("Personnel card read"); }, [this, name] {
            EXPECT_EQ(Global().BoardText, Board((std::string("personnel - ") + name +
                                                 " - klik op deze boodschap om uw Personnel kaart uit te voeren")
                                                    .c_str()));
            EXPECT_TRUE(V().PersonnelRunning);
            Global().BoardText.clear();
        });
    }
    // A vehicle pick under `prompt`: each of `refused` is double-clicked
    // first and must leave the pick open and cleared, then `slot` of `side`.
    void PickVehicle(const char* prompt, std::vector<std::pair<int, int>> refused, int side, int slot)
    {
        refused.emplace_back(side, slot);
        for (const auto& [s, v] : refused)
            When("a vehicle pick",
                 [this] { return PickOpen(QStringLiteral("Personnel card vehicle"), V().PickedVehicle); },
                 [this, prompt, s, v] {
                     EXPECT_EQ(Global().BoardText, Board(prompt));
                     DoubleClick(Vehicle(s, v));
                 });
    }
    void PickField(const char* prompt, std::vector<int> refused, int field)
    {
        refused.push_back(field);
        for (int f : refused)
            When("a field pick", [this] { return PickOpen(QStringLiteral("Personnel card field"), V().PickedField); },
                 [this, prompt, f] {
                     EXPECT_EQ(Global().BoardText, Board(prompt));
                     DoubleClickField(f);
                 });
    }
    // The card's pick loop waits with nothing picked: a refused pick has
    // been cleared again.
    static bool PickOpen(const QString& wait, int picked) { return Waiting() == wait && picked == -1; }
    // The ".pnu" is kept for the test and answered with `answer`.
    void AnswerAnnouncement(int answer)
    {
        When("the card announced", [this] { return FileExists(OwnPath(".pnu")); }, [this, answer] {
            announced = Text(OwnPath(".pnu"));
            Consume(OwnPath(".pnu"));
            Publish(TheirPath(".ans"), "[GENERAL]\r\nANSWER=" + QByteArray::number(answer) + "\r\n");
        });
    }
    void EndTurnAtPhase3()
    {
        AtPhase(3, "end the turn", [this] {
            EXPECT_FALSE(V().PersonnelRunning);
            W().cmdEindeBeurt->click();
        });
    }
    static QByteArray Pnu(int value, int v1, int v2)
    {
        return "[GENERAL]\r\nCARD=" + QByteArray::number(value) + "\r\nV1=" + QByteArray::number(v1) +
               "\r\nV2=" + QByteArray::number(v2) + "\r\nV3=100\r\n";
    }
    // The opponent's card arrives in his turn; returns the ANSWER sent.
    QString Received(const QByteArray& pnu)
    {
        Put(TheirPath(".pnu"), pnu);
        When("answered", [this] { return Idle() && !FileExists(TheirPath(".pnu")); },
             [&] { SendTheirEndOfTurn(V().Progress.TurnNumber); });
        FollowTurn();
        const Sent* answer = SentFile(".ans");
        return answer ? answer->Values.value(QStringLiteral("ANSWER")) : QString();
    }

    QByteArray announced;
};

TEST_F(PersonnelTest, ExchangeOfPrisonersAnnouncedAndCarriedOut)
{
    Hand(1, {22, 30});
    B().PrisonCompanies(1) = 1;
    B().PrisonCompanies(2) = 3;
    V().PickedVehicle = 7;
    V().PickedField = 40;
    UseAtTurnStart(1);
    ReadCard("uitwisseling van gevangenen");
    AnswerAnnouncement(1);
    EndTurnAtPhase3();
    PlayTurn();
    // No pick: the vehicle and field travel as they stood.
    EXPECT_EQ(announced, Pnu(2, 7, 40));
    EXPECT_EQ(boxes, QStringList{kAnnounced});
    EXPECT_EQ(B().PrisonCompanies(1), 0);
    EXPECT_EQ(B().PrisonCompanies(2), 2);
    EXPECT_EQ(B().CampCompanies(1), 16);
    EXPECT_EQ(B().CampCompanies(2), 16);
    EXPECT_EQ(Deck().CardHand[0], (std::array<int, 2>{30, 0}));
    EXPECT_EQ(Deck().CardCount[0], 1);
    EXPECT_EQ(Deck().CompassStack[0], 22);
    EXPECT_TRUE(Logged(QStringLiteral("before rolling the dices, I use personnel card number 22 at ")));
    EXPECT_FALSE(W().Personnel->Visible());
}

TEST_F(PersonnelTest, LandingCraftRefusesWhatTheCardDoesNotTake)
{
    Hand(1, {23});
    PutOnField(1, 3, 11, 2);
    PutOnField(1, 4, 40, 1);
    PutOnField(1, 5, 15, 1);
    UseAtTurnStart(1);
    ReadCard("landingsvaartuigen");
    // A vehicle off the harbour, an enemy vehicle: refused.
    PickVehicle("dubbelklik op het voertuig dat je vanaf de haven wilt laten landen op één van de kustwegen",
                {{1, 4}, {2, 0}}, 1, 3);
    // Off the coast roads, an occupied coast road, field 69 of the own flag
    // for army 1 is free and taken only last.
    PickField("dubbelklik op een vakje waar je voertuig moet komen op één van de kustwegen", {40, 2}, 60);
    AnswerAnnouncement(1);
    EndTurnAtPhase3();
    PlayTurn();
    EXPECT_EQ(announced, Pnu(3, 3, 60));
    EXPECT_EQ(B().VehiclePos(1, 3), 60);
    EXPECT_EQ(B().BoardCell(60), 4);
    EXPECT_EQ(B().BoardCell(11), 0);
}

TEST_F(PersonnelTest, AnAnnulledCardChangesNothingAndIsNotGivenBack)
{
    Hand(1, {23});
    Hand(2, {24});
    PutOnField(1, 3, 58, 2);
    UseAtTurnStart(1);
    ReadCard("landingsvaartuigen");
    PickVehicle("dubbelklik op het voertuig dat je vanaf de haven wilt laten landen op één van de kustwegen", {}, 1,
                3);
    PickField("dubbelklik op een vakje waar je voertuig moet komen op één van de kustwegen", {}, 60);
    AnswerAnnouncement(2);
    EndTurnAtPhase3();
    PlayTurn();
    EXPECT_TRUE(V().CardAnnulled);
    EXPECT_EQ(B().VehiclePos(1, 3), 58);
    EXPECT_EQ(Deck().CardCount, (std::array<int, 2>{0, 0}));
    EXPECT_EQ(Deck().CompassStack[0], 24);
    EXPECT_EQ(Deck().CompassStack[1], 23);
}

TEST_F(PersonnelTest, HelicopterFromTheRoadFliesToTheHQWithoutASecondPick)
{
    Hand(1, {26});
    PutOnField(1, 0, 40, 3);
    UseAtTurnStart(1);
    ReadCard("helikopter");
    // The camp vehicle is refused.
    PickVehicle("dubbelklik op het voertuig dat je van of naar het HQ wilt verplaatsen met de vliegende banaan",
                {{1, 1}}, 1, 0);
    AnswerAnnouncement(1);
    EndTurnAtPhase3();
    PlayTurn();
    EXPECT_EQ(announced, Pnu(6, 0, 114));
    EXPECT_EQ(B().VehiclePos(1, 0), 114);
    EXPECT_EQ(B().HQCount(1), 1);
}

TEST_F(PersonnelTest, MarineAviationEndsWithNothingSentOnAClickOffTheRoads)
{
    Hand(1, {31, 22});
    PutOnField(1, 3, 11, 1);
    UseAtTurnStart(1);
    ReadCard("marine luchtvaartdienst");
    PickVehicle("dubbelklik op het voertuig dat je vanaf een haven wilt verplaatsen met de marine luchtvaartdienst", {},
                1, 3);
    // A field that is no harbour or airport is refused; the own HQ ends the card.
    PickField("dubbelklik op de andere haven of een vlieghaven waar je voertuig moet komen", {40}, 114);
    EndTurnAtPhase3();
    PlayTurn();
    EXPECT_FALSE(FileExists(OwnPath(".pnu")));
    EXPECT_TRUE(boxes.isEmpty());
    EXPECT_EQ(B().VehiclePos(1, 3), 11);
    EXPECT_EQ(Deck().CardHand[0], (std::array<int, 2>{22, 0}));
    EXPECT_EQ(Deck().CompassStack[0], 31);
}

TEST_F(PersonnelTest, ContraSpionageUsedBeforeTheDiceIsSpentWithNothingShownOrSent)
{
    Hand(1, {24});
    UseAtTurnStart(1);
    AtPhase(3, "end the turn", [this] {
        EXPECT_EQ(Global().BoardText, Board("u bent nog steeds aan de beurt. gelieve op de knop 'gooi' te drukken, of "
                                            "op 'einde beurt' om je beurt nu te beeindigen."));
        W().cmdEindeBeurt->click();
    });
    PlayTurn();
    EXPECT_FALSE(FileExists(OwnPath(".pnu")));
    EXPECT_EQ(Deck().CardCount[0], 0);
    EXPECT_EQ(Deck().CompassStack[0], 24);
}

TEST_F(PersonnelTest, MineClearanceTakesTheEnemysMineFromItsPicture)
{
    Hand(1, {30});
    // Mine 2 of army 2 laid on 40, and an own mine on 42.
    B().MinePos(2, 2) = 40;
    B().BoardCell(40) = -kMineCell;
    B().MinePos(1, 0) = 42;
    B().BoardCell(42) = kMineCell;
    Redraw();
    UseAtTurnStart(1);
    ReadCard("mijnopruimingsdienst");
    // The own mine is refused; the enemy's is taken from its picture.
    PickField("dubbelklik op de door het vijandelijk leger geplaatste mijn om deze onschadelijk te maken en in uw kamp "
              "te leggen",
              {}, 42);
    When("the mine's picture", [this] { return PickOpen(QStringLiteral("Personnel card field"), V().PickedField); },
         [this] { W().Mijn_2[2]->Mouse.DblClick(); });
    AnswerAnnouncement(1);
    EndTurnAtPhase3();
    PlayTurn();
    EXPECT_TRUE(announced.startsWith("[GENERAL]\r\nCARD=10\r\nV1=-1\r\nV2=40\r\n")) << announced.constData();
    EXPECT_EQ(B().MinePos(2, 2), 113);
    EXPECT_EQ(B().BoardCell(40), 0);
    EXPECT_TRUE(B().CapturedMinePicture(1, 2).Visible);
    EXPECT_FALSE(B().MinePicture(2, 2).Visible);
    EXPECT_EQ(B().MinePos(1, 0), 42);
}

// --- Hinderlaag ---

class AmbushTest : public PersonnelTest {
protected:
    // Army 2's jeep with two companies behind army 2's forward posts.
    void SetUp() override
    {
        PersonnelTest::SetUp();
        Hand(1, {25});
        PutOnField(2, kJeepSlot, 98, 0);
        B().VehicleCompanies(2, kJeepSlot) = 2;
        B().CampCompanies(2) -= 2;
        B().VehicleTag(2, kJeepSlot) = "jeep_2_2_o";
        UseAtTurnStart(1);
        ReadCard("hinderlaag");
    }
    // The jeep picked after a vehicle in front of the posts was refused.
    void PickTheJeep()
    {
        PickVehicle("dubbelklik op het vijandelijk voertuig dat in de hinderlaag terecht kwam en moet worden "
                    "vernietigd",
                    {{2, 0}, {1, 3}}, 2, kJeepSlot);
    }
    // Each question the opponent is asked gets its answer, in order.
    void Answers(std::vector<int> answers)
    {
        for (std::size_t i = 0; i < answers.size(); ++i)
            When("question answered", [this, i] { return SentFile(".ask", static_cast<int>(i)) != nullptr; },
                 [this, a = answers[i]] {
                     Publish(TheirPath(".ans"), "[GENERAL]\r\nANSWER=" + QByteArray::number(a) + "\r\n");
                 });
    }
    QByteArray Question(int nth) { return SentFile(".ask", nth) ? SentFile(".ask", nth)->Raw : QByteArray(); }
    static QByteArray Asked(int question) { return "[GENERAL]\r\nQUESTION=" + QByteArray::number(question) + "\r\n"; }
    void ExpectJeepDestroyed()
    {
        EXPECT_EQ(B().VehiclePos(2, kJeepSlot), 0);
        EXPECT_EQ(B().BoardCell(98), 0);
        EXPECT_EQ(B().ReserveCompanies(2), 12);
        EXPECT_EQ(B().VehicleTag(2, kJeepSlot), "jeep_2_0_o");
        EXPECT_EQ(BoxOf(B().VehiclePicture(2, kJeepSlot)), (PlacedBox{120, 1095 + 4800, 750, 330}));
        EXPECT_FALSE(FileExists(OwnPath(".pnu"))) << "the jeep's ambush is asked, not announced";
    }
};

TEST_F(AmbushTest, NoVrijgeleideAndNoContraSpionageLoseTheJeep)
{
    PickTheJeep();
    Answers({1, 1});
    EndTurnAtPhase3();
    PlayTurn();
    EXPECT_EQ(Question(0), Asked(4));
    EXPECT_EQ(Question(1), Asked(6));
    ExpectJeepDestroyed();
}

TEST_F(AmbushTest, AVrijgeleideBeatenByTheOneContraSpionageInHand)
{
    Hand(1, {24});
    Hand(2, {29});
    yesTo << QStringLiteral("Jeep heeft vrijgeleide!");
    PickTheJeep();
    Answers({2});
    EndTurnAtPhase3();
    PlayTurn();
    EXPECT_EQ(Question(0), Asked(4));
    EXPECT_EQ(Question(1), Asked(5));
    EXPECT_TRUE(boxes.contains(QStringLiteral("Jeep heeft vrijgeleide!|De jeep beschikt over een vrijgeleide, maar dit "
                                              "kan worden verijdeld mits uw contra spionage. Wilt u die gebruiken?")));
    EXPECT_FALSE(V().VrijgeleideHeld);
    EXPECT_EQ(Deck().CardCount, (std::array<int, 2>{0, 0}));
    EXPECT_EQ(Deck().CompassStack[0], 24);
    ExpectJeepDestroyed();
}

TEST_F(AmbushTest, AVrijgeleideThatStandsSendsTheJeepBack)
{
    Hand(1, {21}); // no Contra spionage left to offer
    Hand(2, {29});
    PickTheJeep();
    Answers({2});
    EndTurnAtPhase3();
    PlayTurn();
    EXPECT_EQ(Question(1), Asked(3));
    EXPECT_TRUE(boxes.contains(QStringLiteral("Jeep heeft vrijgeleide!|Uw tegenstander heeft een vrijgeleide voor zijn "
                                              "jeep gebruikt.")));
    EXPECT_EQ(B().VehiclePos(2, kJeepSlot), 118);
    EXPECT_EQ(B().CampCompanies(2), 15);
    EXPECT_EQ(B().VehicleTag(2, kJeepSlot), "jeep_2_0_o");
    EXPECT_EQ(Deck().CardHand[0], (std::array<int, 2>{21, 0}));
}

TEST_F(AmbushTest, AnotherVehicleIsAnnouncedAndDestroyedBesideTheBoard)
{
    PutOnField(2, 6, 104, 2);
    B().MinePos(2, 1) = -6;
    B().VehicleTag(2, 6) = "commando_2_2_1_o";
    PickVehicle("dubbelklik op het vijandelijk voertuig dat in de hinderlaag terecht kwam en moet worden vernietigd",
                {}, 2, 6);
    AnswerAnnouncement(1);
    EndTurnAtPhase3();
    PlayTurn();
    EXPECT_TRUE(announced.startsWith("[GENERAL]\r\nCARD=5\r\nV1=6\r\n")) << announced.constData();
    EXPECT_EQ(B().VehiclePos(2, 6), 0);
    EXPECT_EQ(B().BoardCell(104), 0);
    EXPECT_EQ(B().VehicleTag(2, 6), "commando_2_0_0_o");
    EXPECT_EQ(B().MinePos(2, 1), 116);
    EXPECT_EQ(BoxOf(B().VehiclePicture(2, 6)), (PlacedBox{120, 1095 + 6 * 480, 750, 330}));
    EXPECT_FALSE(B().VehiclePicture(2, 6).InStock);
}

// --- received ---

TEST_F(PersonnelTest, AReceivedExchangeIsShownAppliedAndAnswered)
{
    Hand(2, {22, 27});
    B().PrisonCompanies(1) = 2;
    B().PrisonCompanies(2) = 2;
    EXPECT_EQ(Received(Pnu(2, 7, 40)), QStringLiteral("1"));
    EXPECT_EQ(boxes, QStringList{QStringLiteral("Personnel - Uitwisseling gevangenen|Dank zij een vredesconferentie "
                                                "worden tot 2 gevangen kompagnieën uitgewisseld.")});
    EXPECT_EQ(B().PrisonCompanies(1), 0);
    EXPECT_EQ(B().PrisonCompanies(2), 0);
    EXPECT_EQ(B().CampCompanies(1), 17);
    EXPECT_TRUE(Logged(QStringLiteral("before rolling the dices, the opponent uses personnel card number 2 at ")));
    EXPECT_TRUE(Logged(QStringLiteral("opponent uses card 22 for exchanging 2 compagnies in prison at ")));
    // The mirror: the second card over the first, the second slot kept.
    EXPECT_EQ(Deck().CardHand[1], (std::array<int, 2>{27, 27}));
    EXPECT_EQ(Deck().CardCount[1], 1);
    EXPECT_EQ(Deck().CompassStack[0], 22);
    EXPECT_EQ(V().PickedVehicle, 7);
    EXPECT_EQ(V().LastSentFile, OwnPath(".ans"));
    EXPECT_FALSE(W().Personnel->Visible());
    EXPECT_FALSE(W().Kader->Visible());
}

TEST_F(PersonnelTest, AReceivedExchangeWithAnEmptyPrisonChangesOnlyTheDeck)
{
    Hand(2, {22});
    B().PrisonCompanies(2) = 3;
    EXPECT_EQ(Received(Pnu(2, -1, -1)), QStringLiteral("1"));
    EXPECT_EQ(B().PrisonCompanies(2), 3);
    EXPECT_EQ(B().CampCompanies(2), 15);
    EXPECT_EQ(Deck().CardCount[1], 0);
}

TEST_F(PersonnelTest, AReceivedMilitaryPoliceSendsTheOwnJeepBackWithItsOwnTag)
{
    Hand(2, {28});
    PutOnField(1, kJeepSlot, 52, 0);
    B().VehicleCompanies(1, kJeepSlot) = 2;
    EXPECT_EQ(Received(Pnu(8, -1, -1)), QStringLiteral("1"));
    EXPECT_EQ(boxes, QStringList{QStringLiteral("Personnel - Militaire Politie|Door ingrijpen van de Militaire Politie "
                                                "wordt uw jeep met ontsnapte gevangenen onderschept en terug naar het "
                                                "gevangenenkamp gestuurd.")});
    EXPECT_EQ(B().VehiclePos(1, kJeepSlot), 115);
    EXPECT_EQ(B().BoardCell(52), 0);
    EXPECT_EQ(B().PrisonCompanies(1), 2);
    EXPECT_EQ(B().VehicleTag(1, kJeepSlot), "jeep_1_0_o");
}

TEST_F(PersonnelTest, AReceivedMilitaryPoliceWithTheJeepOnItsIslandSetsItThereAgain)
{
    Hand(2, {28});
    EXPECT_EQ(Received(Pnu(8, -1, -1)), QStringLiteral("1"));
    EXPECT_EQ(B().VehiclePos(1, kJeepSlot), 115);
    EXPECT_EQ(B().VehicleCompanies(1, kJeepSlot), 0);
}

TEST_F(PersonnelTest, AReceivedMineClearanceFindsNothingOnThisCopy)
{
    Hand(2, {30});
    B().MinePos(1, 0) = 42;
    B().BoardCell(42) = kMineCell;
    const BoardState before = B();
    EXPECT_EQ(Received(Pnu(10, -1, 42)), QStringLiteral("1"));
    EXPECT_EQ(B().MinePos(1, 0), 42);
    EXPECT_EQ(B().BoardCell(42), kMineCell);
    EXPECT_EQ(GameDifference(before, B()), "");
    EXPECT_TRUE(Logged(QStringLiteral("opponent uses card 30 to demine on of my planted mines at ")));
}

TEST_F(PersonnelTest, AReceivedCardThatMarksAVehicleEndsTheRunOnTheEmptyActionRecord)
{
    for (int value : {1, 3, 5, 6, 7, 11, 12}) {
        Hand(2, {PersonnelCardOf(value)});
        Put(TheirPath(".pnu"), Pnu(value, 3, 60));
        ClearActionRecord(V().Act);
        try {
            OpponentPlayedPersonnel(W(), TheirPath(".pnu"));
            ADD_FAILURE() << "value " << value << " ran to its end";
        } catch (const RunTimeFault& fault) {
            EXPECT_EQ(std::string(fault.what()), "subscript out of range: Voertuig_2(-1)") << value;
        }
        EXPECT_EQ(LogLines().filter(QStringLiteral("opponent uses card %1 ").arg(value + 20)).size(), 1) << value;
        EXPECT_TRUE(boxes.isEmpty());
        EXPECT_FALSE(FileExists(OwnPath(".ans")));
    }
}

TEST_F(PersonnelTest, NoOfferWithAHandOfContraSpionageButOneForTheValueFour)
{
    Hand(1, {24});
    Hand(2, {22});
    EXPECT_EQ(Received(Pnu(2, -1, -1)), QStringLiteral("1"));
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_TRUE(boxes[0].startsWith(QStringLiteral("Personnel - Uitwisseling gevangenen|Dank zij")));
    EXPECT_EQ(Deck().CardCount[0], 1);

    // The dormant offer, with a hand that holds the value 4 itself.
    Deck().CardHand[0][0] = 4;
    Hand(2, {28});
    yesTo << QStringLiteral("Personnel - Militaire Politie");
    boxes.clear();
    consumed.clear();
    EXPECT_EQ(Received(Pnu(8, -1, -1)), QStringLiteral("2"));
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0], QStringLiteral("Personnel - Militaire Politie|Wilt u uw kaart 'Contra Spionage' aanwenden "
                                       "zodat uw jeep niet terug moet worden gestuurd naar het gevangenenkamp?"));
    EXPECT_TRUE(V().CardAnnulled);
    EXPECT_EQ(Deck().CardCount[0], 0);
    EXPECT_EQ(Deck().CompassStack[0], 24);
    EXPECT_TRUE(Logged(QStringLiteral("using personnel card number 24 to annul opponents card at ")));
}

} // namespace
} // namespace vk::test
