#include "game/ComputerPlayer.h"

#include "board/BoardTables.h"
#include "board/BoardView.h"
#include "board/Picking.h"
#include "game/PhaseTable.h"
#include "link/SharedFolderFiles.h"
#include "shell/Clock.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "shell/Settings.h"
#include "ui/CardPanels.h"
#include "ui/Controls.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"

#include <QCryptographicHash>
#include <QDir>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace vk {

namespace {

// Think times, and at least a second of the clock, that may pass with nothing
// changed before a gesture is made again: a gesture that found its control
// hidden for a moment is dropped. The second keeps a busy machine, slow to
// deliver the first gesture, from getting it twice (a second double click on
// a vehicle just picked gives the pick back).
constexpr int kRetryTicks = 8;
constexpr std::uint32_t kRetryMs = 1000;
// Tries of a destination click before the pick is given up.
constexpr int kDestinationTries = 3;
// Think times an invitation may go unanswered before it is sent again.
constexpr int kInviteTicks = 60;

// The die control that gives the phase's die back: a second double click on
// the chosen die returns to the phase before it.
int DieOfPickPhase(int phase)
{
    return PhaseDie(phase);
}

} // namespace

void PrepareComputerSettings(const ComputerSettings& settings)
{
    SaveSetting(QStringLiteral("LocalUser"), settings.Name);
    if (GetSetting(QStringLiteral("LocalID")).isEmpty()) {
        // An identity of twelve hex digits like a network card's, derived from
        // the name, so that a person's copy on the same PC has another.
        const QByteArray digest = QCryptographicHash::hash(
            (QStringLiteral("valkenhorn computer ") + settings.Name).toUtf8(), QCryptographicHash::Sha1);
        SaveSetting(QStringLiteral("LocalID"), QString::fromLatin1(digest.toHex().left(12).toUpper()));
    }
    const QString folder = QDir::cleanPath(QDir(settings.Folder).absolutePath());
    const int count = GetSetting(QStringLiteral("ExtUsersCount"), QStringLiteral("0")).toInt();
    for (int i = 1; i <= count; ++i)
        if (QDir::cleanPath(GetSetting(SlotKey(i, QStringLiteral("Folder")))) == folder)
            return;
    // The slot as "Map toevoegen..." makes it: the folder, the placeholder
    // name of its player, not present.
    const int slot = count + 1;
    SaveSetting(QStringLiteral("ExtUsersCount"), QString::number(slot));
    SaveSetting(SlotKey(slot, QStringLiteral("Folder")), folder);
    SaveSetting(SlotKey(slot, QStringLiteral("External_User")), SlotKey(slot, QStringLiteral("ExtSpeler")));
    SaveSetting(SlotKey(slot, QStringLiteral("Active")), FlagText(false));
}

ComputerPlayer::ComputerPlayer(Hoofdvenster& window, const ComputerSettings& settings)
    : w_(window), settings_(settings),
      choice_(settings.Level, static_cast<std::uint32_t>(qHash(settings.Name) ^ static_cast<unsigned>(GetTickCount())))
{
    timer_.setInterval(ThinkMs());
    connect(&timer_, &QTimer::timeout, this, [this] { Tick(); });
    timer_.start();
}

int ComputerPlayer::ThinkMs()
{
    return std::max(1, ScaledMs(400));
}

