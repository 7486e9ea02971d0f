// The moves of the compass deck as both copies make them: rotating and
// pushing under, the draw choice of phases 27 and 33, keeping a Personnel
// card, the choice among three, and the mirror of each on the other copy.

#include "cards/DeckMoves.h"
#include "shell/RunTimeFault.h"

#include <gtest/gtest.h>

#include <numeric>

namespace vk {
namespace {

// A dealt deck: entry i holds `order[i]`, 32 cards, empty hands.
CompassDeck Dealt(std::initializer_list<int> top = {})
{
    CompassDeck deck;
    std::iota(deck.CompassStack.begin(), deck.CompassStack.begin() + CompassCardCount, 1);
    deck.StackPoint = CompassCardCount;
    // `top` lists the cards from the top down; they are swapped into place.
    int at = CompassCardCount - 1;
    for (int card : top) {
        auto found = std::find(deck.CompassStack.begin(), deck.CompassStack.begin() + CompassCardCount, card);
        std::swap(*found, deck.CompassStack[static_cast<std::size_t>(at)]);
        --at;
    }
    return deck;
}

int CardsInDeckAndHands(const CompassDeck& deck)
{
    return deck.StackPoint + deck.CardCount[0] + deck.CardCount[1];
}

TEST(DeckMoves, RotateTopToBottomKeepsTheCountAndMovesEveryCardUp)
{
    CompassDeck deck = Dealt();
    RotateTopToBottom(deck);
    EXPECT_EQ(deck.StackPoint, 32);
    EXPECT_EQ(deck.CompassStack[0], 32);
    EXPECT_EQ(deck.CompassStack[1], 1);
    EXPECT_EQ(deck.CompassStack[31], 31);
    EXPECT_EQ(deck.CompassStack[32], 0) << "the spare entry stays untouched";
}

TEST(DeckMoves, ThirtyTwoRotationsGiveTheDeckBack)
{
    const CompassDeck dealt = Dealt({5, 27, 13});
    CompassDeck deck = dealt;
    for (int i = 0; i < 32; ++i)
        RotateTopToBottom(deck);
    EXPECT_EQ(deck, dealt);
}

TEST(DeckMoves, PushToBottomAddsACardUnderTheDeck)
{
    CompassDeck deck = Dealt();
    deck.StackPoint = 30; // two cards in hands
    PushToBottom(deck, 29);
    EXPECT_EQ(deck.StackPoint, 31);
    EXPECT_EQ(deck.CompassStack[0], 29);
    EXPECT_EQ(deck.CompassStack[1], 1);
    EXPECT_EQ(deck.CompassStack[30], 30);
}

TEST(DeckMoves, PushBeyondTheSpareEntryIsAFault)
{
    CompassDeck deck = Dealt();
    PushToBottom(deck, 24); // entry 32, the spare room, is used
    EXPECT_EQ(deck.StackPoint, 33);
    EXPECT_THROW(PushToBottom(deck, 25), RunTimeFault);
}

TEST(DeckMoves, AnEmptyStackHasNoTopCard)
{
    CompassDeck deck;
    EXPECT_THROW(TopCard(deck), RunTimeFault);
}

TEST(DrawChoice, NothingOwedEndsTheTurnFromEitherPhase)
{
    const CompassDeck deck = Dealt({3});
    int owed = 0, pending = 0;
    EXPECT_EQ(ChooseDraw(deck, 27, owed, pending).NextPhase, 39);
    EXPECT_EQ(ChooseDraw(deck, 33, owed, pending).NextPhase, 39);
}

TEST(DrawChoice, TheTopCardChoosesRadioYamboOrPersonnel)
{
    int owed = 2, pending = 2;
    EXPECT_EQ(ChooseDraw(Dealt({20}), 27, owed, pending).NextPhase, 28);
    EXPECT_EQ(ChooseDraw(Dealt({21}), 33, owed, pending).NextPhase, 35);
    EXPECT_EQ(owed, 0);
    EXPECT_EQ(pending, 0);
    owed = 1;
    EXPECT_EQ(ChooseDraw(Dealt({1}), 33, owed, pending).NextPhase, 34);
    EXPECT_EQ(pending, 0) << "the turn's count does not go below 0";
    owed = 1;
    EXPECT_EQ(ChooseDraw(Dealt({32}), 27, owed, pending).NextPhase, 29);
}

TEST(DrawChoice, ATopOutsideTheCardsStaysInThePhaseWithOneDrawLess)
{
    CompassDeck deck = Dealt();
    deck.CompassStack[31] = 0;
    int owed = 2, pending = 2;
    EXPECT_EQ(ChooseDraw(deck, 27, owed, pending).NextPhase, 27);
    EXPECT_EQ(owed, 1);
    EXPECT_EQ(ChooseDraw(deck, 27, owed, pending).NextPhase, 27);
    EXPECT_EQ(ChooseDraw(deck, 27, owed, pending).NextPhase, 39);
    deck.CompassStack[31] = 33;
    owed = 1;
    EXPECT_EQ(ChooseDraw(deck, 33, owed, pending).NextPhase, 33);
}

TEST(DrawChoice, ThreeCrossingsDrawTwoNowAndTheThirdInTheNextTurn)
{
    CompassDeck deck = Dealt({1, 2, 3});
    int owed = 3, pending = 3;
    EXPECT_EQ(ChooseDraw(deck, 27, owed, pending).NextPhase, 28);
    DrawRadioYambo(deck);
    EXPECT_EQ(ChooseDraw(deck, 33, owed, pending).NextPhase, 34);
    DrawRadioYambo(deck);
    EXPECT_EQ(owed, 1) << "what is left stays owed";
    pending = 0; // the next turn starts
    EXPECT_EQ(ChooseDraw(deck, 27, owed, pending).NextPhase, 28);
    EXPECT_EQ(TopCard(deck), 3);
    EXPECT_EQ(owed, 0);
}

TEST(Draws, ARadioYamboCardStaysInTheDeckAtTheBottom)
{
    CompassDeck deck = Dealt({7, 8});
    EXPECT_EQ(DrawRadioYambo(deck), 7);
    EXPECT_EQ(deck.StackPoint, 32);
    EXPECT_EQ(deck.CompassStack[0], 7);
    EXPECT_EQ(TopCard(deck), 8);
}

TEST(Draws, AKeptPersonnelCardLeavesTheDeckForTheNextHandSlot)
{
    CompassDeck deck = Dealt({26, 22});
    EXPECT_EQ(KeepPersonnel(deck, 2), 26);
    EXPECT_EQ(deck.StackPoint, 31);
    EXPECT_EQ(deck.CompassStack[31], 0) << "the slot of a card gone to a hand is cleared";
    EXPECT_EQ(deck.CardCount[1], 1);
    EXPECT_EQ(deck.CardHand[1][0], 26);
    EXPECT_EQ(KeepPersonnel(deck, 2), 22);
    EXPECT_EQ(deck.CardHand[1][1], 22);
    EXPECT_EQ(deck.CardCount[1], 2);
    EXPECT_EQ(CardsInDeckAndHands(deck), 32);
}

TEST(Draws, AThirdKeptCardHasNoSlotAndIsAFault)
{
    CompassDeck deck = Dealt({21, 22, 23});
    KeepPersonnel(deck, 1);
    KeepPersonnel(deck, 1);
    EXPECT_THROW(MirrorKeptPersonnel(deck, 1, 23), RunTimeFault);
}

// The third card: the player gives one of three up; `which` is the tag.
struct ThirdCase {
    int which;
    std::array<int, 2> hand;
    int bottom;
};

class ThirdCard : public ::testing::TestWithParam<ThirdCase> {};

TEST_P(ThirdCard, TheCardGivenUpGoesUnderTheDeckAndTheHandStaysAtTwo)
{
    CompassDeck deck = Dealt({21, 22, 23});
    KeepPersonnel(deck, 1);
    KeepPersonnel(deck, 1);
    const int newCard = TopCard(deck);
    ASSERT_EQ(newCard, 23);
    GiveUpOneOfThree(deck, 1, GetParam().which, newCard);
    RotateTopToBottom(deck);
    EXPECT_EQ(deck.CardHand[0], GetParam().hand);
    EXPECT_EQ(deck.CardCount[0], 2);
    EXPECT_EQ(deck.StackPoint, 30);
    EXPECT_EQ(deck.CompassStack[0], GetParam().bottom);
    EXPECT_EQ(CardsInDeckAndHands(deck), 32);
}

INSTANTIATE_TEST_SUITE_P(Verwerp, ThirdCard,
                         ::testing::Values(ThirdCase{1, {23, 22}, 21}, ThirdCase{2, {21, 23}, 22},
                                           ThirdCase{3, {21, 22}, 23}));

TEST(Mirror, TheOtherCopyFollowsEveryDrawToTheSameDeck)
{
    // The drawer: a Radio Yambo card, a Personnel card, a second one, a third
    // given up from slot 1; the mirror reads CARD, CARD, CARD, CARDIND/CARDIN.
    CompassDeck drawer = Dealt({4, 30, 29, 24});
    CompassDeck mirror = drawer;
    const int radio = DrawRadioYambo(drawer);
    MirrorRadioYamboDraw(mirror, radio);
    EXPECT_EQ(mirror, drawer);
    const int first = KeepPersonnel(drawer, 2);
    MirrorKeptPersonnel(mirror, 2, first);
    const int second = KeepPersonnel(drawer, 2);
    MirrorKeptPersonnel(mirror, 2, second);
    EXPECT_EQ(mirror, drawer);
    const int third = TopCard(drawer);
    GiveUpOneOfThree(drawer, 2, 1, third);
    RotateTopToBottom(drawer);
    GiveUpOneOfThree(mirror, 2, 1, third);
    RotateTopToBottom(mirror);
    EXPECT_EQ(mirror, drawer);
    EXPECT_EQ(drawer.CardHand[1], (std::array<int, 2>{24, 29}));
    EXPECT_EQ(drawer.CompassStack[0], 30);
}

TEST(Mirror, ARadioYamboDrawOverwritesTheTopWithoutComparing)
{
    CompassDeck deck = Dealt({9});
    MirrorRadioYamboDraw(deck, 15);
    EXPECT_EQ(deck.CompassStack[0], 15);
    EXPECT_EQ(deck.StackPoint, 32);
    EXPECT_EQ(std::count(deck.CompassStack.begin(), deck.CompassStack.end(), 9), 0)
        << "the top 9 is gone, 15 is in the deck twice";
    EXPECT_EQ(std::count(deck.CompassStack.begin(), deck.CompassStack.end(), 15), 2);
}

TEST(Mirror, AThirdCardOfTheOpponentGivenUpAsNewKeepsTheMirrorHand)
{
    CompassDeck deck = Dealt({25, 26, 27});
    MirrorKeptPersonnel(deck, 1, 25);
    MirrorKeptPersonnel(deck, 1, 26);
    GiveUpOneOfThree(deck, 1, 3, 27);
    RotateTopToBottom(deck);
    EXPECT_EQ(deck.CardHand[0], (std::array<int, 2>{25, 26}));
    EXPECT_EQ(deck.CompassStack[0], 27);
}

TEST(Mirror, ARadioYamboDrawSeenBeforeAThirdCardGivenUpRotatesTheWrongDeck)
{
    // The drawer gives up the first of three cards (".pnc", nobody waits for
    // it) and then draws a Radio Yambo card (".ryc"). A reader that finds both
    // files takes the ".ryc" first, and the ".pnc" then works on a deck
    // already turned.
    CompassDeck drawer = Dealt({21, 22, 23, 2});
    KeepPersonnel(drawer, 1);
    KeepPersonnel(drawer, 1);
    CompassDeck mirror = drawer;
    const int third = TopCard(drawer);
    GiveUpOneOfThree(drawer, 1, 1, third);
    RotateTopToBottom(drawer);
    const int radio = DrawRadioYambo(drawer);
    ASSERT_EQ(radio, 2);
    MirrorRadioYamboDraw(mirror, radio);
    GiveUpOneOfThree(mirror, 1, 1, third);
    RotateTopToBottom(mirror);
    EXPECT_EQ(mirror.CardHand, drawer.CardHand);
    EXPECT_EQ(drawer.CompassStack[0], 2);
    EXPECT_EQ(drawer.CompassStack[1], 21);
    EXPECT_EQ(mirror.CompassStack[0], 21);
    EXPECT_EQ(mirror.CompassStack[1], 2);
}

TEST(Mirror, AKeptCardSeenAfterARadioYamboDrawEndsInTheSameDeck)
{
    // The other order of the same two files is harmless: the ".pna" clears
    // the top entry that the ".ryc" had overwritten.
    CompassDeck drawer = Dealt({28, 2});
    CompassDeck mirror = drawer;
    const int kept = KeepPersonnel(drawer, 1);
    const int radio = DrawRadioYambo(drawer);
    MirrorRadioYamboDraw(mirror, radio);
    MirrorKeptPersonnel(mirror, 1, kept);
    EXPECT_EQ(mirror, drawer);
}

TEST(Deck, UsedPersonnelCardsReturnUnderTheDeckAndTurnUpAgain)
{
    CompassDeck deck = Dealt({21});
    const int card = KeepPersonnel(deck, 1);
    // Played later: out of the hand and under the deck.
    deck.CardCount[0] = 0;
    PushToBottom(deck, card);
    for (int i = 0; i < 31; ++i)
        RotateTopToBottom(deck);
    EXPECT_EQ(TopCard(deck), 21);
}

TEST(Hand, ACardPlayedFromTheHandClosesItUpAndGoesUnderTheDeck)
{
    CompassDeck deck = Dealt({23, 31});
    KeepPersonnel(deck, 2);
    KeepPersonnel(deck, 2);
    EXPECT_EQ(PlayFromHand(deck, 2, 1, 0), 23);
    EXPECT_EQ(deck.CardHand[1], (std::array<int, 2>{31, 0}));
    EXPECT_EQ(deck.CardCount[1], 1);
    EXPECT_EQ(deck.CompassStack[0], 23);
    EXPECT_EQ(deck.StackPoint, 31);
    KeepPersonnel(deck, 2);
    const int second = deck.CardHand[1][1];
    EXPECT_EQ(PlayFromHand(deck, 2, 2, 0), second);
    EXPECT_EQ(deck.CardHand[1], (std::array<int, 2>{31, 0}));
    EXPECT_EQ(PlayFromHand(deck, 2, 0, 17), 17) << "an unknown slot leaves the hand, the card still goes under";
    EXPECT_EQ(deck.CardCount[1], 1);
    EXPECT_EQ(deck.CompassStack[0], 17);
}

TEST(Hand, HandHoldsLooksOnlyAtTheCountedSlots)
{
    CompassDeck deck;
    deck.CardHand[0] = {29, 24};
    deck.CardCount[0] = 1;
    EXPECT_TRUE(HandHolds(deck, 1, 29));
    EXPECT_FALSE(HandHolds(deck, 1, 24)) << "a stale second slot is no card";
    EXPECT_THROW(HandHolds(deck, 3, 29), RunTimeFault);
}

} // namespace
} // namespace vk
