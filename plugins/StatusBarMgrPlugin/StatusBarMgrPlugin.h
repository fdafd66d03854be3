#pragma once

#include "support/PagePlugin.h"

/// The status bar at the bottom of the main window: operator, signal, speed and volume of the attached modem.
class StatusBarMgrPlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

protected:
    QWidget* createPage(QWidget* parent) override;
};
