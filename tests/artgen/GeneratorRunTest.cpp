#include "ProgramFolder.h"

#include <QDirIterator>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// A second run of the generator writes exactly the same files: a rebuild
// never changes the program folder unless the tool or the tables changed.
TEST(Generator, SecondRunWritesTheSameFiles) {
  QTemporaryDir out;
  ASSERT_TRUE(out.isValid());
  QProcess tool;
  tool.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  tool.start(VALKENHORN_ARTGEN, {"--out", out.path(), "--help-sources", VALKENHORN_HELP_SOURCES});
  ASSERT_TRUE(tool.waitForFinished(120000));
  ASSERT_EQ(tool.exitStatus(), QProcess::NormalExit);
  ASSERT_EQ(tool.exitCode(), 0);

  int compared = 0;
  QDirIterator it(out.path(), QDir::Files, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QString path = it.next();
    const QString name = QDir(out.path()).relativeFilePath(path);
    QFile fresh(path);
    ASSERT_TRUE(fresh.open(QIODevice::ReadOnly));
    EXPECT_EQ(fresh.readAll(), ReadProgramFile(name)) << name.toStdString();
    ++compared;
  }
  EXPECT_GT(compared, 1000);
}

TEST(Generator, RefusesToRunWithoutAFolder) {
  QProcess tool;
  tool.start(VALKENHORN_ARTGEN, {"--help-sources", VALKENHORN_HELP_SOURCES});
  ASSERT_TRUE(tool.waitForFinished(60000));
  EXPECT_NE(tool.exitCode(), 0);
}

}  // namespace
