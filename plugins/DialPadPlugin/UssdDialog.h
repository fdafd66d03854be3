#pragma once

#include "ExtendDialog/ExtendDialog.h"
#include "support/Modems.h"

class DeviceEvents;
class QLabel;
class QLineEdit;
class QPushButton;
class Requests;
struct RequestEnd;

/// Sends a service code to the network and shows what it answers. If the network asks for a reply, there is a field for
/// it. Closing the dialog ends the dialogue with the network.
class UssdDialog : public ExtendDialog
{
    Q_OBJECT

public:
    /// Sends the code. It belongs to the parent and deletes itself when it is closed.
    /// @param requests, events must outlive the dialog
    UssdDialog(const QString& code, const Modem& modem, Requests& requests, const DeviceEvents* events,
               QWidget* parent);
    ~UssdDialog() override;

private:
    enum class State { Waiting, Asked, Ended };

    QWidget* makeContent();
    void send(const QString& text);
    void sendReply();
    void finish(const RequestEnd& end);
    void showFailure(int result);
    void enter(State state, const QString& heading, const QString& content);
    void followModem();

    const QString m_code;
    const Modem m_modem;
    Requests& m_requests;
    State m_state = State::Waiting;
    QLabel* m_heading;
    QLabel* m_content;
    QLineEdit* m_reply;
    QPushButton* m_send;
    QPushButton* m_close;
};
