#pragma once

#include "PluginContainer/PluginStatus.h"

#include <memory>

class QPluginLoader;

/// What went wrong with a plugin, as PluginStatus reports it.
struct PluginFault
{
    PluginStatus::Fault code = PluginStatus::Fault::None;
    QString text;
    QString library = {}; ///< path
    QString wanted = {};
    QString found = {};
};

namespace PluginLibrary {

/// Loads a library and constructs its root object.
/// @param fault receives the reason of a failure
/// @return null on failure; the library is not in memory then
std::unique_ptr<QPluginLoader> open(const QString& path, PluginFault& fault);

} // namespace PluginLibrary
