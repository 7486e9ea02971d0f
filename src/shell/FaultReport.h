#pragma once

#include <QString>

namespace vk {

// Ends the program after a run-time fault: writes "run-time fault: " and what
// happened to the run log (when it is open), shows a Dutch error box and ends
// the process with a non-zero exit code. Never returns.
[[noreturn]] void ReportFaultAndExit(const QString& what);

// Ends the process at once with the given code, after the run log and the
// single-instance lock are released.
[[noreturn]] void EndProcess(int exitCode);

constexpr int FaultExitCode = 3;

} // namespace vk
