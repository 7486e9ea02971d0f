// The board text of each phase of the own turn, byte for byte as the player
// reads it. The texts are UTF-8.

#include "game/PhaseTable.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using vk::PhaseContext;

const std::string kStartWithCard =
    "u bent aan de beurt. je kan voor je beurt een personnel kaart uitspelen. deze kan je eerst inkijken door naast "
    "de knop 'Gooien' op het miniatuur te klikken, en dan beslissen om deze te gebruiken. Zoniet, druk op de knop "
    "'gooien', of op 'einde beurt' om je beurt over te slaan.";
const std::string kStartWithoutCard =
    "u bent aan de beurt. gelieve op de knop 'gooien' te drukken, of op 'einde beurt' om je beurt over te slaan.";
const std::string kCardShown =
    "klik op de knop 'gebruik' om deze personnel kaart nu uit te spelen. druk anders op de knop 'sluiten'.";
const std::string kCardPlayed = "u bent nog steeds aan de beurt. gelieve op de knop 'gooi' te drukken, of op 'einde "
                                "beurt' om je beurt nu te beeindigen.";
const std::string kRest =
    " Dubbelklik dan op het voertuig dat u wenst te verplaatsen, of waarmee u wilt schieten, om vervolgens de "
    "bestemming met een dubbelklik aan te klikken. De bestemming is een vakje op het spelbord, leeg, of met een "
    "mijn om op te pikken, of een vijandelijk voertuig waarop je schiet. Je kan je beurt vroegtijdig beeindigen "
    "door op de knop 'einde beurt' te klikken.";
const std::string kDiceRolled =
    "Dubbelklik, afhankelijk van wat je wil doen, op de dobbelstenen apart (links of rechts), of beiden samen "
    "(midden)." + kRest;
const std::string kCamp = ". duid een eigen voertuig aan om te verplaatsen, of om mee te schieten, door daarop te "
                          "dubbelklikken. u kan een voertuig kiezen die zich in uw kamp bevindt en naar het HQ "
                          "verplaatsen maar niet verder.";
const std::string kNoCamp = ". duid een eigen voertuig aan om te verplaatsen, of om mee te schieten, door daarop te "
                            "dubbelklikken. u kan geen voertuig kiezen die zich in uw kamp bevindt (geen 6, of "
                            "volzet HQ, of geen kompagnieen).";
const std::string kNoFuel = "Uw voertuigen hebben nog steeds geen brandstof, u kan zich dus niet verplaatsen. u "
                            "kan echter wel schieten op een vijandig voertuig.";
const std::string kBothOpen =
    "u koos voor beide dobbelstenen, de waarde 6 behoort tot de mogelijkheden. duid een eigen voertuig aan om te "
    "verplaatsen, of om mee te schieten, door daarop te dubbelklikken. u kan een voertuig kiezen die zich in uw "
    "kamp bevindt en naar het HQ verplaatsen, misschien wel verder.";
const std::string kCampVehicle =
    "U koos voor een voertuig in uw kamp. (enkel)klik langzaam op het voertuig om het aantal kompagnie\xC3\xAB"
    "n aan te passen. indien het een commando voertuig is wordt op dezelfde wijze ook het laden van een mijn in "
    "het voertuig verkregen. dubbelklik uiteindelijk op de bestemming van het voertuig.";
const std::string kFieldVehicle =
    "voertuig gekozen. dubbelklik nu op de bestemming, dit is ofwel een leeg vakje op het spelbord (verplaatsen), "
    "of met een mijn (verplaatsen en mijn oppikken - enkel genie), of met een vijandelijk voertuig (schieten).";
const std::string kRightDieLeft = "Dubbelklik op de rechtse dobbelsteen." + kRest;
const std::string kLeftDieLeft = "Dubbelklik op de linkse dobbelsteen." + kRest;

PhaseContext Context(int dice1, int dice2, int hqCount = 0, int campCompanies = 15, bool fuelBlocked = false)
{
    PhaseContext context;
    context.Dice1 = dice1;
    context.Dice2 = dice2;
    context.HQCount = hqCount;
    context.CampCompanies = campCompanies;
    context.FuelBlocked = fuelBlocked;
    return context;
}

std::string LeftDie(int value) { return "u koos voor dobbelsteen 1, deze heeft de waarde " + std::to_string(value); }
std::string RightDie(int value) { return "u koos voor dobbelsteen 2, deze heeft de waarde " + std::to_string(value); }

TEST(PhaseMessage, TurnStartWithAndWithoutACard)
{
    PhaseContext context;
    EXPECT_EQ(vk::PhaseMessage(0, context), kStartWithoutCard);
    context.CardCount = 1;
    EXPECT_EQ(vk::PhaseMessage(0, context), kStartWithCard);
    context.CardCount = 2;
    EXPECT_EQ(vk::PhaseMessage(0, context), kStartWithCard);
}

