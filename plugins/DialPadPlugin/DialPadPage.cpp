#include "DialPadPage.h"

#include "DialKeys.h"
#include "NumberField.h"
#include "PluginContainer/PluginIds.h"
#include "RecentList.h"
#include "RecentNumbers.h"
#include "UssdDialog.h"
#include "common/CommonUtils.h"
#include "support/DeviceEvents.h"
#include "support/DialString.h"
#include "support/ModemInUse.h"
#include "support/Text.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int SmallestPad = 220;
constexpr int LargestPad = 300;
constexpr int NarrowPage = 520; ///< narrower ones have the recent numbers below the keys
constexpr int RecentHeight = 180;

/// Identifier of the string that says why the modem in use cannot call, or send service codes; null if it can. Without a
/// network, sending a code says what the network says.
const char* obstacle(bool isCode)
{
    const quint32 modem = modemInUse().id;
    if (modem == 0)
        return "IDS_DIAL_NO_MODEM";
    if (isCode)
        return nullptr;
    if (!canMakeCalls(modem) || !CommonUtils::IsPluginAvailable(PluginIds::CallUI))
        return "IDS_DIAL_NO_CALLS";
    return hasNetwork(modem) ? nullptr : "IDS_DIAL_NO_NETWORK";
}

} // namespace

DialPadPage::DialPadPage(DeviceEvents* events, QWidget* parent)
    : Page("IDS_DIAL_TITLE", "IDS_DIAL_LEAD", Look::Sign::DialPad, parent)
    , m_events(events)
    , m_requests(events)
    , m_field(new NumberField)
    , m_number(m_field->edit())
    , m_message(Look::errorLabel())
    , m_recent(new RecentList)
    , m_columns(new QBoxLayout(QBoxLayout::LeftToRight))
{
    m_columns->setSpacing(Look::Margin);
    m_columns->addWidget(makePad(), 3);
    m_columns->addWidget(m_recent, 2);
    m_recent->setMinimumHeight(RecentHeight);
    content()->addLayout(m_columns);
    content()->addStretch();
    m_recent->refresh();
    setFocusProxy(m_number);
    setTabOrder(m_number, m_call); // whoever types the number does not need the keys
    connect(m_number, &QLineEdit::textChanged, this, &DialPadPage::refresh);
    connect(m_number, &QLineEdit::returnPressed, this, &DialPadPage::call);
    connect(m_recent, &RecentList::chosen, m_number, &QLineEdit::setText);
    connect(m_recent, &RecentList::callRequested, this, &DialPadPage::call);
    connect(events, &DeviceEvents::changed, this, &DialPadPage::followModem);
    connect(events, &DeviceEvents::statusChanged, this, &DialPadPage::followModem);
    keepTranslated(this, [this] { refresh(); });
}

DialPadPage::~DialPadPage()
{
    delete m_dialog; // it uses the requests
}

QWidget* DialPadPage::makePad()
{
    auto* keys = new DialKeys;
    connect(keys, &DialKeys::entered, this, &DialPadPage::enter);
    auto* pad = new QWidget;
    pad->setMinimumWidth(SmallestPad);
    pad->setMaximumWidth(LargestPad);
    auto* column = new QVBoxLayout(pad);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Look::Gap * 2);
    for (QWidget* part : {static_cast<QWidget*>(m_field), static_cast<QWidget*>(m_message),
                          static_cast<QWidget*>(keys), makeCallButton()})
        column->addWidget(part);
    column->addStretch();
    return pad;
}

QWidget* DialPadPage::makeCallButton()
{
    m_call = new QPushButton;
    Look::setFont(m_call, Look::HeadingText);
    m_call->setMinimumHeight(Look::LargeButtonSize.height());
    m_call->setProperty("call", QStringLiteral("start")); // for style sheets
    connect(m_call, &QPushButton::clicked, this, &DialPadPage::call);
    return m_call;
}

void DialPadPage::enter(const QString& character)
{
    m_number->insert(character);
    m_number->setFocus();
}

void DialPadPage::call()
{
    const QString number = m_number->text().trimmed();
    if (!m_call->isEnabled())
        return;
    m_message->hide();
    const QString dialled = dialString(number);
    if (dialled.isEmpty())
        showFault("IDS_DIAL_BAD_NUMBER");
    else if (isServiceCode(dialled))
        sendCode(dialled);
    else
        callNumber(dialled);
}

void DialPadPage::callNumber(const QString& dialled)
{
    if (CommonUtils::MakeCall(dialled, UI_CALL_VOICE))
        remember(dialled);
    else if (const char* const fault = obstacle(false))
        showFault(fault);
    else
        showFault("IDS_DIAL_BUSY");
}

void DialPadPage::sendCode(const QString& dialled)
{
    if (m_dialog)
        return;
    remember(dialled);
    m_dialog = new UssdDialog(dialled, modemInUse(), m_requests, m_events, CommonUtils::GetMainWindow());
    m_dialog->open();
}

void DialPadPage::remember(const QString& dialled)
{
    RecentNumbers::add(dialled);
    m_recent->refresh();
}

void DialPadPage::showFault(const char* id)
{
    m_message->setText(text(id));
    m_message->show();
}

void DialPadPage::refresh()
{
    const bool isCode = isServiceCode(dialString(m_number->text()));
    m_obstacle = obstacle(isCode);
    setCaption(m_call, isCode ? "IDS_DIAL_SEND" : "IDS_DIAL_CALL");
    m_call->setEnabled(!m_obstacle && !m_number->text().trimmed().isEmpty());
    if (m_obstacle)
        showFault(m_obstacle);
    else
        m_message->hide();
}

/// A new signal strength does not hide what is wrong with the number.
void DialPadPage::followModem()
{
    if (obstacle(isServiceCode(dialString(m_number->text()))) != m_obstacle)
        refresh();
}

/// The arrow key leads from the number to those that were dialled before.
void DialPadPage::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Down || !m_number->hasFocus() || !m_recent->isVisible()) {
        Page::keyPressEvent(event);
        return;
    }
    m_recent->enter();
    ensureWidgetVisible(m_recent); // it may be below the keys
}

void DialPadPage::resizeEvent(QResizeEvent* event)
{
    const bool isNarrow = event->size().width() < NarrowPage;
    m_columns->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    Page::resizeEvent(event);
    const QMargins margins = widget()->layout()->contentsMargins();
    const int rest = event->size().width() - margins.left() - margins.right() - LargestPad;
    const int side = isNarrow ? qMax(0, rest / 2) : 0; // centres the pad
    m_columns->setContentsMargins(side, 0, side, 0);
}
