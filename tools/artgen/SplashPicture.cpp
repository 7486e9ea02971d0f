#include "SplashPicture.h"

#include "ArtPalette.h"
#include "VehiclePicture.h"
#include "VehicleTags.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace vk::art {
namespace {

QPainterPath Ridge(double baseY, double amplitude, double seed, int width, int height) {
  QPainterPath path;
  path.moveTo(0, height);
  for (int x = 0; x <= width; x += 5) {
    const double t = x / static_cast<double>(width);
    const double y = baseY - amplitude * (0.5 + 0.3 * std::sin(t * 9 + seed) + 0.2 * std::sin(t * 23 + seed * 2));
    path.lineTo(x, y);
  }
  path.lineTo(width, height);
  path.closeSubpath();
  return path;
}

void PaintFalcon(QPainter& p, QPointF c, double s) {
  QPainterPath bird;
  bird.moveTo(c + QPointF(-60, -8) * s);
  bird.cubicTo(c + QPointF(-35, -22) * s, c + QPointF(-15, -14) * s, c + QPointF(-4, -2) * s);
  bird.lineTo(c + QPointF(0, -6) * s);   // head
  bird.lineTo(c + QPointF(4, -2) * s);
  bird.cubicTo(c + QPointF(15, -14) * s, c + QPointF(35, -22) * s, c + QPointF(60, -8) * s);
  bird.cubicTo(c + QPointF(35, -10) * s, c + QPointF(15, 0) * s, c + QPointF(5, 6) * s);
  bird.lineTo(c + QPointF(7, 16) * s);   // tail
  bird.lineTo(c + QPointF(-7, 16) * s);
  bird.lineTo(c + QPointF(-5, 6) * s);
  bird.cubicTo(c + QPointF(-15, 0) * s, c + QPointF(-35, -10) * s, c + QPointF(-60, -8) * s);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(30, 24, 30));
  p.drawPath(bird);
}

}  // namespace

QImage DrawSplash() {
  const int w = kSplashWidthPx;
  const int h = kSplashHeightPx;
  QImage image(w, h, QImage::Format_RGB32);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing, true);
  p.setRenderHint(QPainter::TextAntialiasing, true);

  QLinearGradient sky(0, 0, 0, h);
  sky.setColorAt(0.0, QColor(32, 44, 92));
  sky.setColorAt(0.45, QColor(196, 110, 80));
  sky.setColorAt(0.7, QColor(246, 196, 120));
  p.fillRect(image.rect(), sky);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(255, 230, 170));
  p.drawEllipse(QPointF(560, 250), 46, 46);

  // Far hills, the horn-shaped peak, near hills.
  p.setBrush(QColor(120, 80, 90));
  p.drawPath(Ridge(280, 70, 1.0, w, h));
  QPainterPath horn;
  horn.moveTo(250, 300);
  horn.cubicTo(300, 240, 330, 150, 352, 92);
  horn.cubicTo(356, 82, 362, 82, 364, 94);
  horn.cubicTo(372, 160, 420, 250, 500, 300);
  horn.closeSubpath();
  p.setBrush(QColor(86, 58, 72));
  p.drawPath(horn);
  p.setBrush(QColor(58, 70, 52));
  p.drawPath(Ridge(330, 50, 4.0, w, h));
  p.setBrush(QColor(40, 50, 36));
  p.drawPath(Ridge(360, 30, 7.0, w, h));
  PaintFalcon(p, QPointF(615, 175), 0.95);

  // The name of the game.
  QFont title("DejaVu Serif");
  title.setBold(true);
  title.setPixelSize(64);
  title.setLetterSpacing(QFont::AbsoluteSpacing, 4);
  QPainterPath text;
  text.addText(QPointF(0, 0), title, "VALKENHORN");
  const QRectF bounds = text.boundingRect();
  text.translate(w / 2.0 - bounds.center().x(), 72 - bounds.center().y());
  p.setPen(QPen(QColor(30, 20, 20, 200), 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.setBrush(Qt::NoBrush);
  p.drawPath(text);
  QLinearGradient gold(0, 40, 0, 100);
  gold.setColorAt(0.0, QColor(255, 236, 160));
  gold.setColorAt(1.0, QColor(210, 150, 50));
  p.setPen(Qt::NoPen);
  p.setBrush(gold);
  p.drawPath(text);

  QFont sub("DejaVu Sans");
  sub.setPixelSize(17);
  sub.setItalic(true);
  p.setFont(sub);
  p.setPen(QColor(255, 246, 220));
  p.drawText(QRectF(0, 112, w, 24), Qt::AlignCenter, "een strategisch spel voor twee spelers");

  // The two armies face each other at the foot of the mountain.
  const int stand = h - 34;
  for (int i = 0; i < 4; ++i) {
    VehicleLook green{i == 0 ? 0 : (i == 1 ? 1 : (i == 2 ? 3 : 8)), 1, 0, 0, 1, ""};
    green.companies = 5 - i > 3 ? 3 : 5 - i;
    p.drawImage(QPointF(24 + i * 58, stand), DrawVehicle(green, false));
    VehicleLook brown{green.slot, 2, green.companies, 0, 3, ""};
    p.drawImage(QPointF(w - 74 - i * 58, stand), DrawVehicle(brown, false));
  }
  QFont small("DejaVu Sans Condensed");
  small.setPixelSize(12);
  small.setBold(true);
  p.setFont(small);
  p.setPen(ArmyLight(1));
  p.drawText(QRectF(24, stand - 18, 220, 16), Qt::AlignLeft | Qt::AlignVCenter, "het groene leger");
  p.setPen(ArmyLight(2));
  p.drawText(QRectF(w - 244, stand - 18, 220, 16), Qt::AlignRight | Qt::AlignVCenter, "de bruine rebellen");
  return image;
}

}  // namespace vk::art
