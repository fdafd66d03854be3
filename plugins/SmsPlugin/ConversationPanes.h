#pragma once

#include "support/Page.h"

class ElidedLabel;
class QToolButton;

/// The list of conversations beside the chosen one. Where there is no space for both, it shows the list alone or, once the
/// user has opened a conversation, that one alone, with a button that leads back to the list. GUI thread only.
class ConversationPanes : public Surface
{
    Q_OBJECT

public:
    /// @param list, thread belong to the panes from now on
    ConversationPanes(QWidget* list, QWidget* thread, QWidget* parent = nullptr);

    /// Shows the name of the conversation above it.
    void setTitle(const QString& title);

    /// Whether there is no space for both.
    void setNarrow(bool isNarrow);
    bool isNarrow() const { return m_isNarrow; }

    /// Shows the conversation, or the list, if there is no space for both. The focus follows if it is in the panes.
    void open() { setOpen(true); }
    void showList() { setOpen(false); }

    /// Which of them is shown.
    bool showsList() const { return !m_isNarrow || !m_isOpen; }
    bool showsThread() const { return !m_isNarrow || m_isOpen; }

Q_SIGNALS:
    /// The list or the conversation has been shown or hidden.
    void switched();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeConversation();
    void setOpen(bool isOpen);
    void arrange();
    void translate();

    QWidget* m_list;
    QWidget* m_thread;
    QToolButton* m_back;
    ElidedLabel* m_title;
    QWidget* m_conversation; ///< the thread, with its heading
    bool m_isNarrow = false;
    bool m_isOpen = false;
};
