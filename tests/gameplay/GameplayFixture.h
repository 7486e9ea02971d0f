#pragma once

// The main window in-process (offscreen, never shown) set up for a game in
// its turn loop: the local player "anna" against "bert" through one shared
// folder, the pictures of the program folder of the build, a board in the
// view of the local army. A test runs the own turn (PlayLocalTurn) or the
// opponent's (FollowOpponentTurn) as its body, and a script of steps acts
// from a timer while the body waits: each step waits for its moment (the
// phase the body waits in, a file, a mark on show), then checks the window
// and presses the controls' handlers as a player would.

#include "board/BoardState.h"
#include "board/BoardView.h"
#include "game/ActionRecords.h"
#include "game/GameFiles.h"
#include "game/GameFlow.h"
#include "link/SharedFolderFiles.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"
#include "ui/MessageBoard.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QPointer>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#ifndef VALKENHORN_PROGRAM_DIR
#error "VALKENHORN_PROGRAM_DIR must name the program folder of the build"
#endif

namespace vk::test {

inline void EnsureApplication()
{
    static int argc = 1;
    static char name[] = "gameplay_tests";
    static char* argv[] = {name, nullptr};
    if (!QApplication::instance())
        new QApplication(argc, argv);
}

// A few controls to check alike.
using ControlList = std::initializer_list<const Control*>;

// The keys of a message file written as INI text.
using Keys = QMap<QString, QString>;

class GameplayTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    Hoofdvenster& W() { return *window; }
    WindowValues& V() { return window->V; }
    BoardState& B() { return window->V.Board; }
    int Local() const { return window->V.Board.LocalSide; }
    int External() const { return window->V.Progress.ExternalSide; }
    BoardView View() const { return ViewOf(window->V.Board); }

    // A new game at its start position, seen by the local army `localSide`
    // (view 2 for army 2), at turn `turn`, with every picture drawn.
    void StartGame(int localSide, int turn);
    // Draws the board, the companies and the flag covers from the state.
    void Redraw();

    // The next roll of cmdGooi gives `first`, then `second`: the window's
    // generator is seeded here and the dice table filled so that the two
    // draws it will make land on those values.
    void NextRoll(int first, int second);

    // --- positions ---
    // Loads `companies` from the camp onto a camp vehicle and sends it to its HQ.
    void ToHQ(int side, int slot, int companies);
    // Puts a vehicle on a road square with `companies` aboard (taken from its
    // camp), its tag, heading, cell and picture in step.
    void PutOnField(int side, int slot, int field, int companies);
    // The first road square that the vehicle reaches by a plain move of
    // `steps` from `from` (not `except`), or -1.
    int MoveTarget(int side, int slot, int from, int steps, int except = -1);

    // Lays mine 0 of an army (the other army's first, else the mover's own)
    // on a free field where the mover's genie `slot` on `from` picks it up by
    // a move of `steps`, with its picture; returns the field, or -1.
    int LayMineInReach(int side, int slot, int from, int& steps, int& owner);

    // --- script ---
    struct Step {
        std::string Name;
        std::function<bool()> Ready;
        std::function<void()> Act;
    };
    // A step at the wait of phase `phase` of the own turn.
    void AtPhase(int phase, const std::string& name, std::function<void()> act);
    // A step once `ready` holds.
    void When(const std::string& name, std::function<bool()> ready, std::function<void()> act);
    // Runs `body`; the steps act from a timer while it pumps. A body that
    // doesn't end in `timeoutMs` is stopped (game stopped, the awaited file
    // taken) and the test fails.
    void Run(const std::function<void()>& body, int timeoutMs = 20000);
    void PlayTurn() { Run([this] { PlayLocalTurn(W()); }); }
    void FollowTurn() { Run([this] { FollowOpponentTurn(W()); }); }

