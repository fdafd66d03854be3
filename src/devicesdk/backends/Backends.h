#pragma once

#include "backends/Backend.h"

#include <QString>

#include <memory>

/// The backends that this system has.
namespace Backends {

/// Creates the backend with that name, "simulator" or "modemmanager". If the name is empty or unknown, it is the
/// one for real modems; on systems that have only the simulator, it is always that.
std::unique_ptr<Backend> create(const QString& name);

} // namespace Backends
