// Which message is the current one, and where the messages are on the screen. The document is in ThreadDocument.cpp.
#include "ThreadView.h"

#include "MessageBrowser.h"
#include "support/Look.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QUrl>

#include <algorithm>

namespace {

constexpr int ShownAtOnce = 30; // messages

bool isSame(const Message& left, const Message& right)
{
    return left.key == right.key && left.state == right.state;
}

/// Whether the first messages are the same.
bool beginAlike(const Messages& left, const Messages& right, int count)
{
    return std::equal(left.begin(), left.begin() + std::min(count, left.size()), right.begin(),
                      right.begin() + std::min(count, right.size()), isSame);
}

} // namespace

ThreadView::ThreadView(QWidget* parent)
    : QTextBrowser(parent)
    , m_shown(ShownAtOnce)
{
    prepareBrowser(this);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setTextInteractionFlags(Qt::TextBrowserInteraction);
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& target) {
        if (target.scheme() == ThreadLayout::EarlierScheme)
            showEarlier();
    });
}

void ThreadView::setMessages(const Messages& messages, bool isOther)
{
    const bool hasMore = m_messages.size() > m_shown;
    const bool isUnchanged =
        !isOther && beginAlike(messages, m_messages, m_shown) && hasMore == (messages.size() > m_shown);
    const bool wasNewest = !m_messages.isEmpty() && m_messages.first().key == m_current;
    m_messages = messages;
    if (isUnchanged)
        return;
    if (isOther)
        m_shown = ShownAtOnce;
    rebuild(wasNewest);
    if (m_messages.isEmpty())
        m_current.clear();
}

/// Fills the document again. A message that the user has chosen stays the current one, so that a command does not apply
/// to another.
/// @param wasNewest whether the current message was the newest: then it is so again, if the end was visible
void ThreadView::rebuild(bool wasNewest)
{
    const int place = verticalScrollBar()->value();
    const bool wasAtEnd = place == verticalScrollBar()->maximum();
    build();
    const bool isGone = !entryOf(m_current);
    if (m_entries.isEmpty() || !(isGone || wasAtEnd))
        verticalScrollBar()->setValue(place);
    else if (isGone || wasNewest)
        setCurrent(m_messages.first().key);
    else
        scrollTo(m_entries.last());
}

void ThreadView::showEarlier()
{
    const QString oldest = m_entries.isEmpty() ? QString() : m_entries.first().key;
    m_shown += ShownAtOnce;
    build();
    if (const Entry* const entry = entryOf(oldest))
        scrollTo(*entry);
}

void ThreadView::setCurrent(const QString& key)
{
    const auto message = std::find_if(m_messages.cbegin(), m_messages.cend(),
                                      [&](const Message& entry) { return entry.key == key; });
    if (message == m_messages.cend())
        return;
    const int index = int(message - m_messages.cbegin());
    if (index >= m_shown) {
        m_shown = index + ShownAtOnce;
        build();
    }
    m_current = key;
    if (const Entry* const entry = entryOf(key))
        scrollTo(*entry);
    viewport()->update();
}

void ThreadView::retranslate()
{
    const int place = verticalScrollBar()->value();
    build();
    verticalScrollBar()->setValue(place);
}

const ThreadView::Entry* ThreadView::entryOf(const QString& key) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry& entry) { return entry.key == key; });
    return found == m_entries.end() ? nullptr : &*found;
}

void ThreadView::scrollTo(const Entry& entry)
{
    const QRectF place = placeOf(entry);
    QScrollBar* const bar = verticalScrollBar();
    const int height = viewport()->height();
    if (place.top() < bar->value() || place.height() > height)
        bar->setValue(int(place.top()) - ThreadLayout::Padding);
    else if (place.bottom() > bar->value() + height)
        bar->setValue(int(place.bottom()) + ThreadLayout::Padding - height);
}

void ThreadView::step(int direction)
{
    const Entry* const entry = entryOf(m_current);
    const int index = entry ? int(entry - m_entries.constData()) + direction : -1;
    if (index < 0 || index >= m_entries.size())
        return;
    setCurrent(m_entries[index].key);
    Q_EMIT currentChanged();
}

void ThreadView::chooseAt(const QPoint& place)
{
    const qreal y = place.y() + verticalScrollBar()->value();
    const auto found = std::find_if(m_entries.cbegin(), m_entries.cend(),
                                    [&](const Entry& entry) { return y <= placeOf(entry).bottom(); });
    if (found == m_entries.cend() || found->key == m_current)
        return;
    m_current = found->key;
    viewport()->update();
    Q_EMIT currentChanged();
}

void ThreadView::mousePressEvent(QMouseEvent* event)
{
    chooseAt(event->pos());
    QTextBrowser::mousePressEvent(event);
}

void ThreadView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Up && event->modifiers() == Qt::NoModifier)
        step(-1);
    else if (event->key() == Qt::Key_Down && event->modifiers() == Qt::NoModifier)
        step(1);
    else if (event->matches(QKeySequence::Copy))
        Q_EMIT copyWanted();
    else
        QTextBrowser::keyPressEvent(event);
}

void ThreadView::changeEvent(QEvent* event)
{
    QTextBrowser::changeEvent(event);
    constexpr QEvent::Type looks[] = {QEvent::PaletteChange, QEvent::StyleChange, QEvent::FontChange,
                                      QEvent::LayoutDirectionChange};
    if (std::find(std::begin(looks), std::end(looks), event->type()) != std::end(looks))
        retranslate();
}

void ThreadView::resizeEvent(QResizeEvent* event)
{
    QTextBrowser::resizeEvent(event);
    if (const Entry* const entry = entryOf(m_current))
        scrollTo(*entry);
}

void ThreadView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(0, -verticalScrollBar()->value());
    const QColor base = palette().color(QPalette::Base);
    const QColor received = Look::mixed(base, palette().color(QPalette::Text), 0.07);
    const QColor sent = Look::mixed(base, palette().color(QPalette::Highlight), 0.16);
    const QRectF visible(event->rect().translated(0, verticalScrollBar()->value()));
    for (const Entry& entry : qAsConst(m_entries)) {
        const QRectF place = placeOf(entry).adjusted(0.5, 0.5, -0.5, -0.5);
        if (!place.intersects(visible))
            continue;
        painter.setPen(entry.key == m_current ? QPen(palette().highlight(), 1.0) : QPen(Qt::NoPen));
        painter.setBrush(entry.isSent ? sent : received);
        painter.drawRoundedRect(place, Look::Radius, Look::Radius);
    }
    painter.end();
    QTextBrowser::paintEvent(event);
}
