#pragma once

#include "PluginContainer/BasePlugin.h"
#include "PluginContainer/interfaces/ICallUIPlugin.h"

#include <QPointer>

class CallWindow;

/// Calls, one at a time, each in its own small window. Calls are simulated: there is no voice.
class CallUIPlugin : public BasePlugin, public ICallUIPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
    Q_INTERFACES(ICallUIPlugin)

public:
    CallUIPlugin();
    ~CallUIPlugin() override;

    void Destroy() override;

    /// Fails without a modem, for a number that cannot be dialled, and during another call.
    bool Call(const QString& number, _UI_EN_CALL_TYPE type) override;

private:
    QPointer<CallWindow> m_window;
};
