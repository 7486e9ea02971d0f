#include "board/BoardView.h"
#include "board/BoardState.h"
#include "board/Movement.h"
#include "shell/RunTimeFault.h"
#include "BoardFixtures.h"

#include <gtest/gtest.h>

#include <random>

namespace vk {
namespace {

// The board as the program shows it: Speelveld after start-up.
constexpr int W = 25300;
constexpr int H = 13210;
const BoardView kView1{1, W, H};
const BoardView kView2{2, W, H};

TEST(BoardView, MirrorFormulas)
{
    EXPECT_EQ(MirrorLeft(100, 750, W), W - 850);
    EXPECT_EQ(MirrorTop(200, 330, H), H - 530);
    EXPECT_EQ(PlaceInView(kView1, 100, 200, 750, 330), (PlacedBox{100, 200, 750, 330}));
    EXPECT_EQ(PlaceInView(kView2, 100, 200, 750, 330), (PlacedBox{W - 850, H - 530, 750, 330}));
}

// Edge case: a field's anchor mirrored twice gives the anchor again.
TEST(BoardView, AnchorMirroredTwiceIsTheAnchor)
{
    for (int field = 1; field <= 112; ++field)
        for (int heading = 0; heading < 4; ++heading) {
            if (AnchorFor(field, heading).X == -1)
                continue;
            const PlacedBox once = VehicleOnFieldBox(kView2, field, heading);
            const PlacedBox twice = PlaceInView(kView2, once.Left, once.Top, once.Width, once.Height);
            EXPECT_EQ(twice, VehicleOnFieldBox(kView1, field, heading)) << field << " " << heading;
        }
}

TEST(BoardView, VehicleOnFieldByHeading)
{
    EXPECT_EQ(VehicleOnFieldBox(kView1, 32, 1), (PlacedBox{15395, 4460, 750, 330}));
    EXPECT_EQ(VehicleOnFieldBox(kView1, 32, 0), (PlacedBox{15380, 4055, 330, 750}));
    EXPECT_EQ(VehicleOnFieldBox(kView2, 32, 0), (PlacedBox{W - 15710, H - 4805, 330, 750}));
    EXPECT_THROW(VehicleOnFieldBox(kView1, 113, 1), RunTimeFault);
}

TEST(BoardView, CampHQAndIslandPlaces)
{
    EXPECT_EQ(CampPlaceBox(kView2, 1, 0), (PlacedBox{W - 2655, H - 7960, 750, 330}));
    EXPECT_EQ(HQPlaceBox(kView1, 2, 1), (PlacedBox{19635, 6160, 750, 330}));
    EXPECT_EQ(HQPlaceBox(kView2, 2, 1), (PlacedBox{W - 20385, H - 6490, 750, 330}));
    EXPECT_EQ(IslandBox(kView1, 1), (PlacedBox{22170, 10840, 750, 330}));
    EXPECT_EQ(IslandBox(kView2, 2), (PlacedBox{W - 3060, H - 1560, 750, 330}));
}

// Edge case: in view 2 a destroyed vehicle of the opponent stands at left 120 with the top
// of the other army, slot x 480 + 1095.
TEST(BoardView, DestroyedVehicleOfTheOpponentInView2)
{
    EXPECT_EQ(DestroyedVehicleBox(2, 1, 3), (PlacedBox{120, 3 * 480 + 1095, 750, 330}));
    EXPECT_EQ(DestroyedVehicleBox(2, 2, 3), (PlacedBox{120, 3 * 480 + 360, 750, 330}));
    EXPECT_EQ(DestroyedVehicleBox(1, 1, 0), (PlacedBox{120, 360, 750, 330}));
    EXPECT_EQ(DestroyedVehicleBox(1, 2, 10), (PlacedBox{120, 10 * 480 + 1095, 750, 330}));

    // A redraw moves it by 735 between the two tops, and keeps it on the main window.
    BoardState state = testing::NewGame();
    state.LocalSide = 2;
    ToggleBoardSide(state);
    state.VehiclePos(1, 3) = 0;
    const PlacedBox box = DestroyedVehicleBox(state.BoardSide, 1, 3);
    state.VehiclePicture(1, 3) = Picture{box.Left, box.Top, box.Width, box.Height, true, false, ""};
    ToggleBoardSide(state);
    EXPECT_EQ(state.VehiclePicture(1, 3).Top, 3 * 480 + 360);
    ToggleBoardSide(state);
    EXPECT_EQ(state.VehiclePicture(1, 3).Left, 120);
    EXPECT_EQ(state.VehiclePicture(1, 3).Top, 3 * 480 + 1095);
    EXPECT_FALSE(state.VehiclePicture(1, 3).InStock);
}

TEST(BoardView, DestroyedVehicleOfTheLocalPlayerIsInStockAfterARedraw)
{
    BoardState state = testing::NewGame();
    state.VehiclePos(1, 2) = 0;
    DrawBoardSide(state, 1);
    EXPECT_TRUE(state.VehiclePicture(1, 2).InStock);
    EXPECT_EQ(DestroyedVehicleRedrawShift(2, 1), 735);
    EXPECT_EQ(DestroyedVehicleRedrawShift(2, 2), -735);
    EXPECT_EQ(DestroyedVehicleRedrawShift(1, 1), -735);
    EXPECT_EQ(DestroyedVehicleRedrawShift(1, 2), 735);
}

TEST(BoardView, LaidMinesByMineSide)
{
    EXPECT_EQ(LaidMineBox(kView1, 1), (PlacedBox{6565, 1110, 750, 330}));
    EXPECT_EQ(LaidMineImage(1, 1), "mijn_1_u.gif");
    EXPECT_EQ(LaidMineBox(kView1, 7), (PlacedBox{10340, 1525, 330, 750}));
    EXPECT_EQ(LaidMineImage(2, 7), "mijn_2_l.gif");
    EXPECT_EQ(LaidMineBox(kView2, 3), (PlacedBox{W - 8150, H - 2700, 330, 750}));
    EXPECT_EQ(LaidMineImage(1, 3), "mijn_1_r.gif");
    EXPECT_THROW(LaidMineBox(kView1, 2), RunTimeFault);
    EXPECT_THROW(LaidMineImage(1, 75), RunTimeFault);
}

// The stored mine is mirrored with 220 on a redraw and with 205 when brought home.
TEST(BoardView, StoredMineMirrorsWith220OnRedrawAnd205OnReturn)
{
    EXPECT_EQ(StoredMineBoxOnRedraw(kView2, 1, 0), (PlacedBox{W - (2745 + 220), H - (10035 + 330), 205, 330}));
    EXPECT_EQ(StoredMineBoxOnReturn(kView2, 1, 0), (PlacedBox{W - (2745 + 205), H - (10035 + 330), 205, 330}));
    EXPECT_EQ(StoredMineBoxOnRedraw(kView1, 2, 3), (PlacedBox{22100, 1935, 205, 330}));
    EXPECT_EQ(StoredMineBoxOnReturn(kView1, 2, 3), (PlacedBox{22100, 1935, 205, 330}));
    EXPECT_EQ(CapturedMineBoxOnRedraw(kView2, 2, 0), (PlacedBox{W - (22715 + 220), H - (1935 + 330), 205, 330}));
    EXPECT_EQ(CapturedMineBoxOnReturn(kView2, 2, 0), (PlacedBox{W - (22715 + 205), H - (1935 + 330), 205, 330}));
    EXPECT_EQ(StoredMineImage(2), "mijn_2_top.gif");
}

TEST(BoardView, FieldMarks)
{
    EXPECT_EQ(FieldMarkBox(kView1, 32, 0), (PlacedBox{15380, 4055, 330, 750}));
    EXPECT_EQ(FieldMarkBoxAnyHeading(kView1, 32), (PlacedBox{15395, 4460, 750, 330}));
    EXPECT_EQ(FieldMarkBoxAnyHeading(kView1, 3), (PlacedBox{7820, 1950, 330, 750}));
    EXPECT_EQ(FieldMarkBoxAnyHeading(kView2, 3), (PlacedBox{W - 8150, H - 2700, 330, 750}));
}

TEST(BoardView, GeneratedClickAtTheCentreOfTheHitRectangle)
{
    EXPECT_EQ(HitCentre(kView1, 1), (TwipPoint{6940, 1275}));
    EXPECT_EQ(HitCentre(kView2, 1), (TwipPoint{W - 7315 + 375, H - 1440 + 165}));
    // 4200 + 1605 / 2 = 5002.5 and 5525 + 1575 / 2 = 6312.5 round to the even 5002 and 6312;
    // 21535 + 1995 / 2 = 22532.5 to 22532; 1680 + 2025 / 2 = 2692.5 to 2692.
    EXPECT_EQ(HitCentre(kView1, 114), (TwipPoint{5002, 6312}));
    EXPECT_EQ(HitCentre(kView1, 115).X, 22532);
    EXPECT_EQ(HitCentre(kView1, 118).X, 2692);
    // In view 2: 25300 - 5805 + 802.5 = 20297.5 gives 20298; 13210 - 7100 + 787.5 = 6897.5 gives 6898.
    EXPECT_EQ(HitCentre(kView2, 114), (TwipPoint{20298, 6898}));
    for (int field = 1; field <= 118; ++field) {
        const TwipPoint p1 = HitCentre(kView1, field);
        const TwipPoint p2 = HitCentre(kView2, field);
        EXPECT_EQ(FieldAt(p1.X, p1.Y, kView1), field);
        EXPECT_EQ(FieldAt(p2.X, p2.Y, kView2), field);
    }
}

TEST(BoardView, FramePositions)
{
    EXPECT_EQ(FramePosition(kView1, BoardFrame::frDices), (TwipPoint{12720, 6930}));
    EXPECT_EQ(FramePosition(kView2, BoardFrame::frDices), (TwipPoint{W - 15495, H - 9105}));
    EXPECT_EQ(FramePosition(kView1, BoardFrame::msgBoard), (TwipPoint{7635, 5475}));
    EXPECT_EQ(FramePosition(kView2, BoardFrame::msgBoard), (TwipPoint{W - 17635, H - 5850}));
    EXPECT_EQ(FramePosition(kView1, BoardFrame::KampComp0), (TwipPoint{3895, 10785}));
    EXPECT_EQ(FramePosition(kView2, BoardFrame::KampComp0), (TwipPoint{20550, 1570}));
    EXPECT_EQ(FramePosition(kView1, BoardFrame::KampComp1), (TwipPoint{21265, 1200}));
    EXPECT_EQ(FramePosition(kView2, BoardFrame::KampComp1), (TwipPoint{2820, 11375}));
    EXPECT_EQ(FramePosition(kView1, BoardFrame::Gevang_1), (TwipPoint{21760, 10255}));
    EXPECT_EQ(FramePosition(kView2, BoardFrame::Gevang_1), (TwipPoint{W - 23320, H - 10615}));
    EXPECT_EQ(FramePosition(kView1, BoardFrame::Gevang_2), (TwipPoint{1890, 1920}));
    EXPECT_EQ(FramePosition(kView2, BoardFrame::Gevang_2), (TwipPoint{W - 3450, H - 2280}));
    EXPECT_EQ(FramePosition(kView1, BoardFrame::Vlagdekking_1), (TwipPoint{2935, 7750}));
    EXPECT_EQ(FramePosition(kView2, BoardFrame::Vlagdekking_1), (TwipPoint{W - 3345, H - 9870}));
    EXPECT_EQ(FramePosition(kView1, BoardFrame::Vlagdekking_2), (TwipPoint{20825, 4445}));
    EXPECT_EQ(FramePosition(kView2, BoardFrame::Vlagdekking_2), (TwipPoint{W - 22945, H - 4855}));
}

// Edge case: a click exactly on the border of a rectangle, and a click between two roads,
// give 119.
TEST(FieldAt, BorderAndBetweenRoadsGive119)
{
    // Field 1 is 6565,1110 to 7315,1440.
    EXPECT_EQ(FieldAt(6566, 1111, kView1), 1);
    EXPECT_EQ(FieldAt(6565, 1200, kView1), 119);
    EXPECT_EQ(FieldAt(7315, 1200, kView1), 119);
    EXPECT_EQ(FieldAt(7000, 1110, kView1), 119);
    EXPECT_EQ(FieldAt(7000, 1440, kView1), 119);
    EXPECT_EQ(FieldAt(7314, 1439, kView1), 1);
    // Between field 1 (x2 7315) and field 2 (x1 7385).
    EXPECT_EQ(FieldAt(7350, 1200, kView1), 119);
    // Open country in the middle of the board.
    EXPECT_EQ(FieldAt(12000, 8500, kView1), 119);
    // The same borders seen from the other side.
    EXPECT_EQ(FieldAt(W - 6565, H - 1200, kView2), 119);
    EXPECT_EQ(FieldAt(W - 6566, H - 1200, kView2), 1);
    EXPECT_EQ(FieldAt(W - 7315, H - 1200, kView2), 119);
}

// Edge case: the rotated view of (W - x, H - y) gives the same field as the normal view of (x, y).
TEST(FieldAt, RotatedViewOfTheTurnedPointGivesTheSameField)
{
    for (int x = 1500; x < 24000; x += 37)
        for (int y = 600; y < 12400; y += 41)
            ASSERT_EQ(FieldAt(W - x, H - y, kView2), FieldAt(x, y, kView1)) << x << "," << y;
}

// Edge case: a click in view 2 at (x, y) hits the field whose rectangle contains (W - x, H - y).
TEST(FieldAt, ClickInView2HitsTheFieldOfTheTurnedPoint)
{
    for (int field = 1; field <= 118; ++field) {
        const TwipRect hit = FieldHit(field);
        const int x = (hit.X1 + hit.X2) / 2;
        const int y = (hit.Y1 + hit.Y2) / 2;
        EXPECT_EQ(FieldAt(W - x, H - y, kView2), field);
        EXPECT_EQ(FieldAt(W - hit.X1, H - y, kView2), 119) << field;
    }
}

// Edge case: the rectangles of 115 and 118 are hit for the prison islands.
TEST(FieldAt, PrisonIslandsAreHit)
{
    EXPECT_EQ(FieldAt(22000, 10000, kView1), 115);
    EXPECT_EQ(FieldAt(2000, 2000, kView1), 118);
    EXPECT_EQ(FieldAt(W - 22000, H - 10000, kView2), 115);
    EXPECT_EQ(FieldAt(W - 2000, H - 2000, kView2), 118);
    EXPECT_EQ(FieldAt(3000, 9000, kView1), 113);
    EXPECT_EQ(FieldAt(5000, 6000, kView1), 114);
    EXPECT_EQ(FieldAt(22000, 3000, kView1), 116);
    EXPECT_EQ(FieldAt(20000, 6000, kView1), 117);
}

TEST(DrawBoardSide, TurnedBoardPlacesEveryPieceMirrored)
{
    BoardState state = testing::NewGame();
    ToggleBoardSide(state);
    EXPECT_EQ(state.BoardSide, 2);
    const Picture& tank = state.VehiclePicture(1, 0);
    EXPECT_EQ((PlacedBox{tank.Left, tank.Top, tank.Width, tank.Height}), CampPlaceBox(kView2, 1, 0));
    const Picture& jeep = state.VehiclePicture(2, 10);
    EXPECT_EQ((PlacedBox{jeep.Left, jeep.Top, jeep.Width, jeep.Height}), IslandBox(kView2, 2));
    const Picture& mine = state.MinePicture(1, 2);
    EXPECT_EQ(mine.Left, W - (3565 + 220));
    EXPECT_TRUE(mine.Visible);
    EXPECT_FALSE(state.CapturedMinePicture(1, 2).Visible);
}

TEST(DrawBoardSide, HQPlacesAreHandedOutAnewInSlotOrder)
{
    BoardState state = testing::NewGame();
    SendCampVehicleToHQ(state, 1, 7);
    SendCampVehicleToHQ(state, 1, 2);
    EXPECT_EQ(state.VehiclePicture(1, 7).Top, 5660);
    EXPECT_EQ(state.VehiclePicture(1, 2).Top, 6140);
    DrawBoardSide(state, 1);
    EXPECT_EQ(state.VehiclePicture(1, 2).Top, 5660);
    EXPECT_EQ(state.VehiclePicture(1, 7).Top, 6140);
    EXPECT_EQ(state.HQCount(1), 2);
    EXPECT_FALSE(state.HQPlaceFree(1, 0));
    EXPECT_FALSE(state.HQPlaceFree(1, 1));
    EXPECT_TRUE(state.HQPlaceFree(1, 2));
}

// A jeep given back from Stock on the other player's copy stands in its camp,
// which has no place for it: it is drawn on its island, in either view.
TEST(DrawBoardSide, AJeepInItsCampIsDrawnOnItsIsland)
{
    for (int view = 1; view <= 2; ++view) {
        BoardState state = testing::NewGame();
        state.VehiclePos(2, kJeepSlot) = CampField(2);
        DrawBoardSide(state, view);
        const Picture& jeep = state.VehiclePicture(2, kJeepSlot);
        EXPECT_EQ((PlacedBox{jeep.Left, jeep.Top, jeep.Width, jeep.Height}), IslandBox(ViewOf(state), 2)) << view;
    }
}

// Edge case: ToggleBoardSide from view 2 gives view 1 and a correct board.
TEST(DrawBoardSide, ToggleFromView2GivesView1AndTheSameBoard)
{
    std::mt19937 random(7);
    for (int round = 0; round < 20; ++round) {
        const BoardState before = testing::RandomPosition(random, 60);
        BoardState state = before;
        ToggleBoardSide(state);
        EXPECT_EQ(state.BoardSide, 2);
        ToggleBoardSide(state);
        EXPECT_EQ(state.BoardSide, 1);
        for (int side = 1; side <= 2; ++side)
            for (int slot = 0; slot < 11; ++slot)
                if (state.VehiclePos(side, slot) != HQField(side)) {
                    EXPECT_EQ(state.VehiclePicture(side, slot), before.VehiclePicture(side, slot))
                        << side << " " << slot;
                }
        for (int side = 1; side <= 2; ++side)
            for (int mine = 0; mine < 5; ++mine)
                if (state.MinePos(side, mine) > 0) {
                    EXPECT_EQ(state.MinePicture(side, mine), before.MinePicture(side, mine));
                }
        EXPECT_TRUE(testing::SameGame(state, before));
    }
}

TEST(RebuildBoardCells, CellsAndHQCountFromThePositions)
{
    std::mt19937 random(11);
    for (int round = 0; round < 20; ++round) {
        const BoardState played = testing::RandomPosition(random, 80);
        BoardState rebuilt = played;
        rebuilt.cells.fill(0);
        rebuilt.hqCount = {0, 0};
        RebuildBoardCells(rebuilt);
        EXPECT_EQ(rebuilt.cells, played.cells);
        EXPECT_EQ(rebuilt.hqCount, played.hqCount);
    }
}

} // namespace
} // namespace vk

