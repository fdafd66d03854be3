#include "PluginsPage.h"

#include "PluginsView.h"

#include <QVBoxLayout>

PluginsPage::PluginsPage(QWidget* parent)
    : Page("IDS_PLUGINS_TITLE", "IDS_PLUGINS_LEAD", Look::Sign::Plugins, parent)
{
    content()->addWidget(new PluginsView, 1);
}
