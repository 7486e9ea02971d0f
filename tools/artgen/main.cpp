// valkenhorn-artgen: draws the pictures, synthesises the sounds and copies the
// help pages of the program folder, or writes contact sheets of a finished
// program folder.
//
//   valkenhorn-artgen --out <program folder> --help-sources <dir> [--stamp <file>]
//   valkenhorn-artgen --contact-sheets <program folder> <sheet folder> [--scale N]
//   valkenhorn-artgen --icons <folder>   (the icon theme's files: <folder>/hicolor/...)

#include "ContactSheets.h"
#include "IconPicture.h"
#include "ProgramFiles.h"

#include <QFile>
#include <QGuiApplication>
#include <QStringList>

#include <cstdio>

namespace {

int Usage() {
  std::fprintf(stderr,
               "usage: valkenhorn-artgen --out <program folder> --help-sources <dir> [--stamp <file>]\n"
               "       valkenhorn-artgen --contact-sheets <program folder> <sheet folder> [--scale N]\n"
               "       valkenhorn-artgen --icons <folder>\n");
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  // Text needs the font database of a GUI application; no window is shown.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  const QStringList args = app.arguments();

  const int icons = static_cast<int>(args.indexOf("--icons"));
  if (icons > 0) {
    if (icons + 1 >= args.size()) return Usage();
    return vk::art::WriteIcons(args[icons + 1]).isEmpty() ? 1 : 0;
  }

  const int sheets = static_cast<int>(args.indexOf("--contact-sheets"));
  if (sheets > 0) {
    if (sheets + 2 >= args.size()) return Usage();
    int scale = 2;
    const int scaleAt = static_cast<int>(args.indexOf("--scale"));
    if (scaleAt > 0 && scaleAt + 1 < args.size()) scale = std::max(1, args[scaleAt + 1].toInt());
    return vk::art::WriteContactSheets(args[sheets + 1], args[sheets + 2], scale) ? 0 : 1;
  }

  const int out = static_cast<int>(args.indexOf("--out"));
  const int help = static_cast<int>(args.indexOf("--help-sources"));
  if (out <= 0 || help <= 0 || out + 1 >= args.size() || help + 1 >= args.size()) return Usage();
  const QStringList written = vk::art::WriteProgramFiles(args[out + 1], args[help + 1]);
  if (written.isEmpty()) return 1;
  std::printf("valkenhorn-artgen: %lld files in %s\n", static_cast<long long>(written.size()),
              qPrintable(args[out + 1]));

  const int stamp = static_cast<int>(args.indexOf("--stamp"));
  if (stamp > 0 && stamp + 1 < args.size()) {
    QFile file(args[stamp + 1]);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return 1;
    file.write(written.join('\n').toUtf8());
    file.write("\n");
  }
  return 0;
}
