#include "ComposeWindow.h"

#include "Message.h"
#include "MessageLength.h"
#include "SenderChooser.h"
#include "support/CloseGuard.h"
#include "support/DeviceEvents.h"
#include "support/DialString.h"
#include "support/Look.h"
#include "support/Numbers.h"
#include "support/ResultWords.h"
#include "support/Text.h"

#include <qrvl.h>

#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr QSize ContentSize{420, 300};
constexpr int KeepAfter = 1000; // milliseconds

QLabel* makeNote()
{
    QLabel* const note = Look::label(QString(), 1.0, QFont::DemiBold);
    note->setWordWrap(true);
    return note;
}

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

ComposeWindow::ComposeWindow(const Drafts::Draft& draft, const Modem& sender, DeviceEvents* events,
                             QWidget* parent)
    : ExtendDialog(parent, Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint, enWidgetNormal)
    , m_requests(events)
    , m_recipient(new QLineEdit)
    , m_sender(new SenderChooser(sender))
    , m_text(new QPlainTextEdit)
    , m_length(Look::quietLabel(QString()))
    , m_note(makeNote())
    , m_send(new QPushButton)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(Look::tileIcon(Look::Sign::Message));
    fillDialog(this, makeContent());
    makeResizable(this);
    load(draft);
    m_keep.setSingleShot(true);
    connect(&m_keep, &QTimer::timeout, this, &ComposeWindow::keepDraft);
    connect(m_text, &QPlainTextEdit::textChanged, this, &ComposeWindow::showState);
    connect(m_recipient, &QLineEdit::textChanged, this, &ComposeWindow::showState);
    connect(m_sender, &SenderChooser::chosen, this, &ComposeWindow::showState);
    connect(m_send, &QPushButton::clicked, this, &ComposeWindow::press);
    connect(events, &DeviceEvents::changed, this, [this] {
        m_sender->follow();
        showState();
    });
    for (const int key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(int(Qt::CTRL) + key, this), &QShortcut::activated, this, &ComposeWindow::send);
    keepTranslated(this, [this] { translate(); });
    new CloseGuard(
        {"IDS_SMS_LEAVE_TITLE", "IDS_SMS_LEAVE_TEXT", {"IDS_SMS_LEAVE", "IDS_SMS_STAY"}},
        [this] { return isUnsaved() || m_isSending; }, this);
}

ComposeWindow::~ComposeWindow()
{
    if (m_keep.isActive())
        keepDraft();
}

QWidget* ComposeWindow::makeContent()
{
    m_recipient->setLayoutDirection(Qt::LeftToRight); // numbers are never mirrored
    m_text->setTabChangesFocus(true);
    auto* content = new QWidget;
    content->setMinimumSize(ContentSize);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(Look::Gap * 2, Look::Gap * 2, Look::Gap * 2, Look::Gap * 2);
    layout->setSpacing(Look::Gap);
    layout->addWidget(m_recipient);
    layout->addWidget(m_sender);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_note);
    layout->addWidget(makeEnd());
    return content;
}

QWidget* ComposeWindow::makeEnd()
{
    m_send->setAutoDefault(true);
    m_send->setMinimumSize(Look::ButtonSize);
    auto* end = new QWidget;
    auto* row = new QHBoxLayout(end);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_length, 1);
    row->addWidget(m_send);
    return end;
}

void ComposeWindow::open(const QString& recipient, const Modem& sender, DeviceEvents* events, QWidget* parent)
{
    const Drafts::Draft draft = recipient.isEmpty() ? Drafts::latest() : Drafts::find(recipient);
    ComposeWindow* window = find(draft.recipient, parent);
    if (!window)
        window = new ComposeWindow(draft, sender, events, parent);
    bringToFront(window);
    (window->m_recipient->text().isEmpty() ? static_cast<QWidget*>(window->m_recipient) : window->m_text)
        ->setFocus();
}

/// The window with a message to this recipient; null if there is none.
ComposeWindow* ComposeWindow::find(const QString& recipient, const QWidget* parent)
{
    const auto windows = parent->findChildren<ComposeWindow*>(QString(), Qt::FindDirectChildrenOnly);
    const auto found = std::find_if(windows.begin(), windows.end(), [&](const ComposeWindow* window) {
        return addressKey(window->m_recipient->text()) == addressKey(recipient);
    });
    return found == windows.end() ? nullptr : *found;
}

void ComposeWindow::load(const Drafts::Draft& draft)
{
    m_recipient->setText(draft.recipient);
    m_text->setPlainText(draft.text);
    m_text->moveCursor(QTextCursor::End);
    m_keptFor = draft.recipient;
    m_keptText = draft.text;
}

void ComposeWindow::keepDraft()
{
    if (addressKey(m_keptFor) != addressKey(m_recipient->text()))
        Drafts::keep({m_keptFor, QString()});
    m_keptFor = m_recipient->text();
    m_keptText = m_text->toPlainText();
    Drafts::keep({m_keptFor, m_keptText});
}

void ComposeWindow::dropDraft()
{
    m_keep.stop();
    Drafts::keep({m_keptFor, QString()});
}

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
            keepDraft();
        else
            dropDraft();
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
        dropDraft();
    m_isDone = true;
    m_keep.stop();
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
    keepDraft();
    m_requests.start(
        [this, number = dialString(m_keptFor)](quint32* request) {
            return QRVL_DevSrv_SendMessage(m_sender->modem(), utf16(number), utf16(m_keptText), request);
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
    dropDraft();
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

void ComposeWindow::showState()
{
    const QString written = m_text->toPlainText();
    const MessageLength length = messageLength(written);
    m_length->setText(
        text("IDS_SMS_LENGTH")
            .arg(numberText(length.characters), numberText(length.left), numberText(length.parts)));
    m_send->setEnabled(!m_isSending && m_sender->modem() != 0 && !written.isEmpty() &&
                       isNumber(m_recipient->text()));
    if (m_recipient->text() != m_keptFor || written != m_keptText)
        m_keep.start(KeepAfter);
    m_note->setText(note());
    m_note->setVisible(!m_note->text().isEmpty());
}

QString ComposeWindow::note() const
{
    if (m_isSending)
        return text("IDS_SMS_STATE_SENDING");
    QStringList reasons{shownFailure(m_failure), m_sender->problem()};
    reasons.removeAll(QString());
    return reasons.join(QLatin1Char('\n'));
}

void ComposeWindow::translate()
{
    setWindowTitle(text("IDS_SMS_NEW"));
    m_recipient->setPlaceholderText(text("IDS_SMS_RECIPIENT"));
    m_recipient->setAccessibleName(m_recipient->placeholderText());
    m_text->setPlaceholderText(text("IDS_SMS_TEXT"));
    m_text->setAccessibleName(m_text->placeholderText());
    m_send->setText(text("IDS_SMS_SEND"));
    m_send->setToolTip(QStringLiteral("%1 (%2)").arg(
        m_send->text(), QKeySequence(Qt::CTRL + Qt::Key_Return).toString(QKeySequence::NativeText)));
    showState();
}
