#include "Change/Change.h"

#include "common/CommonUtils.h"
#include "common/DeviceSettings.h"
#include "common/Log.h"

#include <qrvl.h>

#include <QMutex>
#include <QMutexLocker>

namespace {

QMutex languageMutex;

struct Language
{
    QString name = QStringLiteral("en-us");
};

Language& language()
{
    static Language current;
    return current;
}

/// The active language is stored with a leading underscore: "_en-us".
const QString& section()
{
    static const QString text = QStringLiteral("language");
    return text;
}

const QString& activeKey()
{
    static const QString text = QStringLiteral("active");
    return text;
}

} // namespace

bool Change::LoadLangFile(QString const& plugin)
{
    const QString path = CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/") + plugin +
                         QLatin1Char('/') + plugin + QLatin1Char('_') + language().name +
                         QLatin1String(".lang");
    LOG_DEBUG("%s: %s: loading %s", LOG_FILE, LOG_FUNCTION, qUtf8Printable(path));
    LOG_DEBUG("File %s does not exist", qUtf8Printable(path));
    return false;
}

QString Change::Stratup_tr(QString const&, QString const&)
{
    return {};
}

void Change::SetLangName(QString const& name)
{
    const QMutexLocker locker(&languageMutex);
    language().name = name;
    const QString stored = QLatin1Char('_') + name;
    QRVL_SetSettings(DeviceSettings::utf16(section()), DeviceSettings::utf16(activeKey()),
                     DeviceSettings::utf16(stored));
}

QString Change::GetLangName()
{
    return language().name;
}

QString Change::GetSettingDefaultLang()
{
    QString stored;
    DeviceSettings::read(QRVL_GetSettings, section(), activeKey(), stored);
    language().name = stored.mid(1);
    return language().name;
}
