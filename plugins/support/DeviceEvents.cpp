#include "support/DeviceEvents.h"

#include <qrvl.h>

// Written only while the callback is not registered.
static DeviceEvents* receiver = nullptr;

static int onDeviceEvent(int, void*)
{
    QMetaObject::invokeMethod(receiver, &DeviceEvents::changed, Qt::QueuedConnection);
    return 1;
}

DeviceEvents::~DeviceEvents()
{
    stop();
}

bool DeviceEvents::listen()
{
    if (receiver)
        return receiver == this;
    receiver = this;
    if (QRVL_DevSrv_RegisterDevMgrCallback(onDeviceEvent) == QRVL_OK)
        return true;
    receiver = nullptr;
    return false;
}

void DeviceEvents::stop()
{
    if (receiver != this)
        return;
    QRVL_DevSrv_UnRegisterDevMgrCallback(onDeviceEvent);
    receiver = nullptr;
}
