#include "shell/RunLog.h"

#include "shell/RunTimeFault.h"

#include <QDate>
#include <QFile>
#include <QLocale>
#include <QRegularExpression>
#include <QTime>

#include <memory>

namespace vk {

namespace {

std::unique_ptr<QFile>& LogFile()
{
    static std::unique_ptr<QFile> file;
    return file;
}

void WriteThrough(const QString& line)
{
    auto& file = LogFile();
    if (!file)
        return;
    QByteArray bytes = line.toLocal8Bit();
    bytes.append('\n');
    file->write(bytes);
    file->flush();
}

} // namespace

QString LogTime()
{
    // The locale's long time form with hours, minutes and seconds, less the zone.
    QString format = QLocale::system().timeFormat(QLocale::LongFormat);
    format.remove(QRegularExpression(QStringLiteral("\\s*t+\\s*")));
    return QLocale::system().toString(QTime::currentTime(), format.trimmed());
}

QString LogDate()
{
    return QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat);
}

void OpenRunLog(const QString& path)
{
    if (QFile::exists(path))
        QFile::remove(path);
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
        throw RunTimeFault("cannot open the run log " + path.toStdString() + ": " + file->errorString().toStdString());
    LogFile() = std::move(file);
    WriteThrough(QStringLiteral("Program Start at ") + LogTime() + QStringLiteral(" on ") + LogDate());
}

void LogAt(const QString& text)
{
    WriteThrough(text + LogTime());
}

void LogLine(const QString& line)
{
    WriteThrough(line);
}

void CloseRunLog()
{
    auto& file = LogFile();
    if (file) {
        file->flush();
        file->close();
        file.reset();
    }
}

bool RunLogOpen()
{
    return LogFile() != nullptr;
}

} // namespace vk
