#pragma once

#include "Units.h"
#include "support/Modems.h"

#include <QWidget>

class ElidedLabel;
class OperatorNames;
class QLabel;
class SignalBars;

/// What the first of the attached modems is doing: network, strength of the signal, speeds and the volume
/// since it was attached.
class StatusBar : public QWidget
{
    Q_OBJECT

public:
    explicit StatusBar(QWidget* parent);

    /// Shows what the modem reports now.
    void refresh();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showNetwork(const Modem& modem);
    void showTransfer(const Modem& modem);
    void showNoModem();

    const Units m_units;
    OperatorNames* m_names;
    SignalBars* m_signal;
    ElidedLabel* m_network;
    QWidget* m_transfer;
    QLabel* m_receiving;
    QLabel* m_sending;
    QLabel* m_volume;
};
