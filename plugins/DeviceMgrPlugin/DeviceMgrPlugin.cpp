#include "DeviceMgrPlugin.h"

#include "PluginContainer/PluginIds.h"
#include "common/CommonUtils.h"
#include "support/Modems.h"

#include <qrvl.h>

namespace {

constexpr QLatin1String SettingsSection("device");
constexpr QLatin1String LastUsedKey("lastused");

// Runs on a thread of the device service; settings may be used on any thread.
int onDeviceEvent(int type, void*)
{
    if (type != QRVL_EVENT_DEV_DETECTED)
        return 1;
    const Modems modems = attachedModems();
    if (modems.size() == 1 && CommonUtils::GetSettings(SettingsSection, LastUsedKey) != modems.first().name)
        CommonUtils::SetSettings(SettingsSection, LastUsedKey, modems.first().name);
    return 1;
}

} // namespace

DeviceMgrPlugin::DeviceMgrPlugin()
{
    publish(PluginIds::FirstService, this);
}

int DeviceMgrPlugin::Init()
{
    return QRVL_DevSrv_RegisterDevMgrCallback(onDeviceEvent) == QRVL_OK ? 1 : 0;
}

void DeviceMgrPlugin::Destroy()
{
    UnSDKRegisterEvent();
}

void DeviceMgrPlugin::UnSDKRegisterEvent()
{
    QRVL_DevSrv_UnRegisterDevMgrCallback(onDeviceEvent);
}

void DeviceMgrPlugin::StartDetection()
{
    QRVL_DevSrv_StartDetect();
}

QString DeviceMgrPlugin::GetLastUsedDevice()
{
    return CommonUtils::GetSettings(SettingsSection, LastUsedKey);
}
