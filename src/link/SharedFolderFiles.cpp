#include "link/SharedFolderFiles.h"

#include "link/FolderEntries.h"
#include "link/PlainFiles.h"
#include "link/ProfileFile.h"
#include "link/ServiceFiles.h"
#include "shell/Clock.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "ui/WindowValues.h"

#include <QFile>
#include <QFileInfo>
#include <QFileSystemWatcher>

#include <chrono>
#include <filesystem>
#include <set>
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

std::string DiskBytes(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

// A name as the run log can show it on one line: bytes outside printable
// ASCII as \xNN.
QString Printable(std::string_view name)
{
    QString text;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= 0x7F)
            text += QStringLiteral("\\x%1").arg(byte, 2, 16, QLatin1Char('0'));
        else
            text += QLatin1Char(c);
    }
    return text;
}

bool IsSharedFolder(const std::string& folder)
{
    const GlobalValues& g = Global();
    for (int i = 1; i <= g.ExtUsersCount && i < g.Folder.size(); ++i) {
        std::string known = DiskBytes(g.Folder[i]);
        while (known.size() > 1 && known.back() == '/')
            known.pop_back();
        if (!known.empty() && known == folder)
            return true;
    }
    return false;
}

// One line per refused entry and run, and no more than a few hundred in all,
// so that a folder full of junk can't flood the log.
void LogRefusedEntry(const std::string& path, const std::string& reason)
{
    constexpr std::size_t MostNamesLogged = 256;
    static std::set<std::string> logged;
    if (!RunLogOpen() || logged.count(path) != 0 || logged.size() > MostNamesLogged)
        return;
    logged.insert(path);
    if (logged.size() > MostNamesLogged) {
        LogLine(QStringLiteral("ignoring further entries in shared folders: more than %1 refused").arg(MostNamesLogged));
        return;
    }
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? std::string() : path.substr(0, slash);
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const QString why = QString::fromStdString(reason);
    if (IsSharedFolder(folder))
        LogLine(QStringLiteral("ignoring ") + Printable(name) + QStringLiteral(" in shared folder: ") + why);
    else
        LogLine(QStringLiteral("ignoring ") + Printable(path) + QStringLiteral(": ") + why);
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
    std::vector<std::string> texts;
    for (const QString& value : values)
        texts.push_back(Bytes(value));
    const MessageKind& kind = KindOf(id);
    WriteMessage(kind, InKeyOrder(kind, texts), DiskBytes(path));
}

void SendMessage(const QString& path, MessageKindId id, const KeyValues& keys)
{
    WriteMessage(KindOf(id), keys, DiskBytes(path));
}

void DeleteOnce(const QString& path)
{
    RemoveEntry(DiskBytes(path));
}

void DeleteUntilGone(const QString& path)
{
    const std::string entry = DiskBytes(path);
    int pauseMs = 0;
    for (;;) {
        RemoveEntry(entry);
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
    const std::string folderBytes = DiskBytes(folder);
    const std::string patternBytes = DiskBytes(pattern);
    QStringList names;
    for (const FolderEntry& entry : ListFolder(folderBytes)) {
        if (IsServiceFile(entry.Name) || !NameMatches(entry.Name, patternBytes))
            continue;
        const std::string path = folderBytes + "/" + entry.Name;
        if (const std::string unsafe = UnsafeNameReason(entry.Name); !unsafe.empty())
            ReportRefusedEntry(path, unsafe);
        else if (entry.Type != EntryType::RegularFile)
            ReportRefusedEntry(path, DescribeEntryType(entry.Type));
        else
            names << QFile::decodeName(QByteArray::fromStdString(entry.Name));
    }
    return names;
}

void DeleteMatching(const QString& folder, const QString& pattern)
{
    // Every entry but a directory goes: a link is removed itself, never what
    // it points at, and a name no file of ours could have goes as well.
    if (folder.isEmpty())
        return;
    // Names are used as the directory gave them, byte for byte.
    const std::string folderBytes = DiskBytes(folder);
    const std::string patternBytes = DiskBytes(pattern);
    for (const FolderEntry& entry : ListFolder(folderBytes))
        if (entry.Type != EntryType::Directory && !IsServiceFile(entry.Name) && NameMatches(entry.Name, patternBytes))
            RemoveEntry(folderBytes + "/" + entry.Name);
}

void RemoveOwnTemporaries(const QString& folder, const QString& writer)
{
    if (folder.isEmpty() || writer.isEmpty())
        return;
    const std::string folderBytes = DiskBytes(folder);
    const std::string prefix = DiskBytes(writer);
    for (const FolderEntry& entry : ListFolder(folderBytes))
        if (entry.Type == EntryType::RegularFile && IsTemporaryOf(entry.Name, prefix))
            RemoveEntry(folderBytes + "/" + entry.Name);
}

void WaitForConsumed(WindowValues& values)
{
    values.InputLock = true;
    const QString sent = values.LastSentFile;
    PumpUntil([&sent] { return !FileExists(sent); }, QStringLiteral("consumed"));
    values.InputLock = false;
}

namespace {

QStringList& WaitLabels()
{
    static QStringList labels;
    return labels;
}

} // namespace

WaitingFor::WaitingFor(const QString& label)
{
    WaitLabels().append(label);
}

WaitingFor::~WaitingFor()
{
    WaitLabels().removeLast();
}

QString Waiting()
{
    return WaitLabels().isEmpty() ? QString() : WaitLabels().last();
}

void PumpUntil(const std::function<bool()>& done, const QString& label)
{
    const WaitingFor waiting(label);
    for (;;) {
        PumpInterface();
        if (done())
            return;
        PumpInterfaceWaiting(FolderFallbackPollMs);
    }
}

void LogRefusedEntries()
{
    SetRefusedEntryHandler(&LogRefusedEntry);
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
