// Learns from the device service which modem is attached. Waits on the configuration thread, hears events on
// the service's callback thread; the GUI thread only ends the wait when the application closes.
#include "PluginContainer/PluginContainer.h"

#include "PluginContainer/PluginContainer_p.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"
#include "common/GuardedCall.h"
#include "common/Log.h"
#include "common/SafeMemory.h"

#include <qrvl.h>

#include <QMutexLocker>
#include <QPointer>
#include <QWaitCondition>

QString PluginContainer::m_strDeviceName;
QMutex PluginContainer::m_LockStrDevName;

namespace {

constexpr unsigned long SdkWaitMs = 10000;

// Never held together with m_LockStrDevName.
QMutex sdkWaitMutex;
QWaitCondition sdkWaitCondition;

void setDeviceName(const QString& name)
{
    const QMutexLocker locker(&PluginContainer::m_LockStrDevName);
    PluginContainer::m_strDeviceName = name;
}

QString firstDeviceName(const QRVL_AvailableDeviceList& list)
{
    const char* const name = list.devices[0].name;
    return QString::fromLocal8Bit(name, static_cast<int>(qstrnlen(name, QRVL_DEVICE_NAME_SIZE)));
}

void takeAvailableDevice(const QRVL_AvailableDeviceList& list)
{
    constexpr const char* function = "OnDevMgrEvent";
    if (list.count == 1) {
        const QString name = firstDeviceName(list);
        setDeviceName(name);
        LOG_DEBUG("%s: %s: strDeviceName = %s", LOG_FILE, function, qUtf8Printable(name));
    } else {
        setDeviceName({});
        LOG_DEBUG("%s: %s: QRVL_DevSrv_GetAvailableDeviceList returned device count: %d", LOG_FILE, function,
                  static_cast<int>(list.count));
    }
}

void queryAvailableDevices()
{
    constexpr const char* function = "OnDevMgrEvent";
    QRVL_AvailableDeviceList list;
    if (!QRVL_memset(&list, sizeof list, 0, sizeof list))
        LOG_DEBUG("%s: %s: %s: %d: QRVL_memset fail ", LOG_TIME, LOG_FILE, function, __LINE__);
    const long result = QRVL_DevSrv_GetAvailableDeviceList(&list);
    if (result != 0)
        return;
    LOG_DEBUG("%s: %s: %s called QRVL_DevSrv_GetAvailableDeviceList, %d", LOG_TIME, LOG_FILE, function,
              static_cast<int>(result));
    takeAvailableDevice(list);
}

} // namespace

int PluginContainer::OnDevMgrEvent(int type, void*)
{
    LOG_DEBUG("%s: %s: entered, enNotifyType = %d", LOG_FILE, LOG_FUNCTION, type);
    switch (type) {
    case QRVL_EVENT_DEV_REJECT:
    case QRVL_EVENT_DEV_DEVICE_INVALID:
        setDeviceName({});
        LOG_DEBUG("%s: %s: entered, QRVL_EVENT_DEV_REJECT || QRVL_EVENT_DEV_DEVICE_INVALID, wake all",
                  LOG_FILE, LOG_FUNCTION);
        sdkWaitCondition.wakeAll();
        break;
    case QRVL_EVENT_DEV_DETECTED:
        queryAvailableDevices();
        LOG_DEBUG("%s: %s: entered, QRVL_EVENT_DEV_DETECTED wake all", LOG_FILE, LOG_FUNCTION);
        sdkWaitCondition.wakeAll();
        break;
    default:
        break;
    }
    return 1;
}

