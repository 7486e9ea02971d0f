#include "shell/Clock.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <climits>

namespace {

struct App {
    App()
    {
        static int argc = 1;
        static char name[] = "shell_tests";
        static char* argv[] = {name, nullptr};
        if (!QCoreApplication::instance())
            new QCoreApplication(argc, argv);
    }
};

class ClockTest : public ::testing::Test {
protected:
    App app;
    void TearDown() override { vk::SetTickSource(nullptr); }
};

TEST_F(ClockTest, WaitEndsEarlyWhenTheCounterWraps)
{
    // The counter stands just below its top and wraps to its lowest value on
    // the next reading: the wait must be cut short instead of hanging.
    int readings = 0;
    vk::SetTickSource([&readings]() -> std::int32_t {
        ++readings;
        return readings == 1 ? INT_MAX - 10 : INT_MIN + 5;
    });
    QElapsedTimer real;
    real.start();
    vk::WaitMs(60000);
    EXPECT_EQ(readings, 2);
    EXPECT_LT(real.elapsed(), 5000);
}

TEST_F(ClockTest, WaitWhoseTargetLiesBeyondTheTopStillEnds)
{
    // start + ms does not fit in 32 bits; the counter can never reach it, so
    // only the wrap ends the wait.
    std::int32_t now = INT_MAX - 3;
    vk::SetTickSource([&now]() -> std::int32_t {
        const std::int32_t reading = now;
        now = now == INT_MAX ? INT_MIN : now + 1;
        return reading;
    });
    vk::WaitMs(1000);
    EXPECT_LT(now, 0);
}

TEST_F(ClockTest, WaitEndsWhenTheTargetIsReached)
{
    std::int32_t now = 1000;
    int readings = 0;
    vk::SetTickSource([&]() -> std::int32_t {
        ++readings;
        const std::int32_t reading = now;
        now += 10;
        return reading;
    });
    vk::WaitMs(vk::ScaledMs(100) == 100 ? 100 : 100);
    // Start at 1000, target 1000 + the scaled wait: readings until at or past it.
    const int expected = 1 + (vk::ScaledMs(100) + 9) / 10;
    EXPECT_EQ(readings, expected);
}

TEST_F(ClockTest, RealWaitLastsAtLeastItsTime)
{
    QElapsedTimer real;
    real.start();
    vk::WaitMs(50);
    EXPECT_GE(real.elapsed(), vk::ScaledMs(50) - 1);
}

TEST(TimeScale, ScaledDurationsNeverDropToZero)
{
    EXPECT_EQ(vk::ScaledMs(0), 0);
    EXPECT_GE(vk::ScaledMs(1), 1);
    EXPECT_GE(vk::ScaledMs(40), 1);
}

} // namespace
