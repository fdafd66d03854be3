#pragma once

#include "PluginContainer/BasePlugin.h"
#include "PluginContainer/interfaces/ICallUIPlugin.h"

#include "support/DeviceEvents.h"

#include <QPointer>

class CallWindow;

/// Calls, one at a time, each in its own small window. A call ends when its modem is removed or loses its network. Calls
/// are simulated: there is no voice.
class CallUIPlugin : public BasePlugin, public ICallUIPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
    Q_INTERFACES(ICallUIPlugin)

public:
    CallUIPlugin();
    ~CallUIPlugin() override;

    int Init() override;
    void Destroy() override;
    void UnSDKRegisterEvent() override;

    /// Fails without a modem that can make calls, for a number that cannot be dialled or is a service code, and during
    /// another call.
    bool Call(const QString& number, _UI_EN_CALL_TYPE type) override;

private:
    void followModem();

    DeviceEvents m_events;
    QPointer<CallWindow> m_window;
};
