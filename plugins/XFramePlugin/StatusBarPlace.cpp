#include "StatusBarPlace.h"

#include "MainWindow.h"
#include "support/Clsids.h"
#include "support/LoadedPage.h"

StatusBarPlace::StatusBarPlace(IPluginContainer& container, MainWindow& window)
    : m_container(container)
    , m_window(window)
{
}

void StatusBarPlace::dropDisabled()
{
    if (!loadedPage(m_container, Clsids::StatusBar))
        delete m_statusBar;
}

void StatusBarPlace::fill()
{
    if (m_statusBar)
        return;
    m_statusBar = buildPage(m_container, Clsids::StatusBar, &m_window);
    if (m_statusBar)
        m_window.setStatusBar(m_statusBar);
}
