#pragma once

#include "ExtendDialog/ExtendDialog.h"
#include "PluginContainer/interfaces/ICallUIPlugin.h"

#include <QElapsedTimer>
#include <QTimer>

class QLabel;
class QPushButton;

/// One call from dialling to its end. Closing the window hangs up; after the call it closes automatically. While
/// the call goes on, the main window asks before it closes.
class CallWindow : public ExtendDialog
{
    Q_OBJECT

public:
    CallWindow(const QString& number, _UI_EN_CALL_TYPE type, QWidget* parent);

    /// Whether the call has not ended yet.
    bool isGoingOn() const { return m_state != State::Ended; }

    /// Ends the call, which says why.
    void modemRemoved();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class State { Dialling, InCall, Ended };

    QWidget* makeContent(const QString& number);
    QPushButton* makeHangUpButton();
    void enter(State state);
    void proceed();
    void showState();
    QString stateText() const;
    void hangUpOrClose();

    State m_state = State::Dialling;
    bool m_lostModem = false;
    QTimer m_nextState;    ///< simulates the network
    QTimer m_everySecond;  ///< updates the duration
    QElapsedTimer m_since; ///< starts when the call is answered
    QLabel* m_stateLabel;
    QPushButton* m_hangUp;
};
