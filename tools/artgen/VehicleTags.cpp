#include "VehicleTags.h"

#include "board/VehicleTag.h"

#include <set>

namespace vk::art {

int HighestCompanies(int slot) { return vk::VehicleCapacity(slot); }

int HighestMark(int slot) {
  if (vk::IsInfantrySlot(slot) || vk::IsCommandoSlot(slot)) return 1;
  if (vk::IsGenieSlot(slot)) return 2;
  return 0;
}

int LowestCompanies(int slot) { return slot == vk::kJeepSlot ? 0 : kLowestCompanies; }

std::string TagWithoutMark(int slot, int side, int companies, int heading) {
  return std::string(vk::VehicleTypeWord(slot)) + "_" + std::to_string(side) + "_" + std::to_string(companies) + "_" +
         vk::HeadingLetter(heading);
}

std::vector<VehicleLook> AllVehicleLooks() {
  std::vector<VehicleLook> looks;
  std::set<std::string> seen;
  for (int side = 1; side <= 2; ++side)
    for (int slot = 0; slot < vk::kVehicleSlots; ++slot)
      for (int companies = LowestCompanies(slot); companies <= HighestCompanies(slot); ++companies)
        for (int mark = 0; mark <= HighestMark(slot); ++mark)
          for (int heading = 0; heading < 4; ++heading) {
            VehicleLook look{slot, side, companies, mark, heading,
                             vk::MakeVehicleTag(slot, side, companies, mark, heading)};
            if (seen.insert(look.tag).second) looks.push_back(look);
          }
  for (int side = 1; side <= 2; ++side)
    for (int slot = 0; slot < vk::kVehicleSlots; ++slot) {
      if (!vk::SlotHasMark(slot)) continue;
      for (int companies = LowestCompanies(slot); companies <= HighestCompanies(slot); ++companies)
        for (int heading = 0; heading < 4; ++heading) {
          VehicleLook look{slot, side, companies, -1, heading, TagWithoutMark(slot, side, companies, heading)};
          if (seen.insert(look.tag).second) looks.push_back(look);
        }
    }
  return looks;
}

}  // namespace vk::art
