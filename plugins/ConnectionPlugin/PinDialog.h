#pragma once

#include "ExtendDialog/ExtendDialog.h"
#include "support/Modems.h"

#include <QVector>

class DeviceEvents;
class QLabel;
class QLineEdit;
class QPushButton;
class Requests;
struct RequestEnd;

/// Asks for the PIN of a SIM card, or for its PUK and a new PIN, until the card is unlocked. Closes by itself when
/// the card no longer asks. What was typed is wiped as soon as it has been passed on. Deletes itself when closed.
class PinDialog : public ExtendDialog
{
    Q_OBJECT

public:
    /// @param requests, events must outlive the dialog
    PinDialog(const Modem& modem, Requests& requests, const DeviceEvents* events, QWidget* parent);
    ~PinDialog() override;

private:
    QWidget* makeContent();
    void limitToDigits(QLineEdit* field);

    void followCard();
    void showTexts();
    void showNote();
    void enable();
    void submit();
    void finish(const RequestEnd& end);
    QString wordsFor(int result) const;
    void wipeFields();
    bool isComplete() const;
    bool asksPuk() const;

    const Modem m_modem;
    Requests& m_requests;
    QString m_asksFor; ///< value of "sim"
    bool m_isBusy = false;
    QLabel* m_sentence;
    QLabel* m_tries;
    QLabel* m_note; ///< what was wrong
    QLineEdit* m_pin = nullptr;
    QLineEdit* m_puk = nullptr;
    QLineEdit* m_newPin = nullptr;
    QLineEdit* m_repeatedPin = nullptr;
    QPushButton* m_unlock;
};
