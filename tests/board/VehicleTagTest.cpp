#include "board/VehicleTag.h"
#include "shell/RunTimeFault.h"

#include <gtest/gtest.h>

namespace vk {
namespace {

TEST(VehicleTag, TypeWordsLogWordsAndCapacities)
{
    const char* types[11] = {"tank", "kanon", "kanon", "infanterie", "infanterie", "infanterie",
                             "commando", "commando", "genie", "genie", "jeep"};
    const char* logs[11] = {"tank", "canon", "canon", "infantry", "infantry", "infantry",
                            "commando", "commando", "deminer", "deminer", "jeep"};
    const int capacity[11] = {5, 4, 4, 3, 3, 3, 2, 2, 2, 2, 3};
    for (int slot = 0; slot < 11; ++slot) {
        EXPECT_STREQ(VehicleTypeWord(slot), types[slot]);
        EXPECT_STREQ(VehicleLogWord(slot), logs[slot]);
        EXPECT_EQ(VehicleCapacity(slot), capacity[slot]);
    }
}

TEST(VehicleTag, StartingTagsOfBothArmies)
{
    const char* army1[11] = {"tank_1_0_o", "kanon_1_0_o", "kanon_1_0_o", "infanterie_1_0_0_o",
                             "infanterie_1_0_0_o", "infanterie_1_0_0_o", "commando_1_0_0_o", "commando_1_0_0_o",
                             "genie_1_0_0_o", "genie_1_0_0_o", "jeep_1_0_w"};
    const char* army2[11] = {"tank_2_0_w", "kanon_2_0_w", "kanon_2_0_w", "infanterie_2_0_0_o",
                             "infanterie_2_0_0_o", "infanterie_2_0_0_o", "commando_2_0_0_w", "commando_2_0_0_w",
                             "genie_2_0_0_o", "genie_2_0_0_o", "jeep_2_0_o"};
    for (int slot = 0; slot < 11; ++slot) {
        EXPECT_EQ(StartingTag(1, slot), army1[slot]);
        EXPECT_EQ(StartingTag(2, slot), army2[slot]);
    }
    const int headings1[11] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 3};
    const int headings2[11] = {3, 3, 3, 1, 1, 1, 3, 3, 1, 1, 1};
    for (int slot = 0; slot < 11; ++slot) {
        EXPECT_EQ(StartingHeading(1, slot), headings1[slot]);
        EXPECT_EQ(StartingHeading(2, slot), headings2[slot]);
    }
}

TEST(VehicleTag, DestroyedTagsAllEndInO)
{
    EXPECT_EQ(DestroyedTag(2, 0), "tank_2_0_o");
    EXPECT_EQ(DestroyedTag(2, 1), "kanon_2_0_o");
    EXPECT_EQ(DestroyedTag(2, 7), "commando_2_0_0_o");
    EXPECT_EQ(DestroyedTag(1, 10), "jeep_1_0_o");
    EXPECT_EQ(DestroyedTag(2, 10), "jeep_2_0_o");
    EXPECT_EQ(DestroyedTag(1, 4), "infanterie_1_0_0_o");
}

TEST(VehicleTag, MakeVehicleTagWithMarkAndHeading)
{
    EXPECT_EQ(MakeVehicleTag(3, 1, 2, 1, 0), "infanterie_1_2_1_n");
    EXPECT_EQ(MakeVehicleTag(8, 2, 1, 2, 2), "genie_2_1_2_z");
    EXPECT_EQ(MakeVehicleTag(6, 1, 2, 1, 3), "commando_1_2_1_w");
    EXPECT_EQ(MakeVehicleTag(1, 2, 4, 0, 1), "kanon_2_4_o");
}

// Edge case: the jeep and the tank have no mark field even when a mark is passed.
TEST(VehicleTag, JeepAndTankHaveNoMarkFieldEvenWithAMark)
{
    EXPECT_EQ(MakeVehicleTag(10, 1, 2, 1, 3), "jeep_1_2_w");
    EXPECT_EQ(MakeVehicleTag(0, 2, 5, 2, 3), "tank_2_5_w");
    EXPECT_EQ(MakeVehicleTag(1, 1, 3, 1, 1), "kanon_1_3_o");
}

TEST(VehicleTag, HeadingOutsideTheRangeLeavesTheTextEndingInAnUnderscore)
{
    EXPECT_EQ(MakeVehicleTag(0, 1, 0, 0, 4), "tank_1_0_");
    EXPECT_EQ(MakeVehicleTag(5, 2, 1, 0, -1), "infanterie_2_1_0_");
}

TEST(VehicleTag, DigitPositions)
{
    EXPECT_EQ(CompaniesDigitPosition(0), 8);
    EXPECT_EQ(CompaniesDigitPosition(1), 9);
    EXPECT_EQ(CompaniesDigitPosition(3), 14);
    EXPECT_EQ(CompaniesDigitPosition(6), 12);
    EXPECT_EQ(CompaniesDigitPosition(8), 9);
    EXPECT_EQ(CompaniesDigitPosition(10), 8);
    EXPECT_EQ(MarkPosition(3), 16);
    EXPECT_EQ(MarkPosition(5), 16);
    EXPECT_EQ(MarkPosition(6), 14);
    EXPECT_EQ(MarkPosition(9), 11);
    EXPECT_EQ(MarkPosition(0), 0);
    EXPECT_EQ(MarkPosition(10), 0);
    EXPECT_EQ(TagCharAt("infanterie_1_2_1_o", 14), "2");
    EXPECT_EQ(TagCharAt("infanterie_1_2_1_o", 16), "1");
    EXPECT_EQ(TagCharAt("commando_2_1_1_w", 14), "1");
    EXPECT_EQ(TagCharAt("genie_1_2_2_z", 11), "2");
    EXPECT_EQ(TagCharAt("tank_1_3_o", 8), "3");
    EXPECT_EQ(TagCharAt("tank_1_3_o", 11), "");
    EXPECT_EQ(TagMarkValue("genie_1_2_2_z", 8), 2);
    EXPECT_EQ(TagMarkValue("tank_1_3_o", 0), 0);
}

TEST(VehicleTag, ChangeOfCompaniesKeepsMarkAndHeading)
{
    EXPECT_EQ(SetTagCompanies("infanterie_1_3_1_z", 4, 2), "infanterie_1_2_1_z");
    EXPECT_EQ(SetTagCompanies("tank_2_5_w", 0, 4), "tank_2_4_w");
    EXPECT_EQ(SetTagCompanies("commando_1_2_0_n", 7, 1), "commando_1_1_0_n");
    EXPECT_EQ(SetTagCompanies("genie_2_1_2_o", 9, 0), "genie_2_0_2_o");
}

TEST(VehicleTag, NumbersBelowZeroKeepMarkAndHeadingInPlace)
{
    // A vehicle hit with no companies aboard goes below zero: the number takes
    // two characters, and the right part stays "_w" or "_0_o".
    EXPECT_EQ(SetTagCompanies("kanon_2_0_w", 1, -1), "kanon_2_-1_w");
    EXPECT_EQ(SetTagCompanies("kanon_2_-1_w", 1, -2), "kanon_2_-2_w");
    EXPECT_EQ(SetTagCompanies("infanterie_1_-1_0_o", 4, 0), "infanterie_1_0_0_o");
    EXPECT_EQ(TagMarkValue(SetTagCompanies("infanterie_1_-1_0_o", 4, -2), 4), 0);
}

TEST(VehicleTag, HeadingLetters)
{
    EXPECT_EQ(HeadingLetter(0), "n");
    EXPECT_EQ(HeadingLetter(1), "o");
    EXPECT_EQ(HeadingLetter(2), "z");
    EXPECT_EQ(HeadingLetter(3), "w");
    EXPECT_EQ(TagHeading("tank_1_0_z"), 2);
    EXPECT_EQ(TagHeading("jeep_2_0_o"), 1);
    EXPECT_EQ(TagHeading("tank_1_0_"), -1);
}

TEST(VehicleTag, SlotOutsideTheTableRaisesTheFault)
{
    EXPECT_THROW(VehicleTypeWord(11), RunTimeFault);
    EXPECT_THROW(VehicleCapacity(-1), RunTimeFault);
    EXPECT_THROW(MakeVehicleTag(12, 1, 0, 0, 1), RunTimeFault);
    EXPECT_THROW(StartingTag(3, 0), RunTimeFault);
}

} // namespace
} // namespace vk
