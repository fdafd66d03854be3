#pragma once

#include "common/Log.h"

#include <QString>

#include <cxxabi.h>
#include <exception>
#include <utility>

/// Runs a call into a plugin and catches every exception that it throws. The exception is logged as a
/// warning. For the core library and for plugins that call other plugins:
///
///     QWidget* page = nullptr;
///     guardedCall("BuildFrame", pluginName, [&] { page = plugin->BuildFrame(parent, {}); });
///
/// Guard each call where it leaves your code and name the plugin that is called: an unguarded exception ends
/// up in the guard around your own plugin, and the log then names the wrong one. On any thread; terminating
/// a QThread passes through.
/// @param what   the operation, for the log
/// @param plugin the name of the plugin that is called, for the log
/// @param onText called with the exception's text, empty when it has none; may be left out
/// @return false when the call threw
template <typename Call, typename OnText>
bool guardedCall(const char* what, const QString& plugin, Call&& call, OnText&& onText)
{
    try {
        call();
        return true;
    } catch (const abi::__forced_unwind&) {
        throw; // the thread is being terminated
    } catch (const std::exception& error) {
        LOG_WARNING("%s: plugin %s threw: %s", what, qUtf8Printable(plugin), error.what());
        onText(QString::fromLocal8Bit(error.what()));
    } catch (...) {
        LOG_WARNING("%s: plugin %s threw", what, qUtf8Printable(plugin));
        onText(QString());
    }
    return false;
}

template <typename Call>
bool guardedCall(const char* what, const QString& plugin, Call&& call)
{
    return guardedCall(what, plugin, std::forward<Call>(call), [](const QString&) {});
}
