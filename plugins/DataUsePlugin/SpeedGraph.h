#pragma once

#include "Chart.h"
#include "SpeedLog.h"

class Units;

/// The speeds of the last minutes: an area for what is received, a line for what is sent.
class SpeedGraph : public Chart
{
    Q_OBJECT

public:
    /// @param now of the log's clock
    void showSpeeds(const SpeedLog& log, qint64 now, const Units& units);

protected:
    void drawContent(QPainter& painter, const QRectF& plot) override;

private:
    QVector<SpeedLog::Step> m_steps;
    qint64 m_now = 0;
    quint64 m_top = 1;
};
