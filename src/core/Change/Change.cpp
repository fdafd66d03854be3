#include "Change/Change.h"

#include "common/CommonUtils.h"
#include "common/DeviceSettings.h"
#include "common/Log.h"

#include <qrvl.h>

#include <QMutex>
#include <QMutexLocker>

namespace {

QMutex languageMutex; ///< guards the name of the current language

QString& languageName()
{
    static QString name = QStringLiteral("en-us");
    return name;
}

QString currentLanguage()
{
    const QMutexLocker locker(&languageMutex);
    return languageName();
}

void setCurrentLanguage(const QString& name)
{
    const QMutexLocker locker(&languageMutex);
    languageName() = name;
}

/// The setting that keeps the active language.
struct ActiveLanguage
{
    QString section = QStringLiteral("language");
    QString key = QStringLiteral("active");
};

} // namespace

bool Change::LoadLangFile(QString const& plugin)
{
    const QString path = CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/") + plugin +
                         QLatin1Char('/') + plugin + QLatin1Char('_') + currentLanguage() +
                         QLatin1String(".lang");
    LOG_DEBUG("%s: %s: loading %s", LOG_FILE, LOG_FUNCTION, qUtf8Printable(path));
    LOG_DEBUG("File %s does not exist", qUtf8Printable(path)); // no plugin ships one yet
    return false;
}

QString Change::Stratup_tr(QString const&, QString const&)
{
    return {};
}

void Change::SetLangName(QString const& name)
{
    setCurrentLanguage(name);
    const ActiveLanguage setting;
    const QString stored = QLatin1Char('_') + name; // "_en-us"
    QRVL_SetSettings(DeviceSettings::utf16(setting.section), DeviceSettings::utf16(setting.key),
                     DeviceSettings::utf16(stored));
}

QString Change::GetLangName()
{
    return currentLanguage();
}

QString Change::GetSettingDefaultLang()
{
    const ActiveLanguage setting;
    QString stored;
    DeviceSettings::read(QRVL_GetSettings, setting.section, setting.key, stored);
    setCurrentLanguage(stored.mid(1)); // without the leading underscore
    return currentLanguage();
}
