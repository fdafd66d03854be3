// Makes rich text with links of plain text.
#include "common/CommonUtils.h"

#include "common/Log.h"
#include "common/texts/Addresses_p.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

bool beginsLikeHost(QStringView word)
{
    constexpr std::array<char16_t, 4> www{u'w', u'w', u'w', u'.'};
    return word.size() >= 4 && std::equal(www.begin(), www.end(), word.utf16());
}

/// What the target of a word's link has in front of the word; nothing when the word, of Latin-1 characters,
/// does not become a link. At the begin of a line only hosts do.
std::optional<QLatin1String> linkScheme(QStringView word, bool isAtLineBegin)
{
    if (beginsLikeHost(word) && Addresses::isWeb(word))
        return QLatin1String("http://");
    if (isAtLineBegin)
        return std::nullopt;
    if (Addresses::isEmail(word))
        return QLatin1String("mailto:");
    if (Addresses::isHttp(word) && Addresses::isUrl(word))
        return QLatin1String();
    return std::nullopt;
}

/// The parts of a link around its target and its text. Targets are not quoted: those who read these texts so
/// far expect them like this.
constexpr QLatin1String LinkBegin("<a href = ");
constexpr QLatin1String LinkMiddle(">");
constexpr QLatin1String LinkEnd("</a>");

/// What has to be known of a word before it is written; a character's share of it.
enum Trait : quint8 {
    EndsWord = 1,  ///< a blank or line feed
    IsEscaped = 2, ///< not written as it is
    HintsAtLink = 4,
    ForbidsLink = 8 ///< outside 1 to 255
};

/// A text grows to the sevenfold at most; the result has to be addressable with an int.
constexpr int LongestText = 1 << 27;

constexpr std::size_t Latin1Size = 256;

/// By character; the last entry is that of all characters beyond Latin-1.
constexpr std::array<quint8, Latin1Size + 1> Traits = [] {
    std::array<quint8, Latin1Size + 1> table{};
    table[' '] = table['\n'] = EndsWord;
    table['<'] = table['>'] = IsEscaped;
    table['@'] = table[':'] = HintsAtLink;
    table[0] = table[Latin1Size] = ForbidsLink;
    return table;
}();

unsigned traitsOf(QChar c)
{
    return Traits[std::min<std::size_t>(c.unicode(), Latin1Size)];
}

/// Turns plain text into rich text word by word. A word is written as it is, and gone over once more when it
/// has a character that asks for that.
class RichTextWriter
{
public:
    explicit RichTextWriter(const QString& plain)
        : m_in(plain.cbegin())
        , m_inEnd(plain.cend())
        , m_text(sizeFor(plain), Qt::Uninitialized)
        , m_out(m_text.data())
    {
    }

    QString write()
    {
        writeWord(false);
        while (m_in != m_inEnd) {
            const QChar separator = *m_in++;
            const bool isLineFeed = separator == QLatin1Char('\n');
            put(u"&nbsp;");
            if (isLineFeed)
                *m_out++ = separator;
            writeWord(isLineFeed);
        }
        return std::move(m_text);
    }

private:
    /// The size without links.
    static int sizeFor(const QString& plain)
    {
        int size = 0;
        for (const QChar c : plain)
            size += 1 + 5 * (c == QLatin1Char(' ')) + 6 * (c == QLatin1Char('\n')) +
                    3 * (c == QLatin1Char('<')) + 3 * (c == QLatin1Char('>'));
        return size;
    }

    void put(QStringView text) { m_out = std::copy(text.begin(), text.end(), m_out); }

    void put(QLatin1String text)
    {
        m_out = std::transform(text.begin(), text.end(), m_out, [](char c) { return QLatin1Char(c); });
    }

    /// Writes the next word, which may be empty.
    void writeWord(bool isAtLineBegin)
    {
        const QChar* const begin = m_in;
        QChar* const out = m_out;
        unsigned found = 0;
        for (; m_in != m_inEnd; *m_out++ = *m_in++) {
            const unsigned trait = traitsOf(*m_in);
            if (trait & EndsWord)
                break;
            found |= trait;
        }
        if (found & IsEscaped)
            escape(begin, out);
        if (!(found & ForbidsLink) && (found & HintsAtLink || beginsLikeHost({out, m_out})))
            makeLink(out, isAtLineBegin);
    }

    /// Writes the word from `begin` on again.
    void escape(const QChar* begin, QChar* out)
    {
        m_out = out;
        for (; begin != m_in; ++begin) {
            if (*begin == QLatin1Char('<'))
                put(u"&lt;");
            else if (*begin == QLatin1Char('>'))
                put(u"&gt;");
            else
                *m_out++ = *begin;
        }
    }

    /// Puts a link around the word that was written at `out`, if it becomes one.
    void makeLink(const QChar* out, bool isAtLineBegin)
    {
        const auto length = static_cast<int>(m_out - out);
        const auto scheme = linkScheme({out, length}, isAtLineBegin);
        if (!scheme)
            return;
        const auto position = out - m_text.constData();
        const int before = LinkBegin.size() + scheme->size();
        m_text.resize(m_text.size() + before + LinkMiddle.size() + length + LinkEnd.size());
        QChar* const word = m_text.data() + position;
        std::copy_backward(word, word + length, word + before + length);
        m_out = word;
        put(LinkBegin);
        put(*scheme);
        m_out += length;
        put(LinkMiddle);
        m_out = std::copy(word + before, word + before + length, m_out);
        put(LinkEnd);
    }

    const QChar* m_in;
    const QChar* m_inEnd;
    QString m_text;
    QChar* m_out;
};

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
    const int prefix = word.startsWith(QLatin1Char('\n')) ? 1 : 0;
    const QString target = word.mid(prefix);
    return Addresses::isUrl(target) ? word.left(prefix) + LinkBegin + target + LinkMiddle + target + LinkEnd
                                    : word;
}

QString CommonUtils::ParseAndCreateHyperLinks(QString text)
{
    if (text.size() > LongestText) {
        LOG_WARNING("%s: %s: a text of %d characters is too long for links", LOG_FILE, LOG_FUNCTION,
                    text.size());
        return {};
    }
    return RichTextWriter(text).write();
}