    // --- the player's hands ---
    // A double click on a vehicle picture: its Click, and the DblClick that
    // arrives while the Click waits for it.
    void DoubleClick(ImageControl* vehicle);
    // A single slow click: the Click alone, which the double-click timer ends.
    void SlowClick(ImageControl* vehicle);
    // The interval of VehDblClickTimer (before the time scale) for each.
    static constexpr int kDoubleClickWindowMs = 40000;
    static constexpr int kSlowClickWindowMs = 400;
    // A double click on the board at the centre of a field's hit rectangle
    // in the present view.
    void DoubleClickField(int field);
    ImageControl* Vehicle(int side, int slot)
    {
        return (side == 1 ? window->Voertuig_1 : window->Voertuig_2)[static_cast<std::size_t>(slot)];
    }

    // --- the opponent's side of the folder ---
    QString OwnPath(const char* extension) const { return folder + QStringLiteral("/anna") + extension; }
    QString TheirPath(const char* extension) const { return folder + QStringLiteral("/bert") + extension; }
    // The own files the opponent consumed while autoConsume was on, in order.
    struct Sent {
        QString Extension;
        Keys Values;
        QByteArray Raw;
    };
    std::vector<Sent> consumed;
    bool autoConsume = false;
    // Reads an own message and deletes it, as the opponent does.
    Keys Consume(const QString& path);
    // Every own file of the kinds above that lies in the folder, taken.
    void ConsumeOwnFiles();

    // The opponent's records, written by the program's own writers.
    void SendTheirRoll(int d1, int d2);
    void SendTheirAction(const ActionMessage& message, int phase = 7);
    void SendTheirEndOfTurn(int turn);
    // The opponent's turn idles: a pass found nothing and waits.
    static bool Idle() { return Waiting() == QStringLiteral("opponent's turn"); }
    bool MarksShown() const { return window->Kader->Visible() && window->Kader2->Visible(); }
    // Runs at every tick of the script while a body runs.
    std::function<void()> everyTick;
    // The game fields of two positions that differ (vehicles, cells, HQ
    // counts and places, companies, mines, flags), empty when none; pictures
    // aside.
    static std::string GameDifference(const BoardState& a, const BoardState& b);

    // --- files and the log ---
    static Keys ReadKeys(const QString& path);
    static void Put(const QString& path, const QByteArray& text);
    // Writes the file under a hidden name first, then renames it into place.
    static void Publish(const QString& path, const QByteArray& text);
    static QByteArray Text(const QString& path);
    QStringList LogLines() const;
    bool Logged(const QString& line) const { return LogLines().contains(line); }
    // A line of the log as it stands, time of day and all.
    bool LoggedExactly(const QString& line) const
    {
        return QString::fromLatin1(Text(scratch.path() + QStringLiteral("/Valkenhorn.log")))
            .split(QLatin1Char('\n'))
            .contains(line);
    }

    // --- checks ---
    static QString Board(const char* dutch) { return FormatBoardText(QString::fromUtf8(dutch)); }
    static PlacedBox BoxOf(const Control& c) { return PlacedBox{c.Left(), c.Top(), c.Width(), c.Height()}; }
    static PlacedBox BoxOf(const Picture& p) { return PlacedBox{p.Left, p.Top, p.Width, p.Height}; }
    // A box given in the view of army 1 as the present view draws it:
    // BoardWidth - (x + w), BoardHeight - (y + h) in view 2.
    PlacedBox Seen(int x, int y, int w, int h) const;

    QTemporaryDir scratch;
    QString folder;
    QByteArray oldConfig;
    std::unique_ptr<Hoofdvenster> window;
    std::unique_ptr<QTimer> answerer;
    // The box last answered, gone with the box.
    QPointer<QDialog> answered;
    QStringList boxes;
    // Titles of yes/no boxes to answer with yes, each once; the others get no.
    QStringList yesTo;

private:
    void Tick();

    std::vector<Step> steps_;
    std::size_t next_ = 0;
    bool acting_ = false;
    bool timedOut_ = false;
    int timeoutMs_ = 0;
    QElapsedTimer clock_;
};

