#include "support/AccessPoint.h"

#include "common/CommonUtils.h"
#include "support/Requests.h"
#include "support/Secret.h"

#include <qrvl.h>

#include <memory>

namespace {

constexpr QLatin1String NameKey("name");
constexpr QLatin1String UserKey("user");
constexpr QLatin1String PasswordKey("password");
constexpr QLatin1String HomeOnlyKey("homeonly");
constexpr QLatin1String IsSet("true");
constexpr QLatin1String IsNotSet("false");

constexpr int LongestIdentity = 23; // of Handle_IMEI_Hash()

/// The section of a SIM card's settings, whose name does not show the IMSI.
QString sectionFor(const Modem& modem)
{
    constexpr int tokenSize = 44;
    char token[tokenSize] = {};
    CommonUtils::Handle_IMEI_Hash(modem.imsi.toLatin1().constData(), token);
    return QLatin1String("accesspoint ") + QString::fromLatin1(token, tokenSize);
}

/// CommonUtils::GetUserSettings() would log a warning if nothing has been stored.
bool isStored(const QString& section)
{
    char16_t* value = nullptr;
    const long result = QRVL_GetUserSettings(utf16(section), utf16(HomeOnlyKey), &value);
    const std::unique_ptr<char16_t[]> owned(value);
    return result == QRVL_OK;
}

} // namespace

bool AccessPoint::isStorable(const Modem& modem)
{
    return !modem.imsi.isEmpty() && modem.imsi.size() <= LongestIdentity;
}

AccessPoint AccessPoint::load(const Modem& modem)
{
    AccessPoint accessPoint;
    if (!isStorable(modem))
        return accessPoint;
    const QString section = sectionFor(modem);
    if (!isStored(section))
        return accessPoint;
    accessPoint.isHomeOnly = CommonUtils::GetUserSettings(section, HomeOnlyKey) == IsSet;
    accessPoint.name = CommonUtils::GetUserSettings(section, NameKey);
    accessPoint.user = CommonUtils::GetUserSettings(section, UserKey);
    accessPoint.protectedPassword = CommonUtils::GetUserSettings(section, PasswordKey);
    return accessPoint;
}

void AccessPoint::save(const Modem& modem) const
{
    if (!isStorable(modem))
        return;
    const QString section = sectionFor(modem);
    CommonUtils::SetSettings(section, NameKey, name);
    CommonUtils::SetSettings(section, UserKey, user);
    CommonUtils::SetSettings(section, PasswordKey, protectedPassword);
    CommonUtils::SetSettings(section, HomeOnlyKey, isHomeOnly ? IsSet : IsNotSet);
}

QString AccessPoint::password(const Modem& modem) const
{
    return plainText(protectedPassword, modem.imsi.toLatin1());
}

void AccessPoint::setPassword(const Modem& modem, const QString& plain)
{
    protectedPassword = protectedText(plain, modem.imsi.toLatin1());
}
