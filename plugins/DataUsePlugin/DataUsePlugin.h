#pragma once

#include "support/PagePlugin.h"
#include "support/SettingsPageBuilder.h"

#include <memory>

class DataUse;

/// Counts the traffic of SIM cards, shows it on a page and warns of the limit that a page of the settings sets.
class DataUsePlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

public:
    DataUsePlugin();
    ~DataUsePlugin() override;

    int Init() override;
    void Destroy() override;

protected:
    QWidget* createPage(QWidget* parent) override;

private:
    SettingsPageBuilder m_settingsPage;
    std::unique_ptr<DataUse> m_dataUse; ///< from Init() to Destroy()
};
