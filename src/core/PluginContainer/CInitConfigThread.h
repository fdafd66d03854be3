#pragma once

#include "skylume_global.h"

#include <QThread>

class IPluginContainer;

/// The worker that finishes the device-dependent configuration after the start, so that nothing on the GUI
/// thread waits for a modem.
class SKYLUME_EXPORT CInitConfigThread : public QThread
{
public:
    /// Gives the thread the container to serve. The container must outlive the thread's run.
    /// @return true
    bool Init(IPluginContainer* container);

protected:
    /// Calls the container's StartInitPluginsConfig(); does nothing without a container.
    void run() override;

private:
    IPluginContainer* m_pContainer = nullptr;
};
