#include "DialPadPlugin.h"

#include "DialPadPage.h"

QWidget* DialPadPlugin::createPage(QWidget* parent)
{
    auto* page = new DialPadPage(parent);
    connect(followDevices(), &DeviceEvents::changed, page, &DialPadPage::devicesChanged);
    return page;
}
