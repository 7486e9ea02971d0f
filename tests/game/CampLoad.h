#pragma once

#include "board/BoardState.h"
#include "board/VehicleTag.h"

#include <gtest/gtest.h>

namespace vk::test {

// The slow clicks on an empty camp vehicle: the first gives 1 company from the camp;
// each later one adds a company (back to 1 past the vehicle's capacity or the
// camp's companies), and a commando with a mine free in the store alternates
// between loading that mine and adding a company. The tag is rebuilt with
// the loading heading, o for army 1 and w for army 2.
inline void CampLoadClicks(vk::BoardState& state, int side, int slot, int clicks)
{
    const int camp = vk::CampField(side);
    ASSERT_EQ(state.VehiclePos(side, slot), camp);
    // A vehicle is loaded from empty: entering the camp unloads it, and a
    // cancelled pick gives its companies back.
    ASSERT_EQ(state.VehicleCompanies(side, slot), 0);
    int mineIndex = -1;
    for (int mine = 0; mine < vk::kMinesPerArmy && mineIndex < 0; ++mine)
        if (state.MinePos(side, mine) == camp)
            mineIndex = mine;
    int maxCompanies = slot == 0 ? 5 : slot <= 2 ? 4 : slot <= 5 ? 3 : 2;
    if (state.CampCompanies(side) < maxCompanies)
        maxCompanies = state.CampCompanies(side);
    const bool canCarryMine = vk::IsCommandoSlot(slot);
    bool mineAboard = false;

    int& companies = state.VehicleCompanies(side, slot);
    companies = 1;
    state.CampCompanies(side) -= 1;
    const auto addCompany = [&] {
        companies += 1;
        if (companies > maxCompanies) {
            companies = 1;
            state.CampCompanies(side) += maxCompanies - 1;
        } else {
            state.CampCompanies(side) -= 1;
        }
    };
    for (int click = 2; click <= clicks; ++click) {
        if (!canCarryMine || mineIndex < 0) {
            addCompany();
        } else if (!mineAboard) {
            mineAboard = true;
            state.MinePos(side, mineIndex) = -slot;
        } else {
            mineAboard = false;
            state.MinePos(side, mineIndex) = camp;
            addCompany();
        }
    }
    state.VehicleTag(side, slot) = vk::MakeVehicleTag(slot, side, companies, mineAboard ? 1 : 0, side == 1 ? 1 : 3);
}

} // namespace vk::test
