#pragma once

#include <QPushButton>
#include <QTimer>

/// A button that does one thing when it is clicked and another when it is held down for half a second. Connect to its
/// own signals instead of clicked().
class HoldButton : public QPushButton
{
    Q_OBJECT

public:
    explicit HoldButton(QWidget* parent = nullptr);

Q_SIGNALS:
    void tapped();
    void held(); ///< while the button is still down; there is no tapped() then

private:
    QTimer m_timer;
    bool m_wasHeld = false;
};
