#pragma once

#include "support/Look.h"
#include "support/Modems.h"

/// What the device service and the modem in use report, as far as it decides what can be done. The strings are status
/// values of qrvl.h; empty when unknown.
struct ConnectionReport
{
    QString problem;           ///< of the service
    QString connectionProblem; ///< of the service
    QString state; ///< "available"; without such a modem that of one that cannot be used; empty without any
    QString stateReason;
    QString sim;
    QString registration;
    QString connection;
    int failure = 0; ///< enum QRVL_Result: why connecting or disconnecting failed; QRVL_OK if it has not
    bool isHomeOnly = false; ///< the user wants no connections while roaming; set only while roaming
};

/// Reads the report. It takes little time; any thread.
/// @param modem in use; id 0 without one
ConnectionReport readConnectionReport(const Modem& modem);

/// What the user can do next.
enum class ConnectionAction {
    None,
    Connect,
    Cancel,
    Disconnect,
    EnterPin,
    EnterPuk,
    ChooseNetwork,
    AllowRoaming, ///< in the dialog for the access point
    Help
};

/// The state of the connection, the same everywhere in the application.
struct ConnectionState
{
    enum Kind {
        NoBus,
        NoModemManager,
        NoModem,
        ModemRejected,
        SimFailed,
        NoProfile,
        MissingCapabilities,
        ModemFailed,
        NoSim,
        NeedsPin,
        NeedsPuk,
        SimBlocked,
        OtherLock,
        SimError,
        Connecting,
        Connected,
        Disconnecting,
        NoConnectionBus,
        NoNetworkManager,
        Searching,
        Denied,
        RoamingExcluded,
        Disconnected,
        ConnectingFailed
    };

    Kind kind;
    Look::Sign sign;
    ConnectionAction action = ConnectionAction::None;
    bool isPossible = true; ///< whether the action is possible now
};

ConnectionState connectionState(const ConnectionReport& report);
