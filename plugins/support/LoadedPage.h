#pragma once

#include "PluginContainer/PluginIds.h"

#include <QString>

class IPluginContainer;
class IUIPlugin;
class QWidget;

/// The page interface of a plugin, if the plugin is enabled and already loaded; null otherwise. Does not load
/// any library.
/// @param iid number of the interface
IUIPlugin* loadedPage(IPluginContainer& container, const QString& clsid, int iid = PluginIds::FirstService);

/// Has a loaded plugin build its page.
/// @return null when the plugin is not loaded or enabled, has no page or throws an exception, which is logged
QWidget* buildPage(IPluginContainer& container, const QString& clsid, QWidget* parent,
                   int iid = PluginIds::FirstService);
