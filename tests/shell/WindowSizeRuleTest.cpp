#include "ui/WindowSizeRule.h"

#include <gtest/gtest.h>

namespace {

using vk::ApplyWindowSizeRule;
using vk::WindowShowState;

TEST(WindowSizeRule, MaximisedOnExactlyTheBoundsPasses)
{
    EXPECT_FALSE(ApplyWindowSizeRule(WindowShowState::Maximised, 25545, 13800, 25545, 13800).screenTooSmall);
}

TEST(WindowSizeRule, MaximisedOneTwipTooNarrowOrTooLowFails)
{
    EXPECT_TRUE(ApplyWindowSizeRule(WindowShowState::Maximised, 25544, 13800, 25545, 13800).screenTooSmall);
    EXPECT_TRUE(ApplyWindowSizeRule(WindowShowState::Maximised, 25545, 13799, 25545, 13800).screenTooSmall);
}

TEST(WindowSizeRule, MaximisedTestAppliesAlsoDuringTheSplash)
{
    EXPECT_TRUE(ApplyWindowSizeRule(WindowShowState::Maximised, 20000, 12000, 0, 0).screenTooSmall);
}

TEST(WindowSizeRule, NormalWindowSnapsBackToTheMinimum)
{
    const auto verdict = ApplyWindowSizeRule(WindowShowState::Normal, 20000, 9000, 25545, 13800);
    EXPECT_TRUE(verdict.resize);
    EXPECT_EQ(verdict.width, 25545);
    EXPECT_EQ(verdict.height, 13800);
}

TEST(WindowSizeRule, LargerNormalWindowIsLeftAlone)
{
    const auto verdict = ApplyWindowSizeRule(WindowShowState::Normal, 30000, 15000, 25545, 13800);
    EXPECT_FALSE(verdict.resize);
    EXPECT_EQ(verdict.width, 30000);
    EXPECT_EQ(verdict.height, 15000);
}

TEST(WindowSizeRule, DuringTheSplashAnySizeSnapsToTheSplashSize)
{
    for (int width : {1000, 11875, 30000}) {
        const auto verdict = ApplyWindowSizeRule(WindowShowState::Normal, width, 20000, 0, 0);
        EXPECT_EQ(verdict.width, 11875);
        EXPECT_EQ(verdict.height, 6310);
    }
}

TEST(WindowSizeRule, MinWidthAndMinHeightAreSwitchesEach)
{
    const auto verdict = ApplyWindowSizeRule(WindowShowState::Normal, 1000, 1000, 25545, 0);
    EXPECT_EQ(verdict.width, 25545);
    EXPECT_EQ(verdict.height, 6310);
}

TEST(WindowSizeRule, MinimisedDoesNothing)
{
    const auto verdict = ApplyWindowSizeRule(WindowShowState::Minimised, 10, 10, 25545, 13800);
    EXPECT_FALSE(verdict.resize);
    EXPECT_FALSE(verdict.screenTooSmall);
}

} // namespace
