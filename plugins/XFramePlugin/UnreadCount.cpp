#include "UnreadCount.h"

#include <QEvent>
#include <QVariant>

void UnreadCount::follow(QWidget* page)
{
    if (!page || page == m_page)
        return;
    m_page = page;
    page->installEventFilter(this);
    connect(page, &QObject::destroyed, this, [this] {
        m_page = nullptr;
        report();
    });
    report();
}

bool UnreadCount::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::DynamicPropertyChange)
        report();
    return false;
}

void UnreadCount::report()
{
    Q_EMIT changed(m_page ? m_page->property("badge").toInt() : 0);
}
