#include "PluginContainer/PluginInfo.h"

#include <QPluginLoader>

#include <cstddef>

// The layout is fixed: three strings, six flags, the type and the two pointers.
static_assert(sizeof(QString) == sizeof(void*));
static_assert(offsetof(PluginInfo, m_strName) == 0 && offsetof(PluginInfo, m_strUrl) == 2 * sizeof(void*));
static_assert(offsetof(PluginInfo, m_bActive) == 3 * sizeof(void*));
static_assert(offsetof(PluginInfo, m_bEnabled) == offsetof(PluginInfo, m_bActive) + 5);
static_assert(offsetof(PluginInfo, m_iType) == 3 * sizeof(void*) + 8);
static_assert(offsetof(PluginInfo, m_pPlugin) == (sizeof(void*) == 4 ? 24 : 40));
static_assert(offsetof(PluginInfo, m_pLoader) == offsetof(PluginInfo, m_pPlugin) + sizeof(void*));

PluginInfo::PluginInfo(QString name, QString clsid, QString url, int type, bool isActive, bool isStatic,
                       bool settingTitle, bool loaded)
    : m_strName(std::move(name))
    , m_strClsid(std::move(clsid))
    , m_strUrl(std::move(url))
    , m_bActive(isActive)
    , m_bStatic(isStatic)
    , m_bSettingTitle(settingTitle)
    , m_bLoaded(loaded)
    , m_iType(type)
{
}

PluginInfo::~PluginInfo()
{
    delete m_pLoader;
}

void PluginInfo::SetLoaded(bool loaded)
{
    m_bLoaded = loaded;
}

void PluginInfo::SetPlugin(QObject* plugin)
{
    m_pPlugin = plugin;
}

void PluginInfo::SetInitialized(bool initialized)
{
    m_bInitialized = initialized;
}
