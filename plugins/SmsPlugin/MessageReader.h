#pragma once

#include "Message.h"
#include "support/BackgroundWork.h"
#include "support/Modems.h"

#include <QMutex>
#include <QSet>

#include <atomic>

/// Reads the messages of all attached modems on a worker thread, roughly the newest first. With a real modem each message
/// can take seconds, so of known messages only the state is read again, while it can change, and each one can be taken as
/// soon as it has been read. Call the operations on the GUI thread.
class MessageReader : public BackgroundWork
{
    Q_OBJECT

public:
    explicit MessageReader(QObject* parent);
    ~MessageReader() override;

    /// Starts reading. Do not call it while reading is under way.
    /// @param known messages that were taken before
    void read(const MessagesByKey& known);

    /// Removes and returns messages that have been read, in the order in which they were read.
    /// @param most how many at most
    Messages take(int most);

    /// How many messages there are, also while reading; 0 until that is known.
    int total() const { return m_total; }

    /// Whether the lists of all modems were read to the end, and the keys of the messages in them. Call these only when
    /// reading has ended, which may be early.
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
    void listFrom(const Modem& modem, bool isSent, QVector<Entry>& entries);
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