::std::ostream& operator<<(::std::ostream& out, const PlacedBox& box);

// The texts of the board, as the player reads them.
namespace text {
inline constexpr const char* kTurnStartNoCard =
    "u bent aan de beurt. gelieve op de knop 'gooien' te drukken, of op 'einde beurt' om je beurt over te slaan.";
inline constexpr const char* kTurnStartWithCard =
    "u bent aan de beurt. je kan voor je beurt een personnel kaart uitspelen. deze kan je eerst inkijken door naast de "
    "knop 'Gooien' op het miniatuur te klikken, en dan beslissen om deze te gebruiken. Zoniet, druk op de knop "
    "'gooien', of op 'einde beurt' om je beurt over te slaan.";
#define VK_PICK_DESTINATION                                                                                          \
    " Dubbelklik dan op het voertuig dat u wenst te verplaatsen, of waarmee u wilt schieten, om vervolgens de "     \
    "bestemming met een dubbelklik aan te klikken. De bestemming is een vakje op het spelbord, leeg, of met een mijn " \
    "om op te pikken, of een vijandelijk voertuig waarop je schiet. Je kan je beurt vroegtijdig beeindigen door op de " \
    "knop 'einde beurt' te klikken."
inline constexpr const char* kChooseDice = "Dubbelklik, afhankelijk van wat je wil doen, op de dobbelstenen apart "
                                           "(links of rechts), of beiden samen (midden)." VK_PICK_DESTINATION;
inline constexpr const char* kRightDieLeft = "Dubbelklik op de rechtse dobbelsteen." VK_PICK_DESTINATION;
inline constexpr const char* kLeftDieLeft = "Dubbelklik op de linkse dobbelsteen." VK_PICK_DESTINATION;
#undef VK_PICK_DESTINATION
inline constexpr const char* kCamp = ". duid een eigen voertuig aan om te verplaatsen, of om mee te schieten, door "
                                     "daarop te dubbelklikken. u kan een voertuig kiezen die zich in uw kamp bevindt "
                                     "en naar het HQ verplaatsen maar niet verder.";
inline constexpr const char* kNoCamp = ". duid een eigen voertuig aan om te verplaatsen, of om mee te schieten, door "
                                       "daarop te dubbelklikken. u kan geen voertuig kiezen die zich in uw kamp "
                                       "bevindt (geen 6, of volzet HQ, of geen kompagnieen).";
inline constexpr const char* kNoFuel = "Uw voertuigen hebben nog steeds geen brandstof, u kan zich dus niet "
                                       "verplaatsen. u kan echter wel schieten op een vijandig voertuig.";
inline constexpr const char* kBothCamp =
    "u koos voor beide dobbelstenen, de waarde 6 behoort tot de mogelijkheden. duid een eigen voertuig aan om te "
    "verplaatsen, of om mee te schieten, door daarop te dubbelklikken. u kan een voertuig kiezen die zich in uw kamp "
    "bevindt en naar het HQ verplaatsen, misschien wel verder.";
inline constexpr const char* kCampVehicle =
    "U koos voor een voertuig in uw kamp. (enkel)klik langzaam op het voertuig om het aantal kompagnieën aan te "
    "passen. indien het een commando voertuig is wordt op dezelfde wijze ook het laden van een mijn in het voertuig "
    "verkregen. dubbelklik uiteindelijk op de bestemming van het voertuig.";
inline constexpr const char* kFieldVehicle =
    "voertuig gekozen. dubbelklik nu op de bestemming, dit is ofwel een leeg vakje op het spelbord (verplaatsen), of "
    "met een mijn (verplaatsen en mijn oppikken - enkel genie), of met een vijandelijk voertuig (schieten).";
// "u koos voor dobbelsteen N, deze heeft de waarde V" + kCamp or kNoCamp.
std::string OneDie(int die, int value, bool campOpen);
} // namespace text

} // namespace vk::test
