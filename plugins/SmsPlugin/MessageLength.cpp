#include "MessageLength.h"

#include <QString>
#include <QVector>

#include <algorithm>
#include <numeric>

namespace {

constexpr char16_t BasicTable[] =
    u"@£$¥èéùìòÇ\nØø\rÅåΔ_ΦΓΛΩΠΨΣΘΞÆæßÉ !\"#¤%&'()*+,-./0123456789:;<=>?¡ABCDEFGHIJKLMNOPQRSTUVWXYZÄÖÑÜ§¿"
    u"abcdefghijklmnopqrstuvwxyzäöñüà";
constexpr char16_t ExtensionTable[] = u"\f^{}\\[~]|€";

/// The capacity of a single message, and of each of several parts.
struct Capacity
{
    int single;
    int part;
};

constexpr Capacity SevenBit{160, 153}; // septets
constexpr Capacity Ucs2{70, 67};       // UTF-16 code units

bool contains(QStringView table, QChar character)
{
    return std::find(table.begin(), table.end(), character) != table.end();
}

bool isSevenBit(QChar character)
{
    return contains(BasicTable, character) || contains(ExtensionTable, character);
}

/// The size of each character in septets or code units.
QVector<int> sizes(const QString& text, bool sevenBit)
{
    QVector<int> result;
    for (int i = 0; i < text.size(); ++i) {
        const bool isPair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        const bool isLarge = sevenBit ? contains(ExtensionTable, text[i]) : isPair;
        result.append(isLarge ? 2 : 1);
        i += isPair ? 1 : 0;
    }
    return result;
}

/// Fills parts one after the other.
MessageLength fill(const QVector<int>& sizes, int capacity)
{
    MessageLength length{sizes.size(), 1, capacity};
    for (const int size : sizes) {
        if (length.left < size) {
            ++length.parts;
            length.left = capacity;
        }
        length.left -= size;
    }
    return length;
}

} // namespace

MessageLength messageLength(const QString& text)
{
    const bool sevenBit = std::all_of(text.begin(), text.end(), isSevenBit);
    const Capacity capacity = sevenBit ? SevenBit : Ucs2;
    if (text.isEmpty())
        return {0, 0, capacity.single};
    const QVector<int> all = sizes(text, sevenBit);
    const bool isSingle = std::accumulate(all.begin(), all.end(), 0) <= capacity.single;
    return fill(all, isSingle ? capacity.single : capacity.part);
}
