#pragma once

// The program's one clock. Every deliberate wait goes through WaitMs and every
// reading of time through GetTickCount. VALKENHORN_TIME_SCALE (default 1)
// shortens or stretches the waits and timer intervals, for tests only.

#include <cstdint>
#include <functional>

namespace vk {

// Milliseconds since an arbitrary start, as a signed 32-bit counter that wraps.
std::int32_t GetTickCount();

// Replaces the tick source (tests use it to cross the wrap); nullptr restores it.
void SetTickSource(std::function<std::int32_t()> source);

// The time scale read from VALKENHORN_TIME_SCALE once at start.
double TimeScale();

// A deliberate duration of the design after the time scale, at least 1 ms for
// a positive duration.
int ScaledMs(int ms);

// Runs pending timers and events once, without waiting.
void PumpInterface();

// Sleeps in the event queue until an event comes or at most maxMs passes.
void PumpInterfaceWaiting(int maxMs);

// Waits the given (design) milliseconds while timers and events run. The wait
// ends when the counter reaches the target, or reads lower than at the start:
// across the wrap of the counter it is cut short and never hangs.
void WaitMs(int ms);

} // namespace vk
