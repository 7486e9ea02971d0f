#include "game/CompassDraw.h"

#include "cards/DeckMoves.h"
#include "cards/RadioYambo.h"
#include "game/GameFiles.h"
#include "game/GameFlow.h"
#include "game/PersonnelPlay.h"
#include "game/PhaseTable.h"
#include "game/RadioYamboPlay.h"
#include "link/SharedFolderFiles.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "ui/CardPanels.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"
#include "ui/MessageBoard.h"

namespace vk {

namespace {

void LogTaking(int card)
{
    LogAt(QStringLiteral("taking compas card number ") + QString::number(card) + QStringLiteral(" at "));
}

void LogNextCard(const CompassDeck& deck)
{
    LogLine(QStringLiteral("next compas card is number ") + QString::number(TopCard(deck)));
}

// The first draw of a turn goes on at 33, the second ends the turn.
int AfterDraw(int phase)
{
    return phase < 33 ? 33 : 39;
}

void PersonnelWarning(const QString& text)
{
    MessageBox(text, BoxButtons::Ok, BoxIcon::Warning, QStringLiteral("Personnel kaart"));
}

// A click on a miniature: hand slot 1 or 2, or 3 for the card just drawn,
// shown in the panel.
void OpenCard(Hoofdvenster& w, PhaseEvent event, int slot)
{
    WindowValues& v = w.V;
    const int next = NextPhase(event, v.GamePhase);
    if (next < 0)
        return;
    v.GamePhase = next;
    w.cmdKompasGebruik->SetCaption(next == 1 ? QStringLiteral("Gebruik") : QStringLiteral("Verwerp"));
    w.KK1->SetVisible(false);
    w.KK2->SetVisible(false);
    w.cmdGooi->SetVisible(false);
    for (Control* c : std::initializer_list<Control*>{w.cmdKompasSluit, w.cmdKompasGebruik}) {
        c->SetVisible(true);
        c->SetEnabled(true);
    }
    w.cmdEindeBeurt->SetEnabled(false);
    w.Personnel->Tag = QString::number(slot);
    ShowPersonnelPicture(w, ShownCard(w));
}

// The choice among three made: the panel closes, ".pnc" tells the opponent,
// and the card given up goes under the deck.
void GiveUpCard(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    CompassDeck& deck = v.Progress.Deck;
    const int side = v.Board.LocalSide;
    w.Personnel->SetVisible(false);
    w.KK3->SetVisible(false);
    w.KK1->SetVisible(true);
    w.KK2->SetVisible(true);
    w.cmdKompasSluit->SetVisible(false);
    w.cmdKompasGebruik->SetVisible(false);
    const int which = ShownCardSlot(w);
    if (which == 0)
        return;
    const int out = which == 3 ? v.CurrentCard : HandSlot(deck, side, which);
    SendMessage(OwnFile(w, MessageKindId::PersonnelDealt), MessageKindId::PersonnelDealt,
                QStringList{QString::number(out), QString::number(v.CurrentCard), QString::number(which)});
    GiveUpOneOfThree(deck, side, which, v.CurrentCard);
    LogAt(QStringLiteral("returning compas card number ") + QString::number(TopCard(deck)) + QStringLiteral(" at "));
    v.CurrentCard = TopCard(deck);
    RotateTopToBottom(deck);
    LogNextCard(deck);
}

} // namespace

void UseHandCard(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    w.cmdStop->SetEnabled(false);
    const int slot = ShownCardSlot(w);
    const int which = slot == 3 ? 0 : slot;
    const int side = v.Board.LocalSide;
    v.CurrentCard = PlayFromHand(v.Progress.Deck, side, which, v.CurrentCard);
    LogAt(QStringLiteral("before rolling the dices, I use personnel card number ") + QString::number(v.CurrentCard) +
          QStringLiteral(" at "));
    w.KK1->SetVisible(CardCountOf(v.Progress.Deck, side) > 0);
    for (Control* c : std::initializer_list<Control*>{w.KK1, w.KK2, w.cmdGooi})
        c->SetEnabled(false);
    w.cmdGooi->SetVisible(true);
    for (Control* c : std::initializer_list<Control*>{w.cmdKompasSluit, w.cmdKompasGebruik, w.Personnel})
        c->SetVisible(false);
    PlayPersonnel(w);
    v.GamePhase = 3;
}

void ChooseDrawPhase(Hoofdvenster& w, int phase)
{
    WindowValues& v = w.V;
    if (phase == 27)
        for (Control* c : std::initializer_list<Control*>{w.Dice_1, w.Dice_2, w.MiniDice_1, w.MiniDice_2,
                                                          w.DiceKader})
            c->SetVisible(false);
    v.GamePhase = ChooseDraw(v.Progress.Deck, phase, v.Board.CompassOwed, v.Board.PendingDraws).NextPhase;
}

void DrawRadioYamboCard(Hoofdvenster& w, int phase)
{
    WindowValues& v = w.V;
    CompassDeck& deck = v.Progress.Deck;
    WaitForConsumed(v);
    v.CurrentCard = TopCard(deck);
    LogTaking(v.CurrentCard);
    RotateTopToBottom(deck);
    LogNextCard(deck);
    WaitForConsumed(v);
    const QString file = OwnFile(w, MessageKindId::CompassCard);
    SendMessage(file, MessageKindId::CompassCard, QStringList{QString::number(v.CurrentCard)});
    v.LastSentFile = file;
    PlayRadioYambo(w);
    v.GamePhase = AfterDraw(phase);
}

void DrawPersonnelCard(Hoofdvenster& w, int phase)
{
    WindowValues& v = w.V;
    CompassDeck& deck = v.Progress.Deck;
    const int side = v.Board.LocalSide;
    if (CardCountOf(deck, side) >= 2) {
        PersonnelWarning(QStringLiteral("U hebt een 3e Personnel kaart getrokken. U mag er slechts twee houden, dus "
                                        "kan je je kaarten bekijken en kiezen welke je niet wilt behouden."));
        v.GamePhase = phase + 1;
        return;
    }
    const int card = TopCard(deck);
    LogTaking(card);
    // Not registered as the last file sent: nothing waits for its reader.
    SendMessage(OwnFile(w, MessageKindId::PersonnelKept), MessageKindId::PersonnelKept,
                QStringList{QString::number(card)});
    KeepPersonnel(deck, side);
    LogNextCard(deck);
    PersonnelWarning(QStringLiteral("U hebt een Personnel kaart getrokken. U kan die bekijken vanaf het begin van uw "
                                    "volgende beurt."));
    v.GamePhase = AfterDraw(phase);
}

void ThirdCardDrawn(Hoofdvenster& w, int phase)
{
    WindowValues& v = w.V;
    v.CurrentCard = TopCard(v.Progress.Deck);
    LogTaking(v.CurrentCard);
    LogLine(QStringLiteral("3rd personnel card, this or another card must be returned"));
    for (Control* c : std::initializer_list<Control*>{w.KK1, w.KK2, w.KK3})
        c->SetEnabled(true);
    v.GamePhase = phase + 2;
    // The new card is shown at once.
    KK3_Click(w);
}

void ThirdCardShown(Hoofdvenster& w, int phase)
{
    WaitPhase(w, phase);
    if (w.V.GamePhase == 33 || w.V.GamePhase == 39)
        GiveUpCard(w);
}

void ThirdCardChoice(Hoofdvenster& w, int phase)
{
    WaitPhase(w, phase);
}

void PlayRadioYambo(Hoofdvenster& w)
{
    const int card = w.V.CurrentCard;
    ShowRadioYamboCard(w, card);
    ShowOnBoard(QString::fromStdString(RadioYamboMessage(card)) +
                QStringLiteral(" - klik op deze boodschap om de Radio Yambo kaart te sluiten en uit te voeren"));
    PumpUntil([&w] { return Global().BoardText.isEmpty() || !w.V.GameRunning; },
              QStringLiteral("Radio Yambo card read"));
    w.RadioYambo->SetVisible(false);
    CarryOutRadioYambo(w, card);
}

void KK1_Click(Hoofdvenster& w)
{
    OpenCard(w, PhaseEvent::HandCard, 1);
}

void KK2_Click(Hoofdvenster& w)
{
    OpenCard(w, PhaseEvent::HandCard, 2);
}

void KK3_Click(Hoofdvenster& w)
{
    OpenCard(w, PhaseEvent::NewCard, 3);
}

void OpponentDrewRadioYambo(Hoofdvenster& w, const QString& file)
{
    WindowValues& v = w.V;
    CompassDeck& deck = v.Progress.Deck;
    v.CurrentCard = NumberIn(ReadWholeMessage(MessageKindId::CompassCard, file), "CARD");
    MirrorRadioYamboDraw(deck, v.CurrentCard);
    LogAt(QStringLiteral("opponent took compas card number ") + QString::number(v.CurrentCard) +
          QStringLiteral(" at "));
    LogNextCard(deck);
    const int card = v.CurrentCard;
    const RadioYamboKind kind = RadioYamboKindOf(card);
    if (IsRadioYamboCard(card) && kind != RadioYamboKind::Specific) {
        ClearBoard();
        ShowRadioYamboCard(w, card);
        const QString shown = QStringLiteral("Je tegenspeler heeft als kompaskaart het radio yambo bericht ontvangen "
                                             "die u nu te zien krijgt. Klik 'OK' om dit bericht en de kaart te "
                                             "sluiten");
        if (kind == RadioYamboKind::Shown) {
            LogLine(QStringLiteral("showing radio yambo info"));
            MessageBox(shown + QStringLiteral("."), BoxButtons::Ok, BoxIcon::Information,
                       QStringLiteral("Tegenspeler trok Radio Yambo kaart"));
            w.RadioYambo->SetVisible(false);
        } else {
            MessageBox(shown + QStringLiteral(", en de instructies uit te voeren."), BoxButtons::Ok,
                       BoxIcon::Information, QStringLiteral("Tegenspeler trok Radio Yambo kaart"));
            w.RadioYambo->SetVisible(false);
            LogLine(QStringLiteral("executing automatic radio yambo procedure"));
            ApplyRadioYambo(w, card);
        }
    }
    DeleteOnce(file);
}

void OpponentKeptPersonnel(Hoofdvenster& w, const QString& file)
{
    WindowValues& v = w.V;
    CompassDeck& deck = v.Progress.Deck;
    v.CurrentCard = NumberIn(ReadWholeMessage(MessageKindId::PersonnelKept, file), "CARD");
    LogAt(QStringLiteral("opponent took compas card number ") + QString::number(v.CurrentCard) +
          QStringLiteral(" at "));
    MirrorKeptPersonnel(deck, v.Progress.ExternalSide, v.CurrentCard);
    LogNextCard(deck);
    DeleteOnce(file);
}

void OpponentDealtThirdCard(Hoofdvenster& w, const QString& file)
{
    WindowValues& v = w.V;
    CompassDeck& deck = v.Progress.Deck;
    const MessageValues dealt = ReadWholeMessage(MessageKindId::PersonnelDealt, file);
    const int which = NumberIn(dealt, "CARDIND");
    v.CurrentCard = NumberIn(dealt, "CARDIN");
    // The line names the new card, not the one given up.
    LogAt(QStringLiteral("opponent dumped card number ") + QString::number(v.CurrentCard) + QStringLiteral(" at "));
    GiveUpOneOfThree(deck, v.Progress.ExternalSide, which, v.CurrentCard);
    RotateTopToBottom(deck);
    LogNextCard(deck);
    DeleteOnce(file);
}

} // namespace vk
