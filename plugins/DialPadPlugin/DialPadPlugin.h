#pragma once

#include "support/PagePlugin.h"

/// A page for calling a number and for sending service codes to the network.
class DialPadPlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

protected:
    QWidget* createPage(QWidget* parent) override;
};
