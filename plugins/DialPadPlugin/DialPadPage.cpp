#include "DialPadPage.h"

#include "common/CommonUtils.h"
#include "support/DialString.h"
#include "support/Modems.h"
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

/// Not before it is needed: it takes long to find its icon among those of the desktop.
void addClearButton(QLineEdit* number)
{
    if (number->isClearButtonEnabled())
        return;
    number->setClearButtonEnabled(true);
    auto* const clear = number->findChild<QToolButton*>();
    keepTranslated(clear, [clear] { clear->setAccessibleName(text("IDS_DIAL_CLEAR")); });
}

QLineEdit* makeNumberField()
{
    auto* number = new QLineEdit;
    number->setFont(scaledFont(number->font(), 1.6));
    number->setMinimumHeight(KeyHeight);
    number->setAlignment(Qt::AlignCenter);
    number->setLayoutDirection(Qt::LeftToRight); // numbers are never mirrored
    keepTranslated(number, [number] {
        number->setPlaceholderText(text("IDS_DIAL_NUMBER"));
        number->setAccessibleName(number->placeholderText());
    });
    QObject::connect(number, &QLineEdit::textChanged, number, [number] { addClearButton(number); });
    // Skins draw the hint in an empty field dimmer than a number, but style sheets are not re-evaluated when the
    // text changes.
    QObject::connect(number, &QLineEdit::textChanged, number, [number] { number->style()->polish(number); });
    return number;
}

QLabel* makeMessage()
{
    QLabel* const message = Look::label(QString(), 1.0);
    message->setWordWrap(true);
    QPalette palette = message->palette();
    palette.setColor(QPalette::WindowText, Look::toneColor(Look::Tone::Bad, palette));
    message->setPalette(palette);
    return message;
}

} // namespace

DialPadPage::DialPadPage(QWidget* parent)
    : Page("IDS_DIAL_TITLE", "IDS_DIAL_LEAD", Look::Sign::DialPad, parent)
    , m_number(makeNumberField())
    , m_message(makeMessage())
{
    auto* pad = new QWidget;
    pad->setFixedWidth(PadWidth);
    auto* column = new QVBoxLayout(pad);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Look::Gap * 2);
    for (QWidget* part :
         {static_cast<QWidget*>(m_number), static_cast<QWidget*>(m_message), makeKeys(), makeCallRow()})
        column->addWidget(part);
    content()->addWidget(pad);
    content()->addStretch();
    setFocusProxy(m_number);
    setTabOrder(m_number, m_call); // whoever types the number does not need the keys
    connect(m_number, &QLineEdit::textChanged, this, &DialPadPage::devicesChanged);
    connect(m_number, &QLineEdit::returnPressed, this, &DialPadPage::call);
    keepTranslated(this, [this] { devicesChanged(); });
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
    if (number.isEmpty() || attachedModems().isEmpty())
        return;
    if (dialString(number).isEmpty())
        showFault("IDS_DIAL_BAD_NUMBER");
    else if (!CommonUtils::MakeCall(number, UI_CALL_VOICE))
        showFault("IDS_DIAL_BUSY");
}

void DialPadPage::showFault(const char* id)
{
    m_message->setText(text(id));
    m_message->show();
}

void DialPadPage::devicesChanged()
{
    const bool hasModem = !attachedModems().isEmpty();
    m_call->setEnabled(hasModem && !m_number->text().trimmed().isEmpty());
    if (hasModem)
        m_message->hide();
    else
        showFault("IDS_DIAL_NO_MODEM");
}
