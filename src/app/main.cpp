// Valkenhorn: entry point. Starts the automation interface when asked, builds
// the main window and runs its start-up inside the event loop.

#include "game/ComputerPlayer.h"
#include "game/GameFlow.h"
#include "game/PositionCheck.h"
#include "link/LinkControls.h"
#include "link/PollCycle.h"
#include "link/SharedFolderFiles.h"
#include "shell/AutomationServer.h"
#include "shell/CommandLine.h"
#include "shell/Demo.h"
#include "shell/FaultReport.h"
#include "shell/Global.h"
#include "shell/RunTimeFault.h"
#include "shell/Settings.h"
#include "shell/ShellControls.h"
#include "shell/StartUp.h"
#include "ui/Controls.h"
#include "ui/Hoofdvenster.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QTemporaryFile>
#include <QTimer>

#include <cstdio>
#include <exception>
#include <memory>

namespace {

// The last line of defence: a fault that escapes an event handler still ends
// the program through the fault report.
class ValkenhornApplication : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::exception& error) {
            vk::ReportFaultAndExit(QString::fromStdString(error.what()));
        }
    }
};

template <class Array> QVariantList ListOf(const Array& values)
{
    QVariantList list;
    for (const auto value : values)
        list << value;
    return list;
}

// The game as outside tests compare two copies: the position as a saved game
// would hold it, the action record, the deck and the board's cells.
void InsertGameState(QVariantMap& state, const vk::Hoofdvenster& window)
{
    const vk::WindowValues& v = window.V;
    const bool sides = (v.Board.LocalSide == 1 || v.Board.LocalSide == 2) &&
                       (v.Progress.ExternalSide == 1 || v.Progress.ExternalSide == 2);
    state.insert(QStringLiteral("Position"),
                 sides ? QString::fromLatin1(vk::SavedGameText(v.Board, v.Progress)) : QString());
    state.insert(QStringLiteral("GameWon"), v.GameWon);
    state.insert(QStringLiteral("ResumeGame"), v.ResumeGame);
    state.insert(QStringLiteral("PendingDraws"), v.Board.PendingDraws);
    state.insert(QStringLiteral("CurrentCard"), v.CurrentCard);
    state.insert(QStringLiteral("OppDice1"), v.OppDice1);
    state.insert(QStringLiteral("OppDice2"), v.OppDice2);
    state.insert(QStringLiteral("ActVeh"), ListOf(v.Act.ActVeh));
    state.insert(QStringLiteral("ActCode"), ListOf(v.Act.ActCode));
    state.insert(QStringLiteral("ActFrom"), ListOf(v.Act.ActFrom));
    state.insert(QStringLiteral("ActTo"), ListOf(v.Act.ActTo));
    state.insert(QStringLiteral("StackPoint"), v.Progress.Deck.StackPoint);
    QVariantList stack;
    for (int i = 0; i < vk::CompassCardCount; ++i)
        stack << v.Progress.Deck.CompassStack[static_cast<std::size_t>(i)];
    state.insert(QStringLiteral("CompassStack"), stack);
    // The hands by army: CardHand [[army 1 slot 1, slot 2], [army 2 ...]],
    // CardCount [army 1, army 2].
    QVariantList hands;
    for (const auto& hand : v.Progress.Deck.CardHand)
        hands << QVariant(ListOf(hand));
    state.insert(QStringLiteral("CardHand"), hands);
    state.insert(QStringLiteral("CardCount"), ListOf(v.Progress.Deck.CardCount));
    state.insert(QStringLiteral("CompassOwed"), v.Board.CompassOwed);
    state.insert(QStringLiteral("CardAnnulled"), v.CardAnnulled);
    state.insert(QStringLiteral("VrijgeleideHeld"), v.VrijgeleideHeld);
    state.insert(QStringLiteral("PersonnelRunning"), v.PersonnelRunning);
    state.insert(QStringLiteral("PickedVehicle"), v.PickedVehicle);
    state.insert(QStringLiteral("PickedField"), v.PickedField);
    state.insert(QStringLiteral("StockPicksLeft"), v.StockPicksLeft);
    state.insert(QStringLiteral("LeopardPick"), v.LeopardPick);
    QVariantList cells;
    for (int field = vk::kFirstRoadField; field <= vk::kLastRoadField; ++field)
        cells << v.Board.BoardCell(field);
    state.insert(QStringLiteral("BoardCell"), cells);
    state.insert(QStringLiteral("Waiting"), vk::Waiting());
    state.insert(QStringLiteral("TossNumber"), v.TossNumber);
    state.insert(QStringLiteral("Desyncs"), vk::DesyncWarnings());
}

