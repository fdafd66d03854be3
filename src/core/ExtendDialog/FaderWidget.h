#pragma once

#include "skylume_global.h"

#include <QColor>
#include <QWidget>

class QTimer;

/// Covers a widget with a colour that fades away. Make it, call start(), and delete it with its parent or
/// once it has closed itself. GUI thread only.
class SKYLUME_EXPORT FaderWidget : public QWidget
{
    Q_OBJECT

public:
    /// @param parent the widget to cover as it is large now; null makes an empty overlay
    explicit FaderWidget(QWidget* parent);

    /// Covers the parent with white; it shows through again within a second.
    void start();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QTimer* m_pTimer;
    int m_iCurrentAlpha = 0; ///< 255 covers everything
    QColor m_colorFade = Qt::white;
    int m_iDuration = 1000; ///< in milliseconds
};
