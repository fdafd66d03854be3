#pragma once

#include <QListView>

/// The list of a ConversationModel. GUI thread only.
class ConversationList : public QListView
{
    Q_OBJECT

public:
    /// @param model must outlive the list
    explicit ConversationList(QAbstractItemModel* model, QWidget* parent = nullptr);

Q_SIGNALS:
    /// The user has pressed the keys for copying. By itself, a list would copy the sender.
    void copyWanted();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
