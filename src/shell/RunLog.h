#pragma once

// The run log: one plain English text file per run, DataFolder + "Valkenhorn.log",
// rewritten at each start and written through at every line, so that a crash
// loses nothing. The program never reads it.

#include <QString>

namespace vk {

// Deletes an existing log, opens a new one and writes the first line
// "Program Start at <time> on <date>". Raises RunTimeFault when the file cannot
// be opened.
void OpenRunLog(const QString& path);

// Appends text + the current time, for the lines that end in " at ".
void LogAt(const QString& text);

// Appends a line as it is (separators, detail lines).
void LogLine(const QString& line);

// Closes the log without a closing line.
void CloseRunLog();

bool RunLogOpen();

// The time of day and the date in the system locale's form.
QString LogTime();
QString LogDate();

} // namespace vk
