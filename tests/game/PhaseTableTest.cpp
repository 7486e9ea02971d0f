// The phases of the own turn as data: every move of the handler tables, the
// die of each phase, the kinds of phase and when the camp is open.

#include "game/PhaseTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace {

using vk::PhaseContext;
using vk::PhaseEvent;

struct Move {
    PhaseEvent Event;
    int From;
    int To;
};

// Every move the controls of the panel make, and no other.
const std::vector<Move> kMoves{
    {PhaseEvent::Gooi, 0, 4},           {PhaseEvent::Gooi, 3, 4},
    {PhaseEvent::EindeBeurt, 0, 39},    {PhaseEvent::EindeBeurt, 3, 27},
    {PhaseEvent::EindeBeurt, 4, 27},    {PhaseEvent::EindeBeurt, 9, 27},
    {PhaseEvent::EindeBeurt, 18, 27},   {PhaseEvent::HandCard, 0, 1},
    {PhaseEvent::HandCard, 32, 31},     {PhaseEvent::HandCard, 38, 37},
    {PhaseEvent::NewCard, 32, 31},      {PhaseEvent::NewCard, 38, 37},
    {PhaseEvent::KompasGebruik, 1, 2},  {PhaseEvent::KompasGebruik, 31, 33},
    {PhaseEvent::KompasGebruik, 37, 39}, {PhaseEvent::KompasSluit, 1, 0},
    {PhaseEvent::KompasSluit, 31, 32},  {PhaseEvent::KompasSluit, 37, 38},
    {PhaseEvent::Dice1, 4, 5},          {PhaseEvent::Dice1, 5, 4},
    {PhaseEvent::Dice1, 18, 19},        {PhaseEvent::Dice1, 19, 18},
    {PhaseEvent::Dice2, 4, 14},         {PhaseEvent::Dice2, 14, 4},
    {PhaseEvent::Dice2, 9, 10},         {PhaseEvent::Dice2, 10, 9},
    {PhaseEvent::BothDice, 4, 23},      {PhaseEvent::BothDice, 23, 4},
};

const std::array kEvents{PhaseEvent::Gooi,          PhaseEvent::EindeBeurt,  PhaseEvent::HandCard,
                         PhaseEvent::NewCard,       PhaseEvent::KompasGebruik, PhaseEvent::KompasSluit,
                         PhaseEvent::Dice1,         PhaseEvent::Dice2,       PhaseEvent::BothDice};

int ExpectedNext(PhaseEvent event, int phase)
{
    for (const Move& move : kMoves)
        if (move.Event == event && move.From == phase)
            return move.To;
    return -1;
}

TEST(PhaseTable, EveryMoveOfTheHandlers)
{
    for (const Move& move : kMoves)
        EXPECT_EQ(vk::NextPhase(move.Event, move.From), move.To)
            << "event " << static_cast<int>(move.Event) << " at " << move.From;
}

TEST(PhaseTable, EveryOtherEventAndPhaseDoesNothing)
{
    int inert = 0;
    for (PhaseEvent event : kEvents)
        for (int phase = -1; phase <= 40; ++phase) {
            EXPECT_EQ(vk::NextPhase(event, phase), ExpectedNext(event, phase))
                << "event " << static_cast<int>(event) << " at " << phase;
            inert += ExpectedNext(event, phase) == -1 ? 1 : 0;
        }
    EXPECT_EQ(inert, 9 * 42 - static_cast<int>(kMoves.size()));
}

TEST(PhaseTable, EndingTheTurnAtTheStartSkipsTheDraws)
{
    EXPECT_EQ(vk::NextPhase(PhaseEvent::EindeBeurt, 0), 39);
    for (int phase : {3, 4, 9, 18})
        EXPECT_EQ(vk::NextPhase(PhaseEvent::EindeBeurt, phase), 27);
    for (int phase : {1, 2, 5, 10, 14, 19, 23, 27, 31, 32})
        EXPECT_EQ(vk::NextPhase(PhaseEvent::EindeBeurt, phase), -1);
}

TEST(PhaseTable, TheNewCardActsOnlyAtTheThirdCardChoice)
{
    EXPECT_EQ(vk::NextPhase(PhaseEvent::HandCard, 0), 1);
    EXPECT_EQ(vk::NextPhase(PhaseEvent::NewCard, 0), -1);
    EXPECT_EQ(vk::NextPhase(PhaseEvent::NewCard, 32), 31);
    EXPECT_EQ(vk::NextPhase(PhaseEvent::NewCard, 38), 37);
}

