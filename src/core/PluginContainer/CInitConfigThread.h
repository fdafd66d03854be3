#pragma once

#include "skylume_global.h"

#include <QThread>

class IPluginContainer;

/// Finishes the device-dependent configuration after the start, so that the GUI thread never waits for a modem.
class SKYLUME_EXPORT CInitConfigThread : public QThread
{
public:
    /// Sets the container, which must outlive the running thread.
    /// @return true
    bool Init(IPluginContainer* container);

protected:
    /// Calls the container's StartInitPluginsConfig(); does nothing without a container.
    void run() override;

private:
    IPluginContainer* m_pContainer = nullptr;
};
