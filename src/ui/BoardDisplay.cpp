#include "ui/BoardDisplay.h"

#include "board/BoardView.h"
#include "board/CompanyDisplay.h"
#include "board/MinesAndFlags.h"
#include "shell/Global.h"
#include "ui/Hoofdvenster.h"

namespace vk {

namespace {

QString ViewFolder(const Hoofdvenster& w)
{
    return Global().ArmyImageFolder[w.V.Board.BoardSide == 2 ? 1 : 0];
}

void SetPictureOnce(ImageControl& control, const QString& path)
{
    if (control.Picture() != path)
        control.SetPicture(path);
}

void Place(Hoofdvenster& w, ImageControl& control, const Picture& picture, const QString& path)
{
    QWidget* container = picture.InStock ? static_cast<QWidget*>(w.Stock) : static_cast<QWidget*>(&w);
    if (control.parentWidget() != container) {
        control.setParent(container);
        control.raise();
    }
    if (!path.isEmpty())
        SetPictureOnce(control, path);
    control.Move(picture.Left, picture.Top, picture.Width, picture.Height);
    control.SetVisible(picture.Visible);
}

std::array<ImageControl*, 11>& Vehicles(Hoofdvenster& w, int side)
{
    return side == 1 ? w.Voertuig_1 : w.Voertuig_2;
}

} // namespace

void ShowBoard(Hoofdvenster& w)
{
    const BoardState& board = w.V.Board;
    const QString folder = ViewFolder(w);
    for (int side = 1; side <= 2; ++side) {
        for (int slot = 0; slot < kVehicleSlots; ++slot) {
            const QString tag = QString::fromStdString(board.VehicleTag(side, slot));
            Place(w, *Vehicles(w, side)[static_cast<std::size_t>(slot)], board.VehiclePicture(side, slot),
                  folder + tag + QStringLiteral(".gif"));
        }
        for (int mine = 0; mine < kMinesPerArmy; ++mine) {
            const auto index = static_cast<std::size_t>(mine);
            const Picture& own = board.MinePicture(side, mine);
            const Picture& captured = board.CapturedMinePicture(side, mine);
            Place(w, *(side == 1 ? w.Mijn_1 : w.Mijn_2)[index], own, folder + QString::fromStdString(own.Image));
            Place(w, *(side == 1 ? w.Mijn_1_2 : w.Mijn_2_1)[index], captured,
                  folder + QString::fromStdString(captured.Image));
        }
    }
    // The marks lie above the pieces.
    w.Kader->raise();
    w.Kader2->raise();
}

void ShowBoardView(Hoofdvenster& w)
{
    const BoardState& board = w.V.Board;
    const BoardView view = ViewOf(board);
    const int boardSide = board.BoardSide == 2 ? 2 : 1;
    SetPictureOnce(*w.Speelveld, ViewFolder(w) + QStringLiteral("yambo_%1.bmp").arg(boardSide));
    w.Speelveld->Move(w.Speelveld->Left(), w.Speelveld->Top(), kBoardWidth, kBoardHeight);
    const auto move = [&view](Control& control, BoardFrame frame) {
        const TwipPoint at = FramePosition(view, frame);
        control.Move(at.X, at.Y, control.Width(), control.Height());
    };
    move(*w.frDices, BoardFrame::frDices);
    move(*w.msgBoard, BoardFrame::msgBoard);
    move(*w.KampComp[0], BoardFrame::KampComp0);
    move(*w.KampComp[1], BoardFrame::KampComp1);
    move(*w.Gevang_1, BoardFrame::Gevang_1);
    move(*w.Gevang_2, BoardFrame::Gevang_2);
    move(*w.Vlagdekking_1, BoardFrame::Vlagdekking_1);
    move(*w.Vlagdekking_2, BoardFrame::Vlagdekking_2);
    const QString company = ViewFolder(w) + QStringLiteral("compagnie_%1.gif").arg(boardSide);
    for (ImageControl* image : w.Image2)
        SetPictureOnce(*image, company);
}

void ShowCompanies(Hoofdvenster& w, int side)
{
    const CompanyPicturesShown shown = vk::ShowCompanies(w.V.Board, side);
    const QString folder = ViewFolder(w);
    const QString company = folder + QStringLiteral("compagnie_%1.gif").arg(side);
    const auto show = [&company](auto& pictures, int count) {
        for (std::size_t i = 0; i < pictures.size(); ++i) {
            SetPictureOnce(*pictures[i], company);
            pictures[i]->SetVisible(static_cast<int>(i) < count);
        }
    };
    show(side == 1 ? w.KmpCmp_1 : w.KmpCmp_2, shown.Camp);
    show(side == 1 ? w.GV1 : w.GV2, shown.Prison);
    if (shown.Reserve >= 0)
        for (std::size_t i = 0; i < w.Image2.size(); ++i)
            w.Image2[i]->SetVisible(static_cast<int>(i) < shown.Reserve);
}

void ShowFlagCover(Hoofdvenster& w, int side)
{
    const FlagCoverSize size = FlagCoverFor(side, w.V.Board.FlagHome(side));
    PanelControl& cover = side == 1 ? *w.Vlagdekking_1 : *w.Vlagdekking_2;
    cover.Move(cover.Left(), cover.Top(), size.Width, size.Height);
}

void HideArmies(Hoofdvenster& w)
{
    for (auto* arrays : {&w.Voertuig_1, &w.Voertuig_2})
        for (ImageControl* v : *arrays)
            v->SetVisible(false);
    for (auto* arrays : {&w.Mijn_1, &w.Mijn_2, &w.Mijn_1_2, &w.Mijn_2_1})
        for (ImageControl* m : *arrays)
            m->SetVisible(false);
}

void ShowBoardAndCounts(Hoofdvenster& w)
{
    ShowBoard(w);
    for (int side = 1; side <= 2; ++side) {
        ShowCompanies(w, side);
        ShowFlagCover(w, side);
    }
}

} // namespace vk
