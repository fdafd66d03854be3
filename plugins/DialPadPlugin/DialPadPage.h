#pragma once

#include "support/Page.h"
#include "support/Requests.h"

#include <QPointer>

class DeviceEvents;
class NumberField;
class QBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class RecentList;
class UssdDialog;

/// The page with the number field, the twelve keys, the call button and the numbers that were dialled last. It calls
/// numbers, and sends service codes such as *100# to the network.
class DialPadPage : public Page
{
    Q_OBJECT

public:
    /// @param events must outlive the page
    DialPadPage(DeviceEvents* events, QWidget* parent);
    ~DialPadPage() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* makePad();
    QWidget* makeCallButton();
    void enter(const QString& character);
    void call();
    void callNumber(const QString& dialled);
    void sendCode(const QString& dialled);
    void remember(const QString& dialled);
    void showFault(const char* id);
    void refresh();
    void followModem();

    DeviceEvents* m_events;
    Requests m_requests;
    NumberField* m_field;
    QLineEdit* m_number;
    QLabel* m_message;
    RecentList* m_recent;
    QBoxLayout* m_columns;
    QPushButton* m_call = nullptr;
    const char* m_obstacle = nullptr; ///< what keeps the user from dialling; a string's identifier
    QPointer<UssdDialog> m_dialog;
};
