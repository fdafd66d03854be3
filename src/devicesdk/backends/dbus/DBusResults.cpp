#include "backends/dbus/DBusResults.h"

#include "qrvl.h"

#include <QDBusError>
#include <QString>

#include <algorithm>
#include <iterator>

namespace {

struct Meaning
{
    const char* end; ///< of the error's name
    long result;
};

constexpr Meaning Meanings[] = {
    {".MobileEquipment.IncorrectPassword", QRVL_ERROR_WRONG_CODE},
    {".MobileEquipment.SimPin", QRVL_ERROR_LOCKED},
    {".MobileEquipment.SimPuk", QRVL_ERROR_BLOCKED},
    {".MobileEquipment.SimNotInserted", QRVL_ERROR_NO_SIM},
    {".MobileEquipment.SimFailure", QRVL_ERROR_NO_SIM},
    {".MobileEquipment.SimWrong", QRVL_ERROR_NO_SIM},
    {".MobileEquipment.MemoryFull", QRVL_ERROR_FULL},
    {".MobileEquipment.NoNetwork", QRVL_ERROR_NO_COVERAGE},
    {".MobileEquipment.NoConnection", QRVL_ERROR_NO_COVERAGE},
    {".MobileEquipment.NetworkTimeout", QRVL_ERROR_TIMEOUT},
    {".MobileEquipment.NetworkNotAllowed", QRVL_ERROR_REFUSED},
    {".MobileEquipment.NotAllowedEmergencyOnly", QRVL_ERROR_REFUSED},
    {".MobileEquipment.CallBarred", QRVL_ERROR_REFUSED},
    {".MobileEquipment.NotSupported", QRVL_ERROR_UNSUPPORTED},
    {".Message.MemoryFull", QRVL_ERROR_FULL},
    {".Message.NoNetwork", QRVL_ERROR_NO_COVERAGE},
    {".Message.NetworkTimeout", QRVL_ERROR_TIMEOUT},
    {".Message.SimNotInserted", QRVL_ERROR_NO_SIM},
    {".Message.NotAllowed", QRVL_ERROR_REFUSED},
    {".Core.Unauthorized", QRVL_ERROR_PERMISSION},
    {".Core.Unsupported", QRVL_ERROR_UNSUPPORTED},
    {".Core.Cancelled", QRVL_ERROR_CANCELLED},
    {".Core.Aborted", QRVL_ERROR_CANCELLED},
    {".Core.NotFound", QRVL_ERROR_NOT_FOUND},
    {".Core.InProgress", QRVL_ERROR_BUSY},
    {".Serial.ResponseTimeout", QRVL_ERROR_TIMEOUT},
    {".NetworkManager.PermissionDenied", QRVL_ERROR_PERMISSION},
    {".DBus.Error.AccessDenied", QRVL_ERROR_PERMISSION},
    {".DBus.Error.ServiceUnknown", QRVL_ERROR_SERVICE},
    {".DBus.Error.NameHasNoOwner", QRVL_ERROR_SERVICE},
    {".DBus.Error.Disconnected", QRVL_ERROR_SERVICE},
    {".DBus.Error.NoReply", QRVL_ERROR_TIMEOUT},
    {".DBus.Error.Timeout", QRVL_ERROR_TIMEOUT},
    {".DBus.Error.TimedOut", QRVL_ERROR_TIMEOUT},
    {".DBus.Error.UnknownMethod", QRVL_ERROR_UNSUPPORTED},
    {".DBus.Error.UnknownInterface", QRVL_ERROR_UNSUPPORTED},
    {".DBus.Error.UnknownObject", QRVL_ERROR_NOT_FOUND},
};

} // namespace

long DBusResults::resultOf(const QDBusError& error)
{
    if (!error.isValid())
        return QRVL_OK;
    const QString name = error.name();
    const auto* const found = std::find_if(std::begin(Meanings), std::end(Meanings), [&](const Meaning& m) {
        return name.endsWith(QLatin1String(m.end));
    });
    if (found != std::end(Meanings))
        return found->result;
    // Everything else that the network answers to a message has a name of this group.
    return name.contains(QLatin1String(".Message.")) ? long(QRVL_ERROR_REFUSED) : long(QRVL_ERROR_FAILED);
}
