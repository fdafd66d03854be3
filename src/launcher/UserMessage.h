#pragma once

class QString;

/// Messages for the person who started the program, on standard output or standard error. On Windows a
/// program started from a menu or a folder has neither; inform() and reportError() then show the message in a box
/// and wait until it is closed.
namespace UserMessage {

/// Output that the user requested. On standard output.
void inform(const QString& text);

/// The reason why a request cannot be fulfilled. On standard error.
void reportError(const QString& text);

/// Something that does not keep the program from working. On standard error; never shown in a box.
void note(const QString& text);

} // namespace UserMessage
