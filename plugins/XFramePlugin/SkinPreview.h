#pragma once

#include <QPixmap>

struct WindowLook;

/// Small pictures of the main window in a look, drawn with a few widgets that have its style sheet. GUI thread.
namespace SkinPreview {

constexpr QSize Size{112, 84}; ///< in device-independent pixels

/// @param ratio device pixels for each pixel
QPixmap picture(const WindowLook& look, qreal ratio);

} // namespace SkinPreview
