// Shuts plugins down and unloads them.
#include "PluginContainer/PluginContainer.h"

#include "PluginContainer/PluginContainer_p.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/PluginInfo.h"
#include "PluginContainer/interfaces/IBasePlugin.h"
#include "common/GuardedCall.h"

#include <QMutexLocker>
#include <QPluginLoader>

namespace {

bool isRunning(const PluginInfo* info)
{
    return info && info->m_bLoaded && info->m_bInitialized;
}

} // namespace

/// One of the calls that shut a plugin down.
struct PluginContainer::TeardownStep
{
    const char* name; ///< for the log, as is the line with the plugin's name and clsid
    const char* line;
    void (IPluginTeardown::*call)();

    void run(IBasePlugin* base, const QString& plugin) const
    {
        guardedCall(name, plugin, [&] { (base->*call)(); });
    }

    static const TeardownStep Destroy;
    static const TeardownStep Unregister;
};

const PluginContainer::TeardownStep PluginContainer::TeardownStep::Destroy{
    "Destroy", "Destroying Plugin Name: %s, Plugin ClsID: %s", &IPluginTeardown::Destroy};
const PluginContainer::TeardownStep PluginContainer::TeardownStep::Unregister{
    "UnSDKRegisterEvent", "UnSDKRegisterEvent Plugin Name: %s, Plugin ClsID: %s",
    &IPluginTeardown::UnSDKRegisterEvent};

bool PluginContainer::DestroyPlugin(QString clsid)
{
    return callIfRunning(clsid, TeardownStep::Destroy, LOG_FUNCTION);
}

bool PluginContainer::UnRegisterFormPluginContainer(QString clsid)
{
    return callIfRunning(clsid, TeardownStep::Unregister, LOG_FUNCTION);
}

bool PluginContainer::callIfRunning(const QString& clsid, const TeardownStep& step, const char* function)
{
    const QMutexLocker locker(&m_mutex);
    LOG_DEBUG("%s: %s: entered. Plugin: %s", LOG_FILE, function, qUtf8Printable(clsid));
    const PluginInfo* const info = m_pHashPlugins->value(clsid);
    const bool mayBeCalled = isRunning(info) && clsid != m_strMainPlugin;
    auto* const base = mayBeCalled ? qobject_cast<IBasePlugin*>(info->m_pPlugin) : nullptr;
    if (base) {
        LOG_DEBUG(step.line, qUtf8Printable(info->m_strName), qUtf8Printable(clsid));
        step.run(base, info->m_strName);
    }
    LOG_DEBUG("%s: %s: exited.", LOG_FILE, function);
    return base;
}

/// The main frame stays loaded whatever customisation says.
void PluginContainer::unloadDisabled(PluginInfo* info, const char* function)
{
    if (info->m_strClsid == m_strMainPlugin)
        return;
    if (info->m_bInitialized)
        DestroyPlugin(info->m_strClsid);
    const bool bUnloaded = unloadPlugin(info);
    LOG_DEBUG("%s: %s: Unload plugin %s bUnloaded %i", LOG_FILE, function, qUtf8Printable(info->m_strName),
              bUnloaded);
}

bool PluginContainer::UnloadPlugin(QString key)
{
    const QMutexLocker locker(&m_mutex);
    PluginInfo* info = m_pHashPlugins->value(key);
    if (!info)
        info = m_pHashPlugins->value(GetClsidByName(key));
    return info && info->m_bLoaded && unloadPlugin(info);
}

bool PluginContainer::unloadPlugin(PluginInfo* info)
{
    LOG_DEBUG("%s: %s: try to unload plugin %s", LOG_FILE, LOG_FUNCTION, qUtf8Printable(info->m_strName));
    const bool isInUse = info->m_strClsid == PluginIds::DeviceManager && d->isDeviceMgrInUse;
    if (isInUse || !info->m_pLoader->unload()) {
        const QString reason = isInUse ? QStringLiteral("in use") : info->m_pLoader->errorString();
        LOG_DEBUG("%s: %s: plugin %s NOT UNLOADED; %s", LOG_FILE, LOG_FUNCTION,
                  qUtf8Printable(info->m_strName), qUtf8Printable(reason));
        return false;
    }
    info->SetLoaded(false);
    info->SetInitialized(false);
    info->SetPlugin(nullptr);
    delete info->m_pLoader;
    info->m_pLoader = nullptr;
    LOG_DEBUG("%s: %s: plugin %s unloaded", LOG_FILE, LOG_FUNCTION, qUtf8Printable(info->m_strName));
    return true;
}

bool PluginContainer::UnloadAllPlugins()
{
    return unloadAllPlugins();
}

bool PluginContainer::unloadAllPlugins()
{
    const QMutexLocker locker(&m_mutex);
    QStringList stopping;
    for (QStringList fresh = runningPlugins({}); !fresh.isEmpty(); fresh = runningPlugins(stopping)) {
        callEach(fresh, TeardownStep::Unregister); // may load further plugins
        stopping += fresh;
    }
    callEach(stopping, TeardownStep::Destroy);
    GetPlugin(m_strMainPlugin, PluginIds::RootObject);
    callEach({m_strMainPlugin}, TeardownStep::Unregister);
    callEach({m_strMainPlugin}, TeardownStep::Destroy);

    bool bUnloaded = true;
    LOG_DEBUG("%s: %s: bUnloaded %i", LOG_FILE, LOG_FUNCTION, bUnloaded);
    for (PluginInfo* info : qAsConst(*m_pListPlugins))
        if (info->m_bLoaded && info->m_strClsid != m_strMainPlugin)
            bUnloaded = unloadPlugin(info) && bUnloaded;
    LOG_DEBUG("%s: %s: bUnloaded %i", LOG_FILE, LOG_FUNCTION, bUnloaded);
    UnloadPlugin(m_strMainPlugin);
    return bUnloaded;
}

/// The clsids of the loaded, initialised plugins other than the main frame and the given ones.
QStringList PluginContainer::runningPlugins(const QStringList& without) const
{
    QStringList clsids;
    for (auto record = m_pHashPlugins->constBegin(); record != m_pHashPlugins->constEnd(); ++record)
        if (isRunning(record.value()) && record.key() != m_strMainPlugin && !without.contains(record.key()))
            clsids.append(record.key());
    return clsids;
}

/// Calls each plugin that is still running: one that was called earlier may have unloaded it. Plugins that
/// customisation has disabled since they were loaded are called, too, although GetPlugin() refuses them.
void PluginContainer::callEach(const QStringList& clsids, const TeardownStep& step)
{
    for (const QString& clsid : clsids) {
        const PluginInfo* const info = m_pHashPlugins->value(clsid);
        if (!isRunning(info))
            continue;
        QObject* const plugin = GetPlugin(clsid, PluginIds::RootObject);
        if (auto* const base = qobject_cast<IBasePlugin*>(plugin ? plugin : info->m_pPlugin))
            step.run(base, info->m_strName);
    }
}
