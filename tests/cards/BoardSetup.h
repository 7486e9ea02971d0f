#pragma once

// Positions the card tests start from: a new game seen by one army, and a
// vehicle put on a road square or loaded from its camp with its cell, tag and
// picture in step.

#include "board/BoardState.h"
#include "board/BoardTables.h"
#include "board/BoardView.h"
#include "board/VehicleTag.h"

#include <gtest/gtest.h>

namespace vk::test {

inline BoardState NewGame(int localSide = 1)
{
    BoardState state;
    state.LocalSide = localSide;
    ResetNewGame(state);
    return state;
}

// The BoardCell value of a vehicle.
inline int Cell(int side, int slot) { return (side == 1 ? 1 : -1) * (slot + 1); }

// Puts a vehicle on a road square with a heading; cell, tag and picture follow.
inline void PutOnRoad(BoardState& state, int side, int slot, int field, int heading)
{
    ASSERT_NE(AnchorFor(field, heading).X, -1) << "no picture place on " << field << " that way";
    state.VehiclePos(side, slot) = field;
    state.VehicleDir(side, slot) = heading;
    state.BoardCell(field) = Cell(side, slot);
    std::string& tag = state.VehicleTag(side, slot);
    tag = tag.substr(0, tag.size() - 1) + HeadingLetter(heading);
    PutPicture(state.VehiclePicture(side, slot), VehicleOnFieldBox(ViewOf(state), field, heading));
}

// Companies from the camp aboard, the tag's digit following.
inline void Load(BoardState& state, int side, int slot, int companies)
{
    state.CampCompanies(side) -= companies - state.VehicleCompanies(side, slot);
    state.VehicleCompanies(side, slot) = companies;
    state.VehicleTag(side, slot) = SetTagCompanies(state.VehicleTag(side, slot), slot, companies);
}

inline PlacedBox BoxOf(const Picture& picture)
{
    return PlacedBox{picture.Left, picture.Top, picture.Width, picture.Height};
}

} // namespace vk::test
