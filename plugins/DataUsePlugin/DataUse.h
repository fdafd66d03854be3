#pragma once

#include "Account.h"
#include "DataLimit.h"
#include "support/Modems.h"
#include "support/Units.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>

#include <map>

class DeviceEvents;

/// Counts what the SIM cards of all modems transfer, from its construction to its destruction, and warns of the limit.
///
/// Reading a growing counter makes the device service report a second later that it has grown. So the counters are read
/// at each event only while somebody looks at them. Otherwise they are read when a connection begins or ends, and once a
/// minute in between, which is also when the history is written. Without a connection there is nothing to do and no timer
/// runs. GUI thread.
class DataUse : public QObject
{
    Q_OBJECT

public:
    /// @param events must be listening, and outlive this object
    explicit DataUse(const DeviceEvents* events);

    /// Counts and saves for the last time.
    ~DataUse() override;

    /// Whether somebody looks at the numbers, which are then up to date within a second.
    void setWatched(bool isWatched);

    /// Applies changed settings.
    void loadLimit();

    /// The account of the modem in use; without any modem, of the one that was used last in this run. Null if it has no
    /// SIM card, or a locked one.
    const Account* account() const;

    const DataLimit& limit() const { return m_limit; }
    Period period() const;
    quint64 limitBytes() const { return m_limit.bytes(m_units.base()); }
    LimitState stateOf(const Account& account) const;
    const Units& units() const { return m_units; }

    /// The clock of the speeds, in milliseconds.
    qint64 now() const { return m_clock.elapsed(); }

Q_SIGNALS:
    /// Numbers or the account have changed.
    void changed();

private:
    void follow();
    bool hasNews(const Modem& modem) const;
    void update();
    void count();
    void countModem(const Modem& modem);
    void noteCard(const Modem& modem);
    void keepTime();
    void endMissing(const QSet<QString>& present);
    void warn();
    void save();
    Account& accountOf(const QString& imsi);

    const Units m_units;
    DataLimit m_limit;
    QElapsedTimer m_clock;
    QTimer m_everyMinute;                  ///< runs while there is a connection
    std::map<QString, Account> m_accounts; ///< by IMSI
    QHash<QString, QString> m_cards;       ///< the IMSI that each modem had last
    QString m_imsi;                        ///< of the account()
    bool m_isWatched = false;
};
