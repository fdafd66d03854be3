#pragma once

#include <optional>

class QCoreApplication;

/// What the user asked for on the command line.
struct CommandLine
{
    bool noSplash = false;
    bool verbose = false; ///< debug lines go to the log

    /// Whether there is an argument that a text answers, for which no display is needed.
    static bool asksForText(int argc, const char* const* argv);

    /// Reads the application's arguments. Answers --help and --version itself and complains of unknown ones.
    /// @param exitCode what to end the program with when nothing is left to do
    /// @return empty when the program shall end
    static std::optional<CommandLine> parse(const QCoreApplication& application, int& exitCode);
};