QVariantMap WindowState(const vk::Hoofdvenster& window)
{
    const vk::WindowValues& v = window.V;
    QVariantMap state;
    state.insert(QStringLiteral("GamePhase"), v.GamePhase);
    state.insert(QStringLiteral("TurnNumber"), v.Progress.TurnNumber);
    state.insert(QStringLiteral("LocalSide"), v.Board.LocalSide);
    state.insert(QStringLiteral("ExternalSide"), v.Progress.ExternalSide);
    state.insert(QStringLiteral("BoardSide"), v.Board.BoardSide);
    state.insert(QStringLiteral("GameRunning"), v.GameRunning);
    state.insert(QStringLiteral("LinkBusy"), vk::Global().LinkBusy);
    state.insert(QStringLiteral("InputLock"), v.InputLock);
    state.insert(QStringLiteral("BoardBusy"), v.BoardBusy);
    state.insert(QStringLiteral("SelectedUser"), v.SelectedUser);
    state.insert(QStringLiteral("BoardText"), vk::Global().BoardText);
    state.insert(QStringLiteral("Dice1"), v.Dice1);
    state.insert(QStringLiteral("Dice2"), v.Dice2);
    state.insert(QStringLiteral("MinWidth"), v.MinWidth);
    state.insert(QStringLiteral("MinHeight"), v.MinHeight);
    state.insert(QStringLiteral("ExtUsersCount"), vk::Global().ExtUsersCount);
    state.insert(QStringLiteral("ProgramFolder"), vk::Global().ProgramFolder);
    state.insert(QStringLiteral("DataFolder"), vk::Global().DataFolder);
    const vk::GlobalValues& g = vk::Global();
    state.insert(QStringLiteral("LocalID"), g.LocalID);
    state.insert(QStringLiteral("LocalUser"), g.LocalUser);
    state.insert(QStringLiteral("OldLocalUser"), g.OldLocalUser);
    QVariantList folders, users, active;
    for (int i = 1; i <= g.ExtUsersCount && i < g.Folder.size(); ++i) {
        folders << g.Folder[i];
        users << g.External_User[i];
        active << g.Active[i];
    }
    state.insert(QStringLiteral("Folders"), folders);
    state.insert(QStringLiteral("ExternalUsers"), users);
    state.insert(QStringLiteral("Active"), active);
    state.insert(QStringLiteral("PollTick"), vk::Polls().PollTick);
    state.insert(QStringLiteral("ActionCounter"), vk::Polls().ActionCounter);
    state.insert(QStringLiteral("LastSentFile"), v.LastSentFile);
    state.insert(QStringLiteral("GameLost"), v.GameLost);
    state.insert(QStringLiteral("Check1"), window.Check1->Value());
    state.insert(QStringLiteral("ShareStatus"), window.ShareStatus->Value());
    state.insert(QStringLiteral("SettingsPath"), vk::SettingsFilePath());
    InsertGameState(state, window);
    state.insert(QStringLiteral("SoundHandles"),
                 QVariantList{v.Sound.SoundHandles[0], v.Sound.SoundHandles[1], v.Sound.SoundHandles[2]});
    return state;
}

} // namespace

int main(int argc, char* argv[])
{
    // The command line is read before the application, so that --help,
    // --version, a wrong option and the demo need no screen.
    const vk::CommandLine commandLine = vk::ReadCommandLine(argc, argv);
    if (const int code = vk::AnswerCommandLine(commandLine); code >= 0)
        return code;
    if (commandLine.Run == vk::CommandLine::Mode::Demo) {
        QCoreApplication demo(argc, argv);
        return vk::RunDemo(QCoreApplication::applicationFilePath(), commandLine.QtOptions);
    }

    const bool computer = commandLine.Run == vk::CommandLine::Mode::Computer;
    // A computer player shows no window and needs no screen: it runs on Qt's
    // offscreen platform, given a screen as large as the window needs.
    QTemporaryFile offscreenScreen(QDir::tempPath() + QStringLiteral("/valkenhorn-screen-XXXXXX.json"));
    if (computer && offscreenScreen.open()) {
        offscreenScreen.write(R"({"screens": [{"name": "Valkenhorn", "x": 0, "y": 0, "width": 1920, "height": 1080,
                                  "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
        offscreenScreen.close();
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(offscreenScreen.fileName()));
    }

    ValkenhornApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Valkenhorn"));
    QApplication::setOrganizationName(QStringLiteral("Valkenhorn"));
    // Frames and buttons in a sans serif close to the design's.
    QFont font(QStringLiteral("Liberation Sans"));
    font.setPixelSize(11);
    font.setStyleHint(QFont::SansSerif);
    QApplication::setFont(font);

    const QString automationPath = commandLine.AutomationPath;

    vk::AutomationServer* automation = nullptr;
    if (!automationPath.isEmpty()) {
        automation = vk::AutomationServer::Start(automationPath, &app);
        if (!automation)
            return 2;
    }

    vk::Hoofdvenster window;
    vk::ConnectShellControls(window);
    vk::ConnectLinkControls(window);
    vk::ConnectGameControls(window);
    if (automation) {
        automation->SetControls(&window.Controls(), &window);
        automation->SetStateProvider([&window] { return WindowState(window); });
        automation->SetPositionChanger([&window](const QString& section, const QString& key, const QString& value) {
            return vk::ChangePositionForTest(window, section, key, value);
        });
    }

    std::unique_ptr<vk::ComputerPlayer> computerPlayer;
    if (computer) {
        vk::ComputerSettings settings;
        settings.Name = commandLine.ComputerName;
        settings.Folder = commandLine.ComputerFolder;
        settings.Level = commandLine.ComputerLevel == QLatin1String("random") ? vk::ComputerLevel::Random
                                                                               : vk::ComputerLevel::Greedy;
        settings.Invite = commandLine.ComputerInvite;
        settings.Games = commandLine.ComputerGames;
        settings.TurnLimit = commandLine.ComputerTurns;
        vk::PrepareComputerSettings(settings);
        computerPlayer = std::make_unique<vk::ComputerPlayer>(window, settings);
    }

    QTimer::singleShot(0, &window, [&window] { vk::Guarded([&window] { vk::RunStartUp(window); }); });
    return app.exec();
}
