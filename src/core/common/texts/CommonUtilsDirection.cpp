// The direction of punctuation in texts that mix scripts.
#include "common/CommonUtils.h"

#include "common/Log.h"

#include <algorithm>
#include <array>
#include <vector>

namespace {

constexpr char16_t LeftToRightOverride = 0x202D;
constexpr char16_t RightToLeftOverride = 0x202E;

constexpr std::array<char16_t, 8> Signs{u',', u'"', u'(', u')', u'[', u']', u'{', u'}'};

constexpr qint64 MaxSize = 1 << 27;

int signIndex(QChar c)
{
    const auto found = std::find(Signs.begin(), Signs.end(), c.unicode());
    return found == Signs.end() ? -1 : static_cast<int>(found - Signs.begin());
}

/// Walks a text whose signs collect marks on the way. All signs of a kind have the same marks behind them, so
/// these are kept once for each kind, and the text grows in the mind only.
class DirectionWalk
{
public:
    explicit DirectionWalk(const QString& text)
        : m_text(text)
        , m_size(text.size())
    {
        for (const QChar c : text) {
            if (const int sign = signIndex(c); sign >= 0)
                ++m_signs[sign].total;
        }
    }

    /// Goes through the positions that the text has at first. False when it outgrows what is allowed.
    bool run()
    {
        for (int next = 0; m_index < m_text.size() && m_position < m_text.size();) {
            const char16_t mark = m_position < next ? 0 : markAt(m_index);
            if (!mark) {
                stepForward();
                continue;
            }
            next = static_cast<int>(m_position) + 1;
            if (!addMark(m_signs[signIndex(m_text.at(m_index))], mark))
                return false;
            while (m_index > 0 && m_position > next)
                stepBack();
        }
        return true;
    }

    QString result() const
    {
        QString text;
        text.reserve(static_cast<int>(m_size));
        for (const QChar c : m_text) {
            text.append(c);
            if (const int sign = signIndex(c); sign >= 0)
                std::for_each(m_signs[sign].marks.rbegin(), m_signs[sign].marks.rend(),
                              [&text](char16_t mark) { text.append(QChar(mark)); });
        }
        return text;
    }

private:
    struct Sign
    {
        int total = 0;
        int passed = 0;              ///< before the character that the walk stands at
        std::vector<char16_t> marks; ///< the newest last; it stands nearest to the sign
    };

    /// The mark that a character asks for; 0 for none.
    char16_t markAt(int index) const
    {
        if (index == 0 || signIndex(m_text.at(index)) < 0)
            return 0;
        switch (m_text.at(index - 1).direction()) {
        case QChar::DirL:
            return LeftToRightOverride;
        case QChar::DirR:
            return RightToLeftOverride;
        default:
            return 0;
        }
    }

    bool addMark(Sign& sign, char16_t mark)
    {
        sign.marks.push_back(mark);
        m_position += sign.passed;
        m_size += sign.total;
        return m_size <= MaxSize;
    }

    void stepForward()
    {
        m_position += 1;
        if (const int sign = signIndex(m_text.at(m_index++)); sign >= 0) {
            m_position += static_cast<qint64>(m_signs[sign].marks.size());
            ++m_signs[sign].passed;
        }
    }

    void stepBack()
    {
        m_position -= 1;
        if (const int sign = signIndex(m_text.at(--m_index)); sign >= 0) {
            m_position -= static_cast<qint64>(m_signs[sign].marks.size());
            --m_signs[sign].passed;
        }
    }

    const QString& m_text;
    std::array<Sign, Signs.size()> m_signs;
    qint64 m_size;         ///< of the text with its marks
    int m_index = 0;       ///< of the character that the walk stands at, in the text without marks
    qint64 m_position = 0; ///< of the same character in the text with its marks
};

} // namespace

void CommonUtils::ParanthesisCorrection(QString& text)
{
    ParanthesisCorrectionForHeAndAr(text);
}

void CommonUtils::ParanthesisCorrectionForHeAndAr(QString& text)
{
    DirectionWalk walk(text);
    if (walk.run())
        text = walk.result();
    else
        LOG_WARNING("%s: %s: a text of %d characters would collect too many marks", LOG_FILE, LOG_FUNCTION,
                    text.size());
}
