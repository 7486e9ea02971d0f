#include "shell/Clock.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <cmath>
#include <cstdlib>

namespace vk {

namespace {

std::function<std::int32_t()>& TickSource()
{
    static std::function<std::int32_t()> source;
    return source;
}

std::int32_t SystemTicks()
{
    static QElapsedTimer clock = [] { QElapsedTimer t; t.start(); return t; }();
    // Truncated to 32 bits like the counter of the system; it wraps after 49.7 days.
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(clock.elapsed() & 0xFFFFFFFFLL));
}

double ReadTimeScale()
{
    const char* text = std::getenv("VALKENHORN_TIME_SCALE");
    if (!text || !*text)
        return 1.0;
    char* end = nullptr;
    double value = std::strtod(text, &end);
    if (end == text || !std::isfinite(value) || value <= 0.0)
        return 1.0;
    return value;
}

} // namespace

std::int32_t GetTickCount()
{
    return TickSource() ? TickSource()() : SystemTicks();
}

void SetTickSource(std::function<std::int32_t()> source)
{
    TickSource() = std::move(source);
}

double TimeScale()
{
    static const double scale = ReadTimeScale();
    return scale;
}

int ScaledMs(int ms)
{
    if (ms <= 0)
        return ms;
    double scaled = std::round(ms * TimeScale());
    if (scaled < 1.0)
        return 1;
    if (scaled > 2147483647.0)
        return 2147483647;
    return static_cast<int>(scaled);
}

void PumpInterface()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void PumpInterfaceWaiting(int maxMs)
{
    // A single-shot timer bounds the sleep; any other event ends it earlier.
    QTimer wake;
    wake.setSingleShot(true);
    wake.start(maxMs < 0 ? 0 : maxMs);
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void WaitMs(int ms)
{
    const std::int32_t start = GetTickCount();
    const std::int64_t target = static_cast<std::int64_t>(start) + ScaledMs(ms);
    for (;;) {
        PumpInterface();
        const std::int32_t now = GetTickCount();
        if (now >= target || now < start)
            return;
        std::int64_t left = target - now;
        PumpInterfaceWaiting(static_cast<int>(left > 1000 ? 1000 : left));
    }
}

} // namespace vk