QString ComputerPlayer::Situation() const
{
    const WindowValues& v = w_.V;
    const OpenDialog* dialog = CurrentDialog();
    QString planned;
    if (planned_ && plan_.Slot >= 0 && (v.Board.LocalSide == 1 || v.Board.LocalSide == 2))
        planned = QString::number(v.Board.VehicleCompanies(v.Board.LocalSide, plan_.Slot)) +
                  QString::fromStdString(v.Board.VehicleTag(v.Board.LocalSide, plan_.Slot));
    return QStringList{Waiting(),
                       QString::number(v.GamePhase),
                       QString::number(v.Progress.TurnNumber),
                       QString::number(v.TossNumber),
                       dialog ? dialog->title + dialog->text : QString(),
                       QString::number(v.StockPicksLeft),
                       QString::number(v.LeopardPick),
                       QString::number(w_.Personnel->Visible()),
                       QString::number(Global().BoardText.isEmpty()),
                       QString::number(w_.cmdStart->Enabled()),
                       QString::number(w_.ShareStatus->Value()),
                       QString::number(v.SelectedUser),
                       planned}
        .join(QLatin1Char('|'));
}

bool ComputerPlayer::Repeating()
{
    const QString now = Situation();
    if (now != lastSituation_) {
        lastSituation_ = now;
        acted_ = false;
        sameTicks_ = 0;
        sameSince_ = GetTickCount();
        return false;
    }
    if (!acted_)
        return false;
    // Unsigned, so that the clock's wrap gives the right span.
    const auto span = static_cast<std::uint32_t>(GetTickCount()) - static_cast<std::uint32_t>(sameSince_);
    if (++sameTicks_ < kRetryTicks || span < kRetryMs)
        return true;
    acted_ = false;
    sameTicks_ = 0;
    return false;
}

void ComputerPlayer::Tick()
{
    if (w_.V.GameRunning && !gameRunning_)
        ++gamesStarted_;
    gameRunning_ = w_.V.GameRunning;
    if (Repeating())
        return;
    if (AnswerOpenDialog())
        return;
    const QString waiting = Waiting();
    if (!w_.V.GameRunning && waiting.isEmpty())
        LinkStep();
    else
        GameStep(waiting);
}

// -- gestures -------------------------------------------------------------------

void ComputerPlayer::Post(std::function<void()> gesture)
{
    acted_ = true;
    QTimer::singleShot(0, this, [gesture = std::move(gesture)] { Guarded(gesture); });
}

void ComputerPlayer::Press(Control* control)
{
    Post([control] {
        if (!control->Reachable())
            return;
        if (control->Kind() == ControlKind::Button) {
            auto* button = static_cast<ButtonControl*>(control);
            if (button->Click)
                button->Click();
        } else if (control->Kind() == ControlKind::CheckBox) {
            auto* box = static_cast<CheckBoxControl*>(control);
            box->SetValue(box->Value() ? 0 : 1);
            if (box->Click)
                box->Click();
        }
    });
}

void ComputerPlayer::ClickImage(Control* control)
{
    Post([control] {
        if (control->Reachable())
            PostMouseGesture(control, MouseGesture::Click, 1, control->Width() / 2, control->Height() / 2);
    });
}

void ComputerPlayer::DoubleClick(Control* control, int x, int y)
{
    Post([control, x, y] {
        if (control->Reachable())
            PostMouseGesture(control, MouseGesture::DoubleClick, 1, x, y);
    });
}

void ComputerPlayer::DoubleClickCentre(Control* control)
{
    DoubleClick(control, control->Width() / 2, control->Height() / 2);
}

// -- message boxes ----------------------------------------------------------------

bool ComputerPlayer::AnswerOpenDialog()
{
    const OpenDialog* dialog = CurrentDialog();
    if (!dialog)
        return false;
    if (dialog->kind != QLatin1String("message"))
        return false;
    QString button = QStringLiteral("ok");
    if (dialog->buttons.contains(QLatin1String("yes"))) {
        const WindowValues& v = w_.V;
        bool yes = true;
        // A game that is over (won or lost) is not stopped as well: that would
        // tell the opponent the game was given up.
        if (dialog->title == QLatin1String("Spel stoppen?"))
            yes = !v.GameWon && !v.GameLost;
        else if (dialog->title == QLatin1String("Vlag beschikbaar"))
            yes = plan_.LoadFlag;
        else if (dialog->title == QLatin1String("Mijn afzetten?"))
            yes = plan_.LeaveMine;
        else if (dialog->title == QLatin1String("Programma Afsluiten"))
            yes = false;
        button = yes ? QStringLiteral("yes") : QStringLiteral("no");
    }
    acted_ = true;
    AnswerDialog(button);
    return true;
}

