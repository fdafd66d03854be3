#pragma once

#include <QHash>
#include <QObject>

/// A text that was written but not sent.
struct Draft
{
    QString recipient; ///< may be empty
    QString text;
};

using DraftsByKey = QHash<QString, Draft>; ///< by addressKey() of the recipient

/// The drafts, one for each recipient. They are encrypted in the user's settings, so that copies of these do not reveal
/// them; only this computer can decrypt them. GUI thread only.
class Drafts : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// The draft for a recipient; without text if there is none.
    Draft find(const QString& recipient) const;

    /// The draft that was stored last; without text if there is none.
    Draft latest() const;

    /// All drafts that have a recipient.
    DraftsByKey byRecipient() const;

    /// Stores a draft and replaces an earlier one for the recipient. A draft without text only removes the earlier one.
    void keep(const Draft& draft);

Q_SIGNALS:
    /// A draft was stored or removed.
    void changed();
};
