#pragma once

#include "support/Customisation.h"
#include "support/Page.h"
#include "support/Requests.h"

#include <QPointer>
#include <QTimer>

class DetailsCard;
class DeviceEvents;
class NetworkChoice;
class OperatorNames;
class QPushButton;
struct Modem;

/// Shows what support asks for about the modem in use, its SIM card and its network, and lets the user choose the
/// network.
class ModemPage : public Page
{
    Q_OBJECT

public:
    /// @param events must outlive the page
    ModemPage(DeviceEvents* events, QWidget* parent);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QLayout* makeButtons();
    void translate();
    void refresh();
    void showNotice(bool isShown);
    void embedSimPanel();
    void reveal(bool isRevealed);
    void copy();
    QString plainText() const;

    Customisation m_customisation;
    Requests m_requests;
    OperatorNames* m_names;
    QTimer m_copied; ///< runs while the button says that everything was copied
    QPushButton* m_reveal;
    QPushButton* m_copy;
    QWidget* m_notice = nullptr;
    DetailsCard* m_modem;
    DetailsCard* m_sim;
    QPointer<QWidget> m_simPanel; ///< of SimInfoPlugin; null without it
    DetailsCard* m_network;
    NetworkChoice* m_choice;
};
