#include "CallUIPlugin.h"

#include "CallWindow.h"
#include "DialString.h"
#include "PluginContainer/PluginIds.h"
#include "common/CommonUtils.h"
#include "support/Modems.h"

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
    return true;
}
