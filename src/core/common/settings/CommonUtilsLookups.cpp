#include "common/CommonUtils.h"

#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"
#include "PluginContainer/interfaces/ILayout.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "Startup/Startup.h"
#include "common/GuardedCall.h"
#include "common/Log.h"

#include <QObject>

#include <array>

namespace {

/// Plugins of the embeddable type that the main window never embeds: the main frame, the two that are loaded on
/// first use, and reserved identifiers, which no plugin in this source tree has.
constexpr std::array<QLatin1String, 10> NotEmbeddable{PluginIds::MainFrame,
                                                      QLatin1String("881EA87E-882C-4f22-961C-466E0686F707"),
                                                      QLatin1String("90DC623D-19BD-4dee-8940-470AD75BB60E"),
                                                      QLatin1String("385BDF98-9AA3-4121-9FBB-CACB1CD9608B"),
                                                      PluginIds::LateEmbeddedA,
                                                      PluginIds::LateEmbeddedB,
                                                      QLatin1String("A6CD67EE-16A0-4dbd-9ACB-34801E876418"),
                                                      QLatin1String("140B81C0-F62B-4ee0-9897-BDC3F8F03B18"),
                                                      QLatin1String("D754AE84-535F-4c18-85F8-F154CFE34FFF"),
                                                      QLatin1String("FAB7A06E-5770-4ffd-B511-479BAE2B74AC")};

/// With this bit of the frame style one more plugin is not embedded. Its identifier is reserved as well.
constexpr int CompactFrameStyle = 4;
constexpr QLatin1String NotInCompactFrame("92804312-432E-401F-96BB-1C20D852815D");

constexpr int EmbeddableType = 0;

QWidget* findMainWindow(const char* function)
{
    IPluginContainer* const container = Startup::GetPluginContainer();
    if (!container) {
        LOG_DEBUG("%s: %s: Startup::GetPluginContainer failed", LOG_FILE, function);
        return nullptr;
    }
    QObject* const mainFrame = container->GetPlugin(PluginIds::MainFrame, PluginIds::MainFrameService);
    if (!mainFrame) {
        LOG_DEBUG("%s: %s: pPluginContainer->GetPlugin failed", LOG_FILE, function);
        return nullptr;
    }
    QWidget* window = nullptr;
    if (auto* const service = qobject_cast<IMainFrameUIService*>(mainFrame))
        guardedCall("GetMainWindow", QStringLiteral("main frame"),
                    [&] { window = service->GetMainWindow(); });
    return window;
}

} // namespace

IDeviceMgr* CommonUtils::GetDeviceMgrPlugin()
{
    IPluginContainer* const container = Startup::GetPluginContainer();
    if (!container) {
        LOG_DEBUG("%s: %s: %s:Get plugin container error", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        return nullptr;
    }
    LOG_DEBUG("%s: %s: %s:Get plugin container success", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    QObject* const plugin = container->GetPlugin(PluginIds::DeviceManager, PluginIds::FirstService);
    if (!plugin) {
        LOG_DEBUG("%s: %s: %s:fail to get plugin", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        return nullptr;
    }
    return qobject_cast<IDeviceMgr*>(plugin);
}

QWidget* CommonUtils::GetMainWindow()
{
    LOG_DEBUG("%s: %s: %s : %d : Enter", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
    QWidget* const window = findMainWindow(LOG_FUNCTION);
    LOG_DEBUG("%s: %s: %s : %d : Exit", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
    return window;
}

ILayout* CommonUtils::GetLayoutPlugin()
{
    IPluginContainer* const container = Startup::GetPluginContainer();
    if (!container)
        return nullptr;
    auto* const service = qobject_cast<IMainFrameUIService*>(
        container->GetPlugin(container->GetMainFramePluginName(), PluginIds::MainFrameService));
    if (!service)
        return nullptr;
    QString clsid;
    guardedCall("GetLayoutPluginClsid", QStringLiteral("main frame"),
                [&] { clsid = service->GetLayoutPluginClsid(); });
    return qobject_cast<ILayout*>(container->GetPlugin(clsid, PluginIds::FirstService));
}

bool CommonUtils::IsPluginAvailable(QString clsid)
{
    LOG_DEBUG("Start of %s: %s: %d: ", LOG_FILE, LOG_FUNCTION, __LINE__);
    IPluginContainer* const container = Startup::GetPluginContainer();
    const bool isAvailable = container && container->IsPluginAvailable(std::move(clsid));
    LOG_DEBUG("End of %s: %s: %d: ", LOG_FILE, LOG_FUNCTION, __LINE__);
    return isAvailable;
}

bool CommonUtils::MakeCall(QString number, _UI_EN_CALL_TYPE type)
{
    LOG_DEBUG("Start: %s: %s: %s %d", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
    IPluginContainer* const container = Startup::GetPluginContainer();
    QObject* plugin = nullptr;
    if (container && !number.isEmpty())
        plugin = container->GetPlugin(PluginIds::CallUI, PluginIds::FirstService);
    if (!plugin) {
        LOG_DEBUG("Null pointer returning from : %s: %s: %s %d", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
        return false;
    }
    if (auto* const call = qobject_cast<ICallUIPlugin*>(plugin)) {
        bool isBegun = false;
        guardedCall("Call", QStringLiteral("call UI"), [&] { isBegun = call->Call(number, type); });
        return isBegun;
    }
    LOG_DEBUG("End  : %s: %s: %s %d", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
    return false;
}

QStringList CommonUtils::GetUIEmbedPlugibList()
{
    IPluginContainer* const container = Startup::GetPluginContainer();
    if (!container)
        return {};
    LOG_DEBUG("%s: %s: entered", LOG_FILE, LOG_FUNCTION);
    QStringList clsids = container->GetPluginClsidsByType(EmbeddableType);
    for (const QLatin1String clsid : NotEmbeddable)
        clsids.removeAll(clsid);
    if (GetFrameStyle() & CompactFrameStyle)
        clsids.removeAll(NotInCompactFrame);
    return clsids;
}
