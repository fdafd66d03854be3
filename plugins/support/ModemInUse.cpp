#include "support/ModemInUse.h"

#include "common/CommonUtils.h"

#include <qrvl.h>

#include <algorithm>

namespace {

constexpr QLatin1String Section("device");
constexpr QLatin1String NameKey("lastused");
constexpr QLatin1String PortKey("lastusedport"); // tells modems of the same model apart

void store(QLatin1String key, const QString& value)
{
    if (CommonUtils::GetSettings(Section, key) != value)
        CommonUtils::SetSettings(Section, key, value);
}

} // namespace

QString lastUsedModem()
{
    return CommonUtils::GetSettings(Section, NameKey);
}

Modem modemInUse(const Modems& modems)
{
    if (modems.size() == 1)
        return modems.first();
    const QString name = lastUsedModem();
    const QString port = CommonUtils::GetSettings(Section, PortKey);
    const auto likeness = [&](const Modem& modem) {
        return modem.name == name ? 1 + int(modem.port == port) : 0;
    };
    // The first of those that are most alike.
    return *std::max_element(modems.begin(), modems.end(), [&](const Modem& left, const Modem& right) {
        return likeness(left) < likeness(right);
    });
}

Modem modemInUse()
{
    const Modems modems = attachedModems();
    return modems.isEmpty() ? Modem() : modemInUse(modems);
}

void rememberModem(const Modem& modem)
{
    store(NameKey, modem.name);
    store(PortKey, modem.port);
}

void useModem(const Modem& modem)
{
    rememberModem(modem);
    QRVL_DevSrv_StartDetect();
}
