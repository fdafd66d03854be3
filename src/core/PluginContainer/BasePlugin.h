#pragma once

#include "PluginContainer/interfaces/IBasePlugin.h"

#include <QHash>
#include <QObject>

/// A base plugin to derive from: answers interface 0 with itself and every published number with its service.
///
///     class MyPlugin : public BasePlugin, public IUIPlugin
///     {
///         Q_OBJECT
///         Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
///         Q_INTERFACES(IUIPlugin)
///     public:
///         MyPlugin() { publish(PluginIds::FirstService, this); }
///         ...
///     };
class SKYLUME_EXPORT BasePlugin : public QObject, public IBasePlugin
{
    Q_OBJECT
    Q_INTERFACES(IBasePlugin)

public:
    BasePlugin();
    ~BasePlugin() override;

    /// Reports success (1); derived plugins do their start here.
    int Init() override;
    bool QueryInterface(int iid, void** out) override;
    void Destroy() override;
    void UnSDKRegisterEvent() override;

protected:
    /// Answers QueryInterface(iid) with this object from now on. The object must live as long as the plugin.
    void publish(int iid, QObject* service);

private:
    QHash<int, QObject*> m_services;
};
