#include "SettingsDialog.h"

#include "GeneralSettings.h"
#include "MainWindow.h"
#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "Startup/Startup.h"
#include "WindowSettings.h"
#include "support/Dialog.h"
#include "support/LoadedPage.h"
#include "support/Text.h"

#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

constexpr QSize PreferredSize{680, 420};

void addTab(QTabWidget* tabs, QWidget* page)
{
    tabs->addTab(page, page->windowTitle());
    QObject::connect(page, &QWidget::windowTitleChanged, tabs,
                     [tabs, page](const QString& title) { tabs->setTabText(tabs->indexOf(page), title); });
}

/// A plugin that is unloaded deletes its page, which also removes the tab.
QTabWidget* makeTabs(MainWindow& window, const QString& shown)
{
    auto* tabs = new QTabWidget;
    tabs->setDocumentMode(true);
    tabs->setFocusPolicy(Qt::NoFocus); // its bar takes the focus
    addTab(tabs, new GeneralSettings(window));
    addTab(tabs, new WindowSettings(window));
    IPluginContainer& container = *Startup::GetPluginContainer();
    const QStringList clsids = container.GetSettingsPlugins();
    for (const QString& clsid : clsids) {
        QWidget* const page = buildPage(container, clsid, tabs, PluginIds::SettingsPage);
        if (page)
            addTab(tabs, page);
        if (page && clsid == shown)
            tabs->setCurrentWidget(page);
    }
    return tabs;
}

/// What the Tab key visits first on a page that need not be visible yet.
QWidget* firstField(const QWidget* page)
{
    for (QWidget* next = page->nextInFocusChain(); next != page; next = next->nextInFocusChain()) {
        if (page->isAncestorOf(next) && (next->focusPolicy() & Qt::TabFocus) && next->isEnabledTo(page) &&
            next->isVisibleTo(page))
            return next;
    }
    return nullptr;
}

} // namespace

void showSettings(MainWindow& window, const QString& shown)
{
    auto* dialog = new ExtendDialog(&window, Qt::WindowCloseButtonHint, enWidgetNormal);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    auto* close = new QPushButton;
    close->setMinimumSize(Look::ButtonSize);
    QObject::connect(close, &QPushButton::clicked, dialog, &QDialog::close);
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    QTabWidget* const tabs = makeTabs(window, shown);
    layout->addWidget(tabs, 1);
    layout->addWidget(close, 0, Qt::AlignRight);
    keepTranslated(dialog, [=] {
        dialog->setWindowTitle(caption("IDS_MENU_SETTINGS").text);
        tabs->setAccessibleName(dialog->windowTitle());
        close->setText(text("IDS_ABOUT_CLOSE"));
    });
    fillDialog(dialog, content, PreferredSize);
    makeResizable(dialog);
    if (QWidget* const field = firstField(tabs->currentWidget()))
        field->setFocus();
    dialog->open();
}
