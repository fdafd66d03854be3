// Learns which modem is attached and customises for it, on the configuration thread.
#include "PluginContainer/PluginContainer.h"

#include "PluginContainer/PluginContainer_p.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"
#include "common/GuardedCall.h"

#include <QMutexLocker>

int PluginContainer::OnDevMgrEvent(int type, void*)
{
    return DeviceLink::handleEvent(type, LOG_FUNCTION);
}

QString PluginContainer::getDeviceName(bool)
{
    QMutexLocker locker(&m_mutex);
    const bool isDeviceMgrReady = m_bDeviceMgrInit;
    locker.unlock();
    QString name;
    if (isDeviceMgrReady)
        name = detectDeviceName(LOG_FUNCTION);
    else
        LOG_WARNING("%s: %s: init deviceMgr failed", LOG_FILE, LOG_FUNCTION);
    LOG_DEBUG("%s: %s: %s calling unregistration functions", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    d->deviceLink.unregisterCallbacks();
    return name;
}

/// The calls of the device manager do not hold the lock: one that hangs must not block the GUI thread.
/// Instead, unloadPlugin() refuses to unload the device manager until this is done.
QString PluginContainer::detectDeviceName(const char* function)
{
    d->deviceLink.registerCallbacks(function);
    QMutexLocker locker(&m_mutex);
    auto* const deviceMgr =
        qobject_cast<IDeviceMgr*>(GetPlugin(PluginIds::DeviceManager, PluginIds::FirstService));
    if (!deviceMgr) {
        LOG_WARNING("%s: %s: get deviceMgr failed", LOG_FILE, function);
        return {};
    }
    d->isDeviceMgrInUse = true;
    locker.unlock();
    guardedCall("StartDetection", QStringLiteral("device manager"),
                [deviceMgr] { deviceMgr->StartDetection(); });
    d->deviceLink.waitForEvent(function);
    const QString name = DeviceLink::takeDeviceName(*deviceMgr, function);
    d->isDeviceMgrInUse = false;
    return name;
}

void PluginContainer::StartInitPluginsConfig()
{
    const QString device = getDeviceName(false);
    if (d->deviceLink.isClosed())
        return; // the destructor may hold the lock and wait for this thread
    const QMutexLocker locker(&m_mutex);
    if (d->deviceLink.isClosed())
        return; // the set of running plugins must not change any more
    updateDeviceCustomization(device);
    m_bConfigInitialized = true;
}
