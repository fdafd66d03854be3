#pragma once

#include <optional>

class QCoreApplication;

/// What the user asked for on the command line.
struct CommandLine
{
    bool noSplash = false; ///< also when the desktop starts the application
    bool several = false;  ///< start even if the application is running
    bool verbose = false;  ///< write debug lines to the log

    /// Whether the arguments only ask for help or the version, which needs no display.
    static bool asksForHelpOrVersion(int argc, const char* const* argv);

    /// Reads the application's arguments. Handles --help and --version and reports unknown arguments.
    /// @param exitCode receives the program's exit code when the result is empty
    /// @return empty when there is nothing left to do
    static std::optional<CommandLine> parse(const QCoreApplication& application, int& exitCode);
};
