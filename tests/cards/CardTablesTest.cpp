// The fixed tables of the cards: the Radio Yambo messages and kinds, the
// picture names, and the information box of each Personnel card.

#include "cards/CardInfo.h"
#include "cards/RadioYambo.h"

#include <gtest/gtest.h>

#include <set>

namespace vk {
namespace {

TEST(RadioYamboTable, KindsAsTheOtherCopyTakesThem)
{
    const std::set<int> shown{1, 11, 19};
    const std::set<int> specific{4, 6, 12, 18};
    for (int card = 1; card <= 20; ++card) {
        const RadioYamboKind expected = shown.count(card)      ? RadioYamboKind::Shown
                                        : specific.count(card) ? RadioYamboKind::Specific
                                                               : RadioYamboKind::Automatic;
        EXPECT_EQ(RadioYamboKindOf(card), expected) << card;
        EXPECT_FALSE(RadioYamboMessage(card).empty()) << card;
    }
    EXPECT_EQ(RadioYamboMessage(1), "dringend brandstofdienst");
    EXPECT_EQ(RadioYamboMessage(20), "alarm mijnopruimingsdienst");
    EXPECT_EQ(RadioYamboMessage(21), "");
}

TEST(CardPictures, RadioYamboAndPersonnelNamesInTheCompassFolder)
{
    EXPECT_EQ(CardPictureName(1), "kompas/raya_01.gif");
    EXPECT_EQ(CardPictureName(20), "kompas/raya_20.gif");
    EXPECT_EQ(CardPictureName(21), "kompas/pers_01.gif");
    EXPECT_EQ(CardPictureName(32), "kompas/pers_12.gif");
    EXPECT_EQ(CardPictureName(0), "");
    EXPECT_EQ(CardPictureName(33), "");
}

TEST(CardInfoTable, TwelveBoxesForThePersonnelCardsOnly)
{
    for (int card = 21; card <= 32; ++card) {
        const auto info = PersonnelCardInfo(card);
        ASSERT_TRUE(info) << card;
        EXPECT_EQ(info->Card, card);
        EXPECT_EQ(std::string(info->Title).rfind("Info: ", 0), 0u) << card;
    }
    EXPECT_FALSE(PersonnelCardInfo(20));
    EXPECT_FALSE(PersonnelCardInfo(33));
    EXPECT_STREQ(PersonnelCardInfo(26)->Title, "Info: Helikopter");
    EXPECT_STREQ(PersonnelCardInfo(29)->Text, "Enkel als je Jeep wordt aangevallen kan je deze kaart gebruiken. Dit "
                                              "geldt ook als de tegenstander de kaart 'Hinderlaag' gebruikt tegen je "
                                              "Jeep.");
    EXPECT_STREQ(PersonnelCardInfo(27)->Text, "Net als de kaart 'Helikopter' biedt deze kaart ruime mogelijkheden. De "
                                              "enige vereiste is dat het voertuig zich op \xc3\xa9\xc3\xa9n van de 4 "
                                              "luchthavens moet bevinden.");
}

} // namespace
} // namespace vk
