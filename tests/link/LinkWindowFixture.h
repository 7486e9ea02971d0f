#pragma once

// The main window in-process (offscreen, never shown) with the link's
// application-wide values set up by hand: the local player "anna" with her
// own LocalID, and one shared folder per external player in a temporary
// folder. Message boxes are answered by a timer as a user would.

#include "link/LinkControls.h"
#include "link/PollCycle.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "shell/ShellControls.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QDialog>
#include <QPointer>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>

namespace vk::test {

inline void EnsureApplication()
{
    static int argc = 1;
    static char name[] = "link_window_tests";
    static char* argv[] = {name, nullptr};
    if (!QApplication::instance())
        new QApplication(argc, argv);
}

class LinkWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        EnsureApplication();
        oldConfig = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", (scratch.path() + QStringLiteral("/config")).toLocal8Bit());
        OpenRunLog(scratch.path() + QStringLiteral("/Valkenhorn.log"));
        window = std::make_unique<Hoofdvenster>();
        ConnectShellControls(*window);
        ConnectLinkControls(*window);

        GlobalValues& g = Global();
        g.LocalID = QStringLiteral("0A0A0A0A0A0A");
        g.LocalUser = QStringLiteral("anna");
        g.OldLocalUser.clear();
        g.LinkBusy = false;
        g.ExtUsersCount = 0;
        g.Folder = QStringList{QString()};
        g.External_User = QStringList{QString()};
        g.Active = QVector<bool>{false};
        Polls() = PollCounters{};
        window->Combo_ExternUsers->clear();
        window->Combo_ExternUsers->addItem(QStringLiteral("Geen Speler"));
        window->Combo_ExternUsers->SetListIndex(0);
    }

    void TearDown() override
    {
        window.reset();
        CloseRunLog();
        qputenv("XDG_CONFIG_HOME", oldConfig);
        Global().ExtUsersCount = 0;
    }

    // Adds external player n with a folder of its own.
    QString AddPlayer(const QString& name, bool active = false)
    {
        GlobalValues& g = Global();
        const int n = g.ExtUsersCount + 1;
        const QString folder = scratch.path() + QStringLiteral("/gedeeld%1").arg(n);
        QDir().mkpath(folder);
        g.Folder << folder;
        g.External_User << name;
        g.Active << active;
        g.ExtUsersCount = n;
        window->Combo_ExternUsers->addItem(name);
        return folder;
    }

    static void Put(const QString& path, const QByteArray& text)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text);
    }
    static QByteArray Text(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QByteArray Presence(const char* id) { return QByteArray("[GENERAL]\r\nUSER_ID=") + id + "\r\n"; }

    // The log's lines without the time of day that ends most of them.
    QStringList LogLines() const
    {
        QStringList lines;
        for (const QString& line : QString::fromLatin1(Text(scratch.path() + QStringLiteral("/Valkenhorn.log")))
                                       .split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            QString text = line.trimmed();
            const int at = text.lastIndexOf(QStringLiteral(" at "));
            if (at >= 0)
                text = text.left(at + 4);
            lines << text;
        }
        return lines;
    }
    bool Logged(const QString& line) const { return LogLines().contains(line); }

    // Presses `button` in every message box that opens, and records the boxes.
    // The press comes a moment later than the answer; a box still open at the
    // next tick of a slow run is the same box and is not recorded again.
    void AnswerBoxesWith(const QString& button)
    {
        answerer = std::make_unique<QTimer>();
        answerer->setInterval(5);
        QObject::connect(answerer.get(), &QTimer::timeout, [this, button] {
            if (const OpenDialog* open = CurrentDialog(); open && open->kind == QLatin1String("message")) {
                if (answered && answered.data() == open->dialog)
                    return;
                answered = open->dialog;
                boxes << open->title + QLatin1Char('|') + open->text;
                AnswerDialog(button);
            }
        });
        answerer->start();
    }

    // Runs the presence poll with ActionCounter coming out at `counter`.
    void PresenceAt(int counter)
    {
        Polls().ActionCounter = (counter + 79) % 80;
        PresencePoll(*window);
        ASSERT_EQ(Polls().ActionCounter, counter);
    }

    QTemporaryDir scratch;
    QByteArray oldConfig;
    std::unique_ptr<Hoofdvenster> window;
    std::unique_ptr<QTimer> answerer;
    QPointer<QDialog> answered;
    QStringList boxes;
};

} // namespace vk::test
