#include "ModemPage.h"

#include "ModemDetails.h"
#include "NetworkChoice.h"
#include "Startup/Startup.h"
#include "support/Clsids.h"
#include "support/DeviceEvents.h"
#include "support/LoadedPage.h"
#include "support/ModemInUse.h"
#include "support/OperatorNames.h"
#include "support/Text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr const char* RevealedProperty = "revealed"; // see DetailsCard
constexpr const char* PlainTextProperty = "plainText";
constexpr int CopiedTime = 2000; // milliseconds

/// The modem in use or, without one, one that cannot be used; id 0 if no modem is attached.
Modem shownModem()
{
    const Modem inUse = modemInUse();
    return inUse.id != 0 ? inUse : unusableModems().value(0);
}

struct NoticeWords
{
    const char* title;
    const char* hint;
};

NoticeWords noticeWords(const QString& unusable)
{
    if (unusable == QLatin1String("rejected"))
        return {"IDS_MODEM_REFUSED", "IDS_MODEM_REFUSED_HINT"};
    if (!unusable.isEmpty())
        return {"IDS_MODEM_FAILED", "IDS_MODEM_FAILED_HINT"};
    return {"IDS_MODEM_NONE", "IDS_MODEM_NONE_HINT"};
}

} // namespace

ModemPage::ModemPage(DeviceEvents* events, QWidget* parent)
    : Page("IDS_MODEM_TITLE", "IDS_MODEM_LEAD", Look::Sign::Modem, parent)
    , m_requests(events)
    , m_names(new OperatorNames(this))
    , m_reveal(new QPushButton)
    , m_copy(new QPushButton)
    , m_modem(new DetailsCard)
    , m_sim(new DetailsCard)
    , m_network(new DetailsCard)
    , m_choice(new NetworkChoice(m_requests, *m_names))
{
    content()->addLayout(makeButtons());
    for (QWidget* const part : {static_cast<QWidget*>(m_modem), static_cast<QWidget*>(m_sim),
                                static_cast<QWidget*>(m_network), static_cast<QWidget*>(m_choice)})
        content()->addWidget(part);
    content()->addStretch();
    m_copied.setSingleShot(true);
    m_copied.setInterval(CopiedTime);
    connect(&m_copied, &QTimer::timeout, this, &ModemPage::translate);
    connect(events, &DeviceEvents::changed, this, &ModemPage::refresh);
    connect(&m_customisation, &Customisation::applied, this, &ModemPage::embedSimPanel);
    connect(events, &DeviceEvents::statusChanged, this, [this] {
        if (isVisible()) // otherwise it is read when the page is shown
            refresh();
    });
    connect(m_names, &QThread::finished, this, &ModemPage::refresh);
    keepTranslated(this, [this] {
        translate();
        refresh();
    });
}

QLayout* ModemPage::makeButtons()
{
    auto* line = new QHBoxLayout;
    line->setSpacing(Look::Gap);
    for (QPushButton* const button : {m_reveal, m_copy}) {
        button->setMinimumSize(Look::ButtonSize);
        line->addWidget(button);
    }
    line->addStretch();
    m_reveal->setCheckable(true);
    connect(m_reveal, &QPushButton::toggled, this, &ModemPage::reveal);
    connect(m_copy, &QPushButton::clicked, this, &ModemPage::copy);
    return line;
}

void ModemPage::translate()
{
    setCaption(m_reveal, m_reveal->isChecked() ? "IDS_MODEM_HIDE" : "IDS_MODEM_SHOW");
    setCaption(m_copy, m_copied.isActive() ? "IDS_MODEM_COPIED" : "IDS_MODEM_COPY");
}

void ModemPage::refresh()
{
    embedSimPanel();
    const Modem modem = shownModem();
    const bool isThere = modem.id != 0;
    showNotice(modemInUse().id == 0);
    m_modem->showDetails(text("IDS_MODEM_CARD"), isThere ? ModemDetails::ofModem(modem) : QVector<Detail>());
    m_sim->showDetails(text("IDS_MODEM_SIM"), ModemDetails::ofSim(modem));
    m_network->showDetails(text("IDS_MODEM_NETWORK"), ModemDetails::ofNetwork(modem, *m_names));
    m_choice->showModem(modem);
    m_reveal->setEnabled(isThere);
    m_copy->setEnabled(isThere);
}

/// Says why there is no modem.
void ModemPage::showNotice(bool isShown)
{
    delete m_notice;
    m_notice = nullptr;
    if (!isShown)
        return;
    const NoticeWords words = noticeWords(unusableState());
    auto* card = new Card(text(words.title));
    card->addText(text(words.hint));
    content()->insertWidget(0, card);
    m_notice = card;
}

/// Customisation decides whether the plugin is there; it deletes its panel when it is unloaded.
void ModemPage::embedSimPanel()
{
    if (m_simPanel)
        return;
    m_simPanel = buildPage(*Startup::GetPluginContainer(), Clsids::SimInfo, this);
    if (!m_simPanel)
        return;
    m_simPanel->setProperty(RevealedProperty, m_reveal->isChecked());
    content()->insertWidget(content()->indexOf(m_sim) + 1, m_simPanel);
}

void ModemPage::reveal(bool isRevealed)
{
    m_modem->setRevealed(isRevealed);
    if (m_simPanel)
        m_simPanel->setProperty(RevealedProperty, isRevealed);
    translate();
}

void ModemPage::copy()
{
    QGuiApplication::clipboard()->setText(plainText());
    m_copied.start();
    translate();
}

QString ModemPage::plainText() const
{
    QStringList parts = {QGuiApplication::applicationDisplayName() + QLatin1Char(' ') +
                         QGuiApplication::applicationVersion() + QLatin1Char('\n')};
    parts.append(m_modem->plainText());
    parts.append(m_sim->plainText());
    if (m_simPanel)
        parts.append(m_simPanel->property(PlainTextProperty).toString());
    parts.append(m_network->plainText());
    parts.removeAll(QString());
    return parts.join(QLatin1Char('\n'));
}

void ModemPage::showEvent(QShowEvent* event)
{
    Page::showEvent(event);
    refresh();
}

void ModemPage::hideEvent(QHideEvent* event)
{
    Page::hideEvent(event);
    m_reveal->setChecked(false);
}
