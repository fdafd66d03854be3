#include "PinDialog.h"

#include "DialogParts.h"
#include "support/DeviceEvents.h"
#include "support/Dialog.h"
#include "support/Look.h"
#include "support/Numbers.h"
#include "support/Requests.h"
#include "support/ResultWords.h"
#include "support/Secret.h"
#include "support/Text.h"

#include <qrvl.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace {

constexpr int Width = 380;
constexpr int LeastPin = 4; // digits
constexpr int MostDigits = 8;

} // namespace

PinDialog::PinDialog(const Modem& modem, Requests& requests, const DeviceEvents* events, QWidget* parent)
    : ExtendDialog(parent, Qt::WindowCloseButtonHint, enWidgetFixed)
    , m_modem(modem)
    , m_requests(requests)
    , m_sentence(Look::wrappedLabel(Look::NormalText))
    , m_tries(Look::quietLabel(QString()))
    , m_note(Look::wrappedLabel(Look::NormalText, QFont::DemiBold))
    , m_unlock(new QPushButton)
{
    setAttribute(Qt::WA_DeleteOnClose);
    fillDialog(this, makeContent());
    keepTranslated(this, [this] { showTexts(); });
    connect(events, &DeviceEvents::changed, this, &PinDialog::followCard);
    connect(events, &DeviceEvents::statusChanged, this, &PinDialog::followCard);
    followCard();
}

PinDialog::~PinDialog()
{
    wipeFields();
}

QWidget* PinDialog::makeContent()
{
    auto* content = new QWidget;
    content->setFixedWidth(Width);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(Look::Margin, Look::Gap * 2, Look::Margin, Look::Gap * 2);
    layout->setSpacing(Look::Gap);
    layout->addWidget(m_sentence);
    m_pin = addField(layout, "IDS_CONN_PIN");
    m_puk = addField(layout, "IDS_CONN_PUK");
    m_newPin = addField(layout, "IDS_CONN_NEW_PIN");
    m_repeatedPin = addField(layout, "IDS_CONN_REPEATED_PIN");
    layout->addWidget(m_tries);
    layout->addWidget(m_note);
    layout->addSpacing(Look::Gap);
    layout->addLayout(makeButtons(this, m_unlock, "IDS_CONN_UNLOCK"));
    for (QLineEdit* field : {m_pin, m_puk, m_newPin, m_repeatedPin})
        limitToDigits(field);
    connect(m_unlock, &QPushButton::clicked, this, &PinDialog::submit);
    return content;
}

void PinDialog::limitToDigits(QLineEdit* field)
{
    field->setEchoMode(QLineEdit::Password);
    field->setMaxLength(MostDigits);
    field->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), field));
    field->setInputMethodHints(Qt::ImhDigitsOnly | Qt::ImhHiddenText | Qt::ImhSensitiveData);
    field->setLayoutDirection(Qt::LeftToRight); // numbers are never mirrored
    connect(field, &QLineEdit::textChanged, this, &PinDialog::enable);
}

bool PinDialog::asksPuk() const
{
    return m_asksFor == QLatin1String("puk");
}

void PinDialog::followCard()
{
    const QString sim = modemValue(m_modem, "sim");
    const bool asks = sim == QLatin1String("pin") || sim == QLatin1String("puk");
    if (!asks && sim != QLatin1String("blocked")) {
        if (!m_isBusy)
            close();
        return;
    }
    if (sim != m_asksFor) {
        m_asksFor = sim;
        wipeFields();
        m_pin->parentWidget()->setVisible(asks && !asksPuk());
        for (QLineEdit* field : {m_puk, m_newPin, m_repeatedPin})
            field->parentWidget()->setVisible(asksPuk());
        (asksPuk() ? m_puk : m_pin)->setFocus();
    }
    showTexts();
    enable();
}

void PinDialog::showTexts()
{
    setWindowTitle(text("IDS_CONN_UNLOCK_TITLE"));
    const bool isBlocked = m_asksFor == QLatin1String("blocked");
    const char* const question = asksPuk() ? "IDS_CONN_ASK_PUK" : "IDS_CONN_ASK_PIN";
    m_sentence->setText(isBlocked ? text("IDS_CONN_BLOCKED_HINT") : text(question).arg(m_modem.name));
    const QString tries = modemValue(m_modem, asksPuk() ? "puk-tries" : "pin-tries");
    m_tries->setText(text("IDS_CONN_TRIES").arg(numberText(tries.toInt())));
    m_tries->setVisible(!isBlocked && !tries.isEmpty());
    showNote();
}

void PinDialog::showNote()
{
    m_note->setVisible(!m_note->text().isEmpty());
    fitToContent(this);
}

bool PinDialog::isComplete() const
{
    if (m_asksFor == QLatin1String("pin"))
        return m_pin->text().size() >= LeastPin;
    return asksPuk() && m_puk->text().size() == MostDigits && m_newPin->text().size() >= LeastPin &&
           m_repeatedPin->text().size() >= LeastPin;
}

void PinDialog::enable()
{
    m_unlock->setEnabled(!m_isBusy && isComplete());
    for (QLineEdit* field : {m_pin, m_puk, m_newPin, m_repeatedPin})
        field->setReadOnly(m_isBusy);
}

void PinDialog::submit()
{
    if (m_isBusy || !isComplete())
        return;
    if (asksPuk() && m_newPin->text() != m_repeatedPin->text()) {
        m_note->setText(text("IDS_CONN_PINS_DIFFER"));
        showNote();
        return;
    }
    m_isBusy = true;
    m_requests.start(
        [this](quint32* request) {
            return asksPuk() ? QRVL_DevSrv_EnterPuk(m_modem.id, utf16(m_puk->text()), utf16(m_newPin->text()),
                                                    request)
                             : QRVL_DevSrv_EnterPin(m_modem.id, utf16(m_pin->text()), request);
        },
        this, [this](const RequestEnd& end) { finish(end); });
    wipeFields();
    m_note->setText(text("IDS_CONN_CHECKING"));
    showNote();
}

void PinDialog::finish(const RequestEnd& end)
{
    m_isBusy = false;
    if (end.result == QRVL_OK) {
        close();
        return;
    }
    m_note->setText(wordsFor(end.result));
    followCard();
}

QString PinDialog::wordsFor(int result) const
{
    if (result == QRVL_ERROR_WRONG_CODE)
        return text(asksPuk() ? "IDS_CONN_WRONG_PUK" : "IDS_CONN_WRONG_PIN");
    if (result == QRVL_ERROR_BLOCKED) // if the card is beyond its PUK, the sentence says so
        return asksPuk() ? text("IDS_CONN_PUK_HINT") : QString();
    return resultText(result);
}

void PinDialog::wipeFields()
{
    for (QLineEdit* field : {m_pin, m_puk, m_newPin, m_repeatedPin})
        wipe(field);
}
