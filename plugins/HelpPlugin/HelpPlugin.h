#pragma once

#include "support/PagePlugin.h"

/// A page with answers to common problems. Operators with their own help pages can remove it.
class HelpPlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

protected:
    QWidget* createPage(QWidget* parent) override;
};
