#include "shell/Settings.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class SettingsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        old = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    }
    void TearDown() override { qputenv("XDG_CONFIG_HOME", old); }

    QString FilePath() const { return home.path() + QStringLiteral("/Valkenhorn/Valkenhorn.conf"); }
    QByteArray FileText() const
    {
        QFile file(FilePath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void PutFile(const QByteArray& text) const
    {
        QDir().mkpath(home.path() + QStringLiteral("/Valkenhorn"));
        QFile file(FilePath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text);
    }

    QTemporaryDir home;
    QByteArray old;
};

TEST_F(SettingsTest, FileLivesInTheConfigHome)
{
    EXPECT_EQ(vk::SettingsFilePath(), FilePath());
}

TEST_F(SettingsTest, SaveWritesTheKeyIntoTheDropBoxGroupAtOnce)
{
    vk::SaveSetting(QStringLiteral("LocalUser"), QStringLiteral("anna"));
    const QByteArray text = FileText();
    EXPECT_TRUE(text.contains("[DropBox]")) << text.constData();
    EXPECT_TRUE(text.contains("LocalUser=anna")) << text.constData();
    EXPECT_EQ(vk::GetSetting(QStringLiteral("LocalUser")), QStringLiteral("anna"));
}

TEST_F(SettingsTest, MissingKeyGivesTheDefault)
{
    EXPECT_EQ(vk::GetSetting(QStringLiteral("ExtUsersCount"), QStringLiteral("0")), QStringLiteral("0"));
    EXPECT_EQ(vk::GetSetting(QStringLiteral("01External_User"), QStringLiteral("01ExtSpeler")),
              QStringLiteral("01ExtSpeler"));
    EXPECT_EQ(vk::GetSetting(QStringLiteral("LocalID")), QString());
}

TEST_F(SettingsTest, KeySavedEmptyReadsLikeAMissingOne)
{
    vk::SaveSetting(QStringLiteral("02External_User"), QString());
    EXPECT_EQ(vk::GetSetting(QStringLiteral("02External_User"), QStringLiteral("02ExtSpeler")),
              QStringLiteral("02ExtSpeler"));
}

TEST_F(SettingsTest, KeysWrittenByHandBeforeAStartAreRead)
{
    PutFile("[DropBox]\nLocalID=0A1B2C3D4E5F\nExtUsersCount=2\n01Folder=/tmp/gedeeld, met komma\n"
            "01Active=True\n");
    EXPECT_EQ(vk::GetSetting(QStringLiteral("LocalID")), QStringLiteral("0A1B2C3D4E5F"));
    EXPECT_EQ(vk::GetSetting(QStringLiteral("ExtUsersCount"), QStringLiteral("0")), QStringLiteral("2"));
    EXPECT_EQ(vk::GetSetting(QStringLiteral("01Active"), QStringLiteral("False")), QStringLiteral("True"));
    EXPECT_TRUE(vk::GetSetting(QStringLiteral("01Folder")).startsWith(QStringLiteral("/tmp/gedeeld,")));
}

TEST_F(SettingsTest, PathsWithBlanksAndQuotesSurviveARoundTrip)
{
    const QString folder = QStringLiteral("/tmp/Mijn \"gedeelde\" map, 2");
    vk::SaveSetting(QStringLiteral("01Folder"), folder);
    EXPECT_EQ(vk::GetSetting(QStringLiteral("01Folder")), folder);
}

} // namespace
