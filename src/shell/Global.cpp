#include "shell/Global.h"

#include "link/FolderEntries.h"
#include "shell/RunTimeFault.h"

#include <QFile>

namespace vk {

GlobalValues& Global()
{
    static GlobalValues values;
    return values;
}

QString WithBackslash(const QString& path)
{
    return path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
}

bool FileExists(const QString& path)
{
    // The entry itself: a link, even one to a file, is not a file of ours.
    const std::string entry = QFile::encodeName(path).toStdString();
    const EntryType type = TypeOfEntry(entry);
    if (type != EntryType::Missing && type != EntryType::RegularFile)
        ReportRefusedEntry(entry, DescribeEntryType(type));
    return type == EntryType::RegularFile;
}

QString& FolderAt(int i)
{
    QStringList& list = Global().Folder;
    return list[CheckIndex(i, 1, static_cast<int>(list.size()) - 1, "Folder")];
}

QString& ExternalUserAt(int i)
{
    QStringList& list = Global().External_User;
    return list[CheckIndex(i, 1, static_cast<int>(list.size()) - 1, "External_User")];
}

bool ActiveAt(int i)
{
    const QVector<bool>& list = Global().Active;
    return list[CheckIndex(i, 1, static_cast<int>(list.size()) - 1, "Active")];
}

void SetActiveAt(int i, bool active)
{
    QVector<bool>& list = Global().Active;
    list[CheckIndex(i, 1, static_cast<int>(list.size()) - 1, "Active")] = active;
}

void ResizeExternalUsers(int count)
{
    if (count < 1)
        throw RunTimeFault("subscript out of range: list of external players (1 To " + std::to_string(count) + ")");
    GlobalValues& g = Global();
    g.Folder.resize(count + 1);
    g.External_User.resize(count + 1);
    g.Active.resize(count + 1);
}

} // namespace vk
