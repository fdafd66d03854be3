#pragma once

/// Applies the skin that goes with mini mode and the direction in which windows are laid out: outside mini
/// mode the default one, in it the one of the setting "MiniSkin"/"Name". Where a file is missing, the look
/// stays as it is.
void applySkin();
