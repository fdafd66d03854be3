#include "DeviceInfoPlugin.h"

#include "ModemPage.h"

QWidget* DeviceInfoPlugin::createPage(QWidget* parent)
{
    return new ModemPage(followDevices(), parent);
}
