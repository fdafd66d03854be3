#pragma once

#include "PluginContainer/BasePlugin.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"

/// The device manager: starts the search for modems and remembers which one was used last, see support/ModemInUse.h. A
/// modem is considered used when it is the only one attached or the user has chosen it.
class DeviceMgrPlugin : public BasePlugin, public IDeviceMgr
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
    Q_INTERFACES(IDeviceMgr)

public:
    DeviceMgrPlugin();

    /// Registers with the device service.
    /// @return 1; 0 when the service refused
    int Init() override;
    void Destroy() override;
    void UnSDKRegisterEvent() override;

    void StartDetection() override;
    QString GetLastUsedDevice() override;
};
