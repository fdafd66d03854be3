#pragma once

#include "SplashText.h"

#include <QElapsedTimer>
#include <QIcon>
#include <QRasterWindow>

/// A picture with a line of text and a hint that the start goes on, in the middle of the screen. It takes no
/// focus and does nothing when clicked.
class SplashWindow : public QRasterWindow
{
    Q_OBJECT

public:
    /// @param pictures folder with splash.png and, for dense screens, splash@2x.png and splash@3x.png. The
    ///                 first gives the window's size in device-independent pixels. Without it the window is
    ///                 plain.
    SplashWindow(const QString& pictures, const SplashText& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void drawPicture(QPainter& painter);
    void drawText(QPainter& painter) const;
    void drawProgress(QPainter& painter) const;

    QIcon m_pictures; ///< the picture in all densities
    SplashText m_text;
    QElapsedTimer m_shown;
};
