#pragma once

#include <QString>

namespace vk::art {

// Reads the pictures back from a program folder and writes overview sheets
// into `sheetFolder`: vehicles.png (every vehicle picture of both folders,
// enlarged), cards.png (all compass cards, the back, dice, mines, companies)
// and board.png (the board of army 1 with both armies in their starting
// places, as the main window shows it before a game). Returns false when a
// picture is missing or a sheet can't be written.
bool WriteContactSheets(const QString& programFolder, const QString& sheetFolder, int scale);

}  // namespace vk::art
