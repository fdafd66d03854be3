#pragma once

#include "SplashText.h"

#include <QElapsedTimer>
#include <QIcon>
#include <QRasterWindow>

/// Shows a picture, a line of text and a moving progress bar in the middle of the screen. The window does not
/// take the focus and ignores clicks.
class SplashWindow : public QRasterWindow
{
    Q_OBJECT

public:
    /// @param pictures folder with splash.png and, for high-resolution screens, splash@2x.png and splash@3x.png.
    ///                 The size of splash.png is the window's size in device-independent pixels. Without it
    ///                 the window has a plain background.
    SplashWindow(const QString& pictures, const SplashText& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void drawPicture(QPainter& painter);
    void drawText(QPainter& painter) const;
    void drawProgress(QPainter& painter) const;

    QIcon m_pictures; ///< the picture in all resolutions
    SplashText m_text;
    QElapsedTimer m_shown;
};
