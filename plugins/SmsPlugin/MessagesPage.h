#pragma once

#include "MessageReader.h"
#include "support/Modems.h"
#include "support/Page.h"

class MessageView;
class QBoxLayout;
class QLabel;
class QListWidget;

/// The messages of the attached modems: a list, and the selected message next to it.
class MessagesPage : public Page
{
    Q_OBJECT

public:
    explicit MessagesPage(QWidget* parent);

    /// Reads the messages again in the background and then shows them.
    void readMessages();

    /// Does the same if other modems are attached now.
    void devicesChanged();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* makePane();
    QWidget* makeOpenButton();
    void openChosen();
    void takeMessages();
    void showMessages();
    void showChosen();
    void showState();

    MessageReader* m_reader;
    Modems m_modems;           ///< the modems whose messages are shown
    bool m_isOutdated = false; ///< messages have changed since the reader started
    Messages m_messages;
    QLabel* m_note; ///< shown instead of messages
    QWidget* m_panel;
    QBoxLayout* m_columns;
    QListWidget* m_list;
    MessageView* m_view;
};
