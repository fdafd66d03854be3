#pragma once

#include "ConversationModel.h"
#include "MessageReader.h"
#include "SeenMessages.h"
#include "support/Modems.h"

#include <QTimer>

#include <map>

/// Keeps a model up to date with the messages of the attached modems. Messages are added a few at a time, so that the
/// window stays responsive. GUI thread only.
class MessageFeed : public QObject
{
    Q_OBJECT

public:
    explicit MessageFeed(QObject* parent);

    ConversationModel* model() { return &m_model; }
    const ConversationModel* model() const { return &m_model; }

    /// Looks for new and deleted messages.
    void refresh();

    /// Calls refresh() if the attached modems have changed.
    void devicesChanged();

    /// Whether messages are being read or added to the model.
    bool isReading() const { return m_reader.isRunning() || m_pump.isActive(); }

    bool hasModem() const { return !m_modems.isEmpty(); }

    /// How many messages the modems have; 0 until that is known.
    int total() const { return m_reader.total(); }

    /// Marks the messages of a conversation, or all of them, as read and remembers that.
    /// @param row of the model
    void markRead(int row);
    void markAllRead();

Q_SIGNALS:
    /// The model or the progress has changed.
    void changed();

    /// Modems or SIMs were attached or removed; changed() follows.
    void modemsChanged();

private:
    void takeModems(const Modems& modems);
    void pump();
    void finish();
    void dropGone();
    void forgetGone();
    void remember(int row);
    void saveSeen();
    SeenMessages& seenOf(const QString& imsi);

    ConversationModel m_model;
    Modems m_modems;                        ///< the modems whose messages are shown
    std::map<QString, SeenMessages> m_seen; ///< by IMSI
    MessageReader m_reader;
    QTimer m_pump;
    bool m_isOutdated = false; ///< messages have changed since the reader started
};
