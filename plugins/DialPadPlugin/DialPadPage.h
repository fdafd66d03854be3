#pragma once

#include "support/Page.h"

class QLabel;
class QLineEdit;
class QPushButton;

/// The page with the number field, the twelve keys and the call button.
class DialPadPage : public Page
{
    Q_OBJECT

public:
    explicit DialPadPage(QWidget* parent);

    /// Calls need a modem.
    void devicesChanged();

private:
    QWidget* makeKeys();
    QPushButton* makeKey(const QString& sign);
    QWidget* makeCallRow();
    void press(const QString& sign);
    void call();
    void showFault(const char* id);

    QLineEdit* m_number;
    QPushButton* m_call = nullptr;
    QLabel* m_message;
};
