#pragma once

#include <QByteArray>
#include <QString>

#include <string_view>

/// How texts are written in INI files.
///
/// QSettings' own INI format is not used: it gives commas, quotes and percent signs in hand-written values a
/// meaning, and unpaired surrogates do not survive it. Here everything is plain text but a backslash, which
/// starts one of the escapes \\ \n \r \t \s (a blank) and \uHHHH (a UTF-16 unit). Any other backslash stands
/// for itself.
namespace IniText {

/// Where a text is to be written; decides which characters need an escape.
enum class Place { Section, Key, Value };

/// The text as UTF-8 for that place, on one line, with all its blanks safe from trimming.
QByteArray escaped(const QString& text, Place place);

/// The bytes without blanks and tabs at both ends. Other kinds of white space belong to a text.
std::string_view trimmed(std::string_view bytes);

/// Reads a trimmed piece of a line. False when it is no valid UTF-8, or holds a zero. The text is never null.
bool read(std::string_view bytes, QString& text);

} // namespace IniText
