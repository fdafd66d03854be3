#pragma once

#include "skylume_global.h"

#include <QString>

class QObject;
class QPluginLoader;

/// The record of one plugin: its entry in the plugin library file and its state.
///
/// A new record is disabled; customisation enables it. An enabled plugin can be loaded (its library is in
/// memory) and then initialised. The record owns its loader.
class SKYLUME_EXPORT PluginInfo
{
public:
    PluginInfo(QString name, QString clsid, QString url, int type, bool isActive, bool isStatic,
               bool settingTitle, bool loaded);
    ~PluginInfo();

    void SetLoaded(bool loaded);
    void SetPlugin(QObject* plugin);
    void SetInitialized(bool initialized);

    QString m_strName;
    QString m_strClsid;
    QString m_strUrl; ///< base name of the library file
    bool m_bActive;
    bool m_bStatic;
    bool m_bSettingTitle; ///< contributes a page to the settings dialog
    bool m_bLoaded;
    bool m_bInitialized = false;
    bool m_bEnabled = false;
    int m_iType;
    QObject* m_pPlugin = nullptr;       ///< root object, owned by the library; null while not loaded
    QPluginLoader* m_pLoader = nullptr; ///< holds the library; owned; null while not loaded

private:
    Q_DISABLE_COPY_MOVE(PluginInfo)
};
