#pragma once

#include <QString>
#include <QVector>

/// One attached modem as reported by the device service.
struct Modem
{
    quint32 id = 0;        ///< unique while the device service is running
    QString name;          ///< model name; the rules for modems in PluginsConfig.xml refer to it
    QString imsi;          ///< empty without a SIM
    QString gid;           ///< group identifier of the SIM; empty when it has none
    QString customizeName; ///< the operator that customization.ini names for modem and SIM; may be empty
    QString port;          ///< such as "COM3" or "/dev/ttyUSB2"; may be empty
};

using Modems = QVector<Modem>;

/// The name for the user. Modems of the same model differ by their ports.
QString shownName(const Modem& modem);

/// Whether all values are the same.
bool operator==(const Modem& left, const Modem& right);

/// The modems that are attached and have not been rejected; none when the device service fails. Any thread.
Modems attachedModems();

/// The modems that are attached but were rejected or have failed; their value "state" says which. Any thread.
Modems unusableModems();

/// Whether a modem is among attachedModems(). Any thread.
/// @param id Modem::id
bool isAttached(quint32 id);

/// What keeps a modem from being used while none is: "rejected", for example because of an operator lock, or "failed".
/// Empty if a modem is attached or none is there at all. Any thread.
QString unusableState();

/// The value that a modem reports for a key of QRVL_DevSrv_GetStatusValue() (see qrvl.h). Any thread; do not
/// read messages on the GUI thread, as each read can take a second.
/// @param id  Modem::id
/// @param key such as "network" or "signal"
/// @return a null string when the modem has been removed or does not know the key
QString modemValue(quint32 id, const QString& key);

/// The same for a modem and a key in Latin characters.
QString modemValue(const Modem& modem, const char* key);

/// A value of the device service itself, such as "backend"; a null string if it has none. Any thread.
QString serviceValue(const QString& key);

/// Whether a modem is in a network. Any thread.
/// @param id Modem::id
bool hasNetwork(quint32 id);

/// Whether a modem can make calls at all: so far, only simulated modems can. Any thread.
/// @param id Modem::id
bool canMakeCalls(quint32 id);
