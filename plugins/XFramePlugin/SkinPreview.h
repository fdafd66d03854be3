#pragma once

#include <QPixmap>

/// Small pictures of the main window in a skin, drawn with a few widgets that have the skin's style sheet. GUI thread.
namespace SkinPreview {

constexpr QSize Size{112, 84}; ///< in device-independent pixels

/// @param skin      name of a file of the folder "skin" of the installation, without ".qss"
/// @param isCompact whether it is the skin of the compact window
/// @param ratio     device pixels for each pixel
QPixmap picture(const QString& skin, bool isCompact, qreal ratio);

} // namespace SkinPreview
