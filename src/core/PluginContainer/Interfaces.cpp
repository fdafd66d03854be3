// The destructors live here so that each interface has exactly one type description in the process, whichever
// library uses it.
#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/interfaces/IBasePlugin.h"
#include "PluginContainer/interfaces/ICallUIPlugin.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"
#include "PluginContainer/interfaces/ILayout.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PluginContainer/interfaces/INotifyService.h"
#include "PluginContainer/interfaces/IUIPlugin.h"

IBaseInterface::~IBaseInterface() = default;
IPluginContainer::~IPluginContainer() = default;
IPluginTeardown::~IPluginTeardown() = default;
IBasePlugin::~IBasePlugin() = default;
ICallUIPlugin::~ICallUIPlugin() = default;
IDeviceMgr::~IDeviceMgr() = default;
ILayout::~ILayout() = default;
IMainFrameUIService::~IMainFrameUIService() = default;
INotifyService::~INotifyService() = default;
IUIPlugin::~IUIPlugin() = default;

bool IMainFrameUIService::UsesCustomFrame()
{
    return false;
}

int IMainFrameUIService::GetTitleHeight()
{
    return 29;
}

bool IMainFrameUIService::ShowPage(const QString&)
{
    return false;
}

int IMainFrameUIService::GetFrameWidth()
{
    return 3;
}

void ILayout::ShowPage(QWidget*, QWidget*) {}
