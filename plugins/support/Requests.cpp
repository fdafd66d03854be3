#include "support/Requests.h"

#include "support/DeviceEvents.h"

#include <qrvl.h>

Requests::Requests(DeviceEvents* events, QObject* parent)
    : QObject(parent)
{
    connect(events, &DeviceEvents::requestEnded, this, &Requests::finish);
}

void Requests::start(const Start& start, QObject* receiver, const Done& done)
{
    const Pending pending{receiver, done};
    quint32 request = 0;
    const long result = start(&request);
    // The end may have come already, but it is delivered from the event loop, after this.
    if (result == QRVL_OK)
        m_pending.insert(request, pending);
    else
        QMetaObject::invokeMethod(
            this,
            [pending, result] {
                deliver(pending, {int(result), {}});
            },
            Qt::QueuedConnection);
}

void Requests::finish(quint32 request, int result, const QString& text)
{
    if (m_pending.contains(request)) // the plugin may have several objects of this class
        deliver(m_pending.take(request), {result, text});
}

void Requests::deliver(const Pending& pending, const RequestEnd& end)
{
    if (pending.receiver)
        pending.done(end);
}
