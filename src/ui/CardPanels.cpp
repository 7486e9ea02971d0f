#include "ui/CardPanels.h"

#include "cards/CardInfo.h"
#include "cards/DeckMoves.h"
#include "cards/RadioYambo.h"
#include "shell/Global.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"

namespace vk {

QString CardPicture(int card)
{
    return Global().ProgramFolder + QString::fromStdString(CardPictureName(card));
}

int ShownCardSlot(const Hoofdvenster& w)
{
    const QString& tag = w.Personnel->Tag;
    for (int slot = 1; slot <= 3; ++slot)
        if (tag == QString::number(slot))
            return slot;
    return 0;
}

int ShownCard(const Hoofdvenster& w)
{
    const WindowValues& v = w.V;
    const int slot = ShownCardSlot(w);
    if (slot == 3)
        return v.CurrentCard;
    return slot > 0 ? HandSlot(v.Progress.Deck, v.Board.LocalSide, slot) : 0;
}

void ShowPersonnelPicture(Hoofdvenster& w, int card)
{
    w.imgPersTekst->SetPicture(CardPicture(card));
    w.Personnel->SetVisible(true);
    w.Personnel->raise();
}

void ShowRadioYamboCard(Hoofdvenster& w, int card)
{
    w.imgRaYaTekst->SetPicture(CardPicture(card));
    w.RadioYambo->SetVisible(true);
    w.RadioYambo->raise();
}

void cmd_Info_Click(Hoofdvenster& w)
{
    const std::optional<CardInfoText> info = PersonnelCardInfo(ShownCard(w));
    if (!info)
        return;
    MessageBox(QString::fromUtf8(info->Text), BoxButtons::Ok, BoxIcon::Information, QString::fromUtf8(info->Title));
}

void PersonnelCard_DblClick(Hoofdvenster& w, bool textImage)
{
    const ImageControl* image = textImage ? w.imgPersTekst : w.imgPersonnel;
    if (image->Tag == QLatin1String("DK"))
        w.Personnel->SetVisible(false);
}

void RadioYamboCard_DblClick(Hoofdvenster& w)
{
    PanelControl& frame = *w.RadioYambo;
    const int right = w.Width() - frame.Width();
    QString tip;
    if (frame.Left() == right) {
        frame.SetLeft(right / 2);
        tip = QStringLiteral("Dubbelklik om deze kaart naar rechts te verplaatsen");
    } else {
        frame.SetLeft(right);
        tip = QStringLiteral("Dubbelklik om deze kaart naar het midden te verplaatsen");
    }
    w.imgRadioYambo->SetToolTip(tip);
    w.imgRaYaTekst->SetToolTip(tip);
    frame.SetVisible(true);
}

void ConnectCardPanels(Hoofdvenster& w)
{
    w.cmd_Info->Click = [&w] { cmd_Info_Click(w); };
    w.imgPersonnel->Mouse.DblClick = [&w] { PersonnelCard_DblClick(w, false); };
    w.imgPersTekst->Mouse.DblClick = [&w] { PersonnelCard_DblClick(w, true); };
    w.imgRadioYambo->Mouse.DblClick = [&w] { RadioYamboCard_DblClick(w); };
    w.imgRaYaTekst->Mouse.DblClick = [&w] { RadioYamboCard_DblClick(w); };
}

} // namespace vk
