#pragma once

// The vehicle types by slot (type word, log word, capacity) and the tag text of a
// vehicle: `<type>_<side>_<companies>_<mark>_<heading>` for slots 3 to 9 and
// `<type>_<side>_<companies>_<heading>` for the others. The tag is the name of the
// vehicle's picture and the store of its mark. Positions in a tag count from 1.

#include <string>

namespace vk {

inline constexpr int kVehicleSlots = 11;   // slots 0..10
inline constexpr int kTankSlot = 0;
inline constexpr int kJeepSlot = 10;

constexpr bool IsInfantrySlot(int slot) { return slot >= 3 && slot <= 5; }
constexpr bool IsCommandoSlot(int slot) { return slot == 6 || slot == 7; }
constexpr bool IsGenieSlot(int slot) { return slot == 8 || slot == 9; }
// Slots 3 to 9 carry a mark digit in their tag.
constexpr bool SlotHasMark(int slot) { return slot >= 3 && slot <= 9; }

// "tank", "kanon", "infanterie", "commando", "genie", "jeep".
const char* VehicleTypeWord(int slot);
// "tank", "canon", "infantry", "commando", "deminer", "jeep" (run log).
const char* VehicleLogWord(int slot);
// 5, 4, 3, 2, 2 companies; the jeep up to 3 prisoners.
int VehicleCapacity(int slot);

// "n", "o", "z", "w" for 0..3; an empty text for any other value.
std::string HeadingLetter(int heading);
// 0..3 from the letter that ends the tag; -1 if it ends in anything else.
int TagHeading(const std::string& tag);

// Position of the companies digit: 8 tank and jeep, 9 kanon and genie, 14 infanterie, 12 commando.
int CompaniesDigitPosition(int slot);
// Position of the mark digit: 16 infanterie (flag), 14 commando (mine), 11 genie (1 own mine,
// 2 enemy mine); 0 for slots without a mark.
int MarkPosition(int slot);

// The one character at a position of the tag (counted from 1), empty past its end.
std::string TagCharAt(const std::string& tag, int position);
// The mark character of the tag at MarkPosition(slot); empty for slots without a mark.
std::string TagMarkText(const std::string& tag, int slot);
// The numeric value of that character, 0 when it is no digit.
int TagMarkValue(const std::string& tag, int slot);

// The type word, "_", side, "_", companies, "_"; for slots 3 to 9 also mark and "_";
// then the heading letter for 0..3. A heading outside 0..3 leaves the text ending in "_".
std::string MakeVehicleTag(int slot, int side, int companies, int mark, int heading);

// A new companies number: the text before the digit, the number, and the right
// part of fixed width ("_o", or "_0_o" where a mark stands). The fixed width
// keeps heading and mark in their places also when the old or new number has
// two characters, as it has below zero.
std::string SetTagCompanies(const std::string& tag, int slot, int companies);

// Starting tags: army 1 heading o (jeep w); army 2 tank, kanon, commando w, the rest o.
std::string StartingTag(int side, int slot);
// The tag of a destroyed vehicle: the starting tag, but always with the letter o.
std::string DestroyedTag(int side, int slot);
// Starting heading of a slot (table of the slots).
int StartingHeading(int side, int slot);

} // namespace vk
