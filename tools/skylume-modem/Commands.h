#pragma once

class ModemEditor;
class QString;
struct Request;

/// What the tool can do with the simulator's file.
struct Command
{
    const char* name;
    unsigned takes; ///< parts of a request
    unsigned needs;
    bool (*edit)(const Request& request, ModemEditor& editor,
                 QString& error); ///< null: the file is only read
    bool mayCreate = false;       ///< may begin the file
};

/// The command of a request; null if there is none with that name.
const Command* commandOf(const Request& request);

/// What is wrong with the request itself; empty if nothing is.
QString usageError(const Request& request, int argumentCount);
