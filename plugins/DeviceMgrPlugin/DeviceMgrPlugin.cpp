#include "DeviceMgrPlugin.h"

#include "PluginContainer/PluginIds.h"
#include "support/ModemInUse.h"

#include <qrvl.h>

namespace {

// Runs on a thread of the device service; settings may be used on any thread.
int onDeviceEvent(int type, void*)
{
    if (type != QRVL_EVENT_DEV_DETECTED)
        return 1;
    const Modems modems = attachedModems();
    if (modems.size() == 1)
        rememberModem(modems.first());
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
    return lastUsedModem();
}
