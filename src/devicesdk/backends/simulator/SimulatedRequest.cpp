#include "backends/simulator/SimulatedRequest.h"

#include "backends/simulator/FileModem.h"
#include "backends/simulator/SimulatedNetworks.h"
#include "backends/simulator/SimulatedValues.h"
#include "qrvl.h"

#include <QDateTime>

#include <algorithm>
#include <iterator>

namespace {

/// Why nothing can be done that needs the network; QRVL_OK if it can.
long networkResult(const FileModem& modem)
{
    const long simResult = modem.simResult();
    if (simResult != QRVL_OK)
        return simResult;
    if (modem.value("network").isEmpty())
        return QRVL_ERROR_NO_COVERAGE;
    return SimulatorFile::failureOf(modem.value("failure"));
}

RequestEnd ended(const Request& request, long result, const QString& text = {})
{
    return {request.number, result, text};
}

RequestEnd connectModem(const Request& request, FileModem modem, QString&)
{
    if (modem.value("connection") == QLatin1String("connected"))
        return ended(request, QRVL_OK);
    long result = networkResult(modem);
    if (result == QRVL_OK && request.isHomeOnly &&
        SimulatedValues::isRoaming(modem.value("imsi"), modem.value("network")))
        result = QRVL_ERROR_ROAMING;
    const bool isConnected = result == QRVL_OK;
    modem.set("connection", isConnected ? QStringLiteral("connected") : QStringLiteral("disconnected"));
    modem.set("connection.since",
              isConnected ? QString::number(QDateTime::currentSecsSinceEpoch()) : QString());
    modem.set("connection.error", isConnected ? QString() : QString::number(result));
    return ended(request, result);
}

RequestEnd disconnectModem(const Request& request, FileModem modem, QString&)
{
    modem.set("connection", QStringLiteral("disconnected"));
    modem.set("connection.since", QString());
    modem.set("connection.error", QString());
    return ended(request, QRVL_OK);
}

/// Compares a code. A wrong one costs a try, and the last one leads to `next`.
long tryCode(FileModem& modem, const Secret& code, const QString& right, const char* triesKey, int tries,
             const char* next)
{
    const int left = modem.number(triesKey, tries);
    if (code.view() == right) {
        modem.set(triesKey, tries);
        return QRVL_OK;
    }
    modem.set(triesKey, std::max(left - 1, 0));
    if (left > 1)
        return QRVL_ERROR_WRONG_CODE;
    modem.set("sim", QLatin1String(next));
    return QRVL_ERROR_BLOCKED;
}

RequestEnd enterPin(const Request& request, FileModem modem, QString&)
{
    const QString sim = modem.sim();
    if (sim == QLatin1String("absent"))
        return ended(request, QRVL_ERROR_NO_SIM);
    if (sim != QLatin1String("pin"))
        return ended(request, sim == QLatin1String("ready") ? QRVL_ERROR_NOT_FOUND : QRVL_ERROR_BLOCKED);
    const QString pin = modem.value("pin", QStringLiteral("1234"));
    const long result = tryCode(modem, request.secret, pin, "pin-tries", SimulatedValues::PinTries, "puk");
    if (result == QRVL_OK)
        modem.set("sim", QStringLiteral("ready"));
    return ended(request, result);
}

RequestEnd enterPuk(const Request& request, FileModem modem, QString&)
{
    if (modem.sim() != QLatin1String("puk"))
        return ended(request,
                     modem.sim() == QLatin1String("blocked") ? QRVL_ERROR_BLOCKED : QRVL_ERROR_NOT_FOUND);
    const QString puk = modem.value("puk", QStringLiteral("12345678"));
    const long result =
        tryCode(modem, request.secret, puk, "puk-tries", SimulatedValues::PukTries, "blocked");
    if (result == QRVL_OK) {
        modem.set("sim", QStringLiteral("ready"));
        modem.set("pin", request.newPin.view().toString()); // this is the SIM
        modem.set("pin-tries", SimulatedValues::PinTries);
    }
    return ended(request, result);
}

RequestEnd sendMessage(const Request& request, FileModem modem, QString&)
{
    const long result = networkResult(modem);
    const QString identifier = SimulatorFile::freeMessage(modem.document());
    const QString section = SimulatorFile::messageSectionOf(identifier);
    const auto set = [&](const char* key, const QString& value) {
        modem.document().set(section, QLatin1String(key), value);
    };
    set("modem", modem.name());
    set("recipient", request.target);
    set("time", QDateTime::currentDateTime().toString(Qt::ISODate));
    set("text", request.text);
    set("state", result == QRVL_OK ? QStringLiteral("sent") : QStringLiteral("failed"));
    return ended(request, result, identifier);
}

RequestEnd deleteMessage(const Request& request, FileModem modem, QString&)
{
    const QString section = SimulatorFile::messageSectionOf(request.target);
    const QString* const owner = modem.document().find(section, QStringLiteral("modem"));
    const bool isFound = owner && *owner == modem.name();
    if (isFound)
        modem.document().removeSection(section);
    return ended(request, isFound ? QRVL_OK : QRVL_ERROR_NOT_FOUND);
}

RequestEnd sendUssd(const Request& request, FileModem modem, QString& dialogue)
{
    const QString codes = (dialogue + QLatin1Char(' ') + request.target).trimmed();
    const QString section = SimulatorFile::ussdSectionOf(codes);
    const QString* const answer = modem.document().find(section, QStringLiteral("answer"));
    const QString* const asks = modem.document().find(section, QStringLiteral("asks"));
    long result = networkResult(modem);
    if (result == QRVL_OK && !answer)
        result = QRVL_ERROR_REFUSED;
    dialogue = result == QRVL_OK && asks && *asks == QLatin1String("true") ? codes : QString();
    return ended(request, result, result == QRVL_OK ? *answer : QString());
}

RequestEnd cancelUssd(const Request& request, FileModem, QString& dialogue)
{
    dialogue.clear();
    return ended(request, QRVL_OK);
}

RequestEnd scanNetworks(const Request& request, FileModem modem, QString&)
{
    return SimulatedNetworks::scan(request, modem);
}

RequestEnd registerModem(const Request& request, FileModem modem, QString&)
{
    return SimulatedNetworks::registerIn(request, modem);
}

using Action = RequestEnd (*)(const Request&, FileModem, QString&);

/// In the order of Request::Kind.
constexpr Action Actions[] = {connectModem,  disconnectModem, enterPin,   enterPuk,     sendMessage,
                              deleteMessage, sendUssd,        cancelUssd, scanNetworks, registerModem};
static_assert(std::size(Actions) == Request::Register + 1, "an action for each kind");

} // namespace

RequestEnd SimulatedRequest::carryOut(const Request& request, const QString& modem, QString& dialogue,
                                      IniDocument& document)
{
    return Actions[request.kind](request, FileModem(modem, document), dialogue);
}

void SimulatedRequest::deliver(const QString& identifier, IniDocument& document)
{
    const QString section = SimulatorFile::messageSectionOf(identifier);
    if (document.find(section, QStringLiteral("state")))
        document.set(section, QStringLiteral("state"), QStringLiteral("delivered"));
}
