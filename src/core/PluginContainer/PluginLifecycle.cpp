// Loading, initialising, shutting down and unloading of plugins.
#include "PluginContainer/PluginContainer.h"

#include "PluginContainer/PluginContainer_p.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/PluginInfo.h"
#include "PluginContainer/interfaces/IBasePlugin.h"
#include "common/GuardedCall.h"
#include "common/Log.h"

#include <QElapsedTimer>
#include <QLibrary>
#include <QMutexLocker>
#include <QPluginLoader>

namespace {

bool isStartedWithTheApplication(const PluginInfo& info)
{
    return info.m_bEnabled && (info.m_bActive || info.m_bStatic);
}

bool isLoadedLate(const PluginInfo& info)
{
    return info.m_strClsid == PluginIds::LateEmbeddedA || info.m_strClsid == PluginIds::LateEmbeddedB;
}

PluginFault faultOfRoot(QObject* root)
{
    if (qobject_cast<IBasePlugin*>(root))
        return {};
    return {PluginStatus::Fault::NoBaseInterface, QStringLiteral("The root object is no IBasePlugin")};
}

} // namespace

QObject* PluginContainer::GetPlugin(QString key, int iid)
{
    const QMutexLocker locker(&m_mutex);
    LOG_DEBUG("%s: %s: entered", LOG_FILE, LOG_FUNCTION);
    return getPlugin(std::move(key), true, iid);
}

QObject* PluginContainer::getPlugin(QString key, bool bInit, int iid)
{
    const QMutexLocker locker(&m_mutex);
    LOG_DEBUG("%s: %s: entered", LOG_FILE, LOG_FUNCTION);
    PluginInfo* info = m_pHashPlugins->value(key);
    if (!info) {
        key = GetClsidByName(key);
        info = m_pHashPlugins->value(key);
    }
    if (!info)
        return nullptr;
    if (!info->m_bEnabled) {
        LOG_DEBUG("%s: %s: %s not enabled", LOG_FILE, LOG_FUNCTION, qUtf8Printable(key));
        return nullptr;
    }
    if (!provideLoaded(info, bInit))
        return nullptr;
    return queryInterface(*info, iid);
}

/// Makes sure that the library is loaded and, when asked for, the plugin initialised.
bool PluginContainer::provideLoaded(PluginInfo* info, bool bInit)
{
    constexpr const char* function = "getPlugin";
    if (info->m_bLoaded) {
        LOG_DEBUG("%s: %s: %s already loaded,,,returning cached pointer", LOG_FILE, function,
                  qUtf8Printable(info->m_strClsid));
        if (bInit && !info->m_bInitialized)
            initPlugin(info->m_pPlugin, info->m_strClsid, info);
        return true;
    }
    QObject* const plugin = loadPlugin(info, info->m_strUrl);
    if (!plugin) {
        LOG_DEBUG("%s: %s: %s plugin NOT LOADED !!!,,,", LOG_FILE, function,
                  qUtf8Printable(info->m_strClsid));
        return false;
    }
    LOG_DEBUG("%s: %s: %s plugin loaded,,,", LOG_FILE, function, qUtf8Printable(info->m_strClsid));
    if (bInit && !info->m_bInitialized)
        initPlugin(plugin, info->m_strClsid, info);
    info->SetLoaded(true);
    info->SetPlugin(plugin);
    return true;
}

QObject* PluginContainer::queryInterface(const PluginInfo& info, int iid)
{
    auto* const base = qobject_cast<IBasePlugin*>(info.m_pPlugin);
    if (!base)
        return nullptr;
    void* out = nullptr;
    bool isAnswered = false;
    guardedCall("QueryInterface", info.m_strName, [&] { isAnswered = base->QueryInterface(iid, &out); });
    return isAnswered ? static_cast<QObject*>(out) : nullptr;
}

