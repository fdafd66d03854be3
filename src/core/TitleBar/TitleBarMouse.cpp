// Mouse input of a title bar, and the window's system menu.
#include "TitleBar/TitleBar.h"

#include "TitleBar/SystemMenu_p.h"
#include "common/Log.h"

#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QToolButton>
#include <QWindow>

namespace {

/// A Wayland client cannot read or set the position of its window; the compositor has to move it.
bool isMovedByCompositor()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

bool isShown(const QWidget* part)
{
    return part && part->isVisible();
}

} // namespace

void TitleBar::mousePressEvent(QMouseEvent* event)
{
    if (!event) {
        LOG_DEBUG("%s, %s QMouseEvent is NULL", LOG_FILE, LOG_FUNCTION);
        return;
    }
    m_bPressed = true;
    m_pointPress = event->globalPos() - window()->geometry().topLeft();
    if (isIconPressed(event->pos()))
        showSystemMenu(event->globalPos());
    else if (window()->cursor().shape() != Qt::ArrowCursor)
        window()->setCursor(Qt::ArrowCursor);
}

void TitleBar::mouseMoveEvent(QMouseEvent* event)
{
    const bool fillsScreen = m_bMaximized && !m_bInTile;
    if (!event || !m_bPressed || !m_bMoveable || fillsScreen)
        return;
    if (isMovedByCompositor()) {
        m_bPressed = false; // the compositor takes the release of the button
        window()->windowHandle()->startSystemMove();
    } else if (staysAvailable(event->globalPos(), LOG_FUNCTION)) {
        moveWindow(event->globalPos() - m_pointPress);
    }
}

/// Whether the cursor keeps a distance from the edges of the screen.
bool TitleBar::staysAvailable(const QPoint& cursor, const char* function) const
{
    constexpr QPoint distance(3, 3);
    const QRect available = availableGeometry();
    if (available.isNull()) {
        LOG_DEBUG("%s, %s, %s : Can't get desktopwidget!!!", LOG_TIME, LOG_FILE, function);
        return false;
    }
    if (available.contains(cursor + distance) && available.contains(cursor - distance))
        return true;
    LOG_DEBUG("%s, %s, %s : Move out of available area!!", LOG_TIME, LOG_FILE, function);
    return false;
}

void TitleBar::moveWindow(const QPoint& topLeft)
{
    if (m_bInTile && m_bHoldsTile) {
        setOccupyState(true, m_rectTile);
        m_rectTile.moveTo(topLeft);
        setOccupyState(false, m_rectTile);
    }
    window()->move(topLeft);
}

void TitleBar::mouseReleaseEvent(QMouseEvent*)
{
    m_bPressed = false;
}

void TitleBar::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (!event)
        return;
    m_bPressed = false; // otherwise the window would jump when the pointer moves
    if (isIconPressed(event->pos())) {
        window()->close();
        return;
    }
    if (event->button() != Qt::LeftButton || !(isShown(m_pButtonMaximize) || isShown(m_pButtonRestore)))
        return;
    if (m_bMaximized || m_bInTile)
        showRestore();
    else
        showMax();
}

void TitleBar::enterEvent(QEvent* event)
{
    window()->setCursor(Qt::ArrowCursor); // the window's edges may have set another
    QFrame::enterEvent(event);
}

void TitleBar::closeEvent(QCloseEvent* event)
{
    QFrame::closeEvent(event);
}

bool TitleBar::isIconPressed(QPoint const& point) const
{
    if (!m_pLabelIcon) {
        LOG_DEBUG("%s, %s : title Icon is null", LOG_FILE, LOG_FUNCTION);
        return false;
    }
    if (!m_pLabelIcon->isVisible()) {
        LOG_DEBUG("%s, %s : title Icon is hidden", LOG_FILE, LOG_FUNCTION);
        return false;
    }
    return m_pLabelIcon->geometry().contains(point);
}

void TitleBar::initSysmenu()
{
    if (m_bMinimizeHides)
        m_pSystemMenu->setNativeStates(m_bMaximized);
}

void TitleBar::SetSysmenuState(unsigned int menu, bool isMaximized)
{
    if (m_bMinimizeHides)
        SystemMenu::setStates(reinterpret_cast<void*>(quintptr(menu)), isMaximized);
}

void TitleBar::showSystemMenu(QPoint const& point)
{
    if (m_bMenuShown) {
        m_bMenuShown = false;
        return;
    }
    initSysmenu();
    m_bMenuShown = true;
    m_pSystemMenu->show(point, m_bMaximized);
}
