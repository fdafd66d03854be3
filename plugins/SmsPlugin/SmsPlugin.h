#pragma once

#include "support/PagePlugin.h"

/// A page with the text messages of the attached modems.
class SmsPlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

protected:
    QWidget* createPage(QWidget* parent) override;
};