QObject* PluginContainer::loadPlugin(PluginInfo* info, QString fileBase)
{
    LOG_DEBUG("%s: %s: entered, m_dirPlugins = %s", LOG_FILE, LOG_FUNCTION,
              qUtf8Printable(m_dirPlugins.path()));
    if (info->m_pLoader)
        return info->m_pLoader->instance(); // asked for again from within its own initialisation
    PluginFault fault{PluginStatus::Fault::NoLibrary, QStringLiteral("No library named %1*").arg(fileBase)};
    const QStringList files = d->folder.filesBeginningWith(fileBase);
    for (const QString& file : files) {
        if (!QLibrary::isLibrary(file))
            continue;
        LOG_DEBUG("%s: %s: strFileName = %s", LOG_FILE, LOG_FUNCTION, qUtf8Printable(file));
        if (auto loader = PluginLibrary::open(file, fault)) {
            LOG_DEBUG("%s: %s: strFileName = %s, QObject* plugin loaded successfully %s", LOG_FILE,
                      LOG_FUNCTION, qUtf8Printable(file), qUtf8Printable(info->m_strName));
            info->m_pLoader = loader.release();
            QObject* const root = info->m_pLoader->instance();
            d->decisions.noteFault(info->m_strClsid, faultOfRoot(root));
            return root;
        }
        LOG_DEBUG("%s: %s: %s: error : %s", LOG_TIME, LOG_FILE, LOG_FUNCTION, qUtf8Printable(fault.text));
    }
    d->decisions.noteFault(info->m_strClsid, fault);
    return nullptr;
}

