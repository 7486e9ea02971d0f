#pragma once

// Placing on the board in either view. Field numbers and tables are always in the
// orientation of army 1; BoardSide 2 sees the board turned by half a circle, and every
// vehicle, mine, marker and frame then stands at MirrorLeft / MirrorTop of its place.
// These functions give the left, top, width and height in twips that a window applies.
//
// Two mirrors of a stored mine are kept on purpose: the redraw uses a width of 220
// (StoredMineBoxOnRedraw), ExecuteMove uses 205 when it brings a mine home
// (StoredMineBoxOnReturn).

#include "board/BoardTables.h"

#include <string>

namespace vk {

struct BoardState;

// The view a placing is made for.
struct BoardView {
    int BoardSide = 1;
    int BoardWidth = 0;
    int BoardHeight = 0;
};
BoardView ViewOf(const BoardState& state);

// A placed control: left, top, width, height in twips.
struct PlacedBox {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
    bool operator==(const PlacedBox&) const = default;
};

struct Picture;
// A picture takes the left, top, width and height of a placed box.
void PutPicture(Picture& picture, const PlacedBox& box);

// BoardWidth - (x + w) and BoardHeight - (y + h).
int MirrorLeft(int x, int w, int boardWidth);
int MirrorTop(int y, int h, int boardHeight);

// A box given in the view of army 1, placed in `view` (mirrored for BoardSide 2).
PlacedBox PlaceInView(const BoardView& view, int x, int y, int w, int h);

// A vehicle on a road square (1..112) with a heading: anchor k 0, 750 x 330 for o and w;
// anchor k 1, 330 x 750 for n and z.
PlacedBox VehicleOnFieldBox(const BoardView& view, int field, int heading);
// A vehicle on its camp place, on an HQ place, on its island: 750 x 330.
PlacedBox CampPlaceBox(const BoardView& view, int side, int slot);
PlacedBox HQPlaceBox(const BoardView& view, int side, int place);
PlacedBox IslandBox(const BoardView& view, int side);
// A destroyed vehicle: left 120, 750 x 330, top slot x 480 + 360 when its army is the
// army of BoardSide, slot x 480 + 1095 otherwise. Never mirrored.
PlacedBox DestroyedVehicleBox(int boardSide, int side, int slot);
// The shift of a destroyed vehicle's top when the board is redrawn for `boardSide`:
// view 2 moves army 1 down by 735 and army 2 up by 735, view 1 the opposite.
int DestroyedVehicleRedrawShift(int boardSide, int side);

// A mine laid on a road square with MineSide 1, 2, 3: the picture and its box.
// 1: mijn_?_l.gif, 3: mijn_?_r.gif, 330 x 750 on anchor k 1; 2: mijn_?_u.gif, 750 x 330 on anchor k 0.
// Throws vk::RunTimeFault for a field with MineSide 0.
PlacedBox LaidMineBox(const BoardView& view, int field);
std::string LaidMineImage(int side, int field);
// The store picture mijn_1_top.gif / mijn_2_top.gif.
std::string StoredMineImage(int side);
// A mine in the store of its own camp, 205 x 330 at MineStore: mirrored with 220 on a redraw,
// with 205 when ExecuteMove brings it home.
PlacedBox StoredMineBoxOnRedraw(const BoardView& view, int side, int mine);
PlacedBox StoredMineBoxOnReturn(const BoardView& view, int side, int mine);
// The captured-mine control of the camp of `side` (Mijn_1_2 for side 1, Mijn_2_1 for side 2),
// 205 x 330 at EnemyMineStore; same two mirrors.
PlacedBox CapturedMineBoxOnRedraw(const BoardView& view, int side, int mine);
PlacedBox CapturedMineBoxOnReturn(const BoardView& view, int side, int mine);

// The mark of a field (Kader2) in the heading the vehicle will have there.
PlacedBox FieldMarkBox(const BoardView& view, int field, int heading);
// The mark of a field when the heading does not matter (the opponent's move marker): the
// horizontal anchor, 750 x 330, unless the field has none, then the vertical one, 330 x 750.
PlacedBox FieldMarkBoxAnyHeading(const BoardView& view, int field);

// The point of a generated click on a field: the centre of its FieldHit, mirrored in view 2
// (x = BoardWidth - x2 + (x2 - x1) / 2; in view 1 x1 + (x2 - x1) / 2), the sum rounded to the
// nearest integer and to the even one on .5.
TwipPoint HitCentre(const BoardView& view, int field);

// The fixed frames moved by a redraw.
enum class BoardFrame { frDices, msgBoard, KampComp0, KampComp1, Gevang_1, Gevang_2, Vlagdekking_1, Vlagdekking_2 };
// Left and top of a frame in the view.
TwipPoint FramePosition(const BoardView& view, BoardFrame frame);

// The field under a mouse press at (x, y) in the view: the first of the rectangles of
// fields 1..118 that strictly contains the point, else 119. In view 2 the rectangle is
// compared mirrored: BoardWidth - x2 < x < BoardWidth - x1, the same for y.
int FieldAt(int x, int y, const BoardView& view);

// The redraw of the board for `boardSide` (DrawBoardSide1 / DrawBoardSide2 without the
// window): sets BoardSide, hides every mine control, hands out the HQ places anew in slot
// order (HQPlaceFree and HQCount rebuilt), and places every vehicle and mine picture from
// the positions. A destroyed vehicle keeps its left and has its top shifted by 735; it is in
// Stock when it belongs to LocalSide.
void DrawBoardSide(BoardState& state, int boardSide);
// Turns the view: DrawBoardSide(2) from view 1, DrawBoardSide(1) from view 2.
void ToggleBoardSide(BoardState& state);

// BoardCell and HQCount rebuilt from the vehicle and mine positions (after loading a game).
void RebuildBoardCells(BoardState& state);

// After a saved game has been read into the positions: BoardCell and HQCount rebuilt, then
// the redraw for view 1 when LocalSide is 1, else for view 2. A loaded game has no picture
// place of a destroyed vehicle to shift from, so such a vehicle is put straight at its place
// of the drawn view (DestroyedVehicleBox), in Stock when it belongs to LocalSide.
void RedrawAfterLoad(BoardState& state);

} // namespace vk
