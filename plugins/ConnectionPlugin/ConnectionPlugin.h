#pragma once

#include "support/PagePlugin.h"

class ConnectionPage;

/// The first page: connects the modem in use to the Internet, unlocks its SIM card and chooses between modems.
class ConnectionPlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

public Q_SLOTS:
    /// Does what the button of the page does now: connects the modem in use, or disconnects it. For other plugins,
    /// through QMetaObject::invokeMethod().
    void switchConnection();

protected:
    QWidget* createPage(QWidget* parent) override;

private:
    QPointer<ConnectionPage> m_connectionPage;
};
