#pragma once

#include "support/PagePlugin.h"

/// A page that shows the attached modems.
class DeviceInfoPlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

protected:
    QWidget* createPage(QWidget* parent) override;
};
