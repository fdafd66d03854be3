#pragma once

#include "Connector.h"
#include "Meaning.h"
#include "ModemReport.h"
#include "support/Page.h"
#include "support/Requests.h"
#include "support/Units.h"

#include <QPointer>
#include <QTimer>

class DeviceEvents;
class FactsPanel;
class OperatorNames;
class PinDialog;
class QPushButton;
class StatePanel;

/// Shows the state of the modem in use and lets the user change it. While hidden or minimised it reads only what it
/// needs to notice a locked SIM card.
class ConnectionPage : public Page
{
    Q_OBJECT

public:
    /// @param events must outlive the page
    ConnectionPage(DeviceEvents* events, QWidget* parent);
    ~ConnectionPage() override;

    /// Connects or disconnects as the button does, if that is possible. If the modem needs something else first, shows the
    /// page.
    void switchConnection();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QLayout* makeBottomLine();

    void refresh();
    void readModem();
    void showModem();
    void showState();
    void offerUnlocking();

    void act(Action action);
    void askForCode();
    void changeAccessPoint();

    DeviceEvents* m_events;
    Requests m_requests;
    Connector m_connector;
    const Units m_units;
    Modem m_modem; ///< in use; id 0 without one
    ConnectionReport m_report;
    quint32 m_offeredFor = 0; ///< the locked modem for which the dialog has opened by itself
    bool m_isShown = false;   ///< isVisible() is true for minimised windows too
    QTimer m_everySecond;     ///< runs while a duration is visible
    OperatorNames* m_names;
    StatePanel* m_state;
    FactsPanel* m_facts;
    QLabel* m_demonstration;
    QPushButton* m_accessPoint;
    QPointer<PinDialog> m_pinDialog;
};