// -- before a game: presence, invitation, start --------------------------------------

void ComputerPlayer::LinkStep()
{
    if (!w_.Action_Timer->Enabled())
        return;  // still starting up
    if (w_.ShareStatus->Value() == 0) {
        Press(w_.ShareStatus);
        return;
    }
    if (w_.cmdStart->Enabled() && w_.cmdStart->Reachable()) {
        invited_ = false;
        if (settings_.Games == 0 || gamesStarted_ < settings_.Games)
            Press(w_.cmdStart);
        return;
    }
    if (settings_.Invite.isEmpty())
        return;
    const GlobalValues& g = Global();
    int slot = 0;
    for (int i = 1; i <= g.ExtUsersCount && i < g.External_User.size(); ++i)
        if (g.External_User[i] == settings_.Invite)
            slot = i;
    if (slot == 0)
        return;
    if (w_.V.SelectedUser != slot) {
        auto* combo = w_.Combo_ExternUsers;
        Post([combo, slot] {
            if (!combo->Reachable() || slot >= combo->count())
                return;
            combo->SetListIndex(slot);
            if (combo->Click)
                combo->Click();
        });
        return;
    }
    if (invited_ && ++inviteWaitTicks_ < kInviteTicks)
        return;
    if (w_.cmdRequestToPlay->Enabled() && w_.cmdRequestToPlay->Reachable()) {
        invited_ = true;
        inviteWaitTicks_ = 0;
        Press(w_.cmdRequestToPlay);
    }
}

// -- the game ------------------------------------------------------------------------

TurnSituation ComputerPlayer::Turn(int phase) const
{
    const WindowValues& v = w_.V;
    TurnSituation turn;
    turn.Side = v.Board.LocalSide;
    turn.Phase = phase;
    turn.Dice1 = v.Dice1;
    turn.Dice2 = v.Dice2;
    turn.ActVeh = v.Act.ActVeh;
    turn.ActCode = v.Act.ActCode;
    turn.ActFrom = v.Act.ActFrom;
    return turn;
}

void ComputerPlayer::GameStep(const QString& waiting)
{
    if (waiting == QLatin1String("toss")) {
        Press(w_.cmdGooi);
        return;
    }
    if (waiting.startsWith(QLatin1String("phase "))) {
        OwnPhase(waiting.mid(6).toInt());
        return;
    }
    if (waiting == QLatin1String("Personnel card read") || waiting == QLatin1String("desync warning")) {
        ClickImage(w_.msgBoard);
        return;
    }
    if (waiting == QLatin1String("Personnel card vehicle")) {
        if (cardPlay_ && cardPlay_->VehicleSlot >= 0)
            DoubleClickCentre(&w_.Voertuig(3 - w_.V.Board.LocalSide, cardPlay_->VehicleSlot));
        return;
    }
    if (waiting == QLatin1String("Personnel card field")) {
        if (cardPlay_ && cardPlay_->Field > 0) {
            const TwipPoint centre = HitCentre(ViewOf(w_.V.Board), cardPlay_->Field);
            DoubleClick(w_.Speelveld, centre.X, centre.Y);
        }
        return;
    }
    if (waiting == QLatin1String("Radio Yambo card read")) {
        ClickImage(w_.msgBoard);
        return;
    }
    if (waiting == QLatin1String("Radio Yambo stock pick")) {
        StockPick();
        return;
    }
    if (waiting == QLatin1String("Radio Yambo leopard pick")) {
        LeopardPick();
        return;
    }
    if (waiting == QLatin1String("Radio Yambo spied card")) {
        DoubleClickCentre(w_.imgPersonnel);
        return;
    }
    // The opponent's files, the slow click's timer, the consumed waits: the
    // game goes on by itself.
}

