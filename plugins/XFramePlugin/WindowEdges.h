#pragma once

#include <QObject>
#include <QRect>

class QMouseEvent;
class QWidget;

/// Lets the user resize a frameless window by dragging its border.
class WindowEdges : public QObject
{
    Q_OBJECT

public:
    /// @param window owns this object; its layout must leave the border free
    /// @param width  of the border in pixels
    WindowEdges(QWidget* window, int width);

    /// Switched off, the border does nothing, as around a maximised window.
    void setEnabled(bool isEnabled) { m_isEnabled = isEnabled; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Qt::Edges edgesAt(const QPoint& point) const;
    void showCursor(Qt::Edges edges);
    bool press(const QMouseEvent& event);
    void drag(const QPoint& cursor);

    QWidget* m_window;
    int m_width;
    bool m_isEnabled = true;
    bool m_hasCursor = false; ///< the window has the cursor of an edge
    Qt::Edges m_dragged;      ///< none while the button is up
    QPoint m_pressedAt;       ///< in screen coordinates
    QRect m_geometry;         ///< of the window when the button was pressed
};
