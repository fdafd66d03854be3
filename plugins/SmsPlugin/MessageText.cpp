#include "MessageText.h"

#include "common/CommonUtils.h"

#include <QHash>
#include <QStringBuilder>

#include <algorithm>

namespace {

constexpr QLatin1String LinkBegin("<a href = ");

// Punctuation around an address that is not part of it, including that of other scripts.
constexpr char16_t Openers[] = u"([{<\"'“„«‚‘（【《";
constexpr char16_t Closers[] = u".,;:!?…。，、！？；：、؟،؛)]}>\"'”“»’‘）】》";

/// Pairs in which the closing character belongs to the address if the opening one does: "x.example/A_(b)".
constexpr QLatin1String Pairs[] = {QLatin1String("()"), QLatin1String("[]"), QLatin1String("{}"),
                                   QLatin1String("\"\""), QLatin1String("''")};

using Counts = QHash<QChar, int>;

bool contains(QStringView characters, QChar character)
{
    return std::find(characters.begin(), characters.end(), character) != characters.end();
}

Counts countsIn(QStringView word)
{
    Counts counts;
    for (const QChar character : word)
        ++counts[character];
    return counts;
}

/// Whether the last character of a word closes a pair within the word.
bool isClosing(QChar last, const Counts& counts)
{
    return std::any_of(std::begin(Pairs), std::end(Pairs), [&](QLatin1String pair) {
        const int openers = counts.value(pair[0]);
        return last == pair[1] && (pair[0] == pair[1] ? openers % 2 == 0 : openers >= counts.value(pair[1]));
    });
}

/// The part of a word that may be an address.
QStringView core(QStringView word)
{
    while (!word.isEmpty() && contains(Openers, word.front()))
        word = word.mid(1);
    Counts counts = countsIn(word); // only once: a message can be one word of 39,000 characters
    while (!word.isEmpty() && contains(Closers, word.back()) && !isClosing(word.back(), counts)) {
        --counts[word.back()];
        word.chop(1);
    }
    return word;
}

/// The core library does not escape "&" and quotes, which have a meaning in rich text.
QString escaped(QStringView text)
{
    return text.toString()
        .replace(QLatin1Char('&'), QLatin1String("&amp;"))
        .replace(QLatin1Char('"'), QLatin1String("&quot;"));
}

/// Puts the link targets in quotes, because Qt ends an unquoted target at "=". Done by hand, because regular
/// expressions find nothing in a string with an unpaired surrogate.
QString withQuotedTargets(const QString& rich)
{
    QString quoted;
    quoted.reserve(rich.size());
    int done = 0;
    for (int link = rich.indexOf(LinkBegin); link >= 0; link = rich.indexOf(LinkBegin, done)) {
        const int target = link + LinkBegin.size();
        const int end = rich.indexOf(QLatin1Char('>'), target); // always found: any other "<" is escaped
        quoted += rich.midRef(done, link - done) % QLatin1String("<a href=\"") %
                  rich.midRef(target, end - target) % QLatin1Char('"');
        done = end;
    }
    return quoted + rich.midRef(done);
}

/// Appends a word, as a link if it is an address, perhaps with punctuation around it.
void appendWord(QStringView word, QString& rich)
{
    const QStringView address = core(word);
    const auto before = address.begin() - word.begin();
    rich += word.left(before).toString().toHtmlEscaped();
    rich += withQuotedTargets(CommonUtils::ParseAndCreateHyperLinks(escaped(address)));
    rich += word.mid(before + address.size()).toString().toHtmlEscaped();
}

} // namespace

QString richMessage(const QString& plain)
{
    QString text = plain;
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QString rich = QStringLiteral("<p style=\"white-space: pre-wrap\">");
    for (int i = 0; i < text.size();) {
        const auto end =
            std::find_if(text.cbegin() + i, text.cend(), [](QChar character) { return character.isSpace(); });
        const int wordEnd = int(end - text.cbegin());
        if (wordEnd > i)
            appendWord(QStringView(text).mid(i, wordEnd - i), rich);
        if (wordEnd < text.size())
            rich += text[wordEnd];
        i = wordEnd + 1;
    }
    return rich + QLatin1String("</p>");
}

QString urlToOpen(const QString& target)
{
    // OpenUrl() would treat these as local files. Escaping a letter does not change the address.
    for (const char* ending : {"pdf", "html", "htm"}) {
        if (target.endsWith(QLatin1String(ending)))
            return target.chopped(1) + QLatin1Char('%') + QString::number(target.back().unicode(), 16);
    }
    return target;
}
