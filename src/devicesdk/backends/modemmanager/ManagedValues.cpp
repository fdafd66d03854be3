#include "backends/modemmanager/ManagedValues.h"

#include "backends/modemmanager/ModemNames.h"
#include "backends/modemmanager/ModemReader.h"

#include <QDBusArgument>

#include <algorithm>

namespace {

using NumbersByNumber = QMap<uint, uint>;

constexpr uint UnknownTries = 999;

QString simState(const ModemReader& reader)
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
    const bool isBlocked = ManagedValues::triesLeft(reader, MM_MODEM_LOCK_SIM_PUK) == QLatin1String("0");
    return isBlocked ? QStringLiteral("blocked") : QStringLiteral("puk");
}

/// The signal is not known before the modem is enabled.
QString signalOf(const ModemReader& reader)
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

QString storagesOf(const ModemReader& reader)
{
    QStringList names;
    for (const uint storage : qdbus_cast<QList<uint>>(reader.messaging("SupportedStorages"))) {
        const QString name = ModemNames::storage(storage);
        if (!name.isEmpty())
            names.append(name);
    }
    return names.join(QLatin1Char(' '));
}

} // namespace

QString ManagedValues::triesLeft(const ModemReader& reader, uint lock)
{
    const auto tries = qdbus_cast<NumbersByNumber>(reader.modem("UnlockRetries"));
    const uint left = tries.value(lock, UnknownTries);
    return left == UnknownTries ? QString() : QString::number(left);
}

ModemValues ManagedValues::statusOf(const ModemReader& reader, Modem::State state)
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
        {"message-storage", ModemNames::storage(reader.messaging("DefaultStorage").toUInt())},
        {"message-storages", storagesOf(reader)},
        {"ussd", ModemNames::dialogue(reader.ussd("State").toUInt())},
    };
    ModemValues status;
    for (const auto& [key, value] : values) {
        if (!value.isEmpty())
            status.insert(QLatin1String(key), value);
    }
    return status;
}
