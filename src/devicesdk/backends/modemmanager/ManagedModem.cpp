#include "backends/modemmanager/ManagedModem.h"

#include "backends/modemmanager/ManagedValues.h"
#include "backends/modemmanager/ModemReader.h"

#include <algorithm>
#include <iterator>

namespace {

/// Locks that only the operator or maker of the modem can open.
constexpr uint OperatorLocks[] = {
    MM_MODEM_LOCK_PH_SP_PIN,     MM_MODEM_LOCK_PH_SP_PUK,     MM_MODEM_LOCK_PH_NET_PIN,
    MM_MODEM_LOCK_PH_NET_PUK,    MM_MODEM_LOCK_PH_CORP_PIN,   MM_MODEM_LOCK_PH_CORP_PUK,
    MM_MODEM_LOCK_PH_NETSUB_PIN, MM_MODEM_LOCK_PH_NETSUB_PUK,
};

Modem::State stateOf(const ModemReader& reader)
{
    const bool isRejected = reader.isLocked() && std::find(std::begin(OperatorLocks), std::end(OperatorLocks),
                                                           reader.lock()) != std::end(OperatorLocks);
    if (isRejected)
        return Modem::Rejected;
    const uint failure = reader.failure();
    return failure == MM_MODEM_STATE_FAILED_REASON_NONE || failure == MM_MODEM_STATE_FAILED_REASON_SIM_MISSING
               ? Modem::Attached
               : Modem::Failed;
}

} // namespace

Modem ManagedModem::modemAt(const DBusMirror& mirror, const QString& path, const Customization& rules)
{
    const ModemReader reader(mirror, path);
    const QVariant gid = reader.sim("Gid1");
    Modem modem;
    modem.name = path;
    modem.model = reader.modem("Model").toString();
    if (modem.model.isEmpty())
        modem.model = QStringLiteral("Modem");
    modem.imsi = reader.sim("Imsi").toString();
    modem.gid = Customization::gidText(gid.toByteArray());
    modem.port = reader.modem("PrimaryPort").toString();
    modem.state = stateOf(reader);
    modem.customize = rules.nameFor(
        {modem.model, modem.imsi, reader.sim("OperatorIdentifier").toString(), modem.gid, gid.isValid()});
    modem.status = ManagedValues::statusOf(reader, modem.state);
    return modem;
}

QString ManagedModem::simOf(const DBusMirror& mirror, const QString& path)
{
    return ModemReader(mirror, path).simPath();
}

/// The serial number, or where the modem is plugged in.
QString ManagedModem::identityOf(const DBusMirror& mirror, const QString& path)
{
    const QString serialNumber = valueOf(mirror, path, "EquipmentIdentifier").toString();
    return serialNumber.isEmpty() ? valueOf(mirror, path, "Device").toString() : serialNumber;
}

bool ManagedModem::isLocked(const DBusMirror& mirror, const QString& path)
{
    return ModemReader(mirror, path).isLocked();
}

QString ManagedModem::pukTries(const DBusMirror& mirror, const QString& path)
{
    return ManagedValues::triesLeft(ModemReader(mirror, path), MM_MODEM_LOCK_SIM_PUK);
}

QVariant ManagedModem::valueOf(const DBusMirror& mirror, const QString& path, const char* property)
{
    return mirror.value(path, QLatin1String(MM_DBUS_INTERFACE_MODEM), QLatin1String(property));
}
