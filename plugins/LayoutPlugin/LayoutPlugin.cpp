#include "LayoutPlugin.h"

#include "PluginContainer/PluginIds.h"
#include "SideBarArea.h"

LayoutPlugin::LayoutPlugin()
{
    publish(PluginIds::FirstService, this);
}

void LayoutPlugin::Destroy()
{
    for (const QPointer<QWidget>& area : qAsConst(m_areas))
        delete area;
    m_areas.clear();
}

QWidget* LayoutPlugin::CreateArea(QWidget* parent)
{
    m_areas.removeAll(nullptr);
    m_areas.append(new SideBarArea(parent));
    return m_areas.last();
}

void LayoutPlugin::AddPage(QWidget* area, QWidget* page)
{
    if (auto* sideBarArea = qobject_cast<SideBarArea*>(area))
        sideBarArea->addPage(page);
}

void LayoutPlugin::RemovePage(QWidget* area, QWidget* page)
{
    if (auto* sideBarArea = qobject_cast<SideBarArea*>(area))
        sideBarArea->removePage(page);
}

void LayoutPlugin::ShowPage(QWidget* area, QWidget* page)
{
    if (auto* sideBarArea = qobject_cast<SideBarArea*>(area))
        sideBarArea->showPage(page);
}
