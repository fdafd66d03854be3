#pragma once

#include "Message.h"
#include "support/BackgroundWork.h"

#include <QMutex>
#include <QSet>

#include <atomic>

/// Reads the messages of all attached modems, those with a high place in the list first. With a real modem each message
/// can take seconds, so messages that are known are not read again, and each one can be taken as soon as it is there.
class MessageReader : public BackgroundWork
{
    Q_OBJECT

public:
    explicit MessageReader(QObject* parent);
    ~MessageReader() override;

    /// Starts reading; not while it is running.
    /// @param known messages that were taken before
    void read(const MessagesByKey& known);

    /// The messages read since the last call, at most this many.
    Messages take(int most);

    /// How many messages there are, also while reading; 0 until that is known.
    int total() const { return m_total; }

    /// Whether the keys of all messages are known. The two are for when reading has ended, perhaps early.
    bool isListed() const { return m_isListed; }
    const QSet<QString>& present() const { return m_present; }

Q_SIGNALS:
    /// There is something to take. Emitted on the worker thread.
    void found();

protected:
    void work() override;

private:
    struct Entry
    {
        Message message; ///< what is known without reading it
        int fromEnd;     ///< place in its list
    };

    QVector<Entry> listMessages();
    void listFrom(quint32 modem, bool isSent, QVector<Entry>& entries);
    void listWanted(const Message& message, int fromEnd, QVector<Entry>& entries);
    void readMessage(Message message);
    void addFound(const Message& message);

    MessagesByKey m_known;
    QSet<QString> m_present;
    bool m_isListed = false;
    std::atomic<int> m_total{0};
    QMutex m_mutex; ///< for m_found
    Messages m_found;
};
