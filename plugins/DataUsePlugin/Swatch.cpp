#include "Swatch.h"

#include <QPainter>

namespace {

constexpr int Size = 10;

} // namespace

Swatch::Swatch(Look::Tone tone)
    : m_tone(tone)
{
    setFixedSize(Size, Size);
}

void Swatch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Look::toneColor(m_tone, palette()));
    painter.drawEllipse(rect());
}
