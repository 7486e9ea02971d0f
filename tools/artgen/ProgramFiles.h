#pragma once

#include <QString>
#include <QStringList>

namespace vk::art {

// The folders of the two views beside the program.
inline const char* const kGreenFolder = "groen_leger";
inline const char* const kBrownFolder = "bruin_leger";

// Draws every picture, synthesises the sounds and copies the help pages from
// `helpSources` into `programFolder`. Returns the files written, relative to
// the program folder; an empty list and a message on stderr on a failure.
QStringList WriteProgramFiles(const QString& programFolder, const QString& helpSources);

}  // namespace vk::art
