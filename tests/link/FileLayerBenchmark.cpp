// What one look at a shared folder costs: FileExists on a message that is
// there and on one that is not, one key read and one key write of a small
// message file. Prints figures; not a test.

#include "link/SharedFolderFiles.h"
#include "shell/Global.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

struct Folder {
    Folder()
    {
        path = dir.path() + QStringLiteral("/bert.xid");
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write("[GENERAL]\r\nUSER_ID=0A1B2C3D4E5F\r\n");
    }
    QTemporaryDir dir;
    QString path;
};

void FileExistsOnAMessage(benchmark::State& state)
{
    Folder folder;
    for (auto _ : state)
        benchmark::DoNotOptimize(vk::FileExists(folder.path));
}
BENCHMARK(FileExistsOnAMessage);

void FileExistsOnNothing(benchmark::State& state)
{
    Folder folder;
    const QString missing = folder.dir.path() + QStringLiteral("/bert.act");
    for (auto _ : state)
        benchmark::DoNotOptimize(vk::FileExists(missing));
}
BENCHMARK(FileExistsOnNothing);

void ReadOneKey(benchmark::State& state)
{
    Folder folder;
    const QString section = QStringLiteral("GENERAL");
    const QString key = QStringLiteral("USER_ID");
    const QString fallback = QStringLiteral("-1");
    for (auto _ : state)
        benchmark::DoNotOptimize(vk::ReadMessageKey(folder.path, section, key, fallback));
}
BENCHMARK(ReadOneKey);

void WriteOneKey(benchmark::State& state)
{
    Folder folder;
    const QString section = QStringLiteral("GENERAL");
    const QString key = QStringLiteral("USER_ID");
    const QString value = QStringLiteral("0A1B2C3D4E5F");
    for (auto _ : state)
        vk::WriteMessageKey(folder.path, section, key, value);
}
BENCHMARK(WriteOneKey);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
