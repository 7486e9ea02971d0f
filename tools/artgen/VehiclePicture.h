#pragma once

#include "VehicleTags.h"

#include <QImage>
#include <QPainter>
#include <QPointF>

namespace vk::art {

// Picture sizes in pixels: 750 x 330 twips along o and w, 330 x 750 along n and z.
constexpr int kVehicleLongPx = 50;
constexpr int kVehicleShortPx = 22;

// The heading as the player sees it: the folder of army 2 shows the board
// turned half a circle, so every heading is turned with it.
int ScreenHeading(int heading, bool turnedView);

// A vehicle counter: a chit in the army's colour, its nose pointing along the
// heading, the type as a silhouette seen from above, the companies aboard in a
// badge at the tail and the mark (flag, own mine, enemy mine) as an icon.
// Digits and icons stay upright in every heading and in the turned view.
QImage DrawVehicle(const VehicleLook& look, bool turnedView);

// The mark icons, shared with the board and the cards: a flag on its pole and
// a land mine whose heart shows the colour of the army that owns it.
void PaintFlagIcon(QPainter& p, QPointF centre, double height);
void PaintMineIcon(QPainter& p, QPointF centre, double radius, int ownerSide, bool captured);

}  // namespace vk::art
