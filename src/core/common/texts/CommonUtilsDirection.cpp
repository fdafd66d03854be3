// The direction of punctuation in texts that mix scripts.
#include "common/CommonUtils.h"

#include "common/Log.h"

#include <algorithm>
#include <array>

namespace {

constexpr char16_t LeftToRightOverride = 0x202D;
constexpr char16_t RightToLeftOverride = 0x202E;

constexpr std::array<char16_t, 8> Punctuation{u',', u'"', u'(', u')', u'[', u']', u'{', u'}'};

constexpr qint64 MaxSize = 1 << 27;

/// A string with direction marks after its punctuation, and a cursor. All occurrences of a punctuation character
/// have the same marks, so they are stored once per character; the marked string is built at the end. The cursor
/// is always on a character of the plain string: marks never cause further marks.
class MarkedText
{
public:
    explicit MarkedText(const QString& text)
        : m_text(text)
        , m_size(text.size())
    {
        for (const QChar c : text) {
            if (Kind* const kind = kindOf(c))
                ++kind->total;
        }
    }

    bool isTooLarge() const { return m_size > MaxSize; }

    /// Adds the mark that the character at a position of the marked string requires, if any.
    void visit(int position)
    {
        while (m_position > position)
            stepBack();
        while (m_position + widthOf(m_text.at(m_index)) <= position)
            stepForward();
        Kind* const kind = kindOf(m_text.at(m_index));
        if (!kind || m_position != position || m_index == 0)
            return;
        const QChar::Direction before = m_text.at(m_index - 1).direction();
        if (before != QChar::DirL && before != QChar::DirR)
            return;
        kind->marks.append(QChar(before == QChar::DirL ? LeftToRightOverride : RightToLeftOverride));
        m_position += kind->before;
        m_size += kind->total;
    }

    QString result()
    {
        for (Kind& kind : m_kinds) // newer marks are nearer to the character
            std::reverse(kind.marks.begin(), kind.marks.end());
        QString text;
        text.reserve(static_cast<int>(m_size));
        for (const QChar c : m_text) {
            text.append(c);
            if (const Kind* const kind = kindOf(c))
                text.append(kind->marks);
        }
        return text;
    }

private:
    struct Kind
    {
        int total = 0;
        int before = 0; ///< how many of them are before the cursor
        QString marks;  ///< after each of them, oldest first
    };

    /// Null for other characters.
    Kind* kindOf(QChar c)
    {
        const auto found = std::find(Punctuation.begin(), Punctuation.end(), c.unicode());
        return found == Punctuation.end() ? nullptr : &m_kinds[found - Punctuation.begin()];
    }

    qint64 widthOf(QChar c)
    {
        const Kind* const kind = kindOf(c);
        return kind ? 1 + kind->marks.size() : 1;
    }

    void stepForward() { pass(m_text.at(m_index++), 1); }
    void stepBack() { pass(m_text.at(--m_index), -1); }

    void pass(QChar c, int direction)
    {
        m_position += direction * widthOf(c);
        if (Kind* const kind = kindOf(c))
            kind->before += direction;
    }

    const QString& m_text; ///< without marks
    std::array<Kind, Punctuation.size()> m_kinds;
    qint64 m_size;         ///< with marks
    int m_index = 0;       ///< of the cursor in the text without marks
    qint64 m_position = 0; ///< of the cursor in the text with marks
};

} // namespace

void CommonUtils::ParanthesisCorrection(QString& text)
{
    ParanthesisCorrectionForHeAndAr(text);
}

void CommonUtils::ParanthesisCorrectionForHeAndAr(QString& text)
{
    MarkedText marked(text);
    for (int position = 1; position < text.size(); ++position) {
        marked.visit(position);
        if (marked.isTooLarge()) {
            LOG_WARNING("%s: %s: a text of %d characters would collect too many marks", LOG_FILE,
                        LOG_FUNCTION, text.size());
            return;
        }
    }
    text = marked.result();
}
