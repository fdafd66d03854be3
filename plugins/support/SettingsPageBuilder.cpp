#include "support/SettingsPageBuilder.h"

#include <QRect>
#include <QWidget>

SettingsPageBuilder::~SettingsPageBuilder()
{
    delete m_page;
}

QWidget* SettingsPageBuilder::BuildFrame(QWidget* parent, const QRect& geometry)
{
    delete m_page;
    if (!m_make)
        return nullptr;
    m_page = m_make(parent);
    if (!geometry.isNull())
        m_page->setGeometry(geometry);
    return m_page;
}

void SettingsPageBuilder::stop()
{
    delete m_page;
    m_make = nullptr;
}
