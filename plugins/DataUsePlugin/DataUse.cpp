#include "DataUse.h"

#include "LimitNotice.h"
#include "support/DeviceEvents.h"
#include "support/ModemInUse.h"

#include <algorithm>

namespace {

constexpr int Minute = 60 * 1000; // milliseconds

/// A connection that is being ended still has counters.
bool isConnected(const Modem& modem)
{
    const QString connection = modemValue(modem, "connection");
    return connection == QLatin1String("connected") || connection == QLatin1String("disconnecting");
}

qint64 connectedSince(const Modem& modem)
{
    return modemValue(modem, "connection.since").toLongLong();
}

/// The modems with a SIM card that can be counted, each card once.
Modems countable()
{
    Modems modems = attachedModems();
    QSet<QString> cards = {QString()};
    const auto isOther = [&cards](const Modem& modem) {
        const int before = cards.size();
        cards.insert(modem.imsi);
        return cards.size() == before;
    };
    modems.erase(std::remove_if(modems.begin(), modems.end(), isOther), modems.end());
    return modems;
}

} // namespace

DataUse::DataUse(const DeviceEvents* events)
    : m_limit(DataLimit::load())
{
    m_clock.start();
    m_everyMinute.setInterval(Minute);
    m_everyMinute.setTimerType(Qt::VeryCoarseTimer);
    connect(&m_everyMinute, &QTimer::timeout, this, [this] {
        update();
        save();
    });
    connect(events, &DeviceEvents::changed, this, &DataUse::follow);
    connect(events, &DeviceEvents::statusChanged, this, &DataUse::follow);
    // Not from here: a warning needs another plugin, and this one is being initialised.
    QMetaObject::invokeMethod(this, &DataUse::update, Qt::QueuedConnection);
}

DataUse::~DataUse()
{
    count();
    save();
}

void DataUse::setWatched(bool isWatched)
{
    m_isWatched = isWatched;
    if (isWatched)
        update();
}

void DataUse::loadLimit()
{
    m_limit = DataLimit::load();
    for (auto& [imsi, account] : m_accounts)
        account.noteState(stateOf(account), period()); // whoever sets a limit sees on the page what it means
    Q_EMIT changed();
}

const Account* DataUse::account() const
{
    const auto found = m_accounts.find(m_imsi);
    return found == m_accounts.end() ? nullptr : &found->second;
}

Period DataUse::period() const
{
    return periodOf(QDate::currentDate(), m_limit.firstDay);
}

LimitState DataUse::stateOf(const Account& account) const
{
    return limitState(account.history().sum(period()).total(), limitBytes(), m_limit.warnAt);
}

void DataUse::follow()
{
    const Modems modems = countable();
    const bool hasEnded = std::any_of(m_accounts.begin(), m_accounts.end(), [&modems](const auto& entry) {
        return entry.second.isConnected() &&
               std::none_of(modems.begin(), modems.end(),
                            [&entry](const Modem& modem) { return modem.imsi == entry.first; });
    });
    if (m_isWatched || hasEnded ||
        std::any_of(modems.begin(), modems.end(), [this](const Modem& modem) { return hasNews(modem); }))
        update();
}

bool DataUse::hasNews(const Modem& modem) const
{
    const auto known = m_accounts.find(modem.imsi);
    if (known == m_accounts.end())
        return true;
    const Account& account = known->second;
    const bool isConnectedNow = isConnected(modem);
    if (isConnectedNow != account.isConnected())
        return true;
    return isConnectedNow && (connectedSince(modem) != account.connectedSince() ||
                              modemValue(modem, "connection") == QLatin1String("disconnecting"));
}

void DataUse::update()
{
    count();
    warn();
    keepTime();
    const Modems modems = attachedModems();
    if (!modems.isEmpty())
        m_imsi = modemInUse(modems).imsi;
    Q_EMIT changed();
}

void DataUse::count()
{
    QSet<QString> present;
    for (const Modem& modem : countable()) {
        present.insert(modem.imsi);
        noteCard(modem);
        countModem(modem);
    }
    endMissing(present);
}

void DataUse::keepTime()
{
    const bool isAnyConnected = std::any_of(m_accounts.begin(), m_accounts.end(),
                                            [](const auto& entry) { return entry.second.isConnected(); });
    if (!isAnyConnected)
        m_everyMinute.stop();
    else if (!m_everyMinute.isActive())
        m_everyMinute.start();
}

/// A modem's counters go on when its SIM card is exchanged, but the new card has not caused what they show.
void DataUse::noteCard(const Modem& modem)
{
    // A modem can be detected again with its new card, so its port identifies it.
    QString& card = m_cards[modem.port.isEmpty() ? QString::number(modem.id) : modem.port];
    if (!card.isEmpty() && card != modem.imsi)
        accountOf(modem.imsi).forgetCounters();
    card = modem.imsi;
}

void DataUse::countModem(const Modem& modem)
{
    Account& account = accountOf(modem.imsi);
    const bool isConnectedNow = isConnected(modem);
    const QString received =
        isConnectedNow || account.isConnected() ? modemValue(modem, "received") : QString();
    if (!received.isEmpty()) {
        const Traffic counters{received.toULongLong(), modemValue(modem, "sent").toULongLong()};
        const qint64 since = isConnectedNow ? connectedSince(modem) : account.connectedSince();
        account.read({counters, since}, QDate::currentDate(), now());
    }
    if (isConnectedNow)
        return;
    const bool hasEnded = account.isConnected();
    account.disconnect();
    if (hasEnded)
        account.save();
}

/// Of SIM cards whose modem was removed.
void DataUse::endMissing(const QSet<QString>& present)
{
    for (auto& [imsi, account] : m_accounts) {
        if (present.contains(imsi) || !account.isConnected())
            continue;
        account.disconnect();
        account.save();
    }
}

void DataUse::warn()
{
    for (auto& [imsi, account] : m_accounts) {
        const LimitState state = stateOf(account);
        if (account.noteState(state, period()))
            showLimitNotice(state, account.history().sum(period()).total(), limitBytes(), m_units);
    }
}

void DataUse::save()
{
    for (auto& [imsi, account] : m_accounts)
        account.save();
}

Account& DataUse::accountOf(const QString& imsi)
{
    return m_accounts.try_emplace(imsi, imsi).first->second;
}
