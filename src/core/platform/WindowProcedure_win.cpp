#include "platform/WindowProcedure_p.h"

#include <windows.h>

namespace {

// Window procedures need the system's calling convention (stdcall). dispatch() has it, and calls the handler, which is
// stored as a property of the window.
constexpr wchar_t HandlerProperty[] = L"SkylumeMessageHandler";

LRESULT QT_WIN_CALLBACK dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto handler = reinterpret_cast<Platform::MessageHandler>(GetPropW(window, HandlerProperty));
    if (!handler)
        return DefWindowProcW(window, message, wParam, lParam);
    if (message == WM_NCDESTROY) // the last message; properties must be removed before it ends
        RemovePropW(window, HandlerProperty);
    return handler(reinterpret_cast<WId>(window), message, wParam, lParam);
}

} // namespace

Platform::WindowProcedure Platform::windowProcedure(WId window)
{
    // On 32-bit systems these functions are SetWindowLongW and GetWindowLongW.
    return reinterpret_cast<WindowProcedure>(GetWindowLongPtrW(reinterpret_cast<HWND>(window), GWLP_WNDPROC));
}

bool Platform::setMessageHandler(WId window, MessageHandler handler)
{
    const auto handle = reinterpret_cast<HWND>(window);
    return SetPropW(handle, HandlerProperty, reinterpret_cast<HANDLE>(handler)) &&
           SetWindowLongPtrW(handle, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&dispatch)) != 0;
}

qintptr Platform::callWindowProcedure(WindowProcedure procedure, WId window, quint32 message, quintptr wParam,
                                      qintptr lParam)
{
    return CallWindowProcW(reinterpret_cast<WNDPROC>(procedure), reinterpret_cast<HWND>(window), message,
                           wParam, lParam);
}

qintptr Platform::sendMessage(WId window, quint32 message, quintptr wParam, qintptr lParam)
{
    return SendMessageW(reinterpret_cast<HWND>(window), message, wParam, lParam);
}