QString PluginContainer::getDeviceName(bool)
{
    QMutexLocker locker(&m_mutex);
    const bool isDeviceMgrReady = m_bDeviceMgrInit;
    locker.unlock();
    QString name;
    if (isDeviceMgrReady)
        name = detectDeviceName();
    else
        LOG_WARNING("%s: %s: init deviceMgr failed", LOG_FILE, LOG_FUNCTION);
    LOG_DEBUG("%s: %s: %s calling unregistration functions", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    unlinkDeviceService();
    return name;
}

QString PluginContainer::detectDeviceName()
{
    constexpr const char* function = "getDeviceName";
    linkDeviceService();
    const QPointer<QObject> service = GetPlugin(PluginIds::DeviceManager, PluginIds::FirstService);
    auto* const deviceMgr = qobject_cast<IDeviceMgr*>(service);
    if (!deviceMgr) {
        LOG_WARNING("%s: %s: get deviceMgr failed", LOG_FILE, function);
        return {};
    }
    guardedCall("StartDetection", QStringLiteral("device manager"),
                [deviceMgr] { deviceMgr->StartDetection(); });
    waitForDeviceEvent();
    return service ? takeDeviceName(*deviceMgr) : QString(); // it may have been unloaded during the wait
}

void PluginContainer::linkDeviceService()
{
    constexpr const char* function = "getDeviceName";
    LOG_DEBUG("%s: %s: %s calling registration functions", LOG_TIME, LOG_FILE, function);
    const long initResult = QRVL_DevSrv_RegisterDevInitEventCallback(&PluginContainer::OnDevMgrEvent);
    if (initResult != 0)
        LOG_DEBUG("%s: %s: %s register callback failed . DevInitEventError = %ld", LOG_TIME, LOG_FILE,
                  function, initResult);
    const long mgrResult = QRVL_DevSrv_RegisterDevMgrCallback(&PluginContainer::OnDevMgrEvent);
    if (mgrResult != 0)
        LOG_DEBUG("%s: %s: %s register callback failed . DevMgrError = %ld", LOG_TIME, LOG_FILE, function,
                  mgrResult);
    m_bDeviceLink = true;
    LOG_DEBUG("%s: %s: %s calling registration finished", LOG_TIME, LOG_FILE, function);
}

void PluginContainer::unlinkDeviceService()
{
    QRVL_DevSrv_UnRegisterDevInitEventCallback(&PluginContainer::OnDevMgrEvent);
    QRVL_DevSrv_UnRegisterDevMgrCallback(&PluginContainer::OnDevMgrEvent);
    m_bDeviceLink = false;
}

/// A thread that was terminated has left its callbacks with the device service. If it held the lock of the
/// name then, an event waits for that lock for ever, and taking back the callbacks would wait for the event:
/// they stay.
void PluginContainer::unlinkAfterTermination()
{
    constexpr int patienceMs = 1000;
    if (!m_bDeviceLink || !m_LockStrDevName.tryLock(patienceMs))
        return;
    m_LockStrDevName.unlock();
    unlinkDeviceService();
}

/// An event that comes before the wait has begun does not end it. The name that it reported is still found
/// afterwards; the limit bounds what that costs.
void PluginContainer::waitForDeviceEvent()
{
    constexpr const char* function = "getDeviceName";
    const QMutexLocker locker(&sdkWaitMutex);
    LOG_DEBUG("%s: %s: %s waiting for sdk finished enter", LOG_TIME, LOG_FILE, function);
    if (!d->isClosing)
        sdkWaitCondition.wait(&sdkWaitMutex, SdkWaitMs);
    LOG_DEBUG("%s: %s: %s waiting for sdk finished exit", LOG_TIME, LOG_FILE, function);
}

void PluginContainer::endDeviceWait()
{
    const QMutexLocker locker(&sdkWaitMutex);
    d->isClosing = true;
    sdkWaitCondition.wakeAll();
}

QString PluginContainer::takeDeviceName(IDeviceMgr& deviceMgr)
{
    const QMutexLocker locker(&m_LockStrDevName);
    QString name;
    if (m_strDeviceName.isEmpty()) {
        guardedCall("GetLastUsedDevice", QStringLiteral("device manager"),
                    [&] { name = deviceMgr.GetLastUsedDevice(); });
        LOG_DEBUG(
            "%s : %s : %s : There is no device or more than one device. No available device. Get last used "
            "device: %s",
            LOG_TIME, LOG_FILE, "getDeviceName", qUtf8Printable(name));
    } else {
        name.swap(m_strDeviceName); // each reported name is used once
    }
    return name;
}
