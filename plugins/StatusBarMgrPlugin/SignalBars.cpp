#include "SignalBars.h"

#include "support/Look.h"

#include <QPainter>

namespace {

constexpr int Bars = Look::SignalBars;
constexpr int BarWidth = 3;
constexpr int BarGap = 2;
constexpr int Height = 14;

} // namespace

SignalBars::SignalBars(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SignalBars::setStrength(int percent)
{
    m_lit = Look::signalBars(percent);
    update();
}

QSize SignalBars::sizeHint() const
{
    return {Bars * BarWidth + (Bars - 1) * BarGap, Height};
}

void SignalBars::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QColor dim =
        Look::mixed(palette().color(QPalette::Window), palette().color(QPalette::WindowText), 0.25);
    for (int bar = 0; bar < Bars; ++bar) {
        const int height = Height * (bar + 1) / Bars;
        painter.setBrush(bar < m_lit ? palette().color(QPalette::WindowText) : dim);
        painter.drawRoundedRect(QRectF(bar * (BarWidth + BarGap), Height - height, BarWidth, height), 1, 1);
    }
}
