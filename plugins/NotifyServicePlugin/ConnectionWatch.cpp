#include "ConnectionWatch.h"

#include "support/Modems.h"

#include <qrvl.h>

#include <utility>

ConnectionLoss ConnectionWatch::look()
{
    QHash<quint32, State> now;
    const Modems modems = attachedModems();
    for (const Modem& modem : modems)
        now.insert(modem.id, read(modem));
    const QHash<quint32, State> before = std::exchange(m_states, now);
    ConnectionLoss loss;
    for (auto modem = before.begin(); modem != before.end(); ++modem) {
        const State after = now.value(modem.key());
        const bool isRemoved = !now.contains(modem.key());
        const bool hasLostNetwork = modem->isRegistered && !after.isRegistered;
        const bool isOffline = modem->isOnline && !after.isOnline && (hasLostNetwork || !after.isEndedByUser);
        if (isOffline)
            loss.offline.append(modem->name);
        // A connection that follows its network is the same loss.
        if (isRemoved || hasLostNetwork || (isOffline && modem->isRegistered))
            loss.isAny = true;
    }
    return loss;
}

ConnectionWatch::State ConnectionWatch::read(const Modem& modem) const
{
    const QString connection = modemValue(modem, "connection");
    const bool isChanging =
        connection != QLatin1String("connected") && connection != QLatin1String("disconnected");
    const int error = modemValue(modem, "connection.error").toInt();
    State state;
    state.name = modem.name;
    state.isRegistered = hasNetwork(modem.id);
    state.isOnline =
        isChanging ? m_states.value(modem.id).isOnline : connection == QLatin1String("connected");
    state.isEndedByUser = error == QRVL_OK || error == QRVL_ERROR_CANCELLED;
    return state;
}
