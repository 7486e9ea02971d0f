// Prints how fast a message crosses one local shared folder between two
// processes: from the writer's last key to the reader's deletion of the file.
// The reader waits as the game's readers do: { pump; test } on the folder
// watcher for the file, then the kind's guard against a partial file, woken
// by the watcher while it waits for the commit key, with 50 ms as the
// fallback.
//
//   bench_link_latency [ROUNDS]
//
// Two kinds are measured: ".goo" (one key, no guard) shows the cost of the
// wait itself; ".act" (seven keys, the reader waits in steps of 50 ms for
// VEHTAG) shows what a move costs including the waits the reader must make.

#include "game/GameFiles.h"
#include "link/MessageKinds.h"
#include "link/SharedFolderFiles.h"
#include "shell/Clock.h"
#include "shell/Global.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

namespace {

long long MonotonicNs()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<long long>(now.tv_sec) * 1000000000LL + now.tv_nsec;
}

void Watch(const QString& folder)
{
    vk::Global().ExtUsersCount = 1;
    vk::Global().Folder = QStringList{QString(), folder};
    vk::WatchSharedFolders();
}

QStringList ValuesOf(vk::MessageKindId kind, int round)
{
    if (kind == vk::MessageKindId::GameStart)
        return {QStringLiteral("Start")};
    return {QStringLiteral("1"), QString::number(round % 11), QStringLiteral("1"), QStringLiteral("1"),
            QStringLiteral("113"), QString::number(1 + round % 112), QStringLiteral("tank_1_0_n")};
}

int Writer(const QString& folder, const QString& extension, vk::MessageKindId kind, int rounds)
{
    Watch(folder);
    const QString path = vk::MessagePath(folder, QStringLiteral("anna"), extension);
    for (int round = 0; round < rounds; ++round) {
        // Stop and wait: the next message goes only when the last is consumed.
        vk::PumpUntil([&] { return !vk::FileExists(path); });
        vk::WaitMs(20 + (round * 7) % 30);
        vk::SendMessage(path, kind, ValuesOf(kind, round));
        std::printf("written %lld\n", MonotonicNs());
        std::fflush(stdout);
    }
    vk::PumpUntil([&] { return !vk::FileExists(path); });
    return 0;
}

int Reader(const QString& folder, const QString& extension, vk::MessageKindId kind, int rounds)
{
    Watch(folder);
    const QString path = vk::MessagePath(folder, QStringLiteral("anna"), extension);
    for (int round = 0; round < rounds; ++round) {
        vk::PumpUntil([&] { return vk::FileExists(path); });
        int waits = 0;
        vk::ReadMessage(vk::KindOf(kind), QFile::encodeName(path).toStdString(), [&waits] {
            ++waits;
            vk::WaitForRestOfMessage();
        });
        vk::DeleteOnce(path);
        std::printf("deleted %lld %d\n", MonotonicNs(), waits);
        std::fflush(stdout);
    }
    return 0;
}

std::vector<long long> Numbers(const QByteArray& output, const char* word, int field)
{
    std::vector<long long> numbers;
    for (const QByteArray& line : output.split('\n')) {
        const QList<QByteArray> parts = line.split(' ');
        if (parts.size() > field && parts[0] == word)
            numbers.push_back(parts[field].toLongLong());
    }
    return numbers;
}

double Percentile(std::vector<double> values, double p)
{
    std::sort(values.begin(), values.end());
    const std::size_t index = static_cast<std::size_t>(p * static_cast<double>(values.size() - 1) + 0.5);
    return values[index];
}

void Measure(const QString& self, const char* extension, int rounds)
{
    QTemporaryDir folder;
    QProcess reader, writer;
    const QStringList common{folder.path(), QString::fromLatin1(extension), QString::number(rounds)};
    reader.start(self, QStringList{QStringLiteral("reader")} + common);
    reader.waitForStarted();
    writer.start(self, QStringList{QStringLiteral("writer")} + common);
    writer.waitForFinished(-1);
    reader.waitForFinished(-1);

    const QByteArray written = writer.readAllStandardOutput();
    const QByteArray deleted = reader.readAllStandardOutput();
    const std::vector<long long> t0 = Numbers(written, "written", 1);
    const std::vector<long long> t1 = Numbers(deleted, "deleted", 1);
    const std::vector<long long> waits = Numbers(deleted, "deleted", 2);
    const std::size_t n = std::min(t0.size(), t1.size());
    if (n == 0) {
        std::printf("%s: no rounds completed\n", extension);
        return;
    }
    std::vector<double> all, unwaited;
    long long waitCount = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const double ms = static_cast<double>(t1[i] - t0[i]) / 1e6;
        all.push_back(ms);
        waitCount += waits[i];
        if (waits[i] == 0)
            unwaited.push_back(ms);
    }
    std::printf("%-5s rounds %zu  last key -> deleted: median %.2f ms  p90 %.2f ms  p99 %.2f ms  max %.2f ms\n",
                extension, n, Percentile(all, 0.5), Percentile(all, 0.9), Percentile(all, 0.99),
                Percentile(all, 1.0));
    std::printf("      reads that waited for a key (woken by the watcher, 50 ms at most): %zu of %zu, %lld waits\n",
                n - unwaited.size(), n, waitCount);
    if (!unwaited.empty())
        std::printf("      without such a wait: median %.2f ms  p90 %.2f ms  max %.2f ms\n",
                    Percentile(unwaited, 0.5), Percentile(unwaited, 0.9), Percentile(unwaited, 1.0));
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() == 5 && (args[1] == QLatin1String("reader") || args[1] == QLatin1String("writer"))) {
        const QString extension = args[3];
        const vk::MessageKindId kind =
            extension == QLatin1String(".goo") ? vk::MessageKindId::GameStart : vk::MessageKindId::Action;
        const int rounds = args[4].toInt();
        return args[1] == QLatin1String("reader") ? Reader(args[2], extension, kind, rounds)
                                                  : Writer(args[2], extension, kind, rounds);
    }
    const int rounds = args.size() > 1 ? args[1].toInt() : 200;
    std::printf("two processes, one local folder, file-system watcher with a %d ms fallback poll\n",
                vk::FolderFallbackPollMs);
    Measure(QCoreApplication::applicationFilePath(), ".goo", rounds);
    Measure(QCoreApplication::applicationFilePath(), ".act", rounds);
    return 0;
}
