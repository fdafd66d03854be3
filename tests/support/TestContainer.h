#pragma once

#include "PluginContainer/PluginContainer.h"
#include "PluginContainer/PluginStatus.h"

#include <QStringList>

/// The container with its inner steps made reachable.
class TestContainer : public PluginContainer
{
public:
    using PluginContainer::PluginContainer;

    using PluginContainer::decideDefaultLanguage;
    using PluginContainer::GetAdapterLang;
    using PluginContainer::GetCurLanguageInfo;
    using PluginContainer::getDefaultLan;
    using PluginContainer::getLanguageList;
    using PluginContainer::isPluginInList;
    using PluginContainer::readPluginElement;

    /// Counts the calls and does what it always does.
    void ApplyCustomizationForDevice(QString key) override
    {
        ++m_applied;
        PluginContainer::ApplyCustomizationForDevice(key);
    }

    int applied() const { return m_applied; }

    /// The clsids of the records that are enabled, in file order.
    QStringList enabled() const
    {
        QStringList clsids;
        for (const PluginStatus& status : GetPluginStatus())
            if (status.state > PluginStatus::State::Disabled)
                clsids += status.clsid;
        return clsids;
    }

private:
    int m_applied = 0;
};
