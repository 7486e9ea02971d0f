#include "shell/UserNameFilter.h"

#include <gtest/gtest.h>

namespace {

using vk::UserNameKey;

// The rows of the name box's table, as the design lists them.
struct Row {
    int from;
    int to;
    UserNameKey effect;
};

constexpr Row Table[] = {
    {0, 7, UserNameKey::Refused},     {10, 12, UserNameKey::Refused},   {14, 26, UserNameKey::Refused},
    {28, 31, UserNameKey::Refused},   {8, 8, UserNameKey::PassedOn},    {9, 9, UserNameKey::PassedOn},
    {27, 27, UserNameKey::PassedOn},  {13, 13, UserNameKey::Enter},     {32, 40, UserNameKey::Accepted},
    {41, 44, UserNameKey::Refused},   {47, 64, UserNameKey::Refused},   {91, 96, UserNameKey::Refused},
    {123, 255, UserNameKey::Refused}, {45, 46, UserNameKey::Accepted},  {65, 90, UserNameKey::Accepted},
    {97, 122, UserNameKey::Accepted},
};

TEST(UserNameFilter, EveryCodeFrom0To255)
{
    int covered[256] = {};
    for (const Row& row : Table) {
        for (int code = row.from; code <= row.to; ++code) {
            ++covered[code];
            EXPECT_EQ(vk::ClassifyUserNameKey(code), row.effect) << "code " << code;
        }
    }
    for (int code = 0; code <= 255; ++code)
        EXPECT_EQ(covered[code], 1) << "the table names code " << code << " once";
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
