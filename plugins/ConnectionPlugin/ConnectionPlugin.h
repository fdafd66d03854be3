#pragma once

#include "support/PagePlugin.h"

class ConnectionPage;

/// The first page: connects the modem in use to the Internet, unlocks its SIM card and chooses between modems.
class ConnectionPlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

public Q_SLOTS:
    /// Connects the modem in use, or disconnects it, as the button of the page does. If the modem needs something else first,
    /// such as its PIN, shows the page. For other plugins, through QMetaObject::invokeMethod().
    void switchConnection();

protected:
    QWidget* createPage(QWidget* parent) override;

private:
    QPointer<ConnectionPage> m_connectionPage;
};
