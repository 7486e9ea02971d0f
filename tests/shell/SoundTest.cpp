#include "shell/RunTimeFault.h"
#include "ui/Sound.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

void EnsureApp()
{
    static int argc = 1;
    static char name[] = "shell_tests";
    static char* argv[] = {name, nullptr};
    if (!QCoreApplication::instance())
        new QCoreApplication(argc, argv);
}

TEST(Sound, IndexOutsideZeroToTwoIsAFault)
{
    EnsureApp();
    vk::SoundControl sound(nullptr);
    vk::SoundState state;
    EXPECT_THROW(vk::Speel(sound, state, 3), vk::RunTimeFault);
    EXPECT_THROW(vk::Speel(sound, state, -1), vk::RunTimeFault);
    EXPECT_NO_THROW(vk::Speel(sound, state, 2));
}

TEST(Sound, FailedStartLoadsNothingAndPlayingStaysSilent)
{
    EnsureApp();
    vk::SoundControl sound(nullptr);
    vk::SoundState state;
    QTemporaryDir dir;
    vk::Init_Sound(sound, state, dir.path() + QLatin1Char('/'));
    if (sound.Start() != 1) {
        EXPECT_EQ(state.SoundHandles[0], 0);
        EXPECT_EQ(state.SoundHandles[1], 0);
        EXPECT_EQ(state.SoundHandles[2], 0);
    } else {
        // With a sound device the files are missing here: every load fails.
        EXPECT_LT(state.SoundHandles[0], 0);
        EXPECT_LT(state.SoundHandles[1], 0);
        EXPECT_LT(state.SoundHandles[2], 0);
    }
    for (int i = 0; i <= 2; ++i)
        EXPECT_NO_THROW(vk::Speel(sound, state, i));
}

TEST(Sound, MissingFileGivesANegativeHandle)
{
    EnsureApp();
    vk::SoundControl sound(nullptr);
    sound.Start();
    EXPECT_LT(sound.Load(QStringLiteral("/nonexistent/intro.wav")), 0);
}

} // namespace
