#pragma once

#include "board/BoardState.h"

#include <QImage>

namespace vk::art {

// The splash shown in Speelveld at start-up, at 15 twips a pixel
// (11630 x 5720 twips: 775 x 381 pixels).
constexpr int kSplashWidthPx = vk::kSplashWidth / 15;
constexpr int kSplashHeightPx = vk::kSplashHeight / 15;

// A falcon over the horn-shaped peak at dawn, the name of the game, and the
// two armies' colours.
QImage DrawSplash();

}  // namespace vk::art
