#include "SmallPictures.h"

#include "ArtPalette.h"
#include "VehiclePicture.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace vk::art {

int TwipsToPixels(int twips) { return (twips + kTwipsPerPixel / 2) / kTwipsPerPixel; }

QImage DrawDie(int value) {
  const int size = TwipsToPixels(615);
  QImage image(size, size, QImage::Format_ARGB32);
  image.fill(QColor(0, 0, 0, 0));
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing, true);
  QRadialGradient face(size * 0.35, size * 0.3, size * 0.9);
  face.setColorAt(0.0, QColor(255, 255, 252));
  face.setColorAt(1.0, QColor(214, 210, 198));
  p.setPen(QPen(QColor(60, 58, 54), 1.4));
  p.setBrush(face);
  p.drawRoundedRect(QRectF(1, 1, size - 2, size - 2), 7, 7);
  const double c = size / 2.0;
  const double d = size * 0.26;
  const QPointF pips[7] = {{c, c}, {c - d, c - d}, {c + d, c + d}, {c + d, c - d},
                           {c - d, c + d}, {c - d, c}, {c + d, c}};
  static const int used[7][7] = {{}, {0}, {1, 2}, {0, 1, 2}, {1, 2, 3, 4}, {0, 1, 2, 3, 4}, {1, 2, 3, 4, 5, 6}};
  static const int count[7] = {0, 1, 2, 3, 4, 5, 6};
  p.setPen(Qt::NoPen);
  for (int i = 0; i < count[value]; ++i) {
    const QPointF at = pips[used[value][i]];
    p.setBrush(value == 1 ? FlagRed() : Ink());
    p.drawEllipse(at, value == 1 ? 5.0 : 3.8, value == 1 ? 5.0 : 3.8);
    p.setBrush(QColor(255, 255, 255, 90));
    p.drawEllipse(at + QPointF(-1, -1), 1.1, 1.1);
  }
  p.end();
  // A GIF knows no half transparency; the rounded corners are either clear or solid.
  for (int y = 0; y < size; ++y)
    for (int x = 0; x < size; ++x) {
      QColor px = image.pixelColor(x, y);
      if (px.alpha() < 128) image.setPixelColor(x, y, QColor(0, 0, 0, 0));
      else { px.setAlpha(255); image.setPixelColor(x, y, px); }
    }
  return image;
}

QImage DrawCompany(int side) {
  const int size = TwipsToPixels(120);
  QImage image(size, size, QImage::Format_RGB32);
  image.fill(ArmyDark(side));
  QPainter p(&image);
  p.setPen(Qt::NoPen);
  p.setBrush(ArmyColour(side).lighter(115));
  p.drawRect(1, 1, size - 2, size - 2);
  // A helmet: a light dome over a dark brim.
  p.setBrush(ArmyLight(side));
  p.drawRect(2, 2, size - 4, 3);
  p.drawRect(3, 1, size - 6, 1);
  p.setBrush(ArmyDark(side));
  p.drawRect(1, 5, size - 2, 1);
  return image;
}

