#include "shell/RunLog.h"
#include "shell/RunTimeFault.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QStringList ReadLines(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    return QString::fromLocal8Bit(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

TEST(RunLog, NewRunLeavesNoLineOfThePreviousRun)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Valkenhorn.log"));
    {
        QFile old(path);
        ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        old.write("line of an earlier run\nanother\n");
    }
    vk::OpenRunLog(path);
    const QStringList lines = ReadLines(path);
    vk::CloseRunLog();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_FALSE(lines[0].contains(QStringLiteral("earlier")));
}

TEST(RunLog, FirstLineHasTimeAndDate)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Valkenhorn.log"));
    vk::OpenRunLog(path);
    const QStringList lines = ReadLines(path);
    vk::CloseRunLog();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines[0], QStringLiteral("Program Start at ") + vk::LogTime() + QStringLiteral(" on ") + vk::LogDate());
    EXPECT_TRUE(QRegularExpression(QStringLiteral("\\d{1,2}.\\d{2}.\\d{2}")).match(lines[0]).hasMatch());
}

TEST(RunLog, EveryLineIsInTheFileAtOnce)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Valkenhorn.log"));
    vk::OpenRunLog(path);
    vk::LogAt(QStringLiteral("Showing splash screen at "));
    vk::LogLine(QStringLiteral("player name with blanks: Jan de Vries"));
    // Read while the log is still open: nothing may wait in a buffer.
    const QStringList lines = ReadLines(path);
    vk::CloseRunLog();
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("Showing splash screen at ")));
    EXPECT_GT(lines[1].size(), QStringLiteral("Showing splash screen at ").size());
    EXPECT_EQ(lines[2], QStringLiteral("player name with blanks: Jan de Vries"));
}

TEST(RunLog, UnopenableLogIsARunTimeFault)
{
    QTemporaryDir dir;
    EXPECT_THROW(vk::OpenRunLog(dir.filePath(QStringLiteral("missing/folder/Valkenhorn.log"))), vk::RunTimeFault);
    EXPECT_FALSE(vk::RunLogOpen());
}

} // namespace
