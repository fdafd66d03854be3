#pragma once

#include "support/BackgroundWork.h"

#include <QString>
#include <QVector>

/// A text message as stored by its modem.
struct Message
{
    QString key; ///< unique while the application is running
    QString sender;
    QString time; ///< ISO 8601 without a time zone
    QString text;
};

using Messages = QVector<Message>;

/// Reads the messages of all attached modems. With a real modem this takes seconds.
class MessageReader : public BackgroundWork
{
    Q_OBJECT

public:
    explicit MessageReader(QObject* parent);
    ~MessageReader() override;

    /// The messages, newest first. Call this only when the work is done.
    const Messages& messages() const { return m_messages; }

protected:
    void work() override;

private:
    void readFrom(quint32 modem);

    Messages m_messages;
};
