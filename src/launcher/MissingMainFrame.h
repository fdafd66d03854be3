#pragma once

/// Says on standard error why there is no main window: the plugin library file, the main-frame plugin it
/// names, and what became of that plugin. To be called while Startup exists.
void reportMissingMainFrame();
