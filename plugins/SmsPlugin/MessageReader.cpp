#include "MessageReader.h"

#include "SeenMessages.h"

#include <QDateTime>
#include <QMutexLocker>

#include <algorithm>

namespace {

constexpr qint64 LongestDelivery = 24LL * 60 * 60; ///< seconds for which confirmations are expected

bool isOlderThan(const Message& message, qint64 seconds)
{
    const QDateTime time =
        QDateTime::fromString(message.time, Qt::ISODate); // invalid if the modem does not know it
    return !time.isValid() || time.secsTo(QDateTime::currentDateTime()) > seconds;
}

/// Whether the state of a known message can still change, by a confirmation of delivery for example.
/// @param isLatest whether the modem has sent no other message since; decides if the time is unknown
bool isUnfinished(const Message& message, bool isLatest)
{
    return message.state == QLatin1String("sending") ||
           (message.state == QLatin1String("sent") && (isLatest || !isOlderThan(message, LongestDelivery)));
}

} // namespace

MessageReader::MessageReader(QObject* parent)
    : BackgroundWork("messages", parent)
{
}

MessageReader::~MessageReader()
{
    stop();
}

void MessageReader::read(const MessagesByKey& known)
{
    m_known = known;
    m_present.clear();
    m_isListed = false;
    begin();
}

Messages MessageReader::take(int most)
{
    const QMutexLocker lock(&m_mutex);
    const Messages taken = m_found.mid(0, most);
    m_found.remove(0, taken.size());
    return taken;
}

void MessageReader::work()
{
    const QVector<Entry> wanted = listMessages();
    m_isListed = !isInterruptionRequested();
    m_total = m_present.size();
    for (const Entry& entry : wanted) {
        if (isInterruptionRequested()) // a modem may take seconds to answer
            return;
        readMessage(entry.message);
    }
}

/// The messages to read, roughly the newest first: the ends of all lists before their beginnings.
QVector<MessageReader::Entry> MessageReader::listMessages()
{
    QVector<Entry> entries;
    const Modems modems = attachedModems();
    for (const Modem& modem : modems) {
        for (const bool isSent : {false, true}) {
            if (!isInterruptionRequested())
                listFrom(modem, isSent, entries);
        }
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& left, const Entry& right) { return left.fromEnd < right.fromEnd; });
    return entries;
}

void MessageReader::listFrom(const Modem& modem, bool isSent, QVector<Entry>& entries)
{
    const QString list = modemValue(modem.id, QLatin1String(isSent ? "sent-messages" : "messages"));
    const QStringList identifiers = list.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (int order = 0; order < identifiers.size(); ++order) {
        Message message;
        message.key = QStringLiteral("%1 %2 %3").arg(modem.id).arg(modem.imsi, identifiers[order]);
        message.modem = modem.id;
        message.imsi = modem.imsi;
        message.identifier = identifiers[order];
        message.isSent = isSent;
        message.order = order;
        listWanted(message, identifiers.size() - 1 - order, entries);
    }
}

void MessageReader::listWanted(const Message& message, int fromEnd, QVector<Entry>& entries)
{
    m_present.insert(message.key);
    const auto known = m_known.constFind(message.key);
    if (known == m_known.constEnd())
        entries.append({message, fromEnd});
    else if (isUnfinished(*known, fromEnd == 0))
        entries.append({*known, fromEnd});
}

void MessageReader::readMessage(Message message)
{
    const auto value = [&](const char* field) { // null if the message has been deleted in the meantime
        const QString key = QStringLiteral("message.%1.%2").arg(message.identifier, QLatin1String(field));
        return isInterruptionRequested() ? QString() : modemValue(message.modem, key);
    };
    if (message.text.isNull()) {
        message.address = value(message.isSent ? "recipient" : "sender");
        message.time = value("time");
        message.text = value("text");
        message.mark = SeenMessages::markOf(message);
    }
    if (message.isSent)
        message.state = value("state");
    if (!message.text.isNull() && !isInterruptionRequested())
        addFound(message);
}

void MessageReader::addFound(const Message& message)
{
    bool isFirst = false;
    {
        const QMutexLocker lock(&m_mutex);
        isFirst = m_found.isEmpty();
        m_found.append(message);
    }
    if (isFirst)
        Q_EMIT found();
}
