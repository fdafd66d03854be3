#include "backends/Backends.h"

#include "Log.h"
#include "backends/modemmanager/ModemManagerBackend.h"
#include "backends/simulator/Simulator.h"
#include "files/Places.h"

std::unique_ptr<Backend> Backends::create(const QString& name)
{
    if (name == QLatin1String("simulator"))
        return std::make_unique<Simulator>(Places::simulatorFiles());
    if (!name.isEmpty() && name != QLatin1String("modemmanager"))
        qCWarning(logDeviceSdk, "There is no backend %s; modemmanager is used", qUtf8Printable(name));
    return std::make_unique<ModemManagerBackend>(Places::customizationRules());
}
