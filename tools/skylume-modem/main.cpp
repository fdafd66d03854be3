// Plugs simulated modems in and out, see docs/device-service.md.

#include "ModemEditor.h"
#include "files/FileAccess.h"
#include "files/Places.h"
#include "simulator/SimulatorFile.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>

using namespace std::chrono_literals;
using FileAccess::Content;

namespace {

enum ExitCode { Success = 0, Failure = 1, UsageError = 2 };

constexpr auto kLockPatience = 5s;

/// Options of "attach" that are keys of the simulator's file too.
const QStringList kValueOptions = {QStringLiteral("imsi"), QStringLiteral("gid"), QStringLiteral("customize"),
                                   QStringLiteral("port")};

struct Request
{
    QString command;
    QString modem;
    QString newName;
    QMap<QString, QString> values;
};

struct Command
{
    const char* name;
    bool needsModem;
    bool takesModem;
    bool takesValues;
};

constexpr Command kCommands[] = {
    {"attach", true, true, true},
    {"detach", false, true, false},
    {"reject", false, true, false},
    {"list", false, false, false},
};

void defineArguments(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Plugs simulated modems in and out, also while applications run.\n\n"
        "  attach MODEL     attaches a modem: the known one of that name or model, else a new one\n"
        "  detach [MODEM]   takes a modem away; without MODEM the only attached one\n"
        "  reject [MODEM]   makes a modem refused, as by an operator lock; without MODEM the only attached "
        "one\n"
        "  list             lists all known modems\n\n"
        "MODEM is a modem's name or model; upper and lower case are the same."));
    parser.addHelpOption();
    parser.addVersionOption();
    const auto add = [&](const char* name, const char* help, const char* value) {
        parser.addOption({QLatin1String(name), QLatin1String(help), QLatin1String(value)});
    };
    add("file", "The simulator's file, instead of the user's.", "path");
    add("name", "With attach: name of the modem, for several of one model.", "name");
    add("imsi", "With attach: IMSI of the SIM.", "digits");
    add("gid", "With attach: group identifier of the SIM.", "text");
    add("customize", "With attach: name of the operator customisation.", "name");
    add("port", "With attach: where the modem is plugged in.", "name");
    parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("attach, detach, reject or list"));
    parser.addPositionalArgument(QStringLiteral("modem"), QStringLiteral("what the command is about"),
                                 QStringLiteral("[modem]"));
}

/// What is wrong with the request as such; empty when nothing is.
QString usageError(const Request& request, int argumentCount)
{
    const auto* const command =
        std::find_if(std::begin(kCommands), std::end(kCommands),
                     [&](const Command& c) { return request.command == QLatin1String(c.name); });
    if (command == std::end(kCommands))
        return request.command.isEmpty() ? QStringLiteral("a command is missing")
                                         : QStringLiteral("there is no command \"%1\"").arg(request.command);
    if (command->needsModem && request.modem.isEmpty())
        return QStringLiteral("\"%1\" needs a modem").arg(request.command);
    if (argumentCount > (command->takesModem ? 2 : 1))
        return QStringLiteral("\"%1\" has too many arguments").arg(request.command);
    if (!command->takesValues && !(request.values.isEmpty() && request.newName.isEmpty()))
        return QStringLiteral("\"%1\" cannot change a modem's values").arg(request.command);
    return {};
}

Request readRequest(const QCommandLineParser& parser)
{
    const QStringList arguments = parser.positionalArguments();
    Request request{arguments.value(0), arguments.value(1), parser.value(QStringLiteral("name")), {}};
    for (const QString& option : kValueOptions) {
        if (parser.isSet(option))
            request.values.insert(option, parser.value(option));
    }
    return request;
}

void printModems(const Modems& modems)
{
    std::puts("NAME\tMODEL\tSTATE\tIMSI\tGID\tCUSTOMIZE\tPORT");
    for (const Modem& modem : modems) {
        const QStringList columns = {modem.name, modem.model, SimulatorFile::stateText(modem.state),
                                     modem.imsi, modem.gid,   modem.customize,
                                     modem.port};
        std::puts(columns.join(QLatin1Char('\t')).toLocal8Bit().constData());
    }
}

bool carryOut(const Request& request, ModemEditor& editor, QString& error)
{
    if (request.command == QLatin1String("attach"))
        return editor.attach(request.modem, request.newName, request.values, error);
    const bool isRejection = request.command == QLatin1String("reject");
    return editor.setState(request.modem, isRejection ? Modem::Rejected : Modem::Detached, error);
}

/// Reads the first of the files that exists and, but for "list", writes the first of all.
bool run(const Request& request, const QStringList& files, QString& error)
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
    if (content.status == Content::Missing && request.command != QLatin1String("attach")) {
        error = QStringLiteral("there is no such file");
        return false;
    }
    ModemEditor editor(content.bytes, error);
    if (!error.isEmpty())
        return false;
    if (request.command == QLatin1String("list")) {
        printModems(editor.modems());
        return true;
    }
    return carryOut(request, editor, error) && FileAccess::replace(files.first(), editor.toBytes(), error);
}

bool runLocked(const Request& request, const QStringList& files, QString& error)
{
    if (request.command == QLatin1String("list"))
        return run(request, files, error);
    FileAccess::ProcessLock lock(files.first());
    if (lock.lock(kLockPatience))
        return run(request, files, error);
    error = lock.errorString();
    return false;
}

int fail(const QString& message, ExitCode code)
{
    std::fprintf(stderr, "skylume-modem: %s\n", message.toLocal8Bit().constData());
    return code;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("skylume-modem"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SKYLUME_VERSION));
    QCommandLineParser parser;
    defineArguments(parser);
    if (!parser.parse(QCoreApplication::arguments()))
        return fail(parser.errorText(), UsageError);
    parser.process(application); // now only for --help and --version
    const Request request = readRequest(parser);
    QString error = usageError(request, parser.positionalArguments().size());
    if (!error.isEmpty())
        return fail(error + QStringLiteral("; see --help"), UsageError);
    const QString file = parser.value(QStringLiteral("file"));
    const QStringList files = file.isEmpty() ? Places::simulatorFiles() : QStringList(file);
    if (!runLocked(request, files, error))
        return fail(files.first() + QStringLiteral(": ") + error, Failure);
    return Success;
}
