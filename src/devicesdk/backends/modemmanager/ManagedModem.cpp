#include "backends/modemmanager/ManagedModem.h"

#include "backends/modemmanager/DBusMirror.h"
#include "backends/modemmanager/ModemNames.h"

#include <QDBusArgument>

#include <ModemManager.h>
#include <algorithm>
#include <iterator>

using NumbersByNumber = QMap<uint, uint>;

namespace {

constexpr uint UnknownTries = 999;

/// Locks that only the operator or maker of the modem can open.
constexpr uint OperatorLocks[] = {
    MM_MODEM_LOCK_PH_SP_PIN,     MM_MODEM_LOCK_PH_SP_PUK,     MM_MODEM_LOCK_PH_NET_PIN,
    MM_MODEM_LOCK_PH_NET_PUK,    MM_MODEM_LOCK_PH_CORP_PIN,   MM_MODEM_LOCK_PH_CORP_PUK,
    MM_MODEM_LOCK_PH_NETSUB_PIN, MM_MODEM_LOCK_PH_NETSUB_PUK,
};

/// Reads a modem's values.
class Reader
{
public:
    Reader(const DBusMirror& mirror, const QString& path)
        : m_mirror(mirror)
        , m_path(path)
        , m_sim(ManagedModem::simOf(mirror, path))
    {
    }

    QVariant modem(const char* property) const { return ManagedModem::valueOf(m_mirror, m_path, property); }
    QVariant network(const char* property) const
    {
        return value(m_path, MM_DBUS_INTERFACE_MODEM_MODEM3GPP, property);
    }
    QVariant ussd(const char* property) const
    {
        return value(m_path, MM_DBUS_INTERFACE_MODEM_MODEM3GPP_USSD, property);
    }
    QVariant sim(const char* property) const { return value(m_sim, MM_DBUS_INTERFACE_SIM, property); }

    int state() const { return modem("State").toInt(); }
    uint lock() const { return modem("UnlockRequired").toUInt(); }
    bool isLocked() const { return state() == MM_MODEM_STATE_LOCKED; }
    bool hasSim() const { return !m_sim.isEmpty(); }
    uint failure() const
    {
        return state() == MM_MODEM_STATE_FAILED ? modem("StateFailedReason").toUInt()
                                                : uint(MM_MODEM_STATE_FAILED_REASON_NONE);
    }

private:
    QVariant value(const QString& path, const char* interface, const char* property) const
    {
        return m_mirror.value(path, QLatin1String(interface), QLatin1String(property));
    }

    const DBusMirror& m_mirror;
    QString m_path;
    QString m_sim;
};

Modem::State stateOf(const Reader& reader)
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

QString triesLeft(const Reader& reader, uint lock)
{
    const auto tries = qdbus_cast<NumbersByNumber>(reader.modem("UnlockRetries"));
    const uint left = tries.value(lock, UnknownTries);
    return left == UnknownTries ? QString() : QString::number(left);
}

QString simState(const Reader& reader)
{
    if (reader.failure() == MM_MODEM_STATE_FAILED_REASON_SIM_ERROR)
        return QStringLiteral("error");
    if (reader.failure() == MM_MODEM_STATE_FAILED_REASON_SIM_MISSING || !reader.hasSim())
        return QStringLiteral("absent");
    if (!reader.isLocked())
        return QStringLiteral("ready");
    if (reader.lock() == MM_MODEM_LOCK_SIM_PIN)
        return QStringLiteral("pin");
    if (reader.lock() != MM_MODEM_LOCK_SIM_PUK)
        return QStringLiteral("locked");
    const bool isBlocked = triesLeft(reader, MM_MODEM_LOCK_SIM_PUK) == QLatin1String("0");
    return isBlocked ? QStringLiteral("blocked") : QStringLiteral("puk");
}

/// The signal is not known before the modem is enabled.
QString signalOf(const Reader& reader)
{
    if (reader.state() < MM_MODEM_STATE_ENABLED)
        return {};
    const QVariant value = reader.modem("SignalQuality");
    if (!value.canConvert<QDBusArgument>())
        return {};
    uint percent = 0;
    bool isRecent = false;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ub)"))
        return {};
    argument.beginStructure();
    argument >> percent >> isRecent;
    argument.endStructure();
    return QString::number(std::min(percent, 100U));
}

QString onlyDigits(const QString& text)
{
    const bool isNumber = std::all_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
    return isNumber ? text : QString();
}

/// The status values; those that are not known are empty.
ModemValues statusOf(const Reader& reader, Modem::State state)
{
    const bool isFailed = state == Modem::Failed;
    const uint registration = reader.network("RegistrationState").toUInt();
    const std::pair<const char*, QString> values[] = {
        {"state", ModemNames::state(state)},
        {"state.reason", isFailed ? ModemNames::failure(reader.failure()) : QString()},
        {"manufacturer", reader.modem("Manufacturer").toString()},
        {"firmware", reader.modem("Revision").toString()},
        {"imei", reader.modem("EquipmentIdentifier").toString()},
        {"sim", simState(reader)},
        {"pin-tries", triesLeft(reader, MM_MODEM_LOCK_SIM_PIN)},
        {"puk-tries", triesLeft(reader, MM_MODEM_LOCK_SIM_PUK)},
        {"number", reader.modem("OwnNumbers").toStringList().value(0)},
        {"iccid", reader.sim("SimIdentifier").toString()},
        {"registration", ModemNames::registration(registration)},
        {"network", onlyDigits(reader.network("OperatorCode").toString())},
        {"network-name", reader.network("OperatorName").toString()},
        {"signal", signalOf(reader)},
        {"technology", ModemNames::technology(reader.modem("AccessTechnologies").toUInt())},
        {"connection", ModemNames::connection(reader.state())},
        {"ussd", ModemNames::dialogue(reader.ussd("State").toUInt())},
    };
    ModemValues status;
    for (const auto& [key, value] : values) {
        if (!value.isEmpty())
            status.insert(QLatin1String(key), value);
    }
    return status;
}

} // namespace

Modem ManagedModem::modemAt(const DBusMirror& mirror, const QString& path, const Customization& rules)
{
    const Reader reader(mirror, path);
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
    modem.status = statusOf(reader, modem.state);
    return modem;
}

QString ManagedModem::simOf(const DBusMirror& mirror, const QString& path)
{
    const QString sim = valueOf(mirror, path, "Sim").value<QDBusObjectPath>().path();
    return sim == QLatin1String("/") ? QString() : sim;
}

/// The serial number, or where the modem is plugged in.
QString ManagedModem::identityOf(const DBusMirror& mirror, const QString& path)
{
    const QString serialNumber = valueOf(mirror, path, "EquipmentIdentifier").toString();
    return serialNumber.isEmpty() ? valueOf(mirror, path, "Device").toString() : serialNumber;
}

bool ManagedModem::isLocked(const DBusMirror& mirror, const QString& path)
{
    return valueOf(mirror, path, "State").toInt() == MM_MODEM_STATE_LOCKED;
}

QString ManagedModem::pukTries(const DBusMirror& mirror, const QString& path)
{
    return triesLeft(Reader(mirror, path), MM_MODEM_LOCK_SIM_PUK);
}

QVariant ManagedModem::valueOf(const DBusMirror& mirror, const QString& path, const char* property)
{
    return mirror.value(path, QLatin1String(MM_DBUS_INTERFACE_MODEM), QLatin1String(property));
}
