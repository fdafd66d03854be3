#include "ConnectionWatch.h"

#include "support/Modems.h"

bool ConnectionWatch::hasLostOne()
{
    QHash<quint32, bool> now;
    const Modems modems = attachedModems();
    for (const Modem& modem : modems)
        now.insert(modem.id, !modemValue(modem.id, QStringLiteral("network")).isEmpty());
    const QHash<quint32, bool> before = std::exchange(m_isRegistered, now);
    for (auto modem = before.begin(); modem != before.end(); ++modem) {
        const bool isRemoved = !now.contains(modem.key());
        if (isRemoved || (modem.value() && !now.value(modem.key())))
            return true;
    }
    return false;
}
