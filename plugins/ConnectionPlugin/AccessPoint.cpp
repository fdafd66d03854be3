#include "AccessPoint.h"

#include "common/CommonUtils.h"
#include "support/Secret.h"

namespace {

constexpr QLatin1String NameKey("name");
constexpr QLatin1String UserKey("user");
constexpr QLatin1String PasswordKey("password");
constexpr QLatin1String HomeOnlyKey("homeonly");
constexpr QLatin1String IsSet("true");
constexpr QLatin1String IsNotSet("false");

constexpr int LongestIdentity = 23; // of Handle_IMEI_Hash()

/// The section of a SIM card's settings, which does not reveal the IMSI.
QString sectionFor(const Modem& modem)
{
    constexpr int tokenSize = 44;
    char token[tokenSize] = {};
    CommonUtils::Handle_IMEI_Hash(modem.imsi.toLatin1().constData(), token);
    return QLatin1String("accesspoint ") + QString::fromLatin1(token, tokenSize);
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
    const QString homeOnly = CommonUtils::GetUserSettings(section, HomeOnlyKey);
    if (homeOnly.isEmpty())
        return accessPoint; // nothing has been stored; each missing value is logged
    accessPoint.isHomeOnly = homeOnly == IsSet;
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
