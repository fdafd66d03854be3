#pragma once

#include "PluginContainer/interfaces/ICallUIPlugin.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

class QLabel;
class QPushButton;

/// One call from dialling to its end. Closing the window hangs up; after the end it closes by itself.
class CallWindow : public QWidget
{
    Q_OBJECT

public:
    CallWindow(const QString& number, _UI_EN_CALL_TYPE type, QWidget* parent);

    /// Whether the call has not ended yet.
    bool isGoingOn() const { return m_state != State::Ended; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    enum class State { Dialling, InCall, Ended };

    QPushButton* makeHangUpButton();
    void enter(State state);
    void proceed();
    void showState();
    void hangUpOrClose();

    State m_state = State::Dialling;
    QTimer m_nextState;    ///< plays the network's part
    QTimer m_everySecond;  ///< moves the duration on
    QElapsedTimer m_since; ///< runs from the moment of the answer
    QLabel* m_stateLabel;
    QPushButton* m_hangUp;
};
