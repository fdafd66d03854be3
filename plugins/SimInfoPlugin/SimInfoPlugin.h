#pragma once

#include "support/PagePlugin.h"

/// A page that shows the SIM card of the modem in use.
class SimInfoPlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

protected:
    QWidget* createPage(QWidget* parent) override;
};
