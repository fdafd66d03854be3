#pragma once

#include "common/operators/CodeTable_p.h"

#include <QVector>

#include <algorithm>
#include <functional>
#include <utility>

/// Strings by prefix. A lookup tries only the lengths of the stored prefixes, so long texts cost no more than
/// short ones.
class PrefixTable
{
public:
    void insert(QStringView prefix, QString value)
    {
        m_table.insert(prefix, std::move(value));
        const int length = static_cast<int>(prefix.size());
        const auto place = std::lower_bound(m_lengths.begin(), m_lengths.end(), length, std::greater<>());
        if (place == m_lengths.end() || *place != length)
            m_lengths.insert(place, length);
    }

    /// The value of the longest stored prefix of `text` that has at least `shortest` characters, or null.
    const QString* find(QStringView text, int shortest) const
    {
        for (const int length : m_lengths) {
            if (length < shortest)
                break;
            if (length > text.size())
                continue;
            if (const QString* const value = m_table.find(text.left(length)))
                return value;
        }
        return nullptr;
    }

    void clear()
    {
        m_table.clear();
        m_lengths.clear();
    }

private:
    CodeTable<QString> m_table;
    QVector<int> m_lengths; ///< of the prefixes, longest first
};
