#pragma once

#include "shell/RunTimeFault.h"

#include <string>
#include <string_view>

namespace vk {

// A value read from a message or a saved game that is not a whole number of
// 16 bits: the conversion to a number fails (type mismatch or overflow).
class ProfileValueError : public RunTimeFault {
public:
    using RunTimeFault::RunTimeFault;
};

// The number in a value: blanks around it, an optional sign and decimal
// digits, within -32768..32767. Anything else raises ProfileValueError
// naming the key.
int ProfileInt(std::string_view text, std::string_view key);

// An indexed key: the word and the last two digits of n + 100, so "VEH00",
// "POS04", "CARD32".
std::string IndexedKey(std::string_view word, int n);

} // namespace vk
