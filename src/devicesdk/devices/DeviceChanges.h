#pragma once

#include "devices/Modem.h"

/// Compares what the service knows before and after a change.
namespace DeviceChanges {

/// The modems that were rejected or have failed, QRVL_MAX_DEVICES at most.
Modems unusableOf(const Modems& modems);

/// The other attached modems, QRVL_MAX_DEVICES at most.
Modems availableOf(const Modems& modems);

bool hasId(const Modems& modems, quint32 id);

/// The events that report a change, in order, each once however many modems it is about:
/// - QRVL_EVENT_DEV_DEVICE_INVALID when a modem was removed, replaced by another model, or has failed
/// - QRVL_EVENT_DEV_REJECT when one was rejected; if it was available before, no other event reports its loss
/// - QRVL_EVENT_DEV_DETECTED when the available modems differ, or if `reportAnyway`
/// - QRVL_EVENT_DEV_STATUS and QRVL_EVENT_DEV_MESSAGES when modems that stay available, or the service, have
///   other values; counters that have grown are no such change
QVector<int> eventsBetween(const DeviceState& before, const DeviceState& after, bool reportAnyway);

} // namespace DeviceChanges
