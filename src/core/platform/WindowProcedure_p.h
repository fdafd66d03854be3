#pragma once

#include "skylume_global.h"

#include <qwindowdefs.h>

/// The function that handles the messages of a native window. Only Windows has one.
namespace Platform {

/// A window procedure as the system hands it out: not a pointer that could be called, see
/// callWindowProcedure().
using WindowProcedure = void*;

/// Handles a message of the window and returns the message's result.
using MessageHandler = qintptr (*)(WId window, quint32 message, quintptr wParam, qintptr lParam);

/// The window's procedure; null for a window that does not exist, and on systems without window procedures.
SKYLUME_EXPORT WindowProcedure windowProcedure(WId window);

/// Makes a handler the window's procedure. The one before is not called any more unless the handler does
/// that. Calling it again replaces the handler.
/// @param window native window of this thread
/// @return false when the window does not exist, and on systems without window procedures.
SKYLUME_EXPORT bool setMessageHandler(WId window, MessageHandler handler);

/// Passes a message on to a procedure that windowProcedure() returned, usually the one that the handler
/// replaced.
/// @return the message's result; 0 on systems without window procedures
SKYLUME_EXPORT qintptr callWindowProcedure(WindowProcedure procedure, WId window, quint32 message,
                                           quintptr wParam, qintptr lParam);

} // namespace Platform
