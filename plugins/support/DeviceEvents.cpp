#include "support/DeviceEvents.h"

#include <qrvl.h>

namespace {

// Changed only while the callback is not registered.
DeviceEvents* receiver = nullptr;

auto signalOf(int event)
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

/// Calls a function on the thread of the receiver, from its event loop.
template <typename Call>
void post(Call call)
{
    QMetaObject::invokeMethod(receiver, call, Qt::QueuedConnection);
}

} // namespace

int DeviceEvents::onDeviceEvent(int type, void* data)
{
    if (type == QRVL_EVENT_DEV_REQUEST) {
        const auto& end = *static_cast<const QRVL_RequestEnd*>(data); // valid until this returns
        post([events = receiver, request = end.request, result = end.result,
              text = QStringView(end.text).toString()] {
            Q_EMIT events->requestEnded(request, result, text);
        });
    } else {
        post([events = receiver, type] { Q_EMIT(events->*signalOf(type))(); });
    }
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
