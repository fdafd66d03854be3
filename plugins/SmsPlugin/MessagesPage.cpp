// The page's widgets and what they show. Its toolbar and the search are in MessageSearch.cpp, what its commands do is in
// MessageActions.cpp.
#include "MessagesPage.h"

#include "ConversationList.h"
#include "ConversationPanes.h"
#include "MessageToolBar.h"
#include "Shown.h"
#include "ThreadView.h"
#include "common/CommonUtils.h"
#include "support/DeviceEvents.h"
#include "support/Numbers.h"
#include "support/Text.h"
#include "support/XmlMenu.h"

#include <QLabel>
#include <QVBoxLayout>

namespace {

constexpr int NarrowPage = 520; ///< below this width there is no space for a conversation beside the list

} // namespace

MessagesPage::MessagesPage(DeviceEvents* events, QWidget* parent)
    : Page("IDS_SMS_TITLE", "IDS_SMS_LEAD", Look::Sign::Message, parent)
    , m_events(events)
    , m_requests(events)
    , m_feed(this)
    , m_customisation(this)
    , m_filter(m_feed.model())
    , m_note(Look::quietLabel(QString(), true))
    , m_list(new ConversationList(&m_filter))
    , m_thread(new ThreadView)
    , m_panes(new ConversationPanes(m_list, m_thread))
{
    makeToolBar();
    content()->addWidget(m_note);
    content()->addWidget(m_panes, 1);
    content()->addStretch();
    connectViews();
    connect(&m_feed, &MessageFeed::changed, this, &MessagesPage::refresh);
    connect(events, &DeviceEvents::messagesChanged, &m_feed, &MessageFeed::refresh);
    connect(events, &DeviceEvents::changed, &m_feed, &MessageFeed::devicesChanged);
    connect(&m_feed, &MessageFeed::modemsChanged, this, [this] { m_failure.clear(); });
    connect(&m_drafts, &Drafts::changed, this, &MessagesPage::showDrafts);
    connect(&m_customisation, &Customisation::applied, this, &MessagesPage::updateToolBar);
    keepTranslated(this, [this] { translate(); });
    showDrafts();
    m_feed.refresh();
}

void MessagesPage::connectViews()
{
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, &MessagesPage::showThread);
    connect(m_list, &ConversationList::clicked, m_panes, &ConversationPanes::open);
    connect(m_list, &ConversationList::activated, this, &MessagesPage::enterConversation);
    connect(m_panes, &ConversationPanes::switched, this, &MessagesPage::followPanes);
    connect(m_thread, &ThreadView::currentChanged, this, &MessagesPage::showState);
    connect(m_list, &ConversationList::copyWanted, this, [this] { run(Command::Copy); });
    connect(m_thread, &ThreadView::copyWanted, this, [this] { run(Command::Copy); });
    for (QWidget* view : {static_cast<QWidget*>(m_list), static_cast<QWidget*>(m_thread)})
        connect(view, &QWidget::customContextMenuRequested, this,
                [this, view](const QPoint& place) { showMenu(view->mapToGlobal(place)); });
}

void MessagesPage::translate()
{
    m_feed.model()->retranslate();
    m_thread->retranslate();
    delete m_menu;
    m_failure.clear();
    refresh();
}

void MessagesPage::refresh()
{
    if (m_question && !m_feed.model()->messages().contains(m_questioned))
        delete m_question;
    const int first = m_filter.firstWithMessages();
    if (!m_list->currentIndex().isValid() && first >= 0)
        choose(first);
    else
        showThread();
}

void MessagesPage::choose(int row)
{
    m_list->setCurrentIndex(m_filter.index(row, 0));
}

/// What Enter and a double click on a conversation do.
void MessagesPage::enterConversation()
{
    if (!currentMessage())
        run(Command::Reply); // there is only a draft
    else if (m_panes->isNarrow())
        m_panes->open();
    else
        run(Command::Open);
}

void MessagesPage::followPanes()
{
    // Commands do not apply to a message that the user no longer sees.
    if (!m_panes->showsThread())
        m_thread->setCurrent(m_thread->newest());
    markShown();
    showState();
}

void MessagesPage::showThread()
{
    const int row = m_list->currentIndex().row();
    const Conversation shown = row < 0 ? Conversation() : m_filter.conversation(row);
    const bool isOther = shown.key != m_shownKey || shown.messages.isEmpty();
    if (shown.key != m_shownKey && !m_panes->showsList())
        m_panes->showList(); // the open conversation is gone
    m_shownKey = shown.key;
    m_panes->setTitle(row < 0 ? QString() : shownAddress(shown.address));
    m_thread->setPlaceholderText(row < 0 ? QString() : text("IDS_SMS_DRAFT_HINT"));
    m_thread->setMessages(shown.messages, isOther);
    markShown();
    showState();
}

/// The chosen conversation is read as soon as the user can see it. At the end of the application, pages are shown for a
/// moment when others disappear.
void MessagesPage::markShown()
{
    const QModelIndex current = m_list->currentIndex();
    const bool isInFront = isVisible() && !window()->isMinimized() && !CommonUtils::IsShuttingDown();
    if (current.isValid() && isInFront && m_panes->showsThread())
        m_feed.markRead(m_filter.mapToSource(current).row());
}

void MessagesPage::showDrafts()
{
    m_feed.model()->setDrafts(m_drafts.byRecipient());
    showState();
}

void MessagesPage::showState()
{
    const int count = m_feed.model()->messages().size();
    const int unread = m_feed.model()->unread();
    setWindowTitle(unread > 0 ? text("IDS_SMS_TITLE_UNREAD").arg(numberText(unread)) : text("IDS_SMS_TITLE"));
    setBadge(unread);
    m_panes->setVisible(m_feed.model()->rowCount() > 0);
    m_toolBar->enableFor(context());
    if (!m_failure.isEmpty())
        showNote(m_failure);
    else if (!m_feed.hasModem())
        showNote(text("IDS_SMS_NO_MODEM"));
    else if (m_feed.isReading() && m_feed.total() > count)
        showNote(text("IDS_SMS_PROGRESS").arg(numberText(count), numberText(m_feed.total())));
    else if (count == 0)
        showNote(text(m_feed.isReading() ? "IDS_SMS_READING" : "IDS_SMS_NONE"));
    else
        showNote(m_filter.rowCount() == 0 ? text("IDS_SMS_NOT_FOUND") : QString());
}

void MessagesPage::showNote(const QString& note)
{
    m_note->setText(note);
    m_note->setVisible(!note.isEmpty());
}

void MessagesPage::showEvent(QShowEvent* event)
{
    Page::showEvent(event);
    updateToolBar();
    markShown();
    showState();
}

void MessagesPage::resizeEvent(QResizeEvent* event)
{
    m_panes->setNarrow(width() < NarrowPage);
    Page::resizeEvent(event);
}
