#include "shell/UserNameFilter.h"

namespace vk {

UserNameKey ClassifyUserNameKey(int code)
{
    if (code == 8 || code == 9 || code == 27)
        return UserNameKey::PassedOn;
    if (code == 13)
        return UserNameKey::Enter;
    // Blank ! " # $ % & ' and the opening parenthesis.
    if (code >= 32 && code <= 40)
        return UserNameKey::Accepted;
    // Hyphen and full stop.
    if (code == 45 || code == 46)
        return UserNameKey::Accepted;
    if ((code >= 65 && code <= 90) || (code >= 97 && code <= 122))
        return UserNameKey::Accepted;
    return UserNameKey::Refused;
}

} // namespace vk
