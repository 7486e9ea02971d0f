#include "board/BoardView.h"

#include "board/BoardState.h"
#include "shell/RunTimeFault.h"

#include <cmath>

namespace vk {

void PutPicture(Picture& picture, const PlacedBox& box)
{
    picture.Left = box.Left;
    picture.Top = box.Top;
    picture.Width = box.Width;
    picture.Height = box.Height;
}

namespace {

int CheckSide(int side) { return CheckIndex(side, 1, 2, "Side"); }

// base + length / 2, rounded to the nearest integer and to even on .5, as the assignment
// of that sum to a 16-bit integer does.
int PlusHalfRoundedEven(int base, int length)
{
    return static_cast<int>(std::nearbyint(static_cast<double>(base) + static_cast<double>(length) / 2.0));
}

PlacedBox StoreBox(const BoardView& view, TwipPoint place, int mirrorWidth)
{
    if (view.BoardSide == 2)
        return PlacedBox{view.BoardWidth - (place.X + mirrorWidth), MirrorTop(place.Y, kMineStoreHeight, view.BoardHeight),
                         kMineStoreWidth, kMineStoreHeight};
    return PlacedBox{place.X, place.Y, kMineStoreWidth, kMineStoreHeight};
}

Picture AsPicture(const PlacedBox& box, bool visible, const std::string& image)
{
    return Picture{box.Left, box.Top, box.Width, box.Height, visible, false, image};
}

} // namespace

BoardView ViewOf(const BoardState& state) { return BoardView{state.BoardSide, state.BoardWidth, state.BoardHeight}; }

int MirrorLeft(int x, int w, int boardWidth) { return boardWidth - (x + w); }

int MirrorTop(int y, int h, int boardHeight) { return boardHeight - (y + h); }

PlacedBox PlaceInView(const BoardView& view, int x, int y, int w, int h)
{
    if (view.BoardSide == 2)
        return PlacedBox{MirrorLeft(x, w, view.BoardWidth), MirrorTop(y, h, view.BoardHeight), w, h};
    return PlacedBox{x, y, w, h};
}

PlacedBox VehicleOnFieldBox(const BoardView& view, int field, int heading)
{
    CheckIndex(field, kFirstRoadField, kLastRoadField, "VehicleField");
    const TwipPoint anchor = AnchorFor(field, heading);
    return PlaceInView(view, anchor.X, anchor.Y, PictureWidthFor(heading), PictureHeightFor(heading));
}

PlacedBox CampPlaceBox(const BoardView& view, int side, int slot)
{
    const TwipPoint place = CampPlace(side, slot);
    return PlaceInView(view, place.X, place.Y, kPictureLong, kPictureShort);
}

PlacedBox HQPlaceBox(const BoardView& view, int side, int place)
{
    const TwipPoint point = HQPlace(side, place);
    return PlaceInView(view, point.X, point.Y, kPictureLong, kPictureShort);
}

PlacedBox IslandBox(const BoardView& view, int side)
{
    const TwipPoint anchor = FieldAnchor(IslandField(CheckSide(side)), 0);
    return PlaceInView(view, anchor.X, anchor.Y, kPictureLong, kPictureShort);
}

PlacedBox DestroyedVehicleBox(int boardSide, int side, int slot)
{
    CheckIndex(slot, 0, kVehicleSlots - 1, "VehicleSlot");
    const int base = CheckSide(side) == boardSide ? 360 : 1095;
    return PlacedBox{120, slot * 480 + base, kPictureLong, kPictureShort};
}

int DestroyedVehicleRedrawShift(int boardSide, int side)
{
    const bool down = (boardSide == 2) == (CheckSide(side) == 1);
    return down ? 735 : -735;
}

PlacedBox LaidMineBox(const BoardView& view, int field)
{
    switch (MineSide(field)) {
    case 1:
    case 3: {
        const TwipPoint anchor = FieldAnchor(field, 1);
        return PlaceInView(view, anchor.X, anchor.Y, kPictureShort, kPictureLong);
    }
    case 2: {
        const TwipPoint anchor = FieldAnchor(field, 0);
        return PlaceInView(view, anchor.X, anchor.Y, kPictureLong, kPictureShort);
    }
    default:
        throw RunTimeFault("no mine can lie on field " + std::to_string(field));
    }
}

std::string LaidMineImage(int side, int field)
{
    static const char* const letters[4] = {"", "l", "u", "r"};
    const int mineSide = MineSide(field);
    if (mineSide == 0)
        throw RunTimeFault("no mine can lie on field " + std::to_string(field));
    return "mijn_" + std::to_string(CheckSide(side)) + "_" + letters[mineSide] + ".gif";
}

std::string StoredMineImage(int side) { return "mijn_" + std::to_string(CheckSide(side)) + "_top.gif"; }

PlacedBox StoredMineBoxOnRedraw(const BoardView& view, int side, int mine)
{
    return StoreBox(view, MineStore(side, mine), 220);
}

PlacedBox StoredMineBoxOnReturn(const BoardView& view, int side, int mine)
{
    return StoreBox(view, MineStore(side, mine), kMineStoreWidth);
}

PlacedBox CapturedMineBoxOnRedraw(const BoardView& view, int side, int mine)
{
    return StoreBox(view, EnemyMineStore(side, mine), 220);
}

PlacedBox CapturedMineBoxOnReturn(const BoardView& view, int side, int mine)
{
    return StoreBox(view, EnemyMineStore(side, mine), kMineStoreWidth);
}

PlacedBox FieldMarkBox(const BoardView& view, int field, int heading)
{
    const TwipPoint anchor = AnchorFor(field, heading);
    return PlaceInView(view, anchor.X, anchor.Y, PictureWidthFor(heading), PictureHeightFor(heading));
}

PlacedBox FieldMarkBoxAnyHeading(const BoardView& view, int field)
{
    if (FieldAnchorX(field, 0) != -1)
        return PlaceInView(view, FieldAnchorX(field, 0), FieldAnchorY(field, 0), kPictureLong, kPictureShort);
    return PlaceInView(view, FieldAnchorX(field, 1), FieldAnchorY(field, 1), kPictureShort, kPictureLong);
}

TwipPoint HitCentre(const BoardView& view, int field)
{
    const TwipRect hit = FieldHit(field);
    if (view.BoardSide == 2)
        return TwipPoint{PlusHalfRoundedEven(view.BoardWidth - hit.X2, hit.X2 - hit.X1),
                         PlusHalfRoundedEven(view.BoardHeight - hit.Y2, hit.Y2 - hit.Y1)};
    return TwipPoint{PlusHalfRoundedEven(hit.X1, hit.X2 - hit.X1), PlusHalfRoundedEven(hit.Y1, hit.Y2 - hit.Y1)};
}

TwipPoint FramePosition(const BoardView& view, BoardFrame frame)
{
    const bool turned = view.BoardSide == 2;
    const int w = view.BoardWidth;
    const int h = view.BoardHeight;
    switch (frame) {
    case BoardFrame::frDices: return turned ? TwipPoint{w - 15495, h - 9105} : TwipPoint{12720, 6930};
    case BoardFrame::msgBoard: return turned ? TwipPoint{w - 17635, h - 5850} : TwipPoint{7635, 5475};
    case BoardFrame::KampComp0: return turned ? TwipPoint{20550, 1570} : TwipPoint{3895, 10785};
    case BoardFrame::KampComp1: return turned ? TwipPoint{2820, 11375} : TwipPoint{21265, 1200};
    case BoardFrame::Gevang_1: return turned ? TwipPoint{w - 23320, h - 10615} : TwipPoint{21760, 10255};
    case BoardFrame::Gevang_2: return turned ? TwipPoint{w - 3450, h - 2280} : TwipPoint{1890, 1920};
    case BoardFrame::Vlagdekking_1: return turned ? TwipPoint{w - 3345, h - 9870} : TwipPoint{2935, 7750};
    case BoardFrame::Vlagdekking_2: return turned ? TwipPoint{w - 22945, h - 4855} : TwipPoint{20825, 4445};
    }
    throw RunTimeFault("unknown board frame");
}

int FieldAt(int x, int y, const BoardView& view)
{
    for (int field = 1; field <= kLastField; ++field) {
        const TwipRect hit = FieldHit(field);
        bool inside = false;
        if (view.BoardSide == 2)
            inside = view.BoardWidth - hit.X2 < x && x < view.BoardWidth - hit.X1 &&
                     view.BoardHeight - hit.Y2 < y && y < view.BoardHeight - hit.Y1;
        else
            inside = hit.X1 < x && x < hit.X2 && hit.Y1 < y && y < hit.Y2;
        if (inside)
            return field;
    }
    return kNoField;
}

void DrawBoardSide(BoardState& state, int boardSide)
{
    state.BoardSide = CheckSide(boardSide);
    const BoardView view = ViewOf(state);

    for (int side = 1; side <= 2; ++side)
        for (int mine = 0; mine < kMinesPerArmy; ++mine) {
            state.MinePicture(side, mine).Visible = false;
            state.CapturedMinePicture(side, mine).Visible = false;
        }

    for (int side = 1; side <= 2; ++side) {
        state.HQCount(side) = 0;
        for (int place = 0; place < kHQPlaces; ++place)
            state.HQPlaceFree(side, place) = true;
    }

    for (int side = 1; side <= 2; ++side)
        for (int slot = 0; slot < kVehicleSlots; ++slot) {
            Picture& picture = state.VehiclePicture(side, slot);
            const int pos = state.VehiclePos(side, slot);
            PlacedBox box{picture.Left, picture.Top, picture.Width, picture.Height};
            if (pos == kOutOfGame) {
                box.Top += DestroyedVehicleRedrawShift(boardSide, side);
                picture.InStock = side == state.LocalSide;
            } else if (pos == CampField(side)) {
                // A jeep is at home on its island; one that a return from
                // Stock set in the camp is drawn there.
                box = slot == kJeepSlot ? IslandBox(view, side) : CampPlaceBox(view, side, slot);
            } else if (pos == HQField(side)) {
                for (int place = 0; place < kHQPlaces; ++place)
                    if (state.HQPlaceFree(side, place)) {
                        box = HQPlaceBox(view, side, place);
                        state.HQPlaceFree(side, place) = false;
                        ++state.HQCount(side);
                        break;
                    }
            } else if (pos == IslandField(side)) {
                box = IslandBox(view, side);
            } else if (IsRoadField(pos)) {
                box = VehicleOnFieldBox(view, pos, state.VehicleDir(side, slot));
            }
            PutPicture(picture, box);
        }

    for (int side = 1; side <= 2; ++side)
        for (int mine = 0; mine < kMinesPerArmy; ++mine) {
            const int pos = state.MinePos(side, mine);
            if (IsRoadField(pos)) {
                state.MinePicture(side, mine) = AsPicture(LaidMineBox(view, pos), true, LaidMineImage(side, pos));
            } else if (pos == CampField(side)) {
                state.MinePicture(side, mine) =
                    AsPicture(StoredMineBoxOnRedraw(view, side, mine), true, StoredMineImage(side));
            } else if (pos == CampField(OtherSide(side))) {
                const int captor = OtherSide(side);
                Picture& captured = state.CapturedMinePicture(captor, mine);
                captured = AsPicture(CapturedMineBoxOnRedraw(view, captor, mine), true, captured.Image);
            }
        }
}

void ToggleBoardSide(BoardState& state) { DrawBoardSide(state, state.BoardSide == 1 ? 2 : 1); }

void RebuildBoardCells(BoardState& state)
{
    state.cells.fill(0);
    for (int side = 1; side <= 2; ++side) {
        state.HQCount(side) = 0;
        const int sign = side == 1 ? 1 : -1;
        for (int slot = 0; slot < kVehicleSlots; ++slot) {
            const int pos = state.VehiclePos(side, slot);
            if (IsRoadField(pos))
                state.BoardCell(pos) = sign * (slot + 1);
            else if (pos == HQField(side))
                ++state.HQCount(side);
        }
        for (int mine = 0; mine < kMinesPerArmy; ++mine) {
            const int pos = state.MinePos(side, mine);
            if (IsRoadField(pos))
                state.BoardCell(pos) = sign * kMineCell;
        }
    }
}

void RedrawAfterLoad(BoardState& state)
{
    RebuildBoardCells(state);
    DrawBoardSide(state, state.LocalSide == 1 ? 1 : 2);
    for (int side = 1; side <= 2; ++side)
        for (int slot = 0; slot < kVehicleSlots; ++slot) {
            if (state.VehiclePos(side, slot) != kOutOfGame)
                continue;
            const PlacedBox box = DestroyedVehicleBox(state.BoardSide, side, slot);
            Picture& picture = state.VehiclePicture(side, slot);
            PutPicture(picture, box);
            picture.InStock = side == state.LocalSide;
        }
}

} // namespace vk
