// The reaction cards: what a hand offers against each question, the deck and
// hand changes of both copies, where the two copies part, and the jeep's fate.

#include "board/BoardState.h"
#include "board/BoardTables.h"
#include "board/BoardView.h"
#include "board/VehicleTag.h"
#include "cards/DeckMoves.h"
#include "cards/Reactions.h"

#include <gtest/gtest.h>

#include <numeric>

namespace vk {
namespace {

// A deck of 28 cards with the hands given, as a game in progress holds it.
CompassDeck WithHands(std::array<int, 2> hand1, int count1, std::array<int, 2> hand2, int count2)
{
    CompassDeck deck;
    int entry = 0;
    for (int card = 1; card <= 32; ++card) {
        const bool held = (count1 > 0 && hand1[0] == card) || (count1 > 1 && hand1[1] == card) ||
                          (count2 > 0 && hand2[0] == card) || (count2 > 1 && hand2[1] == card);
        if (!held)
            deck.CompassStack[static_cast<std::size_t>(entry++)] = card;
    }
    deck.StackPoint = entry;
    deck.CardHand = {hand1, hand2};
    deck.CardCount = {count1, count2};
    return deck;
}

const char* const kShotText = "Uw jeep wordt beschoten door de vijand, u beschikt over een vrijgeleide. Wilt u die "
                              "gebruiken?";

TEST(Offer, AnEmptyHandOffersNothing)
{
    const CompassDeck deck = WithHands({0, 0}, 0, {0, 0}, 0);
    for (int question = 1; question <= 6; ++question)
        EXPECT_FALSE(OfferAgainst(question, deck, 2).Asked) << question;
}

TEST(Offer, TheShotAtTheJeepOffersAVrijgeleideInEitherSlot)
{
    for (const auto& [hand, count] : std::initializer_list<std::pair<std::array<int, 2>, int>>{
             {{29, 0}, 1}, {{21, 29}, 2}, {{29, 24}, 2}}) {
        const CardOffer offer = OfferAgainst(1, WithHands({0, 0}, 0, hand, count), 2);
        EXPECT_TRUE(offer.Asked);
        EXPECT_EQ(offer.Title, "Jeep wordt aangevallen!");
        EXPECT_EQ(offer.Text, kShotText);
    }
    EXPECT_FALSE(OfferAgainst(1, WithHands({0, 0}, 0, {24, 0}, 1), 2).Asked);
    EXPECT_FALSE(OfferAgainst(1, WithHands({0, 0}, 0, {24, 21}, 2), 2).Asked);
    EXPECT_FALSE(OfferAgainst(1, WithHands({0, 0}, 0, {21, 29}, 1), 2).Asked) << "a stale slot is no card";
}

TEST(Offer, TheAmbushOffersItsThreeTexts)
{
    EXPECT_EQ(OfferAgainst(4, WithHands({29, 0}, 1, {0, 0}, 0), 1).Text,
              "Uw jeep kwam in een hinderlaag terecht, u beschikt over een vrijgeleide. Wilt u die gebruiken?");
    const std::string both = "Uw jeep kwam in een hinderlaag terecht, u beschikt over een vrijgeleide, maar ook over "
                             "contra spionage. Als u liever contra spionage, of geen van beide wilt gebruiken, antwoord "
                             "dan neen op de volgende vraag: Wilt u de vrijgeleide gebruiken?";
    EXPECT_EQ(OfferAgainst(4, WithHands({29, 24}, 2, {0, 0}, 0), 1).Text, both);
    EXPECT_EQ(OfferAgainst(4, WithHands({24, 29}, 2, {0, 0}, 0), 1).Text, both);
    EXPECT_EQ(OfferAgainst(4, WithHands({30, 29}, 2, {0, 0}, 0), 1).Text,
              "Uw jeep kwam in een hinderlaag terecht, u beschikt over een vrijgeleide, . Wilt u die gebruiken?");
    EXPECT_FALSE(OfferAgainst(4, WithHands({24, 0}, 1, {0, 0}, 0), 1).Asked);
    EXPECT_FALSE(OfferAgainst(4, WithHands({24, 30}, 2, {0, 0}, 0), 1).Asked);
}

TEST(Offer, TheAmbushOffersContraSpionageFromEitherSlot)
{
    const std::string text =
        "Uw jeep kwam in een hinderlaag terecht, u beschikt over Contra Spionage. Wilt u die gebruiken?";
    EXPECT_EQ(OfferAgainst(6, WithHands({24, 0}, 1, {0, 0}, 0), 1).Text, text);
    EXPECT_EQ(OfferAgainst(6, WithHands({22, 24}, 2, {0, 0}, 0), 1).Text, text);
    EXPECT_FALSE(OfferAgainst(6, WithHands({29, 0}, 1, {0, 0}, 0), 1).Asked);
    EXPECT_FALSE(OfferAgainst(6, WithHands({29, 22}, 2, {0, 0}, 0), 1).Asked);
    EXPECT_FALSE(OfferAgainst(2, WithHands({24, 29}, 2, {0, 0}, 0), 1).Asked) << "question 2 asks nothing";
}

TEST(Asking, AShooterHoldingTheVrijgeleideHimselfAsksNothing)
{
    EXPECT_FALSE(AsksSafeConduct(WithHands({29, 0}, 1, {21, 0}, 1), 1));
    EXPECT_FALSE(AsksSafeConduct(WithHands({21, 0}, 1, {0, 0}, 0), 1)) << "the jeep's owner holds no card";
    EXPECT_TRUE(AsksSafeConduct(WithHands({21, 0}, 1, {22, 0}, 1), 1));
    EXPECT_TRUE(AsksSafeConduct(WithHands({0, 29}, 1, {22, 0}, 1), 1)) << "a stale 29 is no card";
}

TEST(SafeConduct, BothCopiesAgreeWhenTheDefenderHoldsTwo)
{
    // The defender (army 2) holds 21 and 29 and uses the 29 against a shot.
    CompassDeck defender = WithHands({0, 0}, 0, {29, 21}, 2);
    CompassDeck shooter = defender;
    UseSafeConduct(defender, 2);
    MirrorCardUsedAgainstAsker(shooter, 2, kVrijgeleide);
    EXPECT_EQ(defender, shooter);
    EXPECT_EQ(defender.CardCount[1], 1);
    EXPECT_EQ(defender.CardHand[1][0], 21);
    EXPECT_EQ(defender.CompassStack[0], 29);
}

TEST(SafeConduct, WithOneCardTheCopiesPartOnlyInTheStaleSlot)
{
    CompassDeck defender = WithHands({0, 0}, 0, {29, 23}, 1);
    CompassDeck shooter = defender;
    UseSafeConduct(defender, 2);
    MirrorCardUsedAgainstAsker(shooter, 2, kVrijgeleide);
    EXPECT_EQ(defender.CardCount, shooter.CardCount);
    EXPECT_EQ(defender.CompassStack, shooter.CompassStack);
    EXPECT_EQ(defender.CardHand[1], (std::array<int, 2>{29, 23})) << "the owner only counts down";
    EXPECT_EQ(shooter.CardHand[1], (std::array<int, 2>{23, 23})) << "the mirror copies slot 2 over slot 1";
}

TEST(SafeConduct, TheShootersContraSpionageWithOneCard)
{
    const CompassDeck deck = WithHands({24, 0}, 1, {29, 0}, 1);
    const ContraOffer offer = ContraOfferAgainstSafeConduct(deck, 1);
    EXPECT_EQ(offer.What, ContraOffer::Kind::Ask);
    EXPECT_EQ(offer.Title, "Jeep heeft vrijgeleide!");
    EXPECT_EQ(offer.Text, "De jeep beschikt over een vrijgeleide, maar dit kan worden verijdeld mits uw contra "
                          "spionage. Wilt u die gebruiken?");
    CompassDeck shooter = deck;
    CompassDeck defender = deck;
    UseContraAgainstSafeConduct(shooter, 1);
    MirrorCardPlayedByAsker(defender, 1, kContraSpionage);
    EXPECT_EQ(shooter.CardCount[0], 0);
    EXPECT_EQ(shooter.CompassStack[0], 24);
    EXPECT_EQ(shooter, defender);
}

TEST(SafeConduct, TheShootersContraSpionageWithTwoCards)
{
    const CompassDeck deck = WithHands({24, 31}, 2, {29, 0}, 1);
    const ContraOffer offer = ContraOfferAgainstSafeConduct(deck, 1);
    EXPECT_EQ(offer.What, ContraOffer::Kind::Ask);
    EXPECT_EQ(offer.Text, "De jeep beschikt over een vrijgeleide, maar dit kan worden verijdeld door uw contra "
                          "spionage. Wilt u die gebruiken?");
    CompassDeck shooter = deck;
    CompassDeck defender = deck;
    UseContraAgainstSafeConduct(shooter, 1);
    MirrorCardPlayedByAsker(defender, 1, kContraSpionage);
    EXPECT_EQ(shooter.CardHand[0], (std::array<int, 2>{31, 31}));
    EXPECT_EQ(shooter.CardCount[0], 1);
    EXPECT_EQ(shooter, defender);
}

TEST(SafeConduct, AShooterWithoutCardsLetsTheJeepGoAndOneWithOthersShootsOn)
{
    EXPECT_EQ(ContraOfferAgainstSafeConduct(WithHands({0, 0}, 0, {29, 0}, 1), 1).What,
              ContraOffer::Kind::JeepGoesBack);
    EXPECT_EQ(ContraOfferAgainstSafeConduct(WithHands({0, 0}, 0, {29, 0}, 1), 1).Text,
              "Uw tegenstander heeft een vrijgeleide voor zijn jeep gebruikt.");
    EXPECT_EQ(ContraOfferAgainstSafeConduct(WithHands({22, 0}, 1, {29, 0}, 1), 1).What,
              ContraOffer::Kind::ShotGoesOn);
    EXPECT_EQ(ContraOfferAgainstSafeConduct(WithHands({22, 23}, 2, {29, 0}, 1), 1).What,
              ContraOffer::Kind::ShotGoesOn);
}

TEST(Ambush, ContraSpionageWithTwoCardsDropsTheOtherCardAndPushes29)
{
    // The defender (army 2) holds 24 and 22 and answers question 6 with yes;
    // the Hinderlaag player's copy mirrors a 24.
    CompassDeck defender = WithHands({0, 0}, 0, {24, 22}, 2);
    CompassDeck attacker = defender;
    UseContraAgainstAmbush(defender, 2);
    MirrorCardUsedAgainstAsker(attacker, 2, kContraSpionage);
    EXPECT_EQ(defender.CardCount[1], 1);
    EXPECT_EQ(defender.CardHand[1][0], 24) << "the 24 stays in the first slot";
    EXPECT_EQ(defender.CompassStack[0], 29);
    EXPECT_EQ(attacker.CardHand[1][0], 22);
    EXPECT_EQ(attacker.CompassStack[0], 24);
    EXPECT_EQ(defender.StackPoint, attacker.StackPoint);
}

TEST(Ambush, ContraSpionageWithOneCard)
{
    CompassDeck defender = WithHands({0, 0}, 0, {24, 0}, 1);
    CompassDeck attacker = defender;
    UseContraAgainstAmbush(defender, 2);
    MirrorCardUsedAgainstAsker(attacker, 2, kContraSpionage);
    EXPECT_EQ(defender.CardCount[1], 0);
    EXPECT_EQ(defender.CompassStack[0], 24);
    EXPECT_EQ(defender.CompassStack, attacker.CompassStack);
}

TEST(Ambush, TheHinderlaagLeavesTheMirrorOfTheAttackersHand)
{
    CompassDeck deck = WithHands({25, 30}, 2, {29, 0}, 1);
    MirrorCardPlayedByAsker(deck, 1, kHinderlaag);
    EXPECT_EQ(deck.CardHand[0], (std::array<int, 2>{30, 30}));
    EXPECT_EQ(deck.CardCount[0], 1);
    EXPECT_EQ(deck.CompassStack[0], 25);
    CompassDeck one = WithHands({25, 30}, 1, {29, 0}, 1);
    MirrorCardPlayedByAsker(one, 1, kHinderlaag);
    EXPECT_EQ(one.CardHand[0], (std::array<int, 2>{25, 30})) << "with one card no slot moves";
    EXPECT_EQ(one.CardCount[0], 0);
}

TEST(Ambush, QuestionFiveEmptiesTheAttackersHandEvenWithTwoCards)
{
    CompassDeck deck = WithHands({24, 30}, 2, {0, 0}, 0);
    MirrorContraBeatingSafeConduct(deck, 1);
    EXPECT_EQ(deck.CardCount[0], 0);
    EXPECT_EQ(deck.CompassStack[0], 24);
}

TEST(Ambush, TheDestroyedJeepGoesToStockWithItsCompaniesInTheReserve)
{
    BoardState state;
    state.LocalSide = 2;
    ResetNewGame(state);
    state.VehiclePos(2, kJeepSlot) = 40;
    state.BoardCell(40) = -(kJeepSlot + 1);
    state.VehicleCompanies(2, kJeepSlot) = 3;
    state.VehicleTag(2, kJeepSlot) = "jeep_2_3_w";
    const int reserve = state.ReserveCompanies(2);
    DestroyJeepInAmbush(state, 2);
    EXPECT_EQ(state.ReserveCompanies(2), reserve + 3);
    EXPECT_EQ(state.VehicleCompanies(2, kJeepSlot), 0);
    EXPECT_EQ(state.BoardCell(40), 0);
    EXPECT_EQ(state.VehiclePos(2, kJeepSlot), kOutOfGame);
    EXPECT_EQ(state.VehicleTag(2, kJeepSlot), "jeep_2_3_w") << "the tag stays";
    EXPECT_TRUE(state.VehiclePicture(2, kJeepSlot).InStock);
    const PlacedBox box = DestroyedVehicleBox(state.BoardSide, 2, kJeepSlot);
    EXPECT_EQ(state.VehiclePicture(2, kJeepSlot).Left, box.Left);
    EXPECT_EQ(state.VehiclePicture(2, kJeepSlot).Top, box.Top);
}

} // namespace
} // namespace vk
