#include "GifWriter.h"

#include <gif_lib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace vk::art {
namespace {

constexpr int kMaxColours = 255;  // index 255 stays free for transparency

struct ColourCount {
  std::array<int, 3> rgb;
  std::int64_t count;
};

struct Box {
  std::vector<ColourCount> colours;
  std::int64_t weight() const {
    std::int64_t w = 0;
    for (const auto& c : colours) w += c.count;
    return w;
  }
  int LongestAxis(int* range) const {
    int best = 0;
    *range = -1;
    for (int axis = 0; axis < 3; ++axis) {
      int lo = 255, hi = 0;
      for (const auto& c : colours) {
        lo = std::min(lo, c.rgb[axis]);
        hi = std::max(hi, c.rgb[axis]);
      }
      if (hi - lo > *range) {
        *range = hi - lo;
        best = axis;
      }
    }
    return best;
  }
};

// Median cut over the distinct colours, weighted by how often they occur.
std::vector<QRgb> MedianCut(std::vector<ColourCount> colours) {
  std::vector<Box> boxes;
  boxes.push_back(Box{std::move(colours)});
  while (static_cast<int>(boxes.size()) < kMaxColours) {
    int pick = -1;
    double bestScore = 0;
    for (int i = 0; i < static_cast<int>(boxes.size()); ++i) {
      if (boxes[i].colours.size() < 2) continue;
      int range = 0;
      boxes[i].LongestAxis(&range);
      const double score = static_cast<double>(range) * static_cast<double>(boxes[i].weight());
      if (score > bestScore) {
        bestScore = score;
        pick = i;
      }
    }
    if (pick < 0) break;
    Box box = std::move(boxes[pick]);
    int range = 0;
    const int axis = box.LongestAxis(&range);
    std::sort(box.colours.begin(), box.colours.end(), [axis](const ColourCount& a, const ColourCount& b) {
      return a.rgb[axis] != b.rgb[axis] ? a.rgb[axis] < b.rgb[axis] : a.rgb < b.rgb;
    });
    const std::int64_t half = box.weight() / 2;
    std::int64_t run = 0;
    std::size_t cut = 1;
    for (std::size_t i = 0; i + 1 < box.colours.size(); ++i) {
      run += box.colours[i].count;
      cut = i + 1;
      if (run >= half) break;
    }
    Box upper{std::vector<ColourCount>(box.colours.begin() + static_cast<std::ptrdiff_t>(cut), box.colours.end())};
    box.colours.resize(cut);
    boxes[pick] = std::move(box);
    boxes.push_back(std::move(upper));
  }
  std::vector<QRgb> palette;
  for (const auto& box : boxes) {
    std::array<std::int64_t, 3> sum{0, 0, 0};
    const std::int64_t w = box.weight();
    for (const auto& c : box.colours)
      for (int a = 0; a < 3; ++a) sum[a] += c.rgb[a] * c.count;
    palette.push_back(qRgb(static_cast<int>((sum[0] + w / 2) / w), static_cast<int>((sum[1] + w / 2) / w),
                           static_cast<int>((sum[2] + w / 2) / w)));
  }
  return palette;
}

struct Indexed {
  std::vector<QRgb> palette;              // opaque colours, at most 255
  std::vector<std::uint8_t> pixels;       // row by row; 255 = transparent
  bool hasTransparency = false;
};

Indexed ToIndexed(const QImage& source) {
  const QImage image = source.convertToFormat(QImage::Format_ARGB32);
  const int w = image.width();
  const int h = image.height();
  std::unordered_map<QRgb, std::int64_t> histogram;
  Indexed out;
  for (int y = 0; y < h; ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < w; ++x) {
      if (qAlpha(line[x]) < 128) {
        out.hasTransparency = true;
        continue;
      }
      ++histogram[line[x] | 0xff000000u];
    }
  }
  std::vector<ColourCount> colours;
  colours.reserve(histogram.size());
  for (const auto& [rgb, count] : histogram) colours.push_back({{qRed(rgb), qGreen(rgb), qBlue(rgb)}, count});
  std::sort(colours.begin(), colours.end(), [](const ColourCount& a, const ColourCount& b) { return a.rgb < b.rgb; });
  if (colours.size() <= static_cast<std::size_t>(kMaxColours)) {
    for (const auto& c : colours) out.palette.push_back(qRgb(c.rgb[0], c.rgb[1], c.rgb[2]));
  } else {
    out.palette = MedianCut(std::move(colours));
  }
  std::unordered_map<QRgb, std::uint8_t> nearest;
  out.pixels.resize(static_cast<std::size_t>(w) * static_cast<std::size_t>(h));
  for (int y = 0; y < h; ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < w; ++x) {
      std::uint8_t index = 255;
      if (qAlpha(line[x]) >= 128) {
        const QRgb rgb = line[x] | 0xff000000u;
        auto found = nearest.find(rgb);
        if (found == nearest.end()) {
          int best = 0;
          long bestDistance = -1;
          for (int i = 0; i < static_cast<int>(out.palette.size()); ++i) {
            const long dr = qRed(rgb) - qRed(out.palette[i]);
            const long dg = qGreen(rgb) - qGreen(out.palette[i]);
            const long db = qBlue(rgb) - qBlue(out.palette[i]);
            const long d = 3 * dr * dr + 4 * dg * dg + 2 * db * db;
            if (bestDistance < 0 || d < bestDistance) {
              bestDistance = d;
              best = i;
            }
          }
          found = nearest.emplace(rgb, static_cast<std::uint8_t>(best)).first;
        }
        index = found->second;
      }
      out.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(w) + static_cast<std::size_t>(x)] = index;
    }
  }
  return out;
}

}  // namespace

