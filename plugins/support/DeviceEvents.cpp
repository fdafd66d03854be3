#include "support/DeviceEvents.h"

#include <qrvl.h>

// Written only while the callback is not registered.
static DeviceEvents* receiver = nullptr;

static auto signalOf(int event)
{
    switch (event) {
    case QRVL_EVENT_DEV_STATUS:
        return &DeviceEvents::statusChanged;
    case QRVL_EVENT_DEV_MESSAGES:
        return &DeviceEvents::messagesChanged;
    default:
        return &DeviceEvents::changed;
    }
}

static int onDeviceEvent(int type, void*)
{
    QMetaObject::invokeMethod(receiver, signalOf(type), Qt::QueuedConnection);
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
