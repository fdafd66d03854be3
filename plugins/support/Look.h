#pragma once

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QPalette>
#include <QSize>
#include <QVariant>

class QLabel;
class QLineEdit;
class QStyleOptionViewItem;

/// Colours, fonts, distances and pictures of the application. All colours are derived from the palette, so
/// that they suit light and dark skins. GUI thread only.
namespace Look {

// Distances in device-independent pixels, all of them multiples of Gap / 2.
constexpr int Gap = 8;     ///< between related elements
constexpr int Margin = 24; ///< around a page
constexpr int Radius = 8;  ///< of rounded corners

constexpr QSize ButtonSize{112, 36};      ///< buttons are at least as large
constexpr QSize LargeButtonSize{220, 48}; ///< of the button that a page is about
constexpr int FieldHeight = 36;           ///< fields for text are at least as high

// The sizes of text, as multiples of the desktop's.
constexpr qreal SmallText = 0.85;
constexpr qreal NormalText = 1;
constexpr qreal HeadingText = 1.15; ///< headings of panels, large buttons
constexpr qreal TitleText = 1.5;    ///< titles of windows and pages, telephone numbers
constexpr qreal StateText = 1.8;    ///< the state of the connection

/// The meaning of a colour.
enum class Tone { Good, Info, Quiet, Bad };

/// The colour for a meaning, readable on the palette's base and window colours.
QColor toneColor(Tone tone, const QPalette& palette);

/// A mixture of two opaque colours.
/// @param share of the second colour, from 0 to 1
QColor mixed(const QColor& first, const QColor& second, qreal share);

/// The colour of thin lines between areas.
QColor lineColor(const QPalette& palette);

/// The background of an entry in a list: highlighted when it is selected or the mouse pointer is over it.
/// @param role of the normal background
QColor entryBackground(const QStyleOptionViewItem& option, QPalette::ColorRole role);

/// The colour of the frame around the entry that has the focus; it stands out from entryBackground() as well.
QColor focusColor(const QPalette& palette);

/// Multiplies the size of a widget's font by `scale`, which is one of the sizes above.
void setFont(QWidget* widget, qreal scale, QFont::Weight weight = QFont::Normal);

/// Gives a label a dimmed text colour, also after changes of the palette, and the property "quiet" for style
/// sheets.
void makeQuiet(QLabel* label);

/// Sets a property that style sheets use, and applies them again if it has changed.
void setStyleProperty(QWidget* widget, const char* name, const QVariant& value);

/// Lets style sheets tell a field's hint from what the user has entered: they are applied anew when it becomes empty or not.
void followText(QLineEdit* field);

/// Lets the user select and copy a label's text, with the keyboard as well. Gives it the property "selectable" for
/// style sheets.
void makeSelectable(QLabel* label);

/// A new label for plain text; the caller owns it.
/// @param scale one of the sizes above
QLabel* label(const QString& content, qreal scale, QFont::Weight weight = QFont::Normal);

/// A new, empty label() that breaks its lines; the caller owns it.
QLabel* wrappedLabel(qreal scale, QFont::Weight weight = QFont::Normal);

/// A new label for captions and explanations, see makeQuiet(); the caller owns it.
QLabel* quietLabel(const QString& content, bool wrapped = false);

/// A new word-wrapped label for what went wrong, with the property "error" for style sheets; the caller owns it.
QLabel* errorLabel();

/// The white sign of a tileIcon().
enum class Sign {
    Signal,
    Modem,
    Sim,
    DialPad,
    Plugins,
    Help,
    Call,
    Message,
    Globe,
    Data,

    // States of a connection.
    NoModem,
    NoSim,
    Locked,
    Searching,
    Refused,
    Disconnected,
    Connecting,
    Connected,
    Failed,
};

/// A white sign on a coloured tile, in all usual sizes. The icon contains pixels only, so it may be kept after
/// the plugin is unloaded.
QIcon tileIcon(Sign sign);

constexpr int SignalBars = 4;

/// How many bars a signal strength has, 0 to SignalBars.
/// @param percent 0 to 100
int signalBars(int percent);

/// A tile with signal bars, and a mark that says whether the modem is connected. Otherwise as tileIcon().
QIcon signalIcon(int bars, bool isConnected);

} // namespace Look
