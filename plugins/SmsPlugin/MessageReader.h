#pragma once

#include "support/BackgroundWork.h"

#include <QString>
#include <QVector>

/// A text message as its modem holds it.
struct Message
{
    QString key; ///< tells it from all others while the application runs
    QString sender;
    QString time; ///< as in ISO 8601, without a time zone
    QString text;
};

using Messages = QVector<Message>;

/// Reads the messages of all attached modems, which takes a real modem seconds.
class MessageReader : public BackgroundWork
{
    Q_OBJECT

public:
    explicit MessageReader(QObject* parent);
    ~MessageReader() override;

    /// What was read, the newest first; to be called when the work is done.
    const Messages& messages() const { return m_messages; }

protected:
    void work() override;

private:
    void readFrom(quint32 modem);

    Messages m_messages;
};
