#pragma once

#include "ConversationModel.h"

#include <QSortFilterProxyModel>

/// The conversations, first those with only a draft, then those with the newest messages; all of them, or those that contain the text searched for. GUI
/// thread only.
class ConversationFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit ConversationFilter(ConversationModel* model);

    /// Shows only conversations with this text in an address, a message or a draft. Case is ignored; empty shows all.
    void setSearch(const QString& search);
    const QString& search() const { return m_search; }

    /// @param row of this model
    /// @return valid until the model changes
    const Conversation& conversation(int row) const;

    /// The first row with messages; -1 if there is none.
    int firstWithMessages() const;

    /// The next message that contains the text, searching downwards from a message and then from the top.
    /// @param key of the message to start below; if it is unknown, the search starts at the top
    /// @return null if no message contains it; valid until the model changes
    const Message* nextHit(const QString& key) const;

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    bool isHit(const Message& message) const;

    ConversationModel* m_model;
    QString m_search;
};