bool WriteGif(const QImage& picture, const QString& path) {
  const Indexed indexed = ToIndexed(picture);
  // The colour table of a GIF has a power of two entries; the transparent
  // index is always 255, so a picture with transparency takes all 256.
  int tableSize = 2;
  while (tableSize < static_cast<int>(indexed.palette.size())) tableSize *= 2;
  if (indexed.hasTransparency) tableSize = 256;
  std::vector<GifColorType> table(static_cast<std::size_t>(tableSize), GifColorType{0, 0, 0});
  for (std::size_t i = 0; i < indexed.palette.size(); ++i)
    table[i] = GifColorType{static_cast<GifByteType>(qRed(indexed.palette[i])),
                            static_cast<GifByteType>(qGreen(indexed.palette[i])),
                            static_cast<GifByteType>(qBlue(indexed.palette[i]))};

  int error = 0;
  GifFileType* gif = EGifOpenFileName(path.toLocal8Bit().constData(), false, &error);
  if (gif == nullptr) return false;
  EGifSetGifVersion(gif, true);
  ColorMapObject* map = GifMakeMapObject(tableSize, table.data());
  bool ok = map != nullptr;
  const int w = picture.width();
  const int h = picture.height();
  ok = ok && EGifPutScreenDesc(gif, w, h, 8, 0, map) == GIF_OK;
  if (ok) {
    GraphicsControlBlock gcb{};
    gcb.DisposalMode = DISPOSAL_UNSPECIFIED;
    gcb.UserInputFlag = false;
    gcb.DelayTime = 0;
    gcb.TransparentColor = indexed.hasTransparency ? 255 : NO_TRANSPARENT_COLOR;
    GifByteType block[4];
    EGifGCBToExtension(&gcb, block);
    ok = EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, 4, block) == GIF_OK;
  }
  ok = ok && EGifPutImageDesc(gif, 0, 0, w, h, false, nullptr) == GIF_OK;
  std::vector<GifPixelType> line(static_cast<std::size_t>(w));
  for (int y = 0; ok && y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      const std::uint8_t i =
          indexed.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(w) + static_cast<std::size_t>(x)];
      // Without transparency index 255 never occurs; a table smaller than
      // 256 entries never sees an index outside it.
      line[static_cast<std::size_t>(x)] = i;
    }
    ok = EGifPutLine(gif, line.data(), w) == GIF_OK;
  }
  if (map != nullptr) GifFreeMapObject(map);
  if (EGifCloseFile(gif, &error) != GIF_OK) ok = false;
  return ok;
}

}  // namespace vk::art
