#pragma once

#include <QVector>
#include <QWidget>

/// A plain chart: three horizontal lines with labels, labels below, and what derived classes draw. Its colours suit
/// every skin; from right to left it is mirrored.
class Chart : public QWidget
{
    Q_OBJECT

public:
    Chart();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    struct Tick
    {
        qreal place; ///< from 0 to 1
        QString label;
    };

    /// @param top, middle labels of the highest line and of that in the middle
    void setAxes(const QString& top, const QString& middle, const QVector<Tick>& ticks);

    /// Draws what the chart is about.
    /// @param painter without pen, and mirrored if necessary
    /// @param plot    the area between the lines
    virtual void drawContent(QPainter& painter, const QRectF& plot) = 0;

    /// The area between the lines, from left to right.
    QRectF plot() const;

    QColor receivedColor() const;
    QColor sentColor() const;

    void paintEvent(QPaintEvent* event) override;

private:
    void drawLines(QPainter& painter, const QRectF& plot) const;
    void drawLabels(QPainter& painter, const QRectF& plot) const;

    QString m_top;
    QString m_middle;
    QVector<Tick> m_ticks;
};
