#include "PluginContainer/DeviceLink_p.h"

#include "PluginContainer/PluginContainer.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"
#include "common/GuardedCall.h"
#include "common/SafeMemory.h"

#include <qrvl.h>

#include <QMutexLocker>
#include <QWaitCondition>

QString PluginContainer::m_strDeviceName;
QMutex PluginContainer::m_LockStrDevName;

namespace {

constexpr unsigned long SdkWaitMs = 10000;

// Shared by all links: the device service calls back without saying which one an event is for. Never held
// together with PluginContainer::m_LockStrDevName.
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

void noteAvailableDevice(const QRVL_AvailableDeviceList& list, const char* function)
{
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

void queryAvailableDevices(const char* function)
{
    QRVL_AvailableDeviceList list;
    if (!QRVL_memset(&list, sizeof list, 0, sizeof list))
        LOG_DEBUG("%s: %s: %s: %d: QRVL_memset fail ", LOG_TIME, LOG_FILE, function, __LINE__);
    const long result = QRVL_DevSrv_GetAvailableDeviceList(&list);
    if (result != 0)
        return;
    LOG_DEBUG("%s: %s: %s called QRVL_DevSrv_GetAvailableDeviceList, %d", LOG_TIME, LOG_FILE, function,
              static_cast<int>(result));
    noteAvailableDevice(list, function);
}

} // namespace

DeviceLink::DeviceLink(bool& isRegistered)
    : m_isRegistered(isRegistered)
{
}

int DeviceLink::handleEvent(int type, const char* function)
{
    LOG_DEBUG("%s: %s: entered, enNotifyType = %d", LOG_FILE, function, type);
    switch (type) {
    case QRVL_EVENT_DEV_REJECT:
    case QRVL_EVENT_DEV_DEVICE_INVALID:
        setDeviceName({});
        LOG_DEBUG("%s: %s: entered, QRVL_EVENT_DEV_REJECT || QRVL_EVENT_DEV_DEVICE_INVALID, wake all",
                  LOG_FILE, function);
        sdkWaitCondition.wakeAll();
        break;
    case QRVL_EVENT_DEV_DETECTED:
        queryAvailableDevices(function);
        LOG_DEBUG("%s: %s: entered, QRVL_EVENT_DEV_DETECTED wake all", LOG_FILE, function);
        sdkWaitCondition.wakeAll();
        break;
    default:
        break;
    }
    return 1;
}

void DeviceLink::registerCallbacks(const char* function)
{
    LOG_DEBUG("%s: %s: %s calling registration functions", LOG_TIME, LOG_FILE, function);
    const long initResult = QRVL_DevSrv_RegisterDevInitEventCallback(&PluginContainer::OnDevMgrEvent);
    if (initResult != 0)
        LOG_DEBUG("%s: %s: %s register callback failed . DevInitEventError = %ld", LOG_TIME, LOG_FILE,
                  function, initResult);
    const long mgrResult = QRVL_DevSrv_RegisterDevMgrCallback(&PluginContainer::OnDevMgrEvent);
    if (mgrResult != 0)
        LOG_DEBUG("%s: %s: %s register callback failed . DevMgrError = %ld", LOG_TIME, LOG_FILE, function,
                  mgrResult);
    m_isRegistered = true;
    LOG_DEBUG("%s: %s: %s calling registration finished", LOG_TIME, LOG_FILE, function);
}

void DeviceLink::unregisterCallbacks()
{
    QRVL_DevSrv_UnRegisterDevInitEventCallback(&PluginContainer::OnDevMgrEvent);
    QRVL_DevSrv_UnRegisterDevMgrCallback(&PluginContainer::OnDevMgrEvent);
    m_isRegistered = false;
}

/// If the thread held the lock of the name when it was terminated, a callback waits for that lock forever,
/// and unregistering would wait for the callback. The callbacks then stay registered.
void DeviceLink::unregisterAfterTermination()
{
    constexpr int patienceMs = 1000;
    if (!m_isRegistered || !PluginContainer::m_LockStrDevName.tryLock(patienceMs))
        return;
    PluginContainer::m_LockStrDevName.unlock();
    unregisterCallbacks();
}

/// An event that comes before the wait has begun does not end it. The name that it reported is still found
/// afterwards; the limit bounds the delay.
void DeviceLink::waitForEvent(const char* function)
{
    const QMutexLocker locker(&sdkWaitMutex);
    LOG_DEBUG("%s: %s: %s waiting for sdk finished enter", LOG_TIME, LOG_FILE, function);
    if (!m_isClosed)
        sdkWaitCondition.wait(&sdkWaitMutex, SdkWaitMs);
    LOG_DEBUG("%s: %s: %s waiting for sdk finished exit", LOG_TIME, LOG_FILE, function);
}

void DeviceLink::close()
{
    const QMutexLocker locker(&sdkWaitMutex);
    m_isClosed = true;
    sdkWaitCondition.wakeAll();
}

QString DeviceLink::takeDeviceName(IDeviceMgr& deviceMgr, const char* function)
{
    const QMutexLocker locker(&PluginContainer::m_LockStrDevName);
    QString name;
    name.swap(PluginContainer::m_strDeviceName);
    if (!name.isEmpty())
        return name;
    guardedCall("GetLastUsedDevice", QStringLiteral("device manager"),
                [&] { name = deviceMgr.GetLastUsedDevice(); });
    LOG_DEBUG("%s : %s : %s : There is no device or more than one device. No available device. Get last used "
              "device: %s",
              LOG_TIME, LOG_FILE, function, qUtf8Printable(name));
    return name;
}
