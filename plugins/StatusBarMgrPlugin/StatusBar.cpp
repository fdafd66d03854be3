#include "StatusBar.h"

#include "SignalBars.h"
#include "support/ElidedLabel.h"
#include "support/Look.h"
#include "support/ModemInUse.h"
#include "support/Numbers.h"
#include "support/OperatorNames.h"
#include "support/Text.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

namespace {

constexpr int BarHeight = 36;

/// @param hint identifier of a string in which %1 is the value
void showValue(QLabel* label, const QString& content, const char* hint, const QString& value)
{
    label->setText(content);
    label->setToolTip(text(hint).arg(value));
    label->setAccessibleName(label->toolTip());
}

QString withoutModem(const QString& unusable)
{
    if (unusable == QLatin1String("rejected"))
        return text("IDS_STATUS_REFUSED");
    return text(unusable.isEmpty() ? "IDS_STATUS_NO_MODEM" : "IDS_STATUS_FAILED");
}

} // namespace

StatusBar::StatusBar(QWidget* parent)
    : QWidget(parent)
    , m_names(new OperatorNames(this))
    , m_signal(new SignalBars)
    , m_network(new ElidedLabel)
    , m_transfer(new QWidget)
    , m_receiving(Look::label(QString(), Look::NormalText))
    , m_sending(Look::label(QString(), Look::NormalText))
    , m_volume(Look::quietLabel(QString()))
{
    setFixedHeight(BarHeight);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    auto* values = new QHBoxLayout(m_transfer);
    values->setContentsMargins(0, 0, 0, 0);
    values->setSpacing(Look::Gap * 2);
    for (QLabel* label : {m_receiving, m_sending, m_volume})
        values->addWidget(label);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(Look::Gap * 2, 1, Look::Gap * 2, 0);
    layout->setSpacing(Look::Gap);
    layout->addWidget(m_signal);
    layout->addWidget(m_network);
    layout->addStretch();
    layout->addWidget(m_transfer);
    connect(m_names, &QThread::finished, this, &StatusBar::refresh);
    keepTranslated(this, [this] { refresh(); });
}

void StatusBar::refresh()
{
    if (!m_isShown)
        return; // reading the counters would make the device service report their growth every second
    const Modems modems = attachedModems();
    m_transfer->setVisible(!modems.isEmpty());
    if (modems.isEmpty()) {
        showNoModem();
        return;
    }
    const Modem modem = modemInUse(modems);
    showNetwork(modem);
    showTransfer(modem);
}

void StatusBar::showNetwork(const Modem& modem)
{
    const QString network = modemValue(modem, "network");
    const int strength = network.isEmpty() ? 0 : modemValue(modem, "signal").toInt();
    m_signal->setStrength(strength);
    m_signal->setToolTip(text("IDS_STATUS_SIGNAL").arg(numberText(strength)));
    m_signal->setAccessibleName(m_signal->toolTip());
    m_network->setFullText(network.isEmpty()
                               ? text("IDS_STATUS_NO_NETWORK")
                               : m_names->nameOf(network, modem.imsi, modemValue(modem, "network-name")));
    m_network->setAccessibleName(text("IDS_STATUS_NETWORK"));
}

void StatusBar::showTransfer(const Modem& modem)
{
    const QString receiving = m_units.speed(modemValue(modem, "receive-rate"));
    const QString sending = m_units.speed(modemValue(modem, "send-rate"));
    const QString volume =
        m_units.volume(modemValue(modem, "received").toULongLong() + modemValue(modem, "sent").toULongLong());
    showValue(m_receiving, QStringLiteral("\u2193 ") + receiving, "IDS_STATUS_RECEIVING", receiving);
    showValue(m_sending, QStringLiteral("\u2191 ") + sending, "IDS_STATUS_SENDING", sending);
    showValue(m_volume, volume, "IDS_STATUS_VOLUME", volume);
}

void StatusBar::showNoModem()
{
    const QString words = withoutModem(unusableState());
    m_signal->setStrength(0);
    m_signal->setToolTip({});
    m_signal->setAccessibleName(words);
    m_network->setFullText(words);
}

void StatusBar::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_isShown = true;
    refresh();
}

void StatusBar::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_isShown = false;
}

void StatusBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    painter.fillRect(rect().adjusted(0, 0, 0, 1 - height()), Look::lineColor(palette()));
}
