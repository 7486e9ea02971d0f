#include "game/PersonnelReceived.h"

#include "board/BoardTables.h"
#include "board/BoardView.h"
#include "cards/DeckMoves.h"
#include "cards/PersonnelEffects.h"
#include "cards/PersonnelPicks.h"
#include "cards/PersonnelTexts.h"
#include "cards/Reactions.h"
#include "game/GameFiles.h"
#include "link/SharedFolderFiles.h"
#include "shell/RunLog.h"
#include "shell/TurnNotice.h"
#include "ui/BoardDisplay.h"
#include "ui/CardPanels.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"
#include "ui/MessageBoard.h"

namespace vk {

namespace {

void Mark(Control& mark, const Control& target)
{
    mark.Move(target.Left(), target.Top(), target.Width(), target.Height());
    mark.SetVisible(true);
}

// The card addresses its vehicle and field through the action record, which
// holds -1 before the dice: the vehicle's control is then looked up at -1,
// which has no member and ends the run through the fault report. A field
// off the road squares (such as that -1) gets no blue mark.
void MarkTarget(Hoofdvenster& w, const PersonnelReceipt& receipt)
{
    WindowValues& v = w.V;
    if (receipt.MarksVehicle)
        Mark(*w.Kader, w.Voertuig(v.Progress.ExternalSide, v.Act.ActVeh[0]));
    const int field = v.Act.ActVeh[1];
    if (receipt.MarksField && IsRoadField(field)) {
        const PlacedBox box = FieldMarkBoxAnyHeading(ViewOf(v.Board), field);
        w.Kader2->Move(box.Left, box.Top, box.Width, box.Height);
        w.Kader2->SetVisible(true);
    }
}

// A Contra spionage in hand is offered; otherwise the player is told.
void OfferOrNotice(Hoofdvenster& w, const PersonnelReceipt& receipt, bool hasContraSpionage)
{
    WindowValues& v = w.V;
    if (!hasContraSpionage) {
        MessageBox(QString::fromUtf8(receipt.Notice), BoxButtons::Ok, BoxIcon::Warning, QString::fromUtf8(receipt.Title));
        return;
    }
    TellPlayer(w, Notice::Question);
    if (AskYesNo(QString::fromUtf8(receipt.Offer), QString::fromUtf8(receipt.OfferTitle))) {
        v.CardAnnulled = true;
        UseContraAgainstPersonnel(v.Progress.Deck, v.Board.LocalSide);
    }
}

void ApplyCard(Hoofdvenster& w, int value)
{
    WindowValues& v = w.V;
    BoardState& board = v.Board;
    const int external = v.Progress.ExternalSide;
    const int local = board.LocalSide;
    const int vehicle = v.Act.ActVeh[0];
    const int field = v.Act.ActVeh[1];
    switch (PersonnelCardOf(value)) {
    case kCamouflage:
        Camouflage(board, external, v.PickedVehicle, vehicle);
        break;
    case kUitwisseling:
        ExchangePrisoners(board);
        break;
    case kLandingsvaartuigen:
    case kHelikopter:
    case kMarineLuchtvaartdienst:
    case kVerbindingsdienst:
        MoveByPersonnel(board, external, vehicle, field);
        break;
    case kLuchtlandingstroepen:
        MoveByPersonnel(board, external, v.PickedVehicle, v.PickedField);
        break;
    case kHinderlaag:
        AmbushOwnVehicle(board, local, vehicle);
        break;
    case kMilitairePolitie:
        MilitaryPoliceOnOwnJeep(board, local);
        break;
    case kMijnopruimingsdienst:
        ClearMineOnOwnersCopy(board, local, field);
        break;
    default:
        return;
    }
    ShowBoardAndCounts(w);
}

} // namespace

void ReceivePersonnel(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    CompassDeck& deck = v.Progress.Deck;
    const int value = v.CurrentCard;
    v.CurrentFile = OwnFile(w, MessageKindId::Answer);
    MirrorCardPlayedByAsker(deck, v.Progress.ExternalSide, PersonnelCardOf(value));
    v.CardAnnulled = false;
    const bool hasContraSpionage = ContraOfferedAgainstPersonnel(deck, v.Board.LocalSide);
    if (const PersonnelReceipt* receipt = ReceiptOf(value)) {
        LogAt(QString::fromUtf8(receipt->LogLine));
        MarkTarget(w, *receipt);
        OfferOrNotice(w, *receipt, hasContraSpionage);
        if (!v.CardAnnulled)
            ApplyCard(w, value);
    }
    w.Kader->SetVisible(false);
    w.Kader2->SetVisible(false);
    int answer = kAnswerNoReaction;
    if (v.CardAnnulled) {
        LogAt(QStringLiteral("using personnel card number 24 to annul opponents card at "));
        answer = kAnswerCardUsed;
    }
    SendMessage(v.CurrentFile, MessageKindId::Answer, QStringList{QString::number(answer)});
    v.LastSentFile = v.CurrentFile;
}

void OpponentPlayedPersonnel(Hoofdvenster& w, const QString& file)
{
    WindowValues& v = w.V;
    const MessageValues played = ReadWholeMessage(MessageKindId::PersonnelUsed, file);
    v.CurrentCard = NumberIn(played, "CARD");
    v.PickedVehicle = NumberIn(played, "V1");
    v.PickedField = NumberIn(played, "V2");
    LogAt(QStringLiteral("before rolling the dices, the opponent uses personnel card number ") +
          QString::number(v.CurrentCard) + QStringLiteral(" at "));
    ShowOnBoard(QStringLiteral("de tegenspeler gebruikt voor zijn beurt eerst de personnel kaart die u nu te zien "
                               "krijgt"));
    ShowPersonnelPicture(w, PersonnelCardOf(v.CurrentCard));
    DeleteOnce(file);
    ReceivePersonnel(w);
    w.Personnel->SetVisible(false);
}

} // namespace vk
