#include "backends/modemmanager/ModemMessages.h"

#include "backends/dbus/DBusMirror.h"
#include "backends/modemmanager/ManagedModem.h"

#include <QDBusArgument>
#include <QDateTime>
#include <QRegularExpression>

#include <ModemManager.h>
#include <algorithm>
#include <utility>
#include <vector>

namespace {

const char DateFormat[] = "yyyy-MM-ddTHH:mm:ss";

/// In local time. ModemManager writes time zones as "+02".
QString localTime(QString timestamp)
{
    static const QRegularExpression zone(QStringLiteral("[+-][0-9]{2}$"));
    if (timestamp.contains(zone))
        timestamp += QStringLiteral(":00");
    const QDateTime time = QDateTime::fromString(timestamp, Qt::ISODate);
    return time.isValid() ? time.toLocalTime().toString(QLatin1String(DateFormat)) : QString();
}

/// A message as ModemManager reports it.
struct Sms
{
    QString path;
    QString number;
    QString text;
    QString time;
    uint type = 0;
    uint state = 0;
    uint reference = 0;
    uint delivery = 0;

    bool isReceived() const
    {
        return state == MM_SMS_STATE_RECEIVED &&
               (type == MM_SMS_PDU_TYPE_DELIVER || type == MM_SMS_PDU_TYPE_CDMA_DELIVER);
    }
    bool isSent() const { return type == MM_SMS_PDU_TYPE_SUBMIT || type == MM_SMS_PDU_TYPE_CDMA_SUBMIT; }
    bool confirmsDelivery() const
    {
        return type == MM_SMS_PDU_TYPE_STATUS_REPORT &&
               delivery <= MM_SMS_DELIVERY_STATE_COMPLETED_REPLACED_BY_SC;
    }
    int index() const { return ModemMessages::identifierOf(path).toInt(); }
};

Sms read(const DBusMirror& mirror, const QString& path)
{
    const auto value = [&](const char* property) {
        return mirror.value(path, QLatin1String(MM_DBUS_INTERFACE_SMS), QLatin1String(property));
    };
    const QVariant delivery = value("DeliveryState");
    return {path,
            value("Number").toString(),
            value("Text").toString(),
            localTime(value("Timestamp").toString()),
            value("PduType").toUInt(),
            value("State").toUInt(),
            value("MessageReference").toUInt(),
            delivery.isValid() ? delivery.toUInt() : uint(MM_SMS_DELIVERY_STATE_UNKNOWN)};
}

bool isOlder(const Sms& a, const Sms& b)
{
    return a.time != b.time ? a.time < b.time : a.index() < b.index();
}

/// The paths of the sent messages that reports confirm. ModemManager numbers messages in the order in which they come, so
/// a report belongs to the latest message before it with its reference, which repeats after 256 messages, and its
/// number, which may be written with or without the country.
QSet<QString> deliveredAmong(std::vector<Sms> messages)
{
    constexpr int comparedDigits = 8;
    std::sort(messages.begin(), messages.end(),
              [](const Sms& a, const Sms& b) { return a.index() < b.index(); });
    QHash<QPair<uint, QString>, QString> latest;
    QSet<QString> delivered;
    for (const Sms& sms : messages) {
        const auto key = qMakePair(sms.reference, sms.number.right(comparedDigits));
        if (sms.isSent() && sms.state == MM_SMS_STATE_SENT)
            latest.insert(key, sms.path);
        else if (sms.confirmsDelivery())
            delivered.insert(latest.value(key));
    }
    return delivered;
}

/// What the keys of its values begin with.
QString prefixOf(const Sms& sms)
{
    return QStringLiteral("message.%1.").arg(ModemMessages::identifierOf(sms.path));
}

void addText(const Sms& sms, ModemValues& values)
{
    const QString prefix = prefixOf(sms);
    values.insert(prefix + (sms.isSent() ? QStringLiteral("recipient") : QStringLiteral("sender")),
                  sms.number);
    values.insert(prefix + QStringLiteral("time"), sms.time);
    values.insert(prefix + QStringLiteral("text"), sms.text);
}

/// ModemManager reads the messages of a modem while it enables it. Before that, the list is empty.
bool hasList(const DBusMirror& mirror, const QString& modem)
{
    return mirror.contains(modem, QLatin1String(MM_DBUS_INTERFACE_MODEM_MESSAGING)) &&
           ManagedModem::valueOf(mirror, modem, "State").toInt() >= MM_MODEM_STATE_ENABLED;
}

QSet<QString> listOf(const DBusMirror& mirror, const QString& modem)
{
    const QVariant list =
        mirror.value(modem, QLatin1String(MM_DBUS_INTERFACE_MODEM_MESSAGING), QStringLiteral("Messages"));
    QSet<QString> paths;
    for (const QDBusObjectPath& path : qdbus_cast<QList<QDBusObjectPath>>(list))
        paths.insert(path.path());
    return paths;
}

} // namespace

