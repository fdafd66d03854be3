#include "StatusBarMgrPlugin.h"

#include "StatusBar.h"

QWidget* StatusBarMgrPlugin::createPage(QWidget* parent)
{
    auto* statusBar = new StatusBar(parent);
    DeviceEvents* const events = followDevices();
    connect(events, &DeviceEvents::changed, statusBar, &StatusBar::refresh);
    connect(events, &DeviceEvents::statusChanged, statusBar, &StatusBar::refresh);
    return statusBar;
}
