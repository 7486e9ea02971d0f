#pragma once

// vk::BoardState: the whole mutable state of the board and the two armies, plus the
// view it is drawn in and the verdict of the last judged move.
//
// - BoardCell(field), HQCount(side), HQPlaceFree(side, place): what stands on the board.
// - Per vehicle (side 1 or 2, slot 0..10): VehiclePos, VehicleDir, VehicleCompanies, VehicleTag,
//   and VehiclePicture (where its picture stands in the current view, or in Stock).
// - Per army: ReserveCompanies, CampCompanies, PrisonCompanies, FlagReserve, FlagCarried,
//   FlagHome, Brandstof, Tsetse; MinePos(side, mine 0..4) with MinePicture (controls Mijn_1 /
//   Mijn_2) and CapturedMinePicture (Mijn_1_2 / Mijn_2_1: the control in the camp of `side` that
//   shows mine `mine` of the other army once captured).
// - Verdict: the MoveVerdict that IsLegalMove fills and ExecuteMove reads; PendingDraws.
// - BoardSide, LocalSide, BoardWidth, BoardHeight: the view.
//
// Every accessor checks its indices and throws vk::RunTimeFault outside the table.
// Sides are 1 and 2 (the array index is side - 1). All numbers are plain ints: the
// values stay inside the 16-bit ranges of the saved game.

#include "board/BoardTables.h"
#include "board/VehicleTag.h"

#include <array>
#include <string>

namespace vk {

inline constexpr int kMinesPerArmy = 5;
inline constexpr int kHQPlaces = 3;
inline constexpr int kCompaniesPerArmy = 25;
inline constexpr int kFlagsPerArmy = 5;

// BoardCell value of a mine: +12 army 1, -12 army 2.
inline constexpr int kMineCell = 12;

// The board control Speelveld after start-up, in twips: the board picture fills
// it, and BoardWidth and BoardHeight, which every mirrored position uses, are
// read from it. The splash shows in it at its smaller size first.
inline constexpr int kBoardWidth = 25300;
inline constexpr int kBoardHeight = 13210;
inline constexpr int kSplashWidth = 11630;
inline constexpr int kSplashHeight = 5720;

// The results of IsLegalMove, all reset at its start.
struct MoveVerdict {
    bool Legal = false;
    bool ShootAllowed = false;   // the destination holds an enemy vehicle that may be shot
    int ShootTarget = 0;         // the BoardCell value of that vehicle
    bool MinePickup = false;     // a genie takes the mine on the destination
    bool FlagLoad = false;       // infantry may load a flag on this move
    bool CompassCrossed = false; // the last step crosses a forward post of the mover
    int Heading = 0;             // heading after the move, 0 n, 1 o, 2 z, 3 w
    bool operator==(const MoveVerdict&) const = default;
};

// Where a picture control stands: left, top, size in twips in the current view.
// InStock: the vehicle's container is the Stock frame (a destroyed vehicle of the
// local player) instead of the board. Image: the picture file of a mine control;
// a vehicle's picture is always its tag + ".gif", so it stays empty there.
struct Picture {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
    bool Visible = true;
    bool InStock = false;
    std::string Image;
    bool operator==(const Picture&) const = default;
};

struct BoardState {
    // --- checked access ---
    int& BoardCell(int field);
    int BoardCell(int field) const;
    // 1 army 1, 2 army 2, 0 empty, from the sign of BoardCell (mines count too).
    int CellOwner(int field) const;
    int& HQCount(int side);
    int HQCount(int side) const;
    bool& HQPlaceFree(int side, int place);
    bool HQPlaceFree(int side, int place) const;

    int& VehiclePos(int side, int slot);
    int VehiclePos(int side, int slot) const;
    int& VehicleDir(int side, int slot);
    int VehicleDir(int side, int slot) const;
    int& VehicleCompanies(int side, int slot);
    int VehicleCompanies(int side, int slot) const;
    std::string& VehicleTag(int side, int slot);
    const std::string& VehicleTag(int side, int slot) const;
    Picture& VehiclePicture(int side, int slot);
    const Picture& VehiclePicture(int side, int slot) const;

