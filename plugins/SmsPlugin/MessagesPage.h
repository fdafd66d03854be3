#pragma once

#include "Commands.h"
#include "ConversationFilter.h"
#include "Drafts.h"
#include "MessageFeed.h"
#include "PluginContainer/interfaces/ICallUIPlugin.h"
#include "support/Customisation.h"
#include "support/Page.h"
#include "support/Requests.h"

#include <QPointer>

class ConversationList;
class ConversationPanes;
class MessageToolBar;
class QLabel;
class ThreadView;
class XmlMenu;

/// The messages of the attached modems: a list of conversations, and the messages of the chosen one.
class MessagesPage : public Page
{
    Q_OBJECT

public:
    /// @param events must be listening, and outlive the page
    MessagesPage(DeviceEvents* events, QWidget* parent);
    ~MessagesPage() override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void makeToolBar();
    void updateToolBar();
    void connectViews();
    void translate();

    const Message* currentMessage() const;
    CommandContext context() const;
    QWidget* windowParent();
    void run(Command command);
    void openWindow(const Message& message);
    void write(const QString& recipient, const Modem& sender);
    void call(const Message& message, _UI_EN_CALL_TYPE type);
    void copy(const Message& message);
    void remove(const Message& message);
    void requestDeletion(const Message& message);
    void showMenu(const QPoint& place);

    void search(const QString& text);
    void showNextHit();

    void refresh();
    void choose(int row);
    void enterConversation();
    void followPanes();
    void showThread();
    void markShown();
    void showState();
    void showDrafts();
    void showNote(const QString& note);

    DeviceEvents* m_events;
    Requests m_requests;
    MessageFeed m_feed;
    Customisation m_customisation; ///< may change which buttons are wanted
    ConversationFilter m_filter;
    Drafts m_drafts;
    QPointer<QWidget> m_windowParent; ///< of the windows for messages
    MessageToolBar* m_toolBar = nullptr;
    QPointer<XmlMenu> m_menu;
    QPointer<QWidget> m_question; ///< whether to delete a message
    QString m_questioned;         ///< Message::key of that message
    QLabel* m_note;               ///< progress, a failure, or what there is instead of messages
    QString m_failure;
    ConversationList* m_list;
    ThreadView* m_thread;
    ConversationPanes* m_panes;
    QString m_shownKey; ///< Conversation::key of the one that is shown
};
