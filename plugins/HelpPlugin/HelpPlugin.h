#pragma once

#include "support/PagePlugin.h"

/// A page with first aid. Operators with a help desk of their own leave it out.
class HelpPlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

protected:
    QWidget* createPage(QWidget* parent) override;
};
