#include "LoadedPage.h"

#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IUIPlugin.h"

IUIPlugin* loadedPage(IPluginContainer& container, const QString& clsid)
{
    if (!container.IsPluginLoaded(clsid))
        return nullptr;
    return qobject_cast<IUIPlugin*>(container.GetPlugin(clsid, PluginIds::FirstService));
}