void ComputerPlayer::OwnPhase(int phase)
{
    WindowValues& v = w_.V;
    if (phase != w_.V.GamePhase)
        return;
    switch (phase) {
    case 0:
        planned_ = false;
        endTurn_ = false;
        if (v.Progress.TurnNumber >= settings_.TurnLimit && w_.cmdStop->Enabled())
            Press(w_.cmdStop);
        else if (!PlayCard())
            Press(w_.cmdGooi);
        return;
    case 1:
        // The card shown is used when it is the one chosen; else it is closed.
        Press(cardPlay_ && ShownCard(w_) == cardPlay_->Card ? w_.cmdKompasGebruik : w_.cmdKompasSluit);
        return;
    case 3:
        Press(w_.cmdGooi);
        return;
    case 4:
    case 9:
    case 18: {
        planned_ = false;
        const int die = endTurn_ ? 0 : choice_.ChooseDie(v.Board, Turn(phase));
        if (die == 1)
            DoubleClickCentre(w_.Dice_1);
        else if (die == 2)
            DoubleClickCentre(w_.Dice_2);
        else if (die == 3 && phase == 4)
            DoubleClickCentre(w_.Dices);
        else
            Press(w_.cmdEindeBeurt);
        return;
    }
    case 31:
    case 32:
    case 37:
    case 38:
        ThirdCard(phase);
        return;
    default:
        break;
    }
    if (IsVehiclePickPhase(phase))
        PickAction(phase);
    else if (IsCampVehiclePhase(phase))
        CampVehiclePicked(phase);
    else if (IsFieldVehiclePhase(phase))
        FieldVehiclePicked(phase);
}

void ComputerPlayer::PickAction(int phase)
{
    const WindowValues& v = w_.V;
    const std::optional<PlannedAction> action = choice_.ChooseAction(v.Board, Turn(phase));
    if (!action) {
        // Nothing can act on this die: it goes back, and the turn ends.
        endTurn_ = true;
        const int die = DieOfPickPhase(phase);
        DoubleClickCentre(die == 1 ? static_cast<Control*>(w_.Dice_1)
                                   : die == 2 ? static_cast<Control*>(w_.Dice_2) : static_cast<Control*>(w_.Dices));
        return;
    }
    plan_ = *action;
    planned_ = true;
    loadClicksDone_ = 0;
    loadBefore_.clear();
    DoubleClickCentre(&w_.Voertuig(v.Board.LocalSide, plan_.Slot));
}

void ComputerPlayer::CampVehiclePicked(int phase)
{
    const WindowValues& v = w_.V;
    const int side = v.Board.LocalSide;
    if (!planned_) {
        endTurn_ = true;
        return;
    }
    Control* vehicle = &w_.Voertuig(side, plan_.Slot);
    const QString load = QString::number(v.Board.VehicleCompanies(side, plan_.Slot)) +
                         QString::fromStdString(v.Board.VehicleTag(side, plan_.Slot));
    if (!loadBefore_.isEmpty()) {
        if (load == loadBefore_)
            return;  // the slow click is still under way (or is given again by the retry)
        loadBefore_.clear();
        ++loadClicksDone_;
    }
    if (loadClicksDone_ < plan_.LoadClicks) {
        loadBefore_ = load;
        ClickImage(vehicle);
        return;
    }
    (void)phase;
    const TwipPoint centre = HitCentre(ViewOf(v.Board), plan_.Field);
    DoubleClick(w_.Speelveld, centre.X, centre.Y);
}

