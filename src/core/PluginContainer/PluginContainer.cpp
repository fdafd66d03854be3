#include "PluginContainer/PluginContainer.h"

#include "Change/Change.h"
#include "Change/LanguageFiles.h"
#include "PluginContainer/CInitConfigThread.h"
#include "PluginContainer/PluginContainer_p.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/PluginInfo.h"
#include "ToolBar/ToolBarLogic.h"
#include "common/CommonUtils.h"
#include "common/Log.h"
#include "common/settings/Setting_p.h"

#include <QMutexLocker>

namespace {

/// The device manager is already loaded, and its own threads may look up strings: take the lock.
bool loadTextsOfSettings(const QString& plugin)
{
    const QMutexLocker locker(&g_mutex);
    Change::GetSettingDefaultLang();
    return Change::LoadLangFile(plugin);
}

} // namespace

PluginContainer::PluginContainer(QString strPluginsFile, QString strPluginsConfig, bool)
{
    LOG_DEBUG("%s: %s: entered, strPluginsFile = %s", LOG_FILE, LOG_FUNCTION, qUtf8Printable(strPluginsFile));
    create(CommonUtils::GetPluginLibraryPath());
    if (!m_pHashPlugins || !m_pListPlugins) {
        LOG_DEBUG("%s: %s: m_pHashPlugins or m_pListPlugins is NULL", LOG_FILE, LOG_FUNCTION);
        return;
    }

    m_strCustomizeName = Settings::Operator.value();
    LOG_DEBUG("getDeviceName: m_strCustomizeName =>%s<=", qUtf8Printable(m_strCustomizeName));
    readFiles(strPluginsFile, strPluginsConfig);
    PluginContainer::GetPlugin(PluginIds::DeviceManager, PluginIds::FirstService);
    startConfigThread();
    setStartupLanguage();
    loadMainFrameTexts(LOG_FUNCTION);
}

PluginContainer::PluginContainer(const Inspected& installation)
{
    create(installation.folder);
    m_strCustomizeName = installation.operatorName;
    const QString config = installation.folder + QLatin1String("/config/");
    readFiles(config + QLatin1String("pluginslib.xml"), config + QLatin1String("PluginsConfig.xml"));
}

PluginContainer::~PluginContainer()
{
    endConfigThread();
    const QMutexLocker locker(&m_mutex);
    stopConfigThread();
    unloadAllPlugins();
    delete m_pHashPlugins;
    qDeleteAll(*m_pListPlugins);
    delete m_pListPlugins;
    delete m_pCommonSet;
    delete m_pEnableTable;
    delete m_pDisableTable;
    if (ToolBarLogic::m_pPluginContainer == this)
        ToolBarLogic::m_pPluginContainer = nullptr;
}

void PluginContainer::create(const QString& pluginFolder)
{
    m_dirPlugins.setPath(pluginFolder);
    d = std::make_unique<PluginContainerPrivate>(m_dirPlugins.path(), m_bDeviceLink);
    m_pHashPlugins = new QHash<QString, PluginInfo*>;
    m_pListPlugins = new QList<PluginInfo*>;
    m_pCommonSet = new QSet<QString>;
    m_pEnableTable = new QHash<QString, QString>;
    m_pDisableTable = new QHash<QString, QString>;
}

void PluginContainer::readFiles(const QString& pluginsFile, const QString& pluginsConfig)
{
    populatePluginInfo(pluginsFile);
    populatePluginsConfig(pluginsConfig);
    updateCommonOperatorCustomization();
}

void PluginContainer::startConfigThread()
{
    if (!m_pInitConfigThread)
        m_pInitConfigThread = new CInitConfigThread;
    m_pInitConfigThread->Init(this);
    m_pInitConfigThread->start(QThread::InheritPriority);
}

void PluginContainer::loadMainFrameTexts(const char* function)
{
    if (loadTextsOfSettings(QStringLiteral("XFramePlugin")))
        return;
    LOG_DEBUG("%s: %s: %s: load XFramePlugin lan file failed", LOG_TIME, LOG_FILE, function);
    Change::SetLangName(LanguageFiles::Fallback);
}

/// The thread's last steps need the lock that the destructor holds from its first step on. So that closing
/// does not wait for a modem, the thread is woken and given the time to finish before the lock is taken.
void PluginContainer::endConfigThread()
{
    constexpr unsigned long longestFinishMs = 1000;
    if (!m_pInitConfigThread || !m_pInitConfigThread->isRunning())
        return;
    d->deviceLink.close();
    m_pInitConfigThread->wait(longestFinishMs);
}

void PluginContainer::stopConfigThread()
{
    constexpr unsigned int longestWaitSeconds = 5;
    constexpr unsigned long terminationMs = 1000;
    if (!m_pInitConfigThread)
        return;
    if (m_pInitConfigThread->isRunning()) {
        CommonUtils::WaitForThreadToStop(m_pInitConfigThread, longestWaitSeconds);
        m_pInitConfigThread->wait(terminationMs);
        d->deviceLink.unregisterAfterTermination();
    }
    if (!m_pInitConfigThread->isRunning()) {
        d->isDeviceMgrInUse = false; // a thread that was terminated could not clear it
        delete m_pInitConfigThread;  // deleting a running thread would abort the process
    }
    m_pInitConfigThread = nullptr;
}

void PluginContainer::Release() {}

int PluginContainer::GetLastError()
{
    return 0;
}

QString PluginContainer::GetMainFramePluginName()
{
    return m_strMainPlugin;
}

bool PluginContainer::IsPluginsConfigInitialized()
{
    return m_bConfigInitialized;
}

QStringList PluginContainer::GetGIDGroups()
{
    return m_listGIDGroups;
}
