#include "MessageFeed.h"

#include <algorithm>

namespace {

constexpr int PutAtOnce = 10; // messages

/// The IMSI of a modem; null if it is not attached.
QString simOf(const Modems& modems, quint32 id)
{
    const auto found =
        std::find_if(modems.begin(), modems.end(), [id](const Modem& modem) { return modem.id == id; });
    return found == modems.end() ? QString() : found->imsi;
}

} // namespace

MessageFeed::MessageFeed(QObject* parent)
    : QObject(parent)
    , m_model(this)
    , m_reader(this)
{
    connect(&m_reader, &MessageReader::found, &m_pump, [this] { m_pump.start(); });
    connect(&m_reader, &QThread::finished, this, &MessageFeed::finish);
    connect(&m_pump, &QTimer::timeout, this, &MessageFeed::pump);
}

void MessageFeed::devicesChanged()
{
    // There are also events for detections that have found nothing new.
    if (!(attachedModems() == m_modems))
        refresh();
}

void MessageFeed::refresh()
{
    takeModems(attachedModems());
    m_isOutdated = m_reader.isRunning();
    if (m_isOutdated)
        m_reader.finish(); // what has been read is kept, so starting again costs little
    else
        m_reader.read(m_model.messages());
    Q_EMIT changed();
}

/// A modem with another SIM has other messages, even if their identifiers are the same.
void MessageFeed::takeModems(const Modems& modems)
{
    if (modems == m_modems)
        return;
    QSet<QString> kept;
    const MessagesByKey& messages = m_model.messages();
    for (const Message& message : messages) {
        if (simOf(m_modems, message.modem) == simOf(modems, message.modem))
            kept.insert(message.key);
    }
    m_model.keepOnly(kept);
    m_seen.clear();
    m_modems = modems;
}

void MessageFeed::pump()
{
    Messages messages = m_reader.take(PutAtOnce);
    if (messages.isEmpty()) {
        m_pump.stop();
        finish();
        return;
    }
    for (Message& message : messages)
        message.isUnread = !message.isSent && !seenOf(message.modem).contains(message);
    m_model.put(messages);
    Q_EMIT changed();
}

void MessageFeed::finish()
{
    if (isReading())
        return; // it has been started again, or not everything has been taken yet
    if (m_reader.isListed())
        dropGone();
    if (m_isOutdated)
        refresh();
    Q_EMIT changed();
}

void MessageFeed::dropGone()
{
    m_model.keepOnly(m_reader.present());
    if (!m_isOutdated)
        forgetGone();
}

/// What is remembered about deleted messages is forgotten, but not all at once: perhaps a SIM cannot be read just now.
void MessageFeed::forgetGone()
{
    QHash<quint32, Messages> existing;
    const MessagesByKey& messages = m_model.messages();
    for (const Message& message : messages)
        existing[message.modem].append(message);
    for (auto modem = existing.cbegin(); modem != existing.cend(); ++modem) {
        SeenMessages& seen = seenOf(modem.key());
        seen.keepOnly(*modem);
        seen.save();
    }
}

void MessageFeed::markRead(int row)
{
    const Messages messages = m_model.conversation(row).messages;
    for (const Message& message : messages) {
        if (message.isUnread)
            seenOf(message.modem).add(message);
    }
    for (auto& entry : m_seen)
        entry.second.save();
    m_model.markRead(row);
}

SeenMessages& MessageFeed::seenOf(quint32 modem)
{
    const auto known = m_seen.find(modem);
    if (known != m_seen.end())
        return known->second;
    return m_seen.emplace(modem, SeenMessages(simOf(m_modems, modem))).first->second;
}