void ComputerPlayer::FieldVehiclePicked(int phase)
{
    const WindowValues& v = w_.V;
    const int side = v.Board.LocalSide;
    if (!planned_) {
        endTurn_ = true;
        return;
    }
    const QString here = QString::number(v.Progress.TurnNumber) + QLatin1Char('/') + QString::number(phase);
    destinationTries_ = here == destinationAt_ ? destinationTries_ + 1 : 1;
    destinationAt_ = here;
    if (destinationTries_ > kDestinationTries) {
        // The click was not taken: the pick is given back and the turn ends.
        LogAt(QStringLiteral("computer player gives back its pick of vehicle ") + QString::number(plan_.Slot) +
              QStringLiteral(" at "));
        endTurn_ = true;
        planned_ = false;
        DoubleClickCentre(&w_.Voertuig(side, plan_.Slot));
        return;
    }
    if (plan_.TargetSlot >= 0) {
        DoubleClickCentre(&w_.Voertuig(3 - side, plan_.TargetSlot));
        return;
    }
    const TwipPoint centre = HitCentre(ViewOf(v.Board), plan_.Field);
    DoubleClick(w_.Speelveld, centre.X, centre.Y);
}

void ComputerPlayer::ThirdCard(int phase)
{
    const WindowValues& v = w_.V;
    const int side = v.Board.LocalSide;
    const auto& hand = v.Progress.Deck.CardHand[static_cast<std::size_t>(side - 1)];
    const std::array<int, 3> cards{hand[0], hand[1], v.CurrentCard};
    const int away = choice_.CardToThrowAway(cards);
    const int awayCard = cards[static_cast<std::size_t>(away - 1)];
    if (phase == 31 || phase == 37) {
        // A card is shown: thrown away when it is the one to go, else the
        // hand is shown again.
        Press(ShownCard(w_) == awayCard ? w_.cmdKompasGebruik : w_.cmdKompasSluit);
        return;
    }
    ClickImage(away == 1 ? w_.KK1 : away == 2 ? w_.KK2 : w_.KK3);
}

// At the start of the turn, once: a Personnel card worth playing is shown by
// its miniature. Returns whether a card is under way.
bool ComputerPlayer::PlayCard()
{
    const WindowValues& v = w_.V;
    if (cardTurn_ == v.Progress.TurnNumber)
        return false;
    cardTurn_ = v.Progress.TurnNumber;
    const int side = v.Board.LocalSide;
    const CompassDeck& deck = v.Progress.Deck;
    cardPlay_ = choice_.ChooseCardToPlay(v.Board, side, deck.CardHand[static_cast<std::size_t>(side - 1)],
                                         deck.CardCount[static_cast<std::size_t>(side - 1)]);
    if (!cardPlay_)
        return false;
    ClickImage(cardPlay_->HandSlot == 1 ? w_.KK1 : w_.KK2);
    return true;
}

void ComputerPlayer::StockPick()
{
    const WindowValues& v = w_.V;
    const int side = v.Board.LocalSide;
    for (int slot = 0; slot < kVehicleSlots; ++slot)
        if (v.Board.VehiclePos(side, slot) == kOutOfGame) {
            DoubleClickCentre(&w_.Voertuig(side, slot));
            return;
        }
}

void ComputerPlayer::LeopardPick()
{
    const WindowValues& v = w_.V;
    const int enemy = 3 - v.Board.LocalSide;
    int best = -1;
    int bestCompanies = -1;
    for (int slot = 0; slot < kVehicleSlots; ++slot) {
        const int field = v.Board.VehiclePos(enemy, slot);
        if (field < kFirstRoadField || field > kLastRoadField)
            continue;
        if (v.Board.VehicleCompanies(enemy, slot) > bestCompanies) {
            best = slot;
            bestCompanies = v.Board.VehicleCompanies(enemy, slot);
        }
    }
    if (best < 0)
        for (int slot = 0; slot < kVehicleSlots && best < 0; ++slot)
            if (v.Board.VehiclePos(enemy, slot) != kOutOfGame)
                best = slot;
    if (best >= 0)
        DoubleClickCentre(&w_.Voertuig(enemy, best));
}

} // namespace vk
