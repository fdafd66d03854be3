#include "SmsPlugin.h"

#include "MessagesPage.h"

QWidget* SmsPlugin::createPage(QWidget* parent)
{
    return new MessagesPage(followDevices(), parent);
}
