#pragma once

#include "support/PagePlugin.h"

/// The first page: connects the modem in use to the Internet, unlocks its SIM card and chooses between modems.
class ConnectionPlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

protected:
    QWidget* createPage(QWidget* parent) override;
};
