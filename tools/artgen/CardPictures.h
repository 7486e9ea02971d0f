#pragma once

#include <QImage>
#include <QRectF>
#include <QString>

class QPainter;

namespace vk::art {

// Card sizes in pixels: the panels that show them, RadioYambo 1695 x 1215
// twips and Personnel 1095 x 1575 twips.
constexpr int kRadioYamboWidthPx = 113;
constexpr int kRadioYamboHeightPx = 81;
constexpr int kPersonnelWidthPx = 73;
constexpr int kPersonnelHeightPx = 105;

QImage DrawRadioYamboCard(int card);   // 1..20
QImage DrawPersonnelCard(int card);    // 21..32

// Writes `text` word-wrapped into `box` with the largest pixel size from
// `largest` down to `smallest` that fits; returns the size used.
int DrawFittedText(QPainter& p, const QRectF& box, const QString& text, bool bold, int largest, int smallest,
                   int flags);

}  // namespace vk::art
