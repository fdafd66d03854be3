#pragma once

#include "support/Look.h"

#include <QString>

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
    bool isHomeOnly = false; ///< the user wants no connections while roaming
};

/// What the page's button does; without an action there is no button.
enum class Action {
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

/// What the page says. The strings are identifiers of the plugin's strings.
struct Meaning
{
    Look::Sign sign;
    const char* title;    ///< null: that of the failure
    const char* sentence; ///< what to do; null: the hint of the failure
    Action action = Action::None;
    bool isPossible = true; ///< whether the button is on
    int failure = 0;        ///< for resultWords()
};

Meaning meaningOf(const ConnectionReport& report);
