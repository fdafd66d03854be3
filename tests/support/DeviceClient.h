#pragma once

#include "qrvl.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

/// The device service as a test uses it. Strings are compared more easily than structures, so results and values
/// are words, and a result that is a failure is its number.
namespace DeviceClient {

constexpr int Patience = 30000; ///< milliseconds; ModemManager needs one or two seconds to examine a modem

/// Begins to record events.
void listen();

/// The events since the last call.
QVector<int> takeEvents();

/// Waits for as many events, which come after the values they report, and takes them. Fewer when they do not come.
QVector<int> nextEvents(int count);

QVector<QRVL_Device> modems();
QVector<QRVL_Device> unusableModems();

/// The first available modem; 0 if there is none.
uint32_t modemId();

QString value(const QString& key, uint32_t device);

/// Values of the first available modem, separated by spaces.
QString values(const QStringList& keys);

using Ask = std::function<long(uint32_t device, uint32_t* request)>;

/// The result of a request of the first available modem, and its text; "not started" and a number if it did not
/// begin.
QString outcome(const Ask& ask);

/// The same for a request that was started.
QString endOf(uint32_t request);

} // namespace DeviceClient
