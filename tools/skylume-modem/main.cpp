// Attaches and detaches simulated modems, see docs/device-service.md.

#include "Commands.h"
#include "ModemEditor.h"
#include "ModemTable.h"
#include "Options.h"
#include "backends/simulator/SimulatorFile.h"
#include "backends/simulator/SimulatorStore.h"
#include "files/IniDocument.h"
#include "files/KnownFile.h"
#include "files/Places.h"
#include "support/Tool.h"

#include <QCommandLineParser>

#include <cstdio>

using FileAccess::Content;

namespace {

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
    if (!SimulatorStore::change(files, command.mayCreate, edit, error))
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
    const Request request = Options::read(parser);
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
    return Tool::run(argc, argv, {"skylume-modem", Options::define, runTool});
}
