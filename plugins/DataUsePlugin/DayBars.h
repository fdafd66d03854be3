#pragma once

#include "Chart.h"
#include "History.h"

class Units;

/// What was transferred on each day of a month: bars, of which the upper part was sent. A tool tip has the numbers.
class DayBars : public Chart
{
    Q_OBJECT

public:
    /// @param units must outlive this object
    void showDays(const History::Days& days, const Period& month, const Units& units);

protected:
    void drawContent(QPainter& painter, const QRectF& plot) override;
    bool event(QEvent* event) override;

private:
    QString tipAt(const QPoint& position) const;

    const Units* m_units = nullptr;
    QDate m_first;
    QVector<Traffic> m_days; ///< of the month, from m_first on
    quint64 m_top = 1;
};
