#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

#include <utility>

/// A key of a CodeTable: a string, or two strings joined. Up to eight Latin-1 characters, enough for a network
/// code, are packed into a number, which saves creating, hashing and comparing strings.
class CodeKey
{
public:
    CodeKey(QStringView first, QStringView second = {})
        : m_isPacked(pack(first) && pack(second))
    {
        if (!m_isPacked)
            m_text = first.toString() + second.toString();
    }

    bool isPacked() const { return m_isPacked; }
    quint64 packed() const { return m_packed; }
    const QString& text() const { return m_text; } ///< if it is not packed

private:
    /// @return false if the text does not fit; NUL cannot be packed
    bool pack(QStringView text)
    {
        for (const QChar c : text) {
            if (c.isNull() || c.unicode() > 0xFF || m_packed >> 56)
                return false;
            m_packed = m_packed << 8 | c.unicode();
        }
        return true;
    }

    quint64 m_packed = 0;
    QString m_text;
    bool m_isPacked;
};

/// Values by CodeKey.
template <typename Value>
class CodeTable
{
public:
    /// Replaces an earlier value of the same key.
    void insert(const CodeKey& key, Value value)
    {
        (key.isPacked() ? m_short[key.packed()] : m_long[key.text()]) = std::move(value);
    }

    /// The value, or null. Valid until the next change.
    const Value* find(const CodeKey& key) const
    {
        return key.isPacked() ? valueOf(m_short, key.packed()) : valueOf(m_long, key.text());
    }

    void clear()
    {
        m_short.clear();
        m_long.clear();
    }

private:
    template <typename Key>
    static const Value* valueOf(const QHash<Key, Value>& hash, const Key& key)
    {
        const auto found = hash.constFind(key);
        return found == hash.cend() ? nullptr : &*found;
    }

    QHash<quint64, Value> m_short;
    QHash<QString, Value> m_long;
};
