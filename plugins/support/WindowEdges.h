#pragma once

#include <QObject>
#include <QRect>

class QMouseEvent;
class QWidget;
class TitleBar;

/// Lets the user resize a window that draws its own frame by dragging its border, down to its minimum size and minimum
/// size hint. A maximised window and a tile keep their size. GUI thread only.
class WindowEdges : public QObject
{
    Q_OBJECT

public:
    /// @param titleBar of the window; it owns this object
    /// @param width    of the border in pixels; nothing but the title bar may cover it
    WindowEdges(TitleBar* titleBar, int width);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Qt::Edges edgesAt(const QPoint& point) const;
    void showCursor(Qt::Edges edges);
    bool press(const QMouseEvent& event);
    void drag(const QPoint& cursor);

    TitleBar* m_titleBar;
    QWidget* m_window;
    int m_width;
    bool m_hasCursor = false; ///< the window has the cursor of an edge
    Qt::Edges m_dragged;      ///< none while the button is up
    QPoint m_pressedAt;       ///< in screen coordinates
    QRect m_geometry;         ///< of the window when the button was pressed
};
