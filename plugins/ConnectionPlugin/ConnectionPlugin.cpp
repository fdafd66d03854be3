#include "ConnectionPlugin.h"

#include "ConnectionPage.h"

QWidget* ConnectionPlugin::createPage(QWidget* parent)
{
    m_connectionPage = new ConnectionPage(followDevices(), parent);
    return m_connectionPage;
}

void ConnectionPlugin::switchConnection()
{
    if (m_connectionPage)
        m_connectionPage->switchConnection();
}