namespace vk {
namespace {

TEST(RedrawAfterLoad, RebuildsTheBoardInTheViewOfTheLocalSide)
{
    std::mt19937 random(23);
    const BoardState played = testing::RandomPosition(random, 120);
    BoardState loaded = testing::NewGame();
    loaded.LocalSide = 2;
    loaded.vehiclePos = played.vehiclePos;
    loaded.vehicleDir = played.vehicleDir;
    loaded.vehicleCompanies = played.vehicleCompanies;
    loaded.vehicleTag = played.vehicleTag;
    loaded.minePos = played.minePos;
    loaded.VehiclePos(1, 4) = 0;
    loaded.VehiclePos(2, 6) = 0;
    BoardState expected = played;
    expected.VehiclePos(1, 4) = 0;
    expected.VehiclePos(2, 6) = 0;
    RebuildBoardCells(expected);
    RedrawAfterLoad(loaded);
    EXPECT_EQ(loaded.BoardSide, 2);
    EXPECT_EQ(loaded.cells, expected.cells);
    EXPECT_EQ(loaded.hqCount, played.hqCount);
    EXPECT_EQ(loaded.VehiclePicture(1, 4), (Picture{120, 4 * 480 + 1095, 750, 330, true, false, ""}));
    EXPECT_EQ(loaded.VehiclePicture(2, 6), (Picture{120, 6 * 480 + 360, 750, 330, true, true, ""}));
    for (int side = 1; side <= 2; ++side)
        for (int slot = 0; slot < 11; ++slot) {
            const int pos = loaded.VehiclePos(side, slot);
            if (IsRoadField(pos)) {
                const Picture& picture = loaded.VehiclePicture(side, slot);
                EXPECT_EQ((PlacedBox{picture.Left, picture.Top, picture.Width, picture.Height}),
                          VehicleOnFieldBox(kView2, pos, loaded.VehicleDir(side, slot)));
            }
        }
}

} // namespace
} // namespace vk