    int& ReserveCompanies(int side);
    int ReserveCompanies(int side) const;
    int& CampCompanies(int side);
    int CampCompanies(int side) const;
    int& PrisonCompanies(int side);
    int PrisonCompanies(int side) const;

    int& MinePos(int side, int mine);
    int MinePos(int side, int mine) const;
    Picture& MinePicture(int side, int mine);
    const Picture& MinePicture(int side, int mine) const;
    Picture& CapturedMinePicture(int side, int mine);
    const Picture& CapturedMinePicture(int side, int mine) const;

    int& FlagReserve(int side);
    int FlagReserve(int side) const;
    int& FlagCarried(int side);
    int FlagCarried(int side) const;
    int& FlagHome(int side);
    int FlagHome(int side) const;

    // Fuel block (BRANDSTOF) and tse-tse count (TSETSE) of each army; changed by the
    // Radio Yambo cards. TsetseVeh: the slot under the tse-tse.
    int& Brandstof(int side);
    int Brandstof(int side) const;
    int& Tsetse(int side);
    int Tsetse(int side) const;

    // Companies of an army on the board: reserve + camp + prison + all its vehicles.
    int CompanySum(int side) const;

    bool operator==(const BoardState&) const = default;

    // --- plain data (index [side - 1] or [slot][side - 1]) ---
    std::array<int, 113> cells{};                              // [field], 0 unused
    std::array<int, 2> hqCount{};
    std::array<std::array<bool, 2>, kHQPlaces> hqPlaceFree{{{true, true}, {true, true}, {true, true}}};
    std::array<std::array<int, 2>, kVehicleSlots> vehiclePos{};
    std::array<std::array<int, 2>, kVehicleSlots> vehicleDir{};
    std::array<std::array<int, 2>, kVehicleSlots> vehicleCompanies{};
    std::array<std::array<std::string, 2>, kVehicleSlots> vehicleTag{};
    std::array<std::array<Picture, 2>, kVehicleSlots> vehiclePicture{};
    std::array<int, 2> reserveCompanies{};
    std::array<int, 2> campCompanies{};
    std::array<int, 2> prisonCompanies{};
    std::array<std::array<int, 2>, kMinesPerArmy> minePos{};
    std::array<std::array<Picture, 2>, kMinesPerArmy> minePicture{};
    std::array<std::array<Picture, 2>, kMinesPerArmy> capturedMinePicture{};
    std::array<int, 2> flagReserve{};
    std::array<int, 2> flagCarried{};
    std::array<int, 2> flagHome{};
    std::array<int, 2> brandstof{};
    std::array<int, 2> tsetse{};
    int TsetseVeh = 0;

    MoveVerdict Verdict;
    // Compass cards earned this turn (cleared at every turn start), and the
    // draws earned and not yet made (kept from turn to turn, not saved).
    int PendingDraws = 0;
    int CompassOwed = 0;

    int BoardSide = 1;
    int LocalSide = 1;
    int BoardWidth = kBoardWidth;
    int BoardHeight = kBoardHeight;
};

// The starting position of a new game (ResetNewGame): empty board, free HQ places,
// BoardSide 1, then ResetArmies. LocalSide, BoardWidth and BoardHeight are kept;
// Brandstof, Tsetse, Verdict, PendingDraws and CompassOwed are cleared.
void ResetNewGame(BoardState& state);

// The armies at their start, placed in the current view: reserve 10, camp 15, prison 0,
// all vehicles in their camp (jeeps on their islands) with companies 0 and their starting
// headings and tags, mines in their own stores (captured-mine controls hidden), flags 5, 0, 0.
void ResetArmies(BoardState& state);

// The vehicle standing on a road square: side and slot, from the BoardCell value
// (+1..+11 army 1, -1..-11 army 2). Returns false for an empty cell or a mine.
bool VehicleAtCell(const BoardState& state, int field, int& side, int& slot);

} // namespace vk
