#include "DialPadPage.h"

#include "common/CommonUtils.h"
#include "support/Text.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

namespace Texts {
constexpr auto Title = u"Dial pad";
constexpr auto Lead = u"Type a number or use the keys.";
constexpr auto Number = u"Number to call";
constexpr auto Call = u" Call";
constexpr auto Failed =
    u"The call could not be started. Check the number and that no other call is going on.";
} // namespace Texts

constexpr QLatin1String Keys("123456789*0#");
constexpr int KeyColumns = 3;
constexpr int PadWidth = 300;
constexpr int KeyHeight = 52;

QFont scaledFont(QFont font, qreal scale)
{
    font.setPointSizeF(font.pointSizeF() * scale);
    return font;
}

QLineEdit* makeNumberField()
{
    auto* number = new QLineEdit;
    number->setFont(scaledFont(number->font(), 1.6));
    number->setFixedWidth(PadWidth);
    number->setMinimumHeight(KeyHeight);
    number->setAlignment(Qt::AlignCenter);
    number->setClearButtonEnabled(true);
    number->setPlaceholderText(text(Texts::Number));
    number->setAccessibleName(text(Texts::Number));
    return number;
}

} // namespace

DialPadPage::DialPadPage(QWidget* parent)
    : Page(text(Texts::Title), text(Texts::Lead), Look::Sign::DialPad, parent)
    , m_number(makeNumberField())
    , m_message(Look::quietLabel(QString(), true))
{
    content()->addWidget(m_number);
    content()->addWidget(makeKeys());
    content()->addWidget(makeCallRow());
    m_message->setFixedWidth(PadWidth);
    content()->addWidget(m_message);
    content()->addStretch();
    setFocusProxy(m_number);
    connect(m_number, &QLineEdit::textChanged, this, &DialPadPage::numberChanged);
    connect(m_number, &QLineEdit::returnPressed, this, &DialPadPage::call);
    numberChanged();
}

QWidget* DialPadPage::makeKeys()
{
    auto* keys = new QWidget;
    keys->setFixedWidth(PadWidth);
    auto* grid = new QGridLayout(keys);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(Look::Gap);
    for (int index = 0; index < Keys.size(); ++index)
        grid->addWidget(makeKey(Keys.mid(index, 1)), index / KeyColumns, index % KeyColumns);
    return keys;
}

QPushButton* DialPadPage::makeKey(const QString& sign)
{
    auto* key = new QPushButton(sign);
    key->setFont(scaledFont(key->font(), 1.4));
    key->setMinimumHeight(KeyHeight);
    key->setAccessibleName(sign);
    // The number can be typed: the keys are for the mouse and stay out of the way of the Tab key.
    key->setFocusPolicy(Qt::ClickFocus);
    connect(key, &QPushButton::clicked, this, [this, sign] { press(sign); });
    return key;
}

QWidget* DialPadPage::makeCallRow()
{
    m_call = new QPushButton(Look::tileIcon(Look::Sign::Call), text(Texts::Call));
    m_call->setFont(scaledFont(m_call->font(), 1.2));
    m_call->setFixedWidth(PadWidth);
    m_call->setMinimumHeight(KeyHeight);
    connect(m_call, &QPushButton::clicked, this, &DialPadPage::call);
    return m_call;
}

void DialPadPage::press(const QString& sign)
{
    m_number->insert(sign);
    m_number->setFocus();
}

void DialPadPage::call()
{
    const QString number = m_number->text().trimmed();
    if (number.isEmpty())
        return;
    const bool begun = CommonUtils::MakeCall(number, UI_CALL_VOICE);
    m_message->setText(begun ? QString() : text(Texts::Failed));
}

void DialPadPage::numberChanged()
{
    m_call->setEnabled(!m_number->text().trimmed().isEmpty());
    m_message->clear();
}
