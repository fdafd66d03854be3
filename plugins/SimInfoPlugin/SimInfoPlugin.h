#pragma once

#include "support/PagePlugin.h"

/// What identifies the SIM card of the modem in use: a panel in the page "Modem and SIM" of DeviceInfoPlugin. Operators
/// who do not want it to be shown remove this plugin.
class SimInfoPlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

protected:
    QWidget* createPage(QWidget* parent) override;
};
