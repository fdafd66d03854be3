#pragma once

#include <QObject>
#include <QWidget>

/// Reports the number of unread messages, which is the badge of the page "Messages"; see Page::setBadge().
class UnreadCount : public QObject
{
    Q_OBJECT

public:
    /// @param page can be deleted at any time; null has no effect
    void follow(QWidget* page);

Q_SIGNALS:
    /// @param unread 0 without a page
    void changed(int unread);

protected:
    bool eventFilter(QObject* page, QEvent* event) override;

private:
    void report();

    QWidget* m_page = nullptr;
};
