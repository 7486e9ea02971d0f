#include "board/VehicleTag.h"

#include "shell/RunTimeFault.h"

#include <algorithm>

namespace vk {

namespace {

int CheckSlot(int slot) { return CheckIndex(slot, 0, kVehicleSlots - 1, "VehicleSlot"); }

} // namespace

const char* VehicleTypeWord(int slot)
{
    static const char* const words[kVehicleSlots] = {"tank", "kanon", "kanon", "infanterie", "infanterie",
        "infanterie", "commando", "commando", "genie", "genie", "jeep"};
    return words[CheckSlot(slot)];
}

const char* VehicleLogWord(int slot)
{
    static const char* const words[kVehicleSlots] = {"tank", "canon", "canon", "infantry", "infantry",
        "infantry", "commando", "commando", "deminer", "deminer", "jeep"};
    return words[CheckSlot(slot)];
}

int VehicleCapacity(int slot)
{
    static const int capacity[kVehicleSlots] = {5, 4, 4, 3, 3, 3, 2, 2, 2, 2, 3};
    return capacity[CheckSlot(slot)];
}

std::string HeadingLetter(int heading)
{
    switch (heading) {
    case 0: return "n";
    case 1: return "o";
    case 2: return "z";
    case 3: return "w";
    default: return "";
    }
}

int TagHeading(const std::string& tag)
{
    if (tag.empty())
        return -1;
    switch (tag.back()) {
    case 'n': return 0;
    case 'o': return 1;
    case 'z': return 2;
    case 'w': return 3;
    default: return -1;
    }
}

int CompaniesDigitPosition(int slot)
{
    // The type word, "_", the side digit, "_": the digit follows.
    return static_cast<int>(std::string(VehicleTypeWord(slot)).size()) + 4;
}

int MarkPosition(int slot)
{
    CheckSlot(slot);
    if (IsInfantrySlot(slot))
        return 16;
    if (IsCommandoSlot(slot))
        return 14;
    if (IsGenieSlot(slot))
        return 11;
    return 0;
}

std::string TagCharAt(const std::string& tag, int position)
{
    if (position < 1 || position > static_cast<int>(tag.size()))
        return "";
    return tag.substr(static_cast<std::size_t>(position - 1), 1);
}

std::string TagMarkText(const std::string& tag, int slot)
{
    const int position = MarkPosition(slot);
    return position == 0 ? std::string() : TagCharAt(tag, position);
}

int TagMarkValue(const std::string& tag, int slot)
{
    const std::string mark = TagMarkText(tag, slot);
    if (mark.size() == 1 && mark[0] >= '0' && mark[0] <= '9')
        return mark[0] - '0';
    return 0;
}

std::string MakeVehicleTag(int slot, int side, int companies, int mark, int heading)
{
    std::string tag = std::string(VehicleTypeWord(slot)) + "_" + std::to_string(side) + "_" +
                      std::to_string(companies) + "_";
    if (SlotHasMark(slot))
        tag += std::to_string(mark) + "_";
    return tag + HeadingLetter(heading);
}

std::string SetTagCompanies(const std::string& tag, int slot, int companies)
{
    const std::size_t left = static_cast<std::size_t>(CompaniesDigitPosition(slot) - 1);
    const std::size_t right = SlotHasMark(slot) ? 4 : 2;
    return tag.substr(0, std::min(left, tag.size())) + std::to_string(companies) +
           (tag.size() > right ? tag.substr(tag.size() - right) : tag);
}

int StartingHeading(int side, int slot)
{
    CheckSlot(slot);
    CheckIndex(side, 1, 2, "Side");
    if (side == 1)
        return slot == kJeepSlot ? 3 : 1;
    switch (slot) {
    case 0: case 1: case 2: case 6: case 7: return 3;
    default: return 1;
    }
}

std::string StartingTag(int side, int slot)
{
    return MakeVehicleTag(slot, CheckIndex(side, 1, 2, "Side"), 0, 0, StartingHeading(side, slot));
}

std::string DestroyedTag(int side, int slot)
{
    return MakeVehicleTag(slot, CheckIndex(side, 1, 2, "Side"), 0, 0, 1);
}

} // namespace vk
