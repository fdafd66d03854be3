#include "support/LoadedPage.h"

#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/interfaces/IUIPlugin.h"
#include "common/GuardedCall.h"

#include <QRect>

IUIPlugin* loadedPage(IPluginContainer& container, const QString& clsid, int iid)
{
    if (!container.IsPluginLoaded(clsid))
        return nullptr;
    return qobject_cast<IUIPlugin*>(container.GetPlugin(clsid, iid));
}

QWidget* buildPage(IPluginContainer& container, const QString& clsid, QWidget* parent, int iid)
{
    QWidget* page = nullptr;
    if (IUIPlugin* const plugin = loadedPage(container, clsid, iid))
        guardedCall("BuildFrame", container.GetPluginNameByClsid(clsid),
                    [&] { page = plugin->BuildFrame(parent, QRect()); });
    return page;
}
