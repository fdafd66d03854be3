#include "DialPadPage.h"

#include "common/CommonUtils.h"
#include "support/Text.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

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
    number->setMinimumHeight(KeyHeight);
    number->setAlignment(Qt::AlignCenter);
    number->setClearButtonEnabled(true);
    number->setLayoutDirection(Qt::LeftToRight); // numbers are never mirrored
    auto* clear = number->findChild<QToolButton*>();
    keepTranslated(number, [number, clear] {
        number->setPlaceholderText(text("IDS_DIAL_NUMBER"));
        number->setAccessibleName(number->placeholderText());
        clear->setAccessibleName(text("IDS_DIAL_CLEAR"));
    });
    // Skins draw the hint in an empty field dimmer than a number, but style sheets are not re-evaluated when the
    // text changes.
    QObject::connect(number, &QLineEdit::textChanged, number, [number] { number->style()->polish(number); });
    return number;
}

} // namespace

DialPadPage::DialPadPage(QWidget* parent)
    : Page("IDS_DIAL_TITLE", "IDS_DIAL_LEAD", Look::Sign::DialPad, parent)
    , m_number(makeNumberField())
    , m_message(Look::quietLabel(QString(), true))
{
    auto* pad = new QWidget;
    pad->setFixedWidth(PadWidth);
    auto* column = new QVBoxLayout(pad);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Look::Gap * 2);
    for (QWidget* part :
         {static_cast<QWidget*>(m_number), makeKeys(), makeCallRow(), static_cast<QWidget*>(m_message)})
        column->addWidget(part);
    content()->addWidget(pad);
    content()->addStretch();
    setFocusProxy(m_number);
    setTabOrder(m_number, m_call); // whoever types the number does not need the keys
    connect(m_number, &QLineEdit::textChanged, this, &DialPadPage::numberChanged);
    connect(m_number, &QLineEdit::returnPressed, this, &DialPadPage::call);
    numberChanged();
}

QWidget* DialPadPage::makeKeys()
{
    auto* keys = new QWidget;
    keys->setLayoutDirection(Qt::LeftToRight); // neither are the keys of a telephone
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
    key->setAutoDefault(true); // the Return key presses it while it has the focus
    connect(key, &QPushButton::clicked, this, [this, sign] { press(sign); });
    return key;
}

QWidget* DialPadPage::makeCallRow()
{
    m_call = new QPushButton;
    m_call->setFont(scaledFont(m_call->font(), 1.2));
    m_call->setMinimumHeight(KeyHeight);
    m_call->setAutoDefault(true);
    connect(m_call, &QPushButton::clicked, this, &DialPadPage::call);
    keepTranslated(m_call, [this] { setCaption(m_call, "IDS_DIAL_CALL"); });
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
    m_message->setText(begun ? QString() : text("IDS_DIAL_FAILED"));
}

void DialPadPage::numberChanged()
{
    m_call->setEnabled(!m_number->text().trimmed().isEmpty());
    m_message->clear();
}
