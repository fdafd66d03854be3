#pragma once

#include <QString>

/// The texts on the splash screen, in the start-up language.
struct SplashText
{
    QString starting;
    QString version;
    Qt::LayoutDirection direction = Qt::LeftToRight;

    /// Reads the texts from the main frame's language file. Without that file, only the version number is set.
    /// @param plugins the folder of all plugins' data
    static SplashText read(const QString& plugins);
};
