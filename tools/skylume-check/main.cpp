// Checks the files of an installation, and explains which plugins are on, see docs/checking.md.

#include "Checks.h"
#include "Explain.h"
#include "Findings.h"
#include "Installation.h"
#include "support/Tool.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QLoggingCategory>

namespace {

constexpr void (*AllChecks[])(const Installation&, Findings&) = {
    checkLanguageFiles, checkStructure, checkPlugins,  checkLibraries,      checkMenus, checkToolBars,
    checkOperatorTexts, checkUnits,     checkIniFiles, checkLanguageChoice, checkNames, checkSkins,
};

void defineArguments(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Checks the files of installations, and explains which plugins are on.\n\n"
        "  skylume-check DIR...                 checks installations\n"
        "  skylume-check explain DIR [OPTION]   says for each plugin which rule turned it on or off\n\n"
        "The libraries of the plugins are loaded. The exit code is 1 if there are faults, 2 for wrong "
        "arguments\nand for a folder that cannot be read."));
    const auto add = [&parser](const char* name, const char* help, const char* value) {
        parser.addOption({QLatin1String(name), QLatin1String(help), QLatin1String(value)});
    };
    add("device", "With explain: name of the attached modem.", "name");
    add("operator", "With explain: operator instead of the one in defaults.ini.", "name");
    add("imsi", "With explain: IMSI of the SIM card.", "digits");
    add("gid", "With explain: group of the SIM card.", "group");
    parser.addPositionalArgument(QStringLiteral("folder"), QStringLiteral("the application's folder"),
                                 QStringLiteral("[explain] DIR..."));
}

int check(const QStringList& folders)
{
    Faults faults;
    for (const QString& folder : folders) {
        const Installation installation(folder);
        Findings findings;
        for (const auto& runCheck : AllChecks)
            runCheck(installation, findings);
        faults += findings.faults();
    }
    return Tool::report(faults);
}

Situation situationOf(const QCommandLineParser& parser)
{
    const auto value = [&parser](const char* option) {
        return parser.value(QLatin1String(option));
    };
    const bool hasOperator = parser.isSet(QStringLiteral("operator"));
    return {hasOperator ? value("operator") + QLatin1String("") : QString(), value("device"), value("imsi"),
            value("gid")};
}

int runTool(const QCommandLineParser& parser)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*=false")); // what is wrong is reported, not logged
    QStringList folders = parser.positionalArguments();
    const bool isExplaining = folders.value(0) == QLatin1String("explain");
    if (isExplaining)
        folders.removeFirst();
    if (folders.isEmpty() || (isExplaining && folders.size() > 1))
        return Tool::fail(QStringLiteral("the folder of an installation is needed; see --help"),
                          Tool::UsageError);
    if (!isExplaining && !parser.optionNames().isEmpty())
        return Tool::fail(
            QStringLiteral("--%1 belongs to \"explain\"; see --help").arg(parser.optionNames().constFirst()),
            Tool::UsageError);
    for (const QString& folder : qAsConst(folders))
        if (!QFileInfo(folder).isDir() || !QFileInfo(folder).isReadable())
            return Tool::fail(folder + QStringLiteral(": not a folder that can be read"), Tool::UsageError);
    return isExplaining ? explain(folders.first(), situationOf(parser)) : check(folders);
}

} // namespace

int main(int argc, char** argv)
{
    return Tool::run(argc, argv, {"skylume-check", defineArguments, runTool});
}
