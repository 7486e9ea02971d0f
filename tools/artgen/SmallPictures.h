#pragma once

#include <QImage>

namespace vk::art {

// A die of 615 x 615 twips showing `value` pips (1..6).
QImage DrawDie(int value);

// A company of the army: one 120 x 120 twips token, as in the camp, reserve
// and prison displays.
QImage DrawCompany(int side);

// A mine laid on a road square, in the orientation of army 1. `mineSide` is
// the MineSide of the square: 2 a horizontal road (750 x 330, "u"), 1 and 3 a
// vertical road (330 x 750, "l" and "r": the warning sign on the left or on
// the right of the road). A turned view turns the picture half a circle.
QImage DrawLaidMine(int side, int mineSide, bool turnedView);
// A mine in a camp store, 205 x 330 twips.
QImage DrawStoredMine(int side);

// The back of a compass card, 375 x 495 twips (the miniatures KK1..KK3).
QImage DrawCardBack();

// Twips to whole pixels, as the pictures are drawn at 15 twips a pixel.
int TwipsToPixels(int twips);

}  // namespace vk::art
