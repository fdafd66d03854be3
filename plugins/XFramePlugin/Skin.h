#pragma once

#include <QString>
#include <QVector>

class QPalette;

/// A look that the user can choose for the main window, and with it for the whole application.
struct WindowLook
{
    QString skin; ///< name of a file of the folder "skin" of the installation, without ".qss"
    bool isCompact = false;
    bool isDark = false; ///< of the usual window: in darkColours() instead of those of the desktop
};

bool operator==(const WindowLook& left, const WindowLook& right);

/// The usual window in both colours, then the compact one in each of its skins.
QVector<WindowLook> allLooks();

/// The look for the current mode: in mini mode the skin in the setting "MiniSkin"/"Name", otherwise the default one, in
/// dark colours if "mainwindow"/"dark" is "true".
WindowLook currentLook();

/// Stores a look as that of its mode. Changes neither the mode nor what is shown.
void storeLook(const WindowLook& look);

/// The colours that the style sheet of a look leaves to the palette. Call applySkin() first.
QPalette coloursOf(const WindowLook& look);

/// Applies the current look, for the layout direction of the application. Without the file of its skin, the style sheet
/// stays.
void applySkin();
