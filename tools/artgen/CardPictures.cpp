#include "CardPictures.h"

#include "ArtPalette.h"
#include "CardTexts.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace vk::art {
namespace {

QFont CardFont(int pixelSize, bool bold) {
  QFont font("DejaVu Sans Condensed");
  font.setPixelSize(pixelSize);
  font.setBold(bold);
  font.setHintingPreference(QFont::PreferFullHinting);
  return font;
}

void PaintRadioWaves(QPainter& p, QPointF at, const QColor& colour) {
  p.setPen(QPen(colour, 1.1));
  p.setBrush(Qt::NoBrush);
  p.drawLine(at + QPointF(0, -3), at + QPointF(0, 4));
  p.setBrush(colour);
  p.drawEllipse(at + QPointF(0, -3), 1.2, 1.2);
  p.setBrush(Qt::NoBrush);
  for (int r = 3; r <= 6; r += 3) {
    p.drawArc(QRectF(at.x() - r, at.y() - 3 - r, 2 * r, 2 * r), -45 * 16, 90 * 16);
    p.drawArc(QRectF(at.x() - r, at.y() - 3 - r, 2 * r, 2 * r), 135 * 16, 90 * 16);
  }
}

void PaintInsignia(QPainter& p, QPointF c, double r) {
  p.setPen(QPen(QColor(150, 120, 40), 1.0));
  p.setBrush(QColor(236, 214, 140));
  p.drawEllipse(c, r, r);
  QPainterPath star;
  for (int i = 0; i < 10; ++i) {
    const double rr = i % 2 == 0 ? r * 0.78 : r * 0.32;
    const double a = -M_PI / 2 + i * M_PI / 5;
    const QPointF pt = c + QPointF(std::cos(a), std::sin(a)) * rr;
    if (i == 0) star.moveTo(pt); else star.lineTo(pt);
  }
  star.closeSubpath();
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(40, 56, 110));
  p.drawPath(star);
}

}  // namespace

int DrawFittedText(QPainter& p, const QRectF& box, const QString& text, bool bold, int largest, int smallest,
                   int flags) {
  int size = largest;
  for (; size > smallest; --size) {
    const QFontMetricsF metrics(CardFont(size, bold));
    const QRectF needed = metrics.boundingRect(box, flags | Qt::TextWordWrap, text);
    if (needed.height() <= box.height() && needed.width() <= box.width()) break;
  }
  p.setFont(CardFont(size, bold));
  p.drawText(box, flags | Qt::TextWordWrap, text);
  return size;
}

QImage DrawRadioYamboCard(int card) {
  const int w = kRadioYamboWidthPx;
  const int h = kRadioYamboHeightPx;
  QImage image(w, h, QImage::Format_RGB32);
  image.fill(Paper());
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing, true);
  p.setRenderHint(QPainter::TextAntialiasing, true);
  const CardWords words = RadioYamboWords(card);

  // Header: the station's name on a red band, with the card number.
  const QColor band(150, 28, 28);
  p.fillRect(QRectF(0, 0, w, 13), band);
  PaintRadioWaves(p, QPointF(8, 7), Qt::white);
  p.setPen(Qt::white);
  p.setFont(CardFont(9, true));
  p.drawText(QRectF(15, 0, w - 30, 13), Qt::AlignVCenter | Qt::AlignLeft, "RADIO YAMBO");
  p.setFont(CardFont(8, true));
  p.drawText(QRectF(w - 18, 0, 16, 13), Qt::AlignVCenter | Qt::AlignRight, QString::number(card));

  // The message as it is broadcast, then what it does.
  p.setPen(Ink());
  DrawFittedText(p, QRectF(3, 14, w - 6, 29), words.title, true, 10, 7, Qt::AlignHCenter | Qt::AlignVCenter);
  p.setPen(QPen(band, 1.0));
  p.drawLine(QPointF(10, 44.5), QPointF(w - 10, 44.5));
  p.setPen(QColor(50, 46, 40));
  DrawFittedText(p, QRectF(3, 46, w - 6, h - 48), words.text, false, 9, 7, Qt::AlignHCenter | Qt::AlignVCenter);

  p.setPen(QPen(band, 1.0));
  p.setBrush(Qt::NoBrush);
  p.drawRect(QRectF(0.5, 0.5, w - 1, h - 1));
  return image;
}

QImage DrawPersonnelCard(int card) {
  const int w = kPersonnelWidthPx;
  const int h = kPersonnelHeightPx;
  QImage image(w, h, QImage::Format_RGB32);
  image.fill(Paper());
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing, true);
  p.setRenderHint(QPainter::TextAntialiasing, true);
  const CardWords words = PersonnelWords(card);

  const QColor band(40, 56, 110);
  p.fillRect(QRectF(0, 0, w, 12), band);
  p.setPen(Qt::white);
  p.setFont(CardFont(8, true));
  p.drawText(QRectF(2, 0, w - 16, 12), Qt::AlignVCenter | Qt::AlignLeft, "PERSONNEL");
  p.drawText(QRectF(w - 16, 0, 14, 12), Qt::AlignVCenter | Qt::AlignRight, QString::number(card - 20));

  p.setPen(Ink());
  DrawFittedText(p, QRectF(2, 13, w - 4, 22), words.title, true, 9, 7, Qt::AlignHCenter | Qt::AlignVCenter);
  PaintInsignia(p, QPointF(w / 2.0, 45), 8.5);
  p.setPen(QPen(band, 1.0));
  p.drawLine(QPointF(6, 56.5), QPointF(w - 6, 56.5));
  p.setPen(QColor(50, 46, 40));
  DrawFittedText(p, QRectF(2, 58, w - 4, h - 60), words.text, false, 9, 7, Qt::AlignHCenter | Qt::AlignTop);

  p.setPen(QPen(band, 1.0));
  p.setBrush(Qt::NoBrush);
  p.drawRect(QRectF(0.5, 0.5, w - 1, h - 1));
  return image;
}

}  // namespace vk::art
