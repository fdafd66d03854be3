#pragma once

#include "support/Modems.h"
#include "support/Units.h"

#include <QWidget>

class ElidedLabel;
class OperatorNames;
class QLabel;
class SignalBars;

/// The state of the modem in use: network, signal strength, speeds and the volume since it was attached. GUI thread
/// only.
class StatusBar : public QWidget
{
    Q_OBJECT

public:
    explicit StatusBar(QWidget* parent);

    /// Reads the values of the modem and shows them; does nothing while hidden or minimised.
    void refresh();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
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
    bool m_isShown = false; // isVisible() is true for minimised windows too
};
