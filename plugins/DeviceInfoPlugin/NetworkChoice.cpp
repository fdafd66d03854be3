#include "NetworkChoice.h"

#include "support/NetworkWords.h"
#include "support/OperatorNames.h"
#include "support/Requests.h"
#include "support/ResultWords.h"
#include "support/Text.h"

#include <QButtonGroup>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <qrvl.h>

#include <algorithm>

namespace {

constexpr int AutomaticId = 0; ///< of a button; those of networks follow

const char* wordFor(const QString& state, bool isCurrent)
{
    if (isCurrent)
        return "IDS_MODEM_NETWORK_CURRENT";
    return state == QLatin1String("forbidden") ? "IDS_MODEM_NETWORK_FORBIDDEN"
                                               : "IDS_MODEM_NETWORK_AVAILABLE";
}

} // namespace

NetworkChoice::NetworkChoice(Requests& requests, const OperatorNames& names, QWidget* parent)
    : Surface(parent)
    , m_requests(requests)
    , m_names(names)
    , m_automatic(new QRadioButton)
    , m_choices(new QButtonGroup(this))
    , m_list(new QVBoxLayout)
    , m_note(Look::quietLabel(QString(), true))
    , m_search(new QPushButton)
    , m_apply(new QPushButton)
{
    QVBoxLayout* const column = makeColumn("IDS_MODEM_CHOOSE_NETWORK");
    m_list->setSpacing(Look::Gap);
    column->addWidget(m_automatic);
    column->addLayout(m_list);
    column->addWidget(m_note);
    column->addLayout(makeButtons());
    m_automatic->setChecked(true);
    m_choices->addButton(m_automatic, AutomaticId);
    connect(m_choices, &QButtonGroup::idToggled, this, &NetworkChoice::enable);
    keepTranslated(this, [this] { translate(); });
}

QLayout* NetworkChoice::makeButtons()
{
    auto* line = new QHBoxLayout;
    line->setSpacing(Look::Gap);
    line->addStretch();
    for (QPushButton* const button : {m_search, m_apply}) {
        button->setMinimumSize(Look::ButtonSize);
        line->addWidget(button);
    }
    connect(m_search, &QPushButton::clicked, this, &NetworkChoice::search);
    connect(m_apply, &QPushButton::clicked, this, &NetworkChoice::apply);
    return line;
}

void NetworkChoice::translate()
{
    m_automatic->setText(text("IDS_MODEM_AUTOMATIC"));
    setCaption(m_search, "IDS_MODEM_SEARCH");
    setCaption(m_apply, "IDS_MODEM_REGISTER");
    describeFound();
    setActivity(m_activity);
}

bool NetworkChoice::isShown(const Modem& modem) const
{
    return modem.id == m_modem.id && modem.imsi == m_modem.imsi;
}

void NetworkChoice::showModem(const Modem& modem)
{
    if (!isShown(modem)) {
        clearFound();
        setActivity(Activity::None); // the end of a request that is under way will not be shown
        m_isManual = false;
        m_chosen.clear();
        m_automatic->setChecked(true);
    }
    m_modem = modem;
    m_isReady = modemValue(modem.id, QStringLiteral("sim")) == QLatin1String("ready");
    m_current = modemValue(modem.id, QStringLiteral("network"));
    setVisible(m_isReady);
    followChoice();
    describeFound();
    enable();
}

/// Shows the modem's own choice when it changes; until then, what the user is about to choose stays.
void NetworkChoice::followChoice()
{
    const bool isManual = modemValue(m_modem.id, QStringLiteral("network-choice")) == QLatin1String("manual");
    const QString chosen = isManual ? m_current : QString();
    const bool isSearching = isManual && chosen.isEmpty(); // for the chosen network only
    if (isManual == m_isManual && (isSearching || chosen == m_chosen))
        return;
    m_isManual = isManual;
    if (!isSearching)
        m_chosen = chosen;
    showChosen();
}

/// A modem that looks for a network chosen earlier does not say for which one: then no choice is checked.
void NetworkChoice::showChosen()
{
    if (!m_isManual || !m_chosen.isEmpty()) {
        check(m_chosen);
        return;
    }
    m_choices->setExclusive(false); // else one of them would stay checked
    m_automatic->setChecked(false);
    m_choices->setExclusive(true);
}

