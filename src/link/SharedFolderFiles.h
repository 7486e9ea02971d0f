#pragma once

// Message files in the shared folders as the program touches them: paths
// built from the writer's name, single key reads and writes, the deletes,
// and the waits on a file.

#include "link/MessageKinds.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace vk {

struct WindowValues;

// Folder + "/" + writer + extension, the extension given or that of the kind.
QString MessagePath(const QString& folder, const QString& writer, const QString& extension);
QString MessagePath(const QString& folder, const QString& writer, MessageKindId kind);

// One key of a message file; text is single bytes (Latin-1) on the wire.
void WriteMessageKey(const QString& path, const QString& section, const QString& key, const QString& value);
QString ReadMessageKey(const QString& path, const QString& section, const QString& key, const QString& defaultValue);
// Key number `index` of a message of the given kind, in its section.
QString ReadMessageKey(const QString& path, MessageKindId kind, std::size_t index, const QString& defaultValue);

// Writes all keys of a message, one write of the file per key, in the order
// of its kind; `values` holds them in that order.
void SendMessage(const QString& path, MessageKindId kind, const QStringList& values);
// The same with the keys in the order given (the action record of phase 8).
void SendMessage(const QString& path, MessageKindId kind, const KeyValues& keys);

// Everything below treats a shared folder as written by strangers: only a
// regular file is a message, no link is followed, reads are bounded and
// writes are published whole by a rename.

// Deletes a file once, errors ignored; a link is removed itself.
void DeleteOnce(const QString& path);

// { delete; test } until the file is gone, without pumping the interface. A
// file that can't be deleted holds the program here, as the design accepts;
// between tries the thread sleeps a little instead of spinning.
void DeleteUntilGone(const QString& path);

// Deletes the entries of a folder that match a pattern such as "*.xid", once,
// errors ignored: files, and links, pipes and the like under any name (the
// entry itself, never what a link points at). Directories and the files of a
// synchronisation service are left alone.
void DeleteMatching(const QString& folder, const QString& pattern);

// The names of the regular files in folder that match the pattern, in
// directory order, without the files of a synchronisation service and without
// names that can't safely be part of a path. A folder that can't be read
// gives none.
QStringList ListMatching(const QString& folder, const QString& pattern);

// Removes what is left of an interrupted write of the writer's: the
// temporaries its files were built under.
void RemoveOwnTemporaries(const QString& folder, const QString& writer);

// Writes one run-log line for each entry of a shared folder that the file
// layer refused to take for a message ("ignoring NAME in shared folder: why").
void LogRefusedEntries();

// Sets InputLock and waits until the opponent has deleted LastSentFile, then
// clears it. No time limit.
void WaitForConsumed(WindowValues& values);

// The design's { pump the interface; test } loop. Instead of spinning, it
// sleeps in the event queue between tests: a change in a shared folder (the
// folder watcher), a timer or a user's input wakes it, and a slow poll covers
// folders the watcher can't see.
// `label` says what the copy waits for ("opponent's .act", "phase 4",
// "consumed"); the innermost one is reported by Waiting().
void PumpUntil(const std::function<bool()>& done, const QString& label = QStringLiteral("event"));

// What the innermost wait of the game waits for, empty when none.
QString Waiting();

// Names a wait that is written as a loop of its own for as long as it lasts.
class WaitingFor {
public:
    explicit WaitingFor(const QString& label);
    ~WaitingFor();
    WaitingFor(const WaitingFor&) = delete;
    WaitingFor& operator=(const WaitingFor&) = delete;
};

// Watches the shared folders of the list of external players; called when
// the list changes.
void WatchSharedFolders();

// The milliseconds between two tests of PumpUntil when nothing wakes it.
inline constexpr int FolderFallbackPollMs = 100;

} // namespace vk
