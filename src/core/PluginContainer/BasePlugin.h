#pragma once

#include "PluginContainer/interfaces/IBasePlugin.h"

#include <QHash>
#include <QObject>

/// Base class for plugins: answers interface 0 with itself and each published number with its service.
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

    /// Returns 1 for success. Derived plugins start their work here.
    int Init() override;
    bool QueryInterface(int iid, void** out) override;
    void Destroy() override;
    void UnSDKRegisterEvent() override;

protected:
    /// Makes QueryInterface(iid) return this object. It must live as long as the plugin.
    void publish(int iid, QObject* service);

private:
    QHash<int, QObject*> m_services;
};
