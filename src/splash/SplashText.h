#pragma once

#include <QString>

/// The words on the splash screen, in the language that the application is about to start in.
struct SplashText
{
    QString starting;
    QString version;
    Qt::LayoutDirection direction = Qt::LeftToRight;

    /// Takes them from the main frame's language file. Without it only the version's number is left.
    /// @param plugins folder of the plugins' data
    static SplashText read(const QString& plugins);
};
