#include "board/BoardTables.h"

#include "shell/RunTimeFault.h"

#include <algorithm>
#include <initializer_list>

namespace vk {
namespace {

// FieldRoads and FieldHeading, rows 0..119.
constexpr int kRoads[120][3] = {
    {113, -1, -1}, {77, 2, -1}, {1, 3, -1}, {2, 4, -1}, {3, 5, -1}, {4, 6, -1},  // 0..5
    {5, 7, -1}, {6, 8, -1}, {7, 9, 41}, {8, 10, -1}, {9, 11, -1}, {10, 12, 58},  // 6..11
    {11, 13, -1}, {12, 14, -1}, {13, 15, -1}, {14, 16, -1}, {15, 17, -1}, {16, 18, 23},  // 12..17
    {17, 92, -1}, {79, 20, -1}, {19, 21, -1}, {20, 22, -1}, {21, 23, -1}, {22, 24, 17},  // 18..23
    {23, 25, -1}, {24, 26, -1}, {25, 27, -1}, {26, 28, -1}, {27, 29, 63}, {28, 30, -1},  // 24..29
    {29, 31, -1}, {30, 32, -1}, {31, 33, 37}, {32, 34, -1}, {33, 94, -1}, {91, 36, -1},  // 30..35
    {35, 37, -1}, {36, 38, 32}, {37, 39, -1}, {38, 40, -1}, {39, 41, -1}, {40, 42, 8},  // 36..41
    {41, 43, -1}, {42, 44, -1}, {43, 45, -1}, {44, 46, -1}, {45, 47, -1}, {46, 48, 53},  // 42..47
    {47, 49, -1}, {48, 50, -1}, {49, 51, -1}, {50, 101, -1}, {89, 53, -1}, {52, 54, 47},  // 48..53
    {53, 55, -1}, {54, 56, -1}, {55, 57, -1}, {56, 58, -1}, {57, 59, 11}, {58, 60, -1},  // 54..59
    {59, 61, -1}, {60, 62, -1}, {61, 63, -1}, {62, 64, 28}, {63, 65, -1}, {64, 66, -1},  // 60..65
    {65, 67, -1}, {66, 68, -1}, {67, 69, -1}, {68, 70, -1}, {69, 103, -1}, {114, 72, -1},  // 66..71
    {71, 73, 110}, {72, 74, -1}, {73, 75, -1}, {74, 76, 78}, {75, 77, -1}, {76, 1, -1},  // 72..77
    {75, 79, -1}, {78, 19, -1}, {115, 81, -1}, {80, 82, -1}, {81, 108, -1}, {114, 84, -1},  // 78..83
    {83, 85, -1}, {84, 86, -1}, {85, 87, -1}, {86, 88, 90}, {87, 89, -1}, {88, 52, -1},  // 84..89
    {87, 91, -1}, {90, 35, -1}, {18, 93, -1}, {92, 96, -1}, {34, 95, -1}, {94, 96, -1},  // 90..95
    {95, 97, 93}, {96, 98, -1}, {97, 99, -1}, {98, 100, -1}, {99, 117, -1}, {51, 102, -1},  // 96..101
    {101, 105, -1}, {70, 104, -1}, {103, 105, -1}, {104, 106, 102}, {105, 107, -1}, {106, 108, -1},  // 102..107
    {107, 109, 82}, {108, 117, -1}, {72, 111, -1}, {110, 112, -1}, {111, 118, -1}, {-1, 114, -1},  // 108..113
    {113, 71, 83}, {-1, 80, -1}, {117, -1, -1}, {100, 116, 109}, {112, -1, -1}, {116, -1, -1},  // 114..119
};

constexpr int kHeadings[120][3] = {
    {1, -1, -1}, {1, 3, -1}, {2, 3, -1}, {2, 0, -1}, {1, 3, -1}, {1, 3, -1},  // 0..5
    {1, 3, -1}, {0, 2, -1}, {1, 3, 4}, {1, 3, -1}, {1, 3, -1}, {1, 3, 4},  // 6..11
    {2, 0, -1}, {1, 3, -1}, {1, 3, -1}, {1, 3, -1}, {0, 2, -1}, {1, 3, 4},  // 12..17
    {1, 3, -1}, {1, 3, -1}, {1, 3, -1}, {1, 3, -1}, {1, 3, -1}, {1, 3, 4},  // 18..23
    {1, 3, -1}, {0, 2, -1}, {0, 2, -1}, {1, 3, -1}, {1, 3, 4}, {1, 3, -1},  // 24..29
    {1, 3, -1}, {2, 0, -1}, {1, 0, 4}, {1, 3, -1}, {1, 3, -1}, {1, 3, -1},  // 30..35
    {0, 2, -1}, {1, 2, 4}, {1, 3, -1}, {1, 3, -1}, {1, 3, -1}, {1, 3, 4},  // 36..41
    {0, 2, -1}, {1, 3, -1}, {1, 3, -1}, {1, 3, -1}, {1, 3, -1}, {2, 3, 4},  // 42..47
    {2, 0, -1}, {1, 3, -1}, {1, 3, -1}, {1, 3, -1}, {1, 3, -1}, {0, 3, 4},  // 48..53
    {0, 2, -1}, {1, 3, -1}, {1, 3, -1}, {2, 0, -1}, {1, 3, 4}, {1, 3, -1},  // 54..59
    {1, 3, -1}, {1, 3, -1}, {0, 2, -1}, {0, 2, 4}, {1, 3, -1}, {1, 3, -1},  // 60..65
    {1, 3, -1}, {1, 3, -1}, {2, 0, -1}, {1, 0, -1}, {1, 3, -1}, {0, 2, -1},  // 66..71
    {0, 2, 1}, {0, 2, -1}, {1, 3, -1}, {1, 2, 0}, {0, 2, -1}, {1, 2, -1},  // 72..77
    {2, 0, -1}, {1, 0, -1}, {0, 2, -1}, {3, 1, -1}, {3, 1, -1}, {2, 0, -1},  // 78..83
    {2, 0, -1}, {2, 0, -1}, {1, 3, -1}, {1, 0, 2}, {2, 0, -1}, {1, 0, -1},  // 84..89
    {0, 2, -1}, {1, 2, -1}, {2, 3, -1}, {2, 0, -1}, {0, 3, -1}, {0, 2, -1},  // 90..95
    {0, 3, 2}, {1, 3, -1}, {2, 0, -1}, {2, 0, -1}, {2, 0, -1}, {2, 3, -1},  // 96..101
    {2, 0, -1}, {0, 3, -1}, {0, 2, -1}, {0, 3, 2}, {1, 3, -1}, {0, 2, -1},  // 102..107
    {0, 2, 3}, {0, 2, -1}, {3, 1, -1}, {3, 1, -1}, {0, 2, -1}, {-1, -1, -1},  // 108..113
    {1, 1, 1}, {-1, 3, -1}, {-1, -1, -1}, {3, 3, 3}, {1, -1, -1}, {1, -1, -1},  // 114..119
};

// Anchors {{x0, y0}, {x1, y1}} of fields 0..118; row 0 is unused.
constexpr int kAnchors[119][2][2] = {
    {{-1, -1}, {-1, -1}}, {{6565, 1110}, {-1, -1}}, {{7385, 1110}, {7805, 1110}}, {{-1, -1}, {7820, 1950}},  // 0..3
    {{8225, 2370}, {-1, -1}}, {{9065, 2370}, {-1, -1}}, {{9905, 2385}, {-1, -1}}, {{-1, -1}, {10340, 1525}},  // 4..7
    {{10355, 1110}, {-1, -1}}, {{11195, 1110}, {-1, -1}}, {{12020, 1110}, {-1, -1}}, {{12845, 1095}, {-1, -1}},  // 8..11
    {{-1, -1}, {13280, 1500}}, {{13685, 1935}, {-1, -1}}, {{14540, 1935}, {-1, -1}}, {{15380, 1920}, {-1, -1}},  // 12..15
    {{-1, -1}, {16235, 1500}}, {{16235, 1110}, {-1, -1}}, {{17045, 1110}, {-1, -1}}, {{6620, 4475}, {-1, -1}},  // 16..19
    {{7430, 4475}, {-1, -1}}, {{8270, 4475}, {-1, -1}}, {{9125, 4475}, {-1, -1}}, {{9980, 4475}, {-1, -1}},  // 20..23
    {{10805, 4475}, {-1, -1}}, {{-1, -1}, {11645, 4040}}, {{-1, -1}, {11645, 3210}}, {{12035, 3210}, {-1, -1}},  // 24..27
    {{12860, 3210}, {-1, -1}}, {{13700, 3195}, {-1, -1}}, {{14525, 3210}, {-1, -1}}, {{-1, -1}, {15380, 3210}},  // 28..31
    {{15395, 4460}, {15380, 4055}}, {{16235, 4460}, {-1, -1}}, {{17075, 4460}, {-1, -1}}, {{7400, 8285}, {-1, -1}},  // 32..35
    {{-1, -1}, {8240, 7835}}, {{8255, 7010}, {8255, 7010}}, {{9080, 7010}, {-1, -1}}, {{9920, 7010}, {-1, -1}},  // 36..39
    {{10760, 7010}, {-1, -1}}, {{11645, 7010}, {-1, -1}}, {{-1, -1}, {12065, 6170}}, {{12455, 6155}, {-1, -1}},  // 40..43
    {{13295, 6155}, {-1, -1}}, {{14135, 6155}, {-1, -1}}, {{14975, 6155}, {-1, -1}}, {{15830, 6155}, {16250, 6155}},  // 44..47
    {{-1, -1}, {16250, 6980}}, {{16250, 7865}, {-1, -1}}, {{17075, 7865}, {-1, -1}}, {{17900, 7850}, {-1, -1}},  // 48..51
    {{7385, 11680}, {-1, -1}}, {{8210, 11665}, {8630, 11260}}, {{-1, -1}, {8645, 10390}}, {{9050, 10390}, {-1, -1}},  // 52..55
    {{9920, 10390}, {-1, -1}}, {{-1, -1}, {10760, 10390}}, {{10760, 11245}, {-1, -1}}, {{11615, 11245}, {-1, -1}},  // 56..59
    {{12470, 11245}, {-1, -1}}, {{13295, 11245}, {-1, -1}}, {{-1, -1}, {13730, 10375}}, {{-1, -1}, {13730, 9560}},  // 60..63
    {{14135, 9560}, {-1, -1}}, {{14960, 9560}, {-1, -1}}, {{15800, 9560}, {-1, -1}}, {{16625, 9560}, {-1, -1}},  // 64..67
    {{-1, -1}, {17075, 9925}}, {{17075, 11230}, {17075, 10795}}, {{17900, 11230}, {-1, -1}}, {{-1, -1}, {4665, 4625}},  // 68..71
    {{4230, 4025}, {4665, 3800}}, {{-1, -1}, {4665, 2940}}, {{4680, 2535}, {-1, -1}}, {{5505, 2520}, {5925, 2520}},  // 72..75
    {{-1, -1}, {5925, 1710}}, {{5715, 1110}, {5925, 885}}, {{-1, -1}, {5910, 3395}}, {{5715, 4475}, {5925, 4265}},  // 76..79
    {{-1, -1}, {22360, 8690}}, {{21910, 8285}, {-1, -1}}, {{21085, 8285}, {-1, -1}}, {{-1, -1}, {5475, 7175}},  // 80..83
    {{-1, -1}, {5460, 8045}}, {{-1, -1}, {5460, 8900}}, {{5460, 9755}, {-1, -1}}, {{6300, 9755}, {6740, 9755}},  // 84..87
    {{-1, -1}, {6725, 10600}}, {{6530, 11665}, {6725, 11455}}, {{-1, -1}, {6740, 8930}}, {{6545, 8270}, {6755, 8060}},  // 88..91
    {{17915, 1110}, {18140, 885}}, {{-1, -1}, {18140, 1740}}, {{17930, 4460}, {18140, 4235}}, {{-1, -1}, {18140, 3395}},  // 92..95
    {{18155, 2565}, {18155, 2565}}, {{19000, 2550}, {-1, -1}}, {{-1, -1}, {19435, 2955}}, {{-1, -1}, {19420, 3815}},  // 96..99
    {{-1, -1}, {19420, 4655}}, {{18755, 7850}, {18965, 7640}}, {{-1, -1}, {18980, 8525}}, {{18755, 11230}, {18965, 10990}},  // 100..103
    {{-1, -1}, {18965, 10180}}, {{18980, 9775}, {18980, 9360}}, {{19810, 9775}, {-1, -1}}, {{-1, -1}, {20245, 8900}},  // 104..107
    {{20260, 8285}, {20260, 8075}}, {{-1, -1}, {20260, 7250}}, {{3390, 4025}, {-1, -1}}, {{2490, 4040}, {-1, -1}},  // 108..111
    {{-1, -1}, {2475, 3165}}, {{-1, -1}, {-1, -1}}, {{-1, -1}, {-1, -1}}, {{22170, 10840}, {-1, -1}},  // 112..115
    {{-1, -1}, {-1, -1}}, {{-1, -1}, {-1, -1}}, {{2310, 1230}, {-1, -1}},  // 116..118
};

// MineSide of fields 0..112; entry 0 is unused.
constexpr int kMineSide[113] = {
    0, 2, 0, 3, 2, 2, 2, 1, 0, 2, 2, 0, 3, 2, 2, 2,  // 0..15
    1, 0, 2, 2, 2, 2, 2, 0, 2, 1, 1, 2, 0, 2, 2, 3,  // 16..31
    0, 2, 2, 2, 1, 0, 2, 2, 2, 0, 1, 2, 2, 2, 2, 0,  // 32..47
    3, 2, 2, 2, 2, 0, 1, 2, 2, 3, 0, 2, 2, 2, 1, 0,  // 48..63
    2, 2, 2, 2, 3, 0, 2, 1, 0, 1, 2, 0, 1, 0, 1, 0,  // 64..79
    2, 2, 3, 3, 3, 3, 2, 0, 1, 0, 3, 0, 0, 3, 0, 1,  // 80..95
    0, 2, 3, 3, 3, 0, 3, 0, 1, 0, 2, 1, 0, 1, 2, 2,  // 96..111
    3,  // 112..112
};

// The hit rectangles of the large areas 113..118.
constexpr TwipRect kLargeAreaHit[6] = {
    {1905, 7630, 4785, 11775},    // 113 camp of army 1
    {4200, 5525, 5805, 7100},     // 114 HQ of army 1
    {21535, 9575, 23530, 11555},  // 115 island of army 1, bottom right
    {20245, 1050, 23545, 5210},   // 116 camp of army 2
    {19030, 5495, 21010, 7160},   // 117 HQ of army 2
    {1680, 1065, 3705, 3075},     // 118 island of army 2, top left
};

constexpr int kCampPlaceX[2][10] = {
    {1905, 1905, 1905, 1905, 1905, 1905, 1905, 1905, 1905, 1905},
    {22585, 22585, 22585, 20470, 20470, 20470, 22585, 22585, 20470, 20470},
};
constexpr int kCampPlaceY[2][10] = {
    {7630, 8050, 8470, 8890, 9315, 9735, 10155, 10580, 11005, 11425},
    {4000, 3605, 3165, 3995, 3605, 3165, 2730, 2325, 2755, 2350},
};
constexpr int kHQPlaceX[2] = {4630, 19635};
constexpr int kHQPlaceY[2][3] = {{5660, 6140, 6620}, {5680, 6160, 6640}};
constexpr int kMineStoreX[2][5] = {{2745, 3155, 3565, 3975, 4385}, {20870, 21280, 21690, 22100, 22510}};
constexpr int kEnemyMineStoreX[2][5] = {{4590, 4180, 3770, 3360, 2950}, {22715, 22305, 21895, 21485, 21075}};
constexpr int kMineStoreY[2] = {10035, 1935};

// The list of army 1 holds 82 twice and lacks 52; it is kept as it stands.
constexpr int kProximity[2][112] = {
    {71, 83, 72, 84, 73, 85, 110, 74, 86, 111, 75, 87, 112, 76, 78, 88, 90, 77, 79, 89, 91, 1, 19, 35,
     82, 2, 20, 36, 53, 3, 21, 37, 54, 4, 22, 38, 55, 5, 23, 39, 56, 6, 24, 40, 57, 7, 25, 41, 58, 8,
     26, 42, 59, 9, 27, 43, 60, 10, 28, 44, 61, 11, 29, 45, 62, 12, 30, 46, 63, 13, 31, 47, 64, 14, 32,
     48, 65, 15, 33, 49, 66, 16, 34, 50, 67, 17, 51, 68, 18, 69, 70, 92, 94, 101, 103, 93, 95, 102, 104,
     96, 105, 97, 106, 98, 107, 99, 108, 100, 109, 82, 81, 80},
    {109, 100, 108, 99, 107, 98, 82, 106, 97, 81, 105, 96, 80, 104, 102, 95, 93, 103, 101, 94, 92, 70,
     51, 34, 18, 69, 50, 33, 17, 68, 49, 32, 16, 67, 48, 31, 15, 66, 47, 30, 14, 65, 46, 29, 13, 64, 45,
     28, 12, 63, 44, 27, 11, 62, 43, 26, 10, 61, 42, 25, 9, 60, 41, 24, 8, 59, 40, 23, 7, 58, 39, 22, 6,
     57, 38, 21, 5, 56, 37, 20, 4, 55, 36, 19, 3, 54, 35, 2, 53, 1, 52, 89, 91, 79, 77, 88, 90, 78, 76,
     87, 75, 86, 74, 85, 73, 84, 72, 83, 71, 110, 111, 112},
};

int SideIndex(int side) { return CheckIndex(side, 1, 2, "Side") - 1; }

bool IsOneOf(int field, std::initializer_list<int> fields)
{
    return std::find(fields.begin(), fields.end(), field) != fields.end();
}

// The hit rectangles are filled once, from the rule, as the board is set up.
std::array<TwipRect, 119> BuildHitTable()
{
    std::array<TwipRect, 119> table{};
    for (int field = 1; field <= kLastField; ++field)
        table[field] = ComputeFieldHit(field);
    return table;
}

} // namespace

int FieldRoads(int field, int k)
{
    return kRoads[CheckIndex(field, 0, 119, "FieldRoads")][CheckIndex(k, 0, 2, "FieldRoads")];
}

int FieldHeading(int field, int k)
{
    return kHeadings[CheckIndex(field, 0, 119, "FieldHeading")][CheckIndex(k, 0, 2, "FieldHeading")];
}

std::array<FieldNeighbour, 3> FieldNeighbours(int field)
{
    std::array<FieldNeighbour, 3> result{};
    for (int k = 0; k < 3; ++k)
        result[k] = FieldNeighbour{FieldRoads(field, k), FieldHeading(field, k)};
    return result;
}

int FieldAnchorX(int field, int k)
{
    return kAnchors[CheckIndex(field, 1, kLastField, "FieldAnchorX")][CheckIndex(k, 0, 1, "FieldAnchorX")][0];
}

int FieldAnchorY(int field, int k)
{
    return kAnchors[CheckIndex(field, 1, kLastField, "FieldAnchorY")][CheckIndex(k, 0, 1, "FieldAnchorY")][1];
}

TwipPoint FieldAnchor(int field, int k) { return TwipPoint{FieldAnchorX(field, k), FieldAnchorY(field, k)}; }

int AnchorIndexFor(int heading)
{
    CheckIndex(heading, 0, 3, "Heading");
    return (heading == kEast || heading == kWest) ? 0 : 1;
}

TwipPoint AnchorFor(int field, int heading) { return FieldAnchor(field, AnchorIndexFor(heading)); }

int PictureWidthFor(int heading) { return AnchorIndexFor(heading) == 0 ? kPictureLong : kPictureShort; }

int PictureHeightFor(int heading) { return AnchorIndexFor(heading) == 0 ? kPictureShort : kPictureLong; }

TwipRect ComputeFieldHit(int field)
{
    CheckIndex(field, 1, kLastField, "FieldHit");
    if (field > kLastRoadField)
        return kLargeAreaHit[field - kCamp1];

    const int x0 = FieldAnchorX(field, 0);
    const int y0 = FieldAnchorY(field, 0);
    const int x1 = FieldAnchorX(field, 1);
    const int y1 = FieldAnchorY(field, 1);
    const bool horizontal = x0 != -1;
    const bool vertical = x1 != -1;

    if (vertical && !horizontal) {
        if (field == 63)
            return TwipRect{x1 - 430, y1, x1 + 320, y1 + 750};
        return TwipRect{x1, y1, x1 + 330, y1 + 750};
    }
    if (horizontal && !vertical) {
        if (IsOneOf(field, {8, 11, 17}))
            return TwipRect{x0, y0 - 430, x0 + 750, y0 + 320};
        if (IsOneOf(field, {23, 28, 41, 58}))
            return TwipRect{x0, y0, x0 + 750, y0 + 750};
        return TwipRect{x0, y0, x0 + 750, y0 + 330};
    }
    // Both anchors: a bend or a junction, a square of 750.
    if (IsOneOf(field, {32, 69, 105, 108}))
        return TwipRect{x1, y1, x1 + 750, y1 + 750};
    if (IsOneOf(field, {53, 72, 77, 79, 89, 91, 92, 94, 101, 103}))
        return TwipRect{x0, y1, x0 + 750, y1 + 750};
    // 2, 37, 47, 75, 87, 96
    return TwipRect{x0, y0, x0 + 750, y0 + 750};
}

TwipRect FieldHit(int field)
{
    static const std::array<TwipRect, 119> table = BuildHitTable();
    return table[CheckIndex(field, 1, kLastField, "FieldHit")];
}

int MineSide(int field) { return kMineSide[CheckIndex(field, 1, kLastRoadField, "MineSide")]; }

TwipPoint CampPlace(int side, int slot)
{
    const int a = SideIndex(side);
    CheckIndex(slot, 0, 9, "CampPlace");
    return TwipPoint{kCampPlaceX[a][slot], kCampPlaceY[a][slot]};
}

TwipPoint HQPlace(int side, int place)
{
    const int a = SideIndex(side);
    return TwipPoint{kHQPlaceX[a], kHQPlaceY[a][CheckIndex(place, 0, 2, "HQPlace")]};
}

TwipPoint MineStore(int side, int mine)
{
    const int a = SideIndex(side);
    return TwipPoint{kMineStoreX[a][CheckIndex(mine, 0, 4, "MineStore")], kMineStoreY[a]};
}

TwipPoint EnemyMineStore(int side, int mine)
{
    const int a = SideIndex(side);
    return TwipPoint{kEnemyMineStoreX[a][CheckIndex(mine, 0, 4, "EnemyMineStore")], kMineStoreY[a]};
}

int ProximityOrder(int side, int i)
{
    const int a = SideIndex(side);
    return kProximity[a][CheckIndex(i, 1, 112, "ProximityOrder") - 1];
}

const std::array<ForwardPost, 2>& ForwardPosts(int side)
{
    return SideIndex(side) == 0 ? kForwardPosts1 : kForwardPosts2;
}

bool IsAirport(int field) { return std::find(kAirports.begin(), kAirports.end(), field) != kAirports.end(); }

bool IsHarbour(int field) { return std::find(kHarbours.begin(), kHarbours.end(), field) != kHarbours.end(); }

bool IsCoastRoad(int field)
{
    return field == 1 || (field >= 3 && field <= 18) || (field >= 52 && field <= 68) || field == 70;
}

bool IsStrategicPoint(int field)
{
    return std::find(kStrategicPoints.begin(), kStrategicPoints.end(), field) != kStrategicPoints.end();
}

int StrategicLinkPartner(int field)
{
    for (const StrategicLink& link : kStrategicLinks) {
        if (link.A == field)
            return link.B;
        if (link.B == field)
            return link.A;
    }
    return -1;
}

bool IsBehindForwardPosts(int side, int field)
{
    if (SideIndex(side) == 0)
        return (field >= 71 && field <= 76) || field == 78 || (field >= 83 && field <= 88) || field == 90 ||
               (field >= 110 && field <= 112);
    return (field >= 80 && field <= 82) || field == 93 || (field >= 95 && field <= 100) || field == 102 ||
           (field >= 104 && field <= 109);
}

bool CrossesForwardPost(int side, int from, int to)
{
    for (const ForwardPost& post : ForwardPosts(side))
        if (post.From == from && post.To == to)
            return true;
    return false;
}

} // namespace vk
