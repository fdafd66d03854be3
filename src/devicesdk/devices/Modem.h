#pragma once

#include "devices/Counter.h"

#include <QMap>
#include <QString>
#include <QVector>

#include <tuple>

/// Values by key, see QRVL_DevSrv_GetStatusValue().
using ModemValues = QMap<QString, QString>;

/// A modem that the service knows.
struct Modem
{
    enum State { Attached, Detached, Rejected, Failed };

    quint32 id = 0; // unique while the process runs
    QString name;   // distinguishes modems of the same model
    QString model;
    QString imsi; // empty without a SIM
    QString gid;  // empty if the SIM has no group identifier
    QString customize;
    QString port;
    State state = Detached;

    // What follows changes while the modem works, so operator== ignores it.
    ModemValues status;
    ModemValues messages;            // on its SIM
    QMap<QString, Counter> counters; // the status values that grow by themselves
    int answerTime = 0;              // milliseconds it takes to read a value of a message
    QString trafficInterface;        // whose counters the backend reads; empty if there is none
    int requestTime = 0;             // milliseconds that a simulated request takes
};

inline bool operator==(const Modem& a, const Modem& b)
{
    const auto values = [](const Modem& m) {
        return std::tie(m.id, m.name, m.model, m.imsi, m.gid, m.customize, m.port, m.state);
    };
    return values(a) == values(b);
}

using Modems = QVector<Modem>;

/// What the service knows at one moment.
struct DeviceState
{
    Modems modems;
    ModemValues service; // values of QRVL_SERVICE
};
