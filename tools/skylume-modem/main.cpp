// Attaches and detaches simulated modems, see docs/device-service.md.

#include "ModemEditor.h"
#include "ModemTable.h"
#include "backends/simulator/SimulatorFile.h"
#include "backends/simulator/SimulatorStore.h"
#include "files/IniDocument.h"
#include "files/KnownFile.h"
#include "files/Places.h"
#include "qrvl.h"
#include "support/Tool.h"

#include <QCommandLineParser>
#include <QDateTime>
#include <QFile>

#include <algorithm>
#include <cstdio>

using FileAccess::Content;

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
    {"manufacturer", "Manufacturer of the modem.", "name"},
    {"firmware", "Version of the modem's firmware.", "text"},
    {"imei", "Serial number of the modem.", "digits"},
    {"state.reason", "Why a modem has failed: sim-error, no-profile, capabilities or unknown.", "reason"},
};
constexpr ValueOption MessageOptions[] = {
    {"sender", "Sender of the message.", "number"},
    {"text", "Text of the message.", "text"},
};

struct Request
{
    QString command;
    QString modem;
    QString newName;
    QMap<QString, QString> values;  ///< of the modem
    QMap<QString, QString> message; ///< values of a message
};

/// What a request can consist of. Combined as bits.
enum Part : unsigned { ModemPart = 1, NamePart = 2, ValuesPart = 4, MessagePart = 8 };

struct PartWords
{
    Part part;
    const char* missing;
    const char* surplus;
};

constexpr PartWords PartNames[] = {
    {ModemPart, "a modem", "modem"},
    {NamePart, "a name", "name"},
    {ValuesPart, "values", "values"},
    {MessagePart, "a message", "message"},
};

unsigned partsOf(const Request& request)
{
    return (request.modem.isEmpty() ? 0U : ModemPart) | (request.newName.isEmpty() ? 0U : NamePart) |
           (request.values.isEmpty() ? 0U : ValuesPart) | (request.message.isEmpty() ? 0U : MessagePart);
}

bool attach(const Request& request, ModemEditor& editor, QString& error)
{
    return editor.attach(request.modem, request.newName, request.values, error);
}

template <Modem::State state>
bool setState(const Request& request, ModemEditor& editor, QString& error)
{
    return editor.setState(request.modem, state, error);
}

bool setValues(const Request& request, ModemEditor& editor, QString& error)
{
    return editor.setValues(request.modem, request.values, error);
}

/// The PIN is read from standard input, because other users can see the arguments of a process.
bool lockSim(const Request& request, ModemEditor& editor, QString& error)
{
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return false;
    const QString pin = QString::fromLatin1(input.readLine().trimmed());
    if (pin.isEmpty()) {
        error = QStringLiteral("write the PIN to the standard input");
        return false;
    }
    return editor.setValues(request.modem,
                            {{QStringLiteral("sim"), QStringLiteral("pin")},
                             {QStringLiteral("pin"), pin},
                             {QStringLiteral("pin-tries"), QString()},
                             {QStringLiteral("puk-tries"), QString()}},
                            error);
}

/// As if another program had done it.
template <bool isConnected>
bool setConnection(const Request& request, ModemEditor& editor, QString& error)
{
    const QString since = QString::number(QDateTime::currentSecsSinceEpoch());
    return editor.setValues(request.modem,
                            {{QStringLiteral("connection"),
                              isConnected ? QStringLiteral("connected") : QStringLiteral("disconnected")},
                             {QStringLiteral("connection.since"), isConnected ? since : QString()},
                             {QStringLiteral("connection.error"),
                              isConnected ? QString() : QString::number(QRVL_ERROR_CANCELLED)}},
                            error);
}

bool addMessage(const Request& request, ModemEditor& editor, QString& error)
{
    return editor.addMessage(request.modem, request.message, error);
}

struct Command
{
    const char* name;
    unsigned takes;
    unsigned needs;
    bool (*edit)(const Request& request, ModemEditor& editor,
                 QString& error); ///< null: the file is only read
};

