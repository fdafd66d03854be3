#pragma once

#include "MessageReader.h"
#include "support/Modems.h"
#include "support/Page.h"

class ElidedLabel;
class QBoxLayout;
class QLabel;
class QListWidget;
class QTextBrowser;

/// The messages of the attached modems: a list, and beside it the one that is chosen.
class MessagesPage : public Page
{
    Q_OBJECT

public:
    explicit MessagesPage(QWidget* parent);

    /// Reads the messages anew in the background and shows them when that is done.
    void readMessages();

    /// The same if other modems are attached.
    void devicesChanged();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* makePane();
    void takeMessages();
    void showMessages();
    void showChosen();
    void showState();

    MessageReader* m_reader;
    Modems m_modems;           ///< whose messages these are
    bool m_isOutdated = false; ///< there is news since the reader began
    Messages m_messages;
    QLabel* m_note; ///< instead of messages
    QWidget* m_panel;
    QBoxLayout* m_columns;
    QListWidget* m_list;
    ElidedLabel* m_sender;
    QLabel* m_time;
    QTextBrowser* m_text;
};
