// The requests of the C interface, see qrvl.h.

#include "qrvl.h"

#include "Service.h"
#include "TextBuffer.h"
#include "devices/DeviceService.h"

#include <algorithm>

namespace {

constexpr int ShortestPin = 4;
constexpr int LongestPin = 8;
constexpr int PukLength = 8;
constexpr int ShortestNetwork = 5;
constexpr int LongestNetwork = 6;

bool isDigits(const char16_t* text, int shortest, int longest)
{
    const QStringView code(text);
    return code.size() >= shortest && code.size() <= longest &&
           std::all_of(code.begin(), code.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool isPin(const char16_t* text)
{
    return isDigits(text, ShortestPin, LongestPin);
}

bool isEmpty(const char16_t* text)
{
    return !text || !*text;
}

/// A telephone number without the characters that people add to make it readable; empty if it is none.
QString telephoneNumber(const QString& text)
{
    QString number;
    for (const QChar c : text) {
        const bool isPlus = c == QLatin1Char('+') && number.isEmpty();
        if (isPlus || (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('*') ||
            c == QLatin1Char('#'))
            number += c;
        else if (!QStringLiteral(" -()").contains(c))
            return {};
    }
    return number == QLatin1String("+") ? QString() : number;
}

long start(Request request, uint32_t* number)
{
    return Service::devices().start(std::move(request), *number);
}

/// Returns false if there is nowhere to store the number of a request.
bool prepare(uint32_t* number)
{
    if (number)
        *number = 0;
    return number;
}

Request requestFor(Request::Kind kind, uint32_t device)
{
    Request request;
    request.kind = kind;
    request.device = device;
    return request;
}

} // namespace

long QRVL_DevSrv_Connect(uint32_t device, const QRVL_AccessPoint* accessPoint, uint32_t* request)
{
    if (!prepare(request))
        return QRVL_ERROR_ARGUMENT;
    Request connect = requestFor(Request::Connect, device);
    const bool isNamed = accessPoint && !isEmpty(accessPoint->name);
    if (isNamed) {
        connect.target = textOf(accessPoint->name);
        connect.text = textOf(accessPoint->user);
        connect.secret = Secret(QStringView(accessPoint->password));
    }
    connect.isHomeOnly = accessPoint && (accessPoint->flags & QRVL_CONNECT_HOME_ONLY) != 0;
    return start(std::move(connect), request);
}

long QRVL_DevSrv_Disconnect(uint32_t device, uint32_t* request)
{
    if (!prepare(request))
        return QRVL_ERROR_ARGUMENT;
    return start(requestFor(Request::Disconnect, device), request);
}

long QRVL_DevSrv_EnterPin(uint32_t device, const char16_t* pin, uint32_t* request)
{
    if (!prepare(request) || !isPin(pin))
        return QRVL_ERROR_ARGUMENT;
    Request unlock = requestFor(Request::EnterPin, device);
    unlock.secret = Secret(pin);
    return start(std::move(unlock), request);
}

long QRVL_DevSrv_EnterPuk(uint32_t device, const char16_t* puk, const char16_t* newPin, uint32_t* request)
{
    if (!prepare(request) || !isDigits(puk, PukLength, PukLength) || !isPin(newPin))
        return QRVL_ERROR_ARGUMENT;
    Request unlock = requestFor(Request::EnterPuk, device);
    unlock.secret = Secret(puk);
    unlock.newPin = Secret(newPin);
    return start(std::move(unlock), request);
}

long QRVL_DevSrv_SendMessage(uint32_t device, const char16_t* recipient, const char16_t* text,
                             uint32_t* request)
{
    if (!prepare(request) || !recipient || isEmpty(text))
        return QRVL_ERROR_ARGUMENT;
    Request message = requestFor(Request::SendMessage, device);
    message.target = telephoneNumber(textOf(recipient));
    message.text = textOf(text);
    if (message.target.isEmpty())
        return QRVL_ERROR_ARGUMENT;
    return start(std::move(message), request);
}

long QRVL_DevSrv_DeleteMessage(uint32_t device, const char16_t* identifier, uint32_t* request)
{
    if (!prepare(request) || isEmpty(identifier))
        return QRVL_ERROR_ARGUMENT;
    Request message = requestFor(Request::DeleteMessage, device);
    message.target = textOf(identifier);
    return start(std::move(message), request);
}

long QRVL_DevSrv_SendUssd(uint32_t device, const char16_t* text, uint32_t* request)
{
    if (!prepare(request) || isEmpty(text))
        return QRVL_ERROR_ARGUMENT;
    Request ussd = requestFor(Request::SendUssd, device);
    ussd.target = textOf(text);
    return start(std::move(ussd), request);
}

long QRVL_DevSrv_CancelUssd(uint32_t device, uint32_t* request)
{
    if (!prepare(request))
        return QRVL_ERROR_ARGUMENT;
    return start(requestFor(Request::CancelUssd, device), request);
}

long QRVL_DevSrv_ScanNetworks(uint32_t device, uint32_t* request)
{
    if (!prepare(request))
        return QRVL_ERROR_ARGUMENT;
    return start(requestFor(Request::ScanNetworks, device), request);
}

long QRVL_DevSrv_Register(uint32_t device, const char16_t* network, uint32_t* request)
{
    const bool isAutomatic = isEmpty(network);
    if (!prepare(request) || (!isAutomatic && !isDigits(network, ShortestNetwork, LongestNetwork)))
        return QRVL_ERROR_ARGUMENT;
    Request registration = requestFor(Request::Register, device);
    registration.target = isAutomatic ? QString() : textOf(network);
    return start(std::move(registration), request);
}
