#include "devices/DeviceChanges.h"

#include "qrvl.h"

#include <algorithm>

using DeviceChanges::hasId;

namespace {

Modems inState(const Modems& modems, Modem::State state)
{
    Modems found;
    std::copy_if(modems.begin(), modems.end(), std::back_inserter(found),
                 [&](const Modem& modem) { return modem.state == state; });
    return found;
}

/// Whether one of the modems is in neither of the other lists.
bool isAnyMissing(const Modems& modems, const Modems& here, const Modems& orHere = {})
{
    return std::any_of(modems.begin(), modems.end(), [&](const Modem& modem) {
        return !hasId(here, modem.id) && !hasId(orHere, modem.id);
    });
}

/// Whether a modem that is in both lists has different values in them.
bool isAnyChanged(const Modems& before, const Modems& after, ModemValues Modem::*values)
{
    return std::any_of(after.begin(), after.end(), [&](const Modem& modem) {
        return std::any_of(before.begin(), before.end(), [&](const Modem& old) {
            return old.id == modem.id && old.*values != modem.*values;
        });
    });
}

} // namespace

Modems DeviceChanges::unusableOf(const Modems& modems)
{
    return (inState(modems, Modem::Rejected) + inState(modems, Modem::Failed)).mid(0, QRVL_MAX_DEVICES);
}

Modems DeviceChanges::availableOf(const Modems& modems)
{
    return inState(modems, Modem::Attached).mid(0, QRVL_MAX_DEVICES);
}

bool DeviceChanges::hasId(const Modems& modems, quint32 id)
{
    return std::any_of(modems.begin(), modems.end(), [&](const Modem& modem) { return modem.id == id; });
}

QVector<int> DeviceChanges::eventsBetween(const DeviceState& before, const DeviceState& after,
                                          bool reportAnyway)
{
    const Modems availableBefore = availableOf(before.modems);
    const Modems available = availableOf(after.modems);
    const Modems rejected = inState(after.modems, Modem::Rejected);
    const Modems failed = inState(after.modems, Modem::Failed);
    QVector<int> events;
    if (isAnyMissing(availableBefore, available, rejected) ||
        isAnyMissing(failed, inState(before.modems, Modem::Failed)))
        events.append(QRVL_EVENT_DEV_DEVICE_INVALID);
    if (isAnyMissing(rejected, inState(before.modems, Modem::Rejected)))
        events.append(QRVL_EVENT_DEV_REJECT);
    if (reportAnyway || available != availableBefore)
        events.append(QRVL_EVENT_DEV_DETECTED);
    if (before.service != after.service || isAnyChanged(availableBefore, available, &Modem::status))
        events.append(QRVL_EVENT_DEV_STATUS);
    if (isAnyChanged(availableBefore, available, &Modem::messages))
        events.append(QRVL_EVENT_DEV_MESSAGES);
    return events;
}
