#pragma once

class QString;

/// Texts for the one who started the program: on standard output or standard error. Where a program with
/// windows has neither (on Windows, when it was started from a menu or a folder), a box shows the text until
/// it is closed.
namespace UserMessage {

/// An answer that was asked for.
void tell(const QString& text);

/// Why the program does not do what was asked.
void complain(const QString& text);

} // namespace UserMessage
