#include "common/CommonUtils.h"

#include "common/Log.h"
#include "common/settings/DeviceSettings_p.h"

#include <qrvl.h>

namespace {

/// The log lines of both readers name QRVL_GetSettings.
QString readSetting(DeviceSettings::Read read, const QString& section, const QString& key,
                    const char* function)
{
    QString value;
    const long result = DeviceSettings::read(read, section, key, value);
    LOG_DEBUG("%s: %s: %s: QRVL_GetSettings (%s, %s) returned %li", LOG_TIME, LOG_FILE, function,
              qUtf8Printable(section), qUtf8Printable(key), result);
    if (value.isNull())
        LOG_WARNING("%s: %s: %s: QRVL_GetSettings returned %li", LOG_TIME, LOG_FILE, function, result);
    return value;
}

} // namespace

QString CommonUtils::GetSettings(QString section, QString key)
{
    return readSetting(QRVL_GetSettings, section, key, LOG_FUNCTION);
}

QString CommonUtils::GetUserSettings(QString section, QString key)
{
    return readSetting(QRVL_GetUserSettings, section, key, LOG_FUNCTION);
}

bool CommonUtils::SetSettings(QString section, QString key, QString value)
{
    const long result = QRVL_SetSettings(DeviceSettings::utf16(section), DeviceSettings::utf16(key),
                                         DeviceSettings::utf16(value));
    LOG_DEBUG("%s: %s: %s: QRVL_SetSettings (%s, %s) returned %li", LOG_TIME, LOG_FILE, LOG_FUNCTION,
              qUtf8Printable(section), qUtf8Printable(key), result);
    return result != 0;
}
