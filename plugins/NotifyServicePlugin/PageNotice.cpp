#include "PageNotice.h"

#include "common/CommonUtils.h"
#include "common/ShowInFront.h"
#include "support/OtherPlugins.h"

#include <QGuiApplication>
#include <QWidget>

namespace {

/// Brings the main window to the front with the page of a plugin, or with another if the plugin has none.
void showWindow(const QString& clsid)
{
    QWidget* const window = CommonUtils::GetMainWindow();
    if (window && !showPage(clsid))
        showInFront(window);
}

} // namespace

PageNotice::PageNotice()
{
    connect(&m_notification, &DesktopNotification::activated, this, [this] {
        m_notification.close();
        showWindow(m_clsid);
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
