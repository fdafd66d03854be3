#include "settings/SettingsTable.h"

namespace {

std::u16string_view standardView(QStringView text)
{
    return {reinterpret_cast<const char16_t*>(text.data()), std::size_t(text.size())};
}

} // namespace

SettingName::SettingName(QStringView section, QStringView key)
    : section(standardView(section))
    , key(standardView(key))
{
    const std::hash<std::u16string_view> hasher;
    hash = hasher(this->section) * 31 + hasher(this->key);
}

const QString* SettingsTable::find(const SettingName& name) const
{
    const auto found = m_entries.find(name);
    return found == m_entries.end() ? nullptr : &found->second.value;
}

void SettingsTable::set(const QString& section, const QString& key, const QString& value)
{
    const auto found = m_entries.find(SettingName(section, key));
    if (found != m_entries.end()) {
        found->second.value = value;
        return;
    }
    m_entries.emplace(SettingName(section, key), Entry{section, key, value});
}
