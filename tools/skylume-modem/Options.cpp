#include "Options.h"

#include <QCommandLineParser>

namespace {

/// An option with the name of a key in the simulator's file.
struct ValueOption
{
    const char* name;
    const char* help;
    const char* value;
};

constexpr ValueOption ModemOptions[] = {
    {"imsi", "IMSI of the SIM.", "digits"},
    {"gid", "Group identifier of the SIM.", "text"},
    {"customize", "Name of the operator customisation.", "name"},
    {"port", "Where the modem is attached.", "name"},
    {"network", "Code of the network in which it is registered, MCC and MNC; empty for none.", "digits"},
    {"signal", "Signal strength, 0 to 100.", "percent"},
    {"receive-rate", "Bytes received per second.", "number"},
    {"send-rate", "Bytes sent per second.", "number"},
    {"received", "Bytes received so far.", "number"},
    {"sent", "Bytes sent so far.", "number"},
    {"answer-time", "How long it takes to read each value of a message.", "milliseconds"},
    {"request-time", "How long it takes to connect, send and so on.", "milliseconds"},
    {"failure",
     "Lets connecting and sending fail: refused, no-coverage, access-point, timeout, permission, full or "
     "failed; empty for success.",
     "reason"},
    {"sim", "State of the SIM: ready, absent, pin, puk, blocked, locked or error.", "state"},
    {"pin-tries", "How many wrong PINs the SIM still accepts.", "number"},
    {"puk-tries", "How many wrong PUKs the SIM still accepts.", "number"},
    {"number", "Telephone number of the SIM.", "number"},
    {"iccid", "Number of the SIM card.", "digits"},
    {"registration", "home, roaming, searching, denied or idle; derived from the network if empty.", "state"},
    {"network-name", "Name of the network.", "name"},
    {"technology", "gsm, gprs, edge, umts, hspa, hspa+, lte or 5g.", "name"},
    {"network-choice", "How the network is chosen: automatic or manual.", "way"},
    {"message-storage", "Where messages are stored: sim, modem or both.", "place"},
    {"manufacturer", "Manufacturer of the modem.", "name"},
    {"firmware", "Version of the modem's firmware.", "text"},
    {"imei", "Serial number of the modem.", "digits"},
    {"state.reason", "Why a modem has failed: sim-error, no-profile, capabilities or unknown.", "reason"},
};
constexpr ValueOption MessageOptions[] = {
    {"sender", "Sender of the message.", "number"},
    {"text", "Text of the message.", "text"},
};

template <std::size_t size>
QMap<QString, QString> givenValues(const QCommandLineParser& parser, const ValueOption (&options)[size])
{
    QMap<QString, QString> values;
    for (const ValueOption& option : options) {
        const QString name = QLatin1String(option.name);
        if (parser.isSet(name))
            values.insert(name, parser.value(name));
    }
    return values;
}

} // namespace

void Options::define(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Attaches and detaches simulated modems, even while applications are running.\n\n"
        "  attach MODEL     attaches the modem with that name or model; adds one if there is none\n"
        "  detach [MODEM]   detaches a modem; without MODEM the only attached one\n"
        "  reject [MODEM]   rejects a modem, as an operator lock does; without MODEM the only attached "
        "one\n"
        "  fail [MODEM]     lets a modem fail\n"
        "  set [MODEM]      changes values of a modem; without MODEM the only attached one\n"
        "  lock [MODEM]     locks the SIM with the PIN that it reads from standard input\n"
        "  connect [MODEM]  connects a modem, as another program would\n"
        "  disconnect [MODEM]  disconnects a modem, as another program would\n"
        "  message [MODEM]  sends a text message to a modem; without MODEM to the only attached one\n"
        "  list             lists all known modems\n\n"
        "MODEM is a modem's name or model; upper and lower case are the same."));
    const auto add = [&](const char* name, const QByteArray& help, const char* value) {
        parser.addOption({QLatin1String(name), QLatin1String(help), QLatin1String(value)});
    };
    add("file", "Simulator file to use instead of the user's.", "path");
    add("name", "With attach: name of the modem, if there are several of one model.", "name");
    for (const ValueOption& option : ModemOptions)
        add(option.name, "With attach and set: " + QByteArray(option.help), option.value);
    for (const ValueOption& option : MessageOptions)
        add(option.name, "With message: " + QByteArray(option.help), option.value);
    parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("one of the commands above"));
    parser.addPositionalArgument(QStringLiteral("modem"), QStringLiteral("what the command is about"),
                                 QStringLiteral("[modem]"));
}

Request Options::read(const QCommandLineParser& parser)
{
    const QStringList arguments = parser.positionalArguments();
    return {arguments.value(0), arguments.value(1), parser.value(QStringLiteral("name")),
            givenValues(parser, ModemOptions), givenValues(parser, MessageOptions)};
}
