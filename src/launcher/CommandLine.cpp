#include "CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>

CommandLine CommandLine::parse(const QCoreApplication& application)
{
    const QCommandLineOption noSplash(QStringLiteral("no-splash"),
                                      QStringLiteral("Start without the splash screen."));
    const QCommandLineOption verbose(QStringLiteral("verbose"),
                                     QStringLiteral("Write debug lines to the log."));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Connection manager for mobile-broadband modems."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({noSplash, verbose});
    parser.process(application);
    return {parser.isSet(noSplash), parser.isSet(verbose)};
}
