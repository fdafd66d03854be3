#pragma once

#include <QByteArray>
#include <QString>

#include <string_view>

/// How strings are written in INI files.
///
/// The format of QSettings is not used: in values written by hand it interprets commas, quotes and percent
/// signs, and it loses unpaired surrogates. Here only a backslash is special. It starts one of the escapes
/// \\ \n \r \t \s (a space) and \uHHHH (a UTF-16 code unit); any other backslash stands for itself.
namespace IniText {

/// Where a string is written, which determines the characters to escape.
enum class Place { Section, Key, Value };

/// The string in UTF-8 for that place: on one line, and with spaces at its ends escaped.
QByteArray escaped(const QString& text, Place place);

/// The bytes without spaces and tabs at both ends. Other white space is part of the string.
std::string_view trimmed(std::string_view bytes);

/// Reads a trimmed part of a line. Returns false if it is not valid UTF-8 or contains a zero. `text` is never
/// null afterwards.
bool read(std::string_view bytes, QString& text);

} // namespace IniText
