#pragma once

// Application-wide values that live for the whole run: the program's names and
// folders, the list of external players, the board text and the link's busy flag.

#include <QString>
#include <QStringList>
#include <QVector>

namespace vk {

struct GlobalValues {
    QString AppTitle = QStringLiteral("Valkenhorn");
    QString SettingsSection = QStringLiteral("DropBox");
    // Folders always end in "/".
    QString ProgramFolder;
    QString AppDataFolder;
    QString DataFolder;
    QString ArmyImageFolder[2];   // index 0 belongs to Side 1 (green), 1 to Side 2 (brown)
    QString LogPath;

    // Set while a dialog or the shutdown must not be disturbed by the poll.
    bool LinkBusy = false;
    // Set beside LinkBusy while a folder is removed; nothing tests it.
    bool RemovingFolder = false;

    // Who this side is: the PC's identity, the player's name and the name
    // before the last change.
    QString LocalID;
    QString LocalUser;
    QString OldLocalUser;

    // The running text of the message board: empty hides the board.
    QString BoardText;

    // The external players, 1-based parallel lists of length ExtUsersCount
    // (element 0 is unused).
    int ExtUsersCount = 0;
    QStringList Folder{QString()};
    QStringList External_User{QString()};
    QVector<bool> Active{false};
};

GlobalValues& Global();

// The path with "/" added unless it already ends in one. The Windows design
// spoke of a backslash; on this platform the separator is "/".
QString WithBackslash(const QString& path);

// True exactly when a regular file stands under the path. The entry itself is
// looked at (lstat): a link, a directory, a pipe or a device that bears a
// message's name is not a message.
bool FileExists(const QString& path);

// Checked access to the 1-based lists of external players: an index outside
// the list's current bounds is a subscript fault, as in the design's arrays.
QString& FolderAt(int i);
QString& ExternalUserAt(int i);
bool ActiveAt(int i);
void SetActiveAt(int i, bool active);

// Resizes the three lists to the bounds 1..count, keeping their contents;
// bounds 1 to 0 or lower are a subscript fault.
void ResizeExternalUsers(int count);

} // namespace vk
