#pragma once

#include "qrvl.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

/// The device service as a test uses it. Strings are compared more easily than structures, so results and values
/// are words, and a result that is a failure is its number. To wait runs the event loop.
namespace DeviceClient {

constexpr int Patience = 30000; ///< milliseconds; ModemManager needs one or two seconds to examine a modem

QVector<QRVL_Device> modems();
QVector<QRVL_Device> unusableModems();

/// The first available modem; 0 if there is none.
uint32_t modemId();

/// A value of the first available modem, or of this one.
QString value(const QString& key, uint32_t device = modemId());

/// Values of the first available modem, separated by spaces.
QString values(const QStringList& keys);

/// Begins to record events as "<number>:<note>". The note is taken during the event; usually it is the number of
/// available modems.
void listen(const std::function<QString()>& note = [] { return QString::number(modems().size()); });

/// The callback that listen() registers.
int record(int type, void* data);

/// The events since they were last taken.
QStringList events();
QStringList takeEvents();

/// Waits for this event, which comes after the values it reports, and takes all until then.
QStringList eventsUntil(const QString& last);

using Ask = std::function<long(uint32_t device, uint32_t* request)>;

/// A request with the arguments that the operation has between the modem and the number of the request.
template <typename Operation, typename... Arguments>
Ask ask(Operation operation, Arguments... arguments)
{
    return [=](uint32_t device, uint32_t* request) {
        return operation(device, arguments..., request);
    };
}

/// The text as an argument.
inline const char16_t* utf16(const QString& text)
{
    return reinterpret_cast<const char16_t*>(text.utf16());
}

/// Starts a request of the first available modem. Returns its number; 0 if it did not begin.
uint32_t started(const Ask& ask);

/// The result of a request that was started, and its text.
QString endOf(uint32_t request);

/// Both. "not started", a result and a number if the request did not begin.
QString outcome(const Ask& ask);
template <typename Operation, typename... Arguments>
QString outcome(Operation operation, Arguments... arguments)
{
    return outcome(ask(operation, arguments...));
}

} // namespace DeviceClient
