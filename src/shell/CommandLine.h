#pragma once

// The program's command line: what a start asks for, read before any window
// or display is needed, so that --help, --version and a wrong option answer on
// a terminal without a screen.
//
//   valkenhorn [--automation SOCKET]    the game (the tests' automation socket)
//   valkenhorn --demo                   two copies on this screen, one shared folder
//   valkenhorn --computer NAME --folder PATH [--level greedy|random] [--invite PLAYER]
//              [--games N] [--turns N]
//                                       a computer player on a shared folder, without a window
//   valkenhorn --help | --version
//
// Qt's own options (-platform NAME, -style NAME, -display NAME, -reverse ...)
// pass through to Qt, which reads them when the application starts.

#include <QString>
#include <QStringList>

namespace vk {

struct CommandLine {
    enum class Mode {
        Play,     // the game, with an automation socket when one is given
        Demo,     // two copies of the game on one screen
        Computer, // the game played by a computer player, without a window
        Help,     // the usage text on standard output
        Version,  // "valkenhorn VERSION" on standard output
        Wrong,    // an unknown option or a missing value: Error on standard error, exit code 2
    };
    Mode Run = Mode::Play;
    QString AutomationPath;
    QString ComputerName;    // --computer: the computer player's name
    QString ComputerFolder;  // --folder: the shared folder it plays on
    QString ComputerLevel = QStringLiteral("greedy");  // --level: "greedy" or "random"
    QString ComputerInvite;  // --invite: a player it invites once seen (else it waits to be invited)
    int ComputerGames = 0;   // --games: games it starts before it stays idle, 0 for no end
    int ComputerTurns = 400; // --turns: the turn at which it stops a game still running (and saves it)
    QStringList QtOptions;   // Qt's own options as given, for the copies of the demo
    QString Error;           // the message of Mode::Wrong, Dutch and English, without a line end
};

// Reads the arguments after the program's name.
CommandLine ReadCommandLine(const QStringList& arguments);

// The same from main's argc and argv.
CommandLine ReadCommandLine(int argc, char* argv[]);

// The version of the program (the CMake project's version).
QString ProgramVersion();

// "valkenhorn 1.0"
QString VersionText();

// The usage in Dutch and English, ending with a line end.
QString UsageText();

// Writes what --help, --version or a wrong command line asks for and returns
// the exit code (0, or 2 for a wrong command line); -1 for a start that goes on.
int AnswerCommandLine(const CommandLine& line);

} // namespace vk
