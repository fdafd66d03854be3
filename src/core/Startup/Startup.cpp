#include "Startup/Startup.h"

#include "Change/Change.h"
#include "PluginContainer/PluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PluginContainer/interfaces/IUIPlugin.h"
#include "common/CommonUtils.h"
#include "common/GuardedCall.h"
#include "common/Log.h"

#include <QRect>

namespace {

/// Replaces the time in two log lines. It is fixed and part of the log's interface.
constexpr const char* FixedTime = "10:23:53";

} // namespace

IPluginContainer* Startup::m_pPluginContainer = nullptr;
IUIPlugin* Startup::m_pUiPlugin = nullptr;
IMainFrameUIService* Startup::m_pUiPluginService = nullptr;

Startup::Startup(bool noSplash)
{
    LOG_DEBUG("%s: %s: entered", LOG_FILE, LOG_FUNCTION);
    const QString installation = CommonUtils::GetPluginLibraryPath();
    QString pluginsLib = installation + QStringLiteral("/config/pluginslib.xml");
    QString pluginsConfig = installation + QStringLiteral("/config/PluginsConfig.xml");
    if (!noSplash && haveSplashScreen()) {
        LOG_DEBUG("%s: %s: showing splash screen...", LOG_FILE, LOG_FUNCTION);
        showSplashStartupTime();
    }
    initializePluginContainer(pluginsLib, pluginsConfig, noSplash);
    loadMainFramePlugin();
    LOG_DEBUG("%s: %s: exit", LOG_FILE, LOG_FUNCTION);
}

Startup::~Startup()
{
    LOG_DEBUG("%s : %s : %s : Enter", FixedTime, LOG_FILE, LOG_FUNCTION);
    LOG_DEBUG("%s: %s: entered", LOG_FILE, LOG_FUNCTION);
    delete m_pPluginContainer; // plugins still use the pointer while it unloads them
    m_pPluginContainer = nullptr;
}

IPluginContainer* Startup::GetPluginContainer()
{
    return m_pPluginContainer;
}

IUIPlugin* Startup::GetMainFrame()
{
    return m_pUiPlugin;
}

IMainFrameUIService* Startup::GetMainFrameService()
{
    return m_pUiPluginService;
}

QString Startup::tr(QString key)
{
    LOG_DEBUG("%s : %s : %s : Enter", FixedTime, LOG_FILE, LOG_FUNCTION);
    return Change::Stratup_tr(key, QStringLiteral("XFramePlugin"));
}

bool Startup::initializePluginContainer(QString& pluginsLib, QString& pluginsConfig, bool noSplash)
{
    LOG_DEBUG("%s: %s: entered", LOG_FILE, LOG_FUNCTION);
    m_pPluginContainer = new PluginContainer(pluginsLib, pluginsConfig, noSplash);
    return true;
}

bool Startup::loadMainFramePlugin()
{
    LOG_DEBUG("%s: %s: entered", LOG_FILE, LOG_FUNCTION);
    const QString mainFrame = m_pPluginContainer->GetMainFramePluginName();
    m_pUiPlugin = qobject_cast<IUIPlugin*>(m_pPluginContainer->GetPlugin(mainFrame, PluginIds::RootObject));
    if (!m_pUiPlugin) {
        LOG_DEBUG("%s: %s: loadMainFramePlugin failed...", LOG_FILE, LOG_FUNCTION);
        return false;
    }
    LOG_DEBUG("%s: %s: m_pUiPlugin loaded...", LOG_FILE, LOG_FUNCTION);
    m_pUiPluginService = qobject_cast<IMainFrameUIService*>(
        m_pPluginContainer->GetPlugin(mainFrame, PluginIds::MainFrameService));
    if (!m_pUiPluginService) {
        LOG_DEBUG("%s: %s: m_pUiPluginService load fail!...", LOG_FILE, LOG_FUNCTION);
        return false;
    }
    guardedCall("BuildFrame", mainFrame, [] { m_pUiPlugin->BuildFrame(nullptr, QRect()); });
    return true;
}
