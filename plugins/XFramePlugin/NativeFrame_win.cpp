#include "NativeFrame.h"

#include "TitleBar/TitleBar.h"

#include <QAbstractButton>

#include <windows.h>

namespace {

HWND handleOf(const QWidget& window)
{
    return reinterpret_cast<HWND>(window.internalWinId());
}

/// The place of a message about the mouse, in coordinates of the title bar.
QPoint placeIn(const TitleBar& titleBar, LPARAM screenPlace)
{
    POINT place{short(LOWORD(screenPlace)), short(HIWORD(screenPlace))}; // can be negative
    const QWidget* const window = titleBar.window();
    ScreenToClient(handleOf(*window), &place);
    return titleBar.mapFrom(window, QPoint(place.x, place.y) / window->devicePixelRatioF());
}

/// Whether a press there can only be meant to drag the window.
bool isGrip(const TitleBar& titleBar, const QPoint& place)
{
    if (titleBar.IsMaximized() || !titleBar.rect().contains(place) || titleBar.isIconPressed(place))
        return false;
    const QWidget* const part = titleBar.childAt(place);
    // A label with a tip has to see the pointer, which the system would keep to itself.
    return !part || (!qobject_cast<const QAbstractButton*>(part) && part->toolTip().isEmpty());
}

/// Maximises and restores the window as its own buttons do, which the system knows nothing about.
bool command(TitleBar& titleBar, WPARAM command)
{
    if (IsIconic(handleOf(*titleBar.window())))
        return false;
    if (command == SC_MAXIMIZE)
        titleBar.showMax();
    else if (command == SC_RESTORE && titleBar.IsMaximized())
        titleBar.showRestore();
    else
        return false;
    return true;
}

} // namespace

/// The system snaps only windows that it may resize.
void NativeFrame::attach(const QWidget& window)
{
    const HWND handle = handleOf(window);
    SetWindowLongPtrW(handle, GWL_STYLE, GetWindowLongPtrW(handle, GWL_STYLE) | WS_THICKFRAME);
    SetWindowPos(handle, nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool NativeFrame::handle(TitleBar& titleBar, void* message, long* result)
{
    const MSG& msg = *static_cast<const MSG*>(message);
    *result = 0;
    switch (msg.message) {
    case WM_NCCALCSIZE: // the contents take the place of the system's frame
    case WM_NCPAINT:
        return true;
    case WM_NCACTIVATE:
        *result = DefWindowProcW(msg.hwnd, msg.message, msg.wParam, -1); // does not draw a title bar
        return true;
    case WM_NCHITTEST:
        // The edges are the window's own: it knows how small its contents can be.
        *result = isGrip(titleBar, placeIn(titleBar, msg.lParam)) ? HTCAPTION : HTCLIENT;
        return true;
    case WM_SYSCOMMAND:
        return command(titleBar, msg.wParam & 0xFFF0);
    default:
        return false;
    }
}
