#include "shell/Global.h"

#include <QFileInfo>

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
    QFileInfo info(path);
    return info.exists() && info.lastModified().isValid();
}

} // namespace vk
