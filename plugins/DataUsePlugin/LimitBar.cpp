#include "LimitBar.h"

#include "support/Look.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr int Height = 12;

} // namespace

LimitBar::LimitBar()
{
    setFixedHeight(Height);
}

void LimitBar::showShare(int share, int warnAt, LimitState state)
{
    m_share = std::min(share, 100);
    m_warnAt = warnAt;
    m_state = state;
    update();
}

void LimitBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (layoutDirection() == Qt::RightToLeft) {
        painter.translate(width(), 0);
        painter.scale(-1, 1);
    }
    QPainterPath shape;
    shape.addRoundedRect(rect(), Height / 2.0, Height / 2.0);
    painter.setClipPath(shape);
    const auto tone = m_state == LimitState::Below ? Look::Tone::Info : Look::Tone::Bad;
    painter.fillRect(rect(), Look::lineColor(palette()));
    painter.fillRect(QRectF(0, 0, width() * m_share / 100.0, Height), Look::toneColor(tone, palette()));
    painter.fillRect(QRectF(width() * m_warnAt / 100.0 - 1, 0, 2, Height), palette().color(QPalette::Base));
}
