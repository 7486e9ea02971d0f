#include "ProgramFolder.h"

#include "board/VehicleTag.h"

#include <QFileInfo>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Per slot: the most companies aboard (the jeep: prisoners) and the highest
// mark digit: infantry a flag (1), commando a mine (1), genie its own (1) or
// the enemy's mine (2).
constexpr int kMostCompanies[11] = {5, 4, 4, 3, 3, 3, 2, 2, 2, 2, 3};
constexpr int kHighestMark[11] = {0, 0, 0, 1, 1, 1, 1, 1, 2, 2, 0};
// A vehicle that leaves its camp empty and is hit drops to -1, and lower with
// every further hit; pictures go down to -5. A hit on the jeep always destroys
// it, so the jeep never goes below 0.
constexpr int kFewestCompanies[11] = {-5, -5, -5, -5, -5, -5, -5, -5, -5, -5, 0};

std::vector<std::string> ReachableTags() {
  std::vector<std::string> tags;
  for (int side = 1; side <= 2; ++side)
    for (int slot = 0; slot <= 10; ++slot)
      for (int companies = kFewestCompanies[slot]; companies <= kMostCompanies[slot]; ++companies)
        for (int mark = 0; mark <= kHighestMark[slot]; ++mark)
          for (int heading = 0; heading <= 3; ++heading)
            tags.push_back(vk::MakeVehicleTag(slot, side, companies, mark, heading));
  return tags;
}

QString Gif(const char* folder, const std::string& tag) {
  return QString(folder) + "/" + QString::fromStdString(tag) + ".gif";
}

TEST(VehiclePictures, EveryReachableTagHasAPictureInBothFolders) {
  const std::vector<std::string> tags = ReachableTags();
  // Per side and heading: tank 11 counts, two kanons 10 each, three infantry
  // 9 counts x 2 marks, two commandos 8 x 2, two genies 8 x 3, the jeep 4.
  ASSERT_EQ(tags.size(), 2u * (11 + 2 * 10 + 3 * 18 + 2 * 16 + 2 * 24 + 4) * 4u);
  for (const std::string& tag : tags)
    for (const char* folder : {"groen_leger", "bruin_leger"})
      EXPECT_TRUE(QFileInfo::exists(ProgramPath(Gif(folder, tag)))) << folder << "/" << tag;
}

TEST(VehiclePictures, StartingAndDestroyedTagsArePresent) {
  for (const char* tag : {"tank_1_0_o", "kanon_1_0_o", "infanterie_1_0_0_o", "commando_1_0_0_o", "genie_1_0_0_o",
                          "jeep_1_0_w", "tank_2_0_w", "kanon_2_0_w", "infanterie_2_0_0_o", "commando_2_0_0_w",
                          "genie_2_0_0_o", "jeep_2_0_o", "tank_2_0_o", "kanon_2_0_o", "commando_2_0_0_o",
                          "jeep_1_0_o", "jeep_1_3_w", "jeep_2_3_o", "infanterie_1_-1_1_z", "genie_2_2_2_n",
                          "tank_1_-1_o", "tank_2_-5_n", "commando_1_-3_1_w"})
    for (const char* folder : {"groen_leger", "bruin_leger"})
      EXPECT_TRUE(QFileInfo::exists(ProgramPath(Gif(folder, tag)))) << folder << "/" << tag;
}

TEST(VehiclePictures, CamouflageTagsWithoutMarkArePresent) {
  // Camouflage keeps only the last two characters after the new count, so the
  // mark digit falls out of the tag.
  for (const char* tag : {"infanterie_1_3_o", "infanterie_2_1_n", "commando_1_2_z", "genie_2_2_w", "genie_1_1_o"})
    for (const char* folder : {"groen_leger", "bruin_leger"})
      EXPECT_TRUE(QFileInfo::exists(ProgramPath(Gif(folder, tag)))) << folder << "/" << tag;
}

