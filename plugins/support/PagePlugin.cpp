#include "support/PagePlugin.h"

#include "PluginContainer/PluginIds.h"

#include <QRect>
#include <QWidget>

PagePlugin::PagePlugin()
{
    publish(PluginIds::FirstService, this);
}

QWidget* PagePlugin::BuildFrame(QWidget* parent, const QRect& geometry)
{
    delete m_page;
    m_page = createPage(parent);
    if (!geometry.isNull())
        m_page->setGeometry(geometry);
    return m_page;
}

void PagePlugin::Destroy()
{
    UnSDKRegisterEvent();
    delete m_page;
}

void PagePlugin::UnSDKRegisterEvent()
{
    m_deviceEvents.stop();
}

DeviceEvents* PagePlugin::followDevices()
{
    m_deviceEvents.listen();
    return &m_deviceEvents;
}
