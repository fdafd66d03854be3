#pragma once

class QCoreApplication;

/// What the user asked for on the command line.
struct CommandLine
{
    bool noSplash = false;
    bool verbose = false; ///< debug lines go to the log

    /// Reads the application's arguments. Answers --help and --version itself and ends the program; so it
    /// does, with an error, for an option it does not know.
    static CommandLine parse(const QCoreApplication& application);
};
