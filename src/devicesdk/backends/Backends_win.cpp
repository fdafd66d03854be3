#include "backends/Backends.h"

#include "backends/simulator/Simulator.h"
#include "files/Places.h"

std::unique_ptr<Backend> Backends::create(const QString&)
{
    return std::make_unique<Simulator>(Places::simulatorFiles());
}
