#include "WindowFrame.h"

#include "ExtendDialog/ExtendDialog.h"
#include "FrameStyle.h"
#include "HeaderBar.h"
#include "NativeFrame.h"
#include "TitleBar/TitleBar.h"
#include "common/CommonUtils.h"
#include "support/Look.h"
#include "support/WindowEdges.h"

#include <QLabel>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>
#include <QWindowStateChangeEvent>

WindowFrame::WindowFrame(QWidget* window, QVBoxLayout* layout, HeaderBar* header)
    : QObject(window)
    , m_window(window)
    , m_titleBar(new TitleBar(window, 0))
{
    constexpr int border = FrameStyle::BorderWidth;
    layout->setContentsMargins(border, border, border, border);
    layout->insertWidget(0, m_titleBar);
    takeHeader(header);
    // The bar then keeps the window's own menu up to date. Minimising itself is changed below.
    m_titleBar->SetMinimizeBehavior(true);
    auto* const button = m_titleBar->findChild<QToolButton*>(QStringLiteral("Core_ButtonMinimize"));
    disconnect(button, &QToolButton::clicked, m_titleBar, nullptr);
    connect(button, &QToolButton::clicked, this, &WindowFrame::minimize);
    new WindowEdges(m_titleBar, border);
    window->installEventFilter(this);
}

/// The header takes the place of the title.
void WindowFrame::takeHeader(HeaderBar* header)
{
    auto* const layout = static_cast<QHBoxLayout*>(m_titleBar->layout());
    auto* const title = m_titleBar->findChild<QLabel*>(QStringLiteral("Core_LabelTitle"));
    layout->setContentsMargins(Look::Gap, 0, Look::Gap, 0);
    layout->insertSpacing(0, Look::Gap); // mirrored, unlike margins
    layout->insertWidget(layout->indexOf(title), header, 1);
    title->hide();
    header->becomeTitle();
}

void WindowFrame::setPictureSize(int size)
{
    m_titleBar->setCusTitleBarIcon({}, size, size);
}

bool WindowFrame::nativeEvent(void* message, long* result)
{
    return NativeFrame::handle(*m_titleBar, message, result);
}

bool WindowFrame::isMaximized() const
{
    return m_titleBar->IsMaximized();
}

void WindowFrame::setMaximized(bool isMaximized)
{
    if (isMaximized == m_titleBar->IsMaximized())
        return;
    if (isMaximized)
        m_titleBar->showMax();
    else
        m_titleBar->showRestore();
}

void WindowFrame::minimize()
{
    m_window->showMinimized();
}

bool WindowFrame::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Paint:
        paint();
        break;
    case QEvent::Resize: // also follows a change of TitleBar's state
        resized();
        break;
    case QEvent::WinIdChange:
        attach();
        break;
    case QEvent::WindowStateChange:
        windowStateChanged(static_cast<QWindowStateChangeEvent*>(event)->oldState());
        break;
    default:
        break;
    }
    return false;
}

void WindowFrame::attach()
{
    NativeFrame::attach(*m_window);
    // The widget forgets that it is maximised when its geometry is set.
    connect(m_window->windowHandle(), &QWindow::windowStateChanged, this, &WindowFrame::desktopRestored);
}

void WindowFrame::windowStateChanged(Qt::WindowStates before)
{
    const Qt::WindowStates now = m_window->windowState();
    if ((before ^ now) & Qt::WindowMinimized) {
        if (now & Qt::WindowMinimized)
            m_titleBar->HideAllPopupWindow();
        else
            m_titleBar->RestoreAllPopupWindow();
    }
    if ((now & ~before) & Qt::WindowMaximized)
        desktopMaximized();
}

/// The desktop has maximised the window, which the title bar does not see.
void WindowFrame::desktopMaximized()
{
    m_isMaximizedByDesktop = true;
    if (!isMaximized())
        m_window->setGeometry(m_window->normalGeometry()); // the title bar remembers this place
    setMaximized(true);
}

void WindowFrame::desktopRestored(Qt::WindowState state)
{
    if (state != Qt::WindowNoState || !m_isMaximizedByDesktop)
        return;
    m_isMaximizedByDesktop = false;
    setMaximized(false);
}

/// When the title bar restores a window, the desktop has to do so as well.
void WindowFrame::resized()
{
    if (!isMaximized() && m_isMaximizedByDesktop)
        m_window->windowHandle()->setWindowState(Qt::WindowNoState);
    roundCorners();
}

void WindowFrame::roundCorners()
{
    if (CommonUtils::IsMiniMode() || isMaximized()) {
        m_window->clearMask();
        return;
    }
    QRegion left;
    QRegion right;
    ExtendDialog::cornerRegions(m_window->width(), left, right);
    m_window->setMask(QRegion(m_window->rect()) - left - right);
}

void WindowFrame::paint()
{
    QPainter painter(m_window);
    const QPalette& palette = m_titleBar->palette();
    painter.fillRect(QRect(QPoint(), QPoint(m_window->width(), m_titleBar->geometry().bottom())),
                     palette.base());
    painter.setPen(Look::lineColor(palette));
    painter.drawRect(m_window->rect().adjusted(0, 0, -1, -1));
}
