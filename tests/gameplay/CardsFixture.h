#pragma once

// The window in a game at turn 5 of army 1 with the compass deck dealt in
// order (1 on the bottom, 32 on top), own files taken by the opponent as
// soon as they appear, and the moves a test makes on the deck and hands.

#include "GameplayFixture.h"

#include "cards/DeckMoves.h"

#include <algorithm>
#include <numeric>

namespace vk::test {

class CardsTest : public GameplayTest {
protected:
    void SetUp() override
    {
        GameplayTest::SetUp();
        StartGame(1, 5);
        autoConsume = true;
        CompassDeck& deck = V().Progress.Deck;
        std::iota(deck.CompassStack.begin(), deck.CompassStack.begin() + CompassCardCount, 1);
        deck.StackPoint = CompassCardCount;
    }
    CompassDeck& Deck() { return V().Progress.Deck; }
    // Puts `cards` on top of the deck, the first on top.
    void OnTop(std::initializer_list<int> cards)
    {
        int at = Deck().StackPoint - 1;
        for (int card : cards) {
            auto end = Deck().CompassStack.begin() + Deck().StackPoint;
            std::swap(*std::find(Deck().CompassStack.begin(), end, card), Deck().CompassStack[static_cast<std::size_t>(at)]);
            --at;
        }
    }
    // Takes `cards` out of the deck into the hand of `side`.
    void Hand(int side, std::initializer_list<int> cards)
    {
        for (int card : cards) {
            OnTop({card});
            KeepPersonnel(Deck(), side);
        }
    }
    void EndOfTurnWithDraws(int owed)
    {
        B().CompassOwed = owed;
        B().PendingDraws = owed;
        V().GamePhase = 27;
    }
    // The nth own file of that kind the opponent took; one written right at
    // the end of a body is taken here.
    const Sent* SentFile(const char* extension, int nth = 0)
    {
        if (FileExists(OwnPath(extension))) {
            const QByteArray raw = Text(OwnPath(extension));
            consumed.push_back(Sent{QString::fromLatin1(extension), Consume(OwnPath(extension)), raw});
        }
        for (const Sent& sent : consumed)
            if (sent.Extension == QLatin1String(extension) && nth-- == 0)
                return &sent;
        return nullptr;
    }
    void ReadBoardMessages()
    {
        everyTick = [] {
            if (Waiting() == QStringLiteral("Radio Yambo card read"))
                Global().BoardText.clear();
        };
    }
};

} // namespace vk::test
