#pragma once

#include <QString>
#include <QVector>

/// One attached modem as the device service reports it.
struct Modem
{
    quint32 id = 0;        ///< unique while the device service runs
    QString name;          ///< model name: what device customisation goes by
    QString imsi;          ///< empty without a SIM
    QString gid;           ///< group identifier of the SIM; empty when it has none
    QString customizeName; ///< operator the modem was made for; may be empty
    QString port;
};

using Modems = QVector<Modem>;

bool operator==(const Modem& left, const Modem& right);

/// The modems that are attached and accepted; none when the device service fails. Any thread.
Modems attachedModems();

/// What a modem reports under a key of QRVL_DevSrv_GetStatusValue(); null when it does not. Any thread; for
/// the values of messages not the GUI thread, as reading them takes a while.
QString modemValue(quint32 id, const QString& key);
