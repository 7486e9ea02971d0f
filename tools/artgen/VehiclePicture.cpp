#include "VehiclePicture.h"

#include "ArtPalette.h"
#include "board/VehicleTag.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>

#include <cmath>

namespace vk::art {
namespace {

constexpr double L = kVehicleLongPx;
constexpr double S = kVehicleShortPx;

// Logical frame: the chit lies along +x (heading o), 50 x 22.
QTransform FrameFor(int screenHeading) {
  switch (screenHeading) {
    case 0: return QTransform(0, -1, 1, 0, 0, L);       // nose up: x' = y, y' = L - x
    case 2: return QTransform(0, 1, -1, 0, S, 0);       // nose down: x' = S - y, y' = x
    case 3: return QTransform(-1, 0, 0, -1, L, S);      // nose left
    default: return QTransform();                        // nose right
  }
}

QPainterPath ChitOutline() {
  QPainterPath path;
  path.moveTo(0.5, 0.5);
  path.lineTo(40.5, 0.5);
  path.lineTo(49.5, S / 2);
  path.lineTo(40.5, S - 0.5);
  path.lineTo(0.5, S - 0.5);
  path.closeSubpath();
  return path;
}

// Silhouettes seen from above, nose along +x: light bodies with dark outlines
// and dark running gear, so the type stands out on the army's colour.
void PaintTank(QPainter& p, const QColor& ink, const QColor& light) {
  p.setPen(Qt::NoPen);
  p.setBrush(ink);
  p.drawRect(QRectF(16.5, 2.5, 24, 4.5));   // tracks
  p.drawRect(QRectF(16.5, 15, 24, 4.5));
  p.setPen(QPen(ink, 0.9));
  p.setBrush(light);
  p.drawRect(QRectF(17.5, 6, 22, 10));      // hull
  p.setPen(Qt::NoPen);
  p.setBrush(ink);
  p.drawRect(QRectF(30, 9.9, 18, 2.4));     // barrel
  p.setPen(QPen(ink, 1.0));
  p.setBrush(light.darker(115));
  p.drawEllipse(QPointF(27, 11), 5.0, 5.0); // turret
  p.setPen(Qt::NoPen);
  p.setBrush(ink);
  p.drawEllipse(QPointF(26, 11), 1.3, 1.3); // hatch
}

void PaintKanon(QPainter& p, const QColor& ink, const QColor& light) {
  p.setPen(QPen(ink, 2.0, Qt::SolidLine, Qt::RoundCap));
  p.drawLine(QPointF(31, 11), QPointF(17.5, 4));  // split trail
  p.drawLine(QPointF(31, 11), QPointF(17.5, 18));
  p.setPen(Qt::NoPen);
  p.setBrush(ink);
  p.drawRect(QRectF(25, 2, 6, 4.5));    // wheels
  p.drawRect(QRectF(25, 15.5, 6, 4.5));
  p.setPen(QPen(ink, 0.9));
  p.setBrush(light);
  p.drawRect(QRectF(30.5, 5, 3.5, 12)); // shield
  p.setPen(Qt::NoPen);
  p.setBrush(ink);
  p.drawRect(QRectF(34, 9.8, 13.5, 2.4)); // long barrel
  p.drawRect(QRectF(45.5, 8.8, 3, 4.4));  // muzzle brake
}

void PaintInfanterie(QPainter& p, const QColor& ink, const QColor& light) {
  p.setPen(QPen(ink, 0.9));
  p.setBrush(light);
  p.drawRoundedRect(QRectF(37.5, 4.5, 7.5, 13), 2, 2);  // cab
  p.setBrush(QColor(226, 214, 170));
  p.drawRect(QRectF(16.5, 3, 20, 16));                   // canvas over the cargo bed
  p.setPen(Qt::NoPen);
  p.setBrush(ink);
  p.drawRect(QRectF(42, 5.5, 1.8, 11));                  // windscreen
  // Helmets of the soldiers aboard.
  for (int row = 0; row < 2; ++row)
    for (int col = 0; col < 3; ++col) p.drawEllipse(QPointF(20.5 + 6 * col, 7.3 + 7.4 * row), 2.3, 2.3);
}

void PaintCommando(QPainter& p, const QColor& ink, const QColor&) {
  // The commando dagger, point forward.
  QPainterPath blade;
  blade.moveTo(27, 8);
  blade.lineTo(43, 9.5);
  blade.lineTo(48.5, 11);
  blade.lineTo(43, 12.5);
  blade.lineTo(27, 14);
  blade.closeSubpath();
  p.setPen(QPen(ink, 0.9));
  p.setBrush(QColor(236, 238, 242));
  p.drawPath(blade);
  p.setPen(Qt::NoPen);
  p.setBrush(ink);
  p.drawRect(QRectF(25, 3.5, 2.8, 15));                   // guard
  p.drawRoundedRect(QRectF(17, 8.3, 8.5, 5.4), 1.5, 1.5); // grip
  p.drawEllipse(QPointF(17, 11), 2.4, 2.4);               // pommel
}

void PaintGenie(QPainter& p, const QColor& ink, const QColor& light) {
  p.setPen(Qt::NoPen);
  p.setBrush(ink);
  p.drawRect(QRectF(17.5, 2.5, 19, 4));  // tracks
  p.drawRect(QRectF(17.5, 15.5, 19, 4));
  p.setPen(QPen(ink, 0.9));
  p.setBrush(light);
  p.drawRect(QRectF(18.5, 6, 17, 10));   // body
  p.setPen(Qt::NoPen);
  p.setBrush(ink);
  p.drawRect(QRectF(35, 9.5, 6, 3));     // arms of the roller
  p.drawRoundedRect(QRectF(41, 1.5, 5.5, 19), 2, 2);  // mine roller
  p.setPen(QPen(light, 1.0));
  for (double y = 4; y < 19; y += 3) p.drawLine(QPointF(41.5, y), QPointF(46, y));
  // The engineers' battlement on the body.
  p.setPen(Qt::NoPen);
  p.setBrush(ink);
  p.drawRect(QRectF(21.5, 11.5, 11, 2));
  p.drawRect(QRectF(21.5, 8, 2, 5));
  p.drawRect(QRectF(26, 8, 2, 5));
  p.drawRect(QRectF(30.5, 8, 2, 5));
}

void PaintJeep(QPainter& p, const QColor& ink, const QColor& light) {
  p.setPen(Qt::NoPen);
  p.setBrush(ink);
  p.drawRect(QRectF(21, 2, 5, 4));  // wheels
  p.drawRect(QRectF(21, 16, 5, 4));
  p.drawRect(QRectF(38, 2, 5, 4));
  p.drawRect(QRectF(38, 16, 5, 4));
  p.setPen(QPen(ink, 0.9));
  p.setBrush(light);
  p.drawRoundedRect(QRectF(18, 5, 28, 12), 2.5, 2.5);  // body
  p.setPen(Qt::NoPen);
  p.setBrush(ink);
  p.drawRect(QRectF(32.5, 5.5, 1.8, 11));  // windscreen
  // A star on the bonnet.
  QPainterPath star;
  for (int i = 0; i < 10; ++i) {
    const double r = i % 2 == 0 ? 3.8 : 1.6;
    const double a = -M_PI / 2 + i * M_PI / 5;
    const QPointF pt(40 + r * std::sin(a + M_PI / 2), 11 + r * std::cos(a + M_PI / 2));
    if (i == 0) star.moveTo(pt); else star.lineTo(pt);
  }
  star.closeSubpath();
  p.drawPath(star);
}

}  // namespace

int ScreenHeading(int heading, bool turnedView) { return turnedView ? (heading + 2) % 4 : heading; }

void PaintFlagIcon(QPainter& p, QPointF centre, double height) {
  const double h = height;
  const QPointF top(centre.x() - h * 0.28, centre.y() - h / 2);
  p.setPen(QPen(Ink(), std::max(1.0, h / 10)));
  p.drawLine(top, QPointF(top.x(), centre.y() + h / 2));
  QPainterPath cloth;
  cloth.moveTo(top.x() + 0.5, top.y());
  cloth.lineTo(top.x() + h * 0.62, top.y() + h * 0.12);
  cloth.lineTo(top.x() + h * 0.5, top.y() + h * 0.28);
  cloth.lineTo(top.x() + h * 0.62, top.y() + h * 0.46);
  cloth.lineTo(top.x() + 0.5, top.y() + h * 0.5);
  cloth.closeSubpath();
  p.setPen(QPen(FlagRed(), std::max(0.8, h / 14)));
  p.setBrush(FlagYellow());
  p.drawPath(cloth);
}

void PaintMineIcon(QPainter& p, QPointF centre, double radius, int ownerSide, bool captured) {
  p.setPen(QPen(MineBody(), std::max(1.0, radius / 3.5), Qt::SolidLine, Qt::RoundCap));
  for (int i = 0; i < 8; ++i) {
    const double a = i * M_PI / 4;
    p.drawLine(centre, centre + QPointF(std::cos(a), std::sin(a)) * radius * 1.35);
  }
  p.setPen(QPen(captured ? FlagRed() : QColor(235, 235, 225), std::max(0.8, radius / 4.5)));
  p.setBrush(MineBody());
  p.drawEllipse(centre, radius, radius);
  p.setPen(Qt::NoPen);
  p.setBrush(ArmyLight(ownerSide));
  p.drawEllipse(centre, radius * 0.45, radius * 0.45);
}

QImage DrawVehicle(const VehicleLook& look, bool turnedView) {
  const int screen = ScreenHeading(look.heading, turnedView);
  const bool vertical = screen == 0 || screen == 2;
  QImage image(vertical ? kVehicleShortPx : kVehicleLongPx, vertical ? kVehicleLongPx : kVehicleShortPx,
               QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing, true);
  const QTransform frame = FrameFor(screen);
  p.setTransform(frame);

  // The chit.
  QLinearGradient shade(0, 0, 0, S);
  shade.setColorAt(0.0, ArmyColour(look.side).lighter(118));
  shade.setColorAt(1.0, ArmyColour(look.side).darker(112));
  p.setPen(QPen(ArmyDark(look.side), 1.0));
  p.setBrush(shade);
  p.drawPath(ChitOutline());

  const QColor ink = Ink();
  const QColor light = ArmyLight(look.side);
  switch (look.slot) {
    case 0: PaintTank(p, ink, light); break;
    case 1: case 2: PaintKanon(p, ink, light); break;
    case 3: case 4: case 5: PaintInfanterie(p, ink, light); break;
    case 6: case 7: PaintCommando(p, ink, light); break;
    case 8: case 9: PaintGenie(p, ink, light); break;
    default: PaintJeep(p, ink, light); break;
  }

  // Badge with the companies aboard, at the tail; drawn upright.
  const QRectF badgeLogical(1.5, 3, 13.5, 16);
  const QRectF badge = frame.mapRect(badgeLogical);
  p.resetTransform();
  const bool negative = look.companies < 0;
  const bool jeep = look.slot == vk::kJeepSlot;
  p.setPen(QPen(ink, 1.0));
  p.setBrush(negative ? FlagRed() : (jeep ? QColor(255, 226, 120) : Paper()));
  p.drawRoundedRect(badge.adjusted(0.5, 0.5, -0.5, -0.5), 2.5, 2.5);
  QFont font("DejaVu Sans Condensed");
  font.setBold(true);
  font.setPixelSize(negative ? 11 : 14);
  p.setFont(font);
  p.setPen(negative ? QColor(Qt::white) : ink);
  p.drawText(badge.adjusted(0, 0, 0, 1), Qt::AlignCenter, QString::number(look.companies));

  // The mark, upright, on a plate over the middle of the chit: white behind a
  // flag, yellow behind an own mine, red behind the enemy's mine.
  if (look.mark > 0) {
    const QPointF centre = frame.map(QPointF(25, 11));
    const bool flag = vk::IsInfantrySlot(look.slot);
    const bool enemyMine = !flag && look.mark == 2;
    p.setPen(QPen(ink, 1.0));
    p.setBrush(flag ? QColor(Qt::white) : (enemyMine ? FlagRed() : FlagYellow()));
    p.drawEllipse(centre, 8.0, 8.0);
    if (flag) {
      PaintFlagIcon(p, centre + QPointF(0.5, 0), 15);
    } else {
      const int owner = enemyMine ? 3 - look.side : look.side;
      PaintMineIcon(p, centre, 3.6, owner, false);
    }
  }
  p.end();

  // Only whole pixels are transparent in a GIF: settle the anti-aliased rim.
  for (int y = 0; y < image.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      const QColor c = QColor::fromRgba(line[x]);
      if (c.alpha() < 110) {
        line[x] = qRgba(0, 0, 0, 0);
      } else if (c.alpha() < 255) {
        const QColor rim = ArmyDark(look.side);
        const double a = c.alphaF();
        line[x] = qRgb(static_cast<int>(c.red() * a + rim.red() * (1 - a)),
                       static_cast<int>(c.green() * a + rim.green() * (1 - a)),
                       static_cast<int>(c.blue() * a + rim.blue() * (1 - a)));
      }
    }
  }
  return image;
}

}  // namespace vk::art
