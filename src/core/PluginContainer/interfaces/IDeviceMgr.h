#pragma once

#include "skylume_global.h"

#include <QString>
#include <QtPlugin>

/// The device manager plugin, available as PluginIds::FirstService. Called on the container's configuration
/// thread as well as on the GUI thread.
class SKYLUME_EXPORT IDeviceMgr
{
public:
    virtual ~IDeviceMgr();

    /// Asks the device service to look for modems. Returns at once; the result is reported as a device event.
    virtual void StartDetection() = 0;

    /// The name of the modem that was used last, also in an earlier run; empty when there never was one.
    virtual QString GetLastUsedDevice() = 0;
};

Q_DECLARE_INTERFACE(IDeviceMgr, "com.velquor.skylume.plugin.IDeviceMgr")
