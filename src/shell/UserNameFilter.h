#pragma once

namespace vk {

// What a key typed into the local player's name box does. The name becomes
// part of message file names, so most characters that can't stand in a file
// name are refused, and digits too; the double quote is let through.
enum class UserNameKey {
    Refused,    // the key is swallowed
    PassedOn,   // backspace, tab, escape: the box handles them itself
    Enter,      // commits the name
    Accepted,   // taken into the text
};

UserNameKey ClassifyUserNameKey(int code);

} // namespace vk
