#pragma once

#include <QString>
#include <QStringView>

#include <string_view>
#include <unordered_map>

/// What a setting is looked up by. Refers to texts that must outlive it.
struct SettingName
{
    SettingName(QStringView section, QStringView key);

    std::u16string_view section;
    std::u16string_view key;
    std::size_t hash; // computed once for several tables
};

/// Settings in memory. Looking one up allocates nothing.
class SettingsTable
{
public:
    /// The value, or null when there is none. Valid until the next change.
    const QString* find(const SettingName& name) const;
    void set(const QString& section, const QString& key, const QString& value);
    void swap(SettingsTable& other) { m_entries.swap(other.m_entries); }

private:
    // The map's names refer to the characters of these texts, which are therefore never changed.
    struct Entry
    {
        QString section;
        QString key;
        QString value;
    };

    struct Hash
    {
        std::size_t operator()(const SettingName& name) const noexcept { return name.hash; }
    };

    struct Equal
    {
        bool operator()(const SettingName& a, const SettingName& b) const
        {
            return a.hash == b.hash && a.section == b.section && a.key == b.key;
        }
    };

    std::unordered_map<SettingName, Entry, Hash, Equal> m_entries;
};
