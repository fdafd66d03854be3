#include "UssdDialog.h"

#include "support/DeviceEvents.h"
#include "support/DialString.h"
#include "support/Dialog.h"
#include "support/Look.h"
#include "support/Requests.h"
#include "support/ResultWords.h"
#include "support/Text.h"

#include <qrvl.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int Width = 380;
constexpr int LongestReply = 182; // characters that fit into one request

} // namespace

UssdDialog::UssdDialog(const QString& code, const Modem& modem, Requests& requests,
                       const DeviceEvents* events, QWidget* parent)
    : ExtendDialog(parent, Qt::WindowCloseButtonHint, enWidgetFixed)
    , m_code(code)
    , m_modem(modem)
    , m_requests(requests)
    , m_heading(Look::wrappedLabel(Look::HeadingText, QFont::DemiBold))
    , m_content(Look::wrappedLabel(Look::NormalText))
    , m_reply(new QLineEdit)
    , m_send(new QPushButton)
    , m_close(new QPushButton)
{
    setAttribute(Qt::WA_DeleteOnClose);
    fillDialog(this, makeContent());
    connect(events, &DeviceEvents::changed, this, &UssdDialog::followModem);
    keepTranslated(this, [this] {
        setWindowTitle(text("IDS_USSD_TITLE").arg(unmirrored(m_code)));
        m_reply->setPlaceholderText(text("IDS_USSD_REPLY"));
        m_reply->setAccessibleName(m_reply->placeholderText());
        const bool isMirrored = m_reply->placeholderText().isRightToLeft();
        m_reply->setAlignment((isMirrored ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                              Qt::AlignVCenter); // else the cursor follows the keyboard's language
        m_send->setText(text("IDS_USSD_SEND"));
        m_close->setText(text(m_state == State::Ended ? "IDS_USSD_CLOSE" : "IDS_USSD_CANCEL"));
    });
    send(code);
}

UssdDialog::~UssdDialog()
{
    quint32 request = 0;
    if (m_state != State::Ended)
        QRVL_DevSrv_CancelUssd(m_modem.id, &request);
}

QWidget* UssdDialog::makeContent()
{
    Look::makeSelectable(m_content);
    m_reply->setMinimumHeight(Look::FieldHeight);
    m_reply->setMaxLength(LongestReply);
    m_send->setProperty("primary", true); // for style sheets
    m_close->setAutoDefault(true);
    Look::followText(m_reply);
    connect(m_reply, &QLineEdit::textChanged, this,
            [this](const QString& reply) { m_send->setEnabled(!reply.trimmed().isEmpty()); });
    connect(m_send, &QPushButton::clicked, this, &UssdDialog::sendReply);
    connect(m_close, &QPushButton::clicked, this, &QDialog::close);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Look::Gap);
    buttons->addStretch();
    for (QPushButton* button : {m_close, m_send}) {
        button->setMinimumSize(Look::ButtonSize);
        buttons->addWidget(button);
    }
    auto* content = new QWidget;
    content->setFixedWidth(Width);
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(Look::Margin, Look::Gap * 2, Look::Margin, Look::Gap * 2);
    column->setSpacing(Look::Gap);
    for (QWidget* part :
         {static_cast<QWidget*>(m_heading), static_cast<QWidget*>(m_content), static_cast<QWidget*>(m_reply)})
        column->addWidget(part);
    column->addSpacing(Look::Gap);
    column->addLayout(buttons);
    return content;
}

void UssdDialog::send(const QString& text)
{
    enter(State::Waiting, ::text("IDS_USSD_WAITING"), {});
    m_requests.start([&](quint32* request) { return QRVL_DevSrv_SendUssd(m_modem.id, utf16(text), request); },
                     this, [this](const RequestEnd& end) { finish(end); });
}

void UssdDialog::sendReply()
{
    const QString reply = m_reply->text().trimmed();
    if (m_state != State::Asked || reply.isEmpty())
        return;
    m_reply->clear();
    send(reply);
}

void UssdDialog::finish(const RequestEnd& end)
{
    if (m_state != State::Waiting)
        return; // the modem has been removed meanwhile
    if (end.result != QRVL_OK) {
        showFailure(end.result);
        return;
    }
    const bool asks = modemValue(m_modem, "ussd") == QLatin1String("reply");
    enter(asks ? State::Asked : State::Ended, {}, end.text.isEmpty() ? text("IDS_USSD_DONE") : end.text);
}

void UssdDialog::showFailure(int result)
{
    const ResultWords words = resultWords(result);
    if (result == QRVL_ERROR_REFUSED)
        enter(State::Ended, text("IDS_USSD_REFUSED"), text("IDS_USSD_REFUSED_HINT"));
    else
        enter(State::Ended, words.title, words.hint);
}

void UssdDialog::enter(State state, const QString& heading, const QString& content)
{
    m_state = state;
    m_heading->setText(heading);
    m_heading->setVisible(!heading.isEmpty());
    m_content->setText(content);
    m_content->setAccessibleName(content);
    m_content->setVisible(!content.isEmpty());
    m_reply->setVisible(state == State::Asked);
    m_send->setVisible(state == State::Asked);
    m_send->setEnabled(false);
    m_close->setText(text(state == State::Ended ? "IDS_USSD_CLOSE" : "IDS_USSD_CANCEL"));
    (state == State::Asked ? static_cast<QWidget*>(m_reply) : m_close)->setFocus();
    (state == State::Asked ? m_send : m_close)->setDefault(true);
    fitToContent(this);
}

void UssdDialog::followModem()
{
    if (m_state != State::Ended && !isAttached(m_modem.id))
        showFailure(QRVL_ERROR_NO_DEVICE);
}
