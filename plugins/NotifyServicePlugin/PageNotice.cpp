#include "PageNotice.h"

#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "Startup/Startup.h"
#include "common/CommonUtils.h"
#include "common/GuardedCall.h"
#include "common/ShowInFront.h"

#include <QGuiApplication>
#include <QWidget>

namespace {

/// @return false if the main frame has no such page
bool hasShownPage(const QString& clsid)
{
    IMainFrameUIService* const mainFrame = Startup::GetMainFrameService();
    bool isShown = false;
    if (mainFrame)
        guardedCall("ShowPage", QStringLiteral("main frame"), [&] { isShown = mainFrame->ShowPage(clsid); });
    return isShown;
}

/// Brings the main window to the front with the page of a plugin, or with another if the plugin has none.
void showPage(const QString& clsid)
{
    QWidget* const window = CommonUtils::GetMainWindow();
    if (window && !hasShownPage(clsid))
        showInFront(window);
}

} // namespace

PageNotice::PageNotice()
{
    connect(&m_notification, &DesktopNotification::activated, this, [this] {
        m_notification.close();
        showPage(m_clsid);
    });
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            m_notification.close();
    });
}

void PageNotice::show(const QString& title, const QString& body, const QString& clsid, const char* category)
{
    m_clsid = clsid;
    m_notification.show(title, body, category);
}
