#include "ui/MessageBoard.h"

#include <gtest/gtest.h>

namespace {

const QString Stars = QStringLiteral(" * * * * * * * * * * ");
const QString StarsEnd = QStringLiteral("* * * * * * * * * *");

TEST(FormatBoardText, EmptyTextGivesTheTwoRowsOfStarsAlone)
{
    EXPECT_EQ(vk::FormatBoardText(QString()), Stars + StarsEnd);
}

TEST(FormatBoardText, LettersStandApartAndWordsFarApart)
{
    EXPECT_EQ(vk::FormatBoardText(QStringLiteral("u bent")), Stars + QStringLiteral("U    B E N T ") + StarsEnd);
}

TEST(FormatBoardText, TwoBlanksInARowGiveSixBlanks)
{
    EXPECT_EQ(vk::FormatBoardText(QStringLiteral("a  b")), Stars + QStringLiteral("A       B ") + StarsEnd);
}

TEST(FormatBoardText, ApostropheKeptAndLettersUpperCased)
{
    EXPECT_EQ(vk::FormatBoardText(QStringLiteral("'t is één")),
              Stars + QStringLiteral("' T    I S    É É N ") + StarsEnd);
}

TEST(FormatBoardText, CharactersWithoutUpperCaseStayAsTheyAre)
{
    const QString result = vk::FormatBoardText(QStringLiteral("ß1!"));
    EXPECT_EQ(result, Stars + QStringLiteral("ß 1 ! ") + StarsEnd);
}

TEST(Scroller, EmptyTextHidesTheBoardAndDoesNothingElse)
{
    QString text;
    const vk::ScrollStep step = vk::ScrollOnce(text, true);
    EXPECT_TRUE(step.hide);
    EXPECT_FALSE(step.playSound);
    EXPECT_TRUE(text.isEmpty());
}

TEST(Scroller, HiddenBoardIsShownWithTheSound)
{
    QString text = QStringLiteral("abc");
    const vk::ScrollStep step = vk::ScrollOnce(text, false);
    EXPECT_FALSE(step.hide);
    EXPECT_TRUE(step.show);
    EXPECT_TRUE(step.playSound);
    EXPECT_EQ(text, QStringLiteral("bca"));
    EXPECT_EQ(step.caption, QStringLiteral("bca"));
}

TEST(Scroller, ShownBoardRotatesByOneCharacterWithoutSound)
{
    QString text = QStringLiteral("abc");
    vk::ScrollStep step = vk::ScrollOnce(text, true);
    EXPECT_FALSE(step.playSound);
    EXPECT_FALSE(step.show);
    EXPECT_EQ(text, QStringLiteral("bca"));
    step = vk::ScrollOnce(text, true);
    step = vk::ScrollOnce(text, true);
    EXPECT_EQ(text, QStringLiteral("abc"));
}

TEST(Scroller, ReplacingTheTextBetweenTwoFiringsPlaysNoSound)
{
    // Emptied and given a new text before the next firing: the board was never
    // hidden, so no sound.
    QString text = QStringLiteral("old");
    vk::ScrollOnce(text, true);
    text.clear();
    text = vk::FormatBoardText(QStringLiteral("new"));
    const vk::ScrollStep step = vk::ScrollOnce(text, true);
    EXPECT_FALSE(step.playSound);
    EXPECT_FALSE(step.hide);
}

TEST(Scroller, OneCharacterTextStaysItself)
{
    QString text = QStringLiteral("x");
    vk::ScrollOnce(text, true);
    EXPECT_EQ(text, QStringLiteral("x"));
}

} // namespace
