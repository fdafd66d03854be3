#pragma once

#include "common/Log.h"

#include <QString>

#include <cxxabi.h>
#include <exception>

/// Runs a call into a plugin. Whatever it throws is logged and ends here: nothing is thrown across the
/// library's boundary.
/// @param what   the operation, for the log
/// @param plugin the plugin's name, for the log
/// @return whether the call came back without an exception
template <typename Call>
bool guardedCall(const char* what, const QString& plugin, Call&& call)
{
    try {
        call();
        return true;
    } catch (const abi::__forced_unwind&) {
        throw; // the thread is being terminated
    } catch (const std::exception& error) {
        LOG_WARNING("%s: plugin %s threw: %s", what, qUtf8Printable(plugin), error.what());
    } catch (...) {
        LOG_WARNING("%s: plugin %s threw", what, qUtf8Printable(plugin));
    }
    return false;
}
