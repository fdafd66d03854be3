#pragma once

/// Tells the user why there is no main window: the plugin library file, the main-frame plugin it
/// names, and what became of that plugin. To be called while Startup exists.
void reportMissingMainFrame();
