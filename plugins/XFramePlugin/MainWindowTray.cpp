// Hiding in the notification area, and the way back.
#include "MainWindow.h"

#include "Background.h"
#include "Menus.h"
#include "support/CloseGuard.h"

#include <QCloseEvent>
#include <QGuiApplication>

#include <utility>

namespace {

/// The desktop may start the application before its notification area. In milliseconds.
constexpr int LongestTrayStart = 10000;

} // namespace

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (hidesOnClose(this)) {
        hideInTray();
        event->ignore();
        return;
    }
    if (m_isInTray)
        QGuiApplication::setQuitOnLastWindowClosed(m_quitsWhenClosed);
    else
        hideAndRemember();
    QWidget::closeEvent(event);
}

bool MainWindow::hasTray() const
{
    return m_menus->hasTray();
}

void MainWindow::showUnread(int unread)
{
    m_menus->showUnread(unread);
}

void MainWindow::followBackground()
{
    setProperty(HidesOnClose, Background::isWanted() && hasTray());
}

/// The notification area can appear and disappear while the application runs.
void MainWindow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::ActivationChange)
        followBackground();
    else if (event->type() == QEvent::WindowStateChange && isMinimized())
        m_menus->keepTray(); // minimising hides all other windows
    QWidget::changeEvent(event);
}

void MainWindow::showAtStart()
{
    if (!Background::isStart() || !Background::isWanted()) {
        show();
        return;
    }
    hideInTray();
    if (!hasTray())
        m_waitForTray.start(LongestTrayStart, this);
}

void MainWindow::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_waitForTray.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    m_waitForTray.stop();
    followBackground();
    if (!hasTray())
        show();
}

/// The end of another window, such as that of a call, must not end the application meanwhile.
void MainWindow::hideInTray()
{
    if (std::exchange(m_isInTray, true))
        return;
    m_quitsWhenClosed = QGuiApplication::quitOnLastWindowClosed();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    if (!isVisible())
        return;        // at the start
    hideAndRemember(); // the session may end before the window is shown again
    if (Background::noteHidden())
        m_menus->tellThatHidden();
}

/// In this order, because remembering the place of a maximised window restores it.
void MainWindow::hideAndRemember()
{
    hide();
    rememberPlace();
}

/// Whoever shows the window need not know that it was in the notification area.
void MainWindow::showEvent(QShowEvent* event)
{
    if (std::exchange(m_isInTray, false)) {
        QGuiApplication::setQuitOnLastWindowClosed(m_quitsWhenClosed);
        restorePlace();
    }
    QWidget::showEvent(event);
}

void MainWindow::quit()
{
    setProperty(HidesOnClose, false);
    if (!close())
        followBackground();
}
