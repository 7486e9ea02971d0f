#include "game/RadioYamboPlay.h"

#include "board/BoardTables.h"
#include "cards/DeckMoves.h"
#include "cards/RadioYamboEffects.h"
#include "game/GameFiles.h"
#include "link/SharedFolderFiles.h"
#include "shell/RunLog.h"
#include "ui/BoardDisplay.h"
#include "ui/CardPanels.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"
#include "ui/MessageBoard.h"

namespace vk {

namespace {

int LostVehicles(const BoardState& board, int side)
{
    int lost = 0;
    for (int slot = 0; slot < kVehicleSlots; ++slot)
        if (board.VehiclePos(side, slot) == kOutOfGame)
            ++lost;
    return lost;
}

// The drawer picks `picks` lost vehicles in Stock, told by `prompt`.
void PickFromStock(Hoofdvenster& w, int picks, const QString& prompt)
{
    WindowValues& v = w.V;
    v.Act.ActVeh[0] = -1;
    if (picks == 2)
        v.Act.ActVeh[1] = -1;
    v.StockPicksLeft = picks;
    ShowOnBoard(prompt);
    PumpUntil([&v] { return v.StockPicksLeft == 0 || !v.GameRunning; }, QStringLiteral("Radio Yambo stock pick"));
    ClearBoard();
}

// The drawer's choice goes to the opponent, whose copy is then changed; the
// drawer waits until it has taken the message.
void SendChoice(Hoofdvenster& w, int card, int second)
{
    WindowValues& v = w.V;
    const QString file = OwnFile(w, MessageKindId::RadioYambo);
    SendMessage(file, MessageKindId::RadioYambo,
                QStringList{QString::number(card), QString::number(v.Act.ActVeh[0]), QString::number(second),
                            QStringLiteral("100")});
    ShowOnBoard(QStringLiteral("even geduld aub, wijzigingen door deze radio yambo kaart worden aangebracht bij je "
                               "tegenspeler"));
    v.LastSentFile = file;
    WaitForConsumed(v);
}

// Card 4: a lost vehicle back from Stock, if there is one.
void GeneralMobilisation(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    const int side = v.Board.LocalSide;
    ReserveToCampUpToThree(v.Board, side);
    ShowBoardAndCounts(w);
    if (LostVehicles(v.Board, side) > 0)
        PickFromStock(w, 1,
                      QStringLiteral("U mag een voertuig naar je kamp overbrengen vanuit de 'stock'. dubbelklik op "
                                     "het gewenste voertuig."));
    SendChoice(w, 4, 100);
}

// Cards 12 and 18: up to two lost vehicles back.
void AlliedHelp(Hoofdvenster& w, int card)
{
    WindowValues& v = w.V;
    const int side = v.Board.LocalSide;
    ReserveToCampOne(v.Board, side);
    ShowBoardAndCounts(w);
    const int lost = LostVehicles(v.Board, side);
    if (lost == 1)
        PickFromStock(w, 1,
                      QStringLiteral("U mag je voertuig naar je kamp overbrengen vanuit de 'Stock'. dubbelklik op "
                                     "het voertuig."));
    else if (lost >= 2)
        PickFromStock(w, 2,
                      QStringLiteral("U mag twee voertuigen naar je kamp overbrengen vanuit de 'Stock'. dubbelklik "
                                     "op de gewenste voertuigen."));
    SendChoice(w, card, v.Act.ActVeh[1]);
}

// Card 6: the drawer takes a vehicle of the enemy out of the game.
void OperationLeopard(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    ShowOnBoard(QStringLiteral("U mag een voertuig van de tegenstander uit het spel nemen. dubbelklik op het "
                               "gewenste voertuig."));
    v.Act.ActVeh[0] = -1;
    v.LeopardPick = true;
    PumpUntil([&v] { return !v.LeopardPick || !v.GameRunning; }, QStringLiteral("Radio Yambo leopard pick"));
    SendChoice(w, 6, 100);
}

// Card 19: the opponent's Personnel cards, one after the other, each shown
// until the player double-clicks it away.
void Spy(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    const std::vector<int> cards = SpiedCards(v.Progress.Deck, v.Progress.ExternalSide);
    if (cards.empty()) {
        MessageBox(QStringLiteral("Uw tegenstander heeft momenteel geen Personnel kaarten in bezit."), BoxButtons::Ok,
                   BoxIcon::Information, QStringLiteral("Geheime Spionage"));
        return;
    }
    for (ImageControl* image : {w.imgPersTekst, w.imgPersonnel}) {
        image->SetToolTip(QStringLiteral("Dubbelklik op deze kaart om te sluiten."));
        image->Tag = QStringLiteral("DK");
    }
    for (int card : cards) {
        ShowPersonnelPicture(w, card);
        PumpUntil([&w] { return !w.Personnel->Visible() || !w.V.GameRunning; },
                  QStringLiteral("Radio Yambo spied card"));
    }
    for (ImageControl* image : {w.imgPersTekst, w.imgPersonnel}) {
        image->SetToolTip(QString());
        image->Tag = QString();
    }
}

void LogReturned(const StockReturn& returned)
{
    if (returned.Returned)
        LogAt(QString::fromStdString(returned.LogText));
}

void MirrorRadioYambo(Hoofdvenster& w, int card)
{
    WindowValues& v = w.V;
    const int external = v.Progress.ExternalSide;
    switch (card) {
    case 4:
        ReserveToCampUpToThree(v.Board, external);
        LogReturned(ReturnFromStock(v.Board, external, v.Act.ActVeh[0], false));
        break;
    case 12:
    case 18:
        ReserveToCampOne(v.Board, external);
        LogReturned(ReturnFromStock(v.Board, external, v.Act.ActVeh[0], true));
        LogReturned(ReturnFromStock(v.Board, external, v.Act.ActVeh[1], true));
        break;
    case 6:
        LogAt(QString::fromLatin1(kLeopardLossLog));
        LeopardLossOnOwnCopy(v.Board, v.Board.LocalSide, v.Act.ActVeh[0]);
        break;
    default:
        return;
    }
    ShowBoardAndCounts(w);
}

} // namespace

void CarryOutRadioYambo(Hoofdvenster& w, int card)
{
    WindowValues& v = w.V;
    BoardState& board = v.Board;
    const int side = board.LocalSide;
    switch (card) {
    case 1: UrgentFuelService(board, side); break;
    case 2: AirRaid(board, v.Progress.ExternalSide); break;
    case 3: ReserveToCampUpToThree(board, side); break;
    case 4: GeneralMobilisation(w); break;
    case 5: PrisonersBackToCamp(board, side); break;
    case 6: OperationLeopard(w); break;
    // The second stage is the other copy's alone.
    case 7: v.Retreat = RetreatStageOne(board, side); break;
    case 8: case 17: MilitaryAttack(board, side); break;
    case 9: FoodPoisoning(board, side); break;
    case 10: case 13: ReserveToCampUpToTwo(board, side); break;
    case 11: TsetseSting(board, side); break;
    case 12: case 18: AlliedHelp(w, card); break;
    case 14: YellowFever(board, side); break;
    case 15: NewYearParty(board, side); break;
    case 16: WeatherReport(board); break;
    case 19: Spy(w); break;
    case 20: MineAlarm(board, side); break;
    default: return;
    }
    ShowBoardAndCounts(w);
}

void ApplyRadioYambo(Hoofdvenster& w, int card)
{
    WindowValues& v = w.V;
    BoardState& board = v.Board;
    const int drawer = v.Progress.ExternalSide;
    switch (card) {
    case 2: AirRaid(board, board.LocalSide); break;
    case 3: ReserveToCampUpToThree(board, drawer); break;
    case 5: PrisonersBackToCamp(board, drawer); break;
    case 7:
        v.Retreat = RetreatStageOne(board, drawer);
        RetreatStageTwo(board, board.LocalSide, v.Retreat);
        break;
    case 8: case 17:
        MilitaryAttack(board, drawer);
        LogAt(QString::fromLatin1(kMilitaryAttackLog));
        break;
    case 9: FoodPoisoning(board, drawer); break;
    case 10: case 13: ReserveToCampUpToTwo(board, drawer); break;
    case 14: YellowFever(board, drawer); break;
    case 15: NewYearParty(board, drawer); break;
    case 16: WeatherReport(board); break;
    case 20: MineAlarm(board, drawer); break;
    default: return;
    }
    ShowBoardAndCounts(w);
}

void OpponentChoseRadioYambo(Hoofdvenster& w, const QString& file)
{
    WindowValues& v = w.V;
    const MessageValues chosen = ReadWholeMessage(MessageKindId::RadioYambo, file);
    v.CurrentCard = NumberIn(chosen, "CARD");
    v.Act.ActVeh[0] = NumberIn(chosen, "V1");
    v.Act.ActVeh[1] = NumberIn(chosen, "V2");
    const int card = v.CurrentCard;
    if (card == 4 || card == 6 || card == 12 || card == 18) {
        ClearBoard();
        ShowRadioYamboCard(w, card);
        MessageBox(QStringLiteral("Je tegenspeler heeft als kompaskaart het radio yambo bericht ontvangen die u nu te "
                                  "zien krijgt. Klik 'OK' om dit bericht en de kaart te sluiten, en de instructies "
                                  "uit te voeren."),
                   BoxButtons::Ok, BoxIcon::Information, QStringLiteral("Tegenspeler trok Radio Yambo kaart"));
        w.RadioYambo->SetVisible(false);
        LogLine(QStringLiteral("executing specific radio yambo procedure"));
        LogLine(QStringLiteral("executing radio yambo mirror procedure"));
        MirrorRadioYambo(w, card);
    }
    DeleteOnce(file);
}

bool ServeRadioYamboPick(Hoofdvenster& w, int side, int slot)
{
    WindowValues& v = w.V;
    BoardState& board = v.Board;
    if (v.StockPicksLeft > 0) {
        if (side == board.LocalSide && StockPickServed(board, side, slot)) {
            v.Act.ActVeh[v.Act.ActVeh[0] == -1 ? 0 : 1] = slot;
            v.StockPicksLeft -= 1;
            ShowBoard(w);
        }
        return true;
    }
    if (v.LeopardPick) {
        if (side != board.LocalSide) {
            v.Act.ActVeh[0] = slot;
            LeopardPickServed(board, side, slot);
            v.LeopardPick = false;
            ShowBoard(w);
        }
        return true;
    }
    return false;
}

} // namespace vk
