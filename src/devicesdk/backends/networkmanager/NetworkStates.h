#pragma once

#include <QString>

/// What NetworkManager's numbers mean.
namespace NetworkStates {

/// States of devices.
enum State : uint {
    Disconnected = 30,
    Prepare = 40,
    Secondaries = 90,
    Activated = 100,
    Deactivating = 110,
    Failed = 120
};

/// One of the reasons for a new state: the user has asked for it.
constexpr uint UserRequested = 39;

/// The result of the C interface for a reason.
long resultOf(uint reason);

/// Whether the device is on its way to Activated.
bool isConnecting(uint state);

/// Whether the device is on its way to Activated, or there.
bool isInUse(uint state);

/// The status value "connection".
QString connectionText(uint state);

} // namespace NetworkStates
