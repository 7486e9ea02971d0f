// The end of the opponent's turn with the digest of his position: the same
// digest passes without a word, another one is logged with both digests and
// runs a warning on the board, and an end of turn without a digest is taken
// as it always was.

#include "GameplayFixture.h"

#include "game/PositionCheck.h"
#include "game/PositionDigest.h"
#include "game/SavedGame.h"

#include <QRegularExpression>

#include <algorithm>

namespace vk::test {
namespace {

const char* const kWarning = "let op: uw spel en dat van uw tegenstander lopen uiteen.";

class PositionCheckTest : public GameplayTest {
protected:
    void SetUp() override
    {
        GameplayTest::SetUp();
        StartGame(2, 5);
        ForgetDesyncWarning();
    }
    void TearDown() override
    {
        ForgetDesyncWarning();
        GameplayTest::TearDown();
    }
    // The start of the own turn that follows, as far as the warning goes.
    void StartOwnTurn() { Run([this] { ShowDesyncWarning(W()); }); }
    int Turn() { return V().Progress.TurnNumber; }
    std::string Own() { return PositionDigest(B(), V().Progress); }
    void SendTheirEndOfTurn(int turn, const std::string& digest)
    {
        ASSERT_TRUE(WriteEndOfTurnRecord(QFile::encodeName(TheirPath(".eot")).toStdString(), turn, digest));
    }
    int Differs() { return static_cast<int>(LogLines().count(QStringLiteral("position differs from opponent's at "))); }
    // The running text turns by one character at each scroll: a text is on
    // the board when some turn of it is.
    static bool OnBoard(const char* dutch)
    {
        const QString shown = Global().BoardText;
        const QString wanted = Board(dutch);
        return shown.size() == wanted.size() && (wanted + wanted).contains(shown);
    }
};

TEST_F(PositionCheckTest, TheSameDigestPassesWithoutAWord)
{
    const int before = DesyncWarnings();
    // The opponent plays the other army: his digest of the same game is ours.
    BoardState theirs = B();
    theirs.LocalSide = External();
    GameProgress theirProgress = V().Progress;
    theirProgress.ExternalSide = Local();
    ASSERT_NE(SavedGameText(theirs, theirProgress), SavedGameText(B(), V().Progress));
    SendTheirEndOfTurn(Turn(), PositionDigest(theirs, theirProgress));
    ShowOnBoard(QStringLiteral("het is nu de beurt aan de externe speler."));
    FollowTurn();
    EXPECT_FALSE(FileExists(TheirPath(".eot")));
    EXPECT_TRUE(Logged(QStringLiteral("opponent's turn ended at ")));
    EXPECT_EQ(Differs(), 0);
    EXPECT_EQ(DesyncWarnings(), before);
    EXPECT_TRUE(OnBoard("het is nu de beurt aan de externe speler."));
}

TEST_F(PositionCheckTest, AnotherDigestIsLoggedAndWarnedAboutAtTheStartOfTheOwnTurn)
{
    const int before = DesyncWarnings();
    const std::string own = Own();
    const std::string theirs = own == "0123456789abcdef" ? "fedcba9876543210" : "0123456789abcdef";
    SendTheirEndOfTurn(Turn(), theirs);
    ShowOnBoard(QStringLiteral("het is nu de beurt aan de externe speler."));
    FollowTurn();
    EXPECT_FALSE(FileExists(TheirPath(".eot")));
    EXPECT_EQ(DesyncWarnings(), before + 1);
    EXPECT_EQ(Differs(), 1);
    const QStringList lines = LogLines();
    const auto at = lines.indexOf(QStringLiteral("position differs from opponent's at "));
    ASSERT_GE(at, 1);
    ASSERT_LT(at + 1, lines.size());
    EXPECT_EQ(lines[at - 1], QStringLiteral("opponent's turn ended at "));
    EXPECT_EQ(lines[at + 1], QStringLiteral("opponent's digest ") + QString::fromStdString(theirs) +
                                 QStringLiteral(", own digest ") + QString::fromStdString(own));
    // The line itself: the words, then the time.
    const QStringList raw = QString::fromLatin1(Text(scratch.path() + QStringLiteral("/Valkenhorn.log")))
                                .split(QLatin1Char('\n'));
    const auto line = std::find_if(raw.begin(), raw.end(), [](const QString& l) {
        return l.startsWith(QStringLiteral("position differs from opponent's at "));
    });
    ASSERT_NE(line, raw.end());
    const QString time = line->trimmed().mid(QStringLiteral("position differs from opponent's at ").size());
    EXPECT_TRUE(time.contains(QRegularExpression(QStringLiteral("^\\S*\\d")))) << time.toStdString();
    // Nothing on the board while the opponent's turn ends ...
    EXPECT_TRUE(OnBoard("het is nu de beurt aan de externe speler."));

    // ... the warning runs once the own turn begins, and only once.
    When("the warning runs", [] { return Waiting() == QStringLiteral("desync warning"); },
         [&] { EXPECT_TRUE(OnBoard(kWarning)); });
    QElapsedTimer clock;
    clock.start();
    StartOwnTurn();
    // Nine seconds at a twentieth.
    EXPECT_GE(clock.elapsed(), 440);
    ShowOnBoard(QStringLiteral("u bent aan de beurt."));
    StartOwnTurn();
    EXPECT_TRUE(OnBoard("u bent aan de beurt."));
    EXPECT_EQ(DesyncWarnings(), before + 1);
    EXPECT_TRUE(V().GameRunning);
}

TEST_F(PositionCheckTest, TheWarningGoesWhenItIsClicked)
{
    SendTheirEndOfTurn(Turn(), "0000000000000000");
    FollowTurn();
    When("the warning runs", [] { return Waiting() == QStringLiteral("desync warning"); }, [&] {
        EXPECT_TRUE(OnBoard(kWarning));
        // What a click on msgBoard does (ShellControls): the text goes.
        Global().BoardText.clear();
    });
    QElapsedTimer clock;
    clock.start();
    StartOwnTurn();
    // Nine seconds at a twentieth are 450 ms; the click ends it sooner.
    EXPECT_LT(clock.elapsed(), 400);
    EXPECT_TRUE(Global().BoardText.isEmpty());
}

TEST_F(PositionCheckTest, ANewGameForgetsAWarningNotYetShown)
{
    SendTheirEndOfTurn(Turn(), "0000000000000000");
    FollowTurn();
    ASSERT_EQ(Differs(), 1);
    ForgetDesyncWarning();
    ShowOnBoard(QStringLiteral("u bent aan de beurt."));
    StartOwnTurn();
    EXPECT_TRUE(OnBoard("u bent aan de beurt."));
}

TEST_F(PositionCheckTest, AnEndOfTurnWithoutADigestIsNotChecked)
{
    const int before = DesyncWarnings();
    GameplayTest::SendTheirEndOfTurn(Turn());
    EXPECT_EQ(Text(TheirPath(".eot")), QByteArray("[GENERAL]\r\nTURN=") + QByteArray::number(Turn()) + "\r\n");
    FollowTurn();
    EXPECT_FALSE(FileExists(TheirPath(".eot")));
    EXPECT_TRUE(Logged(QStringLiteral("opponent's turn ended at ")));
    EXPECT_EQ(Differs(), 0);
    EXPECT_EQ(DesyncWarnings(), before);
}

TEST_F(PositionCheckTest, AnEndOfTurnOfAnotherTurnIsNotChecked)
{
    const int before = DesyncWarnings();
    SendTheirEndOfTurn(Turn() - 2, "0000000000000000");
    When("the leftover stays", [] { return Idle(); }, [&] {
        EXPECT_TRUE(FileExists(TheirPath(".eot")));
        SendTheirEndOfTurn(Turn(), Own());
    });
    FollowTurn();
    EXPECT_EQ(Differs(), 0);
    EXPECT_EQ(DesyncWarnings(), before);
}

TEST_F(PositionCheckTest, ATestRequestChangesOneValueOfTheRunningGame)
{
    const std::string before = Own();
    ASSERT_TRUE(V().GameRunning);
    EXPECT_EQ(ChangePositionForTest(W(), QStringLiteral("KOMP_LOK"), QStringLiteral("RES"), QStringLiteral("7")),
              QString());
    EXPECT_EQ(B().ReserveCompanies(Local()), 7);
    EXPECT_NE(Own(), before);
    EXPECT_TRUE(Logged(QStringLiteral("test request changed KOMP_LOK/RES to 7 at ")));
    EXPECT_FALSE(
        ChangePositionForTest(W(), QStringLiteral("KOMP_LOK"), QStringLiteral("GEEN"), QStringLiteral("7")).isEmpty());
    V().GameRunning = false;
    EXPECT_EQ(ChangePositionForTest(W(), QStringLiteral("KOMP_LOK"), QStringLiteral("RES"), QStringLiteral("8")),
              QStringLiteral("no game is running"));
    EXPECT_EQ(B().ReserveCompanies(Local()), 7);
}

} // namespace
} // namespace vk::test
