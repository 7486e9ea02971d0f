#pragma once

#include <stdexcept>
#include <string>

namespace vk {

// The one fault type of the program: a run-time fault that nothing catches
// (a subscript out of range, an overflow, a missing file of the installation).
// The top level writes it to the run log, shows an error box and ends the
// process with a non-zero exit code.
class RunTimeFault : public std::runtime_error {
public:
    explicit RunTimeFault(const std::string& what) : std::runtime_error(what) {}
};

// Checked subscript for the fixed tables of the game: an index outside
// [low, high] raises the fault instead of reading past the table.
inline int CheckIndex(int index, int low, int high, const char* table)
{
    if (index < low || index > high)
        throw RunTimeFault(std::string("subscript out of range: ") + table + "(" + std::to_string(index) + ")");
    return index;
}

} // namespace vk
