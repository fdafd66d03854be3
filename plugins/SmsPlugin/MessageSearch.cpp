// The toolbar of the page, and the search in its box.
#include "ConversationList.h"
#include "ConversationPanes.h"
#include "MessageToolBar.h"
#include "MessagesPage.h"
#include "ThreadView.h"

#include <QBoxLayout>

void MessagesPage::makeToolBar()
{
    delete m_toolBar;
    m_toolBar = new MessageToolBar;
    content()->insertWidget(0, m_toolBar);
    connect(m_toolBar, &MessageToolBar::pressed, this, &MessagesPage::run);
    connect(m_toolBar, &MessageToolBar::searchChanged, this, &MessagesPage::search);
    connect(m_toolBar, &MessageToolBar::nextWanted, this, &MessagesPage::showNextHit);
    connect(m_toolBar, &MessageToolBar::searchClosed, m_panes, [this] { m_panes->setFocus(); });
}

void MessagesPage::updateToolBar()
{
    if (!m_toolBar->isOutdated())
        return;
    m_toolBar->closeSearch();
    makeToolBar();
    m_toolBar->enableFor(context());
}

void MessagesPage::search(const QString& text)
{
    m_filter.setSearch(text);
    m_thread->setSearch(text);
    if (!m_list->currentIndex().isValid())
        choose(0);
    showState();
}

void MessagesPage::showNextHit()
{
    const Message* const hit = m_filter.nextHit(m_thread->current());
    if (!hit)
        return;
    const QString key = hit->key;
    const int row = m_feed.model()->rowOf(hit->address);
    choose(m_filter.mapFromSource(m_feed.model()->index(row)).row());
    m_panes->open();
    m_thread->setCurrent(key);
    showState();
}
