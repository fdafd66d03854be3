#pragma once

#include "Chart.h"
#include "History.h"

class Units;

/// What was transferred on each of the last days: bars, of which the upper part was sent. A tool tip has the numbers.
class DayBars : public Chart
{
    Q_OBJECT

public:
    static constexpr int Shown = 31; ///< days

    /// @param units must outlive this object
    void showDays(const History::Days& days, const QDate& today, const Units& units);

protected:
    void drawContent(QPainter& painter, const QRectF& plot) override;
    bool event(QEvent* event) override;

private:
    QString tipAt(const QPoint& position) const;

    const Units* m_units = nullptr;
    QDate m_first;
    QVector<Traffic> m_days; ///< from m_first on
    quint64 m_top = 1;
};
