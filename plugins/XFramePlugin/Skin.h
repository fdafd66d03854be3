#pragma once

/// Applies the skin for the current mode and layout direction: in mini mode the one named by the setting
/// "MiniSkin"/"Name", otherwise the default skin. If its file is missing, nothing changes.
void applySkin();
