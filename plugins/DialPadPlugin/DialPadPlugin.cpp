#include "DialPadPlugin.h"

#include "DialPadPage.h"

QWidget* DialPadPlugin::createPage(QWidget* parent)
{
    return new DialPadPage(followDevices(), parent);
}
