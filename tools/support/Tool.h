#pragma once

class QCommandLineParser;
class QString;

/// The frame of a command-line tool: how it is started, and how it ends.
namespace Tool {

enum ExitCode { Success = 0, Failure = 1, UsageError = 2 };

/// Says on standard error what went wrong, with the tool's name in front.
/// @return the exit code
int fail(const QString& message, ExitCode code);

/// A tool's own part.
struct Description
{
    const char* name;
    void (*defineArguments)(QCommandLineParser& parser); ///< all but --help and --version
    int (*run)(const QCommandLineParser& parser);        ///< does the work; the result is the exit code
};

/// What main() does: makes the QCoreApplication and reads the arguments, then runs the tool. --help,
/// --version and arguments that were not defined end the program before.
/// @return the exit code
int run(int argc, char** argv, const Description& tool);

} // namespace Tool
