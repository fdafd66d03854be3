// Turns plain text into rich text with links.
#include "common/CommonUtils.h"

#include "common/Log.h"
#include "common/texts/Addresses_p.h"

#include <algorithm>
#include <optional>

namespace {

/// A text grows sevenfold at most; the size of the result has to fit into an int.
constexpr int LongestText = 1 << 27;

constexpr QLatin1Char LineFeed('\n');

bool isSeparator(QChar c)
{
    return c == QLatin1Char(' ') || c == LineFeed;
}

/// Whether a word certainly stays unchanged, so that richWord() need not be called. True for most words.
bool isOrdinary(QStringView word)
{
    return !word.startsWith(QLatin1Char('w')) && std::none_of(word.begin(), word.end(), [](QChar c) {
        return c == QLatin1Char('<') || c == QLatin1Char('>') || c == QLatin1Char('@') ||
               c == QLatin1Char(':');
    });
}

/// What precedes a word in the target of its link; nothing if the word does not become a link. At the
/// beginning of a line only host names do.
std::optional<QLatin1String> linkScheme(QStringView word, bool isAtLineBegin)
{
    if (word.startsWith(QLatin1String("www.")) && Addresses::isWeb(word))
        return QLatin1String("http://");
    if (isAtLineBegin)
        return std::nullopt;
    if (Addresses::isEmail(word))
        return QLatin1String("mailto:");
    if (Addresses::isHttp(word) && Addresses::isUrl(word))
        return QLatin1String();
    return std::nullopt;
}

QString linkTo(QLatin1String scheme, const QString& word)
{
    return QLatin1String("<a href = ") + scheme + word + QLatin1Char('>') + word + QLatin1String("</a>");
}

/// A word as rich text, a link if possible.
QString richWord(QString word, bool isAtLineBegin)
{
    word.replace(QLatin1Char('<'), QLatin1String("&lt;")).replace(QLatin1Char('>'), QLatin1String("&gt;"));
    const auto scheme = linkScheme(word, isAtLineBegin);
    return scheme && !CommonUtils::isNonAsciiCharPresent(word) ? linkTo(*scheme, word) : word;
}

void append(QString& richText, QStringView text)
{
    richText.append(text.data(), static_cast<int>(text.size()));
}

} // namespace

bool CommonUtils::CheckForEmailAddr(QString text)
{
    return Addresses::isEmail(text);
}

bool CommonUtils::CheckForHttpAddr(QString text)
{
    return Addresses::isHttp(text);
}

bool CommonUtils::CheckForWebAddr(QString text)
{
    return Addresses::isWeb(text);
}

QString CommonUtils::createLinkForHttpAndFtp(QString word)
{
    const int prefix = word.startsWith(LineFeed) ? 1 : 0;
    const QString target = word.mid(prefix);
    return Addresses::isUrl(target) ? word.left(prefix) + linkTo({}, target) : word;
}

QString CommonUtils::ParseAndCreateHyperLinks(QString text)
{
    if (text.size() > LongestText) {
        LOG_WARNING("%s: %s: a text of %d characters is too long for links", LOG_FILE, LOG_FUNCTION,
                    text.size());
        return {};
    }
    QString richText;
    richText.reserve(2 * text.size());
    bool isAtLineBegin = false;
    for (auto begin = text.cbegin();; ++begin) {
        const auto end = std::find_if(begin, text.cend(), isSeparator);
        const QStringView word(begin, end);
        append(richText, isOrdinary(word) ? word : richWord(word.toString(), isAtLineBegin));
        if (end == text.cend())
            return richText;
        isAtLineBegin = *end == LineFeed;
        append(richText, isAtLineBegin ? u"&nbsp;\n" : u"&nbsp;");
        begin = end;
    }
}
