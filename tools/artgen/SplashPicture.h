#pragma once

#include <QImage>

namespace vk::art {

// The splash shown in Speelveld at start-up: 11630 x 5720 twips.
constexpr int kSplashWidthPx = 775;
constexpr int kSplashHeightPx = 381;

// A falcon over the horn-shaped peak at dawn, the name of the game, and the
// two armies' colours.
QImage DrawSplash();

}  // namespace vk::art
