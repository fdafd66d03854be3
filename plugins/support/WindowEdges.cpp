#include "support/WindowEdges.h"

#include "TitleBar/TitleBar.h"

#include <QGuiApplication>
#include <QHoverEvent>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace {

constexpr int CornerReach = 16; ///< corners can be grabbed this far along the border, in pixels

Qt::CursorShape cursorFor(Qt::Edges edges)
{
    if (edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge))
        return Qt::SizeFDiagCursor;
    if (edges == (Qt::RightEdge | Qt::TopEdge) || edges == (Qt::LeftEdge | Qt::BottomEdge))
        return Qt::SizeBDiagCursor;
    return edges & (Qt::LeftEdge | Qt::RightEdge) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

/// A rectangle after some of its edges have been moved; the opposite ones stay where they are.
QRect resized(QRect rect, Qt::Edges edges, const QPoint& way, const QSize& smallest)
{
    if (edges & Qt::LeftEdge)
        rect.setLeft(std::min(rect.left() + way.x(), rect.right() + 1 - smallest.width()));
    if (edges & Qt::RightEdge)
        rect.setRight(std::max(rect.right() + way.x(), rect.left() - 1 + smallest.width()));
    if (edges & Qt::TopEdge)
        rect.setTop(std::min(rect.top() + way.y(), rect.bottom() + 1 - smallest.height()));
    if (edges & Qt::BottomEdge)
        rect.setBottom(std::max(rect.bottom() + way.y(), rect.top() - 1 + smallest.height()));
    return rect;
}

} // namespace

WindowEdges::WindowEdges(TitleBar* titleBar, int width)
    : QObject(titleBar)
    , m_titleBar(titleBar)
    , m_window(titleBar->window())
    , m_width(width)
{
    m_window->setAttribute(Qt::WA_Hover); // reports moves over the widgets in the window as well
    m_window->installEventFilter(this);
    titleBar->installEventFilter(this); // that of a dialog covers the upper border
}

Qt::Edges WindowEdges::edgesAt(const QPoint& point) const
{
    const QRect window = m_window->rect();
    const auto without = [&window](int border) {
        return window.adjusted(border, border, -border, -border);
    };
    if (m_titleBar->IsMaximized() || m_titleBar->IsMinimized())
        return {};
    if (without(m_width).contains(point) || !window.contains(point))
        return {};
    const QRect middle = without(CornerReach);
    Qt::Edges edges;
    edges.setFlag(Qt::LeftEdge, point.x() < middle.left());
    edges.setFlag(Qt::RightEdge, point.x() > middle.right());
    edges.setFlag(Qt::TopEdge, point.y() < middle.top());
    edges.setFlag(Qt::BottomEdge, point.y() > middle.bottom());
    return edges;
}

void WindowEdges::showCursor(Qt::Edges edges)
{
    if (edges)
        m_window->setCursor(cursorFor(edges));
    else if (m_hasCursor)
        m_window->unsetCursor();
    m_hasCursor = edges != Qt::Edges();
}

bool WindowEdges::press(const QMouseEvent& event)
{
    const Qt::Edges edges = edgesAt(m_window->mapFromGlobal(event.globalPos()));
    if (event.button() != Qt::LeftButton || !edges)
        return false;
    // A client of Wayland does not know where its window is; the compositor has to resize it.
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        return m_window->windowHandle()->startSystemResize(edges);
    m_dragged = edges;
    m_pressedAt = event.globalPos();
    m_geometry = m_window->geometry();
    return true;
}

void WindowEdges::drag(const QPoint& cursor)
{
    const QSize smallest = m_window->minimumSize().expandedTo(m_window->minimumSizeHint());
    m_window->setGeometry(resized(m_geometry, m_dragged, cursor - m_pressedAt, smallest));
}

bool WindowEdges::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::HoverMove:
        if (!m_dragged)
            showCursor(edgesAt(static_cast<QHoverEvent*>(event)->pos()));
        return false;
    case QEvent::MouseButtonPress:
        return press(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseMove:
        if (m_dragged)
            drag(static_cast<QMouseEvent*>(event)->globalPos());
        return m_dragged != Qt::Edges();
    case QEvent::MouseButtonRelease:
        m_dragged = {};
        return false;
    default:
        return false;
    }
}
