#pragma once

// The player initiation of the start-up: this PC's identity, the local
// player's name, the list of external players with their shared folders
// (which it empties), and at last the poll timer.

namespace vk {

class Hoofdvenster;

void RunPlayerInitiation(Hoofdvenster& window);

// LocalID from the network adapters, or the fallback of twelve zeros while the
// dice table is still empty; saved in the settings.
void BuildLocalId(const Hoofdvenster& window);

// Fills LocalID from the adapter with a default gateway; empty on any failure.
void Haal_WMI_Info();

} // namespace vk
