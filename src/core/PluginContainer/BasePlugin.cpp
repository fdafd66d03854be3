#include "PluginContainer/BasePlugin.h"

#include "PluginContainer/PluginIds.h"

BasePlugin::BasePlugin()
{
    publish(PluginIds::RootObject, this);
}

BasePlugin::~BasePlugin() = default;

int BasePlugin::Init()
{
    return 1;
}

bool BasePlugin::QueryInterface(int iid, void** out)
{
    QObject* service = m_services.value(iid);
    if (!service || !out)
        return false;
    *out = service;
    return true;
}

void BasePlugin::Destroy() {}

void BasePlugin::UnSDKRegisterEvent() {}

void BasePlugin::publish(int iid, QObject* service)
{
    m_services.insert(iid, service);
}
