#pragma once

#include <QString>
#include <QStringView>

#include <string_view>
#include <unordered_map>

/// The section and key of a setting. Refers to strings that must outlive it.
struct SettingName
{
    SettingName(QStringView section, QStringView key);

    std::u16string_view section;
    std::u16string_view key;
    std::size_t hash; // computed once, used for several tables
};

/// Settings in memory. Looking one up does not allocate.
class SettingsTable
{
public:
    /// Returns the value, or null if there is none. Valid until the next change.
    const QString* find(const SettingName& name) const;
    void set(const QString& section, const QString& key, const QString& value);
    void swap(SettingsTable& other) { m_entries.swap(other.m_entries); }

private:
    // The keys of the map refer to the characters of section and key, so these are never changed.
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
