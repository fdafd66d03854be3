#include "files/IniText.h"

#include <QTextCodec>

#include <algorithm>

namespace {

struct Escape
{
    char16_t character;
    char16_t letter;
};

constexpr Escape Escapes[] = {{u'\\', u'\\'}, {u'\n', u'n'}, {u'\r', u'r'}, {u'\t', u't'}, {u' ', u's'}};
constexpr int Utf8Mib = 106;
constexpr char16_t ByteOrderMark = 0xfeff; // a reader drops it at the start of a file

bool isUnpairedSurrogate(const QString& text, int i)
{
    if (text[i].isHighSurrogate())
        return i + 1 == text.size() || !text[i + 1].isLowSurrogate();
    return text[i].isLowSurrogate() && (i == 0 || !text[i - 1].isHighSurrogate());
}

bool hasMeaning(QChar c, bool isFirst, IniText::Place place)
{
    if (place != IniText::Place::Key)
        return false;
    return c == QLatin1Char('=') || (isFirst && QStringLiteral("[#;").contains(c));
}

bool needsEscape(const QString& text, int i, IniText::Place place)
{
    const QChar c = text[i];
    const bool isAtEnd = i == 0 || i + 1 == text.size();
    return c < QLatin1Char(' ') || c == QLatin1Char('\\') || c == QChar(0x7f) || c == QChar(ByteOrderMark) ||
           (isAtEnd && c == QLatin1Char(' ')) || (c.isSurrogate() && isUnpairedSurrogate(text, i)) ||
           hasMeaning(c, i == 0, place);
}

QString escapeOf(QChar c)
{
    for (const Escape& escape : Escapes) {
        if (escape.character == c.unicode())
            return QLatin1Char('\\') + QString(QChar(escape.letter));
    }
    return QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
}

/// Appends what the escape at the start of `rest` stands for and returns the escape's length.
int appendUnescaped(QStringView rest, QString& text)
{
    const QChar letter = rest.size() > 1 ? rest[1] : QChar();
    for (const Escape& escape : Escapes) {
        if (escape.letter == letter.unicode()) {
            text += QChar(escape.character);
            return 2;
        }
    }
    bool isHex = false;
    const ushort code = rest.size() >= 6 ? rest.mid(2, 4).toString().toUShort(&isHex, 16) : ushort(0);
    const bool isUnit = letter == QLatin1Char('u') && isHex && code != 0;
    text += isUnit ? QChar(code) : rest[0];
    return isUnit ? 6 : 1;
}

QString unescaped(const QString& text)
{
    QString plain;
    plain.reserve(text.size());
    for (int i = 0; i < text.size();) {
        if (text[i] == QLatin1Char('\\'))
            i += appendUnescaped(QStringView(text).mid(i), plain);
        else
            plain += text[i++];
    }
    return plain;
}

} // namespace

QByteArray IniText::escaped(const QString& text, Place place)
{
    QString line;
    line.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        if (needsEscape(text, i, place))
            line += escapeOf(text[i]);
        else
            line += text[i];
    }
    return line.toUtf8();
}

std::string_view IniText::trimmed(std::string_view bytes)
{
    constexpr std::string_view blanks = " \t";
    const std::size_t first = bytes.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return bytes.substr(first, bytes.find_last_not_of(blanks) - first + 1);
}

bool IniText::read(std::string_view bytes, QString& text)
{
    QTextCodec::ConverterState state;
    text = QTextCodec::codecForMib(Utf8Mib)->toUnicode(bytes.data(), int(bytes.size()), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0 || bytes.find('\0') != std::string_view::npos)
        return false;
    if (text.isNull())
        text = QStringLiteral("");
    if (text.contains(QLatin1Char('\\')))
        text = unescaped(text);
    return true;
}
