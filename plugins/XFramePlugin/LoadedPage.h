#pragma once

#include <QString>

class IPluginContainer;
class IUIPlugin;

/// The plugin that makes a page, if it is enabled and loaded already: looking for pages loads nothing.
IUIPlugin* loadedPage(IPluginContainer& container, const QString& clsid);
