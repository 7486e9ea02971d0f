// The start button while a game is still running: the question whether to
// end it, and a No that leaves the game as it was. A game that was won and
// whose stop question was answered No is such a game.

#include "GameplayFixture.h"

#include "game/GameFlow.h"

namespace vk::test {
namespace {

class GameEndTest : public GameplayTest {
protected:
    void SetUp() override
    {
        GameplayTest::SetUp();
        StartGame(1, 9);
    }
};

TEST_F(GameEndTest, StartDuringARunningGameAsksFirstAndNoLeavesTheGame)
{
    V().GameRunning = true;
    V().GameWon = true;
    const BoardState before = B();
    const int turn = V().Progress.TurnNumber;
    Run([this] { cmdStart_Click(W()); });
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0], QStringLiteral("Spel Bezig|Het huidig spel is nog niet afgelopen. Wilt u dit be\u00ebindigen "
                                       "en een nieuw spel starten?"));
    EXPECT_TRUE(V().GameRunning);
    EXPECT_TRUE(V().GameWon);
    EXPECT_EQ(V().Progress.TurnNumber, turn);
    EXPECT_EQ(GameDifference(B(), before), "");
    EXPECT_TRUE(W().Voertuig_1[0]->Visible());
    EXPECT_FALSE(Logged(QStringLiteral("starting game with bert at ")));
}

} // namespace
} // namespace vk::test
