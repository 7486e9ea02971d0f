#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

namespace vk::art {

// The icon's name in the icon theme, the same as the desktop entry's.
inline constexpr const char* kIconName = "nl.valkenhorn.Valkenhorn";

// The sizes of the icon in the hicolor theme, in pixels.
inline constexpr int kIconSizes[] = {48, 128, 256};

// The program's icon, size x size pixels with a transparent corner: the
// splash's look in a rounded square with a golden rim, the falcon over the
// horn-shaped peak at dawn.
QImage DrawIcon(int size);

// Writes <folder>/hicolor/<N>x<N>/apps/nl.valkenhorn.Valkenhorn.png for every
// size of kIconSizes; returns the files written, or nothing on a failure.
QStringList WriteIcons(const QString& folder);

}  // namespace vk::art
