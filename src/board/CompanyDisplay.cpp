#include "board/CompanyDisplay.h"

#include "board/BoardState.h"

#include <algorithm>

namespace vk {

int PicturesShown(int count, int elements) { return std::clamp(count, 0, elements); }

CompanyPicturesShown ShowCompanies(const BoardState& state, int side)
{
    CompanyPicturesShown shown;
    shown.Camp = PicturesShown(state.CampCompanies(side), kCampCompanyPictures);
    shown.Prison = PicturesShown(state.PrisonCompanies(side), kPrisonCompanyPictures);
    if (side == state.BoardSide)
        shown.Reserve = PicturesShown(state.ReserveCompanies(side), kReserveCompanyPictures);
    return shown;
}

} // namespace vk
