#pragma once

// ShowCompanies as numbers: how many company pictures of each display stand visible.
// Element i (counted from 1) shows when i is not above the count, so a display never
// shows more than it has elements: 25 camp pictures (KmpCmp_1 / KmpCmp_2), 20 prison
// pictures (GV1 / GV2), 25 reserve pictures (Image2, only for the army of BoardSide).

namespace vk {

struct BoardState;

inline constexpr int kCampCompanyPictures = 25;
inline constexpr int kPrisonCompanyPictures = 20;
inline constexpr int kReserveCompanyPictures = 25;

struct CompanyPicturesShown {
    int Camp = 0;
    int Prison = 0;
    // -1 when `side` is not the army of BoardSide: Image2 is left as it is.
    int Reserve = -1;
    bool operator==(const CompanyPicturesShown&) const = default;
};

// The number of visible elements among `elements` pictures for a count.
int PicturesShown(int count, int elements);

CompanyPicturesShown ShowCompanies(const BoardState& state, int side);

} // namespace vk
