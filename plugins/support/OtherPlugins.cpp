#include "support/OtherPlugins.h"

#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "Startup/Startup.h"
#include "common/GuardedCall.h"

#include <QObject>

bool showPage(const QString& clsid)
{
    IMainFrameUIService* const mainFrame = Startup::GetMainFrameService();
    bool isShown = false;
    if (mainFrame)
        guardedCall("ShowPage", QStringLiteral("main frame"), [&] { isShown = mainFrame->ShowPage(clsid); });
    return isShown;
}

void openSettings(const QString& clsid)
{
    callSlot(PluginIds::MainFrame, PluginIds::MainFrameService, "openSettings", {clsid});
}

bool callSlot(const QString& clsid, int number, const char* slot, const QStringList& arguments)
{
    IPluginContainer* const container = Startup::GetPluginContainer();
    QObject* const plugin = container ? container->GetPlugin(clsid, number) : nullptr;
    if (!plugin)
        return false;
    const auto argument = [&](int index) {
        return index < arguments.size() ? QGenericArgument("QString", &arguments[index]) : QGenericArgument();
    };
    bool isCalled = false;
    guardedCall(slot, container->GetPluginNameByClsid(clsid), [&] {
        isCalled =
            QMetaObject::invokeMethod(plugin, slot, argument(0), argument(1), argument(2), argument(3));
    });
    return isCalled;
}
