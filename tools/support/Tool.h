#pragma once

class QCommandLineParser;
class QString;

/// Start and end of a command-line tool.
namespace Tool {

enum ExitCode { Success = 0, Failure = 1, UsageError = 2 };

/// Prints an error message on standard error, with the tool's name in front.
/// @return the exit code
int fail(const QString& message, ExitCode code);

/// The parts that differ between tools.
struct Description
{
    const char* name;
    void (*defineArguments)(QCommandLineParser& parser); ///< all but --help and --version
    int (*run)(const QCommandLineParser& parser);        ///< does the work; the result is the exit code
};

/// For main(): creates the QCoreApplication, reads the arguments and runs the tool. Does not run the tool for
/// --help, --version and wrong arguments.
/// @return the exit code
int run(int argc, char** argv, const Description& tool);

} // namespace Tool
