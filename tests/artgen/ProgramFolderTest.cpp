#include "ProgramFolder.h"

#include <QFileInfo>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

// Every file the program opens by name beside itself.
QStringList NamedFiles() {
  QStringList names = {"splash.gif", "compagnie_1.gif", "compagnie_2.gif", "intro.wav", "rolldice.wav",
                       "message.wav", "help/rules.html", "help/sharebox.html", "kompas/back.gif",
                       "groen_leger/yambo_1.bmp", "bruin_leger/yambo_2.bmp"};
  for (int i = 1; i <= 6; ++i) names << QString("dice%1.gif").arg(i);
  for (const char* side : {"1", "2"})
    for (const char* kind : {"l", "u", "r", "top"}) names << QString("mijn_%1_%2.gif").arg(side, kind);
  for (int i = 1; i <= 20; ++i) names << QString("kompas/raya_%1.gif").arg(i, 2, 10, QChar('0'));
  for (int i = 1; i <= 12; ++i) names << QString("kompas/pers_%1.gif").arg(i, 2, 10, QChar('0'));
  return names;
}

TEST(ProgramFolder, EveryNamedFileExistsAndIsNotEmpty) {
  for (const QString& name : NamedFiles()) {
    const QFileInfo info(ProgramPath(name));
    EXPECT_TRUE(info.isFile()) << name.toStdString();
    EXPECT_GT(info.size(), 40) << name.toStdString();
  }
}

TEST(ProgramFolder, CardNamesStopAtTwentyAndTwelve) {
  EXPECT_FALSE(QFileInfo::exists(ProgramPath("kompas/raya_21.gif")));
  EXPECT_FALSE(QFileInfo::exists(ProgramPath("kompas/pers_13.gif")));
  EXPECT_FALSE(QFileInfo::exists(ProgramPath("kompas/raya_00.gif")));
}

TEST(ProgramFolder, ArmyFoldersCarryTheMinesOfTheirView) {
  for (const char* folder : {"groen_leger", "bruin_leger"})
    for (const char* side : {"1", "2"})
      for (const char* kind : {"l", "u", "r", "top"})
        EXPECT_TRUE(QFileInfo::exists(ProgramPath(QString("%1/mijn_%2_%3.gif").arg(folder, side, kind))))
            << folder << " " << side << " " << kind;
}

TEST(HelpPages, RulesPageIsDutchAndCoversTheGame) {
  const QString page = QString::fromUtf8(ReadProgramFile("help/rules.html"));
  ASSERT_FALSE(page.isEmpty());
  EXPECT_TRUE(page.contains("lang=\"nl\""));
  for (const char* word : {"dobbelsteen", "kamp", "HQ", "schieten", "gevangen", "jeep", "mijn", "vlag", "Radio Yambo",
                           "Personnel", "voorpost", "vijf vlaggen", "25 kompagnie", "Spel Stoppen", "bewaren"})
    EXPECT_TRUE(page.contains(QString::fromUtf8(word), Qt::CaseInsensitive)) << word;
}

TEST(HelpPages, SharePageExplainsTheSharedFolderStepByStep) {
  const QString page = QString::fromUtf8(ReadProgramFile("help/sharebox.html"));
  ASSERT_FALSE(page.isEmpty());
  EXPECT_TRUE(page.contains("lang=\"nl\""));
  for (const char* word : {"gedeelde map", "synchronisatiedienst", "Linux", "Map toevoegen...", "Aanwezig",
                           "Uitnodigen", "Spel Starten", "<ol>"})
    EXPECT_TRUE(page.contains(QString::fromUtf8(word))) << word;
}

TEST(HelpPages, NameNoProduct) {
  for (const char* name : {"help/rules.html", "help/sharebox.html"}) {
    const QString page = QString::fromUtf8(ReadProgramFile(name));
    EXPECT_FALSE(page.contains("Valkenhorn", Qt::CaseInsensitive)) << name;
    EXPECT_FALSE(page.contains("dropbox", Qt::CaseInsensitive)) << name;
  }
}

}  // namespace
