#pragma once

// valkenhorn --demo: the game tried on one screen. Two copies of the same
// executable start side by side, each with a temporary home of its own
// (XDG_DATA_HOME, XDG_CONFIG_HOME) whose settings already name the player
// ("Speler A", "Speler B"), give it a LocalID of its own and add one temporary
// folder that both share, with the other player's name. The demo itself shows
// no window: it waits until both copies have ended, then removes the
// temporary homes and the shared folder. An interrupt (Ctrl+C, SIGTERM,
// SIGHUP) ends both copies first and cleans up all the same.
//
// For tests, VALKENHORN_DEMO_AUTOMATION=FOLDER starts the copies with
// --automation FOLDER/A.sock and FOLDER/B.sock.

#include <QString>
#include <QStringList>

namespace vk {

struct DemoPlayer {
    QString Name;      // "Speler A"
    QString LocalID;   // twelve hexadecimal digits
    QString Label;     // "A": the name of its home folder and automation socket
};

// The two players of a demo; their LocalIDs differ.
QList<DemoPlayer> DemoPlayers();

// Writes the settings file of player under configHome, with the shared folder
// and the other player's name in slot 1.
bool WriteDemoSettings(const QString& configHome, const DemoPlayer& player, const QString& sharedFolder,
                       const QString& otherName);

// Runs the demo with the executable program; qtOptions are passed on to both
// copies. Needs a QCoreApplication. Returns the exit code: 0 when both copies
// ended with 0.
int RunDemo(const QString& program, const QStringList& qtOptions);

} // namespace vk
