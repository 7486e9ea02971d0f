#include "shell/Settings.h"

#include "link/ExternalPrefix.h"
#include "shell/Global.h"

#include <QDir>
#include <QSettings>
#include <QStringList>

namespace vk {

QString SettingsFilePath()
{
    QString home = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (home.isEmpty() || QDir::isRelativePath(home))
        home = QDir::homePath() + QStringLiteral("/.config");
    return home + QLatin1Char('/') + Global().AppTitle + QLatin1Char('/') + Global().AppTitle +
           QStringLiteral(".conf");
}

QString GetSetting(const QString& key, const QString& defaultValue)
{
    QSettings settings(SettingsFilePath(), QSettings::IniFormat);
    settings.beginGroup(Global().SettingsSection);
    const QVariant value = settings.value(key);
    // A value typed by hand with a comma in it reads back as a list.
    const QString text = value.typeId() == QMetaType::QStringList ? value.toStringList().join(QLatin1Char(','))
                                                                  : value.toString();
    return text.isEmpty() ? defaultValue : text;
}

QString SlotKey(int slot, const QString& key)
{
    return QString::fromStdString(ExternalPrefix(slot)) + key;
}

QString FlagText(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

void SaveSetting(const QString& key, const QString& value)
{
    QSettings settings(SettingsFilePath(), QSettings::IniFormat);
    settings.beginGroup(Global().SettingsSection);
    settings.setValue(key, value);
    settings.endGroup();
    settings.sync();
}

} // namespace vk
