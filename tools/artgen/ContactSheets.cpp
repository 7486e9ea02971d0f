#include "ContactSheets.h"

#include "ProgramFiles.h"
#include "VehicleTags.h"
#include "board/BoardState.h"
#include "board/BoardTables.h"
#include "board/BoardView.h"
#include "board/VehicleTag.h"

#include <algorithm>

#include <QDir>
#include <QFont>
#include <QImage>
#include <QPainter>

#include <cstdio>
#include <map>
#include <vector>

namespace vk::art {
namespace {

bool Load(QImage& image, const QString& path) {
  if (image.load(path)) return true;
  std::fprintf(stderr, "valkenhorn-artgen: cannot read %s\n", qPrintable(path));
  return false;
}

QFont SheetFont(int px, bool bold = false) {
  QFont font("DejaVu Sans");
  font.setPixelSize(px);
  font.setBold(bold);
  return font;
}

bool VehicleSheet(const QString& program, const QString& target, int scale) {
  // One row per folder, side, type and mark; the counts and headings across.
  struct Row {
    QString label;
    std::vector<QString> tags;
  };
  std::vector<std::pair<QString, Row>> rows;
  std::map<QString, std::size_t> rowIndex;
  for (const VehicleLook& look : AllVehicleLooks()) {
    const QString label = QString("%1 leger %2, %3").arg(look.side == 1 ? "groen" : "bruin")
                              .arg(QString::fromUtf8(vk::VehicleTypeWord(look.slot)))
                              .arg(look.mark < 0 ? QString("geen merkteken") : QString("merkteken %1").arg(look.mark));
    const QString type = QString::fromUtf8(vk::VehicleTypeWord(look.slot)) + QString::number(look.side) + QString::number(look.mark);
    auto found = rowIndex.find(type);
    if (found == rowIndex.end()) {
      rowIndex[type] = rows.size();
      rows.push_back({type, Row{label, {}}});
      found = rowIndex.find(type);
    }
    rows[found->second].second.tags.push_back(QString::fromStdString(look.tag));
  }
  std::size_t widest = 0;
  for (const auto& r : rows) widest = std::max(widest, r.second.tags.size());
  const int cell = 54 * scale;
  const int labelWidth = 230;
  const int rowHeight = 54 * scale + 16;
  const int folderGap = 40;
  const int width = labelWidth + static_cast<int>(widest) * cell + 20;
  const int height = 2 * (static_cast<int>(rows.size()) * rowHeight + folderGap) + 20;
  QImage sheet(width, height, QImage::Format_RGB32);
  sheet.fill(QColor(206, 206, 150));
  QPainter p(&sheet);
  p.setRenderHint(QPainter::SmoothPixmapTransform, false);
  int y = 10;
  bool ok = true;
  for (const char* folder : {kGreenFolder, kBrownFolder}) {
    p.setFont(SheetFont(16, true));
    p.setPen(Qt::black);
    p.drawText(QRect(10, y, width - 20, folderGap - 10), Qt::AlignVCenter, QString("map %1").arg(folder));
    y += folderGap;
    for (const auto& [type, row] : rows) {
      p.setFont(SheetFont(12));
      p.setPen(Qt::black);
      p.drawText(QRect(6, y, labelWidth - 10, rowHeight), Qt::AlignVCenter | Qt::TextWordWrap, row.label);
      int x = labelWidth;
      for (const QString& tag : row.tags) {
        QImage picture;
        ok = Load(picture, program + "/" + folder + "/" + tag + ".gif") && ok;
        const QImage big = picture.scaled(picture.size() * scale);
        p.drawImage(QPoint(x + (cell - big.width()) / 2, y + (54 * scale - big.height()) / 2), big);
        p.setFont(SheetFont(9));
        p.drawText(QRect(x, y + 54 * scale, cell, 14), Qt::AlignCenter, tag.section('_', 2));
        x += cell;
      }
      y += rowHeight;
    }
  }
  p.end();
  return sheet.save(target + "/vehicles.png") && ok;
}

bool CardSheet(const QString& program, const QString& target, int scale) {
  std::vector<QString> names;
  for (int i = 1; i <= 20; ++i) names.push_back(QString("kompas/raya_%1.gif").arg(i, 2, 10, QChar('0')));
  for (int i = 1; i <= 12; ++i) names.push_back(QString("kompas/pers_%1.gif").arg(i, 2, 10, QChar('0')));
  names.push_back("kompas/back.gif");
  for (int i = 1; i <= 6; ++i) names.push_back(QString("dice%1.gif").arg(i));
  for (const char* m : {"mijn_1_l", "mijn_1_u", "mijn_1_r", "mijn_1_top", "mijn_2_l", "mijn_2_u", "mijn_2_r",
                        "mijn_2_top", "compagnie_1", "compagnie_2"})
    names.push_back(QString(m) + ".gif");
  const int columns = 6;
  const int cellW = 120 * scale;
  const int cellH = 110 * scale + 16;
  const int rowsNeeded = (static_cast<int>(names.size()) + columns - 1) / columns;
  QImage sheet(columns * cellW + 20, rowsNeeded * cellH + 20, QImage::Format_RGB32);
  sheet.fill(QColor(90, 90, 96));
  QPainter p(&sheet);
  bool ok = true;
  for (std::size_t i = 0; i < names.size(); ++i) {
    QImage picture;
    ok = Load(picture, program + "/" + names[i]) && ok;
    const int x = 10 + static_cast<int>(i % columns) * cellW;
    const int y = 10 + static_cast<int>(i / columns) * cellH;
    const QImage big = picture.scaled(picture.size() * scale);
    p.drawImage(QPoint(x + (cellW - big.width()) / 2, y + (110 * scale - big.height()) / 2), big);
    p.setPen(Qt::white);
    p.setFont(SheetFont(11));
    p.drawText(QRect(x, y + 110 * scale, cellW, 16), Qt::AlignCenter, names[i]);
  }
  p.end();
  return sheet.save(target + "/cards.png") && ok;
}

QRect Px(const PlacedBox& b) { return QRect(b.Left / 15, b.Top / 15, b.Width / 15, b.Height / 15); }

// The board with both armies in their starting places, as the window shows
// it in the view of `boardSide`.
bool BoardSheet(const QString& program, const QString& target, int boardSide) {
  const QString folder = program + "/" + (boardSide == 1 ? kGreenFolder : kBrownFolder);
  QImage board;
  if (!Load(board, folder + (boardSide == 1 ? "/yambo_1.bmp" : "/yambo_2.bmp"))) return false;
  board = board.convertToFormat(QImage::Format_RGB32);
  QPainter p(&board);
  const BoardView view{boardSide, vk::kBoardWidth, vk::kBoardHeight};
  bool ok = true;
  for (int side = 1; side <= 2; ++side) {
    for (int slot = 0; slot < vk::kVehicleSlots; ++slot) {
      const PlacedBox box = slot == vk::kJeepSlot ? IslandBox(view, side) : CampPlaceBox(view, side, slot);
      QImage picture;
      ok = Load(picture, folder + "/" + QString::fromStdString(StartingTag(side, slot)) + ".gif") && ok;
      p.drawImage(Px(box).topLeft(), picture);
    }
    for (int mine = 0; mine < 5; ++mine) {
      QImage picture;
      ok = Load(picture, folder + QString("/mijn_%1_top.gif").arg(side)) && ok;
      p.drawImage(Px(StoredMineBoxOnRedraw(view, side, mine)).topLeft(), picture);
    }
  }
  // A few pieces on the road, to see them on the squares.
  struct OnRoad {
    int side, slot, field, heading, companies, mark;
  };
  const OnRoad samples[] = {{1, 0, 20, 1, 4, 0}, {1, 3, 36, 0, 3, 1}, {2, 6, 44, 3, 2, 1}, {2, 8, 98, 2, 1, 2},
                            {1, 10, 81, 3, 2, 0}, {2, 1, 63, 0, -1, 0}};
  for (const OnRoad& s : samples) {
    QImage picture;
    const std::string tag = MakeVehicleTag(s.slot, s.side, s.companies, s.mark, s.heading);
    ok = Load(picture, folder + "/" + QString::fromStdString(tag) + ".gif") && ok;
    p.drawImage(Px(VehicleOnFieldBox(view, s.field, s.heading)).topLeft(), picture);
  }
  for (int field : {5, 57}) {
    QImage picture;
    const int side = field == 5 ? 2 : 1;
    ok = Load(picture, folder + "/" + QString::fromStdString(LaidMineImage(side, field))) && ok;
    p.drawImage(Px(LaidMineBox(view, field)).topLeft(), picture);
  }
  p.end();
  return board.save(target + (boardSide == 1 ? "/board.png" : "/board_turned.png")) && ok;
}

}  // namespace

bool WriteContactSheets(const QString& programFolder, const QString& sheetFolder, int scale) {
  if (!QDir().mkpath(sheetFolder)) return false;
  bool ok = VehicleSheet(programFolder, sheetFolder, scale);
  ok = CardSheet(programFolder, sheetFolder, scale) && ok;
  ok = BoardSheet(programFolder, sheetFolder, 1) && ok;
  ok = BoardSheet(programFolder, sheetFolder, 2) && ok;
  return ok;
}

}  // namespace vk::art
