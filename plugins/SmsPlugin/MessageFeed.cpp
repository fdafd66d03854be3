#include "MessageFeed.h"

#include <algorithm>

namespace {

constexpr int PutAtOnce = 10; // messages

/// Whether the SIM with a message is attached. Another SIM in the same modem has other messages, even if their identifiers
/// are the same.
bool isAttached(const Message& message, const Modems& modems)
{
    return std::any_of(modems.begin(), modems.end(), [&](const Modem& modem) {
        return modem.id == message.modem && modem.imsi == message.imsi;
    });
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
    m_isOutdated = isReading();
    if (m_isOutdated)
        m_reader
            .finish(); // starts again once all that has been read is in the model, so nothing is read twice
    else
        m_reader.read(m_model.messages());
    Q_EMIT changed();
}

void MessageFeed::takeModems(const Modems& modems)
{
    if (modems == m_modems)
        return;
    m_modems = modems;
    QSet<QString> kept;
    const MessagesByKey& messages = m_model.messages();
    for (const Message& message : messages) {
        if (isAttached(message, modems))
            kept.insert(message.key);
    }
    m_model.keepOnly(kept);
    Q_EMIT modemsChanged();
}

void MessageFeed::pump()
{
    Messages messages = m_reader.take(PutAtOnce);
    if (messages.isEmpty()) {
        m_pump.stop();
        finish();
        return;
    }
    messages.erase(std::remove_if(messages.begin(), messages.end(),
                                  [this](const Message& message) { return !isAttached(message, m_modems); }),
                   messages.end());
    for (Message& message : messages)
        message.isUnread = !message.isSent && !seenOf(message.imsi).contains(message);
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

/// Forgets which deleted messages were read, once there are many; not for a SIM without messages, which perhaps cannot be
/// read at the moment.
void MessageFeed::forgetGone()
{
    QHash<QString, Messages> existing;
    const MessagesByKey& messages = m_model.messages();
    for (const Message& message : messages)
        existing[message.imsi].append(message);
    for (auto sim = existing.cbegin(); sim != existing.cend(); ++sim) {
        SeenMessages& seen = seenOf(sim.key());
        seen.keepOnly(*sim);
        seen.save();
    }
}

void MessageFeed::markRead(int row)
{
    remember(row);
    saveSeen();
}

void MessageFeed::markAllRead()
{
    for (int row = 0; row < m_model.rowCount(); ++row)
        remember(row);
    saveSeen();
}

void MessageFeed::remember(int row)
{
    const Messages messages = m_model.conversation(row).messages;
    for (const Message& message : messages) {
        if (message.isUnread)
            seenOf(message.imsi).add(message);
    }
    m_model.markRead(row);
}

void MessageFeed::saveSeen()
{
    for (auto& entry : m_seen)
        entry.second.save();
}

SeenMessages& MessageFeed::seenOf(const QString& imsi)
{
    return m_seen.try_emplace(imsi, imsi).first->second;
}
