#include "board/BoardState.h"
#include "board/BoardView.h"

namespace vk {

void ResetNewGame(BoardState& state)
{
    const int localSide = state.LocalSide;
    const int width = state.BoardWidth;
    const int height = state.BoardHeight;
    state = BoardState{};
    state.LocalSide = localSide;
    state.BoardWidth = width;
    state.BoardHeight = height;
    state.BoardSide = 1;
    ResetArmies(state);
}

void ResetArmies(BoardState& state)
{
    const BoardView view = ViewOf(state);
    for (int side = 1; side <= 2; ++side) {
        state.ReserveCompanies(side) = 10;
        state.CampCompanies(side) = 15;
        state.PrisonCompanies(side) = 0;
        for (int slot = 0; slot < kVehicleSlots; ++slot) {
            const bool jeep = slot == kJeepSlot;
            state.VehiclePos(side, slot) = jeep ? IslandField(side) : CampField(side);
            state.VehicleDir(side, slot) = StartingHeading(side, slot);
            state.VehicleCompanies(side, slot) = 0;
            state.VehicleTag(side, slot) = StartingTag(side, slot);
            const PlacedBox box = jeep ? IslandBox(view, side) : CampPlaceBox(view, side, slot);
            state.VehiclePicture(side, slot) = Picture{box.Left, box.Top, box.Width, box.Height, true, false, ""};
        }
        for (int mine = 0; mine < kMinesPerArmy; ++mine) {
            state.MinePos(side, mine) = CampField(side);
            const PlacedBox own = StoredMineBoxOnRedraw(view, side, mine);
            state.MinePicture(side, mine) =
                Picture{own.Left, own.Top, own.Width, own.Height, true, false, StoredMineImage(side)};
            const PlacedBox captured = CapturedMineBoxOnRedraw(view, side, mine);
            state.CapturedMinePicture(side, mine) = Picture{
                captured.Left, captured.Top, captured.Width, captured.Height, false, false,
                StoredMineImage(OtherSide(side))};
        }
        state.FlagReserve(side) = kFlagsPerArmy;
        state.FlagCarried(side) = 0;
        state.FlagHome(side) = 0;
    }
}

} // namespace vk
