#include "PluginContainer/CInitConfigThread.h"

#include "PluginContainer/IPluginContainer.h"

bool CInitConfigThread::Init(IPluginContainer* container)
{
    m_pContainer = container;
    return true;
}

void CInitConfigThread::run()
{
    if (m_pContainer)
        m_pContainer->StartInitPluginsConfig();
}
