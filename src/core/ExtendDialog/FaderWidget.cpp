#include "ExtendDialog/FaderWidget.h"

#include <QPainter>
#include <QTimer>

namespace {

constexpr int OpaqueAlpha = 255;
constexpr int Steps = 10;

} // namespace

FaderWidget::FaderWidget(QWidget* parent)
    : QWidget(parent)
    , m_pTimer(new QTimer(this))
{
    connect(m_pTimer, &QTimer::timeout, this, qOverload<>(&FaderWidget::update));
    if (parent)
        resize(parent->size());
}

void FaderWidget::start()
{
    m_iCurrentAlpha = OpaqueAlpha;
    m_pTimer->start(m_iDuration / Steps);
    show();
}

void FaderWidget::start(const QColor& color, int duration)
{
    m_colorFade = color;
    m_iDuration = qMax(Steps, duration);
    start();
}

void FaderWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    m_colorFade.setAlpha(qMax(m_iCurrentAlpha, 0));
    painter.fillRect(rect(), m_colorFade);
    m_iCurrentAlpha -= m_pTimer->interval() * OpaqueAlpha / m_iDuration;
    if (m_iCurrentAlpha >= 1)
        return;
    m_pTimer->stop();
    close();
}
