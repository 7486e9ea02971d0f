#include "CardPictures.h"

#include "ArtPalette.h"
#include "CardTexts.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QRegion>

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

// The emblem of a Personnel card in a gold medallion: one small picture per
// card, so that a hand of cards can be told apart at a glance.
void PaintEmblem(QPainter& p, QPointF c, double r, int card) {
  p.setPen(QPen(QColor(150, 120, 40), 1.0));
  p.setBrush(QColor(236, 214, 140));
  p.drawEllipse(c, r, r);
  const QColor ink(40, 56, 110);
  p.save();
  p.translate(c);
  p.setClipRegion(QRegion(QRect(static_cast<int>(-r), static_cast<int>(-r), static_cast<int>(2 * r), static_cast<int>(2 * r)),
                          QRegion::Ellipse));
  p.setPen(QPen(ink, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.setBrush(Qt::NoBrush);
  switch (card) {
    case 21: {  // camouflage: blotches
      const QColor blots[3] = {QColor(70, 110, 50), QColor(130, 90, 50), QColor(50, 70, 40)};
      p.setPen(Qt::NoPen);
      const QPointF at[6] = {{-3, -3}, {3, -1}, {-1, 3}, {4, 4}, {-5, 2}, {1, -5}};
      for (int i = 0; i < 6; ++i) {
        p.setBrush(blots[i % 3]);
        p.drawEllipse(at[i], 3.2, 2.4);
      }
      break;
    }
    case 22:  // exchange: two arrows
      p.drawLine(QPointF(-5, -2), QPointF(5, -2));
      p.drawLine(QPointF(5, -2), QPointF(2.5, -4.5));
      p.drawLine(QPointF(-5, 2.5), QPointF(5, 2.5));
      p.drawLine(QPointF(-5, 2.5), QPointF(-2.5, 5));
      break;
    case 23: {  // landing craft on the waves
      QPolygonF hull;
      hull << QPointF(-6, -1) << QPointF(6, -1) << QPointF(4, 3) << QPointF(-6, 3);
      p.setBrush(ink);
      p.drawPolygon(hull);
      p.setBrush(Qt::NoBrush);
      p.drawArc(QRectF(-7, 4, 5, 3), 0, 180 * 16);
      p.drawArc(QRectF(-2, 4, 5, 3), 0, 180 * 16);
      p.drawArc(QRectF(3, 4, 5, 3), 0, 180 * 16);
      break;
    }
    case 24:  // counter-espionage: an eye, struck out
      p.drawEllipse(QPointF(0, 0), 5.5, 3);
      p.setBrush(ink);
      p.drawEllipse(QPointF(0, 0), 1.6, 1.6);
      p.setPen(QPen(QColor(170, 30, 30), 1.5));
      p.drawLine(QPointF(-5, 5), QPointF(5, -5));
      break;
    case 25:  // ambush: cross hairs
      p.drawEllipse(QPointF(0, 0), 4.5, 4.5);
      p.drawLine(QPointF(-7, 0), QPointF(-2, 0));
      p.drawLine(QPointF(2, 0), QPointF(7, 0));
      p.drawLine(QPointF(0, -7), QPointF(0, -2));
      p.drawLine(QPointF(0, 2), QPointF(0, 7));
      break;
    case 26:  // helicopter from above
      p.setBrush(ink);
      p.drawEllipse(QPointF(0, 1), 2.6, 3.6);
      p.drawLine(QPointF(0, 4), QPointF(0, 7.5));
      p.drawLine(QPointF(-6, -5), QPointF(6, 5));
      p.drawLine(QPointF(-6, 5), QPointF(6, -5));
      break;
    case 27:  // paratrooper
      p.drawChord(QRectF(-6, -7, 12, 9), 0, 180 * 16);
      p.drawLine(QPointF(-6, -2.5), QPointF(0, 4));
      p.drawLine(QPointF(6, -2.5), QPointF(0, 4));
      p.setBrush(ink);
      p.drawEllipse(QPointF(0, 5), 1.5, 1.5);
      break;
    case 28: {  // military police
      QFont f("DejaVu Sans Condensed");
      f.setBold(true);
      f.setPixelSize(9);
      p.setFont(f);
      p.setPen(ink);
      p.drawText(QRectF(-8, -6, 16, 12), Qt::AlignCenter, "MP");
      break;
    }
    case 29: {  // safe conduct: a shield
      QPainterPath shield;
      shield.moveTo(0, -6);
      shield.lineTo(5, -4);
      shield.cubicTo(5, 1, 3, 4, 0, 6.5);
      shield.cubicTo(-3, 4, -5, 1, -5, -4);
      shield.closeSubpath();
      p.setBrush(QColor(250, 246, 232));
      p.drawPath(shield);
      p.drawLine(QPointF(0, -4), QPointF(0, 4));
      break;
    }
    case 30:  // mine clearance: a mine struck out
      p.setBrush(ink);
      p.drawEllipse(QPointF(0, 0), 3.2, 3.2);
      for (int i = 0; i < 4; ++i) {
        const double a = i * M_PI / 2;
        p.drawLine(QPointF(std::cos(a) * 3, std::sin(a) * 3), QPointF(std::cos(a) * 5, std::sin(a) * 5));
      }
      p.setPen(QPen(QColor(170, 30, 30), 1.5));
      p.drawLine(QPointF(-5, -5), QPointF(5, 5));
      break;
    case 31: {  // naval air service: a plane over the waves
      QPolygonF plane;
      plane << QPointF(-6, -2) << QPointF(6, -2) << QPointF(6, -1) << QPointF(1, -1) << QPointF(0, 3)
            << QPointF(-1, -1) << QPointF(-6, -1);
      p.setBrush(ink);
      p.drawPolygon(plane);
      p.setBrush(Qt::NoBrush);
      p.drawArc(QRectF(-6, 4, 4, 3), 0, 180 * 16);
      p.drawArc(QRectF(-2, 4, 4, 3), 0, 180 * 16);
      p.drawArc(QRectF(2, 4, 4, 3), 0, 180 * 16);
      break;
    }
    default: {  // signals: a lightning bolt
      QPolygonF bolt;
      bolt << QPointF(1, -7) << QPointF(-4, 1) << QPointF(0, 1) << QPointF(-1, 7) << QPointF(4, -1) << QPointF(0, -1);
      p.setBrush(ink);
      p.drawPolygon(bolt);
      break;
    }
  }
  p.restore();
}

// Long Dutch compounds get soft hyphens where they may break, so that a
// card's name fits the narrow Personnel card at a legible size.
QString WithBreaks(QString text) {
  static const char* const parts[] = {"Luchtlandings", "Mijnopruimings", "Verbindings", "Landings", "Uitwisseling",
                                      "luchtvaart", "brandstof", "mijnopruimings", "dienstplicht"};
  for (const char* part : parts) {
    const QString word = QString::fromUtf8(part);
    const int at = text.indexOf(word);
    if (at >= 0 && at + word.size() < text.size() && text[at + word.size()].isLetter())
      text.insert(at + word.size(), QChar(0x00AD));
  }
  return text;
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
  DrawFittedText(p, QRectF(3, 14, w - 6, 29), WithBreaks(words.title), true, 10, 7, Qt::AlignHCenter | Qt::AlignVCenter);
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
  DrawFittedText(p, QRectF(2, 13, w - 4, 22), WithBreaks(words.title), true, 9, 7, Qt::AlignHCenter | Qt::AlignVCenter);
  PaintEmblem(p, QPointF(w / 2.0, 45), 9.5, card);
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
