#include "board/BoardTables.h"
#include "shell/RunTimeFault.h"
#include "ReferenceTables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace vk {
namespace {

struct ReferenceRow {
    int field = 0;
    std::vector<int> roads;
    std::vector<int> headings;
    int a0x = -1, a0y = -1, a1x = -1, a1y = -1;
    TwipRect hit;
    int mineSide = -1;
};

std::vector<std::string> SplitCells(const std::string& row)
{
    std::vector<std::string> cells;
    std::string cell;
    for (std::size_t i = 1; i < row.size(); ++i) {
        if (row[i] == '|') {
            const auto b = cell.find_first_not_of(' ');
            const auto e = cell.find_last_not_of(' ');
            cells.push_back(b == std::string::npos ? "" : cell.substr(b, e - b + 1));
            cell.clear();
        } else {
            cell += row[i];
        }
    }
    return cells;
}

std::vector<int> Numbers(const std::string& text)
{
    std::vector<int> numbers;
    std::string clean = text;
    std::replace(clean.begin(), clean.end(), ',', ' ');
    std::istringstream in(clean);
    int n = 0;
    while (in >> n)
        numbers.push_back(n);
    return numbers;
}

ReferenceRow ParseRow(const std::string& row)
{
    const std::vector<std::string> cells = SplitCells(row);
    ReferenceRow d;
    d.field = std::stoi(cells.at(0));
    std::istringstream roads(cells.at(1));
    std::string word;
    while (roads >> word) {
        d.roads.push_back(std::stoi(word.substr(0, word.size() - 1)));
        d.headings.push_back(static_cast<int>(std::string("nozwL").find(word.back())));
    }
    if (cells.at(2) != "-") {
        const auto a = Numbers(cells.at(2));
        d.a0x = a.at(0);
        d.a0y = a.at(1);
    }
    if (cells.at(3) != "-") {
        const auto a = Numbers(cells.at(3));
        d.a1x = a.at(0);
        d.a1y = a.at(1);
    }
    const auto h = Numbers(cells.at(4));
    d.hit = TwipRect{h.at(0), h.at(1), h.at(2), h.at(3)};
    d.mineSide = std::stoi(cells.at(5));
    return d;
}

std::vector<ReferenceRow> ReferenceRows()
{
    std::vector<ReferenceRow> rows;
    for (const char* row : testdata::kRoadRows)
        rows.push_back(ParseRow(row));
    return rows;
}

TEST(BoardTables, RoadsAndHeadingsOfRoadSquaresEqualTheReferenceTable)
{
    for (const ReferenceRow& d : ReferenceRows()) {
        SCOPED_TRACE(d.field);
        for (int k = 0; k < 3; ++k) {
            const int road = k < static_cast<int>(d.roads.size()) ? d.roads[k] : -1;
            const int heading = k < static_cast<int>(d.headings.size()) ? d.headings[k] : -1;
            EXPECT_EQ(FieldRoads(d.field, k), road);
            EXPECT_EQ(FieldHeading(d.field, k), heading);
        }
    }
}

TEST(BoardTables, RowsOfTheLargeAreasHoldOnlyTheirRoads)
{
    // Typed from the rows of 0 and 113 to 119.
    const int roads[8][3] = {{113, -1, -1}, {-1, 114, -1}, {113, 71, 83}, {-1, 80, -1},
                             {117, -1, -1}, {100, 116, 109}, {112, -1, -1}, {116, -1, -1}};
    const int headings[8][3] = {{1, -1, -1}, {-1, -1, -1}, {1, 1, 1}, {-1, 3, -1},
                                {-1, -1, -1}, {3, 3, 3}, {1, -1, -1}, {1, -1, -1}};
    const int fields[8] = {0, 113, 114, 115, 116, 117, 118, 119};
    for (int r = 0; r < 8; ++r)
        for (int k = 0; k < 3; ++k) {
            SCOPED_TRACE(fields[r]);
            EXPECT_EQ(FieldRoads(fields[r], k), roads[r][k]);
            EXPECT_EQ(FieldHeading(fields[r], k), headings[r][k]);
        }
}

TEST(BoardTables, AnchorsEqualTheReferenceTable)
{
    for (const ReferenceRow& d : ReferenceRows()) {
        SCOPED_TRACE(d.field);
        EXPECT_EQ(FieldAnchorX(d.field, 0), d.a0x);
        EXPECT_EQ(FieldAnchorY(d.field, 0), d.a0y);
        EXPECT_EQ(FieldAnchorX(d.field, 1), d.a1x);
        EXPECT_EQ(FieldAnchorY(d.field, 1), d.a1y);
    }
    EXPECT_EQ(FieldAnchor(115, 0), (TwipPoint{22170, 10840}));
    EXPECT_EQ(FieldAnchor(118, 0), (TwipPoint{2310, 1230}));
    for (int field : {113, 114, 116, 117}) {
        EXPECT_EQ(FieldAnchorX(field, 0), -1);
        EXPECT_EQ(FieldAnchorX(field, 1), -1);
    }
    EXPECT_EQ(FieldAnchorX(115, 1), -1);
    EXPECT_EQ(FieldAnchorX(118, 1), -1);
}

TEST(BoardTables, AnchorForPicksHorizontalForEastAndWest)
{
    EXPECT_EQ(AnchorFor(32, 1), (TwipPoint{15395, 4460}));
    EXPECT_EQ(AnchorFor(32, 3), (TwipPoint{15395, 4460}));
    EXPECT_EQ(AnchorFor(32, 0), (TwipPoint{15380, 4055}));
    EXPECT_EQ(AnchorFor(32, 2), (TwipPoint{15380, 4055}));
    EXPECT_EQ(PictureWidthFor(1), 750);
    EXPECT_EQ(PictureHeightFor(1), 330);
    EXPECT_EQ(PictureWidthFor(0), 330);
    EXPECT_EQ(PictureHeightFor(2), 750);
}

TEST(BoardTables, HitRectanglesOfRoadSquaresEqualTheReferenceTable)
{
    for (const ReferenceRow& d : ReferenceRows()) {
        SCOPED_TRACE(d.field);
        EXPECT_EQ(FieldHit(d.field), d.hit);
        EXPECT_EQ(ComputeFieldHit(d.field), d.hit);
    }
}

TEST(BoardTables, HitRectanglesOfTheLargeAreas)
{
    EXPECT_EQ(FieldHit(113), (TwipRect{1905, 7630, 4785, 11775}));
    EXPECT_EQ(FieldHit(114), (TwipRect{4200, 5525, 5805, 7100}));
    EXPECT_EQ(FieldHit(115), (TwipRect{21535, 9575, 23530, 11555}));
    EXPECT_EQ(FieldHit(116), (TwipRect{20245, 1050, 23545, 5210}));
    EXPECT_EQ(FieldHit(117), (TwipRect{19030, 5495, 21010, 7160}));
    EXPECT_EQ(FieldHit(118), (TwipRect{1680, 1065, 3705, 3075}));
}

TEST(BoardTables, HitRuleExceptions)
{
    // Field 63 reaches 430 to the left of its vertical anchor.
    EXPECT_EQ(FieldHit(63), (TwipRect{13730 - 430, 9560, 13730 + 320, 9560 + 750}));
    // 8, 11, 17 grow upward; 23, 28, 41, 58 downward.
    EXPECT_EQ(FieldHit(8), (TwipRect{10355, 1110 - 430, 10355 + 750, 1110 + 320}));
    EXPECT_EQ(FieldHit(58), (TwipRect{10760, 11245, 10760 + 750, 11245 + 750}));
    // Bends: 32 from the vertical anchor, 53 from x0 and y1, 2 from the horizontal anchor.
    EXPECT_EQ(FieldHit(32), (TwipRect{15380, 4055, 16130, 4805}));
    EXPECT_EQ(FieldHit(53), (TwipRect{8210, 11260, 8960, 12010}));
    EXPECT_EQ(FieldHit(2), (TwipRect{7385, 1110, 8135, 1860}));
}

TEST(BoardTables, MineSidesEqualTheReferenceTable)
{
    for (const ReferenceRow& d : ReferenceRows()) {
        SCOPED_TRACE(d.field);
        EXPECT_EQ(MineSide(d.field), d.mineSide);
    }
}

TEST(BoardTables, FixedPlaces)
{
    const int campY1[10] = {7630, 8050, 8470, 8890, 9315, 9735, 10155, 10580, 11005, 11425};
    const int campX2[10] = {22585, 22585, 22585, 20470, 20470, 20470, 22585, 22585, 20470, 20470};
    const int campY2[10] = {4000, 3605, 3165, 3995, 3605, 3165, 2730, 2325, 2755, 2350};
    for (int slot = 0; slot < 10; ++slot) {
        EXPECT_EQ(CampPlace(1, slot), (TwipPoint{1905, campY1[slot]}));
        EXPECT_EQ(CampPlace(2, slot), (TwipPoint{campX2[slot], campY2[slot]}));
    }
    const int hqY1[3] = {5660, 6140, 6620};
    const int hqY2[3] = {5680, 6160, 6640};
    for (int place = 0; place < 3; ++place) {
        EXPECT_EQ(HQPlace(1, place), (TwipPoint{4630, hqY1[place]}));
        EXPECT_EQ(HQPlace(2, place), (TwipPoint{19635, hqY2[place]}));
    }
    const int store1[5] = {2745, 3155, 3565, 3975, 4385};
    const int enemy1[5] = {4590, 4180, 3770, 3360, 2950};
    const int store2[5] = {20870, 21280, 21690, 22100, 22510};
    const int enemy2[5] = {22715, 22305, 21895, 21485, 21075};
    for (int mine = 0; mine < 5; ++mine) {
        EXPECT_EQ(MineStore(1, mine), (TwipPoint{store1[mine], 10035}));
        EXPECT_EQ(EnemyMineStore(1, mine), (TwipPoint{enemy1[mine], 10035}));
        EXPECT_EQ(MineStore(2, mine), (TwipPoint{store2[mine], 1935}));
        EXPECT_EQ(EnemyMineStore(2, mine), (TwipPoint{enemy2[mine], 1935}));
    }
}

std::vector<int> ParseList(const char* text) { return Numbers(text); }

TEST(BoardTables, ProximityListsAreExactlyAsGiven)
{
    const std::vector<int> list1 = ParseList(testdata::kProximity1);
    const std::vector<int> list2 = ParseList(testdata::kProximity2);
    ASSERT_EQ(list1.size(), 112u);
    ASSERT_EQ(list2.size(), 112u);
    for (int i = 1; i <= 112; ++i) {
        EXPECT_EQ(ProximityOrder(1, i), list1[i - 1]) << i;
        EXPECT_EQ(ProximityOrder(2, i), list2[i - 1]) << i;
    }
}

TEST(BoardTables, ProximityListOfArmy1HoldsDoubled82AndNo52)
{
    EXPECT_EQ(ProximityOrder(1, 25), 82);
    EXPECT_EQ(ProximityOrder(1, 110), 82);
    std::multiset<int> seen;
    for (int i = 1; i <= 112; ++i)
        seen.insert(ProximityOrder(1, i));
    EXPECT_EQ(seen.count(82), 2u);
    EXPECT_EQ(seen.count(52), 0u);
    for (int field = 1; field <= 112; ++field)
        if (field != 52 && field != 82) {
            EXPECT_EQ(seen.count(field), 1u) << field;
        }
}

TEST(BoardTables, ProximityListOfArmy2IsEveryRoadSquareOnce)
{
    std::set<int> seen;
    for (int i = 1; i <= 112; ++i)
        seen.insert(ProximityOrder(2, i));
    EXPECT_EQ(seen.size(), 112u);
    EXPECT_EQ(*seen.begin(), 1);
    EXPECT_EQ(*seen.rbegin(), 112);
}

TEST(BoardTables, Zones)
{
    for (int f : {17, 23, 47, 53})
        EXPECT_TRUE(IsAirport(f));
    EXPECT_FALSE(IsAirport(8));
    EXPECT_TRUE(IsHarbour(11));
    EXPECT_TRUE(IsHarbour(58));
    EXPECT_FALSE(IsHarbour(57));
    std::set<int> coast{1, 70};
    for (int f = 3; f <= 18; ++f)
        coast.insert(f);
    for (int f = 52; f <= 68; ++f)
        coast.insert(f);
    for (int f = 1; f <= 112; ++f)
        EXPECT_EQ(IsCoastRoad(f), coast.count(f) == 1) << f;
    const std::set<int> points{8, 11, 17, 23, 28, 32, 37, 41, 47, 53, 58, 63};
    for (int f = 1; f <= 112; ++f)
        EXPECT_EQ(IsStrategicPoint(f), points.count(f) == 1) << f;

    const std::set<int> behind1{71, 72, 73, 74, 75, 76, 78, 83, 84, 85, 86, 87, 88, 90, 110, 111, 112};
    const std::set<int> behind2{80, 81, 82, 93, 95, 96, 97, 98, 99, 100, 102, 104, 105, 106, 107, 108, 109};
    for (int f = 1; f <= 112; ++f) {
        EXPECT_EQ(IsBehindForwardPosts(1, f), behind1.count(f) == 1) << f;
        EXPECT_EQ(IsBehindForwardPosts(2, f), behind2.count(f) == 1) << f;
    }
    EXPECT_EQ(FlagField(1), 69);
    EXPECT_EQ(FlagField(2), 2);
}

TEST(BoardTables, StrategicLinksAreTheThirdNeighbourWithHeading4)
{
    const int links[6][2] = {{8, 41}, {11, 58}, {17, 23}, {28, 63}, {32, 37}, {47, 53}};
    std::set<int> ends;
    for (const auto& link : links) {
        EXPECT_EQ(FieldRoads(link[0], 2), link[1]);
        EXPECT_EQ(FieldRoads(link[1], 2), link[0]);
        EXPECT_EQ(FieldHeading(link[0], 2), 4);
        EXPECT_EQ(FieldHeading(link[1], 2), 4);
        EXPECT_EQ(StrategicLinkPartner(link[0]), link[1]);
        EXPECT_EQ(StrategicLinkPartner(link[1]), link[0]);
        ends.insert(link[0]);
        ends.insert(link[1]);
    }
    // Plain forks: a third neighbour with an ordinary heading.
    for (int f : {72, 75, 87, 96, 105, 108}) {
        EXPECT_NE(FieldRoads(f, 2), -1);
        EXPECT_NE(FieldHeading(f, 2), 4);
    }
    for (int f = 0; f <= 119; ++f)
        for (int k = 0; k < 3; ++k)
            if (FieldHeading(f, k) == 4) {
                EXPECT_EQ(ends.count(f), 1u) << f;
            }
}

TEST(BoardTables, ForwardPosts)
{
    EXPECT_TRUE(CrossesForwardPost(1, 74, 75));
    EXPECT_TRUE(CrossesForwardPost(1, 86, 87));
    EXPECT_FALSE(CrossesForwardPost(1, 75, 74));
    EXPECT_FALSE(CrossesForwardPost(1, 97, 96));
    EXPECT_TRUE(CrossesForwardPost(2, 97, 96));
    EXPECT_TRUE(CrossesForwardPost(2, 106, 105));
    EXPECT_FALSE(CrossesForwardPost(2, 74, 75));
}

// Edge case: every road square has at least two neighbours.
TEST(BoardTables, EveryRoadSquareHasAtLeastTwoNeighbours)
{
    for (int field = 1; field <= 112; ++field) {
        int count = 0;
        for (const FieldNeighbour& n : FieldNeighbours(field))
            count += n.Field != -1 ? 1 : 0;
        EXPECT_GE(count, 2) << field;
    }
}

// Edge case: rows 0 and 119 are never reached: no road leads to them.
TEST(BoardTables, NoRoadLeadsToRows0And119)
{
    for (int field = 0; field <= 119; ++field)
        for (int k = 0; k < 3; ++k) {
            EXPECT_NE(FieldRoads(field, k), 0) << field;
            EXPECT_NE(FieldRoads(field, k), 119) << field;
        }
}

TEST(BoardTables, RoadsOfRoadSquaresRunBothWays)
{
    for (int field = 1; field <= 112; ++field)
        for (int k = 0; k < 3; ++k) {
            const int n = FieldRoads(field, k);
            if (n < 1 || n > 112)
                continue;
            bool back = false;
            for (int j = 0; j < 3; ++j)
                back = back || FieldRoads(n, j) == field;
            EXPECT_TRUE(back) << field << " -> " << n;
        }
}

TEST(BoardTables, NoPointFallsInTwoRectangles)
{
    for (int a = 1; a <= 118; ++a)
        for (int b = a + 1; b <= 118; ++b) {
            const TwipRect ra = FieldHit(a);
            const TwipRect rb = FieldHit(b);
            const bool overlap = ra.X1 < rb.X2 && rb.X1 < ra.X2 && ra.Y1 < rb.Y2 && rb.Y1 < ra.Y2;
            EXPECT_FALSE(overlap) << a << " and " << b;
        }
}

TEST(BoardTables, OutOfTableIndicesRaiseTheFault)
{
    EXPECT_THROW(FieldRoads(120, 0), RunTimeFault);
    EXPECT_THROW(FieldRoads(-1, 0), RunTimeFault);
    EXPECT_THROW(FieldRoads(1, 3), RunTimeFault);
    EXPECT_THROW(FieldHeading(1, -1), RunTimeFault);
    EXPECT_THROW(FieldAnchorX(0, 0), RunTimeFault);
    EXPECT_THROW(FieldAnchorY(119, 0), RunTimeFault);
    EXPECT_THROW(FieldAnchorX(1, 2), RunTimeFault);
    EXPECT_THROW(FieldHit(0), RunTimeFault);
    EXPECT_THROW(FieldHit(119), RunTimeFault);
    EXPECT_THROW(MineSide(113), RunTimeFault);
    EXPECT_THROW(MineSide(0), RunTimeFault);
    EXPECT_THROW(CampPlace(1, 10), RunTimeFault);
    EXPECT_THROW(CampPlace(3, 0), RunTimeFault);
    EXPECT_THROW(HQPlace(2, 3), RunTimeFault);
    EXPECT_THROW(MineStore(1, 5), RunTimeFault);
    EXPECT_THROW(EnemyMineStore(0, 0), RunTimeFault);
    EXPECT_THROW(ProximityOrder(1, 0), RunTimeFault);
    EXPECT_THROW(ProximityOrder(2, 113), RunTimeFault);
    EXPECT_THROW(AnchorFor(1, 4), RunTimeFault);
}

} // namespace
} // namespace vk
