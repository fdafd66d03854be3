#pragma once

#include "skylume_global.h"

#include <qwindowdefs.h>

/// The function that handles the messages of a native window. Other systems than Windows have no such function and
/// no such messages: there a handler receives only what sendMessage() sends to a widget's window.
namespace Platform {

/// A handle of a window procedure. It must not be called as a function; use callWindowProcedure().
using WindowProcedure = void*;

/// Handles a message and returns its result.
using MessageHandler = qintptr (*)(WId window, quint32 message, quintptr wParam, qintptr lParam);

/// The window's current procedure; null if the window does not exist or the system has no window procedures.
SKYLUME_EXPORT WindowProcedure windowProcedure(WId window);

/// Makes a handler the window's procedure. The previous procedure is no longer called; pass messages on with
/// callWindowProcedure(). Calling it again replaces the handler.
/// @param window native window of this thread; elsewhere than on Windows that of a QWidget
/// @return false if the window does not exist
SKYLUME_EXPORT bool setMessageHandler(WId window, MessageHandler handler);

/// Passes a message on to a procedure returned by windowProcedure(), usually the one that the handler replaced.
/// @return the message's result; 0 on systems without window procedures
SKYLUME_EXPORT qintptr callWindowProcedure(WindowProcedure procedure, WId window, quint32 message,
                                           quintptr wParam, qintptr lParam);

/// Calls a window's procedure, elsewhere than on Windows its handler. On the thread of the window.
/// @return the message's result; 0 if the window has no handler or does not exist
SKYLUME_EXPORT qintptr sendMessage(WId window, quint32 message, quintptr wParam, qintptr lParam);

} // namespace Platform
