#include "HoldButton.h"

namespace {

constexpr int HoldTime = 500; // milliseconds

} // namespace

HoldButton::HoldButton(QWidget* parent)
    : QPushButton(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(HoldTime);
    connect(this, &QPushButton::pressed, this, [this] {
        m_wasHeld = false;
        m_timer.start();
    });
    connect(this, &QPushButton::released, &m_timer, &QTimer::stop);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_wasHeld = true;
        Q_EMIT held();
    });
    connect(this, &QPushButton::clicked, this, [this] {
        if (!m_wasHeld)
            Q_EMIT tapped();
    });
}
