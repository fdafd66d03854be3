#pragma once

/// Whether the application starts when the user logs in to the computer. The system keeps this: an XDG autostart entry on
/// Linux, the registry's Run key on Windows. The desktop's own settings can change it, too. An entry for another copy of the
/// application, for example in the folder from which it was moved, is ignored and replaced.
namespace Autostart {

bool isOn();

/// @return false if the system did not take it; nothing has changed then
bool setOn(bool isOn);

} // namespace Autostart
