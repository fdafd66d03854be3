// What the window for writing does: sending, and asking before it closes.
#include "ComposeWindow.h"
#include "SenderChooser.h"
#include "support/DialString.h"
#include "support/Dialog.h"
#include "support/ResultWords.h"
#include "support/Text.h"

#include <qrvl.h>

#include <QCloseEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {

/// Why a message was not sent.
/// @param result of the attempt, enum QRVL_Result
QString shownFailure(int result)
{
    if (result == QRVL_OK)
        return {};
    if (result == QRVL_ERROR_NO_DEVICE)
        return text("IDS_SMS_SEND_LOST"); // the network may have accepted it
    const ResultWords words = resultWords(result);
    return text("IDS_SMS_SEND_FAILED").arg(words.title, words.hint);
}

} // namespace

bool ComposeWindow::isUnsaved() const
{
    return !m_isDone && !m_text->toPlainText().isEmpty();
}

/// Asks what is to become of a text that was not sent.
void ComposeWindow::askBeforeClosing()
{
    enum { Keep, Discard };
    const auto onAnswer = [this](int answer) {
        if (answer != Keep && answer != Discard)
            return;
        if (answer == Keep)
            m_draft.keep();
        else
            m_draft.drop();
        m_isDone = true;
        close();
    };
    m_question = ask(
        {"IDS_SMS_CLOSE_TITLE", "IDS_SMS_CLOSE_TEXT", {"IDS_SMS_KEEP", "IDS_SMS_DISCARD", "IDS_SMS_STAY"}},
        this, this, onAnswer);
}

/// The window stays open while it is sending: if that fails, the text is still there.
void ComposeWindow::closeEvent(QCloseEvent* event)
{
    if (m_isSending || isUnsaved()) {
        event->ignore();
        if (!m_isSending && !m_question)
            askBeforeClosing();
        return;
    }
    if (!m_isDone)
        m_draft.drop();
    m_isDone = true;
    ExtendDialog::closeEvent(event);
}

/// In the field for the recipient, the Return key, which presses the button, moves the focus to the text.
void ComposeWindow::press()
{
    if (m_recipient->hasFocus())
        m_text->setFocus();
    else
        send();
}

void ComposeWindow::send()
{
    if (!m_send->isEnabled())
        return;
    m_failure = QRVL_OK;
    setSending(true);
    m_draft.keep();
    m_requests.start(
        [this](quint32* request) {
            const QString number = dialString(m_recipient->text());
            const QString written = m_text->toPlainText();
            return QRVL_DevSrv_SendMessage(m_sender->modem(), utf16(number), utf16(written), request);
        },
        this, [this](const RequestEnd& end) { finish(end.result); });
}

void ComposeWindow::finish(int result)
{
    m_failure = result;
    setSending(false);
    if (result != QRVL_OK) {
        m_text->setFocus();
        return;
    }
    m_draft.drop();
    m_isDone = true;
    close();
}

void ComposeWindow::setSending(bool isSending)
{
    m_isSending = isSending;
    m_recipient->setReadOnly(isSending);
    m_text->setReadOnly(isSending);
    m_sender->setEnabled(!isSending);
    showState();
}

QString ComposeWindow::note() const
{
    if (m_isSending)
        return text("IDS_SMS_STATE_SENDING");
    QStringList reasons{shownFailure(m_failure), m_sender->problem()};
    reasons.removeAll(QString());
    return reasons.join(QLatin1Char('\n'));
}
