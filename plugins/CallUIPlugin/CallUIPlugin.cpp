#include "CallUIPlugin.h"

#include "CallWindow.h"
#include "DialString.h"
#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "Startup/Startup.h"
#include "common/CommonUtils.h"
#include "support/Modems.h"

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

void CallUIPlugin::Destroy()
{
    delete m_window;
}

bool CallUIPlugin::Call(const QString& number, _UI_EN_CALL_TYPE type)
{
    const QString dialled = dialString(number);
    const bool busy = m_window && m_window->isGoingOn();
    if (dialled.isEmpty() || busy || attachedModems().isEmpty())
        return false;
    delete m_window;
    m_window = new CallWindow(dialled, type, CommonUtils::GetMainWindow());
    m_window->show();
    playCallSound();
    return true;
}
