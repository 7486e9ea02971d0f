#include "BoardPicture.h"

#include "ArtPalette.h"
#include "VehiclePicture.h"
#include "board/BoardState.h"
#include "board/BoardTables.h"
#include "board/BoardView.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

namespace vk::art {
namespace {

constexpr int kBoardWidthTwips = vk::kBoardWidth;
constexpr int kBoardHeightTwips = vk::kBoardHeight;
constexpr int kHalfX = kBoardWidthTwips / 2;

// A small fixed random source: the board is the same at every build.
class Dice {
 public:
  explicit Dice(std::uint32_t seed) : state_(seed) {}
  double Unit() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    return static_cast<double>(state_ % 1000000u) / 1000000.0;
  }
  double Between(double lo, double hi) { return lo + (hi - lo) * Unit(); }

 private:
  std::uint32_t state_;
};

QRectF ToRectF(const TwipRect& r) { return QRectF(r.X1, r.Y1, r.X2 - r.X1, r.Y2 - r.Y1); }

// The picture rectangles (anchors) of a road square, in twips.
std::vector<QRectF> TilesOf(int field) {
  std::vector<QRectF> tiles;
  if (FieldAnchorX(field, 0) >= 0) tiles.emplace_back(FieldAnchorX(field, 0), FieldAnchorY(field, 0), 750, 330);
  if (FieldAnchorX(field, 1) >= 0) tiles.emplace_back(FieldAnchorX(field, 1), FieldAnchorY(field, 1), 330, 750);
  return tiles;
}

// The rectangles a road reaches a field by: the tiles of a road square, the
// whole area of a camp, HQ or island.
std::vector<QRectF> ShapesOf(int field) {
  if (IsRoadField(field)) return TilesOf(field);
  return {ToRectF(FieldHit(field))};
}

// The strip of road between two neighbouring rectangles: across the gap
// between them, as wide as their overlap.
std::optional<QRectF> Joint(const QRectF& a, const QRectF& b) {
  const double ox1 = std::max(a.left(), b.left()), ox2 = std::min(a.right(), b.right());
  const double oy1 = std::max(a.top(), b.top()), oy2 = std::min(a.bottom(), b.bottom());
  if (oy2 - oy1 >= 200) {  // side by side
    const double x1 = std::min(a.right(), b.right()), x2 = std::max(a.left(), b.left());
    if (x2 < x1 - 1) return std::nullopt;
    const double th = std::min(330.0, oy2 - oy1);
    return QRectF(x1 - 20, oy1, x2 - x1 + 40, th);
  }
  if (ox2 - ox1 >= 200) {  // one above the other
    const double y1 = std::min(a.bottom(), b.bottom()), y2 = std::max(a.top(), b.top());
    if (y2 < y1 - 1) return std::nullopt;
    const double tw = std::min(330.0, ox2 - ox1);
    return QRectF(ox1, y1 - 20, tw, y2 - y1 + 40);
  }
  return std::nullopt;
}

// The joint between two fields: the closest pair of their rectangles that
// lines up.
std::optional<QRectF> JointBetween(int a, int b) {
  std::optional<QRectF> best;
  double bestLength = 1e9;
  for (const QRectF& ra : ShapesOf(a))
    for (const QRectF& rb : ShapesOf(b)) {
      const auto j = Joint(ra, rb);
      if (!j) continue;
      const double length = std::min(j->width(), j->height());
      if (length < bestLength) {
        bestLength = length;
        best = j;
      }
    }
  return best;
}

struct RoadPair {
  int a, b;
};

std::vector<RoadPair> RoadPairs() {
  std::vector<RoadPair> pairs;
  for (int f = 1; f <= kLastField; ++f)
    for (int k = 0; k < 3; ++k) {
      const int g = FieldRoads(f, k);
      if (g < 1 || g > kLastField || FieldHeading(f, k) == kStrategicLinkHeading) continue;
      if (g < f && FieldRoads(g, 0) != f && FieldRoads(g, 1) != f && FieldRoads(g, 2) != f) {
        pairs.push_back({g, f});  // a one-way row still gets its road
      } else if (g > f) {
        pairs.push_back({f, g});
      }
    }
  return pairs;
}

// A closed outline around a rectangle whose edges wander a little, like a
// coast or a river bank.
QPainterPath WavyOutline(const QRectF& r, double amplitude, std::uint32_t seed, double roundness = 0.2) {
  Dice dice(seed);
  const double phase[4] = {dice.Between(0, 6.28), dice.Between(0, 6.28), dice.Between(0, 6.28),
                           dice.Between(0, 6.28)};
  const double cx = r.center().x(), cy = r.center().y();
  const double rx = r.width() / 2, ry = r.height() / 2;
  QPolygonF polygon;
  const int steps = 360;
  for (int i = 0; i < steps; ++i) {
    const double a = 2 * M_PI * i / steps;
    // A superellipse: nearly a rectangle with rounded corners.
    const double e = 2.0 / (roundness + 0.02);
    const double c = std::cos(a), s = std::sin(a);
    const double px = std::copysign(std::pow(std::abs(c), 2.0 / e), c);
    const double py = std::copysign(std::pow(std::abs(s), 2.0 / e), s);
    const double wobble = amplitude * (0.55 * std::sin(7 * a + phase[0]) + 0.3 * std::sin(13 * a + phase[1]) +
                                       0.15 * std::sin(29 * a + phase[2]) + 0.1 * std::sin(47 * a + phase[3]));
    polygon << QPointF(cx + px * rx + c * wobble, cy + py * ry + s * wobble);
  }
  QPainterPath path;
  path.addPolygon(polygon);
  path.closeSubpath();
  return path;
}

QPainterPath LandShape() {
  QPainterPath land = WavyOutline(QRectF(1450, 530, 23950 - 1450, 12350 - 530), 70, 11, 0.05);
  auto cut = [&](const QRectF& r, std::uint32_t seed) { land = land.subtracted(WavyOutline(r, 45, seed, 0.6)); };
  cut(QRectF(8330, -900, 10180 - 8330, 2170 + 900), 21);    // bay between fields 3 and 7
  cut(QRectF(13790, -900, 16060 - 13790, 1760 + 900), 22);  // bay between fields 12 and 16
  cut(QRectF(9160, 10900, 10580 - 9160, 3000), 23);          // bay between fields 54 and 57
  cut(QRectF(14240, 10060, 16900 - 14240, 3600), 24);        // bay between fields 62 and 68
  // The straits around the two prison islands.
  land = land.subtracted(WavyOutline(QRectF(-600, -600, 4420 + 600, 3560 + 600), 80, 25, 0.25));
  land = land.subtracted(WavyOutline(QRectF(20900, 9020, 6000, 6000), 80, 26, 0.25));
  land = land.united(WavyOutline(QRectF(1560, 930, 3740 - 1560, 3095 - 930), 35, 27, 0.35));
  land = land.united(WavyOutline(QRectF(21440, 9480, 23640 - 21440, 11690 - 9480), 35, 28, 0.35));
  return land.simplified();
}

void PaintSea(QPainter& p) {
  QLinearGradient sea(0, 0, 0, kBoardHeightTwips);
  sea.setColorAt(0.0, SeaDeep());
  sea.setColorAt(0.5, SeaDeep().lighter(112));
  sea.setColorAt(1.0, SeaDeep());
  p.fillRect(QRectF(0, 0, kBoardWidthTwips, kBoardHeightTwips), sea);
  // Ripples.
  Dice dice(5);
  p.setBrush(Qt::NoBrush);
  for (int i = 0; i < 900; ++i) {
    const QPointF at(dice.Between(0, kBoardWidthTwips), dice.Between(0, kBoardHeightTwips));
    const double w = dice.Between(90, 240);
    p.setPen(QPen(QColor(255, 255, 255, static_cast<int>(dice.Between(25, 60))), 18));
    p.drawArc(QRectF(at.x(), at.y(), w, 60), 20 * 16, 140 * 16);
  }
}

void PaintLand(QPainter& p, const QPainterPath& land) {
  // Shallow water and beach along the coast.
  p.setBrush(Qt::NoBrush);
  p.setPen(QPen(QColor(120, 180, 214, 150), 520, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.drawPath(land);
  p.setPen(QPen(QColor(140, 196, 226, 170), 260, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.drawPath(land);
  p.setPen(QPen(Beach(), 130, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.drawPath(land);
  p.setPen(Qt::NoPen);
  p.setBrush(Land());
  p.drawPath(land);

  p.save();
  p.setClipPath(land);
  // Meadows and fields in slightly different greens and yellows.
  Dice dice(77);
  for (int i = 0; i < 260; ++i) {
    const QPointF at(dice.Between(1000, 24500), dice.Between(300, 12800));
    const double r = dice.Between(250, 900);
    const int tone = static_cast<int>(dice.Between(0, 3));
    const QColor colours[3] = {QColor(178, 196, 120, 70), QColor(214, 206, 140, 70), QColor(160, 182, 110, 60)};
    p.setBrush(colours[tone]);
    p.drawEllipse(at, r, r * dice.Between(0.5, 1.0));
  }
  // The two armies' lands: green behind the left, brown behind the right.
  QLinearGradient own(0, 0, kBoardWidthTwips, 0);
  QColor g = ArmyTint(1), b = ArmyTint(2);
  g.setAlpha(150);
  b.setAlpha(150);
  QColor clear = Land();
  clear.setAlpha(0);
  own.setColorAt(0.0, g);
  own.setColorAt(4700.0 / kBoardWidthTwips, g);
  own.setColorAt(6600.0 / kBoardWidthTwips, clear);
  own.setColorAt(17900.0 / kBoardWidthTwips, clear);
  own.setColorAt(19700.0 / kBoardWidthTwips, b);
  own.setColorAt(1.0, b);
  p.fillRect(QRectF(0, 0, kBoardWidthTwips, kBoardHeightTwips), own);
  p.restore();
}

// Where the peaks stand: between the roads of 24, 41 and 43.
const QRectF kMountains(10700, 5000, 1300, 1800);

// True when a decoration at `r` stays clear of roads, areas and the frames
// that lie over the board.
bool ClearOfPlay(const QRectF& r) {
  for (int f = 1; f <= kLastField; ++f)
    if (ToRectF(FieldHit(f)).adjusted(-160, -160, 160, 160).intersects(r)) return false;
  const QRectF frames[] = {QRectF(12720, 6930, 2775, 2175), QRectF(7635, 5475, 2895, 375), kMountains,
                           QRectF(17480, 9980, 1170, 740), QRectF(6350, 1550, 1350, 900)};
  for (const QRectF& f : frames)
    if (f.adjusted(-100, -100, 100, 100).intersects(r)) return false;
  return true;
}

void PaintTrees(QPainter& p, const QPainterPath& land) {
  Dice dice(99);
  p.setPen(Qt::NoPen);
  for (int cluster = 0; cluster < 70; ++cluster) {
    const QPointF centre(dice.Between(1500, 23800), dice.Between(700, 12300));
    const int count = static_cast<int>(dice.Between(4, 14));
    for (int i = 0; i < count; ++i) {
      const QPointF at = centre + QPointF(dice.Between(-420, 420), dice.Between(-300, 300));
      const double r = dice.Between(55, 95);
      const QRectF box(at.x() - r, at.y() - r, 2 * r, 2 * r);
      if (!land.contains(box) || !ClearOfPlay(box)) continue;
      p.setBrush(QColor(60, 90, 40, 110));
      p.drawEllipse(at + QPointF(25, 30), r, r * 0.8);
      p.setBrush(QColor(70, 118, 52));
      p.drawEllipse(at, r, r);
      p.setBrush(QColor(104, 150, 70));
      p.drawEllipse(at + QPointF(-r * 0.3, -r * 0.3), r * 0.45, r * 0.45);
    }
  }
  // A few hills.
  for (int i = 0; i < 18; ++i) {
    const QPointF at(dice.Between(2000, 23500), dice.Between(1500, 11800));
    const QRectF box(at.x() - 420, at.y() - 180, 840, 360);
    if (!land.contains(box) || !ClearOfPlay(box)) continue;
    for (int ring = 0; ring < 3; ++ring) {
      p.setPen(QPen(QColor(150, 130, 80, 120), 16));
      p.setBrush(Qt::NoBrush);
      p.drawEllipse(box.adjusted(ring * 110, ring * 50, -ring * 110, -ring * 50));
    }
    p.setPen(Qt::NoPen);
  }
}

// Farmland: a patch of striped fields, turned a little.
void PaintFarm(QPainter& p, QPointF centre, double w, double h, double angle, Dice& dice) {
  p.save();
  p.translate(centre);
  p.rotate(angle);
  const QColor crops[4] = {QColor(200, 190, 110), QColor(168, 186, 96), QColor(214, 200, 130), QColor(150, 170, 90)};
  const int strips = 4 + static_cast<int>(dice.Between(0, 3));
  for (int i = 0; i < strips; ++i) {
    const QRectF strip(-w / 2 + i * w / strips, -h / 2, w / strips, h);
    p.setPen(Qt::NoPen);
    p.setBrush(crops[static_cast<int>(dice.Between(0, 4)) % 4]);
    p.drawRect(strip);
    p.setPen(QPen(QColor(120, 110, 60, 90), 10));
    for (double y = -h / 2 + 40; y < h / 2; y += 70) p.drawLine(QPointF(strip.left() + 20, y), QPointF(strip.right() - 20, y));
  }
  p.setPen(QPen(QColor(110, 90, 50, 160), 14));
  p.setBrush(Qt::NoBrush);
  p.drawRect(QRectF(-w / 2, -h / 2, w, h));
  p.restore();
}

// A village: a few houses with red roofs around a square.
void PaintVillage(QPainter& p, QPointF centre, Dice& dice) {
  const int houses = 3 + static_cast<int>(dice.Between(0, 4));
  for (int i = 0; i < houses; ++i) {
    const double a = i * 2 * M_PI / houses + dice.Between(-0.3, 0.3);
    const QPointF at = centre + QPointF(std::cos(a) * 190, std::sin(a) * 150);
    const bool wide = dice.Unit() < 0.5;
    const QRectF house(at.x() - (wide ? 95 : 65), at.y() - (wide ? 65 : 95), wide ? 190 : 130, wide ? 130 : 190);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(60, 50, 40, 90));
    p.drawRect(house.translated(22, 22));
    p.setPen(QPen(QColor(110, 40, 30), 12));
    p.setBrush(QColor(186, 74, 52));
    p.drawRect(house);
    p.setPen(QPen(QColor(120, 46, 34), 14));
    if (wide) p.drawLine(QPointF(house.left(), house.center().y()), QPointF(house.right(), house.center().y()));
    else p.drawLine(QPointF(house.center().x(), house.top()), QPointF(house.center().x(), house.bottom()));
  }
  // The church tower.
  p.setPen(QPen(QColor(70, 70, 80), 12));
  p.setBrush(QColor(150, 150, 160));
  p.drawRect(QRectF(centre.x() - 55, centre.y() - 55, 110, 110));
}

// The mountains in the middle of the island, seen from above like the rest of
// the board: rock massifs with contour lines and snow on the tops, so they
// look the same from either side of the table.
void PaintMountains(QPainter& p, const QRectF& area) {
  struct Massif {
    double x, y, r;
    std::uint32_t seed;
  };
  const Massif massifs[] = {{0.45, 0.42, 0.42, 31}, {0.25, 0.75, 0.26, 32}, {0.72, 0.78, 0.24, 33},
                            {0.70, 0.18, 0.22, 34}};
  for (const Massif& m : massifs) {
    const QPointF c(area.left() + m.x * area.width(), area.top() + m.y * area.height());
    const double r = m.r * area.width();
    const QColor rings[4] = {QColor(176, 150, 112), QColor(156, 128, 96), QColor(136, 110, 86), QColor(246, 246, 240)};
    for (int ring = 0; ring < 4; ++ring) {
      const double rr = r * (1.0 - ring * 0.24);
      const QPainterPath shape = WavyOutline(QRectF(c.x() - rr, c.y() - rr * 0.85, 2 * rr, 1.7 * rr), rr * 0.12,
                                             m.seed + static_cast<std::uint32_t>(ring), 1.0);
      p.setPen(QPen(QColor(100, 80, 62), ring == 3 ? 10 : 14));
      p.setBrush(rings[ring]);
      p.drawPath(shape);
    }
  }
}

void PaintCountryside(QPainter& p, const QPainterPath& land) {
  Dice dice(2026);
  std::vector<QRectF> taken;
  const auto free = [&](const QRectF& box) {
    for (const QRectF& t : taken)
      if (t.intersects(box)) return false;
    return land.contains(box) && ClearOfPlay(box);
  };
  int farms = 0;
  for (int attempt = 0; attempt < 400 && farms < 16; ++attempt) {
    const QPointF at(dice.Between(2000, 23300), dice.Between(1200, 11800));
    const double w = dice.Between(700, 1200), h = dice.Between(500, 800);
    const QRectF box(at.x() - w / 2 - 60, at.y() - h / 2 - 60, w + 120, h + 120);
    if (!free(box)) continue;
    taken.push_back(box);
    PaintFarm(p, at, w, h, dice.Between(-12, 12), dice);
    ++farms;
  }
  int villages = 0;
  for (int attempt = 0; attempt < 400 && villages < 7; ++attempt) {
    const QPointF at(dice.Between(2000, 23300), dice.Between(1200, 11800));
    const QRectF box(at.x() - 420, at.y() - 380, 840, 760);
    if (!free(box)) continue;
    taken.push_back(box);
    PaintVillage(p, at, dice);
    ++villages;
  }
}

QFont LabelFont(double pixelSize, bool bold = true) {
  QFont font("DejaVu Sans Condensed");
  font.setPixelSize(static_cast<int>(pixelSize * kTwipsPerPixel));
  font.setBold(bold);
  font.setLetterSpacing(QFont::AbsoluteSpacing, 0.8 * kTwipsPerPixel);
  return font;
}

// A label reads upright for the player whose half of the board it lies in:
// the right half is read by the player of army 2 from the other side.
void Label(QPainter& p, const QRectF& box, const QString& text, double pixelSize, const QColor& colour,
           bool halo = true, std::optional<bool> turnedOverride = std::nullopt) {
  const bool turned = turnedOverride ? *turnedOverride : box.center().x() > kHalfX;
  p.save();
  p.translate(box.center());
  if (turned) p.rotate(180);
  const QRectF local(-box.width() / 2, -box.height() / 2, box.width(), box.height());
  p.setFont(LabelFont(pixelSize));
  if (halo) {
    QPainterPath path;
    const QFontMetricsF m(p.font());
    const double w = m.horizontalAdvance(text);
    path.addText(QPointF(-w / 2, m.ascent() / 2 - m.descent() / 2 + m.descent() * 0.3), p.font(), text);
    p.setPen(QPen(QColor(255, 252, 236, 200), 2.6 * kTwipsPerPixel, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPath(path);
    p.setPen(Qt::NoPen);
    p.setBrush(colour);
    p.drawPath(path);
  } else {
    p.setPen(colour);
    p.drawText(local, Qt::AlignCenter, text);
  }
  p.restore();
}

void PaintStrategicLinks(QPainter& p) {
  for (const StrategicLink& link : kStrategicLinks) {
    const QPointF a = ToRectF(FieldHit(link.A)).center();
    const QPointF b = ToRectF(FieldHit(link.B)).center();
    p.setPen(QPen(QColor(255, 248, 225, 150), 70, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(a, b);
    QPen dash(QColor(168, 40, 40, 210), 38, Qt::CustomDashLine, Qt::FlatCap);
    dash.setDashPattern({3.0, 2.0});
    p.setPen(dash);
    p.drawLine(a, b);
  }
}

QRectF Inflate(const QRectF& r, double by) { return r.adjusted(-by, -by, by, by); }

void PaintRoadBed(QPainter& p) {
  const std::vector<RoadPair> pairs = RoadPairs();
  std::vector<QRectF> joints;
  for (const RoadPair& pair : pairs)
    if (auto j = JointBetween(pair.a, pair.b)) joints.push_back(*j);
  // A dark kerb under everything, then the joints between the squares.
  p.setPen(Qt::NoPen);
  p.setBrush(RoadEdge());
  for (const QRectF& j : joints) p.drawRect(Inflate(j, 22));
  for (int f = kFirstRoadField; f <= kLastRoadField; ++f)
    for (const QRectF& t : TilesOf(f)) p.drawRect(Inflate(t, 22));
  p.setBrush(RoadJoint());
  for (const QRectF& j : joints) p.drawRect(j);
}

// The squares go on last, each on whole pixels, so that every square is one
// flat colour to its edges whatever lies beside it.
void PaintRoadSquares(QPainter& p) {
  p.save();
  p.resetTransform();
  p.setRenderHint(QPainter::Antialiasing, false);
  for (int f = kFirstRoadField; f <= kLastRoadField; ++f)
    for (const QRectF& t : TilesOf(f))
      p.fillRect(TwipRectToPixels(static_cast<int>(t.x()), static_cast<int>(t.y()), static_cast<int>(t.width()),
                                  static_cast<int>(t.height())),
                 RoadTile());
  p.restore();
}

// The part of a field's click rectangle that no road square covers: the place
// for its sign (airport, harbour, link, flags).
QRectF FreePartOf(int field) {
  const QRectF hit = ToRectF(FieldHit(field));
  const std::vector<QRectF> tiles = TilesOf(field);
  if (tiles.size() == 1) {
    const QRectF t = tiles[0];
    if (t.top() > hit.top() + 1) return QRectF(hit.left(), hit.top(), hit.width(), t.top() - hit.top());
    if (t.bottom() < hit.bottom() - 1) return QRectF(hit.left(), t.bottom(), hit.width(), hit.bottom() - t.bottom());
    if (t.left() > hit.left() + 1) return QRectF(hit.left(), hit.top(), t.left() - hit.left(), hit.height());
    return QRectF();
  }
  QRectF horizontal = tiles[0], vertical = tiles[1];
  const double x1 = vertical.left() > hit.left() + 1 ? hit.left() : vertical.right();
  const double x2 = vertical.left() > hit.left() + 1 ? vertical.left() : hit.right();
  const double y1 = horizontal.top() > hit.top() + 1 ? hit.top() : horizontal.bottom();
  const double y2 = horizontal.top() > hit.top() + 1 ? horizontal.top() : hit.bottom();
  return QRectF(x1, y1, x2 - x1, y2 - y1);
}

void PaintPlane(QPainter& p, QPointF c, double size) {
  QPainterPath plane;
  const double s = size / 20.0;
  plane.moveTo(c + QPointF(0, -10 * s));
  plane.lineTo(c + QPointF(1.6 * s, -7 * s));
  plane.lineTo(c + QPointF(1.6 * s, -2 * s));
  plane.lineTo(c + QPointF(9 * s, 2 * s));
  plane.lineTo(c + QPointF(9 * s, 4 * s));
  plane.lineTo(c + QPointF(1.6 * s, 2 * s));
  plane.lineTo(c + QPointF(1.2 * s, 7 * s));
  plane.lineTo(c + QPointF(4 * s, 9 * s));
  plane.lineTo(c + QPointF(4 * s, 10 * s));
  plane.lineTo(c + QPointF(0, 9 * s));
  plane.lineTo(c + QPointF(-4 * s, 10 * s));
  plane.lineTo(c + QPointF(-4 * s, 9 * s));
  plane.lineTo(c + QPointF(-1.2 * s, 7 * s));
  plane.lineTo(c + QPointF(-1.6 * s, 2 * s));
  plane.lineTo(c + QPointF(-9 * s, 4 * s));
  plane.lineTo(c + QPointF(-9 * s, 2 * s));
  plane.lineTo(c + QPointF(-1.6 * s, -2 * s));
  plane.lineTo(c + QPointF(-1.6 * s, -7 * s));
  plane.closeSubpath();
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(30, 40, 70));
  p.drawPath(plane);
}

void PaintAnchor(QPainter& p, QPointF c, double size) {
  const double s = size / 20.0;
  p.setBrush(Qt::NoBrush);
  p.setPen(QPen(QColor(20, 40, 90), 1.8 * s * 1.0, Qt::SolidLine, Qt::RoundCap));
  p.drawEllipse(c + QPointF(0, -7 * s), 2 * s, 2 * s);
  p.drawLine(c + QPointF(0, -5 * s), c + QPointF(0, 8 * s));
  p.drawLine(c + QPointF(-4.5 * s, -2 * s), c + QPointF(4.5 * s, -2 * s));
  p.drawArc(QRectF(c.x() - 7 * s, c.y() - 3 * s, 14 * s, 11 * s), 200 * 16, 140 * 16);
}

enum class Sign { Airport, Harbour, LinkEnd };

void PaintSign(QPainter& p, const QRectF& area, Sign kind) {
  if (area.isEmpty()) return;
  const double size = std::min(area.width(), area.height()) - 40;
  const QPointF c = area.center();
  p.setPen(QPen(QColor(60, 60, 60), 14));
  p.setBrush(QColor(252, 248, 230));
  p.drawRoundedRect(QRectF(c.x() - size / 2, c.y() - size / 2, size, size), 60, 60);
  if (kind == Sign::Airport) PaintPlane(p, c, size * 0.85);
  else if (kind == Sign::Harbour) PaintAnchor(p, c, size * 0.85);
  else {
    // The end of a strategic link: a red diamond.
    QPolygonF diamond;
    const double r = size * 0.32;
    diamond << c + QPointF(0, -r) << c + QPointF(r, 0) << c + QPointF(0, r) << c + QPointF(-r, 0);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(168, 40, 40));
    p.drawPolygon(diamond);
  }
}

void PaintPlaceBay(QPainter& p, const QRectF& r, const QColor& line) {
  p.setPen(QPen(line, 16, Qt::DashLine));
  p.setBrush(QColor(255, 255, 255, 40));
  p.drawRect(r.adjusted(8, 8, -8, -8));
}

void PaintFence(QPainter& p, const QRectF& r, const QColor& ground, const QColor& fence) {
  p.setPen(Qt::NoPen);
  p.setBrush(ground);
  p.drawRect(r);
  p.setBrush(Qt::NoBrush);
  p.setPen(QPen(fence, 40));
  p.drawRect(r.adjusted(20, 20, -20, -20));
  QPen posts(fence.darker(140), 90, Qt::CustomDashLine, Qt::FlatCap);
  posts.setDashPattern({0.5, 3.5});
  p.setPen(posts);
  p.drawRect(r.adjusted(20, 20, -20, -20));
}

void PaintFlagRack(QPainter& p, const QRectF& rack, bool vertical, int side) {
  p.setPen(QPen(ArmyDark(side), 14));
  p.setBrush(QColor(255, 250, 228));
  p.drawRect(rack);
  for (int i = 0; i < 5; ++i) {
    const QRectF cell = vertical ? QRectF(rack.left(), rack.top() + i * rack.height() / 5, rack.width(), rack.height() / 5)
                                 : QRectF(rack.left() + i * rack.width() / 5, rack.top(), rack.width() / 5, rack.height());
    p.setPen(QPen(ArmyDark(side), 10));
    p.setBrush(Qt::NoBrush);
    p.drawRect(cell);
    p.save();
    p.translate(cell.center());
    if (side == 2) p.rotate(180);
    p.scale(kTwipsPerPixel, kTwipsPerPixel);
    PaintFlagIcon(p, QPointF(0, 0), 22);
    p.restore();
  }
}

void PaintMineSlots(QPainter& p, int side) {
  for (int i = 0; i < 5; ++i) {
    const TwipPoint own = MineStore(side, i);
    const TwipPoint enemy = EnemyMineStore(side, i);
    p.setPen(QPen(ArmyDark(side), 12));
    p.setBrush(QColor(80, 70, 60, 60));
    p.drawRect(QRectF(own.X, own.Y, kMineStoreWidth, kMineStoreHeight));
    p.setPen(QPen(FlagRed(), 12, Qt::DotLine));
    p.setBrush(QColor(150, 30, 30, 40));
    p.drawRect(QRectF(enemy.X, enemy.Y, kMineStoreWidth, kMineStoreHeight));
  }
}

void PaintCamp(QPainter& p, int side) {
  const QRectF area = ToRectF(FieldHit(CampField(side)));
  PaintFence(p, area, ArmyTint(side).darker(106), ArmyDark(side));
  // The parking places of the vehicles, slot by slot.
  for (int slot = 0; slot < 10; ++slot) {
    const TwipPoint place = CampPlace(side, slot);
    PaintPlaceBay(p, QRectF(place.X, place.Y, 750, 330), ArmyDark(side));
  }
  PaintMineSlots(p, side);
  const BoardView view{1, kBoardWidthTwips, kBoardHeightTwips};
  if (side == 1) {
    const TwipPoint flags = FramePosition(view, BoardFrame::Vlagdekking_1);
    PaintFlagRack(p, QRectF(flags.X, flags.Y, 415, 2120), true, 1);
    const TwipPoint companies = FramePosition(view, BoardFrame::KampComp0);
    p.setPen(QPen(ArmyDark(1), 14, Qt::DashLine));
    p.setBrush(QColor(255, 255, 255, 50));
    p.drawRect(QRectF(companies.X, companies.Y, 855, 855));
    Label(p, QRectF(3400, 8000, 1385, 500), "KAMP", 20, ArmyDark(1));
    Label(p, QRectF(3400, 8500, 1385, 400), "groen leger", 11, ArmyDark(1));
  } else {
    const TwipPoint flags = FramePosition(view, BoardFrame::Vlagdekking_2);
    PaintFlagRack(p, QRectF(flags.X, flags.Y, 2120, 415), false, 2);
    const TwipPoint companies = FramePosition(view, BoardFrame::KampComp1);
    p.setPen(QPen(ArmyDark(2), 14, Qt::DashLine));
    p.setBrush(QColor(255, 255, 255, 50));
    p.drawRect(QRectF(companies.X, companies.Y, 1215, 615));
    Label(p, QRectF(21300, 3500, 1200, 500), "KAMP", 20, ArmyDark(2));
    Label(p, QRectF(21300, 3050, 1200, 400), "bruin leger", 11, ArmyDark(2));
  }
}

void PaintHQ(QPainter& p, int side) {
  const QRectF area = ToRectF(FieldHit(HQField(side)));
  p.setPen(QPen(ArmyDark(side), 40));
  p.setBrush(QColor(176, 172, 160));
  p.drawRoundedRect(area.adjusted(20, 20, -20, -20), 120, 120);
  p.setPen(QPen(QColor(140, 136, 126), 20));
  p.setBrush(Qt::NoBrush);
  p.drawRoundedRect(area.adjusted(90, 90, -90, -90), 80, 80);
  for (int place = 0; place < 3; ++place) {
    const TwipPoint at = HQPlace(side, place);
    PaintPlaceBay(p, QRectF(at.X, at.Y, 750, 330), ArmyDark(side));
  }
  // Label in the free strip beside the places.
  const TwipPoint first = HQPlace(side, 0);
  const double freeLeft = first.X + 750 + 40;
  QRectF strip(freeLeft, area.top() + 100, area.right() - 100 - freeLeft, area.height() - 200);
  if (strip.width() < 300) strip = QRectF(area.left() + 100, area.top() + 100, first.X - area.left() - 140, area.height() - 200);
  p.save();
  p.translate(strip.center());
  p.rotate(side == 1 ? -90 : 90);
  p.setFont(LabelFont(13));
  p.setPen(ArmyDark(side));
  p.drawText(QRectF(-strip.height() / 2, -strip.width() / 2, strip.height(), strip.width()), Qt::AlignCenter, "HQ");
  p.restore();
}

void PaintIsland(QPainter& p, int side) {
  // The island of army `side`: its jeep waits there and its men are held there.
  const QRectF area = ToRectF(FieldHit(IslandField(side)));
  const QColor wire(90, 80, 70);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(196, 184, 150));
  p.drawRoundedRect(area.adjusted(30, 30, -30, -30), 150, 150);
  QPen barbed(wire, 22, Qt::CustomDashLine);
  barbed.setDashPattern({2.0, 1.0});
  p.setPen(barbed);
  p.setBrush(Qt::NoBrush);
  p.drawRoundedRect(area.adjusted(60, 60, -60, -60), 120, 120);
  const TwipPoint jeep = FieldAnchor(IslandField(side), 0);
  PaintPlaceBay(p, QRectF(jeep.X, jeep.Y, 750, 330), ArmyDark(side));
  const BoardView view{1, kBoardWidthTwips, kBoardHeightTwips};
  const TwipPoint held = FramePosition(view, side == 1 ? BoardFrame::Gevang_1 : BoardFrame::Gevang_2);
  p.setPen(QPen(wire, 14, Qt::DashLine));
  p.setBrush(QColor(255, 255, 255, 50));
  p.drawRect(QRectF(held.X, held.Y, 1560, 360));
  // A watchtower in a corner.
  const QPointF tower = side == 1 ? QPointF(area.left() + 260, area.bottom() - 300) : QPointF(area.right() - 260, area.top() + 300);
  p.setPen(QPen(wire.darker(130), 20));
  p.setBrush(QColor(120, 96, 70));
  p.drawRect(QRectF(tower.x() - 110, tower.y() - 110, 220, 220));
  p.setBrush(QColor(80, 60, 40));
  p.drawRect(QRectF(tower.x() - 60, tower.y() - 60, 120, 120));
  // Label between the jeep place and the prisoners, facing the army whose men
  // are held here.
  // Where the room is: army 2's island has it between the jeep and the
  // prisoners, army 1's above the prisoners.
  const QRectF labelBox =
      side == 2 ? QRectF(area.left() + 200, jeep.Y + 330, area.width() - 400, held.Y - (jeep.Y + 330))
                : QRectF(area.left() + 200, area.top() + 150, area.width() - 400, held.Y - area.top() - 170);
  Label(p, labelBox, "GEVANGENEN", 11, QColor(70, 50, 40), true, side == 2);
}

void PaintForwardPosts(QPainter& p, int side) {
  for (const ForwardPost& post : ForwardPosts(side)) {
    const auto gap = JointBetween(post.From, post.To);
    if (!gap) continue;
    const bool across = gap->height() > gap->width();  // the road runs left-right
    const QRectF boom = across ? QRectF(gap->center().x() - 40, gap->top() - 120, 80, gap->height() + 240)
                               : QRectF(gap->left() - 120, gap->center().y() - 40, gap->width() + 240, 80);
    p.setPen(QPen(Ink(), 12));
    p.setBrush(Qt::white);
    p.drawRect(boom);
    p.setPen(Qt::NoPen);
    p.setBrush(ArmyColour(side).darker(110));
    const int stripes = 6;
    for (int i = 0; i < stripes; i += 2) {
      if (across)
        p.drawRect(QRectF(boom.left(), boom.top() + i * boom.height() / stripes, boom.width(), boom.height() / stripes));
      else
        p.drawRect(QRectF(boom.left() + i * boom.width() / stripes, boom.top(), boom.width() / stripes, boom.height()));
    }
    // A guard hut beside the road.
    const QPointF hut = across ? QPointF(gap->center().x(), gap->top() - 260) : QPointF(gap->left() - 260, gap->center().y());
    p.setPen(QPen(Ink(), 12));
    p.setBrush(ArmyColour(side));
    p.drawRect(QRectF(hut.x() - 95, hut.y() - 95, 190, 190));
    p.setBrush(ArmyDark(side));
    p.drawRect(QRectF(hut.x() - 40, hut.y() - 40, 80, 80));
    const QRectF labelBox = across ? QRectF(gap->center().x() - 700, gap->bottom() + 130, 1400, 260)
                                   : QRectF(gap->right() + 100, gap->center().y() - 130, 1400, 260);
    Label(p, labelBox, "VOORPOST", 9, ArmyDark(side), true, side == 2);
  }
}

void PaintFlagField(QPainter& p, int side, const QRectF& depot) {
  const int field = FlagField(side);
  const QRectF hit = ToRectF(FieldHit(field));
  p.setPen(QPen(FlagYellow().darker(115), 40));
  p.setBrush(Qt::NoBrush);
  p.drawRect(hit.adjusted(-45, -45, 45, 45));
  // The five flags that wait for this army's infantry.
  p.setPen(QPen(ArmyDark(side), 14, Qt::DashLine));
  p.setBrush(QColor(255, 246, 200, 170));
  p.drawRoundedRect(depot, 80, 80);
  // The depot faces the army that comes for these flags.
  const bool turned = side == 2;
  for (int i = 0; i < 5; ++i) {
    const double x = depot.left() + depot.width() * (0.14 + 0.18 * i);
    p.save();
    p.translate(QPointF(x, depot.center().y() + (turned ? -90 : 90)));
    if (turned) p.rotate(180);
    p.scale(kTwipsPerPixel, kTwipsPerPixel);
    PaintFlagIcon(p, QPointF(0, 0), 22);
    p.restore();
  }
  const QRectF labelBox = turned ? QRectF(depot.left(), depot.bottom() - 300, depot.width(), 260)
                                 : QRectF(depot.left(), depot.top() + 40, depot.width(), 260);
  Label(p, labelBox, side == 1 ? "VLAGGEN groen" : "VLAGGEN bruin", 9, ArmyDark(side), false, turned);
  // A line from the depot to the field it belongs to.
  p.setPen(QPen(FlagYellow().darker(130), 30, Qt::DotLine));
  const QPointF from = depot.center();
  const QPointF to = hit.center();
  const QPointF dir = to - from;
  p.drawLine(from + dir * 0.55, to - dir * 0.28);
}

// The quays in the sea at the left edge of each view, where the window puts
// the opponent's destroyed vehicles (left 120, one under the other). The
// right quay becomes the left one when the board is turned.
void PaintWreckQuays(QPainter& p) {
  const QRectF left(60, 980, 880, 5560);
  const QRectF right(kBoardWidthTwips - left.right(), kBoardHeightTwips - left.bottom(), left.width(), left.height());
  for (const QRectF& quay : {left, right}) {
    p.setPen(QPen(QColor(70, 70, 72), 24));
    p.setBrush(QColor(150, 148, 140));
    p.drawRect(quay);
    p.setPen(QPen(QColor(120, 118, 112), 10));
    for (double y = quay.top() + 480; y < quay.bottom() - 100; y += 480)
      p.drawLine(QPointF(quay.left() + 60, y), QPointF(quay.right() - 60, y));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(60, 60, 62));
    for (double y = quay.top() + 240; y < quay.bottom(); y += 960) {
      p.drawEllipse(QPointF(quay.left() + 40, y), 35, 35);
      p.drawEllipse(QPointF(quay.right() - 40, y), 35, 35);
    }
  }
  // The name, along the quay, readable from the view in which it is the left one.
  for (int i = 0; i < 2; ++i) {
    const QRectF quay = i == 0 ? left : right;
    p.save();
    p.translate(quay.center());
    p.rotate(i == 0 ? -90 : 90);
    p.setFont(LabelFont(8));
    p.setPen(QColor(240, 236, 224));
    p.drawText(QRectF(-quay.height() / 2, quay.width() / 2 + 20, quay.height(), 300), Qt::AlignCenter, "WRAKKEN");
    p.restore();
  }
}

void PaintCompassRose(QPainter& p, QPointF c, double r) {
  for (int i = 0; i < 8; ++i) {
    const double a = i * M_PI / 4 - M_PI / 2;
    const double len = i % 2 == 0 ? r : r * 0.55;
    const QPointF tip = c + QPointF(std::cos(a), std::sin(a)) * len;
    const QPointF l = c + QPointF(std::cos(a - M_PI / 2), std::sin(a - M_PI / 2)) * r * 0.16;
    const QPointF rr = c + QPointF(std::cos(a + M_PI / 2), std::sin(a + M_PI / 2)) * r * 0.16;
    QPolygonF h1, h2;
    h1 << c << l << tip;
    h2 << c << rr << tip;
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(250, 240, 210));
    p.drawPolygon(h1);
    p.setBrush(QColor(170, 150, 100));
    p.drawPolygon(h2);
  }
  p.setPen(QPen(QColor(250, 240, 210, 180), 14));
  p.setBrush(Qt::NoBrush);
  p.drawEllipse(c, r * 0.7, r * 0.7);
}

}  // namespace

QRect TwipRectToPixels(int x, int y, int w, int h) {
  const int left = x / kTwipsPerPixel;
  const int top = y / kTwipsPerPixel;
  const int right = (x + w + kTwipsPerPixel - 1) / kTwipsPerPixel;
  const int bottom = (y + h + kTwipsPerPixel - 1) / kTwipsPerPixel;
  return QRect(left, top, right - left, bottom - top);
}

QImage DrawBoard() {
  QImage image(kBoardWidthPx, kBoardHeightPx, QImage::Format_RGB32);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing, true);
  p.setRenderHint(QPainter::TextAntialiasing, true);
  p.scale(1.0 / kTwipsPerPixel, 1.0 / kTwipsPerPixel);

  PaintSea(p);
  const QPainterPath land = LandShape();
  PaintLand(p, land);
  PaintCountryside(p, land);
  PaintMountains(p, kMountains);
  PaintTrees(p, land);
  PaintCompassRose(p, QPointF(720, 12400), 520);
  PaintWreckQuays(p);

  PaintStrategicLinks(p);
  for (int side = 1; side <= 2; ++side) {
    PaintCamp(p, side);
    PaintHQ(p, side);
    PaintIsland(p, side);
  }
  PaintFlagField(p, 1, QRectF(17480, 9980, 1170, 740));
  PaintFlagField(p, 2, QRectF(6350, 1550, 1350, 900));
  PaintRoadBed(p);

  for (int field : kAirports) PaintSign(p, FreePartOf(field), Sign::Airport);
  for (int field : kHarbours) PaintSign(p, FreePartOf(field), Sign::Harbour);
  for (int field : kStrategicPoints) {
    if (IsAirport(field) || IsHarbour(field)) continue;
    PaintSign(p, FreePartOf(field), Sign::LinkEnd);
  }
  for (int side = 1; side <= 2; ++side) PaintForwardPosts(p, side);
  PaintRoadSquares(p);

  Label(p, QRectF(300, 12700, 5200, 450), "VALKENHORN", 16, QColor(250, 240, 210), false, false);
  Label(p, QRectF(19800, 12650, 5200, 450), "VALKENHORN", 16, QColor(250, 240, 210), false, true);
  p.end();
  return image;
}

QImage TurnHalfCircle(const QImage& picture) {
  QImage turned(picture.size(), picture.format());
  const int w = picture.width();
  const int h = picture.height();
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) turned.setPixel(w - 1 - x, h - 1 - y, picture.pixel(x, y));
  return turned;
}

}  // namespace vk::art