void PluginContainer::initPlugin(QObject* plugin, QString clsid, PluginInfo* info)
{
    const QMutexLocker locker(&m_mutex);
    LOG_DEBUG("%s: %s: %s: called", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    if (info->m_bInitialized) {
        LOG_DEBUG("%s: %s: %s: %s is initialized", LOG_TIME, LOG_FILE, LOG_FUNCTION,
                  qUtf8Printable(info->m_strName));
        return;
    }
    if (!plugin) {
        LOG_DEBUG("%s: %s: %s: pPlugin is NULL", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        return;
    }
    auto* const base = qobject_cast<IBasePlugin*>(plugin);
    if (!base)
        return;

    info->SetInitialized(true); // before the call: the plugin may ask for itself
    QElapsedTimer timer;
    timer.start();
    LOG_CRITICAL("%s: %s: base IBasePlugin load success, %s init: Start", LOG_FILE, LOG_FUNCTION,
                 qUtf8Printable(info->m_strName));
    int status = 0;
    const auto onException = [&](const QString& text) {
        d->decisions.noteFault(clsid,
                               {PluginStatus::Fault::InitThrew, QStringLiteral("Init() threw: ") + text});
    };
    guardedCall(
        "Init", info->m_strName, [&] { status = base->Init(); }, onException);
    LOG_CRITICAL("%s: %s: base IBasePlugin load success, init=%d, %s init: elapsed=%dms", LOG_FILE,
                 LOG_FUNCTION, status, qUtf8Printable(info->m_strName), static_cast<int>(timer.elapsed()));
    if (clsid == PluginIds::DeviceManager)
        m_bDeviceMgrInit = status != 0;
}

void PluginContainer::LoadAllStaticOrActivePlugin()
{
    const QMutexLocker locker(&m_mutex);
    loadAllStaticOrActivePlugin();
    LOG_DEBUG("%s: %s: plugin count = %d", LOG_FILE, LOG_FUNCTION, m_pHashPlugins->size());
}

void PluginContainer::loadAllStaticOrActivePlugin()
{
    const QMutexLocker locker(&m_mutex);
    for (PluginInfo* info : *m_pListPlugins) {
        if (!isStartedWithTheApplication(*info))
            continue;
        if (isLoadedLate(*info)) {
            LOG_DEBUG("%s: %s: %s is not going to be loaded at first...", LOG_FILE, LOG_FUNCTION,
                      qUtf8Printable(info->m_strUrl));
            continue;
        }
        LOG_DEBUG("%s: %s: %s to be loaded...", LOG_FILE, LOG_FUNCTION, qUtf8Printable(info->m_strUrl));
        loadIfNeeded(info);
    }
    initLoadedPlugins([](const PluginInfo&) { return true; }, LOG_FUNCTION);
}

void PluginContainer::UpdateAllStaticOrActivePlugins()
{
    const QMutexLocker locker(&m_mutex);
    for (PluginInfo* info : *m_pListPlugins) {
        if (!info->m_bEnabled && info->m_bLoaded)
            retirePlugin(info);
        if (!isStartedWithTheApplication(*info))
            continue;
        LOG_DEBUG("%s: %s: %s to be loaded...", LOG_FILE, LOG_FUNCTION, qUtf8Printable(info->m_strUrl));
        if (info->m_bLoaded)
            continue;
        loadIfNeeded(info);
        LOG_DEBUG("%s: %s: Loaded plugin: %s.", LOG_FILE, LOG_FUNCTION, qUtf8Printable(info->m_strName));
    }
    initLoadedPlugins([](const PluginInfo& info) { return !info.m_bInitialized; }, LOG_FUNCTION);
}

void PluginContainer::loadIfNeeded(PluginInfo* info)
{
    if (info->m_bLoaded)
        return;
    if (QObject* const plugin = loadPlugin(info, info->m_strUrl)) {
        info->SetLoaded(true);
        info->SetPlugin(plugin);
    }
}

void PluginContainer::initLoadedPlugins(bool (*isWanted)(const PluginInfo&), const char* function)
{
    for (PluginInfo* info : *m_pListPlugins) {
        if (!info->m_bLoaded || !isWanted(*info))
            continue;
        LOG_DEBUG("%s: %s: %s calling initPlugin", LOG_FILE, function, qUtf8Printable(info->m_strName));
        initPlugin(info->m_pPlugin, info->m_strClsid, info);
    }
}

/// Takes a plugin out that customisation has turned off; the main frame stays.
void PluginContainer::retirePlugin(PluginInfo* info)
{
    if (info->m_strClsid == m_strMainPlugin)
        return;
    if (info->m_bInitialized)
        DestroyPlugin(info->m_strClsid);
    const bool bUnloaded = unloadPlugin(info);
    LOG_DEBUG("%s: %s: Unload plugin %s bUnloaded %i", LOG_FILE, "UpdateAllStaticOrActivePlugins",
              qUtf8Printable(info->m_strName), bUnloaded);
}

/// One of the calls that end a plugin, and what the log says of it.
struct PluginContainer::Teardown
{
    const char* function; ///< the operation of the container
    const char* line;     ///< of the log, about the plugin's name and clsid
    const char* what;     ///< the operation of the plugin
    void (IPluginTeardown::*call)();
};

bool PluginContainer::DestroyPlugin(QString clsid)
{
    return tearDown(clsid, {LOG_FUNCTION, "Destroying Plugin Name: %s, Plugin ClsID: %s", "Destroy",
                            &IPluginTeardown::Destroy});
}

bool PluginContainer::UnRegisterFormPluginContainer(QString clsid)
{
    return tearDown(clsid, {LOG_FUNCTION, "UnSDKRegisterEvent Plugin Name: %s, Plugin ClsID: %s",
                            "UnSDKRegisterEvent", &IPluginTeardown::UnSDKRegisterEvent});
}

bool PluginContainer::tearDown(const QString& clsid, const Teardown& step)
{
    const QMutexLocker locker(&m_mutex);
    LOG_DEBUG("%s: %s: entered. Plugin: %s", LOG_FILE, step.function, qUtf8Printable(clsid));
    const PluginInfo* const info = m_pHashPlugins->value(clsid);
    IBasePlugin* const base = runningBase(info);
    if (base) {
        LOG_DEBUG(step.line, qUtf8Printable(info->m_strName), qUtf8Printable(clsid));
        guardedCall(step.what, info->m_strName, [&] { (base->*step.call)(); });
    }
    LOG_DEBUG("%s: %s: exited.", LOG_FILE, step.function);
    return base;
}

/// The base interface of a loaded, initialised plugin other than the main frame; null otherwise.
IBasePlugin* PluginContainer::runningBase(const PluginInfo* info) const
{
    if (!info || !info->m_bLoaded || !info->m_bInitialized || info->m_strClsid == m_strMainPlugin)
        return nullptr;
    return qobject_cast<IBasePlugin*>(info->m_pPlugin);
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
    if (!info->m_pLoader->unload()) {
        LOG_DEBUG("%s: %s: plugin %s NOT UNLOADED; %s", LOG_FILE, LOG_FUNCTION,
                  qUtf8Printable(info->m_strName), qUtf8Printable(info->m_pLoader->errorString()));
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
    const QMutexLocker locker(&m_mutex);
    return unloadAllPlugins();
}

bool PluginContainer::unloadAllPlugins()
{
    const QMutexLocker locker(&m_mutex);
    const QStringList stopped = unregisterRunningPlugins();
    for (const QString& clsid : stopped)
        if (IBasePlugin* const base = isRunning(clsid) ? baseToStop(clsid) : nullptr)
            guardedCall("Destroy", clsid, [base] { base->Destroy(); });
    if (IBasePlugin* const base = baseToStop(m_strMainPlugin)) {
        guardedCall("UnSDKRegisterEvent", m_strMainPlugin, [base] { base->UnSDKRegisterEvent(); });
        guardedCall("Destroy", m_strMainPlugin, [base] { base->Destroy(); });
    }

    bool bUnloaded = true;
    LOG_DEBUG("%s: %s: bUnloaded %i", LOG_FILE, LOG_FUNCTION, bUnloaded);
    for (PluginInfo* info : *m_pListPlugins)
        if (info->m_bLoaded && info->m_strClsid != m_strMainPlugin)
            bUnloaded = unloadPlugin(info) && bUnloaded;
    LOG_DEBUG("%s: %s: bUnloaded %i", LOG_FILE, LOG_FUNCTION, bUnloaded);
    UnloadPlugin(m_strMainPlugin);
    return bUnloaded;
}

/// A plugin may have unloaded another one while it was asked to stop.
bool PluginContainer::isRunning(const QString& clsid) const
{
    const PluginInfo* const info = m_pHashPlugins->value(clsid);
    return info && info->m_bLoaded && info->m_bInitialized;
}

/// Plugins that others load only now are asked as well, in another round.
/// @return the clsids of all plugins that were asked, in this order
QStringList PluginContainer::unregisterRunningPlugins()
{
    QStringList asked;
    QSet<QString> done{m_strMainPlugin};
    for (int before = -1; before != asked.size();) {
        before = asked.size();
        const QStringList clsids = m_pHashPlugins->keys();
        for (const QString& clsid : clsids) {
            if (done.contains(clsid) || !isRunning(clsid))
                continue;
            done.insert(clsid);
            asked.append(clsid);
            if (IBasePlugin* const base = baseToStop(clsid))
                guardedCall("UnSDKRegisterEvent", clsid, [base] { base->UnSDKRegisterEvent(); });
        }
    }
    return asked;
}

/// GetPlugin refuses a plugin that customisation has disabled since it was loaded; it has to be stopped all
/// the same.
IBasePlugin* PluginContainer::baseToStop(const QString& clsid)
{
    QObject* plugin = GetPlugin(clsid, PluginIds::RootObject);
    const PluginInfo* const info = m_pHashPlugins->value(clsid);
    if (!plugin && info)
        plugin = info->m_pPlugin;
    return qobject_cast<IBasePlugin*>(plugin);
}
