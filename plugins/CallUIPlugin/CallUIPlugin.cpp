#include "CallUIPlugin.h"

#include "CallWindow.h"
#include "PluginContainer/PluginIds.h"
#include "common/CommonUtils.h"
#include "support/DialString.h"
#include "support/ModemInUse.h"
#include "support/OtherPlugins.h"

CallUIPlugin::CallUIPlugin()
{
    publish(PluginIds::FirstService, this);
}

CallUIPlugin::~CallUIPlugin() = default;

int CallUIPlugin::Init()
{
    connect(&m_events, &DeviceEvents::changed, this, &CallUIPlugin::followModem);
    connect(&m_events, &DeviceEvents::statusChanged, this, &CallUIPlugin::followModem);
    m_events.listen();
    return BasePlugin::Init();
}

void CallUIPlugin::UnSDKRegisterEvent()
{
    m_events.stop();
}

void CallUIPlugin::followModem()
{
    if (m_window)
        m_window->followModem();
}

void CallUIPlugin::Destroy()
{
    UnSDKRegisterEvent();
    delete m_window;
}

bool CallUIPlugin::Call(const QString& number, _UI_EN_CALL_TYPE type)
{
    const QString dialled = dialString(number);
    const Modems modems = attachedModems();
    const bool busy = m_window && m_window->isGoingOn();
    if (dialled.isEmpty() || isServiceCode(dialled) || busy || modems.isEmpty())
        return false;
    const quint32 modem = modemInUse(modems).id;
    if (!canMakeCalls(modem))
        return false;
    delete m_window;
    m_window = new CallWindow(dialled, type, modem, CommonUtils::GetMainWindow());
    m_window->show();
    callSlot(PluginIds::NotifyService, PluginIds::FirstService, "playSound", {QStringLiteral("call")});
    return true;
}
