#include "ProgramFiles.h"

#include "BoardPicture.h"
#include "CardPictures.h"
#include "GifWriter.h"
#include "SmallPictures.h"
#include "Sounds.h"
#include "SplashPicture.h"
#include "VehiclePicture.h"
#include "VehicleTags.h"
#include "WavWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <cstdio>

namespace vk::art {
namespace {

class Writer {
 public:
  explicit Writer(const QString& root) : root_(root) {}

  bool Gif(const QString& name, const QImage& picture) {
    return Done(name, Prepare(name) && WriteGif(picture, Path(name)));
  }
  bool Bmp(const QString& name, const QImage& picture) {
    return Done(name, Prepare(name) && picture.convertToFormat(QImage::Format_RGB888).save(Path(name), "BMP"));
  }
  bool Wav(const QString& name, const std::vector<std::int16_t>& samples) {
    return Done(name, Prepare(name) && WriteWav(samples, kSoundRate, Path(name)));
  }
  bool Copy(const QString& name, const QString& source) {
    bool ok = Prepare(name);
    if (ok) {
      QFile::remove(Path(name));
      ok = QFile::copy(source, Path(name));
      if (ok) QFile(Path(name)).setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                               QFileDevice::ReadGroup | QFileDevice::ReadOther);
    }
    return Done(name, ok);
  }
  bool ok() const { return ok_; }
  const QStringList& written() const { return written_; }

 private:
  QString Path(const QString& name) const { return root_ + "/" + name; }
  bool Prepare(const QString& name) const { return QDir().mkpath(QFileInfo(Path(name)).absolutePath()); }
  bool Done(const QString& name, bool ok) {
    if (ok) {
      written_ << name;
    } else {
      std::fprintf(stderr, "valkenhorn-artgen: could not write %s\n", qPrintable(Path(name)));
      ok_ = false;
    }
    return ok;
  }

  QString root_;
  QStringList written_;
  bool ok_ = true;
};

QString TwoDigits(int n) { return QString("%1").arg(n, 2, 10, QChar('0')); }

void WriteMines(Writer& out, const QString& folder, bool turned) {
  const QString prefix = folder.isEmpty() ? QString() : folder + "/";
  for (int side = 1; side <= 2; ++side) {
    const QString base = prefix + QString("mijn_%1_").arg(side);
    out.Gif(base + "l.gif", DrawLaidMine(side, 1, turned));
    out.Gif(base + "u.gif", DrawLaidMine(side, 2, turned));
    out.Gif(base + "r.gif", DrawLaidMine(side, 3, turned));
    QImage stored = DrawStoredMine(side);
    if (turned) stored = TurnHalfCircle(stored);
    out.Gif(base + "top.gif", stored);
  }
}

}  // namespace

QStringList WriteProgramFiles(const QString& programFolder, const QString& helpSources) {
  Writer out(programFolder);

  out.Gif("splash.gif", DrawSplash());
  for (int value = 1; value <= 6; ++value) out.Gif(QString("dice%1.gif").arg(value), DrawDie(value));
  for (int side = 1; side <= 2; ++side) out.Gif(QString("compagnie_%1.gif").arg(side), DrawCompany(side));
  WriteMines(out, QString(), false);

  out.Wav("intro.wav", IntroSound());
  out.Wav("rolldice.wav", DiceSound());
  out.Wav("message.wav", MessageSound());

  out.Copy("help/rules.html", helpSources + "/rules.html");
  out.Copy("help/sharebox.html", helpSources + "/sharebox.html");

  for (int card = 1; card <= 20; ++card) out.Gif("kompas/raya_" + TwoDigits(card) + ".gif", DrawRadioYamboCard(card));
  for (int card = 21; card <= 32; ++card)
    out.Gif("kompas/pers_" + TwoDigits(card - 20) + ".gif", DrawPersonnelCard(card));
  out.Gif("kompas/back.gif", DrawCardBack());

  const QImage board = DrawBoard();
  out.Bmp(QString(kGreenFolder) + "/yambo_1.bmp", board);
  out.Bmp(QString(kBrownFolder) + "/yambo_2.bmp", TurnHalfCircle(board));

  for (const VehicleLook& look : AllVehicleLooks()) {
    const QString name = QString::fromStdString(look.tag) + ".gif";
    out.Gif(QString(kGreenFolder) + "/" + name, DrawVehicle(look, false));
    out.Gif(QString(kBrownFolder) + "/" + name, DrawVehicle(look, true));
  }
  // The army folders carry the mines and companies of their view as well.
  WriteMines(out, kGreenFolder, false);
  WriteMines(out, kBrownFolder, true);
  for (int side = 1; side <= 2; ++side) {
    out.Gif(QString(kGreenFolder) + QString("/compagnie_%1.gif").arg(side), DrawCompany(side));
    out.Gif(QString(kBrownFolder) + QString("/compagnie_%1.gif").arg(side), TurnHalfCircle(DrawCompany(side)));
  }

  if (!out.ok()) return {};
  return out.written();
}

}  // namespace vk::art
