#include "support/Customisation.h"

#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "Startup/Startup.h"

Customisation::Customisation(QObject* parent)
    : QObject(parent)
{
    const auto* const mainFrame = dynamic_cast<QObject*>(Startup::GetMainFrameService());
    if (mainFrame && mainFrame->metaObject()->indexOfSignal("customised()") >= 0)
        connect(mainFrame, SIGNAL(customised()), this, SIGNAL(applied()));
}
