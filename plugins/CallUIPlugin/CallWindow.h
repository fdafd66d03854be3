#pragma once

#include "CallEnd.h"
#include "ExtendDialog/ExtendDialog.h"
#include "PluginContainer/interfaces/ICallUIPlugin.h"

#include <QElapsedTimer>
#include <QTimer>

class QLabel;
class QPushButton;

/// One call from dialling to its end. Closing the window hangs up. After the user has hung up it closes automatically;
/// if the call ends for another reason, it stays open to say so. While the call goes on, the main window asks before it
/// closes.
class CallWindow : public ExtendDialog
{
    Q_OBJECT

public:
    /// @param modem the modem that makes the call, Modem::id
    CallWindow(const QString& number, _UI_EN_CALL_TYPE type, quint32 modem, QWidget* parent);

    /// Whether the call has not ended yet.
    bool isGoingOn() const { return m_state != State::Ended; }

    /// Ends the call if its modem was removed or has lost its network.
    void followModem();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class State { Dialling, InCall, Ended };

    QWidget* makeContent(const QString& number);
    QPushButton* makeHangUpButton();
    void enter(State state);
    void end(CallEnd reason);
    void proceed();
    void showState();
    QString stateText() const;
    QString durationLine() const;
    void hangUpOrClose();

    const quint32 m_modem;
    State m_state = State::Dialling;
    CallEnd m_end = CallEnd::HungUp;
    bool m_hadNetwork;
    QTimer m_nextState;    ///< simulates the network
    QTimer m_everySecond;  ///< updates the duration
    QElapsedTimer m_since; ///< starts when the call is answered
    qint64 m_length = 0;   ///< of a call that has ended, in milliseconds; 0 if it was not answered
    QLabel* m_stateLabel;
    QPushButton* m_hangUp;
};
