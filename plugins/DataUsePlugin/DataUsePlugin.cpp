#include "DataUsePlugin.h"

#include "DataPage.h"
#include "DataUse.h"
#include "LimitPage.h"
#include "PluginContainer/PluginIds.h"

DataUsePlugin::DataUsePlugin()
{
    publish(PluginIds::SettingsPage, &m_settingsPage);
}

DataUsePlugin::~DataUsePlugin() = default;

int DataUsePlugin::Init()
{
    m_dataUse = std::make_unique<DataUse>(followDevices());
    m_settingsPage.start([this](QWidget* parent) { return new LimitPage(*m_dataUse, parent); });
    return PagePlugin::Init();
}

void DataUsePlugin::Destroy()
{
    m_settingsPage.stop();
    PagePlugin::Destroy();
    m_dataUse.reset();
}

QWidget* DataUsePlugin::createPage(QWidget* parent)
{
    return new DataPage(*m_dataUse, parent);
}
