#pragma once

#include "PluginContainer/BasePlugin.h"
#include "PluginContainer/interfaces/ICallUIPlugin.h"

#include <QPointer>

class CallWindow;

/// Calls, one at a time, each with a small window of its own. The course of a call is played: there is no
/// voice.
class CallUIPlugin : public BasePlugin, public ICallUIPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
    Q_INTERFACES(ICallUIPlugin)

public:
    CallUIPlugin();
    ~CallUIPlugin() override;

    void Destroy() override;

    /// Refused without a modem, with a number that cannot be dialled, and while another call goes on.
    bool Call(const QString& number, _UI_EN_CALL_TYPE type) override;

private:
    QPointer<CallWindow> m_window;
};
