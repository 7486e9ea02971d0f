#include "ProgramFolder.h"

#include <QDirIterator>

#include <gtest/gtest.h>

#include <cstdint>

namespace {

std::uint32_t Le32(const QByteArray& b, int at) {
  return static_cast<std::uint8_t>(b[at]) | static_cast<std::uint8_t>(b[at + 1]) << 8 |
         static_cast<std::uint8_t>(b[at + 2]) << 16 | static_cast<std::uint32_t>(static_cast<std::uint8_t>(b[at + 3])) << 24;
}
std::uint16_t Le16(const QByteArray& b, int at) {
  return static_cast<std::uint16_t>(static_cast<std::uint8_t>(b[at]) | static_cast<std::uint8_t>(b[at + 1]) << 8);
}

TEST(Gif, EveryGifIsGif89aAndReadsBackAtItsStatedSize) {
  QDirIterator it(VALKENHORN_PROGRAM_DIR, {"*.gif"}, QDir::Files, QDirIterator::Subdirectories);
  int count = 0;
  while (it.hasNext()) {
    const QString path = it.next();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    const QByteArray head = file.read(10);
    ASSERT_EQ(head.size(), 10);
    EXPECT_EQ(head.left(6), QByteArray("GIF89a")) << path.toStdString();
    const QImage picture(path);
    ASSERT_FALSE(picture.isNull()) << path.toStdString();
    EXPECT_EQ(picture.width(), Le16(head, 6)) << path.toStdString();
    EXPECT_EQ(picture.height(), Le16(head, 8)) << path.toStdString();
    ++count;
  }
  EXPECT_GT(count, 1000);
}

struct Sized {
  const char* name;
  int width, height;  // pixels at 15 twips a pixel
};

TEST(Gif, PicturesHaveTheSizesOfTheirControls) {
  const Sized sizes[] = {
      {"splash.gif", 775, 381},            // 11630 x 5720
      {"dice1.gif", 41, 41},               // 615 x 615
      {"dice6.gif", 41, 41},
      {"compagnie_1.gif", 8, 8},           // 120 x 120
      {"compagnie_2.gif", 8, 8},
      {"mijn_1_u.gif", 50, 22},            // 750 x 330
      {"mijn_2_l.gif", 22, 50},            // 330 x 750
      {"mijn_2_r.gif", 22, 50},
      {"mijn_1_top.gif", 14, 22},          // 205 x 330
      {"bruin_leger/mijn_2_u.gif", 50, 22},
      {"bruin_leger/mijn_1_r.gif", 22, 50},
      {"kompas/back.gif", 25, 33},         // KK1..KK3: 375 x 495
      {"kompas/raya_01.gif", 113, 81},     // RadioYambo: 1695 x 1215
      {"kompas/raya_20.gif", 113, 81},
      {"kompas/pers_01.gif", 73, 105},     // Personnel: 1095 x 1575
      {"kompas/pers_12.gif", 73, 105},
  };
  for (const Sized& s : sizes) {
    const QImage picture = ReadPicture(s.name);
    ASSERT_FALSE(picture.isNull()) << s.name;
    EXPECT_EQ(picture.size(), QSize(s.width, s.height)) << s.name;
  }
}

TEST(Gif, DiceShowDifferentFaces) {
  for (int a = 1; a <= 6; ++a)
    for (int b = a + 1; b <= 6; ++b)
      EXPECT_NE(ReadPicture(QString("dice%1.gif").arg(a)), ReadPicture(QString("dice%1.gif").arg(b))) << a << b;
}

TEST(Bmp, BoardHeadersAreValid) {
  for (const char* name : {"groen_leger/yambo_1.bmp", "bruin_leger/yambo_2.bmp"}) {
    const QByteArray bmp = ReadProgramFile(name);
    ASSERT_GT(bmp.size(), 54) << name;
    EXPECT_EQ(bmp.left(2), QByteArray("BM")) << name;
    EXPECT_EQ(Le32(bmp, 2), static_cast<std::uint32_t>(bmp.size())) << name;
    const std::uint32_t pixelsAt = Le32(bmp, 10);
    EXPECT_GE(Le32(bmp, 14), 40u) << name;  // BITMAPINFOHEADER or later
    EXPECT_EQ(Le32(bmp, 18), 1687u) << name;
    EXPECT_EQ(Le32(bmp, 22), 881u) << name;   // positive: rows bottom up
    EXPECT_EQ(Le16(bmp, 26), 1) << name;
    const int bits = Le16(bmp, 28);
    EXPECT_TRUE(bits == 24 || bits == 32) << name;
    const std::uint32_t rowBytes = (1687u * static_cast<std::uint32_t>(bits) / 8u + 3u) & ~3u;
    EXPECT_EQ(pixelsAt + rowBytes * 881u, static_cast<std::uint32_t>(bmp.size())) << name;
    EXPECT_EQ(ReadPicture(name).size(), QSize(1687, 881)) << name;
  }
}

struct Wave {
  const char* name;
  double shortest, longest;  // seconds
};

TEST(Wav, SoundsArePcm16WithValidHeadersAndLengths) {
  const Wave waves[] = {{"intro.wav", 5.5, 6.5}, {"rolldice.wav", 0.3, 1.99}, {"message.wav", 0.1, 1.0}};
  for (const Wave& w : waves) {
    const QByteArray wav = ReadProgramFile(w.name);
    ASSERT_GT(wav.size(), 44) << w.name;
    EXPECT_EQ(wav.mid(0, 4), QByteArray("RIFF")) << w.name;
    EXPECT_EQ(Le32(wav, 4), static_cast<std::uint32_t>(wav.size() - 8)) << w.name;
    EXPECT_EQ(wav.mid(8, 4), QByteArray("WAVE")) << w.name;
    EXPECT_EQ(wav.mid(12, 4), QByteArray("fmt ")) << w.name;
    EXPECT_EQ(Le16(wav, 20), 1) << w.name;  // PCM
    const int channels = Le16(wav, 22);
    const std::uint32_t rate = Le32(wav, 24);
    EXPECT_EQ(Le16(wav, 34), 16) << w.name;
    EXPECT_EQ(Le32(wav, 28), rate * static_cast<std::uint32_t>(channels) * 2u) << w.name;
    EXPECT_EQ(wav.mid(36, 4), QByteArray("data")) << w.name;
    const std::uint32_t dataBytes = Le32(wav, 40);
    EXPECT_EQ(dataBytes + 44u, static_cast<std::uint32_t>(wav.size())) << w.name;
    const double seconds = static_cast<double>(dataBytes) / (rate * static_cast<double>(channels) * 2.0);
    EXPECT_GE(seconds, w.shortest) << w.name;
    EXPECT_LE(seconds, w.longest) << w.name;
    // Not silence.
    int loud = 0;
    for (int at = 44; at + 1 < wav.size(); at += 2)
      if (std::abs(static_cast<std::int16_t>(Le16(wav, at))) > 8000) ++loud;
    EXPECT_GT(loud, 10) << w.name;
  }
}

}  // namespace
