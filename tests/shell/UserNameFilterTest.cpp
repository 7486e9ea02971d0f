#include "shell/UserNameFilter.h"

#include <gtest/gtest.h>

namespace {

using vk::UserNameKey;

// The table of the name box, typed by ranges of character codes.
UserNameKey Expected(int code)
{
    if (code == 8 || code == 9 || code == 27)
        return UserNameKey::PassedOn;
    if (code == 13)
        return UserNameKey::Enter;
    if (code >= 32 && code <= 40)
        return UserNameKey::Accepted;
    if (code == 45 || code == 46)
        return UserNameKey::Accepted;
    if ((code >= 65 && code <= 90) || (code >= 97 && code <= 122))
        return UserNameKey::Accepted;
    // 0-7, 10-12, 14-26, 28-31, 41-44, 47-64, 91-96, 123-255
    return UserNameKey::Refused;
}

TEST(UserNameFilter, EveryCodeFrom0To255)
{
    for (int code = 0; code <= 255; ++code)
        EXPECT_EQ(vk::ClassifyUserNameKey(code), Expected(code)) << "code " << code;
}

TEST(UserNameFilter, NamedExamples)
{
    EXPECT_EQ(vk::ClassifyUserNameKey('"'), UserNameKey::Accepted);
    EXPECT_EQ(vk::ClassifyUserNameKey(' '), UserNameKey::Accepted);
    EXPECT_EQ(vk::ClassifyUserNameKey('('), UserNameKey::Accepted);
    EXPECT_EQ(vk::ClassifyUserNameKey(')'), UserNameKey::Refused);
    EXPECT_EQ(vk::ClassifyUserNameKey('0'), UserNameKey::Refused);
    EXPECT_EQ(vk::ClassifyUserNameKey('9'), UserNameKey::Refused);
    EXPECT_EQ(vk::ClassifyUserNameKey('/'), UserNameKey::Refused);
    EXPECT_EQ(vk::ClassifyUserNameKey('_'), UserNameKey::Refused);
    EXPECT_EQ(vk::ClassifyUserNameKey(0xE9), UserNameKey::Refused);
}

} // namespace
