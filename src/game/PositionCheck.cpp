#include "game/PositionCheck.h"

#include "game/PositionDigest.h"
#include "game/SavedGame.h"
#include "link/SharedFolderFiles.h"
#include "shell/Clock.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "shell/RunTimeFault.h"
#include "ui/BoardDisplay.h"
#include "ui/Hoofdvenster.h"
#include "ui/MessageBoard.h"

#include <cstdint>

namespace vk {

namespace {

int& WarningCount()
{
    static int count = 0;
    return count;
}

// A difference found at the end of the opponent's turn, not yet shown.
bool& WarningPending()
{
    static bool pending = false;
    return pending;
}

// The warning runs as long as the deal's messages do, unless the player
// clicks it away first; the game then goes on. It never waits for an answer:
// the copies can't be put back in step from here.
constexpr int kWarningMs = 9000;

void HoldWarning(const Hoofdvenster& w)
{
    const auto start = static_cast<std::uint32_t>(GetTickCount());
    const auto hold = static_cast<std::uint32_t>(ScaledMs(kWarningMs));
    PumpUntil(
        [&w, start, hold] {
            const auto elapsed = static_cast<std::uint32_t>(GetTickCount()) - start;
            return Global().BoardText.isEmpty() || !w.V.GameRunning || elapsed >= hold;
        },
        QStringLiteral("desync warning"));
}

} // namespace

std::string OwnPositionDigest(const Hoofdvenster& w)
{
    try {
        return PositionDigest(w.V.Board, w.V.Progress);
    } catch (const SavedGameError&) {
        return {};
    }
}

void CheckOpponentsPosition(Hoofdvenster& w, const EndOfTurnMessage& message)
{
    if (!message.Digest)
        return;
    // Both copies take the digest at the same point of the game: the sender
    // after its whole turn (the compass cards drawn at its end, its own fuel
    // and tse-tse counts stepped down by EndTurn), the reader here, after the
    // replay of every message of that turn. TurnNumber is the same on both:
    // each copy steps it at the start of a turn, its own or the opponent's.
    // What the game lets the copies keep apart on purpose differs all the
    // same: the fuel and tse-tse counts (only the drawer's copy keeps them),
    // a tag's heading letter that one copy turns and the other doesn't, and
    // what some Personnel cards leave behind.
    const std::string own = OwnPositionDigest(w);
    if (own.empty() || own == *message.Digest)
        return;
    WarningCount() += 1;
    LogAt(QStringLiteral("position differs from opponent's at "));
    LogLine(QStringLiteral("opponent's digest ") + QString::fromStdString(*message.Digest) +
            QStringLiteral(", own digest ") + QString::fromStdString(own));
    // Shown once this copy has stepped to the next turn, as the opponent's
    // copy already has: the two stand at the same turn while the player reads it.
    WarningPending() = true;
}

void ShowDesyncWarning(Hoofdvenster& w)
{
    if (!WarningPending())
        return;
    WarningPending() = false;
    ShowOnBoard(QStringLiteral("let op: uw spel en dat van uw tegenstander lopen uiteen."));
    HoldWarning(w);
}

void ForgetDesyncWarning()
{
    WarningPending() = false;
}

int DesyncWarnings()
{
    return WarningCount();
}

QString ChangePositionForTest(Hoofdvenster& w, const QString& section, const QString& key, const QString& value)
{
    WindowValues& v = w.V;
    if (!v.GameRunning)
        return QStringLiteral("no game is running");
    std::string why;
    try {
        why = ChangePositionValue(v.Board, v.Progress, section.toStdString(), key.toStdString(), value.toStdString());
    } catch (const RunTimeFault& fault) {
        why = fault.what();
    }
    if (!why.empty())
        return QString::fromStdString(why);
    LogAt(QStringLiteral("test request changed ") + section + QStringLiteral("/") + key + QStringLiteral(" to ") +
          value + QStringLiteral(" at "));
    ShowBoardAndCounts(w);
    return {};
}

} // namespace vk
