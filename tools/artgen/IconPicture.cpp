#include "IconPicture.h"

#include <QDir>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>

#include <cmath>

namespace vk::art {
namespace {

// The icon is drawn on a grid of 256 x 256 units and scaled to its size.
constexpr double kGrid = 256.0;

// A line of hills across the icon, as the splash draws its ridges.
QPainterPath Ridge(double baseY, double amplitude, double seed) {
  QPainterPath path;
  path.moveTo(0, kGrid);
  for (int x = 0; x <= kGrid; x += 4) {
    const double t = x / kGrid;
    const double y = baseY - amplitude * (0.5 + 0.3 * std::sin(t * 7 + seed) + 0.2 * std::sin(t * 17 + seed * 2));
    path.lineTo(x, y);
  }
  path.lineTo(kGrid, kGrid);
  path.closeSubpath();
  return path;
}

// The splash's horn-shaped peak, drawn in the splash's pixels and moved onto
// the icon's grid with its base at 24..184 and y 206; its foot reaches on
// below the near hills.
QPainterPath Horn() {
  QPainterPath horn;
  horn.moveTo(250, 360);
  horn.lineTo(250, 300);
  horn.cubicTo(300, 240, 330, 150, 352, 92);
  horn.cubicTo(356, 82, 362, 82, 364, 94);
  horn.cubicTo(372, 160, 420, 250, 500, 300);
  horn.lineTo(500, 360);
  horn.closeSubpath();
  QTransform onGrid;
  onGrid.translate(24, 206);
  onGrid.scale(0.64, 0.64);
  onGrid.translate(-250, -300);
  return onGrid.map(horn);
}

// The splash's falcon with its wings spread, centred on c, 120 s wide.
QPainterPath Falcon(QPointF c, double s) {
  QPainterPath bird;
  bird.moveTo(c + QPointF(-60, -8) * s);
  bird.cubicTo(c + QPointF(-35, -22) * s, c + QPointF(-15, -14) * s, c + QPointF(-4, -2) * s);
  bird.lineTo(c + QPointF(0, -6) * s);
  bird.lineTo(c + QPointF(4, -2) * s);
  bird.cubicTo(c + QPointF(15, -14) * s, c + QPointF(35, -22) * s, c + QPointF(60, -8) * s);
  bird.cubicTo(c + QPointF(35, -10) * s, c + QPointF(15, 0) * s, c + QPointF(5, 6) * s);
  bird.lineTo(c + QPointF(7, 16) * s);
  bird.lineTo(c + QPointF(-7, 16) * s);
  bird.lineTo(c + QPointF(-5, 6) * s);
  bird.cubicTo(c + QPointF(-15, 0) * s, c + QPointF(-35, -10) * s, c + QPointF(-60, -8) * s);
  return bird;
}

QPainterPath RoundedSquare(double margin, double radius) {
  QPainterPath square;
  square.addRoundedRect(QRectF(margin, margin, kGrid - 2 * margin, kGrid - 2 * margin), radius, radius);
  return square;
}

}  // namespace

QImage DrawIcon(int size) {
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing, true);
  p.scale(size / kGrid, size / kGrid);

  // The golden rim of the splash's title, with its dark edge.
  const QPainterPath outer = RoundedSquare(8, 46);
  QLinearGradient gold(0, 8, 0, 248);
  gold.setColorAt(0.0, QColor(255, 236, 160));
  gold.setColorAt(1.0, QColor(210, 150, 50));
  p.setPen(QPen(QColor(30, 20, 20, 220), 5));
  p.setBrush(gold);
  p.drawPath(outer);

  // The dawn inside the rim.
  const QPainterPath inner = RoundedSquare(20, 36);
  p.setClipPath(inner);
  QLinearGradient sky(0, 20, 0, 236);
  sky.setColorAt(0.0, QColor(32, 44, 92));
  sky.setColorAt(0.45, QColor(196, 110, 80));
  sky.setColorAt(0.7, QColor(246, 196, 120));
  p.fillRect(QRectF(0, 0, kGrid, kGrid), sky);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(255, 230, 170));
  p.drawEllipse(QPointF(194, 158), 26, 26);

  // Far hills, the horn-shaped peak, near hills: the splash's colours.
  p.setBrush(QColor(120, 80, 90));
  p.drawPath(Ridge(196, 40, 1.0));
  p.setBrush(QColor(86, 58, 72));
  p.drawPath(Horn());
  p.setBrush(QColor(58, 70, 52));
  p.drawPath(Ridge(222, 30, 4.0));
  p.setBrush(QColor(40, 50, 36));
  p.drawPath(Ridge(240, 18, 7.0));

  // The falcon over the peak.
  p.setBrush(QColor(30, 24, 30));
  p.drawPath(Falcon(QPointF(168, 82), 0.92));

  // The inner edge of the rim.
  p.setClipping(false);
  p.setBrush(Qt::NoBrush);
  p.setPen(QPen(QColor(30, 20, 20, 160), 3));
  p.drawPath(inner);
  return image;
}

QStringList WriteIcons(const QString& folder) {
  QStringList written;
  for (const int size : kIconSizes) {
    const QString dir = QStringLiteral("%1/hicolor/%2x%2/apps").arg(folder).arg(size);
    const QString path = dir + QLatin1Char('/') + QLatin1String(kIconName) + QStringLiteral(".png");
    if (!QDir().mkpath(dir) || !DrawIcon(size).save(path, "PNG")) return {};
    written << path;
  }
  return written;
}

}  // namespace vk::art
