#include "SplashWindow.h"

#include "common/Log.h"

#include <QGuiApplication>
#include <QImageReader>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QtMath>

namespace {

// All in device-independent pixels.
constexpr QSize PlainSize(480, 270);
constexpr int Edge = 24; ///< distance of the text from the window's edges
constexpr int TextSize = 13;
constexpr int TextHeight = 44; ///< of the strip with text, above the progress bar
constexpr int ProgressHeight = 3;
constexpr qreal ProgressShare = 0.3; ///< length of the moving bar relative to the window's width

constexpr int FrameTime = 40;   // milliseconds
constexpr int SweepTime = 1800; // milliseconds from one edge to the other

constexpr QColor PlainColor(0x12, 0x30, 0x5e);
constexpr QColor ProgressColor(0xff, 0xd7, 0x66);

QRect centred(QSize size, const QRect& available)
{
    if (size.width() > available.width() || size.height() > available.height())
        size.scale(available.size(), Qt::KeepAspectRatio);
    QRect place(QPoint(), size);
    place.moveCenter(available.center());
    return place;
}

/// Moves from 0 to 1 and back, slowing down at both ends.
qreal swing(qint64 milliseconds)
{
    return 0.5 - 0.5 * qCos(M_PI * qreal(milliseconds) / SweepTime);
}

} // namespace

SplashWindow::SplashWindow(const QString& pictures, const SplashText& text)
    : m_text(text)
{
    setFlags(Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
             Qt::WindowDoesNotAcceptFocus);
    setTitle(m_text.starting);
    const QString picture = pictures + QStringLiteral("/splash.png");
    const QSize size = QImageReader(picture).size();
    if (size.isValid())
        m_pictures.addFile(picture); // also adds the @2x and @3x variants
    setGeometry(centred(size.isValid() ? size : PlainSize, screen()->availableGeometry()));
    m_shown.start();
    startTimer(FrameTime);
}

void SplashWindow::showEvent(QShowEvent* event)
{
    QRasterWindow::showEvent(event);
    LOG_DEBUG("%s: %s: %dx%d, %.2f pixels each", LOG_FILE, LOG_FUNCTION, width(), height(),
              devicePixelRatio());
}

void SplashWindow::timerEvent(QTimerEvent*)
{
    update(QRect(0, height() - ProgressHeight, width(), ProgressHeight));
}

void SplashWindow::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.setClipRegion(event->region());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    drawPicture(painter);
    drawText(painter);
    drawProgress(painter);
}

void SplashWindow::drawPicture(QPainter& painter)
{
    const QRect window(QPoint(), size());
    painter.fillRect(window, PlainColor);
    if (!m_pictures.isNull())
        painter.drawPixmap(window, m_pictures.pixmap(this, size()));
}

void SplashWindow::drawText(QPainter& painter) const
{
    QFont font = painter.font();
    font.setPixelSize(TextSize);
    painter.setFont(font);
    painter.setLayoutDirection(m_text.direction);
    const QRect strip(Edge, height() - ProgressHeight - TextHeight, width() - 2 * Edge, TextHeight);
    painter.setPen(Qt::white);
    painter.drawText(strip, Qt::AlignVCenter | Qt::AlignLeft, m_text.starting);
    painter.setPen(QColor(255, 255, 255, 170));
    painter.drawText(strip, Qt::AlignVCenter | Qt::AlignRight, m_text.version);
}

void SplashWindow::drawProgress(QPainter& painter) const
{
    const QRectF track(0, height() - ProgressHeight, width(), ProgressHeight);
    const qreal length = track.width() * ProgressShare;
    const qreal start = swing(m_shown.elapsed()) * (track.width() - length);
    painter.fillRect(track, QColor(255, 255, 255, 40));
    painter.fillRect(QRectF(start, track.top(), length, track.height()), ProgressColor);
}
