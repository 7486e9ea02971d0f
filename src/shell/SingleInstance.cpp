#include "shell/SingleInstance.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>

#include <memory>

namespace vk {

namespace {

const char* const LockName = "Valkenhorn.lock";

std::unique_ptr<QLockFile>& HeldLock()
{
    static std::unique_ptr<QLockFile> lock;
    return lock;
}

} // namespace

bool PreviousInstanceRunning(const QString& dataFolder)
{
    const QString path = dataFolder + QLatin1String(LockName);
    if (!QFileInfo::exists(path))
        return false;
    QLockFile probe(path);
    probe.setStaleLockTime(0);
    qint64 pid = 0;
    QString host, app;
    if (!probe.getLockInfo(&pid, &host, &app))
        return false;
    // A lock whose process is gone is stale: that copy ended without cleaning up.
    return QFileInfo::exists(QStringLiteral("/proc/%1").arg(pid));
}

void MarkRunningInstance(const QString& dataFolder)
{
    QDir().mkpath(dataFolder);
    auto lock = std::make_unique<QLockFile>(dataFolder + QLatin1String(LockName));
    lock->setStaleLockTime(0);
    if (!lock->tryLock(0)) {
        lock->removeStaleLockFile();
        lock->tryLock(0);
    }
    HeldLock() = std::move(lock);
}

void ReleaseSingleInstance()
{
    if (HeldLock())
        HeldLock()->unlock();
    HeldLock().reset();
}

} // namespace vk
