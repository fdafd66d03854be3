#pragma once

#include "support/PagePlugin.h"

/// The page "Modem and SIM": what support asks for, and the choice of the network.
class DeviceInfoPlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

protected:
    QWidget* createPage(QWidget* parent) override;
};
