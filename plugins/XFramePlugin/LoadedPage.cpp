#include "LoadedPage.h"

#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IUIPlugin.h"
#include "common/GuardedCall.h"

#include <QRect>

IUIPlugin* loadedPage(IPluginContainer& container, const QString& clsid)
{
    if (!container.IsPluginLoaded(clsid))
        return nullptr;
    return qobject_cast<IUIPlugin*>(container.GetPlugin(clsid, PluginIds::FirstService));
}

QWidget* buildPage(IPluginContainer& container, const QString& clsid, QWidget* parent)
{
    QWidget* page = nullptr;
    if (IUIPlugin* const plugin = loadedPage(container, clsid))
        guardedCall("BuildFrame", container.GetPluginNameByClsid(clsid),
                    [&] { page = plugin->BuildFrame(parent, QRect()); });
    return page;
}
