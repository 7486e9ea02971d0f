#include "game/GameFiles.h"
#include "game/GameFlow.h"
#include "game/PositionCheck.h"
#include "game/StopGame.h"

#include "board/BoardView.h"
#include "cards/Deck.h"
#include "game/ProfileValues.h"
#include "game/ScriptedDeck.h"
#include "link/SharedFolderFiles.h"
#include "shell/Clock.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "shell/RunTimeFault.h"
#include "shell/TurnNotice.h"
#include "ui/BoardDisplay.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"
#include "ui/MessageBoard.h"

#include <QFile>

namespace vk {

namespace {

constexpr int DicePanelColor = 12624992;
constexpr int DicePanelWaitingColor = 8421504;
const QString kSeparator62(62, QLatin1Char('-'));

// Waits until a file of the opponent stands in the folder, then deletes it
// until it is gone, pumping in between.
void DeleteUntilGonePumping(const QString& path)
{
    PumpUntil(
        [&path] {
            DeleteOnce(path);
            return !FileExists(path);
        },
        QStringLiteral("deleting ") + path.section(QLatin1Char('/'), -1));
}

// The company and flag displays of both armies.
void RefreshDisplays(Hoofdvenster& w)
{
    for (int side = 1; side <= 2; ++side) {
        ShowCompanies(w, side);
        ShowFlagCover(w, side);
    }
}

void ShowArmiesAndDisplays(Hoofdvenster& w)
{
    ShowBoardView(w);
    ShowBoard(w);
    RefreshDisplays(w);
    for (Control* c : std::initializer_list<Control*>{w.Stock, w.Homers, w.KampComp[0], w.KampComp[1], w.Gevang_1,
                                                      w.Gevang_2, w.Vlagdekking_1, w.Vlagdekking_2})
        c->SetVisible(true);
}

void Handshake(Hoofdvenster& w)
{
    LogAt(QStringLiteral("initiating interface for new game at "));
    ShowArmiesAndDisplays(w);
    DeleteMatching(GameFolder(w), QStringLiteral("*.d??"));
    SendMessage(OwnFile(w, MessageKindId::GameStart), MessageKindId::GameStart, QStringList{QStringLiteral("Start")});
    w.V.CurrentFile = OpponentFile(w, MessageKindId::GameStart);
    ShowOnBoard(QStringLiteral("even wachten tot beide spelers het spel gestart hebben..."));
    LogAt(w.V.ResumeGame ? QStringLiteral("waiting for handshake to proceed previous game at ")
                         : QStringLiteral("waiting for handshake to proceed with toss at "));
    WaitMs(1000);
    const QString theirs = w.V.CurrentFile;
    PumpUntil([&theirs] { return FileExists(theirs); }, QStringLiteral("opponent's .goo"));
    ClearBoard();
    DeleteOnce(theirs);
}

// A saved game that can't be played is not loaded: the player is told, the
// file is set aside so that the next start doesn't ask again, and a new game
// begins.
void SetAside(const QString& file, const QString& why)
{
    const QString aside = file + QStringLiteral(".bad");
    QFile::remove(aside);
    QFile::rename(file, aside);
    LogAt(QStringLiteral("saved game ") + file + QStringLiteral(" cannot be loaded (") + why +
          QStringLiteral("), set aside as ") + aside + QStringLiteral(", starting a new game at "));
    MessageBox(QStringLiteral("Het opgeslagen spel ") + file + QStringLiteral(" is beschadigd en kan niet verder "
                                                                              "gespeeld worden. Het wordt bewaard als ") +
                   aside + QStringLiteral(". Er begint een nieuw spel."),
               BoxButtons::Ok, BoxIcon::Warning, QStringLiteral("Opgeslagen spel beschadigd"));
}

// Reads the saved game; false when it can't be played.
bool Resume(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    LogAt(QStringLiteral("loading previous saved game at "));
    const QString file = SavedGameFile(w);
    const std::string path = QFile::encodeName(file).toStdString();
    BoardState board = v.Board;
    GameProgress progress = v.Progress;
    std::string why;
    try {
        ReadSavedGame(path, board, progress);
        why = SavedGameProblem(board, progress);
    } catch (const RunTimeFault& fault) {
        why = fault.what();
    }
    if (!why.empty()) {
        SetAside(file, QString::fromStdString(why));
        return false;
    }
    // A saved game is good for one start.
    QFile::remove(file);
    v.Board = board;
    v.Progress = progress;
    DrawBoardAfterLoad(v.Board);
    ShowBoardView(w);
    ShowBoard(w);
    RefreshDisplays(w);
    LogLine(kSeparator62);
    LogAt(QStringLiteral("restarting game sequence at "));
    // The toss shows the dice panel in a new game; a resumed one skips it.
    w.frDices->SetVisible(true);
    w.frDices->SetEnabled(true);
    ResetTurnControls(w);
    return true;
}

enum class TossVerdict { Won, Lost };

TossVerdict Toss(Hoofdvenster& w)
{
    GlobalValues& g = Global();
    // The panel may still be disabled from the end of a last game's turn.
    w.frDices->SetVisible(true);
    w.frDices->SetEnabled(true);
    ShowOnBoard(QStringLiteral("gooi de dobbelstenen! wie het hoogst gooit, speelt met het geregeld leger."));
    w.V.TossNumber = 0;
    for (;;) {
        ResetTurnControls(w);
        w.V.TossNumber += 1;
        PumpUntil([&w] { return w.V.Dice1 > 0 && w.V.Dice2 >= 1; }, QStringLiteral("toss"));
        const int mine = w.V.Dice1 + w.V.Dice2;
        LogAt(QStringLiteral("result from ") + g.LocalUser + QStringLiteral(" rolling the dices: ") +
              QString::number(mine) + QStringLiteral(" at "));
        SendMessage(OwnTossFile(w, w.V.TossNumber), MessageKindId::Toss, QStringList{QString::number(mine)});
        ClearBoard();
        w.V.CurrentFile = OpponentTossFile(w, w.V.TossNumber);
        const QString file = w.V.CurrentFile;
        PumpUntil([&file] { return FileExists(file); }, QStringLiteral("opponent's .dNN"));
        const int theirs =
            NumberIn(ReadWholeMessage(MessageKindId::Toss, file, QString::number(mine)), "GOOI");
        LogAt(QStringLiteral("result from ") + OpponentName(w) + QStringLiteral(" rolling the dices: ") +
              QString::number(theirs) + QStringLiteral(" at "));
        DeleteUntilGonePumping(file);
        if (mine > theirs)
            return TossVerdict::Won;
        if (mine < theirs)
            return TossVerdict::Lost;
        LogAt(QStringLiteral("same result from both players, must toss again at "));
        ShowOnBoard(QStringLiteral("er is gelijk gegooid! gooi opnieuw aub..."));
    }
}

void DealDeck(Hoofdvenster& w)
{
    LogAt(Global().LocalUser + QStringLiteral(" plays with the green army at "));
    ShowOnBoard(QStringLiteral("uw tegenstander gooide lager, u speelt met het geregeld leger. even geduld aub..."));
    WaitMs(9000);
    LogAt(QStringLiteral("shuffling cards at "));
    CompassDeck& deck = w.V.Progress.Deck;
    ShuffleCompassStack(deck.CompassStack, deck.StackPoint, w.V.Dice1, w.V.Dice2, w.V.CardPickSeed, w.V.Random,
                        SecondsSinceMidnight());
    if (const std::optional<CompassStackArray> scripted = ScriptedDeck())
        deck.CompassStack = *scripted;
    w.V.CurrentFile = OwnFile(w, MessageKindId::Deck);
    LogLine(QStringLiteral("order of shuffled cards:"));
    for (int i = 1; i <= CompassCardCount; ++i) {
        const int card = deck.CompassStack[static_cast<std::size_t>(i - 1)];
        LogLine(QString::fromStdString(DeckLogLine(i, card)));
        SendMessage(w.V.CurrentFile, MessageKindId::Deck, KeyValues{{DeckKey(i), std::to_string(card)}});
    }
    deck.StackPoint = CompassCardCount;
}

void ReceiveDeck(Hoofdvenster& w)
{
    LogAt(Global().LocalUser + QStringLiteral(" plays with the brown army at "));
    ShowOnBoard(QStringLiteral("uw tegenstander gooide hoger, u speelt met het rebellen leger. het speelveld wordt "
                               "voor u gedraaid. even geduld aub..."));
    WaitMs(12000);
    for (ImageControl* image : w.Image2)
        image->ClearPicture();
    ToggleBoardSide(w.V.Board);
    ShowBoardView(w);
    ShowBoard(w);
    w.V.CurrentFile = OpponentFile(w, MessageKindId::Deck);
    const QString file = w.V.CurrentFile;
    PumpUntil([&file] { return FileExists(file); }, QStringLiteral("opponent's .mkk"));
    LogAt(QStringLiteral("recieved shuffled cards at "));
    LogLine(QStringLiteral("order of shuffled cards:"));
    CompassDeck& deck = w.V.Progress.Deck;
    for (int i = 1; i <= CompassCardCount; ++i) {
        // Each key once, with its own position as the default: a deck read
        // before it is complete differs from the dealer's without notice.
        const QString value = ReadMessageKey(file, MessageKindId::Deck, static_cast<std::size_t>(i - 1),
                                             QString::number(i));
        const int card = ProfileInt(value.toStdString(), DeckKey(i));
        deck.CompassStack[static_cast<std::size_t>(i - 1)] = card;
        LogLine(QString::fromStdString(DeckLogLine(i, card)));
    }
    DeleteUntilGonePumping(file);
    deck.StackPoint = CompassCardCount;
}

void OwnTurn(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    ShowDesyncWarning(w);
    ShowOnBoard(QStringLiteral("u bent aan de beurt."));
    w.frDices->SetBackColor(DicePanelColor);
    w.frDices->SetEnabled(true);
    PlayLocalTurn(w);
    WaitForConsumed(v);
    RefreshDisplays(w);
    const QString endOfTurn = OwnFile(w, MessageKindId::EndOfTurn);
    // The digest of the position after the whole turn, EndTurn's bookkeeping
    // included: the opponent's copy compares it with its own once it has
    // replayed the turn.
    SendMessage(endOfTurn, MessageKindId::EndOfTurn, EndOfTurnRecordKeys(v.Progress.TurnNumber, OwnPositionDigest(w)));
    v.LastSentFile = endOfTurn;
    if (v.Board.ReserveCompanies(v.Progress.ExternalSide) == kCompaniesPerArmy ||
        v.Board.FlagHome(v.Board.LocalSide) == kFlagsPerArmy)
        v.GameWon = true;
}

void OpponentsTurn(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    v.InputLock = true;
    ShowOnBoard(QStringLiteral("het is nu de beurt aan de externe speler. indien er interactie van u nodig is, zal u "
                               "daarvan melding krijgen"));
    w.frDices->SetBackColor(DicePanelWaitingColor);
    FollowOpponentTurn(w);
    v.InputLock = false;
    w.RadioYambo->SetVisible(false);
    if (v.Board.ReserveCompanies(v.Board.LocalSide) == kCompaniesPerArmy ||
        v.Board.FlagHome(v.Progress.ExternalSide) == kFlagsPerArmy)
        v.GameLost = true;
}

void TurnLoop(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    while (!v.GameWon && !v.GameLost) {
        if (v.ResumeGame)
            v.ResumeGame = false;
        else
            v.Progress.TurnNumber += 1;
        v.GamePhase = 0;
        v.Board.PendingDraws = 0;
        ClearBoard();
        v.Dice1 = v.Dice2 = v.OppDice1 = v.OppDice2 = 0;
        ClearActionRecord(v.Act);
        const int sideOfTurn = v.Progress.TurnNumber % 2 == 1 ? 1 : 2;
        if (sideOfTurn == v.Board.LocalSide) {
            OwnTurn(w);
        } else {
            OpponentsTurn(w);
            if (v.GameRunning && !v.GameLost)
                TellPlayer(w, Notice::YourTurn);
        }
        if (!v.GameRunning)
            break;
        RefreshDisplays(w);
    }
}

} // namespace

void cmdStart_Click(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    if (v.GameRunning) {
        Speel(*w.ESound1, v.Sound, SoundMessage);
        if (MessageBox(QStringLiteral("Het huidig spel is nog niet afgelopen. Wilt u dit beëindigen en een nieuw spel "
                                      "starten?"),
                       BoxButtons::YesNo, BoxIcon::Question, QStringLiteral("Spel Bezig")) != BoxResult::Yes)
            return;
    }
    ClearBoard();
    v.GameRunning = false;
    // Both players must answer alike; nothing tells the other side.
    v.ResumeGame = FileExists(SavedGameFile(w)) &&
                   MessageBox(QStringLiteral("Er is nog een vorig spel opgeslagen, wilt u dit verder spelen?"),
                              BoxButtons::YesNo, BoxIcon::Question,
                              QStringLiteral("Vorig spel verder zetten?")) == BoxResult::Yes;
    LogAt(QStringLiteral("starting game with ") + OpponentName(w) + QStringLiteral(" at "));
    for (Control* c : std::initializer_list<Control*>{w.frDices, w.Stock, w.Homers, w.KampComp[0], w.KampComp[1],
                                                      w.Gevang_1, w.Gevang_2, w.Vlagdekking_1, w.Vlagdekking_2})
        c->SetVisible(false);
    HideArmies(w);
    w.cmdStart->SetEnabled(false);
    w.cmdDisconnect->SetEnabled(false);
    w.cmdSluiten->SetEnabled(false);
    ResetNewGame(w);
    RunGameSequence(w);
}

void ResetNewGame(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    LogAt(QStringLiteral("initiating new game to start at "));
    v.GameWon = false;
    v.GameLost = false;
    v.GameRunning = true;
    ClearBoard();
    v.Progress.TurnNumber = 0;
    v.GamePhase = 0;
    v.Board.BoardSide = 1;
    w.Speelveld->SetPicture(Global().ArmyImageFolder[0] + QStringLiteral("yambo_1.bmp"));
    w.update();
    PumpInterface();
    vk::ResetNewGame(v.Board);
    // A new game deals new hands.
    v.Progress.Deck = CompassDeck{};
    ForgetDesyncWarning();
}

void RunGameSequence(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    Handshake(w);
    if (v.ResumeGame && !Resume(w))
        v.ResumeGame = false;
    if (!v.ResumeGame) {
        if (Toss(w) == TossVerdict::Won)
            DealDeck(w);
        else
            ReceiveDeck(w);
        v.Board.LocalSide = v.Board.BoardSide;
        v.Progress.ExternalSide = (v.Board.BoardSide & 1) + 1;
        LogLine(kSeparator62);
        LogAt(QStringLiteral("starting game sequence at "));
    }
    TurnLoop(w);
    cmdStop_Click(w);
    ShowOnBoard(QStringLiteral("om opnieuw te spelen met dezelfde speler, druk op 'spel starten'. om te spelen tegen "
                               "een andere speler druk eerst op 'verbreken' om daarna die andere speler uit te "
                               "nodigen. druk op 'afsluiten' om het programma te beeindigen."));
}

} // namespace vk