TEST(PhaseMessage, CardShownPlayedAndDiceRolled)
{
    const PhaseContext context = Context(3, 4);
    EXPECT_EQ(vk::PhaseMessage(1, context), kCardShown);
    EXPECT_EQ(vk::PhaseMessage(3, context), kCardPlayed);
    EXPECT_EQ(vk::PhaseMessage(4, context), kDiceRolled);
}

TEST(PhaseMessage, OneDieWithTheCampOpen)
{
    EXPECT_EQ(vk::PhaseMessage(5, Context(6, 2)), LeftDie(6) + kCamp);
    EXPECT_EQ(vk::PhaseMessage(19, Context(6, 2)), LeftDie(6) + kCamp);
    EXPECT_EQ(vk::PhaseMessage(10, Context(2, 6)), RightDie(6) + kCamp);
    EXPECT_EQ(vk::PhaseMessage(14, Context(2, 6)), RightDie(6) + kCamp);
}

TEST(PhaseMessage, OneDieWithTheCampClosed)
{
    // No 6 on the die of the phase.
    EXPECT_EQ(vk::PhaseMessage(5, Context(2, 6)), LeftDie(2) + kNoCamp);
    EXPECT_EQ(vk::PhaseMessage(19, Context(5, 6)), LeftDie(5) + kNoCamp);
    EXPECT_EQ(vk::PhaseMessage(10, Context(6, 1)), RightDie(1) + kNoCamp);
    EXPECT_EQ(vk::PhaseMessage(14, Context(6, 4)), RightDie(4) + kNoCamp);
    // A 6, but the HQ is full or the camp empty.
    EXPECT_EQ(vk::PhaseMessage(5, Context(6, 6, 3)), LeftDie(6) + kNoCamp);
    EXPECT_EQ(vk::PhaseMessage(14, Context(6, 6, 0, 0)), RightDie(6) + kNoCamp);
}

TEST(PhaseMessage, OneDieWithoutFuel)
{
    for (int phase : {5, 10, 14, 19}) {
        EXPECT_EQ(vk::PhaseMessage(phase, Context(6, 6, 0, 15, true)), kNoFuel) << phase;
        EXPECT_EQ(vk::PhaseMessage(phase, Context(1, 2, 3, 0, true)), kNoFuel) << phase;
    }
}

TEST(PhaseMessage, BothDice)
{
    EXPECT_EQ(vk::PhaseMessage(23, Context(6, 5)), kBothOpen);
    EXPECT_EQ(vk::PhaseMessage(23, Context(2, 4)), kBothOpen);
    EXPECT_EQ(vk::PhaseMessage(23, Context(5, 2)), "u koos voor beide dobbelstenen, deze hebben de waarde 7" + kNoCamp);
    EXPECT_EQ(vk::PhaseMessage(23, Context(6, 6, 3)),
              "u koos voor beide dobbelstenen, deze hebben de waarde 12" + kNoCamp);
    EXPECT_EQ(vk::PhaseMessage(23, Context(1, 5, 0, 0)),
              "u koos voor beide dobbelstenen, deze hebben de waarde 6" + kNoCamp);
    EXPECT_EQ(vk::PhaseMessage(23, Context(6, 6, 0, 15, true)), kNoFuel);
}

TEST(PhaseMessage, PickedVehicles)
{
    const PhaseContext context = Context(6, 6);
    for (int phase : {7, 12, 16, 21, 25})
        EXPECT_EQ(vk::PhaseMessage(phase, context), kCampVehicle) << phase;
    for (int phase : {8, 13, 17, 22, 26})
        EXPECT_EQ(vk::PhaseMessage(phase, context), kFieldVehicle) << phase;
}

TEST(PhaseMessage, CampTextIsUtf8)
{
    const std::string text = vk::PhaseMessage(7, PhaseContext{});
    EXPECT_NE(text.find("kompagnie\xC3\xABn"), std::string::npos);
    EXPECT_EQ(text.find("kompagnieen"), std::string::npos);
    // The NOCAMP text has no diaeresis.
    EXPECT_NE(vk::PhaseMessage(5, Context(1, 1)).find("geen kompagnieen)."), std::string::npos);
}

TEST(PhaseMessage, OneDieLeft)
{
    EXPECT_EQ(vk::PhaseMessage(9, Context(3, 4)), kRightDieLeft);
    EXPECT_EQ(vk::PhaseMessage(18, Context(3, 4)), kLeftDieLeft);
}

TEST(PhaseMessage, OtherPhasesHaveNone)
{
    const PhaseContext context = Context(6, 6);
    for (int phase = -1; phase <= 40; ++phase) {
        const bool hasText = phase <= 5 && phase != 2 && phase >= 0;
        const bool action = phase == 7 || phase == 8 || phase == 9 || phase == 10 || (phase >= 12 && phase <= 14) ||
                            (phase >= 16 && phase <= 19) || (phase >= 21 && phase <= 23) || phase == 25 ||
                            phase == 26;
        EXPECT_EQ(vk::PhaseMessage(phase, context).empty(), !(hasText || action)) << "phase " << phase;
    }
}

} // namespace
