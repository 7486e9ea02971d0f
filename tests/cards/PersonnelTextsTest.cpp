// The words of the Personnel cards: the board texts of the player's picks,
// what the opponent's copy logs, marks and shows when a card arrives, and the
// Contra spionage that copy may be offered against it.

#include "cards/DeckMoves.h"
#include "cards/PersonnelTexts.h"
#include "cards/Reactions.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace vk {
namespace {

// --- The board texts of the picks ---------------------------------------------

TEST(PersonnelPrompts, EveryCardButTheTwoReactionCards)
{
    for (int card = 21; card <= 32; ++card) {
        const PersonnelPrompts* prompts = PromptsOf(card);
        if (card == 24 || card == 29) {
            EXPECT_EQ(prompts, nullptr) << card;
            continue;
        }
        ASSERT_NE(prompts, nullptr) << card;
        EXPECT_GT(std::strlen(prompts->BoardName), 0u) << card;
        ASSERT_NE(prompts->FirstPick, nullptr) << card;
        ASSERT_NE(prompts->SecondPick, nullptr) << card;
    }
    for (int card : {0, 1, 20, 33, -21})
        EXPECT_EQ(PromptsOf(card), nullptr) << card;
}

TEST(PersonnelPrompts, Camouflage)
{
    const PersonnelPrompts* prompts = PromptsOf(21);
    ASSERT_NE(prompts, nullptr);
    EXPECT_STREQ(prompts->BoardName, "camouflage");
    EXPECT_STREQ(prompts->FirstPick, "dubbelklik op het voertuig waarin je je kompagnie\xc3\xab" "n wilt plaatsen");
    EXPECT_STREQ(prompts->SecondPick, "");
}

TEST(PersonnelPrompts, CardsWithoutAPickHaveEmptyPrompts)
{
    for (int card : {22, 28}) {
        const PersonnelPrompts* prompts = PromptsOf(card);
        ASSERT_NE(prompts, nullptr) << card;
        EXPECT_STREQ(prompts->FirstPick, "") << card;
        EXPECT_STREQ(prompts->SecondPick, "") << card;
    }
    EXPECT_STREQ(PromptsOf(22)->BoardName, "uitwisseling van gevangenen");
    EXPECT_STREQ(PromptsOf(28)->BoardName, "militaire politie");
}

TEST(PersonnelPrompts, OnlyTheLandingAirdropNavalAndSignalsCardsPickTwice)
{
    for (int card : {21, 22, 25, 26, 28, 30})
        EXPECT_STREQ(PromptsOf(card)->SecondPick, "") << card;
    for (int card : {23, 27, 31, 32})
        EXPECT_GT(std::strlen(PromptsOf(card)->SecondPick), 0u) << card;
}

TEST(PersonnelPrompts, Landingsvaartuigen)
{
    const PersonnelPrompts* prompts = PromptsOf(23);
    EXPECT_STREQ(prompts->BoardName, "landingsvaartuigen");
    EXPECT_STREQ(prompts->FirstPick, "dubbelklik op het voertuig dat je vanaf de haven wilt laten landen op "
                                     "\xc3\xa9\xc3\xa9n van de kustwegen");
    EXPECT_STREQ(prompts->SecondPick,
                 "dubbelklik op een vakje waar je voertuig moet komen op \xc3\xa9\xc3\xa9n van de kustwegen");
}

TEST(PersonnelPrompts, HinderlaagHelikopterAndLuchtlandingstroepen)
{
    EXPECT_STREQ(PromptsOf(25)->BoardName, "hinderlaag");
    EXPECT_STREQ(PromptsOf(25)->FirstPick, "dubbelklik op het vijandelijk voertuig dat in de hinderlaag terecht kwam "
                                           "en moet worden vernietigd");
    EXPECT_STREQ(PromptsOf(26)->BoardName, "helikopter");
    EXPECT_STREQ(PromptsOf(26)->FirstPick,
                 "dubbelklik op het voertuig dat je van of naar het HQ wilt verplaatsen met de vliegende banaan");
    EXPECT_STREQ(kHelicopterFromHQ,
                 "dubbelklik op een leeg vakje waar de vliegende banaan je voertuig moet neerzetten");
    EXPECT_STREQ(PromptsOf(27)->BoardName, "luchtlandingstroepen");
    EXPECT_STREQ(PromptsOf(27)->FirstPick, "dubbelklik op het voertuig dat je vanaf het vliegveld wilt verplaatsen");
    EXPECT_STREQ(PromptsOf(27)->SecondPick,
                 "dubbelklik op een leeg vakje waar de luchtlandingstroepen je voertuig moeten droppen");
}

TEST(PersonnelPrompts, MijnopruimingsdienstMarineAndVerbindingsdienst)
{
    EXPECT_STREQ(PromptsOf(30)->BoardName, "mijnopruimingsdienst");
    EXPECT_STREQ(PromptsOf(30)->FirstPick, "dubbelklik op de door het vijandelijk leger geplaatste mijn om deze "
                                           "onschadelijk te maken en in uw kamp te leggen");
    EXPECT_STREQ(PromptsOf(31)->BoardName, "marine luchtvaartdienst");
    EXPECT_STREQ(PromptsOf(31)->FirstPick,
                 "dubbelklik op het voertuig dat je vanaf een haven wilt verplaatsen met de marine luchtvaartdienst");
    EXPECT_STREQ(PromptsOf(31)->SecondPick,
                 "dubbelklik op de andere haven of een vlieghaven waar je voertuig moet komen");
    EXPECT_STREQ(PromptsOf(32)->BoardName, "verbindingsdienst");
    EXPECT_STREQ(PromptsOf(32)->FirstPick,
                 "dubbelklik op het voertuig op je HQ welke je wilt verplaatsen naar een strategisch punt");
    EXPECT_STREQ(PromptsOf(32)->SecondPick,
                 "dubbelklik op het strategisch punt waar je voertuig naar gebracht moet worden");
}

TEST(PersonnelPrompts, TheFirstBoardTextEndsTheSameForEveryCard)
{
    EXPECT_STREQ(kPersonnelClickToPlay, " - klik op deze boodschap om uw Personnel kaart uit te voeren");
}

// --- A card received ------------------------------------------------------------

TEST(PersonnelReceipt, EveryValueButFourAndNine)
{
    for (int value = 1; value <= 12; ++value) {
        const PersonnelReceipt* receipt = ReceiptOf(value);
        if (value == 4 || value == 9) {
            EXPECT_EQ(receipt, nullptr) << value;
            continue;
        }
        ASSERT_NE(receipt, nullptr) << value;
        const std::string card = std::to_string(value + 20);
        EXPECT_EQ(std::string(receipt->LogLine).rfind("opponent uses card " + card + " ", 0), 0u) << value;
        EXPECT_EQ(std::string(receipt->LogLine).substr(std::strlen(receipt->LogLine) - 4), " at ") << value;
        EXPECT_EQ(std::string(receipt->Title).rfind("Personnel - ", 0), 0u) << value;
        EXPECT_GT(std::strlen(receipt->Notice), 0u) << value;
        EXPECT_GT(std::strlen(receipt->Offer), 0u) << value;
    }
    for (int value : {0, 13, 21, -1})
        EXPECT_EQ(ReceiptOf(value), nullptr) << value;
}

TEST(PersonnelReceipt, TheMarksOfEachCard)
{
    struct Marks {
        int Value;
        bool Vehicle;
        bool Field;
    };
    for (const Marks marks : {Marks{1, true, false}, Marks{2, false, false}, Marks{3, true, true},
                              Marks{5, true, false}, Marks{6, true, true}, Marks{7, true, true},
                              Marks{8, false, false}, Marks{10, false, true}, Marks{11, true, true},
                              Marks{12, true, true}}) {
        const PersonnelReceipt* receipt = ReceiptOf(marks.Value);
        ASSERT_NE(receipt, nullptr) << marks.Value;
        EXPECT_EQ(receipt->MarksVehicle, marks.Vehicle) << marks.Value;
        EXPECT_EQ(receipt->MarksField, marks.Field) << marks.Value;
    }
}

TEST(PersonnelReceipt, TheHelikopterOfferKeepsItsMisspelledTitle)
{
    const PersonnelReceipt* receipt = ReceiptOf(6);
    EXPECT_STREQ(receipt->Title, "Personnel - Helikopter");
    EXPECT_STREQ(receipt->OfferTitle, "Pesonnel - Helikopter");
    for (int value : {1, 2, 3, 5, 7, 8, 10, 11, 12})
        EXPECT_STREQ(ReceiptOf(value)->OfferTitle, ReceiptOf(value)->Title) << value;
}

TEST(PersonnelReceipt, TitlesByCard)
{
    EXPECT_STREQ(ReceiptOf(1)->Title, "Personnel - Camouflage");
    EXPECT_STREQ(ReceiptOf(2)->Title, "Personnel - Uitwisseling gevangenen");
    EXPECT_STREQ(ReceiptOf(3)->Title, "Personnel - Landingsvaartuigen");
    EXPECT_STREQ(ReceiptOf(5)->Title, "Personnel - Hinderlaag");
    EXPECT_STREQ(ReceiptOf(7)->Title, "Personnel - Luchtlandingstroepen");
    EXPECT_STREQ(ReceiptOf(8)->Title, "Personnel - Militaire Politie");
    EXPECT_STREQ(ReceiptOf(10)->Title, "Personnel - Mijnopruimingsdienst");
    EXPECT_STREQ(ReceiptOf(11)->Title, "Personnel - Marine luchtvaartdienst");
    EXPECT_STREQ(ReceiptOf(12)->Title, "Personnel - Verbindingsdienst");
}

TEST(PersonnelReceipt, LogLines)
{
    const struct {
        int Value;
        const char* Line;
    } rows[] = {
        {1, "opponent uses card 21 for sending up to 2 compagnies to one of his vehicles at "},
        {2, "opponent uses card 22 for exchanging 2 compagnies in prison at "},
        {3, "opponent uses card 23 for embarking one of his vehicles somewhere on the coastline at "},
        {5, "opponent uses card 25 to destroy one of my vehicles in an ambush at "},
        {6, "opponent uses card 26 for dropping one of his vehicles to or from the HQ to or from any other field at "},
        {7, "opponent uses card 27 for dropping one of his vehicles from an airport to any other field at "},
        {8, "opponent uses card 28 to stop my escaping compagnies and send them back to prison at "},
        {10, "opponent uses card 30 to demine on of my planted mines at "},
        {11, "opponent uses card 31 for transferring one of his vehicles from a harbour to another harbour or "
             "airport at "},
        {12, "opponent uses card 32 for dropping one of his vehicles at the HQ to a strategic point at "},
    };
    for (const auto& row : rows)
        EXPECT_STREQ(ReceiptOf(row.Value)->LogLine, row.Line) << row.Value;
}

TEST(PersonnelReceipt, NoticesAndOffersOfTheMovingCards)
{
    EXPECT_STREQ(ReceiptOf(3)->Notice, "De tegenstander gaat het rood gemerkt voertuig middels landingsvaartuigen "
                                       "naar het blauw gemerkt vakje brengen.");
    EXPECT_STREQ(ReceiptOf(6)->Offer, "Wilt u de kaart 'Contra Spionage' gebruiken om te verhinderen dat de vijand "
                                      "zijn rood gemerkt voertuig verplaatst naar het blauw gemerkt vakje of HQ?");
    EXPECT_STREQ(ReceiptOf(7)->Notice, "Het op het vliegveld staand roodgemerkt vijandelijk voertuig zal worden "
                                       "neergelaten op het blauw gemerkt vakje.");
    EXPECT_STREQ(ReceiptOf(11)->Notice, "Het rood gemerkt voertuig is ingescheept op het vliegdekschep 'Admiraal' "
                                        "om zo het blauw gemerkt vakje te bereiken.");
    EXPECT_STREQ(ReceiptOf(11)->Offer, "Het rood gemerkt voertuig staat op het punt in te schepen op het "
                                       "vliegdekschep 'Admiraal' om zo het blauw gemerkt vakje te bereiken. Wilt u "
                                       "dit inschepen beletten door uw 'Contra Spionage' te gebruiken?");
    EXPECT_STREQ(ReceiptOf(12)->Notice, "De verbindingsdienst van de luchtmacht gaat het rood gemerkt voertuig "
                                        "verplaatsen naar het blauw gemerkt vakje.");
}

TEST(PersonnelReceipt, NoticesAndOffersOfTheOtherCards)
{
    EXPECT_STREQ(ReceiptOf(5)->Offer, "Het rood gemerkt voertuig dreigt in een hinderlaag van de vijand terecht te "
                                      "komen. Wilt u dit verijdelen door uw kaart 'Contra spionage' te gebruiken?");
    EXPECT_STREQ(ReceiptOf(8)->Notice, "Door ingrijpen van de Militaire Politie wordt uw jeep met ontsnapte "
                                       "gevangenen onderschept en terug naar het gevangenenkamp gestuurd.");
    EXPECT_STREQ(ReceiptOf(10)->Offer, "De door u (rood gemerkte) geplaatste mijn dreigt door een verzetsgroep "
                                       "onschadelijk te worden gemaakt. Wilt u dit plan dwarsbomen door uw 'Contra "
                                       "Spionage' te gebruiken?");
}

TEST(PersonnelReceipt, SomeOffersAreTheNoticeWithAQuestionBehind)
{
    const struct {
        int Value;
        const char* Question;
    } rows[] = {
        {3, " Wilt u de kaart 'Contra Spionage' gebruiken om dit te voorkomen?"},
        {7, " Wilt u uw kaart 'Contra Spionage' gebruiken om dit te verhinderen?"},
        {12, " Wilt u uw 'Contra Spionage' gebruiken om dit te verbieden?"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(std::string(ReceiptOf(row.Value)->Offer), std::string(ReceiptOf(row.Value)->Notice) + row.Question)
            << row.Value;
}

TEST(PersonnelReceipt, ExactWordsOfSomeCards)
{
    const PersonnelReceipt* camouflage = ReceiptOf(1);
    EXPECT_STREQ(camouflage->Notice, "De kaart 'Camouflage' laat de tegenstander toe 2 kompagnie\xc3\xab"
                                     "n te sturen naar het rood gemerkt voertuig.");
    EXPECT_STREQ(camouflage->Offer, "De kaart 'Camouflage' laat de tegenstander toe 2 kompagnie\xc3\xab"
                                    "n te sturen naar het rood gemerkt voertuig. Wil je dit verijdelen met je kaart "
                                    "'Contra Spionage'?");

    const PersonnelReceipt* exchange = ReceiptOf(2);
    EXPECT_STREQ(exchange->Notice, "Dank zij een vredesconferentie worden tot 2 gevangen kompagnie\xc3\xab"
                                   "n uitgewisseld.");
    EXPECT_STREQ(exchange->Offer, "Tenzij u de kaart 'Contra Spionage' gebruikt, mogen er 2 gevangen "
                                  "kompagni\xc3\xab"
                                  "en uitgewisseld worden. Wilt u deze kaart gebruiken?");

    const PersonnelReceipt* helicopter = ReceiptOf(6);
    EXPECT_STREQ(helicopter->Notice, "Dank zij de 'Vliegende Banaan' verplaats de tegenstander zijn rood gemerkt "
                                     "voeruig naar het blauw gemerkt vakje of HQ.");

    const PersonnelReceipt* clearance = ReceiptOf(10);
    EXPECT_STREQ(clearance->LogLine, "opponent uses card 30 to demine on of my planted mines at ");
    EXPECT_STREQ(clearance->Notice,
                 "De door u (rood gemerkte) geplaatste mijn werd door een verzetsgroep onschadelijk gemaakt.");

    EXPECT_STREQ(ReceiptOf(8)->Offer, "Wilt u uw kaart 'Contra Spionage' aanwenden zodat uw jeep niet terug moet "
                                      "worden gestuurd naar het gevangenenkamp?");
    EXPECT_STREQ(ReceiptOf(5)->Notice, "Het rood gemerkt voertuig is in een hinderlaag van de vijand terecht te "
                                       "komen en wordt samen met de manschappen vernietigd.");
}

// --- Contra spionage against a card received --------------------------------------

// A deck of the cards not held, with the hands given.
CompassDeck WithHands(std::array<int, 2> hand1, int count1, std::array<int, 2> hand2, int count2)
{
    CompassDeck deck;
    int entry = 0;
    for (int card = 1; card <= 32; ++card)
        if (card != hand1[0] && card != hand1[1] && card != hand2[0] && card != hand2[1])
            deck.CompassStack[static_cast<std::size_t>(entry++)] = card;
    deck.StackPoint = entry;
    deck.CardHand = {hand1, hand2};
    deck.CardCount = {count1, count2};
    return deck;
}

TEST(ContraAgainstPersonnel, AHandOf24IsNeverOffered)
{
    EXPECT_FALSE(ContraOfferedAgainstPersonnel(WithHands({0, 0}, 0, {24, 0}, 1), 2));
    EXPECT_FALSE(ContraOfferedAgainstPersonnel(WithHands({0, 0}, 0, {24, 30}, 2), 2));
    EXPECT_FALSE(ContraOfferedAgainstPersonnel(WithHands({0, 0}, 0, {30, 24}, 2), 2));
    EXPECT_FALSE(ContraOfferedAgainstPersonnel(WithHands({24, 0}, 1, {0, 0}, 0), 1));
}

TEST(ContraAgainstPersonnel, OnlyACountedSlotHolding4IsOffered)
{
    EXPECT_TRUE(ContraOfferedAgainstPersonnel(WithHands({4, 0}, 1, {0, 0}, 0), 1));
    EXPECT_TRUE(ContraOfferedAgainstPersonnel(WithHands({4, 30}, 2, {0, 0}, 0), 1));
    EXPECT_TRUE(ContraOfferedAgainstPersonnel(WithHands({30, 4}, 2, {0, 0}, 0), 1));
    EXPECT_FALSE(ContraOfferedAgainstPersonnel(WithHands({30, 4}, 1, {0, 0}, 0), 1)) << "a stale second slot";
    EXPECT_FALSE(ContraOfferedAgainstPersonnel(WithHands({4, 0}, 0, {0, 0}, 0), 1)) << "no card held";
    EXPECT_FALSE(ContraOfferedAgainstPersonnel(WithHands({0, 0}, 0, {4, 0}, 1), 1)) << "the other hand";
}

TEST(ContraAgainstPersonnel, UsedFromTheFirstSlotOfTwo)
{
    const CompassDeck before = WithHands({0, 0}, 0, {24, 30}, 2);
    CompassDeck deck = before;
    UseContraAgainstPersonnel(deck, 2);
    EXPECT_EQ(deck.StackPoint, before.StackPoint + 1);
    EXPECT_EQ(deck.CompassStack[0], 24);
    for (int entry = 0; entry < before.StackPoint; ++entry)
        EXPECT_EQ(deck.CompassStack[static_cast<std::size_t>(entry + 1)],
                  before.CompassStack[static_cast<std::size_t>(entry)])
            << entry;
    EXPECT_EQ(deck.CardHand[1], (std::array<int, 2>{30, 30}));
    EXPECT_EQ(deck.CardCount[1], 1);
    EXPECT_EQ(deck.CardHand[0], before.CardHand[0]);
    EXPECT_EQ(deck.CardCount[0], 0);
}

TEST(ContraAgainstPersonnel, UsedFromTheSecondSlotOrAlone)
{
    CompassDeck second = WithHands({0, 0}, 0, {31, 24}, 2);
    UseContraAgainstPersonnel(second, 2);
    EXPECT_EQ(second.CardHand[1], (std::array<int, 2>{31, 24}));
    EXPECT_EQ(second.CardCount[1], 1);
    EXPECT_EQ(second.CompassStack[0], 24);

    CompassDeck alone = WithHands({24, 0}, 1, {0, 0}, 0);
    const int stackPoint = alone.StackPoint;
    UseContraAgainstPersonnel(alone, 1);
    EXPECT_EQ(alone.CardHand[0], (std::array<int, 2>{0, 0}));
    EXPECT_EQ(alone.CardCount[0], 0);
    EXPECT_EQ(alone.StackPoint, stackPoint + 1);
    EXPECT_EQ(alone.CompassStack[0], 24);
}

} // namespace
} // namespace vk