QImage DrawLaidMine(int side, int mineSide, bool turnedView) {
  const bool vertical = mineSide != 2;
  const int w = vertical ? TwipsToPixels(330) : TwipsToPixels(750);
  const int h = vertical ? TwipsToPixels(750) : TwipsToPixels(330);
  QImage image(w, h, QImage::Format_RGB32);
  image.fill(RoadTile());
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing, true);
  // Hazard stripes at both ends of the square.
  const QColor hazard = FlagYellow();
  p.setPen(Qt::NoPen);
  for (int end = 0; end < 2; ++end) {
    QRectF band = vertical ? QRectF(0, end == 0 ? 0 : h - 5, w, 5) : QRectF(end == 0 ? 0 : w - 5, 0, 5, h);
    p.setBrush(hazard);
    p.drawRect(band);
    p.setBrush(Ink());
    p.save();
    p.setClipRect(band);
    for (int k = -60; k < 60; k += 6) {
      QPolygonF stripe;
      stripe << QPointF(k, 0) << QPointF(k + 3, 0) << QPointF(k + 3 + 60, 60) << QPointF(k + 60, 60);
      p.drawPolygon(stripe);
    }
    p.restore();
  }
  PaintMineIcon(p, QPointF(w / 2.0, h / 2.0), vertical ? 5.5 : 5.5, side, false);
  // MineSide 1 and 3: a small warning sign at the left or the right of the road.
  if (vertical) {
    const double x = mineSide == 1 ? 5.5 : w - 5.5;
    QPolygonF sign;
    sign << QPointF(x, 8) << QPointF(x - 4.5, 16) << QPointF(x + 4.5, 16);
    p.setPen(QPen(FlagRed(), 1.2));
    p.setBrush(Paper());
    p.drawPolygon(sign);
    p.setPen(QPen(Ink(), 1.2));
    p.drawLine(QPointF(x, 10.5), QPointF(x, 13.5));
  }
  p.end();
  if (turnedView) image = image.transformed(QTransform().rotate(180));
  return image;
}

QImage DrawStoredMine(int side) {
  const int w = TwipsToPixels(205);
  const int h = TwipsToPixels(330);
  QImage image(w, h, QImage::Format_RGB32);
  image.fill(ArmyTint(side).darker(108));
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing, true);
  p.setPen(QPen(ArmyDark(side), 1));
  p.setBrush(Qt::NoBrush);
  p.drawRect(QRectF(0.5, 0.5, w - 1, h - 1));
  // A mine seen from the side, standing in its rack: a dome over a flat base.
  p.setPen(Qt::NoPen);
  p.setBrush(MineBody());
  p.drawRect(QRectF(2, 13, w - 4, 4));
  p.drawChord(QRectF(2.5, 6, w - 5, 14), 0, 180 * 16);
  p.setBrush(ArmyLight(side));
  p.drawEllipse(QPointF(w / 2.0, 10.5), 1.8, 1.8);
  p.setPen(QPen(MineBody(), 1.2));
  p.drawLine(QPointF(w / 2.0, 6), QPointF(w / 2.0, 3));
  return image;
}

QImage DrawCardBack() {
  const int w = TwipsToPixels(375);
  const int h = TwipsToPixels(495);
  QImage image(w, h, QImage::Format_RGB32);
  image.fill(QColor(28, 40, 84));
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing, true);
  p.setPen(QPen(QColor(214, 180, 80), 1.2));
  p.setBrush(Qt::NoBrush);
  p.drawRoundedRect(QRectF(1.5, 1.5, w - 3, h - 3), 2, 2);
  // A compass rose: four long and four short points.
  const QPointF c(w / 2.0, h / 2.0);
  for (int i = 0; i < 8; ++i) {
    const double a = i * M_PI / 4 - M_PI / 2;
    const double r = i % 2 == 0 ? 10.5 : 6.0;
    const QPointF tip = c + QPointF(std::cos(a), std::sin(a)) * r;
    const QPointF left = c + QPointF(std::cos(a - M_PI / 2), std::sin(a - M_PI / 2)) * 2.2;
    const QPointF right = c + QPointF(std::cos(a + M_PI / 2), std::sin(a + M_PI / 2)) * 2.2;
    QPolygonF half1, half2;
    half1 << c << left << tip;
    half2 << c << right << tip;
    p.setPen(Qt::NoPen);
    p.setBrush(i == 0 ? FlagRed() : QColor(236, 214, 140));
    p.drawPolygon(half1);
    p.setBrush(i == 0 ? FlagRed().darker(140) : QColor(170, 140, 70));
    p.drawPolygon(half2);
  }
  p.setBrush(QColor(236, 214, 140));
  p.drawEllipse(c, 1.6, 1.6);
  return image;
}

}  // namespace vk::art
