#include "ProgramFolder.h"
#include "TypedAnchors.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr int kTwipsPerPixel = 15;

// The pixels lying wholly inside a rectangle of twips.
QRect InnerPixels(int x, int y, int w, int h) {
  const int left = (x + kTwipsPerPixel - 1) / kTwipsPerPixel;
  const int top = (y + kTwipsPerPixel - 1) / kTwipsPerPixel;
  const int right = (x + w) / kTwipsPerPixel;    // exclusive
  const int bottom = (y + h) / kTwipsPerPixel;   // exclusive
  return QRect(left, top, right - left, bottom - top);
}

class BoardPicture : public ::testing::Test {
 protected:
  void SetUp() override {
    board_ = ReadPicture("groen_leger/yambo_1.bmp").convertToFormat(QImage::Format_RGB32);
    ASSERT_FALSE(board_.isNull());
    // The road colour is whatever lies under the middle of field 1.
    road_ = board_.pixel((6565 + 375) / kTwipsPerPixel, (1110 + 165) / kTwipsPerPixel);
  }
  QImage board_;
  QRgb road_ = 0;
};

TEST_F(BoardPicture, FillsSpeelveld) {
  // Speelveld is 25300 x 13210 twips: 1686.7 x 880.7 pixels, rounded up.
  EXPECT_EQ(board_.width(), 1687);
  EXPECT_EQ(board_.height(), 881);
  EXPECT_GE(board_.width() * kTwipsPerPixel, 25300);
  EXPECT_LT((board_.width() - 1) * kTwipsPerPixel, 25300);
  EXPECT_GE(board_.height() * kTwipsPerPixel, 13210);
  EXPECT_LT((board_.height() - 1) * kTwipsPerPixel, 13210);
}

TEST_F(BoardPicture, TurnedBoardIsTheSamePictureTurnedHalfACircle) {
  const QImage turned = ReadPicture("bruin_leger/yambo_2.bmp").convertToFormat(QImage::Format_RGB32);
  ASSERT_EQ(turned.size(), board_.size());
  const int w = board_.width(), h = board_.height();
  int differences = 0;
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x)
      if (turned.pixel(w - 1 - x, h - 1 - y) != board_.pixel(x, y)) ++differences;
  EXPECT_EQ(differences, 0);
}

TEST_F(BoardPicture, RoadColourIsAGrey) {
  const int r = qRed(road_), g = qGreen(road_), b = qBlue(road_);
  EXPECT_LT(std::abs(r - g), 20);
  EXPECT_LT(std::abs(g - b), 20);
  EXPECT_GT(r, 60);
  EXPECT_LT(r, 180);
}

TEST_F(BoardPicture, EveryRoadSquareLiesOnRoadColour) {
  for (const TypedAnchor& a : kTypedAnchors) {
    int checked = 0;
    for (int k = 0; k < 2; ++k) {
      const int x = k == 0 ? a.x0 : a.x1;
      const int y = k == 0 ? a.y0 : a.y1;
      if (x < 0) continue;
      const QRect inner = k == 0 ? InnerPixels(x, y, 750, 330) : InnerPixels(x, y, 330, 750);
      int wrong = 0;
      for (int py = inner.top(); py <= inner.bottom(); ++py)
        for (int px = inner.left(); px <= inner.right(); ++px, ++checked)
          if (board_.pixel(px, py) != road_) ++wrong;
      EXPECT_EQ(wrong, 0) << "field " << a.field << " anchor " << k;
    }
    EXPECT_GT(checked, 300) << "field " << a.field;
  }
}

TEST_F(BoardPicture, PointsBetweenRoadsAreNotRoad) {
  // Midpoints between two roads that do not meet: land or water, never road.
  struct Between {
    int x, y;
    const char* what;
  };
  const Between points[] = {
      {9245, 2110, "between the squares 3 and 7, across the bay"},
      {9500, 5900, "between the roads of 22 and 38"},
      {13900, 4700, "between the roads of 29 and 44"},
      {7000, 3300, "between 1 and 19"},
      {12000, 8700, "between 41 and 59"},
      {19780, 9000, "between 102 and 107"},
      {3800, 5000, "between 110 and the HQ"},
      {15000, 10900, "between 62 and 68, in the bay"},
  };
  for (const Between& b : points) {
    const QRgb pixel = board_.pixel(b.x / kTwipsPerPixel, b.y / kTwipsPerPixel);
    EXPECT_NE(pixel, road_) << b.what;
    // Nor the darker grey of the joints: far from any grey.
    const int r = qRed(pixel), g = qGreen(pixel), bl = qBlue(pixel);
    EXPECT_TRUE(std::abs(r - g) > 12 || std::abs(g - bl) > 12 || r > 190) << b.what;
  }
}

TEST_F(BoardPicture, SquaresOfOneRoadAreApartButJoined) {
  // Between field 4 and field 5 (x 8975 .. 9065) lies a joint: not the square
  // colour, so a player can count squares, yet a road grey.
  const QRgb joint = board_.pixel(9020 / kTwipsPerPixel, (2370 + 165) / kTwipsPerPixel);
  EXPECT_NE(joint, road_);
  EXPECT_LT(std::abs(qRed(joint) - qGreen(joint)), 20);
  EXPECT_LT(qRed(joint), qRed(road_));
}

}  // namespace

namespace {

bool Watery(QRgb c) { return qBlue(c) > qRed(c) + 30 && qBlue(c) > qGreen(c); }

TEST_F(BoardPicture, SeaAroundLandInTheMiddle) {
  for (const QPoint corner : {QPoint(2, 2), QPoint(1684, 2), QPoint(2, 878), QPoint(1684, 878)})
    EXPECT_TRUE(Watery(board_.pixel(corner))) << corner.x() << "," << corner.y();
  EXPECT_FALSE(Watery(board_.pixel(12650 / kTwipsPerPixel, 6600 / kTwipsPerPixel)));
}

TEST_F(BoardPicture, LargeAreasStandOnLandAndTheIslandsInTheSea) {
  // The hit rectangles of the camps, HQs and prison islands, 113 to 118.
  const int areas[6][4] = {{1905, 7630, 4785, 11775}, {4200, 5525, 5805, 7100}, {21535, 9575, 23530, 11555},
                           {20245, 1050, 23545, 5210}, {19030, 5495, 21010, 7160}, {1680, 1065, 3705, 3075}};
  for (const auto& a : areas) {
    const int cx = (a[0] + a[2]) / 2 / kTwipsPerPixel, cy = (a[1] + a[3]) / 2 / kTwipsPerPixel;
    EXPECT_FALSE(Watery(board_.pixel(cx, cy))) << a[0] << "," << a[1];
  }
  // Water between each prison island and the main land: east of 118, north of 115.
  EXPECT_TRUE(Watery(board_.pixel(4080 / kTwipsPerPixel, 2000 / kTwipsPerPixel)));
  EXPECT_TRUE(Watery(board_.pixel(21200 / kTwipsPerPixel, 10500 / kTwipsPerPixel)));
}

}  // namespace
