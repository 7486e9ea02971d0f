#include "cards/DeckMoves.h"

#include "shell/RunTimeFault.h"

namespace vk {

int& StackEntry(CompassDeck& deck, int index)
{
    return deck.CompassStack[static_cast<std::size_t>(CheckIndex(index, 0, CompassCardCount, "CompassStack"))];
}

int StackEntry(const CompassDeck& deck, int index)
{
    return deck.CompassStack[static_cast<std::size_t>(CheckIndex(index, 0, CompassCardCount, "CompassStack"))];
}

int TopCard(const CompassDeck& deck)
{
    return StackEntry(deck, deck.StackPoint - 1);
}

int& HandSlot(CompassDeck& deck, int side, int slot)
{
    const auto s = static_cast<std::size_t>(CheckIndex(side, 1, 2, "CardHand") - 1);
    return deck.CardHand[s][static_cast<std::size_t>(CheckIndex(slot, 1, 2, "CardHand") - 1)];
}

int HandSlot(const CompassDeck& deck, int side, int slot)
{
    const auto s = static_cast<std::size_t>(CheckIndex(side, 1, 2, "CardHand") - 1);
    return deck.CardHand[s][static_cast<std::size_t>(CheckIndex(slot, 1, 2, "CardHand") - 1)];
}

int& CardCountOf(CompassDeck& deck, int side)
{
    return deck.CardCount[static_cast<std::size_t>(CheckIndex(side, 1, 2, "CardCount") - 1)];
}

int CardCountOf(const CompassDeck& deck, int side)
{
    return deck.CardCount[static_cast<std::size_t>(CheckIndex(side, 1, 2, "CardCount") - 1)];
}

bool HandHolds(const CompassDeck& deck, int side, int card)
{
    const int count = CardCountOf(deck, side);
    for (int slot = 1; slot <= count && slot <= 2; ++slot)
        if (HandSlot(deck, side, slot) == card)
            return true;
    return false;
}

void RotateTopToBottom(CompassDeck& deck)
{
    const int top = TopCard(deck);
    for (int i = deck.StackPoint - 1; i >= 1; --i)
        StackEntry(deck, i) = StackEntry(deck, i - 1);
    StackEntry(deck, 0) = top;
}

void PushToBottom(CompassDeck& deck, int card)
{
    deck.StackPoint += 1;
    for (int i = deck.StackPoint - 1; i >= 1; --i)
        StackEntry(deck, i) = StackEntry(deck, i - 1);
    StackEntry(deck, 0) = card;
}

DrawChoice ChooseDraw(const CompassDeck& deck, int phase, int& owed, int& pending)
{
    const bool second = phase == 33;
    DrawChoice choice;
    if (owed == 0) {
        choice.NextPhase = 39;
        return choice;
    }
    const int top = TopCard(deck);
    owed -= 1;
    if (pending > 0)
        pending -= 1;
    if (IsRadioYamboCard(top))
        choice.NextPhase = second ? 34 : 28;
    else if (IsPersonnelCard(top))
        choice.NextPhase = second ? 35 : 29;
    else
        choice.NextPhase = phase;
    return choice;
}

int DrawRadioYambo(CompassDeck& deck)
{
    const int card = TopCard(deck);
    RotateTopToBottom(deck);
    return card;
}

int KeepPersonnel(CompassDeck& deck, int side)
{
    const int card = TopCard(deck);
    MirrorKeptPersonnel(deck, side, card);
    return card;
}

void MirrorKeptPersonnel(CompassDeck& deck, int side, int card)
{
    int& count = CardCountOf(deck, side);
    count += 1;
    HandSlot(deck, side, count) = card;
    StackEntry(deck, deck.StackPoint - 1) = 0;
    deck.StackPoint -= 1;
}

int PlayFromHand(CompassDeck& deck, int side, int which, int current)
{
    int card = current;
    if (which == 1) {
        card = HandSlot(deck, side, 1);
        HandSlot(deck, side, 1) = HandSlot(deck, side, 2);
        HandSlot(deck, side, 2) = 0;
        CardCountOf(deck, side) -= 1;
    } else if (which == 2) {
        card = HandSlot(deck, side, 2);
        HandSlot(deck, side, 2) = 0;
        CardCountOf(deck, side) -= 1;
    }
    PushToBottom(deck, card);
    return card;
}

void GiveUpOneOfThree(CompassDeck& deck, int side, int which, int newCard)
{
    if (which != 1 && which != 2)
        return;
    int& slot = HandSlot(deck, side, which);
    StackEntry(deck, deck.StackPoint - 1) = slot;
    slot = newCard;
}

void MirrorRadioYamboDraw(CompassDeck& deck, int card)
{
    for (int i = deck.StackPoint - 1; i >= 1; --i)
        StackEntry(deck, i) = StackEntry(deck, i - 1);
    StackEntry(deck, 0) = card;
}

} // namespace vk
