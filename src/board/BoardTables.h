#pragma once

// The constant tables of the board: the road graph with the heading taken on
// entering each field, the picture anchors, the hit rectangles (computed from
// the anchors by a fixed rule with its exceptions), the mine sides, the zones,
// the strategic links, the forward posts, the flag fields, the fixed places in
// camp and HQ, the mine stores and the two proximity lists.
//
// Every look-up checks its index and throws vk::RunTimeFault outside its table.
// All coordinates are twips in the orientation of army 1 (origin top left of
// the board picture). Sides are 1 (regular army) and 2 (rebels).

#include <array>

namespace vk {

// Field numbers.
inline constexpr int kOutOfGame = 0;    // a destroyed vehicle; row 0 of the roads leads to 113
inline constexpr int kFirstRoadField = 1;
inline constexpr int kLastRoadField = 112;
inline constexpr int kCamp1 = 113;
inline constexpr int kHQ1 = 114;
inline constexpr int kIsland1 = 115;    // prison island of army 1, bottom right; its jeep starts there
inline constexpr int kCamp2 = 116;
inline constexpr int kHQ2 = 117;
inline constexpr int kIsland2 = 118;    // prison island of army 2, top left
inline constexpr int kNoField = 119;    // a click that hit nothing; row 119 of the roads leads to 116
inline constexpr int kLastField = 118;

// Headings: 0 n, 1 o, 2 z, 3 w; 4 in FieldHeading marks a strategic link.
inline constexpr int kNorth = 0;
inline constexpr int kEast = 1;
inline constexpr int kSouth = 2;
inline constexpr int kWest = 3;
inline constexpr int kStrategicLinkHeading = 4;

// A vehicle picture lies along the road: 750 x 330 for o and w, 330 x 750 for n and z.
inline constexpr int kPictureLong = 750;
inline constexpr int kPictureShort = 330;

struct TwipPoint {
    int X = 0;
    int Y = 0;
    bool operator==(const TwipPoint&) const = default;
};

// A rectangle x1, y1, x2, y2.
struct TwipRect {
    int X1 = 0;
    int Y1 = 0;
    int X2 = 0;
    int Y2 = 0;
    bool operator==(const TwipRect&) const = default;
};

constexpr bool IsRoadField(int field) { return field >= kFirstRoadField && field <= kLastRoadField; }
constexpr int CampField(int side) { return side == 1 ? kCamp1 : kCamp2; }
constexpr int HQField(int side) { return side == 1 ? kHQ1 : kHQ2; }
constexpr int IslandField(int side) { return side == 1 ? kIsland1 : kIsland2; }
// The field where the flags of this side lie: army 1 takes them at 69, army 2 at 2.
constexpr int FlagField(int side) { return side == 1 ? 69 : 2; }
// The flag field of the other army, which this side may never enter.
constexpr int EnemyFlagField(int side) { return side == 1 ? 2 : 69; }
constexpr int OtherSide(int side) { return 3 - side; }

// --- Road graph (rows 0..119, k 0..2) ---------------------------------------

// The k-th neighbour of a field, -1 where there is none.
int FieldRoads(int field, int k);
// The heading taken on entering `field` from FieldRoads(field, k); 4 a strategic link, -1 none.
int FieldHeading(int field, int k);

struct FieldNeighbour {
    int Field = -1;
    int Heading = -1;
    bool operator==(const FieldNeighbour&) const = default;
};
// The three pairs of FieldRoads and FieldHeading of a field.
std::array<FieldNeighbour, 3> FieldNeighbours(int field);

// --- Anchors (fields 1..118, k 0 horizontal, k 1 vertical) ------------------

// Top-left corner of a vehicle picture on the field; -1 where it can't stand that way.
int FieldAnchorX(int field, int k);
int FieldAnchorY(int field, int k);
TwipPoint FieldAnchor(int field, int k);
// k = 0 for o and w, k = 1 for n and z.
int AnchorIndexFor(int heading);
TwipPoint AnchorFor(int field, int heading);
// Picture width and height for a heading: 750 x 330 for o, w; 330 x 750 for n, z.
int PictureWidthFor(int heading);
int PictureHeightFor(int heading);

// --- Hit rectangles (fields 1..118) -----------------------------------------

// The rule that builds the rectangle of a road square from its anchors, with the
// exceptions of fields 63, 8, 11, 17, 23, 28, 41, 58 and the bends; for 113..118
// the constant rectangles of the large areas.
TwipRect ComputeFieldHit(int field);
// The rectangle a click must fall in (filled once from ComputeFieldHit).
TwipRect FieldHit(int field);

// --- Mine sides (fields 1..112) ---------------------------------------------

// 0 no mine can lie here; 1, 2, 3 the picture mijn_?_l, mijn_?_u, mijn_?_r.
int MineSide(int field);

// --- Fixed places, by side 1 or 2 -------------------------------------------

TwipPoint CampPlace(int side, int slot);        // slot 0..9
TwipPoint HQPlace(int side, int place);         // place 0..2
TwipPoint MineStore(int side, int mine);        // mine 0..4, control Mijn_1 / Mijn_2
TwipPoint EnemyMineStore(int side, int mine);   // mine 0..4, control Mijn_1_2 / Mijn_2_1 (in this side's camp)
inline constexpr int kMineStoreWidth = 205;
inline constexpr int kMineStoreHeight = 330;

// --- Proximity lists ---------------------------------------------------------

// The i-th road square (i = 1..112) of the list of `side`, nearest to its HQ first.
// The list of army 1 holds 82 twice (places 25 and 110) and never 52: kept so.
int ProximityOrder(int side, int i);

// --- Zones ------------------------------------------------------------------

inline constexpr std::array<int, 4> kAirports{17, 23, 47, 53};
inline constexpr std::array<int, 2> kHarbours{11, 58};
inline constexpr std::array<int, 12> kStrategicPoints{8, 11, 17, 23, 28, 32, 37, 41, 47, 53, 58, 63};

struct StrategicLink {
    int A = 0;
    int B = 0;
};
inline constexpr std::array<StrategicLink, 6> kStrategicLinks{
    StrategicLink{8, 41}, StrategicLink{11, 58}, StrategicLink{17, 23},
    StrategicLink{28, 63}, StrategicLink{32, 37}, StrategicLink{47, 53}};

// A forward post is crossed by the step From -> To of a walk.
struct ForwardPost {
    int From = 0;
    int To = 0;
};
inline constexpr std::array<ForwardPost, 2> kForwardPosts1{ForwardPost{74, 75}, ForwardPost{86, 87}};
inline constexpr std::array<ForwardPost, 2> kForwardPosts2{ForwardPost{97, 96}, ForwardPost{106, 105}};
const std::array<ForwardPost, 2>& ForwardPosts(int side);

bool IsAirport(int field);
bool IsHarbour(int field);
bool IsCoastRoad(int field);          // 1, 3..18, 52..68, 70
bool IsStrategicPoint(int field);
// The far end of the strategic link at `field`, or -1.
int StrategicLinkPartner(int field);
// Behind the forward posts of `side` (card Hinderlaag).
bool IsBehindForwardPosts(int side, int field);
// True when the step from -> to crosses a forward post of `side`.
bool CrossesForwardPost(int side, int from, int to);

} // namespace vk
