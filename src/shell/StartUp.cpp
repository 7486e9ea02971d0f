#include "shell/StartUp.h"

#include "board/BoardState.h"
#include "game/DiceTable.h"
#include "game/ScriptedDice.h"
#include "game/ScriptedDeck.h"
#include "link/SharedFolderFiles.h"
#include "shell/Clock.h"
#include "shell/FaultReport.h"
#include "shell/PlayerInitiation.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "shell/SingleInstance.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QStandardPaths>
#include <QStyleHints>

#include <cmath>

namespace vk {

namespace {

void Refresh(Hoofdvenster& window)
{
    window.repaint();
    PumpInterface();
}

} // namespace

QString FindProgramFolder()
{
    const QString own = QCoreApplication::applicationDirPath();
    if (QFileInfo::exists(own + QStringLiteral("/groen_leger")))
        return WithBackslash(own);
    const QString installed = QDir::cleanPath(own + QStringLiteral("/../share/valkenhorn"));
    if (QFileInfo::exists(installed + QStringLiteral("/groen_leger")))
        return WithBackslash(installed);
    return WithBackslash(own);
}

QString FindAppDataFolder()
{
    QString folder = qEnvironmentVariable("XDG_DATA_HOME");
    if (folder.isEmpty() || QDir::isRelativePath(folder))
        folder = QDir::homePath() + QStringLiteral("/.local/share");
    return WithBackslash(folder);
}

void RunStartUp(Hoofdvenster& window)
{
    GlobalValues& g = Global();

    // One copy per data folder.
    const QString appDataFolder = FindAppDataFolder();
    const QString dataFolder = appDataFolder + g.AppTitle + QLatin1Char('/');
    if (PreviousInstanceRunning(dataFolder)) {
        MessageBox(QStringLiteral("Valkenhorn is al gestart!"));
        EndProcess(0);
    }

    // Names, and the mark of the running copy.
    g.AppTitle = QStringLiteral("Valkenhorn");
    g.SettingsSection = QStringLiteral("DropBox");
    MarkRunningInstance(dataFolder);

    // The program, data and picture folders.
    g.ProgramFolder = FindProgramFolder();
    g.AppDataFolder = appDataFolder;
    g.ArmyImageFolder[0] = g.ProgramFolder + QStringLiteral("groen_leger/");
    g.ArmyImageFolder[1] = g.ProgramFolder + QStringLiteral("bruin_leger/");
    QDir().mkpath(g.AppDataFolder + g.AppTitle);
    g.DataFolder = WithBackslash(g.AppDataFolder + g.AppTitle);

    // The run log.
    g.LogPath = g.DataFolder + g.AppTitle + QStringLiteral(".log");
    OpenRunLog(g.LogPath);
    LogRefusedEntries();
    if (TimeScale() != 1.0)
        LogAt(QStringLiteral("running with time scale %1 (for tests) at ").arg(TimeScale()));
    if (DiceScripted())
        LogAt(QStringLiteral("rolling scripted dice (for tests) at "));
    if (ScriptedDeck())
        LogAt(QStringLiteral("dealing a scripted deck (for tests) at "));

    // The splash, centred.
    window.Speelveld->Move(0, 0, kSplashWidth, kSplashHeight);
    window.Speelveld->SetPicture(g.ProgramFolder + QStringLiteral("splash.gif"));
    window.CentreOnScreen();

    // The splash shows.
    LogAt(QStringLiteral("Showing splash screen at "));
    window.show();
    Refresh(window);

    // Sound.
    window.ESound1->SetWindow(&window);
    Init_Sound(*window.ESound1, window.V.Sound, g.ProgramFolder);

    // From here on the window keeps its minimum size.
    window.V.MinWidth = MinWindowWidth;
    window.V.MinHeight = MinWindowHeight;

    // The splash lasts as long as the intro sound.
    WaitMs(500);
    Speel(*window.ESound1, window.V.Sound, SoundIntro);
    WaitMs(5800);

    // The splash goes.
    LogAt(QStringLiteral("Hiding splash screen at "));
    window.hide();

    // The board picture of view 1.
    LogAt(QStringLiteral("Loading playboard at "));
    window.V.Board.BoardSide = 1;
    window.Speelveld->SetPicture(g.ArmyImageFolder[window.V.Board.BoardSide - 1] + QStringLiteral("yambo_1.bmp"));
    // The miniatures of the Personnel cards show the back of a card.
    for (ImageControl* miniature : {window.KK1, window.KK2, window.KK3})
        miniature->SetPicture(g.ProgramFolder + QStringLiteral("kompas/back.gif"));
    Refresh(window);
    WaitMs(1000);

    // The maximised pass is the test of the screen.
    LogAt(QStringLiteral("Testing requirements of computer screen at "));
    window.SetShowState(WindowShowState::Maximised);
    window.SetShowState(WindowShowState::Normal);
    window.Form_Resize();

    // The window in the middle of the screen.
    LogAt(QStringLiteral("Positioning program window at "));
    window.CentreOnScreen();

    // The board takes its full size.
    window.Speelveld->Move(window.Speelveld->Left(), window.Speelveld->Top(), kBoardWidth, kBoardHeight);

    // The values of the program and the double-click timer.
    LogAt(QStringLiteral("Initiating program data at "));
    window.V.GameRunning = false;
    window.VehDblClickTimer->SetInterval(
        static_cast<int>(std::lround(QGuiApplication::styleHints()->mouseDoubleClickInterval() * 1.2)));

    // The window shows.
    LogAt(QStringLiteral("Showing program window at "));
    window.show();
    Refresh(window);

    // The running text starts.
    LogAt(QStringLiteral("Enabling scroll timer at "));
    window.Scroll_Timer->SetEnabled(true);

    // The player initiation; it ends by starting Action_Timer.
    LogAt(QStringLiteral("Initiating players at "));
    RunPlayerInitiation(window);

    // No game can start before a connection.
    window.cmdStart->SetEnabled(false);
    window.cmdDisconnect->SetEnabled(false);

    // The dice table; the poll may already run while it is built.
    LogAt(QStringLiteral("Invoking randomizer at "));
    // The build offers to pump the interface at every draw, a quarter of a
    // million times a pass; pumping at most every 5 ms keeps timers and clicks
    // just as alive and lets the build itself run at full speed.
    window.V.DiceTable.fill(0);
    std::int32_t lastPump = GetTickCount();
    BuildDiceTable(window.V.DiceTable, window.V.Random, ClockSeed(SecondsSinceMidnight(), DiceTableSize),
                   [&lastPump] {
                       const std::int32_t now = GetTickCount();
                       const std::int64_t since = static_cast<std::int64_t>(now) - lastPump;
                       if (since >= 5 || since < 0) {
                           lastPump = now;
                           PumpInterface();
                       }
                   });

    // The start-up is done.
    LogAt(QStringLiteral("End of Form Load at "));
    LogLine(QStringLiteral("-----------------------------------------------------"));
}

} // namespace vk
