#pragma once

#include "PluginContainer/BasePlugin.h"
#include "PluginContainer/interfaces/IUIPlugin.h"
#include "support/DeviceEvents.h"

#include <QPointer>

/// A plugin whose page the main frame embeds. Derived plugins only say what their page is; the page's life
/// and the way back out of the device service are kept here.
class PagePlugin : public BasePlugin, public IUIPlugin
{
    Q_OBJECT
    Q_INTERFACES(IUIPlugin)

public:
    PagePlugin();

    QWidget* BuildFrame(QWidget* parent, const QRect& geometry) override;
    void Destroy() override;
    void UnSDKRegisterEvent() override;

protected:
    /// Makes the page, with window title and window icon set.
    virtual QWidget* createPage(QWidget* parent) = 0;

    /// For pages that show something of the modems: the events, listened to from now on.
    DeviceEvents* followDevices();

private:
    DeviceEvents m_deviceEvents;
    QPointer<QWidget> m_page;
};
