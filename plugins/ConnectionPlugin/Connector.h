#pragma once

#include "support/ConnectionState.h"

#include <QHash>
#include <QObject>

class Requests;

/// Connects and disconnects modems, and knows what is under way. GUI thread only.
class Connector : public QObject
{
    Q_OBJECT

public:
    /// @param requests must outlive this object
    explicit Connector(Requests& requests, QObject* parent);

    void connectModem(const Modem& modem);
    void disconnectModem(const Modem& modem);

    /// Adds to a report what the modem does not report yet, or not at all: a request that has just been made, and why
    /// one could not be made.
    void complete(const Modem& modem, ConnectionReport& report) const;

Q_SIGNALS:
    /// What complete() adds has changed.
    void changed();

private:
    struct Attempt
    {
        QLatin1String aim; ///< what the modem reports meanwhile: connecting or disconnecting
        bool isUnderWay = false;
        int failure = 0; ///< enum QRVL_Result
    };

    void begin(const Modem& modem, QLatin1String aim);
    void finish(const Modem& modem, QLatin1String aim, int result);

    Requests& m_requests;
    QHash<quint32, Attempt> m_attempts; ///< by Modem::id
};
