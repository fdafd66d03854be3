#include "CustomisationKey.h"

#include "PluginContainer/PluginContainer.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"
#include "common/CommonUtils.h"
#include "common/GuardedCall.h"

namespace {

QString keyOfModem(const IPluginContainer& container, const Modem& modem)
{
    const auto* const rules = dynamic_cast<const PluginContainer*>(&container);
    return rules ? rules->KeyForModem(modem.name, modem.imsi, modem.gid) : modem.name;
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
