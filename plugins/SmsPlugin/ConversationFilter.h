#pragma once

#include "ConversationModel.h"

#include <QSortFilterProxyModel>

/// The conversations in the order of their newest messages, the newest first; all of them, or those in which a text is
/// found. GUI thread only.
class ConversationFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit ConversationFilter(ConversationModel* model);

    /// What is looked for, in upper or lower case; empty for all.
    void setSearch(const QString& search);
    const QString& search() const { return m_search; }

    /// @param row of this model
    const Conversation& conversation(int row) const;

    /// The next message in which the text is found, below a message and then from the top again.
    /// @param key of a message; otherwise the first one is found
    /// @return null if there is none
    const Message* nextHit(const QString& key) const;

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    bool isHit(const Message& message) const;

    ConversationModel* m_model;
    QString m_search;
};
