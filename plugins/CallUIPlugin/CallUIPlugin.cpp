#include "CallUIPlugin.h"

#include "CallWindow.h"
#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "Startup/Startup.h"
#include "common/CommonUtils.h"
#include "support/DialString.h"
#include "support/Modems.h"

#include <algorithm>

namespace {

/// See INotifyService.h.
void playCallSound()
{
    IPluginContainer* const container = Startup::GetPluginContainer();
    QObject* const notifier = container->GetPlugin(PluginIds::NotifyService, PluginIds::FirstService);
    if (notifier)
        QMetaObject::invokeMethod(notifier, "playSound", Q_ARG(QString, QStringLiteral("call")));
}

} // namespace

CallUIPlugin::CallUIPlugin()
{
    publish(PluginIds::FirstService, this);
}

CallUIPlugin::~CallUIPlugin() = default;

int CallUIPlugin::Init()
{
    connect(&m_events, &DeviceEvents::changed, this, &CallUIPlugin::devicesChanged);
    m_events.listen();
    return BasePlugin::Init();
}

void CallUIPlugin::UnSDKRegisterEvent()
{
    m_events.stop();
}

void CallUIPlugin::devicesChanged()
{
    const Modems modems = attachedModems();
    const bool isAttached =
        std::any_of(modems.begin(), modems.end(), [this](const Modem& modem) { return modem.id == m_modem; });
    if (m_window && !isAttached)
        m_window->modemRemoved();
}

void CallUIPlugin::Destroy()
{
    UnSDKRegisterEvent();
    delete m_window;
}

bool CallUIPlugin::Call(const QString& number, _UI_EN_CALL_TYPE type)
{
    const QString dialled = dialString(number);
    const bool busy = m_window && m_window->isGoingOn();
    if (dialled.isEmpty() || busy || attachedModems().isEmpty())
        return false;
    delete m_window;
    m_modem = attachedModems().first().id;
    m_window = new CallWindow(dialled, type, CommonUtils::GetMainWindow());
    m_window->show();
    playCallSound();
    return true;
}