TEST(VehiclePictures, SizeFollowsTheHeading) {
  for (const std::string& tag : ReachableTags())
    for (const char* folder : {"groen_leger", "bruin_leger"}) {
      const QImage picture = ReadPicture(Gif(folder, tag));
      ASSERT_FALSE(picture.isNull()) << folder << "/" << tag;
      const char heading = tag.back();
      if (heading == 'o' || heading == 'w') {
        EXPECT_EQ(picture.size(), QSize(50, 22)) << folder << "/" << tag;  // 750 x 330 twips
      } else {
        EXPECT_EQ(picture.size(), QSize(22, 50)) << folder << "/" << tag;  // 330 x 750 twips
      }
    }
}

QImage Opaque(const QImage& picture) { return picture.convertToFormat(QImage::Format_ARGB32); }

TEST(VehiclePictures, BrownFolderShowsEveryHeadingTurnedHalfACircle) {
  // The folder of the turned view shows a vehicle that drives o as the other
  // folder shows one that drives w, and n as z: the whole board is turned.
  const char opposite[] = {'z', 'w', 'n', 'o'};
  const std::string letters = "nozw";
  for (const std::string& tag : ReachableTags()) {
    const std::size_t h = letters.find(tag.back());
    ASSERT_NE(h, std::string::npos);
    std::string turnedTag = tag;
    turnedTag.back() = opposite[h];
    EXPECT_EQ(Opaque(ReadPicture(Gif("bruin_leger", tag))), Opaque(ReadPicture(Gif("groen_leger", turnedTag))))
        << tag;
  }
}

TEST(VehiclePictures, NosePointsAlongTheHeading) {
  // The counter's nose is cut away at the corners: the corners at the front
  // are clear, the corners at the back are solid.
  struct Case {
    const char* folder;
    std::string tag;
    QPoint frontCorner, backCorner;
  };
  const std::vector<Case> cases = {
      {"groen_leger", vk::MakeVehicleTag(0, 1, 3, 0, 1), {49, 0}, {0, 0}},    // o: nose right
      {"groen_leger", vk::MakeVehicleTag(0, 1, 3, 0, 3), {0, 0}, {49, 0}},    // w: nose left
      {"groen_leger", vk::MakeVehicleTag(0, 1, 3, 0, 0), {0, 0}, {0, 49}},    // n: nose up
      {"groen_leger", vk::MakeVehicleTag(0, 1, 3, 0, 2), {0, 49}, {0, 0}},    // z: nose down
      {"bruin_leger", vk::MakeVehicleTag(0, 1, 3, 0, 1), {0, 0}, {49, 0}},    // o turned: nose left
      {"bruin_leger", vk::MakeVehicleTag(6, 2, 1, 1, 0), {0, 49}, {0, 0}},    // n turned: nose down
  };
  for (const Case& c : cases) {
    const QImage picture = Opaque(ReadPicture(Gif(c.folder, c.tag)));
    EXPECT_EQ(qAlpha(picture.pixel(c.frontCorner)), 0) << c.folder << "/" << c.tag;
    EXPECT_EQ(qAlpha(picture.pixel(c.backCorner)), 255) << c.folder << "/" << c.tag;
  }
}

TEST(VehiclePictures, ArmiesAndCountsLookDifferent) {
  // Same type, count and heading in the two armies' colours; same vehicle with
  // another count or mark: never the same picture.
  const auto look = [](int slot, int side, int companies, int mark) {
    return Opaque(ReadPicture(Gif("groen_leger", vk::MakeVehicleTag(slot, side, companies, mark, 1))));
  };
  EXPECT_NE(look(0, 1, 2, 0), look(0, 2, 2, 0));
  EXPECT_NE(look(0, 1, 2, 0), look(0, 1, 3, 0));
  EXPECT_NE(look(0, 1, 0, 0), look(0, 1, -1, 0));
  EXPECT_NE(look(3, 1, 2, 0), look(3, 1, 2, 1));
  EXPECT_NE(look(8, 1, 1, 1), look(8, 1, 1, 2));
  EXPECT_NE(look(6, 2, 1, 0), look(6, 2, 1, 1));
  EXPECT_NE(look(1, 1, 1, 0), look(0, 1, 1, 0));
  EXPECT_NE(look(6, 1, 1, 0), look(8, 1, 1, 0));
}

}  // namespace
