#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

/// How texts are written in INI files.
///
/// QSettings' own INI format is not used: it gives commas, quotes and percent signs in hand-written values a
/// meaning, and unpaired surrogates do not survive it. Here everything is plain text but a backslash, which
/// starts one of the escapes \\ \n \r \t \s (a blank) and \uXXXX (a UTF-16 unit). Any other backslash stands
/// for itself.
namespace IniText {

/// Where a text is to be written; decides which characters need an escape.
enum class Place { Section, Key, Value };

/// The text as UTF-8 for that place, on one line, with all its blanks safe from trimming.
QByteArray escaped(const QString& text, Place place);

/// The text that a trimmed piece of a line stands for; never null.
QString unescaped(QStringView text);

/// The text without blanks and tabs at both ends. Other kinds of white space belong to a text.
QStringView trimmed(QStringView text);

/// Decodes UTF-8 strictly. False when the bytes are not valid, or hold a zero.
bool decodeUtf8(const QByteArray& bytes, QString& text);

} // namespace IniText
