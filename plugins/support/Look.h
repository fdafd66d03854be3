#pragma once

#include <QColor>
#include <QFont>
#include <QIcon>

class QLabel;
class QPalette;
class QWidget;

/// What the application's own widgets look like. Everything goes by the palette, in light and in dark.
namespace Look {

constexpr int Gap = 8;     ///< between things that belong together, in device-independent pixels
constexpr int Margin = 24; ///< around a page
constexpr int Radius = 8;  ///< of rounded corners

/// Meaning of a colour.
enum class Tone { Good, Info, Quiet, Bad };

/// A strong colour of that meaning, readable on the palette's base and window colours.
QColor toneColor(Tone tone, const QPalette& palette);

/// The colour between two: 0 gives the first, 1 the second.
QColor mixed(const QColor& first, const QColor& second, qreal share);

/// A hairline colour that separates areas without drawing attention.
QColor lineColor(const QPalette& palette);

/// Scales a label's font by a factor.
void setFont(QLabel* label, qreal scale, QFont::Weight weight = QFont::Normal);

/// Makes a label quieter than the rest, in the colours of any palette that it gets.
void makeQuiet(QLabel* label);

/// A label with the font scaled by a factor.
QLabel* label(const QString& content, qreal scale, QFont::Weight weight = QFont::Normal);

/// A label for captions and explanations: quieter than the rest, word-wrapped on demand.
QLabel* quietLabel(const QString& content, bool wrapped = false);

/// Pictures, drawn as a white sign on a coloured tile.
enum class Sign { Signal, Modem, Sim, DialPad, Plugins, Help, Call, Message };

/// The picture in all usual sizes. It holds pixels only, so it may outlive the library that made it.
QIcon tileIcon(Sign sign);

} // namespace Look
