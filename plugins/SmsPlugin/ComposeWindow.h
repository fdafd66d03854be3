#pragma once

#include "DraftKeeper.h"
#include "ExtendDialog/ExtendDialog.h"
#include "support/Modems.h"
#include "support/Requests.h"

#include <QPointer>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class SenderChooser;

/// A window to write a message in. The text is saved as a draft about a second after the last key, until it is sent or
/// the user discards it. The window is deleted when it is closed. GUI thread only.
class ComposeWindow : public ExtendDialog
{
    Q_OBJECT

public:
    /// Opens a window with the draft for a recipient, or with the latest draft if the recipient is empty. If there is
    /// already a window for that recipient, it comes to the front instead.
    /// @param sender sends the message unless the user chooses another modem; without an id, the modem in use does
    /// @param drafts must outlive the window
    /// @param events must be listening, and outlive the window
    static void open(const QString& recipient, const Modem& sender, Drafts* drafts, DeviceEvents* events,
                     QWidget* parent);

    /// What Escape does.
    void reject() override { close(); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    ComposeWindow(const Draft& draft, const Modem& sender, Drafts* drafts, DeviceEvents* events,
                  QWidget* parent);

    static ComposeWindow* find(const QString& recipient, const QWidget* parent);
    QWidget* makeContent();
    QWidget* makeEnd();
    void load(const Draft& draft);
    void connectWidgets();
    void askBeforeClosing();
    bool isUnsaved() const;
    void press();
    void send();
    void finish(int result);
    void setSending(bool isSending);
    void showState();
    QString note() const;
    void translate();

    Requests m_requests;
    DraftKeeper m_draft;
    QLineEdit* m_recipient;
    SenderChooser* m_sender;
    QPlainTextEdit* m_text;
    QLabel* m_length;
    QLabel* m_note; ///< what is going on, or has failed
    QPushButton* m_send;
    int m_failure = 0;            ///< of the last attempt, enum QRVL_Result
    QPointer<QWidget> m_question; ///< what is to become of the text
    bool m_isSending = false;
    bool m_isDone = false; ///< may be closed without a question
};
