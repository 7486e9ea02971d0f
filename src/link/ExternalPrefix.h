#pragma once

#include <string>

namespace vk {

// The two-character number of a slot or a sequence: the last two characters
// of the decimal text of n + 100, so "01" for 1, "12" for 12 and "00" for
// 100. It names the settings keys of external player n ("01Folder"), the
// toss files (".d01") and the keys of the deck ("Kaart01"). The sum is a
// 16-bit integer: beyond 32767 it is an overflow fault.
std::string ExternalPrefix(int n);

// The last `count` characters of text, or all of it when it is shorter.
std::string RightText(const std::string& text, std::size_t count);

} // namespace vk
