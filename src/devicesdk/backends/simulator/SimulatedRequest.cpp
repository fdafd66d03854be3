#include "backends/simulator/SimulatedRequest.h"

#include "backends/simulator/SimulatorFile.h"
#include "files/IniDocument.h"
#include "qrvl.h"

#include <QDateTime>

#include <algorithm>
#include <iterator>

namespace {

constexpr int PinTries = 3;
constexpr int PukTries = 10;

/// The modem of a request, in the simulator's file.
class FileModem
{
public:
    FileModem(const QString& name, IniDocument& document)
        : m_name(name)
        , m_section(SimulatorFile::sectionOf(name))
        , m_document(document)
    {
    }

    const QString& name() const { return m_name; }
    QString value(const char* key, const QString& fallback = {}) const
    {
        const QString* const found = m_document.find(m_section, QLatin1String(key));
        return found && !found->isEmpty() ? *found : fallback;
    }
    int number(const char* key, int fallback) const { return value(key, QString::number(fallback)).toInt(); }
    void set(const char* key, const QString& value) { m_document.set(m_section, QLatin1String(key), value); }
    void set(const char* key, int value) { set(key, QString::number(value)); }

    QString sim() const
    {
        return value("sim", value("imsi").isEmpty() ? QStringLiteral("absent") : QStringLiteral("ready"));
    }
    IniDocument& document() { return m_document; }

private:
    QString m_name;
    QString m_section;
    IniDocument& m_document;
};

/// Why nothing can be done that needs the network; QRVL_OK if it can.
long networkResult(const FileModem& modem)
{
    const QString sim = modem.sim();
    if (sim == QLatin1String("absent") || sim == QLatin1String("error"))
        return QRVL_ERROR_NO_SIM;
    if (sim != QLatin1String("ready"))
        return QRVL_ERROR_LOCKED;
    if (modem.value("network").isEmpty())
        return QRVL_ERROR_NO_COVERAGE;
    return SimulatorFile::failureOf(modem.value("failure"));
}

RequestEnd ended(const Request& request, long result, const QString& text = {})
{
    return {request.number, result, text};
}

bool isRoaming(const QString& imsi, const QString& network)
{
    return !imsi.startsWith(network);
}

RequestEnd connectModem(const Request& request, FileModem modem, QString&)
{
    if (modem.value("connection") == QLatin1String("connected"))
        return ended(request, QRVL_OK);
    long result = networkResult(modem);
    if (result == QRVL_OK && request.isHomeOnly && isRoaming(modem.value("imsi"), modem.value("network")))
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
    const long result = tryCode(modem, request.secret, pin, "pin-tries", PinTries, "puk");
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
    const long result = tryCode(modem, request.secret, puk, "puk-tries", PukTries, "blocked");
    if (result == QRVL_OK) {
        modem.set("sim", QStringLiteral("ready"));
        modem.set("pin", request.newPin.view().toString()); // this is the SIM
        modem.set("pin-tries", PinTries);
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

using Action = RequestEnd (*)(const Request&, FileModem, QString&);

/// In the order of Request::Kind.
constexpr Action Actions[] = {connectModem, disconnectModem, enterPin, enterPuk,
                              sendMessage,  deleteMessage,   sendUssd, cancelUssd};

QString registrationOf(const Modem& modem)
{
    const QString network = modem.status.value(QStringLiteral("network"));
    if (network.isEmpty())
        return QStringLiteral("searching");
    return isRoaming(modem.imsi, network) ? QStringLiteral("roaming") : QStringLiteral("home");
}

/// Without its SIM a modem knows neither the user nor a network.
void hideSim(Modem& modem)
{
    modem.imsi.clear();
    modem.gid.clear();
    for (const char* const key : {"network", "network-name", "number", "iccid", "technology"})
        modem.status.remove(QLatin1String(key));
    modem.status[QStringLiteral("registration")] = QStringLiteral("idle");
    modem.status[QStringLiteral("connection")] = QStringLiteral("disconnected");
}

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

void SimulatedRequest::completeValues(Modem& modem)
{
    const bool isHidden =
        modem.status.value(QStringLiteral("sim"), QStringLiteral("ready")) != QLatin1String("ready");
    if (isHidden || modem.status.value(QStringLiteral("connection")) == QLatin1String("disconnected")) {
        modem.status.remove(QStringLiteral("receive-rate"));
        modem.status.remove(QStringLiteral("send-rate"));
    }
    const auto fallBack = [&](const char* key, const QString& value) {
        if (!modem.status.contains(QLatin1String(key)))
            modem.status.insert(QLatin1String(key), value);
    };
    modem.status.insert(QStringLiteral("state"), modem.state == Modem::Attached
                                                     ? QStringLiteral("available")
                                                     : SimulatorFile::stateText(modem.state));
    fallBack("sim", modem.imsi.isEmpty() ? QStringLiteral("absent") : QStringLiteral("ready"));
    fallBack("pin-tries", QString::number(PinTries));
    fallBack("puk-tries", QString::number(PukTries));
    fallBack("registration", registrationOf(modem));
    fallBack("ussd", QStringLiteral("idle"));
    const bool isOnline = modem.status.contains(QStringLiteral("network"));
    fallBack("connection", isOnline ? QStringLiteral("connected") : QStringLiteral("disconnected"));
    if (isHidden)
        hideSim(modem);
}
