#include "game/GameFiles.h"
#include "game/DicePanel.h"
#include "game/GameFlow.h"
#include "game/PositionCheck.h"

#include "board/BoardTables.h"
#include "board/BoardView.h"
#include "board/VehicleTag.h"
#include "game/ActionReplay.h"
#include "game/CardConversation.h"
#include "game/CompassDraw.h"
#include "game/PersonnelReceived.h"
#include "game/RadioYamboPlay.h"
#include "game/SavedGame.h"
#include "link/SharedFolderFiles.h"
#include "shell/Clock.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "ui/BoardDisplay.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"
#include "ui/MessageBoard.h"

#include <QFile>

namespace vk {

namespace {

const QString kSeparator56(56, QLatin1Char('-'));

void Place(Control& mark, const PlacedBox& box)
{
    mark.Move(box.Left, box.Top, box.Width, box.Height);
}

void Place(Control& mark, const Picture& picture)
{
    mark.Move(picture.Left, picture.Top, picture.Width, picture.Height);
}

// The roll of the opponent, shown only.
void ShowOpponentsRoll(Hoofdvenster& w, const QString& file)
{
    WindowValues& v = w.V;
    w.Personnel->SetVisible(false);
    const MessageValues roll = ReadWholeMessage(MessageKindId::DiceResult, file);
    v.OppDice1 = NumberIn(roll, "D1");
    v.OppDice2 = NumberIn(roll, "D2");
    LogAt(QStringLiteral("result of opponent rolling dices: ") + QString::number(v.OppDice1) + QStringLiteral(" and ") +
          QString::number(v.OppDice2) + QStringLiteral(" at "));
    ShowDicePictures(w, v.OppDice1, v.OppDice2);
    for (Control* c : std::initializer_list<Control*>{w.Dice_1, w.MiniDice_1, w.Dice_2, w.MiniDice_2})
        c->SetVisible(true);
    DeleteOnce(file);
}

void HideUsedDice(Hoofdvenster& w, int dice)
{
    if (dice == 1 || dice == 3)
        w.Dice_1->SetVisible(false);
    if (dice == 2 || dice == 3)
        w.Dice_2->SetVisible(false);
    if (dice >= 1 && dice <= 3) {
        w.MiniDice_1->SetVisible(false);
        w.MiniDice_2->SetVisible(false);
    }
}

// The die the opponent used: a log line, the frame on the die, the text.
QString MarkDice(Hoofdvenster& w, int dice)
{
    const struct {
        const char* Log;
        ImageControl* Picture;
        const char* Text;
    } used[] = {{"uses dice 1", w.Dice_1, "dobbelsteen 1, "},
                {"uses dice 2", w.Dice_2, "dobbelsteen 2, "},
                {"uses both dices", w.Dices, "beide dobbelstenen, "}};
    if (dice < 1 || dice > 3)
        return {};
    const auto& entry = used[dice - 1];
    LogLine(QLatin1String(entry.Log));
    w.DiceKader->SetLeft(entry.Picture->Left());
    w.DiceKader->SetVisible(true);
    return QLatin1String(entry.Text);
}

// Where the vehicle comes from: out of the camp as its tag tells, off the
// island with prisoners aboard, or from a field.
void ShowStart(Hoofdvenster& w, const ActionMessage& m, int side)
{
    if (m.From == CampField(side)) {
        static const char* const moves[] = {"moves tank",     "moves canon",    "moves canon",    "moves infantry",
                                            "moves infantry", "moves infantry", "moves commando", "moves commando",
                                            "moves deminer",  "moves deminer"};
        if (m.Veh >= 0 && m.Veh <= 9)
            LogLine(QLatin1String(moves[m.Veh]));
        PrepareReplayedVehicle(w.V.Board, m, side);
        ShowBoard(w);
        LogLine(QStringLiteral("from main camp"));
    } else if (m.From == IslandField(side)) {
        LogLine(QStringLiteral("starts escape with jeep"));
        PrepareReplayedVehicle(w.V.Board, m, side);
        ShowBoard(w);
    } else {
        LogLine(m.Act == kActShot ? QStringLiteral("shoots with vehicle") : QStringLiteral("moves vehicle"));
        LogLine(QStringLiteral("from ") + QString::number(m.From));
    }
}

// The mine on a field: of army 1 when its cell says so, else of army 2.
void MarkMine(Hoofdvenster& w, int field)
{
    const BoardState& board = w.V.Board;
    const int owner = board.BoardCell(field) == kMineCell ? 1 : 2;
    for (int mine = 0; mine < kMinesPerArmy; ++mine) {
        if (board.MinePos(owner, mine) == field) {
            Place(*w.Kader2, board.MinePicture(owner, mine));
            return;
        }
    }
}

// Where the vehicle goes: the blue mark, the log lines and the rest of the text.
QString ShowDestination(Hoofdvenster& w, const ActionMessage& m, int side)
{
    WindowValues& v = w.V;
    const BoardView view = ViewOf(v.Board);
    if (m.To == CampField(side)) {
        LogLine(QStringLiteral("to main camp"));
        Place(*w.Kader2, CampPlaceBox(view, side, m.Veh));
        return {};
    }
    if (m.To == HQField(side)) {
        LogLine(QStringLiteral("to HQ"));
        // Every free place overwrites the mark: it ends on the last free one.
        for (int place = 0; place < kHQPlaces; ++place)
            if (v.Board.HQPlaceFree(side, place))
                Place(*w.Kader2, HQPlaceBox(view, side, place));
        return {};
    }
    const QString to = QString::number(m.To);
    if (m.To == IslandField(side))
        LogLine(QStringLiteral("to prison"));
    else
        LogLine(m.Act == kActShot ? QStringLiteral("to vehicle at ") + to : QStringLiteral("to ") + to);
    switch (m.Act) {
    case kActMove:
        Place(*w.Kader2, FieldMarkBoxAnyHeading(view, m.To));
        return QStringLiteral("en verplaatst het rood gemerkt voertuig naar het blauw gemerkt vakje");
    case kActShot: {
        const int cell = v.Board.BoardCell(m.To);
        v.Act.ActVeh[1] = (cell < 0 ? -cell : cell) - 1;
        Place(*w.Kader2, v.Board.VehiclePicture(v.Board.LocalSide, v.Act.ActVeh[1]));
        return QStringLiteral("en schiet met het rood gemerkt voertuig op jouw blauw gemerkt voertuig");
    }
    case kActMoveLeaveMine:
        Place(*w.Kader2, FieldMarkBoxAnyHeading(view, m.To));
        LogLine(QStringLiteral("leaves mine at ") + QString::number(m.From));
        return QStringLiteral("en verplaatst het rood gemerkt voertuig, de mijn op dat vakje achterlatend, naar het "
                              "blauw gemerkt vakje");
    case kActMovePickUpMine:
        MarkMine(w, m.To);
        LogLine(QStringLiteral("to pick up mine"));
        return QStringLiteral("en verplaatst het rood gemerkt voertuig naar het blauw gemerkt vakje om aldaar de "
                              "aanwezige mijn op te pikken");
    case kActMoveLoadFlag:
        Place(*w.Kader2, FieldMarkBoxAnyHeading(view, m.To));
        LogLine(QStringLiteral("loads flag"));
        return QStringLiteral("en verplaatst het rood gemerkt voertuig naar het blauw gemerkt vakje en neemt een vlag "
                              "aan boord");
    default:
        return {};
    }
}

void InterceptedShot(Hoofdvenster& w, const ActionMessage& m, const QString& file)
{
    DeleteOnce(file);
    static const char* const lines[] = {"uses dice 1 to shoot at your jeep, but was annuled with your card",
                                        "uses dice 2 to shoot at your jeep, but was annuled with your card",
                                        "uses both dices to shoot at your jeep, but was annuled with your card"};
    if (m.Dice >= 1 && m.Dice <= 3)
        LogLine(QLatin1String(lines[m.Dice - 1]));
    HideUsedDice(w, m.Dice);
    LogLine(kSeparator56);
}

// One action of the opponent: marked for four seconds, then carried out by
// the same rules as on his board.
void ReplayOpponentsAction(Hoofdvenster& w, const QString& file)
{
    WindowValues& v = w.V;
    ClearBoard();
    const ActionMessage m = ActionMessageFrom(ReadWholeMessage(MessageKindId::Action, file));
    v.Board.Verdict.Heading = m.Direct;
    v.CurrentCard = m.Dice;
    StoreReceivedAction(v.Act, m);
    LogLine(kSeparator56);
    LogAt(QStringLiteral("opponent takes action with following details at "));
    if (m.Act == kActInterceptedShot) {
        InterceptedShot(w, m, file);
        return;
    }
    const int side = v.Progress.ExternalSide;
    QString text = QStringLiteral("uw tegenstander gebruikt ") + MarkDice(w, m.Dice);
    ShowStart(w, m, side);
    Place(*w.Kader, v.Board.VehiclePicture(side, m.Veh));
    text += ShowDestination(w, m, side);
    w.Kader->SetVisible(true);
    w.Kader2->SetVisible(true);
    w.Kader->raise();
    w.Kader2->raise();
    DeleteOnce(file);
    ShowOnBoard(text);
    WaitMs(4000);
    for (Control* c : std::initializer_list<Control*>{w.DiceKader, w.Kader, w.Kader2})
        c->SetVisible(false);
    HideUsedDice(w, m.Dice);
    const BoardAction action = ReplayAction(v.Board, m, side);
    ShowBoard(w);
    if (action.To == CampField(side)) {
        ShowCompanies(w, side);
        ShowFlagCover(w, side);
    }
    LogLine(kSeparator56);
}

// The end of the opponent's turn, when the record is of this turn; a record
// of another turn is a leftover of a stopped game and stays.
bool EndOfOpponentsTurn(Hoofdvenster& w, const QString& file)
{
    const EndOfTurnMessage message = EndOfTurnMessageFrom(ReadWholeMessage(MessageKindId::EndOfTurn, file));
    if (message.Turn != w.V.Progress.TurnNumber)
        return false;
    LogAt(QStringLiteral("opponent's turn ended at "));
    DeleteOnce(file);
    CheckOpponentsPosition(w, message);
    return true;
}

// The opponent stopped the game: saved for another time, or given up.
void OpponentStopped(Hoofdvenster& w, const QString& file)
{
    WindowValues& v = w.V;
    const MessageValues values = ReadWholeMessage(MessageKindId::GameStopped, file);
    const auto found = values.find("STATUS");
    const std::string status = found == values.end() ? std::string() : found->second;
    if (status == "SAVE") {
        SaveGame(QFile::encodeName(SavedGameFile(w)).toStdString(), v.Board, v.Progress);
        MessageBox(QStringLiteral("Je tegenstander heeft het spel gestopt om op een andere keer verder te spelen. Het "
                                  "spel is opgeslagen."),
                   BoxButtons::Ok, BoxIcon::None, QStringLiteral("Spel wordt later verder gespeeld!"));
    } else if (status == "LOSE") {
        MessageBox(QStringLiteral("Je tegenstander heeft het spel gestopt en verklaart zichzelf als verliezer en jou "
                                  "als winnaar."),
                   BoxButtons::Ok, BoxIcon::None, QStringLiteral("U heeft gewonnen!!!"));
        v.GameWon = true;
    }
    DeleteOnce(file);
    v.GameRunning = false;
}

// The kinds the opponent may send during his turn, in the order a pass
// looks at them.
constexpr MessageKindId kPassOrder[] = {
    MessageKindId::GameStopped,  MessageKindId::Question,      MessageKindId::EndOfTurn,
    MessageKindId::DiceResult,   MessageKindId::CompassCard,   MessageKindId::RadioYambo,
    MessageKindId::PersonnelKept, MessageKindId::PersonnelUsed, MessageKindId::PersonnelDealt,
    MessageKindId::Action,
};

enum class PassResult { Nothing, Handled, TurnOver, Stopped };

PassResult Pass(Hoofdvenster& w)
{
    PassResult result = PassResult::Nothing;
    for (MessageKindId kind : kPassOrder) {
        const QString file = OpponentFile(w, kind);
        if (!FileExists(file))
            continue;
        switch (kind) {
        case MessageKindId::GameStopped:
            OpponentStopped(w, file);
            return PassResult::Stopped;
        case MessageKindId::EndOfTurn:
            if (EndOfOpponentsTurn(w, file))
                return PassResult::TurnOver;
            break;
        case MessageKindId::DiceResult:
            ShowOpponentsRoll(w, file);
            result = PassResult::Handled;
            break;
        case MessageKindId::Question:
            AnswerQuestion(w, file);
            result = PassResult::Handled;
            break;
        case MessageKindId::CompassCard:
            OpponentDrewRadioYambo(w, file);
            result = PassResult::Handled;
            break;
        case MessageKindId::PersonnelKept:
            OpponentKeptPersonnel(w, file);
            result = PassResult::Handled;
            break;
        case MessageKindId::RadioYambo:
            OpponentChoseRadioYambo(w, file);
            result = PassResult::Handled;
            break;
        case MessageKindId::PersonnelUsed:
            OpponentPlayedPersonnel(w, file);
            result = PassResult::Handled;
            break;
        case MessageKindId::PersonnelDealt:
            OpponentDealtThirdCard(w, file);
            result = PassResult::Handled;
            break;
        case MessageKindId::Action:
            ReplayOpponentsAction(w, file);
            result = PassResult::Handled;
            break;
        default:
            break;
        }
    }
    return result;
}

} // namespace

void FollowOpponentTurn(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    for (;;) {
        PumpInterface();
        WaitForConsumed(v);
        const PassResult result = Pass(w);
        if (result == PassResult::TurnOver || result == PassResult::Stopped)
            return;
        if (!v.GameRunning)
            return;
        // Nothing new: sleep until the folder changes or an event comes,
        // rather than testing the files again at once.
        if (result == PassResult::Nothing) {
            const WaitingFor waiting(QStringLiteral("opponent's turn"));
            PumpInterfaceWaiting(FolderFallbackPollMs);
        }
    }
}

} // namespace vk