void ModemMessages::follow(DBusMirror& mirror, const QString& modem)
{
    if (!std::exchange(m_isListOutdated, false))
        return;
    const bool isKnown = hasList(mirror, modem);
    const QSet<QString> paths = isKnown ? listOf(mirror, modem) : QSet<QString>();
    for (const QString& path : paths - m_paths)
        mirror.fetch(path, QLatin1String(MM_DBUS_INTERFACE_SMS));
    for (const QString& path : m_paths - paths) {
        mirror.forget(path);
        m_sendingTimes.remove(path);
        m_failed.remove(path);
    }
    m_isOutdated |= isKnown != m_isListKnown || paths != m_paths;
    m_isListKnown = isKnown;
    m_paths = paths;
}

void ModemMessages::forget(DBusMirror& mirror) const
{
    for (const QString& path : m_paths)
        mirror.forget(path);
}

bool ModemMessages::isReading(const DBusMirror& mirror) const
{
    return std::any_of(m_paths.cbegin(), m_paths.cend(),
                       [&](const QString& path) { return mirror.isFetching(path); });
}

const ModemValues& ModemMessages::values(const DBusMirror& mirror)
{
    if (!m_isOutdated || isReading(mirror))
        return m_values;
    m_isOutdated = false;
    m_values.clear();
    if (!m_isListKnown)
        return m_values;
    std::vector<Sms> messages;
    for (const QString& path : qAsConst(m_paths)) {
        messages.push_back(read(mirror, path));
        if (messages.back().time.isEmpty())
            messages.back().time = m_sendingTimes.value(path);
    }
    std::sort(messages.begin(), messages.end(), isOlder);
    const QSet<QString> delivered = deliveredAmong(messages);
    QStringList received, sent;
    for (const Sms& sms : messages) {
        if (!sms.isReceived() && !sms.isSent())
            continue;
        (sms.isSent() ? sent : received).append(identifierOf(sms.path));
        addText(sms, m_values);
        m_values.insert(prefixOf(sms) + QStringLiteral("state"),
                        stateOf(sms.path, sms.state, sms.isSent(), delivered.contains(sms.path)));
    }
    m_values.insert(QStringLiteral("messages"), received.join(QLatin1Char(' ')));
    m_values.insert(QStringLiteral("sent-messages"), sent.join(QLatin1Char(' ')));
    return m_values;
}

QString ModemMessages::stateOf(const QString& path, uint state, bool isSent, bool isDelivered) const
{
    if (!isSent)
        return QStringLiteral("received");
    if (isDelivered)
        return QStringLiteral("delivered");
    if (state == MM_SMS_STATE_SENT)
        return QStringLiteral("sent");
    if (m_failed.contains(path))
        return QStringLiteral("failed");
    return m_sendingTimes.contains(path) || state == MM_SMS_STATE_SENDING ? QStringLiteral("sending")
                                                                          : QStringLiteral("stored");
}

void ModemMessages::noteSending(const QString& message)
{
    m_sendingTimes.insert(message, QDateTime::currentDateTime().toString(QLatin1String(DateFormat)));
    m_isOutdated = true;
}

void ModemMessages::noteFailure(const QString& message)
{
    m_failed.insert(message);
    m_isOutdated = true;
}

QString ModemMessages::pathOf(const QString& identifier) const
{
    const auto found = std::find_if(m_paths.cbegin(), m_paths.cend(),
                                    [&](const QString& path) { return identifierOf(path) == identifier; });
    return found == m_paths.cend() ? QString() : *found;
}

QString ModemMessages::identifierOf(const QString& message)
{
    return message.mid(message.lastIndexOf(QLatin1Char('/')) + 1);
}
