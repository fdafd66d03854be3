#include "backends/modemmanager/ModemCalls.h"

#include "Log.h"
#include "backends/dbus/DBusResults.h"
#include "qrvl.h"

#include <QDBusPendingCallWatcher>

void ModemCalls::await(const QDBusPendingCall& call, const Then& then)
{
    auto* const watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, then] {
        watcher->deleteLater();
        const long result = DBusResults::resultOf(watcher->error());
        if (result == QRVL_ERROR_FAILED) // the text of the error could contain what the user has entered
            qCWarning(logDeviceSdk, "A request has failed: %s", qUtf8Printable(watcher->error().name()));
        then(*watcher, result);
    });
}

void ModemCalls::endAfterRead(const QString& modem, const RequestEnd& end, const char* interface)
{
    m_mirror.fetch(modem, QLatin1String(interface), [=] { Q_EMIT ended(modem, end); });
}
