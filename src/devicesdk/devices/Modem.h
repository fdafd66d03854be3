#pragma once

#include <QMap>
#include <QString>
#include <QVector>

#include <tuple>

/// Texts by their keys, see QRVL_DevSrv_GetStatusValue().
using ModemValues = QMap<QString, QString>;

/// One modem that the service knows.
struct Modem
{
    enum State { Attached, Detached, Rejected };

    quint32 id = 0; // unique while the process runs
    QString name;   // tells modems of the same model apart
    QString model;
    QString imsi; // empty without a SIM
    QString gid;  // empty when the SIM has no group identifier
    QString customize;
    QString port;
    State state = Detached;

    // What changes while it works, which does not make it another modem for operator==.
    ModemValues status;
    ModemValues messages; // on its SIM
    int answerTime = 0;   // milliseconds to read one of the messages' values
};

inline bool operator==(const Modem& a, const Modem& b)
{
    const auto values = [](const Modem& m) {
        return std::tie(m.id, m.name, m.model, m.imsi, m.gid, m.customize, m.port, m.state);
    };
    return values(a) == values(b);
}

using Modems = QVector<Modem>;
