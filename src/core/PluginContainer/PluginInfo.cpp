#include "PluginContainer/PluginInfo.h"

#include <QPluginLoader>

PluginInfo::PluginInfo(QString name, QString clsid, QString url, int type, bool isActive, bool isStatic,
                       bool settingTitle, bool loaded)
    : m_strName(std::move(name))
    , m_strClsid(std::move(clsid))
    , m_strUrl(std::move(url))
    , m_bActive(isActive)
    , m_bStatic(isStatic)
    , m_bSettingTitle(settingTitle)
    , m_bLoaded(loaded)
    , m_bInitialized(false)
    , m_bEnabled(false)
    , m_iType(type)
    , m_pPlugin(nullptr)
    , m_pLoader(nullptr)
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
