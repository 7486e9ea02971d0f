#include "ui/CardPanels.h"

#include "cards/CardInfo.h"
#include "cards/RadioYambo.h"
#include "shell/Global.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"

namespace vk {

QString CardPicture(int card)
{
    return Global().ProgramFolder + QString::fromStdString(CardPictureName(card));
}

void ShowPersonnelPicture(Hoofdvenster& w, int card)
{
    w.imgPersTekst->SetPicture(CardPicture(card));
    w.Personnel->SetVisible(true);
    w.Personnel->raise();
}

void ShowPersonnelCard(Hoofdvenster& w, int card, const QString& tag)
{
    w.Personnel->Tag = tag;
    ShowPersonnelPicture(w, card);
}

void ShowRadioYamboCard(Hoofdvenster& w, int card)
{
    w.imgRaYaTekst->SetPicture(CardPicture(card));
    w.RadioYambo->SetVisible(true);
    w.RadioYambo->raise();
}

void cmd_Info_Click(Hoofdvenster& w)
{
    const WindowValues& v = w.V;
    const QString& tag = w.Personnel->Tag;
    int card = 0;
    const auto& hand = v.Progress.Deck.CardHand[static_cast<std::size_t>(v.Board.LocalSide - 1)];
    if (tag == QLatin1String("1"))
        card = hand[0];
    else if (tag == QLatin1String("2"))
        card = hand[1];
    else if (tag == QLatin1String("3"))
        card = v.CurrentCard;
    const std::optional<CardInfoText> info = PersonnelCardInfo(card);
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
