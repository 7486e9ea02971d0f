#pragma once

#include <string>
#include <vector>

namespace vk::art {

// One vehicle picture: what it shows and its file name (the tag).
struct VehicleLook {
  int slot = 0;
  int side = 1;
  int companies = 0;
  int mark = 0;  // -1: the tag has no mark digit at all (see below)
  int heading = 0;
  std::string tag;
};

// The lowest company count a picture is drawn for. A vehicle that left its
// camp empty and is hit goes from 0 to -1, and every further hit takes one
// more, without a floor; five hits on an empty vehicle is taken as the most a
// game will see.
constexpr int kLowestCompanies = -5;

// The highest count a slot can show: its capacity, and 3 prisoners for the jeep.
int HighestCompanies(int slot);
// The highest mark digit of a slot: 1 for infantry (flag) and commando (mine),
// 2 for a genie (own or enemy mine), 0 for the others.
int HighestMark(int slot);
// The lowest count of a slot: kLowestCompanies, but 0 for the jeep, which a
// hit always destroys.
int LowestCompanies(int slot);

// Camouflage rebuilds the tag of a vehicle from the left part up to the
// companies digit, the new count and the last two characters of the old tag,
// so infantry, commando and genie can end up with a tag without a mark digit,
// such as "infanterie_1_3_o". Those names get a picture too (no mark shown).
std::string TagWithoutMark(int slot, int side, int companies, int heading);

// Every picture a tag can name: both sides, all reachable counts and marks,
// the four headings; one entry per distinct tag (slots of one type share them).
std::vector<VehicleLook> AllVehicleLooks();

}  // namespace vk::art
