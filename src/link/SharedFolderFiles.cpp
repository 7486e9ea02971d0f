#include "link/SharedFolderFiles.h"

#include "link/ProfileFile.h"
#include "link/ServiceFiles.h"
#include "shell/Clock.h"
#include "shell/Global.h"
#include "ui/WindowValues.h"

#include <QDir>
#include <QFile>
#include <QFileSystemWatcher>

#include <chrono>
#include <filesystem>
#include <thread>

namespace vk {

namespace {

std::filesystem::path DiskPath(const QString& path)
{
    return std::filesystem::path(QFile::encodeName(path).toStdString());
}

std::string Bytes(const QString& text)
{
    return text.toLatin1().toStdString();
}

QFileSystemWatcher& FolderWatcher()
{
    static QFileSystemWatcher* watcher = new QFileSystemWatcher;
    return *watcher;
}

} // namespace

QString MessagePath(const QString& folder, const QString& writer, const QString& extension)
{
    return folder + QLatin1Char('/') + writer + extension;
}

QString MessagePath(const QString& folder, const QString& writer, MessageKindId kind)
{
    return MessagePath(folder, writer, QString::fromStdString(KindOf(kind).Extension));
}

void WriteMessageKey(const QString& path, const QString& section, const QString& key, const QString& value)
{
    WriteProfileString(Bytes(section), Bytes(key), Bytes(value), DiskPath(path));
}

QString ReadMessageKey(const QString& path, const QString& section, const QString& key, const QString& defaultValue)
{
    return QString::fromLatin1(ReadProfileString(Bytes(section), Bytes(key), Bytes(defaultValue), DiskPath(path)));
}

QString ReadMessageKey(const QString& path, MessageKindId id, std::size_t index, const QString& defaultValue)
{
    const MessageKind& kind = KindOf(id);
    return ReadMessageKey(path, QString::fromStdString(kind.Section), QString::fromStdString(kind.Keys.at(index)),
                          defaultValue);
}

void SendMessage(const QString& path, MessageKindId id, const QStringList& values)
{
    const MessageKind& kind = KindOf(id);
    const QString section = QString::fromStdString(kind.Section);
    for (std::size_t i = 0; i < kind.Keys.size() && i < static_cast<std::size_t>(values.size()); ++i)
        WriteMessageKey(path, section, QString::fromStdString(kind.Keys[i]), values[static_cast<int>(i)]);
}

void DeleteOnce(const QString& path)
{
    QFile::remove(path);
}

void DeleteUntilGone(const QString& path)
{
    int pauseMs = 0;
    for (;;) {
        QFile::remove(path);
        if (!FileExists(path))
            return;
        // Still there: held open or not ours to delete. Try again, but give
        // the other program the processor while it holds the file.
        pauseMs = pauseMs == 0 ? 1 : (pauseMs < 50 ? pauseMs * 2 : 50);
        std::this_thread::sleep_for(std::chrono::milliseconds(pauseMs));
    }
}

QStringList ListMatching(const QString& folder, const QString& pattern)
{
    if (folder.isEmpty())
        return {};
    QDir dir(folder);
    QStringList names;
    // Unsorted is the order in which the directory gives its entries.
    const QStringList found = dir.entryList(QStringList{pattern}, QDir::Files | QDir::System, QDir::Unsorted);
    for (const QString& name : found)
        if (!IsServiceFile(QFile::encodeName(name).toStdString()))
            names << name;
    return names;
}

void DeleteMatching(const QString& folder, const QString& pattern)
{
    for (const QString& name : ListMatching(folder, pattern))
        QFile::remove(folder + QLatin1Char('/') + name);
}

void WaitForConsumed(WindowValues& values)
{
    values.InputLock = true;
    while (FileExists(values.LastSentFile))
        WaitMs(50);
    values.InputLock = false;
}

void PumpUntil(const std::function<bool()>& done)
{
    for (;;) {
        PumpInterface();
        if (done())
            return;
        PumpInterfaceWaiting(FolderFallbackPollMs);
    }
}

void WatchSharedFolders()
{
    QFileSystemWatcher& watcher = FolderWatcher();
    const QStringList watched = watcher.directories();
    if (!watched.isEmpty())
        watcher.removePaths(watched);
    QStringList folders;
    const GlobalValues& g = Global();
    for (int i = 1; i <= g.ExtUsersCount && i < g.Folder.size(); ++i)
        if (!g.Folder[i].isEmpty() && QFileInfo(g.Folder[i]).isDir() && !folders.contains(g.Folder[i]))
            folders << g.Folder[i];
    if (!folders.isEmpty())
        watcher.addPaths(folders);
}

} // namespace vk
