#include "CustomisationKey.h"

#include "PluginContainer/PluginContainer.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"
#include "common/CommonUtils.h"
#include "common/GuardedCall.h"

namespace {

bool hasRules(const IPluginContainer& container, const QString& key)
{
    const auto* const rules = dynamic_cast<const PluginContainer*>(&container);
    return rules && rules->HasRulesFor(key);
}

QString keyOfModem(IPluginContainer& container, const Modem& modem)
{
    const QString imsiKey = ImsiPrefix + modem.imsi;
    if (!modem.imsi.isEmpty() && hasRules(container, imsiKey))
        return imsiKey;
    if (!modem.gid.isEmpty() && container.GetGIDGroups().contains(modem.gid))
        return GidPrefix + modem.gid;
    return modem.name;
}

} // namespace

QString customisationKey(IPluginContainer& container, const Modems& modems)
{
    if (modems.isEmpty())
        return {};
    return modems.size() == 1 ? keyOfModem(container, modems.first()) : lastUsedDevice();
}

QString lastUsedDevice()
{
    QString device;
    if (IDeviceMgr* const manager = CommonUtils::GetDeviceMgrPlugin())
        guardedCall("GetLastUsedDevice", QStringLiteral("device manager"),
                    [&] { device = manager->GetLastUsedDevice(); });
    return device;
}
