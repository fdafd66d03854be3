#pragma once

#include <QString>
#include <QStringView>

#include <algorithm>
#include <memory>

/// A PIN or password. Its memory is overwritten when it is released.
class Secret
{
public:
    Secret() = default;
    explicit Secret(QStringView text)
        : m_size(text.size())
        , m_text(new char16_t[std::size_t(m_size) + 1]())
    {
        std::copy(text.utf16(), text.utf16() + m_size, m_text.get());
    }
    Secret(Secret&& other) noexcept { *this = std::move(other); }
    Secret& operator=(Secret&& other) noexcept
    {
        std::swap(m_size, other.m_size);
        std::swap(m_text, other.m_text);
        return *this;
    }
    Secret(const Secret&) = delete;
    Secret& operator=(const Secret&) = delete;
    ~Secret() { wipe(m_text.get(), m_size); }

    QStringView view() const { return {m_text.get(), m_size}; }

    /// Overwrites a text, and with it all copies that share its memory.
    static void wipe(QString& text)
    {
        wipe(const_cast<QChar*>(text.constData()), text.size());
        text.clear();
    }

private:
    /// Through a volatile pointer, because a compiler leaves out writes that nothing reads.
    static void wipe(void* text, qsizetype size)
    {
        auto* const units = static_cast<volatile char16_t*>(text);
        std::fill(units, units + size, u'\0');
    }

    qsizetype m_size = 0;
    std::unique_ptr<char16_t[]> m_text;
};
