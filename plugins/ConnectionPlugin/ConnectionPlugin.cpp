#include "ConnectionPlugin.h"

#include "ConnectionPage.h"

QWidget* ConnectionPlugin::createPage(QWidget* parent)
{
    return new ConnectionPage(followDevices(), parent);
}
