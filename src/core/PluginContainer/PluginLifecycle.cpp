// Loads and initialises plugins.
#include "PluginContainer/PluginContainer.h"

#include "PluginContainer/PluginContainer_p.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/PluginInfo.h"
#include "PluginContainer/PluginLibrary_p.h"
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

QObject* queryInterface(const PluginInfo& info, int iid)
{
    auto* const base = qobject_cast<IBasePlugin*>(info.m_pPlugin);
    if (!base)
        return nullptr;
    void* out = nullptr;
    bool isAnswered = false;
    guardedCall("QueryInterface", info.m_strName, [&] { isAnswered = base->QueryInterface(iid, &out); });
    return isAnswered ? static_cast<QObject*>(out) : nullptr;
}

/// @param onException called with the text of what Init() throws
/// @return what Init() returns, 0 if it throws
template <typename OnException>
int callInit(IBasePlugin& plugin, const QString& name, OnException onException, const char* function)
{
    QElapsedTimer timer;
    timer.start();
    LOG_CRITICAL("%s: %s: base IBasePlugin load success, %s init: Start", LOG_FILE, function,
                 qUtf8Printable(name));
    int status = 0;
    guardedCall(
        "Init", name, [&] { status = plugin.Init(); }, onException);
    LOG_CRITICAL("%s: %s: base IBasePlugin load success, init=%d, %s init: elapsed=%dms", LOG_FILE, function,
                 status, qUtf8Printable(name), static_cast<int>(timer.elapsed()));
    return status;
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
    if (!provideLoaded(info, bInit, LOG_FUNCTION))
        return nullptr;
    return queryInterface(*info, iid);
}

/// Makes sure that the library is loaded and, when asked for, the plugin initialised.
bool PluginContainer::provideLoaded(PluginInfo* info, bool bInit, const char* function)
{
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
    const auto onException = [&](const QString& text) {
        d->decisions.noteFault(clsid,
                               {PluginStatus::Fault::InitThrew, QStringLiteral("Init() threw: ") + text});
    };
    const int status = callInit(*base, info->m_strName, onException, LOG_FUNCTION);
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
            unloadDisabled(info, LOG_FUNCTION);
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
