#pragma once

// What the turn notice's tests share: the main window offscreen with a
// settings file of its own, the time TellPlayer takes, and the messages Qt
// writes meanwhile.

#include "shell/RunLog.h"
#include "shell/Settings.h"
#include "shell/TurnNotice.h"
#include "ui/Hoofdvenster.h"

#include <QElapsedTimer>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace vk::test {

// A notice never waits for the service's answer: it returns within this.
inline constexpr qint64 kPromptMs = 1000;

inline QStringList& CapturedMessages()
{
    static QStringList messages;
    return messages;
}

inline void Capture(QtMsgType, const QMessageLogContext&, const QString& text)
{
    CapturedMessages() << text;
}

// Collects Qt's messages while it lives.
class MessageCapture {
public:
    MessageCapture()
    {
        CapturedMessages().clear();
        old_ = qInstallMessageHandler(Capture);
    }
    ~MessageCapture() { qInstallMessageHandler(old_); }
    MessageCapture(const MessageCapture&) = delete;
    MessageCapture& operator=(const MessageCapture&) = delete;

private:
    QtMessageHandler old_;
};

// The captured messages that speak of the bus or of notifications.
inline QStringList BusMessages()
{
    QStringList found;
    for (const QString& text : CapturedMessages())
        if (text.contains(QStringLiteral("dbus"), Qt::CaseInsensitive) ||
            text.contains(QStringLiteral("d-bus"), Qt::CaseInsensitive) ||
            text.contains(QStringLiteral("notif"), Qt::CaseInsensitive))
            found << text;
    return found;
}

// The time TellPlayer takes.
inline qint64 MsToTell(Hoofdvenster& window, Notice notice)
{
    QElapsedTimer clock;
    clock.start();
    TellPlayer(window, notice);
    return clock.elapsed();
}

// The main window offscreen, never shown, with a settings file of its own.
class NoticeTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        oldConfig_ = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", (scratch_.path() + QStringLiteral("/config")).toLocal8Bit());
        OpenRunLog(scratch_.path() + QStringLiteral("/Valkenhorn.log"));
        window_ = std::make_unique<Hoofdvenster>();
    }
    void TearDown() override
    {
        window_.reset();
        CloseRunLog();
        qputenv("XDG_CONFIG_HOME", oldConfig_);
    }

    QTemporaryDir scratch_;
    QByteArray oldConfig_;
    std::unique_ptr<Hoofdvenster> window_;
};

} // namespace vk::test
