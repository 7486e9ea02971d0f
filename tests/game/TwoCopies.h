#pragma once

// Two copies of one game, each seen from its own army, for the tests of the
// replay: where the two positions differ, and how the receiving copy is put
// back in step with the sender's after a difference that the rules allow.

#include "board/BoardState.h"
#include "game/SavedGame.h"

#include <sstream>
#include <string>

namespace vk::test {

// Where a picture of one copy differs from the other's: everything but
// InStock, which tells whose losses they are.
inline bool SamePlace(const Picture& a, const Picture& b)
{
    return a.Left == b.Left && a.Top == b.Top && a.Width == b.Width && a.Height == b.Height &&
           a.Visible == b.Visible && a.Image == b.Image;
}

// The first difference of the game parts of two copies, or an empty text.
// Left out: the verdict of the last judged move, the compass draws earned,
// the local side and the container of destroyed vehicles (Stock or board).
inline std::string GameDifference(const BoardState& a, const BoardState& b)
{
    std::ostringstream out;
    for (int field = 1; field <= kLastRoadField; ++field)
        if (a.BoardCell(field) != b.BoardCell(field))
            out << "BoardCell(" << field << ") " << a.BoardCell(field) << " / " << b.BoardCell(field) << "; ";
    for (int side = 1; side <= 2; ++side) {
        for (int slot = 0; slot < kVehicleSlots; ++slot) {
            if (a.VehiclePos(side, slot) != b.VehiclePos(side, slot) ||
                a.VehicleDir(side, slot) != b.VehicleDir(side, slot) ||
                a.VehicleCompanies(side, slot) != b.VehicleCompanies(side, slot) ||
                a.VehicleTag(side, slot) != b.VehicleTag(side, slot))
                out << "vehicle " << side << "/" << slot << ": " << a.VehicleTag(side, slot) << " at "
                    << a.VehiclePos(side, slot) << " / " << b.VehicleTag(side, slot) << " at "
                    << b.VehiclePos(side, slot) << "; ";
            if (!SamePlace(a.VehiclePicture(side, slot), b.VehiclePicture(side, slot)))
                out << "picture of vehicle " << side << "/" << slot << "; ";
        }
        for (int mine = 0; mine < kMinesPerArmy; ++mine) {
            if (a.MinePos(side, mine) != b.MinePos(side, mine))
                out << "mine " << side << "/" << mine << " " << a.MinePos(side, mine) << " / "
                    << b.MinePos(side, mine) << "; ";
            if (a.MinePicture(side, mine) != b.MinePicture(side, mine) ||
                a.CapturedMinePicture(side, mine) != b.CapturedMinePicture(side, mine))
                out << "picture of mine " << side << "/" << mine << "; ";
        }
        if (a.HQCount(side) != b.HQCount(side))
            out << "HQCount(" << side << "); ";
        for (int place = 0; place < kHQPlaces; ++place)
            if (a.HQPlaceFree(side, place) != b.HQPlaceFree(side, place))
                out << "HQPlaceFree(" << side << ", " << place << "); ";
        if (a.ReserveCompanies(side) != b.ReserveCompanies(side) || a.CampCompanies(side) != b.CampCompanies(side) ||
            a.PrisonCompanies(side) != b.PrisonCompanies(side))
            out << "companies of army " << side << "; ";
        if (a.FlagReserve(side) != b.FlagReserve(side) || a.FlagCarried(side) != b.FlagCarried(side) ||
            a.FlagHome(side) != b.FlagHome(side))
            out << "flags of army " << side << "; ";
        if (a.Brandstof(side) != b.Brandstof(side) || a.Tsetse(side) != b.Tsetse(side))
            out << "fuel or tse-tse of army " << side << "; ";
    }
    return out.str();
}

// The saved-game text of a copy as the copy of army `side` would write it.
inline std::string TextSeenBy(BoardState state, int side)
{
    state.LocalSide = side;
    GameProgress progress;
    progress.ExternalSide = OtherSide(side);
    return SavedGameText(state, progress);
}

// Whether every destroyed vehicle of the copy's own army, and only those,
// stands in Stock.
inline bool OwnLossesInStock(const BoardState& state)
{
    for (int side = 1; side <= 2; ++side)
        for (int slot = 0; slot < kVehicleSlots; ++slot) {
            const bool own = side == state.LocalSide && state.VehiclePos(side, slot) == kOutOfGame;
            if (state.VehiclePicture(side, slot).InStock != own)
                return false;
        }
    return true;
}

// The receiver takes the sender's position, keeping what is its own: its
// verdict, its draws, its side and the container of its losses.
inline void Resync(BoardState& receiver, const BoardState& sender)
{
    BoardState copy = sender;
    copy.Verdict = receiver.Verdict;
    copy.PendingDraws = receiver.PendingDraws;
    copy.LocalSide = receiver.LocalSide;
    for (int side = 1; side <= 2; ++side)
        for (int slot = 0; slot < kVehicleSlots; ++slot)
            copy.VehiclePicture(side, slot).InStock =
                side == copy.LocalSide && copy.VehiclePos(side, slot) == kOutOfGame;
    receiver = copy;
}

} // namespace vk::test
