// Attaches and detaches simulated modems, see docs/device-service.md.

#include "ModemEditor.h"
#include "ModemTable.h"
#include "files/FileAccess.h"
#include "files/Places.h"
#include "simulator/SimulatorFile.h"
#include "support/Tool.h"

#include <QCommandLineParser>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>

using namespace std::chrono_literals;
using FileAccess::Content;

namespace {

constexpr auto LockPatience = 5s;

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
    {"set", ModemPart | ValuesPart, ValuesPart, setValues},
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
        "  set [MODEM]      changes values of a modem; without MODEM the only attached one\n"
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
    parser.addPositionalArgument(QStringLiteral("command"),
                                 QStringLiteral("attach, detach, reject, set, message or list"));
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

/// Reads the first of the files that exists. If the command changes something, writes the first file.
bool run(const Command& command, const Request& request, const QStringList& files, QString& error)
{
    const auto exists = [](const QString& file) {
        return QFileInfo::exists(file);
    };
    const auto found = std::find_if(files.begin(), files.end(), exists);
    const Content content = FileAccess::read(found == files.end() ? files.first() : *found);
    if (content.status == Content::Unreadable) {
        error = QStringLiteral("it cannot be read");
        return false;
    }
    if (content.status == Content::Missing && command.edit != attach) {
        error = QStringLiteral("there is no such file");
        return false;
    }
    ModemEditor editor(content.bytes, error);
    if (!error.isEmpty())
        return false;
    if (!command.edit) {
        print(modemTable(editor.modems()));
        return true;
    }
    if (!command.edit(request, editor, error))
        return false;
    const QByteArray changed = editor.toBytes();
    const ModemEditor check(changed, error); // finds invalid values
    if (!error.isEmpty() || !FileAccess::replace(files.first(), changed, error))
        return false;
    if (check.modems().size() > editor.modems().size()) // perhaps the name was mistyped
        print(QStringLiteral("\"%1\" is a new modem\n").arg(check.modems().last().name));
    return true;
}

bool runLocked(const Command& command, const Request& request, const QStringList& files, QString& error)
{
    if (!command.edit)
        return run(command, request, files, error);
    FileAccess::ProcessLock lock(files.first());
    if (lock.lock(LockPatience))
        return run(command, request, files, error);
    error = lock.errorString();
    return false;
}

int runTool(const QCommandLineParser& parser)
{
    const Request request = readRequest(parser);
    QString error = usageError(request, parser.positionalArguments().size());
    if (!error.isEmpty())
        return Tool::fail(error + QStringLiteral("; see --help"), Tool::UsageError);
    const QString file = parser.value(QStringLiteral("file"));
    const QStringList files = file.isEmpty() ? Places::simulatorFiles() : QStringList(file);
    if (!runLocked(*commandOf(request), request, files, error))
        return Tool::fail(files.first() + QStringLiteral(": ") + error, Tool::Failure);
    return Tool::Success;
}

} // namespace

int main(int argc, char** argv)
{
    return Tool::run(argc, argv, {"skylume-modem", defineArguments, runTool});
}
