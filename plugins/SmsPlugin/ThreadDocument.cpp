// The document of a conversation: filling it, highlights, and where its messages are.
#include "MessageBrowser.h"
#include "MessageText.h"
#include "Shown.h"
#include "ThreadView.h"
#include "support/Look.h"
#include "support/Text.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextFrame>

#include <algorithm>

void ThreadView::build()
{
    m_entries.clear();
    clear();
    colorLinks(this);
    setUndoRedoEnabled(false);
    QTextFrameFormat frame = document()->rootFrame()->frameFormat();
    frame.setTopMargin(ThreadLayout::Padding + 1); // the first block's own margin is ignored
    frame.setBottomMargin(2 * ThreadLayout::Padding);
    document()->rootFrame()->setFrameFormat(frame);
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    if (m_messages.size() > m_shown)
        addEarlierLink(cursor);
    for (int i = std::min(m_shown, m_messages.size()) - 1; i >= 0; --i)
        addMessage(m_messages[i], cursor);
    cursor.endEditBlock();
    markSearch();
}

void ThreadView::addEarlierLink(QTextCursor& cursor)
{
    QTextBlockFormat format;
    format.setAlignment(Qt::AlignHCenter);
    format.setTopMargin(Look::Gap);
    cursor.setBlockFormat(format);
    QTextCharFormat link;
    link.setAnchor(true);
    link.setAnchorHref(ThreadLayout::EarlierScheme + QLatin1Char(':'));
    link.setForeground(Look::toneColor(Look::Tone::Info, palette()));
    link.setFontUnderline(true);
    cursor.insertText(text("IDS_SMS_EARLIER"), link);
}

void ThreadView::addMessage(const Message& message, QTextCursor& cursor)
{
    if (!document()->isEmpty())
        cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
    const int start = cursor.position();
    const int firstBlock = cursor.blockNumber();
    if (const QString fate = shownFate(message); !fate.isEmpty()) {
        QTextCharFormat quiet;
        quiet.setForeground(Look::toneColor(
            message.state == QLatin1String("failed") ? Look::Tone::Bad : Look::Tone::Quiet, palette()));
        quiet.setFontPointSize(font().pointSizeF() * Look::SmallText);
        cursor.insertText(fate, quiet);
        cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
    }
    cursor.insertHtml(richMessage(message.text));
    m_entries.append({message.key, message.isSent, firstBlock, cursor.blockNumber()});
    shapeBlocks(m_entries.last(), cursor, start);
}

void ThreadView::shapeBlocks(const Entry& entry, QTextCursor& cursor, int start)
{
    const bool isOnLeft = entry.isSent == isRightToLeft();
    QTextBlockFormat inner;
    inner.setLeftMargin(ThreadLayout::Padding + 2 + (isOnLeft ? 0 : ThreadLayout::Indent));
    inner.setRightMargin(ThreadLayout::Padding + 2 + (isOnLeft ? ThreadLayout::Indent : 0));
    inner.setTopMargin(0);
    inner.setBottomMargin(0);
    cursor.setPosition(start, QTextCursor::KeepAnchor);
    cursor.mergeBlockFormat(inner);
    QTextBlockFormat edge;
    edge.setTopMargin(2 * ThreadLayout::Padding + ThreadLayout::Distance);
    QTextCursor(document()->findBlockByNumber(entry.firstBlock)).mergeBlockFormat(edge);
    QTextBlockFormat end;
    end.setBottomMargin(ThreadLayout::Padding);
    QTextCursor(document()->findBlockByNumber(entry.lastBlock)).mergeBlockFormat(end);
    cursor.movePosition(QTextCursor::End);
}

/// The place of a message in the document, with its padding.
QRectF ThreadView::placeOf(const Entry& entry) const
{
    const auto* const layout = document()->documentLayout();
    const QRectF first = layout->blockBoundingRect(document()->findBlockByNumber(entry.firstBlock));
    const QRectF last = layout->blockBoundingRect(document()->findBlockByNumber(entry.lastBlock));
    const bool isOnLeft = entry.isSent == isRightToLeft();
    const qreal left = isOnLeft ? 2 : ThreadLayout::Indent + 2;
    return QRectF(left, first.top() - ThreadLayout::Padding,
                  document()->size().width() - ThreadLayout::Indent - 4,
                  last.bottom() - first.top() + 2 * ThreadLayout::Padding);
}

void ThreadView::setSearch(const QString& search)
{
    m_search = search;
    markSearch();
}

void ThreadView::markSearch()
{
    QList<ExtraSelection> marks;
    QTextCharFormat format;
    format.setBackground(palette().highlight());
    format.setForeground(palette().highlightedText());
    QTextCursor place(document());
    while (!m_search.isEmpty() && !(place = document()->find(m_search, place)).isNull())
        marks.append({place, format});
    setExtraSelections(marks);
}
