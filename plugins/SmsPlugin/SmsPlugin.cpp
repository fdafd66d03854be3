#include "SmsPlugin.h"

#include "MessagesPage.h"

QWidget* SmsPlugin::createPage(QWidget* parent)
{
    auto* page = new MessagesPage(parent);
    DeviceEvents* const events = followDevices();
    connect(events, &DeviceEvents::changed, page, &MessagesPage::devicesChanged);
    connect(events, &DeviceEvents::messagesChanged, page, &MessagesPage::readMessages);
    return page;
}
