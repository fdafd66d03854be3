#pragma once

#include "skylume_global.h"

#include <qwindowdefs.h>

/// The function that handles the messages of a native window. It exists on Windows only.
namespace Platform {

/// A handle of a window procedure. It must not be called as a function; use callWindowProcedure().
using WindowProcedure = void*;

/// Handles a message and returns its result.
using MessageHandler = qintptr (*)(WId window, quint32 message, quintptr wParam, qintptr lParam);

/// The window's current procedure; null if the window does not exist or the system has no window procedures.
SKYLUME_EXPORT WindowProcedure windowProcedure(WId window);

/// Makes a handler the window's procedure. The previous procedure is no longer called; pass messages on with
/// callWindowProcedure(). Calling it again replaces the handler.
/// @param window native window of this thread
/// @return false if the window does not exist or the system has no window procedures
SKYLUME_EXPORT bool setMessageHandler(WId window, MessageHandler handler);

/// Passes a message on to a procedure returned by windowProcedure(), usually the one that the handler replaced.
/// @return the message's result; 0 on systems without window procedures
SKYLUME_EXPORT qintptr callWindowProcedure(WindowProcedure procedure, WId window, quint32 message,
                                           quintptr wParam, qintptr lParam);

} // namespace Platform
