#include "StatusBarPlace.h"

#include "MainWindow.h"
#include "support/LoadedPage.h"

namespace {

constexpr QLatin1String StatusBarClsid("6A0C9E37-28D5-4B91-9F4E-17B3A5D2C860");

} // namespace

StatusBarPlace::StatusBarPlace(IPluginContainer& container, MainWindow& window)
    : m_container(container)
    , m_window(window)
{
}

void StatusBarPlace::dropDisabled()
{
    if (!loadedPage(m_container, StatusBarClsid))
        delete m_statusBar;
}

void StatusBarPlace::fill()
{
    if (m_statusBar)
        return;
    m_statusBar = buildPage(m_container, StatusBarClsid, &m_window);
    if (m_statusBar)
        m_window.setStatusBar(m_statusBar);
}
