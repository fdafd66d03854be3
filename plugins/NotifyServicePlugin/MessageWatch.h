#pragma once

#include "support/BackgroundWork.h"

#include <QHash>
#include <QSet>
#include <QVector>

#include <atomic>

/// A message that has arrived.
struct NewMessage
{
    QString sender; ///< null if texts were not read
    QString text;   ///< null if texts were not read
};

using NewMessages = QVector<NewMessage>;

/// Notices the messages that modems receive. Those that a modem lists at first are not new.
class MessageWatch : public BackgroundWork
{
    Q_OBJECT

public:
    explicit MessageWatch(QObject* parent = nullptr);
    ~MessageWatch() override;

    /// Looks for new messages, in the background; again after a search that is under way. GUI thread.
    /// @param withTexts whether to read their senders and texts, which can take a second each
    void check(bool withTexts);

Q_SIGNALS:
    /// On the GUI thread.
    void arrived(const NewMessages& messages);

protected:
    void work() override;

private:
    void takeResult();
    NewMessage read(quint32 modem, const QString& message) const;

    std::atomic<bool> m_withTexts{false};
    bool m_isOutdated = false;             ///< check() was called during the work
    QHash<quint32, QSet<QString>> m_known; ///< identifiers of messages by modem
    NewMessages m_new;                     ///< found, but not yet reported
};
