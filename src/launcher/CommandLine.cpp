#include "CommandLine.h"

#include "UserMessage.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace {

constexpr const char* HelpOrVersionOptions[] = {"-h", "--help", "-v", "--version"};

} // namespace

bool CommandLine::asksForHelpOrVersion(int argc, const char* const* argv)
{
    return std::any_of(argv, argv + argc, [](const char* argument) {
        return std::any_of(std::begin(HelpOrVersionOptions), std::end(HelpOrVersionOptions),
                           [&](const char* option) { return qstrcmp(argument, option) == 0; });
    });
}

std::optional<CommandLine> CommandLine::parse(const QCoreApplication& application, int& exitCode)
{
    const QCommandLineOption background(
        QStringLiteral("background"),
        QStringLiteral("Start in the notification area if closing the window hides it there."));
    const QCommandLineOption noSplash(QStringLiteral("no-splash"),
                                      QStringLiteral("Start without the splash screen."));
    const QCommandLineOption several(QStringLiteral("several"),
                                     QStringLiteral("Start even if the application is running."));
    const QCommandLineOption verbose(QStringLiteral("verbose"),
                                     QStringLiteral("Write debug lines to the log."));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Connection manager for mobile-broadband modems."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    const QCommandLineOption version = parser.addVersionOption();
    parser.addOptions({help, background, noSplash, several, verbose});

    exitCode = EXIT_SUCCESS;
    if (!parser.parse(application.arguments())) {
        exitCode = EXIT_FAILURE;
        UserMessage::reportError(parser.errorText() + QLatin1Char('\n'));
    } else if (parser.isSet(help)) {
        UserMessage::inform(parser.helpText());
    } else if (parser.isSet(version)) {
        UserMessage::inform(QCoreApplication::applicationName() + QLatin1Char(' ') +
                            QCoreApplication::applicationVersion() + QLatin1Char('\n'));
    } else if (const QStringList others = parser.positionalArguments(); !others.isEmpty()) {
        exitCode = EXIT_FAILURE;
        UserMessage::reportError(QStringLiteral("Unexpected argument '%1'.\n").arg(others.first()));
    } else {
        return CommandLine{parser.isSet(noSplash) || parser.isSet(background), parser.isSet(several),
                           parser.isSet(verbose)};
    }
    return std::nullopt;
}
