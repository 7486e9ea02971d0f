#pragma once

#include "board/BoardState.h"

#include <QImage>
#include <QRect>

namespace vk::art {

// The board fills Speelveld at 15 twips a pixel, rounded up to whole pixels
// (25300 x 13210 twips: 1687 x 881 pixels).
constexpr int kBoardWidthPx = (vk::kBoardWidth + 14) / 15;
constexpr int kBoardHeightPx = (vk::kBoardHeight + 14) / 15;

// The pixels a road square's picture rectangle covers (x, y, w, h in twips):
// every pixel that the rectangle touches.
QRect TwipRectToPixels(int x, int y, int w, int h);

// The board in the view of army 1, drawn from the board tables: sea, coast
// and land, the two armies' territories, roads square by square at their
// anchors with the joints between them, the strategic links, the camps, HQs
// and prison islands with their places, the mine stores and flag racks, the
// forward posts, the flag fields, airports and harbours, and Dutch labels
// that face the player whose half of the board they are in.
QImage DrawBoard();

// The board as the player of army 2 sees it: the same picture turned half a
// circle, pixel for pixel.
QImage TurnHalfCircle(const QImage& picture);

}  // namespace vk::art
