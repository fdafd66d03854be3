#include "support/Tool.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

int Tool::fail(const QString& message, ExitCode code)
{
    std::fprintf(stderr, "%s: %s\n", qPrintable(QCoreApplication::applicationName()), qPrintable(message));
    return code;
}

int Tool::run(int argc, char** argv, const Description& tool)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QLatin1String(tool.name));
    QCoreApplication::setApplicationVersion(QStringLiteral(SKYLUME_VERSION));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addVersionOption();
    tool.defineArguments(parser);
    if (!parser.parse(QCoreApplication::arguments()))
        return fail(parser.errorText(), UsageError);
    parser.process(application); // handles --help and --version
    return tool.run(parser);
}
