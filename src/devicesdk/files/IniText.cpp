#include "files/IniText.h"

#include <QTextCodec>

#include <algorithm>

namespace {

struct Escape
{
    char16_t character;
    char16_t letter;
};

constexpr Escape kEscapes[] = {{u'\\', u'\\'}, {u'\n', u'n'}, {u'\r', u'r'}, {u'\t', u't'}, {u' ', u's'}};
constexpr int kUtf8Mib = 106;
constexpr char16_t kByteOrderMark = 0xfeff; // a reader drops it at the start of a file

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

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
    return c < QLatin1Char(' ') || c == QLatin1Char('\\') || c == QChar(0x7f) || c == QChar(kByteOrderMark) ||
           (isAtEnd && c == QLatin1Char(' ')) || (c.isSurrogate() && isUnpairedSurrogate(text, i)) ||
           hasMeaning(c, i == 0, place);
}

QString escapeOf(QChar c)
{
    for (const Escape& escape : kEscapes) {
        if (escape.character == c.unicode())
            return QLatin1Char('\\') + QString(QChar(escape.letter));
    }
    return QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
}

/// Appends what the escape at the start of `rest` stands for and returns the escape's length.
int appendUnescaped(QStringView rest, QString& text)
{
    const QChar letter = rest.size() > 1 ? rest[1] : QChar();
    for (const Escape& escape : kEscapes) {
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

QString IniText::unescaped(QStringView text)
{
    if (!text.contains(QLatin1Char('\\')))
        return text.isEmpty() ? QStringLiteral("") : text.toString();
    QString plain;
    plain.reserve(int(text.size()));
    for (qsizetype i = 0; i < text.size();) {
        if (text[i] == QLatin1Char('\\'))
            i += appendUnescaped(text.mid(i), plain);
        else
            plain += text[i++];
    }
    return plain;
}

QStringView IniText::trimmed(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.mid(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

bool IniText::decodeUtf8(const QByteArray& bytes, QString& text)
{
    QTextCodec::ConverterState state;
    text = QTextCodec::codecForMib(kUtf8Mib)->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0 && !bytes.contains('\0');
}
