#include "ConnectionPage.h"

#include "AccessPointDialog.h"
#include "FactsPanel.h"
#include "PinDialog.h"
#include "PluginContainer/IPluginContainer.h"
#include "Startup/Startup.h"
#include "StatePanel.h"
#include "common/CommonUtils.h"
#include "support/AccessPoint.h"
#include "support/Clsids.h"
#include "support/DeviceEvents.h"
#include "support/ModemInUse.h"
#include "support/Numbers.h"
#include "support/OperatorNames.h"
#include "support/OtherPlugins.h"
#include "support/Text.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int Second = 1000; // milliseconds

bool isOnScreen(const QWidget* window)
{
    return window && window->isVisible() && !window->isMinimized();
}

/// The plugin whose page has what the user needs next; empty if this page has it.
QLatin1String pageFor(Action action)
{
    if (action == Action::ChooseNetwork)
        return Clsids::DeviceInfo;
    if (action == Action::Help)
        return Clsids::Help;
    return {};
}

/// @return false for what needs a page that this installation lacks
bool isOffered(Action action)
{
    const QLatin1String page = pageFor(action);
    IPluginContainer* const container = Startup::GetPluginContainer();
    return page.isEmpty() || (container && container->IsPluginAvailable(page));
}

QString sinceWords(const QDateTime& since)
{
    return text("IDS_CONN_SINCE").arg(sinceText(since, QDateTime::currentDateTime(), languageLocale()));
}

} // namespace

ConnectionPage::ConnectionPage(DeviceEvents* events, QWidget* parent)
    : Page("IDS_CONN_TITLE", "IDS_CONN_LEAD", Look::Sign::Globe, parent)
    , m_events(events)
    , m_requests(events)
    , m_connector(m_requests, nullptr)
    , m_names(new OperatorNames(this))
    , m_state(new StatePanel)
    , m_facts(new FactsPanel)
{
    content()->addWidget(m_state, 1);
    content()->addWidget(m_facts);
    content()->addLayout(makeBottomLine());
    connect(events, &DeviceEvents::changed, this, &ConnectionPage::refresh);
    connect(events, &DeviceEvents::statusChanged, this, &ConnectionPage::refresh);
    connect(&m_connector, &Connector::changed, this, &ConnectionPage::refresh);
    connect(m_names, &QThread::finished, this, &ConnectionPage::refresh);
    connect(m_state, &StatePanel::pressed, this, &ConnectionPage::act);
    connect(&m_everySecond, &QTimer::timeout, this, &ConnectionPage::showState);
    keepTranslated(this, [this] { refresh(); });
}

ConnectionPage::~ConnectionPage()
{
    delete m_pinDialog; // it uses the requests
}

QLayout* ConnectionPage::makeBottomLine()
{
    m_demonstration = Look::quietLabel(QString(), true);
    m_accessPoint = new QPushButton;
    m_accessPoint->setMinimumSize(Look::ButtonSize);
    connect(m_accessPoint, &QPushButton::clicked, this, &ConnectionPage::changeAccessPoint);
    keepTranslated(m_accessPoint, [this] {
        setCaption(m_accessPoint, "IDS_CONN_CHANGE_ACCESS_POINT");
        m_demonstration->setText(text("IDS_CONN_DEMONSTRATION"));
    });
    auto* line = new QHBoxLayout;
    line->setSpacing(Look::Gap);
    line->addWidget(m_demonstration, 1);
    line->addWidget(m_accessPoint);
    return line;
}

void ConnectionPage::refresh()
{
    readModem();
    offerUnlocking();
    showModem();
}

void ConnectionPage::showModem()
{
    if (!m_isShown)
        return; // whoever reads growing counters is told every second that they have grown
    m_facts->showFacts(readFacts(m_modem, *m_names, m_units));
    m_accessPoint->setVisible(AccessPoint::isStorable(m_modem));
    m_demonstration->setVisible(serviceValue(QStringLiteral("backend")) == QLatin1String("simulator"));
    showState();
}

void ConnectionPage::readModem()
{
    m_modem = modemInUse();
    m_report = readConnectionReport(m_modem);
    m_connector.complete(m_modem, m_report);
}

void ConnectionPage::showState()
{
    Meaning meaning = meaningOf(m_report);
    if (!isOffered(meaning.action))
        meaning.action = Action::None;
    const bool isConnected = meaning.sign == Look::Sign::Connected && meaning.sentence;
    const QDateTime since = isConnected ? connectedSince(m_modem) : QDateTime();
    m_state->showMeaning(meaning, since.isValid() ? sinceWords(since) : QString());
    if (!since.isValid() || !m_isShown)
        m_everySecond.stop();
    else if (!m_everySecond.isActive())
        m_everySecond.start(Second);
}

void ConnectionPage::offerUnlocking()
{
    const Action action = meaningOf(m_report).action;
    if (action != Action::EnterPin && action != Action::EnterPuk) {
        m_offeredFor = 0;
        return;
    }
    if (m_offeredFor == m_modem.id || !isOnScreen(CommonUtils::GetMainWindow()) ||
        QApplication::activeModalWidget())
        return;
    m_offeredFor = m_modem.id;
    askForCode();
}

void ConnectionPage::act(Action action)
{
    switch (action) {
    case Action::Connect:
        m_connector.connectModem(m_modem);
        break;
    case Action::Cancel:
    case Action::Disconnect:
        m_connector.disconnectModem(m_modem);
        break;
    case Action::EnterPin:
    case Action::EnterPuk:
        askForCode();
        break;
    case Action::AllowRoaming:
        changeAccessPoint();
        break;
    case Action::ChooseNetwork:
    case Action::Help:
        showPage(pageFor(action));
        break;
    case Action::None:
        break;
    }
}

void ConnectionPage::switchConnection()
{
    readModem();
    const Meaning meaning = meaningOf(m_report);
    const bool isAtOnce = meaning.action == Action::Connect || meaning.action == Action::Cancel ||
                          meaning.action == Action::Disconnect;
    if (!isAtOnce)
        showPage(Clsids::Connection); // says why, also in a window that was hidden
    else if (meaning.isPossible)
        act(meaning.action);
}

void ConnectionPage::askForCode()
{
    if (m_pinDialog)
        return;
    m_pinDialog = new PinDialog(m_modem, m_requests, m_events, CommonUtils::GetMainWindow());
    m_pinDialog->open();
}

void ConnectionPage::changeAccessPoint()
{
    showAccessPoint(m_modem, this, [this] { refresh(); });
}

void ConnectionPage::showEvent(QShowEvent* event)
{
    Page::showEvent(event);
    m_isShown = true;
    readModem();
    showModem();
    // Not yet: whoever shows the window activates it next, which would put it in front of the dialog.
    QMetaObject::invokeMethod(this, &ConnectionPage::offerUnlocking, Qt::QueuedConnection);
}

void ConnectionPage::hideEvent(QHideEvent* event)
{
    Page::hideEvent(event);
    m_isShown = false;
    m_everySecond.stop();
}

void ConnectionPage::resizeEvent(QResizeEvent* event)
{
    m_state->setLow(isLow());
    Page::resizeEvent(event);
}
