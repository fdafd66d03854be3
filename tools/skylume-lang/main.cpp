// Checks language files and converts them to Qt Linguist's format and back, see docs/languages.md.

#include "Change/LanguageFiles.h"
#include "LanguageCheck.h"
#include "LanguageFile.h"
#include "LinguistFile.h"
#include "support/Tool.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QSaveFile>

namespace {

struct Request
{
    QString command;
    QStringList paths;
    QString reference;     ///< language code
    QStringList languages; ///< codes of those that every plugin must have
    QString output;        ///< path; empty for the default
};

void defineArguments(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Checks language files and converts them to Qt Linguist's format and back.\n\n"
        "  check PATH...    checks files and whole folders\n"
        "  to-ts FILE       makes PLUGIN_LANGUAGE.ts from PLUGIN_LANGUAGE.lang, which need not "
        "exist yet;\n"
        "                   the reference is taken from the same folder\n"
        "  from-ts FILE     makes PLUGIN_LANGUAGE.lang from PLUGIN_LANGUAGE.ts\n\n"
        "The exit code is 1 if there are faults, 2 for wrong arguments."));
    const auto add = [&](const char* name, const char* help, const char* value, const char* usual = "") {
        parser.addOption(
            {QLatin1String(name), QLatin1String(help), QLatin1String(value), QLatin1String(usual)});
    };
    add("reference", "Language that the others are compared with.", "code", LanguageFiles::Fallback.data());
    add("languages", "With check: languages that every plugin must have, separated by commas.", "codes");
    add("output", "File that a conversion writes.", "file");
    parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("check, to-ts or from-ts"));
    parser.addPositionalArgument(QStringLiteral("path"), QStringLiteral("file or folder"),
                                 QStringLiteral("path..."));
}

QString siblingFile(const LanguageFile& file, const QString& language, const QString& suffix)
{
    return QStringLiteral("%1/%2_%3.%4").arg(QFileInfo(file.path).path(), file.plugin, language, suffix);
}

/// Writes a file, or leaves the previous one unchanged on failure.
template <typename Write>
int save(const QString& path, const Write& write)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return Tool::fail(path + QStringLiteral(": ") + file.errorString(), Tool::Failure);
    write(file);
    return file.commit() ? Tool::Success
                         : Tool::fail(path + QStringLiteral(": ") + file.errorString(), Tool::Failure);
}

int check(const Request& request)
{
    return Tool::report(checkLanguages(request.paths, request.reference, request.languages));
}

int toLinguist(const Request& request)
{
    Faults faults;
    const QString path = request.paths.first();
    const LanguageFile file =
        QFileInfo::exists(path) ? LanguageFile::read(path, faults) : LanguageFile::named(path);
    const LanguageFile reference =
        LanguageFile::read(siblingFile(file, request.reference, QStringLiteral("lang")), faults);
    if (!faults.isEmpty())
        return Tool::report(faults);
    const QString output = siblingFile(file, file.language, QStringLiteral("ts"));
    return save(request.output.isEmpty() ? output : request.output,
                [&](QIODevice& device) { LinguistFile::write(device, file, reference); });
}

int fromLinguist(const Request& request)
{
    Faults faults;
    LanguageFile file = LanguageFile::named(request.paths.first());
    if (file.plugin.isEmpty() && request.output.isEmpty())
        return Tool::fail(file.path + QStringLiteral(": not named PLUGIN_LANGUAGE.ts, so --output is needed"),
                          Tool::UsageError);
    QFile input(file.path);
    if (!input.open(QIODevice::ReadOnly))
        return Tool::fail(file.path + QStringLiteral(": ") + input.errorString(), Tool::Failure);
    LinguistFile::read(input, file, faults);
    if (!faults.isEmpty())
        return Tool::report(faults);
    const QString output = siblingFile(file, file.language, QStringLiteral("lang"));
    return save(request.output.isEmpty() ? output : request.output,
                [&file](QIODevice& device) { file.write(device); });
}

struct Command
{
    const char* name;
    bool takesSeveral; ///< paths
    int (*run)(const Request&);
};

constexpr Command Commands[] = {
    {"check", true, check},
    {"to-ts", false, toLinguist},
    {"from-ts", false, fromLinguist},
};

Request readRequest(const QCommandLineParser& parser)
{
    const QStringList arguments = parser.positionalArguments();
    const QString languages = parser.value(QStringLiteral("languages"));
    return {arguments.value(0), arguments.mid(1), parser.value(QStringLiteral("reference")),
            languages.split(QLatin1Char(','), Qt::SkipEmptyParts), parser.value(QStringLiteral("output"))};
}

int runTool(const QCommandLineParser& parser)
{
    const Request request = readRequest(parser);
    for (const Command& command : Commands) {
        if (request.command != QLatin1String(command.name))
            continue;
        if (request.paths.isEmpty() || (request.paths.size() > 1 && !command.takesSeveral))
            return Tool::fail(QStringLiteral("\"%1\" needs %2; see --help")
                                  .arg(request.command, command.takesSeveral ? QStringLiteral("paths")
                                                                             : QStringLiteral("one file")),
                              Tool::UsageError);
        return command.run(request);
    }
    return Tool::fail(QStringLiteral("there is no command \"%1\"; see --help").arg(request.command),
                      Tool::UsageError);
}

} // namespace

int main(int argc, char** argv)
{
    return Tool::run(argc, argv, {"skylume-lang", defineArguments, runTool});
}
