#pragma once

#include "Message.h"

#include <QTextBrowser>

/// Distances in a conversation, in device-independent pixels, and the scheme of its link to earlier messages.
namespace ThreadLayout {

constexpr int Indent = 40;  ///< of the side away from the sender
constexpr int Padding = 8;  ///< around the text of a message
constexpr int Distance = 6; ///< between messages
constexpr QLatin1String EarlierScheme("earlier");

} // namespace ThreadLayout

/// The messages of a conversation, the newest at the end, each on a background with rounded corners. One of them is the
/// current one, which commands apply to: it has a frame, and is chosen with a click or the Up and Down keys. The beginning
/// of a long conversation is shown on request, so that every conversation appears at once. GUI thread only.
class ThreadView : public QTextBrowser
{
    Q_OBJECT

public:
    explicit ThreadView(QWidget* parent = nullptr);

    /// Shows a conversation.
    /// @param messages newest first; may be empty
    /// @param isOther  whether it is another one than before: its newest message becomes the current one
    void setMessages(const Messages& messages, bool isOther);

    /// The key of the current message; empty when there is none.
    const QString& current() const { return m_current; }

    /// The key of the newest message; empty when there is none.
    QString newest() const { return m_messages.isEmpty() ? QString() : m_messages.first().key; }

    /// Makes a message the current one and scrolls to it.
    void setCurrent(const QString& key);

    /// Highlights a text wherever it occurs; an empty text removes the highlights.
    void setSearch(const QString& search);

    /// Shows all texts again in the current language.
    void retranslate();

Q_SIGNALS:
    /// Another message is the current one, by the user's choice.
    void currentChanged();

    /// The user has pressed the keys for copying.
    void copyWanted();

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// Where a message is in the document.
    struct Entry
    {
        QString key;
        bool isSent;
        int firstBlock;
        int lastBlock;
    };

    void rebuild(bool wasNewest);
    void build();
    void addEarlierLink(QTextCursor& cursor);
    void addMessage(const Message& message, QTextCursor& cursor);
    void shapeBlocks(const Entry& entry, QTextCursor& cursor, int start);
    void showEarlier();
    void markSearch();
    void scrollTo(const Entry& entry);
    const Entry* entryOf(const QString& key) const;
    QRectF placeOf(const Entry& entry) const;
    void chooseAt(const QPoint& place);
    void step(int direction);

    Messages m_messages; ///< newest first
    int m_shown;         ///< how many of them are in the document, at most
    QVector<Entry> m_entries;
    QString m_current;
    QString m_search;
};
