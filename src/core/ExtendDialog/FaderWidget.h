#pragma once

#include "skylume_global.h"

#include <QColor>
#include <QWidget>

class QTimer;

/// Covers a widget with a colour that fades away, then closes itself. It is not deleted when it closes. GUI
/// thread only.
class SKYLUME_EXPORT FaderWidget : public QWidget
{
    Q_OBJECT

public:
    /// @param parent the widget to cover, in its current size; it owns the overlay. May be null.
    explicit FaderWidget(QWidget* parent);

    /// Covers the parent with white, which fades away in about a second.
    void start();

    /// Covers the parent with a colour.
    /// @param duration until it has faded away, in milliseconds
    void start(const QColor& color, int duration);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QTimer* m_pTimer;
    int m_iCurrentAlpha = 0; ///< 255 covers everything
    QColor m_colorFade = Qt::white;
    int m_iDuration = 1000; ///< in milliseconds
};