TEST(PhaseTable, ChoosingADieTwiceGoesBack)
{
    const std::vector<std::pair<PhaseEvent, int>> choices{
        {PhaseEvent::Dice1, 4}, {PhaseEvent::Dice1, 18}, {PhaseEvent::Dice2, 4},
        {PhaseEvent::Dice2, 9}, {PhaseEvent::BothDice, 4}};
    for (const auto& [event, phase] : choices) {
        const int chosen = vk::NextPhase(event, phase);
        ASSERT_NE(chosen, -1);
        EXPECT_TRUE(vk::IsVehiclePickPhase(chosen));
        EXPECT_EQ(vk::NextPhase(event, chosen), phase);
    }
    // After the first die was used, both dice together can't be chosen.
    EXPECT_EQ(vk::NextPhase(PhaseEvent::BothDice, 9), -1);
    EXPECT_EQ(vk::NextPhase(PhaseEvent::BothDice, 18), -1);
}

TEST(PhaseTable, DieOfEachPhase)
{
    for (int phase = -1; phase <= 40; ++phase) {
        int expected = 0;
        if (phase == 5 || phase == 7 || phase == 8 || phase == 19 || phase == 21 || phase == 22)
            expected = 1;
        else if (phase == 10 || phase == 12 || phase == 13 || phase == 14 || phase == 16 || phase == 17)
            expected = 2;
        else if (phase == 23 || phase == 25 || phase == 26)
            expected = 3;
        EXPECT_EQ(vk::PhaseDie(phase), expected) << "phase " << phase;
    }
}

TEST(PhaseTable, PickPhasesAndWhatFollowsThem)
{
    const std::vector<int> picks{5, 10, 14, 19, 23};
    for (int phase = -1; phase <= 40; ++phase) {
        const bool pick = std::find(picks.begin(), picks.end(), phase) != picks.end();
        const bool camp = std::find(picks.begin(), picks.end(), phase - 2) != picks.end();
        const bool field = std::find(picks.begin(), picks.end(), phase - 3) != picks.end();
        EXPECT_EQ(vk::IsVehiclePickPhase(phase), pick) << phase;
        EXPECT_EQ(vk::IsCampVehiclePhase(phase), camp) << phase;
        EXPECT_EQ(vk::IsFieldVehiclePhase(phase), field) << phase;
    }
    // A picked vehicle plays with the die of its pick.
    for (int pick : picks) {
        EXPECT_EQ(vk::PhaseDie(pick + 2), vk::PhaseDie(pick));
        EXPECT_EQ(vk::PhaseDie(pick + 3), vk::PhaseDie(pick));
    }
}

PhaseContext Context(int dice1, int dice2, int hqCount = 0, int campCompanies = 15)
{
    PhaseContext context;
    context.Dice1 = dice1;
    context.Dice2 = dice2;
    context.HQCount = hqCount;
    context.CampCompanies = campCompanies;
    return context;
}

TEST(CampOpen, OneDieNeedsASixOnThatDie)
{
    for (int phase : {5, 19}) {
        EXPECT_TRUE(vk::CampOpen(phase, Context(6, 1)));
        EXPECT_FALSE(vk::CampOpen(phase, Context(1, 6)));
    }
    for (int phase : {10, 14}) {
        EXPECT_TRUE(vk::CampOpen(phase, Context(1, 6)));
        EXPECT_FALSE(vk::CampOpen(phase, Context(6, 1)));
    }
}

TEST(CampOpen, BothDiceNeedASixOrASumOfSix)
{
    EXPECT_TRUE(vk::CampOpen(23, Context(6, 3)));
    EXPECT_TRUE(vk::CampOpen(23, Context(2, 6)));
    EXPECT_TRUE(vk::CampOpen(23, Context(6, 6)));
    for (int d1 = 1; d1 <= 5; ++d1)
        EXPECT_TRUE(vk::CampOpen(23, Context(d1, 6 - d1)));
    EXPECT_FALSE(vk::CampOpen(23, Context(5, 2)));
    EXPECT_FALSE(vk::CampOpen(23, Context(1, 1)));
}

TEST(CampOpen, FullHQOrEmptyCampCloseIt)
{
    EXPECT_TRUE(vk::CampOpen(5, Context(6, 1, 2, 1)));
    EXPECT_FALSE(vk::CampOpen(5, Context(6, 1, 3, 15)));
    EXPECT_FALSE(vk::CampOpen(5, Context(6, 1, 0, 0)));
    EXPECT_FALSE(vk::CampOpen(23, Context(3, 3, 3, 15)));
    EXPECT_FALSE(vk::CampOpen(23, Context(3, 3, 0, 0)));
    // A phase without a die opens nothing.
    EXPECT_FALSE(vk::CampOpen(4, Context(6, 6)));
    EXPECT_FALSE(vk::CampOpen(9, Context(6, 6)));
}

} // namespace
