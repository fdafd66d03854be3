#pragma once

#include <QString>

class QWidget;

/// Size and position of a window as text for the settings.
namespace WindowPlace {

/// Describes where a window is when it is neither maximised nor minimised.
/// @param hasOwnFrame whether the window draws its own frame
QString describe(const QWidget& window, bool hasOwnFrame);

/// Puts a window where describe() found it, whatever frame it had then, or as near as the screens allow.
/// @return false if the text describes no place; the window stays where it is
bool restore(QWidget& window, const QString& place);

} // namespace WindowPlace