/// Checks a network, which is added unless it has been found. Without one it leaves the choice to the modem.
void NetworkChoice::check(const QString& network)
{
    if (network.isEmpty()) {
        m_automatic->setChecked(true);
        return;
    }
    const auto* const found =
        std::find_if(m_found.cbegin(), m_found.cend(),
                     [&](const FoundNetwork& candidate) { return candidate.code == network; });
    const int id = int(found - m_found.cbegin()) + 1;
    if (found == m_found.cend())
        addFound({network,
                  QStringLiteral("current"),
                  {modemValue(m_modem.id, QStringLiteral("technology"))},
                  modemValue(m_modem.id, QStringLiteral("network-name"))});
    m_choices->button(id)->setChecked(true);
}

void NetworkChoice::search()
{
    setActivity(Activity::Searching);
    const Modem modem = m_modem;
    m_requests.start([&](quint32* request) { return QRVL_DevSrv_ScanNetworks(modem.id, request); }, this,
                     [this, modem](const RequestEnd& end) {
                         if (!isShown(modem))
                             return;
                         showEnd(end);
                         if (end.result == QRVL_OK)
                             showFound(end.text);
                     });
}

void NetworkChoice::apply()
{
    setActivity(Activity::Registering);
    const int choice = m_choices->checkedId();
    const QString code = choice == AutomaticId ? QString() : m_found[choice - 1].code;
    const Modem modem = m_modem;
    m_requests.start([&](quint32* request) { return QRVL_DevSrv_Register(modem.id, utf16(code), request); },
                     this,
                     [this, modem](const RequestEnd& end) {
                         if (isShown(modem))
                             showEnd(end);
                     });
}

void NetworkChoice::showEnd(const RequestEnd& end)
{
    setActivity(Activity::None);
    if (end.result != QRVL_OK)
        showNote(resultText(end.result));
}

void NetworkChoice::showNote(const QString& note)
{
    m_note->setText(note);
    m_note->setVisible(!note.isEmpty());
}

void NetworkChoice::showFound(const QString& lines)
{
    clearFound();
    for (const FoundNetwork& network : readNetworks(lines))
        addFound(network);
    if (m_found.isEmpty())
        showNote(text("IDS_MODEM_FOUND_NONE"));
    showChosen();
    enable();
}

void NetworkChoice::addFound(const FoundNetwork& network)
{
    m_found.append(network);
    m_choices->addButton(addChoice(network), m_found.size());
}

QRadioButton* NetworkChoice::addChoice(const FoundNetwork& network)
{
    auto* const choice = new QRadioButton(describe(network));
    m_list->addWidget(choice);
    return choice;
}

QString NetworkChoice::describe(const FoundNetwork& network) const
{
    const QString name = m_names.nameOf(network.code, m_modem.imsi, network.name);
    QStringList parts = {name.isEmpty() ? network.name : name};
    QStringList technologies;
    for (const QString& technology : network.technologies)
        technologies.append(technologyName(technology));
    parts.append(technologies.join(QStringLiteral(", ")));
    parts.append(text(wordFor(network.state, network.code == m_current)));
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" \u00b7 "));
}

void NetworkChoice::describeFound()
{
    for (int i = 0; i < m_found.size(); ++i)
        m_choices->button(i + 1)->setText(describe(m_found[i]));
}

void NetworkChoice::clearFound()
{
    for (int i = 0; i < m_found.size(); ++i)
        delete m_choices->button(i + 1);
    m_found.clear();
    if (!m_choices->checkedButton())
        m_automatic->setChecked(true);
}

void NetworkChoice::setActivity(Activity activity)
{
    m_activity = activity;
    if (activity == Activity::None)
        showNote({});
    else
        showNote(text(activity == Activity::Searching ? "IDS_MODEM_SEARCHING" : "IDS_MODEM_REGISTERING"));
    enable();
}

void NetworkChoice::enable()
{
    const bool isIdle = m_isReady && m_activity == Activity::None;
    const auto buttons = m_choices->buttons();
    for (QAbstractButton* const button : buttons) {
        const int id = m_choices->id(button);
        const bool isForbidden = id != AutomaticId && m_found[id - 1].state == QLatin1String("forbidden");
        button->setEnabled(isIdle && !isForbidden);
    }
    m_search->setEnabled(isIdle);
    m_apply->setEnabled(isIdle && m_choices->checkedButton());
}
