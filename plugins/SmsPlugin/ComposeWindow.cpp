// The window's widgets and what they show. What its buttons and keys do is in ComposeActions.cpp.
#include "ComposeWindow.h"

#include "Message.h"
#include "MessageLength.h"
#include "SenderChooser.h"
#include "support/CloseGuard.h"
#include "support/DeviceEvents.h"
#include "support/Look.h"
#include "support/Numbers.h"
#include "support/Text.h"

#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr QSize ContentSize{480, 320};

} // namespace

ComposeWindow::ComposeWindow(const Draft& draft, const Modem& sender, Drafts* drafts, DeviceEvents* events,
                             QWidget* parent)
    : ExtendDialog(parent, Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint, enWidgetNormal)
    , m_requests(events)
    , m_draft(drafts, draft)
    , m_recipient(new QLineEdit)
    , m_sender(new SenderChooser(sender))
    , m_text(new QPlainTextEdit)
    , m_length(Look::quietLabel(QString(), true))
    , m_note(Look::wrappedLabel(Look::NormalText, QFont::DemiBold))
    , m_send(new QPushButton)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(Look::tileIcon(Look::Sign::Message));
    fillDialog(this, makeContent());
    makeResizable(this);
    connectWidgets();
    connect(events, &DeviceEvents::changed, this, [this] {
        m_sender->follow();
        showState();
    });
    keepTranslated(this, [this] { translate(); });
    load(draft); // now that there is a hint: Qt decides on showing it when the text is set
    new CloseGuard(
        {"IDS_SMS_LEAVE_TITLE", "IDS_SMS_LEAVE_TEXT", {"IDS_SMS_LEAVE", "IDS_SMS_STAY"}},
        [this] { return isUnsaved() || m_isSending; }, this);
}

void ComposeWindow::connectWidgets()
{
    Look::followText(m_recipient);
    connect(m_text, &QPlainTextEdit::textChanged, this, &ComposeWindow::showState);
    connect(m_recipient, &QLineEdit::textChanged, this, &ComposeWindow::showState);
    connect(m_sender, &SenderChooser::chosen, this, &ComposeWindow::showState);
    connect(m_send, &QPushButton::clicked, this, &ComposeWindow::press);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(int(Qt::CTRL) + key, this), &QShortcut::activated, this, &ComposeWindow::send);
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

void ComposeWindow::open(const QString& recipient, const Modem& sender, Drafts* drafts, DeviceEvents* events,
                         QWidget* parent)
{
    const Draft draft = recipient.isEmpty() ? drafts->latest() : drafts->find(recipient);
    ComposeWindow* window = find(draft.recipient, parent);
    if (!window)
        window = new ComposeWindow(draft, sender, drafts, events, parent);
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

void ComposeWindow::load(const Draft& draft)
{
    m_recipient->setText(draft.recipient);
    m_text->setPlainText(draft.text);
    m_text->moveCursor(QTextCursor::End);
}

void ComposeWindow::showState()
{
    const QString written = m_text->toPlainText();
    Look::setStyleProperty(m_text, "isEmpty", written.isEmpty()); // then it shows a hint
    const MessageLength length = messageLength(written);
    m_length->setText(
        text("IDS_SMS_LENGTH")
            .arg(numberText(length.characters), numberText(length.left), numberText(length.parts)));
    m_send->setEnabled(!m_isSending && m_sender->modem() != 0 && !written.isEmpty() &&
                       isNumber(m_recipient->text()));
    m_draft.follow({m_recipient->text(), written});
    m_note->setText(note());
    m_note->setVisible(!m_note->text().isEmpty());
}

void ComposeWindow::translate()
{
    setWindowTitle(text("IDS_SMS_NEW"));
    m_recipient->setAlignment( // numbers begin where the hint does
        QStyle::visualAlignment(QGuiApplication::layoutDirection(), Qt::AlignLeading | Qt::AlignVCenter) |
        Qt::AlignAbsolute);
    m_recipient->setPlaceholderText(text("IDS_SMS_RECIPIENT"));
    m_recipient->setAccessibleName(m_recipient->placeholderText());
    m_text->setPlaceholderText(text("IDS_SMS_TEXT"));
    m_text->setAccessibleName(m_text->placeholderText());
    m_send->setText(text("IDS_SMS_SEND"));
    m_send->setToolTip(QStringLiteral("%1 (%2)").arg(
        m_send->text(), QKeySequence(Qt::CTRL + Qt::Key_Return).toString(QKeySequence::NativeText)));
    showState();
}