constexpr Command Commands[] = {
    {"attach", ModemPart | NamePart | ValuesPart, ModemPart, attach},
    {"detach", ModemPart, 0, setState<Modem::Detached>},
    {"reject", ModemPart, 0, setState<Modem::Rejected>},
    {"fail", ModemPart, 0, setState<Modem::Failed>},
    {"set", ModemPart | ValuesPart, ValuesPart, setValues},
    {"lock", ModemPart, 0, lockSim},
    {"connect", ModemPart, 0, setConnection<true>},
    {"disconnect", ModemPart, 0, setConnection<false>},
    {"message", ModemPart | MessagePart, MessagePart, addMessage},
    {"list", 0, 0, nullptr},
};

const Command* commandOf(const Request& request)
{
    const auto* const found =
        std::find_if(std::begin(Commands), std::end(Commands),
                     [&](const Command& command) { return request.command == QLatin1String(command.name); });
    return found == std::end(Commands) ? nullptr : found;
}

void defineArguments(QCommandLineParser& parser)
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

/// What is wrong with the request itself; empty if nothing is.
QString usageError(const Request& request, int argumentCount)
{
    if (request.command.isEmpty())
        return QStringLiteral("a command is missing");
    const Command* const command = commandOf(request);
    if (!command)
        return QStringLiteral("there is no command \"%1\"").arg(request.command);
    if (argumentCount > 2)
        return QStringLiteral("\"%1\" has too many arguments").arg(request.command);
    const unsigned given = partsOf(request);
    for (const PartWords& words : PartNames) {
        if ((command->needs & ~given & words.part) != 0)
            return QStringLiteral("\"%1\" needs %2").arg(request.command, QLatin1String(words.missing));
        if ((given & ~command->takes & words.part) != 0)
            return QStringLiteral("\"%1\" takes no %2").arg(request.command, QLatin1String(words.surplus));
    }
    return {};
}

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

Request readRequest(const QCommandLineParser& parser)
{
    const QStringList arguments = parser.positionalArguments();
    return {arguments.value(0), arguments.value(1), parser.value(QStringLiteral("name")),
            givenValues(parser, ModemOptions), givenValues(parser, MessageOptions)};
}

void print(const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), stdout);
}

/// Reads the first of the files that exists.
bool list(const QStringList& files, QString& error)
{
    const Content content = KnownFile(files).look().value_or(Content());
    if (content.status != Content::Read) {
        error = content.status == Content::Missing ? QStringLiteral("there is no such file")
                                                   : QStringLiteral("it cannot be read");
        return false;
    }
    QStringList errors;
    const Modems modems = SimulatorFile::read(IniDocument(content.bytes), errors);
    error = errors.value(0);
    if (errors.isEmpty())
        print(modemTable(modems));
    return errors.isEmpty();
}

bool change(const Command& command, const Request& request, const QStringList& files, QString& error)
{
    QString newModem; // perhaps its name was mistyped
    const auto edit = [&](IniDocument& document, QString& reason) {
        ModemEditor editor(document);
        const int before = editor.modems().size();
        if (!command.edit(request, editor, reason))
            return false;
        const Modems after = ModemEditor(document).modems();
        newModem = after.size() > before ? after.last().name : QString();
        return true;
    };
    if (!SimulatorStore::change(files, command.edit == attach, edit, error))
        return false;
    if (!newModem.isEmpty())
        print(QStringLiteral("\"%1\" is a new modem\n").arg(newModem));
    return true;
}

bool run(const Command& command, const Request& request, const QStringList& files, QString& error)
{
    return command.edit ? change(command, request, files, error) : list(files, error);
}

int runTool(const QCommandLineParser& parser)
{
    const Request request = readRequest(parser);
    QString error = usageError(request, parser.positionalArguments().size());
    if (!error.isEmpty())
        return Tool::fail(error + QStringLiteral("; see --help"), Tool::UsageError);
    const QString file = parser.value(QStringLiteral("file"));
    const QStringList files = file.isEmpty() ? Places::simulatorFiles() : QStringList(file);
    if (!run(*commandOf(request), request, files, error))
        return Tool::fail(files.first() + QStringLiteral(": ") + error, Tool::Failure);
    return Tool::Success;
}

} // namespace

int main(int argc, char** argv)
{
    return Tool::run(argc, argv, {"skylume-modem", defineArguments, runTool});
}
