#pragma once

#include "devices/Secret.h"

#include <QString>

/// Something that was asked of a modem, see the requests in qrvl.h.
struct Request
{
    enum Kind {
        Connect,
        Disconnect,
        EnterPin,
        EnterPuk,
        SendMessage,
        DeleteMessage,
        SendUssd,
        CancelUssd,
        ScanNetworks,
        Register,
    };

    Kind kind = Connect;
    quint32 device = 0;
    quint32 number = 0;
    QString target; ///< access point, recipient, identifier of a message, service code, or code of a network
    QString text;   ///< user of the access point, or text of a message
    Secret secret;  ///< password, PIN or PUK
    Secret newPin;
    bool isHomeOnly = false;
};

struct RequestEnd
{
    quint32 number = 0;
    long result = 0; ///< of the C interface
    QString text;
};
